#pragma once

#include "platform/scene/QorAttribute.h"
#include "platform/scene/QorListOf.h"

#include <type_traits>

/// How the type of a getter becomes that of an attribute, and back. FromValue: false when the value
/// is of another type, or a reference to an object without the interface.
template <class T>
struct QorAttributeTraits {
    [[nodiscard]] static QorAttributeValue ToValue(const T& iValue) { return iValue; }

    [[nodiscard]] static bool FromValue(const QorAttributeValue& iValue, T& oValue) {
        if (!std::holds_alternative<T>(iValue))
            return false;
        oValue = std::get<T>(iValue);
        return true;
    }
};

/// The double with the fewest decimals that is \p iValue as a float: 0.7F is told as 0.7.
[[nodiscard]] double QorWidened(float iValue);

template <>
struct QorAttributeTraits<float> {
    [[nodiscard]] static QorAttributeValue ToValue(float iValue) { return QorWidened(iValue); }

    [[nodiscard]] static bool FromValue(const QorAttributeValue& iValue, float& oValue) {
        if (!std::holds_alternative<double>(iValue))
            return false;
        oValue = static_cast<float>(std::get<double>(iValue));
        return true;
    }
};

template <class I>
struct QorAttributeTraits<QorVar<I>> {
    [[nodiscard]] static QorAttributeValue ToValue(const QorVar<I>& iValue) {
        return iValue ? QorReference(iValue->GetImplementation()->GetIdentity()) : QorReference();
    }

    [[nodiscard]] static bool FromValue(const QorAttributeValue& iValue, QorVar<I>& oValue) {
        if (!std::holds_alternative<QorReference>(iValue))
            return false;
        const auto& object = std::get<QorReference>(iValue);
        oValue = QorQuery<I>(object);
        return bool(oValue) == bool(object);
    }
};

/// An object of any class.
template <>
struct QorAttributeTraits<QorReference> {
    [[nodiscard]] static QorAttributeValue ToValue(const QorReference& iValue) {
        return iValue ? QorReference(iValue->GetIdentity()) : iValue;
    }

    [[nodiscard]] static bool FromValue(const QorAttributeValue& iValue, QorReference& oValue) {
        if (!std::holds_alternative<QorReference>(iValue))
            return false;
        oValue = std::get<QorReference>(iValue);
        return true;
    }
};

template <class I>
struct QorAttributeTraits<QorListOf<I>> {
    [[nodiscard]] static QorAttributeValue ToValue(const QorListOf<I>& iValue) {
        QorReferences objects;
        for (const QorVar<I>& item : iValue)
            objects.emplace_back(item->GetImplementation()->GetIdentity());
        return objects;
    }

    [[nodiscard]] static bool FromValue(const QorAttributeValue& iValue, QorListOf<I>& oValue) {
        if (!std::holds_alternative<QorReferences>(iValue))
            return false;
        oValue.RemoveAll();
        for (const QorReference& object : std::get<QorReferences>(iValue))
            oValue.Append(QorQuery<I>(object).Get());
        return oValue.Size() == static_cast<int>(std::get<QorReferences>(iValue).size());
    }
};

/// How a setter takes a value.
template <class T>
using QorAttributeArgument = std::conditional_t<std::is_arithmetic_v<T>, T, const T&>;
