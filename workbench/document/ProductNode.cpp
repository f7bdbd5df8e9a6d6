#include "workbench/document/ProductNode.h"

namespace qor::document {

QorImplementClass(ProductNode, QorBaseUnknown)

ProductNode::ProductNode(int number, std::string name, std::int32_t part, QorVar<Qor3DBagRep> bag)
    : id_(number), name_(std::move(name)), part_(part), bag_(std::move(bag)) {}

bool ProductNode::isShown() const {
    for (const ProductNode* node = this; node != nullptr; node = node->parent_)
        if (!node->isVisible())
            return false;
    return true;
}

} // namespace qor::document
