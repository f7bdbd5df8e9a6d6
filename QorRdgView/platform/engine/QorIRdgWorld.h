#pragma once

#include "platform/component/QorHandle.h"
#include "platform/vis/Qor3DReps.h"
#include "platform/vis/QorViewpoint.h"

#include <optional>

/// One shape in its place.
struct QorRdgInstance {
    QorMesh_var mesh;
    QorVar<QorGraphicMaterial> material; ///< null for the engine's own grey
    QorMathTransformation matrix;
    bool highlighted = false; ///< renders show no highlight; pictures of viewers do
};

/// The eye, as Qor3DViewpoint has it.
struct QorRdgCamera {
    QorMathPoint eye;
    QorMathPoint target;
    QorMathVector up;
    double fieldOfView = 30.0; ///< full vertical angle in degrees
    double viewHeight = 0.0;   ///< of a parallel projection, in millimetres
    Qor3DViewpoint::Projection projection = Qor3DViewpoint::Projection::Perspective;
};

struct QorRdgBackgroundPicture {
    QorPixelImage_var image;
    bool stretch = true;
};

/// All that a render needs to know of a scene, as it was at one moment. Meshes and pictures are
/// shared, not copied.
struct QorRdgSnapshot {
    std::vector<QorRdgInstance> instances;
    std::vector<QorVar<Qor3DLightSourceRep>> lights;
    std::array<float, 3> ambient{};
    QorRdgCamera camera;
    QorMathVector vertical{0.0, 0.0, 1.0}; ///< up for the product
    QorColor backgroundColor;
    std::optional<QorColor> backgroundBottom; ///< of a background that changes colour downwards
    std::optional<QorRdgBackgroundPicture> background;
    std::optional<QorVar<QorRsc3DGroundRep>> ground;
    double softShadows = 0.0; ///< full angle of each directional light's disc, in degrees
};

/// What is rendered: the content of a viewer or of a document.
class QorIRdgWorld : public QorInterface {
    QorDeclareInterface(QorIRdgWorld)

    /// Everything as it is now. One step an instance; reads no file. E_FAIL without a camera.
    virtual QorResult Collect(QorRdgSnapshot& oSnapshot) = 0;
};

QorDeclareHandle(QorIRdgWorld);
