// The workbench's own way from a file to a document that can be shown: OpenDocument with the quick
// check and all representations; ImportStep and ImportGltf with the child process, the file that it
// makes and the reading of it. The gates are ratios: OpenDocument to ImportStep at least 10, to
// ImportGltf at least 2. Counter of MemoryOfDocument: `bytes_a_triangle`, the pages that the open
// document holds before the first render, each stored triangle counted once (goal: at most 60).
#include "benchmarks/import/BenchmarkModels.h"
#include "workbench/document/Document.h"
#include "workbench/document/session/ImportTask.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace {

using namespace qor;
using namespace qor::document;
namespace fs = std::filesystem;

/// Work that nobody watches or cancels.
class Alone : public WorkContext {
public:
    [[nodiscard]] std::stop_token stop() const override { return {}; }

    void report(int /*percent*/, const std::string& /*stage*/) const override {}
};

Result<LoadedDocument> importFile(const fs::path& model) {
    ImportOptions options;
    options.program = fs::read_symlink("/proc/self/exe").parent_path() / "qorimport";
    return importModel(model, options, Alone());
}

/// The models with the document, made once.
const import::benchmarks::Models& models() {
    static const struct Made : import::benchmarks::Models {
        Made() {
            Result<LoadedDocument> imported = importFile(step());
            if (!imported)
                std::abort();
            const auto document = QorMake<Document>(std::move(imported.value()));
            if (!writeDocument(saved(), document->takeSnapshot()))
                std::abort();
        }
    } made;

    return made;
}

std::uint64_t storedTriangles(const ProductReps& product) {
    std::uint64_t count = 0;
    for (const MeshPieces& mesh : product.meshes())
        for (const MeshPiece& piece : mesh.pieces)
            count += piece.mesh->CountTriangles();
    return count;
}

/// Of this process, as the system counts them: pages that are in memory and not those of files.
std::size_t bytesInUse() {
    malloc_trim(0); // what earlier work has left
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == "RssAnon:") {
            std::size_t kilobytes = 0;
            status >> kilobytes;
            return kilobytes * 1024;
        }
    return 0;
}

void importBenchmark(benchmark::State& state, const fs::path& model) {
    for (auto _ : state) {
        Result<LoadedDocument> loaded = importFile(model);
        if (!loaded)
            return state.SkipWithError(loaded.failure().text.c_str());
        const auto document = QorMake<Document>(std::move(loaded.value()));
        state.counters["triangles"] = static_cast<double>(storedTriangles(document->product()));
    }
}

void ImportStep(benchmark::State& state) {
    importBenchmark(state, models().step());
}

void ImportGltf(benchmark::State& state) {
    importBenchmark(state, models().glb());
}

void OpenDocument(benchmark::State& state) {
    const fs::path file = models().saved();
    for (auto _ : state) {
        Result<LoadedDocument> loaded = readDocument(file);
        if (!loaded)
            return state.SkipWithError(loaded.failure().text.c_str());
        const auto document = QorMake<Document>(std::move(loaded.value()));
        state.counters["triangles"] = static_cast<double>(storedTriangles(document->product()));
    }
}

/// Not a time but a size: see above.
void MemoryOfDocument(benchmark::State& state) {
    const fs::path file = models().saved();
    for (auto _ : state) {
        const std::size_t before = bytesInUse();
        Result<LoadedDocument> loaded = readDocument(file);
        if (!loaded)
            return state.SkipWithError(loaded.failure().text.c_str());
        const auto document = QorMake<Document>(std::move(loaded.value()));
        state.counters["bytes_a_triangle"] =
            static_cast<double>(bytesInUse() - before) /
            static_cast<double>(storedTriangles(document->product()));
    }
}

void TakeSnapshot(benchmark::State& state) {
    const auto document = QorMake<Document>(std::move(readDocument(models().saved()).value()));
    for (auto _ : state)
        benchmark::DoNotOptimize(document->takeSnapshot());
}

/// Of a product of 40,000 nodes, 200 parts and materials: what a save takes on the user-interface
/// thread. Goal: at most 20 ms.
void TakeSnapshotOfManyNodes(benchmark::State& state) {
    constexpr int nodes = 40000;
    constexpr int parts = 200;
    Product product;
    for (int i = 0; i < parts; ++i) {
        Mesh mesh;
        mesh.positions = {0, 0, 0, 1, 0, 0, 0, 1, static_cast<float>(i)};
        mesh.indices = {0, 1, 2};
        mesh.groups = {{.firstIndex = 0, .indexCount = 3, .material = i}};
        product.meshes.push_back(mesh);
        product.materials.emplace_back().name = "material of part " + std::to_string(i);
        product.parts.push_back({"a part with a long name " + std::to_string(i), i, none});
    }
    product.nodes.push_back({.name = "assembly", .parent = none, .part = none});
    for (int i = 1; i < nodes; ++i)
        product.nodes.push_back({.name = "an instance with a long name " + std::to_string(i),
                                 .parent = 0,
                                 .part = i % parts});
    const auto document = QorMake<Document>(LoadedDocument{ProductReps(product), {}, {}});
    for (auto _ : state)
        benchmark::DoNotOptimize(document->takeSnapshot());
}

void SaveDocument(benchmark::State& state) {
    const auto document = QorMake<Document>(std::move(readDocument(models().saved()).value()));
    for (auto _ : state)
        if (!writeDocument(models().saved().string() + ".2", document->takeSnapshot()))
            return state.SkipWithError("the document cannot be saved");
}

} // namespace

BENCHMARK(ImportStep)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(ImportGltf)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK(OpenDocument)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(MemoryOfDocument)->Iterations(1);
BENCHMARK(TakeSnapshot)->Unit(benchmark::kMillisecond)->Iterations(10);
BENCHMARK(TakeSnapshotOfManyNodes)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(SaveDocument)->Unit(benchmark::kMillisecond)->Iterations(5);
