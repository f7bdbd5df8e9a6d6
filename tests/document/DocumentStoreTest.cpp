#include "workbench/document/session/DocumentStore.h"

#include "platform/system/QorSettingRepository.h"
#include "tests/document/DocumentTest.h"

#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace qor::document;
using namespace qor::document::testing;

namespace {

namespace fs = std::filesystem;

using Percents = std::vector<std::pair<int, std::string>>;

class DocumentStoreTest : public DocumentTest {
protected:
    /// A program that stands for qorimport.
    [[nodiscard]] fs::path writeProgram(const std::string& script) const {
        const fs::path path = directory.Write("program", "#!/bin/sh\n" + script);
        chmod(path.c_str(), 0755);
        return path;
    }

    [[nodiscard]] StoreOptions optionsWith(const fs::path& program) const {
        StoreOptions made = options();
        made.import.program = program;
        return made;
    }

    Result<Done> import(DocumentStore& store,
                        Document& document,
                        const fs::path& path,
                        Percents* seen = nullptr) {
        return wait<Done>([&](DocumentStore::Finished done) {
            store.importAsync(
                document, path,
                [seen](int percent, const std::string& stage) {
                    if (seen != nullptr)
                        seen->emplace_back(percent, stage);
                },
                std::move(done));
        });
    }
};

} // namespace

TEST_F(DocumentStoreTest, ADocumentIsOpenedAndIsNotModified) {
    const fs::path path = writeSample("a.qor");
    DocumentStore store(loop, options());
    const Result<Document_var> document = open(store, path);
    ASSERT_TRUE(document) << document.failure().text;
    EXPECT_EQ(document.value()->path(), path);
    EXPECT_EQ(document.value()->title(), "a");
    EXPECT_FALSE(document.value()->isModified());
    EXPECT_EQ(document.value()->readOnlyReason(), "");
    store.release(*document.value());
    EXPECT_EQ(directory.List(), (std::vector<std::string>{"a.qor"}));
}

TEST_F(DocumentStoreTest, AModelIsOpenedAsADocumentWithoutAPath) {
    DocumentStore store(loop, options());
    const Result<Document_var> document = open(store, writeStl("one.stl"));
    ASSERT_TRUE(document) << document.failure().text;
    EXPECT_EQ(document.value()->title(), "one");
    EXPECT_TRUE(document.value()->path().empty());
    EXPECT_FALSE(document.value()->isModified());
    EXPECT_EQ(document.value()->product().countTriangles(), 1U);
    EXPECT_EQ(document.value()->product().worldBox().high, (QorMathPoint{10.0, 20.0, 0.0}));
    store.release(*document.value());
}

TEST_F(DocumentStoreTest, SavingGivesAPathAndTakesTheModifiedFlag) {
    DocumentStore store(loop, options());
    const Document_var document = sampleDocument();
    document->setModified();
    ASSERT_TRUE(save(store, *document, file("new.qor")));
    EXPECT_FALSE(document->isModified());
    EXPECT_EQ(document->path(), file("new.qor"));
    EXPECT_TRUE(DocumentLock::isHeldByThisProgram(file("new.qor")));
    document->setModified();
    ASSERT_TRUE(save(store, *document, file("other.qor")));
    EXPECT_FALSE(DocumentLock::isHeld(file("new.qor")));
    EXPECT_TRUE(DocumentLock::isHeldByThisProgram(file("other.qor")));
    store.release(*document);
    EXPECT_EQ(directory.List(), (std::vector<std::string>{"new.qor", "other.qor"}));
}

TEST_F(DocumentStoreTest, AChangeWhileASaveRunsLeavesTheDocumentModified) {
    DocumentStore store(loop, options());
    const Document_var document = sampleDocument();
    const Result<Done> saved = wait<Done>([&](DocumentStore::Finished done) {
        store.saveAsync(*document, file("a.qor"), {}, std::move(done));
        addObject(*document, "light", "late");
    });
    ASSERT_TRUE(saved);
    EXPECT_TRUE(document->isModified());
    const auto again = QorMake<Document>(std::move(readDocument(file("a.qor")).value()));
    EXPECT_EQ(again->scene()->FindObjects("light", "late").Size(), 0) << "a save is a snapshot";
    store.release(*document);
}

