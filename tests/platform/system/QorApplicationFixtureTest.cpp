#include "platform/system/QorCommand.h"
#include "platform/system/QorSettingRepository.h"
#include "tests/support/QorTestApplication.h"

#include <gtest/gtest-spi.h>

namespace {

/// The shared fixture itself, used as a test would. It must find what a test leaves behind, or
/// every test that relies on it proves less than it says.
class Leaving : public QorTestApplication {
public:
    using QorTestApplication::loop;
    using QorTestApplication::TearDown;
    using QorTestApplication::warnings;

    void TestBody() override {}
};

} // namespace

TEST(TestApplication, FindsAnObjectThatIsLeft) {
    auto test = std::make_unique<Leaving>();
    const QorVar<QorCommand> left = QorMake<QorCommand>(nullptr, "left");
    EXPECT_NONFATAL_FAILURE(test->TearDown(), "1 QorCommand");
}

TEST(TestApplication, FindsATimerThatIsLeft) {
    auto test = std::make_unique<Leaving>();
    test->loop.StartTimer(
        std::chrono::milliseconds(1), [] {}, true);
    EXPECT_NONFATAL_FAILURE(test->TearDown(), "timers are left");
}

TEST(TestApplication, FindsAWarningThatNobodyTook) {
    auto test = std::make_unique<Leaving>();
    QorWarn("something odd");
    EXPECT_NONFATAL_FAILURE(test->TearDown(), "something odd");
}

TEST(TestApplication, RunsPostedWorkAndDelayedDestructionsFirst) {
    auto test = std::make_unique<Leaving>();
    QorMake<QorCommand>(nullptr, "dying").Detach()->RequestDelayedDestruction();
    EXPECT_NE(QorSettingRepository::GetRepository("Some"), nullptr);
    test->TearDown();
    EXPECT_EQ(test->loop.CountPosted(), 0U);
}

TEST(TestApplication, GivesTheEnvironmentBack) {
    const QorScopedVariable variable("QorStartupPath", "/before");
    {
        const Leaving test;
        EXPECT_EQ(QorGetEnv("QorStartupPath"), std::nullopt);
    }
    EXPECT_EQ(QorGetEnv("QorStartupPath"), QorUnicodeString("/before"));
}
