#pragma once

#include "platform/vis/QorPicker.h"
#include "workbench/document/MeshPieces.h"
#include "workbench/document/ProductNode.h"
#include "workbench/document/product/Product.h"

#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace qor::document {

struct ProductShift;

/// A product as it is shown and rendered: the tree of nodes, one bag a node below one root, one
/// QorMesh a part and material group that all instances share, materials and pictures that are
/// shared. The bag of a node holds its transform into its parent's axes, whether it is visible, the
/// mesh reps of its part, and the bags of its children.
/// It may be built on any thread; from then on it belongs to one thread, in a document to the
/// user-interface thread.
class ProductReps {
public:
    /// An empty product.
    ProductReps();

    /// Takes the meshes and pictures out of \p product, which has passed findFault: they are not
    /// held twice.
    explicit ProductReps(Product product);

    ProductReps(ProductReps&&) noexcept = default;
    ProductReps& operator=(ProductReps&&) noexcept = default;
    ProductReps(const ProductReps&) = delete;
    ProductReps& operator=(const ProductReps&) = delete;
    ~ProductReps();

    /// What viewers show: the same object for good. No reference added.
    [[nodiscard]] Qor3DBagRep* root() const { return root_.Get(); }

    /// In file order; a parent stands before its children.
    [[nodiscard]] const std::vector<ProductNode_var>& nodes() const { return nodes_; }

    /// The nodes without a parent, in order.
    [[nodiscard]] const std::vector<ProductNode*>& roots() const { return roots_; }

    /// All that is neither tree, mesh, picture nor material: names, parts, cameras, lights,
    /// animations, units. Its nodes, parts and meshes are those of here, by index, the arrays of
    /// meshes and pictures empty; Node::visible and Product::materials are as they were loaded.
    [[nodiscard]] const Product& facts() const { return *facts_; }

    /// The same, as it is now, for good and on any thread.
    [[nodiscard]] std::shared_ptr<const Product> sharedFacts() const { return facts_; }

    /// By index of Product::meshes.
    [[nodiscard]] const std::vector<MeshPieces>& meshes() const { return *meshes_; }

    /// The same, as they are now, for good and on any thread.
    [[nodiscard]] std::shared_ptr<const std::vector<MeshPieces>> sharedMeshes() const {
        return meshes_;
    }

    /// By index of Product::materials.
    [[nodiscard]] const std::vector<QorVar<QorGraphicMaterial>>& materials() const {
        return materials_;
    }

    /// By index of Product::textures.
    [[nodiscard]] const std::vector<QorPixelImage_var>& images() const { return images_; }

    /// The node that \p rep shows: its own bag or one of its mesh reps; null for others.
    [[nodiscard]] ProductNode* nodeOf(const QorRep* rep) const;

    /// The deepest node on a way that picking found; null when there is none.
    [[nodiscard]] ProductNode* nodeOn(const QorPickPath& path) const;

    /// From the axes of \p node to the world's.
    [[nodiscard]] QorMathTransformation worldTransform(const ProductNode& node) const;

    /// Exact box in the world's axes of all vertices at and below \p node, hidden ones included.
    /// Costs a step a vertex.
    [[nodiscard]] Qor3DBoundingBox worldBox(const ProductNode& node) const;

    /// The same of the whole product.
    [[nodiscard]] Qor3DBoundingBox worldBox() const;

    /// How many nodes are instances of \p part.
    [[nodiscard]] int countInstances(std::int32_t part) const;

    /// Triangles with every instance counted.
    [[nodiscard]] std::uint64_t countTriangles() const;

    /// Moves all of \p other behind what is here. Names of its roots that are taken get a number:
    /// "gear", "gear.2". The unit stays that of the first product.
    void append(ProductReps other);

private:
    void buildNodes();
    void addMeshReps(std::int32_t node);
    void joinParents();
    [[nodiscard]] QorGraphicMaterial* shownMaterial(std::int32_t node, std::int32_t material) const;
    [[nodiscard]] const MeshPieces* meshAt(const ProductNode& node) const;
    void addBox(const ProductNode& node,
                const QorMathTransformation& outer,
                Qor3DBoundingBox& box) const;
    void adoptNodes(ProductReps& other, const ProductShift& shift);

    std::shared_ptr<Product> facts_;                  ///< a copy is changed once others share it
    std::shared_ptr<std::vector<MeshPieces>> meshes_; ///< as facts_
    std::vector<QorPixelImage_var> images_;
    std::vector<QorVar<QorGraphicMaterial>> materials_;
    QorVar<QorGraphicMaterial> plain_;
    std::vector<ProductNode_var> nodes_;
    std::vector<ProductNode*> roots_;
    std::unordered_map<const QorRep*, ProductNode*> nodeByRep_;
    QorVar<Qor3DBagRep> root_;
};

/// A transformation in the form of the representations.
[[nodiscard]] QorMathTransformation matrixOf(const Transform& transform);

} // namespace qor::document
