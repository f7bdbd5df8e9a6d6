#include "benchmarks/engine/core/PlainPathTracer.h"

#include "workbench/engine/core/Sampling.h"

#include <tbb/parallel_for.h>
#include <tbb/task_arena.h>

#include <limits>

namespace qor::engine::benchmarks {

namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();

RTCIntersectContext incoherent() {
    RTCIntersectContext context;
    rtcInitIntersectContext(&context);
    return context;
}

void put(RTCRay& ray, const Vec3& origin, const Vec3& direction, float farthest) {
    ray.org_x = origin.x;
    ray.org_y = origin.y;
    ray.org_z = origin.z;
    ray.dir_x = direction.x;
    ray.dir_y = direction.y;
    ray.dir_z = direction.z;
    ray.tnear = 0.0F;
    ray.tfar = farthest;
    ray.time = 0.0F;
    ray.mask = ~0U;
    ray.id = 0;
    ray.flags = 0;
}

} // namespace

/// PCG32 (O'Neill 2014).
struct PlainPathTracer::Random {
    std::uint64_t state;

    float next() {
        const std::uint64_t old = state;
        state = old * 6364136223846793005ULL + 1442695040888963407ULL;
        const auto shifted = static_cast<std::uint32_t>(((old >> 18U) ^ old) >> 27U);
        const auto turn = static_cast<std::uint32_t>(old >> 59U);
        const std::uint32_t bits = (shifted >> turn) | (shifted << ((32U - turn) & 31U));
        return static_cast<float>(bits >> 8U) * 0x1p-24F;
    }

    Vec2 next2() {
        const float a = next();
        return {a, next()};
    }
};

PlainPathTracer::PlainPathTracer(const Scene& scene) : sky_(scene.environment.radiance) {
    for (const Instance& instance : scene.assembly->instances())
        append(instance, scene);
    for (const Light& light : scene.lights) {
        const auto& sun = std::get<DirectionalLight>(light);
        suns_.emplace_back(-normalize(sun.direction), sun.irradiance);
    }
    float reach = 0.0F;
    for (const Vec3& p : positions_)
        reach = std::max({reach, std::abs(p.x), std::abs(p.y), std::abs(p.z)});
    offset_ = reach * 1e-5F;
    shiningAreas_.push_back(0.0F);
    for (const std::uint32_t t : shining_) {
        const Vec3& a = positions_[indices_[3 * t]];
        shiningAreas_.push_back(shiningAreas_.back() +
                                0.5F * length(cross(positions_[indices_[3 * t + 1]] - a,
                                                    positions_[indices_[3 * t + 2]] - a)));
    }
    positions_.reserve(positions_.size() + 1); // Embree reads four floats a corner
    device_ = rtcNewDevice(nullptr);
    scene_ = rtcNewScene(device_);
    RTCGeometry geometry = rtcNewGeometry(device_, RTC_GEOMETRY_TYPE_TRIANGLE);
    rtcSetSharedGeometryBuffer(geometry, RTC_BUFFER_TYPE_VERTEX, 0, RTC_FORMAT_FLOAT3,
                               positions_.data(), 0, sizeof(Vec3), positions_.size());
    rtcSetSharedGeometryBuffer(geometry, RTC_BUFFER_TYPE_INDEX, 0, RTC_FORMAT_UINT3,
                               indices_.data(), 0, 3 * sizeof(std::uint32_t), indices_.size() / 3);
    rtcCommitGeometry(geometry);
    rtcAttachGeometry(scene_, geometry);
    rtcReleaseGeometry(geometry);
    rtcCommitScene(scene_);
}

PlainPathTracer::~PlainPathTracer() {
    rtcReleaseScene(scene_);
    rtcReleaseDevice(device_);
}

