#include "workbench/app/DocumentWindow.h"

#include "workbench/engine/adapter/StandardLights.h"

namespace qor::app {

namespace {

constexpr float startWidth = 1000.0F; ///< pixels, until a window's layout says otherwise
constexpr float startHeight = 700.0F;

} // namespace

DocumentWindow::DocumentWindow(QorCommand* owner,
                               const QorString& itsName,
                               DocumentEditor& edited,
                               std::function<void(DocumentWindow& window)> onClose)
    : QorFrmWindow(owner, itsName, &edited)
    , onClose_(std::move(onClose))
    , viewer_(
          new QorNavigation3DViewer(this, "viewer", QorDlgDefaultStyle, startWidth, startHeight))
    , clicks_(*viewer_, edited) {
    Attach4Sides(viewer_);
    adapter::lightUp(*viewer_);
    viewer_->AddRep(edited.document().root());
    SetViewer(viewer_);
    showWhole();
    AddAnalyseNotificationCB(this, this, GetWindCloseNotification(), &DocumentWindow::closeCB);
    viewer_->GetSupport()->GetCallbackManager()->AddCallback(
        this, QorGraphicWindow::GRAPHICWINDOW_RESIZE, &DocumentWindow::resized);
}

void DocumentWindow::showWhole() {
    Qor3DViewpoint& viewpoint = *viewer_->GetMain3DViewpoint();
    viewer_->StopViewChange();
    whole_ = QorSeenFrom(QorStandardView::Isometric, viewer_->GetVertical(), QorView::Of(viewpoint))
                 .Fitted(viewer_->GetProductBox(),
                         static_cast<double>(viewer_->GetSupport()->GetRatioWH()));
    whole_.ApplyTo(viewpoint);
    whole_ = QorView::Of(viewpoint);
    viewer_->Draw();
    viewpoint.Modified();
}

/// The first look is kept whole while the window finds its size.
void DocumentWindow::resized(QorEventName /*event*/,
                             QorBaseUnknown* /*publisher*/,
                             QorNotification* /*notification*/,
                             QorSubscriberData /*data*/,
                             QorCallbackId /*cookie*/) {
    if (QorView::Of(*viewer_->GetMain3DViewpoint()) == whole_)
        showWhole();
}

void DocumentWindow::closeCB(QorCommand* /*sender*/,
                             QorNotification* /*notification*/,
                             QorSubscriberData /*data*/) {
    const auto tell = onClose_; // the window may be gone afterwards
    tell(*this);
}

QorImplementClass(DocumentWindow, QorFrmWindow)

} // namespace qor::app
