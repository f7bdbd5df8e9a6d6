#include "tests/import/GltfBuilder.h"
#include "tests/import/ImportHarness.h"

#include <algorithm>
#include <cctype>
#include <cmath>

using namespace qor::document;
using namespace qor::import::testing;

namespace {

// Corners and triangles of a cube of 10 mm.
constexpr int corners[8][3] = {{0, 0, 0},  {10, 0, 0},  {10, 10, 0},  {0, 10, 0},
                               {0, 0, 10}, {10, 0, 10}, {10, 10, 10}, {0, 10, 10}};
constexpr int triangles[12][3] = {{0, 2, 1}, {0, 3, 2}, {4, 5, 6}, {4, 6, 7}, {0, 1, 5}, {0, 5, 4},
                                  {1, 2, 6}, {1, 6, 5}, {2, 3, 7}, {2, 7, 6}, {3, 0, 4}, {3, 4, 7}};

std::string asciiStl() {
    std::string text = "solid cube\n";
    for (const auto& triangle : triangles) {
        text += " facet normal 0 0 0\n  outer loop\n";
        for (const int corner : triangle)
            text += "   vertex " + std::to_string(corners[corner][0]) + " " +
                    std::to_string(corners[corner][1]) + " " + std::to_string(corners[corner][2]) +
                    "\n";
        text += "  endloop\n endfacet\n";
    }
    return text + "endsolid cube\n";
}

std::string binaryStl() {
    std::string bytes(80, ' ');
    const auto append = [&bytes](const auto& value) {
        bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    };
    append(std::uint32_t{12});
    for (const auto& triangle : triangles) {
        bytes.append(12, '\0');
        for (const int corner : triangle)
            for (const int coordinate : corners[corner])
                append(static_cast<float>(coordinate));
        bytes.append(2, '\0');
    }
    return bytes;
}

std::string ply() {
    std::string text =
        "ply\nformat ascii 1.0\nelement vertex 8\nproperty float x\nproperty float y\n"
        "property float z\nelement face 12\nproperty list uchar int vertex_indices\n"
        "end_header\n";
    for (const auto& corner : corners)
        text += std::to_string(corner[0]) + " " + std::to_string(corner[1]) + " " +
                std::to_string(corner[2]) + "\n";
    for (const auto& t : triangles)
        text += "3 " + std::to_string(t[0]) + " " + std::to_string(t[1]) + " " +
                std::to_string(t[2]) + "\n";
    return text;
}

void expectCube(Imported& imported) {
    ASSERT_TRUE(imported.result) << imported.result.failure().text;
    const Product& product = imported.product();
    ASSERT_EQ(product.meshes.size(), 1U);
    EXPECT_EQ(product.unit, SourceUnit());
    EXPECT_EQ(product.meshes[0].triangleCount(), 12U);
    expectBox(product, {0, 0, 0}, {10, 10, 10}, 1e-5);
    // A cube bends by 90 degrees: its normals are those of its sides, and vertices are shared
    // within a side only.
    EXPECT_EQ(product.meshes[0].vertexCount(), 24U);
    const std::vector<float>& normals = product.meshes[0].normals;
    ASSERT_EQ(normals.size(), 72U);
    for (std::size_t i = 0; i < normals.size(); i += 3)
        EXPECT_NEAR(std::abs(normals[i]) + std::abs(normals[i + 1]) + std::abs(normals[i + 2]), 1,
                    1e-5);
}

} // namespace

TEST(MeshFileImport, StlInTextAndBinaryGiveTheSameCube) {
    const QorTempDirectory folder;
    writeText(folder / "a.stl", asciiStl());
    writeText(folder / "b.stl", binaryStl());
    Imported text = import(folder / "a.stl");
    Imported binary = import(folder / "b.stl");
    expectCube(text);
    expectCube(binary);
}

TEST(MeshFileImport, PlyGivesTheCube) {
    const QorTempDirectory folder;
    writeText(folder / "a.ply", ply());
    Imported imported = import(folder / "a.ply");
    expectCube(imported);
}

TEST(MeshFileImport, OneObjectIsOneNodeWithTheNameOfTheFileWhereItHasNone) {
    const QorTempDirectory folder;
    writeText(folder / "bracket.ply", ply());
    writeText(folder / "wheel.stl", binaryStl());
    writeText(folder / "named.stl", asciiStl());
    writeText(folder / "plate.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n");
    for (const auto& [file, name] :
         {std::pair("bracket.ply", "bracket"), std::pair("wheel.stl", "wheel"),
          std::pair("named.stl", "cube"), std::pair("plate.obj", "plate")}) {
        Imported imported = import(folder / file);
        ASSERT_TRUE(imported.result) << imported.result.failure().text;
        const Product& product = imported.product();
        ASSERT_EQ(product.nodes.size(), 1U) << file;
        EXPECT_EQ(product.nodes[0].name, name);
        EXPECT_EQ(product.parts[0].name, name);
        // Nobody said what it is made of.
        EXPECT_TRUE(product.materials.empty()) << file;
        EXPECT_EQ(product.meshes[0].groups[0].material, none) << file;
    }
}

