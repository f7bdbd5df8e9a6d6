#include "scenes/QorRdgSceneCustomFrame.h"
#include "scenes/QorRdgSceneDump.h"
#include "scenes/QorRdgSceneSettings.h"
#include "tests/scenes/SceneDialogTest.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class CustomFrame : public SceneDialogTest {
protected:
    void Open() {
        Store("SceneType", 1);
        NewManager();
        opener->Open();
        drawing = Find<Qor3DViewer>("viewer");
        TakeLog();
    }

    /// OK, and what it printed.
    static std::string Accept() {
        testing::internal::CaptureStdout();
        EXPECT_EQ(Person::OK("sceneDialog"), QorUserResult::Done);
        return testing::internal::GetCapturedStdout();
    }

    Qor3DManipulator* Manipulator(const std::string& iName) const {
        for (QorManipulator* one : drawing->GetManipulators())
            if (one->GetName().Str() == iName)
                return dynamic_cast<Qor3DManipulator*>(one);
        return nullptr;
    }

    [[nodiscard]] std::vector<const Qor3DLightSourceRep*> PreviewLights() const {
        Qor3DLightSourceRep* light1 = nullptr;
        Qor3DLightSourceRep* light2 = nullptr;
        drawing->GetLightSourceReps(light1, light2);
        return {light1, light2};
    }

    [[nodiscard]] float PreviewDiffuse() const {
        float parts[3][4];
        PreviewLights().at(0)->GetColorParameters(parts[0], parts[1], parts[2]);
        return parts[1][0];
    }

    Qor3DViewer* drawing = nullptr;
};

TEST_F(CustomFrame, ShowsTheCustomScene) {
    Store("LightShadow", 3);
    Open();
    for (const auto& [name, value] : std::map<std::string, double>{{"ambient", 0.2},
                                                                   {"diffuse", 1.0},
                                                                   {"specular", 0.7},
                                                                   {"shadow", 0.3},
                                                                   {"groundTransparency", 0.0}}) {
        EXPECT_DOUBLE_EQ(Find<QorDlgSlider>(name + "Slider")->GetValue(), value) << name;
        EXPECT_DOUBLE_EQ(Find<QorDlgSpinner>(name + "Spinner")->GetValue(), value) << name;
    }
    EXPECT_EQ(Find<QorDlgRadioButton>("oneLightRadio")->GetState(), QorDlgCheck);
    EXPECT_EQ(Find<QorDlgEditor>("backgroundEditor")->GetText(), "DefaultBackground.jpg");
    EXPECT_FLOAT_EQ(Ambient(), 0.2F);
    EXPECT_NE(PreviewLights()[0], nullptr);
    EXPECT_EQ(PreviewLights()[1], nullptr);
    RecordingHost::ExpectDrawn(*opener->scenes);
}

TEST_F(CustomFrame, SlidersAndSpinnersMirrorEachOther) {
    Open();
    for (const std::string name :
         {"ambient", "diffuse", "specular", "shadow", "groundTransparency", "groundReflectivity"}) {
        auto* slider = Find<QorDlgSlider>(name + "Slider");
        auto* spinner = Find<QorDlgSpinner>(name + "Spinner");
        slider->UserSetValue(0.5);
        EXPECT_DOUBLE_EQ(spinner->GetValue(), 0.5) << name;
        slider->UserDrag(0.4);
        EXPECT_DOUBLE_EQ(spinner->GetValue(), 0.4) << name;
        spinner->UserSetValue(0.3);
        EXPECT_DOUBLE_EQ(slider->GetValue(), 0.3) << name;
        EXPECT_EQ(spinner->GetFormat(), name == "shadow" ? "%4.1f" : "%4.2f");
        EXPECT_DOUBLE_EQ(slider->GetStep(), name == "shadow" ? 0.1 : 0.01);
    }
    EXPECT_THAT(TakeLog(), IsEmpty()); // the main viewer sees none of it yet
}

