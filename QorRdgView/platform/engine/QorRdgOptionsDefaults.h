#pragma once

#include "platform/engine/QorIRdgOptions.h"

/// Options that hold one set of values; the base of the two sets below and the field's usual
/// choices: textures and shadows on, photons, depth of field, glow and cartoon off, the world's own
/// background.
class QorRdgOptionsDefaults : public QorImplements<QorBaseUnknown, QorIRdgOptions> {
    QorDeclareClass(QorRdgOptionsDefaults)

    QorRdgOptionsDefaults() = default;

    QorResult GetRaytracingStatus(int& oOn) override;
    QorResult GetTraceDepth(int& oReflections, int& oRefractions, int& oTotal) override;
    QorResult GetTexturesStatus(int& oOn) override;
    QorResult GetShadowsStatus(int& oOn) override;
    QorResult GetSamples(int& oMinimum, int& oMaximum, float& oContrast) override;
    QorResult GetFinalGatherStatus(int& oOn) override;
    QorResult GetFinalGatherParameters(int& oRays, double& oMaximumRadius) override;
    QorResult GetGlobalIlluminationStatus(int& oOn) override;
    QorResult GetGlobalIlluminationParameters(int& oPhotons, double& oRadius) override;
    QorResult GetCausticStatus(int& oOn) override;
    QorResult GetCausticParameters(int& oPhotons, double& oRadius) override;
    QorResult GetPhotonsDepth(int& oReflections, int& oRefractions, int& oTotal) override;
    QorResult GetLightMapStatus(int& oOn) override;
    QorResult GetAmbientFactor(double& oFactor) override;
    QorResult GetBackground(QorString& oImage, int& oStretch) override;
    QorResult GetDepthOfFieldStatus(int& oOn) override;
    QorResult GetDepthOfField(double& oFocus, double& oNear, double& oFar) override;
    QorResult GetGlowStatus(int& oOn) override;
    QorResult GetGlowParameters(double& oIntensity, double& oThreshold, double& oSize) override;
    QorResult GetCartoonStatus(int& oOn) override;
    QorResult GetCartoonParameters(float oColor[3], double& oThickness) override;

protected:
    ~QorRdgOptionsDefaults() override = default;

    /// What a level of quality means.
    struct Quality {
        bool raytracing;
        int reflections, refractions, depth;
        int minimumSamples, maximumSamples;
        float contrast;
        int gatherRays; ///< of final gathering
    };

    /// Draft (0), standard (1) and high (2); other levels are brought to the nearest.
    [[nodiscard]] static const Quality& QualityOf(int iLevel);

    /// Asked at every query, so that a change shows in the next render.
    [[nodiscard]] virtual const Quality& GetQuality() const { return QualityOf(1); }

    [[nodiscard]] virtual bool IsFinalGatherOn() const { return true; }
};

/// Options of the quick render: quality and final gathering as the settings
/// "RenderingOptionsSettings" have them.
class QorRdgEasyOptionsDefaults : public QorRdgOptionsDefaults {
    QorDeclareClass(QorRdgEasyOptionsDefaults)

    QorRdgEasyOptionsDefaults() = default;

protected:
    ~QorRdgEasyOptionsDefaults() override = default;
    [[nodiscard]] const Quality& GetQuality() const override;
    [[nodiscard]] bool IsFinalGatherOn() const override;
};

/// Options of material previews: standard quality, without final gathering, for a picture at once.
class QorRdgPreviewOptionsDefaults : public QorRdgOptionsDefaults {
    QorDeclareClass(QorRdgPreviewOptionsDefaults)

    QorRdgPreviewOptionsDefaults() = default;

protected:
    ~QorRdgPreviewOptionsDefaults() override = default;

    [[nodiscard]] bool IsFinalGatherOn() const override { return false; }
};
