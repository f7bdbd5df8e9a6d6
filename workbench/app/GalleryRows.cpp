#include "workbench/app/GalleryRows.h"

#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgCombo.h"
#include "platform/dialog/QorDlgEditor.h"
#include "platform/dialog/QorDlgFrame.h"
#include "platform/dialog/QorDlgLabel.h"
#include "platform/dialog/QorDlgProgress.h"
#include "platform/dialog/QorDlgScrollBar.h"
#include "platform/dialog/QorDlgSlider.h"
#include "platform/dialog/QorDlgSpinner.h"
#include "platform/text/QorMsgCatalog.h"
#include "workbench/app/GalleryWindows.h"

namespace qor::app {

namespace {

QorUnicodeString text(const char* key) {
    return QorMsgCatalog::BuildMessage("GalleryDialog", key);
}

template <class Widget, QorDlgStyle style = QorDlgDefaultStyle>
QorDialog* plain(QorDialog& father, const QorString& name) {
    return new Widget(&father, name, style);
}

template <class Widget>
QorDialog* checked(QorDialog& father, const QorString& name) {
    auto* widget = new Widget(&father, name);
    widget->SetState(QorDlgCheck);
    return widget;
}

QorDialog* radios(QorDialog& father, const QorString& name) {
    auto* frame = new QorDlgFrame(&father, name, QorDlgFraNoTitle | QorDlgFraNoFrame);
    for (const char* one : {"radioFirst", "radioSecond", "radioThird"})
        new QorDlgRadioButton(frame, one);
    static_cast<QorDlgRadioButton*>(frame->GetWidgets()[1])->SetState(QorDlgCheck);
    return frame;
}

template <const char* key>
QorDialog* editor(QorDialog& father, const QorString& name) {
    auto* widget = new QorDlgEditor(&father, name);
    widget->SetText(text(key));
    return widget;
}

template <const char* key, int count>
QorDialog* combo(QorDialog& father, const QorString& name) {
    auto* widget = new QorDlgCombo(&father, name);
    for (int i = 1; i <= count; ++i)
        widget->SetLine(text((key + std::to_string(i)).c_str()));
    return widget;
}

struct Numbers {
    double min, max;
    int steps;
    double value;
};

template <Numbers numbers, const char* format>
QorDialog* spinner(QorDialog& father, const QorString& name) {
    auto* widget = new QorDlgSpinner(&father, name);
    widget->SetRange(numbers.min, numbers.max, numbers.steps);
    widget->SetFormat(format);
    widget->SetValue(numbers.value);
    return widget;
}

template <Numbers numbers, QorDlgStyle style = QorDlgDefaultStyle>
QorDialog* slider(QorDialog& father, const QorString& name) {
    auto* widget = new QorDlgSlider(&father, name, style);
    widget->SetRange(numbers.min, numbers.max, numbers.steps);
    widget->SetValue(numbers.value);
    return widget;
}

template <int position>
QorDialog* progress(QorDialog& father, const QorString& name) {
    auto* widget = new QorDlgProgress(&father, name);
    widget->SetPos(position);
    return widget;
}

template <QorDlgStyle style>
QorDialog* scrollBar(QorDialog& father, const QorString& name) {
    constexpr int lines = 100;
    constexpr int page = 25;
    auto* widget = new QorDlgScrollBar(&father, name, style);
    widget->SetScrollRange(0, lines);
    widget->SetScrollBoxSize(page);
    widget->SetScrollPos(page);
    return widget;
}

constexpr char editorText[] = "EditorText";
constexpr char editorLong[] = "EditorLong";
constexpr char editorNone[] = "EditorNone";
constexpr char comboLine[] = "ComboLine";
constexpr char comboLong[] = "ComboLong";
constexpr char integerFormat[] = "%4.0f";
constexpr char decimalFormat[] = "%.2f";
constexpr char unitFormat[] = "%.1f mm";

constexpr GalleryRow buttonRows[] = {
    {"pushButton", &plain<QorDlgPushButton>, QorHoldLeft},
    {"pushIcon", &plain<QorDlgPushButton>, QorHoldLeft},
    {"pushLong", &plain<QorDlgPushButton>, QorHoldLeft},
    {"checkOff", &plain<QorDlgCheckButton>},
    {"checkOn", &checked<QorDlgCheckButton>},
    {"radios", &radios},
};

constexpr GalleryRow textRows[] = {
    {"label", &plain<QorDlgLabel>},         {"labelLong", &plain<QorDlgLabel>},
    {"editorEmpty", &editor<editorNone>},   {"editor", &editor<editorText>},
    {"editorLong", &editor<editorLong>},    {"combo", &combo<comboLine, 3>},
    {"comboLong", &combo<comboLong, 2>},    {"comboEmpty", &combo<comboLine, 0>},
    {"separator", &plain<QorDlgSeparator>},
};

constexpr GalleryRow numberRows[] = {
    {"spinnerInteger", &spinner<Numbers{10, 2000, 1990, 299.7}, integerFormat>},
    {"spinnerDecimal", &spinner<Numbers{0, 1, 100, 0.25}, decimalFormat>},
    {"spinnerUnit", &spinner<Numbers{-500, 500, 2000, -12.5}, unitFormat>},
    {"spinnerAtEnd", &spinner<Numbers{0, 8, 8, 8}, integerFormat>},
    {"sliderFine", &slider<Numbers{0, 1, 100, 0.4}>},
    {"sliderCoarse", &slider<Numbers{0, 4, 4, 3}>},
    {"sliderVertical", &slider<Numbers{0, 100, 20, 70}, QorDlgVertical>, QorHoldLeft},
};

constexpr GalleryRow barRows[] = {
    {"progressEmpty", &progress<0>},
    {"progressPart", &progress<40>},
    {"progressFull", &progress<100>},
    {"progressBeyond", &progress<130>},
    {"scrollHorizontal", &scrollBar<QorDlgDefaultStyle>},
    {"scrollVertical", &scrollBar<QorDlgVertical>, QorHoldLeft},
};

using Notifications = std::vector<QorNotification*>;

template <class Widget, auto... getters>
Notifications of(QorDialog& widget) {
    if (auto* found = dynamic_cast<Widget*>(&widget))
        return {(found->*getters)()...};
    return {};
}

constexpr Notifications (*senders[])(QorDialog&) = {
    &of<QorDlgPushButton, &QorDlgPushButton::GetPushBActivateNotification>,
    &of<QorDlgCheckButton, &QorDlgCheckButton::GetChkBModifyNotification>,
    &of<QorDlgRadioButton, &QorDlgRadioButton::GetRadBModifyNotification>,
    &of<QorDlgEditor, &QorDlgEditor::GetEditModifyNotification>,
    &of<QorDlgCombo, &QorDlgCombo::GetComboSelectNotification>,
    &of<QorDlgSpinner, &QorDlgSpinner::GetSpinnerModifyNotification>,
    &of<QorDlgSlider,
        &QorDlgSlider::GetSliderModifyNotification,
        &QorDlgSlider::GetSliderDragNotification>,
    &of<QorDlgScrollBar,
        &QorDlgScrollBar::GetScrollBarModifyNotification,
        &QorDlgScrollBar::GetScrollBarDragNotification>,
};

} // namespace

const std::vector<GalleryColumn>& galleryColumns() {
    static const std::vector<GalleryColumn> columns = {
        {"leftColumn", {{"buttons", buttonRows}, {"texts", textRows}}},
        {"middleColumn", {{"numbers", numberRows}, {"bars", barRows}}},
        {"rightColumn", {{"layouts", {}, &buildLayouts}, {"windows", {}, &buildWindows}}},
    };
    return columns;
}

std::vector<QorNotification*> notificationsOf(QorDialog& widget) {
    for (const auto sender : senders)
        if (Notifications found = sender(widget); !found.empty())
            return found;
    return {};
}

} // namespace qor::app
