#pragma once

#include <optional>
#include <vector>

/// How a widget lies in its grid cell, at its own size unless it fills it: the sides it is held to,
/// added up. Nothing means centred.
enum QorJustification : unsigned {
    QorHoldLeft = 2,
    QorHoldRight = 4,
    QorHoldTop = 8,
    QorHoldBottom = 16,
    QorHoldNatural = 30, ///< all sides: a tool bar's cell
    QorHoldFill = 90,    ///< fills the cell; buttons keep their own size
};

/// A cell of a grid, or several: first row and column, then columns and rows spanned.
struct QorGridCell {
    int row = 0;
    int column = 0;
    int width = 1;
    int height = 1;
    unsigned justification = QorHoldFill;

    bool operator==(const QorGridCell&) const = default;
};

enum class QorOrientation { Horizontal, Vertical };

/// Sides of the father that a widget keeps to in a stack; opposite sides stretch it.
enum QorSides : unsigned {
    QorSideNone = 0,
    QorSideLeft = 1,
    QorSideRight = 2,
    QorSideTop = 4,
    QorSideBottom = 8,
    QorSideAll = 15,
};

/// Where a widget wants to be in its father. With a grid cell it lies in the grid, otherwise in the
/// stack of its father, in the order in which the children were made.
struct QorPlacement {
    std::optional<QorGridCell> cell;
    unsigned sides = QorSideNone;

    bool operator==(const QorPlacement&) const = default;
};

/// How a container lays its children out.
struct QorContainerLayout {
    QorOrientation stack = QorOrientation::Vertical;
    std::vector<int> stretchedRows;    ///< of the grid; none: as the host likes
    std::vector<int> stretchedColumns; ///< of the grid

    bool operator==(const QorContainerLayout&) const = default;
};
