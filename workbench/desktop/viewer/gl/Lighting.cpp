#include "workbench/desktop/viewer/gl/Lighting.h"

#include "platform/vis/QorViewer.h"
#include "workbench/desktop/viewer/gl/GlProgram.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace qor::desktop {

namespace {

float brightness(const Float3& color) {
    return (color[0] + color[1] + color[2]) / 3.0F;
}

/// Cosines where a spot has ended and where it begins to.
Float2 coneOf(const Qor3DLightSourceRep& rep) {
    constexpr Float2 everywhere{-3.0F, -2.0F};
    if (rep.GetType() != QorLightType::Spot)
        return everywhere;
    constexpr double softPart = 0.15;
    const double half = 0.5 * static_cast<double>(rep.GetAngle()) * std::numbers::pi / 180.0;
    return {static_cast<float>(std::cos(half)),
            static_cast<float>(std::cos(half * (1.0 - softPart)) + 1.0e-4)};
}

std::string element(const char* array, std::size_t index) {
    return std::string(array) + "[" + std::to_string(index) + "]";
}

void append(std::vector<double>& description, const QorMathVector& vector) {
    description.insert(description.end(), {vector.x, vector.y, vector.z});
}

void append(std::vector<double>& description, const Float3& values) {
    for (const float value : values)
        description.push_back(static_cast<double>(value));
}

} // namespace

Lighting::Lighting(const Qor3DViewer& viewer, const Qor3DViewpoint& viewpoint) {
    viewer.GetGlobalAmbientLight(ambient_[0], ambient_[1], ambient_[2]);
    const QorMathTransformation eye = viewpoint.GetEyeFrame();
    orient(viewer, eye);
    Qor3DLightSourceRep* first = nullptr;
    Qor3DLightSourceRep* second = nullptr;
    viewer.GetLightSourceReps(first, second);
    add(first, eye);
    shadow_ = first != nullptr && first->IsShown() && lights_.front().far;
    add(second, eye);
    // What is reflected is as bright as the light that there is.
    constexpr float lampPart = 0.55F;
    surroundings_ = brightness(ambient_);
    for (const Light& light : lights_)
        surroundings_ += lampPart * brightness(light.specular);
}

void Lighting::orient(const Qor3DViewer& viewer, const QorMathTransformation& eye) {
    vertical_ = viewer.GetVertical();
    const QorMathVector level = eye.axes[0] - vertical_ * (eye.axes[0] * vertical_);
    aside_ = level.NormalizedOr(QorMathTransformation::FromZTo(vertical_).axes[0]);
    ahead_ = vertical_ ^ aside_;
}

void Lighting::add(const Qor3DLightSourceRep* rep, const QorMathTransformation& eye) {
    if (rep == nullptr || !rep->IsShown())
        return;
    const bool moves = rep->GetMode() == QorLightMode::Viewer;
    Light light;
    light.far = rep->GetType() == QorLightType::Directional;
    light.position = moves ? eye.Apply(rep->GetPosition()) : rep->GetPosition();
    light.direction = (moves ? eye.ApplyToVector(rep->GetDirection()) : rep->GetDirection())
                          .NormalizedOr({0.0, 0.0, -1.0});
    light.cone = coneOf(*rep);
    float ambient[4];
    float diffuse[4];
    float specular[4];
    rep->GetColorParameters(ambient, diffuse, specular);
    std::copy_n(diffuse, 3, light.diffuse.begin());
    std::copy_n(specular, 3, light.specular.begin());
    for (std::size_t i = 0; i < 3; ++i)
        ambient_[i] += ambient[i];
    lights_.push_back(light);
}

void Lighting::apply(GlProgram& program, const QorMathPoint& origin) const {
    program.set("lightCount", static_cast<int>(lights_.size()));
    for (std::size_t i = 0; i < lights_.size(); ++i) {
        const Light& light = lights_[i];
        const Float3 place =
            light.far ? toFloats(-light.direction) : toFloats(light.position - origin);
        program.set(element("lightPosition", i).c_str(),
                    Float4{place[0], place[1], place[2], light.far ? 0.0F : 1.0F});
        program.set(element("lightDirection", i).c_str(), toFloats(light.direction));
        program.set(element("lightCone", i).c_str(), light.cone);
        program.set(element("lightDiffuse", i).c_str(), light.diffuse);
        program.set(element("lightSpecular", i).c_str(), light.specular);
    }
    program.set("ambient", ambient_);
    program.set("surroundings", surroundings_);
    program.set("vertical", toFloats(vertical_));
    program.set("ahead", toFloats(ahead_));
    program.set("aside", toFloats(aside_));
}

void Lighting::describe(std::vector<double>& description) const {
    description.push_back(static_cast<double>(lights_.size()));
    for (const Light& light : lights_) {
        description.push_back(light.far ? 1.0 : 0.0);
        append(description, light.position);
        append(description, light.direction);
        append(description, Float3{light.cone[0], light.cone[1], 0.0F});
        append(description, light.diffuse);
        append(description, light.specular);
    }
    append(description, ambient_);
    append(description, vertical_);
}

} // namespace qor::desktop
