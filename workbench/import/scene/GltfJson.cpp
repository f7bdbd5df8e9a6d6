#include "workbench/import/model/ImportError.h"
#include "workbench/import/scene/GltfCheck.h"

#include <cmath>
#include <string_view>

namespace qor::import {

using nlohmann::json;

namespace {

constexpr int deepestNesting = 128;

// The depth of brackets, whether they match or not. The parser's own callback could tell it, but
// with one every end of an object looks at all that is in the object around it.
void checkNesting(std::string_view text) {
    int depth = 0;
    bool inString = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (inString)
            i += c == '\\' ? 1 : 0;
        else if (c == '{' || c == '[')
            ++depth;
        else if (c == '}' || c == ']')
            --depth;
        if (c == '"')
            inString = !inString;
        if (depth > deepestNesting)
            throw ImportError("its JSON is nested too deep");
    }
}

} // namespace

json parseGltfJson(const std::string& text) {
    checkNesting(text);
    try {
        json parsed = json::parse(text);
        if (!parsed.is_object())
            throw ImportError("its JSON is no object");
        return parsed;
    } catch (const json::exception& error) {
        throw ImportError(std::string("its JSON is wrong: ") + error.what());
    }
}

const json& arrayOf(const json& object, const char* member) {
    static const json empty = json::array();
    const auto found = object.find(member);
    if (found == object.end())
        return empty;
    if (!found->is_array())
        throw ImportError(std::string("its \"") + member + "\" is no array");
    return *found;
}

const json& objectOf(const json& object, const char* member) {
    static const json empty = json::object();
    if (!object.is_object())
        return empty;
    const auto found = object.find(member);
    return found != object.end() && found->is_object() ? *found : empty;
}

double numberOf(const json& object, const char* member, double otherwise) {
    if (!object.is_object())
        return otherwise;
    const auto found = object.find(member);
    if (found == object.end() || !found->is_number())
        return otherwise;
    const double value = found->get<double>();
    return std::isfinite(value) ? value : otherwise;
}

std::string stringOf(const json& object, const char* member) {
    if (!object.is_object())
        return {};
    const auto found = object.find(member);
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

std::int32_t
indexOf(const json& object, const char* member, std::size_t limit, const std::string& what) {
    const auto found = object.find(member);
    if (found == object.end())
        return -1;
    if (!found->is_number_unsigned() || found->get<std::uint64_t>() >= limit)
        throw ImportError(what + ": its \"" + member + "\" " + found->dump().substr(0, 40) +
                          " names nothing");
    return static_cast<std::int32_t>(found->get<std::uint64_t>());
}

std::string itemName(const char* what, std::size_t index) {
    return std::string(what) + " " + std::to_string(index);
}

std::uint64_t countOf(const json& object, const char* member, const std::string& what) {
    const auto found = object.find(member);
    if (found == object.end())
        return 0;
    if (!found->is_number_unsigned())
        throw ImportError(what + ": its \"" + member + "\" is no count");
    return found->get<std::uint64_t>();
}

} // namespace qor::import
