// A dragged overlay and a new picture of the viewer's size beside a repaint in which nothing has
// changed.
#include "benchmarks/desktop/BenchmarkDesktop.h"
#include "platform/system/QorApplication.h"
#include "platform/vis/QorNavigation3DViewer.h"

#include <benchmark/benchmark.h>

namespace {

constexpr int width = 1920;
constexpr int height = 1080;

/// A window of a viewer with a product and an overlay of pixels.
struct Scene {
    Scene() {
        QorMesh::Data data;
        for (int bolt = 0; bolt < 100; ++bolt)
            addBolt(data, 10.0 * (bolt % 10), 10.0 * (bolt / 10));
        const QorMesh_var mesh = QorMake<QorMesh>(std::move(data));
        window.viewer().AddRep(QorMake<Qor3DMeshRep>(mesh.Get(), nullptr).Get());
        window.viewer().SetGlobalAmbientLight(0.4F, 0.4F, 0.4F);
        window.viewer().FitAll();
        const double unit = static_cast<double>(window.viewer().GetSupport()->GetMMInSupportUnit());
        overlay = QorMake<Qor2DViewpoint>(QorMathPoint2D(), 1.0 / unit);
        overlay->SetPriority(6);
        window.viewer().AddViewpoint(overlay.Get());
        BenchmarkDesktop::get().settle();
        repaint();
    }

    void repaint() {
        window.viewer().Draw();
        BenchmarkDesktop::get().application().UpdateDisplay();
    }

    BenchmarkWindow window{width, height};
    Qor2DViewpoint_var overlay;
};

QorPixelImage_var newPicture(unsigned char grey) {
    const std::size_t size = std::size_t{3} * width * height;
    return QorMake<QorPixelImage>(width, height, 3,
                                  std::make_shared<QorPixelImage::Pixels>(size, grey));
}

void repaintNothingNew(benchmark::State& state) {
    Scene scene;
    for (auto _ : state)
        scene.repaint();
}

void repaintADraggedRectangle(benchmark::State& state) {
    Scene scene;
    auto shade = QorMake<Qor2DCustomRep>();
    scene.overlay->AddRep(shade.Get());
    auto edge = QorMake<Qor2DLineRep>(std::vector<QorMathPoint2D>());
    edge->SetAttributes({.color = {255, 255, 255, 255}});
    scene.overlay->AddRep(edge.Get());
    double x = 0.0;
    for (auto _ : state) {
        x = x > 300.0 ? 0.0 : x + 1.0;
        edge->SetPoints({{-x, -x}, {x, -x}, {x, x}, {-x, x}, {-x, -x}});
        auto dimmed = QorMake<Qor2DCustomRep>();
        dimmed->AddPrimitive(
            Qor2DQuadStripGP{{{{{-900.0, -500.0}, {-x, -500.0}, {-x, 500.0}, {-900.0, 500.0}}}}});
        dimmed->SetAttributes({.color = {0, 0, 0, 70}});
        scene.overlay->RemoveRep(shade.Get());
        scene.overlay->AddRep(dimmed.Get());
        shade = dimmed;
        scene.repaint();
    }
}

void showANewPicture(benchmark::State& state) {
    Scene scene;
    QorVar<Qor2DImagePixelRep> shown;
    unsigned char grey = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const QorPixelImage_var picture = newPicture(grey++);
        state.ResumeTiming();
        scene.overlay->RemoveRep(shown.Get());
        shown =
            QorMake<Qor2DImagePixelRep>(QorMathPoint2D{-0.5 * width, -0.5 * height}, picture.Get());
        scene.overlay->AddRep(shown.Get());
        scene.repaint();
    }
}

BENCHMARK(repaintNothingNew)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(repaintADraggedRectangle)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(showANewPicture)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();

} // namespace
