#include "platform/frame/QorApplicationFrame.h"
#include "tests/desktop/DesktopTest.h"

#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

#include <fstream>

namespace qor::desktop::tests {

namespace {

/// A frame that counts how often its close box was used.
class ClosingFrame : public QorApplicationFrame {
public:
    explicit ClosingFrame(const QorString& called) : QorApplicationFrame(called) {
        AddAnalyseNotificationCB(this, this, GetWindCloseNotification(), &ClosingFrame::closed);
    }

    int closings = 0;

protected:
    ~ClosingFrame() override = default;

private:
    void closed(QorCommand* /*sender*/, QorNotification* /*what*/, QorSubscriberData /*data*/) {
        ++closings;
    }
};

class Frame : public DesktopTest {
protected:
    void SetUp() override {
        DesktopTest::SetUp();
        std::filesystem::create_directories(directory.GetPath("messages"));
        std::ofstream(directory.GetPath("messages/QorCommandHeaders.QorMsg"))
            << "file.Title=\"&File\";\nopen.Title=\"&Open…\";\nopen.Shortcut=\"Ctrl+O\";\n"
               "open.ShortHelp=\"Open a model\";\nopen.Icon=\"open\";\nground.Title=\"Ground\";\n";
        QorCatalogs::SetProgramDirectory(directory.GetPath("").c_str());
        frame = new ClosingFrame("frame");
        open = new QorCommandHeader(frame, "open", [this](QorCommandHeader&) -> QorCommand* {
            ++opened;
            return nullptr;
        });
        ground = new QorCheckHeader(frame, "ground");
        auto* menu = new QorCmdContainer(frame, "file");
        menu->AddChild(new QorCmdStarter(frame, "openItem", "open"));
        menu->AddChild(new QorCmdSeparator(frame, "line"));
        menu->AddChild(new QorCmdStarter(frame, "groundItem", "ground"));
        menu->AddChild(new QorCmdStarter(frame, "ghostItem", "ghost"));
        frame->GetMenuBar()->AddChild(menu);
        auto* tools = new QorCmdContainer(frame, "tools");
        tools->AddChild(new QorCmdStarter(frame, "openTool", "open"));
        frame->GetToolBars()->AddChild(tools);
        frame->SetTitle("Workbench");
        show(*frame);
    }

    void TearDown() override {
        if (frame != nullptr)
            frame->RequestDelayedDestruction();
        DesktopTest::TearDown();
    }

    [[nodiscard]] QMainWindow* main() const { return controlFor<QMainWindow>(frame); }

    [[nodiscard]] QAction* action(const char* name) const {
        return main()->findChild<QAction*>(name);
    }

    ClosingFrame* frame = nullptr;
    QorCommandHeader* open = nullptr;
    QorCheckHeader* ground = nullptr;
    int opened = 0;
};

TEST_F(Frame, ShowsMenusAndToolBarsOfTheCommandHeaders) {
    ASSERT_EQ(main()->menuBar()->actions().size(), 1);
    QMenu* menu = main()->menuBar()->actions().front()->menu();
    EXPECT_EQ(menu->title(), "&File");
    ASSERT_EQ(menu->actions().size(), 4);
    EXPECT_EQ(menu->actions().at(0)->text(), QString::fromUtf8("&Open…"));
    EXPECT_EQ(menu->actions().at(0)->shortcut(), QKeySequence("Ctrl+O"));
    EXPECT_TRUE(menu->actions().at(1)->isSeparator());
    EXPECT_FALSE(menu->actions().at(3)->isEnabled()) << "there is no such header";
    const auto bars = main()->findChildren<QToolBar*>();
    ASSERT_EQ(bars.size(), 1);
    EXPECT_EQ(bars.front()->actions().front(), menu->actions().front());
    EXPECT_EQ(main()->windowTitle(), "Workbench");
}

TEST_F(Frame, StartsACommandByMenuShortcutAndToolBar) {
    QTest::keyClick(main(), Qt::Key_O, Qt::ControlModifier);
    settle();
    EXPECT_EQ(opened, 1);
    auto* bar = main()->findChildren<QToolBar*>().front();
    QTest::mouseClick(bar->widgetForAction(action("open")), Qt::LeftButton);
    settle();
    EXPECT_EQ(opened, 2);
    QMenu* menu = main()->menuBar()->actions().front()->menu();
    menu->popup(main()->mapToGlobal(QPoint(20, 20)));
    QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action("open")).center());
    settle();
    EXPECT_EQ(opened, 3);
}

TEST_F(Frame, FollowsAvailabilityAndCheckState) {
    open->BecomeUnavailable();
    EXPECT_FALSE(action("open")->isEnabled());
    open->BecomeAvailable();
    EXPECT_TRUE(action("open")->isEnabled());
    ground->SetCheckState(QorDlgCheck);
    EXPECT_TRUE(action("ground")->isChecked());
    action("ground")->trigger();
    EXPECT_EQ(ground->GetCheckState(), QorDlgUncheck);
    EXPECT_FALSE(action("ground")->isChecked());
}

TEST_F(Frame, TakesAHeaderThatComesLater) {
    auto* ghost = new QorCommandHeader(frame, "ghost");
    QMenu* menu = main()->menuBar()->actions().front()->menu();
    menu->popup(main()->mapToGlobal(QPoint(20, 20)));
    EXPECT_TRUE(menu->actions().at(3)->isEnabled());
    menu->hide();
    ghost->RequestDelayedDestruction();
    settle();
    menu->actions().at(3)->trigger(); // nobody there: nothing happens
}

TEST_F(Frame, ShowsTheStatusText) {
    frame->SetStatus("Rendering <1>");
    const auto labels = main()->statusBar()->findChildren<QLabel*>();
    ASSERT_EQ(labels.size(), 1);
    EXPECT_EQ(labels.front()->text(), "Rendering <1>");
}

TEST_F(Frame, ItsCloseBoxOnlyAsks) {
    main()->close();
    settle();
    EXPECT_EQ(frame->closings, 1);
    EXPECT_TRUE(main()->isVisible());
}

TEST_F(Frame, ACommandMayEndTheProgramsWindow) {
    auto* quit = new QorCommandHeader(frame, "ghost", [this](QorCommandHeader&) -> QorCommand* {
        std::exchange(frame, nullptr)->RequestDelayedDestruction();
        return nullptr;
    });
    QMenu* menu = main()->menuBar()->actions().front()->menu();
    menu->popup(main()->mapToGlobal(QPoint(20, 20)));
    QTest::mouseClick(menu, Qt::LeftButton, {},
                      menu->actionGeometry(menu->actions().at(3)).center());
    settle();
    EXPECT_EQ(frame, nullptr);
    EXPECT_NE(quit, nullptr);
    EXPECT_EQ(Desktop::mainWindow(), nullptr);
}

TEST_F(Frame, DialogsStandBeforeIt) {
    auto* dialog = new QorDlgDialog(frame, "dialog", QorDlgWndOKCancel);
    show(*dialog);
    EXPECT_EQ(controlFor(dialog)->parentWidget(), main());
    EXPECT_EQ(Desktop::mainWindow(), main());
}

} // namespace

} // namespace qor::desktop::tests
