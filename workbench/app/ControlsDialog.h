#pragma once

#include "platform/frame/QorFrmDialog.h"

namespace qor::app {

/// What the mouse and the keys do in a view. Texts are in the message catalog "ControlsDialog".
class ControlsDialog : public QorFrmDialog {
    QorDeclareClass(ControlsDialog)

    ControlsDialog(QorCommand* owner, const QorString& itsName);

protected:
    ~ControlsDialog() override = default;
};

} // namespace qor::app
