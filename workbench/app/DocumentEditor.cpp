#include "workbench/app/DocumentEditor.h"

namespace qor::app {

DocumentEditor::DocumentEditor(QorFrmLayout* in, document::Document* edited)
    : QorFrmEditor(in, "documentEditor", edited), document_(edited), highlight_(*this) {}

QorImplementClass(DocumentEditor, QorFrmEditor)

} // namespace qor::app
