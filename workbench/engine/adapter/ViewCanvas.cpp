#include "workbench/engine/adapter/ViewCanvas.h"

#include "workbench/engine/adapter/EightBit.h"

#include <algorithm>
#include <cmath>

namespace qor::adapter {

namespace {

using engine::Color;
using engine::Vec3;

/// Looks across a pixel, and down it.
constexpr int perPixel = 2;
/// See-through surfaces that one look passes.
constexpr int mostLayers = 16;
constexpr float almostOpaque = 0.995F;
/// What is left of the clearest glass, so that it is seen.
constexpr float clearest = 0.1F;
constexpr float highlightShare = 0.62F;
constexpr float edgeShare = 0.75F;

/// The desktop's colours, as light: of the highlight (0x2f7cf0), its edges (0x0a3f9e), and edges.
constexpr Color highlightColor{0.0284F, 0.2016F, 0.8714F};
constexpr Color highlightEdge{0.0030F, 0.0497F, 0.3419F};
constexpr Color edgeColor{0.0040F, 0.0049F, 0.0072F};

float reflectanceOf(float ior) {
    const float ratio = (ior - 1.0F) / (ior + 1.0F);
    return ratio * ratio;
}

ViewMatter matterOf(const engine::Sight& sight) {
    return {sight.baseColor, sight.metallic,
            sight.roughness, sight.specular * reflectanceOf(sight.ior),
            sight.clearcoat, sight.clearcoatRoughness};
}

float step(float from, float to, float value) {
    const float t = std::clamp((value - from) / (to - from), 0.0F, 1.0F);
    return t * t * (3.0F - 2.0F * t);
}

} // namespace

ViewCanvas::ViewCanvas(engine::Probe probe,
                       const SceneRecipe& recipe,
                       const QorRdgSnapshot& snapshot,
                       int width,
                       int height,
                       const ViewStyle& style)
    : probe_(std::move(probe))
    , lighting_(snapshot)
    , ground_(recipe.scene.ground)
    , groundReach_(snapshot.ground && *snapshot.ground
                       ? static_cast<float>((*snapshot.ground)->GetSize()) / 2
                       : 1.0F)
    , width_(width)
    , height_(height)
    , style_(style) {
    for (const InstanceRecipe& instance : recipe.instances) {
        highlighted_.push_back(instance.highlighted);
        const engine::Material& material = recipe.materials[instance.material].material;
        unlit_.push_back(material.specular == 0.0F && maxComponent(material.emission) > 0.0F &&
                         !(maxComponent(material.baseColor) > 0.0F));
    }
}

void ViewCanvas::draw(int first, int count, std::uint8_t* rgba) const {
    // One look more to the right and below, so that every look has its neighbours.
    const int columns = width_ * perPixel + 1;
    const int rows = count * perPixel + 1;
    std::vector<Look> looks(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));
    const auto at = [&](int column, int row) -> Look& {
        return looks[static_cast<std::size_t>(row) * static_cast<std::size_t>(columns) +
                     static_cast<std::size_t>(column)];
    };
    constexpr float distance = 1.0F / perPixel;
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column)
            at(column, row) =
                lookAt((static_cast<float>(column) + 0.5F) * distance,
                       static_cast<float>(first) + (static_cast<float>(row) + 0.5F) * distance);
    for (int row = 0; style_.edges && row + 1 < rows; ++row)
        for (int column = 0; column + 1 < columns; ++column)
            for (Look* other : {&at(column + 1, row), &at(column, row + 1)}) {
                Look& one = at(column, row);
                if (isEdge(one, *other))
                    drawEdge(other->distance > 0.0F &&
                                     (one.distance == 0.0F || other->distance < one.distance)
                                 ? *other
                                 : one);
            }
    for (int y = 0; y < count; ++y)
        for (int x = 0; x < width_; ++x, rgba += 4)
            drawPixel({&at(2 * x, 2 * y), &at(2 * x + 1, 2 * y), &at(2 * x, 2 * y + 1),
                       &at(2 * x + 1, 2 * y + 1)},
                      rgba);
}

ViewCanvas::Look ViewCanvas::lookAt(float x, float y) const {
    Look look;
    float ground = -1.0F;
    const auto place =
        ground_.visible ? probe_.crossing(x, y, ground_.origin, normalize(ground_.normal), ground)
                        : std::nullopt;
    addSurfaces(x, y, place ? ground : -1.0F, look);
    if (place && look.alpha < almostOpaque)
        addGround(*place, look);
    return look;
}

