#include "workbench/engine/core/SurfaceTextures.h"

#include "workbench/engine/core/Image.h"

namespace qor::engine {

namespace {

Vec2 turned(const Texture& texture, const Vec2& uv) {
    const Vec2 scaled{uv.x * texture.scale.x, uv.y * texture.scale.y};
    if (texture.rotationRad == 0.0F)
        return scaled;
    const float c = std::cos(texture.rotationRad);
    const float s = std::sin(texture.rotationRad);
    return {c * scaled.x + s * scaled.y, c * scaled.y - s * scaled.x};
}

Vec2 difference(const Vec2& a, const Vec2& b) {
    return {a.x - b.x, a.y - b.y};
}

/// A hit on one texture.
struct Spot {
    Vec2 uv;
    Vec2 along1; ///< of the triangle's first edge on the picture
    Vec2 along2;

    float area() const { return along1.x * along2.y - along1.y * along2.x; }
};

/// Reads the textures of one hit.
class Reader {
public:
    Reader(const CompiledInstance& instance, const TrianglePlace& place, const Surface& surface)
        : place_(place) {
        const auto& p = place.mesh.positions;
        edge1_ = instance.transform.vector(p[place.corners[1]] - p[place.corners[0]]);
        edge2_ = instance.transform.vector(p[place.corners[2]] - p[place.corners[0]]);
        const float area = length(cross(edge1_, edge2_));
        const float slant = std::max(0.25F, std::abs(dot(surface.geometricNormal, surface.toEye)));
        footprint_ = area > 0.0F ? surface.footprint / (std::sqrt(area) * slant) : 0.0F;
    }

    /// A texture's texel, white where there is no picture.
    Texel texel(const Texture& texture) const {
        const std::vector<Vec2>* set = coordinates(texture);
        return set != nullptr ? look(texture, spot(texture, *set)) : Texel{{1.0F, 1.0F, 1.0F}};
    }

    /// Alpha without the smoothing of distance: what is cut out by a mask must keep its outline.
    float sharpAlpha(const Texture& texture) const {
        const std::vector<Vec2>* set = coordinates(texture);
        if (set == nullptr)
            return 1.0F;
        const Vec2 uv = spot(texture, *set).uv;
        return texture.picture->lookup(uv.x, uv.y, 0.0F, texture.wrapU, texture.wrapV).alpha;
    }

    /// \p normal, on the side of the eye, bent by a texture. The bumps of a surface seen from
    /// behind are its dents.
    Vec3 bent(const Texture& texture, float scale, const Vec3& normal, bool frontFace) const {
        const std::vector<Vec2>* set = coordinates(texture);
        if (set == nullptr)
            return normal;
        const Spot at = spot(texture, *set);
        const float sign = at.area() < 0.0F ? -1.0F : 1.0F;
        const Vec3 front = frontFace ? normal : -normal;
        const Vec3 alongU = (edge1_ * at.along2.y - edge2_ * at.along1.y) * sign;
        const Vec3 alongV = (edge2_ * at.along1.x - edge1_ * at.along2.x) * sign;
        const Vec3 flat = alongU - front * dot(front, alongU);
        if (at.area() == 0.0F || !(length(flat) > 0.0F))
            return normal;
        const Vec3 tangent = normalize(flat);
        // v counts downwards, +y of the picture's normals is upwards.
        const Vec3 side = cross(front, tangent);
        const Vec3 upwards = dot(side, alongV) > 0.0F ? -side : side;
        const Color c = look(texture, at).color;
        const Vec3 result = tangent * ((2.0F * c.x - 1.0F) * scale) +
                            upwards * ((2.0F * c.y - 1.0F) * scale) + front * (2.0F * c.z - 1.0F);
        const float size = length(result);
        return size > 0.0F ? result / (frontFace ? size : -size) : normal;
    }

private:
    const std::vector<Vec2>* coordinates(const Texture& texture) const {
        if (!texture.picture)
            return nullptr;
        const MeshData& mesh = place_.mesh;
        const bool second = texture.uvSet == 1 && !mesh.secondTextureCoordinates.empty();
        const auto& set = second ? mesh.secondTextureCoordinates : mesh.textureCoordinates;
        return set.empty() ? nullptr : &set;
    }

    Spot spot(const Texture& texture, const std::vector<Vec2>& set) const {
        const auto& c = place_.corners;
        const Vec2 uv = turned(texture, place_.mix(set));
        return {{uv.x + texture.offset.x, uv.y + texture.offset.y},
                turned(texture, difference(set[c[1]], set[c[0]])),
                turned(texture, difference(set[c[2]], set[c[0]]))};
    }

    Texel look(const Texture& texture, const Spot& at) const {
        return texture.picture->lookup(at.uv.x, at.uv.y,
                                       footprint_ * std::sqrt(std::abs(at.area())), texture.wrapU,
                                       texture.wrapV);
    }

    const TrianglePlace& place_;
    Vec3 edge1_;
    Vec3 edge2_;
    float footprint_ = 0.0F; ///< over the root of the triangle's area (twice, as everywhere here)
};

float decoded(std::uint8_t value) {
    static const std::array<float, 256> table = [] {
        std::array<float, 256> result{};
        for (std::size_t i = 0; i < result.size(); ++i)
            result[i] = linearFromSrgb(static_cast<float>(i) / 255.0F);
        return result;
    }();
    return table[value];
}

} // namespace

void applyTextures(const CompiledInstance& instance,
                   const TrianglePlace& place,
                   const CompiledMaterial& material,
                   Surface& surface) {
    const Reader reader(instance, place, surface);
    const Material& source = material.material;
    SurfaceMaterial& m = surface.material;
    const Texel base = reader.texel(source.baseTexture);
    m.baseColor *= base.color;
    if (source.alphaMode != AlphaMode::opaque)
        m.opacity *= source.alphaMode == AlphaMode::mask ? reader.sharpAlpha(source.baseTexture)
                                                         : base.alpha;
    const Color reflector = reader.texel(source.metallicRoughnessTexture).color;
    m.roughness *= reflector.y;
    m.metallic *= reflector.z;
    m.emission *= reader.texel(source.emissionTexture).color;
    m.transmission *= reader.texel(source.transmissionTexture).color.x;
    m.clearcoat *= reader.texel(source.clearcoatTexture).color.x;
    m.clearcoatRoughness *= reader.texel(source.clearcoatRoughnessTexture).color.y;
    m.occlusion += source.occlusionStrength * (reader.texel(source.occlusionTexture).color.x - 1);
    const Vec3 normal = surface.normal;
    surface.normal =
        reader.bent(source.normalTexture, source.normalScale, normal, surface.frontFace);
    surface.coatNormal = reader.bent(source.clearcoatNormalTexture, source.clearcoatNormalScale,
                                     normal, surface.frontFace);
}

void applyCornerColors(const TrianglePlace& place, SurfaceMaterial& material) {
    const auto corner = [&](std::size_t i) {
        const auto& c = place.mesh.colors[place.corners[i]];
        return Color{decoded(c[0]), decoded(c[1]), decoded(c[2])};
    };
    const auto alpha = [&](std::size_t i) {
        return static_cast<float>(place.mesh.colors[place.corners[i]][3]) / 255.0F;
    };
    const float w = 1.0F - place.u - place.v;
    material.baseColor *= corner(0) * w + corner(1) * place.u + corner(2) * place.v;
    material.opacity *= alpha(0) * w + alpha(1) * place.u + alpha(2) * place.v;
}

} // namespace qor::engine
