#include "workbench/paint/AxisCross.h"

#include "platform/vis/QorViewpoint.h"
#include "workbench/paint/Texts.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>

namespace qor::paint {

namespace {

// Lengths in device-independent pixels, and in parts of an arrow.
constexpr double side = 104.0; // of the square in the corner
constexpr int smallestViewer = 220;
constexpr double arrowsASide = 3.0;
constexpr double shaftWidth = 0.09;
constexpr double headAt = 0.72;
constexpr double headRadius = 0.125;
constexpr double letterAt = 1.32;
constexpr double letterHeight = 12.0;

struct Axis {
    QorMathVector direction;
    const char* letter;
    QRgb color;
    QPointF way{}; ///< of an arrow, in pixels
    double depth = 0.0;
};

/// The axes as they lie in the picture, the farthest first.
std::array<Axis, 3> axesSeenFrom(const QorMathTransformation& frame, double length) {
    std::array<Axis, 3> axes{{{{1.0, 0.0, 0.0}, "X", 0xffe0484d},
                              {{0.0, 1.0, 0.0}, "Y", 0xff3fa45a},
                              {{0.0, 0.0, 1.0}, "Z", 0xff3d7fe6}}};
    for (Axis& axis : axes) {
        axis.way =
            QPointF(axis.direction * frame.axes[0], -(axis.direction * frame.axes[1])) * length;
        axis.depth = axis.direction * frame.axes[2];
    }
    std::sort(axes.begin(), axes.end(),
              [](const Axis& one, const Axis& other) { return one.depth < other.depth; });
    return axes;
}

void paintArrow(QPainter& painter, const QPointF& middle, const Axis& axis, double length) {
    const QColor color = QColor::fromRgb(axis.color);
    painter.setPen(QPen(color, shaftWidth * length, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(middle, middle + axis.way * headAt);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    const double radius = headRadius * length;
    painter.drawEllipse(middle + axis.way * headAt, radius * std::abs(axis.depth) + 0.01,
                        radius * std::abs(axis.depth) + 0.01);
    const double seen = std::hypot(axis.way.x(), axis.way.y());
    if (seen < 1.0)
        return; // it points at the eye
    const QPointF across = QPointF(-axis.way.y(), axis.way.x()) * (radius / seen);
    const QPointF foot = middle + axis.way * headAt;
    painter.drawPolygon(QPolygonF{foot + across, middle + axis.way, foot - across});
}

} // namespace

void paintAxisCross(QPainter& painter,
                    const Qor3DViewpoint& viewpoint,
                    const QSize& size,
                    double pixelRatio) {
    if (std::min(size.width(), size.height()) < smallestViewer * pixelRatio)
        return;
    const double pixels = std::round(side * pixelRatio);
    const double length = pixels / arrowsASide;
    const QPointF middle(0.5 * pixels, size.height() - 0.5 * pixels);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, true);
    const auto axes = axesSeenFrom(viewpoint.GetEyeFrame(), length);
    for (const Axis& axis : axes)
        paintArrow(painter, middle, axis, length);
    constexpr int centre = 5;
    for (const Axis& axis : axes)
        drawText(painter, QLatin1String(axis.letter), middle + axis.way * letterAt,
                 letterHeight * pixelRatio, centre, QColor::fromRgb(axis.color));
    painter.restore();
}

} // namespace qor::paint
