#pragma once

#include "tests/engine/qorrender/RenderProgram.h"
#include "tests/import/GltfBuilder.h"

#include <array>
#include <cmath>
#include <functional>
#include <numbers>

namespace qor::render::testing {

using Json = nlohmann::json;
using qor::import::testing::base64;
using qor::import::testing::GltfBuilder;
using std::numbers::pi;

/// A file with walls that face the reader. Its axes are x right, y up, z towards the reader, in
/// metres; the program's are x right, y away, z up, in millimetres.
class WallFile : public GltfBuilder {
public:
    WallFile() { scene({}); }

    int material(Json material) {
        json["materials"].push_back(std::move(material));
        return static_cast<int>(json["materials"].size()) - 1;
    }

    /// A matt material of one albedo.
    int matt(float r, float g, float b, float alpha = 1.0F) {
        return material({{"pbrMetallicRoughness",
                          {{"baseColorFactor", {r, g, b, alpha}},
                           {"metallicFactor", 0},
                           {"roughnessFactor", 1}}}});
    }

    int matt() { return matt(0.5F, 0.5F, 0.5F); }

    /// A rectangle at a depth, with its picture upright, in a node that may say more.
    void wall(int material, float x0, float x1, float y0, float y1, float z, Json more = {}) {
        Json primitive{{"material", material}};
        primitive["attributes"]["POSITION"] =
            floats({x0, y0, z, x1, y0, z, x1, y1, z, x0, y1, z}, "VEC3");
        json["accessors"].back().update({{"min", {x0, y0, z}}, {"max", {x1, y1, z}}});
        primitive["attributes"]["NORMAL"] = floats({0, 0, 1, 0, 0, 1, 0, 0, 1, 0, 0, 1}, "VEC3");
        primitive["attributes"]["TEXCOORD_0"] = floats({0, 1, 1, 1, 1, 0, 0, 0}, "VEC2");
        primitive["indices"] = indices({0, 1, 2, 0, 2, 3});
        json["meshes"].push_back({{"primitives", {primitive}}});
        more["mesh"] = json["meshes"].size() - 1;
        root(std::move(more));
    }

    void wall(int material, Json more = {}) { wall(material, -1, 1, -1, 1, 0, std::move(more)); }

    /// Lights shine along -z of their node.
    void light(Json light, Json more = Json::object()) {
        auto& lights = json["extensions"]["KHR_lights_punctual"]["lights"];
        lights.push_back(std::move(light));
        more["extensions"]["KHR_lights_punctual"]["light"] = lights.size() - 1;
        use("KHR_lights_punctual");
        root(std::move(more));
    }

    /// A picture of 2 x 2 pixels of three bytes from the top left, unfiltered.
    int texture(const std::array<std::array<int, 3>, 4>& pixels) {
        std::string bmp = qor::import::testing::smallBmp();
        constexpr std::size_t lower = 54;
        for (std::size_t i = 0; i < 4; ++i)
            for (std::size_t channel = 0; channel < 3; ++channel)
                bmp[lower + (i < 2 ? 8 : 0) + i % 2 * 3 + 2 - channel] =
                    static_cast<char>(pixels[i][channel]);
        json["images"].push_back({{"uri", "data:image/bmp;base64," + base64(bmp)}});
        json["samplers"] = {{{"magFilter", 9728}, {"minFilter", 9728}}};
        json["textures"].push_back({{"source", json["images"].size() - 1}, {"sampler", 0}});
        return static_cast<int>(json["textures"].size()) - 1;
    }

    void surroundings(float radiance) { extras()["environment"] = {radiance, radiance, radiance}; }

    Json& extras() { return json["scenes"][0]["extras"]; }

    void use(const char* extension) { json["extensionsUsed"].push_back(extension); }

    void root(Json more) { json["scenes"][0]["nodes"].push_back(node(std::move(more))); }
};

/// A turn about the upward axis: lights then come from the right.
inline Json turned(double degrees) {
    const double half = degrees * pi / 360;
    return {{"rotation", {0, std::sin(half), 0, std::cos(half)}}};
}

class GltfProgram : public RenderProgram {
protected:
    /// The picture of a file, its middle and its mean by channel; a failed test if there is none.
    struct Shown {
        std::string map;
        int size = 0;

        float at(int x, int y, int channel = 0) const {
            return valueAt(map, size, size, x, y, channel);
        }

        double mean(int channel = 0) const {
            double sum = 0;
            for (int i = 0; i < size * size; ++i)
                sum += static_cast<double>(at(i % size, i / size, channel));
            return sum / size / size;
        }

        /// Rows of the middle column, or columns of the middle row, that are bright.
        int brightRows() const {
            return count([this](int i) { return at(size / 2, i) > 0.5F; });
        }

        int brightColumns() const {
            return count([this](int i) { return at(i, size / 2) > 0.5F; });
        }

    private:
        template <typename Is>
        int count(const Is& is) const {
            int sum = 0;
            for (int i = 0; i < size; ++i)
                sum += is(i) ? 1 : 0;
            return sum;
        }
    };

    Shown show(const WallFile& file, const std::string& words, int size = 8) {
        folder.Write("scene.gltf", file.text());
        const std::string side = std::to_string(size);
        EXPECT_EQ(run("scene.gltf -o a.pfm --size " + side + "x" + side + " " + words), 0)
            << folder.Read("errors");
        Shown shown{folder.Read("a.pfm"), size};
        EXPECT_EQ(shown.map.rfind("PF\n" + side + " " + side + "\n-1.0\n", 0), 0U);
        return shown;
    }

    /// What the middle of the wall shows.
    Shown middle(const WallFile& file, const std::string& words = {}) {
        return show(file, front + "--view-height 100 " + words);
    }

    const std::string front = "--eye 0,-5000,0 --target 0,0,0 ";
};

} // namespace qor::render::testing
