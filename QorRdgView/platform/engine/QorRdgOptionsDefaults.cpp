#include "platform/engine/QorRdgOptionsDefaults.h"

#include "platform/system/QorSettingRepository.h"

#include <algorithm>
#include <array>

QorImplementClass(QorRdgOptionsDefaults, QorBaseUnknown)
QorImplementClass(QorRdgEasyOptionsDefaults, QorRdgOptionsDefaults)
QorImplementClass(QorRdgPreviewOptionsDefaults, QorRdgOptionsDefaults)

namespace {

constexpr int mostPhotons = 10000;
constexpr int photonDepth = 5;

QorResult Answer(int& oValue, bool iOn) {
    oValue = iOn ? 1 : 0;
    return S_OK;
}

/// An integer of the quick render's settings.
int ReadSetting(const char* iKey, int iDefault) {
    const QorVar<QorSettingRepository> settings =
        QorSettingRepository::GetRepository("RenderingOptionsSettings");
    int value = iDefault;
    return settings && settings->ReadSetting(iKey, &value) ? value : iDefault;
}

} // namespace

const QorRdgOptionsDefaults::Quality& QorRdgOptionsDefaults::QualityOf(int iLevel) {
    static constexpr std::array<Quality, 3> levels{{
        {.raytracing = true,
         .reflections = 1,
         .refractions = 2,
         .depth = 3,
         .minimumSamples = 1,
         .maximumSamples = 16,
         .contrast = 0.038F,
         .gatherRays = 64},
        {.raytracing = true,
         .reflections = 4,
         .refractions = 6,
         .depth = 8,
         .minimumSamples = 4,
         .maximumSamples = 64,
         .contrast = 0.0125F,
         .gatherRays = 256},
        {.raytracing = true,
         .reflections = 8,
         .refractions = 12,
         .depth = 16,
         .minimumSamples = 16,
         .maximumSamples = 512,
         .contrast = 0.01F,
         .gatherRays = 1024},
    }};
    return levels[static_cast<std::size_t>(std::clamp(iLevel, 0, 2))];
}

QorResult QorRdgOptionsDefaults::GetRaytracingStatus(int& oOn) {
    return Answer(oOn, GetQuality().raytracing);
}

QorResult QorRdgOptionsDefaults::GetTraceDepth(int& oReflections, int& oRefractions, int& oTotal) {
    const Quality& quality = GetQuality();
    oReflections = quality.reflections;
    oRefractions = quality.refractions;
    oTotal = quality.depth;
    return S_OK;
}

QorResult QorRdgOptionsDefaults::GetTexturesStatus(int& oOn) {
    return Answer(oOn, true);
}

QorResult QorRdgOptionsDefaults::GetShadowsStatus(int& oOn) {
    return Answer(oOn, true);
}

QorResult QorRdgOptionsDefaults::GetSamples(int& oMinimum, int& oMaximum, float& oContrast) {
    const Quality& quality = GetQuality();
    oMinimum = quality.minimumSamples;
    oMaximum = quality.maximumSamples;
    oContrast = quality.contrast;
    return S_OK;
}

QorResult QorRdgOptionsDefaults::GetFinalGatherStatus(int& oOn) {
    return Answer(oOn, IsFinalGatherOn());
}

QorResult QorRdgOptionsDefaults::GetFinalGatherParameters(int& oRays, double& oMaximumRadius) {
    oRays = GetQuality().gatherRays;
    oMaximumRadius = 0.0;
    return S_OK;
}

QorResult QorRdgOptionsDefaults::GetGlobalIlluminationStatus(int& oOn) {
    return Answer(oOn, false);
}

QorResult QorRdgOptionsDefaults::GetGlobalIlluminationParameters(int& oPhotons, double& oRadius) {
    oPhotons = mostPhotons;
    oRadius = 0.0;
    return S_OK;
}

QorResult QorRdgOptionsDefaults::GetCausticStatus(int& oOn) {
    return Answer(oOn, false);
}

QorResult QorRdgOptionsDefaults::GetCausticParameters(int& oPhotons, double& oRadius) {
    return GetGlobalIlluminationParameters(oPhotons, oRadius);
}

QorResult
QorRdgOptionsDefaults::GetPhotonsDepth(int& oReflections, int& oRefractions, int& oTotal) {
    oReflections = oRefractions = oTotal = photonDepth;
    return S_OK;
}

QorResult QorRdgOptionsDefaults::GetLightMapStatus(int& oOn) {
    return Answer(oOn, false);
}

QorResult QorRdgOptionsDefaults::GetAmbientFactor(double& oFactor) {
    oFactor = 1.0;
    return S_OK;
}

QorResult QorRdgOptionsDefaults::GetBackground(QorString& /*oImage*/, int& /*oStretch*/) {
    return E_FAIL;
}

QorResult QorRdgOptionsDefaults::GetDepthOfFieldStatus(int& oOn) {
    return Answer(oOn, false);
}

QorResult QorRdgOptionsDefaults::GetDepthOfField(double& oFocus, double& oNear, double& oFar) {
    oFocus = oNear = oFar = 0.0;
    return S_OK;
}

QorResult QorRdgOptionsDefaults::GetGlowStatus(int& oOn) {
    return Answer(oOn, false);
}

QorResult
QorRdgOptionsDefaults::GetGlowParameters(double& oIntensity, double& oThreshold, double& oSize) {
    oIntensity = oThreshold = oSize = 0.0;
    return S_OK;
}

QorResult QorRdgOptionsDefaults::GetCartoonStatus(int& oOn) {
    return Answer(oOn, false);
}

QorResult QorRdgOptionsDefaults::GetCartoonParameters(float oColor[3], double& oThickness) {
    std::fill_n(oColor, 3, 0.0F);
    oThickness = 1.0;
    return S_OK;
}

const QorRdgOptionsDefaults::Quality& QorRdgEasyOptionsDefaults::GetQuality() const {
    return QualityOf(ReadSetting("Quality", 1));
}

bool QorRdgEasyOptionsDefaults::IsFinalGatherOn() const {
    return ReadSetting("FinalGather", 1) != 0;
}
