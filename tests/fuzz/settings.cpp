// The reader of settings files: any bytes give settings or damage, and what is printed is read back
// as the same settings without damage.
#include "platform/system/QorSettingFile.h"
#include "tests/fuzz/Require.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    QorSettingFile first;
    static_cast<void>(first.Parse({reinterpret_cast<const char*>(data), size}));
    const std::string printed = first.Print();
    QorSettingFile second;
    require(second.Parse(printed).count == 0, "what is printed is damaged");
    require(second.CountSettings() == first.CountSettings(), "settings are lost");
    require(second.Print() == printed, "settings change by being read and printed");
    return 0;
}
