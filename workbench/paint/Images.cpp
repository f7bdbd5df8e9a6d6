#include "workbench/paint/Images.h"

#include <cstring>
#include <memory>
#include <new>

namespace qor::paint {

namespace {

using Pixels = std::shared_ptr<const QorPixelImage::Pixels>;

void giveBack(void* pixels) {
    delete static_cast<Pixels*>(pixels); // NOLINT(cppcoreguidelines-owning-memory): Qt held it
}

QImage::Format formatOf(const QorPixelImage& picture, bool isOpaque) {
    if (picture.GetChannels() == 3)
        return QImage::Format_RGB888;
    return isOpaque ? QImage::Format_RGBX8888 : QImage::Format_RGBA8888;
}

} // namespace

QImage lend(const QorPixelImage& picture, bool isOpaque) {
    if (picture.IsEmpty())
        return {};
    auto held = std::make_unique<Pixels>(picture.GetPixels());
    const uchar* bytes = (*held)->data();
    return {bytes,
            picture.GetWidth(),
            picture.GetHeight(),
            static_cast<qsizetype>(picture.GetWidth()) * picture.GetChannels(),
            formatOf(picture, isOpaque),
            &giveBack,
            held.release()};
}

QorPixelImage_var copyOpaque(const QImage& image) try {
    const QImage rgb = image.convertToFormat(QImage::Format_RGB888);
    if (rgb.isNull())
        return nullptr;
    const auto rowSize = 3 * static_cast<std::size_t>(rgb.width());
    auto pixels =
        std::make_shared<QorPixelImage::Pixels>(rowSize * static_cast<std::size_t>(rgb.height()));
    for (int row = 0; row < rgb.height(); ++row)
        std::memcpy(pixels->data() + rowSize * static_cast<std::size_t>(row),
                    rgb.constScanLine(row), rowSize);
    return QorMake<QorPixelImage>(rgb.width(), rgb.height(), 3, std::move(pixels));

} catch (const std::bad_alloc&) {

    return nullptr;
}

} // namespace qor::paint
