// The reader of settings files: any bytes give settings or damage, and what is printed is read back
// as the same settings without damage.
#include "platform/system/QorSettingFile.h"

#include <cstdint>
#include <cstdlib>

namespace {

void Require(bool iCondition) {
    if (!iCondition)
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    QorSettingFile first;
    static_cast<void>(first.Parse({reinterpret_cast<const char*>(data), size}));
    const std::string printed = first.Print();
    QorSettingFile second;
    Require(second.Parse(printed).count == 0);
    Require(second.CountSettings() == first.CountSettings());
    Require(second.Print() == printed);
    return 0;
}
