#include "workbench/document/session/DocumentSession.h"

#include "platform/frame/QorApplicationFrame.h"
#include "platform/frame/QorFrmEditor.h"
#include "platform/frame/QorFrmWindow.h"
#include "tests/document/DocumentTest.h"
#include "tests/support/RecordingHost.h"

using namespace qor::document;
using namespace qor::document::testing;

namespace {

namespace fs = std::filesystem;

/// A program that puts documents into windows without a viewer.
class PlainHost : public DocumentHost {
public:
    explicit PlainHost(QorFrmLayout& layout) : layout_(layout) {}

    void showDocument(Document& document) override {
        auto* editor = new QorFrmEditor(&layout_, "editor", &document);
        auto* window = new QorFrmWindow(editor, "window", editor);
        layout_.SetCurrentWindow(window);
    }

    void askSavePath(Document& /*document*/,
                     std::function<void(std::optional<fs::path>)> answer) override {
        ++asked;
        answer(path);
    }

    void tell(QorNotifyKind /*kind*/, const QorUnicodeString& text) override {
        told.push_back(text.Str());
    }

    std::optional<fs::path> path;
    int asked = 0;
    std::vector<std::string> told;

private:
    QorFrmLayout& layout_;
};

class DocumentSessionTest : public DocumentTest {
protected:
    void SetUp() override {
        QorCatalogs::SetProgramDirectory(directory.GetPath());
        frame = new QorApplicationFrame("frame");
        layout = new QorFrmLayout(frame, "layout");
        host = std::make_unique<PlainHost>(*layout);
        session = std::make_unique<DocumentSession>(loop, *layout, *host, options());
    }

    void TearDown() override {
        while (layout->GetEditorCount() > 0)
            layout->CloseEditor(layout->GetEditors().front());
        session.reset();
        frame->RequestDelayedDestruction();
        DocumentTest::TearDown();
    }

    using Begin = std::function<void(const DocumentSession::Finished& finished)>;

    /// The outcome as a word: "done", "cancelled" or the reason.
    std::string outcomeOf(const Begin& begin) {
        std::string outcome;
        begin([&](const Result<Document_var>& result) {
            if (result)
                outcome = "done";
            else
                outcome = isCancelled(result.failure()) ? "cancelled" : result.failure().text;
        });
        EXPECT_TRUE(runUntil([&] { return !outcome.empty(); }));
        return outcome;
    }

    std::string openFile(const fs::path& path) {
        return outcomeOf([&](const auto& finished) { session->open(path, finished); });
    }

    std::string closeCurrent() {
        return outcomeOf([&](const auto& finished) { session->close(finished); });
    }

    RecordingHost toolkit;
    QorApplicationFrame* frame = nullptr;
    QorFrmLayout* layout = nullptr;
    std::unique_ptr<PlainHost> host;
    std::unique_ptr<DocumentSession> session;
};

} // namespace

TEST_F(DocumentSessionTest, ANewDocumentIsCurrentAndUntitled) {
    EXPECT_EQ(outcomeOf([&](const auto& finished) { session->newDocument(finished); }), "done");
    ASSERT_NE(session->current(), nullptr);
    EXPECT_FALSE(session->current()->title().IsNull());
    EXPECT_FALSE(session->current()->isModified());
}

TEST_F(DocumentSessionTest, OpeningReplacesTheDocumentAndNotesTheFile) {
    ASSERT_EQ(openFile(writeSample("a.qor")), "done");
    ASSERT_EQ(openFile(writeSample("b.qor")), "done");
    EXPECT_EQ(layout->GetEditorCount(), 1);
    EXPECT_EQ(session->current()->title(), "b");
    EXPECT_EQ(RecentFiles::list(), (std::vector<fs::path>{file("b.qor"), file("a.qor")}));
    EXPECT_FALSE(DocumentLock::isHeld(file("a.qor")));
}

TEST_F(DocumentSessionTest, AFileThatCannotBeOpenedLeavesTheOldDocument) {
    ASSERT_EQ(openFile(writeSample("a.qor")), "done");
    RecentFiles::add(file("gone.qor"));
    EXPECT_NE(openFile(file("gone.qor")).find("gone.qor"), std::string::npos);
    EXPECT_EQ(session->current()->title(), "a");
    EXPECT_EQ(RecentFiles::list(), (std::vector<fs::path>{file("a.qor")}));
    EXPECT_FALSE(frame->GetProgress());
}

TEST_F(DocumentSessionTest, NoNameIsNoFile) {
    ASSERT_EQ(openFile(writeSample("a.qor")), "done");
    EXPECT_EQ(openFile({}), "no file is named");
    EXPECT_EQ(outcomeOf([&](const auto& finished) { session->importInto({}, finished); }),
              "no file is named");
    EXPECT_EQ(outcomeOf([&](const auto& finished) { session->saveAs({}, finished); }),
              "no file is named");
    EXPECT_EQ(session->current()->title(), "a");
}

