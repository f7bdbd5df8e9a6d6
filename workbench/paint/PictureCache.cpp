#include "workbench/paint/PictureCache.h"

#include "workbench/paint/Images.h"

namespace qor::paint {

template <class Make>
const QImage& PictureCache::find(const Key& key, const Make& make) {
    const auto [entry, isNew] = entries_.try_emplace(key);
    if (isNew)
        entry->second.image = make();
    entry->second.isUsed = true;
    return entry->second.image;
}

const QImage& PictureCache::whole(const QorPixelImage& picture, bool isOpaque) {
    const Key key{.content = picture.GetContentId(), .isOpaque = isOpaque};
    return find(key, [&] { return lend(picture, isOpaque); });
}

const QImage& PictureCache::shrunk(const QorPixelImage& picture,
                                   bool isOpaque,
                                   const QRect& source,
                                   const QSize& size) {
    const Key key{picture.GetContentId(), isOpaque,        source.x(),   source.y(),
                  source.width(),         source.height(), size.width(), size.height()};
    return find(key, [&] {
        return lend(picture, isOpaque)
            .copy(source)
            .scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    });
}

void PictureCache::endFrame() {
    std::erase_if(entries_, [](const auto& entry) { return !entry.second.isUsed; });
    for (auto& entry : entries_)
        entry.second.isUsed = false;
}

} // namespace qor::paint
