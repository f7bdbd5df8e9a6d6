// Saving what a quick render has made.
#include "tests/quickrender/EasyRenderTest.h"

#include <algorithm>
#include <filesystem>

namespace {

class EasyRenderSave : public EasyRenderTest {
protected:
    static QorDlgStdFile* File() { return Person::Find<QorDlgStdFile>("fileBox"); }

    static void PressSave() {
        ASSERT_EQ(Person::Press("renderToolbar/saveButton"), QorUserResult::Done);
    }

    /// Renders, and has the file dialog accept a path.
    void Save(const std::string& iPath, int iFilter = 0, int iWidth = 400, int iHeight = 300) {
        if (Dialog() == nullptr)
            Open();
        RenderOnce(iWidth, iHeight);
        PressSave();
        EXPECT_EQ(File()->UserSetFilter(iFilter), QorUserResult::Done);
        EXPECT_EQ(File()->UserAccept(iPath), QorUserResult::Done);
        loop.RunPosted();
        EXPECT_FALSE(Exists("fileBox"));
    }

    static std::vector<std::string> TakeOwnTraces() {
        std::vector<std::string> lines;
        for (const std::string& line : QorTraceChannel::TakeRecorded())
            if (line.find("::Save") != std::string::npos)
                lines.push_back(line);
        return lines;
    }

