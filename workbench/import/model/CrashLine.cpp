#include "workbench/import/model/CrashLine.h"

#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>

namespace qor::import {

namespace {

constexpr std::array signals{SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT};
constexpr std::size_t longest = 8192;

struct Line {
    std::array<char, longest> text{};
    std::size_t length = 0;
};

// Two lines in turn, so that a crash while one is set finds the other whole.
std::array<Line, 2> lines;
std::atomic<const Line*> current = nullptr;
int output = -1;
int code = 1;

// A stack of its own: the crash may be that there is none left.
alignas(16) std::array<char, 65536> handlerStack;

void say(int /*signal*/) {
    if (const Line* line = current)
        static_cast<void>(!write(output, line->text.data(), line->length));
    _exit(code);
}

constexpr bool isSanitized() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return true;
#else
    return false;
#endif
}

void handle(void (*handler)(int)) {
    struct sigaction action {};

    action.sa_handler = handler;
    action.sa_flags = handler == SIG_DFL ? 0 : SA_ONSTACK;
    for (const int signal : signals)
        sigaction(signal, &action, nullptr);
}

} // namespace

CrashLine::CrashLine(int descriptor, int exitCode) {
    output = descriptor;
    code = exitCode;
    if (isSanitized())
        return;
    const stack_t stack{handlerStack.data(), 0, handlerStack.size()};
    sigaltstack(&stack, nullptr);
    handle(&say);
}

CrashLine::~CrashLine() {
    if (!isSanitized())
        handle(SIG_DFL);
    current = nullptr;
}

void CrashLine::set(const std::string& line) {
    Line& next = current == &lines[0] ? lines[1] : lines[0];
    next.length = std::min(line.size(), longest);
    std::copy_n(line.begin(), next.length, next.text.begin());
    current = &next;
}

} // namespace qor::import
