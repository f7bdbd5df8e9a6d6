#include "workbench/engine/adapter/PictureRecipe.h"

namespace qor::adapter {

PictureRecipe pictureRecipe(const QorPixelImage* image, engine::PictureEncoding encoding) {
    if (image == nullptr || image->IsEmpty())
        return {};
    return {{image->GetContentId(), encoding},
            image->GetWidth(),
            image->GetHeight(),
            image->GetChannels(),
            image->GetPixels()};
}

engine::Result<engine::PicturePtr> makePicture(const PictureRecipe& recipe) {
    constexpr std::uint8_t opaque = 255;
    if (recipe.channels == 4)
        return engine::Picture::create(recipe.width, recipe.height, *recipe.pixels,
                                       recipe.key.encoding);
    const auto count =
        static_cast<std::size_t>(recipe.width) * static_cast<std::size_t>(recipe.height);
    std::vector<std::uint8_t> rgba;
    rgba.reserve(count * 4);
    const std::uint8_t* from = recipe.pixels->data();
    for (std::size_t i = 0; i < count; ++i, from += 3)
        rgba.insert(rgba.end(), {from[0], from[1], from[2], opaque});
    return engine::Picture::create(recipe.width, recipe.height, std::move(rgba),
                                   recipe.key.encoding);
}

} // namespace qor::adapter
