#pragma once

#include "platform/dialog/QorDlgFrame.h"
#include "platform/engine/QorIRdgOptions.h"

/// A page that a render engine adds to the dialog of a shooting. It knows the shooting by its
/// options alone.
class QorRdgCustomFrame : public QorDlgFrame {
    QorDeclareClass(QorRdgCustomFrame)

    using QorDlgFrame::QorDlgFrame;

    /// Shows the options of another shooting; null for one without. Who keeps them takes a
    /// reference.
    virtual void SetRenderOptions(QorIRdgOptions* iOptions) = 0;

protected:
    ~QorRdgCustomFrame() override = default;
};
