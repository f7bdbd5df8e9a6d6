#include "workbench/import/scene/GltfMaterials.h"

#include "workbench/import/model/ImportError.h"
#include "workbench/import/scene/GltfCheck.h"
#include "workbench/import/scene/TextureDecoder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>

namespace qor::import {

using document::Material;
using document::none;
using document::TextureSlot;
using document::TextureUse;
using document::TextureWrap;
using nlohmann::json;

namespace {

constexpr double metre = 1000;

// Where a number of a material stands: in a block of the material, or in the material itself if
// there is none.
struct Factor {
    const char* block;
    const char* member;
    double Material::*value;
    double unit;
};

constexpr const char* pbr = "pbrMetallicRoughness";
constexpr const char* coat = "KHR_materials_clearcoat";
constexpr const char* volume = "KHR_materials_volume";
constexpr const char* transmission = "KHR_materials_transmission";

constexpr auto factors = std::to_array<Factor>({
    {pbr, "metallicFactor", &Material::metallic, 1},
    {pbr, "roughnessFactor", &Material::roughness, 1},
    {"", "alphaCutoff", &Material::alphaCutoff, 1},
    {coat, "clearcoatFactor", &Material::clearcoat, 1},
    {coat, "clearcoatRoughnessFactor", &Material::clearcoatRoughness, 1},
    {transmission, "transmissionFactor", &Material::transmission, 1},
    {"KHR_materials_ior", "ior", &Material::ior, 1},
    {volume, "thicknessFactor", &Material::thicknessMm, metre},
    {volume, "attenuationDistance", &Material::attenuationDistanceMm, metre},
});

struct Slot {
    const char* block;
    const char* member;
    TextureSlot slot;
};

constexpr auto slots = std::to_array<Slot>({
    {pbr, "baseColorTexture", TextureSlot::BaseColor},
    {pbr, "metallicRoughnessTexture", TextureSlot::MetallicRoughness},
    {"", "normalTexture", TextureSlot::Normal},
    {"", "occlusionTexture", TextureSlot::Occlusion},
    {"", "emissiveTexture", TextureSlot::Emission},
    {transmission, "transmissionTexture", TextureSlot::Transmission},
    {coat, "clearcoatTexture", TextureSlot::Clearcoat},
    {coat, "clearcoatRoughnessTexture", TextureSlot::ClearcoatRoughness},
    {coat, "clearcoatNormalTexture", TextureSlot::ClearcoatNormal},
});

const json& blockOf(const json& material, const char* block) {
    if (*block == '\0')
        return material;
    const json& own = objectOf(material, block);
    return own.empty() ? objectOf(objectOf(material, "extensions"), block) : own;
}

template <std::size_t count>
void readNumbers(const json& object, const char* member, std::array<double, count>& out) {
    const auto found = object.find(member);
    if (found == object.end() || !found->is_array() || found->size() < count)
        return;
    for (std::size_t i = 0; i < count; ++i)
        if ((*found)[i].is_number())
            out[i] = (*found)[i].template get<double>();
}

TextureWrap wrapOf(const json& sampler, const char* member) {
    switch (static_cast<int>(numberOf(sampler, member, 10497))) {
    case 33071:
        return TextureWrap::ClampToEdge;
    case 33648:
        return TextureWrap::MirroredRepeat;
    default:
        return TextureWrap::Repeat;
    }
}

class MaterialReader {
public:
    MaterialReader(const GltfFile& gltf, document::Product& product, ImportReport& report)
        : gltf_(gltf), product_(product), report_(report) {}

    void read(const json& source) {
        Material material;
        material.name = stringOf(source, "name");
        // What a file leaves unsaid is as glTF defines it, which is not always this program's
        // default.
        material.metallic = 1;
        material.roughness = 1;
        for (const Factor& factor : factors)
            material.*factor.value = numberOf(blockOf(source, factor.block), factor.member,
                                              material.*factor.value / factor.unit) *
                                     factor.unit;
        readSpecular(source, material);
        readColors(source, material);
        readModes(source, material);
        for (const Slot& slot : slots)
            readTexture(objectOf(blockOf(source, slot.block), slot.member), slot.slot, material);
        product_.materials.push_back(std::move(material));
    }

private:
    /// A weaker reflection is that of a smaller index of refraction; where light is refracted, too,
    /// the index stays what it is.
    static void readSpecular(const json& source, Material& material) {
        const double factor = std::clamp(
            numberOf(blockOf(source, "KHR_materials_specular"), "specularFactor", 1), 0.0, 1.0);
        if (factor == 1 || material.transmission > 0 || !(material.ior >= 1))
            return;
        const double root = std::sqrt(factor) * (material.ior - 1) / (material.ior + 1);
        material.ior = (1 + root) / (1 - root);
    }