void PlainPathTracer::append(const Instance& instance, const Scene& scene) {
    const MeshData& mesh = instance.mesh->data();
    const NormalTransform turn(instance.transform);
    const auto first = static_cast<std::uint32_t>(positions_.size());
    for (std::size_t i = 0; i < mesh.positions.size(); ++i) {
        positions_.push_back(instance.transform.point(mesh.positions[i]));
        normals_.push_back(mesh.normals.empty() ? Vec3{} : normalize(turn(mesh.normals[i])));
    }
    const Material& material = scene.materials[instance.materials.front()];
    for (const auto& corners : mesh.triangles) {
        if (maxComponent(material.emission) > 0.0F)
            shining_.push_back(static_cast<std::uint32_t>(indices_.size() / 3));
        for (const std::uint32_t corner : corners)
            indices_.push_back(first + corner);
        albedo_.push_back(material.baseColor);
        emission_.push_back(material.emission);
    }
}

PlainPathTracer::Vertex PlainPathTracer::vertexAt(const RTCRayHit& hit,
                                                  const Vec3& direction) const {
    const unsigned t = hit.hit.primID;
    const std::uint32_t* corner = indices_.data() + std::size_t{3} * t;
    const float u = hit.hit.u;
    const float v = hit.hit.v;
    Vertex vertex;
    vertex.position = positions_[corner[0]] * (1.0F - u - v) + positions_[corner[1]] * u +
                      positions_[corner[2]] * v;
    const Vec3 outward{hit.hit.Ng_x, hit.hit.Ng_y, hit.hit.Ng_z};
    vertex.area = 0.5F * length(outward);
    vertex.flat = normalize(outward);
    if (dot(vertex.flat, direction) > 0.0F)
        vertex.flat = -vertex.flat;
    const Vec3 smooth =
        normals_[corner[0]] * (1.0F - u - v) + normals_[corner[1]] * u + normals_[corner[2]] * v;
    vertex.normal = length(smooth) > 0.0F ? normalize(smooth) : vertex.flat;
    if (dot(vertex.normal, vertex.flat) < 0.0F)
        vertex.normal = -vertex.normal;
    vertex.albedo = albedo_[t];
    vertex.emission = emission_[t];
    return vertex;
}

bool PlainPathTracer::occluded(const Vec3& origin, const Vec3& direction, float farthest) const {
    RTCIntersectContext context = incoherent();
    RTCRay ray;
    put(ray, origin, direction, farthest);
    rtcOccluded1(scene_, &context, &ray);
    return ray.tfar < 0.0F;
}

/// One light for a surface: a sun, or all shining triangles together.
Color PlainPathTracer::direct(const Vertex& vertex, Random& random) const {
    const std::size_t lights = suns_.size() + (shining_.empty() ? 0 : 1);
    if (lights == 0)
        return {};
    const auto chosen =
        std::min(static_cast<std::size_t>(random.next() * static_cast<float>(lights)), lights - 1);
    const auto pick = static_cast<float>(lights);
    if (chosen == suns_.size())
        return fromTriangle(vertex, pick, random);
    const auto& [towards, irradiance] = suns_[chosen];
    const float cosTheta = dot(vertex.normal, towards);
    if (cosTheta <= 0.0F || occluded(vertex.position + vertex.flat * offset_, towards, infinity))
        return {};
    return vertex.albedo * irradiance * (cosTheta / pi * pick);
}

Color PlainPathTracer::fromTriangle(const Vertex& vertex, float pick, Random& random) const {
    const float wanted = random.next() * shiningAreas_.back();
    const auto above = std::upper_bound(shiningAreas_.begin() + 1, shiningAreas_.end(), wanted);
    const std::size_t chosen =
        std::min(static_cast<std::size_t>(above - shiningAreas_.begin()) - 1, shining_.size() - 1);
    const std::uint32_t* corner = indices_.data() + std::size_t{3} * shining_[chosen];
    const Vec3& a = positions_[corner[0]];
    const Vec3 edge1 = positions_[corner[1]] - a;
    const Vec3 edge2 = positions_[corner[2]] - a;
    const Vec2 at = uniformTriangle(random.next2());
    const Vec3 origin = vertex.position + vertex.flat * offset_;
    const Vec3 to = a + edge1 * at.x + edge2 * at.y - origin;
    const float distance = length(to);
    const Vec3 towards = to / distance;
    const float cosTheta = dot(vertex.normal, towards);
    const float cosLight = std::abs(dot(normalize(cross(edge1, edge2)), towards));
    if (cosTheta <= 0.0F || cosLight <= 0.0F || occluded(origin, towards, distance * 0.9999F))
        return {};
    const float lightPdf = distance * distance / (cosLight * shiningAreas_.back() * pick);
    const float weight = powerHeuristic(lightPdf, cosTheta / pi);
    return vertex.albedo * emission_[shining_[chosen]] * (cosTheta / pi * weight / lightPdf);
}

