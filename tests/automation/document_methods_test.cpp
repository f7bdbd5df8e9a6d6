// document.*: through the session that commands use, with windows that have no viewer.
#include "platform/frame/QorApplicationFrame.h"
#include "platform/frame/QorFrmEditor.h"
#include "platform/frame/QorFrmWindow.h"
#include "tests/automation/PortTest.h"
#include "workbench/automation/methods/Groups.h"
#include "workbench/document/session/DocumentSession.h"

#include <sys/stat.h>

namespace qor::automation {

namespace {

using document::Document;
using document::DocumentHost;
using document::DocumentSession;

class PlainHost : public DocumentHost {
public:
    explicit PlainHost(QorFrmLayout& layout) : layout_(layout) {}

    void showDocument(Document& document) override {
        auto* editor = new QorFrmEditor(&layout_, "editor", &document);
        layout_.SetCurrentWindow(new QorFrmWindow(editor, "window", editor));
    }

    void askSavePath(Document& /*document*/,
                     std::function<void(std::optional<std::filesystem::path>)> answer) override {
        answer(std::nullopt);
    }

    void tell(QorNotifyKind /*kind*/, const QorUnicodeString& /*text*/) override {}

private:
    QorFrmLayout& layout_;
};

class DocumentMethods : public PortTest {
protected:
    void SetUp() override {
        PortTest::SetUp();
        frame = new QorApplicationFrame("frame");
        layout = new QorFrmLayout(frame, "layout");
        host = std::make_unique<PlainHost>(*layout);
        document::StoreOptions options;
        options.recoveryFolder = directory.GetPath("recovery");
        options.import.program = directory.Write(
            "import", "#!/bin/sh\nif [ \"$(basename \"$1\")\" = slow.stl ]; then while :; do :; "
                      "done; fi\nkill -SEGV $$\n");
        chmod(options.import.program.c_str(), 0755);
        session = std::make_unique<DocumentSession>(loop, *layout, *host, options);
        port->add(documentMethods(*session));
    }

    void TearDown() override {
        port.reset();
        while (layout->GetEditorCount() > 0)
            layout->CloseEditor(layout->GetEditors().front());
        session.reset();
        frame->RequestDelayedDestruction();
        PortTest::TearDown();
    }

    /// What the port answers to `document.NAME` about a file of the test's folder.
    Json request(PortClient& client, const char* name, const char* file) {
        return client.call(std::string("document.") + name, {{"path", directory.GetPath(file)}});
    }

