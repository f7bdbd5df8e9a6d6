#pragma once

#include "scenes/QorRdgSceneFrame.h"

class QorRdgIconList;

/// The predefined scenes as pictures: a click shows one in the current viewer, a double click
/// confirms the dialog with it.
class QorRdgScenePredefinedFrame : public QorRdgSceneFrame {
    QorDeclareClass(QorRdgScenePredefinedFrame)

    QorRdgScenePredefinedFrame(QorCommand* iFather,
                               const QorString& iName,
                               QorDlgStyle iStyle = QorDlgDefaultStyle);

    /// Shows all scenes with the chosen one selected, and applies that one.
    void Init();
    void SelectCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);
    void ActivateCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);
    /// Without a selection the first scene is chosen.
    void Commit() override;
    void Rollback() override;
    void CleanUp();

protected:
    ~QorRdgScenePredefinedFrame() override;

private:
    void ApplySelection();

    QorRdgIconList* iconList = nullptr; ///< null once cleaned up
};
