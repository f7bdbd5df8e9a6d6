#pragma once

#include "platform/component/QorCallbackManager.h"
#include "platform/component/QorHandle.h"

/// Something happened to an object of a document. Its class is the event.
class QorModelNotification : public QorNotification {
    QorDeclareClass(QorModelNotification)

    /// Holds a reference on \p iObject. \p iClass names the class of objects that it concerns, \p
    /// iFlag is for whoever sends it.
    explicit QorModelNotification(QorBaseUnknown* iObject,
                                  const char* iClass = QorBaseUnknown::ClassName(),
                                  int iFlag = 1);

    [[nodiscard]] QorBaseUnknown* GetObject() const { return object.Get(); }

    [[nodiscard]] const char* GetConcernedClass() const { return concerned; }

    [[nodiscard]] int GetFlag() const { return flag; }

protected:
    ~QorModelNotification() override;

private:
    QorVar<QorBaseUnknown> object;
    const char* concerned;
    int flag;
};

/// The object has been made and stands in its document.
class QorCreate : public QorModelNotification {
    QorDeclareClass(QorCreate)
    using QorModelNotification::QorModelNotification;

protected:
    ~QorCreate() override = default;
};

/// A person has finished changing the object: observers show it anew. Sent by whoever commits the
/// change, not by the setters.
class QorModify : public QorModelNotification {
    QorDeclareClass(QorModify)
    using QorModelNotification::QorModelNotification;

protected:
    ~QorModify() override = default;
};

/// The object has left its document; nothing there refers to it any more.
class QorRemove : public QorModelNotification {
    QorDeclareClass(QorRemove)
    using QorModelNotification::QorModelNotification;

protected:
    ~QorRemove() override = default;
};

/// The events of an object, or of a document for all objects in it.
class QorIModelEvents : public QorInterface {
    QorDeclareInterface(QorIModelEvents)

    /// Where to subscribe; lives as long as the object. The events are the class names "QorCreate",
    /// "QorModify" and "QorRemove".
    [[nodiscard]] virtual QorCallbackManager* GetConnexion() = 0;
    /// Dispatches to the object's subscribers, then to those of its document, once each.
    virtual void Dispatch(QorNotification* iNotification) = 0;
};

QorDeclareHandle(QorIModelEvents);
