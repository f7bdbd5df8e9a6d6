#pragma once

#include "workbench/engine/qorrender/Request.h"

namespace qor::render {

/// Does what \p request says and gives the exit code; what went wrong is said on the error output.
/// No picture is left half written, and nothing but the asked files is left at all. Main thread;
/// once a process.
int runRequest(const Request& request);

} // namespace qor::render
