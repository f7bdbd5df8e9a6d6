#include "workbench/import/scene/GltfFile.h"

#include "workbench/import/model/ImportError.h"
#include "workbench/import/scene/GltfCheck.h"
#include "workbench/import/scene/GltfContainer.h"

#include <charconv>

namespace qor::import {

using nlohmann::json;

namespace {

constexpr std::string_view nodePrefix = "qn";
constexpr std::string_view meshPrefix = "qm";

void renumber(json& gltf, const char* member, std::string_view prefix) {
    if (!gltf.contains(member))
        return;
    std::size_t index = 0;
    for (json& item : gltf[member])
        item["name"] = std::string(prefix) + std::to_string(index++);
}

// What this room reads from the JSON itself, or does not support, is kept from Assimp.
void stripForAssimp(json& gltf) {
    for (const char* member : {"images", "textures", "samplers", "cameras", "skins", "extensions",
                               "extensionsUsed", "extensionsRequired", "extras"})
        gltf.erase(member);
    if (gltf.contains("materials"))
        for (json& material : gltf["materials"])
            material = json::object();
    if (gltf.contains("nodes"))
        for (json& node : gltf["nodes"])
            for (const char* member : {"camera", "skin", "weights", "extensions", "extras"})
                node.erase(member);
    if (!gltf.contains("meshes"))
        return;
    for (json& mesh : gltf["meshes"]) {
        mesh.erase("weights");
        if (!mesh.contains("primitives"))
            mesh["primitives"] = json::array();
        for (json& primitive : mesh["primitives"])
            primitive.erase("targets");
    }
}

std::vector<bool> childrenOf(const json& gltf) {
    const json& nodes = arrayOf(gltf, "nodes");
    std::vector<bool> isChild(nodes.size(), false);
    for (const json& node : nodes)
        for (const json& child : arrayOf(node, "children"))
            isChild[child.get<std::size_t>()] = true;
    return isChild;
}

// The scene that is shown, with every root once: files name roots twice, name nodes that hang on
// others, or have no scene at all.
void keepOneScene(json& gltf) {
    std::vector<bool> isTaken = childrenOf(gltf);
    json roots = json::array();
    const auto take = [&](std::size_t node) {
        if (!isTaken[node])
            roots.push_back(node);
        isTaken[node] = true;
    };
    const json& scenes = arrayOf(gltf, "scenes");
    if (scenes.empty())
        for (std::size_t node = 0; node < isTaken.size(); ++node)
            take(node);
    else
        for (const json& node :
             arrayOf(scenes[static_cast<std::size_t>(numberOf(gltf, "scene", 0))], "nodes"))
            take(node.get<std::size_t>());
    gltf["scenes"] = {{{"nodes", std::move(roots)}}};
    gltf["scene"] = 0;
}

} // namespace

GltfFile::GltfFile(const std::filesystem::path& file, bool binary)
    : binary_(binary), folder_(file) {
    const std::vector<std::uint8_t> bytes = readBytes(file);
    if (binary_) {
        GlbParts parts = splitGlb(bytes);
        json_ = parseGltfJson(parts.json);
        chunk_ = std::move(parts.chunk);
    } else {
        json_ = parseGltfJson(std::string(bytes.begin(), bytes.end()));
    }
    checkGltf(json_, [this](std::size_t buffer) { return availableBytes(buffer); });
}

std::uint64_t GltfFile::availableBytes(std::size_t buffer) const {
    const std::string uri = stringOf(json_["buffers"][buffer], "uri");
    if (uri.empty())
        return buffer == 0 ? chunk_.size() : 0;
    if (const auto length = dataUriLength(uri))
        return *length;
    const std::string name = percentDecoded(uri);
    const auto found = folder_.find(name);
    if (!found)
        throw ImportError("its buffer \"" + name + "\" is outside its folder");
    std::error_code error;
    const std::uintmax_t size = std::filesystem::file_size(*found, error);
    if (error)
        throw ImportError("its buffer \"" + name + "\" is missing");
    return size;
}

std::vector<std::uint8_t> GltfFile::bufferBytes(std::size_t buffer) const {
    const std::string uri = stringOf(json_["buffers"][buffer], "uri");
    if (uri.empty())
        return chunk_;
    if (auto bytes = dataUriBytes(uri))
        return *std::move(bytes);
    return readBytes(*folder_.find(percentDecoded(uri)));
}

namespace {

std::vector<std::uint8_t> partOf(const std::vector<std::uint8_t>& buffer, const json& view) {
    const auto offset = static_cast<std::ptrdiff_t>(numberOf(view, "byteOffset", 0));
    const auto length = static_cast<std::ptrdiff_t>(numberOf(view, "byteLength", 0));
    if (offset + length > static_cast<std::ptrdiff_t>(buffer.size()))
        throw ImportError("it is cut off");
    return {buffer.begin() + offset, buffer.begin() + offset + length};
}

} // namespace

std::vector<std::uint8_t> GltfFile::imageBytes(std::size_t image) const {
    const json& entry = json_["images"][image];
    if (entry.contains("bufferView")) {
        const json& view = json_["bufferViews"][entry["bufferView"].get<std::size_t>()];
        const auto buffer = view["buffer"].get<std::size_t>();
        if (stringOf(json_["buffers"][buffer], "uri").empty())
            return partOf(chunk_, view);
        return partOf(bufferBytes(buffer), view);
    }
    const std::string uri = stringOf(entry, "uri");
    if (auto bytes = dataUriBytes(uri))
        return *std::move(bytes);
    const auto found = folder_.find(percentDecoded(uri));
    if (!found)
        throw ImportError("it is outside the model's folder and was not read");
    return readBytes(*found);
}

std::vector<std::uint8_t> GltfFile::contentForAssimp() const {
    json gltf = json_;
    stripForAssimp(gltf);
    keepOneScene(gltf);
    renumber(gltf, "nodes", nodePrefix);
    renumber(gltf, "meshes", meshPrefix);
    if (gltf.contains("buffers"))
        for (json& buffer : gltf["buffers"])
            if (const std::string uri = stringOf(buffer, "uri");
                !uri.starts_with("data:") && !uri.empty())
                buffer["uri"] = percentDecoded(uri);
    std::string text = gltf.dump(-1, ' ', false, json::error_handler_t::replace);
    if (binary_)
        return joinGlb({std::move(text), chunk_});
    return {text.begin(), text.end()};
}

std::int32_t GltfFile::indexFromName(const std::string& name) {
    if (!name.starts_with(nodePrefix) && !name.starts_with(meshPrefix))
        return document::none;
    std::int32_t number = document::none;
    std::from_chars(name.data() + nodePrefix.size(), name.data() + name.size(), number);
    return number;
}

} // namespace qor::import
