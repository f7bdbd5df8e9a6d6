#include "workbench/app/Commands.h"

#include "quickrender/QorRdgOptionsDialog.h"
#include "workbench/app/AboutDialog.h"
#include "workbench/app/DialogCommand.h"
#include "workbench/app/Gallery.h"

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
    {"About",
     [](QorCommand* father) {
         return make<AboutDialog>(father, "aboutDialog");
     }},
    {"Gallery", [](QorCommand* father) { return make<GalleryDialog>(father, "galleryDialog"); },
     true},
};

/// A command that is done at once.
struct ActionRow {
    const char* name;
    void (*run)(const CommandContext& context);
};

const ActionRow actionRows[] = {
    {"Quit",
     [](const CommandContext& context) {
         context.quit();
     }},
};

} // namespace

void addCommands(QorApplicationFrame& frame, const CommandContext& context) {
    for (const ActionRow& row : actionRows)
        new QorCommandHeader(&frame, row.name,
                             [run = row.run, context](QorCommandHeader&) -> QorCommand* {
                                 run(context);
                                 return nullptr;
                             });
    for (const DialogRow& row : dialogRows)
        if (context.hasGallery || !row.isForDevelopers)
            new DialogHeader(&frame, row.name, row.make);
}

} // namespace qor::app
