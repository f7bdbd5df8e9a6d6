#include "tests/import/GltfBuilder.h"
#include "tests/import/ImportHarness.h"
#include "tests/support/DecimalComma.h"

#include <cmath>

using namespace qor::document;
using namespace qor::import::testing;
using nlohmann::json;

namespace {

Imported importText(const GltfBuilder& gltf) {
    const QorTempDirectory folder;
    writeText(folder / "model.gltf", gltf.text());
    Imported imported = import(folder / "model.gltf");
    EXPECT_TRUE(imported.result) << imported.result.failure().text;
    return imported;
}

void expectNear(const Vector3& value, const Vector3& expected) {
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(value[i], expected[i], 1e-5) << "component " << i;
}

} // namespace

TEST(GltfImport, MetresWithYUpBecomeMillimetresWithZUp) {
    GltfBuilder gltf;
    gltf.scene({gltf.node({{"mesh", gltf.triangle()}, {"translation", {1, 2, 3}}})});
    Imported imported = importText(gltf);
    EXPECT_EQ(imported.product().unit, (SourceUnit{"m", 1000}));
    expectBox(imported.product(), {1000, -3000, 2000}, {2000, -3000, 3000}, 1e-3);
}

TEST(GltfImport, TransformsAreTurnedWithTheShapes) {
    GltfBuilder gltf;
    const double half = std::sqrt(0.5);
    const int child = gltf.node({{"mesh", gltf.triangle()}, {"scale", {1, 2, 3}}});
    // A quarter turn around x: y goes to z.
    gltf.scene({gltf.node({{"children", {child}}, {"rotation", {half, 0, 0, half}}})});
    Imported imported = importText(gltf);
    // (0, 1, 0) -> scaled (0, 2, 0) -> turned (0, 0, 2) -> z up (0, -2, 0).
    expectBox(imported.product(), {0, -2000, 0}, {1000, 0, 0}, 1e-2);
}

TEST(GltfImport, AMeshIsStoredOnceAndNodesOfOneNameStayApart) {
    GltfBuilder gltf;
    const int mesh = gltf.triangle();
    gltf.scene({gltf.node({{"mesh", mesh}, {"name", "same"}}),
                gltf.node({{"mesh", mesh}, {"name", "same"}, {"translation", {5, 0, 0}}})});
    Imported imported = importText(gltf);
    const Product& product = imported.product();
    ASSERT_EQ(product.nodes.size(), 2U);
    EXPECT_EQ(product.nodes[0].parent, none);
    EXPECT_EQ(product.nodes[1].parent, none);
    EXPECT_EQ(product.nodes[1].name, "same");
    EXPECT_EQ(product.meshes.size(), 1U);
    EXPECT_EQ(product.nodes[0].part, product.nodes[1].part);
    EXPECT_EQ(product.parts[0].name, "triangle");
}

TEST(GltfImport, ABinaryFileGivesTheSameProduct) {
    const QorTempDirectory folder;
    GltfBuilder gltf;
    gltf.scene({gltf.node({{"mesh", gltf.triangle()}, {"name", "a"}})});
    writeText(folder / "model.gltf", gltf.text());
    writeText(folder / "model.glb", gltf.binary());
    Imported text = import(folder / "model.gltf");
    Imported binary = import(folder / "model.glb");
    ASSERT_TRUE(text.result && binary.result);
    binary.product().sourceFile = text.product().sourceFile;
    EXPECT_EQ(text.product(), binary.product());
}

TEST(GltfImport, TrianglesWithoutNormalsAreFlat) {
    GltfBuilder gltf;
    gltf.scene({gltf.node({{"mesh", gltf.triangle()}})});
    Imported imported = importText(gltf);
    const Mesh& mesh = imported.product().meshes[0];
    ASSERT_EQ(mesh.normals.size(), 9U);
    // (0, 0, 1) with y up is (0, -1, 0) with z up.
    expectNear({mesh.normals[0], mesh.normals[1], mesh.normals[2]}, {0, -1, 0});
}

