#include "workbench/engine/adapter/OptionsTranslation.h"

#include <algorithm>

namespace qor::adapter {

namespace {

/// What a status query answers; \p otherwise when it fails.
bool isOn(QorIRdgOptions& options, QorResult (QorIRdgOptions::*query)(int&), bool otherwise) {
    int on = 0;
    return QorSucceeded((options.*query)(on)) ? on != 0 : otherwise;
}

void applyDepth(QorIRdgOptions& from, engine::TraceDepth& to) {
    int reflections = 0;
    int refractions = 0;
    int total = 0;
    if (QorSucceeded(from.GetTraceDepth(reflections, refractions, total))) {
        to.reflections = std::max(reflections, 0);
        to.refractions = std::max(refractions, 0);
        to.total = std::max(total, 0);
    }
    if (!isOn(from, &QorIRdgOptions::GetGlobalIlluminationStatus, false))
        return;
    if (QorSucceeded(from.GetPhotonsDepth(reflections, refractions, total)))
        to.diffuseBounces = std::max(total, 0);
}

void applySamples(QorIRdgOptions& from, engine::Samples& to) {
    int minimum = 0;
    int maximum = 0;
    float contrast = 0.0F;
    if (!QorSucceeded(from.GetSamples(minimum, maximum, contrast)))
        return;
    to.minimum = std::max(minimum, 1);
    to.maximum = std::max(maximum, to.minimum);
    to.contrast = std::clamp(contrast, 0.0F, 1.0F);
}

void applyFinalGather(QorIRdgOptions& from, engine::FinalGather& to) {
    constexpr int mostRays = 1000000;
    to.on = isOn(from, &QorIRdgOptions::GetFinalGatherStatus, to.on);
    int rays = 0;
    double radius = 0.0;
    if (!QorSucceeded(from.GetFinalGatherParameters(rays, radius)))
        return;
    to.rays = std::clamp(rays, 1, mostRays);
    to.maxRadius = radius > 0.0 ? static_cast<float>(radius) : 0.0F;
}

} // namespace

void applyOptions(QorIRdgOptions& from, engine::RenderOptions& to) {
    to.raytracing = isOn(from, &QorIRdgOptions::GetRaytracingStatus, to.raytracing);
    to.textures = isOn(from, &QorIRdgOptions::GetTexturesStatus, to.textures);
    to.shadows = isOn(from, &QorIRdgOptions::GetShadowsStatus, to.shadows);
    to.caustics = isOn(from, &QorIRdgOptions::GetCausticStatus, to.caustics);
    applyDepth(from, to.depth);
    applySamples(from, to.samples);
    applyFinalGather(from, to.finalGather);
    double ambient = 1.0;
    if (QorSucceeded(from.GetAmbientFactor(ambient)))
        to.ambientFactor = static_cast<float>(std::clamp(ambient, 0.0, 1.0));
}

engine::RenderOptions translateOptions(const QorRdgRequest& request) {
    engine::RenderOptions options;
    if (request.options != nullptr)
        applyOptions(*request.options, options);
    options.width = request.width;
    options.height = request.height;
    if (const auto& region = request.region)
        options.region = engine::Region{region->x1, region->y1, region->Width(), region->Height()};
    options.progressive = request.interactive;
    options.brightestIndirect = calmBrightness;
    return options;
}

} // namespace qor::adapter
