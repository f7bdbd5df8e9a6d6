#pragma once

#include "platform/frame/QorCommandHeader.h"
#include "scenes/QorRdgIconList.h"
#include "scenes/QorRdgSceneDialog.h"
#include "scenes/QorRdgWorkers.h"
#include "tests/scenes/SceneTest.h"
#include "tests/support/RecordingHost.h"

/// Opens the scene dialog and hears what it passes on.
class SceneOpener : public QorDlgDialog {
public:
    SceneOpener() : QorDlgDialog(nullptr, "opener") {}

    void Open() {
        scenes = new QorRdgSceneDialog(this, "sceneDialog");
        const std::vector<QorNotification*> all = {scenes->GetDiaOKNotification(),
                                                   scenes->GetDiaCANCELNotification(),
                                                   scenes->GetWindCloseNotification()};
        for (QorNotification* one : all)
            AddAnalyseNotificationCB(this, scenes, one, &SceneOpener::EndCB);
        scenes->Init();
        scenes->SetVisibility(QorDlgSHOW);
    }

    QorRdgSceneDialog* scenes = nullptr; ///< null again when it has ended
    std::vector<std::string> heard;

protected:
    ~SceneOpener() override = default;

private:
    void EndCB(QorCommand* /*iSender*/, QorNotification* iNotification, QorSubscriberData) {
        heard.emplace_back(iNotification->IsA());
        std::exchange(scenes, nullptr)->RequestDelayedDestruction();
    }
};

/// The scene dialog on a viewer, with three predefined scenes and the program's catalogs.
class SceneDialogTest : public SceneTest {
protected:
    void SetUp() override {
        QorCatalogs::SetProgramDirectory(QOR_RESOURCES);
        WriteCatalog("Count=\"3\";\nScene1.Light.Ambient=\"0.1\";\nScene2.Light.Ambient=\"0.2\";\n"
                     "Scene3.Light.Ambient=\"0.3\";\nScene3.Light.Color1=\"1,1,1\";\n",
                     "Scene1.Title=\"c\";\nScene2.Title=\"b\";\nScene3.Title=\"a\";\n");
        Store("PredefinedScene", 2); // "a", which comes first
        OpenViewer();
    }

    void TearDown() override {
        opener->RequestDelayedDestruction();
        loop.RunPosted();
        host.reset();
        SceneTest::TearDown();
    }

    template <class Widget>
    static Widget* Find(const std::string& iName) {
        return Person::Find<Widget>("sceneDialog/" + iName);
    }

    static QorRdgIconList* List() { return Find<QorRdgIconList>("iconList"); }

    float Ambient() const {
        float red = 0.0F;
        float green = 0.0F;
        float blue = 0.0F;
        viewer->GetGlobalAmbientLight(red, green, blue);
        return red;
    }

    static void Click(double iX, double iY, bool iTwice = false) {
        auto* drawing = dynamic_cast<QorViewer*>(List()->GetWidgets().at(0));
        using Action = QorMouseEvent::Action;
        std::vector<Action> actions = {Action::Press, Action::Release};
        if (iTwice)
            actions.insert(actions.end(), {Action::DoubleClick, Action::Release});
        for (const Action action : actions) {
            QorMouseEvent event;
            event.action = action;
            event.button = QorMouseEvent::Button::Left;
            event.pixel = {iX, iY};
            drawing->HandleMouse(event);
        }
    }

    std::unique_ptr<RecordingHost> host = std::make_unique<RecordingHost>();
    SceneOpener* opener = new SceneOpener;
};
