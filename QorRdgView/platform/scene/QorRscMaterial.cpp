#include "platform/scene/QorRscMaterial.h"

#include <algorithm>
#include <array>

QorImplementClass(QorRscMaterial, QorRscObject)

namespace {

QorRscColor ToColor(const float* iColor) {
    return {QorWidened(iColor[0]), QorWidened(iColor[1]), QorWidened(iColor[2])};
}

/// In the order of QorAlphaMode.
constexpr std::array alphaModes{"opaque", "mask", "blend"};

} // namespace

const QorRscKind& QorRscMaterial::Kind() {
    using Self = QorRscMaterial;
    static const auto* kind =
        new QorRscKind{"material", "Material", false, &QorCreateObject<Self>,
                       QorAttributeTable{QorRscMaterialAttributes(QorPairRow)}};
    return *kind;
}

QorRscMaterial::QorRscMaterial() : material(QorMake<QorGraphicMaterial>()) {}

QorRscMaterial::QorRscMaterial(QorGraphicMaterial* iMaterial) : material(iMaterial) {
    SetAlias(material->name.Str());
}

template <class T>
QorResult QorRscMaterial::PutInMaterial(const char* iName, T& ioMember, const T& iValue) {
    if (!Takes(iName, QorAttributeTraits<T>::ToValue(iValue)))
        return E_FAIL;
    if (ioMember == iValue)
        return S_OK;
    ioMember = iValue;
    material->MarkModified();
    Changed();
    return S_OK;
}

QorResult QorRscMaterial::PutColor(const char* iName, float* ioColor, const QorRscColor& iValue) {
    std::array<float, 3> present{ioColor[0], ioColor[1], ioColor[2]};
    if (!Takes(iName, iValue))
        return E_FAIL;
    const std::array<float, 3> color{static_cast<float>(iValue.red),
                                     static_cast<float>(iValue.green),
                                     static_cast<float>(iValue.blue)};
    if (present == color)
        return S_OK;
    std::ranges::copy(color, ioColor);
    material->MarkModified();
    Changed();
    return S_OK;
}

#define QorMaterialNumber(Type, Name, member)                                                      \
    Type QorRscMaterial::Get##Name() const {                                                       \
        return material->member;                                                                   \
    }                                                                                              \
    QorResult QorRscMaterial::Set##Name(Type i##Name) {                                            \
        return PutInMaterial(#Name, material->member, i##Name);                                    \
    }

#define QorMaterialColor(Name, member)                                                             \
    QorRscColor QorRscMaterial::Get##Name() const {                                                \
        return ToColor(material->member);                                                          \
    }                                                                                              \
    QorResult QorRscMaterial::Set##Name(const QorRscColor& i##Name) {                              \
        return PutColor(#Name, material->member, i##Name);                                         \
    }

QorMaterialColor(BaseColor, baseColor) QorMaterialNumber(float, Opacity, baseColor[3])
    QorMaterialNumber(float, Metallic, metallic) QorMaterialNumber(float, Roughness, roughness)
        QorMaterialNumber(float, Transmission, transmission) QorMaterialNumber(float,
                                                                               IndexOfRefraction,
                                                                               ior)
            QorMaterialColor(Emission, emission) QorMaterialNumber(float, NormalScale, normalScale)
                QorMaterialNumber(float,
                                  OcclusionStrength,
                                  occlusionStrength) QorMaterialNumber(float, Clearcoat, clearcoat)
                    QorMaterialNumber(float, ClearcoatRoughness, clearcoatRoughness)
                        QorMaterialNumber(float, ClearcoatNormalScale, clearcoatNormalScale)
                            QorMaterialNumber(float, Thickness, thickness)
                                QorMaterialNumber(float, AttenuationDistance, attenuationDistance)
                                    QorMaterialColor(AttenuationColor, attenuationColor)
                                        QorMaterialNumber(float, AlphaCutoff, alphaCutoff)
                                            QorMaterialNumber(bool, DoubleSided, doubleSided)
                                                QorMaterialNumber(bool, Unlit, unlit)

                                                    QorUnicodeString
    QorRscMaterial::GetAlphaMode() const {
    return alphaModes.at(static_cast<std::size_t>(material->alphaMode));
}

QorResult QorRscMaterial::SetAlphaMode(const QorUnicodeString& iAlphaMode) {
    if (!Takes("AlphaMode", iAlphaMode))
        return E_FAIL;
    const auto* mode =
        std::ranges::find_if(alphaModes, [&](const char* iName) { return iAlphaMode == iName; });
    const auto wanted = static_cast<QorAlphaMode>(mode - alphaModes.begin());
    if (wanted == material->alphaMode)
        return S_OK;
    material->alphaMode = wanted;
    material->MarkModified();
    Changed();
    return S_OK;
}
