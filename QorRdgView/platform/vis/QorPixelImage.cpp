#include "platform/vis/QorPixelImage.h"

#include "platform/system/QorPaths.h"
#include "platform/vis/QorContentId.h"
#include "platform/vis/QorPictureService.h"

#include <algorithm>
#include <cmath>
#include <cstring>

QorImplementClass(QorPixelImage, QorBaseUnknown)

namespace {

bool IsPicture(int iWidth, int iHeight, int iChannels, const QorPixelImage::Pixels* iPixels) {
    if (iWidth <= 0 || iHeight <= 0 || (iChannels != 3 && iChannels != 4) || iPixels == nullptr)
        return false;
    const auto size = static_cast<std::size_t>(iWidth) * static_cast<std::size_t>(iHeight);
    return iPixels->size() == size * static_cast<std::size_t>(iChannels);
}

/// A pipe or a device could keep its reader waiting for ever.
bool MayBlock(const QorUnicodeString& iPath) {
    QorFileInfo file;
    return QorGetFileInfo(iPath, &file) == 0 && !file.isRegular;
}

} // namespace

QorPixelImage::QorPixelImage(int iWidth,
                             int iHeight,
                             int iChannels,
                             std::shared_ptr<const Pixels> iPixels) {
    if (!IsPicture(iWidth, iHeight, iChannels, iPixels.get()))
        return;
    width = iWidth;
    height = iHeight;
    channels = iChannels;
    pixels = std::move(iPixels);
    contentId = QorNewContentId();
}

QorPixelImage::QorPixelImage(const QorPixelImage& iOther) : QorBaseUnknown(iOther) {
    *this = iOther;
}

QorPixelImage& QorPixelImage::operator=(const QorPixelImage& iOther) {
    width = iOther.width;
    height = iOther.height;
    channels = iOther.channels;
    pixels = iOther.pixels;
    contentId = iOther.contentId;
    pixelsPerInch = iOther.pixelsPerInch;
    return *this;
}

void QorPixelImage::GetSize(int& oWidth, int& oHeight) const {
    oWidth = width;
    oHeight = height;
}

void QorPixelImage::SetPixelsPerInch(double iPixels) {
    pixelsPerInch = iPixels > 0.0 && std::isfinite(iPixels) ? iPixels : 0.0;
}

QorPixelImage* QorPixelImage::CreateFromFile(const QorUnicodeString& iPath) {
    if (MayBlock(iPath))
        return nullptr;
    QorUnicodeString error;
    return QorPictureService::Get().Read(iPath, error);
}

QorPixelImage* QorPixelImage::CreateReducedFromFile(const QorUnicodeString& iPath,
                                                    int iSide,
                                                    int& oWidth,
                                                    int& oHeight) {
    if (MayBlock(iPath))
        return nullptr;
    QorUnicodeString error;
    return QorPictureService::Get().ReadReduced(iPath, iSide, oWidth, oHeight, error);
}

int QorPixelImage::WriteToFile(const QorString& iFormat,
                               const QorUnicodeString& iPath,
                               QorUnicodeString* oError) const {
    QorUnicodeString error;
    const int result = QorPictureService::Get().Write(*this, iFormat, iPath, error);
    if (result != 0 && oError != nullptr)
        *oError = error;
    return result;
}

QorPixelImage* QorPixelImage::Resize(int iWidth, int iHeight) const {
    if (iWidth <= 0 || iHeight <= 0 || IsEmpty())
        return nullptr;
    return QorPictureService::Get().Resize(*this, iWidth, iHeight);
}

QorPixelImage* QorPixelImage::ExtractRegion(int iX1, int iY1, int iX2, int iY2) const {
    const int left = std::max(iX1, 0);
    const int right = std::min(iX2, width);
    const int top =
        std::max(0, height - std::min(iY2, height)); // rows count from the top, y from the bottom
    const int bottom = std::min(height, height - std::max(iY1, 0));
    if (left >= right || top >= bottom)
        return nullptr;
    if (right - left == width && bottom - top == height)
        return new QorPixelImage(*this); // shares the pixels
    const auto rowSize =
        static_cast<std::size_t>(right - left) * static_cast<std::size_t>(channels);
    const auto rows = static_cast<std::size_t>(bottom - top);
    auto cut = std::make_shared<Pixels>(rowSize * rows);
    for (std::size_t row = 0; row < rows; ++row) {
        const std::size_t from =
            ((static_cast<std::size_t>(top) + row) * static_cast<std::size_t>(width) +
             static_cast<std::size_t>(left)) *
            static_cast<std::size_t>(channels);
        std::memcpy(cut->data() + row * rowSize, pixels->data() + from, rowSize);
    }
    auto* region = new QorPixelImage(right - left, bottom - top, channels, std::move(cut));
    region->pixelsPerInch = pixelsPerInch;
    return region;
}
