#include "workbench/engine/core/LightSampler.h"

#include <limits>

namespace qor::engine {

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
/// Discs and spheres below these sizes are lights without extent.
constexpr float smallestAngle = 1e-4F;

/// Grows with the square between the cones' cosines (glTF extension KHR_lights_punctual).
float spotFalloff(const SpotLight& spot, const Vec3& away) {
    const float c = dot(away, normalize(spot.direction));
    const float outer = std::cos(spot.outerRad);
    const float inner = std::cos(spot.innerRad);
    if (c <= outer)
        return 0.0F;
    if (c >= inner)
        return 1.0F;
    const float t = (c - outer) / (inner - outer);
    return t * t;
}

float falloff(const PointLight& /*light*/, const Vec3& /*away*/) {
    return 1.0F;
}

float falloff(const SpotLight& light, const Vec3& away) {
    return spotFalloff(light, away);
}

/// Solid angle, as 1 - cos of the half angle, of a sphere of \p radius at \p distance.
float sphereCap(float radius, float distance) {
    const float sin2 = radius * radius / (distance * distance);
    return sin2 < 1e-4F ? 0.5F * sin2 : 1.0F - std::sqrt(1.0F - sin2);
}

template <typename Bulb>
LightSample sampleBulb(const Bulb& light, const Vec3& point, const Vec2& u) {
    const Vec3 to = light.position - point;
    const float d = length(to);
    if (!(d > light.radius) || !(d > 0.0F))
        return {};
    const Vec3 centre = to / d;
    const Color intensity = light.intensity * falloff(light, -centre);
    if (light.radius <= 0.0F)
        return {centre, d, intensity / (d * d), infinity, light.castsShadows};
    const float cap = sphereCap(light.radius, d);
    const Vec3 local = uniformCone(u, cap);
    const float across = d * d * (1.0F - local.z * local.z);
    const float near =
        d * local.z - std::sqrt(std::max(0.0F, light.radius * light.radius - across));
    return {Frame(centre).toWorld(local), near, intensity / (pi * light.radius * light.radius),
            1.0F / (2.0F * pi * cap), light.castsShadows};
}

template <typename Bulb>
bool hitBulb(
    const Bulb& light, const Vec3& origin, const Vec3& direction, float farthest, LightHit& hit) {
    const Vec3 to = light.position - origin;
    const float along = dot(to, direction);
    const float d2 = dot(to, to);
    const float r2 = light.radius * light.radius;
    const float inside = r2 - (d2 - along * along);
    if (along <= 0.0F || inside < 0.0F || d2 <= r2)
        return false;
    hit.distance = along - std::sqrt(inside);
    if (hit.distance >= farthest)
        return false;
    const float d = std::sqrt(d2);
    hit.radiance = light.intensity * (falloff(light, to / -d) / (pi * r2));
    hit.pdf = 1.0F / (2.0F * pi * sphereCap(light.radius, d));
    return true;
}

LightSample sampleRectangle(
    const AreaLight& light, const Vec3& normal, float area, const Vec3& point, const Vec2& u) {
    const Vec3 to = light.corner + light.edgeU * u.x + light.edgeV * u.y - point;
    const float d2 = dot(to, to);
    if (!(d2 > 0.0F))
        return {};
    const float d = std::sqrt(d2);
    const Vec3 direction = to / d;
    const float cosTheta = -dot(direction, normal);
    if (cosTheta == 0.0F || (cosTheta < 0.0F && !light.twoSided))
        return {};
    return {direction, d, light.radiance, d2 / (std::abs(cosTheta) * area), light.castsShadows};
}

bool hitRectangle(const AreaLight& light,
                  const Vec3& normal,
                  float area,
                  const Vec3& origin,
                  const Vec3& direction,
                  float farthest,
                  LightHit& hit) {
    const float slope = dot(direction, normal);
    if (slope == 0.0F || (slope > 0.0F && !light.twoSided))
        return false;
    const float t = dot(light.corner - origin, normal) / slope;
    if (!(t > 0.0F) || t >= farthest)
        return false;
    const Vec3 p = origin + direction * t - light.corner;
    const float u = dot(cross(p, light.edgeV), normal) / area;
    const float v = dot(cross(light.edgeU, p), normal) / area;
    if (u < 0.0F || u > 1.0F || v < 0.0F || v > 1.0F)
        return false;
    hit = {light.radiance, t * t / (std::abs(slope) * area), t};
    return true;
}

bool hasExtent(const Light& light) {
    if (const auto* sun = std::get_if<DirectionalLight>(&light))
        return sun->angleRad > smallestAngle;
    if (const auto* point = std::get_if<PointLight>(&light))
        return point->radius > 0.0F;
    if (const auto* spot = std::get_if<SpotLight>(&light))
        return spot->radius > 0.0F;
    return true;
}

} // namespace

LightSampler::LightSampler(const std::vector<Light>& lights,
                           std::vector<EmissiveTriangle> triangles,
                           const EnvironmentMap& environment)
    : triangles_(std::move(triangles)), environment_(&environment) {
    for (const Light& light : lights) {
        if (hasExtent(light))
            hittable_.push_back(lights_.size());
        lights_.push_back(prepare(light));
    }
    count_ = static_cast<int>(lights_.size());
    triangleSums_.push_back(0.0F);
    for (const EmissiveTriangle& t : triangles_)
        triangleSums_.push_back(triangleSums_.back() +
                                0.5F * length(cross(t.edge1, t.edge2)) * luminance(t.radiance));
    if (triangleSums_.back() > 0.0F)
        triangleIndex_ = count_++;
    if (environment.isSampled())
        environmentIndex_ = count_++;
    canBeHit_ = !hittable_.empty() || triangleIndex_ >= 0 || !environment.isBlack();
}

