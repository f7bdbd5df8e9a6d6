#pragma once

#include "platform/text/QorString.h"
#include "platform/vis/QorPixelImage.h"

#include <array>

enum class QorTextureWrap : int { Repeat, MirroredRepeat, ClampToEdge };

/// What a texture of a material is multiplied with or perturbs. Channels: metallic in blue,
/// roughness and clearcoat roughness in green, occlusion, transmission and clearcoat in red.
enum class QorTextureSlot : int {
    BaseColor,
    MetallicRoughness,
    Normal,
    Occlusion,
    Emission,
    Transmission,
    Clearcoat,
    ClearcoatRoughness,
    ClearcoatNormal
};

inline constexpr std::size_t QorTextureSlotCount = 9;

/// A picture laid over a surface. A texture coordinate is scaled, then rotated counter-clockwise,
/// then moved; (0, 0) is the top left of the picture.
struct QorTextureUse {
    QorPixelImage_var image; ///< null for no texture
    int uvSet = 0;           ///< 0 or 1
    std::array<double, 2> offset{0.0, 0.0};
    std::array<double, 2> scale{1.0, 1.0};
    double rotation = 0.0; ///< radians
    QorTextureWrap wrapU = QorTextureWrap::Repeat;
    QorTextureWrap wrapV = QorTextureWrap::Repeat;
};

enum class QorAlphaMode : int { Opaque, Mask, Blend };

/// What a surface does with light, in the metallic-roughness model of glTF 2.0. Colours are linear.
/// Shared by the representations that show it. Whoever changes a material that a viewer shows calls
/// MarkModified once he is done.
class QorGraphicMaterial : public QorBaseUnknown {
    QorDeclareClass(QorGraphicMaterial)

    QorGraphicMaterial();

    void AddReference() { AddRef(); }

    void SubReference() { Release(); }

    /// Gives the maker's reference back.
    void Destroy() { Release(); }

    [[nodiscard]] const QorTextureUse& GetTexture(QorTextureSlot iSlot) const {
        return textures[static_cast<std::size_t>(iSlot)];
    }

    void SetTexture(QorTextureSlot iSlot, QorTextureUse iUse) {
        textures[static_cast<std::size_t>(iSlot)] = std::move(iUse);
    }

    /// Identity of the values: another one after MarkModified, never used again.
    [[nodiscard]] std::uint64_t GetContentId() const { return contentId; }

    void MarkModified();

    QorString name; ///< for people; may be empty
    float baseColor[4] = {0.8F, 0.8F, 0.8F, 1.0F};
    float metallic = 0.0F;
    float roughness = 0.5F;
    float transmission = 0.0F;
    float ior = 1.5F;                       ///< of the inside, 1..4
    float emission[3] = {0.0F, 0.0F, 0.0F}; ///< radiance
    float normalScale = 1.0F;
    float occlusionStrength = 1.0F;
    float clearcoat = 0.0F;
    float clearcoatRoughness = 0.0F;
    float clearcoatNormalScale = 1.0F;
    float thickness = 0.0F;           ///< millimetres; 0: a thin wall
    float attenuationDistance = 0.0F; ///< millimetres; 0: absorbs nothing
    float attenuationColor[3] = {1.0F, 1.0F, 1.0F};
    QorAlphaMode alphaMode = QorAlphaMode::Blend;
    float alphaCutoff = 0.5F;
    bool doubleSided = true;
    bool unlit = false;

protected:
    ~QorGraphicMaterial() override = default;

private:
    std::array<QorTextureUse, QorTextureSlotCount> textures;
    std::uint64_t contentId;
};
