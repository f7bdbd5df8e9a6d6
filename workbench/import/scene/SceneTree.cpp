#include "workbench/import/scene/SceneTree.h"

#include "workbench/import/model/ImportError.h"
#include "workbench/import/scene/GltfCheck.h"

#include <map>

namespace qor::import {

using document::none;
using document::Transform;

namespace {

Transform transformOf(const aiMatrix4x4& m) {
    return {m.a1, m.a2, m.a3, m.a4, m.b1, m.b2, m.b3, m.b4, m.c1, m.c2, m.c3, m.c4};
}

std::string nameIn(const GltfFile& gltf, const char* member, std::int32_t index) {
    const nlohmann::json& items = arrayOf(gltf.root(), member);
    if (index < 0 || static_cast<std::size_t>(index) >= items.size())
        return {};
    return stringOf(items[index], "name");
}

class TreeBuilder {
public:
    TreeBuilder(const aiScene& scene,
                const MeshRules& rules,
                const GltfFile* gltf,
                std::span<const std::int32_t> materials,
                document::Product& product,
                ImportReport& report)
        : scene_(scene)
        , rules_(rules)
        , gltf_(gltf)
        , materials_(materials)
        , product_(product)
        , report_(report) {
        if (gltf_ != nullptr)
            nodeOf_.assign(arrayOf(gltf_->root(), "nodes").size(), none);
    }

    std::vector<std::int32_t> build() {
        if (isMadeUpRoot())
            addChildren(*scene_.mRootNode, none, 0);
        else
            addNode(*scene_.mRootNode, none, 1);
        return std::move(nodeOf_);
    }

private:
    // Assimp puts several roots of a glTF scene below one of its own, and the one object of another
    // file as well.
    [[nodiscard]] bool isMadeUpRoot() const {
        const aiNode& root = *scene_.mRootNode;
        if (gltf_ != nullptr)
            return GltfFile::indexFromName(root.mName.C_Str()) == none;
        return root.mNumMeshes == 0 && root.mNumChildren == 1 && root.mTransformation.IsIdentity();
    }

    void addChildren(const aiNode& source, std::int32_t parent, int depth) {
        if (depth >= document::maximumTreeDepth)
            throw ImportError("its tree is deeper than " +
                              std::to_string(document::maximumTreeDepth) + " levels");
        for (unsigned i = 0; i < source.mNumChildren; ++i)
            addNode(*source.mChildren[i], parent, depth + 1);
    }

    void addNode(const aiNode& source, std::int32_t parent, int depth) {
        const auto index = static_cast<std::int32_t>(product_.nodes.size());
        document::Node& node = product_.nodes.emplace_back();
        node.parent = parent;
        node.transform = rules_.axes.transform(transformOf(source.mTransformation));
        node.part = partOf(source);
        node.name = nameOf(source, node.part);
        const std::int32_t number = GltfFile::indexFromName(source.mName.C_Str());
        if (gltf_ != nullptr && number >= 0 && static_cast<std::size_t>(number) < nodeOf_.size())
            nodeOf_[number] = index;
        addChildren(source, index, depth);
    }

    [[nodiscard]] std::string nameOf(const aiNode& source, std::int32_t part) const {
        std::string name = ownNameOf(source);
        if (name.empty() && part != none)
            name = product_.parts[part].name;
        if (name.empty() && gltf_ == nullptr)
            name = product_.name;
        return name.empty() ? "Node " + std::to_string(product_.nodes.size()) : name;
    }

    // The name that the file gives; empty for those that Assimp makes up.
    [[nodiscard]] std::string ownNameOf(const aiNode& source) const {
        const std::string name = source.mName.C_Str();
        if (gltf_ != nullptr)
            return nameIn(*gltf_, "nodes", GltfFile::indexFromName(name));
        const bool isMadeUp = &source == scene_.mRootNode || name.starts_with('<') ||
                              name.starts_with("defaultobject");
        return isMadeUp ? std::string() : name;
    }

    std::int32_t partOf(const aiNode& source) {
        if (source.mNumMeshes == 0)
            return none;
        const std::vector<unsigned> key(source.mMeshes, source.mMeshes + source.mNumMeshes);
        const auto [known, isNew] =
            partOfMeshes_.try_emplace(key, static_cast<std::int32_t>(product_.parts.size()));
        if (isNew)
            addPart(key, source);
        return known->second;
    }

    void addPart(const std::vector<unsigned>& key, const aiNode& source) {
        std::vector<const aiMesh*> meshes;
        for (const unsigned index : key)
            if (index < scene_.mNumMeshes)
                meshes.push_back(scene_.mMeshes[index]);
        document::Part part;
        part.name = meshes.empty() ? std::string() : meshes.front()->mName.C_Str();
        if (gltf_ != nullptr)
            part.name = nameIn(*gltf_, "meshes", GltfFile::indexFromName(part.name));
        if (gltf_ == nullptr)
            part.name = ownNameOf(source);
        if (part.name.empty() && gltf_ == nullptr)
            part.name = product_.name;
        if (part.name.empty())
            part.name = "Part " + std::to_string(product_.parts.size() + 1);
        document::Mesh mesh = joinMeshes(meshes, rules_, materials_, report_);
        if (!mesh.indices.empty()) {
            mesh.name = part.name;
            part.mesh = static_cast<std::int32_t>(product_.meshes.size());
            product_.meshes.push_back(std::move(mesh));
        }
        product_.parts.push_back(std::move(part));
        meshesDone_ += key.size();
        report_.advance(static_cast<double>(meshesDone_) / scene_.mNumMeshes);
    }

    const aiScene& scene_;
    const MeshRules& rules_;
    const GltfFile* gltf_;
    std::span<const std::int32_t> materials_;
    document::Product& product_;
    ImportReport& report_;
    std::vector<std::int32_t> nodeOf_;
    std::map<std::vector<unsigned>, std::int32_t> partOfMeshes_;
    std::size_t meshesDone_ = 0;
};

} // namespace

std::vector<std::int32_t> addSceneTree(const aiScene& scene,
                                       const MeshRules& rules,
                                       const GltfFile* gltf,
                                       std::span<const std::int32_t> materials,
                                       document::Product& product,
                                       ImportReport& report) {
    return TreeBuilder(scene, rules, gltf, materials, product, report).build();
}

} // namespace qor::import
