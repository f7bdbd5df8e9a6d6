#include "workbench/engine/adapter/PictureMaker.h"

#include "workbench/engine/adapter/EightBit.h"

#include <algorithm>
#include <array>

namespace qor::adapter {

namespace {

/// Beyond so many pixels a screen gets a smaller picture.
constexpr std::int64_t mostOnScreen = std::int64_t{4096} * 2304;
constexpr int bandRows = 32;

int screenFactor(const engine::RenderOptions& options) {
    int factor = 1;
    while (std::int64_t{options.width / factor} * (options.height / factor) > mostOnScreen)
        ++factor;
    return factor;
}

} // namespace

PictureMaker::PictureMaker(const engine::RenderOptions& options)
    : width_(options.width), height_(options.height), screenFactor_(screenFactor(options)) {
    const engine::Region region = engine::clippedRegion(options);
    left_ = region.x;
    right_ = region.x + region.width;
    top_ = options.height - region.y - region.height;
    bottom_ = options.height - region.y;
}

MadePicture PictureMaker::whole(const engine::Render& render) const {
    return make(render, 1);
}

MadePicture PictureMaker::forScreen(const engine::Render& render) const {
    return make(render, screenFactor_);
}

MadePicture PictureMaker::make(const engine::Render& render, int factor) const {
    MadePicture picture{width_ / factor, height_ / factor, nullptr};
    std::vector<std::uint8_t> rgba(static_cast<std::size_t>(picture.width) *
                                   static_cast<std::size_t>(picture.height) * 4);
    const int rowsAtOnce = std::max(factor, bandRows / factor * factor);
    engine::Image band;
    for (int top = top_ / factor * factor; top < std::min(bottom_, picture.height * factor);
         top += rowsAtOnce) {
        render.snapshotRows(top, std::min(rowsAtOnce, height_ - top), band);
        addBand(band, top, factor, rgba);
    }
    picture.rgba = std::make_shared<const std::vector<std::uint8_t>>(std::move(rgba));
    return picture;
}

/// Adds rows from \p top on: as they are, or means of squares of \p factor pixels.
void PictureMaker::addBand(const engine::Image& band,
                           int top,
                           int factor,
                           std::vector<std::uint8_t>& rgba) const {
    const int columns = width_ / factor;
    const int rows = band.height / factor;
    for (int row = 0; row < rows; ++row) {
        const int y = top / factor + row;
        const int firstColumn = left_ / factor;
        const int lastColumn = std::min(columns, (right_ + factor - 1) / factor);
        std::uint8_t* const target =
            rgba.data() + (static_cast<std::size_t>(y) * static_cast<std::size_t>(columns) +
                           static_cast<std::size_t>(firstColumn)) *
                              4;
        if (factor == 1) {
            if (y >= top_ && y < bottom_)
                encodeOpaque(band.pixel(firstColumn, row),
                             static_cast<std::size_t>(lastColumn - firstColumn), firstColumn, y,
                             target);
            continue;
        }
        for (int column = firstColumn; column < lastColumn; ++column) {
            std::array<float, 4> sum{};
            for (int inner = 0; inner < factor; ++inner)
                for (int i = 0; i < factor * 4; ++i)
                    sum[static_cast<std::size_t>(i % 4)] +=
                        band.pixel(column * factor, row * factor + inner)[i];
            for (float& channel : sum)
                channel /= static_cast<float>(factor * factor);
            encodeOpaque(sum.data(), 1, column, y,
                         target + static_cast<std::size_t>(column - firstColumn) * 4);
        }
    }
}

} // namespace qor::adapter
