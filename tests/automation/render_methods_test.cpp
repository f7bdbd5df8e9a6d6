// render.wait and display.call, with an engine that does as the test says.
#include "platform/frame/QorFrmEditor.h"
#include "platform/frame/QorFrmLayout.h"
#include "platform/frame/QorFrmWindow.h"
#include "platform/vis/QorNavigation3DViewer.h"
#include "quickrender/QorRdgViewerAdapters.h"
#include "tests/automation/PortTest.h"
#include "tests/platform/engine/FakeEngine.h"

namespace qor::automation {

namespace {

class RenderMethods
    : public PortTest
    , public QorEventSubscriber {
protected:
    void SetUp() override {
        PortTest::SetUp();
        QorRdgEngineManager::SetEngine(std::make_unique<FakeEngine>(script));
        manager().GetCallbackManager()->AddCallback(this, QorRdgEngineManager::RENDER_DONE,
                                                    &RenderMethods::DoneCB);
    }

    void TearDown() override {
        if (layout != nullptr)
            layout->RequestDelayedDestruction();
        loop.RunPosted();
        QorRdgEngineManager::SetEngine(nullptr);
        script = {};
        world.Reset();
        display.Reset();
        PortTest::TearDown();
    }

    static QorRdgEngineManager& manager() { return *QorRdgEngineManager::GetManager(); }

    void start(const QorRdgWindow* region = nullptr) {
        static_cast<void>(manager().StartRender(world.Get(), display.Get(), nullptr, true, 8, 6,
                                                region, false, true));
    }

    void openWindow() {
        QorRegisterViewerAdapters();
        layout = new QorFrmLayout(nullptr, "layout");
        auto* editor = new QorFrmEditor(layout, "editor", nullptr);
        auto* window = new QorFrmWindow(layout, "window", editor);
        window->SetViewer(
            new QorNavigation3DViewer(window, "space", QorDlgDefaultStyle, 400.0F, 300.0F));
        layout->SetCurrentWindow(window);
    }

    static Json displayCall(const char* operation, const Json& value = nullptr) {
        Json params{{"viewer", "main"}, {"operation", operation}};
        if (!value.is_null())
            params["value"] = value;
        return params;
    }

    void DoneCB(QorEventName, QorBaseUnknown*, QorNotification*, QorSubscriberData, QorCallbackId) {
    }

    FakeScript script;
    QorVar<FakeWorld> world = QorMake<FakeWorld>();
    QorVar<FakeDisplay> display = QorMake<FakeDisplay>();
    QorFrmLayout* layout = nullptr;
};

TEST_F(RenderMethods, WaitsForTheEndAndAnswersOthersMeanwhile) {
    start();
    play([this](PortClient& client) {
        const int waiting = client.request("render.wait", {{"timeout", 60}});
        EXPECT_EQ(client.call("app.info").at("name"), "test");
        loop.Post([this] {
            QorRdgProgress last;
            last.percent = 99;
            last.picture = MakePicture(8, 6);
            last.finished = true;
            script.progress = {last};
        });
        const Json answer = client.read();
        EXPECT_EQ(answer.at("id"), waiting);
        const Json& done = answer.at("result");
        EXPECT_EQ(done.at("status"), "done");
        EXPECT_EQ(done.at("id"), 1);
        EXPECT_EQ(done.at("width"), 8);
        EXPECT_EQ(done.at("height"), 6);
        EXPECT_TRUE(done.at("region").is_null());
        EXPECT_FALSE(done.contains("message"));
        EXPECT_EQ(client.call("render.wait", {{"timeout", 0}}), done) << "the last one, at once";
    });
}

TEST_F(RenderMethods, SaysHowARenderEnded) {
    const QorRdgWindow region{1, 2, 5, 4};
    start(&region);
    play([this](PortClient& client) {
        EXPECT_EQ(client.callForError("render.wait", {{"timeout", 0}}), code(ErrorCode::timedOut));
        loop.Post([] { manager().StopRender(); });
        const Json aborted = client.call("render.wait", {{"timeout", 60}});
        EXPECT_EQ(aborted.at("status"), "aborted");
        EXPECT_EQ(aborted.at("region"), (Json{1, 2, 5, 4}));
        loop.Post([this] {
            script.refusal = "out of paint";
            start();
        });
        Json refused = client.call("render.wait", {{"timeout", 60}});
        EXPECT_EQ(refused.at("status"), "refused");
        EXPECT_EQ(refused.at("message"), "out of paint");
        EXPECT_EQ(refused.at("id"), 2);
    });
}

TEST_F(RenderMethods, FailsWhenNothingWasEverStarted) {
    play([](PortClient& client) {
        EXPECT_EQ(client.callForError("render.wait", {{"timeout", 1}}), code(ErrorCode::failed));
        EXPECT_EQ(client.callForError("render.wait", {{"timeout", -1}}),
                  code(ErrorCode::invalidParams));
    });
}

TEST_F(RenderMethods, CallsTheDisplayAsTheEngineDoes) {
    openWindow();
    play([](PortClient& client) {
        const Json quiet = client.call("display.call", displayCall("CheckAbort", 0));
        EXPECT_EQ(quiet, (Json{{"status", 0}, {"value", 0}}));
        EXPECT_EQ(client.call("display.call", displayCall("SetProgress", 10)).at("status"), 0);
        EXPECT_EQ(client.call("display.call", displayCall("CheckAbort", 1)).at("status"), 0);
        EXPECT_EQ(client.call("display.call", displayCall("CheckAbort", 0)).at("value"), 1);
        EXPECT_EQ(client.call("display.call", displayCall("SetMessage", "hello")).at("status"),
                  static_cast<std::int32_t>(E_FAIL));
        EXPECT_EQ(client.call("display.call", displayCall("Clear")).at("status"), 0);
        EXPECT_EQ(client.callForError("display.call", displayCall("Paint")),
                  code(ErrorCode::invalidParams));
        EXPECT_EQ(client.callForError("display.call", {{"viewer", "none"}, {"operation", "Clear"}}),
                  code(ErrorCode::noSuchObject));
    });
}

} // namespace

} // namespace qor::automation
