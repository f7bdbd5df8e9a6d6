// The menu "Render", as far as its commands are no dialogs.
#include "platform/frame/QorFrmDesktop.h"
#include "quickrender/QorRdgRecentRenders.h"
#include "workbench/app/CommandTables.h"
#include "workbench/app/Commands.h"

namespace qor::app {

namespace {

bool hasRenders(const CommandContext& /*context*/) {
    return QorFrmDesktop::GetInstalled() != nullptr;
}

void openRenders(const CommandContext& /*context*/) {
    (void)QorFrmDesktop::GetInstalled()->OpenDocument(QorRdgRecentRenders::GetDirectory());
}

constexpr ActionRow rows[] = {
    {"RecentRenders", openRenders, hasRenders},
};

} // namespace

std::span<const ActionRow> renderCommands() {
    return rows;
}

} // namespace qor::app
