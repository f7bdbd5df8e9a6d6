#include "workbench/engine/adapter/SceneRecipe.h"

#include "workbench/engine/adapter/LightRecipe.h"
#include "workbench/engine/adapter/Studio.h"
#include "workbench/engine/adapter/Vectors.h"
#include "workbench/engine/core/Image.h"

#include <algorithm>
#include <unordered_map>

namespace qor::adapter {

namespace {

/// How bright the room is in mirrors by the light of its lamps: bare metal shows little else, and
/// shall be as bright as what is painted beside it.
constexpr float lampPart = 0.26F;

/// A rendered ground reaches farther than the viewer's, for the shadows of low lights, and fades as
/// it does.
constexpr float groundReach = 2.5F;
constexpr float fadesFrom = 0.4F;

engine::Color linear(const QorColor& from) {
    const auto channel = [](std::uint8_t value) {
        return engine::linearFromSrgb(static_cast<float>(value) / 255.0F);
    };
    return {channel(from.red), channel(from.green), channel(from.blue)};
}

engine::Camera translate(const QorRdgCamera& from) {
    engine::Camera camera;
    camera.eye = vec3(from.eye);
    camera.target = vec3(from.target);
    camera.up = vec3(from.up);
    camera.fovRad = radians(from.fieldOfView);
    camera.viewHeight = static_cast<float>(from.viewHeight);
    if (from.projection == Qor3DViewpoint::Projection::Parallel)
        camera.projection = engine::Projection::parallel;
    return camera;
}

/// Gives each material of a snapshot its index.
class MaterialTable {
public:
    explicit MaterialTable(std::vector<MaterialRecipe>& table) : table_(table) {}

    std::uint32_t indexOf(const QorGraphicMaterial* material) {
        const auto [known, isNew] =
            known_.try_emplace(material, static_cast<std::uint32_t>(table_.size()));
        if (isNew)
            table_.push_back(materialRecipe(material));
        return known->second;
    }

private:
    std::vector<MaterialRecipe>& table_;
    std::unordered_map<const QorGraphicMaterial*, std::uint32_t> known_;
};

void addInstances(SceneRecipe& recipe, const QorRdgSnapshot& snapshot) {
    MaterialTable materials(recipe.materials);
    recipe.instances.reserve(snapshot.instances.size());
    for (const QorRdgInstance& from : snapshot.instances) {
        if (!from.mesh || from.mesh->CountTriangles() == 0)
            continue;
        const engine::Transform place = transform(from.matrix);
        if (!place.inverse())
            ++recipe.squeezed;
        else
            recipe.instances.push_back({from.mesh->GetContentId(), from.mesh->GetSharedData(),
                                        place, materials.indexOf(from.material), from.highlighted});
    }
}

/// Middle of the box around all instances.
engine::Vec3 middleOf(const QorRdgSnapshot& snapshot) {
    Qor3DBoundingBox box;
    for (const QorRdgInstance& instance : snapshot.instances)
        if (instance.mesh && !instance.mesh->GetBoundingBox().IsEmpty())
            box.Add(instance.mesh->GetBoundingBox().Transformed(instance.matrix));
    return box.IsEmpty() ? engine::Vec3{} : vec3(box.Center());
}

engine::Vec3 upOf(const QorRdgSnapshot& snapshot) {
    const engine::Vec3 up = vec3(snapshot.vertical);
    return isFinite(up) && length(up) > 0.0F ? up : engine::Vec3{0.0F, 0.0F, 1.0F};
}

/// What is no colour is black.
engine::Color sound(const engine::Color& from) {
    return isFinite(from) ? engine::Color{std::max(from.x, 0.0F), std::max(from.y, 0.0F),
                                          std::max(from.z, 0.0F)}
                          : engine::Color{};
}

void addLight(SceneRecipe& recipe, const QorRdgSnapshot& snapshot) {
    const engine::Transform eye = eyeFrame(recipe.camera);
    const bool needsMiddle =
        std::any_of(snapshot.lights.begin(), snapshot.lights.end(), [](const auto& light) {
            return light && light->GetType() != QorLightType::Directional;
        });
    const engine::Vec3 middle = needsMiddle ? middleOf(snapshot) : engine::Vec3{};
    recipe.vertical = upOf(snapshot);
    recipe.ambient = sound(color(snapshot.ambient.data()));
    for (const QorVar<Qor3DLightSourceRep>& from : snapshot.lights) {
        if (!from)
            continue;
        const LightColors colors(*from);
        recipe.ambient += sound(colors.ambient);
        recipe.lamps += sound(colors.specular) * lampPart;
        if (const auto light = lightRecipe(*from, eye, middle, snapshot.softShadows))
            recipe.scene.lights.push_back(*light);
    }
}

void addBackground(SceneRecipe& recipe, const QorRdgSnapshot& snapshot) {
    engine::Background& to = recipe.scene.background;
    to.kind = engine::Background::Kind::gradient;
    to.top = linear(snapshot.backgroundColor);
    to.bottom = linear(snapshot.backgroundBottom.value_or(snapshot.backgroundColor));
    if (!snapshot.background)
        return;
    recipe.background = pictureRecipe(snapshot.background->image, engine::PictureEncoding::srgb);
    to.stretch = snapshot.background->stretch;
}

void addGround(SceneRecipe& recipe, const QorRdgSnapshot& snapshot) {
    if (!snapshot.ground || !*snapshot.ground || !((*snapshot.ground)->GetSize() > 0.0))
        return;
    const QorRsc3DGroundRep& from = **snapshot.ground;
    engine::Ground& to = recipe.scene.ground;
    to.visible = true;
    to.origin = vec3(from.GetOrigin());
    to.normal = vec3(from.GetVertical());
    to.size = static_cast<float>(from.GetSize()) * groundReach;
    to.fadeFrom = fadesFrom;
    to.transparency = from.GetTransparency();
    to.reflectivity = from.GetReflectivity();
}

} // namespace

std::optional<engine::Camera> cameraOf(const QorRdgCamera& from) {
    const engine::Camera camera = translate(from);
    if (!engine::validate(camera))
        return std::nullopt;
    return camera;
}

void addRoom(SceneRecipe& recipe, const engine::RenderOptions& options) {
    engine::Scene& scene = recipe.scene;
    const bool gathered = options.finalGather.on;
    scene.ambient = gathered ? engine::Color{} : recipe.ambient;
    const engine::Color scattered =
        gathered ? recipe.ambient * options.ambientFactor : engine::Color{};
    const engine::Color whole = recipe.lamps + scattered;
    if (!(maxComponent(whole) > 0.0F))
        return;
    scene.environment = studio(whole, recipe.vertical, recipe.camera);
    scene.environment.diffuseShare = maxComponent(scattered) / maxComponent(whole);
}

SceneRecipe sceneRecipe(const QorRdgSnapshot& snapshot) {
    SceneRecipe recipe;
    recipe.camera = translate(snapshot.camera);
    addInstances(recipe, snapshot);
    addLight(recipe, snapshot);
    addBackground(recipe, snapshot);
    addGround(recipe, snapshot);
    return recipe;
}

} // namespace qor::adapter
