#include "workbench/engine/qorrender/Interrupt.h"

#include "workbench/engine/qorrender/Failure.h"

#include <csignal>

namespace qor::render {

namespace {

volatile std::sig_atomic_t flag = 0;

void raiseFlag(int /*signal*/) {
    flag = 1;
}

} // namespace

void watchInterrupts() {
    struct sigaction action = {};
    action.sa_handler = raiseFlag;
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGINT, SIGTERM})
        sigaction(signal, &action, nullptr);
    struct sigaction before = {};
    sigaction(SIGHUP, nullptr, &before);
    if (before.sa_handler != SIG_IGN) // or it was started to outlive its terminal
        sigaction(SIGHUP, &action, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN); // a file size limit is an error of the write too
}

bool isInterrupted() {
    return flag != 0;
}

void checkInterrupt() {
    if (isInterrupted())
        throw Interrupted();
}

} // namespace qor::render
