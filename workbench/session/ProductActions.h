#pragma once

#include "platform/frame/QorFrmEditor.h"
#include "platform/vis/QorBoundingBox.h"
#include "workbench/session/NodeSelection.h"

namespace qor::session {

/// What commands and the context menu of the tree do to the parts of an editor's document. Each
/// does nothing without a document, and those about the selection nothing without one.
/// User-interface thread only.
class ProductActions {
public:
    /// \p editor may be null and outlives the object.
    explicit ProductActions(QorFrmEditor* editor);

    /// Whether there is a part at all.
    [[nodiscard]] bool hasProduct() const;
    [[nodiscard]] bool hasSelection() const;

    /// Selects every part that is shown.
    void selectAll() const;
    void selectNothing() const;
    /// Selects all instances of the parts and assemblies that are selected.
    void selectSame() const;
    void hideSelected() const;
    /// Shows what is selected, with what it hangs on.
    void showSelected() const;
    void isolateSelected() const;
    void showAll() const;
    /// Hides the parts that are shown, and shows the others.
    void invertVisibility() const;

    /// Box of what is selected and shown, in the world's axes; empty for nothing. Costs a step a
    /// vertex.
    [[nodiscard]] Qor3DBoundingBox selectionBox() const;

private:
    [[nodiscard]] Nodes selected() const;

    QorFrmEditor* editor_;
    document::Document* document_;
};

} // namespace qor::session
