#include "workbench/app/CommandLine.h"

#include "QorVersion.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace qor::app;

std::variant<Options, Answer> read(std::vector<const char*> arguments) {
    arguments.insert(arguments.begin(), "qorworkbench");
    return readCommandLine(static_cast<int>(arguments.size()), arguments.data());
}

Options options(const std::vector<const char*>& arguments) {
    return std::get<Options>(read(arguments));
}

TEST(CommandLine, WithoutArgumentsOpensAWindowAndNothingElse) {
    const Options plain = options({});
    EXPECT_FALSE(plain.isHeadless);
    EXPECT_FALSE(plain.isOnce);
    EXPECT_FALSE(plain.hasGallery);
    EXPECT_EQ(plain.socket, "");
    EXPECT_EQ(plain.file, "");
    EXPECT_EQ(plain.theme, "");
    EXPECT_EQ(plain.traceLevel, 0);
}

TEST(CommandLine, ReadsEveryOption) {
    const Options all = options({"--headless", "--listen", "/tmp/s", "--once", "--trace", "4",
                                 "--gallery", "--theme", "dark", "gear.step"});
    EXPECT_TRUE(all.isHeadless);
    EXPECT_TRUE(all.isOnce);
    EXPECT_TRUE(all.hasGallery);
    EXPECT_EQ(all.socket, "/tmp/s");
    EXPECT_EQ(all.file, "gear.step");
    EXPECT_EQ(all.theme, "dark");
    EXPECT_EQ(all.traceLevel, 4);
}

TEST(CommandLine, TakesFileNamesThatLookLikeOptionsAfterTwoDashes) {
    EXPECT_EQ(options({"--", "--headless"}).file, "--headless");
}

struct WrongCase {
    std::vector<const char*> arguments;
    const char* named; ///< what the message must hold
};

const WrongCase wrongCases[] = {
    {{"--bogus"}, "--bogus"},         {{"-x"}, "-x"},
    {{"a.step", "b.step"}, "b.step"}, {{"--once"}, "--listen"},
    {{"--listen"}, "--listen"},       {{"--listen", ""}, "--listen"},
    {{"--trace", "7"}, "7"},          {{"--trace", "loud"}, "loud"},
    {{"--theme", "pink"}, "pink"},
};

TEST(CommandLine, SaysWhatIsWrong) {
    for (const WrongCase& one : wrongCases) {
        const auto asked = read(one.arguments);
        const auto* answer = std::get_if<Answer>(&asked);
        ASSERT_NE(answer, nullptr) << one.arguments.front();
        EXPECT_EQ(answer->exitCode, exitUsage) << one.arguments.front();
        EXPECT_NE(answer->text.find(one.named), std::string::npos) << answer->text;
        EXPECT_EQ(answer->text.rfind("qorworkbench: ", 0), 0U) << answer->text;
    }
}

TEST(CommandLine, HelpNamesEveryOption) {
    for (const char* option : {"--help", "-h"}) {
        const Answer help = std::get<Answer>(read({option}));
        EXPECT_EQ(help.exitCode, exitDone);
        for (const char* name : {"FILE", "--headless", "--listen", "--once", "--trace", "--gallery",
                                 "--theme", "--help", "--version", "QorStartupPath"})
            EXPECT_NE(help.text.find(name), std::string::npos) << name;
    }
}

TEST(CommandLine, HelpFitsATerminal) {
    const std::string help = std::get<Answer>(read({"--help"})).text;
    constexpr std::size_t columns = 100;
    std::size_t begin = 0;
    for (std::size_t end = help.find('\n'); end != std::string::npos;
         end = help.find('\n', begin)) {
        EXPECT_LE(end - begin, columns) << help.substr(begin, end - begin);
        begin = end + 1;
    }
}

TEST(CommandLine, VersionIsNameAndNumber) {
    EXPECT_EQ(std::get<Answer>(read({"--version"})).text,
              std::string("qorworkbench ") + QorVersion() + "\n");
}

} // namespace
