#include "tests/engine/adapter/EngineTest.h"
#include "workbench/engine/adapter/LightRecipe.h"
#include "workbench/engine/adapter/OptionsTranslation.h"
#include "workbench/engine/adapter/SceneRecipe.h"
#include "workbench/engine/adapter/Studio.h"
#include "workbench/engine/core/Render.h"

namespace {

using namespace qor;
using adapter::sceneRecipe;

/// A light as a recipe makes it for a camera at (0, -10, 0) that looks along +y.
class LightRecipe : public QorTestApplication {
protected:
    static std::optional<engine::Light>
    Make(QorLightType iType, QorLightMode iMode, const QorMathVector& iDirection) {
        engine::Camera camera;
        camera.eye = {0, -10, 0};
        camera.target = {};
        camera.up = {0, 0, 1};
        const auto rep =
            QorMake<Qor3DLightSourceRep>(iType, iMode, QorMathPoint{0, 0, 5}, iDirection, 60.0F);
        return adapter::lightRecipe(*rep, adapter::eyeFrame(camera), {}, 4.0);
    }

    static void ExpectNear(const engine::Vec3& iActual, const engine::Vec3& iExpected) {
        EXPECT_NEAR(iActual.x, iExpected.x, 1e-5F);
        EXPECT_NEAR(iActual.y, iExpected.y, 1e-5F);
        EXPECT_NEAR(iActual.z, iExpected.z, 1e-5F);
    }
};

TEST_F(LightRecipe, ADirectionIsTheWayTheLightTravels) {
    const auto light = Make(QorLightType::Directional, QorLightMode::Model, {0, 0, -2});
    const auto& lamp = std::get<engine::DirectionalLight>(light.value());
    ExpectNear(lamp.direction, {0, 0, -1});
    ExpectNear(lamp.irradiance, {engine::pi, engine::pi, engine::pi});
    EXPECT_NEAR(lamp.angleRad, 4.0F * engine::pi / 180.0F, 1e-6F);
}

TEST_F(LightRecipe, ALightOfTheViewerMovesWithTheEye) {
    // Away from the eye, and downwards in the picture.
    const auto ahead = Make(QorLightType::Directional, QorLightMode::Viewer, {0, 0, -1});
    ExpectNear(std::get<engine::DirectionalLight>(ahead.value()).direction, {0, 1, 0});
    const auto down = Make(QorLightType::Directional, QorLightMode::Viewer, {0, -1, 0});
    ExpectNear(std::get<engine::DirectionalLight>(down.value()).direction, {0, 0, -1});
}

TEST_F(LightRecipe, AtTheProductAPointIsAsBrightAsADirectionalLight) {
    const auto light = Make(QorLightType::Point, QorLightMode::Model, {});
    const auto& lamp = std::get<engine::PointLight>(light.value());
    EXPECT_NEAR(lamp.intensity.x / 25.0F, engine::pi, 1e-4F);
}

TEST_F(LightRecipe, ASpotOpensByItsFullAngle) {
    const auto light = Make(QorLightType::Spot, QorLightMode::Model, {0, 0, -1});
    EXPECT_NEAR(std::get<engine::SpotLight>(light.value()).outerRad, engine::pi / 6, 1e-5F);
}

TEST_F(LightRecipe, ALightWithoutADirectionIsNone) {
    EXPECT_FALSE(Make(QorLightType::Directional, QorLightMode::Model, {}));
}

TEST(Studio, IsAsBrightOnTheWholeAsAsked) {
    engine::Camera camera;
    camera.eye = {3, -4, 2};
    camera.target = {};
    const engine::Environment room = adapter::studio({0.5F, 0.5F, 0.5F}, {0, 0, 1}, camera);
    ASSERT_TRUE(room.picture);
    double sum = 0.0;
    double weights = 0.0;
    for (int y = 0; y < room.picture->height(); ++y) {
        const double weight = std::sin((y + 0.5) / room.picture->height() * 3.14159265);
        for (int x = 0; x < room.picture->width(); ++x) {
            sum += weight * static_cast<double>(room.picture->texel(x, y).color.x);
            weights += weight;
        }
    }
    EXPECT_NEAR(sum / weights, 1.0, 1e-4);
}

class SceneRecipeTest : public QorTestApplication {
protected:
    static QorRdgSnapshot Snapshot() {
        QorRdgSnapshot snapshot;
        snapshot.camera.eye = {0, -10, 0};
        return snapshot;
    }

