#pragma once

#include <string>
#include <string_view>
#include <vector>

/// The directories of a path list such as "/a:/b" in order; empty ones are left out.
[[nodiscard]] std::vector<std::string> QorSplitPathList(std::string_view iList);
