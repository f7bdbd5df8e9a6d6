#pragma once

#include "workbench/paint/Shrink.h"

#include <QRect>

#include <functional>
#include <memory>
#include <vector>

namespace qor::paint {

/// Where a picture is drawn.
struct PicturePlace {
    const void* viewpoint = nullptr; ///< whose picture it is; only compared
    QRect place;                     ///< device pixels, not empty
};

/// Stands for a picture on the screen: of the size in which it is drawn, or near it.
struct Proxy {
    QorPixelImage_var picture;
    bool isOpaque = false;
};

/// Pictures in the size in which a screen shows them, where that is smaller than they are. Making
/// one takes a while, so workers do it; until it is there, what was shown in its place before goes
/// on, or what can be had at once. One thread, but for the workers.
class Proxies : public std::enable_shared_from_this<Proxies> {
public:
    /// Called when a proxy is ready that get() has been asked for. Without it, and where a picture
    /// is small, get() makes proxies itself. The event loop of the application brings it.
    std::function<void()> onReady;

    /// Of the part \p source of a picture, counted from the upper left. Null when memory is short.
    [[nodiscard]] Proxy get(const PicturePlace& where,
                            const QorPixelImage& picture,
                            const QRect& source,
                            bool ignoresAlpha);

    /// While it is exact, get() gives what has been asked for and nothing that stands for it.
    void setExact(bool isExact) { isExact_ = isExact; }

    /// Lets go what no frame has used since the last end.
    void endFrame();

    /// How many are kept, and how many workers are busy.
    [[nodiscard]] std::size_t count() const { return entries_.size(); }

    [[nodiscard]] std::size_t busy() const { return jobs_.size(); }

private:
    struct Key {
        std::uint64_t content = 0;
        QRect source;
        QSize size;
        bool ignoresAlpha = false;
        bool operator==(const Key&) const = default;
    };

    struct Entry {
        PicturePlace where;
        Key key;
        SharedPixels pixels; ///< until they are a picture
        int channels = 0;
        QorPixelImage_var picture;
        bool isOpaque = false;
        bool isCoarse = false; ///< stands for the one that is wanted
        bool isUsed = true;

        [[nodiscard]] Proxy proxy() const { return {picture, isOpaque}; }

        [[nodiscard]] Proxy use() {
            isUsed = true;
            return proxy();
        }
    };

    [[nodiscard]] static bool fill(Entry& entry, const PicturePart& part);
    [[nodiscard]] Entry* find(const Key& key);
    [[nodiscard]] Entry* findStandIn(const PicturePlace& where, const Key& key);
    Proxy keep(Entry entry);
    void hire(const Entry& wanted, const PicturePart& part);
    void arrive(const Entry& made, bool isMade);

    std::vector<Entry> entries_;    ///< the newest last
    std::vector<const void*> jobs_; ///< viewpoints for which a worker is busy, one each
    bool isExact_ = false;
};

} // namespace qor::paint
