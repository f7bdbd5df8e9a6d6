#pragma once

#include "platform/engine/QorRdgEngineManager.h"
#include "platform/engine/QorRdgOptionsDefaults.h"
#include "platform/frame/QorFrmEditor.h"
#include "platform/frame/QorFrmLayout.h"
#include "platform/frame/QorFrmWindow.h"
#include "platform/system/QorQueueLoop.h"
#include "platform/vis/QorViewer.h"
#include "quickrender/QorRdgViewerAdapters.h"
#include "tests/support/QorTestApplication.h"
#include "workbench/engine/adapter/Engine.h"
#include "workbench/engine/adapter/ViewerWorld.h"

#include <functional>

/// A display that writes down what it is told, and may act in between.
class RecordingDisplay : public QorImplements<QorBaseUnknown, QorIRdgDisplay> {
public:
    QorResult Draw(QorPixelImage* iImage) override {
        drawn.emplace_back(iImage);
        if (onDraw)
            onDraw();
        return S_OK;
    }

    QorResult Clear() override { return S_OK; }

    QorResult CheckAbort(unsigned char& ioAbort) override {
        if (ioAbort != 0)
            abort = true;
        ioAbort = abort ? 1 : 0;
        return S_OK;
    }

    QorResult SetProgress(int& iPercent) override {
        percents.push_back(iPercent);
        if (onProgress)
            onProgress(iPercent);
        return S_OK;
    }

    QorResult SetMessage(QorUnicodeString& iText) override {
        messages.push_back(iText.Str());
        return E_FAIL;
    }

    std::vector<QorPixelImage_var> drawn;
    std::vector<int> percents;
    std::vector<std::string> messages;
    std::function<void()> onDraw;
    std::function<void(int)> onProgress;
    bool abort = false;
};

/// Options with a fixed number of samples and no interpolation, so that pictures can be compared.
class PlainOptions : public QorRdgOptionsDefaults {
public:
    PlainOptions() = default;

    int samples = 4;
    bool gather = false;
    double ambient = 1.0;

    QorResult GetSamples(int& oMinimum, int& oMaximum, float& oContrast) override {
        oMinimum = oMaximum = samples;
        oContrast = 0.01F;
        return S_OK;
    }

    QorResult GetAmbientFactor(double& oFactor) override {
        oFactor = ambient;
        return S_OK;
    }

protected:
    [[nodiscard]] bool IsFinalGatherOn() const override { return gather; }
};

/// A program with the real engine, and a window with a viewer that shows a cube of 20 mm.
class EngineTest
    : public QorTestApplicationOn<QorQueueLoop>
    , public QorEventSubscriber {
protected:
    using Status = QorRdgEngineManager::Status;

    EngineTest() {
        QorRegisterViewerAdapters();
        qor::adapter::registerWorldAdapter();
        auto owned = std::make_unique<qor::adapter::Engine>();
        engine = owned.get();
        QorRdgEngineManager::SetEngine(std::move(owned));
        Manager().GetCallbackManager()->AddCallback(this, QorRdgEngineManager::RENDER_DONE,
                                                    &EngineTest::DoneCB);
        layout = new QorFrmLayout(nullptr, "layout");
        auto* editor = new QorFrmEditor(layout, "editor", nullptr);
        auto* window = new QorFrmWindow(layout, "window", editor);
        viewer = new Qor3DViewer(window, "viewer", QorDlgDefaultStyle, 160.0F, 120.0F);
        viewer->GetMain3DViewpoint()->SetView({60, -60, 45}, {0, 0, 0}, {0, 0, 1});
        viewer->SetBackgroundColor({40, 60, 80, 255});
        viewer->SetLightSourceReps(NewLight({0.4, 0.5, -0.8}), nullptr);
        viewer->AddRep(QorMake<Qor3DMeshRep>(MakeCube(20.0).Get(), material.Get()));
        window->SetViewer(viewer);
        layout->SetCurrentWindow(window);
    }

    void TearDown() override {
        Manager().StopRender();
        layout->RequestDelayedDestruction();
        loop.RunPosted();
        QorRdgEngineManager::SetEngine(nullptr);
        display.Reset();
        options.Reset();
        material.Reset();
        QorTestApplicationOn::TearDown();
    }

    static QorRdgEngineManager& Manager() { return *QorRdgEngineManager::GetManager(); }

    /// Without a person's reference: the viewer takes it over.
    static Qor3DLightSourceRep* NewLight(const QorMathVector& iDirection) {
        return new Qor3DLightSourceRep(QorLightType::Directional, QorLightMode::Model, {},
                                       iDirection, 180.0F);
    }

    static QorMesh_var MakeCube(double iSide) {
        QorMesh::Data data;
        const auto half = static_cast<float>(iSide / 2);
        for (const float x : {-half, half})
            for (const float y : {-half, half})
                for (const float z : {-half, half})
                    data.positions.insert(data.positions.end(), {x, y, z});
        data.indices = {0, 1, 3, 0, 3, 2, 4, 6, 7, 4, 7, 5, 0, 4, 5, 0, 5, 1,
                        2, 3, 7, 2, 7, 6, 0, 2, 6, 0, 6, 4, 1, 5, 7, 1, 7, 3};
        return QorMake<QorMesh>(data);
    }

    QorResult Start(int iWidth = 160, int iHeight = 120, const QorRdgWindow* iRegion = nullptr) {
        const auto world = QorQuery<QorIRdgWorld>(viewer);
        return Manager().StartRender(world, display, options, true, iWidth, iHeight, iRegion, false,
                                     true);
    }

    /// Turns the loop until \p iDone answers true; fails the test after three minutes,
    /// which is long enough for the thread sanitizer on two busy processors.
    void TurnUntil(const std::function<bool()>& iDone) {
        const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(3);
        while (!iDone() && std::chrono::steady_clock::now() < end)
            loop.RunOneTurn(std::chrono::milliseconds(5));
        ASSERT_TRUE(iDone());
    }

    /// Lets the started render end and gives its picture, whole.
    QorPixelImage_var Finish() {
        const std::size_t before = done.size();
        TurnUntil([&] { return done.size() > before; });
        return LastPicture();
    }

    QorPixelImage_var Render(int iWidth = 160, int iHeight = 120) {
        EXPECT_EQ(Start(iWidth, iHeight), S_OK);
        return Finish();
    }

    static QorPixelImage_var LastPicture() {
        QorPixelImage* picture = nullptr;
        QorRdgWindow region;
        Manager().GetLastRender(picture, region);
        return QorAdopt(picture);
    }

    /// Waits until the engine's workers have ended, as they do by themselves.
    void SettleWorkers() {
        TurnUntil([this] { return engine->workersRunning() == 0; });
    }

    static const std::uint8_t* PixelOf(const QorPixelImage_var& iImage, int iX, int iY) {
        return iImage->GetPixels()->data() +
               (static_cast<std::size_t>(iY) * static_cast<std::size_t>(iImage->GetWidth()) +
                static_cast<std::size_t>(iX)) *
                   4;
    }

    void DoneCB(QorEventName, QorBaseUnknown*, QorNotification*, QorSubscriberData, QorCallbackId) {
        done.push_back(Manager().GetRecord().status);
    }

    qor::adapter::Engine* engine = nullptr;
    QorFrmLayout* layout = nullptr;
    Qor3DViewer* viewer = nullptr;
    QorVar<QorGraphicMaterial> material = QorMake<QorGraphicMaterial>();
    QorVar<RecordingDisplay> display = QorMake<RecordingDisplay>();
    QorVar<PlainOptions> options = QorMake<PlainOptions>();
    std::vector<Status> done;
};
