#include "platform/scene/QorRscShooting.h"

#include "platform/scene/QorRscContainer.h"
#include "platform/system/QorEnvironment.h"

#include <algorithm>
#include <array>

QorImplementClass(QorRscShooting, QorRscObject)

namespace {

/// What a level of antialiasing sets.
struct Quality {
    int minSamples;
    int maxSamples;
    int contrast;
};

constexpr std::array<Quality, 12> qualities{{
    {0, 0, 20},
    {1, 1, 20},
    {2, 2, 15},
    {3, 3, 10},
    {4, 4, 10},
    {5, 5, 5},
    {0, 1, 20},
    {0, 2, 20},
    {1, 2, 15},
    {1, 3, 10},
    {2, 4, 10},
    {3, 5, 5},
}};

} // namespace

int QorRscSamplesPerPixel(int iIndex) {
    return 1 << (2 * std::clamp(iIndex, 0, 5));
}

const QorRscKind& QorRscShooting::Kind() {
    using Self = QorRscShooting;
    static const auto* kind = new QorRscKind{
        "shooting", "Shooting", true, &QorCreateObject<Self>,
        QorAttributeTable{
            QorMakeAttribute<&Self::IsCurrent, &Self::SetCurrent>(
                "Current", QorAttributeRule::Any(), "IsCurrent"),
            QorMakeAttribute<&Self::GetLightsOrNone, &Self::SetLightsOrNone>(
                "Lights", QorAttributeRule::OfKind({"light"})),
            QorRscShootingPictureAttributes(QorPairRow)
                QorMakeAttribute<&Self::GetPredefinedQuality, &Self::SetPredefinedQuality>(
                    "PredefinedQuality", QorAttributeRule::Any()),
            QorRscShootingQualityAttributes(QorPairRow) QorRscShootingPhotonsAttributes(QorPairRow)
                QorRscShootingEffectsAttributes(QorPairRow)
                    QorMakeAttribute<&Self::GetCartoonThickness, &Self::SetCartoonThickness>(
                        "CartoonThickness", QorAttributeRule::AtLeast(0.0)),
            QorRscShootingTimeAttributes(QorPairRow)}};
    return *kind;
}

QorUnicodeString QorRscShooting::DefaultDirectory() {
    const auto home = QorGetEnv("HOME");
    return home && !home->IsNull() ? *home : QorUnicodeString(".");
}

QorResult QorRscShooting::SetCurrent(bool iCurrent) {
    if (iCurrent && GetContainer() != nullptr)
        for (const auto& other : GetContainer()->ListShootings())
            if (other.Get() != this)
                other->SetCurrent(false);
    return Put("Current", current, iCurrent);
}

QorListOf<QorIRscLight> QorRscShooting::GetLightsOrNone() const {
    return lights.value_or(QorListOf<QorIRscLight>());
}

QorResult QorRscShooting::SetLightsOrNone(const QorListOf<QorIRscLight>& iLights) {
    return !lights && iLights.Size() == 0 ? S_OK : SetLights(iLights);
}

QorResult QorRscShooting::SetLights(const QorListOf<QorIRscLight>& iLights) {
    if (!Takes("Lights", QorAttributeTraits<QorListOf<QorIRscLight>>::ToValue(iLights)))
        return E_FAIL;
    if (lights == iLights)
        return S_OK;
    lights = iLights;
    Changed();
    return S_OK;
}

QorResult QorRscShooting::SetPredefinedQuality(int iQuality) {
    const QorResult result = Put("PredefinedQuality", predefinedQuality, iQuality);
    if (iQuality < 1 || iQuality > static_cast<int>(qualities.size()))
        return result;
    const Quality& quality = qualities[static_cast<std::size_t>(iQuality) - 1];
    SetMinSamples(quality.minSamples);
    SetMaxSamples(quality.maxSamples);
    SetContrast(quality.contrast);
    return result;
}

QorResult QorRscShooting::SetCartoonThickness(const double& iThickness) {
    return Put("CartoonThickness", cartoonThickness, static_cast<float>(iThickness));
}
