#pragma once

#include "platform/component/QorBaseUnknown.h"
#include "platform/component/QorEventName.h"

/// What is sent when something happened: a person pressed a button, a window was deleted. Its class
/// is its event; derived classes add what the receiver may want to know.
class QorNotification : public QorBaseUnknown {
    QorDeclareClass(QorNotification)

    QorNotification() = default;

    /// The event that subscribers name: by default the class name.
    [[nodiscard]] virtual QorEventName GetEventName() const {
        return GetMetaObject().GetEventName();
    }

protected:
    ~QorNotification() override = default;
};

/// Declares a notification class that adds nothing but its name.
#define QorDeclareNotification(Class)                                                              \
    class Class : public QorNotification {                                                         \
        QorDeclareClass(Class)                                                                     \
    }

/// Its body, in one .cpp file.
#define QorImplementNotification(Class) QorImplementClass(Class, QorNotification)
