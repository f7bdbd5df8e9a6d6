#include "workbench/desktop/theme/Draw.h"

#include <QCheckBox>
#include <QPainterPath>
#include <QRadioButton>
#include <QToolButton>

namespace qor::desktop {

namespace {

bool isDefault(const QStyleOption& option) {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    return button != nullptr && button->features.testFlag(QStyleOptionButton::DefaultButton);
}

QColor accentFill(const Look& look) {
    constexpr int less = 112;
    if (!look.enabled)
        return look.colors.groove;
    if (look.pressed)
        return look.colors.accent.darker(less);
    return look.hovered ? look.colors.accent.lighter(less) : look.colors.accent;
}

QColor tinted(const Look& look, qreal strength) {
    QColor color = look.colors.accent;
    color.setAlphaF(static_cast<float>(strength));
    return color;
}

} // namespace

void drawPushPanel(const QStyleOption& option, QPainter& painter, const QWidget* /*widget*/) {
    const Look look(option);
    const QRectF rect(option.rect);
    if (isDefault(option) && look.enabled)
        drawPanel(painter, rect, accentFill(look), QColor());
    else
        drawPanel(painter, rect, look.fill(), look.edge());
    if (!look.keyboardFocused)
        return;
    drawRing(painter, rect);
    if (isDefault(option)) // on the accent the ring alone would not be seen
        drawPanel(painter, rect.adjusted(2, 2, -2, -2), QColor(), look.colors.accentText,
                  cornerRadius - 2);
}

void drawToolPanel(const QStyleOption& option, QPainter& painter, const QWidget* /*widget*/) {
    constexpr qreal faint = 0.16;
    const Look look(option);
    const QRectF rect(option.rect);
    if (look.on)
        drawPanel(painter, rect, tinted(look, faint), look.enabled ? look.colors.accent : QColor());
    else if (look.hovered || look.pressed)
        drawPanel(painter, rect, look.pressed ? look.colors.pressed : look.colors.hover, QColor());
}

void drawCheckMark(const QStyleOption& option, QPainter& painter, const QWidget* /*widget*/) {
    constexpr qreal radius = 4.0;
    const Look look(option);
    const QRectF box(option.rect);
    if (!look.on) {
        drawPanel(painter, box, look.hovered ? look.fill() : look.colors.field, look.edge(),
                  radius);
        return;
    }
    drawPanel(painter, box, accentFill(look), QColor(), radius);
    const PainterScope scope(painter);
    QPainterPath mark;
    mark.moveTo(box.left() + box.width() * 0.25, box.top() + box.height() * 0.52);
    mark.lineTo(box.left() + box.width() * 0.43, box.top() + box.height() * 0.70);
    mark.lineTo(box.left() + box.width() * 0.76, box.top() + box.height() * 0.32);
    painter.setPen(QPen(look.enabled ? look.colors.accentText : look.colors.disabled, 2.0,
                        Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(mark);
}

void drawRadioMark(const QStyleOption& option, QPainter& painter, const QWidget* /*widget*/) {
    constexpr qreal dot = 0.2;
    const Look look(option);
    const QRectF circle(option.rect);
    const qreal radius = circle.width() / 2.0;
    if (!look.on) {
        drawPanel(painter, circle, look.hovered ? look.fill() : look.colors.field, look.edge(),
                  radius);
        return;
    }
    drawPanel(painter, circle, accentFill(look), QColor(), radius);
    const PainterScope scope(painter);
    painter.setPen(Qt::NoPen);
    painter.setBrush(look.enabled ? look.colors.accentText : look.colors.disabled);
    painter.drawEllipse(circle.center(), circle.width() * dot, circle.width() * dot);
}

/// Buttons with a panel and fields draw their ring themselves; this is for marks with a text beside
/// them and for tools, which have no panel most of the time.
void drawFocus(const QStyleOption& option, QPainter& painter, const QWidget* widget) {
    if (!Look(option).keyboardFocused)
        return;
    if (qobject_cast<const QToolButton*>(widget) != nullptr) {
        drawRing(painter, QRectF(widget->rect()));
        return;
    }
    const bool marked = qobject_cast<const QCheckBox*>(widget) != nullptr ||
                        qobject_cast<const QRadioButton*>(widget) != nullptr;
    if (marked)
        drawRing(painter, QRectF(option.rect));
}

} // namespace qor::desktop
