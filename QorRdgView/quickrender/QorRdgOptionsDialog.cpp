#include "quickrender/QorRdgOptionsDialog.h"

#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgCombo.h"
#include "platform/dialog/QorDlgLabel.h"
#include "platform/dialog/QorDlgSpinner.h"
#include "platform/system/QorTrace.h"
#include "platform/text/QorMsgCatalog.h"

QorImplementClass(QorRdgOptionsDialog, QorDlgDialog)

namespace {

constexpr const char* repositoryName = "RenderingOptionsSettings";
constexpr const char* catalogName = "QorRdgOptionsDialog";

/// Makes a widget of the dialog in its cells of the grid.
template <class Widget>
Widget* Place(QorDialog* iDialog, const char* iName, const QorGridCell& iCell) {
    auto* widget = new Widget(iDialog, iName);
    widget->SetGridConstraints(iCell.row, iCell.column, iCell.width, iCell.height,
                               iCell.justification);
    return widget;
}

QorDlgCombo* PlaceCombo(QorDialog* iDialog,
                        const char* iName,
                        const QorGridCell& iCell,
                        std::initializer_list<const char*> iLineKeys,
                        int iVisibleTextWidth) {
    auto* combo = Place<QorDlgCombo>(iDialog, iName, iCell);
    for (const char* key : iLineKeys)
        combo->SetLine(QorMsgCatalog::BuildMessage(catalogName, key));
    combo->SetVisibleTextWidth(iVisibleTextWidth);
    return combo;
}

int ReadNumber(const QorSettingRepository& iSettings, const char* iKey, int iDefault) {
    int value = iDefault;
    return iSettings.ReadSetting(iKey, &value) ? value : iDefault;
}

void WriteNumber(QorSettingRepository& ioSettings, const char* iKey, int iValue) {
    ioSettings.WriteSetting(iKey, &iValue);
}

} // namespace

QorRdgOptionsDialog::QorRdgOptionsDialog(QorCommand* iFather,
                                         const QorString& iName,
                                         QorDlgStyle iStyle)
    : QorDlgDialog(iFather, iName, iStyle | QorDlgWndOKCancel | QorDlgGridLayout) {
    QorTrace(2, "(QorRdgOptionsDialog::QorRdgOptionsDialog) Constructor\n");
    BuildQuality();
    BuildResolution();
    Subscribe();
    Init();
}

QorRdgOptionsDialog::~QorRdgOptionsDialog() {
    QorTrace(2, "(QorRdgOptionsDialog::~QorRdgOptionsDialog) Destructor\n");
    settings.Reset();
    QorTrace(2, "(QorRdgOptionsDialog::~QorRdgOptionsDialog) Done\n");
}

void QorRdgOptionsDialog::BuildQuality() {
    Place<QorDlgLabel>(this, "qualityLabel", {.row = 0, .column = 0});
    qualityCombo = PlaceCombo(this, "qualityCombo", {.row = 0, .column = 1, .width = 2},
                              {"Quality1", "Quality2", "Quality3"}, 9);
    finalGatherCheck =
        Place<QorDlgCheckButton>(this, "finalGatherCheck", {.row = 1, .column = 0, .width = 4});
}

void QorRdgOptionsDialog::BuildResolution() {
    Place<QorDlgLabel>(this, "resolutionLabel", {.row = 2, .column = 0});
    screenRadio = Place<QorDlgRadioButton>(this, "screenRadio", {.row = 2, .column = 1});
    customRadio = Place<QorDlgRadioButton>(this, "customRadio", {.row = 3, .column = 1});
    customSpinner = Place<QorDlgSpinner>(this, "customSpinner", {.row = 3, .column = 2});
    customSpinner->SetRange(10.0, 2000.0, 1990);
    customSpinner->SetFormat("%4.0f");
    customSpinner->SetVisibleTextWidth(3);
    unitCombo =
        PlaceCombo(this, "unitCombo", {.row = 3, .column = 3}, {"PixelsPerInch", "PixelsPerCm"}, 6);
}