TEST_F(DocumentStoreTest, AReadOnlyFileIsOpenedAndSavingSaysWhyNot) {
    const fs::path path = writeSample("a.qor");
    chmod(path.c_str(), 0444);
    DocumentStore store(loop, options());
    const Result<Document_var> document = open(store, path);
    ASSERT_TRUE(document);
    EXPECT_EQ(document.value()->readOnlyReason(), "the file is read-only");
    document.value()->setModified();
    const Result<Done> saved = save(store, *document.value(), path);
    ASSERT_FALSE(saved);
    EXPECT_NE(saved.failure().text.find("a.qor: not saved: the file is read-only"),
              std::string::npos)
        << saved.failure().text;
    EXPECT_TRUE(document.value()->isModified());
    ASSERT_TRUE(save(store, *document.value(), file("b.qor")));
    EXPECT_EQ(document.value()->readOnlyReason(), "");
    store.release(*document.value());
}

TEST_F(DocumentStoreTest, AFullDiskFailsTheSaveAndKeepsTheOldFile) {
    const fs::path path = writeSample("a.qor");
    const std::string before = directory.Read("a.qor");
    DocumentStore store(loop, options());
    const Document_var document = open(store, path).value();
    document->setModified();
    {
        const FileSizeLimit full(50000);
        EXPECT_FALSE(save(store, *document, path));
    }
    EXPECT_TRUE(document->isModified());
    EXPECT_EQ(directory.Read("a.qor"), before);
    EXPECT_TRUE(save(store, *document, path));
    store.release(*document);
}

TEST_F(DocumentStoreTest, ASecondProgramIsToldAndMayOpenItOnceTheFirstIsDead) {
    const fs::path path = writeSample("a.qor");
    int ready[2];
    ASSERT_EQ(pipe(ready), 0);
    const pid_t first = fork();
    if (first == 0) {
        DocumentStore store(loop, options());
        const char sign = open(store, path) ? 'y' : 'n';
        if (write(ready[1], &sign, 1) == 1)
            pause();
        _exit(0);
    }
    char sign = 0;
    ASSERT_EQ(read(ready[0], &sign, 1), 1);
    EXPECT_EQ(sign, 'y');
    DocumentStore store(loop, options());
    const Result<Document_var> refused = open(store, path);
    ASSERT_FALSE(refused);
    EXPECT_NE(refused.failure().text.find("a.qor: it is open in another program (process " +
                                          std::to_string(first)),
              std::string::npos)
        << refused.failure().text;
    kill(first, SIGKILL);
    waitpid(first, nullptr, 0);
    close(ready[0]);
    close(ready[1]);
    const Result<Document_var> opened = open(store, path);
    ASSERT_TRUE(opened) << opened.failure().text;
    store.release(*opened.value());
}

TEST_F(DocumentStoreTest, ASecondStoreOfTheProgramIsToldToo) {
    const fs::path path = writeSample("a.qor");
    DocumentStore store(loop, options());
    const Document_var document = open(store, path).value();
    DocumentStore second(loop, options());
    const Result<Document_var> refused = open(second, path);
    ASSERT_FALSE(refused);
    EXPECT_NE(refused.failure().text.find("already"), std::string::npos);
    store.release(*document);
    const Result<Document_var> opened = open(second, path);
    ASSERT_TRUE(opened) << opened.failure().text;
    second.release(*opened.value());
}

