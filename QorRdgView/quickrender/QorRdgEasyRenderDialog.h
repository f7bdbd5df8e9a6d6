#pragma once

#include "platform/engine/QorRdgOptionsDefaults.h"
#include "platform/engine/QorRdgWindow.h"
#include "platform/frame/QorCommandHeader.h"
#include "platform/frame/QorFrmDialog.h"
#include "platform/frame/QorFrmWindow.h"
#include "platform/system/QorSettingRepository.h"
#include "platform/vis/QorViewer.h"

#include <optional>

class QorDlgCheckButton;
class QorDlgFile;
class QorDlgLabel;
class QorDlgPushButton;
class QorRdgEngineManager;
class QorRdgOptionsDialog;
class QorRdgSceneDialog;

/// The quick render's tool bar: renders the current 3D viewer straight into it, under a scene and
/// with options of its own, the whole viewer or an area, and saves the picture. While it is open
/// the viewer shows the scene; on closing it gets back its lights, texture and ground, and the
/// picture, area and background go. Texts are in the message catalog "QorRdgEasyRenderDialog".
///
/// There is one, or none. It belongs to the application frame and ends itself: on its close box,
/// and when the document is left. When its window alone is deleted it attaches itself to the one
/// that is current then, gives nothing back any more, and GetDialog no longer knows it; that is
/// meant.
class QorRdgEasyRenderDialog : public QorFrmDialog {
    QorDeclareClass(QorRdgEasyRenderDialog)

    /// The dialog, made hidden if there is none yet; null without an application frame.
    [[nodiscard]] static QorRdgEasyRenderDialog* GetDialog();

    /// Takes hold of the current layout's current viewer. The look of a tool bar is added to
    /// \p iStyle.
    QorRdgEasyRenderDialog(QorDialog* iFather,
                           const QorString& iName,
                           QorDlgStyle iStyle = QorDlgDefaultStyle);

    /// Ends the dialog as its close box does.
    void Close();

    /// Whether it has a viewer to render into.
    [[nodiscard]] bool HasViewer() const { return viewer != nullptr; }

protected:
    ~QorRdgEasyRenderDialog() override;

    static QorRdgEasyRenderDialog* _curDialog;

    void Init();
    /// Gives the viewer back what Init noted, and lets everything go; only the dialog that
    /// GetDialog knows does, and only once. Without a layout the viewer is left alone.
    void CleanUp();

    /// Size of the whole output and, while the area is on, the part to render, which the caller
    /// deletes. E_FAIL without viewer, settings or area interface.
    QorResult GetSize(int& oWidth, int& oHeight, QorRdgWindow*& oRegion);
    void UpdateSize();
    void Render();
    /// 0, -1 without an image, or what the writing of pictures answers.
    int SaveImage(QorPixelImage* iImage, QorUnicodeString& iFileName, int iCode);

