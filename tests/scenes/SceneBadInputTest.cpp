#include "platform/vis/QorPictureService.h"
#include "tests/scenes/SceneDialogTest.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

using ::testing::ElementsAre;

namespace {

/// Ten thousand scenes, damaged pictures, places that cannot be written.
class BadScenes : public SceneTest {
protected:
    /// Picture files as people have them: missing, empty, text, cut off, a directory, a pipe.
    std::vector<std::string> DamagedPictures() const {
        const std::string pipe = directory.GetPath("start/rendering/pipe.jpg");
        std::vector<std::string> pictures = {
            directory.GetPath("start/rendering/missing.jpg"),
            directory.Write("start/rendering/empty.jpg", ""),
            directory.Write("start/rendering/text.jpg", "this is no picture"),
            directory.Write("start/rendering/cut.jpg", "\xff\xd8\xff\xe0\0\x10JFIF"),
            directory.Write("start/rendering/claims.ppm", "P6 2000000000 2000000000 255 "),
            directory.GetPath("start/rendering")};
        if (mkfifo(pipe.c_str(), 0600) == 0)
            pictures.push_back(pipe);
        return pictures;
    }
};

TEST_F(BadScenes, TenThousandOfThemAreSortedStably) {
    constexpr int count = 10'000;
    std::vector<std::string> titles;
    titles.reserve(count);
    for (int i = 0; i < count; ++i)
        titles.push_back("scene " + std::to_string(i * 7919 % 100));
    WriteTitles(titles);
    const QorRdgSceneManager& manager = Manager();
    ASSERT_EQ(manager.GetPredefinedSceneCount(), count);
    for (int i = 1; i < count; ++i) {
        const QorRdgScene& one = *manager.GetPredefinedScene(i - 1);
        const QorRdgScene& next = *manager.GetPredefinedScene(i);
        ASSERT_TRUE(one.title < next.title || (one.title == next.title && one.index < next.index))
            << i;
    }
}

TEST_F(BadScenes, OfARepeatedKeyOneValueIsTaken) {
    WriteCatalog("Count=\"1\";\nScene1.Light.Ambient=\"0.1\";\nScene1.Light.Ambient=\"0.9\";\n"
                 "Count=\"1\";\n");
    ASSERT_EQ(Manager().GetPredefinedSceneCount(), 1);
    const float ambient = Manager().GetPredefinedScene(0)->ambient;
    EXPECT_TRUE(ambient == 0.1F || ambient == 0.9F) << ambient;
}

TEST_F(BadScenes, DamagedPicturesShowNoThumbnailAndDoNoHarm) {
    const QorScopedVariable temporary("TMPDIR", directory.GetPath());
    const std::vector<std::string> pictures = DamagedPictures();
    RecordingHost host;
    auto* father = new QorDlgDialog(nullptr, "father");
    auto* list = new QorRdgIconList(father, "list", 232.0F, 523.0F);
    const std::vector<QorUnicodeString> texts(pictures.begin(), pictures.end());
    list->SetIcons(texts.data(), texts.data(), static_cast<int>(texts.size()), -1, 64);
    QorRdgWorkers::Finish();
    EXPECT_EQ(QorRdgWorkers::CountPending(), 0U);
    EXPECT_THAT(directory.List(".icons"), ElementsAre());
    father->RequestDelayedDestruction();
    loop.RunPosted();
}

/// The same behind a dialog, with settings or a cache that cannot be written.
class UnwritablePlaces : public SceneDialogTest {
protected:
    void TearDown() override {
        for (const std::string& folder : closed)
            chmod(folder.c_str(), 0700);
        SceneDialogTest::TearDown();
    }

    /// A folder that takes no new file. Not for the superuser, who may write everywhere: there a
    /// file stands in the folder's place.
    void Close(const std::string& iFolder) {
        std::filesystem::create_directories(iFolder);
        if (geteuid() != 0) {
            chmod(iFolder.c_str(), 0500);
            closed.push_back(iFolder);
            return;
        }
        std::filesystem::remove_all(iFolder);
        std::ofstream(iFolder) << "in the way";
    }

    std::vector<std::string> closed;
};

TEST_F(UnwritablePlaces, ACacheThatCannotBeWrittenStillOffersAllScenes) {
    const QorScopedVariable temporary("TMPDIR", directory.GetPath());
    Close(directory.GetPath(".icons"));
    opener->Open();
    QorRdgWorkers::Finish();
    EXPECT_EQ(List()->Select(2, QorDlgNoNotify), 1) << "all three scenes are offered";
}

TEST_F(UnwritablePlaces, TheCustomSceneStaysWhenSettingsCannotBeSaved) {
    QorRdgScene& custom = *Manager().GetCustomScene();
    custom.ambient = 0.625F;
    custom.backgroundImage = "mine.jpg";
    Close(directory.GetPath("config/qorworkbench"));
    Manager().Save();
    EXPECT_FALSE(warnings.Take().empty()) << "somebody is told";
    EXPECT_EQ(Manager().GetCustomScene()->ambient, 0.625F);
    float stored = 0.0F;
    ASSERT_TRUE(Settings()->ReadSetting("LightAmbient", &stored));
    EXPECT_EQ(stored, 0.625F) << "the running program still knows it";
}

} // namespace
