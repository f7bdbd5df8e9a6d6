#pragma once

#include "platform/scene/QorAttributePairs.h"
#include "platform/vis/QorView.h"

/// Points in millimetres; FieldOfView is the full vertical angle in degrees, of a parallel
/// projection what a perspective one would show at the target.
#define QorRscCameraAttributes(One)                                                                \
    One(QorMathPoint, Eye, (QorMathPoint{1000.0, -1000.0, 800.0}), Any())                          \
        One(QorMathPoint, Target, QorMathPoint(), Any())                                           \
            One(QorMathVector, Up, (QorMathVector{0.0, 0.0, 1.0}), Any())                          \
                One(double, FieldOfView, 30.0, Between(1.0, 170.0))                                \
                    One(QorUnicodeString, Projection, "perspective",                               \
                        OneOf({"perspective", "parallel"}))

/// A camera of the document.
class QorIRscCamera : public QorInterface {
    QorDeclareInterface(QorIRscCamera)
    QorRscCameraAttributes(QorDeclarePair)

        /// The alias.
        [[nodiscard]] virtual QorUnicodeString GetName() const = 0;
    /// All attributes at once, as viewers have them.
    [[nodiscard]] virtual QorView GetView() const = 0;
    virtual QorResult SetView(const QorView& iView) = 0;
};

QorDeclareHandle(QorIRscCamera);
