#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace qor::automation {

/// Why a request failed: the codes of JSON-RPC 2.0, then the port's own.
enum class ErrorCode : int {
    parseError = -32700,     ///< the line is no JSON in UTF-8
    invalidRequest = -32600, ///< JSON, but no request; or a line that is too long
    methodNotFound = -32601,
    invalidParams = -32602,
    internalError = -32603, ///< our fault

    noSuchObject = -32001,
    ambiguousName = -32002,
    cannotAct = -32003, ///< insensitive or hidden, or nothing that a person could do
    blocked = -32004,   ///< a notification box is open
    wrongKind = -32005, ///< not possible for this kind of object
    failed = -32006,
    timedOut = -32007,
};

/// Thrown by the handler of a method: the request is answered with it. The message is one sentence
/// in lower case that holds the offending name or value.
class Error : public std::runtime_error {
public:
    Error(ErrorCode code, const std::string& message) : std::runtime_error(message), code_(code) {}

    [[nodiscard]] ErrorCode code() const { return code_; }

private:
    ErrorCode code_;
};

/// A name in quotes, for messages.
[[nodiscard]] inline std::string inQuotes(std::string_view name) {
    return std::string(1, '"').append(name).append(1, '"');
}

} // namespace qor::automation
