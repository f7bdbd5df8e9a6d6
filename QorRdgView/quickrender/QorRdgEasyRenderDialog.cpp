#include "quickrender/QorRdgEasyRenderDialog.h"

#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgLabel.h"
#include "platform/frame/QorApplicationFrame.h"
#include "platform/frame/QorFrmLayout.h"
#include "platform/system/QorTrace.h"

QorImplementClass(QorRdgEasyRenderDialog, QorFrmDialog)

QorRdgEasyRenderDialog* QorRdgEasyRenderDialog::_curDialog = nullptr;

namespace {

constexpr QorDlgStyle toolBarStyle = QorDlgWndToolBar | QorDlgGridLayout | QorDlgWndNoResize;

} // namespace

QorRdgEasyRenderDialog* QorRdgEasyRenderDialog::GetDialog() {
    QorTrace(2, "(QorRdgEasyRenderDialog::GetDialog) _curDialog=%x\n", QorTraceId(_curDialog));
    QorApplicationFrame* frame = QorApplicationFrame::GetFrame();
    if (_curDialog == nullptr && frame != nullptr)
        _curDialog = new QorRdgEasyRenderDialog(frame->GetApplicationDocument(), "renderToolbar",
                                                QorDlgDefaultStyle);
    return _curDialog;
}

QorRdgEasyRenderDialog::QorRdgEasyRenderDialog(QorDialog* iFather,
                                               const QorString& iName,
                                               QorDlgStyle iStyle)
    : QorFrmDialog(iFather, iName, iStyle | toolBarStyle) {
    QorTrace(2, "(QorRdgEasyRenderDialog::QorRdgEasyRenderDialog) Constructor\n");
    BuildWidgets();
    Subscribe();
    Init();
}

QorRdgEasyRenderDialog::~QorRdgEasyRenderDialog() {
    QorTrace(2, "(QorRdgEasyRenderDialog::~QorRdgEasyRenderDialog) Destructor\n");
    CleanUp();
    if (_curDialog == this)
        _curDialog = nullptr; // the layout went first
    QorTrace(2, "(QorRdgEasyRenderDialog::~QorRdgEasyRenderDialog) Done\n");
}

void QorRdgEasyRenderDialog::BuildWidgets() {
    sceneButton = new QorDlgCheckButton(this, "sceneButton");
    sceneButton->SetGridConstraints(0, 0, 1, 1, QorHoldNatural);
    optionsButton = new QorDlgCheckButton(this, "optionsButton");
    optionsButton->SetGridConstraints(0, 1, 1, 1, QorHoldNatural);
    areaCheck = new QorDlgCheckButton(this, "areaCheck");
    areaCheck->SetGridConstraints(0, 2, 1, 1, QorHoldNatural);
    renderCheck = new QorDlgCheckButton(this, "renderCheck");
    renderCheck->SetGridConstraints(0, 3, 1, 1, QorHoldNatural);
    auto* sepLabel = new QorDlgLabel(this, "sepLabel");
    sepLabel->SetTitle("-");
    sepLabel->SetGridConstraints(0, 4, 1, 1, QorHoldNatural);
    sepLabel->SetVisibility(QorDlgHIDE);
    saveButton = new QorDlgPushButton(this, "saveButton");
    saveButton->SetGridConstraints(0, 5, 1, 1, QorHoldNatural);
    saveButton->SetSensitivity(QorDlgDISABLE);
    infoLabel = new QorDlgLabel(this, "infoLabel");
    infoLabel->SetGridConstraints(1, 0, 6, 1, QorHoldFill);
}

void QorRdgEasyRenderDialog::Subscribe() {
    using Dialog = QorRdgEasyRenderDialog;
    AddAnalyseNotificationCB(this, sceneButton, sceneButton->GetChkBModifyNotification(),
                             &Dialog::SceneCB);
    AddAnalyseNotificationCB(this, optionsButton, optionsButton->GetChkBModifyNotification(),
                             &Dialog::OptionsCB);
    AddAnalyseNotificationCB(this, areaCheck, areaCheck->GetChkBModifyNotification(),
                             &Dialog::AreaCB);
    AddAnalyseNotificationCB(this, renderCheck, renderCheck->GetChkBModifyNotification(),
                             &Dialog::RenderCB);
    AddAnalyseNotificationCB(this, renderCheck, renderCheck->GetChkBDoubleClickNotification(),
                             &Dialog::RenderLoopCB);
    AddAnalyseNotificationCB(this, saveButton, saveButton->GetPushBActivateNotification(),
                             &Dialog::SaveCB);
    AddAnalyseNotificationCB(this, this, GetWindCloseNotification(), &Dialog::CloseCB);
    QorFrmLayout* documents = QorFrmLayout::GetCurrentLayout();
    if (documents == nullptr)
        return;
    QorCallbackManager* events = documents->GetCallbackManager();
    events->AddCallback(this, QorFrmEditor::EDITOR_DEACTIVATED, &Dialog::EditorDeactivatedCB);
    viewerActivatedCookie =
        events->AddCallback(this, QorFrmWindow::VIEWER_ACTIVATED, &Dialog::ViewerActivatedCB);
}

void QorRdgEasyRenderDialog::Close() {
    if (QorCommandHeader* header = QorCommandHeader::GetHeaderFromList("EasyRender", 1))
        header->SetCheckState(QorDlgUncheck, QorDlgNoNotify);
    CleanUp();
    RequestDelayedDestruction();
}

void QorRdgEasyRenderDialog::CloseCB(QorCommand* /*iCommand*/,
                                     QorNotification* /*iNotification*/,
                                     QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgEasyRenderDialog::CloseCB) \n");
    Close();
}

void QorRdgEasyRenderDialog::EditorDeactivatedCB(QorEventName /*iEvent*/,
                                                 QorBaseUnknown* /*iPublisher*/,
                                                 QorNotification* /*iNotification*/,
                                                 QorSubscriberData /*iData*/,
                                                 QorCallbackId /*iCookie*/) {
    QorTrace(4, "(QorRdgEasyRenderDialog::EditorDeactivatedCB) \n");
    if (!IsDying())
        Close();
}

void QorRdgEasyRenderDialog::WindowDeletedCB(QorEventName /*iEvent*/,
                                             QorBaseUnknown* iPublisher,
                                             QorNotification* /*iNotification*/,
                                             QorSubscriberData /*iData*/,
                                             QorCallbackId /*iCookie*/) {
    QorTrace(4, "(QorRdgEasyRenderDialog::WindowDeletedCB) \n");
    if (window == nullptr || iPublisher != window)
        return;
    CleanUp();
    Init();
    ResetControls();
}
