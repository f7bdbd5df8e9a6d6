#include "workbench/paint/Proxies.h"

#include <QCoreApplication>
#include <QThreadPool>

#include <algorithm>
#include <new>

namespace qor::paint {

namespace {

/// Up to so many pixels are brought to another size on the way: a millisecond or two.
constexpr std::int64_t fewPixels = std::int64_t{512} * 512;

bool isSmall(const QRect& source) {
    return std::int64_t{source.width()} * source.height() <= fewPixels;
}

} // namespace

Proxies::Entry* Proxies::find(const Key& key) {
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
        return !entry.isCoarse && entry.key == key;
    });
    return found != entries_.end() ? &*found : nullptr;
}

/// What was shown in that place before, or of that picture in another size; the newest.
Proxies::Entry* Proxies::findStandIn(const PicturePlace& where, const Key& key) {
    const auto found = std::find_if(entries_.rbegin(), entries_.rend(), [&](const Entry& entry) {
        return entry.where.viewpoint == where.viewpoint &&
               (entry.where.place == where.place || entry.key.content == key.content);
    });
    return found != entries_.rend() ? &*found : nullptr;
}

/// Makes the pixels; false when memory is short. On any thread.
bool Proxies::fill(Entry& entry, const PicturePart& part) try {
    entry.pixels = entry.isCoarse ? thin(part, entry.key.size) : shrink(part, entry.key.size);
    entry.channels = part.channels;
    entry.isOpaque = part.ignoresAlpha || areOpaque(*entry.pixels, part.channels);
    return true;

} catch (const std::bad_alloc&) {

    return false;
}

/// The picture itself is made here: its identity is for one thread to give.
Proxy Proxies::keep(Entry entry) {
    const QSize& size = entry.key.size;
    entry.picture = QorMake<QorPixelImage>(size.width(), size.height(), entry.channels,
                                           std::move(entry.pixels));
    entries_.push_back(std::move(entry));
    return entries_.back().proxy();
}

Proxy Proxies::get(const PicturePlace& where,
                   const QorPixelImage& picture,
                   const QRect& source,
                   bool ignoresAlpha) {
    Entry wanted;
    wanted.where = where;
    wanted.key = {picture.GetContentId(), source, where.place.size(), ignoresAlpha};
    if (Entry* known = find(wanted.key))
        return known->use();
    const PicturePart part{picture.GetPixels(), picture.GetWidth(), picture.GetChannels(), source,
                           ignoresAlpha};
    if (isExact_ || !onReady || isSmall(source))
        return fill(wanted, part) ? keep(std::move(wanted)) : Proxy();
    hire(wanted, part);
    if (Entry* standIn = findStandIn(where, wanted.key))
        return standIn->use();
    wanted.isCoarse = true;
    return fill(wanted, part) ? keep(std::move(wanted)) : Proxy();
}

/// One worker a viewpoint: what has become old meanwhile is not made at all.
void Proxies::hire(const Entry& wanted, const PicturePart& part) {
    const void* const viewpoint = wanted.where.viewpoint;
    if (std::find(jobs_.begin(), jobs_.end(), viewpoint) != jobs_.end())
        return;
    jobs_.push_back(viewpoint);
    QThreadPool::globalInstance()->start(
        [self = weak_from_this(), made = wanted, part = PicturePart(part)]() mutable {
            const bool isMade = fill(made, part);
            part = {}; // here: a large picture takes a while to go
            const auto deliver = [self, made, isMade] {
                if (const auto alive = self.lock())
                    alive->arrive(made, isMade);
            };
            QMetaObject::invokeMethod(QCoreApplication::instance(), deliver, Qt::QueuedConnection);
        });
}

void Proxies::arrive(const Entry& made, bool isMade) {
    std::erase(jobs_, made.where.viewpoint);
    if (!isMade)
        return; // what stands for it stays
    if (find(made.key) == nullptr)
        keep(made);
    const auto hook = onReady;
    if (hook)
        hook();
}

void Proxies::endFrame() {
    std::erase_if(entries_, [](const Entry& entry) { return !entry.isUsed; });
    for (Entry& entry : entries_)
        entry.isUsed = false;
}

} // namespace qor::paint
