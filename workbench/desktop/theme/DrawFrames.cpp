#include "workbench/desktop/theme/Draw.h"

#include <QFrame>
#include <QStyleOptionFrame>
#include <QStyleOptionGroupBox>
#include <QStyleOptionViewItem>
#include <QWidget>

namespace qor::desktop {

namespace {

constexpr int groupGap = 6;

QFont groupFont(const QWidget* widget, const QPainter* painter = nullptr) {
    QFont font = widget != nullptr    ? widget->font()
                 : painter != nullptr ? painter->font()
                                      : QFont();
    font.setWeight(QFont::DemiBold);
    return font;
}

int titleHeight(const QStyleOptionGroupBox& group) {
    return group.text.isEmpty() ? 0 : group.fontMetrics.height() + groupGap;
}

} // namespace

/// The title stands above the frame.
void drawGroup(const QStyleOption& option, QPainter& painter, const QWidget* widget) {
    const auto& group = static_cast<const QStyleOptionGroupBox&>(option);
    const Look look(option);
    drawPanel(painter, QRectF(groupPart(option, QStyle::SC_GroupBoxFrame)), QColor(),
              look.colors.line, cornerRadius + 1.0);
    const PainterScope scope(painter);
    painter.setFont(groupFont(widget, &painter));
    painter.setPen(look.ink());
    painter.drawText(groupPart(option, QStyle::SC_GroupBoxLabel),
                     Qt::AlignLeft | Qt::AlignTop | Qt::TextShowMnemonic, group.text);
}

QRect groupPart(const QStyleOption& option, QStyle::SubControl part) {
    const auto& group = static_cast<const QStyleOptionGroupBox&>(option);
    const int title = titleHeight(group);
    if (part == QStyle::SC_GroupBoxLabel)
        return {option.rect.left() + 2, option.rect.top(), option.rect.width() - 4, title};
    if (part == QStyle::SC_GroupBoxCheckBox)
        return {};
    return option.rect.adjusted(0, title, 0, 0);
}

void drawGroupFrame(const QStyleOption& option, QPainter& painter, const QWidget* /*widget*/) {
    drawPanel(painter, QRectF(option.rect), QColor(), Theme::colors().line, cornerRadius + 1.0);
}

/// Lines between groups, and the frames of lists.
void drawShapedFrame(const QStyleOption& option, QPainter& painter, const QWidget* /*widget*/) {
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(&option);
    if (frame == nullptr || frame->frameShape == QFrame::NoFrame)
        return;
    const Look look(option);
    const QRect& rect = option.rect;
    if (frame->frameShape == QFrame::HLine)
        painter.fillRect(QRect(rect.left(), rect.center().y(), rect.width(), 1), look.colors.line);
    else if (frame->frameShape == QFrame::VLine)
        painter.fillRect(QRect(rect.center().x(), rect.top(), 1, rect.height()), look.colors.line);
    else if (look.focused)
        drawRing(painter, QRectF(rect), 3.0);
    else
        drawPanel(painter, QRectF(rect), QColor(), look.colors.line, 3.0);
}

void drawMenuPanel(const QStyleOption& option, QPainter& painter, const QWidget* /*widget*/) {
    const Colors& colors = Theme::colors();
    painter.fillRect(option.rect, colors.dark ? colors.pressed : colors.field);
    drawPanel(painter, QRectF(option.rect), QColor(), colors.dark ? colors.edge : colors.line, 0.0);
}

void drawTip(const QStyleOption& option, QPainter& painter, const QWidget* /*widget*/) {
    painter.fillRect(option.rect, option.palette.color(QPalette::ToolTipBase));
    if (Theme::colors().dark)
        drawPanel(painter, QRectF(option.rect), QColor(), Theme::colors().edge, 0.0);
}

void drawBar(const QStyleOption& option, QPainter& painter, const QWidget* /*widget*/) {
    const QRect& rect = option.rect;
    painter.fillRect(rect, Theme::colors().window);
    painter.fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), Theme::colors().line);
}

void drawMenuBarBack(const QStyleOption& option, QPainter& painter, const QWidget* /*widget*/) {
    painter.fillRect(option.rect, Theme::colors().window);
}

/// The back of a column's title in a list.
void drawHeader(const QStyleOption& option, QPainter& painter, const QWidget* /*widget*/) {
    constexpr int inset = 6;
    const Look look(option);
    const QRect& rect = option.rect;
    painter.fillRect(rect, look.pressed ? look.colors.pressed : look.colors.window);
    painter.fillRect(QRect(rect.left(), rect.bottom(), rect.width(), 1), look.colors.line);
    painter.fillRect(QRect(rect.right(), rect.top() + inset, 1, rect.height() - 2 * inset),
                     look.colors.line);
}

/// The back of a tab: the one in front is as light as what it stands for, with a line of the
/// accent.
void drawTab(const QStyleOption& option, QPainter& painter, const QWidget* /*widget*/) {
    constexpr int lineHeight = 2;
    constexpr int inset = 8;
    const Look look(option);
    const QRect& rect = option.rect;
    const bool front = option.state.testFlag(QStyle::State_Selected);
    painter.fillRect(rect, front          ? look.colors.field
                           : look.hovered ? look.colors.hover
                                          : look.colors.window);
    if (front)
        painter.fillRect(QRect(rect.left(), rect.top(), rect.width(), lineHeight),
                         look.colors.accent);
    else
        painter.fillRect(QRect(rect.right(), rect.top() + inset, 1, rect.height() - 2 * inset),
                         look.colors.line);
    if (look.keyboardFocused)
        drawRing(painter, QRectF(rect));
}

void drawTabClose(const QStyleOption& option, QPainter& painter, const QWidget* /*widget*/) {
    constexpr int size = 12;
    const Look look(option);
    if (look.hovered && look.enabled)
        drawPanel(painter, QRectF(option.rect), look.colors.pressed, QColor(), 3.0);
    drawIcon(painter, option.rect, QStringLiteral("close"), size,
             look.hovered ? look.colors.text : look.colors.muted);
}

/// The back of a row in a list, or of a menu's entry.
void drawRow(const QStyleOption& option, QPainter& painter, const QWidget* /*widget*/) {
    constexpr qreal radius = 4.0;
    const Look look(option);
    const QRectF rect = QRectF(option.rect).adjusted(2, 1, -2, -1);
    if (option.state.testFlag(QStyle::State_Selected))
        drawPanel(painter, rect, look.colors.accent, QColor(), radius);
    else if (look.hovered)
        drawPanel(painter, rect, look.colors.hover, QColor(), radius);
}

void drawNothing(const QStyleOption& /*option*/, QPainter& /*painter*/, const QWidget* /*widget*/) {
}

} // namespace qor::desktop
