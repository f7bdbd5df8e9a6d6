#include "workbench/desktop/peers/ContainerLayout.h"

#include "platform/dialog/QorDialog.h"
#include "workbench/desktop/peers/ContainerPeer.h"

#include <QGridLayout>

#include <algorithm>

namespace qor::desktop {

namespace {

constexpr int formSpacing = 8;
constexpr int toolSpacing = 4;

int spacingIn(const QorDialog& father) {
    const bool tools = (father.GetStyle() & QorDlgWndToolBar) != 0 || isInToolBar(father);
    return tools ? toolSpacing : formSpacing;
}

bool holds(unsigned sides, unsigned both) {
    return (sides & both) == both;
}

/// Where nothing asks for the room that is left over, it gathers behind the last row and column, so
/// that a form keeps together at the top left.
void gatherRoom(QGridLayout& grid, const std::vector<WidgetPeer*>& peers) {
    const bool wide = std::any_of(peers.begin(), peers.end(),
                                  [](const WidgetPeer* peer) { return peer->wantsWidth(); });
    const bool high = std::any_of(peers.begin(), peers.end(),
                                  [](const WidgetPeer* peer) { return peer->wantsHeight(); });
    if (!wide)
        grid.setColumnStretch(grid.columnCount(), 1);
    if (!high)
        grid.setRowStretch(grid.rowCount(), 1);
}

QGridLayout* makeGrid(const QorDialog& father, const std::vector<WidgetPeer*>& peers) {
    auto* grid = new QGridLayout;
    grid->setSpacing(spacingIn(father));
    for (const WidgetPeer* peer : peers) {
        const QorGridCell& cell = *peer->widget().GetPlacement().cell;
        grid->addWidget(peer->control(), std::max(cell.row, 0), std::max(cell.column, 0),
                        std::max(cell.height, 1), std::max(cell.width, 1),
                        alignmentOf(cell.justification));
    }
    const QorContainerLayout& wishes = father.GetLayout();
    for (const int row : wishes.stretchedRows)
        grid->setRowStretch(row, 1);
    for (const int column : wishes.stretchedColumns)
        grid->setColumnStretch(column, 1);
    if (wishes.stretchedRows.empty() && wishes.stretchedColumns.empty())
        gatherRoom(*grid, peers);
    return grid;
}

/// How a widget lies across its stack: stretched when both sides ask for it, or when none does and
/// the widget likes to be wide.
Qt::Alignment across(const WidgetPeer& peer, bool vertical) {
    const unsigned sides = peer.widget().GetPlacement().sides;
    const unsigned both = vertical ? QorSideLeft | QorSideRight : QorSideTop | QorSideBottom;
    const bool likes = vertical ? peer.wantsWidth() : peer.wantsHeight();
    if (holds(sides, both) || ((sides & both) == 0 && likes))
        return {};
    if (vertical)
        return (sides & QorSideRight) != 0 ? Qt::AlignRight : Qt::AlignLeft;
    if ((sides & both) == 0)
        return Qt::AlignVCenter;
    return (sides & QorSideBottom) != 0 ? Qt::AlignBottom : Qt::AlignTop;
}

bool stretchesAlong(const WidgetPeer& peer, bool vertical) {
    const unsigned sides = peer.widget().GetPlacement().sides;
    if (holds(sides, vertical ? QorSideTop | QorSideBottom : QorSideLeft | QorSideRight))
        return true;
    return sides == QorSideNone && (vertical ? peer.wantsHeight() : peer.wantsWidth());
}

} // namespace

Qt::Alignment alignmentOf(unsigned justification) {
    if (justification == QorHoldFill)
        return {};
    if (justification == QorHoldNatural)
        return Qt::AlignLeft | Qt::AlignVCenter;
    const auto direction = [&](unsigned first, unsigned second, Qt::Alignment atFirst,
                               Qt::Alignment atSecond, Qt::Alignment middle) -> Qt::Alignment {
        if (holds(justification, first | second))
            return {};
        if ((justification & first) != 0)
            return atFirst;
        return (justification & second) != 0 ? atSecond : middle;
    };
    return direction(QorHoldLeft, QorHoldRight, Qt::AlignLeft, Qt::AlignRight, Qt::AlignHCenter) |
           direction(QorHoldTop, QorHoldBottom, Qt::AlignTop, Qt::AlignBottom, Qt::AlignVCenter);
}

void arrange(const QorDialog& father, QWidget& inside, int margin) {
    delete inside.layout();
    std::vector<WidgetPeer*> peers = peersIn(father);
    const auto firstOfStack =
        std::stable_partition(peers.begin(), peers.end(), [](const WidgetPeer* peer) {
            return peer->widget().GetPlacement().cell.has_value();
        });
    const std::vector<WidgetPeer*> inGrid(peers.begin(), firstOfStack);
    const std::vector<WidgetPeer*> inStack(firstOfStack, peers.end());

    const bool vertical = father.GetLayout().stack == QorOrientation::Vertical;
    auto* stack = new QBoxLayout(vertical ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    stack->setContentsMargins(margin, margin, margin, margin);
    stack->setSpacing(spacingIn(father));
    bool stretched = !inGrid.empty();
    if (!inGrid.empty())
        stack->addLayout(makeGrid(father, inGrid));
    for (const WidgetPeer* peer : inStack) {
        const bool along = stretchesAlong(*peer, vertical);
        stack->addWidget(peer->control(), along ? 1 : 0, across(*peer, vertical));
        stretched = stretched || along;
    }
    if (!stretched)
        stack->addStretch(1);
    inside.setLayout(stack);
    if (inside.isVisible()) // Qt does this by itself only when a window is shown or resized
        stack->activate();
}

} // namespace qor::desktop
