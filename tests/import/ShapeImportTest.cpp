#include "tests/import/ImportHarness.h"
#include "tests/import/ShapeModels.h"
#include "tests/support/DecimalComma.h"

#include <algorithm>
#include <cmath>

using namespace qor::document;
using namespace qor::import::testing;
using qor::import::ImportSettings;

namespace {

std::array<double, 3>
shownColor(const Product& product, std::int32_t node, const MeshGroup& group) {
    const std::int32_t material = effectiveMaterial(product, node, group);
    if (material == none)
        return {-1, -1, -1};
    const auto& color = product.materials[material].baseColor;
    return {color[0], color[1], color[2]};
}

std::int32_t childNamed(const Product& product, std::int32_t parent, const std::string& name) {
    for (std::size_t i = 0; i < product.nodes.size(); ++i)
        if (product.nodes[i].parent == parent && product.nodes[i].name == name)
            return static_cast<std::int32_t>(i);
    return none;
}

// The colour that the first group of the part at the end of \p path shows.
std::array<double, 3>
colorAt(const Product& product, const std::vector<std::string>& path, bool lastGroup = false) {
    std::int32_t node = none;
    for (const std::string& name : path)
        node = childNamed(product, node, name);
    if (node == none)
        return {-2, -2, -2};
    const Mesh& mesh = product.meshes[product.parts[product.nodes[node].part].mesh];
    return shownColor(product, node, lastGroup ? mesh.groups.back() : mesh.groups.front());
}

constexpr std::array<double, 3> red{1, 0, 0};
constexpr std::array<double, 3> green{0, 1, 0};
constexpr std::array<double, 3> blue{0, 0, 1};
constexpr std::array<double, 3> yellow{1, 1, 0};

} // namespace

TEST(ShapeImport, NestedRepeatedAssembliesUnfoldAndShareTheirParts) {
    const QorTempDirectory folder;
    writeStepMachine(folder / "machine.step", "MM");
    Imported imported = import(folder / "machine.step");
    ASSERT_TRUE(imported.result) << imported.result.failure().text;
    const Product& product = imported.product();
    // machine, 2 frames of 3 fixings with a bolt and a nut each, and a plate.
    EXPECT_EQ(product.nodes.size(), 1U + 2 + 6 + 12 + 1);
    EXPECT_EQ(product.parts.size(), 6U);
    EXPECT_EQ(product.meshes.size(), 3U);
    EXPECT_EQ(product.nodes[0].name, "machine");
    EXPECT_NE(nodeNamed(product, "fixing:3"), none);
    EXPECT_NE(nodeNamed(product, "Gr\xc3\xbcn platte"), none);
    EXPECT_EQ(product.sourceFile, "machine.step");
    expectBox(product, {-2, -2, 0}, {100, 50, 17}, 0.05);
}

TEST(ShapeImport, ColoursOfFacesInstancesAndAssembliesFindTheirWay) {
    const QorTempDirectory folder;
    writeStepMachine(folder / "machine.step", "MM");
    Imported imported = import(folder / "machine.step");
    ASSERT_TRUE(imported.result) << imported.result.failure().text;
    const Product& product = imported.product();
    EXPECT_EQ(colorAt(product, {"machine", "frame:1", "fixing:1", "bolt:1"}), red);
    EXPECT_EQ(colorAt(product, {"machine", "frame:1", "fixing:1", "bolt:1"}, true), blue);
    EXPECT_EQ(colorAt(product, {"machine", "frame:2", "fixing:2", "nut:1"}), yellow);
    const std::int32_t frame = nodeNamed(product, "frame:2");
    ASSERT_NE(frame, none);
    EXPECT_EQ(shownColor(product, frame, {}), green);
}

