#pragma once

#include "platform/vis/QorPixelImage.h"
#include "workbench/engine/core/Picture.h"

#include <compare>

namespace qor::adapter {

/// The pixels of a picture, to be made into one of the engine's by a worker. Holds no counted
/// object.
struct PictureRecipe {
    /// Equal keys give equal pictures.
    struct Key {
        std::uint64_t contentId = 0; ///< 0: no picture
        engine::PictureEncoding encoding = engine::PictureEncoding::srgb;

        auto operator<=>(const Key&) const = default;
    };

    Key key;
    int width = 0;
    int height = 0;
    int channels = 4;
    std::shared_ptr<const QorPixelImage::Pixels> pixels;

    explicit operator bool() const { return pixels != nullptr; }
};

/// A recipe for \p image, which may be null or empty: then for nothing.
PictureRecipe pictureRecipe(const QorPixelImage* image, engine::PictureEncoding encoding);

/// Any thread.
engine::Result<engine::PicturePtr> makePicture(const PictureRecipe& recipe);

} // namespace qor::adapter
