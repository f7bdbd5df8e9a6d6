#include "workbench/import/scene/GltfGeometryCheck.h"

#include "workbench/import/model/ImportError.h"
#include "workbench/import/scene/GltfCheck.h"

#include <algorithm>
#include <array>
#include <initializer_list>
#include <map>

namespace qor::import {

using nlohmann::json;

namespace {

// Elements that an accessor without a view may have: they cost memory that no file has paid for.
constexpr std::uint64_t mostOfNothing = 50'000'000;

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
    if (step < bytes)
        throw ImportError(what + ": its elements lie closer together than their length");
    if (offset > length || count > length || bytes > length - offset ||
        (count - 1) * step > length - offset - bytes)
        throw ImportError(what + " claims " + std::to_string(count) +
                          " elements, more than its buffer view holds");
}

// Where single elements of an accessor are replaced.
void checkSparse(const json& gltf,
                 const json& sparse,
                 std::uint64_t count,
                 std::uint64_t bytes,
                 const std::string& what) {
    const std::uint64_t changed = countOf(sparse, "count", what);
    if (changed > count)
        throw ImportError(what + " replaces more elements than it has");
    const json& indices = objectOf(sparse, "indices");
    const json& values = objectOf(sparse, "values");
    if (!indices.contains("bufferView") || !values.contains("bufferView"))
        throw ImportError(what + " replaces elements by nothing");
    checkReach(gltf, indices, changed, std::max<std::uint64_t>(1, componentBytes(indices)), what);
    checkReach(gltf, values, changed, bytes, what);
}

constexpr int floats = 5126;

bool isOf(const json& accessor, const char* type, std::initializer_list<int> components) {
    const int component = static_cast<int>(numberOf(accessor, "componentType", 0));
    return stringOf(accessor, "type") == type &&
           std::find(components.begin(), components.end(), component) != components.end();
}

// What an attribute of vertices must be; attributes of other names are not read.
struct AttributeKind {
    const char* name;
    const char* type;
    const char* words;
};

constexpr auto attributeKinds = std::to_array<AttributeKind>({
    {"POSITION", "VEC3", "three floats"},
    {"NORMAL", "VEC3", "three floats"},
    {"TANGENT", "VEC4", "four floats"},
    {"TEXCOORD_0", "VEC2", "two floats"},
    {"TEXCOORD_1", "VEC2", "two floats"},
});

void checkAttribute(const json& accessor, const std::string& name, const std::string& what) {
    for (const AttributeKind& kind : attributeKinds)
        if (name == kind.name && !isOf(accessor, kind.type, {floats}))
            throw ImportError(what + ": its \"" + name + "\" is not " + kind.words + " a vertex");
}

void checkIndices(const json& gltf, const json& primitive, const std::string& what) {
    const json& accessors = arrayOf(gltf, "accessors");
    const std::int32_t index = indexOf(primitive, "indices", accessors.size(), what);
    if (index >= 0 && !isOf(accessors[index], "SCALAR", {5121, 5123, 5125}))
        throw ImportError(what + ": its \"indices\" are no whole numbers");
}

void checkPrimitive(const json& gltf, const json& primitive, const std::string& what) {
    const json& accessors = arrayOf(gltf, "accessors");
    const json& attributes = objectOf(primitive, "attributes");
    if (attributes.empty())
        throw ImportError(what + " has a primitive without vertices");
    std::uint64_t vertices = 0;
    for (const auto& [name, value] : attributes.items()) {
        const json& accessor = accessors[indexOf(attributes, name.c_str(), accessors.size(), what)];
        checkAttribute(accessor, name, what);
        const std::uint64_t count = countOf(accessor, "count", what);
        if (vertices != 0 && count != vertices)
            throw ImportError(what + ": its attributes differ in length");
        vertices = count;
    }
    checkIndices(gltf, primitive, what);
    static_cast<void>(indexOf(primitive, "material", arrayOf(gltf, "materials").size(), what));
}

// Keys of one sampler for what a channel moves by it.
void checkKeys(const json& gltf,
               const json& sampler,
               const std::string& path,
               const std::string& what) {
    const json& accessors = arrayOf(gltf, "accessors");
    const json& times = accessors[indexOf(sampler, "input", accessors.size(), what)];
    const json& keys = accessors[indexOf(sampler, "output", accessors.size(), what)];
    if (!isOf(times, "SCALAR", {floats}))
        throw ImportError(what + ": its times are no floats");
    if (path != "translation" && path != "rotation" && path != "scale")
        return; // weights of shapes, which are not read
    if (!isOf(keys, path == "rotation" ? "VEC4" : "VEC3", {floats}))
        throw ImportError(what + ": its keys are not those of a " + path);
    const std::uint64_t perTime = stringOf(sampler, "interpolation") == "CUBICSPLINE" ? 3 : 1;
    if (countOf(keys, "count", what) != perTime * countOf(times, "count", what))
        throw ImportError(what + " has not as many keys as times");
}

} // namespace

void checkGltfAccessors(const json& gltf) {
    const json& accessors = arrayOf(gltf, "accessors");
    for (std::size_t i = 0; i < accessors.size(); ++i) {
        const std::string what = itemName("accessor", i);
        const json& accessor = accessors[i];
        const std::uint64_t bytes = componentBytes(accessor) * componentCount(accessor);
        if (bytes == 0)
            throw ImportError(what + " is of no known type");
        const std::uint64_t count = countOf(accessor, "count", what);
        if (!accessor.contains("bufferView") && count > mostOfNothing)
            throw ImportError(what + " claims " + std::to_string(count) + " elements of nothing");
        checkReach(gltf, accessor, count, bytes, what);
        if (accessor.contains("sparse"))
            checkSparse(gltf, accessor["sparse"], count, bytes, what);
    }
}

void checkGltfMeshes(const json& gltf) {
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

void checkGltfAnimations(const json& gltf) {
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
            const std::int32_t sampler = indexOf(channel, "sampler", samplers.size(), what);
            if (sampler < 0)
                throw ImportError(what + " has a channel without a sampler");
            const json& target = objectOf(channel, "target");
            static_cast<void>(indexOf(target, "node", arrayOf(gltf, "nodes").size(), what));
            checkKeys(gltf, samplers[sampler], stringOf(target, "path"), what);
        }
    }
}

} // namespace qor::import
