// The quick render's tool bar and the dialogs that it opens for scene and options.
#include "platform/dialog/QorDlgButton.h"
#include "platform/engine/QorIRdgViewerParts.h"
#include "platform/system/QorTrace.h"
#include "quickrender/QorRdgEasyRenderDialog.h"
#include "quickrender/QorRdgOptionsDialog.h"
#include "scenes/QorRdgSceneDialog.h"

#include <utility>

void QorRdgEasyRenderDialog::CloseSceneDialog() {
    if (QorRdgSceneDialog* last = std::exchange(sceneDialog, nullptr))
        last->RequestDelayedDestruction();
    sceneButton->SetState(QorDlgUncheck, QorDlgNoNotify);
}

void QorRdgEasyRenderDialog::SceneCB(QorCommand* /*iCommand*/,
                                     QorNotification* /*iNotification*/,
                                     QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgEasyRenderDialog::SceneCB) \n");
    if (sceneDialog != nullptr) {
        if (sceneButton->GetState() == QorDlgUncheck)
            CloseSceneDialog();
        return;
    }
    sceneDialog = new QorRdgSceneDialog(this, "sceneDialog");
    AddAnalyseNotificationCB(this, sceneDialog, sceneDialog->GetDiaOKNotification(),
                             &QorRdgEasyRenderDialog::SceneOKCB);
    for (const QorNotification* end :
         {sceneDialog->GetDiaCANCELNotification(), sceneDialog->GetWindCloseNotification()})
        AddAnalyseNotificationCB(this, sceneDialog, end, &QorRdgEasyRenderDialog::SceneCancelCB);
    sceneDialog->Init();
    sceneDialog->SetVisibility(QorDlgSHOW);
}

void QorRdgEasyRenderDialog::SceneOKCB(QorCommand* /*iCommand*/,
                                       QorNotification* /*iNotification*/,
                                       QorSubscriberData /*iData*/) {
    QorTrace(3, "(QorRdgEasyRenderDialog::SceneOKCB) Background OK\n");
    CloseSceneDialog();
}

void QorRdgEasyRenderDialog::SceneCancelCB(QorCommand* /*iCommand*/,
                                           QorNotification* /*iNotification*/,
                                           QorSubscriberData /*iData*/) {
    QorTrace(3, "(QorRdgEasyRenderDialog::SceneCancelCB) Background Canceled\n");
    CloseSceneDialog();
}

void QorRdgEasyRenderDialog::CloseOptionsDialog() {
    if (QorRdgOptionsDialog* last = std::exchange(optionsDialog, nullptr))
        last->RequestDelayedDestruction();
    optionsButton->SetState(QorDlgUncheck, QorDlgNoNotify);
}

void QorRdgEasyRenderDialog::OptionsCB(QorCommand* /*iCommand*/,
                                       QorNotification* /*iNotification*/,
                                       QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgEasyRenderDialog::OptionsCB) \n");
    if (optionsDialog != nullptr) {
        if (optionsButton->GetState() == QorDlgUncheck)
            CloseOptionsDialog();
        return;
    }
    optionsDialog = new QorRdgOptionsDialog(this, "optionsDialog");
    AddAnalyseNotificationCB(this, optionsDialog, optionsDialog->GetDiaOKNotification(),
                             &QorRdgEasyRenderDialog::OptionsOKCB);
    for (const QorNotification* end :
         {optionsDialog->GetDiaCANCELNotification(), optionsDialog->GetWindCloseNotification()})
        AddAnalyseNotificationCB(this, optionsDialog, end,
                                 &QorRdgEasyRenderDialog::OptionsCancelCB);
    optionsDialog->SetVisibility(QorDlgSHOW);
}

void QorRdgEasyRenderDialog::OptionsOKCB(QorCommand* /*iCommand*/,
                                         QorNotification* /*iNotification*/,
                                         QorSubscriberData /*iData*/) {
    QorTrace(3, "(QorRdgEasyRenderDialog::OptionsOKCB) Rendering Options OK\n");
    CloseOptionsDialog();
    if (!settings)
        return;
    const auto area = QorQuery<QorIRdgArea>(viewer);
    int x1 = 0;
    int y1 = 0;
    int x2 = 0;
    int y2 = 0;
    // The selector looks at its rectangle anew; one that is still to be drawn is left to that.
    if (areaCheck->GetState() == QorDlgCheck && area && QorSucceeded(area->GetArea(x1, y1, x2, y2)))
        area->SetArea(x1, y1, x2, y2);
    UpdateSize();
}

void QorRdgEasyRenderDialog::OptionsCancelCB(QorCommand* /*iCommand*/,
                                             QorNotification* /*iNotification*/,
                                             QorSubscriberData /*iData*/) {
    QorTrace(3, "(QorRdgEasyRenderDialog::OptionsCancelCB) Rendering Options Canceled\n");
    CloseOptionsDialog();
}
