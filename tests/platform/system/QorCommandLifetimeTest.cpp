#include "platform/system/QorCommand.h"
#include "tests/support/QorTestApplication.h"

namespace {

using Lines = std::vector<std::string>;

Lines& Journal() {
    static Lines lines;
    return lines;
}

class TestMortal : public QorCommand {
    QorDeclareClass(TestMortal)

    using QorCommand::QorCommand;

    std::function<void()> action = [] {
    };

    void CloseCB(QorCommand* /*iSender*/,
                 QorNotification* /*iNotification*/,
                 QorSubscriberData /*iData*/) {
        action();
    }

protected:
    ~TestMortal() override { Journal().push_back("~" + GetName().Str()); }

    void Dying() override {
        const char* where = GetFather() != nullptr ? "" : " alone";
        Journal().push_back("dying " + GetName().Str() + where);
    }

    void ChildAdded(QorCommand& iChild) override {
        Journal().push_back(GetName().Str() + " + " + iChild.GetName().Str());
    }

    void ChildRemoved(QorCommand& iChild) override {
        Journal().push_back(GetName().Str() + " - " + iChild.GetName().Str());
    }
};

QorImplementClass(TestMortal, QorCommand)

class QorCommandLifetime : public QorTestApplication {
protected:
    QorCommandLifetime() { Journal().clear(); }

    void TearDown() override {
        root.Reset();
        QorTestApplication::TearDown();
    }

    QorVar<TestMortal> root = QorMake<TestMortal>(nullptr, "root");
    TestMortal* dialog = new TestMortal(root, "dialog");
};

} // namespace

TEST_F(QorCommandLifetime, AFatherDestroysItsChildrenLastMadeFirst) {
    new TestMortal(root, "other");
    new TestMortal(dialog, "button");
    Journal().clear();
    root.Reset();
    EXPECT_EQ(Journal(), (Lines{"~root", "dying other alone", "~other", "dying dialog alone",
                                "~dialog", "dying button alone", "~button"}));
}

TEST_F(QorCommandLifetime, DelayedDestructionWaitsForTheLoop) {
    Journal().clear();
    dialog->RequestDelayedDestruction();
    dialog->RequestDelayedDestruction();
    EXPECT_TRUE(dialog->IsDying());
    EXPECT_EQ(Journal(), Lines{"dying dialog"});
    EXPECT_EQ(root->GetChildren().size(), 1U);
    loop.RunOneTurn();
    EXPECT_EQ(Journal(), (Lines{"dying dialog", "root - dialog", "~dialog"}));
    EXPECT_TRUE(root->GetChildren().empty());
}

TEST_F(QorCommandLifetime, ChildrenOfTheDyingAreDying) {
    auto* button = new TestMortal(dialog, "button");
    EXPECT_FALSE(button->IsDying());
    dialog->RequestDelayedDestruction();
    EXPECT_TRUE(button->IsDying());
    EXPECT_FALSE(root->IsDying());
}

TEST_F(QorCommandLifetime, IsDestroyedAtTheDepthWhereItWasAsked) {
    dialog->RequestDelayedDestruction();
    int turns = 0;
    loop.RunNested([&] { return ++turns > 3; });
    EXPECT_EQ(root->GetChildren().size(), 1U);
    loop.RunOneTurn();
    EXPECT_TRUE(root->GetChildren().empty());
}

TEST_F(QorCommandLifetime, MayBeAskedForByItsOwnCallback) {
    auto* button = new TestMortal(dialog, "button");
    const auto notification = QorMake<QorNotification>();
    QorCommand::AddAnalyseNotificationCB(dialog, button, notification, &TestMortal::CloseCB);
    dialog->action = [&] {
        dialog->RequestDelayedDestruction();
    };
    EXPECT_TRUE(button->SendNotification(dialog, notification));
    EXPECT_EQ(root->GetChildren().size(), 1U);
    loop.RunPosted();
    EXPECT_TRUE(root->GetChildren().empty());
}

TEST_F(QorCommandLifetime, TheSenderSurvivesTheNotificationThatEndsIt) {
    auto* button = new TestMortal(dialog, "button");
    const auto notification = QorMake<QorNotification>();
    QorCommand::AddAnalyseNotificationCB(root.Get(), button, notification, &TestMortal::CloseCB);
    root->action = [&] {
        dialog->RequestDelayedDestruction();
        loop.RunPosted(); // as a callback that waits would
        Journal().emplace_back("callback ends");
    };
    Journal().clear();
    EXPECT_TRUE(button->SendNotification(root, notification));
    EXPECT_EQ(Journal(), (Lines{"dying dialog", "root - dialog", "~dialog", "dying button alone",
                                "callback ends", "~button"}));
}

TEST_F(QorCommandLifetime, AFatherThatGoesFirstTakesTheRequestAlong) {
    dialog->RequestDelayedDestruction();
    root.Reset();
    EXPECT_EQ(Journal().back(), "~root"); // the request still holds the dialog
    loop.RunPosted();
    EXPECT_EQ(Journal().back(), "~dialog");
}

TEST_F(QorCommandLifetime, AHandleKeepsACommandWithoutItsFather) {
    const QorVar<TestMortal> held(dialog);
    root.Reset();
    EXPECT_EQ(held->GetFather(), nullptr);
    EXPECT_TRUE(held->IsDying());
}

TEST_F(QorCommandLifetime, WithoutAnApplicationItIsAtOnce) {
    application.reset();
    dialog->RequestDelayedDestruction();
    EXPECT_TRUE(root->GetChildren().empty());
    EXPECT_EQ(QorApplication::MainApplication(), nullptr);
}

TEST_F(QorCommandLifetime, TheApplicationRepaintsAndDoesNothingElse) {
    int repaints = 0;
    application->UpdateDisplay();
    application->SetDisplayUpdater([&] { ++repaints; });
    dialog->RequestDelayedDestruction();
    application->UpdateDisplay();
    EXPECT_EQ(repaints, 1);
    EXPECT_EQ(root->GetChildren().size(), 1U);
    EXPECT_EQ(QorApplication::MainApplication(), application.get());
    EXPECT_EQ(&application->GetLoop(), &loop);
}