TEST_F(CustomFrame, SlidersLightTheSphere) {
    Open();
    Person::Slide("sceneDialog/diffuseSlider", 0.5);
    EXPECT_FLOAT_EQ(PreviewDiffuse(), 0.5F);
    Person::Slide("sceneDialog/ambientSlider", 0.75);
    float ambient[3];
    drawing->GetGlobalAmbientLight(ambient[0], ambient[1], ambient[2]);
    EXPECT_THAT(ambient, ElementsAre(0.75F, 0.75F, 0.75F));
    EXPECT_FLOAT_EQ(Ambient(), 0.2F);
    Person::Check("sceneDialog/twoLightsRadio");
    EXPECT_NE(PreviewLights()[1], nullptr);
    Person::Check("sceneDialog/noLightRadio");
    EXPECT_EQ(PreviewLights()[0], nullptr);
    Person::Slide("sceneDialog/diffuseSlider", 0.25);
    EXPECT_EQ(PreviewLights()[0], nullptr);
}

TEST_F(CustomFrame, RoundsTheShadowLevelWithAHalfDown) {
    struct Row {
        double slider;
        int level;
    };

    for (const Row& row : {Row{0.0, 0}, Row{0.05, 0}, Row{0.06, 1}, Row{0.35, 3}, Row{0.36, 4},
                           Row{0.3, 3}, Row{0.7, 7}, Row{1.0, 10}})
        EXPECT_EQ(QorRdgSceneCustomFrame::ShadowLevel(row.slider), row.level) << row.slider;
    for (int level = 0; level <= 10; ++level)
        EXPECT_EQ(QorRdgSceneCustomFrame::ShadowLevel(level / 10.0), level);
}

TEST_F(CustomFrame, CommitsEverythingAndPrintsIt) {
    Open();
    Person::Check("sceneDialog/twoLightsRadio");
    Person::Slide("sceneDialog/shadowSlider", 0.36);
    Person::Slide("sceneDialog/groundReflectivitySlider", 0.125);
    Person::Check("sceneDialog/backgroundStretchCheck", false);
    Person::Type("sceneDialog/backgroundEditor", "wall.png");
    Manipulator("lightManipulator1")->TurnThirdTo({0, 0, 5});
    TakeLog();
    EXPECT_EQ(Accept(), "==========================\n"
                        "Scene.Light.Ambient=\"0.200000\";\n"
                        "Scene.Light.Diffuse=\"1.000000\";\n"
                        "Scene.Light.Specular=\"0.700000\";\n"
                        "Scene.Light.Shadow=\"4\";\n"
                        "Scene.Light.Color1=\"1.000000,1.000000,1.000000\";\n"
                        "Scene.Light.Direction1=\"0.000000,0.000000,-1.000000\";\n"
                        "Scene.Light.Color2=\"1.000000,1.000000,1.000000\";\n"
                        "Scene.Light.Direction2=\"0.577350,0.577350,0.577350\";\n"
                        "Scene.Background.Image=\"wall.png\";\n"
                        "Scene.Background.Stretch=\"0\";\n"
                        "Scene.Ground=\"1\";\n"
                        "Scene.Ground.Transparency=\"0.000000\";\n"
                        "Scene.Ground.Reflectivity=\"0.125000\";\n"
                        "\n");
    EXPECT_THAT(TakeLog(), ElementsAre("background wall.png 0", "ground 1", "transparency 0.000000",
                                       "reflectivity 0.125000"));
    EXPECT_EQ(Stored("SceneType"), 1);
    EXPECT_EQ(Stored("LightCount"), 2);
    EXPECT_EQ(Stored("LightShadow"), 4);
    EXPECT_EQ(Stored("SoftShadows"), 4);
}

TEST_F(CustomFrame, PrintsOnlyTheLightsThatThereAre) {
    QorRdgScene scene = QorRdgSceneSettings::GetDefault();
    for (int count = 0; count <= 2; ++count) {
        scene.lightCount = count;
        const std::string text = QorPrintScene(scene);
        for (int light = 1; light <= 2; ++light)
            for (const char* key : {"Color", "Direction"})
                EXPECT_EQ(text.find(key + std::to_string(light)) != std::string::npos,
                          light <= count);
    }
}

