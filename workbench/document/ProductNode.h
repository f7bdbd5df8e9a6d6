#pragma once

#include "platform/component/QorHandle.h"
#include "platform/vis/Qor3DReps.h"
#include "workbench/document/product/Mesh.h"

#include <string>
#include <vector>

namespace qor::document {

/// An occurrence in the product tree of a document: what a person selects, hides and shows. Nodes
/// of one part are instances of the same thing. A document's selection and paths hold nodes. In a
/// document it answers QorIAlias with its name, which cannot be changed.
/// User-interface thread, once the document has it.
class ProductNode : public QorBaseUnknown {
    QorDeclareClass(ProductNode)

    /// \p bag moves what the node shows; \p part may be `none`.
    ProductNode(int number, std::string name, std::int32_t part, QorVar<Qor3DBagRep> bag);

    /// Its place in ProductReps::nodes(), the same as long as the document is open.
    [[nodiscard]] int id() const { return id_; }

    [[nodiscard]] const std::string& name() const { return name_; }

    /// Null for a root. No reference added.
    [[nodiscard]] ProductNode* parent() const { return parent_; }

    [[nodiscard]] const std::vector<ProductNode*>& children() const { return children_; }

    /// Index of what it is an instance of (ProductReps::facts().parts), or `none`.
    [[nodiscard]] std::int32_t part() const { return part_; }

    /// What shows it and all below it. No reference added.
    [[nodiscard]] Qor3DBagRep* bag() const { return bag_.Get(); }

    /// Its own switch; see isShown.
    [[nodiscard]] bool isVisible() const { return bag_->IsShown(); }

    /// Whether it and all above it are visible.
    [[nodiscard]] bool isShown() const;

    /// Makes nodes answer QorIAlias.
    static void registerInterfaces();

protected:
    ~ProductNode() override = default;

private:
    friend class ProductReps;

    int id_;
    std::string name_;
    std::int32_t part_;
    QorVar<Qor3DBagRep> bag_;
    ProductNode* parent_ = nullptr;
    std::vector<ProductNode*> children_;
};

using ProductNode_var = QorVar<ProductNode>;

} // namespace qor::document
