#include "workbench/desktop/theme/Paint.h"

#include "workbench/desktop/theme/Icon.h"

#include <QStyle>

namespace qor::desktop {

Look::Look(const QStyleOption& option)
    : enabled(option.state.testFlag(QStyle::State_Enabled))
    , hovered(enabled && option.state.testFlag(QStyle::State_MouseOver))
    , pressed(enabled && option.state.testFlag(QStyle::State_Sunken))
    , on(option.state.testFlag(QStyle::State_On))
    , focused(enabled && option.state.testFlag(QStyle::State_HasFocus))
    , keyboardFocused(focused && option.state.testFlag(QStyle::State_KeyboardFocusChange))
    , colors(Theme::colors()) {}

QColor Look::fill() const {
    if (!enabled)
        return colors.window;
    if (pressed)
        return colors.pressed;
    return hovered ? colors.hover : colors.raised;
}

QColor Look::ink() const {
    return enabled ? colors.text : colors.disabled;
}

QColor Look::edge() const {
    return enabled ? colors.edge : colors.line;
}

void drawPanel(
    QPainter& painter, const QRectF& rect, const QColor& fill, const QColor& edge, qreal radius) {
    const PainterScope scope(painter);
    constexpr qreal half = 0.5;
    painter.setBrush(fill.isValid() ? QBrush(fill) : QBrush(Qt::NoBrush));
    painter.setPen(edge.isValid() ? QPen(edge, 1.0) : QPen(Qt::NoPen));
    const QRectF inner = edge.isValid() ? rect.adjusted(half, half, -half, -half) : rect;
    painter.drawRoundedRect(inner, radius, radius);
}

void drawRing(QPainter& painter, const QRectF& rect, qreal radius) {
    const PainterScope scope(painter);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Theme::colors().accent, 2.0));
    painter.drawRoundedRect(rect.adjusted(1.0, 1.0, -1.0, -1.0), radius, radius);
}

void drawIcon(
    QPainter& painter, const QRect& rect, const QString& name, int size, const QColor& ink) {
    const qreal ratio = painter.device()->devicePixelRatioF();
    const QPointF corner(rect.center().x() - size / 2 + 1, rect.center().y() - size / 2 + 1);
    painter.drawPixmap(corner, iconPixmap(name, size, ratio, ink));
}

} // namespace qor::desktop
