// The menus "File" and "Window": documents and their windows.
#include "workbench/app/CommandTables.h"
#include "workbench/app/Commands.h"
#include "workbench/app/Session.h"

#include <array>
#include <utility>

namespace qor::app {

namespace {

template <void (Session::*action)()>
void run(const CommandContext& context) {
    (context.session->*action)();
}

bool isReady(const CommandContext& context) {
    return context.session != nullptr && !context.session->isBusy();
}

bool hasDocument(const CommandContext& context) {
    return isReady(context) && context.session->editor() != nullptr;
}

bool hasWindow(const CommandContext& context) {
    return context.session != nullptr && context.session->editor() != nullptr;
}

template <std::size_t index>
void openRecent(const CommandContext& context) {
    context.session->openRecent(index);
}

template <std::size_t index>
bool isRecent(const CommandContext& context) {
    return isReady(context) && index < context.session->recentFiles().size();
}

void quit(const CommandContext& context) {
    if (context.session == nullptr)
        context.quit();
    else
        context.session->quit();
}

constexpr ActionRow rows[] = {
    {"New", run<&Session::newDocument>, isReady},
    {"Open", run<&Session::askOpen>, isReady},
    {"RecentFile1", openRecent<0>, isRecent<0>},
    {"RecentFile2", openRecent<1>, isRecent<1>},
    {"RecentFile3", openRecent<2>, isRecent<2>},
    {"RecentFile4", openRecent<3>, isRecent<3>},
    {"RecentFile5", openRecent<4>, isRecent<4>},
    {"RecentFile6", openRecent<5>, isRecent<5>},
    {"RecentFile7", openRecent<6>, isRecent<6>},
    {"RecentFile8", openRecent<7>, isRecent<7>},
    {"RecentFile9", openRecent<8>, isRecent<8>},
    {"RecentFile10", openRecent<9>, isRecent<9>},
    {"Save", run<&Session::save>, hasDocument},
    {"SaveAs", run<&Session::askSaveAs>, hasDocument},
    {"ImportInto", run<&Session::askImport>, hasDocument},
    {"Close", run<&Session::closeDocument>, hasDocument},
    {"NewWindow", run<&Session::newWindow>, hasWindow},
    {"CloseWindow", run<&Session::closeWindow>, hasDocument},
    {"NextWindow", run<&Session::nextWindow>, hasWindow},
    {"Quit", quit},
};

} // namespace

std::span<const ActionRow> fileCommands() {
    return rows;
}

} // namespace qor::app
