#pragma once

#include "scenes/QorRdgScene.h"

class Qor3DLightSourceRep;
class Qor3DViewer;
class QorString;
class QorViewer;

/// Puts the parts of a scene into a viewer. A null viewer, and one that lacks an interface, are
/// left alone.
class QorRdgSceneViewer {
public:
    /// The viewer of the current layout's current window, or null.
    [[nodiscard]] static QorViewer* GetCurrent();

    /// Shows a picture behind the product; a rendered picture that another one lies behind is
    /// cleared.
    static void SetBackground(QorViewer* iViewer, const QorString& iImage, bool iStretch);
    static void RemoveBackground(QorViewer* iViewer);

    static void SetGround(QorViewer* iViewer, float iTransparency, float iReflectivity);
    static void HideGround(QorViewer* iViewer);

    /// Replaces lights and ambient light, and redraws. Exactly 2 gives the second light, so that a
    /// count beyond 2 shows one.
    static void SetLights(QorViewer* iViewer, const QorRdgScene& iScene);

    /// A new directional light, with one reference for the caller.
    [[nodiscard]] static Qor3DLightSourceRep* NewLight(const std::array<float, 3>& iColor,
                                                       const std::array<float, 3>& iDirection,
                                                       float iDiffuse,
                                                       float iSpecular);
    /// Gives a light the colours of a scene: no ambient part, the others the colour by a factor.
    static void SetColors(Qor3DLightSourceRep& ioLight,
                          const std::array<float, 3>& iColor,
                          float iDiffuse,
                          float iSpecular);

    /// Shows the viewer's lights in each of its viewpoints when it has several.
    static void ShowLightsEverywhere(Qor3DViewer& iViewer);
};
