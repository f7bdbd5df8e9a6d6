#pragma once

#include "workbench/paint/Proxies.h"

#include <QImage>

#include <map>

namespace qor::paint {

/// What is drawn at a place: a part of a picture, counted from its upper left.
struct PlacedPicture {
    QorPixelImage_var picture; ///< null when there is nothing to draw
    QRect source;
    QRect place; ///< device pixels
    bool isOpaque = false;

    /// Whether a pixel of the picture is one of the screen.
    [[nodiscard]] bool isExact() const { return source.size() == place.size(); }
};

/// Pictures as they are drawn, found by the identity of their pixels. Those that are larger than
/// their place are drawn from proxies. Pixels are shared, not copied; a picture stays the same
/// QImage from frame to frame, so that what Qt keeps for it (a texture) stays too. What a frame did
/// not use is let go at its end. One cache a surface, one thread.
class PictureCache {
public:
    PictureCache() : proxies_(std::make_shared<Proxies>()) {}

    /// The whole picture. Good until the end of the next frame.
    [[nodiscard]] const QImage& whole(const QorPixelImage& picture, bool isOpaque);

    /// What to draw of the part \p source of a picture on a surface.
    [[nodiscard]] PlacedPicture placed(const PicturePlace& where,
                                       QorPixelImage& picture,
                                       const QRect& source,
                                       bool ignoresAlpha,
                                       const QSizeF& surface);

    [[nodiscard]] Proxies& proxies() { return *proxies_; }

    void endFrame();

    [[nodiscard]] std::size_t count() const { return images_.size() + proxies_->count(); }

private:
    struct Image {
        QImage image;
        bool isUsed = true;
    };

    struct Opacity {
        bool isOpaque = false;
        bool isUsed = true;
    };

    [[nodiscard]] bool isOpaque(const QorPixelImage& picture);

    std::map<std::pair<std::uint64_t, bool>, Image> images_; ///< by content, whether alpha counts
    std::map<std::uint64_t, Opacity> opacities_;
    std::shared_ptr<Proxies> proxies_;
};

} // namespace qor::paint
