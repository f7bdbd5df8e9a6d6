// What a glTF file says of materials, by the numbers that it must show.
#include "tests/engine/qorrender/WallFile.h"

namespace qor::render::testing {
namespace {

TEST_F(GltfProgram, EmissionIsRadianceTimesItsStrength) {
    WallFile file;
    file.use("KHR_materials_emissive_strength");
    file.wall(file.material(
        {{"emissiveFactor", {1, 0.5, 0.25}},
         {"extensions", {{"KHR_materials_emissive_strength", {{"emissiveStrength", 7}}}}}}));
    const Shown shown = middle(file);
    EXPECT_NEAR(shown.mean(0), 7.0, 1e-4);
    EXPECT_NEAR(shown.mean(1), 3.5, 1e-4);
    EXPECT_NEAR(shown.mean(2), 1.75, 1e-4);
}

TEST_F(GltfProgram, AlphaIsIgnoredCutOrMixed) {
    struct Row {
        const char* mode;
        float alpha;
        double cutoff;
        double wanted; ///< of a wall of albedo 0.5 in surroundings of 2
    };

    for (const Row& row :
         {Row{"OPAQUE", 0.3F, 0.5, 1.0}, Row{"MASK", 0.3F, 0.5, 2.0}, Row{"MASK", 0.7F, 0.5, 1.0},
          Row{"MASK", 0.3F, 0.2, 1.0}, Row{"BLEND", 0.3F, 0.5, 1.7}}) {
        WallFile file;
        const int material = file.matt(0.5F, 0.5F, 0.5F, row.alpha);
        file.json["materials"][0]["alphaMode"] = row.mode;
        if (row.mode == std::string("MASK"))
            file.json["materials"][0]["alphaCutoff"] = row.cutoff;
        file.wall(material);
        file.surroundings(2);
        EXPECT_NEAR(middle(file, "--quality 2").mean(), row.wanted, 0.01) << row.mode << row.alpha;
    }
}

TEST_F(GltfProgram, BothSidesOfAWallAreShown) {
    for (const bool doubleSided : {false, true}) {
        WallFile file;
        file.wall(file.matt());
        file.json["materials"][0]["doubleSided"] = doubleSided;
        file.light({{"type", "directional"}, {"intensity", pi}}, turned(180));
        EXPECT_NEAR(show(file, "--eye 0,5000,0 --target 0,0,0 --view-height 100").mean(), 0.5,
                    1e-4);
    }
}

TEST_F(GltfProgram, ColoursOfTexturesAreSrgbAndTheRestIsLinear) {
    WallFile file;
    const int texture =
        file.texture({{{188, 128, 255}, {188, 128, 255}, {188, 128, 255}, {188, 128, 255}}});
    const int material = file.matt(0.5F, 1, 1);
    file.json["materials"][0]["pbrMetallicRoughness"]["baseColorTexture"]["index"] = texture;
    file.wall(material);
    file.surroundings(1);
    const auto linear = [](double code) {
        return std::pow((code / 255 + 0.055) / 1.055, 2.4);
    };
    const Shown shown = middle(file);
    EXPECT_NEAR(shown.mean(0), 0.5 * linear(188), 1e-4);
    EXPECT_NEAR(shown.mean(1), linear(128), 1e-4);
    EXPECT_NEAR(shown.mean(2), 1.0, 1e-4);
}

TEST_F(GltfProgram, TexturesAreMovedScaledAndTurned) {
    struct Row {
        Json transform;
        const char* corners; ///< of the picture: top left and right, bottom left and right
    };

    for (const Row& row :
         {Row{Json::object(), "RGBW"}, Row{{{"offset", {0.5, 0}}}, "GRWB"},
          Row{{{"offset", {0, 0.5}}}, "BWRG"}, Row{{{"scale", {0.5, 0.5}}}, "RRRR"},
          Row{{{"rotation", pi / 2}, {"offset", {0, 1}}}, "BRWG"}}) {
        WallFile file;
        file.use("KHR_texture_transform");
        const int texture =
            file.texture({{{255, 0, 0}, {0, 255, 0}, {0, 0, 255}, {255, 255, 255}}});
        const int material = file.matt(1, 1, 1);
        file.json["materials"][0]["pbrMetallicRoughness"]["baseColorTexture"] = {
            {"index", texture}, {"extensions", {{"KHR_texture_transform", row.transform}}}};
        file.wall(material);
        file.surroundings(1);
        const Shown shown = show(file, front + "--view-height 2000");
        std::string corners;
        for (const auto& [x, y] : {std::pair{1, 1}, {6, 1}, {1, 6}, {6, 6}}) {
            const bool red = shown.at(x, y, 0) > 0.5F;
            const bool green = shown.at(x, y, 1) > 0.5F;
            corners += red && green ? 'W' : red ? 'R' : green ? 'G' : 'B';
        }
        EXPECT_EQ(corners, row.corners) << row.transform.dump();
    }
}

TEST_F(GltfProgram, NormalTexturesLeanRightwardsForRedAndUpwardsForGreen) {
    constexpr double lean = 0.5;
    const double c = std::sqrt(1 - lean * lean);
    const auto code = [](double value) {
        return static_cast<int>(std::lround(127.5 + 127.5 * value));
    };
    for (const auto& [x, y] : {std::pair{lean, 0.0}, {-lean, 0.0}, {0.0, lean}, {0.0, -lean}}) {
        WallFile file;
        const std::array<int, 3> texel{code(x), code(y), code(c)};
        const int texture = file.texture({{texel, texel, texel, texel}});
        const int material = file.matt(1, 1, 1);
        file.json["materials"][0]["normalTexture"]["index"] = texture;
        file.wall(material);
        file.light({{"type", "directional"}, {"intensity", pi}}, turned(30));
        EXPECT_NEAR(middle(file).mean(), x * 0.5 + c * c, 0.01) << x << ' ' << y;
    }
}

TEST_F(GltfProgram, GlassAndLacquerReflectByTheirIndex) {
    for (const double ior : {1.0, 1.5, 2.0}) {
        const double straight = std::pow((ior - 1) / (ior + 1), 2);
        WallFile pane;
        pane.use("KHR_materials_transmission");
        pane.use("KHR_materials_ior");
        Json glass{{"pbrMetallicRoughness", {{"metallicFactor", 0}, {"roughnessFactor", 0}}}};
        glass["extensions"] = {{"KHR_materials_transmission", {{"transmissionFactor", 1}}},
                               {"KHR_materials_ior", {{"ior", ior}}}};
        pane.wall(pane.material(glass), -1, 1, -1, 1, 1);
        pane.wall(pane.material({{"emissiveFactor", {1, 1, 1}},
                                 {"pbrMetallicRoughness", {{"baseColorFactor", {0, 0, 0, 1}}}}}),
                  -3, 3, -3, 3, -5);
        // All that is thrown to and fro within the pane.
        EXPECT_NEAR(middle(pane, "--quality 2").mean(), (1 - straight) / (1 + straight), 0.005)
            << ior;
        WallFile plastic;
        plastic.use("KHR_materials_ior");
        glass["pbrMetallicRoughness"]["baseColorFactor"] = {0, 0, 0, 1};
        glass["extensions"].erase("KHR_materials_transmission");
        plastic.wall(plastic.material(glass));
        plastic.surroundings(1);
        EXPECT_NEAR(middle(plastic, "--quality 2").mean(), straight, 1e-4) << ior;
    }
    WallFile lacquer;
    lacquer.use("KHR_materials_clearcoat");
    const int black = lacquer.matt(0, 0, 0);
    lacquer.json["materials"][0]["extensions"]["KHR_materials_clearcoat"]["clearcoatFactor"] = 1;
    lacquer.wall(black);
    lacquer.surroundings(1);
    EXPECT_NEAR(middle(lacquer, "--quality 2").mean(), 0.04, 1e-4);
}

} // namespace
} // namespace qor::render::testing
