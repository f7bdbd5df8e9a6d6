#pragma once

#include <cassert>
#include <string>
#include <utility>
#include <variant>

namespace qor::document {

/// Whose fault a failure is: the user's file, the user's machine (disk, memory, rights), or ours.
enum class FaultKind { Input, Machine, Internal };

/// Why something failed: one lower-case sentence that names the file and the offending value.
struct Failure {
    FaultKind kind = FaultKind::Input;
    std::string text;
};

/// A value, or the reason why there is none.
template <typename T>
class [[nodiscard]] Result {
public:
    Result(T value) : state_(std::in_place_index<0>, std::move(value)) {}

    Result(Failure failure) : state_(std::in_place_index<1>, std::move(failure)) {}

    [[nodiscard]] bool ok() const { return state_.index() == 0; }

    explicit operator bool() const { return ok(); }

    /// Only when ok().
    [[nodiscard]] T& value() {
        assert(ok());
        return *std::get_if<0>(&state_);
    }

    [[nodiscard]] const T& value() const {
        assert(ok());
        return *std::get_if<0>(&state_);
    }

    /// Only when not ok().
    [[nodiscard]] const Failure& failure() const {
        assert(!ok());
        return *std::get_if<1>(&state_);
    }

private:
    std::variant<T, Failure> state_;
};

/// The value of an operation that gives nothing back but may fail.
struct Done {};

} // namespace qor::document
