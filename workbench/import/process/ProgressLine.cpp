#include "workbench/import/process/ProgressLine.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace qor::import {

using nlohmann::json;

namespace {

constexpr std::array kindNames{"progress", "warning", "done", "error"};
constexpr std::array errorNames{"input", "machine", "internal"};

template <typename Enum, std::size_t count>
std::optional<Enum> fromName(const std::array<const char*, count>& names, const std::string& name) {
    const auto found = std::find(names.begin(), names.end(), name);
    if (found == names.end())
        return std::nullopt;
    return static_cast<Enum>(found - names.begin());
}

std::string textOf(const json& object, const char* member) {
    const auto found = object.find(member);
    return found != object.end() && found->is_string() ? found->get<std::string>() : std::string();
}

double numberOf(const json& object, const char* member) {
    const auto found = object.find(member);
    const double value = found != object.end() && found->is_number() ? found->get<double>() : 0;
    return std::isfinite(value) ? value : 0;
}

std::uint64_t countOf(const json& object, const char* member) {
    const auto found = object.find(member);
    return found != object.end() && found->is_number_unsigned() ? found->get<std::uint64_t>() : 0;
}

json membersOf(const ProgressLine& line) {
    json object{{"event", kindNames[static_cast<std::size_t>(line.kind)]}};
    switch (line.kind) {
    case ProgressKind::Progress:
        object.update({{"stage", line.stage}, {"fraction", line.fraction}});
        break;
    case ProgressKind::Warning:
        object["text"] = line.text;
        break;
    case ProgressKind::Done:
        object.update({{"nodes", line.nodes},
                       {"parts", line.parts},
                       {"triangles", line.triangles},
                       {"library_s", line.librarySeconds},
                       {"total_s", line.totalSeconds}});
        break;
    case ProgressKind::Error:
        object.update(
            {{"kind", errorNames[static_cast<std::size_t>(line.error)]}, {"text", line.text}});
        break;
    }
    return object;
}

// Objects of a progress line hold no arrays or objects; a nested one is not worth the parser's time
// or memory.
bool isFlat(int depth, json::parse_event_t event, json& /*parsed*/) {
    return depth == 0 || (event != json::parse_event_t::object_start &&
                          event != json::parse_event_t::array_start);
}

} // namespace

std::string formatProgressLine(const ProgressLine& line) {
    return membersOf(line).dump(-1, ' ', false, json::error_handler_t::replace);
}

std::optional<ProgressLine> parseProgressLine(std::string_view text) {
    if (text.size() > longestProgressLine)
        return std::nullopt;
    const json object = json::parse(text, isFlat, false);
    if (!object.is_object())
        return std::nullopt;
    const auto kind = fromName<ProgressKind>(kindNames, textOf(object, "event"));
    if (!kind)
        return std::nullopt;
    ProgressLine line;
    line.kind = *kind;
    line.stage = textOf(object, "stage");
    line.fraction = std::clamp(numberOf(object, "fraction"), 0.0, 1.0);
    line.text = textOf(object, "text");
    line.error =
        fromName<ErrorKind>(errorNames, textOf(object, "kind")).value_or(ErrorKind::Internal);
    line.nodes = countOf(object, "nodes");
    line.parts = countOf(object, "parts");
    line.triangles = countOf(object, "triangles");
    line.librarySeconds = std::max(0.0, numberOf(object, "library_s"));
    line.totalSeconds = std::max(0.0, numberOf(object, "total_s"));
    return line;
}

std::optional<ProgressLine> ProgressParser::feedByte(char byte) {
    if (byte != '\n') {
        tooLong_ = tooLong_ || pending_.size() >= longestProgressLine;
        if (!tooLong_)
            pending_ += byte;
        return std::nullopt;
    }
    std::optional<ProgressLine> line;
    if (!tooLong_)
        line = parseProgressLine(pending_);
    if (!line)
        ++badLines_;
    pending_.clear();
    tooLong_ = false;
    return line;
}

} // namespace qor::import
