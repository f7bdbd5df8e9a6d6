#pragma once

#include "platform/component/QorCallbackManager.h"
#include "platform/component/QorHandle.h"
#include "platform/text/QorString.h"

#include <vector>

/// An actor of the user interface: it has a name and a father, sends notifications and receives
/// those of others. Dialogs and widgets are commands. A command belongs to its father, who destroys
/// it with himself; one without a father belongs to whoever made it.
class QorCommand
    : public QorBaseUnknown
    , public QorEventSubscriber {
    QorDeclareClass(QorCommand)

    /// \p iFather may be null.
    QorCommand(QorCommand* iFather, const QorString& iName);

    [[nodiscard]] const QorString& GetName() const { return name; }

    /// Null for a command that never had one or whose father is gone.
    [[nodiscard]] QorCommand* GetFather() const { return father; }

    /// In the order of their making.
    [[nodiscard]] const std::vector<QorCommand*>& GetChildren() const { return children; }

    /// Publisher of the command's own events.
    [[nodiscard]] QorCallbackManager* GetCallbackManager() { return &callbacks; }

    /// Calls \p iMethod of this object when \p iSender sends a notification of \p iNotification's
    /// class that reaches this command. Subscribing the same again returns the same id.
    template <class Receiver>
    static QorCallbackId
    AddAnalyseNotificationCB(Receiver* iReceiver,
                             QorCommand* iSender,
                             const QorNotification* iNotification,
                             QorCommandMethod<std::type_identity_t<Receiver>> iMethod,
                             QorSubscriberData iData = nullptr) {
        if (iSender == nullptr || iNotification == nullptr)
            return 0;
        return iSender->callbacks.Add(iReceiver, iNotification->GetEventName(),
                                      QorCallbackMethod(iMethod), iData);
    }

    /// Ends such a subscription and sets \p ioId to 0.
    static void RemoveAnalyseNotificationCB(QorCommand* iSender, QorCallbackId& ioId);

    /// Sends a notification from this command to \p iTo, or, when \p iTo has no subscription for
    /// it, to the nearest of its fathers that has. Whether somebody received it. A null \p iTo is
    /// nobody.
    bool SendNotification(QorCommand* iTo, QorNotification* iNotification);

    /// Destroys the command, and so its children, at a later turn of the loop, at the depth of the
    /// loop where it was asked for and never deeper. From now on the command is dying: a person can
    /// do no more with it.
    void RequestDelayedDestruction();
    /// Whether its destruction, or that of one of its fathers, has been asked for.
    [[nodiscard]] bool IsDying() const;

protected:
    ~QorCommand() override;

    /// Called once, while the command is still whole: when its destruction is asked for, or when
    /// its father is destroyed; then it has no father any more.
    virtual void Dying() {}

    virtual void ChildAdded(QorCommand& /*iChild*/) {}

    virtual void ChildRemoved(QorCommand& /*iChild*/) {}

private:
    bool BeginDying();
    void Destroy();
    void GiveBack();

    QorString name;
    QorCommand* father;
    std::vector<QorCommand*> children;
    QorCallbackManager callbacks;
    bool dying = false;
    bool held = true; ///< the first reference, which belongs to the father or maker, is still there
};