TEST_F(DocumentStoreTest, OpeningTheOpenFileAgainIsNoFault) {
    const fs::path path = writeSample("a.qor");
    DocumentStore store(loop, options());
    const Document_var first = open(store, path).value();
    const Result<Document_var> again = open(store, path);
    ASSERT_TRUE(again) << again.failure().text;
    store.release(*first);
    EXPECT_TRUE(DocumentLock::isHeldByThisProgram(path));
    store.release(*again.value());
    EXPECT_TRUE(runUntil([&] { return !DocumentLock::isHeld(path); }));
}

TEST_F(DocumentStoreTest, ACancelledOpenCanBeBegunAgainAtOnce) {
    const fs::path path = writeSample("a.qor");
    DocumentStore store(loop, options());
    for (int round = 0; round < 20; ++round) {
        const Result<Document_var> outcome = wait<Document_var>([&](DocumentStore::Opened done) {
            store.openAsync(path, {}, std::move(done))->cancel();
        });
        ASSERT_FALSE(outcome);
        EXPECT_TRUE(isCancelled(outcome.failure()));
    }
    const Result<Document_var> opened = open(store, path);
    ASSERT_TRUE(opened) << opened.failure().text;
    store.release(*opened.value());
}

TEST_F(DocumentStoreTest, DamageThatOnlyTheFullCheckFindsIsTold) {
    const fs::path path = writeSample("a.qor");
    // An index that says it is of another column than the one whose values are in it.
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(path.c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database,
                           "CREATE INDEX wrong ON product_part(name); "
                           "PRAGMA writable_schema = ON; "
                           "UPDATE sqlite_schema SET sql = 'CREATE INDEX wrong ON "
                           "product_part(mesh)' WHERE name = 'wrong'",
                           nullptr, nullptr, nullptr),
              SQLITE_OK);
    sqlite3_close(database);
    DocumentStore store(loop, options());
    std::string told;
    store.setDamageListener([&](const std::string& text) { told = text; });
    const Result<Document_var> document = open(store, path);
    ASSERT_TRUE(document) << document.failure().text;
    EXPECT_TRUE(runUntil([&] { return !told.empty(); }));
    EXPECT_NE(told.find("a.qor: the file is damaged: "), std::string::npos) << told;
    store.release(*document.value());
}

TEST_F(DocumentStoreTest, WhatAnImportLeftOutIsTold) {
    const fs::path model = file("one.obj");
    std::ofstream(model) << "mtllib gone.mtl\nusemtl red\nv 0 0 0\nv 1 0 0\nv 0 1 0\nf 1 2 3\n";
    DocumentStore store(loop, options());
    std::vector<std::string> told;
    store.setWarningListener([&](const std::vector<std::string>& texts) { told = texts; });
    const Result<Document_var> document = open(store, model);
    ASSERT_TRUE(document) << document.failure().text;
    ASSERT_EQ(told.size(), 1U);
    EXPECT_NE(told.front().find("one.obj: "), std::string::npos) << told.front();
    EXPECT_NE(told.front().find("gone.mtl"), std::string::npos) << told.front();
    store.release(*document.value());
}

TEST_F(DocumentStoreTest, AnImportTellsItsProgressAndIsMerged) {
    DocumentStore store(loop, options());
    const Document_var document = sampleDocument();
    Percents seen;
    const Result<Done> imported = import(store, *document, writeStl("one.stl"), &seen);
    ASSERT_TRUE(imported) << imported.failure().text;
    EXPECT_GT(document->product().nodes().size(), 3U);
    EXPECT_EQ(document->product().countTriangles(), 37U);
    EXPECT_TRUE(document->isModified());
    ASSERT_FALSE(seen.empty());
    EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end(),
                               [](const auto& a, const auto& b) { return a.first < b.first; }));
    EXPECT_EQ(seen.back().first, 100);
}

