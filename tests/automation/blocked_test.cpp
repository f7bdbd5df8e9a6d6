// Requests and notification boxes.
#include "platform/dialog/QorDlgButton.h"
#include "platform/dialog/QorDlgNotify.h"
#include "tests/automation/PortTest.h"

namespace qor::automation {

namespace {

using std::chrono::milliseconds;

/// A dialog whose button asks question after question and then posts a note of its end.
class Asker : public QorDlgDialog {
public:
    Asker(QorCommand* owner, const QorString& identifier) : QorDlgDialog(owner, identifier) {
        button = new QorDlgPushButton(this, "ask");
        AddAnalyseNotificationCB(this, button, button->GetPushBActivateNotification(),
                                 &Asker::askCB);
    }

    void ask() {
        for (const QorString& question : questions) {
            auto* box = new QorDlgNotify(this, question, QorNotifyKind::Question, buttons);
            answers.push_back(box->DisplayBlocked("Text of " + question.Str(), "Title"));
            box->RequestDelayedDestruction();
        }
        QorApplication::MainApplication()->GetLoop().Post([this] { isDone = true; });
    }

    QorDlgPushButton* button;
    std::vector<QorString> questions{"first"};
    QorNotifyButtons buttons = QorNotifyButtons::YesNoCancel;
    std::vector<int> answers;
    std::atomic<bool> isDone = false;

private:
    void askCB(QorCommand* /*sender*/, QorNotification* /*notification*/, void* /*data*/) { ask(); }
};

class Blocked : public PortTest {
protected:
    void SetUp() override {
        PortTest::SetUp();
        asker = makeDialog<Asker>("asker");
    }

