#pragma once

#include "platform/scene/QorAttribute.h"

#include <functional>

/// A kind of objects that a document holds: "shooting", "camera", "light", "environment",
/// "material", and what rooms above register.
struct QorRscKind {
    QorString name;
    QorUnicodeString title; ///< of names made up: "Light" gives "Light.1"
    bool uniqueNames;       ///< a name that is taken gets a number; else objects may share one
    QorRscObject* (*create)();
    QorAttributeTable attributes;

    /// The kind of that name, or null.
    [[nodiscard]] static const QorRscKind* Find(const QorString& iName);
    /// In the order in which documents are written: a kind stands before those that refer to it.
    [[nodiscard]] static std::vector<const QorRscKind*> GetAll();
    /// Adds a kind that is not one of this room's; registering one again changes nothing. \p iKind
    /// lives until the program ends.
    static void Register(const QorRscKind& iKind);

    /// The attribute of that name, or null.
    [[nodiscard]] const QorAttribute* FindAttribute(const QorString& iName) const;
    /// What a new object has.
    [[nodiscard]] QorAttributeValue GetDefault(const QorAttribute& iAttribute) const;
};
