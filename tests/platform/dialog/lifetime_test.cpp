// A callback may destroy anything: every operation of a person, with everything that it could take
// away.
#include "platform/dialog/QorDlgFrame.h"
#include "tests/platform/dialog/DialogTest.h"

namespace {

/// The widgets of one trial: a root that listens, in it a window with a frame with all kinds.
struct Scene {
    ListeningDialog* root = new ListeningDialog(nullptr, "root");
    QorDlgFile* window = new QorDlgFile(root, "window");
    QorDlgDialog* inner = new QorDlgDialog(window, "inner", QorDlgWndOKCancel | QorDlgWndAPPLY);
    QorDlgColorEditor* color = new QorDlgColorEditor(window, "color");
    QorDlgFrame* frame = new QorDlgFrame(window, "frame");
    QorDlgPushButton* push = new QorDlgPushButton(frame, "push");
    QorDlgCheckButton* check = new QorDlgCheckButton(frame, "check");
    QorDlgRadioButton* released = new QorDlgRadioButton(frame, "released");
    QorDlgRadioButton* pressed = new QorDlgRadioButton(frame, "pressed");
    QorDlgEditor* editor = new QorDlgEditor(frame, "editor");
    QorDlgCombo* combo = new QorDlgCombo(frame, "combo");
    QorDlgSpinner* spinner = new QorDlgSpinner(frame, "spinner");
    QorDlgSlider* slider = new QorDlgSlider(frame, "slider");
    QorDlgScrollBar* bar = new QorDlgScrollBar(frame, "bar");

