#pragma once

#include "workbench/automation/Error.h"
#include "workbench/automation/Json.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qor::automation {

/// One request of a message, or what is wrong with it.
struct Request {
    Json id;                 ///< any kind of value; null when it is missing or could not be read
    bool wantsAnswer = true; ///< false for notifications
    std::string method;
    Json params = Json::object(); ///< always an object
    std::optional<Error> error;   ///< set when this is no request; it is answered with that
};

/// A line of the client, read.
struct Message {
    std::vector<Request> requests; ///< never empty
    bool isBatch = false;          ///< their answers go into one array
};

/// Deepest nesting of arrays and objects in a message.
inline constexpr int deepestNesting = 128;

/// Reads one line. Never fails: what is wrong stands in the requests. Safe on any thread.
[[nodiscard]] Message readMessage(std::string_view line);

/// The message that stands for a line longer than \p limit bytes.
[[nodiscard]] Message tooLongMessage(std::size_t limit);

[[nodiscard]] Json makeResult(const Json& id, Json result);
[[nodiscard]] Json makeError(const Json& id, ErrorCode code, const std::string& text);

/// One line of the port, its line end included. Bytes that are no UTF-8 (names of files) become
/// U+FFFD.
[[nodiscard]] std::string printLine(const Json& value);

} // namespace qor::automation
