#pragma once

#include <nlohmann/json.hpp>

namespace qor::automation {

/// What travels over the port.
using Json = nlohmann::json;

} // namespace qor::automation
