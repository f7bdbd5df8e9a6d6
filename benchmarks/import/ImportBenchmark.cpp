// Counters: `library` is the share of an import that Open CASCADE or Assimp takes (goal: at least
// 0.8 where an import takes more than a second), `triangles` what is in the model. The gates on
// opening are ratios of the benchmarks' times: OpenDocument to ImportStep at least 10, to
// ImportGltf at least 2.
#include "benchmarks/import/BenchmarkModels.h"
#include "workbench/document/product/ProductFile.h"
#include "workbench/document/product/ProductQuery.h"
#include "workbench/import/model/ModelReader.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>

namespace {

using namespace qor;
namespace fs = std::filesystem;

/// The models with the document, made once.
const import::benchmarks::Models& models() {
    static const struct Made : import::benchmarks::Models {
        Made() {
            auto report = import::ImportReport([](const auto&, double) {}, [](const auto&) {});
            const auto product = import::readModel(step(), {}, report);
            if (!product || !document::writeProduct(saved(), product.value()))
                std::abort();
        }
    } made;

    return made;
}

std::uint64_t storedTriangles(const document::Product& product) {
    std::uint64_t count = 0;
    for (const document::Mesh& mesh : product.meshes)
        count += mesh.triangleCount();
    return count;
}

void importModel(benchmark::State& state, const fs::path& model) {
    double library = 0;
    double total = 0;
    for (auto _ : state) {
        const auto start = std::chrono::steady_clock::now();
        auto report = import::ImportReport([](const auto&, double) {}, [](const auto&) {});
        const auto product = import::readModel(model, {}, report);
        if (!product || !document::writeProduct(models().saved().string() + ".2", product.value()))
            return state.SkipWithError("the import failed");
        state.counters["triangles"] = static_cast<double>(storedTriangles(product.value()));
        library += report.librarySeconds();
        total += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }
    state.counters["library"] = library / total;
}

void ImportStep(benchmark::State& state) {
    importModel(state, models().step());
}

void ImportGltf(benchmark::State& state) {
    importModel(state, models().glb());
}

void OpenDocument(benchmark::State& state) {
    const fs::path file = models().saved();
    for (auto _ : state) {
        const auto product = document::readProduct(file);
        if (!product)
            return state.SkipWithError("the document does not open");
        state.counters["triangles"] = static_cast<double>(storedTriangles(product.value()));
    }
}

void SaveDocument(benchmark::State& state) {
    const auto product = document::readProduct(models().saved());
    for (auto _ : state)
        if (!document::writeProduct(models().saved().string() + ".2", product.value()))
            return state.SkipWithError("the document cannot be saved");
}

} // namespace

BENCHMARK(ImportStep)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(ImportGltf)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(OpenDocument)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(SaveDocument)->Unit(benchmark::kMillisecond)->Iterations(5);
