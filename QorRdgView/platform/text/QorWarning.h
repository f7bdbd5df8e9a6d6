#pragma once

#include <functional>
#include <string_view>

/// Says something that a person should know though the program goes on: a damaged file, a setting
/// that cannot be kept. \p iText is one sentence without a line end; it names the file and, where
/// there is one, the line. Thread-safe. Goes to standard error as "qor: warning: …" unless a
/// receiver is set.
void QorWarn(std::string_view iText);

/// Sends warnings to \p iReceiver instead, or to standard error again when it is empty. Returns the
/// receiver before it. The receiver may be called on any thread, one call at a time.
using QorWarningReceiver = std::function<void(std::string_view iText)>;
QorWarningReceiver QorSetWarningReceiver(QorWarningReceiver iReceiver);
