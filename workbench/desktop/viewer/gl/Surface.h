#pragma once

#include "platform/vis/QorGraphicMaterial.h"
#include "workbench/desktop/viewer/gl/GlMath.h"

#include <array>
#include <memory>

class QOpenGLExtraFunctions;

namespace qor::desktop {

class GlProgram;
class TextureCache;
struct GpuTexture;

/// A material as the shaders take it. Glass is thin and bends nothing here.
class Surface {
public:
    /// Null gives the grey of things without a material.
    Surface(const QorGraphicMaterial* material, TextureCache& textures);

    /// Whether what is behind it shines through, so that it is drawn last.
    [[nodiscard]] bool isClear() const { return clear_; }

    /// Whether it is drawn with the program for textures.
    [[nodiscard]] bool hasTextures() const { return textured_; }

    /// Whether dark edges would be lost on it.
    [[nodiscard]] bool isDark() const;

    /// Sets \p program, which is in use, to this surface.
    void apply(GlProgram& program, QOpenGLExtraFunctions& gl) const;

private:
    static constexpr std::size_t mapCount = 5;

    /// A texture and how it lies on the surface.
    struct Map {
        std::shared_ptr<const GpuTexture> texture; ///< null for none
        QorTextureUse use;                         ///< without the picture
    };

    void applyMap(std::size_t index, GlProgram& program, QOpenGLExtraFunctions& gl) const;

    Float4 baseColor_{0.55F, 0.57F, 0.6F, 1.0F};
    Float4 finish_{0.0F, 0.5F, 0.0F, 0.0F};
    Float3 emission_{};
    float reflectance_ = 0.04F;
    float opacity_ = 1.0F;
    float alphaCutoff_ = -1.0F;
    float normalScale_ = 1.0F;
    float occlusionStrength_ = 1.0F;
    bool unlit_ = false;
    bool clear_ = false;
    bool textured_ = false;
    std::array<Map, mapCount> maps_;
};

} // namespace qor::desktop
