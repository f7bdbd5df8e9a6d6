#include "workbench/app/Commands.h"

#include "quickrender/QorRdgOptionsDialog.h"
#include "workbench/app/AboutDialog.h"
#include "workbench/app/CommandTables.h"
#include "workbench/app/ControlsDialog.h"
#include "workbench/app/DialogCommand.h"
#include "workbench/app/Gallery.h"
#include "workbench/app/Session.h"
#include "workbench/document/session/RecentFiles.h"

#include <filesystem>
#include <span>
#include <string>

namespace qor::app {

namespace {

/// A command that is a dialog.
struct DialogRow {
    const char* name;
    DialogCommand::Maker make;
    bool isForDevelopers = false;
};

template <class Dialog>
QorDlgDialog* make(QorCommand* father, const char* name) {
    return new Dialog(father, name);
}

const DialogRow dialogRows[] = {
    {"EasyRenderOptions",
     [](QorCommand* father) {
         return make<QorRdgOptionsDialog>(father, "optionsDialog");
     }},
    {"Controls",
     [](QorCommand* father) {
         return make<ControlsDialog>(father, "controlsDialog");
     }},
    {"About",
     [](QorCommand* father) {
         return make<AboutDialog>(father, "aboutDialog");
     }},
    {"Gallery", [](QorCommand* father) { return make<GalleryDialog>(father, "galleryDialog"); },
     true},
};

constexpr std::span<const ActionRow> (*actionTables[])() = {fileCommands, editCommands,
                                                            viewCommands};

/// "&1 gear.stp"; a "&" of the name itself is doubled, for it would underline what follows.
QorUnicodeString recentTitle(std::size_t index, const std::filesystem::path& file) {
    std::string title = index < 9 ? "&" + std::to_string(index + 1) + " " : "1&0 ";
    for (const char letter : file.filename().string())
        title += letter == '&' ? std::string("&&") : std::string(1, letter);
    return title;
}

/// Shows the files opened last as the titles of their commands.
void refreshRecent(const Session& session) {
    for (std::size_t i = 0; i < document::RecentFiles::most; ++i) {
        const auto& files = session.recentFiles();
        const std::string name = "RecentFile" + std::to_string(i + 1);
        QorCommandHeader* header = QorCommandHeader::GetHeaderFromList(name);
        if (header == nullptr)
            continue;
        header->SetTitle(i < files.size() ? recentTitle(i, files[i]) : QorUnicodeString());
        header->SetLongHelp(i < files.size() ? QorUnicodeString(files[i].string())
                                             : QorUnicodeString());
    }
}

} // namespace

void addCommands(QorApplicationFrame& frame, const CommandContext& context) {
    for (const auto table : actionTables)
        for (const ActionRow& row : table())
            new ActionHeader(&frame, row, context);
    for (const DialogRow& row : dialogRows)
        if (context.hasGallery || !row.isForDevelopers)
            new DialogHeader(&frame, row.name, row.make);
    refreshCommands(context);
}

void refreshCommands(const CommandContext& context) {
    for (QorCommandHeader* header : QorCommandHeader::GetAll())
        if (auto* action = dynamic_cast<ActionHeader*>(header);
            action != nullptr && !action->IsDying())
            action->refresh();
    if (context.session != nullptr)
        refreshRecent(*context.session);
}

} // namespace qor::app
