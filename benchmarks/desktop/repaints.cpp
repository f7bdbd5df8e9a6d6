// A dragged handle of the area and a new picture of the viewer's size, or five times as large,
// beside a repaint in which nothing has changed. Where a processor draws, the picture that covers
// the viewer is painted without OpenGL; the same with it stands beside it.
#include "benchmarks/desktop/BenchmarkDesktop.h"
#include "platform/engine/QorIRdgViewerParts.h"
#include "platform/system/QorApplication.h"
#include "platform/vis/QorNavigation3DViewer.h"
#include "quickrender/QorRdgViewerAdapters.h"
#include "workbench/desktop/viewer/SpaceViewerPeer.h"

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

QorPixelImage_var newPicture(unsigned char grey, int times) {
    const std::size_t size = std::size_t{3} * width * height * times * times;
    return QorMake<QorPixelImage>(times * width, times * height, 3,
                                  std::make_shared<QorPixelImage::Pixels>(size, grey));
}

void repaintNothingNew(benchmark::State& state) {
    Scene scene;
    for (auto _ : state)
        scene.repaint();
}

QorMouseEvent mouse(QorMouseEvent::Action action, double x, double y) {
    QorMouseEvent event;
    event.action = action;
    event.button = QorMouseEvent::Button::Left;
    event.pixel = {x, y};
    return event;
}

/// A person drags the upper right corner of the area of a quick render to and fro.
void repaintADraggedHandle(benchmark::State& state) {
    Scene scene;
    QorRegisterViewerAdapters();
    QorNavigation3DViewer& viewer = scene.window.viewer();
    const auto area = QorQuery<QorIRdgArea>(&viewer);
    area->SetAreaMode(true);
    float shownWidth = 0.0F;
    float shownHeight = 0.0F;
    viewer.GetGraphicSize(shownWidth, shownHeight);
    const double x = 0.75 * static_cast<double>(shownWidth);
    const double y = 0.25 * static_cast<double>(shownHeight);
    area->SetArea(static_cast<int>(0.25F * shownWidth), static_cast<int>(0.25F * shownHeight),
                  static_cast<int>(x), static_cast<int>(static_cast<double>(shownHeight) - y));
    scene.repaint();
    viewer.HandleMouse(mouse(QorMouseEvent::Action::Press, x, y));
    double way = 0.0;
    for (auto _ : state) {
        way = way > 200.0 ? 0.0 : way + 1.0;
        viewer.HandleMouse(mouse(QorMouseEvent::Action::Move, x + way, y - 0.5 * way));
        BenchmarkDesktop::get().application().UpdateDisplay();
    }
    viewer.HandleMouse(mouse(QorMouseEvent::Action::Release, x, y));
    area->SetAreaMode(false);
}

/// A picture so many \p times as wide and high as the viewer.
void showPictures(benchmark::State& state, int times, bool isAlwaysOpenGl) {
    Scene scene;
    dynamic_cast<qor::desktop::SpaceViewerPeer&>(*scene.window.viewer().GetPeer())
        .setAlwaysOpenGl(isAlwaysOpenGl);
    QorVar<Qor2DImagePixelRep> shown;
    unsigned char grey = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const QorPixelImage_var picture = newPicture(grey++, times);
        state.ResumeTiming();
        scene.overlay->RemoveRep(shown.Get());
        shown =
            QorMake<Qor2DImagePixelRep>(QorMathPoint2D{-0.5 * width, -0.5 * height}, picture.Get());
        shown->SetZoom(1.0 / times, 1.0 / times);
        scene.overlay->AddRep(shown.Get());
        scene.repaint();
    }
}

void showANewPicture(benchmark::State& state) {
    showPictures(state, 1, false);
}

void showANewPictureWithOpenGl(benchmark::State& state) {
    showPictures(state, 1, true);
}

void showANewLargePicture(benchmark::State& state) {
    showPictures(state, 5, false);
}

BENCHMARK(repaintNothingNew)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(repaintADraggedHandle)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(showANewPicture)->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
BENCHMARK(showANewPictureWithOpenGl)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();
BENCHMARK(showANewLargePicture)
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

} // namespace
