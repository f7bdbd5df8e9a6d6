// What is kept of the pictures that were rendered.
#include "platform/frame/QorFrmDesktop.h"
#include "tests/quickrender/EasyRenderTest.h"

#include <filesystem>

namespace {

class RecentRenders : public EasyRenderTest {
protected:
    static constexpr const char* folder = "data/qorworkbench/recent-renders";

    void Add(int iWidth, int iHeight = 10) {
        QorRdgRecentRenders::Add(*MakePicture(iWidth, iHeight), {0, 0, iWidth, iHeight}, 0.0);
        QorRdgRecentRenders::Finish();
    }

    /// What the newest files hold, as their service noted it.
    std::vector<std::string> Contents() const {
        std::vector<std::string> contents;
        for (const QorRdgRecentRenders::Picture& one : QorRdgRecentRenders::List()) {
            std::ifstream file(one.path.Str());
            std::string text;
            std::getline(file, text);
            contents.push_back(text);
        }
        return contents;
    }
};

TEST_F(RecentRenders, KeepTheNewestTwentyNewestFirst) {
    EXPECT_TRUE(QorRdgRecentRenders::List().empty());
    for (int i = 1; i <= 23; ++i)
        Add(i);
    const std::vector<std::string> contents = Contents();
    ASSERT_EQ(contents.size(), 20U);
    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(contents[i], "PNG " + std::to_string(23 - i) + "x10 0");
    EXPECT_EQ(directory.List(folder).size(), 20U);
    EXPECT_EQ(directory.List(folder).front(), "render-000004.png");
}

TEST_F(RecentRenders, NobodyElseMayLook) {
    Add(5);
    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(directory.GetPath(folder)).permissions(), perms::owner_all);
    for (const QorRdgRecentRenders::Picture& one : QorRdgRecentRenders::List())
        EXPECT_EQ(std::filesystem::status(one.path.Str()).permissions(),
                  perms::owner_read | perms::owner_write);
}

TEST_F(RecentRenders, LeaveOtherFilesAlone) {
    directory.Write(std::string(folder) + "/holiday.png", "mine");
    directory.Write(std::string(folder) + "/render-12a.png", "mine");
    directory.Write(std::string(folder) + "/render-000041.png", "before");
    for (int i = 1; i <= 21; ++i)
        Add(i);
    EXPECT_EQ(Contents().size(), 20U);
    EXPECT_EQ(directory.Read(std::string(folder) + "/holiday.png"), "mine");
    EXPECT_EQ(directory.Read(std::string(folder) + "/render-12a.png"), "mine");
    EXPECT_EQ(directory.Read(std::string(folder) + "/render-000041.png"), "");
    EXPECT_EQ(directory.Read(std::string(folder) + "/render-000062.png"), "PNG 21x10 0");
}

TEST_F(RecentRenders, TakeOneWorkerHoweverManyWait) {
    for (int i = 1; i <= 5; ++i)
        QorRdgRecentRenders::Add(*MakePicture(i, 10), {0, 0, i, 10}, 0.0);
    EXPECT_LE(QorRdgWorkers::CountAside(), 2U) << "one more if the first had nothing left to do";
    EXPECT_EQ(QorRdgWorkers::CountPending(), 0U) << "nobody waits for what takes long";
    QorRdgRecentRenders::Finish();
    EXPECT_EQ(Contents().size(), 5U);
    Add(6);
    EXPECT_EQ(Contents().size(), 6U);
}

TEST_F(RecentRenders, AFailureLeavesNothing) {
    pictures.failure = 1;
    Add(5);
    EXPECT_TRUE(directory.List(folder).empty());
    pictures.failure = 0;
    directory.Write("data2", "a file where a folder should be");
    const QorScopedVariable elsewhere("XDG_DATA_HOME", directory.GetPath("data2"));
    Add(5);
    EXPECT_TRUE(QorRdgRecentRenders::List().empty());
}

TEST_F(RecentRenders, WhatWaitsIsWrittenAtTheEndOfTheProgram) {
    for (int i = 1; i <= 5; ++i)
        QorRdgRecentRenders::Add(*MakePicture(i, 10), {0, 0, i, 10}, 0.0);
    QorRunExitHooks();
    EXPECT_EQ(Contents().size(), 5U);
}

TEST_F(RecentRenders, HoldFinishedAndAbortedRendersOnce) {
    Store("ScreenResolution", 0);
    Store("CustomResolution", 50);
    Open();
    RenderOnce(787, 590);
    Check("renderCheck");
    QorRdgProgress half;
    half.percent = 50;
    half.picture = MakePicture(787, 590);
    script.progress.push_back(half);
    Pump();
    Check("renderCheck", false);
    loop.RunPosted();
    script.picture.Reset();
    Check("renderCheck"); // aborted before there was a picture
    Check("renderCheck", false);
    loop.RunPosted();
    QorRdgRecentRenders::Finish();
    EXPECT_EQ(Contents(), (std::vector<std::string>{"PNG 787x590 50", "PNG 787x590 50"}));
}

TEST_F(RecentRenders, HoldTheAreaAlone) {
    Open();
    Check("areaCheck");
    ASSERT_EQ(Area(viewer)->SetArea(50, 40, 250, 140), S_OK);
    RenderOnce();
    QorRdgRecentRenders::Finish();
    EXPECT_EQ(Contents(), (std::vector<std::string>{"PNG 200x100 0"}));
}

TEST_F(RecentRenders, OpenInTheDesktopsProgramForPictures) {
    struct Desktop : QorFrmDesktop {
        bool OpenDocument(const QorUnicodeString& iPath) override {
            opened.push_back(iPath.Str());
            return true;
        }

        std::vector<std::string> opened;
    } desktop;

    Add(5);
    const QorUnicodeString path = QorRdgRecentRenders::List().at(0).path;
    EXPECT_FALSE(QorRdgRecentRenders::Open(path)) << "no host, no desktop";
    QorFrmDesktop::Install(&desktop);
    EXPECT_TRUE(QorRdgRecentRenders::Open(path));
    EXPECT_FALSE(QorRdgRecentRenders::Open(directory.GetPath("gone.png")));
    QorFrmDesktop::Install(nullptr);
    EXPECT_EQ(desktop.opened, (std::vector<std::string>{path.Str()}));
}

} // namespace
