#include "workbench/engine/adapter/Memory.h"

#include <algorithm>
#include <fstream>
#include <sstream>

namespace qor::adapter {

namespace {

std::string megabytes(std::uint64_t bytes) {
    constexpr std::uint64_t megabyte = 1'000'000;
    return std::to_string(bytes / megabyte) + " MB";
}

/// The number that follows a name at the beginning of a line.
std::optional<std::uint64_t> amountOf(std::string_view name, std::istream& list) {
    std::string line;
    while (std::getline(list, line)) {
        std::istringstream words(line);
        std::string first;
        std::uint64_t amount = 0;
        if (words >> first >> amount && first == name)
            return amount;
    }
    return std::nullopt;
}

} // namespace

std::uint64_t memoryNeeded(const engine::RenderOptions& options) {
    constexpr std::uint64_t renderedPixel = 40; // sums, squares and counts
    constexpr std::uint64_t shownPixel = 4;
    const engine::Region region = engine::clippedRegion(options);
    return std::uint64_t(region.width) * std::uint64_t(region.height) * renderedPixel +
           std::uint64_t(options.width) * std::uint64_t(options.height) * shownPixel;
}

std::optional<std::uint64_t> memoryAvailable(std::istream& list) {
    constexpr std::uint64_t kilobyte = 1024;
    const auto amount = amountOf("MemAvailable:", list);
    return amount ? std::optional(*amount * kilobyte) : std::nullopt;
}

std::optional<std::uint64_t>
memoryAllowed(std::istream& limit, std::istream& used, std::istream& kinds) {
    std::uint64_t most = 0;
    std::uint64_t taken = 0;
    if (!(limit >> most) || !(used >> taken)) // "max" is no limit
        return std::nullopt;
    // Files that were read are forgotten as soon as memory is wanted.
    const std::uint64_t forgettable = amountOf("inactive_file", kinds).value_or(0);
    taken -= std::min(taken, forgettable);
    return most > taken ? most - taken : 0;
}

namespace {

/// What the machine has left, or the group that the program is confined to.
std::optional<std::uint64_t> memoryLeft() {
    std::ifstream list("/proc/meminfo");
    std::ifstream limit("/sys/fs/cgroup/memory.max");
    std::ifstream used("/sys/fs/cgroup/memory.current");
    const auto machine = memoryAvailable(list);
    std::ifstream kinds("/sys/fs/cgroup/memory.stat");
    const auto group = memoryAllowed(limit, used, kinds);
    return machine && group ? std::min(*machine, *group) : machine ? machine : group;
}

} // namespace

std::string findShortageOfMemory(const engine::RenderOptions& options) {
    const std::optional<std::uint64_t> available = memoryLeft();
    const std::uint64_t needed = memoryNeeded(options);
    if (!available || needed <= *available)
        return {};
    return "a picture of " + std::to_string(options.width) + " by " +
           std::to_string(options.height) + " pixels takes " + megabytes(needed) +
           " of memory, and " + megabytes(*available) + " are free";
}

} // namespace qor::adapter
