#pragma once

#include "platform/frame/QorFrmEditor.h"
#include "workbench/session/SelectionHighlight.h"

namespace qor::app {

/// A document of the workbench that is open: what is selected stands out in its windows.
class DocumentEditor : public QorFrmEditor {
    QorDeclareClass(DocumentEditor)

    /// Neither is null.
    DocumentEditor(QorFrmLayout* in, document::Document* edited);

    [[nodiscard]] document::Document& document() const { return *document_; }

protected:
    ~DocumentEditor() override = default;

private:
    document::Document* document_; ///< the base holds a reference
    session::SelectionHighlight highlight_;
};

} // namespace qor::app
