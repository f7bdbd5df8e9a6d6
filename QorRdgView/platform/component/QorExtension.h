#pragma once

#include "platform/component/QorBaseUnknown.h"

/// An object that adds interfaces to another, its owner. References on an extension count on the
/// owner, so that both live and end together; the owner destroys its extensions when it is
/// destroyed itself.
class QorExtension : public QorBaseUnknown {
    QorDeclareClass(QorExtension)

    /// \p iOwner outlives the extension; no reference is taken.
    explicit QorExtension(QorBaseUnknown* iOwner) : owner(iOwner) {}

    unsigned AddRef() override;
    unsigned Release() override;
    QorResult QueryInterface(const QorInterfaceId& iInterface, void** oInterface) override;

    [[nodiscard]] QorBaseUnknown* GetIdentity() override { return owner->GetIdentity(); }

    /// The object that is extended.
    [[nodiscard]] QorBaseUnknown* GetOwner() const { return owner; }

    /// Makes an extension of \p iOwner; null when it cannot be made. The reference belongs to the
    /// caller.
    using Factory = QorExtension* (*)(QorBaseUnknown* iOwner);

    /// From now on objects of \p iClass, and of classes that derive from it, answer \p iInterface
    /// through an extension made by \p iFactory. Extensions of one object made by one factory are
    /// one extension, so a factory may be registered for several interfaces. Registering the same
    /// again changes nothing.
    static void Register(const char* iClass, const QorInterfaceId& iInterface, Factory iFactory);
    /// Takes a registration back; extensions already made stay.
    static void Unregister(const char* iClass, const QorInterfaceId& iInterface);

protected:
    ~QorExtension() override = default;

private:
    friend class QorExtensionList;
    friend class QorBaseUnknown;

    QorBaseUnknown* owner;
};

/// A tie: the adapter by which a class that does not derive from an interface implements it. A tie
/// class forwards each operation of the interface to the operation of the same name of \p
/// Implementation.
template <class Implementation>
class QorTie : public QorExtension {
public:
    explicit QorTie(QorBaseUnknown* iOwner) : QorExtension(iOwner) {}

protected:
    [[nodiscard]] Implementation* GetTied() const {
        return static_cast<Implementation*>(GetOwner());
    }
};

/// Makes an Extension for an owner; the body of the factories below.
template <class Extension>
[[nodiscard]] QorExtension* QorCreateExtension(QorBaseUnknown* iOwner) {
    return new Extension(iOwner);
}

/// Defines the factory of an extension that implements an interface by itself:
/// QorDefineBOA(QorIRdgDisplay, QorRdgDisplayViewer) defines
/// CreateBOAQorIRdgDisplayQorRdgDisplayViewer.
#define QorDefineBOA(Interface, Extension)                                                         \
    QorExtension* CreateBOA##Interface##Extension(QorBaseUnknown* iOwner) {                        \
        return QorCreateExtension<Extension>(iOwner);                                              \
    }

/// Declares such a factory.
#define QorDeclareBOA(Interface, Extension)                                                        \
    [[nodiscard]] QorExtension* CreateBOA##Interface##Extension(QorBaseUnknown* iOwner)
