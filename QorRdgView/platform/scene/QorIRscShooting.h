#pragma once

#include "platform/scene/QorIRscCamera.h"
#include "platform/scene/QorIRscEnvironment.h"
#include "platform/scene/QorIRscLight.h"

/// What is seen and where it goes. Camera null: the current viewpoint; Environment null: none.
/// PredefinedRatio: 0 custom, n for line n-1 of the formats. OutputMode: 1 on screen, any other on
/// disk. SingleImageType: number of a picture format; AnimationType: 1 numbered pictures, 2 to 5
/// films.
#define QorRscShootingPictureAttributes(One)                                                       \
    One(QorIRscCamera_var, Camera, nullptr, OfKind({"camera"}))                                    \
        One(QorIRscEnvironment_var, Environment, nullptr, OfKind({"environment"}))                 \
            One(int, Width, 1200, Between(1, 1000000)) One(int, Height, 900, Between(1, 1000000))  \
                One(int, PredefinedSize, 6, Between(0, 11)) One(int, PredefinedRatio, 4, Any())    \
                    One(bool, RatioLock, true, Any()) One(int, OutputMode, 1, Any())               \
                        One(QorUnicodeString, OutputDirectory, DefaultDirectory(), Any())          \
                            One(QorUnicodeString, OutputName, "shooting", Any())                   \
                                One(int, SingleImageType, 10, Between(1, 11))                      \
                                    One(int, AnimationType, 1, Between(1, 5))

/// How it is rendered. Rebounds: reflections and refractions of a path together. MinSamples and
/// MaxSamples are indexes 0..5 (QorRscSamplesPerPixel), Contrast is in percent. PredefinedQuality
/// stands apart, for it sets those three.
#define QorRscShootingQualityAttributes(One)                                                       \
    One(bool, RaytracingStatus, true, Any()) One(int, Reflections, 4, Between(0, 20))              \
        One(int, Refractions, 6, Between(0, 20)) One(int, Rebounds, 10, Between(0, 40))            \
            One(bool, TexturesStatus, true, Any()) One(bool, ShadowsStatus, true, Any())           \
                One(int, MinSamples, 1, Any()) One(int, MaxSamples, 3, Any())                      \
                    One(int, Contrast, 10, Between(0, 100))

/// Indirect light. Accuracies in rays or photons, radii in millimetres (0: up to the engine).
#define QorRscShootingPhotonsAttributes(One)                                                       \
    One(bool, FinalGatherStatus, false, Any()) One(int, FinalGatherAccuracy, 256, AtLeast(1))      \
        One(double, FinalGatherMaxRadius, 0.0, AtLeast(0.0))                                       \
            One(bool, GlobalIlluminationStatus, false, Any())                                      \
                One(int, GlobalIlluminationAccuracy, 10000, AtLeast(1))                            \
                    One(double, GlobalIlluminationRadius, 0.0, AtLeast(0.0))                       \
                        One(bool, CausticStatus, false, Any())                                     \
                            One(int, CausticAccuracy, 10000, AtLeast(1))                           \
                                One(double, CausticRadius, 0.0, AtLeast(0.0))                      \
                                    One(double, AmbientFactor, 1.0, Between(0.0, 1.0))

/// Effects. DepthOfFieldRadius in millimetres. CartoonShading is true when surfaces lose their
/// shading. CartoonThickness stands apart, for its setter takes a double.
#define QorRscShootingEffectsAttributes(One)                                                       \
    One(bool, DepthOfFieldStatus, false, Any()) One(double, DepthOfFieldRadius, 2.0, AtLeast(0.0)) \
        One(bool, GlowStatus, false, Any()) One(float, GlowThreshold, 1.0F, Any())                 \
            One(float, GlowSize, 0.5F, AtLeast(0.0)) One(float, GlowIntensity, 1.0F, AtLeast(0.0)) \
                One(float, GlowExtraParameter1, 0.0F, Any())                                       \
                    One(float, GlowExtraParameter2, 0.0F, Any()) One(int, GlowExtraMode, 0, Any()) \
                        One(float, GlowFlareFactor, 0.0F, AtLeast(0.0))                            \
                            One(float, GlowFlareDiffusion, 0.0F, AtLeast(0.0))                     \
                                One(float, GlowRadialLineSize, 0.0F, AtLeast(0.0))                 \
                                    One(float, GlowStarEffect, 0.0F, AtLeast(0.0))                 \
                                        One(bool, CartoonStatus, false, Any())                     \
                                            One(bool, CartoonShading, false, Any())                \
                                                One(bool, CartoonStroke, true, Any())

/// Time. Frequency in images a second, Duration in seconds, frames from 1. Animation: an
/// experiment, a track, a sequence or null.
#define QorRscShootingTimeAttributes(One)                                                          \
    One(QorReference, Animation, nullptr, OfKind({"experiment", "track", "sequence"}))             \
        One(int, Frequency, 25, AtLeast(1)) One(double, Duration, 1.0, AtLeast(0.0))               \
            One(int, StartFrame, 1, AtLeast(1)) One(int, EndFrame, 26, AtLeast(1))                 \
                One(int, StepFrame, 1, AtLeast(1))

/// A named render set-up of the document.
class QorIRscShooting : public QorInterface {
    QorDeclareInterface(QorIRscShooting)
    QorRscShootingPictureAttributes(QorDeclarePair) QorRscShootingQualityAttributes(QorDeclarePair)
        QorRscShootingPhotonsAttributes(QorDeclarePair)
            QorRscShootingEffectsAttributes(QorDeclarePair)
                QorRscShootingTimeAttributes(QorDeclarePair)

        /// The one that the document renders; setting it makes the document's others not current.
        [[nodiscard]] virtual bool IsCurrent() const = 0;
    virtual QorResult SetCurrent(bool iCurrent) = 0;

    /// Null until lights have been set once; then the list, which may be empty. No reference
    /// added; valid until the next change.
    [[nodiscard]] virtual const QorListOf<QorIRscLight>* GetLights() const = 0;
    virtual QorResult SetLights(const QorListOf<QorIRscLight>& iLights) = 0;

    /// 0: custom; 1..6: levels of antialiasing; 7..12: the same, refined adaptively. A level from 1
    /// to 12 sets the samples and the contrast that belong to it.
    [[nodiscard]] virtual int GetPredefinedQuality() const = 0;
    virtual QorResult SetPredefinedQuality(int iQuality) = 0;

    /// Of the outlines.
    [[nodiscard]] virtual float GetCartoonThickness() const = 0;
    virtual QorResult SetCartoonThickness(const double& iThickness) = 0;
};

QorDeclareHandle(QorIRscShooting);

/// Samples a pixel of a sample index: 1, 4, 16, 64, 256, 1024. Other indexes are brought to the
/// nearest.
[[nodiscard]] int QorRscSamplesPerPixel(int iIndex);
