#include "scenes/QorRdgScenePreview.h"

#include "scenes/QorRdgSceneMeshes.h"
#include "scenes/QorRdgSceneViewer.h"

#include <algorithm>
#include <utility>

namespace {

constexpr float viewerSide = 180.0F;
constexpr double eyeDistance = 6.0;
constexpr double arrowRadius = 0.05;
constexpr int subdivisions = 32;
constexpr QorColor backdrop{58, 62, 68};

/// The direction of a light for a manipulator, of length 1 and without negative zeros, which a
/// dump would show.
QorMathVector Unit(const QorMathVector& iVector) {
    const QorMathVector unit = iVector.NormalizedOr({1.0, 0.0, 0.0});
    return {unit.x + 0.0, unit.y + 0.0, unit.z + 0.0};
}

QorMathVector VectorOf(const std::array<float, 3>& iValues) {
    return {static_cast<double>(iValues[0]), static_cast<double>(iValues[1]),
            static_cast<double>(iValues[2])};
}

QorVar<Qor3DMeshRep> MakeRep(const QorMesh_var& iMesh, const QorVar<QorGraphicMaterial>& iLook) {
    return QorMake<Qor3DMeshRep>(iMesh.Get(), iLook.Get());
}

/// An arrow has the colour of its light, light enough to be seen.
void Paint(QorGraphicMaterial& ioMaterial, const std::array<float, 3>& iColor) {
    constexpr float least = 0.25F;
    for (std::size_t i = 0; i < iColor.size(); ++i) {
        ioMaterial.baseColor[i] = std::clamp(iColor[i], least, 1.0F);
        ioMaterial.emission[i] = 0.5F * ioMaterial.baseColor[i];
    }
}

} // namespace

QorRdgScenePreview::QorRdgScenePreview(QorCommand* iFrame)
    : frame(iFrame)
    , viewer(new Qor3DViewer(iFrame, "viewer", QorDlgDefaultStyle, viewerSide, viewerSide)) {
    viewer->SetBackgroundColor(backdrop);
    viewer->GetMain3DViewpoint()->SetView({0.0, 0.0, eyeDistance}, {}, {0.0, 1.0, 0.0});
}

QorRdgScenePreview::~QorRdgScenePreview() {
    CleanUp();
}

void QorRdgScenePreview::Build(const QorRdgScene& iScene) {
    for (const int light : {1, 2}) {
        const bool first = light == 1;
        const std::array<float, 3>& direction = first ? iScene.direction1 : iScene.direction2;
        part(light).light = QorAdopt(QorRdgSceneViewer::NewLight(
            first ? iScene.color1 : iScene.color2, direction, iScene.diffuse, iScene.specular));
        BuildArrow(light, direction);
    }
    BuildSphere();
    SetLightCount(iScene.lightCount);
    Update(iScene);
}

void QorRdgScenePreview::BuildSphere() {
    // A grey on which two full lights still show which is where.
    const auto clay = QorMake<QorGraphicMaterial>();
    std::fill_n(clay->baseColor, 3, 0.5F);
    sphere = MakeRep(QorRdgSceneMeshes::MakeSphere(1.0, subdivisions), clay);
    viewer->AddRep(sphere);
    sphereManipulator =
        new Qor3DManipulator(frame, "sphereManipulator", viewer, sphere, QorMathAxis());
}

void QorRdgScenePreview::BuildArrow(int iLight, const std::array<float, 3>& iDirection) {
    constexpr int facets = 8;
    Part& one = part(iLight);
    one.material = QorMake<QorGraphicMaterial>();
    one.bag = QorMake<Qor3DBagRep>();
    one.bag->AddChild(
        MakeRep(QorRdgSceneMeshes::MakeCone(-1.5, -1.01, arrowRadius, arrowRadius, 2 * facets),
                one.material));
    one.bag->AddChild(
        MakeRep(QorRdgSceneMeshes::MakeCone(1.01, 1.25, arrowRadius, 0.0, facets), one.material));
    const QorMathVector direction = Unit(VectorOf(iDirection));
    one.bag->SetMatrix(QorMathTransformation::FromZTo(direction));
    viewer->AddRep(one.bag);
    one.arrow = new Qor3DManipulator(
        frame, "lightManipulator" + std::to_string(iLight), viewer, one.bag,
        QorMathAxis(QorMathTransformation::FromZTo(-direction))); // the axis is against the light
    one.arrow->SetMode(Qor3DManipulator::Mode::OriginRotation);
}

QorMathVector QorRdgScenePreview::DirectionOf(int iLight) const {
    const Qor3DManipulator* arrow = GetManipulator(iLight);
    return arrow != nullptr ? Unit(-arrow->GetPosition().GetThirdDirection())
                            : QorMathVector{1.0, 0.0, 0.0};
}

std::array<float, 3> QorRdgScenePreview::GetDirection(int iLight) const {
    const QorMathVector direction = DirectionOf(iLight);
    return {static_cast<float>(direction.x), static_cast<float>(direction.y),
            static_cast<float>(direction.z)};
}

void QorRdgScenePreview::Update(const QorRdgScene& iScene) {
    if (!sphere)
        return;
    QorRdgSceneViewer::SetColors(*part(1).light, iScene.color1, iScene.diffuse, iScene.specular);
    QorRdgSceneViewer::SetColors(*part(2).light, iScene.color2, iScene.diffuse, iScene.specular);
    Paint(*part(1).material, iScene.color1);
    Paint(*part(2).material, iScene.color2);
    viewer->SetGlobalAmbientLight(iScene.ambient, iScene.ambient, iScene.ambient);
    if (iScene.lightCount != 0)
        InstallLights(iScene.lightCount);
    viewer->Draw();
}

void QorRdgScenePreview::SetLightCount(int iCount) {
    if (!sphere)
        return;
    for (const int light : {1, 2}) {
        part(light).bag->SetShown(light <= iCount);
        part(light).arrow->SetPickable(light <= iCount);
    }
    InstallLights(iCount);
    viewer->Draw();
}

void QorRdgScenePreview::InstallLights(int iCount) {
    const auto copy = [&](int iLight) {
        return iCount >= iLight ? new Qor3DLightSourceRep(*part(iLight).light) : nullptr;
    };
    viewer->SetLightSourceReps(copy(1), copy(2));
}

void QorRdgScenePreview::TurnLight(int iLight, int iLightCount) {
    if (!sphere)
        return;
    const QorMathVector direction = DirectionOf(iLight);
    part(iLight).light->SetLocationParameters({}, direction);
    part(iLight).bag->SetMatrix(QorMathTransformation::FromZTo(direction));
    if (iLightCount != 0)
        InstallLights(iLightCount);
    viewer->Draw();
}

void QorRdgScenePreview::Drop(Qor3DManipulator*& ioManipulator) {
    if (Qor3DManipulator* last = std::exchange(ioManipulator, nullptr)) {
        last->Detach();
        last->RequestDelayedDestruction();
    }
}

void QorRdgScenePreview::CleanUp() {
    if (!sphere)
        return;
    Drop(sphereManipulator);
    viewer->RemoveRep(sphere);
    sphere.Reset();
    for (Part& one : parts) {
        Drop(one.arrow);
        viewer->RemoveRep(one.bag);
        one = {};
    }
    viewer->SetLightSourceReps(nullptr, nullptr);
    viewer = nullptr;
}