LightSampler::Prepared LightSampler::prepare(const Light& light) {
    Prepared result{light, {}, 0.0F, 0.0F, {}};
    if (const auto* sun = std::get_if<DirectionalLight>(&light)) {
        result.frame = Frame(normalize(-sun->direction));
        const float s = std::sin(0.25F * sun->angleRad);
        result.oneMinusCos = hasExtent(light) ? 2.0F * s * s : 0.0F;
    } else if (const auto* area = std::get_if<AreaLight>(&light)) {
        const Vec3 n = cross(area->edgeU, area->edgeV);
        result.area = length(n);
        result.normal = n / result.area;
    }
    return result;
}

bool LightSampler::isDelta(int index) const {
    return index < static_cast<int>(lights_.size()) &&
           !hasExtent(lights_[static_cast<std::size_t>(index)].light);
}

LightSample LightSampler::sample(int index, const Vec3& point, const Vec2& u) const {
    if (index == triangleIndex_)
        return sampleTriangle(point, u);
    if (index == environmentIndex_)
        return sampleEnvironment(u);
    const Prepared& light = lights_[static_cast<std::size_t>(index)];
    if (const auto* sun = std::get_if<DirectionalLight>(&light.light)) {
        if (light.oneMinusCos == 0.0F)
            return {light.frame.z, infinity, sun->irradiance, infinity, sun->castsShadows};
        // π sin²(half angle), with sin² = (1 - cos)(1 + cos)
        const float projected = pi * light.oneMinusCos * (2.0F - light.oneMinusCos);
        return {light.frame.toWorld(uniformCone(u, light.oneMinusCos)), infinity,
                sun->irradiance / projected, 1.0F / (2.0F * pi * light.oneMinusCos),
                sun->castsShadows};
    }
    if (const auto* bulb = std::get_if<PointLight>(&light.light))
        return sampleBulb(*bulb, point, u);
    if (const auto* spot = std::get_if<SpotLight>(&light.light))
        return sampleBulb(*spot, point, u);
    return sampleRectangle(*std::get_if<AreaLight>(&light.light), light.normal, light.area, point,
                           u);
}

LightSample LightSampler::sampleTriangle(const Vec3& point, const Vec2& u) const {
    // The sequence's first number chooses the triangle; what is left of it is still uniform.
    const float wanted = u.x * triangleSums_.back();
    const auto above = std::upper_bound(triangleSums_.begin() + 1, triangleSums_.end(), wanted);
    const auto chosen = std::min(static_cast<std::size_t>(above - triangleSums_.begin()) - 1,
                                 triangles_.size() - 1);
    const float width = triangleSums_[chosen + 1] - triangleSums_[chosen];
    const float rest =
        width > 0.0F ? std::clamp((wanted - triangleSums_[chosen]) / width, 0.0F, 0.999999F) : 0.5F;
    const EmissiveTriangle& triangle = triangles_[chosen];
    const Vec2 at = uniformTriangle({rest, u.y});
    const Vec3 to = triangle.a + triangle.edge1 * at.x + triangle.edge2 * at.y - point;
    const float d2 = dot(to, to);
    if (!(d2 > 0.0F))
        return {};
    const float d = std::sqrt(d2);
    const float cosTheta = std::abs(dot(normalize(cross(triangle.edge1, triangle.edge2)), to / d));
    if (cosTheta <= 0.0F)
        return {};
    return {to / d, d, triangle.radiance, trianglePdf(triangle.radiance, d, cosTheta), true};
}

float LightSampler::trianglePdf(const Color& radiance, float distance, float cosTheta) const {
    if (triangleIndex_ < 0 || cosTheta <= 0.0F)
        return 0.0F;
    return luminance(radiance) / triangleSums_.back() * distance * distance / cosTheta;
}

LightSample LightSampler::sampleEnvironment(const Vec2& u) const {
    LightSample result;
    result.pdf = environment_->sample(u, result.direction);
    result.distance = infinity;
    result.radiance = environment_->radiance(result.direction, 0.0F);
    return result;
}

bool LightSampler::hitOne(const Prepared& light,
                          const Vec3& origin,
                          const Vec3& direction,
                          float farthest,
                          bool fromCamera,
                          LightHit& hit) const {
    if (const auto* sun = std::get_if<DirectionalLight>(&light.light)) {
        if (farthest < infinity || fromCamera ||
            dot(direction, light.frame.z) < 1.0F - light.oneMinusCos)
            return false;
        const float projected = pi * light.oneMinusCos * (2.0F - light.oneMinusCos);
        hit = {sun->irradiance / projected, 1.0F / (2.0F * pi * light.oneMinusCos), infinity};
        return true;
    }
    if (const auto* bulb = std::get_if<PointLight>(&light.light))
        return !fromCamera && hitBulb(*bulb, origin, direction, farthest, hit);
    if (const auto* spot = std::get_if<SpotLight>(&light.light))
        return !fromCamera && hitBulb(*spot, origin, direction, farthest, hit);
    const auto* area = std::get_if<AreaLight>(&light.light);
    return (area->visible || !fromCamera) &&
           hitRectangle(*area, light.normal, light.area, origin, direction, farthest, hit);
}

} // namespace qor::engine