TEST(ShapeImport, EveryUnitEndsInTheSameMillimetres) {
    const QorTempDirectory folder;

    struct Unit {
        const char* keyword;
        const char* name;
        double millimetres;
    };

    for (const Unit& unit :
         {Unit{"MM", "mm", 1}, Unit{"INCH", "inch", 25.4}, Unit{"M", "m", 1000}}) {
        writeStepMachine(folder / "machine.step", unit.keyword);
        writeIgesBox(folder / "box.iges", unit.keyword);
        Imported step = import(folder / "machine.step");
        ASSERT_TRUE(step.result) << step.result.failure().text;
        EXPECT_EQ(step.product().unit.name, unit.name);
        EXPECT_NEAR(step.product().unit.millimetres, unit.millimetres, 1e-9);
        expectBox(step.product(), {-2, -2, 0}, {100, 50, 17}, 0.05);
        Imported iges = import(folder / "box.iges");
        ASSERT_TRUE(iges.result) << iges.result.failure().text;
        EXPECT_EQ(iges.product().unit.name, unit.name);
        expectBox(iges.product(), {0, 0, 0}, {10, 20, 30}, 1e-4);
    }
}

TEST(ShapeImport, PlacementsOfOneShapeInABrepFileShareAMesh) {
    const QorTempDirectory folder;
    writeBrepCylinders(folder / "two.brep");
    Imported imported = import(folder / "two.brep");
    ASSERT_TRUE(imported.result) << imported.result.failure().text;
    EXPECT_EQ(imported.product().meshes.size(), 1U);
    EXPECT_EQ(imported.product().nodes.size(), 3U);
    expectBox(imported.product(), {-5, -5, 0}, {45, 5, 10}, 0.05);
}

TEST(ShapeImport, NormalsAreThoseOfTheSurface) {
    const QorTempDirectory folder;
    writeBrepCylinders(folder / "two.brep");
    Imported imported = import(folder / "two.brep");
    ASSERT_TRUE(imported.result) << imported.result.failure().text;
    const Mesh& mesh = imported.product().meshes[0];
    ASSERT_EQ(mesh.normals.size(), mesh.positions.size());
    int onMantle = 0;
    for (std::size_t i = 0; i < mesh.positions.size(); i += 3) {
        const float* p = &mesh.positions[i];
        const float* n = &mesh.normals[i];
        EXPECT_NEAR(std::hypot(n[0], n[1], n[2]), 1, 1e-5);
        if (std::abs(n[2]) > 0.5F)
            continue;
        ++onMantle;
        EXPECT_NEAR(n[0], p[0] / 5, 1e-4);
        EXPECT_NEAR(n[1], p[1] / 5, 1e-4);
    }
    EXPECT_GT(onMantle, 30);
}

TEST(ShapeImport, TrianglesFaceOutward) {
    const QorTempDirectory folder;
    writeStepMachine(folder / "machine.step", "MM");
    Imported imported = import(folder / "machine.step");
    ASSERT_TRUE(imported.result) << imported.result.failure().text;
    for (const Mesh& mesh : imported.product().meshes) {
        // The signed volume of tetrahedra to the origin: positive if the surface is closed and
        // turned outward.
        double volume = 0;
        for (std::size_t i = 0; i < mesh.indices.size(); i += 3) {
            const float* a = &mesh.positions[std::size_t{3} * mesh.indices[i]];
            const float* b = &mesh.positions[std::size_t{3} * mesh.indices[i + 1]];
            const float* c = &mesh.positions[std::size_t{3} * mesh.indices[i + 2]];
            volume += (a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2]) +
                       a[2] * (b[0] * c[1] - b[1] * c[0])) /
                      6.;
        }
        const double expected = mesh.name == "bolt"  ? std::acos(-1.) * 4 * 10
                                : mesh.name == "nut" ? 75.
                                                     : 20000.;
        EXPECT_NEAR(volume, expected, expected * 0.01) << mesh.name;
    }
}

