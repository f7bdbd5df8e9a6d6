#pragma once

#include "platform/frame/QorFrmDialog.h"
#include "scenes/QorRdgViewerState.h"

class QorDlgFrame;
class QorDlgRadioButton;
class QorRdgSceneFrame;

/// Chooses the scene of quick renders: a predefined one, or the custom one. Every change shows in
/// the current viewer at once; OK keeps and saves the choice, Cancel and the close box put the
/// viewer back. The dialog does not close itself: it passes OK, Cancel and close on to its father.
class QorRdgSceneDialog : public QorFrmDialog {
    QorDeclareClass(QorRdgSceneDialog)

    /// OK and Cancel buttons are added to \p iStyle. Empty until Init.
    QorRdgSceneDialog(QorCommand* iFather,
                      const QorString& iName,
                      QorDlgStyle iStyle = QorDlgDefaultStyle);

    /// Notes the viewer's state and shows the frame of the manager's scene type; does nothing
    /// without a viewer.
    void Init();
    void OKCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);
    void CancelCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);
    /// Exchanges the frame. Nothing is committed by it.
    void
    TypeModifiedCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);

protected:
    ~QorRdgSceneDialog() override;

private:
    void BuildWidgets();
    void Subscribe();
    /// Makes the frame of the radio button that is checked.
    void MakeFrame();

    QorRdgViewerState state;
    QorDlgRadioButton* predefinedRadio = nullptr;
    QorDlgRadioButton* customRadio = nullptr;
    QorDlgFrame* containerFrame = nullptr;
    QorRdgSceneFrame* frame = nullptr;
};
