#include "platform/vis/QorBoundingBox.h"

#include <algorithm>
#include <cmath>

void Qor3DBoundingBox::Add(const QorMathPoint& iPoint) {
    if (!std::isfinite(iPoint.x) || !std::isfinite(iPoint.y) || !std::isfinite(iPoint.z))
        return;
    low = {std::min(low.x, iPoint.x), std::min(low.y, iPoint.y), std::min(low.z, iPoint.z)};
    high = {std::max(high.x, iPoint.x), std::max(high.y, iPoint.y), std::max(high.z, iPoint.z)};
}

void Qor3DBoundingBox::Add(const Qor3DBoundingBox& iBox) {
    if (iBox.IsEmpty())
        return;
    Add(iBox.low);
    Add(iBox.high);
}

Qor3DBoundingBox Qor3DBoundingBox::Transformed(const QorMathTransformation& iBy) const {
    Qor3DBoundingBox box;
    if (IsEmpty())
        return box;
    for (const double x : {low.x, high.x})
        for (const double y : {low.y, high.y})
            for (const double z : {low.z, high.z})
                box.Add(iBy.Apply({x, y, z}));
    return box;
}

void Qor2DBoundingBox::Add(const QorMathPoint2D& iPoint) {
    if (!std::isfinite(iPoint.x) || !std::isfinite(iPoint.y))
        return;
    low = {std::min(low.x, iPoint.x), std::min(low.y, iPoint.y)};
    high = {std::max(high.x, iPoint.x), std::max(high.y, iPoint.y)};
}

void Qor2DBoundingBox::Add(const Qor2DBoundingBox& iBox) {
    if (iBox.IsEmpty())
        return;
    Add(iBox.low);
    Add(iBox.high);
}
