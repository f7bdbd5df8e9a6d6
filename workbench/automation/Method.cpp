#include "workbench/automation/Method.h"

#include "workbench/automation/Error.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace qor::automation {

namespace {

bool isText(const Json& value) {
    return value.is_string() && value.get_ref<const std::string&>().find('\0') == std::string::npos;
}

bool isNumber(const Json& value) {
    return value.is_number() && std::isfinite(value.get<double>());
}

bool isInteger(const Json& value) {
    if (!isNumber(value))
        return false;
    const double number = value.get<double>();
    return number == std::trunc(number) && number >= std::numeric_limits<int>::min() &&
           number <= std::numeric_limits<int>::max();
}

struct KindRule {
    ParamKind kind;
    bool (*accepts)(const Json& value);
    const char* words;
};

constexpr std::array<KindRule, 8> rules{{
    {ParamKind::text, &isText, "a text"},
    {ParamKind::textOrNull, [](const Json& v) { return v.is_null() || isText(v); },
     "a text or null"},
    {ParamKind::number, &isNumber, "a number"},
    {ParamKind::integer, &isInteger, "an integer"},
    {ParamKind::boolean, [](const Json& v) { return v.is_boolean(); }, "true or false"},
    {ParamKind::numbers,
     [](const Json& v) { return v.is_array() && std::all_of(v.begin(), v.end(), &isNumber); },
     "a list of numbers"},
    {ParamKind::list, [](const Json& v) { return v.is_array(); }, "a list"},
    {ParamKind::any, [](const Json&) { return true; }, "anything"},
}};

const KindRule& ruleOf(ParamKind kind) {
    return *std::find_if(rules.begin(), rules.end(),
                         [&](const KindRule& rule) { return rule.kind == kind; });
}

[[noreturn]] void refuse(const std::string& text) {
    throw Error(ErrorCode::invalidParams, text);
}

void checkParam(const Param& param, const Json& params) {
    const auto value = params.find(param.name);
    if (value == params.end()) {
        if (param.isRequired)
            refuse("parameter " + inQuotes(param.name) + " is missing");
        return;
    }
    const KindRule& rule = ruleOf(param.kind);
    if (!rule.accepts(*value))
        refuse("parameter " + inQuotes(param.name) + " must be " + rule.words);
}

} // namespace

void checkParams(const Method& method, const Json& params) {
    for (const Param& param : method.params)
        checkParam(param, params);
    if (method.takesAnyParams)
        return;
    for (const auto& [name, value] : params.items())
        if (std::none_of(method.params.begin(), method.params.end(),
                         [&, &key = name](const Param& param) { return param.name == key; }))
            refuse(method.name + " takes no parameter " + inQuotes(name));
}

} // namespace qor::automation
