#pragma once

#include <cassert>
#include <string>
#include <utility>
#include <variant>

namespace qor::engine {

/// Why something was refused or ended early.
enum class ErrorCode {
    invalidInput, ///< the caller's data or options cannot be rendered
    emptyRegion,  ///< nothing of the region lies in the picture
    tooLarge,     ///< more pixels than the engine accepts
    outOfMemory,  ///< the machine has not got the memory
    cancelled,    ///< somebody asked to stop
    internal,     ///< our fault
};

/// An error with a message in lower case that holds the offending value.
struct Error {
    ErrorCode code = ErrorCode::internal;
    std::string message;
};

/// A value, or the reason why there is none. \p T must not be Error.
template <typename T>
class [[nodiscard]] Result {
public:
    Result(T value) : content_(std::move(value)) {}

    Result(Error error) : content_(std::move(error)) {}

    explicit operator bool() const { return std::holds_alternative<T>(content_); }

    /// Only when there is a value.
    T& value() & {
        assert(*this);
        return *std::get_if<T>(&content_);
    }

    const T& value() const& {
        assert(*this);
        return *std::get_if<T>(&content_);
    }

    T&& value() && {
        assert(*this);
        return std::move(*std::get_if<T>(&content_));
    }

    /// Only when there is no value.
    const Error& error() const {
        assert(!*this);
        return *std::get_if<Error>(&content_);
    }

private:
    std::variant<T, Error> content_;
};

/// The value of an operation that gives nothing back but can fail.
struct Done {};

} // namespace qor::engine
