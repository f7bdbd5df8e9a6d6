#include "workbench/desktop/theme/Draw.h"

#include <QStyleOptionComboBox>
#include <QStyleOptionSpinBox>

namespace qor::desktop {

namespace {

constexpr int comboArrowWidth = 28;
constexpr int comboTextMargin = 8;
constexpr int spinButtonWidth = 24;
constexpr int arrowSize = 18;

void drawBox(QPainter& painter, const QRect& rect, const Look& look, const QColor& fill) {
    drawPanel(painter, QRectF(rect), fill, look.edge());
    if (look.focused)
        drawRing(painter, QRectF(rect));
}

/// One half of a spinner's buttons.
void drawStep(QPainter& painter, const QStyleOptionSpinBox& option, bool up) {
    const Look look(option);
    const QStyle::SubControl part = up ? QStyle::SC_SpinBoxUp : QStyle::SC_SpinBoxDown;
    const QRect rect = spinnerPart(option, part);
    const bool possible =
        look.enabled && option.stepEnabled.testFlag(up ? QAbstractSpinBox::StepUpEnabled
                                                       : QAbstractSpinBox::StepDownEnabled);
    const bool active = possible && option.activeSubControls.testFlag(part);
    if (active && (look.hovered || look.pressed))
        drawPanel(painter, QRectF(rect).adjusted(1, up ? 2 : 0, -2, up ? 0 : -2),
                  look.pressed ? look.colors.pressed : look.colors.hover, QColor(), 3.0);
    drawIcon(painter, rect.translated(0, up ? 1 : -1),
             up ? QStringLiteral("up") : QStringLiteral("down"), arrowSize - 2,
             possible ? look.colors.text : look.colors.disabled);
}

} // namespace

/// A line editor; the one inside a spinner has no frame, there the spinner draws it.
void drawField(const QStyleOption& option, QPainter& painter, const QWidget* /*widget*/) {
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(&option);
    if (frame == nullptr || frame->lineWidth <= 0)
        return;
    const Look look(option);
    drawBox(painter, option.rect, look, look.enabled ? look.colors.field : look.colors.window);
}

void drawCombo(const QStyleOption& option, QPainter& painter, const QWidget* /*widget*/) {
    const auto& combo = static_cast<const QStyleOptionComboBox&>(option);
    const Look look(option);
    const QColor fill = combo.editable && look.enabled ? look.colors.field : look.fill();
    drawBox(painter, option.rect, look, fill);
    drawIcon(painter, comboPart(option, QStyle::SC_ComboBoxArrow), QStringLiteral("down"),
             arrowSize, look.ink());
}

QRect comboPart(const QStyleOption& option, QStyle::SubControl part) {
    const QRect& all = option.rect;
    const QRect arrow(all.right() - comboArrowWidth + 1, all.top(), comboArrowWidth, all.height());
    switch (part) {
    case QStyle::SC_ComboBoxArrow:
        return QStyle::visualRect(option.direction, all, arrow);
    case QStyle::SC_ComboBoxEditField:
        return QStyle::visualRect(option.direction, all,
                                  all.adjusted(comboTextMargin, 2, -comboArrowWidth, -2));
    default:
        return all;
    }
}

void drawSpinner(const QStyleOption& option, QPainter& painter, const QWidget* /*widget*/) {
    const auto& spinner = static_cast<const QStyleOptionSpinBox&>(option);
    const Look look(option);
    drawBox(painter, option.rect, look, look.enabled ? look.colors.field : look.colors.window);
    drawStep(painter, spinner, true);
    drawStep(painter, spinner, false);
}

QRect spinnerPart(const QStyleOption& option, QStyle::SubControl part) {
    constexpr int frame = 2;
    const QRect& all = option.rect;
    const int left = all.right() - spinButtonWidth + 1;
    const int middle = all.top() + all.height() / 2;
    QRect rect = all;
    if (part == QStyle::SC_SpinBoxUp)
        rect = QRect(QPoint(left, all.top()), QPoint(all.right(), middle - 1));
    else if (part == QStyle::SC_SpinBoxDown)
        rect = QRect(QPoint(left, middle), QPoint(all.right(), all.bottom()));
    else if (part == QStyle::SC_SpinBoxEditField)
        rect = all.adjusted(frame + 4, frame, -spinButtonWidth, -frame);
    return QStyle::visualRect(option.direction, all, rect);
}

} // namespace qor::desktop