TEST(ShapeImport, AFinerAngleMakesMoreTriangles) {
    const QorTempDirectory folder;
    writeBrepCylinders(folder / "two.brep");
    Imported coarse = import(folder / "two.brep", ImportSettings{1, 40});
    Imported fine = import(folder / "two.brep", ImportSettings{0.001, 5});
    ASSERT_TRUE(coarse.result && fine.result);
    EXPECT_GT(fine.product().meshes[0].triangleCount(),
              4 * coarse.product().meshes[0].triangleCount());
}

TEST(ShapeImport, EdgesAreThoseOfThePartWithoutSeams) {
    const QorTempDirectory folder;
    writeBrepCylinders(folder / "two.brep");
    Imported imported = import(folder / "two.brep");
    ASSERT_TRUE(imported.result);
    const Mesh& mesh = imported.product().meshes[0];
    ASSERT_FALSE(mesh.edges.empty());
    for (const std::uint32_t vertex : mesh.edges) {
        const float z = mesh.positions[std::size_t{3} * vertex + 2];
        EXPECT_TRUE(z == 0 || z == 10) << z;
    }
}

TEST(ShapeImport, AThousandInstancesShareOneMesh) {
    const QorTempDirectory folder;
    writeStepGrid(folder / "grid.step", 1000);
    Imported imported = import(folder / "grid.step");
    ASSERT_TRUE(imported.result) << imported.result.failure().text;
    EXPECT_EQ(imported.product().nodes.size(), 1001U);
    EXPECT_EQ(imported.product().meshes.size(), 1U);
}

TEST(ShapeImport, ProgressNeverFalls) {
    const QorTempDirectory folder;
    writeStepMachine(folder / "machine.step", "MM");
    const Imported imported = import(folder / "machine.step");
    ASSERT_GE(imported.fractions.size(), 3U);
    EXPECT_TRUE(std::is_sorted(imported.fractions.begin(), imported.fractions.end()));
    EXPECT_LE(imported.fractions.back(), 0.93 + 1e-9);
}

TEST(ShapeImport, StepNumbersAreReadUnderADecimalComma) {
    const QorTempDirectory folder;
    writeStepMachine(folder / "machine.step", "INCH");
    const DecimalComma comma;
    Imported imported = import(folder / "machine.step");
    ASSERT_TRUE(imported.result) << imported.result.failure().text;
    EXPECT_NEAR(imported.product().unit.millimetres, 25.4, 1e-9);
    expectBox(imported.product(), {-2, -2, 0}, {100, 50, 17}, 0.05);
}

TEST(ShapeImport, SubstancesShineAsTheyDoInLife) {
    const QorTempDirectory folder;
    writeStepSubstances(folder / "samples.step");
    Imported imported = import(folder / "samples.step");
    ASSERT_TRUE(imported.result) << imported.result.failure().text;
    const Product& product = imported.product();
    const auto materialOf = [&](const char* name) -> const Material* {
        const std::int32_t node = nodeNamed(product, name);
        const Mesh& mesh = product.meshes[product.parts[product.nodes[node].part].mesh];
        const std::int32_t material = effectiveMaterial(product, node, mesh.groups.front());
        return material == none ? nullptr : &product.materials[material];
    };
    const Material* steel = materialOf("steel");
    ASSERT_NE(steel, nullptr);
    EXPECT_EQ(steel->name, "Stainless steel");
    EXPECT_EQ(steel->metallic, 1);
    EXPECT_GT(steel->baseColor[0], 0.4);
    const Material* glass = materialOf("glass");
    ASSERT_NE(glass, nullptr);
    EXPECT_EQ(glass->transmission, 1);
    EXPECT_GT(glass->thicknessMm, 0);
    EXPECT_EQ(glass->baseColor, (std::array<double, 4>{0, 0, 1, 1}));
    EXPECT_EQ(materialOf("unknown"), nullptr) << "nobody knows how that looks";
    const Material* painted = materialOf("red");
    ASSERT_NE(painted, nullptr);
    EXPECT_EQ(painted->name, "Unobtainium");
    EXPECT_EQ(painted->metallic, 0);
}