TEST_F(CustomFrame, WhatWasPrintedComesBackFromTheCatalog) {
    Open();
    Person::Check("sceneDialog/twoLightsRadio");
    for (const auto& [name, value] : std::map<std::string, double>{{"ambient", 0.123456789},
                                                                   {"diffuse", 1.0 / 3.0},
                                                                   {"specular", 0.987654321},
                                                                   {"shadow", 0.7},
                                                                   {"groundTransparency", 0.0625},
                                                                   {"groundReflectivity", 0.11}})
        Person::Slide("sceneDialog/" + name + "Slider", value);
    Manipulator("lightManipulator1")->TurnThirdTo({-1.0, 1.0e-3, 12.0});
    Manipulator("lightManipulator2")->TurnThirdTo({0.3, -0.2, 0.7});
    Manipulator("lightManipulator1")->Edit();
    Person::Find<QorDlgColorEditor>("colorEditor")->UserAccept({0.1F, 2.0F / 3.0F, 1.0F});
    loop.RunPosted();
    std::string text = Accept();
    for (std::size_t at = 0; (at = text.find("Scene.", at)) != std::string::npos; at += 6)
        text.insert(at + 5, "1");
    loop.RunPosted();
    const QorRdgScene custom = *Manager().GetCustomScene();
    directory.Write("start/rendering/DefaultBackground.jpg", "x");
    WriteCatalog("Count=\"1\";\n" + text.substr(text.find('\n') + 1));
    QorCatalogs::Clear();
    const QorRdgScene& back = *NewManager().GetPredefinedScene(0);
    EXPECT_EQ(back.lightCount, 2);
    EXPECT_EQ(back.groundOn, custom.groundOn);
    EXPECT_EQ(back.backgroundStretch, custom.backgroundStretch);
    EXPECT_EQ(back.backgroundOn, 1);
    EXPECT_EQ(back.shadow, custom.shadow);
    for (const auto field : {&QorRdgScene::ambient, &QorRdgScene::diffuse, &QorRdgScene::specular,
                             &QorRdgScene::groundTransparency, &QorRdgScene::groundReflectivity})
        EXPECT_NEAR(back.*field, custom.*field, 1.0e-6);
    for (const auto field : {&QorRdgScene::color1, &QorRdgScene::color2, &QorRdgScene::direction1,
                             &QorRdgScene::direction2})
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_NEAR((back.*field)[i], (custom.*field)[i], 1.0e-6);
}

TEST_F(CustomFrame, TurnsALightByItsArrow) {
    Open();
    Manipulator("lightManipulator1")->TurnThirdTo({0, 1, 0});
    EXPECT_EQ(PreviewLights()[0]->GetDirection(), (QorMathVector{0, -1, 0}));
    Manipulator("lightManipulator1")->TurnThirdTo({0, 0, 1});
    // The tail points at the eye now; a person drags it to the right.
    const auto mouse = [&](QorMouseEvent::Action iAction, double iX) {
        QorMouseEvent event;
        event.action = iAction;
        event.button = QorMouseEvent::Button::Left;
        event.pixel = {iX, 90.0};
        drawing->HandleMouse(event);
    };
    mouse(QorMouseEvent::Action::Press, 90.0);
    mouse(QorMouseEvent::Action::Move, 120.0);
    mouse(QorMouseEvent::Action::Release, 120.0);
    const QorMathVector turned = PreviewLights()[0]->GetDirection();
    EXPECT_LT(turned.x, -0.1);
    EXPECT_LT(turned.z, -0.5);
    EXPECT_NEAR(turned.Norm(), 1.0, 1.0e-9);
}

