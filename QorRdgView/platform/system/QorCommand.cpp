#include "platform/system/QorCommand.h"

#include "platform/system/QorApplication.h"
#include "platform/system/QorEventLoop.h"

#include <algorithm>

QorImplementClass(QorCommand, QorBaseUnknown)

QorCommand::QorCommand(QorCommand* iFather, const QorString& iName) : name(iName), father(iFather) {
    if (father == nullptr)
        return;
    father->children.push_back(this);
    father->ChildAdded(*this);
}

QorCommand::~QorCommand() {
    while (!children.empty()) {
        QorCommand* last = children.back();
        children.pop_back();
        last->father = nullptr;
        last->BeginDying();
        last->GiveBack();
    }
    if (father != nullptr)
        std::erase(father->children, this);
}

void QorCommand::RemoveAnalyseNotificationCB(QorCommand* iSender, QorCallbackId& ioId) {
    if (iSender != nullptr)
        iSender->callbacks.RemoveCallback(ioId);
    ioId = 0;
}

bool QorCommand::SendNotification(QorCommand* iTo, QorNotification* iNotification) {
    if (iNotification == nullptr)
        return false;
    const QorVar<QorBaseUnknown> alive(this);
    const QorDispatch dispatch{.event = iNotification->GetEventName(),
                               .publisher = this,
                               .notification = iNotification,
                               .command = this};
    QorCallbackManager::Observe(dispatch.event, this);
    for (QorCommand* receiver = iTo; receiver != nullptr; receiver = receiver->father)
        if (callbacks.DispatchTo(receiver, dispatch))
            return true;
    return false;
}

void QorCommand::RequestDelayedDestruction() {
    if (!BeginDying())
        return;
    const QorApplication* application = QorApplication::MainApplication();
    if (application == nullptr) {
        Destroy();
        return;
    }
    application->GetLoop().Post([self = QorVar<QorCommand>(this)] { self->Destroy(); });
}

bool QorCommand::BeginDying() {
    if (dying)
        return false;
    dying = true;
    Dying();
    return true;
}

bool QorCommand::IsDying() const {
    for (const QorCommand* command = this; command != nullptr; command = command->father)
        if (command->dying)
            return true;
    return false;
}

void QorCommand::Destroy() {
    if (father != nullptr) {
        std::erase(father->children, this);
        father->ChildRemoved(*this);
        father = nullptr;
    }
    GiveBack();
}

void QorCommand::GiveBack() {
    if (!held)
        return;
    held = false;
    Release();
}
