#pragma once

#include <string>

namespace qor::app {

/// The directory with the program's own resources, `../share/qorworkbench` seen from the folder of
/// the running program; empty when the program's own path cannot be had.
[[nodiscard]] std::string programResources();

/// Makes the program's own resources known to the catalogs, and sets QorStartupPath to them when it
/// is unset. To be called before other threads run. What is wrong, for standard error: where they
/// should be nothing is, so that only names of texts show; empty when they are there.
[[nodiscard]] std::string useProgramResources();

} // namespace qor::app
