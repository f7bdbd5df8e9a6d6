// The section of the gallery that shows how containers lay their children out.
#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgEditor.h"
#include "platform/dialog/QorDlgFrame.h"
#include "platform/dialog/QorDlgLabel.h"
#include "platform/text/QorMsgCatalog.h"
#include "workbench/app/GalleryRows.h"

namespace qor::app {

namespace {

struct Cell {
    const char* name;
    QorGridCell place;
};

/// Spans, and cells held to a side or in the middle. Buttons keep their own size, so what fills its
/// cell is an editor.
constexpr Cell gridCells[] = {
    {"cellWide", {0, 0, 2, 1, QorHoldFill}}, {"cellTall", {0, 2, 1, 3, QorHoldFill}},
    {"cellLeft", {1, 0, 1, 1, QorHoldLeft}}, {"cellRight", {1, 1, 1, 1, QorHoldRight}},
    {"cellCentre", {2, 0, 1, 1, 0}},
};

void buildNested(QorDialog& section) {
    auto* outer = new QorDlgFrame(&section, "outerFrame");
    outer->SetGridConstraints(0, 0, 1, 1);
    auto* inner = new QorDlgFrame(outer, "innerFrame");
    inner->SetAttachment(QorSideLeft | QorSideRight);
    (new QorDlgCheckButton(inner, "innerCheck"))->SetState(QorDlgCheck);
    auto* off = new QorDlgFrame(outer, "disabledFrame");
    off->SetAttachment(QorSideLeft | QorSideRight);
    new QorDlgCheckButton(off, "frameDisabledCheck");
    off->SetSensitivity(QorDlgDISABLE);
}

void buildGrid(QorDialog& section) {
    auto* grid = new QorDlgFrame(&section, "gridFrame", QorDlgGridLayout);
    grid->SetGridConstraints(1, 0, 1, 1);
    grid->SetGridColumnResizable(0, true);
    grid->SetGridColumnResizable(1, true);
    for (const Cell& cell : gridCells)
        (new QorDlgPushButton(grid, cell.name))
            ->SetGridConstraints(cell.place.row, cell.place.column, cell.place.width,
                                 cell.place.height, cell.place.justification);
    auto* fill = new QorDlgEditor(grid, "cellFill");
    fill->SetGridConstraints(2, 1, 1, 1, QorHoldFill);
    fill->SetText(QorMsgCatalog::BuildMessage("GalleryDialog", "CellFill"));
}

void buildStack(QorDialog& section) {
    auto* stack = new QorDlgFrame(&section, "stackFrame");
    stack->SetGridConstraints(2, 0, 1, 1);
    stack->SetStackOrientation(QorOrientation::Horizontal);
    new QorDlgLabel(stack, "stackLabel");
    (new QorDlgEditor(stack, "stackEditor"))->SetAttachment(QorSideLeft | QorSideRight);
    new QorDlgPushButton(stack, "stackButton");
}

} // namespace

void buildLayouts(QorDialog& section) {
    section.SetGridColumnResizable(0, true);
    buildNested(section);
    buildGrid(section);
    buildStack(section);
}

} // namespace qor::app
