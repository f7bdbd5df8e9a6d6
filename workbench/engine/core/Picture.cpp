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

int wrap(int i, int size, bool repeat) {
    if (!repeat)
        return std::clamp(i, 0, size - 1);
    const int rest = i % size;
    return rest < 0 ? rest + size : rest;
}

Texel mix(const Texel& a, const Texel& b, float t) {
    return {lerp(a.color, b.color, t), a.alpha + (b.alpha - a.alpha) * t};
}

/// Texture coordinates far out lose their fraction; bringing them near 0 first also keeps integers
/// from overflowing.
float reduced(float value, bool repeat) {
    if (!std::isfinite(value))
        return 0.0F;
    return repeat ? value - std::floor(value) : std::clamp(value, -1.0F, 2.0F);
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

/// Averages in linear light; an odd last row or column is counted twice.
Picture::Level Picture::halved(const Level& level) const {
    Level result{std::max(1, level.width / 2), std::max(1, level.height / 2), {}, {}};
    const bool isFloat = !level.floats.empty();
    const auto count =
        static_cast<std::size_t>(result.width) * static_cast<std::size_t>(result.height) * 4;
    result.floats.resize(isFloat ? count : 0);
    result.bytes.resize(isFloat ? 0 : count);
    std::size_t out = 0;
    for (int y = 0; y < result.height; ++y)
        for (int x = 0; x < result.width; ++x) {
            Texel sum{{}, 0.0F};
            for (int corner = 0; corner < 4; ++corner) {
                const int sx = std::min(2 * x + (corner & 1), level.width - 1);
                const int sy = std::min(2 * y + (corner >> 1), level.height - 1);
                const Texel t = fetch(level, sx, sy);
                sum.color += t.color * 0.25F;
                sum.alpha += t.alpha * 0.25F;
            }
            const std::array<float, 4> values{sum.color.x, sum.color.y, sum.color.z, sum.alpha};
            for (std::size_t channel = 0; channel < 4; ++channel, ++out) {
                const float value = values[channel];
                if (isFloat)
                    result.floats[out] = value;
                else
                    result.bytes[out] = static_cast<std::uint8_t>(
                        (encoding_ == PictureEncoding::srgb && channel < 3 ? srgbFromLinear(value)
                                                                           : value) *
                            255.0F +
                        0.5F);
            }
        }
    return result;
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

Texel Picture::bilinear(const Level& level, float u, float v, bool repeat) const {
    const float x = u * static_cast<float>(level.width) - 0.5F;
    const float y = v * static_cast<float>(level.height) - 0.5F;
    const float left = std::floor(x);
    const float top = std::floor(y);
    const int x0 = wrap(static_cast<int>(left), level.width, repeat);
    const int x1 = wrap(static_cast<int>(left) + 1, level.width, repeat);
    const int y0 = wrap(static_cast<int>(top), level.height, repeat);
    const int y1 = wrap(static_cast<int>(top) + 1, level.height, repeat);
    const Texel upper = mix(fetch(level, x0, y0), fetch(level, x1, y0), x - left);
    const Texel lower = mix(fetch(level, x0, y1), fetch(level, x1, y1), x - left);
    return mix(upper, lower, y - top);
}

Texel Picture::trilinear(float u, float v, float footprint, bool repeat) const {
    const float inU = reduced(u, repeat);
    const float inV = reduced(v, repeat);
    const float texels = footprint * static_cast<float>(std::max(width(), height()));
    if (!(texels > 1.0F))
        return bilinear(levels_.front(), inU, inV, repeat);
    const float last = static_cast<float>(levels_.size() - 1);
    const float level = std::min(std::log2(texels), last);
    const auto lower = static_cast<std::size_t>(level);
    const Texel fine = bilinear(levels_[lower], inU, inV, repeat);
    const float rest = level - static_cast<float>(lower);
    if (rest == 0.0F)
        return fine;
    return mix(fine, bilinear(levels_[lower + 1], inU, inV, repeat), rest);
}

Texel Picture::lookup(float u, float v, float footprint) const {
    return trilinear(u, v, footprint, true);
}

Texel Picture::lookupClamped(float u, float v, float footprint) const {
    return trilinear(u, v, footprint, false);
}

} // namespace qor::engine
