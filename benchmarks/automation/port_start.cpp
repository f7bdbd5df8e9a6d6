// From the start of `qorworkbench --headless` to its first answer. Aim: 150 ms.
#include "tests/support/QorTempDirectory.h"
#include "tests/support/automation/PortClient.h"

#include <benchmark/benchmark.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <chrono>

namespace {

pid_t start(const std::string& socket) {
    std::string program = QOR_WORKBENCH;
    std::string headless = "--headless";
    std::string listen = "--listen";
    std::string path = socket;
    const std::array<char*, 5> arguments{program.data(), headless.data(), listen.data(),
                                         path.data(), nullptr};
    pid_t child = 0;
    if (::posix_spawn(&child, program.c_str(), nullptr, nullptr, arguments.data(), environ) != 0)
        throw std::runtime_error("cannot start " + program);
    return child;
}

void firstAnswer(benchmark::State& state) {
    const QorTempDirectory directory;
    const std::string socket = directory.GetPath("port");
    ::setenv("XDG_CONFIG_HOME", directory.GetPath("config").c_str(), 1);
    for (auto _ : state) {
        const auto begin = std::chrono::steady_clock::now();
        const pid_t child = start(socket);
        PortClient client(socket);
        client.call("app.info");
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - begin;
        state.SetIterationTime(time.count());
        client.call("app.quit");
        ::waitpid(child, nullptr, 0);
    }
}

BENCHMARK(firstAnswer)->UseManualTime()->Unit(benchmark::kMillisecond);

} // namespace
