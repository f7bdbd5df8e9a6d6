#pragma once

#include "platform/scene/QorAttributePairs.h"
#include "platform/scene/QorRscObject.h"

#include <optional>

// For the classes of objects: the bodies of their setters.

template <class T>
QorResult QorRscObject::Put(const char* iName, T& ioMember, const T& iValue) {
    if (!Takes(iName, QorAttributeTraits<T>::ToValue(iValue)))
        return E_FAIL;
    if (ioMember == iValue)
        return S_OK;
    ioMember = iValue;
    Changed();
    return S_OK;
}

/// For tables of kinds.
template <class Object>
[[nodiscard]] QorRscObject* QorCreateObject() {
    return new Object;
}
