#include "workbench/desktop/viewer/SpaceViewerPeer.h"

#include "platform/text/QorMsgCatalog.h"
#include "workbench/desktop/peers/Texts.h"
#include "workbench/desktop/viewer/SpaceSurface.h"

namespace qor::desktop {

namespace {

QString faultMessage(const QString& reason) {
    return toQt(QorMsgCatalog::BuildMessage(
        "QorDesktop", "NoOpenGL", {fromQt(reason)},
        "3D views need OpenGL 3.3, which this machine does not offer (/P1)."));
}

} // namespace

SpaceViewerPeer::SpaceViewerPeer(QorDialog& widget) : ViewerPeer(widget) {
    if (!SpaceSurface::fault().isEmpty()) {
        box().showMessage(faultMessage(SpaceSurface::fault()));
        return;
    }
    surface_ = new SpaceSurface(&box(), my());
    box().setContent(surface_);
    surface_->onFault =
        whileAlive([this](const QString& reason) { box().showMessage(faultMessage(reason)); });
    QObject::connect(surface_, &QOpenGLWidget::frameSwapped, context(), [this] { swapped(); });
}

SpaceViewerPeer::~SpaceViewerPeer() {
    if (surface_ != nullptr)
        surface_->forget();
}

Qor3DViewer& SpaceViewerPeer::my() const {
    return static_cast<Qor3DViewer&>(widget());
}

SpaceSurface* SpaceViewerPeer::surface() const {
    return surface_;
}

void SpaceViewerPeer::drawLater() {
    if (surface_ != nullptr)
        surface_->update();
}

QImage SpaceViewerPeer::picture(QString& reason) {
    if (control() == nullptr || surface_ == nullptr || !box().message().isEmpty()) {
        reason = QStringLiteral("the viewer is not drawn: %1").arg(SpaceSurface::fault());
        return {};
    }
    return surface_->picture();
}

} // namespace qor::desktop
