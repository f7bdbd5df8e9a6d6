#include "platform/vis/QorSupport.h"

QorImplementClass(QorSupport, QorBaseUnknown)

const QorEventName QorGraphicWindow::GRAPHICWINDOW_RESIZE = "GRAPHICWINDOW_RESIZE";
const QorEventName QorGraphicWindow::GRAPHICWINDOW_SWAP = "GRAPHICWINDOW_SWAP";

namespace {

constexpr float dotsPerInch = 96.0F; // until a host tells its screen's
constexpr float mmPerInch = 25.4F;

} // namespace

QorSupport::QorSupport(float iWidth, float iHeight)
    : width(iWidth), height(iHeight), mmInSupportUnit(dotsPerInch / mmPerInch) {}

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
