#pragma once

#include "platform/dialog/QorDlgFrame.h"

/// One of the two exchangeable frames of the scene dialog. What it shows goes to the current viewer
/// at once; it becomes the manager's state with Commit alone.
class QorRdgSceneFrame : public QorDlgFrame {
    QorDeclareClass(QorRdgSceneFrame)

    QorRdgSceneFrame(QorCommand* iFather,
                     const QorString& iName,
                     QorDlgStyle iStyle = QorDlgDefaultStyle);

    /// Makes the edits the manager's state.
    virtual void Commit() = 0;
    /// Gives them up. The dialog puts the viewer back.
    virtual void Rollback() = 0;

protected:
    ~QorRdgSceneFrame() override;
};
