#pragma once

#include "platform/dialog/QorDlgLabel.h"
#include "platform/engine/QorIRdgViewerParts.h"
#include "platform/frame/QorApplicationFrame.h"
#include "platform/frame/QorFrmEditor.h"
#include "platform/frame/QorFrmLayout.h"
#include "platform/system/QorTrace.h"
#include "platform/vis/QorPictureService.h"
#include "platform/vis/QorPlainPictures.h"
#include "quickrender/QorRdgEasyRenderDialog.h"
#include "quickrender/QorRdgPictureWriter.h"
#include "quickrender/QorRdgQuickRenderCommands.h"
#include "quickrender/QorRdgRecentRenders.h"
#include "quickrender/QorRdgViewerAdapters.h"
#include "scenes/QorRdgWorkers.h"
#include "tests/platform/engine/FakeEngine.h"
#include "tests/support/QorTestApplication.h"
#include "tests/support/RecordingHost.h"

#include <atomic>
#include <fstream>
#include <thread>

/// A picture service that writes down under which keyword, in what size and density a picture was
/// written, into the file itself. Reads what the library can.
class NotingPictures : public QorPictureService {
public:
    QorPixelImage* Read(const QorUnicodeString& iPath, QorUnicodeString& oError) override {
        return plain.Read(iPath, oError);
    }

    int Write(const QorPixelImage& iImage,
              const QorString& iFormat,
              const QorUnicodeString& iPath,
              QorUnicodeString& oError) override {
        if (failure != 0) {
            oError = iPath + QorUnicodeString(": the disk is full");
            return failure;
        }
        std::ofstream(iPath.Str()) << iFormat << ' ' << iImage.GetWidth() << 'x'
                                   << iImage.GetHeight() << ' ' << iImage.GetPixelsPerInch();
        return 0;
    }

    int WriteWatched(const QorPixelImage& iImage,
                     const QorString& iFormat,
                     const QorUnicodeString& iPath,
                     const Watcher& iWatcher,
                     QorUnicodeString& oError) override {
        thread = std::this_thread::get_id();
        while (untilStopped && iWatcher(50))
            std::this_thread::yield();
        if (!iWatcher(100))
            return 7;
        return Write(iImage, iFormat, iPath, oError);
    }

    QorPixelImage* Resize(const QorPixelImage& iImage, int iWidth, int iHeight) override {
        return plain.Resize(iImage, iWidth, iHeight);
    }

    std::atomic<int> failure = 0;
    std::atomic<bool> untilStopped = false; ///< a large picture takes until it is given up
    std::atomic<std::thread::id> thread;    ///< that wrote a large picture

private:
    QorPlainPictures plain;
};

/// The world of a viewer, as an engine's adapter gives it.
class ViewerWorld : public QorImplements<QorExtension, QorIRdgWorld> {
public:
    explicit ViewerWorld(QorBaseUnknown* iOwner) : QorImplements(iOwner) {}

    QorResult Collect(QorRdgSnapshot& /*oSnapshot*/) override { return S_OK; }
};

/// A program with an application frame, a document in a window of 400 by 300 pixels, the commands
/// of quick rendering, one scene (two lights, a background, a ground) and an engine that does what
/// the test says.
class EasyRenderTest : public QorTestApplication {
protected:
    EasyRenderTest() {
        QorRegisterViewerAdapters();
        QorExtension::Register("Qor3DViewer", QorIRdgWorld::ClassId(),
                               &QorCreateExtension<ViewerWorld>);
        QorPictureService::Install(&pictures);
    }

    ~EasyRenderTest() override {
        QorPictureService::Install(nullptr);
        QorExtension::Unregister("Qor3DViewer", QorIRdgWorld::ClassId());
    }

    void SetUp() override {
        QorCatalogs::SetProgramDirectory(QOR_RESOURCES);
        WriteScene("Scene1.Light.Ambient=\"0.1\";\nScene1.Light.Color1=\"1,1,1\";\n"
                   "Scene1.Light.Color2=\"1,1,1\";\nScene1.Ground=\"1\";\n"
                   "Scene1.Background.Image=\"back.tga\";\n");
        QorRdgEngineManager::SetEngine(std::make_unique<FakeEngine>(script));
        frame = QorMake<QorApplicationFrame>("frame");
        layout = new QorFrmLayout(frame.Get(), "layout");
        QorAddQuickRenderCommands(frame.Get());
        frame->SetVisibility(QorDlgSHOW);
        window = OpenDocument("first");
        viewer = ViewerOf(window);
    }

