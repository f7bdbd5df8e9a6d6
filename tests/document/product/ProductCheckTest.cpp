#include "workbench/document/product/ProductCheck.h"

#include "tests/document/product/SampleProduct.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

using namespace qor::document;
using namespace qor::document::testing;

namespace {

constexpr float nan32 = std::numeric_limits<float>::quiet_NaN();
constexpr double inf64 = std::numeric_limits<double>::infinity();

// One way to make the sample unsound, and what the checker must say about it.
struct Damage {
    const char* says;
    void (*make)(Product&);
};

const auto damages = std::to_array<Damage>({
    {"parent does not stand before it",
     [](Product& p) {
         p.nodes[0].parent = 0;
     }},
    {"parent does not stand before it",
     [](Product& p) {
         p.nodes[1].parent = -7;
     }},
    {"node 1: it names a part",
     [](Product& p) {
         p.nodes[1].part = 2;
     }},
    {"node 2: it names a material",
     [](Product& p) {
         p.nodes[2].material = 1;
     }},
    {"node 1: its transform",
     [](Product& p) {
         p.nodes[1].transform[3] = inf64;
     }},
    {"part 1: it names a mesh",
     [](Product& p) {
         p.parts[1].mesh = 1;
     }},
    {"part 1: it names a material",
     [](Product& p) {
         p.parts[1].material = -2;
     }},
    {"mesh 0: it names a material",
     [](Product& p) {
         p.meshes[0].groups[0].material = 9;
     }},
    {"mesh 0: it names a vertex",
     [](Product& p) {
         p.meshes[0].indices[4] = 16;
     }},
    {"mesh 0: it names a vertex",
     [](Product& p) {
         p.meshes[0].edges[1] = 16;
     }},
    {"mesh 0: a coordinate",
     [](Product& p) {
         p.meshes[0].positions[5] = nan32;
     }},
    {"mesh 0: a coordinate",
     [](Product& p) {
         p.meshes[0].uv1[0] = -1.F / 0.F;
     }},
    {"one entry for each vertex",
     [](Product& p) {
         p.meshes[0].normals.pop_back();
     }},
    {"middle of an element",
     [](Product& p) {
         p.meshes[0].positions.pop_back();
     }},
    {"do not cover",
     [](Product& p) {
         p.meshes[0].groups.pop_back();
     }},
    {"do not follow",
     [](Product& p) {
         p.meshes[0].groups[1].firstIndex = 3;
     }},
    {"material 0: a number",
     [](Product& p) {
         p.materials[0].ior = inf64;
     }},
    {"material 0: a number",
     [](Product& p) {
         p.materials[0].emission[1] = nan32;
     }},
    {"material 0: one of its textures",
     [](Product& p) {
         p.materials[0].texture(TextureSlot::ClearcoatNormal)->texture = 1;
     }},
    {"material 0: one of its textures",
     [](Product& p) {
         p.materials[0].texture(TextureSlot::ClearcoatNormal)->uvSet = 2;
     }},
    {"texture 0: its pixels",
     [](Product& p) {
         p.textures[0].height = 2;
     }},
    {"camera 0",
     [](Product& p) {
         p.cameras[0].node = 3;
     }},
    {"light 0",
     [](Product& p) {
         p.lights[0].intensity = nan32;
     }},
    {"environment",
     [](Product& p) {
         (*p.environment)[0] = nan32;
     }},
    {"length unit",
     [](Product& p) {
         p.unit.millimetres = 0;
     }},
    {"animation 0",
     [](Product& p) {
         p.animations[0].tracks[0].values.pop_back();
     }},
    {"animation 0",
     [](Product& p) {
         p.animations[0].tracks[0].times = {1, 0};
     }},
    {"animation 0",
     [](Product& p) {
         p.animations[0].tracks[0].node = none;
     }},
});

Product chain(int depth) {
    Product product;
    for (int i = 0; i < depth; ++i)
        product.nodes.emplace_back().parent = i - 1;
    return product;
}

} // namespace

TEST(ProductCheck, TheSampleIsSound) {
    EXPECT_EQ(findFault(sampleProduct()), std::nullopt);
}

TEST(ProductCheck, EveryDamageIsFoundAndNamed) {
    for (const Damage& damage : damages) {
        Product product = sampleProduct();
        damage.make(product);
        const auto fault = findFault(product);
        ASSERT_TRUE(fault) << damage.says;
        EXPECT_NE(fault->find(damage.says), std::string::npos)
            << *fault << " instead of " << damage.says;
    }
}

TEST(ProductCheck, ATreeMayBeAThousandLevelsDeepAndNoDeeper) {
    EXPECT_EQ(findFault(chain(maximumTreeDepth)), std::nullopt);
    const auto fault = findFault(chain(maximumTreeDepth + 1));
    ASSERT_TRUE(fault);
    EXPECT_NE(fault->find("deeper than 1000"), std::string::npos);
}
