// The reader of catalog files: any bytes give entries or warnings, and what it writes it reads
// back.
#include "platform/text/QorCatalogFile.h"
#include "platform/text/QorNumberFormat.h"
#include "platform/text/QorNumberScan.h"
#include "platform/text/QorWarning.h"

#include <array>
#include <cstdint>
#include <cstdlib>

namespace {

void Require(bool iCondition) {
    if (!iCondition)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const bool quiet = (QorSetWarningReceiver([](std::string_view) {}), true);
    static_cast<void>(quiet);
    QorCatalogEntries entries;
    QorReadCatalogText({reinterpret_cast<const char*>(data), size}, "fuzz", entries);
    for (const auto& [key, value] : entries) {
        QorCatalogEntries again;
        QorReadCatalogText(QorWriteCatalogLine(key, value), "again", again);
        // A key may begin like a comment only where the line did not.
        Require(again.size() == 1 && again.begin()->second == value);
        // What readers of the values do with them.
        std::array<float, 3> floats{};
        Require(QorScanFloats(value, floats) <= floats.size());
        const QorNumberFormat format(value);
        Require(format.Format(1.5).size() <= value.size() + 1000);
    }
    return 0;
}
