#include "workbench/document/ProductReps.h"

#include "workbench/document/GraphicMaterials.h"
#include "workbench/document/ProductJoin.h"
#include "workbench/document/product/ProductQuery.h"

#include <algorithm>

namespace qor::document {

namespace {

/// Before a change: what a snapshot holds too stays as it is.
template <typename T>
void ownAlone(std::shared_ptr<T>& shared) {
    if (shared.use_count() > 1)
        shared = std::make_shared<T>(*shared);
    else // asking for the count orders nothing; counting does: this is after a worker's last look
        const std::shared_ptr<T> counted(shared);
}

} // namespace

ProductReps::ProductReps() : ProductReps(Product{}) {}

ProductReps::~ProductReps() = default;

ProductReps::ProductReps(Product product)
    : facts_(std::make_shared<Product>(std::move(product)))
    , meshes_(std::make_shared<std::vector<MeshPieces>>())
    , plain_(plainMaterial())
    , root_(QorMake<Qor3DBagRep>()) {
    for (Texture& texture : facts_->textures)
        images_.push_back(imageOf(texture));
    for (const Material& material : facts_->materials)
        materials_.push_back(graphicMaterial(material, images_));
    meshes_->reserve(facts_->meshes.size());
    for (Mesh& mesh : facts_->meshes) {
        meshes_->push_back(piecesOf(std::move(mesh)));
        mesh = {}; // now, so that no two copies of all meshes exist at a time
    }
    buildNodes();
}

void ProductReps::buildNodes() {
    nodes_.reserve(facts_->nodes.size());
    for (std::size_t i = 0; i < facts_->nodes.size(); ++i) {
        const Node& node = facts_->nodes[i];
        auto bag = QorMake<Qor3DBagRep>();
        bag->SetMatrix(matrixOf(node.transform));
        bag->SetShown(node.visible);
        nodes_.push_back(
            QorMake<ProductNode>(static_cast<int>(i), node.name, node.part, std::move(bag)));
        nodeByRep_[nodes_.back()->bag()] = nodes_.back().Get();
        addMeshReps(static_cast<std::int32_t>(i));
    }
    joinParents();
}

void ProductReps::addMeshReps(std::int32_t node) {
    ProductNode& at = *nodes_[static_cast<std::size_t>(node)];
    const MeshPieces* mesh = meshAt(at);
    if (mesh == nullptr)
        return;
    for (const MeshPiece& piece : mesh->pieces) {
        auto rep = QorMake<Qor3DMeshRep>(piece.mesh.Get(), shownMaterial(node, piece.material));
        nodeByRep_[rep.Get()] = &at;
        at.bag()->AddChild(rep.Get());
    }
}

void ProductReps::joinParents() {
    for (std::size_t i = 0; i < nodes_.size(); ++i) {
        ProductNode& node = *nodes_[i];
        const std::int32_t parent = facts_->nodes[i].parent;
        if (parent == none) {
            roots_.push_back(&node);
            root_->AddChild(node.bag());
            continue;
        }
        node.parent_ = nodes_[static_cast<std::size_t>(parent)].Get();
        node.parent_->children_.push_back(&node);
        node.parent_->bag()->AddChild(node.bag());
    }
}

QorGraphicMaterial* ProductReps::shownMaterial(std::int32_t node, std::int32_t material) const {
    const std::int32_t effective =
        effectiveMaterial(*facts_, node, {.firstIndex = 0, .indexCount = 0, .material = material});
    return effective == none ? plain_.Get() : materials_[static_cast<std::size_t>(effective)].Get();
}

const MeshPieces* ProductReps::meshAt(const ProductNode& node) const {
    if (node.part() == none)
        return nullptr;
    const std::int32_t mesh = facts_->parts[static_cast<std::size_t>(node.part())].mesh;
    return mesh == none ? nullptr : &(*meshes_)[static_cast<std::size_t>(mesh)];
}

ProductNode* ProductReps::nodeOf(const QorRep* rep) const {
    const auto found = nodeByRep_.find(rep);
    return found == nodeByRep_.end() ? nullptr : found->second;
}

ProductNode* ProductReps::nodeOn(const QorPickPath& path) const {
    for (auto rep = path.rbegin(); rep != path.rend(); ++rep)
        if (ProductNode* node = nodeOf(rep->Get()))
            return node;
    return nullptr;
}

QorMathTransformation ProductReps::worldTransform(const ProductNode& node) const {
    QorMathTransformation world = node.bag()->GetMatrix();
    for (const ProductNode* up = node.parent(); up != nullptr; up = up->parent())
        world = up->bag()->GetMatrix() * world;
    return world;
}

void ProductReps::addBox(const ProductNode& node,
                         const QorMathTransformation& outer,
                         Qor3DBoundingBox& box) const {
    const QorMathTransformation world = outer * node.bag()->GetMatrix();
    if (const MeshPieces* mesh = meshAt(node))
        for (const MeshPiece& piece : mesh->pieces) {
            const std::vector<float>& at = piece.mesh->GetData().positions;
            for (std::size_t i = 0; i + 2 < at.size(); i += 3)
                box.Add(world.Apply({at[i], at[i + 1], at[i + 2]}));
        }
    for (const ProductNode* child : node.children())
        addBox(*child, world, box);
}

Qor3DBoundingBox ProductReps::worldBox(const ProductNode& node) const {
    Qor3DBoundingBox box;
    addBox(node,
           node.parent() != nullptr ? worldTransform(*node.parent()) : QorMathTransformation(),
           box);
    return box;
}

Qor3DBoundingBox ProductReps::worldBox() const {
    Qor3DBoundingBox box;
    for (const ProductNode* node : roots_)
        addBox(*node, {}, box);
    return box;
}

int ProductReps::countInstances(std::int32_t part) const {
    return static_cast<int>(std::count_if(
        nodes_.begin(), nodes_.end(), [part](const auto& node) { return node->part() == part; }));
}

std::uint64_t ProductReps::countTriangles() const {
    std::uint64_t count = 0;
    for (const ProductNode_var& node : nodes_)
        if (const MeshPieces* mesh = meshAt(*node))
            for (const MeshPiece& piece : mesh->pieces)
                count += piece.mesh->CountTriangles();
    return count;
}

void ProductReps::append(ProductReps other) {
    ownAlone(facts_);
    ownAlone(meshes_);
    ownAlone(other.facts_);
    ownAlone(other.meshes_);
    const ProductShift shift = joinFacts(*facts_, std::move(*other.facts_));
    for (MeshPieces& mesh : *other.meshes_)
        for (MeshPiece& piece : mesh.pieces)
            piece.material = shifted(piece.material, shift.materials);
    for (std::size_t i = 0; i < other.materials_.size(); ++i)
        other.materials_[i]->name = facts_->materials[materials_.size() + i].name;
    std::move(other.meshes_->begin(), other.meshes_->end(), std::back_inserter(*meshes_));
    std::move(other.images_.begin(), other.images_.end(), std::back_inserter(images_));
    std::move(other.materials_.begin(), other.materials_.end(), std::back_inserter(materials_));
    adoptNodes(other, shift);
}

void ProductReps::adoptNodes(ProductReps& other, const ProductShift& shift) {
    for (ProductNode_var& node : other.nodes_) {
        node->id_ += shift.nodes;
        node->part_ = shifted(node->part_, shift.parts);
        node->name_ = facts_->nodes[static_cast<std::size_t>(node->id_)].name;
        nodes_.push_back(std::move(node));
    }
    for (ProductNode* root : other.roots_) {
        roots_.push_back(root);
        root_->AddChild(root->bag());
    }
    nodeByRep_.merge(other.nodeByRep_);
}

QorMathTransformation matrixOf(const Transform& m) {
    return {{{{m[0], m[4], m[8]}, {m[1], m[5], m[9]}, {m[2], m[6], m[10]}}}, {m[3], m[7], m[11]}};
}

} // namespace qor::document