TEST(GltfImport, MaterialsKeepEveryNumberOfTheModel) {
    GltfBuilder gltf;
    gltf.json["materials"] = {{{"name", "lacquer"},
                               {"pbrMetallicRoughness",
                                {{"baseColorFactor", {0.1, 0.2, 0.3, 0.4}},
                                 {"metallicFactor", 0.25},
                                 {"roughnessFactor", 0.75}}},
                               {"emissiveFactor", {0.5, 0.25, 0}},
                               {"alphaMode", "MASK"},
                               {"alphaCutoff", 0.3},
                               {"doubleSided", true},
                               {"extensions",
                                {{"KHR_materials_clearcoat",
                                  {{"clearcoatFactor", 0.8}, {"clearcoatRoughnessFactor", 0.1}}},
                                 {"KHR_materials_transmission", {{"transmissionFactor", 0.9}}},
                                 {"KHR_materials_ior", {{"ior", 1.33}}},
                                 {"KHR_materials_volume",
                                  {{"thicknessFactor", 0.002},
                                   {"attenuationDistance", 0.01},
                                   {"attenuationColor", {0.9, 0.8, 0.7}}}},
                                 {"KHR_materials_emissive_strength", {{"emissiveStrength", 4}}}}}},
                              json::object()};
    const int first = gltf.triangle({}, 0);
    const int second = gltf.triangle({}, 1);
    gltf.scene({gltf.node({{"mesh", first}}), gltf.node({{"mesh", second}})});
    Imported imported = importText(gltf);
    ASSERT_EQ(imported.product().materials.size(), 2U);
    Material expected;
    expected.name = "lacquer";
    expected.baseColor = {0.1, 0.2, 0.3, 0.4};
    expected.metallic = 0.25;
    expected.roughness = 0.75;
    expected.emission = {2, 1, 0};
    expected.alphaMode = AlphaMode::Mask;
    expected.alphaCutoff = 0.3;
    expected.clearcoat = 0.8;
    expected.clearcoatRoughness = 0.1;
    expected.transmission = 0.9;
    expected.ior = 1.33;
    expected.thicknessMm = 2;
    expected.attenuationDistanceMm = 10;
    expected.attenuationColor = {0.9, 0.8, 0.7};
    EXPECT_EQ(imported.product().materials[0], expected);
    // Nothing said means fully metallic and rough, and one-sided.
    EXPECT_EQ(imported.product().materials[1].metallic, 1);
    EXPECT_EQ(imported.product().materials[1].roughness, 1);
    EXPECT_FALSE(imported.product().materials[1].doubleSided);
    EXPECT_EQ(imported.product().meshes[1].groups[0].material, 1);
}

TEST(GltfImport, AWeakerReflectionIsASmallerIndexOfRefraction) {
    GltfBuilder gltf;
    const auto specular = [](double factor, double transmission) {
        return json{{"extensions",
                     {{"KHR_materials_specular", {{"specularFactor", factor}}},
                      {"KHR_materials_transmission", {{"transmissionFactor", transmission}}}}}};
    };
    gltf.json["materials"] = {specular(0, 0), specular(0.25, 0), specular(1, 0), specular(0, 1)};
    gltf.scene({gltf.node({{"mesh", gltf.triangle({}, 0)}})});
    Imported imported = importText(gltf);
    const auto& materials = imported.product().materials;
    ASSERT_EQ(materials.size(), 4U);
    EXPECT_EQ(materials[0].ior, 1.0);
    EXPECT_NEAR(materials[1].ior, 1.1 / 0.9, 1e-12); // a quarter of 4 %
    EXPECT_EQ(materials[2].ior, 1.5);
    EXPECT_EQ(materials[3].ior, 1.5) << "it still bends light";
}