Color PlainPathTracer::radiance(Vec3 origin, Vec3 direction, int bounces, Random& random) const {
    const float pick = static_cast<float>(suns_.size() + (shining_.empty() ? 0 : 1));
    Color sum;
    Color throughput{1.0F, 1.0F, 1.0F};
    float pdf = infinity;
    for (int bounce = 0;; ++bounce) {
        RTCIntersectContext context = incoherent();
        RTCRayHit hit;
        put(hit.ray, origin, direction, infinity);
        hit.hit.geomID = RTC_INVALID_GEOMETRY_ID;
        rtcIntersect1(scene_, &context, &hit);
        if (hit.hit.geomID == RTC_INVALID_GEOMETRY_ID)
            return sum + throughput * sky_;
        const Vertex vertex = vertexAt(hit, direction);
        if (maxComponent(vertex.emission) > 0.0F) {
            const float cosLight = std::abs(dot(vertex.flat, direction));
            const float lightPdf =
                hit.ray.tfar * hit.ray.tfar / (cosLight * shiningAreas_.back() * pick);
            sum += throughput * vertex.emission * powerHeuristic(pdf, lightPdf);
        }
        if (bounce > bounces)
            return sum;
        sum += throughput * direct(vertex, random);
        throughput *= vertex.albedo;
        if (bounce >= 3) {
            const float goesOn = std::min(0.95F, maxComponent(throughput));
            if (random.next() >= goesOn)
                return sum;
            throughput *= 1.0F / goesOn;
        }
        const Vec3 local = cosineHemisphere(random.next2());
        pdf = local.z / pi;
        direction = Frame(vertex.normal).toWorld(local);
        origin = vertex.position + vertex.flat * offset_;
    }
}

Image PlainPathTracer::render(const Camera& camera,
                              int width,
                              int height,
                              int samples,
                              int bounces,
                              std::uint32_t seed,
                              int threads) const {
    Image image{width, height, std::vector<float>(static_cast<std::size_t>(width) * height * 4)};
    const Vec3 forward = normalize(camera.target - camera.eye);
    const Vec3 right = normalize(cross(forward, camera.up));
    const Vec3 up = cross(right, forward);
    const float pixel = 2.0F * std::tan(0.5F * camera.fovRad) / static_cast<float>(height);
    const auto row = [&](int y) {
        for (int x = 0; x < width; ++x) {
            Random random{(std::uint64_t{seed} << 40U) + std::uint64_t(y) * 65536U +
                          std::uint64_t(x)};
            for (int i = 0; i < 4; ++i)
                random.next();
            Color sum;
            for (int s = 0; s < samples; ++s) {
                const Vec2 u = random.next2();
                const float across =
                    (static_cast<float>(x) + u.x - 0.5F * static_cast<float>(width)) * pixel;
                const float above =
                    (0.5F * static_cast<float>(height) - static_cast<float>(y) - u.y) * pixel;
                sum += radiance(camera.eye, normalize(forward + right * across + up * above),
                                bounces, random);
            }
            const Color mean = sum / static_cast<float>(samples);
            float* rgba = image.pixel(x, y);
            rgba[0] = mean.x;
            rgba[1] = mean.y;
            rgba[2] = mean.z;
            rgba[3] = 1.0F;
        }
    };
    tbb::task_arena(threads).execute([&] { tbb::parallel_for(0, height, row); });
    return image;
}

} // namespace qor::engine::benchmarks
