#pragma once

#include "platform/component/QorCallbackManager.h"
#include "platform/scene/QorRscKind.h"

class QorRscContainer;

/// Base of what a document holds besides its product: a name, attributes, events. Answers QorIAlias
/// and QorIModelEvents. Made by its kind, or by a container, which then holds it.
class QorRscObject : public QorBaseUnknown {
    QorDeclareClass(QorRscObject)

    QorRscObject();

    [[nodiscard]] virtual const QorRscKind& GetKind() const = 0;

    /// The object behind an interface or reference; null when it is of another sort.
    [[nodiscard]] static QorRscObject* From(QorBaseUnknown* iObject);

    template <class I>

    requires std::derived_from<I, QorInterface>

    [[nodiscard]] static QorRscObject* From(I* iObject) {
        return iObject != nullptr ? From(iObject->GetImplementation()) : nullptr;
    }

    [[nodiscard]] const QorUnicodeString& GetAlias() const { return alias; }

    /// Blanks at both ends are left out, control characters become blanks, and in a document, where
    /// names of the kind are unique, one that is taken gets a number ("Hero.2"). E_FAIL, and
    /// nothing changes, when nothing is left. Dispatches nothing.
    QorResult SetAlias(const QorUnicodeString& iAlias);

    [[nodiscard]] QorAttributeOutcome GetAttribute(const QorString& iName,
                                                   QorAttributeValue& oValue) const;
    /// Goes through the setter. An integer is taken for a real, and a real without fraction for an
    /// integer. Dispatches nothing.
    QorAttributeOutcome SetAttribute(const QorString& iName, const QorAttributeValue& iValue);

    /// The document's container that holds it, or null; no reference added.
    [[nodiscard]] QorRscContainer* GetContainer() const { return container; }

    /// Publisher of the object's own events.
    [[nodiscard]] QorCallbackManager* GetConnexion() { return &callbacks; }

    /// To the object's subscribers with the object as publisher, then to those of its document.
    void Dispatch(QorNotification* iNotification);
    /// The same with a QorModify about it.
    void DispatchModify();

protected:
    ~QorRscObject() override;

    /// For setters: checks \p iValue by the rule of the attribute \p iName and stores it.
    template <class T>
    QorResult Put(const char* iName, T& ioMember, const T& iValue);
    /// Whether the rule of the attribute takes the value.
    [[nodiscard]] bool Takes(const char* iName, const QorAttributeValue& iValue) const;
    /// For setters: something has changed; tells the container.
    void Changed();

    /// The alias is another one.
    virtual void Renamed() {}

private:
    friend class QorRscContainer;

    void Rename(QorUnicodeString iAlias);
    void ForgetReferencesTo(const QorRscObject& iObject);
    [[nodiscard]] QorAttributeOutcome UnknownName(const QorString& iName) const;

    QorUnicodeString alias;
    QorRscContainer* container = nullptr;
    QorCallbackManager callbacks;
};

QorDeclareHandle(QorRscObject);
