#include "workbench/engine/adapter/StandardLights.h"

#include "platform/vis/QorViewer.h"

namespace qor::adapter {

namespace {

constexpr float ambient = 0.28F;

struct LightRow {
    QorMathVector direction; ///< in the eye's axes: right, up, back
    float strength;
};

constexpr LightRow lightRows[] = {
    {{0.45, -0.65, -0.65}, 0.62F},
    {{-0.75, 0.10, -0.65}, 0.25F},
};

/// With a reference for the viewer.
Qor3DLightSourceRep* newLight(const LightRow& row) {
    constexpr float none[4] = {0.0F, 0.0F, 0.0F, 1.0F};
    const float color[4] = {row.strength, row.strength, row.strength, 1.0F};
    auto* light = new Qor3DLightSourceRep(QorLightType::Directional, QorLightMode::Viewer, {},
                                          row.direction, 0.0F);
    light->SetColorParameters(none, color, color);
    return light;
}

} // namespace

void lightUp(Qor3DViewer& viewer) {
    viewer.SetGlobalAmbientLight(ambient, ambient, ambient);
    viewer.SetLightSourceReps(newLight(lightRows[0]), newLight(lightRows[1]));
}

} // namespace qor::adapter
