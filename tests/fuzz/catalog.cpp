// The reader of catalog files: any bytes give entries or warnings, and what it writes it reads
// back.
#include "platform/text/QorCatalogFile.h"
#include "platform/text/QorNumberScan.h"
#include "platform/text/QorWarning.h"
#include "tests/fuzz/Require.h"

#include <array>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool quiet = (QorSetWarningReceiver([](std::string_view) {}), true);
    static_cast<void>(quiet);
    QorCatalogEntries entries;
    QorReadCatalogText({reinterpret_cast<const char*>(data), size}, "fuzz", entries);
    for (const auto& [key, value] : entries) {
        QorCatalogEntries again;
        // Not at the start of the text, where a key could look like a byte order mark.
        QorReadCatalogText("\n" + QorWriteCatalogLine(key, value), "again", again);
        require(again.size() == 1 && again.begin()->second == value, "an entry is not read back");
        // What readers of the values do with them.
        std::array<float, 3> floats{};
        require(QorScanFloats(value, floats) <= floats.size(), "too many floats are read");
    }
    return 0;
}