    static QorMesh_var Triangle() {
        QorMesh::Data data;
        data.positions = {0, 0, 0, 1, 0, 0, 0, 1, 0};
        data.indices = {0, 1, 2};
        return QorMake<QorMesh>(data);
    }
};

TEST_F(SceneRecipeTest, EachMaterialIsThereOnce) {
    QorRdgSnapshot snapshot = Snapshot();
    const QorMesh_var mesh = Triangle();
    const auto red = QorMake<QorGraphicMaterial>();
    snapshot.instances = {{mesh, red, {}}, {mesh, nullptr, {}}, {mesh, red, {}}};
    const adapter::SceneRecipe recipe = sceneRecipe(snapshot);
    ASSERT_EQ(recipe.instances.size(), 3U);
    EXPECT_EQ(recipe.materials.size(), 2U);
    EXPECT_EQ(recipe.instances[0].material, recipe.instances[2].material);
}

TEST_F(SceneRecipeTest, WhatIsSqueezedFlatIsLeftOut) {
    QorRdgSnapshot snapshot = Snapshot();
    QorMathTransformation flat;
    flat.axes[2] = {};
    snapshot.instances = {{Triangle(), nullptr, flat},
                          {QorMake<QorMesh>(QorMesh::Data{}), nullptr, {}}};
    EXPECT_TRUE(sceneRecipe(snapshot).instances.empty());
}

TEST_F(SceneRecipeTest, EqualSlotsOfMaterialsShareTheirPicture) {
    const auto image = QorMake<QorPixelImage>(
        2, 1, 3, std::make_shared<const QorPixelImage::Pixels>(6, std::uint8_t{200}));
    const auto material = QorMake<QorGraphicMaterial>();
    QorTextureUse use;
    use.image = image;
    use.wrapV = QorTextureWrap::ClampToEdge;
    for (const QorTextureSlot slot : {QorTextureSlot::Normal, QorTextureSlot::MetallicRoughness})
        material->SetTexture(slot, use);
    QorRdgSnapshot snapshot = Snapshot();
    snapshot.instances = {{Triangle(), material, {}}};
    adapter::ContentCache cache;
    const auto scene = cache.makeScene(sceneRecipe(snapshot));
    ASSERT_TRUE(scene);
    const engine::Material& made = scene.value().materials.front();
    EXPECT_TRUE(made.normalTexture.picture);
    EXPECT_EQ(made.normalTexture.picture, made.metallicRoughnessTexture.picture);
    EXPECT_EQ(made.normalTexture.wrapV, engine::TextureWrap::clamp);
    EXPECT_FALSE(made.baseTexture.picture);
}

TEST_F(SceneRecipeTest, AWhollyRoughDielectricIsLambertian) {
    struct Row {
        float roughness, metallic, transmission;
        bool isMatt;
    };

    for (const Row& row : {Row{1.0F, 0.0F, 0.0F, true}, Row{0.99F, 0.0F, 0.0F, false},
                           Row{1.0F, 0.5F, 0.0F, false}, Row{1.0F, 0.0F, 0.5F, false}}) {
        const auto material = QorMake<QorGraphicMaterial>();
        material->roughness = row.roughness;
        material->metallic = row.metallic;
        material->transmission = row.transmission;
        const adapter::MaterialRecipe recipe = adapter::materialRecipe(material.Get());
        EXPECT_EQ(recipe.material.specular == 0.0F, row.isMatt) << row.roughness;
    }
}

TEST_F(SceneRecipeTest, NumbersThatAreNoneAreBroughtIntoRange) {
    const auto material = QorMake<QorGraphicMaterial>();
    material->roughness = std::nanf("");
    material->metallic = 7.0F;
    material->ior = -1.0F;
    material->emission[0] = std::numeric_limits<float>::infinity();
    QorRdgSnapshot snapshot = Snapshot();
    snapshot.ambient = {std::nanf(""), 0.0F, 0.0F};
    snapshot.instances = {{Triangle(), material, {}}};
    adapter::ContentCache cache;
    const auto scene = cache.makeScene(sceneRecipe(snapshot));
    ASSERT_TRUE(scene);
    EXPECT_TRUE(engine::validate(scene.value()));
}

TEST_F(SceneRecipeTest, GlobalIlluminationScattersOnceForEachBounceOfAPhoton) {
    class Options : public PlainOptions {
    public:
        QorResult GetGlobalIlluminationStatus(int& oOn) override {
            oOn = 1;
            return S_OK;
        }
    };

    const auto options = QorMake<Options>();
    engine::RenderOptions to;
    adapter::applyOptions(*options, to);
    EXPECT_EQ(to.depth.diffuseBounces, 5);
    EXPECT_EQ(to.samples.minimum, 4);
}

/// A lamp, and ambient light of a half.
class RoomTest : public SceneRecipeTest {
protected:
    static engine::Scene Make(bool iGather) {
        QorRdgSnapshot snapshot = Snapshot();
        snapshot.ambient = {0.5F, 0.5F, 0.5F};
        snapshot.lights = {QorMake<Qor3DLightSourceRep>(QorLightType::Directional,
                                                        QorLightMode::Model, QorMathPoint{},
                                                        QorMathVector{0, 0, -1}, 0.0F)};
        adapter::SceneRecipe recipe = sceneRecipe(snapshot);
        engine::RenderOptions options;
        options.finalGather.on = iGather;
        adapter::addRoom(recipe, options);
        return recipe.scene;
    }
};

TEST_F(RoomTest, GatheredLightComesFromTheRoom) {
    const engine::Scene scene = Make(true);
    EXPECT_EQ(scene.ambient.x, 0.0F);
    EXPECT_NEAR(scene.environment.radiance.x * scene.environment.diffuseShare, 0.5F, 1e-5F);
    EXPECT_GT(scene.environment.radiance.x, 0.5F) << "mirrors see the lamps' light, too";
}

TEST_F(RoomTest, UngatheredLightIsEven) {
    const engine::Scene scene = Make(false);
    EXPECT_EQ(scene.ambient.x, 0.5F);
    EXPECT_EQ(scene.environment.diffuseShare, 0.0F);
    EXPECT_GT(scene.environment.radiance.x, 0.0F);
}

/// What a white sheet shows of surroundings of radiance 1 that it is to scatter \p iShare of.
float ShownOfSurroundings(float iShare) {
    engine::MeshData data;
    data.positions = {{-9, 0, -9}, {9, 0, -9}, {9, 0, 9}, {-9, 0, 9}};
    data.triangles = {{0, 1, 2}, {0, 2, 3}};
    auto mesh = engine::Mesh::create(std::move(data));
    auto assembly = engine::Assembly::create({{mesh.value(), {}, {0}}});
    engine::Scene scene;
    scene.assembly = assembly.value();
    scene.materials.resize(1);
    scene.materials[0].baseColor = {1, 1, 1};
    scene.materials[0].specular = 0.0F;
    scene.environment.radiance = {1, 1, 1};
    scene.environment.smooth = true;
    scene.environment.diffuseShare = iShare;
    engine::Camera camera;
    camera.eye = {0, -5, 0};
    camera.up = {0, 0, 1};
    engine::RenderOptions options;
    options.width = options.height = 2;
    const auto image = engine::renderImage(scene, camera, options);
    return image ? image.value().pixel(0, 0)[0] : -1.0F;
}

TEST(Surroundings, AreScatteredAsFarAsTheirShareSays) {
    EXPECT_NEAR(ShownOfSurroundings(1.0F), 1.0F, 1e-3F);
    EXPECT_NEAR(ShownOfSurroundings(0.25F), 0.25F, 1e-3F);
    EXPECT_EQ(ShownOfSurroundings(0.0F), 0.0F);
}

} // namespace
