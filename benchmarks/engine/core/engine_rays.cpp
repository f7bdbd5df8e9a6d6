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

#include <ctime>
#include <limits>

namespace qor::engine::benchmarks {
namespace {

constexpr int pictureWidth = 1280;
constexpr int pictureHeight = 960;
constexpr float infinity = std::numeric_limits<float>::infinity();

double processorSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
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

/// Times the rays of a picture without anything else: packets are made beforehand, row by row.
class BareRays {
public:
    BareRays(const CompiledScene& scene, const Camera& camera, int samples, int threads)
        : scene_(scene)
        , camera_(camera, optionsFor(samples, threads))
        , samples_(samples)
        , arena_(threads) {}

    /// Processor seconds of all camera rays and of the shadow rays of two directional lights from
    /// every hit.
    double run() {
        double total = 0.0;
        for (int y = 0; y < pictureHeight; y += 32)
            total += runRows(y);
        return total;
    }

    double rays() const { return rays_; }

private:
    double runRows(int top) {
        makeCameraRays(top);
        const double start = processorSeconds();
        arena_.execute([&] {
            tbb::parallel_for(tbb::blocked_range<std::size_t>(0, camera_packets_.size(), 64),
                              [&](const auto& range) {
                                  for (std::size_t i = range.begin(); i < range.end(); ++i)
                                      scene_.structure().intersect(all_, camera_packets_[i]);
                              });
        });
        double total = processorSeconds() - start;
        for (const Light& light : scene_.scene().lights) {
            makeShadowRays(-normalize(std::get<DirectionalLight>(light).direction));
            const double shadowStart = processorSeconds();
            arena_.execute([&] {
                tbb::parallel_for(tbb::blocked_range<std::size_t>(0, shadow_packets_.size(), 64),
                                  [&](const auto& range) {
                                      for (std::size_t i = range.begin(); i < range.end(); ++i)
                                          scene_.structure().occluded(masks_[i],
                                                                      shadow_packets_[i]);
                                  });
            });
            total += processorSeconds() - shadowStart;
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
                    const Vec2 u = scrambledPoint(static_cast<std::uint32_t>(k % samples_),
                                                  pixelSeed(px, py, 0));
                    const Ray ray =
                        camera_.at(static_cast<float>(px) + u.x, static_cast<float>(py) + u.y);
                    RayHitPacket& packet = camera_packets_[index / packetWidth];
                    const int lane = static_cast<int>(index % packetWidth);
                    put(packet.ray, lane, ray.origin, ray.direction, ray.tNear);
                    packet.hit.geomID[lane] = Hit::none;
                    packet.hit.instID[0][lane] = Hit::none;
                }
        all_.lane.fill(-1);
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
                const Hit hit{seen.hit.instID[0][lane], seen.hit.primID[lane], seen.ray.tfar[lane],
                              seen.hit.u[lane], seen.hit.v[lane]};
                const Vec3 direction{seen.ray.dir_x[lane], seen.ray.dir_y[lane],
                                     seen.ray.dir_z[lane]};
                const Surface surface = surfaceAt(scene_, hit, direction, {});
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
    PacketMask all_;
    std::vector<RayHitPacket> camera_packets_;
    std::vector<RayPacket> shadow_packets_;
    std::vector<PacketMask> masks_;
    double rays_ = 0.0;
};

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Arguments: samples a pixel, threads. Counter `ratio`: renderer's time over bare rays' time.
void directLightAgainstBareRays(benchmark::State& state) {
    const auto samples = static_cast<int>(state.range(0));
    const auto threads = static_cast<int>(state.range(1));
    const Scene scene = assemblyScene(500'000);
    const RenderOptions options = optionsFor(samples, threads);
    const auto compiled = CompiledScene::create(scene, options);
    BareRays bare(*compiled.value(), assemblyCamera(), samples, threads);
    std::vector<double> ratios;
    std::vector<double> bareTimes;
    for (auto _ : state) {
        const double bareSeconds = bare.run();
        const double start = processorSeconds();
        const auto image = renderImage(scene, assemblyCamera(), options);
        const double seconds = processorSeconds() - start;
        state.SetIterationTime(seconds);
        ratios.push_back(seconds / bareSeconds);
        bareTimes.push_back(bareSeconds);
        benchmark::DoNotOptimize(image);
    }
    state.counters["ratio"] = median(ratios);
    state.counters["bare_s"] = median(bareTimes);
    state.counters["bare_Mray_per_cpu_s"] =
        bare.rays() / static_cast<double>(ratios.size()) / median(bareTimes) * 1e-6;
}

BENCHMARK(directLightAgainstBareRays)
    ->Args({1, 2})
    ->Args({16, 2})
    ->UseManualTime()
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace qor::engine::benchmarks
