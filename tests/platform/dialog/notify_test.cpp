// Notification boxes: what they offer, and how their nested turn ends.
#include "tests/platform/dialog/DialogTest.h"

namespace {

constexpr QorUserResult Done = QorUserResult::Done;
constexpr QorUserResult Insensitive = QorUserResult::Insensitive;
constexpr QorUserResult OutOfRange = QorUserResult::OutOfRange;

/// Boxes with a host whose answers are queued; whether something is drawn does not matter to them,
/// so the parameter chooses between a host that draws boxes and one that does not.
class Notify : public DialogTest {
protected:
    void SetUp() override {
        DialogTest::SetUp();
        if (!host) {
            DestroyDialog();
            loop.RunPosted();
            host = std::make_unique<RecordingHost>();
            host->DoNotDraw("notification");
            dialog = new ListeningDialog;
            dialog->SetVisibility(QorDlgSHOW);
        }
    }

    QorVar<QorDlgNotify> MakeBox(QorNotifyButtons iButtons, QorCommand* iFather = nullptr) {
        auto* box = new QorDlgNotify(iFather != nullptr ? iFather : dialog, "errNotify",
                                     QorNotifyKind::Warning, iButtons);
        return box;
    }
};

QorInstantiateDialogTests(Notify);

TEST_P(Notify, ReturnsTheAnswerAndRefusesWhatIsNotOffered) {
    struct Row {
        QorNotifyButtons buttons;
        QorNotifyAnswer answer;
        bool offered;
    };

    using Buttons = QorNotifyButtons;
    const std::vector<Row> rows = {
        {Buttons::OK, QorNotifyConfirm, true},
        {Buttons::OK, QorNotifyNo, false},
        {Buttons::OK, QorNotifyCancel, false},
        {Buttons::OKCancel, QorNotifyConfirm, true},
        {Buttons::OKCancel, QorNotifyNo, false},
        {Buttons::OKCancel, QorNotifyCancel, true},
        {Buttons::YesNo, QorNotifyConfirm, true},
        {Buttons::YesNo, QorNotifyNo, true},
        {Buttons::YesNo, QorNotifyCancel, false},
        {Buttons::YesNoCancel, QorNotifyConfirm, true},
        {Buttons::YesNoCancel, QorNotifyNo, true},
        {Buttons::YesNoCancel, QorNotifyCancel, true},
        {Buttons::YesNoCancel, QorNotifyNone, false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::Message() << static_cast<int>(row.buttons) << " " << row.answer);
        const auto box = MakeBox(row.buttons);
        EXPECT_EQ(box->Offers(row.answer), row.offered);
        host->AnswerNext([&](QorDlgNotify& iBox) {
            EXPECT_EQ(iBox.UserAnswer(row.answer), row.offered ? Done : OutOfRange);
            if (!row.offered)
                iBox.UserAnswer(QorNotifyConfirm);
        });
        EXPECT_EQ(box->DisplayBlocked("text", "title"),
                  row.offered ? row.answer : QorNotifyConfirm);
    }
}

TEST_P(Notify, CancelAndTheCloseBoxDeclineAsFarAsTheBoxAllows) {
    struct Row {
        QorNotifyButtons buttons;
        QorNotifyAnswer declined;
    };

    const std::vector<Row> rows = {{QorNotifyButtons::OK, QorNotifyConfirm},
                                   {QorNotifyButtons::OKCancel, QorNotifyCancel},
                                   {QorNotifyButtons::YesNo, QorNotifyNo},
                                   {QorNotifyButtons::YesNoCancel, QorNotifyCancel}};
    for (const Row& row : rows) {
        const auto box = MakeBox(row.buttons);
        host->AnswerNext([](QorDlgNotify& iBox) { EXPECT_EQ(iBox.UserClose(), Done); });
        EXPECT_EQ(box->DisplayBlocked("text", "title"), row.declined);
        host->AnswerNext([](QorDlgNotify& iBox) { EXPECT_EQ(iBox.UserCancel(), Done); });
        EXPECT_EQ(box->DisplayBlocked("again", "title"), row.declined);
        host->AnswerNext([](QorDlgNotify& iBox) { EXPECT_EQ(iBox.UserOK(), Done); });
        EXPECT_EQ(box->DisplayBlocked("again", "title"), QorNotifyConfirm);
    }
}

TEST_P(Notify, IsOpenOnlyWhileItBlocks) {
    const auto box = MakeBox(QorNotifyButtons::OK);
    EXPECT_EQ(box->UserAnswer(QorNotifyConfirm), Insensitive);
    host->AnswerNext([&](QorDlgNotify& iBox) {
        EXPECT_EQ(QorDlgNotify::GetOpen(), &iBox);
        EXPECT_TRUE(iBox.IsBlocking());
        EXPECT_TRUE(iBox.IsShown());
        EXPECT_EQ(iBox.GetText(), "The picture cannot be saved.");
        EXPECT_EQ(iBox.UserOK(), Done);
        EXPECT_EQ(iBox.UserOK(), Insensitive) << "one answer is enough";
    });
    box->DisplayBlocked("The picture cannot be saved.", "Warning");
    EXPECT_EQ(QorDlgNotify::GetOpen(), nullptr);
    EXPECT_FALSE(box->IsBlocking());
    EXPECT_FALSE(box->IsShown());
    const std::vector<RecordingHost::Box> expected{
        {"errNotify", QorNotifyKind::Warning, "Warning", "The picture cannot be saved."}};
    EXPECT_EQ(host->TakeBoxes(), expected);
}

TEST_P(Notify, TimersAnswerABoxInTheNestedTurn) {
    const auto box = MakeBox(QorNotifyButtons::YesNo);
    host->AnswerNext([&](QorDlgNotify& iBox) {
        loop.Post(
            [&] {
                EXPECT_EQ(loop.GetDepth(), 1);
                iBox.UserAnswer(QorNotifyNo);
            },
            QorEventLoop::Scope::AnyDepth);
    });
    EXPECT_EQ(box->DisplayBlocked("Overwrite?", "Warning"), QorNotifyNo);
    EXPECT_EQ(loop.GetDepth(), 0);
}

TEST_P(Notify, OnlyTheInnermostBoxCanBeAnswered) {
    const auto outer = MakeBox(QorNotifyButtons::YesNo);
    const auto inner = MakeBox(QorNotifyButtons::OK);
    host->AnswerNext([&](QorDlgNotify& iOuter) {
        host->AnswerNext([&](QorDlgNotify& iInner) {
            EXPECT_EQ(QorDlgNotify::GetOpen(), &iInner);
            EXPECT_EQ(iOuter.UserAnswer(QorNotifyNo), Insensitive);
            iInner.UserOK();
        });
        EXPECT_EQ(inner->DisplayBlocked("inner", ""), QorNotifyConfirm);
        EXPECT_EQ(QorDlgNotify::GetOpen(), &iOuter);
        EXPECT_EQ(iOuter.DisplayBlocked("once more", ""), QorNotifyNo)
            << "an open box does not open again";
        iOuter.UserAnswer(QorNotifyConfirm);
    });
    EXPECT_EQ(outer->DisplayBlocked("outer", ""), QorNotifyConfirm);
}

TEST_P(Notify, ItsDestructionEndsTheNestedTurn) {
    auto* box = new QorDlgNotify(dialog, "errNotify", QorNotifyKind::Question,
                                 QorNotifyButtons::YesNoCancel);
    host->AnswerNext([&](QorDlgNotify& iBox) {
        loop.Post([&] { iBox.RequestDelayedDestruction(); }, QorEventLoop::Scope::AnyDepth);
    });
    EXPECT_EQ(box->DisplayBlocked("text", "title"), QorNotifyCancel);
    EXPECT_EQ(QorDlgNotify::GetOpen(), nullptr);
}

TEST_P(Notify, TheDestructionOfItsFatherEndsTheNestedTurn) {
    auto* father = new QorDlgFile(dialog, "fileBox");
    father->SetVisibility(QorDlgSHOW);
    auto* box =
        new QorDlgNotify(father, "errNotify", QorNotifyKind::Error, QorNotifyButtons::OKCancel);
    host->AnswerNext([&](QorDlgNotify&) {
        // Within the nested turn, so that the father is really gone before the box looks.
        loop.Post(
            [&] {
                father->RequestDelayedDestruction();
                loop.RunPosted();
            },
            QorEventLoop::Scope::AnyDepth);
    });
    EXPECT_EQ(box->DisplayBlocked("text", "title"), QorNotifyCancel);
    EXPECT_EQ(QorDlgNotify::GetOpen(), nullptr);
}

TEST_P(Notify, ABoxOfADyingDialogStillWantsItsAnswer) {
    auto* father = new QorDlgFile(dialog, "fileBox");
    father->SetVisibility(QorDlgSHOW);
    father->RequestDelayedDestruction();
    auto* box =
        new QorDlgNotify(father, "errNotify", QorNotifyKind::Error, QorNotifyButtons::YesNo);
    host->AnswerNext([&](QorDlgNotify& iBox) {
        loop.Post([&] { iBox.UserOK(); }, QorEventLoop::Scope::AnyDepth);
    });
    EXPECT_EQ(box->DisplayBlocked("text", "title"), QorNotifyConfirm);
}

TEST_P(Notify, WithoutAnApplicationOrAtItsEndTheBoxDeclines) {
    const auto box = MakeBox(QorNotifyButtons::YesNo);
    host->AnswerNext([&](QorDlgNotify&) { loop.Quit(); });
    EXPECT_EQ(box->DisplayBlocked("text", "title"), QorNotifyNo);
    DestroyDialog();
    loop.RunPosted();
    application.reset();
    const auto alone = QorMake<QorDlgNotify>(nullptr, "box", QorNotifyKind::Information,
                                             QorNotifyButtons::OKCancel);
    host->AnswerNext([](QorDlgNotify&) {});
    EXPECT_EQ(alone->DisplayBlocked("text", "title"), QorNotifyCancel);
    host->AnswerNext(QorNotifyConfirm);
    EXPECT_EQ(alone->DisplayBlocked("text", "title"), QorNotifyConfirm);
}

} // namespace