TEST(GltfImport, TexturesAreDecodedOnceWithTheirPlacement) {
    GltfBuilder gltf;
    gltf.json["images"] = {{{"bufferView", gltf.view(smallBmp())}, {"name", "four"}}};
    gltf.json["samplers"] = {{{"wrapS", 33071}, {"wrapT", 33648}}};
    gltf.json["textures"] = {{{"source", 0}, {"sampler", 0}}, {{"source", 0}}};
    gltf.json["materials"] = {
        {{"pbrMetallicRoughness",
          {{"baseColorTexture",
            {{"index", 0},
             {"extensions",
              {{"KHR_texture_transform",
                {{"offset", {0.5, 0.25}}, {"scale", {2, 3}}, {"rotation", 0.5}}}}}}}}},
         {"normalTexture", {{"index", 1}, {"texCoord", 1}, {"scale", 0.5}}}}};
    const int uv = gltf.floats({0, 0, 1, 0, 0, 1}, "VEC2");
    gltf.scene({gltf.node({{"mesh", gltf.triangle({{"TEXCOORD_0", uv}, {"TEXCOORD_1", uv}}, 0)}})});
    Imported imported = importText(gltf);
    const Product& product = imported.product();
    ASSERT_EQ(product.textures.size(), 1U);
    const Texture expected{
        "four", 2, 2, {255, 0, 0, 255, 0, 255, 0, 255, 0, 0, 255, 255, 255, 255, 255, 255}};
    EXPECT_EQ(product.textures[0], expected);
    const auto& base = product.materials[0].texture(TextureSlot::BaseColor);
    ASSERT_TRUE(base);
    EXPECT_EQ(*base, (TextureUse{0,
                                 0,
                                 {0.5, 0.25},
                                 {2, 3},
                                 0.5,
                                 TextureWrap::ClampToEdge,
                                 TextureWrap::MirroredRepeat}));
    ASSERT_TRUE(product.materials[0].texture(TextureSlot::Normal));
    EXPECT_EQ(product.materials[0].texture(TextureSlot::Normal)->uvSet, 1);
    EXPECT_EQ(product.materials[0].normalScale, 0.5);
    EXPECT_EQ(product.meshes[0].uv0, (std::vector<float>{0, 0, 1, 0, 0, 1}));
    EXPECT_EQ(product.meshes[0].uv1, product.meshes[0].uv0);
}

TEST(GltfImport, CamerasAndLightsStandAtTheirNodes) {
    GltfBuilder gltf;
    gltf.json["cameras"] = {
        {{"type", "perspective"},
         {"name", "eye"},
         {"perspective", {{"yfov", 0.7}, {"aspectRatio", 1.5}, {"znear", 0.1}, {"zfar", 50}}}},
        {{"type", "orthographic"},
         {"orthographic", {{"xmag", 0.2}, {"ymag", 0.1}, {"znear", 0}, {"zfar", 5}}}}};
    gltf.json["extensions"]["KHR_lights_punctual"]["lights"] = {
        {{"type", "directional"},
         {"name", "sun"},
         {"color", {1, 0.5, 0.25}},
         {"intensity", 3},
         {"extras", {{"angle_deg", 0.53}}}},
        {{"type", "spot"},
         {"range", 2},
         {"spot", {{"innerConeAngle", 0.1}, {"outerConeAngle", 0.2}}}}};
    const int first = gltf.node({{"camera", 0}, {"translation", {0, 0, 2}}});
    const int second = gltf.node({{"camera", 1}});
    const int sun =
        gltf.node({{"extensions", {{"KHR_lights_punctual", {{"light", 0}}}}}, {"name", "s"}});
    const int spot = gltf.node({{"extensions", {{"KHR_lights_punctual", {{"light", 1}}}}}});
    gltf.scene({gltf.node({{"mesh", gltf.triangle()}}), first, second, sun, spot});
    Imported imported = importText(gltf);
    const Product& product = imported.product();
    ASSERT_EQ(product.cameras.size(), 2U);
    const Camera& eye = product.cameras[0];
    EXPECT_EQ(eye.name, "eye");
    EXPECT_TRUE(eye.perspective);
    EXPECT_EQ(eye.fieldOfView, 0.7);
    EXPECT_EQ(eye.aspect, 1.5);
    EXPECT_EQ(eye.farMm, 50000);
    expectNear(eye.direction, {0, 1, 0});
    expectNear(eye.up, {0, 0, 1});
    expectNear(transformPoint(worldTransforms(product)[eye.node], eye.position), {0, -2000, 0});
    EXPECT_FALSE(product.cameras[1].perspective);
    EXPECT_NEAR(product.cameras[1].viewHeightMm, 200, 1e-9);
    EXPECT_NEAR(product.cameras[1].aspect, 2, 1e-9);
    ASSERT_EQ(product.lights.size(), 2U);
    EXPECT_EQ(product.lights[0].kind, LightKind::Directional);
    EXPECT_EQ(product.lights[0].intensity, 3);
    EXPECT_EQ(product.lights[0].angleDeg, 0.53);
    EXPECT_EQ(product.lights[0].color, (std::array<double, 3>{1, 0.5, 0.25}));
    expectNear(product.lights[0].direction, {0, 1, 0});
    EXPECT_EQ(product.nodes[product.lights[0].node].name, "s");
    EXPECT_EQ(product.lights[1].kind, LightKind::Spot);
    EXPECT_EQ(product.lights[1].rangeMm, 2000);
    EXPECT_EQ(product.lights[1].outerCone, 0.2);
}

