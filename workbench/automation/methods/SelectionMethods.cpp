#include "platform/frame/QorFrmEditor.h"
#include "platform/frame/QorIContextualMenu.h"
#include "platform/scene/QorIAlias.h"
#include "workbench/automation/Call.h"
#include "workbench/automation/methods/Groups.h"
#include "workbench/automation/methods/ObjectAddress.h"

namespace qor::automation {

namespace {

QorFrmEditor& currentEditor() {
    QorFrmEditor* editor = QorFrmEditor::GetCurrentEditor();
    if (editor == nullptr || editor->GetDocument() == nullptr)
        throw Error(ErrorCode::failed, "no document is open");
    return *editor;
}

bool isAddress(const Json& entry) {
    return entry.is_object() && entry.size() == 2 && entry.contains("kind") &&
           entry.contains("name") && entry["kind"].is_string() && entry["name"].is_string();
}

QorRscObject_var findEntry(const Json& entry) {
    if (!isAddress(entry))
        throw Error(ErrorCode::invalidParams,
                    "an entry of \"objects\" must have a \"kind\" and a \"name\" and no more");
    return findObject(findKind(entry["kind"]), entry["name"]);
}

Json setSelection(Call& call) {
    const QorFrmEditor& editor = currentEditor();
    std::vector<QorPathElement_var> paths;
    for (const Json& entry : call.value("objects"))
        paths.push_back(editor.GetDocument()->BuildPathElement(findEntry(entry).Get()));
    editor.GetCSO()->Empty();
    for (const QorPathElement_var& path : paths)
        editor.GetCSO()->AddElement(path.Get());
    return Json::object();
}

/// What else than objects of a document is selected goes by its class, and its alias if it has one.
Json describe(QorBaseUnknown& selected) {
    auto* path = dynamic_cast<QorPathElement*>(&selected);
    QorBaseUnknown* leaf = path != nullptr ? path->GetLeaf() : &selected;
    const QorRscObject* object = QorRscObject::From(leaf);
    const auto alias = QorQuery<QorIAlias>(leaf);
    return {{"kind", object != nullptr ? object->GetKind().name.Str()
                     : leaf != nullptr ? leaf->IsA()
                                       : ""},
            {"name", alias ? alias->GetAlias().Str() : ""}};
}

Json getSelection(Call& /*call*/) {
    Json objects = Json::array();
    if (const QorFrmEditor* editor = QorFrmEditor::GetCurrentEditor())
        for (int i = 1; i <= editor->GetCSO()->GetSize(); ++i)
            objects.push_back(describe(*editor->GetCSO()->GetElement(i)));
    return {{"objects", objects}};
}

bool isAvailable(const QorCmdAccess& entry) {
    const auto* starter = dynamic_cast<const QorCmdStarter*>(&entry);
    if (starter == nullptr)
        return true;
    const QorCommandHeader* header = starter->GetHeader();
    return header != nullptr && header->IsAvailable();
}

Json describeMenu(const QorCmdContainer& menu) {
    Json list = Json::array();
    for (const QorVar<QorCmdAccess>& entry : menu.GetEntries()) {
        if (dynamic_cast<const QorCmdSeparator*>(entry.Get()) != nullptr)
            continue;
        Json one{{"name", entry->GetName().Str()},
                 {"title", entry->GetTitle().Str()},
                 {"available", isAvailable(*entry)}};
        if (const auto* submenu = dynamic_cast<const QorCmdContainer*>(entry.Get()))
            one["entries"] = describeMenu(*submenu);
        list.push_back(one);
    }
    return list;
}

Json listContextualMenu(Call& call) {
    const QorRscObject_var object = findObject(findKind(call.text("kind")), call.text("name"));
    const auto menu = QorQuery<QorIContextualMenu>(object);
    const QorCmdContainer* entries = menu ? menu->GetContextualMenu() : nullptr;
    return entries != nullptr ? describeMenu(*entries) : Json::array();
}

} // namespace

MethodGroup selectionMethods() {
    return {
        {.name = "selection.set", .params = {{"objects", ParamKind::list}}, .run = &setSelection},
        {.name = "selection.get", .params = {}, .run = &getSelection},
        {.name = "menu.contextual",
         .params = {{"kind", ParamKind::text}, {"name", ParamKind::text}},
         .run = &listContextualMenu},
    };
}

} // namespace qor::automation
