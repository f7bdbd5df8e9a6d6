#include "workbench/import/scene/GltfCheck.h"

#include "workbench/document/product/Product.h"
#include "workbench/import/model/ImportError.h"

#include <algorithm>
#include <array>
#include <map>
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

std::string itemName(const char* what, std::size_t index) {
    return std::string(what) + " " + std::to_string(index);
}

std::uint64_t countOf(const json& object, const char* member, const std::string& what) {
    const auto found = object.find(member);
    if (found == object.end())
        return 0;
    if (!found->is_number_unsigned())
        throw ImportError(what + ": its \"" + member + "\" is no count");
    return found->get<std::uint64_t>();
}

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

std::uint64_t componentBytes(const json& accessor) {
    static const std::map<int, std::uint64_t> sizes{{5120, 1}, {5121, 1}, {5122, 2},
                                                    {5123, 2}, {5125, 4}, {5126, 4}};
    const auto found = sizes.find(static_cast<int>(numberOf(accessor, "componentType", 0)));
    return found == sizes.end() ? 0 : found->second;
}

std::uint64_t componentCount(const json& accessor) {
    static const std::map<std::string, std::uint64_t> counts{
        {"SCALAR", 1}, {"VEC2", 2}, {"VEC3", 3}, {"VEC4", 4},
        {"MAT2", 4},   {"MAT3", 9}, {"MAT4", 16}};
    const auto found = counts.find(stringOf(accessor, "type"));
    return found == counts.end() ? 0 : found->second;
}

// Whether \p count elements of \p bytes each lie within the view that \p reader names.
void checkReach(const json& gltf,
                const json& reader,
                std::uint64_t count,
                std::uint64_t bytes,
                const std::string& what) {
    const json& views = arrayOf(gltf, "bufferViews");
    const std::int32_t view = indexOf(reader, "bufferView", views.size(), what);
    if (view < 0 || count == 0)
        return;
    const std::uint64_t stride = countOf(views[view], "byteStride", what);
    const std::uint64_t step = stride == 0 ? bytes : stride;
    const std::uint64_t offset = countOf(reader, "byteOffset", what);
    const std::uint64_t length = countOf(views[view], "byteLength", what);
    if (offset > length || count > length || bytes > length - offset ||
        (count - 1) * step > length - offset - bytes)
        throw ImportError(what + " claims " + std::to_string(count) +
                          " elements, more than its buffer view holds");
}

void checkAccessors(const json& gltf) {
    const json& accessors = arrayOf(gltf, "accessors");
    for (std::size_t i = 0; i < accessors.size(); ++i) {
        const std::string what = itemName("accessor", i);
        const json& accessor = accessors[i];
        const std::uint64_t bytes = componentBytes(accessor) * componentCount(accessor);
        if (bytes == 0)
            throw ImportError(what + " is of no known type");
        const std::uint64_t count = countOf(accessor, "count", what);
        if (!accessor.contains("bufferView") && count > 50'000'000)
            throw ImportError(what + " claims " + std::to_string(count) + " elements of nothing");
        checkReach(gltf, accessor, count, bytes, what);
        const json& sparse = objectOf(accessor, "sparse");
        if (sparse.empty())
            continue;
        const std::uint64_t changed = countOf(sparse, "count", what);
        if (changed > count)
            throw ImportError(what + " replaces more elements than it has");
        const json& indices = objectOf(sparse, "indices");
        checkReach(gltf, indices, changed, std::max<std::uint64_t>(1, componentBytes(indices)),
                   what);
        checkReach(gltf, objectOf(sparse, "values"), changed, bytes, what);
    }
}

void checkPrimitive(const json& gltf, const json& primitive, const std::string& what) {
    const std::size_t accessors = arrayOf(gltf, "accessors").size();
    const json& attributes = objectOf(primitive, "attributes");
    std::uint64_t vertices = 0;
    for (const auto& [name, value] : attributes.items()) {
        const std::int32_t accessor = indexOf(attributes, name.c_str(), accessors, what);
        const std::uint64_t count = countOf(gltf["accessors"][accessor], "count", what);
        if (vertices != 0 && count != vertices)
            throw ImportError(what + ": its attributes differ in length");
        vertices = count;
    }
    static_cast<void>(indexOf(primitive, "indices", accessors, what));
    static_cast<void>(indexOf(primitive, "material", arrayOf(gltf, "materials").size(), what));
}

void checkMeshes(const json& gltf) {
    const json& meshes = arrayOf(gltf, "meshes");
    for (std::size_t i = 0; i < meshes.size(); ++i)
        for (const json& primitive : arrayOf(meshes[i], "primitives"))
            checkPrimitive(gltf, primitive, itemName("mesh", i));
    const json& textures = arrayOf(gltf, "textures");
    for (std::size_t i = 0; i < textures.size(); ++i) {
        static_cast<void>(
            indexOf(textures[i], "source", arrayOf(gltf, "images").size(), itemName("texture", i)));
        static_cast<void>(indexOf(textures[i], "sampler", arrayOf(gltf, "samplers").size(),
                                  itemName("texture", i)));
    }
    const json& images = arrayOf(gltf, "images");
    for (std::size_t i = 0; i < images.size(); ++i)
        static_cast<void>(indexOf(images[i], "bufferView", arrayOf(gltf, "bufferViews").size(),
                                  itemName("image", i)));
}

void checkAnimations(const json& gltf) {
    const std::size_t accessors = arrayOf(gltf, "accessors").size();
    const json& animations = arrayOf(gltf, "animations");
    for (std::size_t i = 0; i < animations.size(); ++i) {
        const std::string what = itemName("animation", i);
        const json& samplers = arrayOf(animations[i], "samplers");
        for (const json& sampler : samplers)
            if (indexOf(sampler, "input", accessors, what) < 0 ||
                indexOf(sampler, "output", accessors, what) < 0)
                throw ImportError(what + " has a sampler without keys");
        for (const json& channel : arrayOf(animations[i], "channels")) {
            if (indexOf(channel, "sampler", samplers.size(), what) < 0)
                throw ImportError(what + " has a channel without a sampler");
            static_cast<void>(
                indexOf(objectOf(channel, "target"), "node", arrayOf(gltf, "nodes").size(), what));
        }
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

// One parent at most for each node, no circle, and not too deep. Parents are followed upwards,
// which needs no stack.
void checkTree(const json& gltf) {
    const json& nodes = arrayOf(gltf, "nodes");
    std::vector<std::int32_t> parent(nodes.size(), -1);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const std::string what = itemName("node", i);
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
    checkAccessors(gltf);
    checkMeshes(gltf);
    checkAnimations(gltf);
    checkTree(gltf);
}

} // namespace qor::import
