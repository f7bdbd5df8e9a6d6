#include "workbench/automation/methods/ObjectValue.h"

#include "platform/scene/QorIAlias.h"
#include "workbench/automation/Error.h"
#include "workbench/automation/methods/ObjectAddress.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace qor::automation {

namespace {

struct ValueWriter {
    template <class Plain>
    Json operator()(const Plain& value) const {
        return value;
    }

    Json operator()(const QorUnicodeString& text) const { return text.Str(); }

    Json operator()(const QorRscColor& color) const {
        return Json::array({color.red, color.green, color.blue});
    }

    Json operator()(const QorMathPoint& point) const {
        return Json::array({point.x, point.y, point.z});
    }

    Json operator()(const QorReference& reference) const {
        const auto alias = QorQuery<QorIAlias>(reference);
        return alias ? Json(alias->GetAlias().Str()) : Json();
    }

    Json operator()(const QorReferences& references) const {
        Json names = Json::array();
        for (const QorReference& reference : references)
            names.push_back((*this)(reference));
        return names;
    }
};

bool isText(const Json& value) {
    return value.is_string() && value.get_ref<const std::string&>().find('\0') == std::string::npos;
}

bool isThreeNumbers(const Json& value) {
    return value.is_array() && value.size() == 3 &&
           std::all_of(value.begin(), value.end(), [](const Json& one) { return one.is_number(); });
}

bool areTexts(const Json& value) {
    return value.is_array() && std::all_of(value.begin(), value.end(), &isText);
}

bool isWhole(const Json& value) {
    if (!value.is_number())
        return false;
    const auto number = value.get<double>();
    return number == std::trunc(number) && number >= std::numeric_limits<int>::min() &&
           number <= std::numeric_limits<int>::max();
}

QorAttributeValue readReference(const QorAttribute& attribute, const Json& value) {
    if (value.is_null())
        return QorReference();
    return QorReference(findObject(attribute.rule.kinds, value.get<std::string>()).Get());
}

QorAttributeValue readReferences(const QorAttribute& attribute, const Json& value) {
    QorReferences objects;
    for (const Json& name : value)
        objects.emplace_back(findObject(attribute.rule.kinds, name.get<std::string>()).Get());
    return objects;
}

/// How a type is read; in the order of QorAttributeType.
struct Reading {
    bool (*accepts)(const Json& value);
    const char* words;
    QorAttributeValue (*read)(const QorAttribute& attribute, const Json& value);
};

using Attribute = QorAttribute;

constexpr std::array<Reading, 8> readings{{
    {&isWhole, "an integer",
     [](const Attribute&, const Json& value) {
         return QorAttributeValue(static_cast<int>(value.get<double>()));
     }},
    {[](const Json& value) { return value.is_number(); }, "a number",
     [](const Attribute&, const Json& value) {
         return QorAttributeValue(value.get<double>());
     }},
    {[](const Json& value) { return value.is_boolean(); }, "true or false",
     [](const Attribute&, const Json& value) {
         return QorAttributeValue(value.get<bool>());
     }},
    {&isText, "a text",
     [](const Attribute&, const Json& value) {
         return QorAttributeValue(QorUnicodeString(value.get<std::string>()));
     }},
    {&isThreeNumbers, "a list of three numbers",
     [](const Attribute&, const Json& value) {
         return QorAttributeValue(QorRscColor{value[0], value[1], value[2]});
     }},
    {&isThreeNumbers, "a list of three numbers",
     [](const Attribute&, const Json& value) {
         return QorAttributeValue(QorMathPoint{value[0], value[1], value[2]});
     }},
    {[](const Json& value) { return value.is_null() || isText(value); }, "a name or null",
     &readReference},
    {&areTexts, "a list of names", &readReferences},
}};

} // namespace

Json writeValue(const QorAttributeValue& value) {
    return std::visit(ValueWriter(), value);
}

QorAttributeValue readValue(const QorAttribute& attribute, const Json& value) {
    const Reading& reading = readings.at(static_cast<std::size_t>(attribute.type));
    if (!reading.accepts(value))
        throw Error(ErrorCode::invalidParams,
                    "the attribute " + inQuotes(attribute.name) + " must be " + reading.words);
    return reading.read(attribute, value);
}

} // namespace qor::automation
