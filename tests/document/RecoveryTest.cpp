#include "workbench/document/session/Recovery.h"

#include "platform/system/QorSettingRepository.h"
#include "tests/document/DocumentTest.h"

#include <sys/wait.h>
#include <unistd.h>

#include <random>

using namespace qor::document;
using namespace qor::document::testing;

namespace {

namespace fs = std::filesystem;

class RecoveryTest : public DocumentTest {
protected:
    /// Runs \p work in a process that is killed when it says so, or after \p microseconds.
    template <typename Work>
    void runKilled(const Work& work, useconds_t microseconds = 0) {
        const pid_t process = fork();
        if (process == 0) {
            work();
            raise(SIGKILL);
        }
        if (microseconds > 0) {
            usleep(microseconds);
            kill(process, SIGKILL);
        }
        int status = 0;
        waitpid(process, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status));
    }

    /// What a program does that dies with an unsaved change.
    void leaveUnsaved(const fs::path& path) {
        runKilled([&] {
            DocumentStore store(loop, options());
            const Document_var document =
                path.empty() ? sampleDocument() : open(store, path).value();
            store.adopt(*document);
            addObject(*document, "light", "unsaved");
            autosaveAndWait(store);
            raise(SIGKILL);
        });
    }

    void autosaveAndWait(DocumentStore& store) {
        store.autosave();
        EXPECT_TRUE(runUntil([&] { return countRecoveryFiles() > 0; }));
    }

    [[nodiscard]] int countRecoveryFiles() const {
        int count = 0;
        for (const std::string& name : directory.List("recovery"))
            count += name.starts_with('.') ? 0 : 1;
        return count;
    }

    Result<Document_var> recover(DocumentStore& store, const Recoverable& recoverable) {
        return wait<Document_var>([&](DocumentStore::Opened done) {
            store.recoverAsync(recoverable, {}, std::move(done));
        });
    }
};

} // namespace

TEST_F(RecoveryTest, WhatADeadProgramHadNotSavedIsOffered) {
    const fs::path path = writeSample("a.qor");
    leaveUnsaved(path);
    const std::vector<Recoverable> found = findRecoverable(file("recovery"));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].path, path);
    EXPECT_EQ(found[0].title, "a");
    EXPECT_NEAR(static_cast<double>(found[0].savedAt), static_cast<double>(std::time(nullptr)),
                60.0);

    DocumentStore store(loop, options());
    const Result<Document_var> document = recover(store, found[0]);
    ASSERT_TRUE(document) << document.failure().text;
    EXPECT_TRUE(document.value()->isModified());
    EXPECT_EQ(document.value()->path(), path);
    EXPECT_EQ(document.value()->scene()->FindObjects("light", "unsaved").Size(), 1);
    EXPECT_TRUE(findRecoverable(file("recovery")).empty()) << "somebody has it now";
    ASSERT_TRUE(save(store, *document.value(), path));
    EXPECT_EQ(countRecoveryFiles(), 0);
    store.release(*document.value());
}

TEST_F(RecoveryTest, TheFileOfTheDocumentItselfIsNeverTouched) {
    const fs::path path = writeSample("a.qor");
    const std::string before = directory.Read("a.qor");
    leaveUnsaved(path);
    EXPECT_EQ(directory.Read("a.qor"), before);
}

TEST_F(RecoveryTest, ADocumentThatWasNeverSavedIsRecoveredWithoutAPath) {
    leaveUnsaved({});
    const std::vector<Recoverable> found = findRecoverable(file("recovery"));
    ASSERT_EQ(found.size(), 1U);
    DocumentStore store(loop, options());
    const Result<Document_var> document = recover(store, found[0]);
    ASSERT_TRUE(document);
    EXPECT_TRUE(document.value()->path().empty());
    EXPECT_TRUE(document.value()->isModified());
    store.release(*document.value());
    EXPECT_EQ(countRecoveryFiles(), 0) << "it was given up";
}

