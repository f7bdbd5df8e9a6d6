// manipulator.*: what a person does to the handles in viewers, without the mouse.
#include "platform/vis/QorViewer.h"
#include "workbench/automation/methods/Groups.h"
#include "workbench/automation/methods/ViewerAddress.h"
#include "workbench/automation/methods/ViewerArguments.h"

#include <algorithm>

namespace qor::automation {

namespace {

/// The manipulator that the call names; throws Error.
QorVar<QorManipulator> findManipulator(Call& call) {
    const NamedViewer named = findViewer(call.text("viewer"));
    const std::string name = call.text("name");
    QorManipulator* found = nullptr;
    for (QorManipulator* one : named.viewer->GetManipulators()) {
        if (one->GetName().Str() != name)
            continue;
        if (found != nullptr)
            throw Error(ErrorCode::ambiguousName, inQuotes(name) +
                                                      " stands for several manipulators of " +
                                                      inQuotes(named.path));
        found = one;
    }
    if (found == nullptr)
        throw Error(ErrorCode::noSuchObject,
                    inQuotes(named.path) + " has no manipulator " + inQuotes(name));
    if (!named.viewer->CanAct() || !found->IsPickable())
        throw Error(ErrorCode::cannotAct, inQuotes(name) + " cannot be picked now");
    return found;
}

Json set(Call& call) {
    const QorVar<QorManipulator> manipulator = findManipulator(call);
    auto* solid = dynamic_cast<Qor3DManipulator*>(manipulator.Get());
    if (solid == nullptr)
        throw Error(ErrorCode::wrongKind,
                    inQuotes(call.text("name")) + " is no manipulator in space");
    const QorMathVector third = vectorFrom(call, "third");
    if (third == QorMathVector{})
        throw Error(ErrorCode::invalidParams, "\"third\" is no direction");
    solid->TurnThirdTo(third);
    return Json::object();
}

Json edit(Call& call) {
    findManipulator(call)->Edit();
    return Json::object();
}

} // namespace

MethodGroup manipulatorMethods() {
    const Param viewer{"viewer", ParamKind::text};
    const Param name{"name", ParamKind::text};
    return {
        {.name = "manipulator.set",
         .params = {viewer, name, {"third", ParamKind::numbers}},
         .run = &set},
        {.name = "manipulator.edit", .params = {viewer, name}, .run = &edit},
    };
}

} // namespace qor::automation
