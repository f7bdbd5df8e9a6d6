#pragma once

#include "workbench/engine/core/RenderOptions.h"

#include <cstdint>
#include <istream>
#include <optional>
#include <string>

namespace qor::adapter {

/// Bytes that a render needs beyond its scene, at most.
[[nodiscard]] std::uint64_t memoryNeeded(const engine::RenderOptions& options);

/// Bytes that programs may still take without swapping, as the system tells in its list; nothing
/// when it does not.
[[nodiscard]] std::optional<std::uint64_t> memoryAvailable(std::istream& list);

/// The same of a group of programs that may not take all of the machine's: from its limit, what it
/// uses, and the list of the kinds of that; nothing when there is no limit.
[[nodiscard]] std::optional<std::uint64_t>
memoryAllowed(std::istream& limit, std::istream& used, std::istream& kinds);

/// Why a render does not fit into the memory of this machine or group; empty when it does. Where
/// memory is promised and not kept, asking for it would not fail, but end the program.
[[nodiscard]] std::string findShortageOfMemory(const engine::RenderOptions& options);

} // namespace qor::adapter
