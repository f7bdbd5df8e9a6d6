// What a person waits for during a quick render of 500,000 triangles at 1280 x 960: the first
// picture, the longest gap between two, the longest turn of the user-interface thread, the end
// after an abort, and what a second render builds after a camera move.
#include "platform/engine/QorRdgEngineManager.h"
#include "platform/engine/QorRdgOptionsDefaults.h"
#include "platform/frame/QorFrmEditor.h"
#include "platform/frame/QorFrmLayout.h"
#include "platform/frame/QorFrmWindow.h"
#include "platform/system/QorApplication.h"
#include "platform/system/QorQueueLoop.h"
#include "platform/vis/QorViewer.h"
#include "workbench/engine/adapter/Engine.h"
#include "workbench/engine/adapter/StandardLights.h"
#include "workbench/engine/adapter/ViewerWorld.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <numbers>
#include <thread>

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

constexpr int width = 1280;
constexpr int height = 960;

/// Notes when pictures come.
class Display : public QorImplements<QorBaseUnknown, QorIRdgDisplay> {
public:
    QorResult Draw(QorPixelImage* /*iImage*/) override {
        times.push_back(Clock::now());
        return S_OK;
    }

    QorResult Clear() override { return S_OK; }

    QorResult CheckAbort(unsigned char& ioAbort) override {
        ioAbort = 0;
        return S_OK;
    }

    QorResult SetProgress(int& /*iPercent*/) override { return S_OK; }

    QorResult SetMessage(QorUnicodeString& /*iText*/) override { return E_FAIL; }

    std::vector<Clock::time_point> times;
};

/// A sphere of \p rings × 2 \p rings quadrangles with normals.
QorMesh_var makeSphere(int rings, double radius) {
    QorMesh::Data data;
    const int columns = 2 * rings;
    for (int row = 0; row <= rings; ++row)
        for (int column = 0; column <= columns; ++column) {
            const double theta = std::numbers::pi * row / rings;
            const double phi = 2 * std::numbers::pi * column / columns;
            const double normal[3] = {std::sin(theta) * std::cos(phi),
                                      std::sin(theta) * std::sin(phi), std::cos(theta)};
            for (const double n : normal) {
                data.normals.push_back(static_cast<float>(n));
                data.positions.push_back(static_cast<float>(n * radius));
            }
        }
    const auto at = [columns](int row, int column) {
        return static_cast<std::uint32_t>(row * (columns + 1) + column);
    };
    for (int row = 0; row < rings; ++row)
        for (int column = 0; column < columns; ++column)
            for (const std::uint32_t index :
                 {at(row, column), at(row + 1, column), at(row + 1, column + 1), at(row, column),
                  at(row + 1, column + 1), at(row, column + 1)})
                data.indices.push_back(index);
    return QorMake<QorMesh>(std::move(data));
}

/// A program that shows 125 spheres of 4,050 triangles.
class Program : public QorEventSubscriber {
public:
    Program() {
        qor::adapter::registerWorldAdapter();
        auto owned = std::make_unique<qor::adapter::Engine>();
        engine = owned.get();
        QorRdgEngineManager::SetEngine(std::move(owned));
        manager().GetCallbackManager()->AddCallback(this, QorRdgEngineManager::RENDER_DONE,
                                                    &Program::doneCB);
        layout = new QorFrmLayout(nullptr, "layout");
        auto* editor = new QorFrmEditor(layout, "editor", nullptr);
        auto* window = new QorFrmWindow(layout, "window", editor);
        viewer = new Qor3DViewer(window, "viewer", QorDlgDefaultStyle, width, height);
        window->SetViewer(viewer);
        layout->SetCurrentWindow(window);
        addSpheres();
        qor::adapter::lightUp(*viewer);
        look(-30.0);
        engine->prepare(*QorQuery<QorIRdgWorld>(viewer));
        while (engine->workersRunning() > 0)
            loop.RunOneTurn(std::chrono::milliseconds(1));
    }

    ~Program() {
        manager().StopRender();
        layout->RequestDelayedDestruction();
        loop.RunPosted();
        QorRdgEngineManager::SetEngine(nullptr);
    }

    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;
    Program(Program&&) = delete;
    Program& operator=(Program&&) = delete;

    static QorRdgEngineManager& manager() { return *QorRdgEngineManager::GetManager(); }

    void look(double degrees) {
        const double angle = degrees * std::numbers::pi / 180;
        viewer->GetMain3DViewpoint()->SetView({420 * std::cos(angle), 420 * std::sin(angle), 260},
                                              {}, {0, 0, 1});
    }

