// Picking: making the tree of a large mesh, a ray through it with the tree and without, and a ray
// into an assembly of many instances.
#include "platform/vis/QorMeshHierarchy.h"
#include "platform/vis/QorPicker.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>

namespace {

constexpr double far = 1.0e30;

/// A bumpy ball of about that many triangles.
QorMesh::Data MakeBall(std::uint32_t iTriangles) {
    const auto side = static_cast<std::uint32_t>(std::sqrt(0.5 * iTriangles)) + 1;
    QorMesh::Data data;
    std::mt19937 random(1);
    std::uniform_real_distribution<double> bump(0.98, 1.02);
    for (std::uint32_t row = 0; row < side; ++row)
        for (std::uint32_t column = 0; column < side; ++column) {
            const double polar = 3.14159 * row / (side - 1);
            const double around = 6.28318 * column / (side - 1);
            const double radius = bump(random);
            data.positions.insert(data.positions.end(),
                                  {static_cast<float>(radius * std::sin(polar) * std::cos(around)),
                                   static_cast<float>(radius * std::sin(polar) * std::sin(around)),
                                   static_cast<float>(radius * std::cos(polar))});
        }
    for (std::uint32_t row = 0; row + 1 < side; ++row)
        for (std::uint32_t column = 0; column + 1 < side; ++column) {
            const std::uint32_t at = row * side + column;
            data.indices.insert(data.indices.end(),
                                {at, at + 1, at + side, at + 1, at + side + 1, at + side});
        }
    return data;
}

/// Rays from above, down into what lies between -1 and 1.
class Rays {
public:
    QorMathRay Next() { return {{at(random), at(random), 100.0}, {0.0, 0.0, -1.0}}; }

private:
    std::mt19937 random{2};
    std::uniform_real_distribution<double> at{-1.0, 1.0};
};

void MakeTree(benchmark::State& ioState) {
    const QorMesh::Data data = MakeBall(static_cast<std::uint32_t>(ioState.range(0)));
    for (auto _ : ioState) {
        const QorMeshHierarchy tree(data);
        benchmark::DoNotOptimize(&tree);
    }
}

BENCHMARK(MakeTree)->Arg(30000)->Arg(500000)->Unit(benchmark::kMillisecond);

void PickWithTree(benchmark::State& ioState) {
    const QorMesh::Data data = MakeBall(500000);
    const QorMeshHierarchy tree(data);
    Rays rays;
    for (auto _ : ioState)
        benchmark::DoNotOptimize(tree.Intersect(rays.Next(), far));
}

BENCHMARK(PickWithTree)->Unit(benchmark::kMicrosecond);

void PickWithoutTree(benchmark::State& ioState) {
    const QorMesh::Data data = MakeBall(500000);
    Rays rays;
    for (auto _ : ioState)
        benchmark::DoNotOptimize(QorMeshHierarchy::IntersectAll(data, rays.Next(), far));
}

BENCHMARK(PickWithoutTree)->Unit(benchmark::kMillisecond);

/// 10,000 turned instances of one part, all in one bag or in a hundred.
void PickInAssembly(benchmark::State& ioState) {
    const auto part = QorMake<QorMesh>(MakeBall(1000));
    const auto bags = static_cast<int>(ioState.range(0));
    const auto root = QorMake<Qor3DBagRep>();
    std::mt19937 random(3);
    std::uniform_real_distribution<double> at(-1.0, 1.0);
    for (int bag = 0; bag < bags; ++bag) {
        const auto assembly = QorMake<Qor3DBagRep>();
        const QorMathVector place{at(random), at(random), at(random)};
        for (int i = 0; i < 10000 / bags; ++i) {
            const auto instance = QorMake<Qor3DBagRep>();
            instance->AddChild(QorMake<Qor3DMeshRep>(part, nullptr));
            QorMathTransformation matrix =
                QorMathTransformation::Rotation({at(random), at(random), 1.0}, at(random));
            for (QorMathVector& axis : matrix.axes)
                axis = axis * 0.01;
            matrix.origin = QorMathVector{at(random), at(random), at(random)} * (1.0 / bags);
            instance->SetMatrix(matrix);
            assembly->AddChild(instance);
        }
        assembly->SetMatrix(QorMathTransformation::Translation(place));
        root->AddChild(assembly);
    }
    Rays rays;
    for (auto _ : ioState)
        benchmark::DoNotOptimize(QorPicker::Pick(*root, rays.Next(), far));
}

BENCHMARK(PickInAssembly)->Arg(1)->Arg(100)->Unit(benchmark::kMicrosecond);

} // namespace
