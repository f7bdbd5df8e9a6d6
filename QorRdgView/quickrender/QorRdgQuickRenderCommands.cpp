#include "quickrender/QorRdgQuickRenderCommands.h"

#include "platform/engine/QorIRdgViewerParts.h"
#include "platform/frame/QorFrmLayout.h"
#include "platform/frame/QorFrmWindow.h"
#include "platform/system/QorApplication.h"
#include "platform/system/QorEventLoop.h"
#include "quickrender/QorRdgEasyRenderDialog.h"
#include "scenes/QorRdgSceneViewer.h"

QorImplementClass(QorRdgEasyRenderHeader, QorCheckHeader)
QorImplementClass(QorRdgGroundHeader, QorCheckHeader)
QorImplementClass(QorRdgLightingHeader, QorCommandHeader)

namespace {

/// Calls \p iMethod whenever another viewer may have become the current one.
template <class Header>
void FollowViewers(Header* iHeader, QorEventMethod<Header> iMethod) {
    QorFrmLayout* layout = QorFrmLayout::GetCurrentLayout();
    if (layout == nullptr)
        return;
    for (const QorEventName event : {QorFrmWindow::VIEWER_ACTIVATED, QorFrmWindow::WINDOW_DELETED,
                                     QorFrmEditor::EDITOR_CLOSE_ENDED})
        layout->GetCallbackManager()->AddCallback(iHeader, event, iMethod);
}

Qor3DViewer* CurrentViewer() {
    return dynamic_cast<Qor3DViewer*>(QorRdgSceneViewer::GetCurrent());
}

std::vector<QorRdgEasyRenderDialog*> OpenToolBars() {
    std::vector<QorRdgEasyRenderDialog*> open;
    for (QorDlgDialog* dialog : QorDlgDialog::GetAll())
        if (auto* toolBar = dynamic_cast<QorRdgEasyRenderDialog*>(dialog))
            open.push_back(toolBar);
    return open;
}

} // namespace

QorRdgEasyRenderHeader::QorRdgEasyRenderHeader(QorCommand* iFather, const QorString& iName)
    : QorCheckHeader(iFather, iName) {
    FollowViewers(this, &QorRdgEasyRenderHeader::ViewerCB);
}

QorRdgEasyRenderHeader::~QorRdgEasyRenderHeader() = default;

QorResult QorRdgEasyRenderHeader::StartCommand() {
    if (!IsAvailable())
        return E_FAIL;
    if (GetCheckState() == QorDlgCheck)
        return EndCommand();
    QorRdgEasyRenderDialog* dialog = QorRdgEasyRenderDialog::GetDialog();
    if (dialog == nullptr)
        return E_FAIL;
    ChangeCheckState(QorDlgCheck);
    dialog->SetVisibility(QorDlgSHOW);
    return S_OK;
}

QorResult QorRdgEasyRenderHeader::EndCommand() {
    // One that has changed viewers is open too, though GetDialog does not know it.
    for (QorRdgEasyRenderDialog* toolBar : OpenToolBars())
        toolBar->Close();
    return QorCheckHeader::EndCommand();
}

void QorRdgEasyRenderHeader::ViewerCB(QorEventName /*iEvent*/,
                                      QorBaseUnknown* /*iPublisher*/,
                                      QorNotification* /*iNotification*/,
                                      QorSubscriberData /*iData*/,
                                      QorCallbackId /*iCookie*/) {
    const QorApplication* application = QorApplication::MainApplication();
    if (application == nullptr || GetCheckState() != QorDlgCheck || CurrentViewer() == nullptr)
        return;
    // Later: whoever has opened the viewer still fills it.
    application->GetLoop().Post([self = QorVar<QorRdgEasyRenderHeader>(this)] { self->Reopen(); });
}

void QorRdgEasyRenderHeader::Reopen() {
    const std::vector<QorRdgEasyRenderDialog*> open = OpenToolBars();
    if (IsDying() || CurrentViewer() == nullptr || open.size() != 1 || open.front()->HasViewer())
        return;
    EndCommand();
    StartCommand();
}

QorRdgGroundHeader::QorRdgGroundHeader(QorCommand* iFather, const QorString& iName)
    : QorCheckHeader(iFather, iName) {
    FollowViewers(this, &QorRdgGroundHeader::ViewerCB);
    Follow();
}

QorRdgGroundHeader::~QorRdgGroundHeader() = default;

QorResult QorRdgGroundHeader::StartCommand() {
    if (!IsAvailable())
        return E_FAIL;
    if (GetCheckState() == QorDlgCheck)
        return EndCommand();
    const auto ground = QorQuery<QorIRdgGround>(CurrentViewer());
    if (!ground)
        return E_FAIL;
    const QorResult result = ground->SetGroundVisible(true);
    if (QorSucceeded(result))
        ChangeCheckState(QorDlgCheck);
    return result;
}

QorResult QorRdgGroundHeader::EndCommand() {
    if (const auto ground = QorQuery<QorIRdgGround>(CurrentViewer()))
        ground->SetGroundVisible(false);
    return QorCheckHeader::EndCommand();
}

void QorRdgGroundHeader::ViewerCB(QorEventName /*iEvent*/,
                                  QorBaseUnknown* /*iPublisher*/,
                                  QorNotification* /*iNotification*/,
                                  QorSubscriberData /*iData*/,
                                  QorCallbackId /*iCookie*/) {
    Follow();
}

void QorRdgGroundHeader::Follow() {
    const Qor3DViewer* viewer = CurrentViewer();
    ChangeCheckState(viewer != nullptr && viewer->GetGround() != nullptr ? QorDlgCheck
                                                                         : QorDlgUncheck);
    if (viewer != nullptr)
        BecomeAvailable();
    else
        BecomeUnavailable();
}

QorRdgLightingHeader::QorRdgLightingHeader(QorCommand* iFather, const QorString& iName)
    : QorCommandHeader(iFather, iName) {
    FollowViewers(this, &QorRdgLightingHeader::ViewerCB);
    Follow();
}

QorRdgLightingHeader::~QorRdgLightingHeader() = default;

QorResult QorRdgLightingHeader::StartCommand() {
    if (!IsAvailable())
        return E_FAIL;
    taken = true;
    BecomeUnavailable();
    return S_OK;
}

QorResult QorRdgLightingHeader::EndCommand() {
    taken = false;
    Follow();
    return S_OK;
}

void QorRdgLightingHeader::ViewerCB(QorEventName /*iEvent*/,
                                    QorBaseUnknown* /*iPublisher*/,
                                    QorNotification* /*iNotification*/,
                                    QorSubscriberData /*iData*/,
                                    QorCallbackId /*iCookie*/) {
    Follow();
}

void QorRdgLightingHeader::Follow() {
    const bool hasViewer = CurrentViewer() != nullptr;
    taken = taken && hasViewer;
    if (hasViewer && !taken)
        BecomeAvailable();
    else
        BecomeUnavailable();
}

void QorAddQuickRenderCommands(QorCommand* iFather) {
    new QorRdgEasyRenderHeader(iFather);
    new QorRdgGroundHeader(iFather);
    new QorRdgLightingHeader(iFather);
}
