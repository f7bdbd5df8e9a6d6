#pragma once

#include "platform/vis/QorPixelImage.h"
#include "workbench/desktop/viewer/gl/GlObjects.h"

#include <cstdint>
#include <map>
#include <memory>

namespace qor::desktop {

struct GpuTexture {
    GlTexture texture;
    bool hasAlpha = false;
};

/// Pictures in the memory of the graphics card, by their content: each is uploaded once, straight
/// from its own pixels, and goes with the last who draws it. One cache may serve all contexts that
/// share their objects; one of them is current.
class TextureCache {
public:
    /// What a picture is for: a map of a material with numbers as they are or sRGB-coded colours,
    /// seen at any size; or a picture that is shown as it is.
    enum class Use { Numbers, Colors, Shown };

    /// Null for an empty picture. Changes what is bound to the active unit.
    [[nodiscard]] std::shared_ptr<const GpuTexture> get(const QorPixelImage& image, Use use);

    [[nodiscard]] std::size_t uploads() const { return uploads_; }

private:
    using Key = std::pair<std::uint64_t, Use>;

    void upload(const QorPixelImage& image, Use use);

    std::map<Key, std::weak_ptr<const GpuTexture>> textures_;
    std::size_t uploads_ = 0;
};

} // namespace qor::desktop
