// The renderer against bare Embree: the same camera and shadow rays of the 500,000-triangle
// assembly, the same threads, the same process. Ratios are of processor time, so that other
// programs disturb them less.
#include "benchmarks/engine/core/EngineAssembly.h"
#include "workbench/engine/core/CameraRays.h"
#include "workbench/engine/core/CompiledScene.h"
#include "workbench/engine/core/Sampler.h"

#include <benchmark/benchmark.h>

#include <tbb/parallel_for.h>
#include <tbb/task_arena.h>

#include <chrono>
#include <ctime>
#include <limits>

namespace qor::engine::benchmarks {
namespace {

constexpr int pictureWidth = 1280;
constexpr int pictureHeight = 960;
constexpr float infinity = std::numeric_limits<float>::infinity();

/// Seconds of this process's processors and on the wall.
struct Seconds {
    double processor = 0.0;
    double wall = 0.0;

    static Seconds now() {
        timespec used{};
        clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &used);
        const auto wall = std::chrono::steady_clock::now().time_since_epoch();
        return {static_cast<double>(used.tv_sec) + 1e-9 * static_cast<double>(used.tv_nsec),
                std::chrono::duration<double>(wall).count()};
    }

    Seconds operator-(const Seconds& other) const {
        return {processor - other.processor, wall - other.wall};
    }

    Seconds& operator+=(const Seconds& other) {
        processor += other.processor;
        wall += other.wall;
        return *this;
    }
};

template <typename Task>
Seconds secondsOf(const Task& task) {
    const Seconds start = Seconds::now();
    task();
    return Seconds::now() - start;
}

RenderOptions optionsFor(int samples, int threads) {
    RenderOptions options;
    options.width = pictureWidth;
    options.height = pictureHeight;
    options.samples.minimum = options.samples.maximum = samples;
    options.progressive = false;
    options.threads = threads;
    return options;
}

void put(RayPacket& packet, int lane, const Vec3& origin, const Vec3& direction, float tNear) {
    packet.org_x[lane] = origin.x;
    packet.org_y[lane] = origin.y;
    packet.org_z[lane] = origin.z;
    packet.dir_x[lane] = direction.x;
    packet.dir_y[lane] = direction.y;
    packet.dir_z[lane] = direction.z;
    packet.tnear[lane] = tNear;
    packet.tfar[lane] = infinity;
    packet.time[lane] = 0.0F;
    packet.mask[lane] = ~0U;
    packet.id[lane] = 0;
    packet.flags[lane] = 0;
}

/// Times the rays of a picture without anything else: packets are made beforehand, row by row, and
/// traced two at a time, which is the fastest way known.
class BareRays {
public:
    BareRays(const CompiledScene& scene, const Camera& camera, int samples, int threads)
        : scene_(scene)
        , camera_(camera, optionsFor(samples, threads))
        , samples_(samples)
        , arena_(threads) {}

    /// The time of all camera rays and of the shadow rays of two directional lights from every hit.
    Seconds run() {
        Seconds total;
        for (int y = 0; y < pictureHeight; y += 32)
            total += runRows(y);
        return total;
    }

    /// From now on also a diffuse bounce from every hit, in single rays, and the shadow rays of
    /// what it meets.
    void bounce() { bounces_ = true; }

    double rays() const { return rays_; }

private:
    Seconds runRows(int top) {
        makeCameraRays(top);
        Seconds total = secondsOf([&] {
            forAll(camera_packets_.size() / 2, 32, [&](std::size_t i) {
                scene_.structure().intersect(camera_packets_[2 * i], camera_packets_[2 * i + 1]);
            });
        });
        total += traceShadows();
        if (bounces_) {
            makeBounceRays();
            total += secondsOf([&] {
                forAll(bounce_rays_.size(), 512, [&](std::size_t i) {
                    bounce_hits_[i] = scene_.structure().intersect(bounce_rays_[i]);
                });
            });
            putBounceHits();
            total += traceShadows();
        }
        return total;
    }

    template <typename Task>
    void forAll(std::size_t count, std::size_t grain, const Task& task) {
        arena_.execute([&] {
            tbb::parallel_for(tbb::blocked_range<std::size_t>(0, count, grain),
                              [&](const auto& range) {
                                  for (std::size_t i = range.begin(); i < range.end(); ++i)
                                      task(i);
                              });
        });
    }

