#include "tests/document/product/SampleProduct.h"
#include "tests/support/QorTempDirectory.h"
#include "workbench/document/product/ProductFile.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <random>

using namespace qor::document;
using namespace qor::document::testing;

namespace {

// Starts a process that writes \p product over and over until it is killed.
pid_t startWriter(const std::filesystem::path& file, const Product& product) {
    const pid_t child = fork();
    if (child != 0)
        return child;
    while (true)
        if (!writeProduct(file, product))
            _exit(1);
}

} // namespace

TEST(KilledWriter, LeavesTheOldFileOrTheNewOne) {
    const QorTempDirectory folder;
    const auto file = folder / "a.qor";
    ASSERT_TRUE(writeProduct(file, sampleProduct()));
    Product large = sampleProduct();
    large.name = "large";
    large.meshes.push_back(gridMesh(150, 10));
    std::minstd_rand random(7);
    for (int round = 0; round < 40; ++round) {
        const pid_t writer = startWriter(file, large);
        usleep(static_cast<useconds_t>(random() % 15'000));
        kill(writer, SIGKILL);
        int status = 0;
        ASSERT_EQ(waitpid(writer, &status, 0), writer);
        ASSERT_TRUE(WIFSIGNALED(status));
        Result<Product> read = readProduct(file);
        ASSERT_TRUE(read) << read.failure().text;
        EXPECT_TRUE(read.value() == large || read.value() == sampleProduct());
    }
}

TEST(KilledWriter, TheNextWriterRemovesWhatItLeft) {
    const QorTempDirectory folder;
    const auto file = folder / "a.qor";
    const pid_t gone = fork();
    if (gone == 0)
        _exit(0);
    waitpid(gone, nullptr, 0);
    ASSERT_TRUE(writeProduct(unfinishedName(file, gone), sampleProduct()));
    ASSERT_TRUE(writeProduct(unfinishedName(file, getpid()), sampleProduct()));
    ASSERT_EQ(folder.List().size(), 2U);
    ASSERT_TRUE(writeProduct(file, sampleProduct()));
    EXPECT_EQ(folder.List().size(), 1U);
}
