#include "workbench/engine/adapter/Memory.h"

#include <fstream>
#include <sstream>

namespace qor::adapter {

namespace {

std::string megabytes(std::uint64_t bytes) {
    constexpr std::uint64_t megabyte = 1'000'000;
    return std::to_string(bytes / megabyte) + " MB";
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
    std::string line;
    while (std::getline(list, line)) {
        std::istringstream words(line);
        std::string name;
        std::uint64_t amount = 0;
        if (words >> name >> amount && name == "MemAvailable:")
            return amount * kilobyte;
    }
    return std::nullopt;
}

std::string findShortageOfMemory(const engine::RenderOptions& options) {
    std::ifstream list("/proc/meminfo");
    const std::optional<std::uint64_t> available = memoryAvailable(list);
    const std::uint64_t needed = memoryNeeded(options);
    if (!available || needed <= *available)
        return {};
    return "a picture of " + std::to_string(options.width) + " by " +
           std::to_string(options.height) + " pixels takes " + megabytes(needed) +
           " of memory, and " + megabytes(*available) + " are free";
}

} // namespace qor::adapter
