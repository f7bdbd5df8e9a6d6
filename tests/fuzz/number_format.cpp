// The first line as a format of a number, as catalogs bring them, the rest as the number: whatever
// is accepted prints without harm, and what is no number leaves the value alone.
#include "platform/text/QorNumberFormat.h"
#include "platform/text/QorNumberScan.h"
#include "tests/fuzz/Require.h"

#include <array>
#include <climits>
#include <cmath>
#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view rest = text.substr(std::min(end + 1, text.size()));
    const QorNumberFormat format(text.substr(0, end));

    double number = 7;
    if (!QorScanFloat(rest, number))
        require(number == 7, "a failed reading leaves the number as it was");
    require(std::isfinite(number), "only finite numbers are read");
    std::array<float, 4> numbers{};
    require(QorScanFloats(rest, numbers) <= numbers.size(),
            "no more is read than there is room for");
    int integer = 7;
    if (!QorScanInteger(rest, integer))
        require(integer == 7, "a failed reading leaves the integer as it was");

    constexpr std::size_t longestNumber = 1000;
    for (const double value : {number, -number, 0.0, 1e308, HUGE_VAL, std::nan("")})
        require(format.Format(value).size() <= end + longestNumber,
                "width and precision are bounded");
    for (const int value : {integer, INT_MIN, INT_MAX})
        require(format.Format(value).size() <= end + longestNumber,
                "width and precision are bounded");
    return 0;
}
