#pragma once

#include "platform/scene/QorAttributePairs.h"
#include "platform/vis/QorGraphicMaterial.h"

/// As QorGraphicMaterial has them; Opacity is the alpha of its base colour.
#define QorRscMaterialAttributes(One)                                                              \
    One(QorRscColor, BaseColor, , Between(0.0, 1.0)) One(float, Opacity, , Between(0.0, 1.0))      \
        One(float, Metallic, , Between(0.0, 1.0)) One(float, Roughness, , Between(0.0, 1.0))       \
            One(float, Transmission, , Between(0.0, 1.0))                                          \
                One(float, IndexOfRefraction, , Between(1.0, 4.0))                                 \
                    One(QorRscColor, Emission, , AtLeast(0.0)) One(float, NormalScale, , Any())    \
                        One(float, OcclusionStrength, , Between(0.0, 1.0)) One(float, Clearcoat, , \
                                                                               Between(0.0, 1.0))  \
                            One(float, ClearcoatRoughness, , Between(0.0, 1.0))                    \
                                One(float, ClearcoatNormalScale, , Any()) One(float, Thickness, ,  \
                                                                              AtLeast(0.0))        \
                                    One(float, AttenuationDistance, , AtLeast(0.0))                \
                                        One(QorRscColor, AttenuationColor, , Between(0.0, 1.0))    \
                                            One(QorUnicodeString, AlphaMode, ,                     \
                                                OneOf({"opaque", "mask", "blend"}))                \
                                                One(float, AlphaCutoff, , Between(0.0, 1.0))       \
                                                    One(bool, DoubleSided, , Any())                \
                                                        One(bool, Unlit, , Any())

/// A material of the document: an object around the QorGraphicMaterial that representations share.
class QorIRscMaterial : public QorInterface {
    QorDeclareInterface(QorIRscMaterial)
    QorRscMaterialAttributes(QorDeclarePair)

        /// Never null, the same one as long as the object lives; no reference added. Textures are
        /// reached through it.
        [[nodiscard]] virtual QorGraphicMaterial* GetGraphicMaterial() const = 0;
};

QorDeclareHandle(QorIRscMaterial);
