#pragma once

#include "platform/frame/QorCSO.h"
#include "workbench/document/Document.h"

#include <span>
#include <vector>

namespace qor::session {

/// Nodes of a document's product tree, in an order of their own; no references.
using Nodes = std::vector<document::ProductNode*>;

/// The nodes in \p selection, in its order; what else is selected (lights, cameras) is left out.
[[nodiscard]] Nodes selectedNodes(const QorCSO& selection);

/// Makes \p nodes, each once, the whole selection, as paths of \p document.
void selectNodes(QorCSO& selection, document::Document& document, const Nodes& nodes);

/// Adds \p node to the selection, or takes it out when it is there.
void toggleNode(QorCSO& selection, document::Document& document, document::ProductNode& node);

/// \p nodes without those that lie below another one of them.
[[nodiscard]] Nodes outermost(const Nodes& nodes);

} // namespace qor::session
