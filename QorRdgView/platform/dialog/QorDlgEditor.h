#pragma once

#include "platform/dialog/QorDialog.h"
#include "platform/dialog/QorDlgNotifications.h"

/// One line of text. Notifies once, on Enter or on leaving, and only when the text has changed
/// since.
class QorDlgEditor : public QorDialog {
    QorDeclareClass(QorDlgEditor)

    QorDlgEditor(QorCommand* iFather,
                 const QorString& iName,
                 QorDlgStyle iStyle = QorDlgDefaultStyle);

    [[nodiscard]] const char* GetKind() const override { return "editor"; }

    [[nodiscard]] QorNotification* GetEditModifyNotification() const { return modify.Get(); }

    [[nodiscard]] const QorUnicodeString& GetText() const { return text; }

    void SetText(const QorUnicodeString& iText, QorDlgNotifyFlag iNotify = QorDlgNoNotify);

    /// A person has entered \p iText; an equal text sends nothing.
    QorUserResult UserSetText(const QorUnicodeString& iText);

protected:
    ~QorDlgEditor() override = default;

private:
    QorUnicodeString text;
    QorOwnNotification<QorDlgEditModifyNotification> modify;
};
