#include "platform/vis/QorSupport.h"

QorImplementClass(QorSupport, QorBaseUnknown)

const QorEventName QorGraphicWindow::GRAPHICWINDOW_RESIZE = "GRAPHICWINDOW_RESIZE";
const QorEventName QorGraphicWindow::GRAPHICWINDOW_SWAP = "GRAPHICWINDOW_SWAP";

namespace {

// 96 dots an inch, until a host tells its screen's; rounded down, so that 192 pixels an inch are
// twice as many and not, cut to integers, one less.
constexpr float screenUnits = 3.7795274F;

} // namespace

QorSupport::QorSupport(float iWidth, float iHeight)
    : width(iWidth), height(iHeight), mmInSupportUnit(screenUnits) {}

void QorSupport::GetWidthAndHeight(float& oWidth, float& oHeight) const {
    oWidth = width;
    oHeight = height;
}

float QorSupport::GetRatioWH() const {
    return width > 0.0F && height > 0.0F ? width / height : 1.0F;
}

void QorSupport::Resize(float iWidth, float iHeight) {
    if (iWidth == width && iHeight == height)
        return;
    width = iWidth;
    height = iHeight;
    callbacks.DispatchCallbacks(QorGraphicWindow::GRAPHICWINDOW_RESIZE, this);
}

void QorSupport::Swapped() {
    callbacks.DispatchCallbacks(QorGraphicWindow::GRAPHICWINDOW_SWAP, this);
}
