#pragma once

#include "platform/dialog/QorDialog.h"

/// A text, its title.
class QorDlgLabel : public QorDialog {
    QorDeclareClass(QorDlgLabel)

    QorDlgLabel(QorCommand* iFather,
                const QorString& iName,
                QorDlgStyle iStyle = QorDlgDefaultStyle);

    [[nodiscard]] const char* GetKind() const override { return "label"; }

protected:
    ~QorDlgLabel() override = default;
};

/// A thin line between groups of widgets.
class QorDlgSeparator : public QorDialog {
    QorDeclareClass(QorDlgSeparator)

    QorDlgSeparator(QorCommand* iFather,
                    const QorString& iName,
                    QorDlgStyle iStyle = QorDlgDefaultStyle);

    [[nodiscard]] const char* GetKind() const override { return "separator"; }

protected:
    ~QorDlgSeparator() override = default;
};
