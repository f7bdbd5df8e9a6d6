#pragma once

#include "platform/component/QorResult.h"

class QorBaseUnknown;

/// Identity of an interface: one constant object an interface, compared by address.
struct QorInterfaceId {
    const char* name;

    bool operator==(const QorInterfaceId& iOther) const { return this == &iOther; }
};

/// What every interface derives from. Its three operations are those of the object behind it, so
/// that a handle on an interface keeps that object alive. Interfaces are implemented through
/// QorImplements.
class QorInterface {
public:
    virtual unsigned AddRef() = 0;
    virtual unsigned Release() = 0;
    /// As QorBaseUnknown::QueryInterface: every interface of the object is reached from every
    /// other.
    virtual QorResult QueryInterface(const QorInterfaceId& iInterface, void** oInterface) = 0;
    /// The object that implements this interface (an extension or tie where there is one); no
    /// reference added.
    [[nodiscard]] virtual QorBaseUnknown* GetImplementation() = 0;

protected:
    QorInterface() = default;
    QorInterface(const QorInterface&) = default;
    QorInterface& operator=(const QorInterface&) = default;
    ~QorInterface() = default;
};

/// In an interface: its identity. `QorIRdgDisplay::ClassId()`, `QorIRdgDisplay::ClassName()`.
#define QorDeclareInterface(Interface)                                                             \
public:                                                                                            \
    static const QorInterfaceId& ClassId() {                                                       \
        static constexpr QorInterfaceId id{#Interface};                                            \
        return id;                                                                                 \
    }                                                                                              \
    static const char* ClassName() {                                                               \
        return #Interface;                                                                         \
    }                                                                                              \
                                                                                                   \
protected:                                                                                         \
    ~Interface() = default;                                                                        \
                                                                                                   \
public:

/// A base class that implements interfaces: `class QorRdgDisplayViewer : public
/// QorImplements<QorExtension, QorIRdgDisplay>`. Joins the interfaces' counting and queries to the
/// object's own.
template <class Base, class... Interfaces>
class QorImplements
    : public Base
    , public Interfaces... {
public:
    using Base::Base;

    unsigned AddRef() final { return Base::AddRef(); }

    unsigned Release() final { return Base::Release(); }

    QorResult QueryInterface(const QorInterfaceId& iInterface, void** oInterface) final {
        return Base::QueryInterface(iInterface, oInterface);
    }

    [[nodiscard]] QorBaseUnknown* GetImplementation() final { return this; }

protected:
    [[nodiscard]] void* FindOwnInterface(const QorInterfaceId& iInterface) override {
        void* found = nullptr;
        ((iInterface == Interfaces::ClassId() ? (found = static_cast<Interfaces*>(this), true)
                                              : false) ||
         ...);
        return found != nullptr ? found : Base::FindOwnInterface(iInterface);
    }
};