    Asker* asker = nullptr;
};

const Json ask{{"path", "asker/ask"}};

Json answer(const char* word) {
    return {{"answer", word}};
}

Json blockedBy(const char* box) {
    return {{"blocked", box}};
}

TEST_F(Blocked, ARequestIsAnsweredWhenTheBoxOpensAndOnceOnly) {
    play([this](PortClient& client) {
        EXPECT_EQ(client.call("notify.get"), nullptr);
        EXPECT_EQ(client.call("widget.press", ask), blockedBy("first"));
        const Json box{
            {"name", "first"}, {"kind", "question"}, {"title", "Title"}, {"text", "Text of first"}};
        EXPECT_EQ(client.call("notify.get"), box);
        EXPECT_FALSE(asker->isDone);
        EXPECT_EQ(client.call("notify.answer", answer("yes")), Json::object());
        EXPECT_TRUE(asker->isDone) << "the work behind the box, and what it posted, has run";
        EXPECT_EQ(client.call("notify.get"), nullptr);
        EXPECT_TRUE(client.isSilentFor(milliseconds(20)));
    });
    EXPECT_EQ(asker->answers, std::vector<int>{QorNotifyConfirm});
}

TEST_F(Blocked, AnAnswerMayLeadToTheNextBox) {
    asker->questions = {"first", "second", "third"};
    play([this](PortClient& client) {
        EXPECT_EQ(client.call("widget.press", ask), blockedBy("first"));
        EXPECT_EQ(client.call("notify.answer", answer("no")), blockedBy("second"));
        EXPECT_EQ(client.call("notify.answer", answer("cancel")), blockedBy("third"));
        EXPECT_FALSE(asker->isDone);
        EXPECT_EQ(client.call("notify.answer", answer("yes")), Json::object());
        EXPECT_TRUE(asker->isDone);
        EXPECT_EQ(client.callForError("notify.answer", answer("yes")), -32001);
    });
    EXPECT_EQ(asker->answers, std::vector<int>({QorNotifyNo, QorNotifyCancel, QorNotifyConfirm}));
}

TEST_F(Blocked, OnlySomeMethodsAreAccepted) {
    play([](PortClient& client) {
        client.call("widget.press", ask);
        const std::vector<std::pair<std::string, Json>> refused = {
            {"widget.press", ask},
            {"widget.check", ask},
            {"widget.doubleClick", ask},
            {"widget.set", ask},
            {"dialog.ok", {{"dialog", "first"}}},
            {"dialog.cancel", {{"dialog", "first"}}},
            {"dialog.close", {{"dialog", "asker"}}},
            {"dialog.resize", {{"dialog", "asker"}}},
            {"system.env", {}},
            {"settings.get", {}},
            {"settings.set", {}},
            {"settings.save", {}},
            {"settings.lock", {}},
            {"command.list", {}},
            {"command.start", {}},
            {"command.end", {}},
            {"file.get", {}},
            {"file.accept", {}},
            {"file.cancel", {}},
            {"color.accept", {}},
            {"color.cancel", {}},
        };
        for (const auto& [method, params] : refused)
            EXPECT_EQ(client.callForError(method, params.is_null() ? Json::object() : params),
                      -32004)
                << method;
        const std::vector<std::pair<std::string, Json>> accepted = {
            {"app.info", Json::object()},
            {"app.run", {{"ms", 1}}},
            {"dialog.list", Json::object()},
            {"dialog.tree", {{"dialog", "asker"}}},
            {"widget.get", ask},
            {"trace.start", {{"level", 1}}},
            {"trace.take", Json::object()},
            {"trace.stop", Json::object()},
            {"events.take", Json::object()},
            {"notify.get", Json::object()},
        };
        for (const auto& [method, params] : accepted)
            EXPECT_EQ(client.callForError(method, params), 0) << method;
        EXPECT_EQ(client.callForError("none"), -32601);
        for (const Json& dialog : client.call("dialog.list"))
            EXPECT_EQ(dialog.at("blocking"), dialog.at("name") == "first") << dialog;
        client.call("notify.answer", answer("no"));
    });
}

TEST_F(Blocked, AnAnswerThatTheBoxDoesNotOfferIsRefused) {
    struct Row {
        QorNotifyButtons buttons;
        Names offered;
    };

    const std::vector<Row> rows = {
        {QorNotifyButtons::OK, {"ok"}},
        {QorNotifyButtons::OKCancel, {"ok", "cancel"}},
        {QorNotifyButtons::YesNo, {"yes", "no"}},
        {QorNotifyButtons::YesNoCancel, {"yes", "no", "cancel"}},
    };
    for (const Row& row : rows) {
        asker->buttons = row.buttons;
        play([&](PortClient& client) {
            for (const char* word : {"yes", "no", "ok", "cancel", "maybe", ""}) {
                client.call("widget.press", ask);
                const bool offered =
                    std::find(row.offered.begin(), row.offered.end(), word) != row.offered.end();
                EXPECT_EQ(client.callForError("notify.answer", answer(word)), offered ? 0 : -32602)
                    << word;
                if (!offered)
                    client.call("notify.answer", {{"answer", row.offered.front()}});
            }
            EXPECT_EQ(client.callForError("notify.answer"), -32602);
        });
    }
}

TEST_F(Blocked, TheBoxOutlivesItsClient) {
    run([this] {
        {
            PortClient client(path());
            client.call("widget.press", ask);
        }
        PortClient next(path());
        EXPECT_EQ(next.call("notify.get").at("name"), "first");
        EXPECT_FALSE(asker->isDone);
        EXPECT_EQ(next.call("notify.answer", answer("no")), Json::object());
        EXPECT_TRUE(asker->isDone);
    });
    EXPECT_EQ(asker->answers, std::vector<int>{QorNotifyNo});
}

TEST_F(Blocked, AClientMayVanishBeforeItHearsOfTheBox) {
    run([this] {
        {
            PortClient client(path());
            client.request("widget.press", ask);
        }
        PortClient next(path());
        EXPECT_EQ(next.call("notify.get").at("name"), "first");
        next.call("notify.answer", answer("cancel"));
    });
    EXPECT_EQ(asker->answers, std::vector<int>{QorNotifyCancel});
}

TEST_F(Blocked, QuitAnswersCancel) {
    play([this](PortClient& client) {
        client.call("widget.press", ask);
        EXPECT_EQ(client.call("app.quit"), Json::object());
    });
    EXPECT_TRUE(loop.IsQuitting());
    EXPECT_EQ(asker->answers, std::vector<int>{QorNotifyCancel});
}

TEST_F(Blocked, QuitAnswersEveryBoxThatFollows) {
    asker->questions = {"first", "second"};
    play([this](PortClient& client) {
        client.call("widget.press", ask);
        client.call("app.quit");
    });
    EXPECT_EQ(asker->answers, std::vector<int>({QorNotifyCancel, QorNotifyCancel}));
}

TEST_F(Blocked, TheEndOfTheOnlyClientAnswersCancel) {
    openPort({.name = {}, .version = {}, .isOnce = true, .quit = {}});
    play([](PortClient& client) { client.call("widget.press", ask); });
    while (!loop.IsQuitting())
        loop.RunOneTurn(std::chrono::seconds(1));
    EXPECT_EQ(asker->answers, std::vector<int>{QorNotifyCancel});
}

TEST_F(Blocked, ABoxThatNoRequestOpenedIsServedToo) {
    asker->questions = {"first", "second"};
    loop.Post([this] { asker->ask(); });
    play([this](PortClient& client) {
        EXPECT_EQ(client.callForError("widget.press", ask), -32004);
        EXPECT_EQ(client.call("notify.get").at("name"), "first");
        EXPECT_EQ(client.call("notify.answer", answer("yes")), blockedBy("second"));
        EXPECT_EQ(client.call("notify.answer", answer("yes")), Json::object());
        EXPECT_TRUE(asker->isDone);
    });
    EXPECT_EQ(asker->answers.size(), 2U);
}

TEST_F(Blocked, ABoxThatAPersonAnswersLeavesTheRequestsBehindItInOrder) {
    QorTimerId timer = 0;
    play([&](PortClient& client) {
        client.call("widget.press", ask);
        loop.Post([&] {
            timer = loop.StartTimer(
                milliseconds(5), [] { QorDlgNotify::GetOpen()->UserAnswer(QorNotifyNo); }, false);
        });
        EXPECT_EQ(client.call("app.run", {{"ms", 30}}), Json::object());
        EXPECT_TRUE(asker->isDone);
        EXPECT_EQ(client.call("notify.get"), nullptr);
        EXPECT_EQ(client.call("widget.press", ask), blockedBy("first"));
        EXPECT_EQ(client.call("notify.answer", answer("yes")), Json::object());
    });
    EXPECT_EQ(asker->answers, std::vector<int>({QorNotifyNo, QorNotifyConfirm}));
}

TEST_F(Blocked, RunIsAnsweredWhenATimerOpensABox) {
    QorTimerId timer = loop.StartTimer(
        milliseconds(20), [this] { asker->ask(); }, false);
    play([](PortClient& client) {
        EXPECT_EQ(client.call("app.run", {{"ms", 600'000}}), blockedBy("first"));
        EXPECT_EQ(client.call("notify.answer", answer("yes")), Json::object());
        EXPECT_EQ(client.call("app.info").at("name"), "test");
    });
    loop.StopTimer(timer);
    EXPECT_EQ(loop.CountTimers(), 0U) << "the timer of app.run is stopped";
}

TEST_F(Blocked, ABoxOverABoxIsAnsweredFirst) {
    auto* other = makeDialog<Asker>("other");
    other->questions = {"inner"};
    QorTimerId timer = 0;
    play([&](PortClient& client) {
        client.call("widget.press", ask);
        loop.Post([&] {
            timer = loop.StartTimer(
                milliseconds(5), [&] { other->ask(); }, false);
        });
        EXPECT_EQ(client.call("app.run", {{"ms", 600'000}}), blockedBy("inner"));
        EXPECT_EQ(client.call("notify.get").at("name"), "inner");
        EXPECT_EQ(client.call("notify.answer", answer("no")), Json::object());
        EXPECT_EQ(client.call("notify.get").at("name"), "first");
        EXPECT_FALSE(asker->isDone);
        EXPECT_EQ(client.call("notify.answer", answer("yes")), Json::object());
        EXPECT_TRUE(asker->isDone);
        EXPECT_TRUE(other->isDone);
    });
    EXPECT_EQ(other->answers, std::vector<int>{QorNotifyNo});
    EXPECT_EQ(asker->answers, std::vector<int>{QorNotifyConfirm});
}

TEST_F(Blocked, ABatchGoesOnBehindTheBox) {
    play([](PortClient& client) {
        const auto request = [](int id, const char* method, const Json& params) {
            return Json{{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", params}};
        };
        client.sendLine(
            Json::array({request(1, "widget.press", ask), request(2, "widget.press", ask),
                         request(3, "notify.answer", answer("yes")),
                         request(4, "notify.get", Json::object())})
                .dump());
        const Json answers = client.read();
        ASSERT_EQ(answers.size(), 4U);
        EXPECT_EQ(answers[0].at("result"), blockedBy("first"));
        EXPECT_EQ(answers[1].at("error").at("code"), -32004);
        EXPECT_EQ(answers[2].at("result"), Json::object());
        EXPECT_EQ(answers[3].at("result"), nullptr);
    });
}

TEST_F(Blocked, ANotificationOpensABoxQuietly) {
    play([](PortClient& client) {
        client.notify("widget.press", ask);
        EXPECT_EQ(client.call("notify.get").at("name"), "first");
        client.notify("notify.answer", answer("yes"));
        EXPECT_EQ(client.call("notify.get"), nullptr);
    });
}

TEST_F(Blocked, ManyBoxesOneAfterAnother) {
    constexpr int rounds = 200;
    play([](PortClient& client) {
        for (int i = 0; i < rounds; ++i) {
            EXPECT_EQ(client.call("widget.press", ask), blockedBy("first"));
            EXPECT_EQ(client.call("notify.answer", answer("yes")), Json::object());
        }
    });
    EXPECT_EQ(asker->answers.size(), static_cast<std::size_t>(rounds));
}

} // namespace

} // namespace qor::automation
