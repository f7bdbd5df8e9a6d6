// What a change of one of many instances costs, and the box of all of them.
#include "platform/vis/Qor3DReps.h"

#include <benchmark/benchmark.h>

namespace {

QorMesh_var MakeTriangle() {
    QorMesh::Data data;
    data.positions = {0, 0, 0, 1, 0, 0, 0, 1, 0};
    data.indices = {0, 1, 2};
    return QorMake<QorMesh>(data);
}

struct Assembly {
    Assembly() {
        const QorMesh_var mesh = MakeTriangle();
        for (int i = 0; i < 10000; ++i) {
            const auto instance = QorMake<Qor3DBagRep>();
            instance->AddChild(QorMake<Qor3DMeshRep>(mesh, nullptr));
            root->AddChild(instance);
        }
    }

    QorVar<Qor3DBagRep> root = QorMake<Qor3DBagRep>();
};

void BuildAssembly(benchmark::State& ioState) {
    for (auto _ : ioState) {
        const Assembly assembly;
        benchmark::DoNotOptimize(assembly.root.Get());
    }
}

BENCHMARK(BuildAssembly)->Unit(benchmark::kMillisecond);

void HighlightOne(benchmark::State& ioState) {
    const Assembly assembly;
    Qor3DRep& part = *assembly.root->GetChildren().at(5000);
    bool on = false;
    for (auto _ : ioState) {
        part.SetHighlighted(on = !on);
        benchmark::DoNotOptimize(assembly.root->GetRevision());
    }
}

BENCHMARK(HighlightOne);

void MoveOneAndAskForTheBox(benchmark::State& ioState) {
    const Assembly assembly;
    auto& part = static_cast<Qor3DBagRep&>(*assembly.root->GetChildren().at(5000));
    double x = 0.0;
    for (auto _ : ioState) {
        part.SetMatrix(QorMathTransformation::Translation({x += 1.0, 0.0, 0.0}));
        benchmark::DoNotOptimize(assembly.root->GetBoundingBox());
    }
}

BENCHMARK(MoveOneAndAskForTheBox)->Unit(benchmark::kMicrosecond);

} // namespace
