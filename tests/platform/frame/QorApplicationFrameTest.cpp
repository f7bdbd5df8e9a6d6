#include "platform/frame/QorApplicationFrame.h"

#include "platform/dialog/QorDlgLabel.h"
#include "platform/frame/QorFrmFile.h"
#include "platform/frame/QorFrmLayout.h"
#include "platform/frame/QorFrmNotify.h"
#include "platform/frame/QorFrmWindow.h"
#include "tests/support/QorTestApplication.h"

namespace {

class ApplicationFrame : public QorTestApplication {};

TEST_F(ApplicationFrame, IsThereWhileTheProgramRuns) {
    EXPECT_EQ(QorApplicationFrame::GetFrame(), nullptr);
    auto frame = QorMake<QorApplicationFrame>("workbench");
    EXPECT_EQ(QorApplicationFrame::GetFrame(), frame.Get());
    EXPECT_EQ(frame->GetApplicationDocument(), frame.Get());
    EXPECT_TRUE(frame->IsWindow());
    frame.Reset();
    EXPECT_EQ(QorApplicationFrame::GetFrame(), nullptr);
}

TEST_F(ApplicationFrame, HasMenusAndToolBarsFromItsBeginning) {
    const auto frame = QorMake<QorApplicationFrame>("workbench");
    EXPECT_EQ(frame->GetMenuBar()->GetName(), "menuBar");
    EXPECT_EQ(frame->GetToolBars()->GetName(), "toolBars");
    EXPECT_TRUE(frame->GetMenuBar()->GetEntries().empty());
    EXPECT_TRUE(frame->GetWidgets().empty()) << "menus are no widgets";
}

TEST_F(ApplicationFrame, KeepsTheStatusUntilTheNext) {
    const auto frame = QorMake<QorApplicationFrame>("workbench");
    EXPECT_EQ(frame->GetStatus(), "");
    frame->SetStatus("Reading gear.step");
    EXPECT_EQ(frame->GetStatus(), "Reading gear.step");
}

/// A frame that hears what a person does to it.
class Listener : public QorApplicationFrame {
public:
    Listener() : QorApplicationFrame("workbench") {
        AddAnalyseNotificationCB(this, this, GetDropNotification(), &Listener::DropCB);
        AddAnalyseNotificationCB(this, this, GetCancelProgressNotification(), &Listener::CancelCB);
        SetVisibility(QorDlgSHOW);
    }

    int drops = 0;
    int cancels = 0;

protected:
    ~Listener() override = default;

private:
    void DropCB(QorCommand*, QorNotification*, QorSubscriberData) { ++drops; }

    void CancelCB(QorCommand*, QorNotification*, QorSubscriberData) { ++cancels; }
};

TEST_F(ApplicationFrame, TakesFilesThatAPersonDrops) {
    const auto frame = QorMake<Listener>();
    EXPECT_EQ(frame->UserDropFiles({"/a.stp", "/b.stp"}), QorUserResult::Done);
    EXPECT_EQ(frame->GetDroppedFiles(), (std::vector<QorUnicodeString>{"/a.stp", "/b.stp"}));
    EXPECT_EQ(frame->UserDropFiles({}), QorUserResult::Impossible);
    frame->SetVisibility(QorDlgHIDE);
    EXPECT_EQ(frame->UserDropFiles({"/c.stp"}), QorUserResult::Insensitive);
    EXPECT_EQ(frame->drops, 1);
}

TEST_F(ApplicationFrame, LetsAPersonCancelWhatCanBe) {
    const auto frame = QorMake<Listener>();
    EXPECT_EQ(frame->UserCancelProgress(), QorUserResult::Insensitive);
    frame->SetProgress(QorApplicationFrame::Progress{"Writing", 0.5, false});
    EXPECT_EQ(frame->UserCancelProgress(), QorUserResult::Insensitive);
    frame->SetProgress(QorApplicationFrame::Progress{"Reading", 0.5, true});
    EXPECT_EQ(frame->UserCancelProgress(), QorUserResult::Done);
    EXPECT_EQ(frame->cancels, 1);
}

TEST_F(ApplicationFrame, DocumentWindowsAreWidgetsOfItAndDialogsAreNot) {
    const auto frame = QorMake<QorApplicationFrame>("workbench");
    const auto layout = QorMake<QorFrmLayout>(nullptr, "layout");
    auto* editor = new QorFrmEditor(layout.Get(), "gear", nullptr);
    auto* window = new QorFrmWindow(frame.Get(), "gear:1", editor);
    new QorDlgLabel(window, "label");
    new QorFrmNotify(frame.Get(), "notify");
    EXPECT_EQ(frame->GetWidgets(), std::vector<QorDialog*>{window});
    EXPECT_EQ(window->GetWindow(), frame.Get());
    EXPECT_FALSE(window->CanAct()) << "the frame is not shown yet";
    frame->SetVisibility(QorDlgSHOW);
    EXPECT_TRUE(window->CanAct());
    EXPECT_STREQ(window->GetKind(), "document window");
}

TEST_F(ApplicationFrame, ItsBoxesAreThoseOfTheToolkitUnderTheirOwnNames) {
    const auto box = QorMake<QorFrmNotify>(nullptr, "errNotify", QorNotifyKind::Error);
    EXPECT_STREQ(box->IsA(), "QorFrmNotify");
    EXPECT_TRUE(box->IsAKindOf("QorDlgNotify"));
    EXPECT_EQ(box->GetNotifyKind(), QorNotifyKind::Error);
    const auto file = QorMake<QorFrmFile>(nullptr, "fileBox", QorDlgFileSave);
    EXPECT_STREQ(file->IsA(), "QorFrmFile");
    EXPECT_TRUE(file->IsSave());
}

} // namespace
