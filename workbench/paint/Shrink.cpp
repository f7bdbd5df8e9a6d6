#include "workbench/paint/Shrink.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qor::paint {

namespace {

constexpr std::size_t sums = 4; ///< of a pixel: three colours times their alpha, and alpha
constexpr float full = 255.0F;

/// Pixels along one side of the source that a pixel of the target covers: the first and the last
/// in part.
struct Span {
    int first = 0;
    int last = 0;
    float firstWeight = 1.0F;
    float lastWeight = 1.0F;

    [[nodiscard]] float weightOf(int at) const {
        return at == first ? firstWeight : at == last ? lastWeight : 1.0F;
    }
};

/// \p offset: of the source's side in the picture.
Span spanOf(int index, int targetLength, int sourceLength, int offset) {
    const double step = static_cast<double>(sourceLength) / targetLength;
    const double from = index * step;
    const double to = std::min<double>((index + 1) * step, sourceLength);
    Span span;
    span.first = std::min(static_cast<int>(from), sourceLength - 1);
    span.last = std::clamp(static_cast<int>(std::ceil(to)) - 1, span.first, sourceLength - 1);
    if (span.first < span.last) {
        span.firstWeight = static_cast<float>(span.first + 1 - from);
        span.lastWeight = static_cast<float>(to - span.last);
    }
    span.first += offset;
    span.last += offset;
    return span;
}

std::vector<Span> spansOf(int targetLength, int sourceLength, int offset) {
    std::vector<Span> spans;
    spans.reserve(static_cast<std::size_t>(targetLength));
    for (int i = 0; i < targetLength; ++i)
        spans.push_back(spanOf(i, targetLength, sourceLength, offset));
    return spans;
}

/// How pixels lie in memory, and whether their alpha counts.
template <int ChannelCount, bool UsesAlpha>
struct Layout {
    static constexpr int channels = ChannelCount;
    static constexpr bool hasAlpha = UsesAlpha;
};

template <class Layout>
void addPixel(const std::uint8_t* pixel, float weight, float* target) {
    if constexpr (Layout::hasAlpha)
        weight *= static_cast<float>(pixel[3]);
    target[0] += weight * static_cast<float>(pixel[0]);
    target[1] += weight * static_cast<float>(pixel[1]);
    target[2] += weight * static_cast<float>(pixel[2]);
    target[3] += weight;
}

/// Adds a row of the source to the sums of a row of the target.
template <class Layout>
void addRow(const std::uint8_t* row,
            const std::vector<Span>& columns,
            float weight,
            std::vector<float>& ioSums) {
    float* target = ioSums.data();
    for (const Span& span : columns) {
        std::array<float, sums> sum{};
        addPixel<Layout>(row + span.first * Layout::channels, span.firstWeight, sum.data());
        for (int x = span.first + 1; x < span.last; ++x)
            addPixel<Layout>(row + x * Layout::channels, 1.0F, sum.data());
        if (span.last > span.first)
            addPixel<Layout>(row + span.last * Layout::channels, span.lastWeight, sum.data());
        for (const float one : sum)
            *target++ += weight * one;
    }
}

std::uint8_t rounded(float value) {
    return static_cast<std::uint8_t>(std::min(value + 0.5F, full));
}

float lengthOf(const Span& span) {
    return span.first == span.last ? span.firstWeight
                                   : span.firstWeight + span.lastWeight +
                                         static_cast<float>(span.last - span.first - 1);
}

/// The means, from their sums.
template <class Layout>
void writeRow(const std::vector<float>& rowSums,
              const std::vector<Span>& columns,
              const Span& rows,
              std::uint8_t* target) {
    const float* sum = rowSums.data();
    for (const Span& span : columns) {
        const float share = sum[3] > 0.0F ? 1.0F / sum[3] : 0.0F;
        for (int channel = 0; channel < 3; ++channel)
            *target++ = rounded(sum[channel] * share);
        if constexpr (Layout::hasAlpha)
            *target++ = rounded(sum[3] / (lengthOf(span) * lengthOf(rows)));
        else if constexpr (Layout::channels == 4)
            *target++ = 255;
        sum += sums;
    }
}

std::shared_ptr<QorPixelImage::Pixels> makePixels(const QSize& size, int channels) {
    return std::make_shared<QorPixelImage::Pixels>(static_cast<std::size_t>(size.width()) *
                                                   static_cast<std::size_t>(size.height()) *
                                                   static_cast<std::size_t>(channels));
}

const std::uint8_t* rowOf(const PicturePart& part, int y) {
    return part.pixels->data() + static_cast<std::size_t>(y) *
                                     static_cast<std::size_t>(part.width) *
                                     static_cast<std::size_t>(part.channels);
}

template <class Layout>
SharedPixels shrinkPart(const PicturePart& part, const QSize& size) {
    const std::vector<Span> columns = spansOf(size.width(), part.source.width(), part.source.x());
    const std::vector<Span> rows = spansOf(size.height(), part.source.height(), part.source.y());
    auto made = makePixels(size, Layout::channels);
    std::vector<float> rowSums(columns.size() * sums);
    std::uint8_t* target = made->data();
    for (const Span& span : rows) {
        std::fill(rowSums.begin(), rowSums.end(), 0.0F);
        for (int y = span.first; y <= span.last; ++y)
            addRow<Layout>(rowOf(part, y), columns, span.weightOf(y), rowSums);
        writeRow<Layout>(rowSums, columns, span, target);
        target += columns.size() * Layout::channels;
    }
    return made;
}

} // namespace

SharedPixels shrink(const PicturePart& part, const QSize& size) {
    if (part.channels == 3)
        return shrinkPart<Layout<3, false>>(part, size);
    return part.ignoresAlpha ? shrinkPart<Layout<4, false>>(part, size)
                             : shrinkPart<Layout<4, true>>(part, size);
}

SharedPixels thin(const PicturePart& part, const QSize& size) {
    const auto channels = static_cast<std::size_t>(part.channels);
    std::vector<std::size_t> columns;
    for (const Span& span : spansOf(size.width(), part.source.width(), part.source.x()))
        columns.push_back(static_cast<std::size_t>((span.first + span.last) / 2) * channels);
    auto made = makePixels(size, part.channels);
    std::uint8_t* target = made->data();
    for (const Span& span : spansOf(size.height(), part.source.height(), part.source.y())) {
        const std::uint8_t* row = rowOf(part, (span.first + span.last) / 2);
        for (const std::size_t column : columns)
            target = std::copy_n(row + column, channels, target);
    }
    return made;
}

bool areOpaque(const QorPixelImage::Pixels& pixels, int channels) {
    if (channels != 4)
        return true;
    constexpr std::size_t block = 4096; // bytes to look at before the next decision
    for (std::size_t from = 0; from < pixels.size(); from += block) {
        const std::size_t to = std::min(from + block, pixels.size());
        unsigned both = 255U;
        for (std::size_t i = from + 3; i < to; i += 4)
            both &= pixels[i];
        if (both != 255U)
            return false;
    }
    return true;
}

} // namespace qor::paint
