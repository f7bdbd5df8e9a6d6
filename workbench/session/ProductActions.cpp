#include "workbench/session/ProductActions.h"

#include <algorithm>
#include <set>
#include <string>
#include <unordered_set>

namespace qor::session {

using document::Document;
using document::ProductNode;
using document::ProductNode_var;

namespace {

bool isPart(const ProductNode& node) {
    return node.children().empty();
}

/// What nodes show the same thing by: their part, or the name of an assembly that has none.
std::string kindOf(const ProductNode& node) {
    if (node.part() != document::none)
        return "#" + std::to_string(node.part());
    return isPart(node) ? "part " + node.name() : "assembly " + node.name();
}

} // namespace

ProductActions::ProductActions(QorFrmEditor* editor)
    : editor_(editor)
    , document_(editor != nullptr ? dynamic_cast<Document*>(editor->GetDocument()) : nullptr) {}

bool ProductActions::hasProduct() const {
    return document_ != nullptr && !document_->product().nodes().empty();
}

bool ProductActions::hasSelection() const {
    return !selected().empty();
}

Nodes ProductActions::selected() const {
    return document_ != nullptr ? selectedNodes(*editor_->GetCSO()) : Nodes();
}

void ProductActions::selectAll() const {
    if (document_ == nullptr)
        return;
    Nodes parts;
    for (const ProductNode_var& node : document_->product().nodes())
        if (isPart(*node) && node->isShown())
            parts.push_back(node.Get());
    selectNodes(*editor_->GetCSO(), *document_, parts);
}

void ProductActions::selectNothing() const {
    if (document_ != nullptr)
        editor_->GetCSO()->Empty();
}

void ProductActions::selectSame() const {
    std::set<std::string> kinds;
    for (const ProductNode* node : selected())
        kinds.insert(kindOf(*node));
    if (kinds.empty())
        return;
    Nodes same;
    for (const ProductNode_var& node : document_->product().nodes())
        if (kinds.contains(kindOf(*node)))
            same.push_back(node.Get());
    selectNodes(*editor_->GetCSO(), *document_, same);
}

void ProductActions::hideSelected() const {
    for (ProductNode* node : outermost(selected()))
        document_->setVisible(*node, false);
}

void ProductActions::showSelected() const {
    for (ProductNode* node : selected())
        for (ProductNode* above = node; above != nullptr; above = above->parent())
            document_->setVisible(*above, true);
}

void ProductActions::isolateSelected() const {
    const Nodes nodes = selected();
    if (!nodes.empty())
        document_->isolate(nodes);
}

void ProductActions::showAll() const {
    if (document_ != nullptr)
        document_->showAll();
}

void ProductActions::invertVisibility() const {
    if (document_ == nullptr)
        return;
    std::unordered_set<const ProductNode*> shown;
    for (const ProductNode_var& node : document_->product().nodes())
        if (isPart(*node) && node->isShown())
            shown.insert(node.Get());
    // The switches of assemblies go on, so that those of the parts alone decide.
    for (const ProductNode_var& node : document_->product().nodes())
        document_->setVisible(*node, !shown.contains(node.Get()));
}

Qor3DBoundingBox ProductActions::selectionBox() const {
    Qor3DBoundingBox box;
    for (const ProductNode* node : outermost(selected()))
        if (node->isShown())
            box.Add(document_->product().worldBox(*node));
    return box;
}

} // namespace qor::session
