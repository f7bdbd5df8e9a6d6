#include "workbench/engine/core/Picture.h"

#include "workbench/engine/core/Image.h"

#include <array>
#include <atomic>
#include <string>

namespace qor::engine {

namespace {

std::atomic<std::uint64_t> _lastIdentity{0};

const std::array<float, 256>& decodeTable(PictureEncoding encoding) {
    const auto build = [](bool srgb) {
        std::array<float, 256> table{};
        for (std::size_t i = 0; i < table.size(); ++i) {
            const float unit = static_cast<float>(i) / 255.0F;
            table[i] = srgb ? linearFromSrgb(unit) : unit;
        }
        return table;
    };
    static const std::array<float, 256> srgb = build(true);
    static const std::array<float, 256> linear = build(false);
    return encoding == PictureEncoding::srgb ? srgb : linear;
}

Result<Done> checkSize(int width, int height, std::size_t values) {
    if (width < 1 || height < 1 || width > Picture::maxSide || height > Picture::maxSide)
        return Error{ErrorCode::invalidInput,
                     "picture: size " + std::to_string(width) + " x " + std::to_string(height)};
    if (values != static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 4)
        return Error{ErrorCode::invalidInput, "picture: " + std::to_string(values) +
                                                  " values for " + std::to_string(width) + " x " +
                                                  std::to_string(height) + " texels"};
    return Done{};
}

/// The texel that stands for number \p i of a row of \p size, which may lie beyond its ends.
int wrapped(int i, int size, TextureWrap wrap) {
    if (wrap == TextureWrap::clamp)
        return std::clamp(i, 0, size - 1);
    const int rest = i % size;
    return rest < 0 ? rest + size : rest;
}

Texel mix(const Texel& a, const Texel& b, float t) {
    return {lerp(a.color, b.color, t), a.alpha + (b.alpha - a.alpha) * t};
}

/// Texture coordinates far out lose their fraction; bringing them near 0 first also keeps integers
/// from overflowing.
float reduced(float value, TextureWrap wrap) {
    if (!std::isfinite(value))
        return 0.0F;
    if (wrap == TextureWrap::clamp)
        return std::clamp(value, -1.0F, 2.0F);
    const float turn = value - std::floor(value);
    if (wrap == TextureWrap::repeat)
        return turn;
    const float half = 0.5F * value;
    const float pair = 2.0F * (half - std::floor(half));
    return pair <= 1.0F ? pair : 2.0F - pair;
}

/// At its border a mirrored picture meets itself, so that it goes on with its last texels there.
TextureWrap afterReduction(TextureWrap wrap) {
    return wrap == TextureWrap::mirrored ? TextureWrap::clamp : wrap;
}

/// Texels of a row of \p size that one texel of half as many covers, with their shares of it.
struct Cover {
    int first = 0;
    int count = 0;
    std::array<float, 3> share{};
};

Cover coverOf(int i, int size, int halfSize) {
    const float width = static_cast<float>(size) / static_cast<float>(halfSize);
    const float from = static_cast<float>(i) * width;
    const float to = from + width;
    Cover cover;
    cover.first = static_cast<int>(from);
    for (std::size_t k = 0; k < cover.share.size() && cover.first + cover.count < size; ++k) {
        const float left = static_cast<float>(cover.first + static_cast<int>(k));
        const float inside = std::min(to, left + 1.0F) - std::max(from, left);
        if (!(inside > 0.0F))
            break;
        cover.share[k] = inside / width;
        ++cover.count;
    }
    return cover;
}

} // namespace

Result<PicturePtr>
Picture::create(int width, int height, std::vector<std::uint8_t> rgba, PictureEncoding encoding) {
    const Result<Done> checked = checkSize(width, height, rgba.size());
    if (!checked)
        return checked.error();
    return PicturePtr(new Picture({width, height, std::move(rgba), {}}, encoding));
}

Result<PicturePtr> Picture::create(int width, int height, std::vector<float> rgba) {
    const Result<Done> checked = checkSize(width, height, rgba.size());
    if (!checked)
        return checked.error();
    for (float& value : rgba)
        if (!std::isfinite(value))
            value = 0.0F;
    return PicturePtr(new Picture({width, height, {}, std::move(rgba)}, PictureEncoding::linear));
}

Picture::Picture(Level base, PictureEncoding encoding)
    : encoding_(encoding), identity_(++_lastIdentity) {
    for (std::size_t i = 3; i < base.bytes.size(); i += 4)
        opaque_ = opaque_ && base.bytes[i] == 255;
    for (std::size_t i = 3; i < base.floats.size(); i += 4)
        opaque_ = opaque_ && base.floats[i] >= 1.0F;
    levels_.push_back(std::move(base));
    buildLevels();
}

void Picture::buildLevels() {
    while (levels_.back().width > 1 || levels_.back().height > 1)
        levels_.push_back(halved(levels_.back()));
}

/// Averages in linear light, each texel by the area that it covers: pictures of any size keep
/// their mean.
Picture::Level Picture::halved(const Level& level) const {
    Level result{std::max(1, level.width / 2), std::max(1, level.height / 2), {}, {}};
    const bool isFloat = !level.floats.empty();
    const auto count =
        static_cast<std::size_t>(result.width) * static_cast<std::size_t>(result.height) * 4;
    result.floats.resize(isFloat ? count : 0);
    result.bytes.resize(isFloat ? 0 : count);
    std::size_t out = 0;
    for (int y = 0; y < result.height; ++y) {
        const Cover rows = coverOf(y, level.height, result.height);
        for (int x = 0; x < result.width; ++x, out += 4) {
            const Cover columns = coverOf(x, level.width, result.width);
            Texel sum{{}, 0.0F};
            for (int j = 0; j < rows.count; ++j)
                for (int i = 0; i < columns.count; ++i) {
                    const Texel t = fetch(level, columns.first + i, rows.first + j);
                    const float share = rows.share[static_cast<std::size_t>(j)] *
                                        columns.share[static_cast<std::size_t>(i)];
                    sum.color += t.color * share;
                    sum.alpha += t.alpha * share;
                }
            store(result, out, sum);
        }
    }
    return result;
}

void Picture::store(Level& level, std::size_t at, const Texel& texel) const {
    const std::array<float, 4> values{texel.color.x, texel.color.y, texel.color.z, texel.alpha};
    for (std::size_t channel = 0; channel < values.size(); ++channel) {
        const float value = values[channel];
        if (!level.floats.empty()) {
            level.floats[at + channel] = value;
            continue;
        }
        const bool coded = encoding_ == PictureEncoding::srgb && channel < 3;
        level.bytes[at + channel] =
            static_cast<std::uint8_t>((coded ? srgbFromLinear(value) : value) * 255.0F + 0.5F);
    }
}

std::size_t Picture::memory() const {
    std::size_t bytes = 0;
    for (const Level& level : levels_)
        bytes += level.bytes.size() + level.floats.size() * sizeof(float);
    return bytes;
}

Texel Picture::fetch(const Level& level, int x, int y) const {
    const std::size_t at = (static_cast<std::size_t>(y) * static_cast<std::size_t>(level.width) +
                            static_cast<std::size_t>(x)) *
                           4;
    if (!level.floats.empty()) {
        const float* f = level.floats.data() + at;
        return {{f[0], f[1], f[2]}, f[3]};
    }
    const auto& decode = decodeTable(encoding_);
    const std::uint8_t* b = level.bytes.data() + at;
    return {{decode[b[0]], decode[b[1]], decode[b[2]]}, static_cast<float>(b[3]) / 255.0F};
}

Texel Picture::bilinear(
    const Level& level, float u, float v, TextureWrap wrapU, TextureWrap wrapV) const {
    const float x = u * static_cast<float>(level.width) - 0.5F;
    const float y = v * static_cast<float>(level.height) - 0.5F;
    const float left = std::floor(x);
    const float top = std::floor(y);
    const int x0 = wrapped(static_cast<int>(left), level.width, wrapU);
    const int x1 = wrapped(static_cast<int>(left) + 1, level.width, wrapU);
    const int y0 = wrapped(static_cast<int>(top), level.height, wrapV);
    const int y1 = wrapped(static_cast<int>(top) + 1, level.height, wrapV);
    const Texel upper = mix(fetch(level, x0, y0), fetch(level, x1, y0), x - left);
    const Texel lower = mix(fetch(level, x0, y1), fetch(level, x1, y1), x - left);
    return mix(upper, lower, y - top);
}

Texel Picture::lookup(
    float u, float v, float footprint, TextureWrap wrapU, TextureWrap wrapV) const {
    const float inU = reduced(u, wrapU);
    const float inV = reduced(v, wrapV);
    wrapU = afterReduction(wrapU);
    wrapV = afterReduction(wrapV);
    const float texels = footprint * static_cast<float>(std::max(width(), height()));
    if (!(texels > 1.0F))
        return bilinear(levels_.front(), inU, inV, wrapU, wrapV);
    const float last = static_cast<float>(levels_.size() - 1);
    const float level = std::min(std::log2(texels), last);
    const auto lower = static_cast<std::size_t>(level);
    const Texel fine = bilinear(levels_[lower], inU, inV, wrapU, wrapV);
    const float rest = level - static_cast<float>(lower);
    if (rest == 0.0F)
        return fine;
    return mix(fine, bilinear(levels_[lower + 1], inU, inV, wrapU, wrapV), rest);
}

Texel Picture::lookup(float u, float v, float footprint) const {
    return lookup(u, v, footprint, TextureWrap::repeat, TextureWrap::repeat);
}

Texel Picture::lookupClamped(float u, float v, float footprint) const {
    return lookup(u, v, footprint, TextureWrap::clamp, TextureWrap::clamp);
}

} // namespace qor::engine