    void start() {
        display = QorMake<Display>();
        done = false;
        started = Clock::now();
        longestTurn = {};
        const auto world = QorQuery<QorIRdgWorld>(viewer);
        manager().StartRender(world, display, options, true, width, height, nullptr, false, true);
        longestTurn = Clock::now() - started;
    }

    /// Turns until \p until answers true, and notes the longest turn that did something.
    template <typename Until>
    void turn(const Until& until) {
        while (!until()) {
            const auto before = Clock::now();
            if (loop.RunOneTurn(std::chrono::milliseconds(0)))
                longestTurn = std::max<Milliseconds>(longestTurn, Clock::now() - before);
            else
                std::this_thread::sleep_for(std::chrono::microseconds(200));
        }
    }

    void end() {
        manager().StopRender();
        turn([this] { return done; });
        while (engine->workersRunning() > 0)
            loop.RunOneTurn(std::chrono::milliseconds(1));
    }

    void doneCB(QorEventName, QorBaseUnknown*, QorNotification*, QorSubscriberData, QorCallbackId) {
        done = true;
    }

    QorQueueLoop loop;
    QorInteractiveApplication application{loop};
    qor::adapter::Engine* engine = nullptr;
    QorVar<Display> display;
    Clock::time_point started;
    Milliseconds longestTurn{};
    bool done = false;

private:
    void addSpheres() {
        const QorMesh_var sphere = makeSphere(32, 14.0);
        for (int i = 0; i < 125; ++i) {
            const auto bag = QorMake<Qor3DBagRep>();
            bag->SetMatrix(QorMathTransformation::Translation(
                {(i % 5 - 2) * 32.0, (i / 5 % 5 - 2) * 32.0, (i / 25 - 2) * 32.0}));
            bag->AddChild(QorMake<Qor3DMeshRep>(sphere.Get(), nullptr));
            viewer->AddRep(bag);
        }
    }

    QorFrmLayout* layout = nullptr;
    Qor3DViewer* viewer = nullptr;
    QorVar<QorRdgPreviewOptionsDefaults> options = QorMake<QorRdgPreviewOptionsDefaults>();
};

void firstPicture(benchmark::State& state) {
    Program program;
    double longestTurn = 0.0;
    for ([[maybe_unused]] const auto step : state) {
        program.start();
        program.turn([&] { return !program.display->times.empty(); });
        const Milliseconds took = program.display->times.front() - program.started;
        state.SetIterationTime(took.count() / 1000);
        longestTurn = std::max(longestTurn, program.longestTurn.count());
        program.end();
    }
    state.counters["longest_turn_ms"] = longestTurn;
}

void gapBetweenPictures(benchmark::State& state) {
    Program program;
    constexpr std::size_t pictures = 8;
    double longestTurn = 0.0;
    for ([[maybe_unused]] const auto step : state) {
        program.start();
        program.turn([&] { return program.done || program.display->times.size() >= pictures; });
        Milliseconds longest{};
        const auto& times = program.display->times;
        for (std::size_t i = 1; i < times.size(); ++i)
            longest = std::max<Milliseconds>(longest, times[i] - times[i - 1]);
        state.SetIterationTime(longest.count() / 1000);
        longestTurn = std::max(longestTurn, program.longestTurn.count());
        program.end();
    }
    state.counters["longest_turn_ms"] = longestTurn;
}

void abortWhileTracing(benchmark::State& state) {
    Program program;
    for ([[maybe_unused]] const auto step : state) {
        program.start();
        program.turn([&] { return program.display->times.size() >= 2 || program.done; });
        const auto pressed = Clock::now();
        Program::manager().StopRender();
        program.turn([&] { return program.done; });
        state.SetIterationTime(Milliseconds(Clock::now() - pressed).count() / 1000);
        program.end();
    }
}

void cameraMove(benchmark::State& state) {
    Program program;
    const std::uint64_t made = program.engine->cache()->madeCount();
    double angle = -30.0;
    for ([[maybe_unused]] const auto step : state) {
        program.look(angle += 7.0);
        program.start();
        program.turn([&] { return !program.display->times.empty(); });
        const Milliseconds took = program.display->times.front() - program.started;
        state.SetIterationTime(took.count() / 1000);
        program.end();
    }
    state.counters["made"] = static_cast<double>(program.engine->cache()->madeCount() - made);
}

BENCHMARK(firstPicture)->UseManualTime()->Iterations(9)->Unit(benchmark::kMillisecond);
BENCHMARK(gapBetweenPictures)->UseManualTime()->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(abortWhileTracing)->UseManualTime()->Iterations(9)->Unit(benchmark::kMillisecond);
BENCHMARK(cameraMove)->UseManualTime()->Iterations(9)->Unit(benchmark::kMillisecond);

} // namespace
