#include "workbench/desktop/theme/WorkbenchStyle.h"

#include "workbench/desktop/theme/Draw.h"
#include "workbench/desktop/theme/StyleTable.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QStyledItemDelegate>

namespace qor::desktop {

namespace {

constexpr Row<QStyle::PrimitiveElement, DrawElement> primitives[] = {
    {QStyle::PE_PanelButtonCommand, drawPushPanel},
    {QStyle::PE_PanelButtonTool, drawToolPanel},
    {QStyle::PE_IndicatorCheckBox, drawCheckMark},
    {QStyle::PE_IndicatorRadioButton, drawRadioMark},
    {QStyle::PE_FrameFocusRect, drawFocus},
    {QStyle::PE_PanelLineEdit, drawField},
    {QStyle::PE_FrameLineEdit, drawNothing},
    {QStyle::PE_FrameGroupBox, drawGroupFrame},
    {QStyle::PE_PanelMenu, drawMenuPanel},
    {QStyle::PE_FrameMenu, drawNothing},
    {QStyle::PE_PanelTipLabel, drawTip},
    {QStyle::PE_PanelItemViewItem, drawRow},
    {QStyle::PE_PanelItemViewRow, drawNothing},
    {QStyle::PE_FrameTabBarBase, drawNothing},
    {QStyle::PE_IndicatorTabClose, drawTabClose},
    {QStyle::PE_FrameStatusBarItem, drawNothing},
    {QStyle::PE_PanelStatusBar, drawNothing},
    {QStyle::PE_PanelMenuBar, drawMenuBarBack},
    {QStyle::PE_FrameDefaultButton, drawNothing},
};

constexpr Row<QStyle::ControlElement, DrawElement> controls[] = {
    {QStyle::CE_ShapedFrame, drawShapedFrame},
    {QStyle::CE_ProgressBar, drawProgress},
    {QStyle::CE_ToolBar, drawBar},
    {QStyle::CE_MenuBarEmptyArea, drawMenuBarBack},
    {QStyle::CE_RubberBand, drawRow},
    {QStyle::CE_HeaderSection, drawHeader},
    {QStyle::CE_HeaderEmptyArea, drawHeader},
    {QStyle::CE_TabBarTabShape, drawTab},
};

constexpr Row<QStyle::ComplexControl, DrawElement> complexControls[] = {
    {QStyle::CC_ComboBox, drawCombo}, {QStyle::CC_SpinBox, drawSpinner},
    {QStyle::CC_Slider, drawSlider},  {QStyle::CC_ScrollBar, drawScrollBar},
    {QStyle::CC_GroupBox, drawGroup},
};

} // namespace

WorkbenchStyle::WorkbenchStyle() : QProxyStyle(QStringLiteral("fusion")) {}

void WorkbenchStyle::polish(QWidget* widget) {
    QProxyStyle::polish(widget);
    if (qobject_cast<QAbstractButton*>(widget) != nullptr ||
        qobject_cast<QComboBox*>(widget) != nullptr ||
        qobject_cast<QAbstractSpinBox*>(widget) != nullptr)
        widget->setAttribute(Qt::WA_Hover);
    // The delegate that a drop-down list has of its own does not ask the style.
    if (auto* combo = qobject_cast<QComboBox*>(widget))
        combo->setItemDelegate(new QStyledItemDelegate(combo));
}

void WorkbenchStyle::drawPrimitive(PrimitiveElement element,
                                   const QStyleOption* option,
                                   QPainter* painter,
                                   const QWidget* widget) const {
    if (const DrawElement* draw = find(primitives, element))
        (*draw)(*option, *painter, widget);
    else
        QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void WorkbenchStyle::drawControl(ControlElement element,
                                 const QStyleOption* option,
                                 QPainter* painter,
                                 const QWidget* widget) const {
    if (const DrawElement* draw = find(controls, element)) {
        (*draw)(*option, *painter, widget);
        return;
    }
    if (element == CE_PushButtonLabel) {
        const auto* button = qstyleoption_cast<const QStyleOptionButton*>(option);
        if (button != nullptr && button->features.testFlag(QStyleOptionButton::DefaultButton)) {
            QStyleOptionButton onAccent = *button;
            onAccent.palette.setColor(QPalette::Active, QPalette::ButtonText,
                                      Theme::colors().accentText);
            onAccent.palette.setColor(QPalette::Inactive, QPalette::ButtonText,
                                      Theme::colors().accentText);
            QProxyStyle::drawControl(element, &onAccent, painter, widget);
            return;
        }
    }
    if (element == CE_MenuItem || element == CE_MenuBarItem) {
        drawEntry(element, *option, *painter, widget);
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

/// An entry of a menu: our own back, then Fusion's text as if it were not selected.
void WorkbenchStyle::drawEntry(ControlElement element,
                               const QStyleOption& option,
                               QPainter& painter,
                               const QWidget* widget) const {
    const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(&option);
    if (item == nullptr)
        return;
    const bool chosen = item->state.testFlag(State_Selected) && item->state.testFlag(State_Enabled);
    if (element == CE_MenuBarItem)
        painter.fillRect(item->rect, Theme::colors().window);
    QStyleOptionMenuItem plain = *item;
    plain.state &= ~(State_Selected | State_Sunken);
    if (chosen)
        drawPanel(painter, QRectF(item->rect).adjusted(1, 1, -1, -1), Theme::colors().hover,
                  QColor(), 4.0);
    if (element == CE_MenuBarItem) {
        painter.setPen(Look(option).ink());
        painter.drawText(item->rect, Qt::AlignCenter | Qt::TextShowMnemonic, item->text);
        return;
    }
    QProxyStyle::drawControl(element, &plain, &painter, widget);
}

void WorkbenchStyle::drawComplexControl(ComplexControl control,
                                        const QStyleOptionComplex* option,
                                        QPainter* painter,
                                        const QWidget* widget) const {
    if (const DrawElement* draw = find(complexControls, control))
        (*draw)(*option, *painter, widget);
    else
        QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect WorkbenchStyle::subControlRect(ComplexControl control,
                                     const QStyleOptionComplex* option,
                                     SubControl part,
                                     const QWidget* widget) const {
    switch (control) {
    case CC_ComboBox:
        return comboPart(*option, part);
    case CC_SpinBox:
        return spinnerPart(*option, part);
    case CC_ScrollBar:
        return scrollBarPart(*option, part);
    case CC_GroupBox:
        return groupPart(*option, part);
    default:
        return QProxyStyle::subControlRect(control, option, part, widget);
    }
}

} // namespace qor::desktop
