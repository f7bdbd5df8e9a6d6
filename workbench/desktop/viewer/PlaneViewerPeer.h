#pragma once

#include "workbench/desktop/viewer/ViewerPeer.h"
#include "workbench/paint/PictureCache.h"

namespace qor::desktop {

/// A viewer of the plane, drawn with QPainter.
class PlaneViewerPeer : public ViewerPeer {
public:
    explicit PlaneViewerPeer(QorDialog& widget);

    QImage picture(QString& reason) override;

protected:
    void drawLater() override;

private:
    void paint(QPainter& painter);

    paint::PictureCache pictures_;
};

} // namespace qor::desktop
