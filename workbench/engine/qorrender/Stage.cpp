#include "workbench/engine/qorrender/Stage.h"

#include "platform/frame/QorFrmEditor.h"
#include "platform/frame/QorFrmLayout.h"
#include "platform/frame/QorFrmWindow.h"
#include "platform/system/QorApplication.h"
#include "platform/system/QorEnvironment.h"
#include "platform/system/QorQueueLoop.h"
#include "platform/text/QorCatalogs.h"
#include "platform/vis/QorViewer.h"
#include "quickrender/QorRdgViewerAdapters.h"
#include "scenes/QorRdgSceneManager.h"
#include "workbench/engine/adapter/StandardLights.h"
#include "workbench/engine/adapter/ViewerWorld.h"
#include "workbench/engine/qorrender/Failure.h"
#include "workbench/imaging/PictureFiles.h"

#include <charconv>
#include <filesystem>

namespace qor::render {

namespace {

/// Of the lights of a plain stage.
constexpr double softDegrees = 4.0;
constexpr QorColor backdropTop{188, 194, 203, 255};
constexpr QorColor backdropBottom{238, 239, 240, 255};

/// The program's own resources lie beside its folder.
void useResources() {
    constexpr const char* variable = "QorStartupPath";
    std::error_code missing;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", missing);
    if (missing)
        return;
    const std::string folder =
        (program.parent_path().parent_path() / "share" / "qorworkbench").string();
    QorCatalogs::SetProgramDirectory(folder.c_str());
    if (!QorGetEnv(variable))
        QorSetEnv(variable, folder.c_str());
}

} // namespace

class Stage::Window {
public:
    Window() {
        useResources();
        QorPictureService::Install(&pictures_);
        QorRegisterViewerAdapters();
        adapter::registerWorldAdapter();
        auto* layout = new QorFrmLayout(nullptr, "layout");
        auto* editor = new QorFrmEditor(layout, "editor", nullptr);
        auto* window = new QorFrmWindow(layout, "window", editor);
        constexpr float side = 1024.0F;
        viewer_ = new Qor3DViewer(window, "viewer", QorDlgDefaultStyle, side, side);
        window->SetViewer(viewer_);
        layout->SetCurrentWindow(window);
        layout_ = layout;
    }

    ~Window() {
        layout_->RequestDelayedDestruction();
        loop_.RunPosted();
        QorPictureService::Install(nullptr);
    }

    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;
    Window(Window&&) = delete;
    Window& operator=(Window&&) = delete;

    void chooseScene(const std::string& name) {
        const QorRdgSceneManager& manager = *QorRdgSceneManager::GetManager();
        if (name == "custom") {
            scene_ = manager.GetCustomScene();
            if (scene_ == nullptr)
                throw Failure("the settings with the custom scene cannot be read");
            return;
        }
        int number = 0;
        std::from_chars(name.data(), name.data() + name.size(), number);
        const int count = std::max(manager.GetPredefinedSceneCount(), 0);
        for (int i = 0; i < count && scene_ == nullptr; ++i)
            if (manager.GetPredefinedScene(i)->index == number - 1)
                scene_ = manager.GetPredefinedScene(i);
        if (scene_ == nullptr)
            throw WrongUsage("--scene: there is no scene " + name + ", only 1 to " +
                             std::to_string(count) + " and custom");
    }

    QorRdgSnapshot show(const document::ProductReps& product) {
        viewer_->AddRep(product.root());
        QorRdgSnapshot snapshot;
        if (scene_ != nullptr) {
            QorRdgSceneManager::GetManager()->SetScene(scene_);
            adapter::collectViewer(*viewer_, snapshot);
        } else {
            adapter::lightUp(*viewer_);
            adapter::collectViewer(*viewer_, snapshot);
            snapshot.softShadows = softDegrees;
            snapshot.backgroundColor = backdropTop;
            snapshot.backgroundBottom = backdropBottom;
        }
        viewer_->RemoveRep(product.root());
        return snapshot;
    }

private:
    QorQueueLoop loop_;
    QorInteractiveApplication application_{loop_};
    imaging::PictureFiles pictures_;
    QorFrmLayout* layout_ = nullptr;
    Qor3DViewer* viewer_ = nullptr;
    const QorRdgScene* scene_ = nullptr;
};

Stage::Stage() : window_(std::make_unique<Window>()) {}

Stage::~Stage() = default;

void Stage::chooseScene(const std::string& name) {
    window_->chooseScene(name);
}

QorRdgSnapshot Stage::show(const document::ProductReps& product) {
    return window_->show(product);
}

} // namespace qor::render
