#pragma once

#include "platform/vis/QorViewpoint.h"

/// A camera as a value: what of a 3D viewpoint a person changes.
struct QorView {
    QorMathPoint eye;
    QorMathPoint target;
    QorMathVector up;
    double fieldOfView = 30.0; ///< full vertical angle, degrees
    Qor3DViewpoint::Projection projection = Qor3DViewpoint::Projection::Perspective;

    bool operator==(const QorView&) const = default;

    [[nodiscard]] static QorView Of(const Qor3DViewpoint& iViewpoint);
    /// Makes it the look of \p ioViewpoint, without dispatching.
    void ApplyTo(Qor3DViewpoint& ioViewpoint) const;

    /// From the eye to the target, millimetres.
    [[nodiscard]] double Distance() const { return (target - eye).Norm(); }

    /// Right, true up and back; the origin is the eye.
    [[nodiscard]] QorMathTransformation Frame() const;

    /// Turned about \p iPivot as a turntable: by \p iTurn radians about \p iVertical, then tilted
    /// by \p iTilt about the screen's horizontal, no farther than to looking along the vertical.
    [[nodiscard]] QorView Orbited(const QorMathPoint& iPivot,
                                  const QorMathVector& iVertical,
                                  double iTurn,
                                  double iTilt) const;
    [[nodiscard]] QorView Moved(const QorMathVector& iShift) const;
    /// Nearer to \p iPoint by a factor (below 1) or farther from it (above 1). The point keeps its
    /// pixel. Distances to the target stay within a micrometre and a thousand kilometres.
    [[nodiscard]] QorView Zoomed(const QorMathPoint& iPoint, double iFactor) const;
    /// The same sight, with all of \p iBox in a viewer of proportions \p iRatio (width / height)
    /// and a little room around it. Unchanged for an empty box.
    [[nodiscard]] QorView Fitted(const Qor3DBoundingBox& iBox, double iRatio) const;
    /// The same distance and target, seen along \p iSight, with \p iUp upwards.
    [[nodiscard]] QorView Seen(const QorMathVector& iSight, const QorMathVector& iUp) const;
    /// Between this (0) and \p iOther (1): turned by the shortest way, distances by their ratio.
    [[nodiscard]] QorView Towards(const QorView& iOther, double iPart) const;
};

/// The views that every CAD viewer has. Front looks along +Y with Z up; for another vertical all of
/// them are turned with it by the shortest way.
enum class QorStandardView { Front, Back, Left, Right, Top, Bottom, Isometric };

/// \p iFrom seen from one of them, for a product whose up is \p iVertical.
[[nodiscard]] QorView
QorSeenFrom(QorStandardView iView, const QorMathVector& iVertical, const QorView& iFrom);
