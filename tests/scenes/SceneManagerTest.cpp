#include "scenes/QorRdgSceneSettings.h"
#include "tests/scenes/SceneTest.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using SceneManager = SceneTest;
using Vector = std::array<float, 3>;

TEST_F(SceneManager, WithoutAnythingHasTheCustomSceneAlone) {
    EXPECT_EQ(*Manager().GetCustomScene(), QorRdgSceneSettings::GetDefault());
    EXPECT_EQ(Manager().GetPredefinedSceneCount(), 0);
    EXPECT_EQ(Manager().GetPredefinedScene(0), nullptr);
    EXPECT_EQ(Manager().GetSceneType(), 2);
    EXPECT_EQ(Manager().GetPredefinedSceneIndex(), 0);
    EXPECT_EQ(Manager().GetCurrentScene(), nullptr);
}

TEST_F(SceneManager, WithoutSettingsHasNoScene) {
    QorSettingRepository::SetLocked("RenderingOptionsSettings", true);
    EXPECT_EQ(Manager().GetCustomScene(), nullptr);
    EXPECT_EQ(Manager().GetCurrentScene(), nullptr);
    EXPECT_EQ(Manager().GetPredefinedScene(0), nullptr);
    Manager().Save();
    Manager().SetScene(nullptr);
    QorSettingRepository::SetLocked("RenderingOptionsSettings", false);
}

TEST_F(SceneManager, IsOneUntilTheProgramEnds) {
    EXPECT_EQ(&Manager(), &Manager());
    EXPECT_STREQ(Manager().IsA(), "QorRdgSceneManager");
    QorRunExitHooks();
    EXPECT_EQ(QorRdgSceneManager::MetaObject().GetLiveCount(), 0);
}

TEST_F(SceneManager, ReadsTheCustomSceneAndKeepsDefaultsOfKeysThatDoNotFit) {
    const auto stored = Settings();
    const float two[2] = {0.5F, 0.5F};
    const float color[3] = {0.1F, 0.2F, 0.3F};
    Store("LightCount", 2);
    stored->WriteSetting("LightColor1", two, 2);
    stored->WriteSetting("LightColor2", color, 3);
    stored->WriteSetting("BackgroundImage", QorString("other.png"));
    stored->WriteSetting("LightAmbient", QorString("bright"));
    QorRdgScene expected = QorRdgSceneSettings::GetDefault();
    expected.lightCount = 2;
    expected.color2 = {0.1F, 0.2F, 0.3F};
    expected.backgroundImage = "other.png";
    EXPECT_EQ(*Manager().GetCustomScene(), expected);
}

TEST_F(SceneManager, ReadsEveryKeyOfTheCatalog) {
    directory.Write("start/rendering/room.tga", "x");
    WriteCatalog("Count=\"1\";\n"
                 "Scene1.Light.Ambient=\"0.1\";\nScene1.Light.Diffuse=\"0.2\";\n"
                 "Scene1.Light.Specular=\"0.3\";\nScene1.Light.Shadow=\"7\";\n"
                 "Scene1.Light.Color1=\"1,0.5,0.25\";\nScene1.Light.Direction1=\"1,2,3\";\n"
                 "Scene1.Light.Color2=\"0,0.5,1\";\nScene1.Light.Direction2=\"-1,-2,-3\";\n"
                 "Scene1.Background.Image=\"room.tga\";\nScene1.Background.Stretch=\"0\";\n"
                 "Scene1.Ground=\"1\";\nScene1.Ground.Transparency=\"0.4\";\n"
                 "Scene1.Ground.Reflectivity=\"0.5\";\n",
                 "Scene1.Title=\"Room\";\n");
    QorRdgScene expected;
    expected.lightCount = 2;
    expected.ambient = 0.1F;
    expected.diffuse = 0.2F;
    expected.specular = 0.3F;
    expected.shadow = 7;
    expected.color1 = {1.0F, 0.5F, 0.25F};
    expected.direction1 = {1.0F, 2.0F, 3.0F};
    expected.color2 = {0.0F, 0.5F, 1.0F};
    expected.direction2 = {-1.0F, -2.0F, -3.0F};
    expected.backgroundOn = 1;
    expected.backgroundImage = directory.GetPath("start/rendering/room.tga");
    expected.title = "Room";
    expected.groundOn = 1;
    expected.groundTransparency = 0.4F;
    expected.groundReflectivity = 0.5F;
    EXPECT_EQ(*Manager().GetPredefinedScene(0), expected);
}

