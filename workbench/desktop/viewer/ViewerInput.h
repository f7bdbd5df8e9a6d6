#pragma once

#include "platform/vis/QorManipulator.h"
#include "platform/vis/QorView.h"

#include <QCursor>

#include <optional>

class QMouseEvent;
class QWheelEvent;
class QKeyEvent;

namespace qor::desktop {

/// What Qt says a person did, in the words of viewers. All translation is here. \p ratio: device
/// pixels a device-independent pixel; \p inWindow: where the control lies in its window. Nothing
/// for buttons that viewers do not know.
[[nodiscard]] std::optional<QorMouseEvent>
mouseEventOf(const QMouseEvent& event, double ratio, const QPointF& inWindow);

/// Nothing for wheels that turn sideways alone. Fine wheels and touch pads give parts of steps.
[[nodiscard]] std::optional<QorMouseEvent> wheelEventOf(const QWheelEvent& event, double ratio);

/// A device-independent position as a device pixel.
[[nodiscard]] QorMathPoint2D devicePixel(const QPointF& position, double ratio);

[[nodiscard]] Qt::CursorShape shapeOf(QorCursor cursor);

/// What a key asks of a viewer in which a person moves about.
struct ViewKey {
    bool fit = false;                    ///< show all
    std::optional<QorStandardView> view; ///< show one of the standard sides
};

/// F fits; 1 to 7 are front, back, left, right, top, bottom and isometric. Nothing for other keys,
/// or with a modifier.
[[nodiscard]] std::optional<ViewKey> viewKeyOf(const QKeyEvent& event);

} // namespace qor::desktop
