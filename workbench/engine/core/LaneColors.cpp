#include "workbench/engine/core/LaneColors.h"

namespace qor::engine {

void addUp(const LaneColors& lanes, const Int8& pixels, BlockSums& sums) {
    const Float8 light = luminance(lanes.color);
    const Float8 squares = light * light;
    const auto add = [&](int pixel, float r, float g, float b, float a, float square) {
        float* rgba = sums.rgba.data() + static_cast<std::ptrdiff_t>(4) * pixel;
        rgba[0] += r;
        rgba[1] += g;
        rgba[2] += b;
        rgba[3] += a;
        sums.squares[static_cast<std::size_t>(pixel)] += square;
    };
    const Vec3x8& c = lanes.color;
    if (pixels[0] == pixels[packetWidth - 1])
        return add(pixels[0], sumOf(c.x), sumOf(c.y), sumOf(c.z), sumOf(lanes.alpha),
                   sumOf(squares));
    for (std::size_t i = 0; i < packetWidth; ++i)
        add(pixels[i], c.x[i], c.y[i], c.z[i], lanes.alpha[i], squares[i]);
}

void addUp(const LaneColors& lanes, const Int8& pixels, const Int8& asked, BlockSums& sums) {
    if (bitsOf(asked) == 0)
        return;
    LaneColors some;
    some.color = select(asked, lanes.color, Vec3x8{});
    some.alpha = asked ? lanes.alpha : Float8{};
    addUp(some, pixels, sums);
}

} // namespace qor::engine
