#include "platform/dialog/QorDlgNotify.h"

#include "platform/system/QorApplication.h"
#include "platform/system/QorEventLoop.h"

#include <algorithm>

QorImplementClass(QorDlgNotify, QorDlgDialog)

namespace {

/// The boxes that are open, the innermost last.
std::vector<QorDlgNotify*>& OpenBoxes() {
    static std::vector<QorDlgNotify*> boxes;
    return boxes;
}

std::function<void(QorDlgNotify&)>& OpenedObserver() {
    static std::function<void(QorDlgNotify&)> observer;
    return observer;
}

struct Offer {
    QorNotifyButtons buttons;
    std::vector<QorNotifyAnswer> answers; ///< the one that declines last
};

const Offer& FindOffer(QorNotifyButtons iButtons) {
    static const std::vector<Offer> offers = {
        {QorNotifyButtons::OK, {QorNotifyConfirm}},
        {QorNotifyButtons::OKCancel, {QorNotifyConfirm, QorNotifyCancel}},
        {QorNotifyButtons::YesNo, {QorNotifyConfirm, QorNotifyNo}},
        {QorNotifyButtons::YesNoCancel, {QorNotifyConfirm, QorNotifyNo, QorNotifyCancel}},
    };
    const auto found = std::find_if(offers.begin(), offers.end(),
                                    [&](const Offer& iOne) { return iOne.buttons == iButtons; });
    return found != offers.end() ? *found : offers.front();
}

} // namespace

QorDlgNotify::QorDlgNotify(QorCommand* iFather,
                           const QorString& iName,
                           QorNotifyKind iKind,
                           QorNotifyButtons iButtons)
    : QorDlgDialog(iFather, iName, QorDlgWndModal | QorDlgWndNoResize)
    , kind(iKind)
    , buttons(iButtons) {}

QorDlgNotify::~QorDlgNotify() = default;

bool QorDlgNotify::Offers(QorNotifyAnswer iAnswer) const {
    const auto& answers = FindOffer(buttons).answers;
    return std::find(answers.begin(), answers.end(), iAnswer) != answers.end();
}

QorNotifyAnswer QorDlgNotify::Declining() const {
    return FindOffer(buttons).answers.back();
}

QorDlgNotify* QorDlgNotify::GetOpen() {
    return OpenBoxes().empty() ? nullptr : OpenBoxes().back();
}

void QorDlgNotify::SetOpenedObserver(std::function<void(QorDlgNotify&)> iObserver) {
    OpenedObserver() = std::move(iObserver);
}

int QorDlgNotify::DisplayBlocked(const QorUnicodeString& iText, const QorUnicodeString& iTitle) {
    if (blocking)
        return Declining();
    const QorVar<QorDlgNotify> alive(this);
    text = iText;
    answer = QorNotifyNone;
    SetTitle(iTitle);
    Changed(QorAspectValue);
    blocking = true;
    OpenBoxes().push_back(this);
    SetVisibility(QorDlgSHOW);
    WaitForAnswer();
    std::erase(OpenBoxes(), this);
    blocking = false;
    SetVisibility(QorDlgHIDE);
    return answer != QorNotifyNone ? answer : Declining();
}

void QorDlgNotify::WaitForAnswer() {
    // A box of a dialog that was dying before it opened still wants its answer.
    const bool wasDying = IsDying();
    const bool hadFather = GetFather() != nullptr;
    const auto done = [&] {
        const bool gone = (!wasDying && IsDying()) || (hadFather && GetFather() == nullptr);
        return answer != QorNotifyNone || gone;
    };
    if (const auto observer = OpenedObserver())
        observer(*this);
    if (QorApplication* application = QorApplication::MainApplication())
        application->GetLoop().RunNested(done);
}

QorUserResult QorDlgNotify::UserAnswer(QorNotifyAnswer iAnswer) {
    if (GetOpen() != this || answer != QorNotifyNone)
        return QorUserResult::Insensitive;
    if (!Offers(iAnswer))
        return QorUserResult::OutOfRange;
    answer = iAnswer;
    return QorUserResult::Done;
}

QorUserResult QorDlgNotify::UserCancel() {
    return UserAnswer(Declining());
}
