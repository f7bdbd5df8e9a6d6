#pragma once

#include "platform/component/QorEventSubscriber.h"
#include "platform/vis/QorViewer.h"

/// How a 3D viewer was lit and staged at a moment, and the way back there. Forgets a viewer that is
/// destroyed.
class QorRdgViewerState : public QorEventSubscriber {
public:
    /// \p iViewer may be null, or no 3D viewer; nothing is captured then.
    explicit QorRdgViewerState(QorViewer* iViewer);

    /// The viewer, or null when there is none any more.
    [[nodiscard]] Qor3DViewer* GetViewer() const { return viewer; }

    /// Notes background, ground, lights, ambient light and texture. Lights are copied.
    void Capture();
    /// Gives all of it back, once. A viewer that had no background keeps the one it has now.
    void Restore();
    /// Lets what was captured go.
    void Release();

private:
    void RestoreLights();
    void RestoreGround();
    void RestoreBackground();
    void ViewerDestroyedCB(QorEventName iEvent,
                           QorBaseUnknown* iPublisher,
                           QorNotification* iNotification,
                           QorSubscriberData iData,
                           QorCallbackId iCookie);

    struct Ground {
        bool shown = false;
        float transparency = 0.0F;
        float reflectivity = 0.0F;
    };

    Qor3DViewer* viewer;
    bool captured = false;
    QorString savedBackgroundImage;
    bool savedBackgroundStretch = false;
    bool savedGroundState = false; ///< of the application's command "Ground"
    Ground savedGround;
    Qor3DLightSourceRep_var savedLight1;
    Qor3DLightSourceRep_var savedLight2;
    float savedAmbient[3] = {0.0F, 0.0F, 0.0F};
    QorVar<QorGraphicMaterial> savedTexture;
};
