#include "workbench/app/ControlsDialog.h"

#include "platform/dialog/QorDlgLabel.h"

namespace qor::app {

namespace {

/// Each has two texts: NAMELabel is what is done, NAMEKeys what does it.
constexpr const char* rows[] = {"orbit", "pan",     "zoom",    "fitAll", "select", "add",
                                "hide",  "isolate", "showAll", "views",  "render"};

} // namespace

ControlsDialog::ControlsDialog(QorCommand* owner, const QorString& itsName)
    : QorFrmDialog(owner, itsName, QorDlgWndOK | QorDlgWndNoResize | QorDlgGridLayout) {
    int row = 0;
    for (const char* deed : rows) {
        (new QorDlgLabel(this, QorString(deed) + "Label"))->SetGridConstraints(row, 0, 1, 1);
        (new QorDlgLabel(this, QorString(deed) + "Keys"))->SetGridConstraints(row, 1, 1, 1);
        ++row;
    }
}

QorImplementClass(ControlsDialog, QorFrmDialog)

} // namespace qor::app
