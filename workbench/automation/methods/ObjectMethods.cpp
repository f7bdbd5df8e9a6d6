#include "workbench/automation/Call.h"
#include "workbench/automation/methods/Groups.h"
#include "workbench/automation/methods/ObjectAddress.h"
#include "workbench/automation/methods/ObjectValue.h"

#include <algorithm>
#include <array>

namespace qor::automation {

namespace {

/// The name counts as an attribute, under the names of its getters too.
bool isName(const std::string& attribute) {
    static constexpr std::array<std::string_view, 3> names{"name", "Name", "Alias"};
    return std::ranges::find(names, attribute) != names.end();
}

const QorAttribute& findAttribute(const QorRscKind& kind, const std::string& name) {
    if (const QorAttribute* attribute = kind.FindAttribute(name))
        return *attribute;
    const auto kinds = QorRscKind::GetAll();
    const bool isOfAnother = std::ranges::any_of(
        kinds, [&](const QorRscKind* other) { return other->FindAttribute(name) != nullptr; });
    throw Error(isOfAnother ? ErrorCode::wrongKind : ErrorCode::invalidParams,
                "the kind " + inQuotes(kind.name.Str()) + " has no attribute " + inQuotes(name));
}

Json describe(const QorRscObject& object) {
    Json all{{"name", object.GetAlias().Str()}};
    for (const QorAttribute& attribute : object.GetKind().attributes) {
        const Json value = writeValue(attribute.get(object));
        all[attribute.name] = value;
        if (attribute.secondName != nullptr)
            all[attribute.secondName] = value;
    }
    return all;
}

void setAttribute(QorRscObject& object, const QorAttribute& attribute, const Json& value) {
    const QorAttributeOutcome outcome =
        object.SetAttribute(attribute.name, readValue(attribute, value));
    if (!outcome.IsDone())
        throw Error(ErrorCode::invalidParams, outcome.message);
}

void rename(QorRscObject& object, const Json& name) {
    if (!name.is_string() || !QorSucceeded(object.SetAlias(name.get<std::string>())))
        throw Error(ErrorCode::invalidParams, "a name must be a text that is not blank");
}

Json listObjects(Call& call) {
    const QorRscKind& kind = findKind(call.text("kind"));
    Json list = Json::array();
    if (const QorRscContainer* objects = currentObjects())
        for (const QorRscObject_var& object : objects->ListObjects(kind.name))
            list.push_back(describe(*object));
    return list;
}

QorRscObject_var findNamed(const Call& call) {
    return findObject(findKind(call.text("kind")), call.text("name"));
}

Json getObject(Call& call) {
    const QorRscObject_var object = findNamed(call);
    const std::string name = call.text("attribute");
    if (isName(name))
        return object->GetAlias().Str();
    return writeValue(findAttribute(object->GetKind(), name).get(*object));
}

Json setObject(Call& call) {
    const QorRscObject_var object = findNamed(call);
    const std::string name = call.text("attribute");
    if (isName(name))
        rename(*object, call.value("value"));
    else
        setAttribute(*object, findAttribute(object->GetKind(), name), call.value("value"));
    object->DispatchModify();
    return Json::object();
}

using Given = std::vector<std::pair<const QorAttribute*, Json>>;

/// The attributes among the parameters, in the order in which they are set.
Given givenAttributes(const Call& call, const QorRscKind& kind) {
    Given given;
    for (const auto& [name, value] : call.params().items())
        if (name != "kind" && name != "name")
            given.emplace_back(&findAttribute(kind, name), value);
    std::ranges::stable_sort(given, {}, &Given::value_type::first);
    return given;
}

void setAttributes(QorRscObject& object, const Given& given) {
    for (const auto& [attribute, value] : given)
        setAttribute(object, *attribute, value);
}

Json createObject(Call& call) {
    const QorRscKind& kind = findKind(call.text("kind"));
    const Given given = givenAttributes(call, kind);
    QorRscContainer* objects = currentObjects();
    if (objects == nullptr)
        throw Error(ErrorCode::failed, "no document is open");
    const auto trial = QorAdopt(kind.create());
    if (call.has("name"))
        rename(*trial, call.value("name"));
    setAttributes(*trial, given); // what is refused is refused before the document knows of it
    const QorRscObject_var object = objects->CreateObject(kind.name, trial->GetAlias());
    setAttributes(*object, given);
    return {{"name", object->GetAlias().Str()}};
}

Json removeObject(Call& call) {
    const QorRscObject_var object = findNamed(call);
    object->GetContainer()->RemoveObject(object.Get());
    return Json::object();
}

} // namespace

MethodGroup objectMethods() {
    const Param kind{"kind", ParamKind::text};
    const Param name{"name", ParamKind::text};
    const Param attribute{"attribute", ParamKind::text};
    return {
        {.name = "object.list", .params = {kind}, .run = &listObjects},
        {.name = "object.get", .params = {kind, name, attribute}, .run = &getObject},
        {.name = "object.set",
         .params = {kind, name, attribute, {"value", ParamKind::any}},
         .run = &setObject},
        {.name = "object.create",
         .params = {kind, optional("name", ParamKind::text)},
         .run = &createObject,
         .takesAnyParams = true},
        {.name = "object.remove", .params = {kind, name}, .run = &removeObject},
    };
}

} // namespace qor::automation
