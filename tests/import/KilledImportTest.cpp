#include "tests/document/product/SampleProduct.h"
#include "tests/import/RealImport.h"
#include "tests/support/QorTempDirectory.h"
#include "workbench/document/product/ProductFile.h"

#include <gtest/gtest.h>

#include <random>
#include <thread>

using namespace qor::import;
using namespace qor::import::testing;
using namespace std::chrono_literals;
using qor::document::readProduct;

TEST(KilledImport, AtAnyMomentTheTargetIsTheOldOneOrTheNewOne) {
    const QorTempDirectory folder;
    const auto old = qor::document::testing::sampleProduct();
    ASSERT_TRUE(writeProduct(folder / "a.qor", old));
    writePlyGrid(folder / "a.ply", 150);
    const ImportRequest request = realRequest(folder / "a.ply", folder / "a.qor");
    // How long a whole import takes here and now.
    const auto start = std::chrono::steady_clock::now();
    ImportProcess whole({});
    whole.start(request);
    ASSERT_EQ(whole.wait().end, ImportEnd::Done) << whole.outcome()->text;
    const auto length = std::chrono::steady_clock::now() - start;

    std::minstd_rand random(3);
    int cancelled = 0;
    for (int round = 0; round < 12; ++round) {
        ASSERT_TRUE(writeProduct(folder / "a.qor", old));
        ImportProcess process({});
        process.start(request);
        const auto until = std::chrono::steady_clock::now() + length * (random() % 1000) / 1000;
        while (process.poll() && std::chrono::steady_clock::now() < until)
            std::this_thread::sleep_for(1ms);
        process.cancel();
        cancelled += process.outcome()->end == ImportEnd::Cancelled ? 1 : 0;
        auto read = readProduct(folder / "a.qor");
        ASSERT_TRUE(read) << read.failure().text;
        EXPECT_TRUE(read.value() == old || read.value().name == "a");
        EXPECT_EQ(folder.List().size(), 2U);
    }
    EXPECT_GT(cancelled, 0);
}

TEST(KilledImport, TooLittleMemoryIsSaidAndLeavesTheTarget) {
    const QorTempDirectory folder;
    const auto old = qor::document::testing::sampleProduct();
    ASSERT_TRUE(writeProduct(folder / "a.qor", old));
    writePlyGrid(folder / "a.ply", 1200);
    ImportRequest request = realRequest(folder / "a.ply", folder / "a.qor");
    request.memoryBytes = std::uint64_t{700} << 20;
    ImportProcess process({});
    process.start(request);
    const ImportOutcome& outcome = process.wait();
    EXPECT_TRUE(outcome.end == ImportEnd::Failed || outcome.end == ImportEnd::Crashed);
    EXPECT_TRUE(outcome.text.starts_with((folder / "a.ply").string() + ": ")) << outcome.text;
    auto read = readProduct(folder / "a.qor");
    ASSERT_TRUE(read) << read.failure().text;
    EXPECT_EQ(read.value(), old);
    EXPECT_EQ(folder.List().size(), 2U);
}

TEST(KilledImport, AFolderThatMayNotBeWrittenIsSaid) {
    const QorTempDirectory folder;
    writePlyGrid(folder / "a.ply", 2);
    const ImportRequest request = realRequest(folder / "a.ply", folder / "missing" / "a.qor");
    ImportProcess process({});
    process.start(request);
    EXPECT_EQ(process.wait().end, ImportEnd::Failed);
    EXPECT_EQ(process.outcome()->text, (folder / "missing" / "a.qor").string() +
                                           ": it cannot be opened: No such file or directory");
}
