#include "platform/frame/QorFrmCommand.h"

#include "platform/frame/QorCommandSelector.h"
#include "platform/frame/QorFrmDialog.h"
#include "tests/support/QorTestApplication.h"

namespace {

QorCommandSelector* Selector() {
    return QorCommandSelector::GetDefaultCommandSelectorInstance();
}

class FrmCommand : public QorTestApplication {};

TEST_F(FrmCommand, IsTheActivatedOneWhileItRuns) {
    const auto father = QorMake<QorCommand>(nullptr, "father");
    auto* first = new QorFrmCommand(father.Get(), "first");
    auto second = QorMake<QorFrmCommand>(nullptr, "second");
    EXPECT_EQ(Selector()->GetActivatedCommand(), second.Get());
    first->Activate();
    EXPECT_EQ(Selector()->GetActivatedCommand(), first);
    first->RequestEnd();
    EXPECT_EQ(Selector()->GetActivatedCommand(), second.Get());
    second.Reset();
    EXPECT_EQ(Selector()->GetActivatedCommand(), nullptr);
}

TEST_F(FrmCommand, OffersHelp) {
    const auto command = QorMake<QorFrmCommand>(nullptr, "edit");
    const auto help = QorQuery<QorIHelp>(Selector()->GetActivatedCommand());
    ASSERT_TRUE(help);
    EXPECT_EQ(help->SetLongHelpId("quality"), S_OK);
    EXPECT_EQ(command->GetLongHelpId(), "quality");
    const auto plain = QorMake<QorCommand>(nullptr, "plain");
    EXPECT_FALSE(QorQuery<QorIHelp>(plain.Get())) << "not every command has help";
}

TEST_F(FrmCommand, EndsThroughItsHeader) {
    const auto header =
        QorMake<QorCommandHeader>(nullptr, "Edit", [](QorCommandHeader& iHeader) -> QorCommand* {
            return new QorFrmCommand(&iHeader, "edit");
        });
    header->StartCommand();
    static_cast<QorFrmCommand*>(header->GetCommand())->RequestEnd();
    EXPECT_TRUE(header->IsAvailable());
    EXPECT_EQ(header->GetCommand(), nullptr);
}

/// A command that opens a dialog and ends on its OK.
class DialogRunner : public QorFrmCommand {
public:
    explicit DialogRunner(QorCommand* iFather) : QorFrmCommand(iFather, "runner") {
        auto* dialog = new QorFrmDialog(this, "dialog", QorDlgWndOKCancel);
        AddAnalyseNotificationCB(this, dialog, dialog->GetDiaOKNotification(), &DialogRunner::OKCB);
        dialog->SetVisibility(QorDlgSHOW);
    }

protected:
    ~DialogRunner() override = default;

private:
    void OKCB(QorCommand*, QorNotification*, QorSubscriberData) { RequestEnd(); }
};

TEST_F(FrmCommand, OwnsItsDialogAndHearsOfItsOK) {
    const auto header =
        QorMake<QorCommandHeader>(nullptr, "Edit", [](QorCommandHeader& iHeader) -> QorCommand* {
            return new DialogRunner(&iHeader);
        });
    header->StartCommand();
    ASSERT_EQ(QorDlgDialog::GetAll().size(), 1U);
    EXPECT_EQ(QorDlgDialog::GetAll().front()->UserOK(), QorUserResult::Done);
    EXPECT_TRUE(header->IsAvailable());
    loop.RunPosted();
    EXPECT_TRUE(QorDlgDialog::GetAll().empty());
    EXPECT_EQ(QorFrmDialog::MetaObject().GetLiveCount(), 0);
}

} // namespace