TEST_F(RecoveryTest, DiscardingRemovesItForGood) {
    leaveUnsaved(writeSample("a.qor"));
    discardRecoverable(findRecoverable(file("recovery")).at(0));
    EXPECT_TRUE(directory.List("recovery").empty());
}

TEST_F(RecoveryTest, FilesOfProgramsThatRunAreNotOffered) {
    DocumentStore store(loop, options());
    const Document_var document = sampleDocument();
    store.adopt(*document);
    document->setModified();
    autosaveAndWait(store);
    EXPECT_TRUE(findRecoverable(file("recovery")).empty());
    store.release(*document);
    EXPECT_TRUE(runUntil([&] { return countRecoveryFiles() == 0; }))
        << "it goes once the worker has let go of it";
}

TEST_F(RecoveryTest, OnlyWhatIsModifiedIsSavedAndOnlyOnceAChange) {
    DocumentStore store(loop, options());
    const Document_var document = sampleDocument();
    store.adopt(*document);
    store.autosave();
    loop.RunPosted();
    EXPECT_EQ(countRecoveryFiles(), 0);
    document->setModified();
    autosaveAndWait(store);
    ASSERT_TRUE(runUntil([&] { return !store.isAutosaving(*document); }));
    for (const auto& entry : fs::directory_iterator(file("recovery")))
        fs::remove(entry.path());
    store.autosave();
    EXPECT_FALSE(store.isAutosaving(*document));
    document->setModified();
    store.autosave();
    EXPECT_TRUE(store.isAutosaving(*document));
    ASSERT_TRUE(runUntil([&] { return !store.isAutosaving(*document); }));
}

TEST_F(RecoveryTest, ASaveRemovesTheRecoveryFileEvenWhileAnAutosaveRuns) {
    DocumentStore store(loop, options());
    const Document_var document = sampleDocument();
    store.adopt(*document);
    document->setModified();
    store.autosave();
    ASSERT_TRUE(save(store, *document, file("a.qor")));
    ASSERT_TRUE(runUntil([&] { return !store.isAutosaving(*document); }));
    EXPECT_TRUE(runUntil([&] { return countRecoveryFiles() == 0; }));
}

TEST_F(RecoveryTest, AKillInTheMiddleOfAutosavesLosesNoneThatWasWhole) {
    const fs::path path = writeSample("a.qor");
    std::minstd_rand random(3);
    int offered = 0;
    useconds_t longest = 60'000;
    for (int round = 0; round < 25 || (offered == 0 && round < 32); ++round) {
        if (round >= 25)
            longest *= 2; // a busy machine may not have come to an autosave so far
        runKilled(
            [&] {
                DocumentStore store(loop, options());
                const Document_var document = open(store, path).value();
                while (true) {
                    addObject(*document, "light");
                    store.autosave();
                    runUntil([&] { return !store.isAutosaving(*document); });
                }
            },
            static_cast<useconds_t>(random() % longest + 1));
        Result<LoadedDocument> own = readDocument(path);
        ASSERT_TRUE(own) << own.failure().text;
        for (const Recoverable& recoverable : findRecoverable(file("recovery"))) {
            ++offered;
            DocumentStore store(loop, options());
            const Result<Document_var> document = recover(store, recoverable);
            ASSERT_TRUE(document) << document.failure().text;
            EXPECT_GE(document.value()->scene()->ListLights().Size(), 2);
            store.release(*document.value());
        }
        EXPECT_TRUE(directory.List("recovery").empty()) << "round " << round;
    }
    EXPECT_GT(offered, 0);
}

TEST_F(RecoveryTest, TheTimerSavesAfterTheIntervalOfTheSettings) {
    const auto repository = QorSettingRepository::GetRepository("documents");
    const int seconds = 1;
    repository->WriteSetting("AutosaveInterval", &seconds);
    DocumentStore store(loop, options());
    const Document_var document = sampleDocument();
    store.adopt(*document);
    document->setModified();
    EXPECT_TRUE(runUntil([&] { return countRecoveryFiles() == 1; }));
    store.release(*document);
}
