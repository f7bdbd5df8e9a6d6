#pragma once

#include "platform/scene/QorAttributePairs.h"

/// Lengths in millimetres, angles in degrees. Intensity times Color is, of a directional light, the
/// irradiance of a surface that faces it; of the others the power a steradian for distances in
/// metres. Direction is the way the light goes. Range 0: unlimited. Angle: full angle of a
/// directional light's disc, 0 for hard shadows. InnerAngle and OuterAngle: the full openings of a
/// spot, between which it fades.
#define QorRscLightAttributes(One)                                                                 \
    One(QorUnicodeString, Type, "directional", OneOf({"directional", "point", "spot"}))            \
        One(QorMathPoint, Position, (QorMathPoint{0.0, 0.0, 1000.0}), Any())                       \
            One(QorMathVector, Direction, (QorMathVector{0.0, 0.0, -1.0}), Any())                  \
                One(QorRscColor, Color, (QorRscColor{1.0, 1.0, 1.0}), Between(0.0, 1.0))           \
                    One(double, Intensity, 1.0, AtLeast(0.0))                                      \
                        One(double, Range, 0.0, AtLeast(0.0))                                      \
                            One(double, Angle, 0.0, Between(0.0, 180.0))                           \
                                One(double, InnerAngle, 0.0, Between(0.0, 360.0))                  \
                                    One(double, OuterAngle, 90.0, Between(0.0, 360.0))             \
                                        One(bool, ShadowsStatus, true, Any())

/// A light of the document.
class QorIRscLight : public QorInterface {
    QorDeclareInterface(QorIRscLight)
    QorRscLightAttributes(QorDeclarePair)

        /// Whether it lights what is shown and what shootings are made of by default.
        [[nodiscard]] virtual bool IsActive() const = 0;
    virtual QorResult SetActive(bool iActive) = 0;
};

QorDeclareHandle(QorIRscLight);
