#include "platform/component/QorBaseUnknown.h"

#include "platform/component/QorExtensionList.h"

namespace {

/// Count of an object that is being destroyed: references taken and given back meanwhile change
/// nothing.
constexpr unsigned beingDestroyed = 1U << 30U;

} // namespace

QorBaseUnknown::QorBaseUnknown() = default;

QorBaseUnknown::QorBaseUnknown(const QorBaseUnknown& /*iOther*/) {}

QorBaseUnknown& QorBaseUnknown::operator=(const QorBaseUnknown& /*iOther*/) {
    return *this;
}

QorBaseUnknown::~QorBaseUnknown() = default;

const QorMetaObject& QorBaseUnknown::MetaObject() {
    static const auto* meta =
        new QorMetaObject("QorBaseUnknown", nullptr, &QorBaseUnknown::CreateItself);
    return *meta;
}

QorBaseUnknown* QorBaseUnknown::CreateItself() {
    return new QorBaseUnknown;
}

const QorMetaObject& QorBaseUnknown::GetMetaObject() const {
    return MetaObject();
}

unsigned QorBaseUnknown::AddRef() {
    return references.fetch_add(1, std::memory_order_relaxed) + 1;
}

unsigned QorBaseUnknown::Release() {
    const unsigned left = references.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (left != 0)
        return left;
    references.store(beingDestroyed, std::memory_order_relaxed);
    // Extensions go first: they may still look at their owner, which is whole until its own
    // destructors run.
    extensions.reset();
    delete this;
    return 0;
}

QorResult QorBaseUnknown::QueryInterface(const QorInterfaceId& iInterface, void** oInterface) {
    if (oInterface == nullptr)
        return E_FAIL;
    *oInterface = FindOwnInterface(iInterface);
    if (*oInterface == nullptr)
        *oInterface = FindExtension(iInterface);
    if (*oInterface == nullptr)
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

bool QorBaseUnknown::IsEqual(QorBaseUnknown* iOther) {
    return iOther != nullptr && GetIdentity() == iOther->GetIdentity();
}

void* QorBaseUnknown::FindOwnInterface(const QorInterfaceId& /*iInterface*/) {
    return nullptr;
}

void* QorBaseUnknown::FindExtension(const QorInterfaceId& iInterface) {
    if (references.load(std::memory_order_relaxed) >= beingDestroyed)
        return nullptr;
    if (!extensions)
        extensions = std::make_unique<QorExtensionList>();
    return extensions->Find(*this, iInterface);
}
