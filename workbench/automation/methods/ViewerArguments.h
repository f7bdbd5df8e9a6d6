#pragma once

#include "platform/vis/QorMath.h"
#include "workbench/automation/Call.h"

#include <array>
#include <string_view>

namespace qor::automation {

template <class T>
struct NamedValue {
    std::string_view name;
    T value;
};

/// The value that the text parameter \p name names in \p table; throws Error (invalidParams).
template <class T, std::size_t count>
[[nodiscard]] T
valueNamed(const std::array<NamedValue<T>, count>& table, const Call& call, const char* name) {
    const std::string text = call.text(name);
    for (const NamedValue<T>& row : table)
        if (row.name == text)
            return row.value;
    throw Error(ErrorCode::invalidParams, inQuotes(name) + " cannot be " + inQuotes(text));
}

/// A list of exactly that many numbers; throws Error (invalidParams).
template <std::size_t count>
[[nodiscard]] std::array<double, count> numbersFrom(const Call& call, const char* name) {
    const Json& list = call.value(name);
    if (list.size() != count)
        throw Error(ErrorCode::invalidParams,
                    inQuotes(name) + " takes " + std::to_string(count) + " numbers");
    std::array<double, count> numbers{};
    for (std::size_t i = 0; i < count; ++i)
        numbers[i] = list[i].get<double>();
    return numbers;
}

[[nodiscard]] inline QorMathVector vectorFrom(const Call& call, const char* name) {
    const auto [x, y, z] = numbersFrom<3>(call, name);
    return {x, y, z};
}

} // namespace qor::automation
