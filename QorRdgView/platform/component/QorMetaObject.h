#pragma once

#include "platform/component/QorEventName.h"

#include <atomic>
#include <string>
#include <utility>
#include <vector>

class QorBaseUnknown;

/// What a class knows of itself at run time: its name, its base, how to create it and how many
/// objects live. One per class, made on first use and never destroyed, so that what runs at exit
/// may use it. Counting is thread-safe.
class QorMetaObject {
public:
    using Creator = QorBaseUnknown* (*)();

    /// \p iBase is null for the root; \p iCreate is null for classes that cannot be made without
    /// arguments.
    QorMetaObject(const char* iName, const QorMetaObject* iBase, Creator iCreate);
    ~QorMetaObject() = delete;
    QorMetaObject(const QorMetaObject&) = delete;
    QorMetaObject& operator=(const QorMetaObject&) = delete;

    [[nodiscard]] const char* GetName() const { return name; }

    [[nodiscard]] const QorMetaObject* GetBase() const { return base; }

    /// The name as that of an event: notifications of the class are subscribed to by it.
    [[nodiscard]] QorEventName GetEventName() const { return eventName; }

    /// Whether the class is the one named, or derives from it.
    [[nodiscard]] bool IsAKindOf(const char* iName) const;
    [[nodiscard]] bool IsAKindOf(const QorMetaObject& iClass) const;

    /// A new object with one reference, or null when the class cannot be made without arguments.
    [[nodiscard]] QorBaseUnknown* Create() const { return create != nullptr ? create() : nullptr; }

    /// Objects of this class and of those that derive from it, alive now.
    [[nodiscard]] long GetLiveCount() const { return live.load(std::memory_order_relaxed); }

    void CountOne(long iStep) const { live.fetch_add(iStep, std::memory_order_relaxed); }

    /// The class of that name, or null while nothing has used it yet.
    [[nodiscard]] static const QorMetaObject* Find(const std::string& iName);
    /// Name and live count of every class that has objects, ordered by name.
    [[nodiscard]] static std::vector<std::pair<std::string, long>> LiveObjects();

private:
    const char* name;
    QorEventName eventName;
    const QorMetaObject* base;
    Creator create;
    mutable std::atomic<long> live = 0;
};

/// Counts the objects of a class by living inside them; takes no room there.
template <class Class>
class QorLiveCounter {
public:
    QorLiveCounter() { Class::MetaObject().CountOne(1); }

    QorLiveCounter(const QorLiveCounter&) { Class::MetaObject().CountOne(1); }

    QorLiveCounter& operator=(const QorLiveCounter&) { return *this; }

    ~QorLiveCounter() { Class::MetaObject().CountOne(-1); }
};

/// In a class that derives from QorBaseUnknown: its meta-object and what hangs on it.
#define QorDeclareClass(Class)                                                                     \
public:                                                                                            \
    static const QorMetaObject& MetaObject();                                                      \
    const QorMetaObject& GetMetaObject() const override;                                           \
    static const char* ClassName() {                                                               \
        return #Class;                                                                             \
    }                                                                                              \
    [[maybe_unused]] static QorBaseUnknown* CreateItself();                                        \
                                                                                                   \
private:                                                                                           \
    [[no_unique_address]] QorLiveCounter<Class> _liveCounter;                                      \
                                                                                                   \
public:

/// In the body of the class: QorImplementClass(QorDlgLabel, QorDialog).
#define QorImplementClass(Class, Base)                                                             \
    QorBaseUnknown* Class::CreateItself() {                                                        \
        return QorCreateIfDefault<Class>();                                                        \
    }                                                                                              \
    const QorMetaObject& Class::MetaObject() {                                                     \
        static const auto* meta =                                                                  \
            new QorMetaObject(#Class, &Base::MetaObject(), QorCreatorIfDefault<Class>());          \
        return *meta;                                                                              \
    }                                                                                              \
    const QorMetaObject& Class::GetMetaObject() const {                                            \
        return Class::MetaObject();                                                                \
    }

/// Whether an object of the class can be made without arguments. Destructors of counted classes are
/// protected, so that std::is_default_constructible would say no.
template <class Class>
concept QorIsCreatable = requires {
    new Class;
};

template <class Class>
[[nodiscard]] QorBaseUnknown* QorCreateIfDefault() {
    if constexpr (QorIsCreatable<Class>)
        return new Class;
    else
        return nullptr;
}

template <class Class>
[[nodiscard]] constexpr QorMetaObject::Creator QorCreatorIfDefault() {
    if constexpr (QorIsCreatable<Class>)
        return &QorCreateIfDefault<Class>;
    else
        return nullptr;
}
