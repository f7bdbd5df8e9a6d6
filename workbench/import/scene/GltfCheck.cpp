#include "workbench/import/scene/GltfCheck.h"

#include "workbench/document/product/Product.h"
#include "workbench/import/model/ImportError.h"
#include "workbench/import/scene/GltfGeometryCheck.h"

#include <algorithm>
#include <array>
#include <vector>

namespace qor::import {

using nlohmann::json;

namespace {

constexpr std::array supportedExtensions{"KHR_lights_punctual",
                                         "KHR_materials_clearcoat",
                                         "KHR_materials_transmission",
                                         "KHR_materials_ior",
                                         "KHR_materials_volume",
                                         "KHR_materials_unlit",
                                         "KHR_materials_emissive_strength",
                                         "KHR_texture_transform",
                                         "KHR_materials_specular",
                                         "KHR_materials_sheen"};

void checkVersion(const json& gltf) {
    const std::string version = stringOf(objectOf(gltf, "asset"), "version");
    if (!version.starts_with("2."))
        throw ImportError(version.empty() ? "it does not say which version of glTF it is"
                                          : "it is glTF of version " + version +
                                                "; only version 2 is supported");
    for (const json& extension : arrayOf(gltf, "extensionsRequired"))
        if (std::find(supportedExtensions.begin(), supportedExtensions.end(), extension) ==
            supportedExtensions.end())
            throw ImportError("it needs the extension " + extension.dump() +
                              ", which is not supported");
}

void checkBuffers(const json& gltf, const AvailableBytes& available) {
    const json& buffers = arrayOf(gltf, "buffers");
    for (std::size_t i = 0; i < buffers.size(); ++i) {
        const std::uint64_t claimed = countOf(buffers[i], "byteLength", itemName("buffer", i));
        const std::uint64_t has = available(i);
        // A binary chunk may be padded, so only claims beyond what is there are lies.
        if (claimed > has)
            throw ImportError(itemName("buffer", i) + " claims " + std::to_string(claimed) +
                              " bytes and has " + std::to_string(has));
    }
    const json& views = arrayOf(gltf, "bufferViews");
    for (std::size_t i = 0; i < views.size(); ++i) {
        const std::string what = itemName("buffer view", i);
        const std::int32_t buffer = indexOf(views[i], "buffer", buffers.size(), what);
        if (buffer < 0)
            throw ImportError(what + " names no buffer");
        const std::uint64_t size = countOf(buffers[buffer], "byteLength", what);
        const std::uint64_t offset = countOf(views[i], "byteOffset", what);
        if (offset > size || countOf(views[i], "byteLength", what) > size - offset)
            throw ImportError(what + " reaches beyond its buffer");
        if (countOf(views[i], "byteStride", what) > 252)
            throw ImportError(what + " has a stride of more than 252 bytes");
    }
}

std::vector<std::int32_t> nodeList(const json& list, std::size_t nodes, const std::string& what) {
    std::vector<std::int32_t> indices;
    for (const json& entry : list) {
        if (!entry.is_number_unsigned() || entry.get<std::uint64_t>() >= nodes)
            throw ImportError(what + " names a node that is not there");
        indices.push_back(static_cast<std::int32_t>(entry.get<std::uint64_t>()));
    }
    return indices;
}

// A member that places a node: as many numbers as it must have, or nothing.
void checkPlacement(const json& node,
                    const char* member,
                    std::size_t count,
                    const std::string& what) {
    const auto found = node.find(member);
    if (found == node.end())
        return;
    const bool sound = found->is_array() && found->size() == count &&
                       std::all_of(found->begin(), found->end(),
                                   [](const json& number) { return number.is_number(); });
    if (!sound)
        throw ImportError(what + ": its \"" + member + "\" is not " + std::to_string(count) +
                          " numbers");
}

void checkPlacement(const json& node, const std::string& what) {
    checkPlacement(node, "matrix", 16, what);
    checkPlacement(node, "translation", 3, what);
    checkPlacement(node, "rotation", 4, what);
    checkPlacement(node, "scale", 3, what);
}

// One parent at most for each node, no circle, and not too deep. Parents are followed upwards,
// which needs no stack.
void checkTree(const json& gltf) {
    const json& nodes = arrayOf(gltf, "nodes");
    std::vector<std::int32_t> parent(nodes.size(), -1);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const std::string what = itemName("node", i);
        checkPlacement(nodes[i], what);
        static_cast<void>(indexOf(nodes[i], "mesh", arrayOf(gltf, "meshes").size(), what));
        static_cast<void>(indexOf(nodes[i], "camera", arrayOf(gltf, "cameras").size(), what));
        for (const std::int32_t child :
             nodeList(arrayOf(nodes[i], "children"), nodes.size(), what)) {
            if (parent[child] >= 0)
                throw ImportError(itemName("node", static_cast<std::size_t>(child)) +
                                  " has two parents");
            parent[child] = static_cast<std::int32_t>(i);
        }
    }
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        int depth = 1;
        for (std::int32_t at = parent[i]; at >= 0; at = parent[at])
            if (++depth > document::maximumTreeDepth - 2)
                throw ImportError(itemName("node", i) +
                                  " lies deeper than a thousand levels, or contains itself");
    }
    const json& scenes = arrayOf(gltf, "scenes");
    static_cast<void>(indexOf(gltf, "scene", scenes.size(), "the file"));
    for (std::size_t i = 0; i < scenes.size(); ++i)
        static_cast<void>(
            nodeList(arrayOf(scenes[i], "nodes"), nodes.size(), itemName("scene", i)));
}

} // namespace

void checkGltf(const json& gltf, const AvailableBytes& available) {
    checkVersion(gltf);
    checkBuffers(gltf, available);
    checkGltfAccessors(gltf);
    checkGltfMeshes(gltf);
    checkGltfAnimations(gltf);
    checkTree(gltf);
}

} // namespace qor::import