TEST(MeshFileImport, ColoursOfVerticesHaveAWhiteMaterialUnderThem) {
    const QorTempDirectory folder;
    writeText(folder / "a.obj", "v 0 0 0 1 0 0\nv 1 0 0 0 1 0\nv 0 1 0 0 0 1\nf 1 2 3\n");
    Imported imported = import(folder / "a.obj");
    ASSERT_TRUE(imported.result) << imported.result.failure().text;
    const Product& product = imported.product();
    EXPECT_FALSE(product.meshes[0].colors.empty());
    ASSERT_EQ(product.materials.size(), 1U);
    EXPECT_EQ(product.materials[0].baseColor, (std::array<double, 4>{1, 1, 1, 1}));
}

TEST(MeshFileImport, TextStlMayBeginWithBlanksAndShout) {
    const QorTempDirectory folder;
    std::string text = " \r\n" + asciiStl();
    std::transform(text.begin(), text.end(), text.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    writeText(folder / "a.stl", text);
    Imported imported = import(folder / "a.stl");
    expectCube(imported);
}

TEST(MeshFileImport, DamagedPlyIsRefusedWithThePlace) {
    const QorTempDirectory folder;
    const auto expectRefused = [&](std::string text, const char* from, const char* to,
                                   const char* says) {
        const std::size_t at = text.rfind(from);
        ASSERT_NE(at, std::string::npos);
        text.replace(at, std::string(from).size(), to);
        writeText(folder / "a.ply", text);
        const Imported imported = import(folder / "a.ply");
        ASSERT_FALSE(imported.result) << says;
        EXPECT_NE(imported.result.failure().text.find(says), std::string::npos)
            << imported.result.failure().text;
    };
    expectRefused(ply(), "3 3 4 7\n", "", "face 11 of 12 is missing");
    expectRefused(ply(), "3 3 4 7\n", "3 3 4 8\n", "face 11 names the vertex 8");
    expectRefused(ply(), "3 3 4 7\n", "3 3 4 -1\n", "face 11 names the vertex -1");
    expectRefused(ply(), "3 3 4 7\n", "99 3 4 7\n", "face 11 claims a list of 99 numbers");
    expectRefused(ply(), "property float z", "property pear z", "unknown type \"pear\"");
    expectRefused(ply(), "ascii", "sorted", "unknown format \"sorted\"");
}

TEST(MeshFileImport, ObjKeepsObjectsMaterialsAndPictures) {
    const QorTempDirectory folder;
    writeText(folder / "four.bmp", smallBmp());
    writeText(folder / "a.mtl", "newmtl paint\nKd 1 0 0\nNs 100\nd 0.5\nmap_Kd four.bmp\n"
                                "newmtl plain\nKd 0 1 0\n");
    writeText(folder / "a.obj",
              "mtllib a.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nvt 0 0\nvt 1 0\nvt 0 1\n"
              "o left\nusemtl paint\nf 1/1 2/2 3/3\no right\nusemtl plain\nf 3 2 1\n");
    Imported imported = import(folder / "a.obj");
    ASSERT_TRUE(imported.result) << imported.result.failure().text;
    const Product& product = imported.product();
    EXPECT_EQ(product.meshes.size(), 2U);
    const std::int32_t left = nodeNamed(product, "left");
    ASSERT_NE(left, none);
    const Mesh& mesh = product.meshes[product.parts[product.nodes[left].part].mesh];
    const std::int32_t material = mesh.groups[0].material;
    ASSERT_NE(material, none);
    EXPECT_EQ(product.materials[material].name, "paint");
    EXPECT_EQ(product.materials[material].baseColor, (std::array<double, 4>{1, 0, 0, 0.5}));
    EXPECT_NEAR(product.materials[material].roughness, std::pow(2. / 102, 0.25), 1e-6);
    ASSERT_TRUE(product.materials[material].texture(TextureSlot::BaseColor));
    ASSERT_EQ(product.textures.size(), 1U);
    EXPECT_EQ(product.textures[0].pixels[0], 255);
    // The first vertex has the lower left corner of the picture, which is v = 1 counted from the
    // top.
    ASSERT_GE(mesh.uv0.size(), 2U);
    for (std::size_t v = 0; v < mesh.vertexCount(); ++v)
        EXPECT_EQ(mesh.uv0[2 * v + 1], 1 - mesh.positions[3 * v + 1]);
}
