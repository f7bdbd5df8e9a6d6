#include "tests/desktop/GalleryDialog.h"

namespace qor::desktop::tests {

namespace {

template <class Widget>
Widget* put(QorDialog& father,
            const char* name,
            const char* title,
            const QorGridCell& cell,
            bool enabled = true,
            QorDlgStyle style = QorDlgDefaultStyle) {
    auto* widget = new Widget(&father, name, style);
    widget->SetTitle(title);
    widget->SetGridConstraints(cell.row, cell.column, cell.width, cell.height, cell.justification);
    widget->SetSensitivity(enabled ? QorDlgENABLE : QorDlgDISABLE);
    return widget;
}

QorDlgFrame* group(QorDialog& father, const char* name, const char* title, int row, int column) {
    return put<QorDlgFrame>(father, name, title, {row, column}, true, QorDlgGridLayout);
}

} // namespace

GalleryDialog::GalleryDialog(QorCommand* around)
    : QorDlgDialog(around, "gallery", QorDlgWndOKCancel | QorDlgWndAPPLY | QorDlgGridLayout) {
    SetTitle("Controls");
    addButtons();
    addTexts();
    addNumbers();
}

void GalleryDialog::addColumn(QorDlgFrame& frame, int column, bool enabled) {
    put<QorDlgCheckButton>(frame, "checkOn", "Final gathering", {0, column}, enabled)
        ->SetState(QorDlgCheck);
    put<QorDlgCheckButton>(frame, "checkOff", "Reflections", {1, column}, enabled);
    QorDlgFrame* radios = put<QorDlgFrame>(frame, "radios", "", {2, column}, enabled,
                                           QorDlgFraNoTitle | QorDlgFraNoFrame);
    put<QorDlgRadioButton>(*radios, "radioOn", "Screen", {0, 0}, enabled)->SetState(QorDlgCheck);
    put<QorDlgRadioButton>(*radios, "radioOff", "Custom", {1, 0}, enabled);
    put<QorDlgPushButton>(frame, "push", "Browse…", {3, column, 1, 1, QorHoldLeft}, enabled);
    put<QorDlgPushButton>(frame, "iconPush", "Render", {4, column, 1, 1, QorHoldLeft}, enabled)
        ->SetIconName("render");
}

void GalleryDialog::addButtons() {
    QorDlgFrame* frame = group(*this, "buttons", "Buttons", 0, 0);
    addColumn(*frame, 0, true);
    addColumn(*frame, 1, false);
}

void GalleryDialog::addTexts() {
    QorDlgFrame* frame = group(*this, "texts", "Texts and choices", 0, 1);
    int row = 0;
    for (const bool enabled : {true, false}) {
        put<QorDlgLabel>(*frame, "editorLabel", "Name:", {row, 0}, enabled);
        put<QorDlgEditor>(*frame, "editor", "", {row++, 1}, enabled)->SetText("gear housing");
        put<QorDlgLabel>(*frame, "comboLabel", "Quality:", {row, 0}, enabled);
        auto* combo = put<QorDlgCombo>(*frame, "combo", "", {row++, 1}, enabled);
        for (const char* line : {"Draft", "Standard", "High"})
            combo->SetLine(line);
        combo->SetSelect(1);
    }
    put<QorDlgSeparator>(*frame, "line", "", {row++, 0, 2, 1});
    put<QorDlgLabel>(*frame, "progressLabel", "Progress:", {row, 0});
    auto* progress = put<QorDlgProgress>(*frame, "progress", "", {row, 1});
    progress->SetPos(62);
}

void GalleryDialog::addNumberColumn(QorDlgFrame& frame, int column, bool enabled) {
    auto* ambient = put<QorDlgSlider>(frame, "slider", "", {0, column}, enabled);
    ambient->SetRange(0.0, 1.0, 100);
    ambient->SetValue(0.35);
    auto* spinner = put<QorDlgSpinner>(frame, "spinner", "", {0, column + 1}, enabled);
    spinner->SetRange(0.0, 1.0, 100);
    spinner->SetFormat("%4.2f");
    spinner->SetVisibleTextWidth(4);
    spinner->SetValue(0.35);
    auto* bar =
        put<QorDlgScrollBar>(frame, "bar", "", {1, column, 2, 1}, enabled, QorDlgDefaultStyle);
    bar->SetScrollRange(0, 400);
    bar->SetScrollBoxSize(100);
    bar->SetScrollPos(120);
}

void GalleryDialog::addNumbers() {
    auto* frame =
        put<QorDlgFrame>(*this, "numbers", "Numbers", {1, 0, 2, 1}, true, QorDlgGridLayout);
    put<QorDlgLabel>(*frame, "ambientLabel", "Ambient:", {0, 0});
    addNumberColumn(*frame, 1, true);
    addNumberColumn(*frame, 3, false);
    put<QorDlgLabel>(*frame, "barLabel", "Position:", {1, 0});
}

GalleryTools::GalleryTools(QorCommand* around)
    : QorDlgDialog(around, "tools", QorDlgWndToolBar | QorDlgGridLayout | QorDlgWndNoResize) {
    SetTitle("Quick render");
    int column = 0;
    for (const char* tool : {"scene", "options", "area", "render"}) {
        auto* button =
            put<QorDlgCheckButton>(*this, tool, tool, {0, column++, 1, 1, QorHoldNatural});
        button->SetIconName(tool);
        button->SetState(column == 3 ? QorDlgCheck : QorDlgUncheck);
    }
    put<QorDlgPushButton>(*this, "save", "Save", {0, column++, 1, 1, QorHoldNatural}, false)
        ->SetIconName("save");
    put<QorDlgLabel>(*this, "info", "1280 × 960", {1, 0, 6, 1});
}

} // namespace qor::desktop::tests