    /// Diffuse directions from all hits, as chance has them.
    void makeBounceRays() {
        bounce_rays_.clear();
        std::uint32_t number = 0;
        for (const RayHitPacket& seen : camera_packets_)
            for (int lane = 0; lane < packetWidth; ++lane, ++number) {
                if (seen.hit.geomID[lane] == Hit::none)
                    continue;
                const Surface surface = surfaceOf(seen, lane);
                const Vec2 u{unitFloat(hash32(number * 2)), unitFloat(hash32(number * 2 + 1))};
                bounce_rays_.push_back({surface.origin(surface.normal),
                                        Frame(surface.normal).toWorld(cosineHemisphere(u)), 0.0F,
                                        infinity});
            }
        bounce_hits_.resize(bounce_rays_.size());
        rays_ += static_cast<double>(bounce_rays_.size());
    }

    /// Puts what the bounces met where what the camera saw was.
    void putBounceHits() {
        for (RayHitPacket& packet : camera_packets_)
            for (int lane = 0; lane < packetWidth; ++lane)
                packet.hit.geomID[lane] = Hit::none;
        for (std::size_t i = 0; i < bounce_rays_.size(); ++i) {
            RayHitPacket& packet = camera_packets_[i / packetWidth];
            const auto lane = static_cast<int>(i % packetWidth);
            const Hit& hit = bounce_hits_[i];
            put(packet.ray, lane, bounce_rays_[i].origin, bounce_rays_[i].direction, 0.0F);
            packet.ray.tfar[lane] = hit.t;
            packet.hit.geomID[lane] = hit ? 0U : Hit::none;
            packet.hit.instID[0][lane] = hit.instance;
            packet.hit.primID[lane] = hit.triangle;
            packet.hit.u[lane] = hit.u;
            packet.hit.v[lane] = hit.v;
        }
    }

    Surface surfaceOf(const RayHitPacket& seen, int lane) const {
        const Hit hit{seen.hit.instID[0][lane], seen.hit.primID[lane], seen.ray.tfar[lane],
                      seen.hit.u[lane], seen.hit.v[lane]};
        return surfaceAt(scene_, hit,
                         {seen.ray.dir_x[lane], seen.ray.dir_y[lane], seen.ray.dir_z[lane]}, {});
    }

    Seconds traceShadows() {
        Seconds total;
        for (const Light& light : scene_.scene().lights) {
            makeShadowRays(-normalize(std::get<DirectionalLight>(light).direction));
            total += secondsOf([&] {
                forAll(shadow_packets_.size() / 2, 32, [&](std::size_t i) {
                    scene_.structure().occluded(masks_[2 * i], shadow_packets_[2 * i],
                                                masks_[2 * i + 1], shadow_packets_[2 * i + 1]);
                });
            });
        }
        return total;
    }

    void makeCameraRays(int top) {
        camera_packets_.resize(static_cast<std::size_t>(pictureWidth) * 32 *
                               static_cast<std::size_t>(samples_) / packetWidth);
        std::size_t index = 0;
        for (int y = top; y < top + 32; y += 2)
            for (int x = 0; x < pictureWidth; x += 4)
                for (int k = 0; k < 8 * samples_; ++k, ++index) {
                    const int pixel = k / samples_;
                    const int px = x + pixel % 4;
                    const int py = y + pixel / 4;
                    const Vec2 u = placeInPixel(pixelSeed(px, py, 0),
                                                static_cast<std::uint32_t>(k % samples_));
                    const Ray ray =
                        camera_.at(static_cast<float>(px) + u.x, static_cast<float>(py) + u.y);
                    RayHitPacket& packet = camera_packets_[index / packetWidth];
                    const int lane = static_cast<int>(index % packetWidth);
                    put(packet.ray, lane, ray.origin, ray.direction, ray.tNear);
                    packet.hit.geomID[lane] = Hit::none;
                    packet.hit.instID[0][lane] = Hit::none;
                }
        rays_ += static_cast<double>(index);
    }

    void makeShadowRays(const Vec3& towards) {
        shadow_packets_.resize(camera_packets_.size());
        masks_.assign(camera_packets_.size(), {});
        for (std::size_t i = 0; i < camera_packets_.size(); ++i)
            for (int lane = 0; lane < packetWidth; ++lane) {
                const RayHitPacket& seen = camera_packets_[i];
                if (seen.hit.geomID[lane] == Hit::none)
                    continue;
                const Surface surface = surfaceOf(seen, lane);
                if (dot(surface.normal, towards) <= 0.0F)
                    continue;
                put(shadow_packets_[i], lane, surface.origin(towards), towards, 0.0F);
                masks_[i].lane[static_cast<std::size_t>(lane)] = -1;
                ++rays_;
            }
    }

