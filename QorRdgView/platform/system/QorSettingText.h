#pragma once

#include "platform/system/QorSettingFile.h"

#include <string>
#include <string_view>

/// A line of a settings file, taken apart.
struct QorSettingLine {
    std::string_view key;
    QorSettingValue value;
};

/// Takes a line such as `Key = 1, 2` apart; null, or what is wrong with it.
[[nodiscard]] const char* QorReadSettingLine(std::string_view iLine, QorSettingLine& oLine);

/// The line that reads back as exactly that.
[[nodiscard]] std::string QorPrintSettingLine(std::string_view iKey, const QorSettingValue& iValue);
