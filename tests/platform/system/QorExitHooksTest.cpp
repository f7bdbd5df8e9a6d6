#include "platform/system/QorExitHooks.h"

#include "platform/system/QorCommand.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

using Lines = std::vector<std::string>;

TEST(QorExitHooks, RunByPriorityThenLastRegisteredFirstAndOnce) {
    Lines lines;
    const auto hook = [&](const char* iName, int iPriority) {
        QorCallOnExit([&lines, iName] { lines.emplace_back(iName); }, iPriority);
    };
    hook("3a", 3);
    hook("1", 1);
    hook("3b", 3);
    hook("-5", -5);
    hook("10", 10);
    QorCallOnExit({}, 0);
    QorRunExitHooks();
    EXPECT_EQ(lines, (Lines{"-5", "1", "3b", "3a", "10"}));
    QorRunExitHooks();
    EXPECT_EQ(lines.size(), 5U);
}

TEST(QorExitHooks, AHookMayRegisterAnother) {
    Lines lines;
    QorCallOnExit(
        [&] {
            lines.emplace_back("first");
            QorCallOnExit([&] { lines.emplace_back("more"); }, 1);
        },
        3);
    QorRunExitHooks();
    EXPECT_EQ(lines, (Lines{"first", "more"}));
}

namespace {

class TestLate : public QorCommand {
    QorDeclareClass(TestLate)

    TestLate() : QorCommand(nullptr, "late") {}

protected:
    ~TestLate() override { std::fputs("late object gone", stderr); }
};

QorImplementClass(TestLate, QorCommand)

TestLate* late = nullptr;

} // namespace

TEST(QorExitHooksDeathTest, ExitRunsThemAndMetaObjectsAreStillThere) {
    testing::GTEST_FLAG(death_test_style) = "threadsafe";
    EXPECT_EXIT(
        {
            QorCallOnExit([] { late->Release(); }, 3);
            late = new TestLate; // its class is first used after the hook was registered
            std::exit(0);
        },
        testing::ExitedWithCode(0), "late object gone");
}
