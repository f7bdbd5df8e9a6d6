#include "tests/import/GltfBuilder.h"
#include "tests/import/ImportHarness.h"

#include <sys/stat.h>

#include <functional>
#include <limits>

using namespace qor::document;
using namespace qor::import::testing;
using nlohmann::json;

namespace {

GltfBuilder soundGltf() {
    GltfBuilder gltf;
    gltf.scene({gltf.node({{"mesh", gltf.triangle()}, {"name", "n"}})});
    return gltf;
}

// One lie in a sound glTF file, and what must be said about it.
struct Lie {
    const char* says;
    std::function<void(GltfBuilder&)> tell;
};

json dataBuffer(std::size_t claimed) {
    return {{{"byteLength", claimed}, {"uri", "data:application/octet-stream;base64,AAAA"}}};
}

void animate(GltfBuilder& gltf, const char* path, int input, int output) {
    gltf.json["animations"] = {
        {{"samplers", {{{"input", input}, {"output", output}}}},
         {"channels", {{{"sampler", 0}, {"target", {{"node", 0}, {"path", path}}}}}}}};
}

const std::vector<Lie> lies{
    {"version 1.0",
     [](GltfBuilder& g) {
         g.json["asset"]["version"] = "1.0";
     }},
    {"which version",
     [](GltfBuilder& g) {
         g.json.erase("asset");
     }},
    {"KHR_draco_mesh_compression",
     [](GltfBuilder& g) {
         g.json["extensionsRequired"] = {"KHR_draco_mesh_compression"};
     }},
    {"claims 4294967296 bytes",
     [](GltfBuilder& g) {
         g.json["buffers"] = dataBuffer(1ULL << 32);
     }},
    {"no count",
     [](GltfBuilder& g) {
         g.json["buffers"] = dataBuffer(1);
         g.json["buffers"][0]["byteLength"] = -5;
     }},
    {"not base64",
     [](GltfBuilder& g) {
         g.json["buffers"] = {{{"byteLength", 3}, {"uri", "data:text/plain,hello"}}};
     }},
    {"outside its folder",
     [](GltfBuilder& g) {
         g.json["buffers"] = {{{"byteLength", 1}, {"uri", "../../../../etc/passwd"}}};
     }},
    {"outside its folder",
     [](GltfBuilder& g) {
         g.json["buffers"] = {{{"byteLength", 1}, {"uri", "%2e%2e/%2e%2e/etc/passwd"}}};
     }},
    {"outside its folder",
     [](GltfBuilder& g) {
         g.json["buffers"] = {{{"byteLength", 1}, {"uri", "/etc/passwd"}}};
     }},
    {"is missing",
     [](GltfBuilder& g) {
         g.json["buffers"] = {{{"byteLength", 1}, {"uri", "gone.bin"}}};
     }},
    {"reaches beyond its buffer",
     [](GltfBuilder& g) {
         g.json["bufferViews"][0]["byteLength"] = 1 << 20;
     }},
    {"reaches beyond its buffer",
     [](GltfBuilder& g) {
         g.json["bufferViews"][0]["byteOffset"] = ~0ULL;
     }},
    {"names nothing",
     [](GltfBuilder& g) {
         g.json["bufferViews"][0]["buffer"] = 1;
     }},
    {"more than its buffer view holds",
     [](GltfBuilder& g) {
         g.json["accessors"][0]["count"] = 4;
     }},
    {"more than its buffer view holds",
     [](GltfBuilder& g) {
         g.json["accessors"][0]["count"] = 1ULL << 62;
     }},
    {"of no known type",
     [](GltfBuilder& g) {
         g.json["accessors"][0]["componentType"] = 1;
     }},
    {"elements of nothing",
     [](GltfBuilder& g) {
         g.json["accessors"][0].erase("bufferView");
         g.json["accessors"][0]["count"] = 1ULL << 40;
     }},
    {"names nothing",
     [](GltfBuilder& g) {
         g.json["nodes"][0]["mesh"] = 7;
     }},
    {"names nothing",
     [](GltfBuilder& g) {
         g.json["nodes"][0]["mesh"] = -1;
     }},
    {"names nothing",
     [](GltfBuilder& g) {
         g.json["meshes"][0]["primitives"][0]["indices"] = 99;
     }},
    {"names a node",
     [](GltfBuilder& g) {
         g.json["scenes"][0]["nodes"] = {9};
     }},
    {"contains itself",
     [](GltfBuilder& g) {
         g.json["nodes"][0]["children"] = {0};
     }},
    {"contains itself",
     [](GltfBuilder& g) {
         g.node({{"children", {2}}});
         g.node({{"children", {1}}});
     }},
    {"two parents",
     [](GltfBuilder& g) {
         g.node({{"children", {0}}});
         g.node({{"children", {0}}});
     }},
    {"a thousand levels",
     [](GltfBuilder& g) {
         for (int i = 1; i < 2000; ++i)
             g.node({{"children", {i - 1}}});
         g.scene({1999});
     }},
    {"no array",
     [](GltfBuilder& g) {
         g.json["meshes"] = 5;
     }},
    {"closer together than their length",
     [](GltfBuilder& g) {
         g.json["bufferViews"][0]["byteStride"] = 4;
     }},
    {"replaces elements by nothing",
     [](GltfBuilder& g) {
         g.json["accessors"][0]["sparse"] = {{"count", 2}};
     }},
    {"is not three floats a vertex",
     [](GltfBuilder& g) {
         g.json["accessors"][0]["type"] = "VEC2";
     }},
    {"is not three floats a vertex",
     [](GltfBuilder& g) {
         g.json["accessors"][0]["componentType"] = 5121;
     }},
    {"no whole numbers",
     [](GltfBuilder& g) {
         g.json["meshes"][0]["primitives"][0]["indices"] = 0;
     }},
    {"without vertices",
     [](GltfBuilder& g) {
         g.json["meshes"][0]["primitives"][0]["attributes"] = json::array();
     }},
    {"is not 16 numbers",
     [](GltfBuilder& g) {
         g.json["nodes"][0]["matrix"] = {1, 2, 3};
     }},
    {"is not 3 numbers",
     [](GltfBuilder& g) {
         g.json["nodes"][0]["scale"] = {1, "2", 3};
     }},
    {"times are no floats",
     [](GltfBuilder& g) {
         animate(g, "translation", 0, 0);
     }},
    {"keys are not those of a rotation",
     [](GltfBuilder& g) {
         animate(g, "rotation", g.floats({0, 1, 2}, "SCALAR"), 0);
     }},
    {"not as many keys as times",
     [](GltfBuilder& g) {
         animate(g, "scale", g.floats({0, 1}, "SCALAR"), 0);
     }},
    {"makes no sense",
     [](GltfBuilder& g) {
         g.json["nodes"][0]["translation"] = {1e30, 0, 0};
     }},
    {"no surface",
     [](GltfBuilder& g) {
         g.json.erase("meshes");
         g.json["nodes"][0].erase("mesh");
     }},
};

} // namespace