    void TearDown() override {
        QorRdgWorkers::Finish();
        loop.RunPosted();
        while (layout != nullptr && layout->GetEditorCount() > 0)
            layout->CloseEditor(layout->GetEditors().front());
        loop.RunPosted();
        frame.Reset();
        QorRdgEngineManager::SetEngine(nullptr);
        script = {};
        loop.RunPosted();
        host.reset();
        QorSettingRepository::SetLocked("RenderingOptionsSettings", false);
        QorTestApplication::TearDown();
    }

    /// The one scene of the catalog, in a start-up folder with a picture.
    void WriteScene(const std::string& iScene) {
        directory.Write("start/resources/QorRdgScenes.QorRsc", "Count=\"1\";\n" + iScene);
        directory.Write("start/messages/QorRdgScenes.QorMsg", "Scene1.Title=\"Scene\";\n");
        directory.Write("start/rendering/none", "");
        QorUnicodeString error;
        QorPlainPictures plain;
        ASSERT_EQ(plain.Write(*MakePicture(4, 3), "TGA",
                              directory.GetPath("start/rendering/back.tga"), error),
                  0);
        QorSetEnv("QorStartupPath", QorUnicodeString(directory.GetPath("start")));
    }

    QorFrmWindow* OpenWindow(QorFrmEditor* iEditor, const char* iName) {
        auto* opened = new QorFrmWindow(frame.Get(), iName, iEditor);
        auto* space = new Qor3DViewer(opened, "viewer", QorDlgDefaultStyle, 400.0F, 300.0F);
        space->GetSupport()->SetMMInSupportUnit(1.0F);
        space->GetMain3DViewpoint()->SetView({0, -10, 5}, {0, 0, 0}, {0, 0, 1});
        AddBox(*space);
        opened->SetViewer(space);
        layout->SetCurrentWindow(opened);
        return opened;
    }

    QorFrmWindow* OpenDocument(const char* iName) {
        return OpenWindow(new QorFrmEditor(layout, iName, nullptr), iName);
    }

    static void AddBox(Qor3DViewer& ioViewer) {
        QorMesh::Data data;
        data.positions = {0, 0, 0, 2, 0, 0, 0, 2, 1};
        data.indices = {0, 1, 2};
        const QorMesh_var mesh = QorMake<QorMesh>(data);
        ioViewer.AddRep(QorMake<Qor3DMeshRep>(mesh.Get(), nullptr));
    }

    static Qor3DViewer* ViewerOf(const QorFrmWindow* iWindow) {
        return dynamic_cast<Qor3DViewer*>(iWindow->GetViewer());
    }

    static QorCommandHeader* Header(const char* iName) {
        return QorCommandHeader::GetHeaderFromList(iName, 1);
    }

    /// A person's click on the command.
    static QorRdgEasyRenderDialog* Open() {
        EXPECT_EQ(Header("EasyRender")->UserStart(), S_OK);
        return Dialog();
    }

    /// The tool bar that is open, or null.
    static QorRdgEasyRenderDialog* Dialog() {
        for (QorDlgDialog* one : QorDlgDialog::GetAll())
            if (auto* dialog = dynamic_cast<QorRdgEasyRenderDialog*>(one))
                return dialog;
        return nullptr;
    }

    template <class Widget = QorDialog>
    static Widget* Find(const std::string& iName) {
        return Person::Find<Widget>("renderToolbar/" + iName);
    }

    static QorUserResult Check(const char* iName, bool iChecked = true) {
        return Person::Check(std::string("renderToolbar/") + iName, iChecked);
    }

    static bool IsChecked(const char* iName) {
        return Find<QorDlgCheckButton>(iName)->GetState() == QorDlgCheck;
    }

    /// Which of the buttons a person could press: "sceneButton" is "s", and so on; all: "soarS".
    static std::string Enabled() {
        std::string enabled;
        for (const auto& [name, letter] :
             {std::pair{"sceneButton", 's'}, std::pair{"optionsButton", 'o'},
              std::pair{"areaCheck", 'a'}, std::pair{"renderCheck", 'r'},
              std::pair{"saveButton", 'S'}})
            if (Find(name)->GetSensitivity() == QorDlgENABLE)
                enabled += letter;
        return enabled;
    }

