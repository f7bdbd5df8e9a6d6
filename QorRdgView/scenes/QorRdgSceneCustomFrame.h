#pragma once

#include "scenes/QorRdgSceneFrame.h"
#include "scenes/QorRdgScenePreview.h"
#include "scenes/QorRdgSliderPair.h"

#include <memory>

class QorDlgCheckButton;
class QorDlgColorEditor;
class QorDlgEditor;
class QorDlgRadioButton;
class QorFrmFile;

/// Edits the custom scene: lights by sliders and by turning arrows round a sphere, background and
/// ground. Background and the ground's switch go to the current viewer at once, lights and the
/// ground's values with Commit.
class QorRdgSceneCustomFrame : public QorRdgSceneFrame {
    QorDeclareClass(QorRdgSceneCustomFrame)

    QorRdgSceneCustomFrame(QorCommand* iFather,
                           const QorString& iName,
                           QorDlgStyle iStyle = QorDlgDefaultStyle);

    /// Shows the custom scene here and in the current viewer.
    void Init();
    /// Writes the custom scene, applies it, and prints it to the standard output in the form of the
    /// catalog. Does nothing without a custom scene.
    void Commit() override;
    void Rollback() override;
    void CleanUp();

    void LightTypeCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);
    void SliderCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);
    void SpinnerCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);
    void ManipulateCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);
    /// A double click on an arrow edits the colour of its light; on the sphere, that of light 1.
    void EditCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);
    void ColorOKCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);
    void
    ColorCancelCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);
    void
    BackgroundOnCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);
    void BackgroundModifiedCB(QorCommand* iSender,
                              QorNotification* iNotification,
                              QorSubscriberData iData);
    void BackgroundBrowseCB(QorCommand* iSender,
                            QorNotification* iNotification,
                            QorSubscriberData iData);
    void BackgroundBrowseOKCB(QorCommand* iSender,
                              QorNotification* iNotification,
                              QorSubscriberData iData);
    void BackgroundBrowseCancelCB(QorCommand* iSender,
                                  QorNotification* iNotification,
                                  QorSubscriberData iData);
    void
    DisplayModifiedCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);
    void GroundOnCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);
    void
    GroundModifiedCB(QorCommand* iSender, QorNotification* iNotification, QorSubscriberData iData);

    /// The soft-shadow level of a slider value: tenths, with exactly a half rounded down.
    [[nodiscard]] static int ShadowLevel(double iSlider);

protected:
    ~QorRdgSceneCustomFrame() override;

private:
    /// Rows of `pairs`.
    enum Pair { Ambient, Diffuse, Specular, Shadow, Transparency, Reflectivity, PairCount };

    void BuildLights();
    void BuildBackground();
    void BuildGround();
    void SubscribePairs();
    void SubscribeManipulators();
    void ShowScene(const QorRdgScene& iScene);
    void ReadControls(QorRdgScene& ioScene) const;
    /// What the preview shows: light type, colours and factors of the controls.
    [[nodiscard]] QorRdgScene LightsShown() const;
    void ApplyBackground();
    void SelectLightType(int iLightType);

    int lightType = 0; ///< 0 no light, 1 one, 2 two
    std::array<float, 3> color1{};
    std::array<float, 3> color2{};
    std::unique_ptr<QorRdgScenePreview> preview; ///< null once cleaned up
    std::array<QorRdgSliderPair, PairCount> pairs;
    std::array<QorDlgRadioButton*, 3> lightRadios{};
    QorDlgCheckButton* backgroundCheck = nullptr;
    QorDlgFrame* backgroundFrame = nullptr;
    QorDlgEditor* backgroundEditor = nullptr;
    QorDlgCheckButton* backgroundStretchCheck = nullptr;
    QorDlgCheckButton* groundCheck = nullptr;
    QorDlgFrame* groundFrame = nullptr;
    QorDlgColorEditor* colorEditor = nullptr; ///< null while none is open
    int editedLight = 1;
    QorFrmFile* fileBox = nullptr; ///< null while none is open
};