void QorRdgOptionsDialog::Subscribe() {
    AddAnalyseNotificationCB(this, screenRadio, screenRadio->GetRadBModifyNotification(),
                             &QorRdgOptionsDialog::ResolutionModifiedCB);
    AddAnalyseNotificationCB(this, customRadio, customRadio->GetRadBModifyNotification(),
                             &QorRdgOptionsDialog::ResolutionModifiedCB);
    AddAnalyseNotificationCB(this, this, GetDiaOKNotification(), &QorRdgOptionsDialog::OKCB);
    AddAnalyseNotificationCB(this, this, GetDiaCANCELNotification(),
                             &QorRdgOptionsDialog::CancelCB);
    AddAnalyseNotificationCB(this, this, GetWindCloseNotification(),
                             &QorRdgOptionsDialog::CancelCB);
}

void QorRdgOptionsDialog::Init() {
    QorTrace(4, "(QorRdgOptionsDialog::Init) Valuating dialog objects\n");
    settings = QorSettingRepository::GetRepository(repositoryName);
    if (settings) {
        qualityCombo->SetSelect(ReadNumber(*settings, "Quality", 1));
        const bool gather = ReadNumber(*settings, "FinalGather", 1) != 0;
        finalGatherCheck->SetState(gather ? QorDlgCheck : QorDlgUncheck);
        const bool screen = ReadNumber(*settings, "ScreenResolution", 1) != 0;
        (screen ? screenRadio : customRadio)->SetState(QorDlgCheck);
        SetCustomSensitivity(screen ? QorDlgDISABLE : QorDlgENABLE);
        customSpinner->SetValue(ReadNumber(*settings, "CustomResolution", 300));
        unitCombo->SetSelect(ReadNumber(*settings, "CustomUnit", 0));
    }
    QorTrace(4, "(QorRdgOptionsDialog::Init) Done\n");
}

void QorRdgOptionsDialog::SetCustomSensitivity(QorDlgSensitivity iSensitivity) {
    customSpinner->SetSensitivity(iSensitivity);
    unitCombo->SetSensitivity(iSensitivity);
}

void QorRdgOptionsDialog::ResolutionModifiedCB(QorCommand* /*iSender*/,
                                               QorNotification* /*iNotification*/,
                                               QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgOptionsDialog::ResolutionModifiedCB) \n");
    SetCustomSensitivity(screenRadio->GetState() == QorDlgCheck ? QorDlgDISABLE : QorDlgENABLE);
}

void QorRdgOptionsDialog::WriteSettings() {
    WriteNumber(*settings, "Quality", qualityCombo->GetSelect());
    WriteNumber(*settings, "FinalGather", finalGatherCheck->GetState() == QorDlgCheck ? 1 : 0);
    // From customRadio, and cut rather than rounded: both are meant.
    WriteNumber(*settings, "ScreenResolution", customRadio->GetState() == QorDlgCheck ? 0 : 1);
    WriteNumber(*settings, "CustomResolution", static_cast<int>(customSpinner->GetValue()));
    WriteNumber(*settings, "CustomUnit", unitCombo->GetSelect());
    settings->SaveRepository();
}

void QorRdgOptionsDialog::OKCB(QorCommand* /*iSender*/,
                               QorNotification* iNotification,
                               QorSubscriberData /*iData*/) {
    QorTrace(3, "(QorRdgOptionsDialog::OKCB) \n");
    if (settings)
        WriteSettings();
    SendNotification(GetFather(), iNotification);
}

void QorRdgOptionsDialog::CancelCB(QorCommand* /*iSender*/,
                                   QorNotification* iNotification,
                                   QorSubscriberData /*iData*/) {
    QorTrace(3, "(QorRdgOptionsDialog::CancelCB) \n");
    SendNotification(GetFather(), iNotification);
}
