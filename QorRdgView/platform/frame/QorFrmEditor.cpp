#include "platform/frame/QorFrmEditor.h"

#include "platform/frame/QorFrmLayout.h"

const QorEventName QorFrmEditor::EDITOR_ACTIVATED("EDITOR_ACTIVATED");
const QorEventName QorFrmEditor::EDITOR_DEACTIVATED("EDITOR_DEACTIVATED");
const QorEventName QorFrmEditor::EDITOR_CLOSE_ENDED("EDITOR_CLOSE_ENDED");

QorFrmEditor::QorFrmEditor(QorFrmLayout* iLayout, const QorString& iName, QorDocument* iDocument)
    : QorCommand(iLayout, iName)
    , layout(iLayout)
    , document(iDocument)
    , selection(QorMake<QorCSO>()) {
    layout->Join(*this);
}

QorFrmEditor::~QorFrmEditor() {
    if (layout != nullptr)
        layout->Leave(*this);
}

QorFrmEditor* QorFrmEditor::GetCurrentEditor() {
    const QorFrmLayout* current = QorFrmLayout::GetCurrentLayout();
    return current != nullptr ? current->GetCurrentEditor() : nullptr;
}

QorFrmEditorNotification::QorFrmEditorNotification(QorFrmEditor* iEditor) : editor(iEditor) {}

QorFrmEditorNotification::~QorFrmEditorNotification() = default;

QorImplementClass(QorFrmEditor, QorCommand)
QorImplementClass(QorFrmEditorNotification, QorNotification)
