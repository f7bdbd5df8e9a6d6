#include "platform/dialog/QorDialog.h"

#include <algorithm>

QorImplementClass(QorDialog, QorCommand)

QorDialog::QorDialog(QorCommand* iFather, const QorString& iName, QorDlgStyle iStyle)
    : QorCommand(iFather, iName), style(iStyle), fatherDialog(dynamic_cast<QorDialog*>(iFather)) {}

QorDialog::~QorDialog() {
    Unrealize();
}

std::vector<QorDialog*> QorDialog::GetWidgets() const {
    std::vector<QorDialog*> widgets;
    for (QorCommand* child : GetChildren())
        if (auto* widget = dynamic_cast<QorDialog*>(child);
            widget != nullptr && !widget->IsWindow())
            widgets.push_back(widget);
    return widgets;
}

const QorDialog* QorDialog::GetWindow() const {
    const QorDialog* widget = this;
    while (widget != nullptr && !widget->IsWindow())
        widget = widget->GetFatherDialog();
    return widget;
}

QorDialog* QorDialog::GetWindow() {
    return const_cast<QorDialog*>(std::as_const(*this).GetWindow());
}

void QorDialog::SetVisibility(QorDlgVisibility iVisibility) {
    const bool wanted = iVisibility != QorDlgHIDE;
    if (wanted == visible)
        return;
    visible = wanted;
    Changed(QorAspectVisibility);
}

void QorDialog::SetSensitivity(QorDlgSensitivity iSensitivity) {
    const bool wanted = iSensitivity != QorDlgDISABLE;
    if (wanted == sensitive)
        return;
    sensitive = wanted;
    Changed(QorAspectSensitivity);
}

bool QorDialog::IsShown() const {
    for (const QorDialog* widget = this; widget != nullptr; widget = widget->GetFatherDialog()) {
        if (!widget->visible)
            return false;
        if (widget->IsWindow())
            return true;
    }
    return true;
}

bool QorDialog::CanAct() const {
    if (!IsShown() || IsDying())
        return false;
    for (const QorDialog* widget = this; widget != nullptr; widget = widget->GetFatherDialog()) {
        if (!widget->sensitive)
            return false;
        if (widget->IsWindow())
            return true;
    }
    return true;
}

void QorDialog::SetGridConstraints(
    int iRow, int iColumn, int iWidth, int iHeight, unsigned iJustification) {
    placement.cell = QorGridCell{.row = std::max(iRow, 0),
                                 .column = std::max(iColumn, 0),
                                 .width = std::max(iWidth, 1),
                                 .height = std::max(iHeight, 1),
                                 .justification = iJustification};
    Changed(QorAspectLayout);
}

void QorDialog::SetAttachment(unsigned iSides) {
    placement.sides = iSides & QorSideAll;
    Changed(QorAspectLayout);
}

void QorDialog::Attach4Sides(QorDialog* iChild) const {
    if (iChild != nullptr && iChild->GetFatherDialog() == this)
        iChild->SetAttachment(QorSideAll);
}

void QorDialog::SetStackOrientation(QorOrientation iOrientation) {
    layout.stack = iOrientation;
    Changed(QorAspectLayout);
}

namespace {

/// Keeps \p ioLines ordered and without doubles.
void SetStretched(std::vector<int>& ioLines, int iLine, bool iStretched) {
    const auto place = std::lower_bound(ioLines.begin(), ioLines.end(), iLine);
    const bool there = place != ioLines.end() && *place == iLine;
    if (iStretched && !there)
        ioLines.insert(place, iLine);
    if (!iStretched && there)
        ioLines.erase(place);
}

} // namespace

void QorDialog::SetGridRowResizable(int iRow, bool iResizable) {
    SetStretched(layout.stretchedRows, iRow, iResizable);
    Changed(QorAspectLayout);
}

void QorDialog::SetGridColumnResizable(int iColumn, bool iResizable) {
    SetStretched(layout.stretchedColumns, iColumn, iResizable);
    Changed(QorAspectLayout);
}

void QorDialog::SetVisibleTextWidth(int iCharacters) {
    visibleTextWidth = std::max(iCharacters, 0);
    Changed(QorAspectLayout);
}

bool QorDialog::Notify(QorNotification* iNotification) {
    return !IsDying() && SendNotification(this, iNotification);
}

void QorDialog::Dying() {
    // A window vanishes at once, not when the loop comes to destroy it.
    if (IsWindow())
        QorDialog::SetVisibility(QorDlgHIDE);
}
