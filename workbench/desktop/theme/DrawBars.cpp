#include "workbench/desktop/theme/Draw.h"

#include <QStyleOptionProgressBar>
#include <QStyleOptionSlider>

#include <algorithm>

namespace qor::desktop {

namespace {

constexpr qreal grooveWidth = 4.0;
constexpr qreal handleSize = 16.0;
constexpr int leastScrollHandle = 28;

const QStyleOptionSlider& sliderOf(const QStyleOption& option) {
    return static_cast<const QStyleOptionSlider&>(option);
}

bool isUpright(const QStyleOptionSlider& option) {
    return option.orientation == Qt::Vertical;
}

/// Where along the slider the middle of its handle is.
qreal handleAt(const QStyleOptionSlider& option) {
    const qreal length = isUpright(option) ? option.rect.height() : option.rect.width();
    const int travel = static_cast<int>(length - handleSize);
    const int at = QStyle::sliderPositionFromValue(
        option.minimum, option.maximum, option.sliderPosition, travel, option.upsideDown);
    return at + handleSize / 2.0;
}

QRectF grooveOf(const QStyleOptionSlider& option, qreal from, qreal to) {
    const QRectF all(option.rect);
    if (isUpright(option))
        return {all.center().x() - grooveWidth / 2.0, all.top() + from, grooveWidth, to - from};
    return {all.left() + from, all.center().y() - grooveWidth / 2.0, to - from, grooveWidth};
}

void drawHandle(QPainter& painter, const QPointF& middle, const QStyleOptionSlider& option) {
    const Look look(option);
    const bool active = option.activeSubControls.testFlag(QStyle::SC_SliderHandle);
    const QRectF handle(middle.x() - handleSize / 2.0, middle.y() - handleSize / 2.0, handleSize,
                        handleSize);
    // The handle is the lightest thing around, in the dark theme too.
    QColor fill = look.colors.dark ? look.colors.text : look.colors.raised;
    if (!look.enabled)
        fill = look.colors.window;
    else if (active && look.pressed)
        fill = look.colors.accent;
    drawPanel(painter, handle, fill, look.enabled && active ? look.colors.accent : look.edge(),
              handleSize / 2.0);
    if (look.focused)
        drawRing(painter, handle, handleSize / 2.0 - 1.0);
}

} // namespace

void drawSlider(const QStyleOption& option, QPainter& painter, const QWidget* /*widget*/) {
    const QStyleOptionSlider& slider = sliderOf(option);
    const Look look(option);
    const qreal length = isUpright(slider) ? option.rect.height() : option.rect.width();
    const qreal at = handleAt(slider);
    drawPanel(painter, grooveOf(slider, 0.0, length), look.colors.groove, QColor(),
              grooveWidth / 2.0);
    const QRectF passed =
        slider.upsideDown ? grooveOf(slider, at, length) : grooveOf(slider, 0.0, at);
    if (look.enabled)
        drawPanel(painter, passed, look.colors.accent, QColor(), grooveWidth / 2.0);
    const QRectF all(option.rect);
    drawHandle(painter,
               isUpright(slider) ? QPointF(all.center().x(), all.top() + at)
                                 : QPointF(all.left() + at, all.center().y()),
               slider);
}

/// Without arrows: the handle in its track, thicker under the mouse.
void drawScrollBar(const QStyleOption& option, QPainter& painter, const QWidget* /*widget*/) {
    const QStyleOptionSlider& bar = sliderOf(option);
    const Look look(option);
    const bool active = look.hovered || look.pressed;
    const qreal slack = active ? 3.0 : 4.0;
    const auto slim = [&](const QRect& rect) {
        return isUpright(bar) ? QRectF(rect).adjusted(slack, 0.0, -slack, 0.0)
                              : QRectF(rect).adjusted(0.0, slack, 0.0, -slack);
    };
    const QRectF track = slim(option.rect);
    const qreal radius = (isUpright(bar) ? track.width() : track.height()) / 2.0;
    drawPanel(painter, track, look.colors.line, QColor(), radius);
    if (bar.minimum == bar.maximum || !look.enabled)
        return;
    drawPanel(painter, slim(scrollBarPart(option, QStyle::SC_ScrollBarSlider)),
              look.pressed ? look.colors.accent : look.colors.edge, QColor(), radius);
    if (look.keyboardFocused)
        drawRing(painter, QRectF(option.rect));
}

QRect scrollBarPart(const QStyleOption& option, QStyle::SubControl part) {
    const QStyleOptionSlider& bar = sliderOf(option);
    const bool upright = isUpright(bar);
    const QRect& all = option.rect;
    const int length = upright ? all.height() : all.width();
    const int range = bar.maximum - bar.minimum;
    int handle = length;
    if (range > 0) {
        const qint64 whole = static_cast<qint64>(range) + bar.pageStep;
        handle = static_cast<int>(static_cast<qint64>(bar.pageStep) * length / whole);
        handle = std::clamp(handle, std::min(leastScrollHandle, length), length);
    }
    const int at = QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                                   length - handle, bar.upsideDown);
    const auto slice = [&](int from, int size) {
        return upright ? QRect(all.left(), all.top() + from, all.width(), size)
                       : QRect(all.left() + from, all.top(), size, all.height());
    };
    switch (part) {
    case QStyle::SC_ScrollBarSlider:
        return slice(at, handle);
    case QStyle::SC_ScrollBarSubPage:
        return slice(0, at);
    case QStyle::SC_ScrollBarAddPage:
        return slice(at + handle, length - at - handle);
    case QStyle::SC_ScrollBarGroove:
        return all;
    default:
        return {};
    }
}

void drawProgress(const QStyleOption& option, QPainter& painter, const QWidget* /*widget*/) {
    constexpr qreal height = 6.0;
    const auto& progress = static_cast<const QStyleOptionProgressBar&>(option);
    const Look look(option);
    const QRectF all(option.rect);
    const QRectF groove(all.left(), all.center().y() - height / 2.0 + 0.5, all.width(), height);
    drawPanel(painter, groove, look.colors.groove, QColor(), height / 2.0);
    const double range = static_cast<double>(progress.maximum) - progress.minimum;
    const double part = range > 0.0 ? (progress.progress - progress.minimum) / range : 0.0;
    if (part <= 0.0)
        return;
    const QRectF done(groove.left(), groove.top(),
                      std::max(height, groove.width() * std::min(part, 1.0)), height);
    drawPanel(painter, done, look.enabled ? look.colors.accent : look.colors.disabled, QColor(),
              height / 2.0);
}

} // namespace qor::desktop
