#pragma once

#include "workbench/engine/core/Render.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace qor::adapter {

/// Opaque sRGB pixels, four bytes each, top row first; transparent beside the region of a render.
struct MadePicture {
    int width = 0;
    int height = 0;
    std::shared_ptr<const std::vector<std::uint8_t>> rgba;

    explicit operator bool() const { return rgba != nullptr; }
};

/// Makes pictures of a running render, a band of rows at a time, so that they take little memory
/// beside the pixels. Throws std::bad_alloc.
class PictureMaker {
public:
    explicit PictureMaker(const engine::RenderOptions& options);

    /// All pixels as they are now.
    MadePicture whole(const engine::Render& render) const;
    /// The same for a screen: large pictures are made smaller by a whole factor.
    MadePicture forScreen(const engine::Render& render) const;

    /// Whether forScreen gives the whole picture.
    bool fitsScreen() const { return screenFactor_ == 1; }

private:
    MadePicture make(const engine::Render& render, int factor) const;
    void
    addBand(const engine::Image& band, int top, int factor, std::vector<std::uint8_t>& rgba) const;

    int width_;
    int height_;
    int left_; ///< region, rows from the top
    int top_;
    int right_;
    int bottom_;
    int screenFactor_;
};

} // namespace qor::adapter
