#include "workbench/import/scene/SceneReader.h"

#include "workbench/import/model/ImportError.h"
#include "workbench/import/scene/ConfinedFiles.h"
#include "workbench/import/scene/FeatureEdges.h"
#include "workbench/import/scene/GltfFile.h"
#include "workbench/import/scene/GltfMaterials.h"
#include "workbench/import/scene/GltfViews.h"
#include "workbench/import/scene/PlyCheck.h"
#include "workbench/import/scene/SceneAnimations.h"
#include "workbench/import/scene/SceneMaterials.h"
#include "workbench/import/scene/SceneTree.h"
#include "workbench/import/scene/StlText.h"
#include "workbench/import/scene/UnsharedVertices.h"

#include <assimp/Importer.hpp>
#include <assimp/ProgressHandler.hpp>
#include <assimp/config.h>
#include <assimp/postprocess.h>

#include <algorithm>
#include <array>
#include <numeric>
#include <thread>

namespace qor::import {

using document::Product;

namespace {

constexpr double readTo = 0.7;
constexpr double texturesTo = 0.8;
constexpr double meshTo = 0.93;

// Surfaces of scanned or exported meshes are smooth where they bend less than this.
constexpr float creaseAngleDeg = 30;

class AssimpProgress : public Assimp::ProgressHandler {
public:
    explicit AssimpProgress(ImportReport& report) : report_(report) {}

    bool Update(float fraction) override {
        if (fraction >= 0)
            report_.advance(fraction);
        return true;
    }

private:
    ImportReport& report_;
};

bool isGltf(ModelFormat format) {
    return format == ModelFormat::Gltf || format == ModelFormat::Glb;
}

unsigned stepsFor(ModelFormat format) {
    unsigned steps = aiProcess_Triangulate | aiProcess_SortByPType;
    if (isGltf(format))
        return steps;
    steps |= aiProcess_GenSmoothNormals | aiProcess_JoinIdenticalVertices;
    // The normals of an STL file are those of its flat triangles.
    if (format == ModelFormat::Stl)
        steps |= aiProcess_RemoveComponent;
    return steps;
}

void configure(Assimp::Importer& importer) {
    importer.SetPropertyInteger(AI_CONFIG_PP_SBP_REMOVE,
                                aiPrimitiveType_POINT | aiPrimitiveType_LINE);
    importer.SetPropertyFloat(AI_CONFIG_PP_GSN_MAX_SMOOTHING_ANGLE, creaseAngleDeg);
    importer.SetPropertyInteger(AI_CONFIG_PP_RVC_FLAGS, aiComponent_NORMALS);
}

// Assimp tells formats by suffixes, so a file that is named otherwise goes by another name there.
std::filesystem::path nameForAssimp(const std::filesystem::path& file, ModelFormat format) {
    switch (format) {
    case ModelFormat::Gltf:
        return std::filesystem::path(file).replace_extension(".gltf");
    case ModelFormat::Glb:
        return std::filesystem::path(file).replace_extension(".glb");
    case ModelFormat::Ply:
        return std::filesystem::path(file).replace_extension(".ply");
    default:
        return file;
    }
}

// Runs the import proper and, where vertices are shared across creases, spreads them before normals
// are made.
const aiScene*
readAndPrepare(Assimp::Importer& importer, const std::filesystem::path& file, ModelFormat format) {
    const std::string name = nameForAssimp(file, format).string();
    if (isGltf(format) || importer.ReadFile(name, 0) == nullptr)
        return importer.ReadFile(name, stepsFor(format));
    // The importer owns the scene and lets its own post-processing change it; so may this step.
    const auto* scene = importer.GetScene();
    for (unsigned i = 0; i < scene->mNumMeshes; ++i)
        if (!scene->mMeshes[i]->HasNormals())
            unshareVertices(*scene->mMeshes[i]);
    return importer.ApplyPostProcessing(stepsFor(format));
}

// Whether Assimp's complaint means no more than that there are no triangles.
bool saysNothingToShow(std::string_view complaint) {
    constexpr std::array complaints{"No meshes remaining", "has no faces", "file is empty",
                                    "Mesh with invalid primitive type", "file is too small"};
    return std::any_of(complaints.begin(), complaints.end(), [&](const char* words) {
        return complaint.find(words) != std::string_view::npos;
    });
}

const aiScene& import(Assimp::Importer& importer,
                      const std::filesystem::path& file,
                      ModelFormat format,
                      ImportReport& report) {
    report.enter("read", 0, readTo);
    const aiScene* scene = report.inLibrary([&] { return readAndPrepare(importer, file, format); });
    if (scene == nullptr && !saysNothingToShow(importer.GetErrorString()))
        throw ImportError(std::string("it cannot be understood as ") + nameOf(format) + ": " +
                          importer.GetErrorString());
    if (scene == nullptr || scene->mRootNode == nullptr || scene->mNumMeshes == 0)
        throw ImportError("it holds no surface that can be shown");
    return *scene;
}

// Assimp owns neither the files nor the progress handler beyond the import.
struct Session {
    Session(const std::filesystem::path& file,
            ModelFormat format,
            std::span<const std::uint8_t> content,
            ImportReport& report) {
        importer.SetIOHandler(
            new ConfinedFiles({file, nameForAssimp(file, format), content}, report));
        importer.SetProgressHandler(new AssimpProgress(report));
        configure(importer);
    }

