#pragma once

#include "platform/scene/QorAttributeTraits.h"

// An interface of plain attributes is one list of them: a macro that calls its argument once an
// attribute with (type, name, default value, rule). From the list come the pairs of the interface,
// those of the class with the values, and the rows of the class's table.

/// In an interface: `Type GetName() const` and `QorResult SetName(value)`. A setter answers E_FAIL,
/// and changes nothing, when the rule refuses the value; it dispatches no event. Getters of objects
/// return a handle.
#define QorDeclarePair(Type, Name, Default, Rule)                                                  \
    [[nodiscard]] virtual Type Get##Name() const = 0;                                              \
    virtual QorResult Set##Name(QorAttributeArgument<Type> i##Name) = 0;

/// In a class that derives from QorRscObject: the pair and the value that it reads and writes.
#define QorDefinePair(Type, Name, Default, Rule)                                                   \
public:                                                                                            \
    [[nodiscard]] Type Get##Name() const override {                                                \
        return value##Name;                                                                        \
    }                                                                                              \
    QorResult Set##Name(QorAttributeArgument<Type> i##Name) override {                             \
        return Put(#Name, value##Name, i##Name);                                                   \
    }                                                                                              \
                                                                                                   \
private:                                                                                           \
    Type value##Name = Default;                                                                    \
                                                                                                   \
public:

/// In a class that derives from QorRscObject: the pair alone, for a class that keeps its values
/// elsewhere.
#define QorOverridePair(Type, Name, Default, Rule)                                                 \
public:                                                                                            \
    [[nodiscard]] Type Get##Name() const override;                                                 \
    QorResult Set##Name(QorAttributeArgument<Type> i##Name) override;                              \
                                                                                                   \
public:

/// In the table of a class, which names itself `Self` there.
#define QorPairRow(Type, Name, Default, Rule)                                                      \
    QorMakeAttribute<&Self::Get##Name, &Self::Set##Name>(#Name, QorAttributeRule::Rule),

template <auto Getter, auto Setter>
struct QorAttributeAccess;

/// Access through a getter and a setter of \p Class.
template <class Class,
          class Type,
          class Argument,
          Type (Class::*Getter)() const,
          QorResult (Class::*Setter)(Argument)>
struct QorAttributeAccess<Getter, Setter> {
    using Traits = QorAttributeTraits<Type>;

    [[nodiscard]] static QorAttributeValue Get(const QorRscObject& iObject) {
        return Traits::ToValue((static_cast<const Class&>(iObject).*Getter)());
    }

    [[nodiscard]] static QorResult Set(QorRscObject& ioObject, const QorAttributeValue& iValue) {
        Type value{};
        if (!Traits::FromValue(iValue, value))
            return E_FAIL;
        return (static_cast<Class&>(ioObject).*Setter)(value);
    }

    [[nodiscard]] static QorAttributeType TypeOf() {
        return static_cast<QorAttributeType>(Traits::ToValue(Type{}).index());
    }
};

template <auto Getter, auto Setter>
[[nodiscard]] QorAttribute
QorMakeAttribute(const char* iName, QorAttributeRule iRule, const char* iSecondName = nullptr) {
    using Access = QorAttributeAccess<Getter, Setter>;
    return {iName, Access::TypeOf(), std::move(iRule), &Access::Get, &Access::Set, iSecondName};
}
