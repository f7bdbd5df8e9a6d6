// Models that mean harm, through the whole way: child process, document file, representations.
#include "tests/document/DocumentTest.h"
#include "tests/import/GltfBuilder.h"

#include <sys/stat.h>

#include <limits>

using namespace qor::document;
using namespace qor::document::testing;
using qor::import::testing::GltfBuilder;

namespace {

class HostileModels : public DocumentTest {};

/// How a sound model of one triangle is spoilt, and what is said; nothing: it opens, and is sound.
struct Harm {
    const char* says;
    void (*spoil)(GltfBuilder& gltf);
};

const Harm harms[] = {
    {"",
     [](GltfBuilder& /*gltf*/) {
     }},
    {"lie.gltf",
     [](GltfBuilder& gltf) {
         gltf.json["nodes"][0]["children"] = {0};
     }},
    {"lie.gltf",
     [](GltfBuilder& gltf) {
         gltf.json["nodes"].push_back({{"children", {0}}});
         gltf.json["nodes"][0]["children"] = {1};
     }},
    {"lie.gltf",
     [](GltfBuilder& gltf) {
         gltf.json["bufferViews"][0]["byteLength"] = 4294967295U;
     }},
    {"lie.gltf",
     [](GltfBuilder& gltf) {
         gltf.json["accessors"][0]["count"] = 4000000000U;
     }},
    {"lie.gltf",
     [](GltfBuilder& gltf) {
         gltf.json["accessors"][0]["byteOffset"] = 1U << 31;
     }},
    {"lie.gltf",
     [](GltfBuilder& gltf) {
         gltf.json["bufferViews"][0]["buffer"] = 7;
     }},
    {"lie.gltf",
     [](GltfBuilder& gltf) {
         gltf.json["nodes"][0]["mesh"] = -1;
     }},
    {"lie.gltf",
     [](GltfBuilder& gltf) {
         gltf.json["nodes"][0]["translation"] = {1e300, 0, 0};
     }},
    {"",
     [](GltfBuilder& gltf) {
         gltf.json["images"] = {{{"uri", "../../../../../../etc/passwd"}}};
         gltf.json["textures"] = {{{"source", 0}}};
         gltf.json["materials"] = {
             {{"pbrMetallicRoughness", {{"baseColorTexture", {{"index", 0}}}}}}};
         gltf.json["meshes"][0]["primitives"][0]["material"] = 0;
     }},
};

GltfBuilder soundModel() {
    GltfBuilder gltf;
    gltf.scene({gltf.node({{"mesh", gltf.triangle()}})});
    return gltf;
}

} // namespace

TEST_F(HostileModels, AreRefusedByNameOrOpenSoundAndLeaveNothingBehind) {
    DocumentStore store(loop, options());
    for (const Harm& harm : harms) {
        GltfBuilder gltf = soundModel();
        harm.spoil(gltf);
        const auto model = directory.Write("lie.gltf", gltf.text());
        const Result<Document_var> opened = open(store, model);
        ASSERT_EQ(opened.ok(), *harm.says == '\0')
            << (opened ? "opened: " : opened.failure().text + ": ") << gltf.json.dump();
        if (!opened) {
            EXPECT_NE(opened.failure().text.find(harm.says), std::string::npos);
            continue;
        }
        const ProductReps& product = opened.value()->product();
        EXPECT_TRUE(product.images().empty());
        EXPECT_FALSE(product.worldBox().IsEmpty());
        store.release(*opened.value());
    }
}

TEST_F(HostileModels, ATriangleWithoutNumbersIsLeftOut) {
    GltfBuilder gltf;
    const float none = std::numeric_limits<float>::quiet_NaN();
    nlohmann::json primitive;
    primitive["attributes"]["POSITION"] =
        gltf.floats({0, 0, 0, 1, 0, 0, 0, 1, 0, none, 0, 0, 1, 1, 1, 2, 2, 2}, "VEC3");
    gltf.json["accessors"].back().update({{"min", {0, 0, 0}}, {"max", {2, 2, 2}}});
    gltf.json["meshes"].push_back({{"primitives", {primitive}}});
    gltf.scene({gltf.node({{"mesh", 0}})});
    DocumentStore store(loop, options());
    const Result<Document_var> opened = open(store, directory.Write("nan.gltf", gltf.text()));
    ASSERT_TRUE(opened) << opened.failure().text;
    EXPECT_EQ(opened.value()->product().countTriangles(), 1U);
    store.release(*opened.value());
}

TEST_F(HostileModels, AnEmptyACutAndAMislabelledFileAreRefusedByName) {
    DocumentStore store(loop, options());
    for (const auto& [name, text] :
         {std::pair("empty.step", ""), std::pair("cut.step", "ISO-10303-21;\nHEADER;\n"),
          std::pair("picture.stl", "\x89PNG\r\n\x1a\n"), std::pair("unknown.xyz", "what")}) {
        const Result<Document_var> opened = open(store, directory.Write(name, text));
        ASSERT_FALSE(opened) << name;
        EXPECT_NE(opened.failure().text.find(name), std::string::npos) << opened.failure().text;
    }
    EXPECT_FALSE(open(store, directory.GetPath("missing.step")));
    EXPECT_FALSE(open(store, directory.GetPath()));
}

TEST_F(HostileModels, APipeIsNotWaitedForAndADocumentThatIsNoneIsSaid) {
    DocumentStore store(loop, options());
    const std::string pipe = directory.GetPath("pipe.step");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const Result<Document_var> waited = open(store, pipe);
    ASSERT_FALSE(waited);
    EXPECT_EQ(waited.failure().text, pipe + ": it is not a file");
    const std::string none = directory.Write("none.qor", "what");
    const Result<Document_var> opened = open(store, none);
    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.failure().text,
              none + ": it is not a document of this program, or it is damaged");
}
