#pragma once

#include "platform/vis/QorViewer.h"
#include "scenes/QorRdgScene.h"

/// The small picture in the custom frame: a sphere under the frame's lights, and for each light an
/// arrow that a person turns. The viewer and the manipulators are widgets of the frame; the frame
/// subscribes to the manipulators.
class QorRdgScenePreview {
public:
    /// Makes the viewer "viewer" in \p iFrame, with the sphere in it.
    explicit QorRdgScenePreview(QorCommand* iFrame);
    ~QorRdgScenePreview();
    QorRdgScenePreview(const QorRdgScenePreview&) = delete;
    QorRdgScenePreview& operator=(const QorRdgScenePreview&) = delete;

    /// The viewer; null once it is gone.
    [[nodiscard]] Qor3DViewer* GetViewer() const { return viewer; }

    /// Makes lights, arrows and manipulators for a scene. Called once.
    void Build(const QorRdgScene& iScene);

    /// "lightManipulator1" or 2, "sphereManipulator"; null before Build and after CleanUp.
    [[nodiscard]] Qor3DManipulator* GetManipulator(int iLight) const { return part(iLight).arrow; }

    [[nodiscard]] Qor3DManipulator* GetSphereManipulator() const { return sphereManipulator; }

    /// Colours by those of the scene, with its factors, and its ambient light; then redraws with as
    /// many lights as the scene has. With none the lights stay as they are.
    void Update(const QorRdgScene& iScene);
    /// Shows none, one or two lights and their arrows.
    void SetLightCount(int iCount);
    /// Turns a light to where its manipulator points.
    void TurnLight(int iLight, int iLightCount);
    /// The direction of a light: against the third axis of its manipulator; (1, 0, 0) when there is
    /// none.
    [[nodiscard]] std::array<float, 3> GetDirection(int iLight) const;

    /// Takes manipulators and content out of the viewer.
    void CleanUp();

private:
    /// What belongs to one light.
    struct Part {
        Qor3DLightSourceRep_var light;
        QorVar<Qor3DBagRep> bag;
        QorVar<QorGraphicMaterial> material;
        Qor3DManipulator* arrow = nullptr;
    };

    [[nodiscard]] Part& part(int iLight) { return parts[iLight == 2 ? 1 : 0]; }

    [[nodiscard]] const Part& part(int iLight) const { return parts[iLight == 2 ? 1 : 0]; }

    void BuildSphere();
    void BuildArrow(int iLight, const std::array<float, 3>& iDirection);
    [[nodiscard]] QorMathVector DirectionOf(int iLight) const;
    void InstallLights(int iCount);
    void Drop(Qor3DManipulator*& ioManipulator);

    QorCommand* frame;
    Qor3DViewer* viewer;
    QorVar<Qor3DMeshRep> sphere;
    Qor3DManipulator* sphereManipulator = nullptr;
    std::array<Part, 2> parts;
};
