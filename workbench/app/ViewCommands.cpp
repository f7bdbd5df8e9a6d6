// The menu "View": the look into the current window's viewer, and the look of the program.
#include "platform/vis/QorNavigation3DViewer.h"
#include "workbench/app/CommandTables.h"
#include "workbench/app/Commands.h"
#include "workbench/app/Session.h"
#include "workbench/session/ProductActions.h"
#include "workbench/session/Settings.h"

namespace qor::app {

namespace {

using Projection = Qor3DViewpoint::Projection;

QorNavigation3DViewer* viewer(const CommandContext& context) {
    return context.session != nullptr ? context.session->viewer() : nullptr;
}

bool hasViewer(const CommandContext& context) {
    return viewer(context) != nullptr;
}

bool hasSelection(const CommandContext& context) {
    return hasViewer(context) && session::ProductActions(context.session->editor()).hasSelection();
}

void fitAll(const CommandContext& context) {
    viewer(context)->FitAll();
}

void fitSelection(const CommandContext& context) {
    QorNavigation3DViewer& into = *viewer(context);
    const Qor3DBoundingBox box = session::ProductActions(context.session->editor()).selectionBox();
    if (!box.IsEmpty())
        into.ChangeView(
            into.GetView().Fitted(box, static_cast<double>(into.GetSupport()->GetRatioWH())));
}

template <QorStandardView view>
void lookFrom(const CommandContext& context) {
    viewer(context)->ShowStandardView(view);
}

bool isPerspective(const CommandContext& context) {
    return hasViewer(context) && viewer(context)->GetView().projection == Projection::Perspective;
}

void switchProjection(const CommandContext& context) {
    viewer(context)->ShowProjection(isPerspective(context) ? Projection::Parallel
                                                           : Projection::Perspective);
}

bool isTreeShown(const CommandContext& context) {
    return hasViewer(context) && viewer(context)->IsTreeDisplayed();
}

void switchTree(const CommandContext& context) {
    viewer(context)->SetTreeDisplay(!isTreeShown(context));
}

bool areEdgesShown(const CommandContext& context) {
    return hasViewer(context) && viewer(context)->AreEdgesShown();
}

void switchEdges(const CommandContext& context) {
    viewer(context)->SetEdgesShown(!areEdgesShown(context));
}

constexpr const char* themeKey = "Theme";
constexpr const char systemTheme[] = "system";
constexpr const char lightTheme[] = "light";
constexpr const char darkTheme[] = "dark";

template <const char* theme>
void choose(const CommandContext& context) {
    session::keepSetting(themeKey, theme);
    if (context.chooseTheme)
        context.chooseTheme(theme);
}

template <const char* theme>
bool isChosen(const CommandContext& /*context*/) {
    return session::setting(themeKey, systemTheme) == theme;
}

constexpr ActionRow rows[] = {
    {"FitAll", fitAll, hasViewer},
    {"FitSelection", fitSelection, hasSelection},
    {"ViewIsometric", lookFrom<QorStandardView::Isometric>, hasViewer},
    {"ViewFront", lookFrom<QorStandardView::Front>, hasViewer},
    {"ViewBack", lookFrom<QorStandardView::Back>, hasViewer},
    {"ViewLeft", lookFrom<QorStandardView::Left>, hasViewer},
    {"ViewRight", lookFrom<QorStandardView::Right>, hasViewer},
    {"ViewTop", lookFrom<QorStandardView::Top>, hasViewer},
    {"ViewBottom", lookFrom<QorStandardView::Bottom>, hasViewer},
    {"Perspective", switchProjection, hasViewer, isPerspective},
    {"Edges", switchEdges, hasViewer, areEdgesShown},
    {"ProductTree", switchTree, hasViewer, isTreeShown},
    {"ThemeSystem", choose<systemTheme>, nullptr, isChosen<systemTheme>},
    {"ThemeLight", choose<lightTheme>, nullptr, isChosen<lightTheme>},
    {"ThemeDark", choose<darkTheme>, nullptr, isChosen<darkTheme>},
};

} // namespace

std::span<const ActionRow> viewCommands() {
    return rows;
}

} // namespace qor::app
