#include "scenes/QorRdgSceneCustomFrame.h"

#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgColorEditor.h"
#include "platform/dialog/QorDlgEditor.h"
#include "platform/dialog/QorDlgSlider.h"
#include "platform/dialog/QorDlgSpinner.h"
#include "platform/system/QorTrace.h"
#include "scenes/QorRdgSceneDump.h"
#include "scenes/QorRdgSceneManager.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <utility>

QorImplementClass(QorRdgSceneCustomFrame, QorRdgSceneFrame)

namespace {

/// The light that a manipulator is of, which travels as the subscriber's data.
int LightOf(QorSubscriberData iData) {
    return static_cast<int>(reinterpret_cast<std::intptr_t>(iData)); // NOLINT
}

QorDlgCheckState StateOf(int iOn) {
    return iOn != 0 ? QorDlgCheck : QorDlgUncheck;
}

int IsOn(const QorDlgCheckButton& iCheck) {
    return iCheck.GetState() == QorDlgCheck ? 1 : 0;
}

float Float(const QorRdgSliderPair& iPair) {
    return static_cast<float>(iPair.GetValue());
}

} // namespace

QorRdgSceneCustomFrame::QorRdgSceneCustomFrame(QorCommand* iFather,
                                               const QorString& iName,
                                               QorDlgStyle iStyle)
    : QorRdgSceneFrame(iFather, iName, iStyle | QorDlgGridLayout) {
    QorTrace(2, "(QorRdgSceneCustomFrame::QorRdgSceneCustomFrame) Constructor\n");
    BuildLights();
    BuildBackground();
    BuildGround();
    SubscribePairs();
    Init();
}

QorRdgSceneCustomFrame::~QorRdgSceneCustomFrame() {
    QorTrace(2, "(QorRdgSceneCustomFrame::~QorRdgSceneCustomFrame) Destructor\n");
    CleanUp();
}

void QorRdgSceneCustomFrame::Init() {
    QorTrace(4, "(QorRdgSceneCustomFrame::Init) \n");
    const QorRdgScene* scene = QorRdgSceneManager::GetManager()->GetCustomScene();
    if (scene == nullptr || !preview)
        return;
    ShowScene(*scene);
    QorRdgScene lights = LightsShown();
    lights.direction1 = scene->direction1;
    lights.direction2 = scene->direction2;
    preview->Build(lights);
    SubscribeManipulators();
    QorRdgSceneManager::GetManager()->SetScene(scene);
}

void QorRdgSceneCustomFrame::ShowScene(const QorRdgScene& iScene) {
    constexpr double levels = 10.0;
    const auto show = [this](Pair iPair, float iValue) {
        pairs[iPair].SetValue(QorWidenFloat(iValue));
    };
    show(Ambient, iScene.ambient);
    show(Diffuse, iScene.diffuse);
    show(Specular, iScene.specular);
    pairs[Shadow].SetValue(iScene.shadow / levels);
    show(Transparency, iScene.groundTransparency);
    show(Reflectivity, iScene.groundReflectivity);
    color1 = iScene.color1;
    color2 = iScene.color2;
    // As the viewer shows them: two lights only with a count of exactly 2.
    lightType = iScene.lightCount == 2 ? 2 : (iScene.lightCount >= 1 ? 1 : 0);
    lightRadios[static_cast<std::size_t>(lightType)]->SetState(QorDlgCheck);
    backgroundCheck->SetState(StateOf(iScene.backgroundOn));
    backgroundEditor->SetText(iScene.backgroundImage.Str());
    backgroundStretchCheck->SetState(StateOf(iScene.backgroundStretch));
    backgroundFrame->SetSensitivity(iScene.backgroundOn != 0 ? QorDlgENABLE : QorDlgDISABLE);
    groundCheck->SetState(StateOf(iScene.groundOn));
    groundFrame->SetSensitivity(iScene.groundOn != 0 ? QorDlgENABLE : QorDlgDISABLE);
}

QorRdgScene QorRdgSceneCustomFrame::LightsShown() const {
    QorRdgScene shown;
    shown.lightCount = lightType;
    shown.ambient = Float(pairs[Ambient]);
    shown.diffuse = Float(pairs[Diffuse]);
    shown.specular = Float(pairs[Specular]);
    shown.color1 = color1;
    shown.color2 = color2;
    return shown;
}

int QorRdgSceneCustomFrame::ShadowLevel(double iSlider) {
    constexpr double levels = 10.0;
    const double level = iSlider * levels;
    const int whole = static_cast<int>(level);
    return level - whole > 0.5 ? whole + 1 : whole;
}

void QorRdgSceneCustomFrame::ReadControls(QorRdgScene& ioScene) const {
    ioScene.lightCount = lightType;
    ioScene.ambient = Float(pairs[Ambient]);
    ioScene.diffuse = Float(pairs[Diffuse]);
    ioScene.specular = Float(pairs[Specular]);
    ioScene.shadow = ShadowLevel(pairs[Shadow].GetValue());
    constexpr std::array<float, 3> none = {1.0F, 0.0F, 0.0F};
    ioScene.color1 = color1;
    ioScene.direction1 = preview ? preview->GetDirection(1) : none;
    ioScene.color2 = color2;
    ioScene.direction2 = preview ? preview->GetDirection(2) : none;
    ioScene.backgroundOn = IsOn(*backgroundCheck);
    ioScene.backgroundImage = backgroundEditor->GetText().Str();
    ioScene.backgroundStretch = IsOn(*backgroundStretchCheck);
    ioScene.groundOn = IsOn(*groundCheck);
    ioScene.groundTransparency = Float(pairs[Transparency]);
    ioScene.groundReflectivity = Float(pairs[Reflectivity]);
}

