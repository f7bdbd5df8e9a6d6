#pragma once

#include "platform/dialog/QorDialog.h"

/// A group of widgets: with a title and border, or plain (QorDlgFraNoTitle, QorDlgFraNoFrame). A
/// disabled frame disables what is in it.
class QorDlgFrame : public QorDialog {
    QorDeclareClass(QorDlgFrame)

    QorDlgFrame(QorCommand* iFather,
                const QorString& iName,
                QorDlgStyle iStyle = QorDlgDefaultStyle);

    [[nodiscard]] const char* GetKind() const override { return "frame"; }

protected:
    ~QorDlgFrame() override = default;
};