/// Surfaces in front of the ground; those behind are seen through it only when it is clear.
void ViewCanvas::addSurfaces(float x, float y, float ground, Look& look) const {
    const bool holdsBack = ground > 0.0F && ground_.transparency < 0.5F;
    float from = 0.0F;
    for (int layer = 0; layer < mostLayers && look.alpha < almostOpaque; ++layer) {
        const auto sight = probe_.look(x, y, from);
        if (!sight || (holdsBack && sight->distance > ground))
            return;
        addSurface(*sight, look);
        from = sight->distance * 1.00001F + 1e-6F;
    }
}

void ViewCanvas::addSurface(const engine::Sight& sight, Look& look) const {
    const bool highlighted = highlighted_[sight.instance];
    if (look.distance == 0.0F && sight.opacity > 0.0F) {
        look.distance = sight.distance;
        look.normal = sight.normal;
        look.instance = sight.instance;
        look.highlighted = highlighted;
    }
    ViewShine shine;
    if (!unlit_[sight.instance])
        shine = shade(lighting_, matterOf(sight), sight.position, sight.normal, sight.back);
    Color color = shine.matt + shine.gloss + sight.emission;
    const float clear = 1.0F - (1.0F - clearest) * sight.transmission;
    float alpha = sight.opacity * clear;
    // What is reflected is there however clear the glass is.
    if (clear < 1.0F)
        alpha = std::max(alpha, std::clamp(maxComponent(shine.gloss), 0.0F, 1.0F));
    if (highlighted) {
        const float facing = 0.45F + 0.55F * std::max(dot(sight.normal, sight.back), 0.0F);
        color = lerp(color, highlightColor * facing, highlightShare);
        alpha += (1.0F - alpha) * highlightShare;
    }
    const float share = alpha * (1.0F - look.alpha);
    look.color += bent(color) * share;
    look.alpha += share;
}

/// A ground that is there shows its shaded colour; one that is not still takes the shadow.
bool ViewCanvas::addGround(const Vec3& place, Look& look) const {
    constexpr float albedo = 0.62F;
    constexpr float shadowStrength = 0.55F;
    constexpr float fadesFrom = 0.35F;
    const float along = length(place - ground_.origin) / groundReach_;
    const float fade = 1.0F - step(fadesFrom, 1.0F, along);
    if (fade <= 0.0F)
        return false;
    const Vec3 normal = normalize(ground_.normal);
    Color full = lighting_.ambient;
    Color lit = lighting_.ambient;
    for (const ViewLight& light : lighting_.lights) {
        const Vec3 toLight = light.towards(place);
        const Color share =
            light.diffuse * (std::max(dot(normal, toLight), 0.0F) * light.conePart(toLight));
        full += share;
        if (!(maxComponent(share) > 0.0F) || !probe_.isCovered(place, toLight))
            lit += share;
    }
    const float loss = 1.0F - (lit.x + lit.y + lit.z) / std::max(full.x + full.y + full.z, 1e-4F);
    const float plane = (1.0F - ground_.transparency) * fade;
    const float shadow = shadowStrength * loss * fade;
    const float left = 1.0F - look.alpha;
    look.color += bent(lit * albedo) * (plane * left);
    look.alpha += (plane + shadow * (1.0F - plane)) * left;
    return true;
}

/// Where one look meets another thing than its neighbour, or the other side of a fold.
bool ViewCanvas::isEdge(const Look& one, const Look& other) {
    constexpr float fold = 0.8F;
    if (one.distance == 0.0F && other.distance == 0.0F)
        return false;
    if (one.distance == 0.0F || other.distance == 0.0F || one.instance != other.instance)
        return true;
    return dot(one.normal, other.normal) < fold;
}

void ViewCanvas::drawEdge(Look& look) const {
    const Color& color = look.highlighted ? highlightEdge : edgeColor;
    look.color = lerp(look.color, color, edgeShare);
    look.alpha += (1.0F - look.alpha) * edgeShare;
}

void ViewCanvas::drawPixel(const Look* const (&looks)[4], std::uint8_t* rgba) const {
    Color color;
    float alpha = 0.0F;
    for (const Look* look : looks) {
        color += look->color * 0.25F;
        alpha += look->alpha * 0.25F;
    }
    const Color straight = alpha > 0.0F ? color / alpha : color;
    rgba[0] = srgb8(straight.x);
    rgba[1] = srgb8(straight.y);
    rgba[2] = srgb8(straight.z);
    rgba[3] = static_cast<std::uint8_t>(std::clamp(alpha, 0.0F, 1.0F) * 255.0F + 0.5F);
}

} // namespace qor::adapter
