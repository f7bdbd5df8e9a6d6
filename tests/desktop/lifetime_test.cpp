// A callback may destroy anything while Qt is in the middle of an event, and Qt may delete controls
// before their widgets.
#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgCombo.h"
#include "platform/dialog/QorDlgEditor.h"
#include "platform/dialog/QorDlgFrame.h"
#include "platform/dialog/QorDlgScrollBar.h"
#include "platform/dialog/QorDlgSlider.h"
#include "platform/dialog/QorDlgSpinner.h"
#include "tests/desktop/DesktopTest.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>

namespace qor::desktop::tests {

namespace {

/// A window with a widget of every kind that a person acts on, which all tell the root.
struct Scene {
    ListeningDialog* root = new ListeningDialog(nullptr, "root");
    QorDlgDialog* window = new QorDlgDialog(root, "window", QorDlgWndOKCancel | QorDlgWndAPPLY);
    QorDlgFrame* frame = new QorDlgFrame(window, "frame");
    QorDlgPushButton* push = new QorDlgPushButton(frame, "push");
    QorDlgCheckButton* check = new QorDlgCheckButton(frame, "check");
    QorDlgRadioButton* first = new QorDlgRadioButton(frame, "first");
    QorDlgRadioButton* second = new QorDlgRadioButton(frame, "second");
    QorDlgEditor* editor = new QorDlgEditor(frame, "editor");
    QorDlgCombo* combo = new QorDlgCombo(frame, "combo");
    QorDlgSpinner* spinner = new QorDlgSpinner(frame, "spinner");
    QorDlgSlider* slider = new QorDlgSlider(frame, "slider");
    QorDlgScrollBar* bar = new QorDlgScrollBar(frame, "bar", QorDlgDefaultStyle);

    Scene() {
        combo->SetLine("a");
        combo->SetLine("b");
        bar->SetScrollRange(0, 100);
        bar->SetScrollBoxSize(10);
        first->SetState(QorDlgCheck);
        root->Listen(window, window->GetDiaOKNotification(), window->GetDiaCANCELNotification(),
                     window->GetDiaAPPLYNotification(), window->GetWindCloseNotification());
        root->Listen(push, push->GetPushBActivateNotification());
        root->Listen(check, check->GetChkBModifyNotification());
        root->Listen(first, first->GetRadBModifyNotification());
        root->Listen(second, second->GetRadBModifyNotification());
        root->Listen(editor, editor->GetEditModifyNotification());
        root->Listen(combo, combo->GetComboSelectNotification());
        root->Listen(spinner, spinner->GetSpinnerModifyNotification());
        root->Listen(slider, slider->GetSliderDragNotification(),
                     slider->GetSliderModifyNotification());
        root->Listen(bar, bar->GetScrollBarDragNotification(),
                     bar->GetScrollBarModifyNotification());
    }