    QorApplicationFrame* frame = nullptr;
    QorFrmLayout* layout = nullptr;
    std::unique_ptr<PlainHost> host;
    std::unique_ptr<DocumentSession> session;
};

TEST_F(DocumentMethods, NewSaveOpenAndClose) {
    play([this](PortClient& client) {
        EXPECT_EQ(client.call("document.new"), Json({{"path", nullptr}, {"objects", 0}}));
        client.call("object.create", {{"kind", "light"}, {"name", "Sun"}});
        const Json saved{{"path", directory.GetPath("a.qor")}, {"objects", 1}};
        EXPECT_EQ(request(client, "save", "a.qor"), saved);
        EXPECT_EQ(client.call("document.save"), saved);
        EXPECT_EQ(client.call("document.close"), saved);
        EXPECT_EQ(client.callForError("document.close"), code(ErrorCode::noSuchObject));
        EXPECT_EQ(client.callForError("document.save"), code(ErrorCode::noSuchObject));
        EXPECT_EQ(request(client, "open", "a.qor"), saved);
        EXPECT_EQ(client.call("object.list", {{"kind", "light"}})[0]["name"], "Sun");
    });
}

TEST_F(DocumentMethods, WhatCannotBeDoneSaysWhy) {
    play([this](PortClient& client) {
        EXPECT_EQ(client.callForError("document.open"), code(ErrorCode::invalidParams));
        EXPECT_EQ(client.callForError("document.open", {{"path", directory.GetPath("gone.qor")}}),
                  code(ErrorCode::failed));
        EXPECT_EQ(client.callForError("document.import", {{"path", directory.GetPath("import")}}),
                  code(ErrorCode::failed));
        client.call("document.new");
        EXPECT_EQ(client.callForError("document.save"), code(ErrorCode::invalidParams));
        EXPECT_EQ(client.callForError("document.save", {{"path", "/nowhere/a.qor"}}),
                  code(ErrorCode::failed));
        EXPECT_EQ(client.callForError("document.cancel"), code(ErrorCode::cannotAct));
    });
}

TEST_F(DocumentMethods, AChangedDocumentAsksFirst) {
    play([this](PortClient& client) {
        client.call("document.new");
        request(client, "save", "a.qor");
        client.call("object.create", {{"kind", "light"}});
        for (const char* method : {"document.new", "document.close"}) {
            EXPECT_EQ(client.call(method)["blocked"], "saveNotify");
            EXPECT_EQ(client.callForError("document.save"), code(ErrorCode::blocked));
            client.call("notify.answer", {{"answer", "cancel"}});
        }
        EXPECT_EQ(request(client, "open", "a.qor")["blocked"], "saveNotify");
        EXPECT_EQ(client.call("notify.answer", {{"answer", "no"}}), Json::object());
        EXPECT_EQ(client.call("object.list", {{"kind", "light"}}), Json::array())
            << "answered when the document was open";
    });
}

TEST_F(DocumentMethods, AnAnswerThatSavesComesWhenItIsSaved) {
    play([this](PortClient& client) {
        client.call("document.new");
        request(client, "save", "a.qor");
        client.call("object.create", {{"kind", "light"}});
        EXPECT_EQ(client.call("document.close")["blocked"], "saveNotify");
        EXPECT_EQ(client.call("notify.answer", {{"answer", "yes"}}), Json::object());
        EXPECT_EQ(client.callForError("document.close"), code(ErrorCode::noSuchObject));
        EXPECT_EQ(request(client, "open", "a.qor")["objects"], 1);
    });
}

TEST_F(DocumentMethods, AnOpenThatFailsAfterTheQuestionIsToldToItsAnswer) {
    play([this](PortClient& client) {
        client.call("document.new");
        client.call("object.create", {{"kind", "light"}});
        EXPECT_EQ(request(client, "open", "gone.qor")["blocked"], "saveNotify");
        EXPECT_EQ(client.callForError("notify.answer", {{"answer", "no"}}),
                  code(ErrorCode::failed));
        EXPECT_EQ(client.call("object.list", {{"kind", "light"}}).size(), 1U)
            << "the old document is still there";
    });
    session->current()->setModified(false);
}

TEST_F(DocumentMethods, ARunningImportIsCancelledAndOthersAreServedMeanwhile) {
    const std::string model = directory.Write("slow.stl", "solid");
    play([&](PortClient& client) {
        const int import = client.request("document.import", {{"path", model}});
        EXPECT_EQ(client.call("app.info")["name"], "test");
        EXPECT_EQ(client.callForError("document.new"), code(ErrorCode::failed)) << "one at a time";
        const int cancel = client.request("document.cancel");
        int seen = 0;
        for (int i = 0; i < 2; ++i) {
            const Json answer = client.read();
            if (answer["id"] == import) {
                EXPECT_EQ(answer["error"]["code"], code(ErrorCode::failed));
                EXPECT_EQ(answer["error"]["message"], "cancelled");
                ++seen;
            }
            if (answer["id"] == cancel) {
                EXPECT_EQ(answer["result"], Json::object());
                ++seen;
            }
        }
        EXPECT_EQ(seen, 2);
    });
}

TEST_F(DocumentMethods, ACrashOfTheImportLeavesTheDocument) {
    const std::string model = directory.Write("bad.stl", "solid");
    play([&](PortClient& client) {
        client.call("document.new");
        EXPECT_EQ(client.callForError("document.import", {{"path", model}}),
                  code(ErrorCode::failed));
        EXPECT_EQ(client.call("document.close")["objects"], 0) << "and not changed";
    });
}

} // namespace

} // namespace qor::automation