TEST_F(SceneManager, GivesAPredefinedSceneDefaultsOfItsOwn) {
    WriteCatalog("Count=\"1\";\nScene1.Background.Image=\"missing.jpg\";\n");
    QorRdgScene expected;
    expected.ambient = 0.38F;
    expected.diffuse = 0.35F;
    expected.specular = 0.97F;
    expected.shadow = 1;
    expected.color1 = {1.0F, 1.0F, 1.0F};
    expected.direction1 = {-1.0F, 1.0F, 1.0F};
    expected.color2 = {1.0F, 1.0F, 1.0F};
    expected.direction2 = {1.0F, 1.0F, 1.0F};
    expected.backgroundStretch = 1;
    EXPECT_EQ(*Manager().GetPredefinedScene(0), expected);
}

TEST_F(SceneManager, KeepsWhatParsesOfAValue) {
    struct Row {
        const char* entry;
        Vector color1;
        float ambient;
        int shadow;
        int lightCount;
    };

    constexpr Vector white = {1.0F, 1.0F, 1.0F};
    const std::vector<Row> rows = {
        {"Scene1.Light.Color1=\"0.5,0.25,x\";", {0.5F, 0.25F, 0.0F}, 0.38F, 1, 1},
        {"Scene1.Light.Color1=\"0.5 0.25 1\";", {0.5F, 0.0F, 0.0F}, 0.38F, 1, 1},
        {"Scene1.Light.Color1=\"\";", {}, 0.38F, 1, 1},
        {"Scene1.Light.Ambient=\"dark\";", white, 0.0F, 1, 0},
        {"Scene1.Light.Ambient=\"0.5 or so\";", white, 0.5F, 1, 0},
        {"Scene1.Light.Ambient=\"0,5\";", white, 0.0F, 1, 0},
        {"Scene1.Light.Shadow=\"4.9\";", white, 0.38F, 4, 0},
        {"Scene1.Light.Shadow=\"soft\";", white, 0.38F, 0, 0},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.entry);
        WriteCatalog(std::string("Count=\"1\";\n") + row.entry + "\n");
        QorCatalogs::Clear();
        const QorRdgScene* scene = NewManager().GetPredefinedScene(0);
        ASSERT_NE(scene, nullptr);
        EXPECT_EQ(scene->color1, row.color1);
        EXPECT_EQ(scene->ambient, row.ambient);
        EXPECT_EQ(scene->shadow, row.shadow);
        EXPECT_EQ(scene->lightCount, row.lightCount);
    }
}

