#pragma once

#include <Qt>

class QorDialog;
class QWidget;

namespace qor::desktop {

/// Lays out the controls of the widgets in \p father, which are children of \p inside, from the
/// placements that they hold: those with a cell in a grid, the others in a stack in the order of
/// their making. Controls without their widget stay where they are.
void arrange(const QorDialog& father, QWidget& inside, int margin);

/// Qt's alignment in a grid cell for a justification; 0 means stretched in both directions.
[[nodiscard]] Qt::Alignment alignmentOf(unsigned justification);

} // namespace qor::desktop