void QorRdgSceneCustomFrame::Commit() {
    QorTrace(4, "(QorRdgSceneCustomFrame::Commit) \n");
    QorRdgScene* scene = QorRdgSceneManager::GetManager()->GetCustomScene();
    if (scene == nullptr)
        return;
    ReadControls(*scene);
    QorRdgSceneManager::GetManager()->SetScene(scene);
    std::fputs(QorPrintScene(*scene).c_str(), stdout);
    std::fflush(stdout);
    CleanUp();
}

void QorRdgSceneCustomFrame::Rollback() {
    QorTrace(4, "(QorRdgSceneCustomFrame::Rollback) \n");
    CleanUp();
}

void QorRdgSceneCustomFrame::CleanUp() {
    QorTrace(4, "(QorRdgSceneCustomFrame::CleanUp) \n");
    preview.reset();
}

void QorRdgSceneCustomFrame::LightTypeCB(QorCommand* /*iSender*/,
                                         QorNotification* /*iNotification*/,
                                         QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgSceneCustomFrame::LightTypeCB) \n");
    for (int type = 0; type < 3; ++type)
        if (lightRadios[static_cast<std::size_t>(type)]->GetState() == QorDlgCheck)
            lightType = type;
    if (preview)
        preview->SetLightCount(lightType);
}

void QorRdgSceneCustomFrame::SliderCB(QorCommand* iSender,
                                      QorNotification* /*iNotification*/,
                                      QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgSceneCustomFrame::SliderCB) \n");
    if (!preview)
        return;
    for (const Pair pair : {Ambient, Diffuse, Specular, Shadow})
        if (pairs[pair].slider == iSender)
            pairs[pair].ShowSlider();
    if (pairs[Shadow].slider != iSender) // the preview has no shadows
        preview->Update(LightsShown());
}

void QorRdgSceneCustomFrame::SpinnerCB(QorCommand* iSender,
                                       QorNotification* /*iNotification*/,
                                       QorSubscriberData /*iData*/) {
    QorTrace(4, "(QorRdgSceneCustomFrame::SpinnerCB) \n");
    for (const QorRdgSliderPair& pair : pairs)
        if (pair.spinner == iSender)
            pair.TakeSpinner();
}

void QorRdgSceneCustomFrame::ManipulateCB(QorCommand* /*iSender*/,
                                          QorNotification* /*iNotification*/,
                                          QorSubscriberData iData) {
    QorTrace(5, "(QorRdgSceneCustomFrame::ManipulateCB) light %d\n", LightOf(iData));
    if (preview)
        preview->TurnLight(LightOf(iData), lightType);
}

void QorRdgSceneCustomFrame::EditCB(QorCommand* /*iSender*/,
                                    QorNotification* /*iNotification*/,
                                    QorSubscriberData iData) {
    QorTrace(4, "(QorRdgSceneCustomFrame::EditCB) light %d\n", LightOf(iData));
    if (colorEditor != nullptr)
        std::exchange(colorEditor, nullptr)->RequestDelayedDestruction();
    editedLight = LightOf(iData);
    colorEditor = new QorDlgColorEditor(this, "colorEditor");
    colorEditor->SetColor(editedLight == 2 ? color2 : color1);
    AddAnalyseNotificationCB(this, colorEditor, colorEditor->GetColorOKNotification(),
                             &QorRdgSceneCustomFrame::ColorOKCB);
    AddAnalyseNotificationCB(this, colorEditor, colorEditor->GetColorCancelNotification(),
                             &QorRdgSceneCustomFrame::ColorCancelCB);
    AddAnalyseNotificationCB(this, colorEditor, colorEditor->GetWindCloseNotification(),
                             &QorRdgSceneCustomFrame::ColorCancelCB);
    colorEditor->SetVisibility(QorDlgSHOW);
}

void QorRdgSceneCustomFrame::ColorOKCB(QorCommand* iSender,
                                       QorNotification* iNotification,
                                       QorSubscriberData iData) {
    QorTrace(3, "(QorRdgSceneCustomFrame::ColorOKCB) \n");
    if (colorEditor == nullptr || colorEditor != iSender)
        return;
    (editedLight == 2 ? color2 : color1) = colorEditor->GetColor();
    if (preview)
        preview->Update(LightsShown());
    ColorCancelCB(iSender, iNotification, iData);
}

void QorRdgSceneCustomFrame::ColorCancelCB(QorCommand* iSender,
                                           QorNotification* /*iNotification*/,
                                           QorSubscriberData /*iData*/) {
    QorTrace(3, "(QorRdgSceneCustomFrame::ColorCancelCB) \n");
    if (colorEditor != nullptr && colorEditor == iSender)
        std::exchange(colorEditor, nullptr)->RequestDelayedDestruction();
}