TEST_F(DocumentSessionTest, ProgressIsInTheFrameAndGoesWithACancel) {
    session->open(writeStl("one.stl"), {});
    ASSERT_TRUE(frame->GetProgress());
    EXPECT_TRUE(frame->GetProgress()->cancellable);
    EXPECT_TRUE(session->isBusy());
    EXPECT_EQ(outcomeOf([&](const auto& finished) { session->open(file("b.qor"), finished); }),
              "another file is being opened, imported or saved");
    EXPECT_TRUE(session->cancel());
    EXPECT_TRUE(runUntil([&] { return !session->isBusy(); }));
    EXPECT_FALSE(frame->GetProgress());
    EXPECT_EQ(session->current(), nullptr);
    EXPECT_FALSE(session->cancel());
}

TEST_F(DocumentSessionTest, AModifiedDocumentAsksBeforeItIsLeft) {
    struct Leaving {
        QorNotifyAnswer answer;
        const char* outcome;
        int lightsInFile; ///< the sample has one
        bool isOpenStill;
    };

    constexpr auto leavings = std::to_array<Leaving>({
        {QorNotifyCancel, "cancelled", 1, true},
        {QorNotifyNo, "done", 1, false},
        {QorNotifyConfirm, "done", 2, false},
    });
    for (const Leaving& leaving : leavings) {
        const fs::path path = writeSample("a.qor");
        ASSERT_EQ(openFile(path), "done");
        addObject(*session->current(), "light");
        toolkit.AnswerNext(leaving.answer);
        EXPECT_EQ(closeCurrent(), leaving.outcome);
        EXPECT_EQ(session->current() != nullptr, leaving.isOpenStill);
        const auto again = QorMake<Document>(std::move(readDocument(path).value()));
        EXPECT_EQ(again->scene()->ListLights().Size(), leaving.lightsInFile);
        if (leaving.isOpenStill)
            session->current()->setModified(false);
    }
}

TEST_F(DocumentSessionTest, AnUntitledDocumentAsksWhereToAndStaysWhenNobodySays) {
    outcomeOf([&](const auto& finished) { session->newDocument(finished); });
    session->current()->setModified();
    toolkit.AnswerNext(QorNotifyConfirm);
    EXPECT_EQ(closeCurrent(), "cancelled");
    EXPECT_EQ(host->asked, 1);
    ASSERT_NE(session->current(), nullptr);
    host->path = file("named.qor");
    toolkit.AnswerNext(QorNotifyConfirm);
    EXPECT_EQ(closeCurrent(), "done");
    EXPECT_TRUE(fs::exists(file("named.qor")));
}

TEST_F(DocumentSessionTest, ASaveThatFailsKeepsTheDocumentOpen) {
    const fs::path path = writeSample("a.qor");
    ASSERT_EQ(openFile(path), "done");
    session->current()->setModified();
    const FileSizeLimit full(1000);
    toolkit.AnswerNext(QorNotifyConfirm);
    EXPECT_NE(closeCurrent().find("a.qor"), std::string::npos);
    ASSERT_NE(session->current(), nullptr);
    session->current()->setModified(false);
}

TEST_F(DocumentSessionTest, AnImportWithoutADocumentMakesOne) {
    EXPECT_EQ(outcomeOf([&](const auto& finished) {
                  session->importInto(writeStl("one.stl"), finished);
              }),
              "done");
    ASSERT_NE(session->current(), nullptr);
    EXPECT_EQ(session->current()->product().countTriangles(), 1U);
    EXPECT_TRUE(session->current()->isModified());
    session->current()->setModified(false);
}

TEST_F(DocumentSessionTest, ClosingSendsTheEventsOfTheFrameInOrder) {
    ASSERT_EQ(openFile(writeSample("a.qor")), "done");
    std::vector<std::string> events;
    QorCallbackManager::SetObserver([&](QorEventName event, const QorBaseUnknown* /*publisher*/) {
        if (event == QorFrmEditor::EDITOR_DEACTIVATED || event == QorFrmWindow::WINDOW_DELETED ||
            event == QorFrmEditor::EDITOR_CLOSE_ENDED)
            events.push_back(event.GetText());
    });
    EXPECT_EQ(closeCurrent(), "done");
    QorCallbackManager::SetObserver({});
    EXPECT_EQ(events, (std::vector<std::string>{"EDITOR_DEACTIVATED", "WINDOW_DELETED",
                                                "EDITOR_CLOSE_ENDED"}));
}

TEST_F(DocumentSessionTest, AnEditorClosedByOthersFreesItsFile) {
    ASSERT_EQ(openFile(writeSample("a.qor")), "done");
    EXPECT_TRUE(DocumentLock::isHeld(file("a.qor")));
    layout->CloseEditor(layout->GetEditors().front());
    EXPECT_TRUE(runUntil([&] { return !DocumentLock::isHeld(file("a.qor")); }));
}
