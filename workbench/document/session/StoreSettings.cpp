#include "workbench/document/session/StoreSettings.h"

#include "platform/system/QorSettingRepository.h"

#include <cmath>

namespace qor::document {

namespace {

constexpr double plainAutosaveSeconds = 120;
constexpr double bytesOfMegabyte = 1024.0 * 1024.0;
constexpr double longest = 1e9; ///< seconds or megabytes that no setting exceeds

/// A setting between 0 and longest; \p plain when it is absent or something else.
double numberOf(const char* key, double plain) {
    const auto repository = QorSettingRepository::GetRepository("documents");
    double value = plain;
    if (repository)
        repository->ReadSetting(key, &value);
    return std::isfinite(value) && value >= 0 && value <= longest ? value : plain;
}

} // namespace

std::chrono::seconds autosaveInterval() {
    return std::chrono::seconds(std::llround(numberOf("AutosaveInterval", plainAutosaveSeconds)));
}

ImportOptions importSettings(ImportOptions options) {
    options.deflectionMm = numberOf("ImportDeflection", options.deflectionMm);
    options.angleDeg = numberOf("ImportAngle", options.angleDeg);
    const double limit =
        numberOf("ImportTimeLimit", static_cast<double>(options.timeLimit.count()) / 1000.0);
    options.timeLimit = std::chrono::milliseconds(std::llround(limit * 1000.0));
    const double memory =
        numberOf("ImportMemoryLimit", static_cast<double>(options.memoryLimit) / bytesOfMegabyte);
    options.memoryLimit =
        memory > 0 ? static_cast<std::uint64_t>(memory * bytesOfMegabyte) : memoryOfComputer();
    return options;
}

} // namespace qor::document
