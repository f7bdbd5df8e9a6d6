// Time to a given error: adaptive antialiasing and final gathering against plain path tracing with
// as many samples in every pixel as the same error takes. The path tracer is this engine's own,
// single rays and packets as in any render. Ratios are of processor time.
#include "benchmarks/engine/core/EngineAssembly.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <ctime>

namespace qor::engine::benchmarks {
namespace {

double processorSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

struct Timed {
    Image image;
    double seconds = 0.0;
};

Timed timed(const Scene& scene, const Camera& camera, const RenderOptions& options) {
    const double start = processorSeconds();
    auto image = renderImage(scene, camera, options);
    return {std::move(image).value(), processorSeconds() - start};
}

/// Mean over pixels and channels of squared errors relative to the reference.
double relativeError(const Image& image, const Image& reference) {
    double sum = 0.0;
    for (std::size_t i = 0; i < image.rgba.size(); ++i) {
        if (i % 4 == 3)
            continue;
        const double difference = double{image.rgba[i]} - double{reference.rgba[i]};
        sum += difference * difference / (double{reference.rgba[i]} * reference.rgba[i] + 0.01);
    }
    return sum / (static_cast<double>(image.rgba.size()) * 0.75);
}

double meanOf(const Image& image) {
    double sum = 0.0;
    for (std::size_t i = 0; i < image.rgba.size(); ++i)
        sum += i % 4 == 3 ? 0.0 : double{image.rgba[i]};
    return sum;
}

RenderOptions pathTracing(int width, int samples, int bounces) {
    RenderOptions options;
    options.width = width;
    options.height = width * 3 / 4;
    options.depth = {8, 8, 20, bounces};
    options.samples.minimum = options.samples.maximum = samples;
    options.progressive = false;
    options.threads = 2;
    return options;
}

/// Seconds that plain path tracing takes to \p error, from a short render: its error falls with the
/// number of samples.
double pathTracingSeconds(
    const Scene& scene, const Camera& camera, int bounces, const Image& reference, double error) {
    constexpr int samples = 16;
    RenderOptions options = pathTracing(reference.width, samples, bounces);
    options.seed = 3;
    const Timed plain = timed(scene, camera, options);
    return plain.seconds * relativeError(plain.image, reference) / error;
}

void report(benchmark::State& state,
            const Timed& fast,
            const Image& reference,
            double plainSeconds) {
    state.counters["error"] = relativeError(fast.image, reference);
    state.counters["seconds"] = fast.seconds;
    state.counters["path_tracing_s"] = plainSeconds;
    state.counters["ratio"] = fast.seconds / plainSeconds;
    state.counters["mean_off_percent"] = 100.0 * (meanOf(fast.image) / meanOf(reference) - 1.0);
}

/// A 50,000-triangle assembly under a sky and two lights to an error of 0.01.
void adaptiveAssembly(benchmark::State& state) {
    const auto width = static_cast<int>(state.range(0));
    const auto bounces = static_cast<int>(state.range(1));
    Scene scene = assemblyScene(50'000);
    scene.environment.radiance = {0.3F, 0.35F, 0.4F};
    const Image reference = timed(scene, assemblyCamera(), pathTracing(width, 512, bounces)).image;
    RenderOptions options = pathTracing(width, 1, bounces);
    options.seed = 9;
    options.samples = {1, 4096, 0.0F, 0.01F};
    for (auto _ : state) {
        const Timed fast = timed(scene, assemblyCamera(), options);
        const double error = relativeError(fast.image, reference);
        report(state, fast, reference,
               pathTracingSeconds(scene, assemblyCamera(), bounces, reference, error));
    }
}

/// The Cornell box with all bounces that matter.
void gatheredCornellBox(benchmark::State& state) {
    constexpr int bounces = 8;
    const auto width = static_cast<int>(state.range(0));
    const Scene scene = cornellBox();
    const Image reference = timed(scene, cornellCamera(), pathTracing(width, 512, bounces)).image;
    RenderOptions options = pathTracing(width, static_cast<int>(state.range(1)), bounces);
    options.finalGather.on = true;
    options.finalGather.rays = static_cast<int>(state.range(2));
    options.seed = 9;
    for (auto _ : state) {
        const Timed fast = timed(scene, cornellCamera(), options);
        const double error = relativeError(fast.image, reference);
        report(state, fast, reference,
               pathTracingSeconds(scene, cornellCamera(), bounces, reference, error));
    }
}

BENCHMARK(adaptiveAssembly)
    ->Args({160, 2})
    ->Args({320, 0})
    ->Args({320, 2})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(gatheredCornellBox)
    ->Args({160, 4, 128})
    ->Args({320, 4, 128})
    ->Args({320, 2, 64})
    ->Args({320, 4, 64})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace qor::engine::benchmarks