    Scene() {
        combo->SetLine("a");
        combo->SetLine("b");
        bar->SetScrollRange(0, 10);
        released->SetState(QorDlgCheck);
        for (QorDlgDialog* shown :
             {static_cast<QorDlgDialog*>(root), static_cast<QorDlgDialog*>(window), inner,
              static_cast<QorDlgDialog*>(color)})
            shown->SetVisibility(QorDlgSHOW);
        root->Listen(window, window->GetFileSelectionOKNotification(),
                     window->GetFileSelectionCancelNotification(),
                     window->GetWindCloseNotification());
        root->Listen(inner, inner->GetDiaOKNotification(), inner->GetDiaCANCELNotification(),
                     inner->GetDiaAPPLYNotification(), inner->GetWindSizeNotification());
        root->Listen(color, color->GetColorOKNotification(), color->GetColorCancelNotification());
        root->Listen(push, push->GetPushBActivateNotification());
        root->Listen(check, check->GetChkBModifyNotification(),
                     check->GetChkBDoubleClickNotification());
        root->Listen(released, released->GetRadBModifyNotification());
        root->Listen(pressed, pressed->GetRadBModifyNotification());
        root->Listen(editor, editor->GetEditModifyNotification());
        root->Listen(combo, combo->GetComboSelectNotification());
        root->Listen(spinner, spinner->GetSpinnerModifyNotification());
        root->Listen(slider, slider->GetSliderDragNotification(),
                     slider->GetSliderModifyNotification());
        root->Listen(bar, bar->GetScrollBarDragNotification(),
                     bar->GetScrollBarModifyNotification());
    }
};

struct Operation {
    const char* name;
    std::function<QorUserResult(Scene&)> act;
    const char* firstHeard; ///< sender of the first notification
};

const std::vector<Operation>& Operations() {
    using S = Scene;
    static const std::vector<Operation> operations = {
        {"press", [](S& iOne) { return iOne.push->UserPress(); }, "push"},
        {"check", [](S& iOne) { return iOne.check->UserCheck(true); }, "check"},
        {"double click", [](S& iOne) { return iOne.check->UserDoubleClick(); }, "check"},
        {"radio", [](S& iOne) { return iOne.pressed->UserCheck(true); }, "released"},
        {"text", [](S& iOne) { return iOne.editor->UserSetText("x"); }, "editor"},
        {"select", [](S& iOne) { return iOne.combo->UserSelect(1); }, "combo"},
        {"spinner", [](S& iOne) { return iOne.spinner->UserSetValue(5.0); }, "spinner"},
        {"spinner's text", [](S& iOne) { return iOne.spinner->UserSetText("500"); }, "spinner"},
        {"step", [](S& iOne) { return iOne.spinner->UserStep(3); }, "spinner"},
        {"drag", [](S& iOne) { return iOne.slider->UserDrag(5.0); }, "slider"},
        {"slide", [](S& iOne) { return iOne.slider->UserSetValue(5.0); }, "slider"},
        {"scroll", [](S& iOne) { return iOne.bar->UserSetPosition(5); }, "bar"},
        {"scroll drag", [](S& iOne) { return iOne.bar->UserDrag(5); }, "bar"},
        {"accept", [](S& iOne) { return iOne.window->UserAccept("/tmp/x"); }, "window"},
        {"file cancel", [](S& iOne) { return iOne.window->UserCancel(); }, "window"},
        {"close", [](S& iOne) { return iOne.window->UserClose(); }, "window"},
        {"OK", [](S& iOne) { return iOne.inner->UserOK(); }, "inner"},
        {"cancel", [](S& iOne) { return iOne.inner->UserCancel(); }, "inner"},
        {"apply", [](S& iOne) { return iOne.inner->UserApply(); }, "inner"},
        {"resize", [](S& iOne) { return iOne.inner->UserResize(30, 20); }, "inner"},
        {"color",
         [](S& iOne) {
             return iOne.color->UserAccept({0, 0, 0});
         },
         "color"},
        {"color cancel", [](S& iOne) { return iOne.color->UserCancel(); }, "color"},
    };
    return operations;
}

/// What the callback takes away: the sender, its father, its window, everything.
const std::vector<std::pair<const char*, std::function<QorCommand*(Scene&, QorCommand&)>>>&
Victims() {
    static const std::vector<
        std::pair<const char*, std::function<QorCommand*(Scene&, QorCommand&)>>>
        victims = {
            {"sender",
             [](Scene&, QorCommand& iSender) {
                 return &iSender;
             }},
            {"father",
             [](Scene&, QorCommand& iSender) {
                 return iSender.GetFather();
             }},
            {"window",
             [](Scene& iOne, QorCommand&) {
                 return iOne.window;
             }},
            {"root",
             [](Scene& iOne, QorCommand&) {
                 return iOne.root;
             }},
        };
    return victims;
}

class Lifetime
    : public QorTestApplication
    , public testing::WithParamInterface<bool> {
protected:
    /// Runs every operation with every victim, the root last if it is not one itself.
    void TryAll() {
        for (const auto& [name, choose] : Victims())
            for (const Operation& operation : Operations()) {
                SCOPED_TRACE(std::string(operation.name) + ", destroying the " + name);
                TryOne(operation, choose);
            }
    }

    void TryOne(const Operation& iOperation,
                const std::function<QorCommand*(Scene&, QorCommand&)>& iChoose) {
        Scene scene;
        bool rootGone = false;
        int heard = 0;
        scene.root->reaction = [&](QorCommand& iSender) {
            if (++heard > 1)
                return;
            EXPECT_EQ(iSender.GetName(), iOperation.firstHeard);
            QorCommand* victim = iChoose(scene, iSender);
            rootGone = victim == scene.root;
            victim->RequestDelayedDestruction();
        };
        EXPECT_EQ(iOperation.act(scene), QorUserResult::Done);
        EXPECT_GE(heard, 1);
        loop.RunPosted();
        if (!rootGone)
            scene.root->RequestDelayedDestruction();
        loop.RunPosted();
        ExpectNoObjects();
    }
};

INSTANTIATE_TEST_SUITE_P(Hosts, Lifetime, testing::Bool(), NameHost);

TEST_P(Lifetime, ACallbackMayAskForTheDestructionOfAnything) {
    const auto host = GetParam() ? std::make_unique<RecordingHost>() : nullptr;
    TryAll();
}

TEST_P(Lifetime, ACallbackMayDestroyAnythingAtOnce) {
    const auto host = GetParam() ? std::make_unique<RecordingHost>() : nullptr;
    application.reset(); // without it destruction does not wait
    TryAll();
}

TEST_P(Lifetime, ADyingWidgetSendsNothingMore) {
    const auto host = GetParam() ? std::make_unique<RecordingHost>() : nullptr;
    Scene scene;
    scene.root->reaction = [&](QorCommand& iSender) {
        iSender.GetFather()->RequestDelayedDestruction();
    };
    scene.slider->UserSetValue(50.0);
    EXPECT_EQ(scene.root->TakeHeard(), Heard{"slider SliderDrag"});
    EXPECT_EQ(scene.pressed->UserCheck(true), QorUserResult::Insensitive);
    scene.spinner->SetValue(7.0, QorDlgDoNotify);
    EXPECT_EQ(scene.root->TakeHeard(), Heard{});
    scene.root->RequestDelayedDestruction();
    loop.RunPosted();
}

TEST_P(Lifetime, TheOtherRadioButtonMayBeDestroyedInItsNotification) {
    const auto host = GetParam() ? std::make_unique<RecordingHost>() : nullptr;
    Scene scene;
    application.reset();
    scene.root->reaction = [&](QorCommand& iSender) {
        if (&iSender == scene.released)
            scene.pressed->RequestDelayedDestruction();
    };
    scene.pressed->UserCheck(true);
    EXPECT_EQ(scene.root->TakeHeard(), Heard{"released RadBModify"});
    scene.root->RequestDelayedDestruction();
}

} // namespace
