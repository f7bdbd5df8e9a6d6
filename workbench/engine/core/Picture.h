#pragma once

#include "workbench/engine/core/Result.h"
#include "workbench/engine/core/Vec.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace qor::engine {

/// How the bytes of a picture are to be read.
enum class PictureEncoding {
    srgb,   ///< colours as pictures on screens hold them
    linear, ///< numbers as they are: normals, roughness, masks
};

/// How a picture goes on beyond its border.
enum class TextureWrap { repeat, mirrored, clamp };

/// Four floats a texel: linear red, green, blue and straight alpha.
struct Texel {
    Color color;
    float alpha = 1.0F;
};

/// A picture that never changes, top row first, with its mip levels, shared by materials and
/// scenes. All functions may be called from any thread.
class Picture {
public:
    /// Largest side that is accepted.
    static constexpr int maxSide = 65536;

    /// From 8-bit RGBA, \p width × \p height × 4 bytes. Fails with invalidInput when sizes do not
    /// fit.
    static Result<std::shared_ptr<const Picture>>
    create(int width, int height, std::vector<std::uint8_t> rgba, PictureEncoding encoding);
    /// From linear RGBA floats, for environments; values that are not finite become 0.
    static Result<std::shared_ptr<const Picture>>
    create(int width, int height, std::vector<float> rgba);

    /// Different for every picture made by this process.
    std::uint64_t identity() const { return identity_; }

    int width() const { return levels_.front().width; }

    int height() const { return levels_.front().height; }

    std::size_t memory() const;

    /// Whether every texel's alpha is 1.
    bool isOpaque() const { return opaque_; }

    /// The texel of column \p x and row \p y of the full picture, both inside it.
    Texel texel(int x, int y) const { return fetch(levels_.front(), x, y); }

    /// The picture seen through a square of \p footprint (in units of the whole picture) around (\p
    /// u, \p v), repeated in both directions; trilinear. (0, 0) is the top left corner.
    Texel lookup(float u, float v, float footprint) const;

    /// The same with a choice of what lies beyond the border in each direction.
    Texel lookup(float u, float v, float footprint, TextureWrap wrapU, TextureWrap wrapV) const;

    /// The same, not repeated: beyond the border the border's texels go on.
    Texel lookupClamped(float u, float v, float footprint) const;

private:
    struct Level {
        int width = 0;
        int height = 0;
        std::vector<std::uint8_t> bytes;
        std::vector<float> floats;
    };

    Picture(Level base, PictureEncoding encoding);
    void buildLevels();
    Level halved(const Level& level) const;
    void store(Level& level, std::size_t at, const Texel& texel) const;
    Texel fetch(const Level& level, int x, int y) const;
    Texel
    bilinear(const Level& level, float u, float v, TextureWrap wrapU, TextureWrap wrapV) const;

    std::vector<Level> levels_;
    PictureEncoding encoding_;
    std::uint64_t identity_;
    bool opaque_ = true;
};

using PicturePtr = std::shared_ptr<const Picture>;

} // namespace qor::engine
