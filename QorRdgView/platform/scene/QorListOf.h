#pragma once

#include "platform/component/QorHandle.h"

#include <vector>

/// An ordered list of objects, counted from 1. Holds a reference on each.
template <class I>
class QorListOf {
public:
    [[nodiscard]] int Size() const { return static_cast<int>(items.size()); }

    /// The object at \p iPosition, from 1; null beyond the ends. No reference added.
    [[nodiscard]] I* operator[](int iPosition) const {
        return iPosition < 1 || iPosition > Size() ? nullptr : items[Index(iPosition)].Get();
    }

    /// Null is ignored.
    void Append(I* iItem) {
        if (iItem != nullptr)
            items.emplace_back(iItem);
    }

    /// A position beyond the ends is ignored.
    void RemovePosition(int iPosition) {
        if (iPosition >= 1 && iPosition <= Size())
            items.erase(items.begin() + (iPosition - 1));
    }

    void RemoveAll() { items.clear(); }

    /// Position of the first entry that is the same object as \p iObject, through whatever
    /// interface it came; 0 when there is none.
    template <class Object>
    [[nodiscard]] int Locate(Object* iObject) const {
        for (int position = 1; position <= Size() && iObject != nullptr; ++position)
            if (AsObject(items[Index(position)].Get())->IsEqual(AsObject(iObject)))
                return position;
        return 0;
    }

    [[nodiscard]] auto begin() const { return items.begin(); }

    [[nodiscard]] auto end() const { return items.end(); }

    bool operator==(const QorListOf&) const = default;

private:
    [[nodiscard]] static std::size_t Index(int iPosition) {
        return static_cast<std::size_t>(iPosition) - 1;
    }

    template <class Object>
    [[nodiscard]] static QorBaseUnknown* AsObject(Object* iObject) {
        if constexpr (std::convertible_to<Object*, QorBaseUnknown*>)
            return iObject;
        else
            return iObject->GetImplementation();
    }

    std::vector<QorVar<I>> items;
};
