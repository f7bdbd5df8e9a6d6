#include "workbench/engine/adapter/ViewerWorld.h"

#include "platform/component/QorExtension.h"
#include "platform/engine/QorIRdgViewerParts.h"
#include "platform/system/QorSettingRepository.h"
#include "platform/vis/QorViewer.h"
#include "quickrender/QorRdgBackgroundViewer.h"

#include <algorithm>

namespace qor::adapter {

namespace {

/// Full angle of a light's disc for one step of the scenes' softness of shadows.
constexpr double degreesPerStep = 2.0;
constexpr int mostSteps = 10;

/// Lists the shown meshes of a tree.
class MeshCollector : public QorRepVisitor3D {
public:
    explicit MeshCollector(std::vector<QorRdgInstance>& instances) : instances_(instances) {}

    void Visit(const Qor3DBagRep& bag) override {
        if (!bag.IsShown())
            return;
        const QorMathTransformation outer = matrix_;
        const bool outerHighlight = highlighted_;
        matrix_ = outer * bag.GetMatrix();
        highlighted_ = highlighted_ || bag.IsHighlighted();
        for (const Qor3DRep_var& child : bag.GetChildren())
            child->Accept(*this);
        matrix_ = outer;
        highlighted_ = outerHighlight;
    }

    void Visit(const Qor3DMeshRep& rep) override {
        if (rep.IsShown())
            instances_.push_back(
                {rep.GetMesh(), rep.GetMaterial(), matrix_, highlighted_ || rep.IsHighlighted()});
    }

    void Visit(const Qor3DLineRep& /*rep*/) override {}

    void Visit(const Qor3DLightSourceRep& /*rep*/) override {}

    void Visit(const QorRsc3DGroundRep& /*rep*/) override {}

private:
    std::vector<QorRdgInstance>& instances_;
    QorMathTransformation matrix_;
    bool highlighted_ = false;
};

/// The scenes' softness of shadows, as the scene manager leaves it in the settings.
double softShadows() {
    const QorVar<QorSettingRepository> settings =
        QorSettingRepository::GetRepository("RenderingOptionsSettings");
    int steps = 0;
    if (!settings || !settings->ReadSetting("SoftShadows", &steps))
        return 0.0;
    return std::clamp(steps, 0, mostSteps) * degreesPerStep;
}

QorRdgCamera cameraOf(const Qor3DViewpoint& viewpoint) {
    return {viewpoint.GetEye(),         viewpoint.GetTarget(),     viewpoint.GetUp(),
            viewpoint.GetFieldOfView(), viewpoint.GetViewHeight(), viewpoint.GetProjection()};
}

void collectLights(const Qor3DViewer& viewer, QorRdgSnapshot& snapshot) {
    Qor3DLightSourceRep* first = nullptr;
    Qor3DLightSourceRep* second = nullptr;
    viewer.GetLightSourceReps(first, second);
    // Copies: whoever moves a light while a render runs does not move the render's.
    for (const Qor3DLightSourceRep* light : {first, second})
        if (light != nullptr && light->IsShown())
            snapshot.lights.push_back(QorMake<Qor3DLightSourceRep>(*light));
    viewer.GetGlobalAmbientLight(snapshot.ambient[0], snapshot.ambient[1], snapshot.ambient[2]);
    snapshot.softShadows = softShadows();
}

void collectBackground(Qor3DViewer& viewer, QorRdgSnapshot& snapshot) {
    const auto background = QorQuery<QorIRdgBackground>(&viewer);
    if (!background)
        return;
    QorString name;
    bool stretch = true;
    const auto* holder = dynamic_cast<QorRdgBackgroundViewer*>(background->GetImplementation());
    if (holder != nullptr && holder->GetPicture() != nullptr &&
        QorSucceeded(background->GetBackground(name, stretch)))
        snapshot.background = QorRdgBackgroundPicture{holder->GetPicture(), stretch};
}

/// The world of a 3D viewer.
class QorRdgWorldViewer : public QorImplements<QorExtension, QorIRdgWorld> {
    QorDeclareClass(QorRdgWorldViewer)

    explicit QorRdgWorldViewer(QorBaseUnknown* extended) : QorImplements(extended) {}

    QorResult Collect(QorRdgSnapshot& snapshot) override {
        auto* viewer = dynamic_cast<Qor3DViewer*>(GetOwner());
        return viewer != nullptr ? collectViewer(*viewer, snapshot) : E_FAIL;
    }

protected:
    ~QorRdgWorldViewer() override = default;
};

QorImplementClass(QorRdgWorldViewer, QorExtension)

} // namespace

QorResult collectViewer(Qor3DViewer& viewer, QorRdgSnapshot& snapshot) {
    const Qor3DViewpoint* viewpoint = viewer.GetMain3DViewpoint();
    if (viewpoint == nullptr)
        return E_FAIL;
    collectViewpoint(viewer, *viewpoint, snapshot);
    collectBackground(viewer, snapshot);
    return S_OK;
}

void collectViewpoint(Qor3DViewer& viewer,
                      const Qor3DViewpoint& viewpoint,
                      QorRdgSnapshot& snapshot) {
    snapshot = {};
    MeshCollector collector(snapshot.instances);
    viewpoint.GetRoot().Accept(collector);
    collectLights(viewer, snapshot);
    snapshot.camera = cameraOf(viewpoint);
    snapshot.vertical = viewer.GetVertical();
    snapshot.backgroundColor = viewer.GetBackgroundColor();
    if (QorRsc3DGroundRep* ground = viewer.GetGround())
        if (ground->IsShown())
            snapshot.ground = QorVar<QorRsc3DGroundRep>(ground);
}

void registerWorldAdapter() {
    QorExtension::Register("Qor3DViewer", QorIRdgWorld::ClassId(),
                           &QorCreateExtension<QorRdgWorldViewer>);
}

} // namespace qor::adapter
