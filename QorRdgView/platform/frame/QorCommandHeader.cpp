#include "platform/frame/QorCommandHeader.h"

#include "platform/text/QorMsgCatalog.h"

#include <algorithm>
#include <utility>

const QorEventName QorCommandHeader::BecomeAvailableEvent("BecomeAvailableEvent");
const QorEventName QorCommandHeader::HeaderModifiedEvent("HeaderModifiedEvent");

namespace {

std::vector<QorCommandHeader*>& Headers() {
    static std::vector<QorCommandHeader*> headers;
    return headers;
}

QorUnicodeString
Text(const QorCommandHeader& iHeader, const char* iKey, const QorUnicodeString& iDefault = {}) {
    return QorMsgCatalog::BuildMessage("QorCommandHeaders", iHeader.GetName() + iKey, {}, iDefault);
}

} // namespace

QorCommandHeader::QorCommandHeader(QorCommand* iFather, const QorString& iName, Creator iCreator)
    : QorCommand(iFather, iName), creator(std::move(iCreator)) {
    Headers().push_back(this);
}

QorCommandHeader::~QorCommandHeader() {
    std::erase(Headers(), this);
}

QorUnicodeString QorCommandHeader::GetTitle() const {
    return ownTitle ? *ownTitle : Text(*this, ".Title", GetName().Str());
}

void QorCommandHeader::SetTitle(const QorUnicodeString& iTitle) {
    if (std::exchange(ownTitle, iTitle) != iTitle)
        StateChanged();
}

QorUnicodeString QorCommandHeader::GetShortHelp() const {
    return Text(*this, ".ShortHelp");
}

QorUnicodeString QorCommandHeader::GetLongHelp() const {
    return ownLongHelp ? *ownLongHelp : Text(*this, ".LongHelp");
}

void QorCommandHeader::SetLongHelp(const QorUnicodeString& iText) {
    if (std::exchange(ownLongHelp, iText) != iText)
        StateChanged();
}

QorString QorCommandHeader::GetIconName() const {
    return Text(*this, ".Icon").Str();
}

QorString QorCommandHeader::GetShortcut() const {
    return Text(*this, ".Shortcut").Str();
}

void QorCommandHeader::BecomeAvailable() {
    if (std::exchange(available, true))
        return;
    StateChanged();
    GetCallbackManager()->DispatchCallbacks(BecomeAvailableEvent, this);
}

void QorCommandHeader::BecomeUnavailable() {
    if (std::exchange(available, false))
        StateChanged();
}

QorResult QorCommandHeader::StartCommand() {
    if (!available)
        return E_FAIL;
    if (!creator || RunCommand())
        BecomeUnavailable();
    return S_OK;
}

QorResult QorCommandHeader::EndCommand() {
    DropCommand();
    BecomeAvailable();
    return S_OK;
}

void QorCommandHeader::SetCheckState(QorDlgCheckState iState, QorDlgNotifyFlag iNotify) {
    if (!ChangeCheckState(iState) || iNotify == QorDlgNoNotify)
        return;
    if (iState == QorDlgCheck)
        StartCommand();
    else
        EndCommand();
}

QorCommandHeader* QorCommandHeader::GetHeaderFromList(const QorString& iName, int /*iLevel*/) {
    const auto& headers = Headers();
    const auto found =
        std::find_if(headers.begin(), headers.end(),
                     [&](const QorCommandHeader* iHeader) { return iHeader->GetName() == iName; });
    return found != headers.end() ? *found : nullptr;
}

std::vector<QorCommandHeader*> QorCommandHeader::GetAll() {
    return Headers();
}

void QorCommandHeader::ChildRemoved(QorCommand& iChild) {
    if (&iChild != command)
        return;
    command = nullptr;
    CommandEnded();
}

void QorCommandHeader::StateChanged() {
    GetCallbackManager()->DispatchCallbacks(HeaderModifiedEvent, this);
}

bool QorCommandHeader::RunCommand() {
    DropCommand();
    command = creator ? creator(*this) : nullptr;
    return command != nullptr;
}

void QorCommandHeader::DropCommand() {
    if (QorCommand* last = std::exchange(command, nullptr))
        last->RequestDelayedDestruction();
}

void QorCommandHeader::CommandEnded() {
    BecomeAvailable();
}

bool QorCommandHeader::ChangeCheckState(QorDlgCheckState iState) {
    if (std::exchange(checkState, iState) == iState)
        return false;
    StateChanged();
    return true;
}

QorImplementClass(QorCommandHeader, QorCommand)
