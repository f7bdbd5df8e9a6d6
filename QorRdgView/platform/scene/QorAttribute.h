#pragma once

#include "platform/component/QorHandle.h"
#include "platform/text/QorString.h"
#include "platform/vis/QorMath.h"

#include <initializer_list>
#include <limits>
#include <string>
#include <variant>
#include <vector>

class QorRscObject;

/// A linear colour; 0..1 unless an attribute allows more.
struct QorRscColor {
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;

    bool operator==(const QorRscColor&) const = default;
};

using QorReference = QorVar<QorBaseUnknown>;
using QorReferences = std::vector<QorReference>;

/// The value of an attribute. A reference is null or an object of the same document.
using QorAttributeValue = std::variant<int,
                                       double,
                                       bool,
                                       QorUnicodeString,
                                       QorRscColor,
                                       QorMathPoint,
                                       QorReference,
                                       QorReferences>;

/// In the order of the values.
enum class QorAttributeType : int {
    Integer,
    Real,
    Boolean,
    Text,
    Color,
    Point, ///< a position, direction or vector
    Reference,
    References
};

/// For messages: "an integer".
[[nodiscard]] const char* QorAttributeTypeName(QorAttributeType iType);

/// What an attribute takes besides its type. Numbers that are none are never taken.
struct QorAttributeRule {
    /// Stands among the kinds for what is no QorRscObject: a node of the document's product.
    static constexpr const char* productNode = "node";

    double least = std::numeric_limits<double>::lowest(); ///< of numbers and parts of colours
    double most = std::numeric_limits<double>::max();
    std::vector<QorUnicodeString> choices; ///< of texts; empty for any text
    std::vector<QorString> kinds;          ///< of references: what kinds of objects

    [[nodiscard]] static QorAttributeRule Any() { return {}; }

    [[nodiscard]] static QorAttributeRule AtLeast(double iLeast);
    [[nodiscard]] static QorAttributeRule Between(double iLeast, double iMost);
    [[nodiscard]] static QorAttributeRule OneOf(std::vector<QorUnicodeString> iChoices);
    [[nodiscard]] static QorAttributeRule OfKind(std::vector<QorString> iKinds);

    /// Empty when \p iValue is taken, else why not: "must lie between 0 and 20".
    [[nodiscard]] std::string Refuse(const QorAttributeValue& iValue) const;
};

/// One attribute of a class of objects: a row of the table that the automation port, the document
/// file and dialogs share.
struct QorAttribute {
    const char* name; ///< the getter's, without "Get": "Width"
    QorAttributeType type;
    QorAttributeRule rule;
    QorAttributeValue (*get)(const QorRscObject& iObject);
    /// The value has the attribute's type. E_FAIL, and nothing changes, when the rule refuses it.
    QorResult (*set)(QorRscObject& ioObject, const QorAttributeValue& iValue);
    const char* secondName = nullptr; ///< the getter's own name where it has no "Get": "IsCurrent"

    [[nodiscard]] bool IsCalled(const QorString& iName) const {
        return iName == name || (secondName != nullptr && iName == secondName);
    }
};

/// In the order in which they are set: an attribute that derives others stands before them.
using QorAttributeTable = std::vector<QorAttribute>;

/// Outcome of an access by name.
struct QorAttributeOutcome {
    enum class Fault { None, UnknownName, WrongType, OutOfRange, WrongKind, Refused };

    Fault fault = Fault::None;
    std::string message; ///< one sentence in lower case with the offending name and value

    [[nodiscard]] bool IsDone() const { return fault == Fault::None; }
};
