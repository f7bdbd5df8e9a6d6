#include "workbench/automation/WidgetReaders.h"

#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgColorEditor.h"
#include "platform/dialog/QorDlgCombo.h"
#include "platform/dialog/QorDlgEditor.h"
#include "platform/dialog/QorDlgLabel.h"
#include "platform/dialog/QorDlgNotify.h"
#include "platform/dialog/QorDlgProgress.h"
#include "platform/dialog/QorDlgScrollBar.h"
#include "platform/dialog/QorDlgSlider.h"
#include "platform/dialog/QorDlgSpinner.h"

#include <array>

namespace qor::automation {

namespace {

void readIcon(const QorDialog& widget, Json& out) {
    out["icon"] = widget.GetIconName().Str();
}

void readPushButton(const QorDlgPushButton& button, Json& out) {
    readIcon(button, out);
}

void readCheckButton(const QorDlgCheckButton& button, Json& out) {
    out["checked"] = button.GetState() == QorDlgCheck;
    readIcon(button, out);
}

void readRadioButton(const QorDlgRadioButton& button, Json& out) {
    out["checked"] = button.GetState() == QorDlgCheck;
    readIcon(button, out);
}

void readLabel(const QorDlgLabel& label, Json& out) {
    out["text"] = label.GetTitle().Str();
    readIcon(label, out);
}

template <class Ranged>
void readRange(const Ranged& widget, Json& out) {
    out["value"] = widget.GetValue();
    out["min"] = widget.GetMin();
    out["max"] = widget.GetMax();
    out["step"] = widget.GetStep();
}

void readSpinner(const QorDlgSpinner& spinner, Json& out) {
    readRange(spinner, out);
    out["format"] = spinner.GetFormat().Str();
    out["text"] = spinner.GetShownText().Str();
}

void readEditor(const QorDlgEditor& editor, Json& out) {
    out["text"] = editor.GetText().Str();
}

void readCombo(const QorDlgCombo& combo, Json& out) {
    out["lines"] = Json::array();
    for (const QorUnicodeString& line : combo.GetLines())
        out["lines"].push_back(line.Str());
    out["selection"] = combo.GetSelect();
}

void readScrollBar(const QorDlgScrollBar& bar, Json& out) {
    int min = 0;
    int max = 0;
    bar.GetScrollRange(min, max);
    out["position"] = bar.GetScrollPos();
    out["range"] = {min, max};
    out["boxSize"] = bar.GetScrollBoxSize();
}

void readProgress(const QorDlgProgress& bar, Json& out) {
    out["position"] = bar.GetPos();
    out["range"] = {bar.GetMin(), bar.GetMax()};
}

void readColorEditor(const QorDlgColorEditor& editor, Json& out) {
    out["color"] = editor.GetColor();
}

void readNotify(const QorDlgNotify& box, Json& out) {
    out["text"] = box.GetText().Str();
}

using Reader = void (*)(const QorDialog& widget, Json& out);

/// Reads widgets of one class and those derived from it.
template <class Widget, void (*read)(const Widget&, Json&)>
void readIf(const QorDialog& widget, Json& out) {
    if (const auto* one = dynamic_cast<const Widget*>(&widget))
        read(*one, out);
}

constexpr std::array readers{
    &readIf<QorDlgPushButton, &readPushButton>,
    &readIf<QorDlgCheckButton, &readCheckButton>,
    &readIf<QorDlgRadioButton, &readRadioButton>,
    &readIf<QorDlgLabel, &readLabel>,
    &readIf<QorDlgSlider, &readRange<QorDlgSlider>>,
    &readIf<QorDlgSpinner, &readSpinner>,
    &readIf<QorDlgEditor, &readEditor>,
    &readIf<QorDlgCombo, &readCombo>,
    &readIf<QorDlgScrollBar, &readScrollBar>,
    &readIf<QorDlgProgress, &readProgress>,
    &readIf<QorDlgColorEditor, &readColorEditor>,
    &readIf<QorDlgNotify, &readNotify>,
};

} // namespace

Json readWidget(const QorDialog& widget) {
    Json out{{"name", widget.GetName().Str()},
             {"class", widget.IsA()},
             {"kind", widget.GetKind()},
             {"title", widget.GetTitle().Str()},
             {"visible", widget.GetVisibility() == QorDlgSHOW},
             {"sensitive", widget.GetSensitivity() == QorDlgENABLE}};
    if (const auto& cell = widget.GetPlacement().cell)
        out["grid"] = {cell->row, cell->column, cell->width, cell->height};
    for (const Reader read : readers)
        read(widget, out);
    return out;
}

Json readWidgetTree(const QorDialog& widget) {
    Json out = readWidget(widget);
    out["children"] = Json::array();
    for (const QorDialog* child : widget.GetWidgets())
        if (!child->IsDying())
            out["children"].push_back(readWidgetTree(*child));
    return out;
}

} // namespace qor::automation