TEST(HostileModel, EveryLieOfAGltfFileIsRefusedAndNamed) {
    const QorTempDirectory folder;
    const auto file = folder / "lie.gltf";
    for (const Lie& lie : lies) {
        GltfBuilder gltf = soundGltf();
        lie.tell(gltf);
        writeText(file, gltf.text());
        const Imported imported = import(file);
        ASSERT_FALSE(imported.result) << lie.says;
        const Failure& failure = imported.result.failure();
        EXPECT_TRUE(failure.text.starts_with(file.string() + ": ")) << failure.text;
        EXPECT_NE(failure.text.find(lie.says), std::string::npos)
            << failure.text << "\n  instead of " << lie.says;
    }
}

TEST(HostileModel, JsonThatIsWrongOrTooDeepIsRefused) {
    const QorTempDirectory folder;
    for (const std::string& text :
         {std::string("{"), std::string("{} {}"), "{\"a\":" + std::string(100'000, '['),
          "{\"asset\":" + std::string(300, '[') + std::string(300, ']') + "}"}) {
        writeText(folder / "x.gltf", text);
        const Imported imported = import(folder / "x.gltf");
        ASSERT_FALSE(imported.result);
        EXPECT_NE(imported.result.failure().text.find("JSON"), std::string::npos)
            << imported.result.failure().text;
    }
}

TEST(HostileModel, ATextureOutsideTheFolderIsLeftOutAndSaid) {
    const QorTempDirectory folder;
    std::filesystem::create_directory(folder / "model");
    writeText(folder / "secret.bmp", smallBmp());
    std::filesystem::create_symlink(folder / "secret.bmp", folder / "model" / "link.bmp");
    for (const char* uri : {"../secret.bmp", "%2e%2e/secret.bmp", "link.bmp"}) {
        GltfBuilder gltf;
        gltf.json["images"] = {{{"uri", uri}}};
        gltf.json["textures"] = {{{"source", 0}}};
        gltf.json["materials"] = {
            {{"pbrMetallicRoughness", {{"baseColorTexture", {{"index", 0}}}}}}};
        gltf.scene({gltf.node({{"mesh", gltf.triangle({}, 0)}})});
        writeText(folder / "model" / "a.gltf", gltf.text());
        Imported imported = import(folder / "model" / "a.gltf");
        ASSERT_TRUE(imported.result) << imported.result.failure().text;
        EXPECT_TRUE(imported.product().textures.empty()) << uri;
        ASSERT_EQ(imported.warnings.size(), 1U);
        EXPECT_NE(imported.warnings[0].find("outside the model's folder"), std::string::npos);
    }
}

TEST(HostileModel, APictureThatIsNoneIsLeftOutAndSaid) {
    const QorTempDirectory folder;
    for (const std::string& bytes :
         {std::string("push graphic-context\nimage over 0,0 0,0 '/etc/passwd'"),
          std::string("\x89PNG\r\n\x1a\nrubbish"), std::string("BM"), std::string()}) {
        writeText(folder / "picture.png", bytes);
        GltfBuilder gltf;
        gltf.json["images"] = {{{"uri", "picture.png"}}};
        gltf.json["textures"] = {{{"source", 0}}};
        gltf.json["materials"] = {{{"normalTexture", {{"index", 0}}}}};
        gltf.scene({gltf.node({{"mesh", gltf.triangle({}, 0)}})});
        writeText(folder / "a.gltf", gltf.text());
        Imported imported = import(folder / "a.gltf");
        ASSERT_TRUE(imported.result) << imported.result.failure().text;
        EXPECT_TRUE(imported.product().textures.empty());
        EXPECT_EQ(imported.warnings.size(), 1U);
    }
}

TEST(HostileModel, APictureThatIsTooLargeIsLeftOutAndSaid) {
    const QorTempDirectory folder;
    std::string bmp = smallBmp();
    bmp.replace(18, 4, std::string("\x00\x00\x01\x00", 4)); // a width of 65536
    writeText(folder / "large.bmp", bmp);
    GltfBuilder gltf = soundGltf();
    gltf.json["images"] = {{{"uri", "large.bmp"}}};
    gltf.json["textures"] = {{{"source", 0}}};
    gltf.json["materials"] = {{{"normalTexture", {{"index", 0}}}}};
    writeText(folder / "a.gltf", gltf.text());
    Imported imported = import(folder / "a.gltf");
    ASSERT_TRUE(imported.result) << imported.result.failure().text;
    EXPECT_TRUE(imported.product().textures.empty());
    ASSERT_EQ(imported.warnings.size(), 1U);
    EXPECT_EQ(imported.warnings[0].find('`'), std::string::npos) << imported.warnings[0];
}

TEST(HostileModel, WhatIsNoFileIsNotWaitedFor) {
    const QorTempDirectory folder;
    ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
    writeText(folder / "a.mtl", "newmtl a\nmap_Kd pipe\n");
    const std::string triangle = "v 0 0 0\nv 1 0 0\nv 0 1 0\nusemtl a\nf 1 2 3\n";
    for (const char* library : {"pipe", "a.mtl", "gone.mtl"}) {
        writeText(folder / "b.obj", std::string("mtllib ") + library + "\n" + triangle);
        Imported imported = import(folder / "b.obj");
        ASSERT_TRUE(imported.result) << imported.result.failure().text;
        EXPECT_EQ(imported.warnings.size(), 1U) << library;
    }
}

TEST(HostileModel, ANodeThatIsARootTwiceOrAChildTooStandsOnce) {
    const QorTempDirectory folder;
    GltfBuilder gltf = soundGltf();
    const int above = gltf.node({{"children", {0}}});
    gltf.json["scenes"][0]["nodes"] = {above, above, 0};
    writeText(folder / "a.gltf", gltf.text());
    Imported twice = import(folder / "a.gltf");
    ASSERT_TRUE(twice.result) << twice.result.failure().text;
    EXPECT_EQ(twice.product().nodes.size(), 2U);
    gltf.json.erase("scenes");
    gltf.json.erase("scene");
    writeText(folder / "a.gltf", gltf.text());
    Imported none = import(folder / "a.gltf");
    ASSERT_TRUE(none.result) << none.result.failure().text;
    EXPECT_EQ(none.product().nodes.size(), 2U);
}

TEST(HostileModel, TrianglesWithoutNumbersAreLeftOut) {
    const QorTempDirectory folder;
    const float nan = std::numeric_limits<float>::quiet_NaN();
    GltfBuilder gltf;
    const int positions = gltf.floats({0, 0, 0, 1, 0, 0, 0, 1, 0, nan, 0, 0}, "VEC3");
    const int indices = gltf.indices({0, 1, 2, 0, 1, 3});
    gltf.json["meshes"] = {
        {{"primitives", {{{"attributes", {{"POSITION", positions}}}, {"indices", indices}}}}}};
    gltf.scene({gltf.node({{"mesh", 0}})});
    writeText(folder / "a.gltf", gltf.text());
    Imported imported = import(folder / "a.gltf");
    ASSERT_TRUE(imported.result) << imported.result.failure().text;
    EXPECT_EQ(imported.product().meshes[0].triangleCount(), 1U);
    ASSERT_EQ(imported.warnings.size(), 1U);
    EXPECT_NE(imported.warnings[0].find("no numbers"), std::string::npos);
}

TEST(HostileModel, BrokenFilesOfEveryKindAreRefusedByName) {
    const QorTempDirectory folder;

    struct Broken {
        const char* name;
        std::string content;
        const char* says;
    };

    const std::string png("\x89PNG\r\n\x1a\n\0\0\0\0", 12);
    for (const Broken& broken : std::initializer_list<Broken>{
             {"a.step", "", "empty"},
             {"a.step", png, "is not STEP"},
             {"a.step", "ISO-10303-21;\nHEADER;\n", ""},
             {"a.iges", "hello", "is not IGES"},
             {"a.brep", "hello", "is not BREP"},
             {"a.brep", "DBRep_DrawableShape\n\nCASCADE Topology V1, (c)\nLocations 99999999\n",
              ""},
             {"a.stl", "solid", ""},
             {"a.stl", std::string(80, ' ') + "\xFF\xFF\xFF\xFF", "is not STL"},
             {"a.ply", "ply\nformat ascii 1.0\nelement vertex 4000000000\nend_header\n",
              "can hold"},
             {"a.ply", "ply\nformat ascii 1.0\nelement vertex -1\nend_header\n", "announces"},
             {"a.ply", "ply\nformat ascii 1.0\n", "no end"},
             {"a.obj", png, "is not OBJ"},
             {"a.obj", "# nothing\n", ""},
             {"a.glb", std::string("glTF\1\0\0\0\20\0\0\0", 12), "version"},
             {"a.glb", std::string("glTF\2\0\0\0\xFF\xFF\xFF\xFF", 12), "claims"},
             {"a.glb", "hello", "is not binary glTF"},
             {"a.doc", "hello", "not supported"}}) {
        writeText(folder / broken.name, broken.content);
        const Imported imported = import(folder / broken.name);
        ASSERT_FALSE(imported.result) << broken.name << ": " << broken.content;
        const std::string& text = imported.result.failure().text;
        EXPECT_TRUE(text.starts_with((folder / broken.name).string() + ": ")) << text;
        EXPECT_NE(text.find(broken.says), std::string::npos) << text;
    }
    EXPECT_FALSE(import(folder / "missing.step").result);
    EXPECT_FALSE(import(folder.GetFolder()).result);
}

TEST(HostileModel, AMislabelledFileOpensAsWhatItIs) {
    const QorTempDirectory folder;
    writeText(folder / "really.step", soundGltf().binary());
    Imported imported = import(folder / "really.step");
    EXPECT_TRUE(imported.result) << imported.result.failure().text;
}
