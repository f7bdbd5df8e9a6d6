#include "workbench/desktop/theme/WorkbenchStyle.h"

#include "workbench/desktop/theme/Draw.h"
#include "workbench/desktop/theme/Icon.h"

#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QComboBox>
#include <QStyledItemDelegate>

#include <algorithm>

namespace qor::desktop {

namespace {

/// A row of a table from something that Qt asks for to what answers it.
template <class Key, class Value>
struct Row {
    Key key;
    Value value;
};

template <class Key, class Value, std::size_t count>
const Value* find(const Row<Key, Value> (&rows)[count], Key key) {
    const auto* const row =
        std::find_if(std::begin(rows), std::end(rows),
                     [&](const Row<Key, Value>& one) { return one.key == key; });
    return row != std::end(rows) ? &row->value : nullptr;
}

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
};

constexpr Row<QStyle::ComplexControl, DrawElement> complexControls[] = {
    {QStyle::CC_ComboBox, drawCombo}, {QStyle::CC_SpinBox, drawSpinner},
    {QStyle::CC_Slider, drawSlider},  {QStyle::CC_ScrollBar, drawScrollBar},
    {QStyle::CC_GroupBox, drawGroup},
};

constexpr Row<QStyle::PixelMetric, int> metrics[] = {
    {QStyle::PM_IndicatorWidth, 18},
    {QStyle::PM_IndicatorHeight, 18},
    {QStyle::PM_ExclusiveIndicatorWidth, 18},
    {QStyle::PM_ExclusiveIndicatorHeight, 18},
    {QStyle::PM_CheckBoxLabelSpacing, 8},
    {QStyle::PM_RadioButtonLabelSpacing, 8},
    {QStyle::PM_SliderThickness, 22},
    {QStyle::PM_SliderControlThickness, 16},
    {QStyle::PM_SliderLength, 16},
    {QStyle::PM_ScrollBarExtent, 14},
    {QStyle::PM_ScrollBarSliderMin, 28},
    {QStyle::PM_ButtonMargin, 12},
    {QStyle::PM_ButtonIconSize, 18},
    {QStyle::PM_SmallIconSize, 18},
    {QStyle::PM_ToolBarIconSize, 22},
    {QStyle::PM_ButtonShiftHorizontal, 0},
    {QStyle::PM_ButtonShiftVertical, 0},
    {QStyle::PM_ToolBarItemMargin, 4},
    {QStyle::PM_ToolBarItemSpacing, 4},
    {QStyle::PM_ToolBarFrameWidth, 0},
    {QStyle::PM_MenuPanelWidth, 1},
    {QStyle::PM_MenuHMargin, 4},
    {QStyle::PM_MenuVMargin, 4},
    {QStyle::PM_MenuBarPanelWidth, 0},
    {QStyle::PM_MenuBarHMargin, 4},
    {QStyle::PM_MenuBarVMargin, 2},
    {QStyle::PM_ToolTipLabelFrameWidth, 6},
    {QStyle::PM_LayoutHorizontalSpacing, 8},
    {QStyle::PM_LayoutVerticalSpacing, 8},
    {QStyle::PM_LayoutLeftMargin, 16},
    {QStyle::PM_LayoutTopMargin, 16},
    {QStyle::PM_LayoutRightMargin, 16},
    {QStyle::PM_LayoutBottomMargin, 16},
    {QStyle::PM_MessageBoxIconSize, 32},
};

const Row<QStyle::StyleHint, int> hints[] = {
    {QStyle::SH_Slider_AbsoluteSetButtons, Qt::LeftButton},
    {QStyle::SH_ScrollBar_LeftClickAbsolutePosition, 0},
    {QStyle::SH_ComboBox_Popup, 0},
    {QStyle::SH_ComboBox_PopupFrameStyle, int(QFrame::StyledPanel) | int(QFrame::Plain)},
    {QStyle::SH_DialogButtonBox_ButtonsHaveIcons, 0},
    {QStyle::SH_EtchDisabledText, 0},
    {QStyle::SH_DitherDisabledText, 0},
    {QStyle::SH_UnderlineShortcut, 1},
    {QStyle::SH_ToolTipLabel_Opacity, 255},
    {QStyle::SH_ItemView_ShowDecorationSelected, 1},
    {QStyle::SH_MessageBox_CenterButtons, 0},
    {QStyle::SH_SpinBox_ClickAutoRepeatThreshold, 400},
};

const Row<QStyle::StandardPixmap, const char*> icons[] = {
    {QStyle::SP_DirIcon, "folder"},
    {QStyle::SP_DirClosedIcon, "folder"},
    {QStyle::SP_DirOpenIcon, "open"},
    {QStyle::SP_DirHomeIcon, "folder"},
    {QStyle::SP_DriveHDIcon, "folder"},
    {QStyle::SP_ComputerIcon, "folder"},
    {QStyle::SP_FileIcon, "file"},
    {QStyle::SP_FileDialogToParent, "parent"},
    {QStyle::SP_FileDialogBack, "left"},
    {QStyle::SP_ArrowBack, "left"},
    {QStyle::SP_ArrowForward, "right"},
    {QStyle::SP_FileDialogNewFolder, "new-folder"},
    {QStyle::SP_FileDialogListView, "list"},
    {QStyle::SP_FileDialogDetailedView, "details"},
    {QStyle::SP_MessageBoxInformation, "information"},
    {QStyle::SP_MessageBoxQuestion, "question"},
    {QStyle::SP_MessageBoxWarning, "warning"},
    {QStyle::SP_MessageBoxCritical, "error"},
};

constexpr int controlHeight = 30;
constexpr int buttonWidth = 88;
constexpr int rowHeight = 28;

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

QRect WorkbenchStyle::subElementRect(SubElement element,
                                     const QStyleOption* option,
                                     const QWidget* widget) const {
    constexpr int textMargin = 6;
    const QRect rect = QProxyStyle::subElementRect(element, option, widget);
    const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    const bool field = element == SE_LineEditContents && frame != nullptr && frame->lineWidth > 0;
    if (field || element == SE_ItemViewItemText)
        return rect.adjusted(textMargin, 0, field ? -textMargin : 0, 0);
    return rect;
}

QSize WorkbenchStyle::sizeFromContents(ContentsType type,
                                       const QStyleOption* option,
                                       const QSize& contents,
                                       const QWidget* widget) const {
    constexpr int spinnerExtra = 36;
    constexpr int comboExtra = 46;
    switch (type) {
    case CT_PushButton: {
        const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        return {std::max(size.width() + 8, buttonWidth),
                std::max(contents.height() + 8, controlHeight)};
    }
    case CT_ComboBox:
        return {contents.width() + comboExtra, std::max(contents.height() + 8, controlHeight)};
    case CT_SpinBox:
        return {contents.width() + spinnerExtra, std::max(contents.height() + 4, controlHeight)};
    case CT_LineEdit: {
        const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
        const bool framed = frame != nullptr && frame->lineWidth > 0;
        return {size.width(), framed ? std::max(size.height(), controlHeight) : size.height()};
    }
    case CT_ToolButton:
        return contents + QSize(10, 10);
    case CT_ItemViewItem: {
        const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        return {size.width() + 16, std::max(size.height(), rowHeight)};
    }
    case CT_GroupBox:
        return contents;
    default:
        return QProxyStyle::sizeFromContents(type, option, contents, widget);
    }
}

int WorkbenchStyle::pixelMetric(PixelMetric metric,
                                const QStyleOption* option,
                                const QWidget* widget) const {
    const int* value = find(metrics, metric);
    return value != nullptr ? *value : QProxyStyle::pixelMetric(metric, option, widget);
}

int WorkbenchStyle::styleHint(StyleHint hint,
                              const QStyleOption* option,
                              const QWidget* widget,
                              QStyleHintReturn* result) const {
    const int* value = find(hints, hint);
    return value != nullptr ? *value : QProxyStyle::styleHint(hint, option, widget, result);
}

QIcon WorkbenchStyle::standardIcon(StandardPixmap which,
                                   const QStyleOption* option,
                                   const QWidget* widget) const {
    const char* const* name = find(icons, which);
    return name != nullptr ? icon(QLatin1String(*name))
                           : QProxyStyle::standardIcon(which, option, widget);
}

} // namespace qor::desktop
