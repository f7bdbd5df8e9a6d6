#pragma once

#include "platform/vis/QorMesh.h"

/// Bodies of the scene preview, about the Z axis.
class QorRdgSceneMeshes {
public:
    /// A sphere about the origin, \p iSubdivisions round and half as many from pole to pole.
    [[nodiscard]] static QorMesh_var MakeSphere(double iRadius, int iSubdivisions);
    /// A cone's side and base from \p iBottom to its tip at \p iTop, or, with \p iTopRadius, a
    /// frustum or cylinder with both ends closed.
    [[nodiscard]] static QorMesh_var
    MakeCone(double iBottom, double iTop, double iBottomRadius, double iTopRadius, int iFacets);
};