    // Callbacks of the widgets and of the dialogs that they open.
    void SceneCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);
    void SceneOKCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);
    void
    SceneCancelCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);
    void OptionsCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);
    void OptionsOKCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);
    void
    OptionsCancelCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);
    void AreaCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);
    void RenderCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);
    void
    RenderLoopCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);
    void SaveCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);
    void SaveOKCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);
    void
    SaveCancelCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);
    void CloseCB(QorCommand* iCommand, QorNotification* iNotification, QorSubscriberData iData);

    // Callbacks of events.
    void RenderDoneCB(QorEventName iEvent,
                      QorBaseUnknown* iPublisher,
                      QorNotification* iNotification,
                      QorSubscriberData iData,
                      QorCallbackId iCookie);
    void ViewpointEndModifyCB(QorEventName iEvent,
                              QorBaseUnknown* iPublisher,
                              QorNotification* iNotification,
                              QorSubscriberData iData,
                              QorCallbackId iCookie);
    void WindowResizedCB(QorEventName iEvent,
                         QorBaseUnknown* iPublisher,
                         QorNotification* iNotification,
                         QorSubscriberData iData,
                         QorCallbackId iCookie);
    void ViewerActivatedCB(QorEventName iEvent,
                           QorBaseUnknown* iPublisher,
                           QorNotification* iNotification,
                           QorSubscriberData iData,
                           QorCallbackId iCookie);
    void ViewerDestroyedCB(QorEventName iEvent,
                           QorBaseUnknown* iPublisher,
                           QorNotification* iNotification,
                           QorSubscriberData iData,
                           QorCallbackId iCookie);
    void SizeChangedCB(QorEventName iEvent,
                       QorBaseUnknown* iPublisher,
                       QorNotification* iNotification,
                       QorSubscriberData iData,
                       QorCallbackId iCookie);
    void EndModifyAreaCB(QorEventName iEvent,
                         QorBaseUnknown* iPublisher,
                         QorNotification* iNotification,
                         QorSubscriberData iData,
                         QorCallbackId iCookie);
    void CommandAvailableCB(QorEventName iEvent,
                            QorBaseUnknown* iPublisher,
                            QorNotification* iNotification,
                            QorSubscriberData iData,
                            QorCallbackId iCookie);
    void EditorDeactivatedCB(QorEventName iEvent,
                             QorBaseUnknown* iPublisher,
                             QorNotification* iNotification,
                             QorSubscriberData iData,
                             QorCallbackId iCookie);
    void WindowDeletedCB(QorEventName iEvent,
                         QorBaseUnknown* iPublisher,
                         QorNotification* iNotification,
                         QorSubscriberData iData,
                         QorCallbackId iCookie);

    QorVar<QorSettingRepository> settings; ///< null disables nearly everything
    QorDlgCheckButton* sceneButton = nullptr;
    QorDlgCheckButton* optionsButton = nullptr;
    QorDlgCheckButton* areaCheck = nullptr;
    QorDlgCheckButton* renderCheck = nullptr;
    QorDlgPushButton* saveButton = nullptr;
    QorDlgLabel* infoLabel = nullptr;
    QorRdgSceneDialog* sceneDialog = nullptr;     ///< while it is open
    QorRdgOptionsDialog* optionsDialog = nullptr; ///< while it is open
    QorFrmWindow* window = nullptr;               ///< current when Init ran; never looked into
    QorCallbackId windowDeletedCookie = 0;
    QorViewer* viewer = nullptr;
    QorCallbackId viewerDestroyedCookie = 0;
    QorCallbackId sizeCookie = 0; ///< to the size of the viewer, which the label tells
    QorCallbackId viewerActivatedCookie = 0;
    Qor3DViewpoint* viewpoint = nullptr; ///< watched while it renders again and again
    QorVar<Qor3DViewpoint> viewpointNotifier;
    QorCallbackId viewpointCookie = 0;
    QorSupport* support = nullptr;
    QorCallbackId resizeCookie = 0;
    QorCallbackId renderDoneCookie = 0;
    bool loopMode = false; ///< renders again after every change of the view
    QorPixelImage_var image;
    QorRdgWindow imageRegion;
    QorCallbackId areaCookie = 0;
    bool groundHeaderState = false;
    Qor3DLightSourceRep_var savedLight1; ///< a copy
    Qor3DLightSourceRep_var savedLight2; ///< a copy
    float savedAmbient[3] = {0.0F, 0.0F, 0.0F};
    QorVar<QorGraphicMaterial> savedTexture;
    QorVar<QorRdgEasyOptionsDefaults> options = QorMake<QorRdgEasyOptionsDefaults>();
    QorVar<QorCommandHeader> lightingHeader;
    QorCallbackId lightingCookie = 0;

private:
    /// What of a ground a new one at the same place would not have.
    struct Ground {
        QorMathPoint origin;
        float transparency = 0.0F;
        float reflectivity = 0.0F;
    };

    void BuildWidgets();
    void Subscribe();
    void AttachToWindow();
    void AttachToViewer();
    void TakeLighting();
    void CaptureViewer();
    void WatchArea();
    void SetViewer(QorViewer* iViewer);
    [[nodiscard]] Qor3DViewer* Get3DViewer() const;

    void LetGo();
    void LeaveLayout(QorCallbackManager& ioEvents);
    void RestoreViewer();
    void RestoreGround(Qor3DViewer& ioViewer) const;
    void RestoreLights(Qor3DViewer& ioViewer);
    void EndRender();
    void DropView();
    void LeaveLoop();
    void WatchViewpoint();
    void WatchSupport();
    void SetControls(bool iEnabled);
    void ResetControls();
    void CloseSceneDialog();
    void CloseOptionsDialog();
    [[nodiscard]] bool IsCustomSize() const;
    [[nodiscard]] int ReadSetting(const char* iKey, int iDefault) const;
    [[nodiscard]] double GetDensity() const;
    [[nodiscard]] bool IsEarlierRender(const QorRdgEngineManager& iManager) const;
    bool MayWrite(QorDlgFile& iDialog, const QorUnicodeString& iPath) const;
    void WriteImage(QorDlgFile& iDialog, QorUnicodeString& iPath, int iCode);
    static void Tell(const QorUnicodeString& iText);

    std::optional<Ground> savedGround;
    double density = 0.0;       ///< of the render that runs, in pixels an inch; 0: of a screen
    double imageDensity = 0.0;  ///< of `image`
    unsigned long renderId = 0; ///< of the latest render started from here
    bool rendering = false;     ///< until its end has been heard
    QorUnicodeString saveError; ///< why the latest picture was not written
};
