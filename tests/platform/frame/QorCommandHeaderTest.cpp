#include "platform/frame/QorCommandHeader.h"

#include "tests/support/QorTestApplication.h"

namespace {

/// Counts what a header dispatches, and does what a test wants meanwhile.
class HeaderWatcher : public QorEventSubscriber {
public:
    explicit HeaderWatcher(QorCommandHeader& iHeader) {
        iHeader.GetCallbackManager()->AddCallback(this, QorCommandHeader::BecomeAvailableEvent,
                                                  &HeaderWatcher::AvailableCB);
        iHeader.GetCallbackManager()->AddCallback(this, QorCommandHeader::HeaderModifiedEvent,
                                                  &HeaderWatcher::ModifiedCB);
    }

    int available = 0;
    int modified = 0;
    bool restart = false;

private:
    void AvailableCB(QorEventName,
                     QorBaseUnknown* iPublisher,
                     QorNotification*,
                     QorSubscriberData,
                     QorCallbackId) {
        ++available;
        if (restart)
            static_cast<QorCommandHeader*>(iPublisher)->StartCommand();
    }

    void
    ModifiedCB(QorEventName, QorBaseUnknown*, QorNotification*, QorSubscriberData, QorCallbackId) {
        ++modified;
    }
};

QorCommandHeader::Creator MakeCommand(int* ioCount = nullptr) {
    return [ioCount](QorCommandHeader& iHeader) {
        if (ioCount != nullptr)
            ++*ioCount;
        return new QorCommand(&iHeader, "running");
    };
}

long CountHeaders() {
    return static_cast<long>(QorCommandHeader::GetAll().size());
}

class CommandHeader : public QorTestApplication {};

TEST_F(CommandHeader, IsFoundByNameWhileItLives) {
    const long before = CountHeaders();
    auto header = QorMake<QorCommandHeader>(nullptr, "Lighting");
    const auto other = QorMake<QorCommandHeader>(nullptr, "Ground");
    EXPECT_EQ(QorCommandHeader::GetHeaderFromList("Lighting", 1), header.Get());
    EXPECT_EQ(QorCommandHeader::GetAll().back(), other.Get());
    header.Reset();
    EXPECT_EQ(QorCommandHeader::GetHeaderFromList("Lighting", 1), nullptr);
    EXPECT_EQ(CountHeaders(), before + 1);
}

TEST_F(CommandHeader, WithoutCreatorStartAndEndSwitchTheAvailability) {
    const auto header = QorMake<QorCommandHeader>(nullptr, "RenderAnimation");
    HeaderWatcher watcher(*header);
    EXPECT_EQ(header->StartCommand(), S_OK);
    EXPECT_FALSE(header->IsAvailable());
    EXPECT_EQ(header->StartCommand(), E_FAIL);
    EXPECT_EQ(watcher.available, 0);
    EXPECT_EQ(header->EndCommand(), S_OK);
    EXPECT_TRUE(header->IsAvailable());
    EXPECT_EQ(watcher.available, 1);
    header->EndCommand();
    EXPECT_EQ(watcher.available, 1) << "it was available already";
    EXPECT_EQ(watcher.modified, 2);
}

TEST_F(CommandHeader, IsUnavailableWhileItsCommandLives) {
    int made = 0;
    const auto header = QorMake<QorCommandHeader>(nullptr, "Edit", MakeCommand(&made));
    HeaderWatcher watcher(*header);
    EXPECT_EQ(header->StartCommand(), S_OK);
    ASSERT_NE(header->GetCommand(), nullptr);
    EXPECT_FALSE(header->IsAvailable());
    EXPECT_EQ(header->StartCommand(), E_FAIL);
    EXPECT_EQ(made, 1);
    header->GetCommand()->RequestDelayedDestruction();
    loop.RunPosted();
    EXPECT_EQ(header->GetCommand(), nullptr);
    EXPECT_TRUE(header->IsAvailable());
    EXPECT_EQ(watcher.available, 1);
}

TEST_F(CommandHeader, EndingDestroysTheCommandLater) {
    const auto header = QorMake<QorCommandHeader>(nullptr, "Edit", MakeCommand());
    header->StartCommand();
    const QorVar<QorCommand> command(header->GetCommand());
    EXPECT_EQ(header->EndCommand(), S_OK);
    EXPECT_TRUE(header->IsAvailable());
    EXPECT_EQ(header->GetCommand(), nullptr);
    EXPECT_TRUE(command->IsDying());
    EXPECT_EQ(command->GetFather(), header.Get());
    header->StartCommand();
    EXPECT_NE(header->GetCommand(), command.Get()) << "it can be started again at once";
    loop.RunPosted();
    EXPECT_EQ(command->GetFather(), nullptr);
    EXPECT_NE(header->GetCommand(), nullptr) << "the end of the first is not that of the second";
}

TEST_F(CommandHeader, ACommandThatIsDoneAtOnceLeavesItAvailable) {
    int runs = 0;
    const auto header =
        QorMake<QorCommandHeader>(nullptr, "Now", [&](QorCommandHeader&) -> QorCommand* {
            ++runs;
            return nullptr;
        });
    EXPECT_EQ(header->StartCommand(), S_OK);
    EXPECT_EQ(header->UserStart(), S_OK);
    EXPECT_EQ(runs, 2);
    EXPECT_TRUE(header->IsAvailable());
}

TEST_F(CommandHeader, CanBeStartedAgainWheneverItBecomesAvailable) {
    const auto header = QorMake<QorCommandHeader>(nullptr, "Lighting");
    HeaderWatcher watcher(*header);
    watcher.restart = true;
    header->StartCommand();
    header->EndCommand();
    EXPECT_FALSE(header->IsAvailable());
    EXPECT_EQ(watcher.available, 1);
    watcher.restart = false;
    header->BecomeAvailable();
    EXPECT_TRUE(header->IsAvailable());
    header->BecomeUnavailable();
    EXPECT_EQ(header->StartCommand(), E_FAIL);
}

TEST_F(CommandHeader, TakesItsCommandWithIt) {
    auto header = QorMake<QorCommandHeader>(nullptr, "Edit", MakeCommand());
    header->StartCommand();
    const long commands = QorCommand::MetaObject().GetLiveCount();
    header.Reset();
    EXPECT_EQ(QorCommand::MetaObject().GetLiveCount(), commands - 2);
}

TEST_F(CommandHeader, TakesItsTextsFromTheCatalogInThePersonsLanguage) {
    directory.Write("messages/QorCommandHeaders.QorMsg",
                    "Quit.Title=\"Quit\";\nQuit.Icon=\"quit\";\nQuit.Shortcut=\"Ctrl+Q\";\n");
    directory.Write("messages/fr/QorCommandHeaders.QorMsg", "Quit.Title=\"Quitter\";\n");
    const QorScopedVariable path("QorStartupPath", directory.GetPath());
    const QorScopedVariable french("LC_ALL", "fr_FR.UTF-8");
    const auto quit = QorMake<QorCommandHeader>(nullptr, "Quit");
    EXPECT_EQ(quit->GetTitle(), "Quitter");
    EXPECT_EQ(quit->GetIconName(), "quit");
    EXPECT_EQ(quit->GetShortcut(), "Ctrl+Q");
    EXPECT_EQ(quit->GetShortHelp(), "");
    EXPECT_EQ(quit->GetLongHelp(), "");
    EXPECT_EQ(QorMake<QorCommandHeader>(nullptr, "NoText")->GetTitle(), "NoText");
}

class CheckHeader : public QorTestApplication {};

TEST_F(CheckHeader, IsCheckedByTheFirstClickAndUncheckedByTheNext) {
    int made = 0;
    const auto header = QorMake<QorCheckHeader>(nullptr, "EasyRender", MakeCommand(&made));
    EXPECT_TRUE(header->IsCheckHeader());
    EXPECT_EQ(header->UserStart(), S_OK);
    EXPECT_EQ(header->GetCheckState(), QorDlgCheck);
    EXPECT_TRUE(header->IsAvailable());
    EXPECT_NE(header->GetCommand(), nullptr);
    EXPECT_EQ(header->UserStart(), S_OK);
    EXPECT_EQ(header->GetCheckState(), QorDlgUncheck);
    EXPECT_EQ(header->GetCommand(), nullptr);
    EXPECT_EQ(made, 1);
}

TEST_F(CheckHeader, StateSetWithoutNotificationStartsAndEndsNothing) {
    int made = 0;
    const auto header = QorMake<QorCheckHeader>(nullptr, "Ground", MakeCommand(&made));
    HeaderWatcher watcher(*header);
    header->SetCheckState(QorDlgCheck);
    EXPECT_EQ(made, 0);
    EXPECT_EQ(watcher.modified, 1);
    header->SetCheckState(QorDlgCheck);
    EXPECT_EQ(watcher.modified, 1);
    header->SetCheckState(QorDlgUncheck, QorDlgNoNotify);
    EXPECT_EQ(header->GetCheckState(), QorDlgUncheck);
}

TEST_F(CheckHeader, StateSetWithNotificationDoesWhatAClickDoes) {
    int made = 0;
    const auto header = QorMake<QorCheckHeader>(nullptr, "Ground", MakeCommand(&made));
    header->SetCheckState(QorDlgCheck, QorDlgDoNotify);
    EXPECT_EQ(made, 1);
    header->SetCheckState(QorDlgCheck, QorDlgDoNotify);
    EXPECT_EQ(made, 1) << "no change, no start";
    header->SetCheckState(QorDlgUncheck, QorDlgDoNotify);
    EXPECT_EQ(header->GetCommand(), nullptr);
    header->BecomeUnavailable();
    header->SetCheckState(QorDlgCheck, QorDlgDoNotify);
    EXPECT_EQ(header->GetCheckState(), QorDlgUncheck) << "nobody can click what is unavailable";
}

TEST_F(CheckHeader, UnchecksWhenItsCommandEndsByItself) {
    const auto header = QorMake<QorCheckHeader>(nullptr, "EasyRender", MakeCommand());
    header->StartCommand();
    header->GetCommand()->RequestDelayedDestruction();
    loop.RunPosted();
    EXPECT_EQ(header->GetCheckState(), QorDlgUncheck);
}

TEST_F(CheckHeader, StartsAnewAfterItWasUncheckedInSilence) {
    int made = 0;
    const auto header = QorMake<QorCheckHeader>(nullptr, "EasyRender", MakeCommand(&made));
    header->StartCommand();
    const QorVar<QorCommand> first(header->GetCommand());
    header->SetCheckState(QorDlgUncheck);
    header->StartCommand();
    EXPECT_EQ(made, 2);
    EXPECT_TRUE(first->IsDying());
    EXPECT_NE(header->GetCommand(), first.Get());
    EXPECT_EQ(header->GetCheckState(), QorDlgCheck);
    loop.RunPosted();
    EXPECT_EQ(header->GetCheckState(), QorDlgCheck);
}

} // namespace