    [[nodiscard]] std::string Path(std::string_view iName) const {
        return directory.GetPath(iName);
    }
};

TEST_F(EasyRenderSave, TheFileDialogOffersElevenFormats) {
    Open();
    EXPECT_EQ(Person::Press("renderToolbar/saveButton"), QorUserResult::Insensitive);
    RenderOnce();
    PressSave();
    EXPECT_TRUE(File()->IsSave());
    EXPECT_EQ(File()->GetVisibility(), QorDlgSHOW);
    EXPECT_EQ(File()->GetFather(), Dialog());
    EXPECT_EQ(File()->GetTitle(), "Save Picture As");
    EXPECT_EQ(File()->GetActiveFilterIndex(), 0);
    EXPECT_TRUE(File()->GetSelection().IsNull());
    EXPECT_EQ(File()->GetExtensions(),
              (std::vector<QorString>{"tif", "rgb", "bmp", "jpg", "pic", "psd", "png", "tga"}));
    std::string patterns;
    for (const QorDlgFile::Filter& filter : File()->GetFilters()) {
        patterns += filter.pattern.Str() + " ";
        EXPECT_NE(filter.label.Str().find(filter.pattern.Str()), std::string::npos) << filter.label;
    }
    EXPECT_EQ(patterns, "*.tif *.tif *.rgb *.bmp *.jpg *.jpg *.jpg *.pic *.psd *.png *.tga ");
    EXPECT_EQ(Person::Cancel("fileBox"), QorUserResult::Done);
    loop.RunPosted();
    EXPECT_FALSE(Exists("fileBox"));
    PressSave();
    EXPECT_EQ(Person::Close("fileBox"), QorUserResult::Done);
    loop.RunPosted();
    EXPECT_FALSE(Exists("fileBox"));
}

TEST_F(EasyRenderSave, EachFilterWritesItsFormat) {
    const char* rows[] = {"out0.tif TIFF",      "out1.tif TIFFPB",    "out2.rgb RGB",
                          "out3.bmp BMP",       "out4.jpg JPEG_FAIR", "out5.jpg JPEG",
                          "out6.jpg JPEG_HIGH", "out7.pic PICT",      "out8.psd PSD",
                          "out9.png PNG",       "out10.tga TGA"};
    for (int filter = 0; filter < 11; ++filter) {
        Save(Path("out" + std::to_string(filter)), filter);
        const std::string row = rows[filter];
        const std::string name = row.substr(0, row.find(' '));
        EXPECT_EQ(directory.Read(name), row.substr(row.find(' ') + 1) + " 400x300 0");
    }
}

TEST_F(EasyRenderSave, ThePathIsKeptAsTyped) {
    struct Row {
        const char* typed;
        int filter;
        const char* file;
        const char* keyword;
    };

    directory.Write("my.dir/there", "");
    for (const Row& row :
         {Row{"a.png", 0, "a.png", "TIFF"}, Row{"b.", 9, "b.", "PNG"},
          Row{"my.dir/out", 9, "my.dir/out", "PNG"}, Row{"c", 9, "c.png", "PNG"}}) {
        Save(Path(row.typed), row.filter);
        EXPECT_EQ(directory.Read(row.file), std::string(row.keyword) + " 400x300 0") << row.typed;
    }
}

TEST_F(EasyRenderSave, TracesWhatItDoes) {
    QorTraceChannel::StartRecording(4);
    Save(Path("out"), 9);
    const std::vector<std::string> lines = TakeOwnTraces();
    ASSERT_EQ(lines.size(), 6U);
    EXPECT_EQ(lines[0], "(QorRdgEasyRenderDialog::SaveCB) \n");
    EXPECT_EQ(lines[1], "(QorRdgEasyRenderDialog::SaveOKCB) File has been selected\n");
    EXPECT_EQ(lines[2], "(QorRdgEasyRenderDialog::SaveOKCB) frameFmt=10\n");
    EXPECT_TRUE(lines[3].starts_with("(QorRdgEasyRenderDialog::SaveImage) image="));
    EXPECT_TRUE(lines[3].ends_with(" filename='" + Path("out.png") + "' fmt=10\n")) << lines[3];
    EXPECT_EQ(lines[4], "(QorRdgEasyRenderDialog::SaveImage) format=PNG\n");
    EXPECT_EQ(lines[5],
              "(QorRdgEasyRenderDialog::SaveImage) filename='" + Path("out.png") + "' rc=0\n");
    PressSave();
    Person::Cancel("fileBox");
    QorTraceChannel::StopRecording();
    EXPECT_EQ(TakeOwnTraces(),
              (std::vector<std::string>{"(QorRdgEasyRenderDialog::SaveCB) \n",
                                        "(QorRdgEasyRenderDialog::SaveCancelCB) \n"}));
}

TEST_F(EasyRenderSave, AsksBeforeItReplacesAFile) {
    const std::string path = directory.Write("old.png", "old");
    host->AnswerNext(QorNotifyNo);
    Save(path, 9);
    EXPECT_EQ(host->TakeBoxes(),
              (std::vector<RecordingHost::Box>{{"errNotify", QorNotifyKind::Warning, "Warning",
                                                path + " exists already. Replace it?"}}));
    EXPECT_EQ(directory.Read("old.png"), "old");
    EXPECT_EQ(Enabled(), "soarS") << "it can be saved again";

    host->AnswerNext(QorNotifyConfirm);
    Save(path, 9);
    EXPECT_EQ(directory.Read("old.png"), "PNG 400x300 0");
}

TEST_F(EasyRenderSave, AFolderIsNotAskedAboutButLeftToTheWriter) {
    std::filesystem::create_directory(Path("folder.png"));
    pictures.failure = 3;
    host->AnswerNext(QorNotifyConfirm);
    Save(Path("folder"), 9);
    const std::vector<RecordingHost::Box> boxes = host->TakeBoxes();
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_EQ(boxes.front().kind, QorNotifyKind::Error);
}

TEST_F(EasyRenderSave, PressingTwiceOpensOneFileDialog) {
    Open();
    RenderOnce();
    PressSave();
    const QorDlgStdFile* first = File();
    PressSave();
    EXPECT_EQ(std::ranges::count_if(
                  QorDlgDialog::GetAll(),
                  [](const QorDlgDialog* iOne) { return iOne->GetName() == "fileBox"; }),
              1);
    EXPECT_EQ(File(), first);
    Person::Cancel("fileBox");
    loop.RunPosted();
    PressSave();
    EXPECT_EQ(File()->GetVisibility(), QorDlgSHOW);
}

TEST_F(EasyRenderSave, TheQuestionNamesTheFileWithItsExtension) {
    directory.Write("old.tga", "old");
    host->AnswerNext(QorNotifyNo);
    Save(Path("old"), 10);
    EXPECT_EQ(host->TakeBoxes().at(0).text, Path("old.tga") + " exists already. Replace it?");
}

TEST_F(EasyRenderSave, AFailureIsToldAndThePictureStays) {
    pictures.failure = 5;
    QorTraceChannel::StartRecording(4);
    host->AnswerNext(QorNotifyConfirm);
    Save(Path("out.png"), 9);
    QorTraceChannel::StopRecording();
    EXPECT_EQ(host->TakeBoxes(),
              (std::vector<RecordingHost::Box>{
                  {"errNotify", QorNotifyKind::Error, "Error",
                   "The picture cannot be saved. " + Path("out.png") + ": the disk is full"}}));
    const std::vector<std::string> lines = TakeOwnTraces();
    EXPECT_EQ(lines.back(), "(QorRdgEasyRenderDialog::SaveOKCB) ERROR:5\n");
    pictures.failure = 0;
    PressSave();
    File()->UserAccept(Path("out.png"));
    EXPECT_EQ(directory.Read("out.png"), "TIFF 400x300 0");
}

TEST_F(EasyRenderSave, WithoutAPictureTheFileDialogStaysOpen) {
    Open();
    RenderOnce();
    PressSave();
    Check("renderCheck"); // takes the picture away
    EXPECT_EQ(File()->UserAccept(Path("out.png")), QorUserResult::Done);
    loop.RunPosted();
    EXPECT_TRUE(Exists("fileBox"));
    EXPECT_EQ(directory.Read("out.png"), "");
    Finish();
    File()->UserAccept(Path("out.png"));
    EXPECT_EQ(directory.Read("out.png"), "TIFF 400x300 0");
}

TEST_F(EasyRenderSave, ARenderThatBeginsDuringTheQuestionSavesNothing) {
    const std::string path = directory.Write("old.png", "old");
    host->AnswerNext([&](QorDlgNotify& iBox) {
        Check("renderCheck");
        iBox.UserAnswer(QorNotifyConfirm);
    });
    Save(path, 9);
    EXPECT_EQ(directory.Read("old.png"), "old");
    Finish();
}

TEST_F(EasyRenderSave, OnlyTheAreaIsWritten) {
    Open();
    Check("areaCheck");
    ASSERT_EQ(Area(viewer)->SetArea(50, 40, 250, 140), S_OK);
    Save(Path("out"), 9);
    EXPECT_EQ(directory.Read("out.png"), "PNG 200x100 0");
}

TEST_F(EasyRenderSave, ACustomResolutionGoesIntoTheFile) {
    struct Row {
        int resolution, unit;
        const char* density;
    };

    Store("ScreenResolution", 0);
    for (const Row& row : {Row{300, 0, "300"}, Row{100, 1, "254"}}) {
        Store("CustomResolution", row.resolution);
        Store("CustomUnit", row.unit);
        Open();
        const std::string name = std::to_string(row.resolution);
        Save(Path(name), 9, 20, 10);
        EXPECT_EQ(directory.Read(name + ".png"), std::string("PNG 20x10 ") + row.density);
        Person::Close("renderToolbar");
        loop.RunPosted();
    }
}

TEST_F(EasyRenderSave, ClosingTheToolBarDuringTheQuestionSavesNothing) {
    const std::string path = directory.Write("old.png", "old");
    Open();
    RenderOnce();
    PressSave();
    host->AnswerNext([&](QorDlgNotify& /*iBox*/) { Header("EasyRender")->UserStart(); });
    File()->UserAccept(path);
    loop.RunPosted();
    EXPECT_EQ(directory.Read("old.png"), "old");
    EXPECT_EQ(Dialog(), nullptr);
}

TEST_F(EasyRenderSave, SavesImagesForProgramsToo) {
    auto* probe = new EasyRenderProbe(*frame);
    QorUnicodeString path = Path("a");
    EXPECT_EQ(probe->SaveImage(nullptr, path, 10), -1);
    const QorPixelImage_var picture = MakePicture(8, 6);
    for (const auto& [code, keyword] : {std::pair{0, "TIFF"}, std::pair{12, "TIFF"},
                                        std::pair{11, "TGA"}, std::pair{2, "TIFFPB"}}) {
        EXPECT_EQ(probe->SaveImage(picture, path, code), 0);
        EXPECT_EQ(directory.Read("a"), std::string(keyword) + " 8x6 0") << code;
    }
    pictures.failure = 3;
    EXPECT_EQ(probe->SaveImage(picture, path, 1), 3);
    Person::Close("renderToolbar");
}

/// A picture that takes a while: 16.7 million pixels, 400 by 300 of a millimetre at 300 an inch.
class EasyRenderSaveLarge : public EasyRenderSave {
protected:
    static constexpr int width = 4724;
    static constexpr int height = 3543;

