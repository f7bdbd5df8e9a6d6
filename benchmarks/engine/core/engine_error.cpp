// Time to a given error against a plain path tracer on Embree (PlainPathTracer), in one process, on
// the same threads. Errors are relative mean square errors against a converged picture; the plain
// one's falls with the number of samples, so its time to any error follows from two short renders.
// Ratios are of processor time.
#include "benchmarks/engine/core/EngineAssembly.h"
#include "benchmarks/engine/core/PlainPathTracer.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <map>
#include <string>
#include <vector>

namespace qor::engine::benchmarks {
namespace {

double processorSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + 1e-9 * static_cast<double>(now.tv_nsec);
}

/// What is left of the reference's own error counts against the renderer.
constexpr int referenceSamples = 1024;
/// Both sides are measured so often, in turn.
constexpr int rounds = 5;

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

/// Error of one of two pictures that differ in their random numbers alone: half of what they
/// differ.
double noiseOf(const Image& a, const Image& b, const Image& reference) {
    double sum = 0.0;
    for (std::size_t i = 0; i < a.rgba.size(); ++i) {
        if (i % 4 == 3)
            continue;
        const double difference = double{a.rgba[i]} - double{b.rgba[i]};
        sum +=
            0.5 * difference * difference / (double{reference.rgba[i]} * reference.rgba[i] + 0.01);
    }
    return sum / (static_cast<double>(a.rgba.size()) * 0.75);
}

/// Seconds that the plain path tracer takes to \p error.
double plainSeconds(const PlainPathTracer& plain,
                    const Camera& camera,
                    int bounces,
                    const Image& reference,
                    double error,
                    std::uint32_t seed) {
    constexpr int samples = 16;
    const auto render = [&](std::uint32_t own) {
        return plain.render(camera, reference.width, reference.height, samples, bounces, own, 2);
    };
    const double start = processorSeconds();
    const Image first = render(2 * seed);
    const Image second = render(2 * seed + 1);
    const double seconds = 0.5 * (processorSeconds() - start);
    return seconds * noiseOf(first, second, reference) / error;
}

/// Converged pictures are made once for all benchmarks that show the same.
const Image& referenceOf(
    const std::string& name, const Scene& scene, const Camera& camera, int width, int bounces) {
    static std::map<std::string, Image> made;
    const std::string key = name + ' ' + std::to_string(width) + ' ' + std::to_string(bounces);
    const auto found = made.find(key);
    if (found != made.end())
        return found->second;
    return made[key] = timed(scene, camera, pathTracing(width, referenceSamples, bounces)).image;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Renders so that the measured error comes close to \p wanted, by setting the target for noise
/// from the error that another target has led to; time and error of the last of these.
Timed timedTo(double wanted,
              const Scene& scene,
              const Camera& camera,
              RenderOptions options,
              const Image& reference) {
    constexpr int tries = 3;
    Timed result;
    for (int i = 0; i < tries; ++i) {
        result = timed(scene, camera, options);
        const double error = relativeError(result.image, reference);
        options.samples.noiseTarget =
            *options.samples.noiseTarget * static_cast<float>(wanted / error);
    }
    return result;
}

void show(benchmark::State& state, const std::map<std::string, std::vector<double>>& measured) {
    for (const auto& [counter, values] : measured)
        state.counters[counter] = median(values);
}

/// The time to a measured error of exactly \p wanted, for several seeds and in turn with the plain
/// path tracer. What a render misses the error by it is charged for in proportion; "reached" is
/// what the same target for noise leads to by itself, "estimated" what the engine then says.
void reportAtError(benchmark::State& state,
                   const std::string& name,
                   const Scene& scene,
                   const Camera& camera,
                   int bounces,
                   double wanted,
                   RenderOptions options) {
    const PlainPathTracer plain(scene);
    const Image& reference = referenceOf(name, scene, camera, options.width, bounces);
    std::map<std::string, std::vector<double>> measured;
    options.samples.noiseTarget = static_cast<float>(wanted);
    for (auto _ : state)
        for (options.seed = 1; options.seed <= rounds; ++options.seed) {
            RenderStats stats;
            const auto untuned = renderImage(scene, camera, options, &stats);
            measured["reached"].push_back(relativeError(untuned.value(), reference));
            measured["estimated"].push_back(stats.estimatedError);
            const Timed fast = timedTo(wanted, scene, camera, options, reference);
            const double error = relativeError(fast.image, reference);
            const double seconds =
                plainSeconds(plain, camera, bounces, reference, wanted, options.seed);
            measured["error"].push_back(error);
            measured["seconds"].push_back(fast.seconds * error / wanted);
            measured["plain_s"].push_back(seconds);
            measured["ratio"].push_back(fast.seconds * error / wanted / seconds);
        }
    show(state, measured);
}

/// Renders with several seeds and the plain path tracer in turn; all counters are medians.
void report(benchmark::State& state,
            const std::string& name,
            const Scene& scene,
            const Camera& camera,
            int bounces,
            RenderOptions options) {
    const PlainPathTracer plain(scene);
    const Image& reference = referenceOf(name, scene, camera, options.width, bounces);
    std::map<std::string, std::vector<double>> measured;
    for (auto _ : state)
        for (std::uint32_t seed = 1; seed <= rounds; ++seed) {
            options.seed = seed;
            const Timed fast = timed(scene, camera, options);
            const double error = relativeError(fast.image, reference);
            const double seconds = plainSeconds(plain, camera, bounces, reference, error, seed);
            measured["error"].push_back(error);
            measured["seconds"].push_back(fast.seconds);
            measured["plain_s"].push_back(seconds);
            measured["ratio"].push_back(fast.seconds / seconds);
            measured["mean_off_percent"].push_back(100.0 *
                                                   (meanOf(fast.image) / meanOf(reference) - 1.0));
        }
    show(state, measured);
}

/// A 50,000-triangle assembly under two lights, and a sky if there are bounces, to an error of
/// 0.01.
void adaptiveAssembly(benchmark::State& state) {
    const auto bounces = static_cast<int>(state.range(1));
    Scene scene = assemblyScene(50'000);
    if (state.range(2) != 0)
        scene.environment.radiance = {0.3F, 0.35F, 0.4F};
    RenderOptions options = pathTracing(static_cast<int>(state.range(0)), 1, bounces);
    options.samples = {1, 4096, 0.0F, {}};
    reportAtError(state, state.range(2) != 0 ? "sky" : "suns", scene, assemblyCamera(), bounces,
                  0.01, options);
}

/// The same with final gathering.
void gatheredAssembly(benchmark::State& state) {
    const auto bounces = static_cast<int>(state.range(1));
    Scene scene = assemblyScene(50'000);
    scene.environment.radiance = {0.3F, 0.35F, 0.4F};
    RenderOptions options = pathTracing(static_cast<int>(state.range(0)), 1, bounces);
    options.samples = {1, 4096, 0.0F, 0.01F};
    options.finalGather.on = true;
    options.finalGather.rays = static_cast<int>(state.range(2));
    report(state, "sky", scene, assemblyCamera(), bounces, options);
}

/// The Cornell box with all bounces that matter.
void gatheredCornellBox(benchmark::State& state) {
    constexpr int bounces = 8;
    RenderOptions options =
        pathTracing(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)), bounces);
    options.finalGather.on = true;
    options.finalGather.rays = static_cast<int>(state.range(2));
    report(state, "box", cornellBox(), cornellCamera(), bounces, options);
}

BENCHMARK(adaptiveAssembly)
    ->ArgNames({"width", "bounces", "sky"})
    ->Args({320, 0, 0})
    ->Args({320, 0, 1})
    ->Args({320, 2, 1})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(gatheredAssembly)
    ->ArgNames({"width", "bounces", "rays"})
    ->Args({320, 2, 64})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK(gatheredCornellBox)
    ->ArgNames({"width", "samples", "rays"})
    ->Args({320, 1, 64})
    ->Args({320, 2, 16})
    ->Args({320, 2, 64})
    ->Args({320, 4, 128})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

} // namespace
} // namespace qor::engine::benchmarks
