#pragma once

#include <stdexcept>

namespace qor::render {

/// Ends the program with exit code 1 and this sentence.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Ends the program with exit code 2 and this sentence.
class WrongUsage : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Ends the program with exit code 130.
class Interrupted : public std::exception {};

} // namespace qor::render