    void SetUp() override {
        EasyRenderSave::SetUp();
        Store("ScreenResolution", 0);
        Store("CustomResolution", 300);
    }
};

TEST_F(EasyRenderSaveLarge, AWorkerWritesIt) {
    Save(Path("large"), 9, width, height);
    EXPECT_EQ(directory.Read("large.png"), "PNG 4724x3543 300");
    EXPECT_NE(pictures.thread.load(), std::thread::id());
    EXPECT_NE(pictures.thread.load(), std::this_thread::get_id());
    EXPECT_FALSE(Exists("saveProgress"));
}

TEST_F(EasyRenderSaveLarge, SoIsAnyOtherButASmallOneWhileNoBoxIsSeen) {
    Store("CustomResolution", 290);
    Open();
    RenderOnce(width, height);
    PressSave();
    bool seen = false;
    loop.Post(
        [&] {
            seen = true;
            EXPECT_EQ(Person::Find("saveProgress")->GetVisibility(), QorDlgHIDE);
            EXPECT_EQ(File()->UserAccept(Path("again")), QorUserResult::Insensitive);
        },
        QorEventLoop::Scope::AnyDepth);
    File()->UserSetFilter(9);
    File()->UserAccept(Path("middle"));
    loop.RunPosted();
    EXPECT_TRUE(seen);
    EXPECT_FALSE(Exists("fileBox"));
    EXPECT_EQ(directory.Read("middle.png"), "PNG 4566x3424 290");
    EXPECT_NE(pictures.thread.load(), std::thread::id());
    EXPECT_NE(pictures.thread.load(), std::this_thread::get_id());
}

TEST_F(EasyRenderSaveLarge, TheBoxOfAPictureOfMiddleSizeComesWhenItTakesLong) {
    Store("CustomResolution", 290);
    pictures.untilStopped = true;
    Open();
    RenderOnce(width, height);
    PressSave();
    loop.Post(
        [&] {
            loop.Advance(std::chrono::milliseconds(999));
            EXPECT_EQ(Person::Find("saveProgress")->GetVisibility(), QorDlgHIDE);
            loop.Advance(std::chrono::milliseconds(1));
            auto* box = Person::Find<QorRdgPictureProgress>("saveProgress");
            EXPECT_EQ(box->GetVisibility(), QorDlgSHOW);
            EXPECT_EQ(box->UserCancel(), QorUserResult::Done);
        },
        QorEventLoop::Scope::AnyDepth);
    File()->UserAccept(Path("middle.tif"));
    loop.RunPosted();
    EXPECT_EQ(directory.Read("middle.tif"), "");
    EXPECT_FALSE(Exists("saveProgress"));
}

TEST_F(EasyRenderSaveLarge, ASmallOneIsWrittenAtOnce) {
    Store("ScreenResolution", 1);
    Save(Path("small"), 9);
    EXPECT_EQ(directory.Read("small.png"), "PNG 400x300 0");
    EXPECT_EQ(pictures.thread.load(), std::thread::id());
}

TEST_F(EasyRenderSaveLarge, APersonMayGiveItUp) {
    pictures.untilStopped = true;
    Open();
    RenderOnce(width, height);
    PressSave();
    bool shown = false;
    loop.Post(
        [&] {
            auto* box = Person::Find<QorRdgPictureProgress>("saveProgress");
            shown = box->IsBlocking() && box->GetVisibility() == QorDlgSHOW;
            EXPECT_EQ(box->UserCancel(), QorUserResult::Done);
        },
        QorEventLoop::Scope::AnyDepth);
    EXPECT_EQ(File()->UserAccept(Path("large.tif")), QorUserResult::Done);
    loop.RunPosted();
    EXPECT_TRUE(shown);
    EXPECT_TRUE(host->TakeBoxes().empty()) << "giving up is no error";
    EXPECT_EQ(directory.Read("large.tif"), "");
    EXPECT_FALSE(Exists("saveProgress"));
    EXPECT_FALSE(Exists("fileBox"));
    EXPECT_EQ(Enabled(), "soarS");
}

TEST_F(EasyRenderSaveLarge, ClosingTheToolBarGivesItUp) {
    pictures.untilStopped = true;
    Open();
    RenderOnce(width, height);
    PressSave();
    loop.Post([] { Header("EasyRender")->UserStart(); }, QorEventLoop::Scope::AnyDepth);
    File()->UserAccept(Path("large.tif"));
    loop.RunPosted();
    EXPECT_EQ(Dialog(), nullptr);
    EXPECT_EQ(directory.Read("large.tif"), "");
}

TEST_F(EasyRenderSaveLarge, ClosingTheToolBarBeforeABoxIsSeenDoesNot) {
    Store("CustomResolution", 290);
    Open();
    RenderOnce(width, height);
    PressSave();
    loop.Post(
        [this] {
            Header("EasyRender")->UserStart();
            loop.Advance(std::chrono::milliseconds(2000));
        },
        QorEventLoop::Scope::AnyDepth);
    File()->UserAccept(Path("middle.tif"));
    loop.RunPosted();
    EXPECT_EQ(Dialog(), nullptr);
    EXPECT_EQ(directory.Read("middle.tif"), "TIFF 4566x3424 290");
}

TEST_F(EasyRenderSaveLarge, AFailureOfTheWorkerIsTold) {
    Open();
    RenderOnce(width, height);
    QorRdgRecentRenders::Finish(); // what is kept of it is written
    pictures.failure = 4;
    PressSave();
    host->AnswerNext(QorNotifyConfirm);
    File()->UserAccept(Path("large.tif"));
    EXPECT_NE(host->TakeBoxes().at(0).text.find("the disk is full"), std::string::npos);
}

} // namespace
