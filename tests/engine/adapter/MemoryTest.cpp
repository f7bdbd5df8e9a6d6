#include "workbench/engine/adapter/Memory.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using namespace qor::adapter;

qor::engine::RenderOptions optionsFor(int width, int height) {
    qor::engine::RenderOptions options;
    options.width = width;
    options.height = height;
    return options;
}

TEST(Memory, OfARenderGrowsWithWhatIsRenderedAndShown) {
    auto options = optionsFor(1000, 1000);
    EXPECT_EQ(memoryNeeded(options), 44'000'000U);
    options.region = qor::engine::Region{0, 0, 100, 100};
    EXPECT_EQ(memoryNeeded(options), 4'400'000U);
}

TEST(Memory, ThatIsFreeIsReadFromTheSystemsList) {
    std::istringstream list("MemTotal:  16000 kB\nMemFree: 5 kB\nMemAvailable:   2000 kB\n");
    EXPECT_EQ(memoryAvailable(list), 2'048'000U);
    std::istringstream other("something else\n");
    EXPECT_EQ(memoryAvailable(other), std::nullopt);
}

TEST(Memory, OfAConfinedGroupIsItsLimitLessWhatItCannotForget) {
    const auto allowed = [](const char* most, const char* taken, const char* kinds) {
        std::istringstream limit(most);
        std::istringstream used(taken);
        std::istringstream list(kinds);
        return memoryAllowed(limit, used, list);
    };
    EXPECT_EQ(allowed("5000\n", "3000\n", "anon 800\ninactive_file 1200\n"), 3200U);
    EXPECT_EQ(allowed("5000\n", "3000\n", ""), 2000U);
    EXPECT_EQ(allowed("5000\n", "6000\n", ""), 0U);
    EXPECT_EQ(allowed("max\n", "3000\n", ""), std::nullopt);
    EXPECT_EQ(allowed("", "", ""), std::nullopt);
}

TEST(Memory, SufficesForPicturesAsTheyAreAndNotForAnyPicture) {
    EXPECT_EQ(findShortageOfMemory(optionsFor(640, 480)), "");
    const std::string reason = findShortageOfMemory(optionsFor(2'000'000, 2'000'000));
    EXPECT_EQ(reason.find("a picture of 2000000 by 2000000 pixels takes 176000000 MB"), 0U)
        << reason;
}

} // namespace