TEST(GltfImport, TheSceneSaysWhatSurroundsItAndHowMuchWorkItIsWorth) {
    GltfBuilder gltf;
    gltf.scene({gltf.node({{"mesh", gltf.triangle()}})});
    gltf.json["scenes"][0]["extras"] = {{"environment", {0.1, 0.2, 0.3}},
                                        {"work", {{"diffuse_bounces", 0}, {"caustics", true}}}};
    Imported imported = importText(gltf);
    EXPECT_EQ(imported.product().environment, (std::array<double, 3>{0.1, 0.2, 0.3}));
    EXPECT_EQ(imported.product().work.diffuseBounces, 0);
    EXPECT_EQ(imported.product().work.caustics, true);
    EXPECT_EQ(imported.product().work.glossyBounces, std::nullopt);
}

TEST(GltfImport, AnimationsAreTurnedWithTheirNodes) {
    GltfBuilder gltf;
    const int times = gltf.floats({0, 2}, "SCALAR");
    const int moves = gltf.floats({0, 0, 0, 1, 2, 3}, "VEC3");
    const float half = std::sqrt(0.5F);
    const int turns = gltf.floats({0, 0, 0, 1, 0, half, 0, half}, "VEC4");
    gltf.json["animations"] = {
        {{"name", "open"},
         {"samplers",
          {{{"input", times}, {"output", moves}, {"interpolation", "STEP"}},
           {{"input", times}, {"output", turns}}}},
         {"channels",
          {{{"sampler", 0}, {"target", {{"node", 1}, {"path", "translation"}}}},
           {{"sampler", 1}, {"target", {{"node", 1}, {"path", "rotation"}}}}}}}};
    gltf.scene({gltf.node({{"mesh", gltf.triangle()}, {"name", "x"}}),
                gltf.node({{"mesh", 0}, {"name", "x"}})});
    Imported imported = importText(gltf);
    ASSERT_EQ(imported.product().animations.size(), 1U);
    const Animation& animation = imported.product().animations[0];
    EXPECT_EQ(animation.name, "open");
    ASSERT_EQ(animation.tracks.size(), 3U);
    const Track& move = animation.tracks[0];
    EXPECT_EQ(move.node, 1);
    EXPECT_EQ(move.target, TrackTarget::Translation);
    EXPECT_EQ(move.interpolation, TrackInterpolation::Step);
    EXPECT_EQ(move.times, (std::vector<float>{0, 2}));
    EXPECT_EQ(move.values, (std::vector<float>{0, 0, 0, 1000, -3000, 2000}));
    const Track& turn = animation.tracks[1];
    EXPECT_EQ(turn.interpolation, TrackInterpolation::Linear);
    ASSERT_EQ(turn.values.size(), 8U);
    // A turn around y becomes one around z.
    EXPECT_NEAR(turn.values[6], half, 1e-6);
    EXPECT_NEAR(turn.values[7], half, 1e-6);
}

TEST(GltfImport, NumbersAreReadUnderADecimalComma) {
    GltfBuilder gltf;
    gltf.scene({gltf.node({{"mesh", gltf.triangle()}, {"translation", {0.5, 0, 0}}})});
    const DecimalComma comma;
    Imported imported = importText(gltf);
    expectBox(imported.product(), {500, 0, 0}, {1500, 0, 1000}, 1e-3);
}