    static void readColors(const json& source, Material& material) {
        readNumbers(objectOf(source, pbr), "baseColorFactor", material.baseColor);
        readNumbers(blockOf(source, volume), "attenuationColor", material.attenuationColor);
        readNumbers(source, "emissiveFactor", material.emission);
        const double strength =
            numberOf(blockOf(source, "KHR_materials_emissive_strength"), "emissiveStrength", 1);
        for (double& channel : material.emission)
            channel *= strength;
        material.normalScale = numberOf(objectOf(source, "normalTexture"), "scale", 1);
        material.occlusionStrength = numberOf(objectOf(source, "occlusionTexture"), "strength", 1);
        material.clearcoatNormalScale =
            numberOf(objectOf(blockOf(source, coat), "clearcoatNormalTexture"), "scale", 1);
    }

    static void readModes(const json& source, Material& material) {
        const std::string mode = stringOf(source, "alphaMode");
        if (mode == "MASK")
            material.alphaMode = document::AlphaMode::Mask;
        if (mode == "BLEND")
            material.alphaMode = document::AlphaMode::Blend;
        const auto sided = source.find("doubleSided");
        material.doubleSided = sided != source.end() && sided->is_boolean() && sided->get<bool>();
        const json& extensions = objectOf(source, "extensions");
        material.unlit = extensions.contains("KHR_materials_unlit");
    }

    void readTexture(const json& source, TextureSlot slot, Material& material) {
        if (source.empty())
            return;
        const json& textures = arrayOf(gltf_.root(), "textures");
        const std::int32_t index = indexOf(source, "index", textures.size(), "material texture");
        if (index < 0)
            return;
        TextureUse use;
        use.texture = textureOfImage(textures[index]);
        if (use.texture == none)
            return;
        const json& transform = objectOf(objectOf(source, "extensions"), "KHR_texture_transform");
        use.uvSet = static_cast<std::int32_t>(
            numberOf(transform, "texCoord", numberOf(source, "texCoord", 0)));
        if (use.uvSet < 0 || use.uvSet > 1) {
            report_.warn("a texture on a third coordinate set was left out");
            return;
        }
        readNumbers(transform, "offset", use.offset);
        readNumbers(transform, "scale", use.scale);
        use.rotation = numberOf(transform, "rotation", 0);
        const json& samplers = arrayOf(gltf_.root(), "samplers");
        const std::int32_t sampler =
            indexOf(textures[index], "sampler", samplers.size(), "material texture");
        if (sampler >= 0) {
            use.wrapU = wrapOf(samplers[sampler], "wrapS");
            use.wrapV = wrapOf(samplers[sampler], "wrapT");
        }
        material.texture(slot) = use;
    }

    std::int32_t textureOfImage(const json& texture) {
        const json& images = arrayOf(gltf_.root(), "images");
        const std::int32_t image = indexOf(texture, "source", images.size(), "texture");
        if (image < 0)
            return none;
        const auto [known, isNew] = textureOf_.try_emplace(image, none);
        if (isNew)
            known->second = decode(static_cast<std::size_t>(image), images[image]);
        return known->second;
    }

    std::int32_t decode(std::size_t image, const json& entry) {
        std::string name = stringOf(entry, "name");
        const std::string uri = stringOf(entry, "uri");
        if (name.empty())
            name = uri.empty() || uri.starts_with("data:") ? "image " + std::to_string(image) : uri;
        try {
            document::Texture texture =
                report_.inLibrary([&] { return decodeTexture(gltf_.imageBytes(image)); });
            texture.name = name;
            product_.textures.push_back(std::move(texture));
            return static_cast<std::int32_t>(product_.textures.size() - 1);
        } catch (const ImportError& error) {
            report_.warn("the texture \"" + name + "\" was left out: " + error.what());
            return none;
        }
    }

    const GltfFile& gltf_;
    document::Product& product_;
    ImportReport& report_;
    std::map<std::int32_t, std::int32_t> textureOf_;
};

} // namespace

void addGltfMaterials(const GltfFile& gltf, document::Product& product, ImportReport& report) {
    MaterialReader reader(gltf, product, report);
    const json& materials = arrayOf(gltf.root(), "materials");
    for (std::size_t i = 0; i < materials.size(); ++i) {
        reader.read(materials[i]);
        report.advance(static_cast<double>(i + 1) / static_cast<double>(materials.size()));
    }
}

} // namespace qor::import
