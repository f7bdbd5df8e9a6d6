// The scenes that come with the program.
#include "tests/scenes/SceneTest.h"

#include <set>

namespace {

class InstalledScenes : public SceneTest {
protected:
    void SetUp() override { QorSetEnv("QorStartupPath", QorUnicodeString(QOR_RESOURCES)); }
};

TEST_F(InstalledScenes, HaveATitleAPictureAndValuesInRange) {
    const QorRdgSceneManager& manager = Manager();
    ASSERT_GE(manager.GetPredefinedSceneCount(), 10);
    std::set<std::string> titles;
    for (int i = 0; i < manager.GetPredefinedSceneCount(); ++i) {
        const QorRdgScene& scene = *manager.GetPredefinedScene(i);
        SCOPED_TRACE(scene.title);
        EXPECT_FALSE(scene.title.IsNull());
        EXPECT_TRUE(titles.insert(scene.title.Str()).second);
        EXPECT_EQ(scene.backgroundOn, 1);
        EXPECT_GE(scene.lightCount, 1);
        EXPECT_LE(scene.lightCount, 2);
        for (const float share : {scene.ambient, scene.diffuse, scene.specular,
                                  scene.groundTransparency, scene.groundReflectivity}) {
            EXPECT_GE(share, 0.0F);
            EXPECT_LE(share, 1.0F);
        }
        EXPECT_GE(scene.shadow, 0);
        EXPECT_LE(scene.shadow, 10);
        EXPECT_LT(scene.direction1[2], 0.0F); // lights come from above
    }
}

TEST_F(InstalledScenes, HaveTitlesThatFitUnderTheirPicturesInEveryLanguage) {
    constexpr std::size_t most = 17; // at 6 units a character, between two icons
    const QorScopedVariable region("LC_ALL", "en_US.UTF-8");
    for (const char* name : {"en", "de", "fr"}) {
        const QorScopedVariable tongue("LANGUAGE", name);
        QorCatalogs::Clear();
        const QorRdgSceneManager& manager = NewManager();
        for (int i = 0; i < manager.GetPredefinedSceneCount(); ++i) {
            const QorUnicodeString& title = manager.GetPredefinedScene(i)->title;
            EXPECT_LE(title.CountCharacters(), most) << title;
        }
    }
}

TEST_F(InstalledScenes, FollowTheLanguageAndKeepTheChoice) {
    const QorScopedVariable region("LC_ALL", "en_US.UTF-8");
    const QorScopedVariable tongue("LANGUAGE", "de");
    Store("PredefinedScene", 0);
    const QorRdgSceneManager& manager = Manager();
    const QorRdgScene* chosen = manager.GetPredefinedScene(manager.GetPredefinedSceneIndex());
    ASSERT_NE(chosen, nullptr);
    EXPECT_EQ(chosen->index, 0);
    EXPECT_EQ(chosen->title, "Studio-Softbox");
}

} // namespace
