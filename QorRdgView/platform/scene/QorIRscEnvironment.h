#pragma once

#include "platform/scene/QorAttributePairs.h"

/// Intensity times Color is the radiance of the surroundings, which Image, a picture file of the
/// whole sphere (longitude by latitude), multiplies; none for an even one. Rotation about the
/// vertical in degrees. Visible: whether it is seen behind the product as well as lighting it.
#define QorRscEnvironmentAttributes(One)                                                           \
    One(QorRscColor, Color, (QorRscColor{1.0, 1.0, 1.0}), Between(0.0, 1.0))                       \
        One(double, Intensity, 1.0, AtLeast(0.0)) One(QorUnicodeString, Image, "", Any())          \
            One(double, Rotation, 0.0, Any()) One(bool, Visible, true, Any())

/// Surroundings that light a product.
class QorIRscEnvironment : public QorInterface {
    QorDeclareInterface(QorIRscEnvironment)
    QorRscEnvironmentAttributes(QorDeclarePair)

        [[nodiscard]] virtual bool IsActive() const = 0;
    virtual QorResult SetActive(bool iActive) = 0;
};

QorDeclareHandle(QorIRscEnvironment);
