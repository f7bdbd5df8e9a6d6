// How widgets get and lose their peers.
#include "platform/dialog/QorDialog.h"
#include "platform/dialog/QorToolkit.h"
#include "platform/system/QorApplication.h"
#include "platform/system/QorEventLoop.h"

bool QorDialog::MakePeer() {
    QorToolkit* toolkit = QorToolkit::GetInstalled();
    if (peer != nullptr || toolkit == nullptr)
        return false;
    const QorDialog* around = GetFatherDialog();
    if (!IsWindow() && (around == nullptr || around->peer == nullptr))
        return false;
    peer = toolkit->CreatePeer(*this);
    return peer != nullptr;
}

void QorDialog::Realize() {
    const bool made = MakePeer();
    if (peer == nullptr)
        return;
    bool grown = false;
    for (QorDialog* widget : GetWidgets()) {
        const bool had = widget->peer != nullptr;
        widget->Realize();
        grown = grown || (!had && widget->peer != nullptr);
    }
    if (made)
        Changed(QorAspectEverything);
    else if (grown)
        Changed(QorAspectChildren | QorAspectLayout);
}

void QorDialog::Unrealize() {
    realizeLater.reset();
    for (QorCommand* child : GetChildren())
        if (auto* widget = dynamic_cast<QorDialog*>(child))
            widget->Unrealize();
    peer.reset();
}

/// A child announces itself before it is whole, so its peer waits for the next turn. Without an
/// application there is none, and the next Realize makes it.
void QorDialog::RealizeLater() {
    const QorApplication* application = QorApplication::MainApplication();
    if (peer == nullptr || realizeLater != nullptr || application == nullptr)
        return;
    realizeLater = std::make_shared<QorDialog*>(this);
    const std::weak_ptr<QorDialog*> later = realizeLater;
    // Making peers only draws what is there, so it may run below a blocking box too.
    application->GetLoop().Post(
        [later] {
            const std::shared_ptr<QorDialog*> widget = later.lock();
            if (widget == nullptr)
                return;
            (*widget)->realizeLater.reset();
            (*widget)->Realize();
        },
        QorEventLoop::Scope::AnyDepth);
}

void QorDialog::Changed(QorAspects iAspects) {
    if (peer != nullptr)
        peer->Update(iAspects);
}

void QorDialog::ChildAdded(QorCommand& /*iChild*/) {
    RealizeLater();
}

void QorDialog::ChildRemoved(QorCommand& iChild) {
    auto* widget = dynamic_cast<QorDialog*>(&iChild);
    if (widget == nullptr)
        return;
    widget->Unrealize();
    if (!widget->IsWindow())
        Changed(QorAspectChildren | QorAspectLayout);
}
