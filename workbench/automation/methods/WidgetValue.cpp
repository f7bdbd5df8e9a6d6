#include "workbench/automation/methods/WidgetValue.h"

#include "platform/dialog/QorDlgCombo.h"
#include "platform/dialog/QorDlgEditor.h"
#include "platform/dialog/QorDlgScrollBar.h"
#include "platform/dialog/QorDlgSlider.h"
#include "platform/dialog/QorDlgSpinner.h"
#include "workbench/automation/Error.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string_view>

namespace qor::automation {

namespace {

[[noreturn]] void refuseValue(const char* wanted) {
    throw Error(ErrorCode::invalidParams, std::string("parameter \"value\" must be ") + wanted);
}

const Json& given(const NewValue& change) {
    if (change.value == nullptr)
        throw Error(ErrorCode::invalidParams, "parameter \"value\" is missing");
    return *change.value;
}

double number(const NewValue& change) {
    if (!given(change).is_number())
        refuseValue("a number");
    return change.value->get<double>();
}

/// A whole number, brought into the range of an int.
int integer(const NewValue& change, const char* wanted) {
    if (!given(change).is_number())
        refuseValue(wanted);
    const double value = change.value->get<double>();
    if (value != std::trunc(value))
        refuseValue(wanted);
    return static_cast<int>(std::clamp<double>(value, std::numeric_limits<int>::min(),
                                               std::numeric_limits<int>::max()));
}

std::string text(const NewValue& change) {
    if (!given(change).is_string())
        refuseValue("a text");
    return change.value->get<std::string>();
}

void wantNoValue(const NewValue& change) {
    if (change.value != nullptr)
        throw Error(ErrorCode::invalidParams, "\"up\" and \"down\" take no value");
}

QorUserResult modifySlider(QorDlgSlider& slider, const NewValue& change) {
    return slider.UserSetValue(number(change));
}

QorUserResult dragSlider(QorDlgSlider& slider, const NewValue& change) {
    return slider.UserDrag(number(change));
}

QorUserResult modifySpinner(QorDlgSpinner& spinner, const NewValue& change) {
    return spinner.UserSetValue(number(change));
}

QorUserResult stepUp(QorDlgSpinner& spinner, const NewValue& change) {
    wantNoValue(change);
    return spinner.UserStep(1);
}

QorUserResult stepDown(QorDlgSpinner& spinner, const NewValue& change) {
    wantNoValue(change);
    return spinner.UserStep(-1);
}

QorUserResult modifyScrollBar(QorDlgScrollBar& bar, const NewValue& change) {
    return bar.UserSetPosition(integer(change, "a whole number"));
}

QorUserResult dragScrollBar(QorDlgScrollBar& bar, const NewValue& change) {
    return bar.UserDrag(integer(change, "a whole number"));
}

QorUserResult modifyEditor(QorDlgEditor& editor, const NewValue& change) {
    return editor.UserSetText(text(change));
}

QorUserResult modifyCombo(QorDlgCombo& combo, const NewValue& change) {
    return combo.UserSelect(integer(change, "the index of a line"));
}

/// One way in which a kind of widget gets its value.
struct Way {
    const char* via;
    bool (*fits)(const QorDialog& widget);
    QorUserResult (*apply)(QorDialog& widget, const NewValue& change);
};

template <class Widget, QorUserResult (*apply)(Widget&, const NewValue&)>
constexpr Way way(const char* via) {
    return {via,
            [](const QorDialog& widget) { return dynamic_cast<const Widget*>(&widget) != nullptr; },
            [](QorDialog& widget, const NewValue& change) {
                return apply(dynamic_cast<Widget&>(widget), change);
            }};
}

constexpr std::array ways{
    way<QorDlgSlider, &modifySlider>("modify"),   way<QorDlgSlider, &dragSlider>("drag"),
    way<QorDlgSpinner, &modifySpinner>("modify"), way<QorDlgSpinner, &stepUp>("up"),
    way<QorDlgSpinner, &stepDown>("down"),        way<QorDlgScrollBar, &modifyScrollBar>("modify"),
    way<QorDlgScrollBar, &dragScrollBar>("drag"), way<QorDlgEditor, &modifyEditor>("modify"),
    way<QorDlgCombo, &modifyCombo>("modify"),
};

} // namespace

QorUserResult setWidgetValue(QorDialog& widget, const NewValue& change) {
    bool isKnown = false;
    for (const Way& one : ways) {
        const bool isVia = change.via == one.via;
        isKnown = isKnown || isVia;
        if (isVia && one.fits(widget))
            return one.apply(widget, change);
    }
    if (!isKnown)
        throw Error(ErrorCode::invalidParams,
                    R"(parameter "via" must be "modify", "drag", "up" or "down")");
    throw Error(ErrorCode::wrongKind, "a " + std::string(widget.GetKind()) + " takes no value by " +
                                          inQuotes(change.via));
}

} // namespace qor::automation
