#pragma once

#include "platform/vis/QorPixelImage.h"

#include <QImage>

#include <compare>
#include <cstdint>
#include <map>

namespace qor::paint {

/// Pictures as Qt draws them, found by the identity of their pixels. Pixels are shared, not copied;
/// a picture stays the same QImage from frame to frame, so that what Qt keeps for it (a texture)
/// stays too. What a frame did not use is let go at its end. One cache a surface, one thread.
class PictureCache {
public:
    /// The whole picture. Good until the end of the next frame.
    [[nodiscard]] const QImage& whole(const QorPixelImage& picture, bool isOpaque);
    /// The part \p source of it, smoothly brought to a size that is smaller.
    [[nodiscard]] const QImage&
    shrunk(const QorPixelImage& picture, bool isOpaque, const QRect& source, const QSize& size);

    void endFrame();

    [[nodiscard]] std::size_t count() const { return entries_.size(); }

private:
    struct Key {
        std::uint64_t content = 0;
        bool isOpaque = false;
        int x = 0, y = 0, width = 0, height = 0; ///< of the source; zeros for the whole
        int targetWidth = 0, targetHeight = 0;
        auto operator<=>(const Key&) const = default;
    };

    struct Entry {
        QImage image;
        bool isUsed = true;
    };

    template <class Make>
    const QImage& find(const Key& key, const Make& make);

    std::map<Key, Entry> entries_;
};

} // namespace qor::paint
