// qorrender [options] MODEL|DOCUMENT: renders to a picture file without a display; --help lists the
// options. Exit codes: 0 done, 1 failed, 2 wrong usage, 130 interrupted.
#include "workbench/engine/qorrender/Command.h"
#include "workbench/engine/qorrender/CommandLine.h"
#include "workbench/engine/qorrender/Interrupt.h"

#include <unistd.h>

#include <cstdio>

int main(int argc, char** argv) {
    using namespace qor::render;
    watchInterrupts();
    const ParsedCommandLine parsed = parseCommandLine(argc, argv, isatty(STDERR_FILENO) == 1);
    if (!parsed.request) {
        std::fputs(parsed.message.c_str(), parsed.exitCode == done ? stdout : stderr);
        return parsed.exitCode;
    }
    const int code = runRequest(*parsed.request);
    // Workers of an aborted render may still wind down; nobody waits for them.
    std::fflush(nullptr);
    _exit(code);
}
