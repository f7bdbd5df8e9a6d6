#pragma once

#include "platform/engine/QorIRdgDisplay.h"
#include "platform/engine/QorIRdgViewerParts.h"
#include "platform/frame/QorFrmLayout.h"
#include "platform/frame/QorFrmWindow.h"
#include "platform/vis/QorI3DMultiViewpointViewer.h"
#include "platform/vis/QorViewer.h"
#include "scenes/QorRdgSceneManager.h"
#include "tests/support/QorTestApplication.h"

/// What the adapters of a viewer were asked for, in order: "background a.jpg 1", "ground 0",
/// "clear".
inline std::vector<std::string>& AdapterLog() {
    static std::vector<std::string> log;
    return log;
}

/// Stands for all adapters of a viewer.
class FakeAdapters
    : public QorImplements<QorExtension,
                           QorIRdgBackground,
                           QorIRdgGround,
                           QorIRdgDisplay,
                           QorI3DMultiViewpointViewer> {
public:
    explicit FakeAdapters(QorBaseUnknown* iOwner) : QorImplements(iOwner) {}

    QorResult SetBackground(const QorString& iImage, bool iStretch) override {
        AdapterLog().push_back("background " + iImage.Str() + (iStretch ? " 1" : " 0"));
        image = iImage;
        stretch = iStretch;
        return S_OK;
    }

    QorResult GetBackground(QorString& oImage, bool& oStretch) override {
        if (image.IsNull())
            return E_FAIL;
        oImage = image;
        oStretch = stretch;
        return S_OK;
    }

    QorResult RemoveBackground() override {
        AdapterLog().emplace_back("no background");
        image = QorString();
        return S_OK;
    }

    QorResult SetGroundOn(int iOn) override {
        AdapterLog().push_back("ground " + std::to_string(iOn));
        return S_OK;
    }

    QorResult SetGroundVisible(bool iVisible) override { return SetGroundOn(iVisible ? 1 : 0); }

    QorResult SetTransparency(float iValue) override { return Log("transparency", iValue); }

    QorResult SetReflectivity(float iValue) override { return Log("reflectivity", iValue); }

    QorResult Draw(QorPixelImage* /*iImage*/) override { return S_OK; }

    QorResult Clear() override {
        AdapterLog().emplace_back("clear");
        return S_OK;
    }

    QorResult CheckAbort(unsigned char& /*ioAbort*/) override { return S_OK; }

    QorResult SetProgress(int& /*iPercent*/) override { return S_OK; }

    QorResult SetMessage(QorUnicodeString& /*iText*/) override { return E_FAIL; }

    bool HasSeveralViewpoints() override { return !_viewpoints.empty(); }

    std::vector<QorVar<QorViewpoint>> GetViewpoints() override { return _viewpoints; }

    static inline std::vector<QorVar<QorViewpoint>> _viewpoints;

private:
    static QorResult Log(const char* iWhat, float iValue) {
        AdapterLog().push_back(std::string(iWhat) + " " + std::to_string(iValue));
        return S_OK;
    }

    QorString image;
    bool stretch = false;
};

/// A document with a 3D viewer that has all adapters, a start-up folder and the settings.
class SceneTest : public QorTestApplication {
protected:
    SceneTest() {
        for (const QorInterfaceId* one : Interfaces())
            QorExtension::Register("Qor3DViewer", *one, &QorCreateExtension<FakeAdapters>);
    }

    ~SceneTest() override {
        for (const QorInterfaceId* one : Interfaces())
            QorExtension::Unregister("Qor3DViewer", *one);
    }

    void TearDown() override {
        FakeAdapters::_viewpoints.clear();
        layout.Reset();
        frame.Reset();
        AdapterLog().clear();
        QorTestApplication::TearDown();
    }

    void OpenViewer() {
        auto* editor = new QorFrmEditor(layout.Get(), "editor", QorMake<QorDocument>("doc").Get());
        auto* window = new QorFrmWindow(frame.Get(), "window", editor);
        viewer = new Qor3DViewer(window, "main", QorDlgDefaultStyle, 400.0F, 300.0F);
        window->SetViewer(viewer);
        layout->SetCurrentWindow(window);
    }

    /// A catalog in a start-up folder of its own, and its titles.
    void WriteCatalog(const std::string& iResources, const std::string& iMessages = {}) {
        directory.Write("start/resources/QorRdgScenes.QorRsc", iResources);
        directory.Write("start/messages/QorRdgScenes.QorMsg", iMessages);
        QorSetEnv("QorStartupPath", QorUnicodeString(directory.GetPath("start")));
    }

    /// Scenes with nothing but titles.
    void WriteTitles(const std::vector<std::string>& iTitles) {
        std::string messages;
        for (std::size_t i = 0; i < iTitles.size(); ++i)
            messages += "Scene" + std::to_string(i + 1) + ".Title=\"" + iTitles[i] + "\";\n";
        WriteCatalog("Count=\"" + std::to_string(iTitles.size()) + "\";\n", messages);
    }

    static QorVar<QorSettingRepository> Settings() {
        return QorSettingRepository::GetRepository("RenderingOptionsSettings");
    }

    static void Store(const char* iKey, int iValue) { Settings()->WriteSetting(iKey, &iValue); }

    static std::optional<int> Stored(const char* iKey) {
        int value = 0;
        return Settings()->ReadSetting(iKey, &value) ? std::optional(value) : std::nullopt;
    }

    /// A manager that has read everything anew, as after a restart.
    static QorRdgSceneManager& NewManager() {
        if (const auto stored = Settings())
            stored->SaveRepository();
        QorRunExitHooks();
        return *QorRdgSceneManager::GetManager();
    }

    static QorRdgSceneManager& Manager() { return *QorRdgSceneManager::GetManager(); }

    std::vector<Qor3DLightSourceRep*> Lights() const {
        std::vector<Qor3DLightSourceRep*> lights(2);
        viewer->GetLightSourceReps(lights[0], lights[1]);
        return lights;
    }

    static std::vector<std::string> TakeLog() { return std::exchange(AdapterLog(), {}); }

    static const std::vector<const QorInterfaceId*>& Interfaces() {
        static const std::vector<const QorInterfaceId*> all = {
            &QorIRdgBackground::ClassId(), &QorIRdgGround::ClassId(), &QorIRdgDisplay::ClassId(),
            &QorI3DMultiViewpointViewer::ClassId()};
        return all;
    }

    QorFrmLayout_var layout = QorMake<QorFrmLayout>(nullptr, "layout");
    QorVar<QorDialog> frame = QorMake<QorDialog>(nullptr, "frame");
    Qor3DViewer* viewer = nullptr;
};
