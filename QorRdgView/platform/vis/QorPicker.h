#pragma once

#include "platform/vis/QorViewpoint.h"

#include <vector>

/// From the outermost representation to the one hit.
using QorPickPath = std::vector<QorVar<QorRep>>;

/// Finds what lies under a point, in the plane and in space.
class QorPicker {
public:
    /// The path from \p iRoot to the last drawn leaf whose box, grown by \p iTolerance, holds \p
    /// iPoint, in the coordinates in which the root lies. Empty when nothing is hit.
    [[nodiscard]] static QorPickPath
    Pick(const Qor2DRep& iRoot, const QorMathPoint2D& iPoint, double iTolerance);

    struct Hit {
        QorPickPath path;
        double distance =
            -1.0; ///< from the ray's origin, in model units; negative when nothing is hit
    };

    /// The nearest surface that \p iRay meets, as long as it is nearer than \p iFarthest.
    [[nodiscard]] static Hit Pick(const Qor3DRep& iRoot, const QorMathRay& iRay, double iFarthest);
};