TEST_F(CustomFrame, EditsTheColorOfALight) {
    Open();
    Manipulator("lightManipulator1")->Edit();
    EXPECT_EQ(Person::Find<QorDlgColorEditor>("colorEditor")->UserAccept({0.5F, 0.25F, 1.0F}),
              QorUserResult::Done);
    loop.RunPosted();
    EXPECT_FLOAT_EQ(PreviewDiffuse(), 0.5F);
    Manipulator("sphereManipulator")->Edit();
    Manipulator("lightManipulator2")->Edit();
    loop.RunPosted();
    EXPECT_EQ(Person::Cancel("colorEditor"), QorUserResult::Done);
    loop.RunPosted();
    EXPECT_THAT(Accept(), testing::HasSubstr("Color1=\"0.500000,0.250000,1.000000\""));
}

TEST_F(CustomFrame, ShowsTheBackgroundAtOnce) {
    Open();
    Person::Check("sceneDialog/backgroundCheck", false);
    EXPECT_THAT(TakeLog(), ElementsAre("no background"));
    EXPECT_EQ(Find<QorDlgFrame>("backgroundFrame")->GetSensitivity(), QorDlgDISABLE);
    Person::Check("sceneDialog/backgroundCheck");
    EXPECT_THAT(TakeLog(), ElementsAre("background DefaultBackground.jpg 1"));
    Person::Type("sceneDialog/backgroundEditor", "  a b.jpg ");
    EXPECT_THAT(TakeLog(), ElementsAre("clear", "background a b.jpg 1"));
    Person::Check("sceneDialog/backgroundStretchCheck", false);
    EXPECT_THAT(TakeLog(), ElementsAre("background a b.jpg 0"));
}

TEST_F(CustomFrame, RefusesABackgroundWithoutAName) {
    Open();
    host->AnswerNext(QorNotifyConfirm);
    Person::Type("sceneDialog/backgroundEditor", "  ");
    EXPECT_THAT(host->TakeBoxes(),
                ElementsAre(RecordingHost::Box{
                    "errNotify", QorNotifyKind::Error, "Error",
                    "The file name is empty. Enter the name of a picture file."}));
    EXPECT_THAT(TakeLog(), IsEmpty());
}

TEST_F(CustomFrame, BrowsesForABackground) {
    Open();
    Person::Press("sceneDialog/backgroundButton");
    EXPECT_EQ(Person::Find<QorDlgFile>("fileBox")->GetFilters().size(), 9U);
    Person::Cancel("fileBox");
    loop.RunPosted();
    Person::Press("sceneDialog/backgroundButton");
    Person::Find<QorDlgFile>("fileBox")->UserAccept("/pictures/wall.png");
    loop.RunPosted();
    EXPECT_EQ(Find<QorDlgEditor>("backgroundEditor")->GetText(), "/pictures/wall.png");
    EXPECT_THAT(TakeLog(), ElementsAre("clear", "background /pictures/wall.png 1"));
    EXPECT_THROW(Person::Find("fileBox"), std::invalid_argument);
}

TEST_F(CustomFrame, ShowsTheGroundsValuesWithItsSwitch) {
    Open();
    Person::Slide("sceneDialog/groundTransparencySlider", 0.5);
    EXPECT_THAT(TakeLog(), IsEmpty());
    Person::Check("sceneDialog/groundCheck", false);
    EXPECT_THAT(TakeLog(), ElementsAre("ground 0"));
    EXPECT_EQ(Find<QorDlgFrame>("groundFrame")->GetSensitivity(), QorDlgDISABLE);
    Person::Check("sceneDialog/groundCheck");
    EXPECT_THAT(TakeLog(),
                ElementsAre("ground 1", "transparency 0.500000", "reflectivity 0.000000"));
}

TEST_F(CustomFrame, CancelChangesNothingOfTheCustomScene) {
    Open();
    Person::Slide("sceneDialog/diffuseSlider", 0.25);
    testing::internal::CaptureStdout();
    Person::Cancel("sceneDialog");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(*Manager().GetCustomScene(), QorRdgSceneSettings::GetDefault());
}

} // namespace
