// The quick render's tool bar: how large its picture is, and which part of it is rendered.
#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgLabel.h"
#include "platform/engine/QorIRdgViewerParts.h"
#include "platform/system/QorTrace.h"
#include "platform/text/QorMsgCatalog.h"
#include "quickrender/QorRdgEasyRenderDialog.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>

namespace {

constexpr double mmPerInch = 25.4;
constexpr double mmPerCm = 10.0;

/// Cut towards zero; what no integer can hold becomes the nearest that can, and no number 0.
int Cut(double iValue) {
    constexpr double most = std::numeric_limits<int>::max();
    if (std::isnan(iValue))
        return 0;
    return static_cast<int>(std::clamp(iValue, -most, most));
}

struct PixelSize {
    double width;
    double height;
    int left;
    int bottom;
};

/// The part of the viewer that the main viewpoint covers; all of it unless it says otherwise.
PixelSize VisiblePart(const QorViewer& iViewer) {
    float x = 0.0F;
    float y = 0.0F;
    float width = 0.0F;
    float height = 0.0F;
    if (const Qor3DViewpoint* main = iViewer.GetMain3DViewpoint())
        main->GetGLViewport(x, y, width, height);
    if (width == 0.0F || height == 0.0F)
        iViewer.GetGraphicSize(width, height);
    return {static_cast<double>(width), static_cast<double>(height), Cut(static_cast<double>(x)),
            Cut(static_cast<double>(y))};
}

QorUnicodeString Number(int iNumber) {
    QorUnicodeString text;
    return text.BuildFromNum(iNumber, "%d");
}

} // namespace

int QorRdgEasyRenderDialog::ReadSetting(const char* iKey, int iDefault) const {
    int value = iDefault;
    if (settings)
        settings->ReadSetting(iKey, &value);
    return value;
}

bool QorRdgEasyRenderDialog::IsCustomSize() const {
    return ReadSetting("ScreenResolution", 1) == 0;
}

double QorRdgEasyRenderDialog::GetDensity() const {
    if (!IsCustomSize())
        return 0.0;
    const double mmPerUnit = ReadSetting("CustomUnit", 0) != 0 ? mmPerCm : mmPerInch;
    return ReadSetting("CustomResolution", 300) * mmPerInch / mmPerUnit;
}

QorResult QorRdgEasyRenderDialog::GetSize(int& oWidth, int& oHeight, QorRdgWindow*& oRegion) {
    QorTrace(4, "(QorRdgEasyRenderDialog::GetSize) \n");
    if (viewer == nullptr || !settings)
        return E_FAIL;
    const PixelSize part = VisiblePart(*viewer);
    oWidth = Cut(part.width);
    oHeight = Cut(part.height);
    double scaleX = 1.0;
    double scaleY = 1.0;
    const QorSupport* surface = viewer->GetSupport();
    const bool custom = IsCustomSize();
    if (custom && surface != nullptr) {
        const double mmPerUnit = ReadSetting("CustomUnit", 0) != 0 ? mmPerCm : mmPerInch;
        scaleX = ReadSetting("CustomResolution", 300) / mmPerUnit *
                 (1.0 / static_cast<double>(surface->GetMMInSupportUnit()));
        oWidth = Cut(scaleX * part.width);
        scaleY = oWidth / part.width; // from the width as it was cut: the proportions follow it
        oHeight = Cut(scaleY * part.height);
    }
    const auto area = QorQuery<QorIRdgArea>(viewer);
    if (!area)
        return E_FAIL;
    oRegion = nullptr;
    int on = 0;
    if (!QorSucceeded(area->GetAreaMode(on)) || on == 0)
        return S_OK;
    int x1 = 0;
    int y1 = 0;
    int x2 = 0;
    int y2 = 0;
    area->GetArea(x1, y1, x2, y2);
    oRegion = new QorRdgWindow{x1 - part.left, y1 - part.bottom, x2 - part.left, y2 - part.bottom};
    if (custom)
        *oRegion = {Cut(oRegion->x1 * scaleX), Cut(oRegion->y1 * scaleY), Cut(oRegion->x2 * scaleX),
                    Cut(oRegion->y2 * scaleY)};
    return S_OK;
}

void QorRdgEasyRenderDialog::UpdateSize() {
    QorTrace(4, "(QorRdgEasyRenderDialog::UpdateSize) \n");
    int columns = 0;
    int rows = 0;
    QorRdgWindow* part = nullptr;
    if (!QorSucceeded(GetSize(columns, rows, part)))
        return;
    const std::unique_ptr<QorRdgWindow> region(part);
    if (region) {
        columns = region->Width();
        rows = region->Height();
    }
    if (infoLabel != nullptr)
        infoLabel->SetTitle(QorMsgCatalog::BuildMessage("QorRdgEasyRenderDialog", "ImageSize",
                                                        {Number(columns), Number(rows)}));
}

void QorRdgEasyRenderDialog::AreaCB(QorCommand* /*iCommand*/,
                                    QorNotification* /*iNotification*/,
                                    QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgEasyRenderDialog::AreaCB) \n");
    if (viewer == nullptr || !settings)
        return;
    if (const auto area = QorQuery<QorIRdgArea>(viewer))
        area->SetAreaMode(areaCheck->GetState() == QorDlgCheck);
    UpdateSize();
}

void QorRdgEasyRenderDialog::EndModifyAreaCB(QorEventName /*iEvent*/,
                                             QorBaseUnknown* /*iPublisher*/,
                                             QorNotification* /*iNotification*/,
                                             QorSubscriberData /*iData*/,
                                             QorCallbackId /*iCookie*/) {
    QorTrace(4, "(QorRdgEasyRenderDialog::EndModifyAreaCB) \n");
    UpdateSize();
}
