#include "workbench/desktop/viewer/SpaceViewerPeer.h"

#include "platform/text/QorMsgCatalog.h"
#include "workbench/desktop/peers/Texts.h"
#include "workbench/desktop/viewer/SpaceSurface.h"
#include "workbench/paint/PlanePainter.h"
#include "workbench/paint/PlanePictures.h"

#include <QPainter>

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
    surface_ = new SpaceSurface(&box(), my(), pictures_);
    box().setContent(surface_);
    surface_->onFault =
        whileAlive([this](const QString& reason) { box().showMessage(faultMessage(reason)); });
    pictures_.proxies().onReady = [this] {
        drawLater();
    };
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
    if (surface_ == nullptr || control() == nullptr)
        return;
    chooseSurface();
    if (flat_)
        control()->update();
    else
        surface_->update();
}

void SpaceViewerPeer::chooseSurface() {
    const ViewerComposer* composer = surface_->composer();
    const bool isSlow = composer != nullptr && composer->space().isSoftware() && !alwaysOpenGl_;
    const bool flat =
        isSlow && box().message().isEmpty() &&
        paint::visiblePlanesOf(viewer(), paint::surfaceOf(viewer()), pictures_).hidesSpace;
    if (flat == flat_)
        return;
    flat_ = flat;
    box().onPaint = nullptr;
    if (flat)
        box().onPaint = [this, alive = QPointer<QObject>(context())](QPainter& painter) {
            if (alive)
                paintFlat(painter);
        };
    surface_->setVisible(!flat);
}

void SpaceViewerPeer::paintFlat(QPainter& painter) {
    const paint::Surface surface = paint::surfaceOf(viewer());
    const paint::VisiblePlanes visible = paint::visiblePlanesOf(viewer(), surface, pictures_);
    for (const paint::Plane& plane : visible.planes)
        paint::paintPlane(painter, *plane.viewpoint, surface, pictures_);
    pictures_.endFrame();
    swapped();
    if (!visible.hidesSpace) // a change that nobody has told of
        QMetaObject::invokeMethod(
            context(), [this] { drawLater(); }, Qt::QueuedConnection);
}

void SpaceViewerPeer::setAlwaysOpenGl(bool isAlways) {
    alwaysOpenGl_ = isAlways;
    drawLater();
}

QImage SpaceViewerPeer::picture(QString& reason) {
    if (control() == nullptr || surface_ == nullptr || !box().message().isEmpty()) {
        reason = QStringLiteral("the viewer is not drawn: %1").arg(SpaceSurface::fault());
        return {};
    }
    pictures_.proxies().setExact(true);
    chooseSurface();
    QImage image;
    if (flat_) {
        image = QImage(box().deviceSize(), QImage::Format_RGB32);
        QPainter painter(&image);
        paintFlat(painter);
    } else {
        image = surface_->picture();
    }
    pictures_.proxies().setExact(false);
    return image;
}

} // namespace qor::desktop
