#include "workbench/app/AboutDialog.h"

#include "QorVersion.h"
#include "platform/dialog/QorDlgLabel.h"
#include "platform/text/QorMsgCatalog.h"

namespace qor::app {

namespace {

constexpr const char* labels[] = {"versionLabel", "purposeLabel", "licenceLabel"};

} // namespace

AboutDialog::AboutDialog(QorCommand* owner, const QorString& itsName)
    : QorFrmDialog(
          owner, itsName, QorDlgWndOK | QorDlgWndModal | QorDlgWndNoResize | QorDlgGridLayout) {
    int row = 0;
    for (const char* label : labels)
        (new QorDlgLabel(this, label))->SetGridConstraints(row++, 0, 1, 1);
    static_cast<QorDialog*>(GetChildren().front())
        ->SetTitle(QorMsgCatalog::BuildMessage("AboutDialog", "Version", {QorVersion()}));
}

QorImplementClass(AboutDialog, QorFrmDialog)

} // namespace qor::app
