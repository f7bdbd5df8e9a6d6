#pragma once

#include "platform/text/QorString.h"

#include <QString>

namespace qor::desktop {

/// Between the library's UTF-8 and Qt's UTF-16. Bytes that are not UTF-8 become replacement marks.
[[nodiscard]] inline QString toQt(const QorUnicodeString& text) {
    return QString::fromStdString(text.Str());
}

[[nodiscard]] inline QString toQt(const QorString& text) {
    return QString::fromStdString(text.Str());
}

[[nodiscard]] inline QorUnicodeString fromQt(const QString& text) {
    return text.toStdString();
}

} // namespace qor::desktop
