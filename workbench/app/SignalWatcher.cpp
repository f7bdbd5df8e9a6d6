#include "workbench/app/SignalWatcher.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace qor::app {

namespace {

constexpr std::array watchedSignals{SIGTERM, SIGINT};
constexpr char aSignal = 's';
constexpr char theEnd = 'e';

/// Where the handler writes; a handler may touch nothing but this and write().
volatile std::sig_atomic_t writeEnd = -1;

void send(char byte) {
    const int saved = errno;
    // Without a watcher there is no descriptor, and the call fails as it should.
    [[maybe_unused]] const ssize_t written = write(writeEnd, &byte, 1);
    errno = saved;
}

void handle(int /*signal*/) {
    send(aSignal);
}

void setHandlers(void (*handler)(int)) {
    struct sigaction action {};

    action.sa_handler = handler;
    action.sa_flags = static_cast<int>(SA_RESTART | SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    for (const int one : watchedSignals)
        sigaction(one, &action, nullptr);
}

} // namespace

SignalWatcher::SignalWatcher(std::function<void()> onSignal) : onSignal_(std::move(onSignal)) {
    if (pipe2(pipe_.data(), O_CLOEXEC) != 0)
        return; // out of descriptors: signals then kill the program as they do by default
    writeEnd = pipe_[1];
    setHandlers(&handle);
    thread_ = std::thread([this] { watch(); });
}

SignalWatcher::~SignalWatcher() {
    if (!thread_.joinable())
        return;
    setHandlers(SIG_DFL);
    send(theEnd);
    thread_.join();
    writeEnd = -1;
    close(pipe_[0]);
    close(pipe_[1]);
}

void SignalWatcher::watch() {
    char byte = 0;
    for (;;) {
        const ssize_t got = read(pipe_[0], &byte, 1);
        if (got < 0 && errno == EINTR)
            continue;
        if (got != 1 || byte == theEnd)
            return;
        onSignal_();
    }
}

} // namespace qor::app
