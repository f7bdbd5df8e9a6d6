#include "workbench/import/scene/SceneMaterials.h"

#include "workbench/import/model/ImportError.h"
#include "workbench/import/scene/ConfinedFiles.h"
#include "workbench/import/scene/GltfContainer.h"
#include "workbench/import/scene/TextureDecoder.h"

#include <assimp/material.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

namespace qor::import {

using document::Material;
using document::none;
using document::TextureSlot;

namespace {

struct Slot {
    aiTextureType type;
    TextureSlot slot;
};

constexpr auto slots = std::to_array<Slot>({
    {aiTextureType_DIFFUSE, TextureSlot::BaseColor},
    {aiTextureType_BASE_COLOR, TextureSlot::BaseColor},
    {aiTextureType_NORMALS, TextureSlot::Normal},
    {aiTextureType_NORMAL_CAMERA, TextureSlot::Normal},
    {aiTextureType_EMISSIVE, TextureSlot::Emission},
});

double linear(double coded) {
    const double x = std::clamp(coded, 0.0, 1.0);
    return x <= 0.04045 ? x / 12.92 : std::pow((x + 0.055) / 1.055, 2.4);
}

bool get(const aiMaterial& source, const char* key, unsigned type, unsigned index, double& value) {
    ai_real number = 0;
    if (source.Get(key, type, index, number) != aiReturn_SUCCESS || !std::isfinite(number))
        return false;
    value = number;
    return true;
}

void readColors(const aiMaterial& source, Material& material) {
    aiColor3D color;
    // Colours of these formats are meant as seen on a screen.
    if (source.Get(AI_MATKEY_COLOR_DIFFUSE, color) == aiReturn_SUCCESS)
        material.baseColor = {linear(color.r), linear(color.g), linear(color.b), 1};
    if (source.Get(AI_MATKEY_COLOR_EMISSIVE, color) == aiReturn_SUCCESS)
        material.emission = {linear(color.r), linear(color.g), linear(color.b)};
    double opacity = 1;
    if (get(source, AI_MATKEY_OPACITY, opacity) && opacity < 1) {
        material.baseColor[3] = std::clamp(opacity, 0.0, 1.0);
        material.alphaMode = document::AlphaMode::Blend;
    }
}

void readFinish(const aiMaterial& source, Material& material) {
    double number = 0;
    // The width of Blinn-Phong's lobe as a microfacet roughness: Walter et al. 2007, alpha = sqrt(2
    // / (n + 2)).
    if (get(source, AI_MATKEY_SHININESS, number) && number > 0)
        material.roughness = std::clamp(std::sqrt(std::sqrt(2 / (number + 2))), 0.0, 1.0);
    if (get(source, AI_MATKEY_ROUGHNESS_FACTOR, number))
        material.roughness = std::clamp(number, 0.0, 1.0);
    if (get(source, AI_MATKEY_METALLIC_FACTOR, number))
        material.metallic = std::clamp(number, 0.0, 1.0);
    if (get(source, AI_MATKEY_REFRACTI, number) && number >= 1 && number < 10)
        material.ior = number == 1 ? material.ior : number;
}

class TextureTable {
public:
    TextureTable(const std::filesystem::path& model,
                 document::Product& product,
                 ImportReport& report)
        : folder_(model), product_(product), report_(report) {}

    std::int32_t indexOf(const std::string& name) {
        const auto [known, isNew] = known_.try_emplace(name, none);
        if (isNew)
            known->second = decode(name);
        return known->second;
    }

private:
    std::int32_t decode(std::string name) {
        std::replace(name.begin(), name.end(), '\\', '/');
        try {
            const auto file = folder_.find(name);
            if (!file)
                throw ImportError("it is outside the model's folder and was not read");
            document::Texture texture =
                report_.inLibrary([&] { return decodeTexture(readBytes(*file)); });
            texture.name = name;
            product_.textures.push_back(std::move(texture));
            return static_cast<std::int32_t>(product_.textures.size() - 1);
        } catch (const ImportError& error) {
            report_.warn("the texture \"" + name + "\" was left out: " + error.what());
            return none;
        }
    }

    ModelFolder folder_;
    document::Product& product_;
    ImportReport& report_;
    std::map<std::string, std::int32_t> known_;
};

bool isShownWithColors(const aiScene& scene, unsigned material) {
    for (unsigned i = 0; i < scene.mNumMeshes; ++i)
        if (scene.mMeshes[i]->mMaterialIndex == material && scene.mMeshes[i]->HasVertexColors(0))
            return true;
    return false;
}

// Assimp gives meshes without a material one of its own: white, or a grey of 0.6 in OBJ files.
bool isMadeUp(const aiMaterial& source) {
    const std::string name = source.GetName().C_Str();
    aiColor3D color(1, 1, 1);
    source.Get(AI_MATKEY_COLOR_DIFFUSE, color);
    const auto is = [&color](ai_real grey) {
        return color == aiColor3D(grey, grey, grey);
    };
    return (name.empty() || name == AI_DEFAULT_MATERIAL_NAME) && (is(1) || is(ai_real(0.6))) &&
           source.GetTextureCount(aiTextureType_DIFFUSE) == 0;
}

void readTextures(const aiMaterial& source, TextureTable& textures, Material& material) {
    for (const Slot& slot : slots) {
        aiString path;
        if (source.GetTexture(slot.type, 0, &path) != aiReturn_SUCCESS)
            continue;
        const std::int32_t texture = textures.indexOf(path.C_Str());
        if (texture == none)
            continue;
        document::TextureUse use;
        use.texture = texture;
        material.texture(slot.slot) = use;
    }
}

Material materialOf(const aiMaterial& source, TextureTable& textures) {
    Material material;
    material.name = source.GetName().C_Str();
    readColors(source, material);
    readFinish(source, material);
    readTextures(source, textures, material);
    return material;
}

// What lies under colours of vertices, which multiply it.
Material whiteMaterial() {
    Material material;
    material.name = "Vertex colors";
    return material;
}

} // namespace

std::vector<std::int32_t> addSceneMaterials(const aiScene& scene,
                                            const std::filesystem::path& model,
                                            document::Product& product,
                                            ImportReport& report) {
    TextureTable textures(model, product, report);
    std::vector<std::int32_t> places(scene.mNumMaterials, none);
    for (unsigned i = 0; i < scene.mNumMaterials; ++i) {
        const aiMaterial& source = *scene.mMaterials[i];
        const bool madeUp = isMadeUp(source);
        if (madeUp && !isShownWithColors(scene, i))
            continue;
        places[i] = static_cast<std::int32_t>(product.materials.size());
        product.materials.push_back(madeUp ? whiteMaterial() : materialOf(source, textures));
    }
    return places;
}

} // namespace qor::import
