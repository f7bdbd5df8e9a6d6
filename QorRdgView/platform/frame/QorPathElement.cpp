#include "platform/frame/QorPathElement.h"

#include <algorithm>

QorPathElement::QorPathElement() = default;

QorPathElement::~QorPathElement() = default;

void QorPathElement::AddChildElement(QorBaseUnknown* iObject) {
    if (iObject != nullptr)
        objects.emplace_back(iObject);
}

QorBaseUnknown* QorPathElement::GetElement(int iIndex) const {
    if (iIndex < 0 || iIndex >= GetSize())
        return nullptr;
    return objects[static_cast<std::size_t>(iIndex)].Get();
}

QorResult QorPathElement::FindInterface(const QorInterfaceId& iInterface, void** oInterface) const {
    if (oInterface == nullptr)
        return E_FAIL;
    *oInterface = nullptr;
    for (const QorVar<QorBaseUnknown>& object : objects)
        if (QorSucceeded(object->QueryInterface(iInterface, oInterface)))
            return S_OK;
    return E_NOINTERFACE;
}

bool QorPathElement::IsSamePath(const QorPathElement& iOther) const {
    const auto same = [](const QorVar<QorBaseUnknown>& iA, const QorVar<QorBaseUnknown>& iB) {
        return iA->IsEqual(iB.Get());
    };
    return std::equal(objects.begin(), objects.end(), iOther.objects.begin(), iOther.objects.end(),
                      same);
}

QorImplementClass(QorPathElement, QorBaseUnknown)
