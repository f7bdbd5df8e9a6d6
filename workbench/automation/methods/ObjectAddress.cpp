#include "workbench/automation/methods/ObjectAddress.h"

#include "platform/frame/QorFrmEditor.h"
#include "workbench/automation/Error.h"

namespace qor::automation {

QorRscContainer* currentObjects() {
    const QorFrmEditor* editor = QorFrmEditor::GetCurrentEditor();
    return editor != nullptr ? QorRscContainer::Of(editor->GetDocument()) : nullptr;
}

const QorRscKind& findKind(const std::string& name) {
    const QorRscKind* kind = QorRscKind::Find(name);
    if (kind == nullptr)
        throw Error(ErrorCode::invalidParams, "there is no kind of objects " + inQuotes(name));
    return *kind;
}

QorRscObject_var findObject(const QorRscKind& kind, const std::string& name) {
    return findObject(std::vector<QorString>{kind.name}, name);
}

QorRscObject_var findObject(const std::vector<QorString>& kinds, const std::string& name) {
    const QorRscContainer* objects = currentObjects();
    QorRscObjects found;
    std::string kindNames;
    for (const QorString& kind : kinds) {
        kindNames += (kindNames.empty() ? "" : " or ") + kind.Str();
        if (objects != nullptr)
            for (const QorRscObject_var& object : objects->FindObjects(kind, name))
                found.Append(object.Get());
    }
    if (found.Size() == 0)
        throw Error(ErrorCode::noSuchObject, "there is no " + kindNames + " " + inQuotes(name));
    if (found.Size() > 1)
        throw Error(ErrorCode::ambiguousName,
                    "several objects of kind " + kindNames + " are called " + inQuotes(name));
    return found[1];
}

} // namespace qor::automation
