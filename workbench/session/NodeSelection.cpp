#include "workbench/session/NodeSelection.h"

#include "platform/frame/QorPathElement.h"

#include <algorithm>
#include <unordered_set>

namespace qor::session {

using document::Document;
using document::ProductNode;

namespace {

ProductNode* nodeOf(QorBaseUnknown* element) {
    if (const auto* path = dynamic_cast<QorPathElement*>(element))
        element = path->GetLeaf();
    return dynamic_cast<ProductNode*>(element);
}

} // namespace

Nodes selectedNodes(const QorCSO& selection) {
    Nodes nodes;
    for (int i = 1; i <= selection.GetSize(); ++i)
        if (ProductNode* node = nodeOf(selection.GetElement(i)))
            nodes.push_back(node);
    return nodes;
}

void selectNodes(QorCSO& selection, Document& document, const Nodes& nodes) {
    std::vector<QorVar<QorBaseUnknown>> paths;
    paths.reserve(nodes.size());
    for (ProductNode* node : nodes)
        paths.emplace_back(document.BuildPathElement(node).Get());
    selection.SetElements(paths);
}

void toggleNode(QorCSO& selection, Document& document, ProductNode& node) {
    Nodes nodes = selectedNodes(selection);
    if (std::erase(nodes, &node) == 0)
        nodes.push_back(&node);
    selectNodes(selection, document, nodes);
}

Nodes outermost(const Nodes& nodes) {
    const std::unordered_set<const ProductNode*> all(nodes.begin(), nodes.end());
    const auto isInner = [&](const ProductNode* node) {
        for (const ProductNode* above = node->parent(); above != nullptr; above = above->parent())
            if (all.contains(above))
                return true;
        return false;
    };
    Nodes outer;
    std::copy_if(nodes.begin(), nodes.end(), std::back_inserter(outer),
                 [&](const ProductNode* node) { return !isInner(node); });
    return outer;
}

} // namespace qor::session
