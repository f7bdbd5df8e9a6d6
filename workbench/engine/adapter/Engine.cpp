#include "workbench/engine/adapter/Engine.h"

#include "platform/system/QorPaths.h"
#include "workbench/engine/adapter/Memory.h"
#include "workbench/engine/adapter/OptionsTranslation.h"
#include "workbench/engine/adapter/RunningRender.h"

#include <new>
#include <system_error>

namespace qor::adapter {

namespace {

/// Options may bring a background of their own.
void applyBackground(QorIRdgOptions* options, QorRdgSnapshot& snapshot) {
    QorString name;
    int stretch = 0;
    if (options == nullptr || !QorSucceeded(options->GetBackground(name, stretch)))
        return;
    const QorPixelImage_var image =
        QorAdopt(QorPixelImage::CreateFromFile(QorGetImagePathName(name.Str())));
    if (image)
        snapshot.background = QorRdgBackgroundPicture{image, stretch != 0};
}

std::unique_ptr<QorRdgRender> refuse(QorUnicodeString& reason, const char* text) {
    reason = text;
    return nullptr;
}

void prepareNow(const SceneRecipe& recipe, ContentCache& cache) {
    try {
        const auto scene = cache.makeScene(recipe);
        if (scene && scene.value().assembly)
            (void)scene.value().assembly->prepare();
    } catch (const std::exception&) { // the render will fail in the same way, and say so
    }
}

} // namespace

Engine::Engine() : cache_(std::make_shared<ContentCache>()) {}

Engine::~Engine() {
    workers_.waitForAll();
    engine::waitForAllRenders();
}

std::unique_ptr<QorRdgRender> Engine::Start(const QorRdgRequest& request,
                                            QorUnicodeString& reason) {
    try {
        return startOrRefuse(request, reason);
    } catch (const std::bad_alloc&) {
        return refuse(reason, "there is not enough memory to render");
    } catch (const std::system_error& failure) {
        return refuse(reason, failure.what());
    }
}

std::unique_ptr<QorRdgRender> Engine::startOrRefuse(const QorRdgRequest& request,
                                                    QorUnicodeString& reason) {
    QorRdgSnapshot snapshot;
    if (request.world == nullptr || !QorSucceeded(request.world->Collect(snapshot)))
        return refuse(reason, "there is no camera to render from");
    const engine::RenderOptions options = translateOptions(request);
    if (const auto valid = engine::validate(options); !valid)
        return refuse(reason, valid.error().message.c_str());
    if (const std::string shortage = findShortageOfMemory(options); !shortage.empty())
        return refuse(reason, shortage.c_str());
    if (!cameraOf(snapshot.camera))
        return refuse(reason, "the camera cannot take a picture: its eye, target and up direction, "
                              "or its field of view, make no view");
    applyBackground(request.options, snapshot);
    SceneRecipe recipe = sceneRecipe(snapshot);
    addRoom(recipe, options);
    auto task = std::make_shared<RenderTask>(std::move(recipe), options, cache_);
    workers_.start([task] { task->run(); });
    return std::make_unique<RunningRender>(std::move(task));
}

void Engine::prepare(const QorRdgSnapshot& snapshot) {
    try {
        workers_.start([recipe = std::make_shared<const SceneRecipe>(sceneRecipe(snapshot)),
                        cache = cache_]() mutable { prepareNow(*recipe, *cache); });
    } catch (const std::exception&) { // the render builds what it needs by itself
    }
}

void Engine::prepare(QorIRdgWorld& world) {
    QorRdgSnapshot snapshot;
    if (QorSucceeded(world.Collect(snapshot)))
        prepare(snapshot);
}

} // namespace qor::adapter