    /// Closes everything that the test has not closed.
    void end() const { root->RequestDelayedDestruction(); }
};

QPushButton* button(const Scene& scene, QDialogButtonBox::StandardButton which) {
    return controlOf(scene.window)->findChild<QDialogButtonBox*>()->button(which);
}

void clickMark(QWidget* control) {
    QTest::mouseClick(control, Qt::LeftButton, {}, QPoint(8, control->height() / 2));
}

void clickUp(QWidget* control) {
    QTest::mouseClick(control, Qt::LeftButton, {},
                      QPoint(control->width() - 10, control->height() / 4));
}

struct Action {
    const char* name;
    std::function<void(Scene&)> act;
};

const std::vector<Action>& actions() {
    static const std::vector<Action> all = {
        {"push",
         [](Scene& one) {
             QTest::mouseClick(controlOf(one.push), Qt::LeftButton);
         }},
        {"pushBySpace",
         [](Scene& one) {
             QTest::keyClick(controlOf(one.push), Qt::Key_Space);
         }},
        {"check",
         [](Scene& one) {
             clickMark(controlOf(one.check));
         }},
        {"radio",
         [](Scene& one) {
             clickMark(controlOf(one.second));
         }},
        {"radioByArrow",
         [](Scene& one) {
             QTest::keyClick(controlOf(one.first), Qt::Key_Down);
         }},
        {"editor",
         [](Scene& one) {
             QPointer<QWidget> line = controlOf(one.editor);
             QTest::keyClicks(line, "text");
             QTest::keyClick(line, Qt::Key_Return);
         }},
        {"editorByLeaving",
         [](Scene& one) {
             controlOf(one.editor)->setFocus();
             QTest::keyClicks(controlOf(one.editor), "text");
             controlOf(one.push)->setFocus();
         }},
        {"combo",
         [](Scene& one) {
             QTest::keyClick(controlOf(one.combo), Qt::Key_Down);
         }},
        {"spinner",
         [](Scene& one) {
             QWidget* line = controlOf(one.spinner)->findChild<QLineEdit*>();
             QTest::keyClicks(line, "5");
             QTest::keyClick(line, Qt::Key_Return);
         }},
        {"spinnerByKey",
         [](Scene& one) {
             QTest::keyClick(controlOf(one.spinner), Qt::Key_Up);
         }},
        {"spinnerByButton",
         [](Scene& one) {
             clickUp(controlOf(one.spinner));
         }},
        {"spinnerByWheel",
         [](Scene& one) {
             wheel(*controlOf(one.spinner), 1);
         }},
        {"slider",
         [](Scene& one) {
             QTest::mouseClick(controlOf(one.slider), Qt::LeftButton);
         }},
        {"sliderByKey",
         [](Scene& one) {
             QTest::keyClick(controlOf(one.slider), Qt::Key_Right);
         }},
        {"sliderByWheel",
         [](Scene& one) {
             wheel(*controlOf(one.slider), 1);
         }},
        {"bar",
         [](Scene& one) {
             QTest::mouseClick(controlOf(one.bar), Qt::LeftButton);
         }},
        {"OK",
         [](Scene& one) {
             QTest::mouseClick(button(one, QDialogButtonBox::Ok), Qt::LeftButton);
         }},
        {"OKByKey",
         [](Scene& one) {
             QTest::keyClick(controlOf(one.window), Qt::Key_Return);
         }},
        {"apply",
         [](Scene& one) {
             QTest::mouseClick(button(one, QDialogButtonBox::Apply), Qt::LeftButton);
         }},
        {"escape",
         [](Scene& one) {
             QTest::keyClick(controlOf(one.window), Qt::Key_Escape);
         }},
        {"close",
         [](Scene& one) {
             controlOf(one.window)->close();
         }},
    };
    return all;
}

struct Victim {
    const char* name;
    std::function<QorCommand*(Scene&, QorCommand&)> choose;
};

const Victim victims[] = {
    {"sender",
     [](Scene&, QorCommand& sender) {
         return &sender;
     }},
    {"frame",
     [](Scene& one, QorCommand&) {
         return one.frame;
     }},
    {"window",
     [](Scene& one, QorCommand&) {
         return one.window;
     }},
    {"root",
     [](Scene& one, QorCommand&) {
         return one.root;
     }},
};

class Lifetimes
    : public DesktopTest
    , public testing::WithParamInterface<Action> {
protected:
    /// With \p atOnce the callback destroys without a loop, in the middle of Qt's event.
    void tryOne(const Victim& victim, bool atOnce) {
        Scene scene;
        show(*scene.window);
        bool rootGone = false;
        bool heard = false;
        scene.root->reaction = [&](QorCommand& sender) {
            if (std::exchange(heard, true))
                return;
            QorCommand* chosen = victim.choose(scene, sender);
            rootGone = chosen == scene.root;
            if (atOnce)
                application.reset();
            chosen->RequestDelayedDestruction();
            if (atOnce)
                application = std::make_unique<QorInteractiveApplication>(loop);
        };
        GetParam().act(scene);
        EXPECT_TRUE(heard);
        settle();
        if (!rootGone)
            scene.end();
        settle();
    }
};

INSTANTIATE_TEST_SUITE_P(All, Lifetimes, testing::ValuesIn(actions()), [](const auto& one) {
    return std::string(one.param.name);
});

TEST_P(Lifetimes, ACallbackMayAskForTheDestructionOfAnything) {
    for (const Victim& victim : victims) {
        SCOPED_TRACE(victim.name);
        tryOne(victim, false);
    }
}

TEST_P(Lifetimes, ACallbackMayDestroyAnythingAtOnce) {
    for (const Victim& victim : victims) {
        SCOPED_TRACE(victim.name);
        tryOne(victim, true);
    }
}

class Controls : public DesktopTest {};

TEST_F(Controls, MayBeDeletedByQtWhileTheirWidgetsLive) {
    auto* editor = new QorDlgEditor(window, "editor");
    auto* check = new QorDlgCheckButton(window, "check");
    show();
    delete controlFor(window); // takes its children with it
    EXPECT_EQ(controlOf(editor), nullptr);
    editor->SetText("still here");
    check->SetState(QorDlgCheck);
    check->SetTitle("title");
    window->SetVisibility(QorDlgHIDE);
    settle();
    EXPECT_EQ(editor->GetText(), QorUnicodeString("still here"));
}

TEST_F(Controls, MayBeTakenAwayAndMadeAgain) {
    auto* check = new QorDlgCheckButton(window, "check");
    show();
    window->Unrealize();
    settle();
    EXPECT_TRUE(visibleWindows().empty());
    check->SetState(QorDlgCheck);
    window->Realize();
    settle();
    EXPECT_TRUE(controlFor<QAbstractButton>(check)->isChecked());
    EXPECT_TRUE(controlFor(window)->isVisible());
}

TEST_F(Controls, OfWidgetsThatComeLaterAppearInTheirPlace) {
    auto* first = new QorDlgEditor(window, "first");
    show();
    auto* later = new QorDlgEditor(window, "later");
    settle();
    EXPECT_TRUE(controlFor(later)->isVisible());
    EXPECT_GT(controlFor(later)->y(), controlFor(first)->y());
    first->RequestDelayedDestruction();
    settle();
    EXPECT_TRUE(controlFor(later)->isVisible());
}

} // namespace

} // namespace qor::desktop::tests
