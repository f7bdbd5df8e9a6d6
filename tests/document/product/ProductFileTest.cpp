#include "workbench/document/product/ProductFile.h"

#include "tests/document/product/SampleProduct.h"
#include "tests/support/QorTempDirectory.h"
#include "workbench/document/product/ProductTables.h"

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/resource.h>

#include <csignal>

using namespace qor::document;
using namespace qor::document::testing;

namespace {

// Lets every write beyond a size fail, as on a full disk, while it lives.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) {
        signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }

    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &before_);
        signal(SIGXFSZ, SIG_DFL);
    }

    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;
    FileSizeLimit(FileSizeLimit&&) = delete;
    FileSizeLimit& operator=(FileSizeLimit&&) = delete;

private:
    rlimit before_{};
};

} // namespace

TEST(ProductFile, GivesBackEveryFieldAsItWasWritten) {
    const QorTempDirectory folder;
    const Product product = sampleProduct();
    ASSERT_TRUE(writeProduct(folder / "a.qor", product));
    Result<Product> read = readProduct(folder / "a.qor");
    ASSERT_TRUE(read) << read.failure().text;
    EXPECT_EQ(read.value(), product);
}

TEST(ProductFile, AnEmptyProductIsADocumentToo) {
    const QorTempDirectory folder;
    ASSERT_TRUE(writeProduct(folder / "empty.qor", Product()));
    Result<Product> read = readProduct(folder / "empty.qor");
    ASSERT_TRUE(read) << read.failure().text;
    EXPECT_EQ(read.value(), Product());
}

TEST(ProductFile, LeavesNothingBesideTheFile) {
    const QorTempDirectory folder;
    ASSERT_TRUE(writeProduct(folder / "a.qor", sampleProduct()));
    EXPECT_EQ(folder.List().size(), 1U);
}

TEST(ProductFile, TexturesCanBeLeftOut) {
    const QorTempDirectory folder;
    ASSERT_TRUE(writeProduct(folder / "a.qor", sampleProduct()));
    ReadOptions options;
    options.withTextures = false;
    Result<Product> read = readProduct(folder / "a.qor", options);
    ASSERT_TRUE(read) << read.failure().text;
    ASSERT_EQ(read.value().textures.size(), 1U);
    EXPECT_EQ(read.value().textures[0].name, "wood");
    EXPECT_TRUE(read.value().textures[0].pixels.empty());
}

TEST(ProductFile, AnUnsoundProductIsNotWrittenAndTheOldFileStays) {
    const QorTempDirectory folder;
    ASSERT_TRUE(writeProduct(folder / "a.qor", sampleProduct()));
    Product broken = sampleProduct();
    broken.nodes[1].parent = 2;
    const Result<Done> written = writeProduct(folder / "a.qor", broken);
    ASSERT_FALSE(written);
    EXPECT_EQ(written.failure().kind, FaultKind::Internal);
    EXPECT_NE(written.failure().text.find("node 1"), std::string::npos);
    Result<Product> read = readProduct(folder / "a.qor");
    ASSERT_TRUE(read) << read.failure().text;
    EXPECT_EQ(read.value(), sampleProduct());
    EXPECT_EQ(folder.List().size(), 1U);
}

TEST(ProductFile, AFolderThatIsNotThereIsNamed) {
    const QorTempDirectory folder;
    const auto target = folder / "nowhere" / "a.qor";
    const Result<Done> written = writeProduct(target, sampleProduct());
    ASSERT_FALSE(written);
    EXPECT_EQ(written.failure().kind, FaultKind::Machine);
    EXPECT_EQ(written.failure().text,
              target.string() + ": it cannot be opened: No such file or directory");
}

TEST(ProductFile, AFullDiskIsSaidAndLeavesTheOldFile) {
    const QorTempDirectory folder;
    ASSERT_TRUE(writeProduct(folder / "a.qor", sampleProduct()));
    Product large = sampleProduct();
    large.meshes.push_back(gridMesh(200, 1));
    Result<Done> written = Done{};
    {
        const FileSizeLimit limit(200'000);
        written = writeProduct(folder / "a.qor", large);
    }
    ASSERT_FALSE(written);
    EXPECT_EQ(written.failure().kind, FaultKind::Machine) << written.failure().text;
    Result<Product> read = readProduct(folder / "a.qor");
    ASSERT_TRUE(read) << read.failure().text;
    EXPECT_EQ(read.value(), sampleProduct());
    EXPECT_EQ(folder.List().size(), 1U);
}

TEST(ProductFile, ProgressRisesToOne) {
    const QorTempDirectory folder;
    Product product = sampleProduct();
    product.meshes.push_back(gridMesh(2, 1));
    double last = 0;
    int calls = 0;
    const ProductProgress watch = [&](double fraction) {
        EXPECT_GE(fraction, last);
        last = fraction;
        ++calls;
    };
    ASSERT_TRUE(writeProduct(folder / "a.qor", product, watch));
    EXPECT_EQ(last, 1);
    EXPECT_EQ(calls, 2);
}

TEST(ProductTables, StoreReplacesWhatWasThereBesideForeignTables) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open(":memory:", &database), SQLITE_OK);
    sqlite3_exec(database,
                 "PRAGMA foreign_keys = ON; CREATE TABLE other(a); INSERT INTO other VALUES(7)",
                 nullptr, nullptr, nullptr);
    ASSERT_TRUE(storeProduct(database, "memory", sampleProduct()));
    Product second = sampleProduct();
    second.name = "second";
    second.nodes.pop_back();
    second.lights.clear();
    const Result<Done> stored = storeProduct(database, "memory", second);
    ASSERT_TRUE(stored) << stored.failure().text;
    Result<Product> read = loadProduct(database, "memory", 1 << 20);
    ASSERT_TRUE(read) << read.failure().text;
    EXPECT_EQ(read.value(), second);
    int rows = 0;
    sqlite3_exec(
        database, "SELECT a FROM other WHERE a = 7",
        [](void* count, int, char**, char**) { return ++*static_cast<int*>(count), 0; }, &rows,
        nullptr);
    EXPECT_EQ(rows, 1);
    sqlite3_close(database);
}