    static std::string Info() { return Find<QorDlgLabel>("infoLabel")->GetTitle().Str(); }

    static bool Exists(const char* iDialog) {
        for (const QorDlgDialog* one : QorDlgDialog::GetAll())
            if (one->GetName() == iDialog)
                return true;
        return false;
    }

    static QorVar<QorSettingRepository> Settings() {
        return QorSettingRepository::GetRepository("RenderingOptionsSettings");
    }

    static void Store(const char* iKey, int iValue) { Settings()->WriteSetting(iKey, &iValue); }

    /// Lets the engine work once.
    void Pump() { loop.Advance(std::chrono::milliseconds(10)); }

    /// Lets the render that runs deliver a picture and end.
    void Finish(int iWidth = 400, int iHeight = 300) {
        QorRdgProgress last;
        last.percent = 100;
        last.finished = true;
        last.picture = MakePicture(iWidth, iHeight);
        script.progress.push_back(last);
        Pump();
    }

    /// A whole render.
    void RenderOnce(int iWidth = 400, int iHeight = 300) {
        ASSERT_EQ(Check("renderCheck"), QorUserResult::Done);
        Finish(iWidth, iHeight);
        ASSERT_FALSE(IsChecked("renderCheck"));
    }

    /// The picture over a viewer.
    static bool HasOverlay(const Qor3DViewer& iViewer) {
        for (const QorVar<QorViewpoint>& one : iViewer.GetAddedViewpoints())
            if (const auto* flat = dynamic_cast<Qor2DViewpoint*>(one.Get());
                flat != nullptr && flat->GetPriority() == 6)
                return !flat->GetRoot().GetChildren().empty();
        return false;
    }

    static float Ambient(const Qor3DViewer& iViewer) {
        float red = 0.0F;
        float green = 0.0F;
        float blue = 0.0F;
        iViewer.GetGlobalAmbientLight(red, green, blue);
        return red;
    }

    static std::array<Qor3DLightSourceRep*, 2> Lights(const Qor3DViewer& iViewer) {
        std::array<Qor3DLightSourceRep*, 2> lights{};
        iViewer.GetLightSourceReps(lights[0], lights[1]);
        return lights;
    }

    static QorIRdgArea_var Area(Qor3DViewer* iViewer) { return QorQuery<QorIRdgArea>(iViewer); }

    static bool HasBackground(Qor3DViewer* iViewer) {
        QorString image;
        bool stretch = false;
        return QorSucceeded(QorQuery<QorIRdgBackground>(iViewer)->GetBackground(image, stretch));
    }

    QorScopedVariable data{"XDG_DATA_HOME", directory.GetPath("data")};
    QorScopedVariable temporary{"TMPDIR", directory.GetPath()};
    NotingPictures pictures;
    std::unique_ptr<RecordingHost> host = std::make_unique<RecordingHost>();
    FakeScript script;
    QorVar<QorApplicationFrame> frame;
    QorFrmLayout* layout = nullptr;
    QorFrmWindow* window = nullptr;
    Qor3DViewer* viewer = nullptr;
};

/// A tool bar whose members a test may set, made in the place of the program's own.
class EasyRenderProbe : public QorRdgEasyRenderDialog {
public:
    explicit EasyRenderProbe(QorApplicationFrame& ioFrame)
        : QorRdgEasyRenderDialog(&ioFrame, "renderToolbar") {
        _curDialog = this;
        SetVisibility(QorDlgSHOW);
    }

    /// Records what entering the loop needs.
    void KnowView(Qor3DViewpoint* iViewpoint) { viewpoint = iViewpoint; }

    [[nodiscard]] bool IsLooping() const { return loopMode; }

    [[nodiscard]] QorViewer* GetRenderViewer() const { return viewer; }

    [[nodiscard]] Qor3DViewpoint* GetKnownViewpoint() const { return viewpoint; }

    [[nodiscard]] bool WatchesView() const { return viewpointCookie != 0 && resizeCookie != 0; }

    using QorRdgEasyRenderDialog::_curDialog;
    using QorRdgEasyRenderDialog::GetSize;
    using QorRdgEasyRenderDialog::SaveImage;

protected:
    ~EasyRenderProbe() override = default;
};
