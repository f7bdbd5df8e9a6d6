// The custom frame's widgets and their subscriptions.
#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgEditor.h"
#include "platform/dialog/QorDlgLabel.h"
#include "platform/dialog/QorDlgSlider.h"
#include "platform/dialog/QorDlgSpinner.h"
#include "scenes/QorRdgSceneCustomFrame.h"

#include <cstdint>

namespace {

constexpr QorDlgStyle plainFrame = QorDlgFraNoTitle | QorDlgFraNoFrame | QorDlgGridLayout;
constexpr int hundred = 100;
constexpr int ten = 10;
constexpr int strengthCount = 4;
constexpr const char* twoDigits = "%4.2f";
constexpr const char* oneDigit = "%4.1f";

/// Rows of the custom frame's grid.
enum Row {
    LightRow,
    BackgroundSepRow,
    BackgroundRow,
    PictureRow,
    GroundSepRow,
    GroundRow,
    ValuesRow
};

template <class Widget>
Widget* Place(QorDialog* iFather,
              const char* iName,
              const QorGridCell& iCell,
              QorDlgStyle iStyle = QorDlgDefaultStyle) {
    auto* widget = new Widget(iFather, iName, iStyle);
    widget->SetGridConstraints(iCell.row, iCell.column, iCell.width, iCell.height,
                               iCell.justification);
    return widget;
}

QorSubscriberData DataOf(int iLight) {
    return reinterpret_cast<QorSubscriberData>(static_cast<std::intptr_t>(iLight)); // NOLINT
}

} // namespace

void QorRdgSceneCustomFrame::BuildLights() {
    struct Strength {
        Pair pair;
        const char* name;
        int steps;
        const char* format;
    };

    // The sphere stands beside the values, so that the dialog fits on a small screen.
    auto* lightFrame = Place<QorDlgFrame>(this, "lightFrame", {.row = LightRow}, QorDlgGridLayout);
    auto* typeFrame = Place<QorDlgFrame>(
        lightFrame, "typeFrame", {.row = 0, .width = 2, .justification = QorHoldLeft}, plainFrame);
    Place<QorDlgLabel>(typeFrame, "lightLabel", {.column = 0});
    int column = 0;
    for (const char* radioName : {"noLightRadio", "oneLightRadio", "twoLightsRadio"}) {
        auto* radio = Place<QorDlgRadioButton>(typeFrame, radioName, {.column = column + 1});
        AddAnalyseNotificationCB(this, radio, radio->GetRadBModifyNotification(),
                                 &QorRdgSceneCustomFrame::LightTypeCB);
        lightRadios[static_cast<std::size_t>(column++)] = radio;
    }
    preview = std::make_unique<QorRdgScenePreview>(lightFrame);
    // Not stretched: in a square the arrows are never cut off.
    preview->GetViewer()->SetGridConstraints(1, 0, 1, strengthCount, QorHoldLeft);
    lightFrame->SetGridColumnResizable(1, true);
    int strengthRow = 1;
    for (const Strength& one : {Strength{Ambient, "ambient", hundred, twoDigits},
                                Strength{Diffuse, "diffuse", hundred, twoDigits},
                                Strength{Specular, "specular", hundred, twoDigits},
                                Strength{Shadow, "shadow", ten, oneDigit}}) {
        const std::string frameName = std::string(one.name) + "Frame";
        auto* strengthFrame = Place<QorDlgFrame>(lightFrame, frameName.c_str(),
                                                 {.row = strengthRow, .column = 1}, plainFrame);
        lightFrame->SetGridRowResizable(strengthRow++, true);
        pairs[one.pair] = QorRdgSliderPair::Make(strengthFrame, one.name, 0, one.steps, one.format);
    }
    SetGridRowResizable(LightRow, true);
    SetGridColumnResizable(0, true);
}