TEST_F(SceneManager, SurvivesACountThatIsWrong) {
    struct Row {
        const char* count;
        int scenes;
        std::size_t warnings;
    };

    for (const Row& row : {Row{"many", 0, 0}, Row{"-3", 0, 0}, Row{"", 0, 0}, Row{"12", 12, 0},
                           Row{"99999999999", 0, 0}, Row{"2000000000", 100'000, 1}}) {
        SCOPED_TRACE(row.count);
        WriteCatalog(std::string("Count=\"") + row.count + "\";\n");
        QorCatalogs::Clear();
        EXPECT_EQ(NewManager().GetPredefinedSceneCount(), row.scenes);
        EXPECT_EQ(warnings.Take().size(), row.warnings);
    }
}

TEST_F(SceneManager, SortsByTitleAndTranslatesTheStoredChoice) {
    WriteTitles({"b", "a", "a"});
    Store("PredefinedScene", 0);
    const QorRdgSceneManager& manager = Manager();
    std::vector<int> indexes;
    for (int i = 0; i < manager.GetPredefinedSceneCount(); ++i)
        indexes.push_back(manager.GetPredefinedScene(i)->index);
    EXPECT_THAT(indexes, ElementsAre(1, 2, 0));
    EXPECT_EQ(manager.GetPredefinedSceneIndex(), 2);
    Manager().Save();
    EXPECT_EQ(Stored("PredefinedScene"), 0);
}

TEST_F(SceneManager, KeepsAStoredChoiceThatIsNotThere) {
    WriteTitles({"b", "a"});
    Store("PredefinedScene", 7);
    EXPECT_EQ(Manager().GetPredefinedSceneIndex(), 7);
    EXPECT_EQ(Manager().GetCurrentScene(), nullptr);
    Store("PredefinedScene", 9);
    Manager().Save();
    EXPECT_EQ(Stored("PredefinedScene"), 9); // there is no scene whose number could be written
    Store("PredefinedScene", 2147483647);
    EXPECT_EQ(NewManager().GetCurrentScene(), nullptr);
}

TEST_F(SceneManager, RefusesAChoiceThatIsNone) {
    WriteTitles({"b", "a"});
    EXPECT_EQ(Manager().SetPredefinedScene(1), 1);
    EXPECT_EQ(Manager().SetPredefinedScene(-1), 1);
    EXPECT_EQ(Manager().SetPredefinedScene(2), 1);
    EXPECT_EQ(Manager().GetPredefinedSceneIndex(), 1);
}

TEST_F(SceneManager, TheCurrentSceneIsTheOneSavedLast) {
    WriteTitles({"a"});
    Store("SceneType", 1);
    QorRdgSceneManager& manager = Manager();
    manager.SetSceneType(2);
    EXPECT_EQ(manager.GetCurrentScene(), manager.GetCustomScene());
    manager.Save();
    EXPECT_EQ(manager.GetCurrentScene(), manager.GetPredefinedScene(0));
    manager.SetSceneType(3);
    manager.Save();
    EXPECT_EQ(manager.GetCurrentScene(), nullptr);
}

TEST_F(SceneManager, SavesTheCustomSceneAndTheChoiceToDisk) {
    WriteTitles({"a"});
    Manager().GetCustomScene()->ambient = 0.6F;
    Manager().Save();
    EXPECT_EQ(directory.Read("config/qorworkbench/RenderingOptionsSettings.settings"),
              "# QorWorkbench settings, version 1\n"
              "SceneType = 2\nPredefinedScene = 0\nLightCount = 1\nLightAmbient = 0.6\n"
              "LightDiffuse = 1.0\nLightSpecular = 0.7\nLightColor1 = 1.0, 1.0, 1.0\n"
              "LightDirection1 = -1.0, 1.0, 1.0\nLightColor2 = 1.0, 1.0, 1.0\n"
              "LightDirection2 = 1.0, 1.0, 1.0\nLightShadow = 1\nBackgroundOn = 1\n"
              "BackgroundImage = \"DefaultBackground.jpg\"\nBackgroundStretch = 1\n"
              "GroundOn = 1\nGroundTransparency = 0.0\nGroundReflectivity = 0.0\n");
}

TEST_F(SceneManager, AppliesASceneInOrder) {
    OpenViewer();
    QorRdgScene scene = QorRdgSceneSettings::GetDefault();
    scene.backgroundImage = "a.jpg";
    scene.groundTransparency = 0.25F;
    scene.shadow = 4;
    Manager().SetScene(&scene);
    EXPECT_THAT(TakeLog(), ElementsAre("background a.jpg 1", "ground 1", "transparency 0.250000",
                                       "reflectivity 0.000000"));
    EXPECT_EQ(Stored("SoftShadows"), 4);
    EXPECT_THAT(directory.List("config/qorworkbench"), IsEmpty()); // nothing went to disk
    scene.backgroundOn = 0;
    scene.groundOn = 0;
    Manager().SetScene(&scene);
    EXPECT_THAT(TakeLog(), ElementsAre("no background", "ground 0"));
}

TEST_F(SceneManager, ClearsARenderedPictureWhenTheBackgroundChanges) {
    OpenViewer();
    Manager().SetBackground("a.jpg", true);
    Manager().SetBackground("a.jpg", false);
    EXPECT_THAT(TakeLog(), ElementsAre("background a.jpg 1", "background a.jpg 0"));
    Manager().SetBackground("b.jpg", false);
    EXPECT_THAT(TakeLog(), ElementsAre("clear", "background b.jpg 0"));
}

TEST_F(SceneManager, SetsLights) {
    OpenViewer();
    QorRdgScene scene = QorRdgSceneSettings::GetDefault();
    scene.color1 = {1.0F, 0.5F, 0.0F};
    scene.diffuse = 0.5F;
    scene.specular = 0.25F;
    const unsigned long drawn = viewer->GetDrawCount();
    Manager().SetScene(&scene);
    EXPECT_EQ(viewer->GetDrawCount(), drawn + 1);
    const auto lights = Lights();
    ASSERT_NE(lights[0], nullptr);
    EXPECT_EQ(lights[1], nullptr);
    EXPECT_EQ(lights[0]->GetType(), QorLightType::Directional);
    EXPECT_EQ(lights[0]->GetMode(), QorLightMode::Model);
    EXPECT_EQ(lights[0]->GetPosition(), QorMathPoint());
    EXPECT_EQ(lights[0]->GetDirection(), (QorMathVector{-1.0, 1.0, 1.0}));
    EXPECT_EQ(lights[0]->GetAngle(), 180.0F);
    float parts[3][4];
    lights[0]->GetColorParameters(parts[0], parts[1], parts[2]);
    EXPECT_THAT(parts[0], ElementsAre(0.0F, 0.0F, 0.0F, 1.0F));
    EXPECT_THAT(parts[1], ElementsAre(0.5F, 0.25F, 0.0F, 1.0F));
    EXPECT_THAT(parts[2], ElementsAre(0.25F, 0.125F, 0.0F, 1.0F));
    float ambient[3];
    viewer->GetGlobalAmbientLight(ambient[0], ambient[1], ambient[2]);
    EXPECT_THAT(ambient, ElementsAre(0.2F, 0.2F, 0.2F));
}

TEST_F(SceneManager, ShowsAsManyLightsAsTheCountSays) {
    struct Row {
        int count;
        bool first;
        bool second;
    };

    OpenViewer();
    QorRdgScene scene = QorRdgSceneSettings::GetDefault();
    for (const Row& row : {Row{0, false, false}, Row{1, true, false}, Row{2, true, true},
                           Row{3, true, false}, Row{-1, false, false}}) {
        scene.lightCount = row.count;
        Manager().SetScene(&scene);
        EXPECT_EQ(Lights()[0] != nullptr, row.first) << row.count;
        EXPECT_EQ(Lights()[1] != nullptr, row.second) << row.count;
    }
}

TEST_F(SceneManager, ShowsTheLightsInEveryViewpoint) {
    OpenViewer();
    const Qor3DViewpoint_var left = QorMake<Qor3DViewpoint>();
    const Qor3DViewpoint_var right = QorMake<Qor3DViewpoint>();
    FakeAdapters::_viewpoints = {left, right, QorMake<Qor2DViewpoint>()};
    QorRdgScene scene = QorRdgSceneSettings::GetDefault();
    scene.lightCount = 2;
    Manager().SetScene(&scene);
    for (const Qor3DViewpoint_var& one : {left, right})
        EXPECT_EQ(one->GetRoot().GetChildren().size(), 2U);
}

TEST_F(SceneManager, DoesNothingWithoutAViewerOrItsAdapters) {
    const QorRdgScene scene = QorRdgSceneSettings::GetDefault();
    Manager().SetScene(&scene);
    EXPECT_THAT(TakeLog(), IsEmpty());
    for (const QorInterfaceId* one : Interfaces())
        QorExtension::Unregister("Qor3DViewer", *one);
    OpenViewer();
    Manager().SetScene(&scene);
    EXPECT_THAT(TakeLog(), IsEmpty());
    EXPECT_NE(Lights()[0], nullptr);
}

TEST_F(SceneManager, FindsAPictureByItsFullPathInARenderingFolder) {
    const std::string path = directory.Write("start/rendering/sub/a.tga", "x");
    const std::string outside = directory.Write("elsewhere/a.tga", "x");
    WriteCatalog("Count=\"3\";\nScene1.Background.Image=\"" + path +
                     "\";\nScene2.Background.Image=\"" + outside +
                     "\";\nScene3.Background.Image=\"\";\n",
                 "Scene1.Title=\"1\";\nScene2.Title=\"2\";\nScene3.Title=\"3\";\n");
    EXPECT_EQ(Manager().GetPredefinedScene(0)->backgroundImage.Str(), path);
    EXPECT_EQ(Manager().GetPredefinedScene(1)->backgroundOn, 0);
    EXPECT_EQ(Manager().GetPredefinedScene(2)->backgroundOn, 0);
}

TEST_F(SceneManager, FindsAPictureByEveryNameOfARenderingFolder) {
    const std::string path = directory.Write("real/rendering/sub/a.tga", "x");
    std::filesystem::create_directory_symlink(directory.GetPath("real"), directory.GetPath("link"));
    const std::string start = directory.GetPath("start") + "/:" + directory.GetPath("link") + "/";
    for (const std::string& name : {path, directory.GetPath("link/rendering/sub/a.tga"),
                                    directory.GetPath("real/rendering/../rendering//sub/a.tga")}) {
        WriteCatalog("Count=\"1\";\nScene1.Background.Image=\"" + name + "\";\n");
        QorSetEnv("QorStartupPath", QorUnicodeString(start));
        QorCatalogs::Clear();
        const QorRdgScene& scene = *NewManager().GetPredefinedScene(0);
        EXPECT_EQ(scene.backgroundOn, 1) << name;
        EXPECT_TRUE(std::filesystem::exists(scene.backgroundImage.Str())) << scene.backgroundImage;
    }
}

} // namespace
