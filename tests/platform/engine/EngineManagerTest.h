#pragma once

#include "tests/platform/engine/FakeEngine.h"
#include "tests/support/QorTestApplication.h"

#include <gmock/gmock.h>

/// A program with a fake engine, and somebody who waits for RENDER_DONE.
class EngineManager
    : public QorTestApplication
    , public QorEventSubscriber {
protected:
    using Status = QorRdgEngineManager::Status;

    EngineManager() {
        QorRdgEngineManager::SetEngine(std::make_unique<FakeEngine>(script));
        Manager().GetCallbackManager()->AddCallback(this, QorRdgEngineManager::RENDER_DONE,
                                                    &EngineManager::DoneCB);
    }

    void TearDown() override {
        loop.RunPosted();
        QorRdgEngineManager::SetEngine(nullptr);
        script = {};
        world.Reset();
        display.Reset();
        QorTestApplication::TearDown();
    }

    static QorRdgEngineManager& Manager() { return *QorRdgEngineManager::GetManager(); }

    QorResult Start(int iWidth = 8, int iHeight = 6, const QorRdgWindow* iRegion = nullptr) {
        return Manager().StartRender(world, display, nullptr, true, iWidth, iHeight, iRegion, false,
                                     true);
    }

    void Pump() { loop.Advance(std::chrono::milliseconds(10)); }

    void DoneCB(QorEventName, QorBaseUnknown*, QorNotification*, QorSubscriberData, QorCallbackId) {
        const QorRdgEngineManager::Record& record = Manager().GetRecord();
        done.push_back({record.id, record.status});
        if (whenDone)
            whenDone();
    }

    static QorRdgProgress Percent(int iPercent) {
        QorRdgProgress progress;
        progress.percent = iPercent;
        return progress;
    }

    static QorRdgProgress Picture(int iPercent, bool iFinished) {
        QorRdgProgress progress = Percent(iPercent);
        progress.picture = MakePicture(8, 6);
        progress.finished = iFinished;
        return progress;
    }

    FakeScript script;
    QorVar<FakeWorld> world = QorMake<FakeWorld>();
    QorVar<FakeDisplay> display = QorMake<FakeDisplay>();
    std::vector<std::pair<unsigned long, Status>> done;
    std::function<void()> whenDone;
};
