#include "workbench/engine/qorrender/SceneMaker.h"

#include "workbench/engine/adapter/ContentCache.h"
#include "workbench/engine/adapter/OptionsTranslation.h"
#include "workbench/engine/qorrender/Failure.h"
#include "workbench/engine/qorrender/OwnLight.h"

namespace qor::render {

namespace {

QorMathVector wide(const engine::Vec3& v) {
    return {static_cast<double>(v.x), static_cast<double>(v.y), static_cast<double>(v.z)};
}

/// What moves with the eye needs to know where it is; the recipe gets the camera itself.
QorRdgCamera lookOf(const engine::Camera& camera) {
    QorRdgCamera look;
    look.eye = wide(camera.eye);
    look.target = wide(camera.target);
    look.up = wide(camera.up);
    return look;
}

} // namespace

adapter::SceneRecipe makeRecipe(document::Product product,
                                const engine::Camera& camera,
                                engine::RenderOptions& options,
                                Stage& stage,
                                const Request& request,
                                Progress& progress) {
    const document::ProductReps reps(std::move(product));
    QorRdgSnapshot snapshot = stage.show(reps);
    snapshot.camera = lookOf(camera);
    adapter::SceneRecipe recipe = adapter::sceneRecipe(snapshot);
    recipe.camera = camera;
    const auto warn = [&](const std::string& text) {
        progress.warn(request.model.string() + ": " + text);
    };
    if (recipe.squeezed > 0)
        warn("instances that are squeezed flat were left out: " + std::to_string(recipe.squeezed));
    if (request.scene.empty() && hasOwnLight(reps.facts(), recipe)) {
        useOwnLight(reps.facts(), recipe, warn);
        return recipe;
    }
    addRoom(recipe, options);
    options.brightestIndirect = adapter::calmBrightness;
    return recipe;
}

engine::Scene makeScene(adapter::SceneRecipe recipe) {
    adapter::ContentCache cache;
    auto scene = cache.makeScene(recipe);
    if (!scene)
        throw Failure(scene.error().message);
    return std::move(scene).value();
}

} // namespace qor::render
