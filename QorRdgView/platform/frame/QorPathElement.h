#pragma once

#include "platform/component/QorHandle.h"

#include <vector>

/// The way to an object: the objects that hold it, from the root of its document down, then itself.
/// Holds a reference on each.
class QorPathElement : public QorBaseUnknown {
    QorDeclareClass(QorPathElement)

    QorPathElement();

    /// Appends \p iObject; null is ignored.
    void AddChildElement(QorBaseUnknown* iObject);

    [[nodiscard]] int GetSize() const { return static_cast<int>(objects.size()); }

    /// The object at \p iIndex, from 0 at the root; null beyond the ends. No reference added.
    [[nodiscard]] QorBaseUnknown* GetElement(int iIndex) const;

    /// The object that the path leads to, or null for an empty path.
    [[nodiscard]] QorBaseUnknown* GetLeaf() const { return GetElement(GetSize() - 1); }

    /// The interface of the first object on the path that offers it; E_NOINTERFACE and null when
    /// none does. The reference belongs to the caller.
    QorResult FindInterface(const QorInterfaceId& iInterface, void** oInterface) const;

    template <class I>
    [[nodiscard]] QorVar<I> FindInterface() const {
        void* found = nullptr;
        if (!QorSucceeded(FindInterface(I::ClassId(), &found)))
            return nullptr;
        return QorAdopt(static_cast<I*>(found));
    }

    /// Whether two paths go through the same objects.
    [[nodiscard]] bool IsSamePath(const QorPathElement& iOther) const;

protected:
    ~QorPathElement() override;

private:
    std::vector<QorVar<QorBaseUnknown>> objects;
};

QorDeclareHandle(QorPathElement);
