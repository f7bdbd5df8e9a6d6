#include "platform/scene/QorRscObject.h"

#include "platform/scene/QorIAlias.h"
#include "platform/scene/QorRscContainer.h"

#include <cmath>

QorImplementClass(QorRscObject, QorBaseUnknown)

namespace {

/// What an object offers through interfaces goes to the object.
class QorRscObjectInterfaces
    : public QorImplements<QorTie<QorRscObject>, QorIAlias, QorIModelEvents> {
public:
    using QorImplements::QorImplements;

    [[nodiscard]] QorUnicodeString GetAlias() const override { return GetTied()->GetAlias(); }

    QorResult SetAlias(const QorUnicodeString& iAlias) override {
        return GetTied()->SetAlias(iAlias);
    }

    QorCallbackManager* GetConnexion() override { return GetTied()->GetConnexion(); }

    void Dispatch(QorNotification* iNotification) override { GetTied()->Dispatch(iNotification); }

protected:
    ~QorRscObjectInterfaces() override = default;
};

bool RegisterInterfaces() {
    constexpr auto create = &QorCreateExtension<QorRscObjectInterfaces>;
    QorExtension::Register(QorRscObject::ClassName(), QorIAlias::ClassId(), create);
    QorExtension::Register(QorRscObject::ClassName(), QorIModelEvents::ClassId(), create);
    return true;
}

/// Without blanks at the ends and control characters; newlines of a name would break lists.
QorUnicodeString Normalise(const QorUnicodeString& iAlias) {
    std::string text = iAlias.Str();
    for (char& one : text)
        if (static_cast<unsigned char>(one) < ' ' || one == '\x7f')
            one = ' ';
    return QorUnicodeString(text).Strip();
}

/// \p iValue as the type of the attribute, where nothing is lost.
QorAttributeValue Adapt(const QorAttributeValue& iValue, QorAttributeType iType) {
    if (const int* whole = std::get_if<int>(&iValue); whole && iType == QorAttributeType::Real)
        return static_cast<double>(*whole);
    const double* real = std::get_if<double>(&iValue);
    if (real == nullptr || iType != QorAttributeType::Integer)
        return iValue;
    const bool fits = std::trunc(*real) == *real && *real >= std::numeric_limits<int>::min() &&
                      *real <= std::numeric_limits<int>::max();
    return fits ? QorAttributeValue(static_cast<int>(*real)) : iValue;
}

} // namespace

QorRscObject::QorRscObject() {
    [[maybe_unused]] static const bool registered = RegisterInterfaces();
}

QorRscObject::~QorRscObject() = default;

QorRscObject* QorRscObject::From(QorBaseUnknown* iObject) {
    return iObject != nullptr ? dynamic_cast<QorRscObject*>(iObject->GetIdentity()) : nullptr;
}

QorResult QorRscObject::SetAlias(const QorUnicodeString& iAlias) {
    QorUnicodeString wanted = Normalise(iAlias);
    if (wanted.IsNull())
        return E_FAIL;
    if (container != nullptr)
        wanted = container->MakeUnique(*this, wanted);
    if (wanted == alias)
        return S_OK;
    Rename(std::move(wanted));
    Changed();
    return S_OK;
}

void QorRscObject::Rename(QorUnicodeString iAlias) {
    alias = std::move(iAlias);
    Renamed();
}

QorAttributeOutcome QorRscObject::GetAttribute(const QorString& iName,
                                               QorAttributeValue& oValue) const {
    const QorAttribute* attribute = GetKind().FindAttribute(iName);
    if (attribute == nullptr)
        return UnknownName(iName);
    oValue = attribute->get(*this);
    return {};
}

QorAttributeOutcome QorRscObject::SetAttribute(const QorString& iName,
                                               const QorAttributeValue& iValue) {
    using Fault = QorAttributeOutcome::Fault;
    const QorAttribute* attribute = GetKind().FindAttribute(iName);
    if (attribute == nullptr)
        return UnknownName(iName);
    const QorAttributeValue value = Adapt(iValue, attribute->type);
    const std::string subject = "the attribute \"" + iName.Str() + "\" ";
    if (static_cast<QorAttributeType>(value.index()) != attribute->type)
        return {Fault::WrongType, subject + "must be " + QorAttributeTypeName(attribute->type)};
    if (const std::string reason = attribute->rule.Refuse(value); !reason.empty())
        return {attribute->rule.kinds.empty() ? Fault::OutOfRange : Fault::WrongKind,
                subject + reason};
    if (!QorSucceeded(attribute->set(*this, value)))
        return {Fault::Refused, subject + "does not take this value"};
    return {};
}

void QorRscObject::Dispatch(QorNotification* iNotification) {
    if (iNotification == nullptr)
        return;
    const QorVar<QorRscObject> alive(this);
    callbacks.DispatchCallbacks(iNotification->GetEventName(), this, iNotification);
    if (container != nullptr)
        container->Dispatch(iNotification);
}

void QorRscObject::DispatchModify() {
    Dispatch(QorMake<QorModify>(this).Get());
}

bool QorRscObject::Takes(const char* iName, const QorAttributeValue& iValue) const {
    const QorAttribute* attribute = GetKind().FindAttribute(iName);
    return attribute != nullptr && attribute->rule.Refuse(iValue).empty();
}

void QorRscObject::Changed() {
    if (container != nullptr)
        container->Changed();
}

void QorRscObject::ForgetReferencesTo(const QorRscObject& iObject) {
    for (const QorAttribute& attribute : GetKind().attributes) {
        QorAttributeValue value = attribute.get(*this);
        if (const auto* object = std::get_if<QorReference>(&value); object && *object == &iObject)
            attribute.set(*this, QorReference());
        auto* list = std::get_if<QorReferences>(&value);
        if (list != nullptr && std::erase(*list, QorReference(const_cast<QorRscObject*>(&iObject))))
            attribute.set(*this, *list);
    }
}

QorAttributeOutcome QorRscObject::UnknownName(const QorString& iName) const {
    return {QorAttributeOutcome::Fault::UnknownName,
            "a " + GetKind().name.Str() + " has no attribute \"" + iName.Str() + "\""};
}
