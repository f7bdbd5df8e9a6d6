#include "platform/frame/QorApplicationFrame.h"
#include "tests/desktop/DesktopTest.h"

#include <QDropEvent>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QProgressBar>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <QUrl>

#include <fstream>

namespace qor::desktop::tests {

namespace {

/// A frame that counts what a person did to it.
class ClosingFrame : public QorApplicationFrame {
public:
    explicit ClosingFrame(const QorString& called) : QorApplicationFrame(called) {
        AddAnalyseNotificationCB(this, this, GetWindCloseNotification(), &ClosingFrame::closed);
        AddAnalyseNotificationCB(this, this, GetDropNotification(), &ClosingFrame::dropped);
        AddAnalyseNotificationCB(this, this, GetCancelProgressNotification(),
                                 &ClosingFrame::cancelled);
    }

    int closings = 0;
    int drops = 0;
    int cancels = 0;

protected:
    ~ClosingFrame() override = default;

private:
    void closed(QorCommand* /*sender*/, QorNotification* /*what*/, QorSubscriberData /*data*/) {
        ++closings;
    }

    void dropped(QorCommand* /*sender*/, QorNotification* /*what*/, QorSubscriberData /*data*/) {
        ++drops;
    }

    void cancelled(QorCommand* /*sender*/, QorNotification* /*what*/, QorSubscriberData /*data*/) {
        ++cancels;
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
    EXPECT_EQ(main()->findChild<QLabel*>("status")->text(), "Rendering <1>");
    frame->SetFacts("8 parts · mm");
    EXPECT_EQ(main()->findChild<QLabel*>("facts")->text(), QString::fromUtf8("8 parts · mm"));
}

TEST_F(Frame, ShowsLongWorkWithAWayOut) {
    auto* bar = main()->statusBar()->findChild<QProgressBar*>();
    auto* cancel = main()->findChild<QToolButton*>("cancelWork");
    EXPECT_FALSE(bar->isVisible());
    QTest::mouseClick(cancel, Qt::LeftButton);
    EXPECT_EQ(frame->cancels, 0) << "there is nothing to cancel";
    frame->SetProgress(QorApplicationFrame::Progress{"Reading", 0.5, true});
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ(bar->value() * 2, bar->maximum());
    QTest::mouseClick(cancel, Qt::LeftButton);
    settle();
    EXPECT_EQ(frame->cancels, 1);
    frame->SetProgress(QorApplicationFrame::Progress{"Writing", 0.5, false});
    EXPECT_FALSE(cancel->isVisible());
    frame->SetProgress(std::nullopt);
    EXPECT_FALSE(bar->isVisible());
}

TEST_F(Frame, TellsOfDroppedFiles) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile("/models/a b.stp"), QUrl("https://example.org/c.stp")});
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(main(), &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(main(), &drop);
    EXPECT_TRUE(frame->GetDroppedFiles().empty()) << "not while the other program waits";
    settle();
    EXPECT_EQ(frame->drops, 1);
    EXPECT_EQ(frame->GetDroppedFiles(), std::vector<QorUnicodeString>{"/models/a b.stp"});
}

TEST_F(Frame, DoesNotTakeWhatIsNoFile) {
    QMimeData data;
    data.setText("only words");
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
    enter.ignore();
    QCoreApplication::sendEvent(main(), &enter);
    EXPECT_FALSE(enter.isAccepted());
}

TEST_F(Frame, LeavesOutACommandWithoutATitle) {
    open->SetTitle("");
    EXPECT_FALSE(action("open")->isVisible());
    open->SetTitle("R&&D.stp");
    EXPECT_TRUE(action("open")->isVisible());
    EXPECT_EQ(action("open")->text(), "R&&D.stp");
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
