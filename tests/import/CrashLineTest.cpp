#include "workbench/import/model/CrashLine.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>

using qor::import::CrashLine;

namespace {

constexpr int exitCode = 7;

[[maybe_unused]] void crash(int signal) {
    CrashLine line(STDERR_FILENO, exitCode);
    line.set("the first word\n");
    line.set("the last word\n");
    std::raise(signal);
}

} // namespace

// Death tests run in a process of their own. A sanitizer's program leaves crashes to the sanitizer.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST(CrashLineDeathTest, TheLatestLineGoesOutWhateverTheCrash) {
    for (const int signal : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT})
        EXPECT_EXIT(crash(signal), testing::ExitedWithCode(exitCode), "^the last word\n$");
}
#endif

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