    // Faces are an allocation each, so that letting go of a large scene takes a while.
    void free(ImportReport& report) {
        report.inLibrary([this] { importer.FreeScene(); });
    }

    Assimp::Importer importer;
};

// What takes long and does not need each other: finding edges, and letting go of Assimp's scene.
void finish(Session& session, Product& product, ImportReport& report) {
    const std::jthread edges([&product] { addFeatureEdges(product.meshes); });
    session.free(report);
}

Product readGltf(const std::filesystem::path& file, ModelFormat format, ImportReport& report) {
    const GltfFile gltf(file, format == ModelFormat::Glb);
    std::vector<std::uint8_t> content = gltf.contentForAssimp();
    Session session(file, format, content, report);
    const aiScene& scene = import(session.importer, file, format, report);
    content = {};
    Product product;
    product.unit = {"m", 1000};
    report.enter("textures", readTo, texturesTo);
    addGltfMaterials(gltf, product, report);
    report.enter("mesh", texturesTo, meshTo);
    const MeshRules rules{{1000, true}, true};
    std::vector<std::int32_t> materials(product.materials.size());
    std::iota(materials.begin(), materials.end(), 0);
    const std::vector<std::int32_t> nodeOf =
        addSceneTree(scene, rules, &gltf, materials, product, report);
    addGltfViews(gltf, rules.axes, nodeOf, product);
    addSceneAnimations(scene, gltf, rules.axes, nodeOf, product);
    finish(session, product, report);
    return product;
}

} // namespace

Product readScene(const std::filesystem::path& file, ModelFormat format, ImportReport& report) {
    if (isGltf(format))
        return readGltf(file, format, report);
    if (format == ModelFormat::Ply)
        checkPly(file);
    const std::vector<std::uint8_t> content =
        format == ModelFormat::Stl ? tidyStl(file) : std::vector<std::uint8_t>();
    Session session(file, format, content, report);
    const aiScene& scene = import(session.importer, file, format, report);
    Product product;
    product.name = file.stem().string();
    report.enter("textures", readTo, texturesTo);
    const std::vector<std::int32_t> materials = addSceneMaterials(scene, file, product, report);
    report.enter("mesh", texturesTo, meshTo);
    addSceneTree(scene, {}, nullptr, materials, product, report);
    finish(session, product, report);
    return product;
}

} // namespace qor::import
