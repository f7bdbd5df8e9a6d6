// glTF files with something wrong in them.
#include "tests/engine/qorrender/WallFile.h"

namespace qor::render::testing {
namespace {

TEST_F(GltfProgram, WhatMakesNoSenseIsLeftOutByNameAndTheRestIsShown) {
    struct Row {
        const char* said;
        std::function<void(WallFile&, int material)> add;
    };

    const auto badLight = [](Json light, Json more = Json::object()) {
        return [=](WallFile& file, int) {
            file.light(light, more);
        };
    };
    for (const Row& row : std::vector<Row>{
             {"squeezed flat were left out: 1",
              [](WallFile&file, int material) {
                  file.wall(material, {{"scale", {0, 1, 1}}});
              }},
             {"left out",
              [](WallFile&file, int material) {
                  file.wall(material, -1, std::nanf(""), -1, 1, 0.5F);
                  file.json["accessors"][file.json["accessors"].size() - 4].erase("max");
                  file.json["accessors"][file.json["accessors"].size() - 4].erase("min");
              }},
             {"light \"sun\": irradiance is negative",
              badLight({{"type", "directional"}, {"name", "sun"}, {"intensity", -3}})},
             {"light \"sun\": no direction",
              badLight({{"type", "directional"}, {"name", "sun"}}, {{"scale", {0, 0, 0}}})},
             {"light \"lamp\": outer angle",
              badLight({{"type", "spot"},
                        {"name", "lamp"},
                        {"spot", {{"innerConeAngle", 0}, {"outerConeAngle", 0}}}})},
             {"\"missing.png\"",
              [](WallFile&file, int material) {
                  file.json["images"] = {{{"uri", "missing.png"}}};
                  file.json["textures"] = {{{"source", 0}}};
                  file.json["materials"][static_cast<std::size_t>(material)]["pbrMetallicRoughness"]
                           ["baseColorTexture"]["index"] = 0;
              }},
         }) {
        WallFile file;
        const int material = file.matt();
        file.wall(material);
        file.light({{"type", "directional"}, {"intensity", pi}});
        row.add(file, material);
        EXPECT_NEAR(middle(file).mean(), 0.5, 1e-3) << row.said;
        const std::string errors = folder.Read("errors");
        EXPECT_NE(errors.find("warning: scene.gltf: "), std::string::npos) << row.said << errors;
        EXPECT_NE(errors.find(row.said), std::string::npos) << errors;
    }
}

TEST_F(GltfProgram, MirroredTransformsShowTheSame) {
    for (const Json& scale : {Json{-1, 1, 1}, Json{1, -1, 1}, Json{1, 1, -1}, Json{-2, -0.5, -3}}) {
        WallFile file;
        file.wall(file.matt(), {{"scale", scale}});
        file.light({{"type", "directional"}, {"intensity", pi}});
        EXPECT_NEAR(middle(file).mean(), 0.5, 1e-4) << scale.dump();
    }
}

TEST_F(GltfProgram, AFileWithNothingToSeeIsRefusedByName) {
    WallFile file;
    file.root({{"name", "lonely"}});
    file.surroundings(1);
    folder.Write("scene.gltf", file.text());
    EXPECT_EQ(run("scene.gltf -o a.png"), 1);
    EXPECT_NE(folder.Read("errors").find("scene.gltf: "), std::string::npos);
    EXPECT_FALSE(std::filesystem::exists(folder.GetPath("a.png")));
}

} // namespace
} // namespace qor::render::testing
