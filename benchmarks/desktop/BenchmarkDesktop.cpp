#include "benchmarks/desktop/BenchmarkDesktop.h"

#include "platform/dialog/QorDlgDialog.h"
#include "platform/system/QorApplication.h"
#include "platform/vis/QorNavigation3DViewer.h"
#include "workbench/desktop/Desktop.h"
#include "workbench/desktop/loop/QtEventLoop.h"

#include <benchmark/benchmark.h>

#include <QApplication>

#include <cmath>
#include <numbers>

using namespace qor::desktop;

struct BenchmarkDesktop::Parts {
    Parts() { application.SetDisplayUpdater(Desktop::displayUpdater()); }

    int count = 1;
    char name[10] = "benchmark";
    char* arguments[2] = {name, nullptr};
    QApplication qt{count, arguments};
    QtEventLoop loop;
    QorInteractiveApplication application{loop};
    Desktop desktop{ThemeChoice::Light};
};

namespace {

std::unique_ptr<BenchmarkDesktop> desktopInUse;

} // namespace

BenchmarkDesktop& BenchmarkDesktop::get() {
    if (!desktopInUse)
        desktopInUse.reset(new BenchmarkDesktop);
    return *desktopInUse;
}

BenchmarkDesktop::BenchmarkDesktop() {
    Desktop::prepareApplication();
    parts_ = std::make_unique<Parts>();
}

BenchmarkDesktop::~BenchmarkDesktop() = default;

QorInteractiveApplication& BenchmarkDesktop::application() {
    return parts_->application;
}

void BenchmarkDesktop::settle() {
    for (int turn = 0; turn < 30; ++turn)
        parts_->loop.RunOneTurn(std::chrono::milliseconds(10));
}

BenchmarkWindow::BenchmarkWindow(int width, int height)
    : window_((BenchmarkDesktop::get(), new QorDlgDialog(nullptr, "window", QorDlgWndOK)))
    , viewer_(new QorNavigation3DViewer(window_,
                                        "viewer",
                                        QorDlgDefaultStyle,
                                        static_cast<float>(width),
                                        static_cast<float>(height))) {
    window_->Attach4Sides(viewer_);
    window_->SetVisibility(QorDlgSHOW);
    BenchmarkDesktop::get().settle();
}

BenchmarkWindow::~BenchmarkWindow() {
    window_->RequestDelayedDestruction();
    BenchmarkDesktop::get().settle();
}

void addBolt(QorMesh::Data& data, double x, double y) {
    struct Ring {
        double radius;
        double z;
        int facets;
    };

    // Head and shaft as rings that are joined, with a fan over each end.
    constexpr int facets = 12;
    constexpr Ring rings[] = {{4.0, 0.0, facets},
                              {4.0, 3.0, facets},
                              {2.0, 3.0, facets},
                              {2.0, 12.0, facets},
                              {1.6, 12.5, facets}};
    const auto first = static_cast<std::uint32_t>(data.positions.size() / 3);
    for (const Ring& ring : rings)
        for (int i = 0; i < ring.facets; ++i) {
            const double angle = 2.0 * std::numbers::pi * i / ring.facets;
            for (const double value :
                 {x + ring.radius * std::cos(angle), y + ring.radius * std::sin(angle), ring.z})
                data.positions.push_back(static_cast<float>(value));
            for (const double value : {std::cos(angle), std::sin(angle), 0.0})
                data.normals.push_back(static_cast<float>(value));
        }
    for (std::uint32_t ring = 0; ring + 1 < std::size(rings); ++ring)
        for (std::uint32_t i = 0; i < facets; ++i) {
            const std::uint32_t low = first + ring * facets;
            const std::uint32_t next = (i + 1) % facets;
            const std::uint32_t corners[] = {low + i, low + next,          low + facets + next,
                                             low + i, low + facets + next, low + facets + i};
            data.indices.insert(data.indices.end(), std::begin(corners), std::end(corners));
        }
    for (const std::uint32_t ring : {0U, 4U})
        for (std::uint32_t i = 1; i + 1 < facets; ++i)
            data.indices.insert(
                data.indices.end(),
                {first + ring * facets, first + ring * facets + i, first + ring * facets + i + 1});
}

/// Qt has to go before the program's statics do.
int main(int count, char** arguments) {
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    desktopInUse.reset();
}
