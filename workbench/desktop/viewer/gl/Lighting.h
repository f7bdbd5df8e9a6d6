#pragma once

#include "workbench/desktop/viewer/gl/Camera.h"

#include <vector>

class Qor3DViewer;
class Qor3DViewpoint;
class Qor3DLightSourceRep;

namespace qor::desktop {

class GlProgram;

/// The viewer's lights, ambient and surroundings for one viewpoint, as shaders/lighting.glsl takes
/// them.
class Lighting {
public:
    Lighting(const Qor3DViewer& viewer, const Qor3DViewpoint& viewpoint);

    /// Sets \p program, which is in use. Places are relative to \p origin.
    void apply(GlProgram& program, const QorMathPoint& origin) const;

    /// The way the first light goes, of length 1, if it is one that throws a shadow on the ground:
    /// one from far away.
    [[nodiscard]] bool hasShadow() const { return shadow_; }

    [[nodiscard]] const QorMathVector& shadowDirection() const { return lights_[0].direction; }

    /// All that it consists of, for telling whether it has changed.
    void describe(std::vector<double>& description) const;

private:
    struct Light {
        bool far = true;
        QorMathPoint position;
        QorMathVector direction;
        Float2 cone{};
        Float3 diffuse{};
        Float3 specular{};
    };

    void add(const Qor3DLightSourceRep* rep, const QorMathTransformation& eye);
    void orient(const Qor3DViewer& viewer, const QorMathTransformation& eye);

    std::vector<Light> lights_;
    Float3 ambient_{};
    float surroundings_ = 0.0F;
    QorMathVector vertical_;
    QorMathVector ahead_;
    QorMathVector aside_;
    bool shadow_ = false;
};

} // namespace qor::desktop
