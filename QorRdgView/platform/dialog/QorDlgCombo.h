#pragma once

#include "platform/dialog/QorDialog.h"
#include "platform/dialog/QorDlgNotifications.h"

#include <vector>

/// A drop-down list of lines, one of them selected. An empty combo selects nothing (-1).
class QorDlgCombo : public QorDialog {
    QorDeclareClass(QorDlgCombo)

    QorDlgCombo(QorCommand* iFather,
                const QorString& iName,
                QorDlgStyle iStyle = QorDlgDefaultStyle);

    [[nodiscard]] const char* GetKind() const override { return "combo"; }

    [[nodiscard]] QorNotification* GetComboSelectNotification() const { return select.Get(); }

    [[nodiscard]] const std::vector<QorUnicodeString>& GetLines() const { return lines; }

    /// Appends a line; the first one becomes the selection.
    void SetLine(const QorUnicodeString& iLine);
    /// Replaces line \p iIndex; an index beyond the end is ignored.
    void SetLine(const QorUnicodeString& iLine, int iIndex);
    void ClearLine();

    /// Index of the selected line, -1 for none.
    [[nodiscard]] int GetSelect() const { return selection; }

    /// An index that is no line is ignored.
    void SetSelect(int iIndex, QorDlgNotifyFlag iNotify = QorDlgNoNotify);

    /// A person has chosen line \p iIndex; the selected one sends nothing.
    QorUserResult UserSelect(int iIndex);

protected:
    ~QorDlgCombo() override = default;

private:
    [[nodiscard]] bool IsLine(int iIndex) const;

    std::vector<QorUnicodeString> lines;
    int selection = -1;
    QorOwnNotification<QorDlgComboSelectNotification> select;
};
