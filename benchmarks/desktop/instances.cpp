// Many instances of one mesh beside one mesh of the same triangles, drawn from a camera that moves.
#include "benchmarks/desktop/BenchmarkDesktop.h"
#include "platform/vis/QorNavigation3DViewer.h"
#include "workbench/desktop/viewer/gl/SpaceLayer.h"

#include <benchmark/benchmark.h>

#include <QOffscreenSurface>
#include <QOpenGLContext>

namespace {

using namespace qor::desktop;

constexpr int side = 100; // of the square of bolts: ten thousand
constexpr double pitch = 10.0;

QorVar<Qor3DBagRep> instancedBolts() {
    QorMesh::Data data;
    addBolt(data, 0.0, 0.0);
    const QorMesh_var bolt = QorMake<QorMesh>(std::move(data));
    auto all = QorMake<Qor3DBagRep>();
    for (int x = 0; x < side; ++x)
        for (int y = 0; y < side; ++y) {
            auto bag = QorMake<Qor3DBagRep>();
            bag->SetMatrix(QorMathTransformation::Translation({x * pitch, y * pitch, 0.0}));
            bag->AddChild(QorMake<Qor3DMeshRep>(bolt.Get(), nullptr).Get());
            all->AddChild(bag.Get());
        }
    return all;
}

QorVar<Qor3DBagRep> boltsInOneMesh() {
    QorMesh::Data data;
    for (int x = 0; x < side; ++x)
        for (int y = 0; y < side; ++y)
            addBolt(data, x * pitch, y * pitch);
    auto all = QorMake<Qor3DBagRep>();
    const QorMesh_var mesh = QorMake<QorMesh>(std::move(data));
    all->AddChild(QorMake<Qor3DMeshRep>(mesh.Get(), nullptr).Get());
    return all;
}

/// An OpenGL context without a window.
class Context {
public:
    Context() {
        QSurfaceFormat format;
        format.setVersion(3, 3);
        format.setProfile(QSurfaceFormat::CoreProfile);
        context_.setFormat(format);
        context_.create();
        surface_.setFormat(context_.format());
        surface_.create();
        context_.makeCurrent(&surface_);
    }

    [[nodiscard]] Gl& gl() { return *context_.extraFunctions(); }

private:
    QOpenGLContext context_;
    QOffscreenSurface surface_;
};

void draw(benchmark::State& state, const QorVar<Qor3DBagRep>& bolts) {
    BenchmarkDesktop::get();
    Context context;
    auto* viewer = new QorNavigation3DViewer(nullptr, "viewer", QorDlgDefaultStyle, 800.0F, 600.0F);
    viewer->AddRep(bolts.Get());
    viewer->SetGlobalAmbientLight(0.4F, 0.4F, 0.4F);
    const QSize size(800, 600);
    {
        SpaceLayer layer(context.gl());
        const ViewerLook look;
        QorView view = QorView::Of(*viewer->GetMain3DViewpoint())
                           .Fitted(viewer->GetProductBox(), 800.0 / 600.0);
        layer.update(*viewer, size, look); // uploads
        context.gl().glFinish();
        for (auto _ : state) {
            view = view.Orbited(view.target, {0, 0, 1}, 0.01, 0.0);
            view.ApplyTo(*viewer->GetMain3DViewpoint());
            layer.update(*viewer, size, look);
            context.gl().glFinish();
        }
        state.counters["triangles"] = side * side * 116.0;
    }
    viewer->RequestDelayedDestruction();
    BenchmarkDesktop::get().settle();
}

void drawInstances(benchmark::State& state) {
    draw(state, instancedBolts());
}

void drawOneMesh(benchmark::State& state) {
    draw(state, boltsInOneMesh());
}

BENCHMARK(drawInstances)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(drawOneMesh)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

} // namespace
