// The menu "Edit": selection and visibility of parts.
#include "workbench/app/CommandTables.h"
#include "workbench/app/Commands.h"
#include "workbench/app/Session.h"
#include "workbench/session/ProductActions.h"

namespace qor::app {

namespace {

using session::ProductActions;

ProductActions actions(const CommandContext& context) {
    return ProductActions(context.session != nullptr ? context.session->editor() : nullptr);
}

template <void (ProductActions::*action)() const>
void run(const CommandContext& context) {
    (actions(context).*action)();
}

bool hasProduct(const CommandContext& context) {
    return actions(context).hasProduct();
}

bool hasSelection(const CommandContext& context) {
    return actions(context).hasSelection();
}

constexpr ActionRow rows[] = {
    {"SelectAll", run<&ProductActions::selectAll>, hasProduct},
    {"SelectNothing", run<&ProductActions::selectNothing>, hasSelection},
    {"SelectSame", run<&ProductActions::selectSame>, hasSelection},
    {"Hide", run<&ProductActions::hideSelected>, hasSelection},
    {"Show", run<&ProductActions::showSelected>, hasSelection},
    {"Isolate", run<&ProductActions::isolateSelected>, hasSelection},
    {"ShowAll", run<&ProductActions::showAll>, hasProduct},
    {"InvertVisibility", run<&ProductActions::invertVisibility>, hasProduct},
};

} // namespace

std::span<const ActionRow> editCommands() {
    return rows;
}

} // namespace qor::app
