#pragma once

#include "platform/component/QorCallbackManager.h"
#include "platform/component/QorHandle.h"

#include <vector>

/// The selection of an editor: an ordered set of objects, usually path elements. Holds a reference
/// on each.
class QorCSO : public QorBaseUnknown {
    QorDeclareClass(QorCSO)

    QorCSO();

    /// Dispatched by the selection's callback manager when its content has changed.
    static const QorEventName CSO_MODIFIED;

    [[nodiscard]] QorCallbackManager* GetCallbackManager() { return &callbacks; }

    [[nodiscard]] int GetSize() const { return static_cast<int>(elements.size()); }

    /// The element at \p iIndex, from 1; null beyond the ends. No reference added.
    [[nodiscard]] QorBaseUnknown* GetElement(int iIndex) const;

    void Empty();

    /// Replaces the content by \p iElements, which are all different; nulls are left out. One
    /// event, and none when they are the same objects in the same order.
    void SetElements(const std::vector<QorVar<QorBaseUnknown>>& iElements);

    /// Appends \p iElement; null is ignored, and with \p iOnce non-zero one that is there already
    /// too.
    void AddElement(QorBaseUnknown* iElement, int iOnce = 1);
    /// Takes \p iElement out; one that is not there is ignored.
    void RemoveElement(QorBaseUnknown* iElement);

protected:
    ~QorCSO() override;

private:
    [[nodiscard]] bool Holds(QorBaseUnknown& iElement) const;
    void Modified();

    std::vector<QorVar<QorBaseUnknown>> elements;
    QorCallbackManager callbacks;
};

QorDeclareHandle(QorCSO);
