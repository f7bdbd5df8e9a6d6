// The scene dialog without a window: opening it on 200 scenes (aim: usable in 150 ms), until all of
// its thumbnails are there, made anew from pictures of 1920x1080 (cold) or read from the cache
// (warm, aim: 1 s); reading and sorting 10,000 scenes; and a step of a light's arrow (aim: 2 ms).
#include "platform/frame/QorFrmLayout.h"
#include "platform/frame/QorFrmWindow.h"
#include "platform/system/QorApplication.h"
#include "platform/system/QorExitHooks.h"
#include "platform/system/QorQueueLoop.h"
#include "scenes/QorRdgSceneDialog.h"
#include "scenes/QorRdgSceneManager.h"
#include "scenes/QorRdgWorkers.h"
#include "tests/support/QorScopedVariable.h"
#include "tests/support/QorTempDirectory.h"
#include "workbench/imaging/PictureFiles.h"

#include <benchmark/benchmark.h>

#include <cmath>

namespace {

/// A program with a document window and so many scenes, each with a picture of its own if asked
/// for.
class Program {
public:
    Program(int iScenes, bool iPictures) {
        std::string resources = "Count=\"" + std::to_string(iScenes) + "\";\n";
        std::string messages;
        for (int i = 1; i <= iScenes; ++i) {
            const std::string scene = "Scene" + std::to_string(i);
            messages += scene + ".Title=\"" + std::to_string(i * 7919L % 1000) + "\";\n";
            resources += scene + ".Light.Color1=\"1,1,1\";\n";
            if (!iPictures)
                continue;
            const std::string name = "p" + std::to_string(i) + ".jpg";
            const std::string target = directory.GetPath("start/rendering/" + name);
            std::filesystem::create_directories(directory.GetPath("start/rendering"));
            std::filesystem::copy_file(QOR_RESOURCES "/rendering/Daylight.jpg", target);
            resources += scene + ".Background.Image=\"" + name + "\";\n";
        }
        directory.Write("start/resources/QorRdgScenes.QorRsc", resources);
        directory.Write("start/messages/QorRdgScenes.QorMsg", messages);
        auto* editor = new QorFrmEditor(layout.Get(), "editor", QorMake<QorDocument>("doc").Get());
        auto* window = new QorFrmWindow(frame.Get(), "window", editor);
        window->SetViewer(new Qor3DViewer(window, "main", QorDlgDefaultStyle, 1280.0F, 960.0F));
        layout->SetCurrentWindow(window);
    }

    ~Program() {
        layout.Reset();
        frame.Reset();
        loop.RunPosted();
        QorRunExitHooks();
    }

    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    QorRdgSceneDialog* Open() {
        auto* dialog = new QorRdgSceneDialog(father.Get(), "sceneDialog");
        dialog->Init();
        dialog->SetVisibility(QorDlgSHOW);
        return dialog;
    }

    void Close(QorRdgSceneDialog* iDialog) {
        iDialog->RequestDelayedDestruction();
        loop.RunPosted();
    }

    QorTempDirectory directory;
    QorScopedVariable startUp{"QorStartupPath", directory.GetPath("start")};
    QorScopedVariable settings{"XDG_CONFIG_HOME", directory.GetPath("config")};
    QorScopedVariable temporary{"TMPDIR", directory.GetPath()};
    QorQueueLoop loop;
    QorInteractiveApplication application{loop};
    QorFrmLayout_var layout = QorMake<QorFrmLayout>(nullptr, "layout");
    QorVar<QorDialog> frame = QorMake<QorDialog>(nullptr, "frame");
    QorVar<QorDlgDialog> father = QorMake<QorDlgDialog>(nullptr, "father");
};

QorViewer* FindViewer(const QorDialog& iWidget) {
    for (QorDialog* one : iWidget.GetWidgets()) {
        if (auto* viewer = dynamic_cast<Qor3DViewer*>(one))
            return viewer;
        if (QorViewer* viewer = FindViewer(*one))
            return viewer;
    }
    return nullptr;
}

constexpr int sceneCount = 200;

void OpenDialog(benchmark::State& ioState) {
    Program program(sceneCount, true);
    benchmark::DoNotOptimize(QorRdgSceneManager::GetManager());
    for ([[maybe_unused]] auto turn : ioState) {
        QorRdgSceneDialog* dialog = program.Open();
        ioState.PauseTiming();
        QorRdgWorkers::Finish();
        program.Close(dialog);
        ioState.ResumeTiming();
    }
}

void OpenUntilThumbnails(benchmark::State& ioState, bool iCold) {
    Program program(sceneCount, true);
    benchmark::DoNotOptimize(QorRdgSceneManager::GetManager());
    const auto show = [&] {
        QorRdgSceneDialog* dialog = program.Open();
        QorRdgWorkers::Finish();
        return dialog;
    };
    program.Close(show());
    for ([[maybe_unused]] auto turn : ioState) {
        if (iCold) {
            ioState.PauseTiming();
            std::filesystem::remove_all(program.directory.GetPath(".icons"));
            ioState.ResumeTiming();
        }
        QorRdgSceneDialog* dialog = show();
        ioState.PauseTiming();
        program.Close(dialog);
        ioState.ResumeTiming();
    }
}

void ReadTenThousandScenes(benchmark::State& ioState) {
    const Program program(10'000, false);
    for ([[maybe_unused]] auto turn : ioState) {
        benchmark::DoNotOptimize(QorRdgSceneManager::GetManager()->GetPredefinedSceneCount());
        ioState.PauseTiming();
        QorRunExitHooks();
        ioState.ResumeTiming();
    }
}

void TurnAnArrow(benchmark::State& ioState) {
    Program program(0, false);
    QorRdgSceneManager::GetManager()->SetSceneType(1);
    QorRdgSceneDialog* dialog = program.Open();
    auto* viewer = FindViewer(*dialog);
    Qor3DManipulator* arrow = nullptr;
    for (QorManipulator* one : viewer->GetManipulators())
        if (one->GetName().Str() == "lightManipulator1")
            arrow = dynamic_cast<Qor3DManipulator*>(one);
    double angle = 0.0;
    for ([[maybe_unused]] auto turn : ioState) {
        angle += 0.01;
        arrow->TurnThirdTo(QorMathVector{std::cos(angle), std::sin(angle), 0.3});
    }
    program.Close(dialog);
}

class Pictures {
public:
    Pictures() { QorPictureService::Install(&files); }

private:
    qor::imaging::PictureFiles files;
};

const Pictures pictures;

BENCHMARK(OpenDialog)->Unit(benchmark::kMillisecond)->Iterations(5);
BENCHMARK_CAPTURE(OpenUntilThumbnails, warm, false)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(5);
BENCHMARK_CAPTURE(OpenUntilThumbnails, cold, true)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(1);
BENCHMARK(ReadTenThousandScenes)->Unit(benchmark::kMillisecond);
BENCHMARK(TurnAnArrow)->Unit(benchmark::kMicrosecond);

} // namespace
