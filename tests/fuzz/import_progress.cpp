// Feeds bytes to the parser of qorimport's progress lines: whole, and cut in two. Both must give
// the same lines, and every line that it takes must survive being written and read again.
#include "workbench/import/process/ProgressLine.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>
#include <vector>

using qor::import::ProgressLine;

namespace {

std::vector<ProgressLine> linesOf(std::string_view first, std::string_view second) {
    qor::import::ProgressParser parser;
    std::vector<ProgressLine> lines;
    const auto take = [&lines](const ProgressLine& line) {
        lines.push_back(line);
    };
    parser.feed(first, take);
    parser.feed(second, take);
    return lines;
}

bool isInRange(const ProgressLine& line) {
    return line.fraction >= 0 && line.fraction <= 1 && line.librarySeconds >= 0 &&
           line.totalSeconds >= 0;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::size_t cut = size == 0 ? 0 : data[0] % size;
    const std::vector<ProgressLine> lines = linesOf(bytes, {});
    if (lines != linesOf(bytes.substr(0, cut), bytes.substr(cut)))
        std::abort();
    for (const ProgressLine& line : lines) {
        const auto again = qor::import::parseProgressLine(qor::import::formatProgressLine(line));
        if (!again || again->kind != line.kind || !isInRange(*again))
            std::abort();
    }
    return 0;
}
