#pragma once

#include "platform/component/QorBaseUnknown.h"

#include <concepts>
#include <cstddef>
#include <utility>

/// A handle that holds one reference on an object or interface; may be null.
/// Made from a plain pointer it adds a reference; `QorAdopt` takes over the one that a `new` or a
/// query gave.
template <class T>
class QorVar {
public:
    QorVar() = default;

    QorVar(std::nullptr_t) {} // NOLINT(google-explicit-constructor)

    QorVar(T* iObject) : object(iObject) { // NOLINT(google-explicit-constructor)
        if (object != nullptr)
            object->AddRef();
    }

    QorVar(const QorVar& iOther) : QorVar(iOther.object) {}

    QorVar(QorVar&& iOther) noexcept : object(std::exchange(iOther.object, nullptr)) {}

    template <class U>

    requires std::convertible_to<U*, T*> QorVar(const QorVar<U>& iOther)
        : QorVar(static_cast<T*>(iOther.Get())) {}

    ~QorVar() { Reset(); }

    QorVar& operator=(QorVar iOther) noexcept {
        std::swap(object, iOther.object);
        return *this;
    }

    void Reset() {
        if (T* last = std::exchange(object, nullptr))
            last->Release();
    }

    [[nodiscard]] T* Get() const { return object; }

    T* operator->() const { return object; }

    T& operator*() const { return *object; }

    explicit operator bool() const { return object != nullptr; }

    operator T*() const { return object; } // NOLINT(google-explicit-constructor)

    /// Gives the reference away to the caller.
    [[nodiscard]] T* Detach() { return std::exchange(object, nullptr); }

    bool operator==(const QorVar& iOther) const { return object == iOther.object; }

    bool operator==(const T* iOther) const { return object == iOther; }

    bool operator==(std::nullptr_t) const { return object == nullptr; }

private:
    template <class U>
    friend QorVar<U> QorAdopt(U* iObject);
    T* object = nullptr;
};

/// A handle that takes over the reference that the caller holds on \p iObject.
template <class U>
[[nodiscard]] QorVar<U> QorAdopt(U* iObject) {
    QorVar<U> handle;
    handle.object = iObject;
    return handle;
}

/// A new object in a handle.
template <class T, class... Arguments>
[[nodiscard]] QorVar<T> QorMake(Arguments&&... iArguments) {
    return QorAdopt(new T(std::forward<Arguments>(iArguments)...));
}

/// The interface \p I of \p iObject, or a null handle. A null object answers null.
template <class I, class Object>
[[nodiscard]] QorVar<I> QorQuery(Object* iObject) {
    void* found = nullptr;
    if (iObject == nullptr || !QorSucceeded(iObject->QueryInterface(I::ClassId(), &found)))
        return nullptr;
    return QorAdopt(static_cast<I*>(found));
}

template <class I, class Object>
[[nodiscard]] QorVar<I> QorQuery(const QorVar<Object>& iObject) {
    return QorQuery<I>(iObject.Get());
}

/// The handle type of a class or interface: `QorDeclareHandle(QorIProduct);` declares
/// QorIProduct_var.
#define QorDeclareHandle(Class) using Class##_var = QorVar<Class>
