#pragma once

#include "platform/component/QorHandle.h"
#include "platform/text/QorString.h"

/// What a render engine asks before it renders. Lengths in millimetres, angles in degrees. Status:
/// 0 off, else on.
class QorIRdgOptions : public QorInterface {
    QorDeclareInterface(QorIRdgOptions)

    /// Off: first hits and shadows only, no reflection and no refraction.
    virtual QorResult GetRaytracingStatus(int& oOn) = 0;
    /// Most reflections and refractions along one path, and of both together.
    virtual QorResult GetTraceDepth(int& oReflections, int& oRefractions, int& oTotal) = 0;
    virtual QorResult GetTexturesStatus(int& oOn) = 0;
    virtual QorResult GetShadowsStatus(int& oOn) = 0;
    /// Adaptive antialiasing: samples a pixel at least and at most, and the contrast (0..1) above
    /// which it goes on.
    virtual QorResult GetSamples(int& oMinimum, int& oMaximum, float& oContrast) = 0;
    virtual QorResult GetFinalGatherStatus(int& oOn) = 0;
    /// Rays of one gathering, and how far apart gatherings may lie to be mixed; a radius of 0
    /// leaves it to the engine.
    virtual QorResult GetFinalGatherParameters(int& oRays, double& oMaximumRadius) = 0;
    virtual QorResult GetGlobalIlluminationStatus(int& oOn) = 0;
    virtual QorResult GetGlobalIlluminationParameters(int& oPhotons, double& oRadius) = 0;
    virtual QorResult GetCausticStatus(int& oOn) = 0;
    virtual QorResult GetCausticParameters(int& oPhotons, double& oRadius) = 0;
    /// Most reflections and refractions of one photon, and of both together.
    virtual QorResult GetPhotonsDepth(int& oReflections, int& oRefractions, int& oTotal) = 0;
    virtual QorResult GetLightMapStatus(int& oOn) = 0;
    /// Factor of the constant ambient light, 0..1.
    virtual QorResult GetAmbientFactor(double& oFactor) = 0;
    /// A picture of the options' own behind the product; E_FAIL for the world's.
    virtual QorResult GetBackground(QorString& oImage, int& oStretch) = 0;
    virtual QorResult GetDepthOfFieldStatus(int& oOn) = 0;
    /// Distance in focus, and nearest and farthest that still look sharp.
    virtual QorResult GetDepthOfField(double& oFocus, double& oNear, double& oFar) = 0;
    virtual QorResult GetGlowStatus(int& oOn) = 0;
    virtual QorResult GetGlowParameters(double& oIntensity, double& oThreshold, double& oSize) = 0;
    virtual QorResult GetCartoonStatus(int& oOn) = 0;
    /// Colour of the outlines (0..1) and their thickness in pixels.
    virtual QorResult GetCartoonParameters(float oColor[3], double& oThickness) = 0;
};

QorDeclareHandle(QorIRdgOptions);
