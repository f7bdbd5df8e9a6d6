#include "workbench/document/file/DocumentFile.h"

#include "tests/document/DocumentTest.h"
#include "workbench/document/product/DatabaseFile.h"

#include <sys/stat.h>

using namespace qor::document;
using namespace qor::document::testing;

namespace {

namespace fs = std::filesystem;

class DocumentFile : public DocumentTest {
protected:
    [[nodiscard]] std::string bytes(const fs::path& path) const {
        return directory.Read(path.filename().string());
    }
};

DocumentSnapshot sampleSnapshot() {
    return sampleDocument()->takeSnapshot();
}

} // namespace

TEST_F(DocumentFile, TheProductComesBackAsItWas) {
    const fs::path path = writeSample("a.qor");
    Result<LoadedDocument> loaded = readDocument(path);
    ASSERT_TRUE(loaded) << loaded.failure().text;
    const Product& now = loaded.value().product.facts();
    Product before = sampleProduct();
    EXPECT_EQ(now.nodes, before.nodes);
    EXPECT_EQ(now.parts, before.parts);
    EXPECT_EQ(now.cameras, before.cameras);
    EXPECT_EQ(now.lights, before.lights);
    EXPECT_EQ(now.animations, before.animations);
    EXPECT_EQ(now.unit, before.unit);
    EXPECT_EQ(now.work, before.work);
    EXPECT_EQ(now.environment, before.environment);
    const Mesh mesh = meshOf(loaded.value().product.meshes()[0]);
    EXPECT_EQ(mesh, meshOf(piecesOf(before.meshes[0])));
    ASSERT_TRUE(loaded.value().scene);
}

TEST_F(DocumentFile, WhatAnImportWroteHasNoSceneOfItsOwn) {
    ASSERT_TRUE(writeProduct(file("import.qor"), sampleProduct()));
    Result<LoadedDocument> loaded = readDocument(file("import.qor"));
    ASSERT_TRUE(loaded) << loaded.failure().text;
    EXPECT_FALSE(loaded.value().scene);
}

TEST_F(DocumentFile, SavingWhatWasReadGivesTheSameAgain) {
    const fs::path first = writeSample("first.qor");
    Result<LoadedDocument> loaded = readDocument(first);
    const auto document = QorMake<Document>(std::move(loaded.value()));
    ASSERT_TRUE(writeDocument(file("second.qor"), document->takeSnapshot()));
    Result<LoadedDocument> again = readDocument(file("second.qor"));
    ASSERT_TRUE(again);
    EXPECT_EQ(again.value().product.facts(), document->product().facts());
    EXPECT_EQ(bytes(first), bytes(file("second.qor")));
}

TEST_F(DocumentFile, EveryTruncationIsRefusedAndSaysWhy) {
    const std::string whole = bytes(writeSample("a.qor"));
    ASSERT_GT(whole.size(), 100U * 1024U);
    for (std::size_t size = 0; size < whole.size(); size += 1024) {
        directory.Write("cut.qor", std::string_view(whole).substr(0, size));
        const Result<LoadedDocument> loaded = readDocument(file("cut.qor"));
        ASSERT_FALSE(loaded) << size;
        EXPECT_NE(loaded.failure().text.find("cut.qor: "), std::string::npos)
            << loaded.failure().text;
    }
}

TEST_F(DocumentFile, AForeignFileIsRefused) {
    for (const char* text : {"", "hello", "SQLite format 3", "{\"asset\":{}}"}) {
        directory.Write("foreign.qor", text);
        const Result<LoadedDocument> loaded = readDocument(file("foreign.qor"));
        ASSERT_FALSE(loaded) << text;
        EXPECT_NE(loaded.failure().text.find("not a document"), std::string::npos)
            << loaded.failure().text;
    }
    EXPECT_FALSE(readDocument(file("missing.qor")));
    EXPECT_FALSE(readDocument(directory.GetPath()));
}

TEST_F(DocumentFile, AFullDiskLeavesTheOldFileAndNothingBesideIt) {
    const fs::path path = writeSample("a.qor");
    const std::string before = bytes(path);
    const DocumentSnapshot snapshot = sampleSnapshot();
    for (const std::size_t size : {0U, 10000U, 50000U, 100000U}) {
        const FileSizeLimit full(size);
        const Result<Done> written = writeDocument(path, snapshot);
        ASSERT_FALSE(written) << size;
        EXPECT_EQ(written.failure().kind, FaultKind::Machine) << written.failure().text;
    }
    EXPECT_EQ(bytes(path), before);
    EXPECT_EQ(directory.List(), (std::vector<std::string>{"a.qor"}));
}

TEST_F(DocumentFile, ACancelledSaveLeavesTheOldFile) {
    const fs::path path = writeSample("a.qor");
    const std::string before = bytes(path);
    std::stop_source stop;
    const Result<Done> written = writeDocument(
        path, sampleSnapshot(), [&](double /*fraction*/) { stop.request_stop(); },
        stop.get_token());
    ASSERT_FALSE(written);
    EXPECT_TRUE(written.failure().text.ends_with("cancelled")) << written.failure().text;
    EXPECT_EQ(bytes(path), before);
    EXPECT_EQ(directory.List(), (std::vector<std::string>{"a.qor"}));
}

TEST_F(DocumentFile, ALinkIsWrittenWhereItLeadsAndTheModeIsKept) {
    const fs::path path = writeSample("real.qor");
    chmod(path.c_str(), 0600);
    fs::create_symlink("real.qor", file("link.qor"));
    ASSERT_TRUE(writeDocument(file("link.qor"), sampleSnapshot()));
    EXPECT_TRUE(fs::is_symlink(file("link.qor")));
    EXPECT_EQ(fs::status(path).permissions(), fs::perms(0600));
}

TEST_F(DocumentFile, FilesAndFoldersWithoutWritePermissionAreKnown) {
    const fs::path path = writeSample("a.qor");
    EXPECT_EQ(whyReadOnly(path), "");
    EXPECT_EQ(whyReadOnly(file("new.qor")), "");
    chmod(path.c_str(), 0444);
    EXPECT_EQ(whyReadOnly(path), "the file is read-only");
    EXPECT_NE(whyReadOnly(file("nowhere") / "a.qor").find("does not exist"), std::string::npos);
    fs::create_directory(file("locked"));
    chmod(file("locked").c_str(), 0555);
    EXPECT_NE(whyReadOnly(file("locked") / "a.qor").find("is read-only"), std::string::npos);
}

TEST_F(DocumentFile, TheFullCheckFindsDamageThatTheQuickOneMayMiss) {
    const fs::path path = writeSample("a.qor");
    EXPECT_EQ(findDamage(path, {}), "");
    std::string damaged = bytes(path);
    damaged[damaged.size() / 2] ^= 0x55;
    std::fill(damaged.end() - 40000, damaged.end() - 36000, '\0');
    directory.Write("damaged.qor", damaged);
    EXPECT_NE(findDamage(file("damaged.qor"), {}), "");
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(findDamage(file("damaged.qor"), stop.get_token()), "");
}
