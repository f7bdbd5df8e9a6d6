// The sizes and habits of the style, as tables.
#include "workbench/desktop/theme/Icon.h"
#include "workbench/desktop/theme/StyleTable.h"
#include "workbench/desktop/theme/WorkbenchStyle.h"

#include <QDialogButtonBox>
#include <QFrame>
#include <QStyleOption>

#include <algorithm>

namespace qor::desktop {

namespace {

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
    {QStyle::PM_TabBarTabHSpace, 28},
    {QStyle::PM_TabBarTabVSpace, 14},
    {QStyle::PM_TabBarTabShiftVertical, 0},
    {QStyle::PM_TabBarTabShiftHorizontal, 0},
    {QStyle::PM_TabBarTabOverlap, 0},
    {QStyle::PM_TabCloseIndicatorWidth, 16},
    {QStyle::PM_TabCloseIndicatorHeight, 16},
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
    {QStyle::SP_TitleBarCloseButton, "close"},
    {QStyle::SP_LineEditClearButton, "close"},
    {QStyle::SP_ToolBarHorizontalExtensionButton, "right"},
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
