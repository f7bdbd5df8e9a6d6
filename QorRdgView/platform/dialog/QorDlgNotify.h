#pragma once

#include "platform/dialog/QorDlgDialog.h"

#include <functional>

/// What a notification box is about, and the answers that it offers.
enum class QorNotifyKind { Information, Question, Warning, Error };
enum class QorNotifyButtons { OK, OKCancel, YesNo, YesNoCancel };

/// A person's answers; Yes and OK are the confirming ones.
enum QorNotifyAnswer : int {
    QorNotifyNone = 0,
    QorNotifyConfirm = 1,
    QorNotifyNo = 2,
    QorNotifyCancel = 3
};

/// A message that stops everything until it is answered.
class QorDlgNotify : public QorDlgDialog {
    QorDeclareClass(QorDlgNotify)

    QorDlgNotify(QorCommand* iFather,
                 const QorString& iName,
                 QorNotifyKind iKind = QorNotifyKind::Information,
                 QorNotifyButtons iButtons = QorNotifyButtons::OK);

    [[nodiscard]] const char* GetKind() const override { return "notification"; }

    [[nodiscard]] bool IsBlocking() const override { return blocking; }

    [[nodiscard]] QorNotifyKind GetNotifyKind() const { return kind; }

    [[nodiscard]] QorNotifyButtons GetButtons() const { return buttons; }

    [[nodiscard]] const QorUnicodeString& GetText() const { return text; }

    /// Whether \p iAnswer is one of the buttons. A box with OK alone also takes the close box as
    /// OK.
    [[nodiscard]] bool Offers(QorNotifyAnswer iAnswer) const;

    /// Shows the box and runs a nested turn of the loop until a person answers; the box is hidden
    /// again then. It ends too when the box or its father is destroyed meanwhile. Without an
    /// application nobody can answer, and when the program ends meanwhile nobody does: the answer
    /// is then Cancel, No or, for a box with OK alone, OK.
    int DisplayBlocked(const QorUnicodeString& iText, const QorUnicodeString& iTitle);

    /// A person's answer; one that is not offered is OutOfRange. Insensitive unless this is the
    /// innermost open box and has no answer yet.
    QorUserResult UserAnswer(QorNotifyAnswer iAnswer);

    QorUserResult UserOK() override { return UserAnswer(QorNotifyConfirm); }

    QorUserResult UserCancel() override;

    QorUserResult UserClose() override { return UserCancel(); }

    /// The innermost box that is open, or null.
    [[nodiscard]] static QorDlgNotify* GetOpen();
    /// Told of each box once it is open and before the nested turn begins; for the automation port
    /// and tests. An empty function takes it away.
    static void SetOpenedObserver(std::function<void(QorDlgNotify&)> iObserver);

protected:
    ~QorDlgNotify() override;

private:
    /// The answer that declines as far as the box allows it.
    [[nodiscard]] QorNotifyAnswer Declining() const;
    void WaitForAnswer();

    QorNotifyKind kind;
    QorNotifyButtons buttons;
    QorUnicodeString text;
    int answer = QorNotifyNone;
    bool blocking = false;
};
