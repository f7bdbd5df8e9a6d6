#pragma once

#include "platform/dialog/QorDlgDialog.h"

#include <array>

/// A window in which a colour is chosen. Like a file dialog it only notifies and stays until it is
/// destroyed.
class QorDlgColorEditor : public QorDlgDialog {
    QorDeclareClass(QorDlgColorEditor)

    QorDlgColorEditor(QorCommand* iFather,
                      const QorString& iName,
                      QorDlgStyle iStyle = QorDlgDefaultStyle);

    [[nodiscard]] const char* GetKind() const override { return "color editor"; }

    [[nodiscard]] QorNotification* GetColorOKNotification() const { return accepted.Get(); }

    [[nodiscard]] QorNotification* GetColorCancelNotification() const { return canceled.Get(); }

    /// Red, green, blue in 0..1; values outside are clamped, a part that is no number stays as it
    /// was.
    [[nodiscard]] const std::array<float, 3>& GetColor() const { return color; }

    void SetColor(const std::array<float, 3>& iColor);

    /// A person's OK with that colour.
    QorUserResult UserAccept(const std::array<float, 3>& iColor);

    QorUserResult UserOK() override { return UserAccept(color); }

    QorUserResult UserCancel() override;

protected:
    ~QorDlgColorEditor() override = default;

private:
    std::array<float, 3> color{1.0F, 1.0F, 1.0F};
    QorOwnNotification<QorDlgColorOKNotification> accepted;
    QorOwnNotification<QorDlgColorCancelNotification> canceled;
};