void QorRdgSceneCustomFrame::BuildBackground() {
    Place<QorDlgSeparator>(this, "backgroundSep", {.row = BackgroundSepRow});
    backgroundCheck = Place<QorDlgCheckButton>(this, "backgroundCheck", {.row = BackgroundRow});
    backgroundFrame = Place<QorDlgFrame>(this, "backgroundFrame", {.row = PictureRow}, plainFrame);
    Place<QorDlgLabel>(backgroundFrame, "backgroundLabel", {.row = 0, .column = 0});
    backgroundEditor =
        Place<QorDlgEditor>(backgroundFrame, "backgroundEditor", {.row = 0, .column = 1});
    auto* button =
        Place<QorDlgPushButton>(backgroundFrame, "backgroundButton", {.row = 0, .column = 2});
    backgroundStretchCheck = Place<QorDlgCheckButton>(backgroundFrame, "backgroundStretchCheck",
                                                      {.row = 1, .column = 1, .width = 2});
    backgroundFrame->SetGridColumnResizable(1, true);
    AddAnalyseNotificationCB(this, backgroundCheck, backgroundCheck->GetChkBModifyNotification(),
                             &QorRdgSceneCustomFrame::BackgroundOnCB);
    AddAnalyseNotificationCB(this, backgroundEditor, backgroundEditor->GetEditModifyNotification(),
                             &QorRdgSceneCustomFrame::BackgroundModifiedCB);
    AddAnalyseNotificationCB(this, button, button->GetPushBActivateNotification(),
                             &QorRdgSceneCustomFrame::BackgroundBrowseCB);
    AddAnalyseNotificationCB(this, backgroundStretchCheck,
                             backgroundStretchCheck->GetChkBModifyNotification(),
                             &QorRdgSceneCustomFrame::DisplayModifiedCB);
}

void QorRdgSceneCustomFrame::BuildGround() {
    Place<QorDlgSeparator>(this, "groundSep", {.row = GroundSepRow});
    groundCheck = Place<QorDlgCheckButton>(this, "groundCheck", {.row = GroundRow});
    groundFrame = Place<QorDlgFrame>(this, "groundFrame", {.row = ValuesRow}, plainFrame);
    pairs[Transparency] =
        QorRdgSliderPair::Make(groundFrame, "groundTransparency", 0, hundred, twoDigits);
    pairs[Reflectivity] =
        QorRdgSliderPair::Make(groundFrame, "groundReflectivity", 1, hundred, twoDigits);
    AddAnalyseNotificationCB(this, groundCheck, groundCheck->GetChkBModifyNotification(),
                             &QorRdgSceneCustomFrame::GroundOnCB);
}

void QorRdgSceneCustomFrame::SubscribePairs() {
    for (int i = 0; i < PairCount; ++i) {
        const QorRdgSliderPair& pair = pairs[static_cast<std::size_t>(i)];
        const auto moved = i >= Transparency ? &QorRdgSceneCustomFrame::GroundModifiedCB
                                             : &QorRdgSceneCustomFrame::SliderCB;
        AddAnalyseNotificationCB(this, pair.slider, pair.slider->GetSliderModifyNotification(),
                                 moved);
        AddAnalyseNotificationCB(this, pair.slider, pair.slider->GetSliderDragNotification(),
                                 moved);
        AddAnalyseNotificationCB(this, pair.spinner, pair.spinner->GetSpinnerModifyNotification(),
                                 &QorRdgSceneCustomFrame::SpinnerCB);
    }
}

void QorRdgSceneCustomFrame::SubscribeManipulators() {
    for (const int light : {1, 2}) {
        Qor3DManipulator* arrow = preview->GetManipulator(light);
        for (const QorNotification* step : {arrow->GetManipulate(), arrow->GetEndManipulate()})
            AddAnalyseNotificationCB(this, arrow, step, &QorRdgSceneCustomFrame::ManipulateCB,
                                     DataOf(light));
        AddAnalyseNotificationCB(this, arrow, arrow->GetEdit(), &QorRdgSceneCustomFrame::EditCB,
                                 DataOf(light));
    }
    Qor3DManipulator* sphere = preview->GetSphereManipulator();
    AddAnalyseNotificationCB(this, sphere, sphere->GetEdit(), &QorRdgSceneCustomFrame::EditCB,
                             DataOf(1));
}
