#pragma once

#include "workbench/automation/Json.h"

#include <functional>
#include <string>
#include <vector>

namespace qor::automation {

class Call;

/// What a parameter may be.
enum class ParamKind {
    text, ///< without a NUL
    textOrNull,
    number,
    integer, ///< within the range of an int; 3.0 counts
    boolean,
    numbers, ///< a list of them
    list,
    any,
};

struct Param {
    std::string name;
    ParamKind kind = ParamKind::any;
    bool isRequired = true;
};

/// A parameter that may be left out.
[[nodiscard]] inline Param optional(std::string name, ParamKind kind) {
    return {.name = std::move(name), .kind = kind, .isRequired = false};
}

/// A method of the port. Parameters are checked before it runs: one that is missing, of another
/// kind or not in the list is refused.
struct Method {
    /// Runs on the user-interface thread and returns the result. Throws Error. A result of an
    /// object gets "blocked" added when a notification box opens.
    using Handler = std::function<Json(Call& call)>;

    std::string name; ///< "widget.get"
    std::vector<Param> params;
    Handler run;
    bool isForBlocked = false;   ///< accepted while a notification box is open
    bool takesAnyParams = false; ///< parameters besides those of the list are let through
    /// What workers make for dialogs is waited for before the answer; not by what shows nothing of
    /// it, for the user-interface thread waits.
    bool waitsForWorkers = true;
};

/// Methods that belong together, as a room registers them.
using MethodGroup = std::vector<Method>;

/// Throws Error (invalidParams) naming the first parameter of \p params that \p method does not
/// take as it is.
void checkParams(const Method& method, const Json& params);

} // namespace qor::automation
