#pragma once

#include <QColor>
#include <QPointF>
#include <QString>

class QPainter;

namespace qor::paint {

/// Device pixels from the anchor of a text to the upper left of its line, as parts of the line's
/// width and height; both are 0..1. Anchors are those of Qor2DAnnotationTextGP; unknown ones are 1.
[[nodiscard]] QPointF anchorPart(int anchor);

/// Draws one line, \p height device pixels high, held at \p position by an anchor. One that is
/// longer than \p maxWidth, unless that is 0, is drawn narrower, and shortened if that is not
/// enough. The font is the same in every program and on every display. Needs a QGuiApplication.
void drawText(QPainter& painter,
              const QString& text,
              const QPointF& position,
              double height,
              int anchor,
              const QColor& color,
              double maxWidth = 0.0);

} // namespace qor::paint
