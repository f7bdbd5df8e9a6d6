#pragma once

#include "platform/vis/QorGraphicAttributeSet.h"

#include <QPolygonF>
#include <QRectF>

class QPainter;

namespace qor::paint {

/// Device pixels that lines, marks and areas cover. A painter's unit is a device pixel here; pixel
/// i reaches from i to i + 1. Coordinates that are no numbers draw nothing.
class Strokes {
public:
    /// \p ratio: device pixels a device-independent pixel. Nothing is drawn outside \p area.
    Strokes(QPainter& painter, const QRectF& area, float ratio)
        : painter_(painter), area_(area), ratio_(static_cast<double>(ratio)) {}

    /// Level and upright pieces cover whole pixels, the others are smoothed.
    void line(const QPolygonF& points, const QorGraphicAttributeSet& look);
    /// The outline of an upright rectangle, inside it.
    void outline(const QRectF& rectangle, const QorGraphicAttributeSet& look);
    /// A square of the look's point size around \p point.
    void mark(const QPointF& point, const QorGraphicAttributeSet& look);
    /// A filled quadrilateral; upright rectangles that touch neither overlap nor leave a gap.
    void fill(const QPolygonF& corners, const QorGraphicAttributeSet& look);

    /// The pixel border nearest to a coordinate.
    [[nodiscard]] static int border(double coordinate);
    /// The pixels whose borders are nearest to those of \p rectangle.
    [[nodiscard]] static QRect pixels(const QRectF& rectangle);

private:
    [[nodiscard]] int width(float thickness) const;
    bool clip(QPointF& from, QPointF& to) const;
    void upright(const QPointF& from, const QPointF& to, const QorGraphicAttributeSet& look);
    void smooth(const QPointF& from, const QPointF& to, const QorGraphicAttributeSet& look);

    QPainter& painter_;
    QRectF area_;
    double ratio_;
};

} // namespace qor::paint
