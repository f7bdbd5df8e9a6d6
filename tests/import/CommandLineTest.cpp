#include "workbench/import/model/CommandLine.h"

#include <gtest/gtest.h>

#include <vector>

using qor::import::parseCommandLine;
using qor::import::ParsedCommandLine;

namespace {

ParsedCommandLine parse(std::vector<const char*> words) {
    words.insert(words.begin(), "qorimport");
    return parseCommandLine(static_cast<int>(words.size()), words.data());
}

} // namespace

TEST(CommandLine, FilesAndOptionsStandInAnyOrder) {
    const ParsedCommandLine parsed =
        parse({"--angle", "5", "in.step", "--deflection", "0.25", "out.qor"});
    ASSERT_TRUE(parsed.command);
    EXPECT_EQ(parsed.command->model, "in.step");
    EXPECT_EQ(parsed.command->target, "out.qor");
    EXPECT_EQ(parsed.command->settings.angleDeg, 5);
    EXPECT_EQ(parsed.command->settings.deflectionMm, 0.25);
}

TEST(CommandLine, WrongUsageIsExplainedWithExitCodeTwo) {
    for (const auto& words :
         std::vector<std::vector<const char*>>{{},
                                               {"a"},
                                               {"a", "b", "c"},
                                               {"a", "b", "--angle"},
                                               {"a", "b", "--angle", "0"},
                                               {"a", "b", "--angle", "ten"},
                                               {"a", "b", "--deflection", "-1"},
                                               {"a", "b", "--deflection", "nan"},
                                               {"a", "b", "--deflection", "0,5"},
                                               {"a", "b", "--speed", "9"}}) {
        const ParsedCommandLine parsed = parse(words);
        EXPECT_FALSE(parsed.command);
        EXPECT_EQ(parsed.exitCode, 2);
        EXPECT_NE(parsed.message.find("usage:"), std::string::npos);
    }
}

TEST(CommandLine, HelpIsNoError) {
    EXPECT_EQ(parse({"--help"}).exitCode, 0);
    EXPECT_FALSE(parse({"--help"}).command);
}
