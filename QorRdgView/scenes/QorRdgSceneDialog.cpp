#include "scenes/QorRdgSceneDialog.h"

#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgFrame.h"
#include "platform/dialog/QorDlgLabel.h"
#include "platform/system/QorTrace.h"
#include "scenes/QorRdgSceneCustomFrame.h"
#include "scenes/QorRdgSceneManager.h"
#include "scenes/QorRdgScenePredefinedFrame.h"
#include "scenes/QorRdgSceneViewer.h"

QorImplementClass(QorRdgSceneDialog, QorFrmDialog)

namespace {

constexpr QorDlgStyle plainFrame = QorDlgFraNoTitle | QorDlgFraNoFrame;

} // namespace

QorRdgSceneDialog::QorRdgSceneDialog(QorCommand* iFather,
                                     const QorString& iName,
                                     QorDlgStyle iStyle)
    : QorFrmDialog(iFather, iName, iStyle | QorDlgWndOKCancel)
    , state(QorRdgSceneViewer::GetCurrent()) {
    QorTrace(2, "(QorRdgSceneDialog::QorRdgSceneDialog) Constructor\n");
    BuildWidgets();
    Subscribe();
}

QorRdgSceneDialog::~QorRdgSceneDialog() {
    QorTrace(2, "(QorRdgSceneDialog::~QorRdgSceneDialog) Destructor\n");
    state.Release();
}

void QorRdgSceneDialog::BuildWidgets() {
    auto* radioFrame = new QorDlgFrame(this, "radioFrame", QorDlgGridLayout);
    radioFrame->SetAttachment(QorSideLeft | QorSideRight | QorSideTop);
    (new QorDlgLabel(radioFrame, "typeLabel"))->SetGridConstraints(0, 0, 1, 1);
    predefinedRadio = new QorDlgRadioButton(radioFrame, "predefinedRadio");
    predefinedRadio->SetGridConstraints(1, 0, 1, 1);
    customRadio = new QorDlgRadioButton(radioFrame, "customRadio");
    customRadio->SetGridConstraints(2, 0, 1, 1);
    containerFrame = new QorDlgFrame(this, "containerFrame", plainFrame);
    containerFrame->SetAttachment(QorSideAll);
}

void QorRdgSceneDialog::Subscribe() {
    AddAnalyseNotificationCB(this, predefinedRadio, predefinedRadio->GetRadBModifyNotification(),
                             &QorRdgSceneDialog::TypeModifiedCB);
    AddAnalyseNotificationCB(this, this, GetDiaOKNotification(), &QorRdgSceneDialog::OKCB);
    AddAnalyseNotificationCB(this, this, GetDiaCANCELNotification(), &QorRdgSceneDialog::CancelCB);
    AddAnalyseNotificationCB(this, this, GetWindCloseNotification(), &QorRdgSceneDialog::CancelCB);
}

void QorRdgSceneDialog::Init() {
    QorTrace(4, "(QorRdgSceneDialog::Init) \n");
    if (state.GetViewer() == nullptr)
        return;
    state.Capture();
    const bool custom =
        QorRdgSceneManager::GetManager()->GetSceneType() == QorRdgSceneManager::Custom;
    (custom ? customRadio : predefinedRadio)->SetState(QorDlgCheck);
    MakeFrame();
}

void QorRdgSceneDialog::MakeFrame() {
    if (predefinedRadio->GetState() == QorDlgCheck)
        frame = new QorRdgScenePredefinedFrame(containerFrame, "predefinedFrame", plainFrame);
    else
        frame = new QorRdgSceneCustomFrame(containerFrame, "customFrame", plainFrame);
    containerFrame->Attach4Sides(frame);
}

void QorRdgSceneDialog::TypeModifiedCB(QorCommand* /*iSender*/,
                                       QorNotification* /*iNotification*/,
                                       QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgSceneDialog::TypeModifiedCB) \n");
    if (frame != nullptr)
        frame->RequestDelayedDestruction();
    MakeFrame();
}

void QorRdgSceneDialog::OKCB(QorCommand* /*iSender*/,
                             QorNotification* iNotification,
                             QorSubscriberData /*iData*/) {
    QorTrace(3, "(QorRdgSceneDialog::OKCB) \n");
    if (frame != nullptr)
        frame->Commit();
    QorRdgSceneManager* manager = QorRdgSceneManager::GetManager();
    manager->SetSceneType(predefinedRadio->GetState() == QorDlgCheck
                              ? QorRdgSceneManager::Predefined
                              : QorRdgSceneManager::Custom);
    manager->Save();
    SendNotification(GetFather(), iNotification);
    if (Qor3DViewer* viewer = state.GetViewer())
        viewer->GetCallbackManager()->DispatchCallbacks(QorViewer::VIEWER_LIGHT_MODIFIED, viewer);
    state.Release();
}

void QorRdgSceneDialog::CancelCB(QorCommand* /*iSender*/,
                                 QorNotification* iNotification,
                                 QorSubscriberData /*iData*/) {
    QorTrace(3, "(QorRdgSceneDialog::CancelCB) \n");
    if (frame != nullptr)
        frame->Rollback();
    state.Restore();
    SendNotification(GetFather(), iNotification);
}
