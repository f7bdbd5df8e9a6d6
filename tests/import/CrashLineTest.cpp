#include "workbench/import/model/CrashLine.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>

using qor::import::CrashLine;

namespace {

constexpr int exitCode = 7;

void crash(int signal) {
    CrashLine line(STDERR_FILENO, exitCode);
    line.set("the first word\n");
    line.set("the last word\n");
    std::raise(signal);
}

} // namespace

// Death tests run in a process of their own.
TEST(CrashLineDeathTest, TheLatestLineGoesOutWhateverTheCrash) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "sanitizers see crashes themselves";
#endif
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT})
        EXPECT_EXIT(crash(signal), testing::ExitedWithCode(exitCode), "^the last word\n$");
}

TEST(CrashLineDeathTest, ItIsForgottenAtItsEnd) {
    const auto crashLater = [] {
        {
            CrashLine line(STDERR_FILENO, exitCode);
            line.set("a word\n");
        }
        std::raise(SIGABRT);
    };
    EXPECT_EXIT(crashLater(), testing::KilledBySignal(SIGABRT), "^$");
}
