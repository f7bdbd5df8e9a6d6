#include "workbench/paint/PictureCache.h"

#include "workbench/paint/Images.h"

namespace qor::paint {

namespace {

template <class Map>
void letGoUnused(Map& map) {
    std::erase_if(map, [](const auto& entry) { return !entry.second.isUsed; });
    for (auto& entry : map)
        entry.second.isUsed = false;
}

} // namespace

const QImage& PictureCache::whole(const QorPixelImage& picture, bool isOpaque) {
    const auto [entry, isNew] = images_.try_emplace({picture.GetContentId(), isOpaque});
    if (isNew)
        entry->second.image = lend(picture, isOpaque);
    entry->second.isUsed = true;
    return entry->second.image;
}

bool PictureCache::isOpaque(const QorPixelImage& picture) {
    if (picture.GetChannels() != 4)
        return true;
    const auto [entry, isNew] = opacities_.try_emplace(picture.GetContentId());
    if (isNew)
        entry->second.isOpaque = areOpaque(*picture.GetPixels(), picture.GetChannels());
    entry->second.isUsed = true;
    return entry->second.isOpaque;
}

PlacedPicture PictureCache::placed(const PicturePlace& where,
                                   QorPixelImage& picture,
                                   const QRect& source,
                                   bool ignoresAlpha,
                                   const QSizeF& surface) {
    const QSize size = where.place.size();
    const bool shrinks = size.width() < source.width() || size.height() < source.height();
    // What reaches far beyond the surface would be a picture larger than that.
    if (!shrinks || size.width() > surface.width() || size.height() > surface.height())
        return {&picture, source, where.place, ignoresAlpha || isOpaque(picture)};
    const Proxy proxy = proxies_->get(where, picture, source, ignoresAlpha);
    if (!proxy.picture)
        return {};
    return {proxy.picture,
            {0, 0, proxy.picture->GetWidth(), proxy.picture->GetHeight()},
            where.place,
            proxy.isOpaque};
}

void PictureCache::endFrame() {
    letGoUnused(images_);
    letGoUnused(opacities_);
    proxies_->endFrame();
}

} // namespace qor::paint
