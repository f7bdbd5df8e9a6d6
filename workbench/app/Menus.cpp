#include "workbench/app/Menus.h"

#include <string_view>

namespace qor::app {

namespace {

/// An entry of a menu or tool bar; rows of one menu stand together, in the order shown.
struct Row {
    const char* menu;
    const char* command; ///< a command header, or a line between groups
};

constexpr const char* line = "-";

constexpr Row menuRows[] = {
    {"FileMenu", "Quit"},
    {"RenderMenu", "EasyRenderOptions"},
    {"DeveloperMenu", "Gallery"},
    {"HelpMenu", "About"},
};

constexpr Row toolBarRows[] = {
    {"RenderToolBar", "EasyRenderOptions"},
};

QorCmdContainer* findMenu(const QorCmdContainer& bar, const char* name) {
    for (const auto& entry : bar.GetEntries())
        if (entry->GetName() == name)
            return static_cast<QorCmdContainer*>(entry.Get());
    return nullptr;
}

QorCmdContainer* findOrAddMenu(QorCmdContainer& bar, const char* name) {
    QorCmdContainer* menu = findMenu(bar, name);
    if (menu == nullptr) {
        menu = new QorCmdContainer(&bar, name);
        bar.AddChild(menu);
    }
    return menu;
}

void addLine(QorCmdContainer& bar, const char* menuName) {
    if (QorCmdContainer* menu = findMenu(bar, menuName))
        menu->AddChild(new QorCmdSeparator(menu, line));
}

template <std::size_t count>
void fill(QorCmdContainer& bar, const Row (&rows)[count]) {
    for (const Row& row : rows) {
        if (std::string_view(row.command) == line) {
            addLine(bar, row.menu);
            continue;
        }
        if (QorCommandHeader::GetHeaderFromList(row.command, 1) == nullptr)
            continue;
        QorCmdContainer* menu = findOrAddMenu(bar, row.menu);
        menu->AddChild(new QorCmdStarter(menu, row.command, row.command));
    }
}

} // namespace

void addMenus(QorApplicationFrame& frame) {
    fill(*frame.GetMenuBar(), menuRows);
    fill(*frame.GetToolBars(), toolBarRows);
}

} // namespace qor::app
