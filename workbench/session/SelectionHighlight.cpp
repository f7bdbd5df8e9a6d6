#include "workbench/session/SelectionHighlight.h"

#include <unordered_set>

namespace qor::session {

using document::ProductNode;
using document::ProductNode_var;

SelectionHighlight::SelectionHighlight(QorFrmEditor& editor) : selection_(editor.GetCSO()) {
    selection_->GetCallbackManager()->AddCallback(this, QorCSO::CSO_MODIFIED,
                                                  &SelectionHighlight::modified);
    show(selectedNodes(*selection_));
}

SelectionHighlight::~SelectionHighlight() {
    show({});
}

void SelectionHighlight::modified(QorEventName /*event*/,
                                  QorBaseUnknown* /*publisher*/,
                                  QorNotification* /*notification*/,
                                  QorSubscriberData /*data*/,
                                  QorCallbackId /*cookie*/) {
    show(selectedNodes(*selection_));
}

/// Touches only what changes, because each touch has viewers drawn anew.
void SelectionHighlight::show(const Nodes& nodes) {
    const std::unordered_set<const ProductNode*> wanted(nodes.begin(), nodes.end());
    for (const ProductNode_var& node : shown_)
        if (!wanted.contains(node.Get()))
            node->bag()->SetHighlighted(false);
    shown_.clear();
    for (ProductNode* node : nodes) {
        if (!node->bag()->IsHighlighted())
            node->bag()->SetHighlighted(true);
        shown_.emplace_back(node);
    }
}

} // namespace qor::session
