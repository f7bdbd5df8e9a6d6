#include "workbench/paint/Strokes.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace qor::paint {

namespace {

/// Far enough outside every surface; whole numbers stay whole.
constexpr double farthest = 1.0e6;
/// Coordinates of a border come out of a few multiplications.
constexpr double rounding = 1.0e-6;

QColor colorOf(const QorGraphicAttributeSet& look) {
    return {look.color.red, look.color.green, look.color.blue, look.color.alpha};
}

bool isFinite(const QPointF& point) {
    return std::isfinite(point.x()) && std::isfinite(point.y());
}

bool isUpright(const QPointF& from, const QPointF& to) {
    return std::abs(from.x() - to.x()) < rounding || std::abs(from.y() - to.y()) < rounding;
}

/// Whether four corners are those of an upright rectangle.
bool isRectangle(const QPolygonF& corners) {
    if (corners.size() != 4)
        return false;
    for (int i = 0; i < 4; ++i)
        if (!isUpright(corners[i], corners[(i + 1) % 4]))
            return false;
    return true;
}

} // namespace

int Strokes::border(double coordinate) {
    return static_cast<int>(
        std::floor(std::clamp(coordinate, -farthest, farthest) + 0.5 + rounding));
}

QRect Strokes::pixels(const QRectF& rectangle) {
    const int left = border(rectangle.left());
    const int top = border(rectangle.top());
    return {left, top, border(rectangle.right()) - left, border(rectangle.bottom()) - top};
}

int Strokes::width(float thickness) const {
    constexpr double thickest = 1000.0;
    const double pixels = std::clamp(static_cast<double>(thickness) * ratio_, 1.0, thickest);
    // What is an odd number wide lies around the middle of a line of width 1, at every scale.
    const bool isAround = std::fmod(static_cast<double>(thickness), 2.0) == 1.0;
    const double hairline = std::max(1.0, std::round(ratio_));
    if (!isAround)
        return static_cast<int>(std::lround(pixels));
    return static_cast<int>(hairline + 2.0 * std::max(0.0, std::round(0.5 * (pixels - hairline))));
}

/// Cuts a piece to what is near the area; false when nothing is. Method: Liang and Barsky 1984.
bool Strokes::clip(QPointF& from, QPointF& to) const {
    constexpr double room = 1100.0; // more than the widest line
    const QRectF near = area_.adjusted(-room, -room, room, room);
    const QPointF way = to - from;
    double begin = 0.0;
    double end = 1.0;
    const auto cut = [&](double step, double distance) {
        if (step == 0.0)
            return distance >= 0.0;
        const double part = distance / step;
        if (step < 0.0)
            begin = std::max(begin, part);
        else
            end = std::min(end, part);
        return begin <= end;
    };
    if (!cut(-way.x(), from.x() - near.left()) || !cut(way.x(), near.right() - from.x()) ||
        !cut(-way.y(), from.y() - near.top()) || !cut(way.y(), near.bottom() - from.y()))
        return false;
    const QPointF start = from;
    if (end < 1.0)
        to = start + way * end;
    if (begin > 0.0)
        from = start + way * begin;
    return true;
}

void Strokes::line(const QPolygonF& points, const QorGraphicAttributeSet& look) {
    for (qsizetype i = 0; i + 1 < points.size(); ++i) {
        QPointF from = points[i];
        QPointF to = points[i + 1];
        if (!isFinite(from) || !isFinite(to) || !clip(from, to))
            continue;
        if (isUpright(from, to) && !look.dashed)
            upright(from, to, look);
        else
            smooth(from, to, look);
    }
}

void Strokes::upright(const QPointF& from, const QPointF& to, const QorGraphicAttributeSet& look) {
    const int pen = width(look.thickness);
    const int back = pen / 2;
    const QRect spine = pixels(QRectF(from, to).normalized());
    painter_.fillRect(spine.x() - back, spine.y() - back, spine.width() + pen, spine.height() + pen,
                      colorOf(look));
}

void Strokes::smooth(const QPointF& from, const QPointF& to, const QorGraphicAttributeSet& look) {
    const bool isCrisp = isUpright(from, to);
    const double thickness = isCrisp ? width(look.thickness)
                                     : std::max(1.0, static_cast<double>(look.thickness) * ratio_);
    QPen pen(colorOf(look), thickness, Qt::SolidLine, look.dashed ? Qt::FlatCap : Qt::RoundCap);
    if (look.dashed)
        pen.setDashPattern({4.0, 3.0});
    painter_.setPen(pen);
    painter_.setRenderHint(QPainter::Antialiasing, true);
    // Smoothing covers whole pixels where the pen's sides lie on borders.
    const double shift = isCrisp && std::fmod(thickness, 2.0) != 0.0 ? 0.5 : 0.0;
    const auto crisp = [&](const QPointF& point) {
        return QPointF(border(point.x()) + shift, border(point.y()) + shift);
    };
    painter_.drawLine(isCrisp ? QLineF(crisp(from), crisp(to)) : QLineF(from, to));
}

void Strokes::outline(const QRectF& rectangle, const QorGraphicAttributeSet& look) {
    if (!isFinite(rectangle.topLeft()) || !isFinite(rectangle.bottomRight()))
        return;
    const QRect outer = pixels(rectangle.normalized());
    if (look.dashed) {
        const QRectF box(outer);
        line({box.topLeft(), box.topRight(), box.bottomRight(), box.bottomLeft(), box.topLeft()},
             look);
        return;
    }
    const QColor color = colorOf(look);
    const int pen = width(look.thickness);
    const QRect inner = outer.adjusted(pen, pen, -pen, -pen);
    if (inner.width() <= 0 || inner.height() <= 0) {
        // Never thinner than its line.
        painter_.fillRect(outer.x(), outer.y(), std::max(outer.width(), pen),
                          std::max(outer.height(), pen), color);
        return;
    }
    painter_.fillRect(outer.x(), outer.y(), outer.width(), pen, color);
    painter_.fillRect(outer.x(), inner.y() + inner.height(), outer.width(), pen, color);
    painter_.fillRect(outer.x(), inner.y(), pen, inner.height(), color);
    painter_.fillRect(inner.x() + inner.width(), inner.y(), pen, inner.height(), color);
}

void Strokes::mark(const QPointF& point, const QorGraphicAttributeSet& look) {
    if (!isFinite(point))
        return;
    const int side = width(look.pointSize);
    // An odd mark has its middle pixel where a line of width 1 through the point runs.
    const int back = side / 2;
    painter_.fillRect(border(point.x()) - back, border(point.y()) - back, side, side,
                      colorOf(look));
}

void Strokes::fill(const QPolygonF& corners, const QorGraphicAttributeSet& look) {
    if (!std::all_of(corners.begin(), corners.end(), isFinite))
        return;
    if (isRectangle(corners)) {
        painter_.fillRect(pixels(corners.boundingRect()), colorOf(look));
        return;
    }
    const QRectF reach = corners.boundingRect();
    const bool isHuge = std::max(reach.width(), reach.height()) > farthest;
    painter_.setRenderHint(QPainter::Antialiasing, true);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(colorOf(look));
    painter_.drawPolygon(isHuge ? corners.intersected(area_) : corners);
}

} // namespace qor::paint
