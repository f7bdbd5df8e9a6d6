// A request and its answer through the port, against a bare echo of the same lines: a socket and a
// thread of this process that sends back what it reads. The ratio is what the port costs: a second
// thread, the loop, JSON and the look-ups.
#include "platform/dialog/QorDlgDialog.h"
#include "platform/dialog/QorDlgFrame.h"
#include "platform/dialog/QorDlgSpinner.h"
#include "platform/system/QorApplication.h"
#include "platform/system/QorQueueLoop.h"
#include "tests/support/QorTempDirectory.h"
#include "tests/support/automation/PortClient.h"
#include "workbench/automation/ListeningSocket.h"
#include "workbench/automation/Port.h"

#include <benchmark/benchmark.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <future>
#include <thread>

namespace {

using namespace qor::automation;

/// A program of one dialog with a port, on a thread of its own.
class Program {
public:
    explicit Program(const std::string& path) : thread_([this, path] { run(path); }) {
        ready_.get_future().wait();
    }

    ~Program() {
        loop_->Post([this] { loop_->Quit(); });
        thread_.join();
    }

    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

private:
    void run(const std::string& path) {
        QorQueueLoop loop;
        const QorApplication application(loop);
        loop_ = &loop;
        auto* dialog = new QorDlgDialog(nullptr, "dialog");
        dialog->SetVisibility(QorDlgSHOW);
        new QorDlgSpinner(new QorDlgFrame(dialog, "frame"), "spinner");
        {
            const Port port(loop, path, {});
            ready_.set_value();
            loop.Run();
        }
        dialog->RequestDelayedDestruction();
        loop.RunPosted();
    }

    std::promise<void> ready_;
    QorQueueLoop* loop_ = nullptr;
    std::thread thread_;
};

/// Sends back whatever its one client sends.
class Echo {
public:
    explicit Echo(const std::string& path) : socket_(path), thread_([this] { run(); }) {}

    ~Echo() { thread_.join(); }

    Echo(const Echo&) = delete;
    Echo& operator=(const Echo&) = delete;

private:
    void run() const {
        pollfd wait{socket_.descriptor(), POLLIN, 0};
        ::poll(&wait, 1, -1);
        const int client = ::accept(socket_.descriptor(), nullptr, nullptr);
        std::array<char, 65536> bytes{};
        for (ssize_t count = 0; (count = ::recv(client, bytes.data(), bytes.size(), 0)) > 0;)
            if (::send(client, bytes.data(), static_cast<std::size_t>(count), MSG_NOSIGNAL) < 0)
                break;
        ::close(client);
    }

    ListeningSocket socket_;
    std::thread thread_;
};

const std::string info = R"({"jsonrpc":"2.0","id":1,"method":"app.info","params":{}})";
const std::string get =
    R"({"jsonrpc":"2.0","id":1,"method":"widget.get","params":{"path":"dialog/spinner"}})";
const std::string set =
    R"({"jsonrpc":"2.0","id":1,"method":"widget.set","params":{"path":"dialog/spinner","value":5}})";

template <class Server>
void roundTrip(benchmark::State& state, const std::string& line) {
    const QorTempDirectory directory;
    Server server(directory.GetPath("socket"));
    PortClient client(directory.GetPath("socket"));
    for (auto _ : state) {
        client.sendLine(line);
        benchmark::DoNotOptimize(client.read());
    }
}

void bareEcho(benchmark::State& state) {
    roundTrip<Echo>(state, info);
}

void portInfo(benchmark::State& state) {
    roundTrip<Program>(state, info);
}

void portWidgetGet(benchmark::State& state) {
    roundTrip<Program>(state, get);
}

void portWidgetSet(benchmark::State& state) {
    roundTrip<Program>(state, set);
}

BENCHMARK(bareEcho)->UseRealTime();
BENCHMARK(portInfo)->UseRealTime();
BENCHMARK(portWidgetGet)->UseRealTime();
BENCHMARK(portWidgetSet)->UseRealTime();

} // namespace