    const CompiledScene& scene_;
    CameraRays camera_;
    int samples_;
    tbb::task_arena arena_;
    bool bounces_ = false;
    std::vector<Ray> bounce_rays_;
    std::vector<Hit> bounce_hits_;
    std::vector<RayHitPacket> camera_packets_;
    std::vector<RayPacket> shadow_packets_;
    std::vector<PacketMask> masks_;
    double rays_ = 0.0;
};

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Renders and bare rays in turn. Counters: `ratio`, renderer's time over bare rays' time, and its
/// inverse `of_bare`, the renderer's rays a second over those of bare rays; `wall_ratio`, the same
/// on the wall, which counts when nothing else runs.
void compare(benchmark::State& state, int samples, int triangles, int bounces) {
    constexpr int threads = 2;
    const Scene scene = assemblyScene(static_cast<std::size_t>(triangles));
    RenderOptions options = optionsFor(samples, threads);
    options.depth.diffuseBounces = bounces;
    const auto compiled = CompiledScene::create(scene, options);
    BareRays bare(*compiled.value(), assemblyCamera(), samples, threads);
    if (bounces > 0)
        bare.bounce();
    std::vector<double> ratios;
    std::vector<double> wallRatios;
    std::vector<double> bareTimes;
    for (auto _ : state) {
        const Seconds ofBare = bare.run();
        const Seconds ofRender = secondsOf(
            [&] { benchmark::DoNotOptimize(renderImage(scene, assemblyCamera(), options)); });
        state.SetIterationTime(ofRender.processor);
        ratios.push_back(ofRender.processor / ofBare.processor);
        wallRatios.push_back(ofRender.wall / ofBare.wall);
        bareTimes.push_back(ofBare.processor);
    }
    state.counters["ratio"] = median(ratios);
    state.counters["wall_ratio"] = median(wallRatios);
    state.counters["of_bare"] = 1.0 / median(ratios);
    state.counters["bare_s"] = median(bareTimes);
    state.counters["bare_Mray_per_cpu_s"] =
        bare.rays() / static_cast<double>(ratios.size()) / median(bareTimes) * 1e-6;
}

/// Camera rays and shadow rays. How the ratio changes with triangles is how the renderer's growth
/// differs from bare Embree's.
void directLightAgainstBareRays(benchmark::State& state) {
    compare(state, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)), 0);
}

/// Single diffuse bounces, and the shadow rays of what they meet, on top.
void bouncesAgainstBareRays(benchmark::State& state) {
    compare(state, static_cast<int>(state.range(0)), static_cast<int>(state.range(1)), 1);
}

/// Seconds on one thread over those on two, against the same of bare rays: of the clock on the
/// wall, so nothing else may run.
void speedUp(benchmark::State& state) {
    const Scene scene = assemblyScene(500'000);
    const auto compiled = CompiledScene::create(scene, optionsFor(4, 2));
    std::vector<double> gains;
    for (auto _ : state) {
        std::array<double, 2> render{};
        std::array<double, 2> bare{};
        for (const int threads : {1, 2}) {
            const auto at = static_cast<std::size_t>(threads) - 1;
            BareRays rays(*compiled.value(), assemblyCamera(), 4, threads);
            bare[at] = rays.run().wall;
            render[at] = secondsOf([&] {
                             benchmark::DoNotOptimize(
                                 renderImage(scene, assemblyCamera(), optionsFor(4, threads)));
                         }).wall;
        }
        gains.push_back(render[0] / render[1] / (bare[0] / bare[1]));
    }
    state.counters["of_bare"] = median(gains);
}

BENCHMARK(directLightAgainstBareRays)
    ->ArgNames({"samples", "triangles"})
    ->Args({1, 500'000})
    ->Args({16, 500'000})
    ->Args({4, 50'000})
    ->Args({4, 500'000})
    ->Args({4, 2'000'000})
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(bouncesAgainstBareRays)
    ->ArgNames({"samples", "triangles"})
    ->Args({4, 500'000})
    ->UseManualTime()
    ->Iterations(5)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(speedUp)->Iterations(5)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace qor::engine::benchmarks
