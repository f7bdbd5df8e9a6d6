#pragma once

#include "platform/component/QorInterface.h"
#include "platform/component/QorMetaObject.h"

#include <memory>

class QorExtension;
class QorExtensionList;

/// Root of all objects: counted references, a meta-object, and interfaces reached by
/// QueryInterface. A new object has one reference, which belongs to whoever made it. Counting is
/// thread-safe; all else is for the user-interface thread. Objects are destroyed by Release alone.
class QorBaseUnknown {
public:
    QorBaseUnknown();
    QorBaseUnknown(const QorBaseUnknown& iOther);
    QorBaseUnknown& operator=(const QorBaseUnknown& iOther);
    QorBaseUnknown(QorBaseUnknown&&) = delete;
    QorBaseUnknown& operator=(QorBaseUnknown&&) = delete;

    static const QorMetaObject& MetaObject();

    static const char* ClassName() { return "QorBaseUnknown"; }

    static QorBaseUnknown* CreateItself();
    [[nodiscard]] virtual const QorMetaObject& GetMetaObject() const;

    /// Name of the object's own class.
    [[nodiscard]] const char* IsA() const { return GetMetaObject().GetName(); }

    /// Whether the object's class is, or derives from, the one named.
    [[nodiscard]] bool IsAKindOf(const char* iName) const {
        return GetMetaObject().IsAKindOf(iName);
    }

    [[nodiscard]] bool IsAKindOf(const QorMetaObject& iClass) const {
        return GetMetaObject().IsAKindOf(iClass);
    }

    /// Adds a reference and returns their number.
    virtual unsigned AddRef();
    /// Gives a reference back and returns how many are left; the last one destroys the object.
    virtual unsigned Release();

    /// Looks for \p iInterface among the object's own interfaces, then among the extensions and
    /// ties registered for its class and its base classes, the nearest class first; an extension is
    /// made on first query and lives as long as the object. On success *oInterface has a reference
    /// that belongs to the caller; else it is null and the result is E_NOINTERFACE.
    virtual QorResult QueryInterface(const QorInterfaceId& iInterface, void** oInterface);

    /// Whether two pointers, through whatever interface or extension they came, lead to one object.
    [[nodiscard]] bool IsEqual(QorBaseUnknown* iOther);

    /// The object that carries extensions and is counted: an extension answers its owner, all
    /// others themselves.
    [[nodiscard]] virtual QorBaseUnknown* GetIdentity() { return this; }

protected:
    virtual ~QorBaseUnknown();

    /// The interface pointer when this very object implements it; no reference added. For
    /// QorImplements.
    [[nodiscard]] virtual void* FindOwnInterface(const QorInterfaceId& iInterface);

private:
    friend class QorExtension;
    [[nodiscard]] void* FindExtension(const QorInterfaceId& iInterface);

    std::atomic<unsigned> references = 1;
    std::unique_ptr<QorExtensionList> extensions;
    [[no_unique_address]] QorLiveCounter<QorBaseUnknown> _liveCounter;
};
