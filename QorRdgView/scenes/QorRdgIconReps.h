#pragma once

#include "platform/vis/Qor2DReps.h"

/// What an icon is drawn with, in the coordinates of its cell: y upwards, the box from (0, -94) to
/// (94, 0), the title below it.
class QorRdgIconReps {
public:
    /// Distances between cells.
    static constexpr int cellWidth = 124;
    static constexpr int cellHeight = 134;
    /// From the edges of the grid to the first cell.
    static constexpr int margin = 5;

    /// Where the cell of icon \p i is in a grid of that many columns.
    [[nodiscard]] static QorMathPoint2D CellOrigin(int i, int iColumns);

    /// The icon without its thumbnail: box and title.
    [[nodiscard]] static QorVar<Qor2DBagRep> MakeIcon(const QorUnicodeString& iTitle);
    /// Puts a thumbnail into the middle of the box, as the first child.
    static void AddThumbnail(Qor2DBagRep& ioIcon, QorPixelImage* iThumbnail);
    /// Border and title plate of the selected icon, drawn over it and not picked.
    [[nodiscard]] static QorVar<Qor2DBagRep> MakeHighlight(const QorUnicodeString& iTitle);
};
