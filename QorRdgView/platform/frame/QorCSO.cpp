#include "platform/frame/QorCSO.h"

#include "platform/frame/QorPathElement.h"

#include <algorithm>

const QorEventName QorCSO::CSO_MODIFIED("CSO_MODIFIED");

namespace {

/// Two paths are the same when they lead through the same objects, all else when it is one object.
bool IsSame(QorBaseUnknown& iFirst, QorBaseUnknown& iSecond) {
    const auto* first = dynamic_cast<QorPathElement*>(&iFirst);
    const auto* second = dynamic_cast<QorPathElement*>(&iSecond);
    if (first != nullptr && second != nullptr)
        return first->IsSamePath(*second);
    return iFirst.IsEqual(&iSecond);
}

} // namespace

QorCSO::QorCSO() = default;

QorCSO::~QorCSO() = default;

QorBaseUnknown* QorCSO::GetElement(int iIndex) const {
    if (iIndex < 1 || iIndex > GetSize())
        return nullptr;
    return elements[static_cast<std::size_t>(iIndex) - 1].Get();
}

void QorCSO::Empty() {
    if (elements.empty())
        return;
    elements.clear();
    Modified();
}

void QorCSO::SetElements(const std::vector<QorVar<QorBaseUnknown>>& iElements) {
    std::vector<QorVar<QorBaseUnknown>> wanted;
    wanted.reserve(iElements.size());
    for (const QorVar<QorBaseUnknown>& element : iElements)
        if (element)
            wanted.push_back(element);
    if (wanted == elements)
        return;
    elements.swap(wanted); // what was there goes after the event
    Modified();
}

void QorCSO::AddElement(QorBaseUnknown* iElement, int iOnce) {
    if (iElement == nullptr || (iOnce != 0 && Holds(*iElement)))
        return;
    elements.emplace_back(iElement);
    Modified();
}

void QorCSO::RemoveElement(QorBaseUnknown* iElement) {
    if (iElement == nullptr)
        return;
    const QorVar<QorBaseUnknown> alive(iElement);
    const auto same = [&](const QorVar<QorBaseUnknown>& iOne) {
        return IsSame(*iOne, *iElement);
    };
    if (std::erase_if(elements, same) != 0)
        Modified();
}

bool QorCSO::Holds(QorBaseUnknown& iElement) const {
    return std::any_of(elements.begin(), elements.end(),
                       [&](const QorVar<QorBaseUnknown>& iOne) { return IsSame(*iOne, iElement); });
}

void QorCSO::Modified() {
    callbacks.DispatchCallbacks(CSO_MODIFIED, this);
}

QorImplementClass(QorCSO, QorBaseUnknown)
