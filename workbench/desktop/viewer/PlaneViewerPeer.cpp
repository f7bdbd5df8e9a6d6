#include "workbench/desktop/viewer/PlaneViewerPeer.h"

#include "workbench/paint/ViewerPicture.h"

#include <QPainter>

namespace qor::desktop {

PlaneViewerPeer::PlaneViewerPeer(QorDialog& widget) : ViewerPeer(widget) {
    const QPointer<QObject> alive(context());
    box().onPaint = [this, alive](QPainter& painter) {
        if (alive)
            paint(painter);
    };
    pictures_.proxies().onReady = [this] {
        drawLater();
    };
}

void PlaneViewerPeer::drawLater() {
    if (control() != nullptr)
        control()->update();
}

void PlaneViewerPeer::paint(QPainter& painter) {
    paint::paintUnder(painter, viewer(), pictures_);
    paint::paintOver(painter, viewer(), pictures_);
    pictures_.endFrame();
    swapped();
}

QImage PlaneViewerPeer::picture(QString& reason) {
    if (control() == nullptr) {
        reason = QStringLiteral("the viewer is not drawn");
        return {};
    }
    pictures_.proxies().setExact(true);
    QImage image(box().deviceSize(), QImage::Format_RGB32);
    QPainter painter(&image);
    paint::paintUnder(painter, viewer(), pictures_);
    paint::paintOver(painter, viewer(), pictures_);
    pictures_.proxies().setExact(false);
    return image;
}

} // namespace qor::desktop
