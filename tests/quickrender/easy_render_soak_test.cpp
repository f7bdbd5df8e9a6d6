// A thousand renders with a person who presses everything, in no order.
#include "quickrender/QorRdgOptionsDialog.h"
#include "tests/quickrender/EasyRenderTest.h"

#include <functional>
#include <random>

namespace {

class EasyRenderSoak : public EasyRenderTest {
protected:
    int Any(int iMost) { return std::uniform_int_distribution<int>(0, iMost - 1)(random); }

    /// An end, a picture, a message, a refusal: whatever engines do.
    void Work() {
        QorRdgProgress progress;
        progress.percent = Any(100);
        const int what = Any(6);
        if (what < 4)
            progress.picture = MakePicture(40, 30);
        progress.finished = what == 1 || what == 5;
        progress.failed = what == 5;
        progress.message = what == 5 ? "the engine has failed" : "";
        script.progress.push_back(progress);
        script.refusal = Any(20) == 0 ? "the engine does not want to" : "";
        Pump();
    }

    static bool IsOpen() { return Dialog() != nullptr; }

    static void Toggle(const char* iName) {
        if (IsOpen())
            Check(iName, !IsChecked(iName));
    }

    void PressSomething();
    void EndSomeDialog();
    void ChangeWindows();

    std::mt19937 random{20261120};
    int windows = 0;
};

void EasyRenderSoak::EndSomeDialog() {
    for (const char* name : {"sceneDialog", "optionsDialog", "fileBox"}) {
        if (!Exists(name) || Any(2) == 0)
            continue;
        auto* dialog = Person::Find<QorDlgDialog>(name);
        if (auto* file = dynamic_cast<QorDlgFile*>(dialog); file != nullptr && Any(2) == 0) {
            file->UserSetFilter(Any(11));
            file->UserAccept(directory.GetPath("picture" + std::to_string(++windows)));
        } else if (Any(2) == 0) {
            dialog->UserCancel();
        } else {
            dialog->UserClose();
        }
        return;
    }
    if (Exists("optionsDialog"))
        Person::OK("optionsDialog");
}

void EasyRenderSoak::ChangeWindows() {
    switch (Any(4)) {
    case 0:
        if (layout->GetWindows().size() < 4)
            OpenWindow(layout->GetCurrentEditor(), "more");
        break;
    case 1:
        if (layout->GetWindowsOf(layout->GetCurrentEditor()).size() > 1)
            layout->CloseWindow(layout->GetCurrentWindow());
        break;
    case 2:
        layout->SetCurrentWindow(
            layout->GetWindows().at(Any(static_cast<int>(layout->GetWindows().size()))));
        break;
    default:
        OpenDocument("another");
        layout->CloseEditor(layout->GetEditors().at(0));
    }
}

void EasyRenderSoak::PressSomething() {
    viewer = ViewerOf(layout->GetCurrentWindow());
    switch (Any(14)) {
    case 0:
        Toggle("sceneButton");
        break;
    case 1:
        Toggle("optionsButton");
        break;
    case 2:
        Toggle("areaCheck");
        break;
    case 3:
    case 4:
        Toggle("renderCheck");
        break;
    case 5:
        if (IsOpen())
            Find<QorDlgCheckButton>("renderCheck")->UserDoubleClick();
        break;
    case 6:
        if (IsOpen())
            Person::Press("renderToolbar/saveButton");
        break;
    case 7:
        EndSomeDialog();
        break;
    case 8:
        Area(viewer)->SetArea(Any(200), Any(150), 200 + Any(200), 150 + Any(150));
        break;
    case 9:
        viewer->GetMain3DViewpoint()->SetAnimated(!viewer->GetMain3DViewpoint()->IsAnimated());
        break;
    case 10:
        viewer->UserResizeViewer(static_cast<float>(Any(50)), static_cast<float>(Any(50)));
        break;
    case 11:
        Header(Any(3) == 0 ? "EasyRender" : "Ground")->UserStart();
        break;
    case 12:
        if (Any(5) == 0)
            ChangeWindows();
        break;
    default:
        if (IsOpen() && Any(10) == 0)
            Person::Close("renderToolbar");
    }
}

TEST_F(EasyRenderSoak, AThousandRendersWithRandomPressesLeaveNothing) {
    int presses = 0;
    while (script.requests.size() < 1000 && presses < 200'000) {
        if (!IsOpen())
            Header("EasyRender")->UserStart();
        Toggle("renderCheck");
        for (int i = Any(4); i > 0; --i, ++presses)
            PressSomething();
        if (Any(3) != 0)
            loop.RunPosted();
        Work();
        script.progress.clear();
    }
    EXPECT_GE(script.requests.size(), 1000U) << "after " << presses << " presses";
    script.requests.clear();
    if (IsOpen())
        Person::Close("renderToolbar");
    loop.RunPosted();
    QorRdgRecentRenders::Finish();
    EXPECT_EQ(Dialog(), nullptr);
    EXPECT_EQ(QorMetaObject::Find("QorRdgEasyRenderDialog")->GetLiveCount(), 0);
    EXPECT_EQ(QorRdgEngineManager::GetManager()->GetCallbackManager()->CountCallbacks(), 0U);
    EXPECT_LE(QorRdgRecentRenders::List().size(), QorRdgRecentRenders::most);
    EXPECT_FALSE(QorRdgRecentRenders::List().empty());
}

} // namespace
