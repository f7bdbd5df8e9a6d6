#include "workbench/import/scene/Axes.h"

namespace qor::import {

using document::Transform;
using document::Vector3;

namespace {

Vector3 column(const Transform& m, std::size_t index) {
    return {m[index], m[4 + index], m[8 + index]};
}

void setColumn(Transform& m, std::size_t index, const Vector3& v) {
    for (std::size_t row = 0; row < 3; ++row)
        m[row * 4 + index] = v[row];
}

} // namespace

Transform Axes::transform(const Transform& m) const {
    Transform out = m;
    setColumn(out, 3, point(column(m, 3)));
    if (!yUp)
        return out;
    // The columns of R A R^-1: the new y is the old -z, the new z the old y.
    const Vector3 back = direction(column(m, 2));
    setColumn(out, 0, direction(column(m, 0)));
    setColumn(out, 1, {-back[0], -back[1], -back[2]});
    setColumn(out, 2, direction(column(m, 1)));
    return out;
}

} // namespace qor::import
