#include "workbench/app/Menus.h"

#include <string_view>

namespace qor::app {

namespace {

/// An entry of a menu or tool bar; rows of one menu stand together, in the order shown.
struct Row {
    const char* menu;    ///< a menu within another one stands behind it: "ViewMenu/ThemeMenu"
    const char* command; ///< a command header, or a line between groups
};

constexpr const char* line = "-";

constexpr Row menuRows[] = {
    {"FileMenu", "New"},
    {"FileMenu", "Open"},
    {"FileMenu/RecentMenu", "RecentFile1"},
    {"FileMenu/RecentMenu", "RecentFile2"},
    {"FileMenu/RecentMenu", "RecentFile3"},
    {"FileMenu/RecentMenu", "RecentFile4"},
    {"FileMenu/RecentMenu", "RecentFile5"},
    {"FileMenu/RecentMenu", "RecentFile6"},
    {"FileMenu/RecentMenu", "RecentFile7"},
    {"FileMenu/RecentMenu", "RecentFile8"},
    {"FileMenu/RecentMenu", "RecentFile9"},
    {"FileMenu/RecentMenu", "RecentFile10"},
    {"FileMenu", line},
    {"FileMenu", "ImportInto"},
    {"FileMenu", line},
    {"FileMenu", "Save"},
    {"FileMenu", "SaveAs"},
    {"FileMenu", line},
    {"FileMenu", "Close"},
    {"FileMenu", "Quit"},
    {"EditMenu", "SelectAll"},
    {"EditMenu", "SelectSame"},
    {"EditMenu", "SelectNothing"},
    {"EditMenu", line},
    {"EditMenu", "Hide"},
    {"EditMenu", "Show"},
    {"EditMenu", "Isolate"},
    {"EditMenu", line},
    {"EditMenu", "ShowAll"},
    {"EditMenu", "InvertVisibility"},
    {"ViewMenu", "FitAll"},
    {"ViewMenu", "FitSelection"},
    {"ViewMenu/StandardViewsMenu", "ViewIsometric"},
    {"ViewMenu/StandardViewsMenu", "ViewFront"},
    {"ViewMenu/StandardViewsMenu", "ViewBack"},
    {"ViewMenu/StandardViewsMenu", "ViewLeft"},
    {"ViewMenu/StandardViewsMenu", "ViewRight"},
    {"ViewMenu/StandardViewsMenu", "ViewTop"},
    {"ViewMenu/StandardViewsMenu", "ViewBottom"},
    {"ViewMenu", line},
    {"ViewMenu", "Perspective"},
    {"ViewMenu", "Edges"},
    {"ViewMenu", "Ground"},
    {"ViewMenu", line},
    {"ViewMenu", "ProductTree"},
    {"ViewMenu/ThemeMenu", "ThemeSystem"},
    {"ViewMenu/ThemeMenu", "ThemeLight"},
    {"ViewMenu/ThemeMenu", "ThemeDark"},
    {"RenderMenu", "EasyRender"},
    {"RenderMenu", "EasyRenderOptions"},
    {"RenderMenu", line},
    {"RenderMenu", "RecentRenders"},
    {"WindowMenu", "NewWindow"},
    {"WindowMenu", "NextWindow"},
    {"WindowMenu", "CloseWindow"},
    {"DeveloperMenu", "Gallery"},
    {"HelpMenu", "Controls"},
    {"HelpMenu", "About"},
};

constexpr Row toolBarRows[] = {
    {"FileToolBar", "Open"},
    {"FileToolBar", "Save"},
    {"FileToolBar", line},
    {"ViewToolBar", "ProductTree"},
    {"ViewToolBar", line},
    {"ViewToolBar", "FitAll"},
    {"ViewToolBar", "FitSelection"},
    {"ViewToolBar", line},
    {"ViewToolBar", "ViewIsometric"},
    {"ViewToolBar", "ViewFront"},
    {"ViewToolBar", "ViewRight"},
    {"ViewToolBar", "ViewTop"},
    {"ViewToolBar", line},
    {"ViewToolBar", "Perspective"},
    {"ViewToolBar", "Edges"},
    {"ViewToolBar", line},
    {"PartToolBar", "Hide"},
    {"PartToolBar", "Isolate"},
    {"PartToolBar", "ShowAll"},
    {"PartToolBar", line},
    {"RenderToolBar", "EasyRender"},
    {"RenderToolBar", "EasyRenderOptions"},
};

QorCmdContainer* findMenu(const QorCmdContainer& bar, std::string_view name) {
    for (const auto& entry : bar.GetEntries())
        if (entry->GetName().Str() == name)
            return static_cast<QorCmdContainer*>(entry.Get());
    return nullptr;
}

/// The menu at \p path below \p bar, made as far as it is missing.
QorCmdContainer* findOrAddMenu(QorCmdContainer& bar, std::string_view path) {
    const std::size_t slash = path.find('/');
    const std::string_view name = path.substr(0, slash);
    QorCmdContainer* menu = findMenu(bar, name);
    if (menu == nullptr) {
        menu = new QorCmdContainer(&bar, std::string(name));
        bar.AddChild(menu);
    }
    return slash == std::string_view::npos ? menu : findOrAddMenu(*menu, path.substr(slash + 1));
}

/// Lines that nothing follows, or that nothing stands before, are left to the host to leave out.
template <std::size_t count>
void fill(QorCmdContainer& bar, const Row (&rows)[count]) {
    for (const Row& row : rows) {
        const bool isLine = std::string_view(row.command) == line;
        if (!isLine && QorCommandHeader::GetHeaderFromList(row.command, 1) == nullptr)
            continue;
        if (isLine && findMenu(bar, std::string_view(row.menu).substr(
                                        0, std::string_view(row.menu).find('/'))) == nullptr)
            continue;
        QorCmdContainer* menu = findOrAddMenu(bar, row.menu);
        if (isLine)
            menu->AddChild(new QorCmdSeparator(menu, line));
        else
            menu->AddChild(new QorCmdStarter(menu, row.command, row.command));
    }
}

} // namespace

void addMenus(QorApplicationFrame& frame) {
    fill(*frame.GetMenuBar(), menuRows);
    fill(*frame.GetToolBars(), toolBarRows);
}

} // namespace qor::app