TEST_F(DocumentStoreTest, WhateverBecomesOfAnImportTheDocumentIsUntouched) {
    struct Accident {
        const char* script;
        const char* says;
    };

    constexpr auto accidents = std::to_array<Accident>({
        {"kill -SEGV $$", "the import crashed (Segmentation fault)"},
        {"exit 0", "ended without a result"},
        {"echo '{\"event\":\"error\",\"kind\":\"input\",\"text\":\"one.stl: no\"}'; exit 1",
         "one.stl: no"},
        {"echo '{\"event\":\"done\"}'", "what the import made cannot be read"},
        {"while :; do :; done", "took longer than 1 s"},
    });
    const auto repository = QorSettingRepository::GetRepository("documents");
    const int seconds = 1;
    repository->WriteSetting("ImportTimeLimit", &seconds);
    const fs::path model = writeStl("one.stl");
    for (const Accident& accident : accidents) {
        DocumentStore store(loop, optionsWith(writeProgram(accident.script)));
        const Document_var document = sampleDocument();
        const Result<Done> imported = import(store, *document, model);
        ASSERT_FALSE(imported) << accident.script;
        EXPECT_NE(imported.failure().text.find(accident.says), std::string::npos)
            << imported.failure().text;
        EXPECT_NE(imported.failure().text.find("one.stl"), std::string::npos);
        EXPECT_EQ(document->product().nodes().size(), 3U);
        EXPECT_FALSE(document->isModified());
    }
}

TEST_F(DocumentStoreTest, AnImportThatWantsTooMuchMemoryFailsWithASentence) {
    const auto repository = QorSettingRepository::GetRepository("documents");
    const int megabytes = 64;
    repository->WriteSetting("ImportMemoryLimit", &megabytes);
    DocumentStore store(loop, options());
    const Document_var document = sampleDocument();
    const Result<Done> imported = import(store, *document, writeStl("one.stl"));
    ASSERT_FALSE(imported);
    EXPECT_NE(imported.failure().text.find("one.stl"), std::string::npos)
        << imported.failure().text;
    EXPECT_FALSE(document->isModified());
}

TEST_F(DocumentStoreTest, ACancelledImportIsOverAtOnceAndItsProcessGone) {
    DocumentStore store(loop, optionsWith(writeProgram("echo $$ > \"$(dirname \"$0\")/pid\"; "
                                                       "while :; do :; done")));
    const Document_var document = sampleDocument();
    std::optional<Result<Done>> outcome;
    const OperationPtr operation = store.importAsync(
        *document, writeStl("one.stl"), {}, [&](const Result<Done>& result) { outcome = result; });
    ASSERT_TRUE(runUntil([&] { return !directory.Read("pid").empty(); }));
    const pid_t process = std::stoi(directory.Read("pid"));
    operation->cancel();
    loop.RunPosted();
    ASSERT_TRUE(outcome && !*outcome);
    EXPECT_TRUE(isCancelled(outcome->failure()));
    EXPECT_TRUE(runUntil([&] { return kill(process, 0) != 0; }));
    EXPECT_EQ(document->product().nodes().size(), 3U);
}

TEST_F(DocumentStoreTest, EventsTellOfSavesAndImports) {
    DocumentStore store(loop, options());
    const Document_var document = sampleDocument();
    std::vector<std::string> events;
    QorCallbackManager::SetObserver([&](QorEventName event, const QorBaseUnknown* publisher) {
        if (publisher == document.Get() && event.GetText().starts_with("DOCUMENT_"))
            if (events.empty() || events.back() != event.GetText())
                events.push_back(event.GetText());
    });
    ASSERT_TRUE(import(store, *document, writeStl("one.stl")));
    ASSERT_TRUE(save(store, *document, file("a.qor")));
    QorCallbackManager::SetObserver({});
    const auto has = [&](const char* name) {
        return std::find(events.begin(), events.end(), name) != events.end();
    };
    EXPECT_TRUE(has("DOCUMENT_PROGRESS"));
    EXPECT_TRUE(has("DOCUMENT_TREE_MODIFIED"));
    EXPECT_TRUE(has("DOCUMENT_MODIFIED"));
    EXPECT_EQ(events.back(), "DOCUMENT_SAVED");
    store.release(*document);
}
