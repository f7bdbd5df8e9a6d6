#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>

namespace qor::desktop {

/// The icon of that name ("open", "render"), drawn in the colours of the theme that is in use when
/// it is painted and at the resolution of the screen that it is painted on; a null icon for an
/// unknown name. In the drawings black stands for the text's colour and pure blue, green, red and
/// yellow for the theme's accent, field, danger and warning.
[[nodiscard]] QIcon icon(const QString& name);

/// The same as a picture of \p size device-independent pixels, for labels. \p ink stands for black.
[[nodiscard]] QPixmap
iconPixmap(const QString& name, int size, qreal pixelRatio, const QColor& ink);

} // namespace qor::desktop
