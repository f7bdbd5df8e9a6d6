#include "workbench/automation/Transport.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <cstring>

namespace qor::automation {

namespace {

/// Above this much unhandled input or unread output nothing more is read.
constexpr std::size_t mostWaiting = 2 * longestMessage;
/// What a message counts besides its bytes.
constexpr std::size_t weightOfMessage = 1024;

/// A thread of ours leaves the program's signals to the main thread.
class BlockedSignals {
public:
    BlockedSignals() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before_);
    }

    ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;

private:
    sigset_t before_{};
};

} // namespace

struct Transport::Client {
    Client(int number, ConnectionId connection) : descriptor(number), id(connection) {}

    ~Client() { ::close(descriptor); }

    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    int descriptor;
    ConnectionId id;
    LineReader lines{longestMessage};
    std::string output; ///< not yet written
    bool inputEnded = false;
    bool isGone = false;   ///< hung up altogether
    bool isBroken = false; ///< a write failed: nothing more is written
    bool isFinished = false;

    /// Writes as much as goes without waiting.
    void write() {
        std::size_t done = 0;
        while (done < output.size() && !isBroken) {
            const ssize_t count = ::send(descriptor, output.data() + done, output.size() - done,
                                         MSG_NOSIGNAL | MSG_DONTWAIT);
            if (count > 0)
                done += static_cast<std::size_t>(count);
            else if (errno == EAGAIN || errno == EWOULDBLOCK)
                break;
            else
                isBroken = errno != EINTR;
        }
        output.erase(0, isBroken ? output.size() : done);
    }
};

Transport::Transport(const std::string& path, Receiver receiver)
    : socket_(path), error_(socket_.error()), receiver_(std::move(receiver)) {
    std::array<int, 2> ends{-1, -1};
    if (error_.empty() && ::pipe2(ends.data(), O_NONBLOCK | O_CLOEXEC) != 0)
        error_ = "cannot listen at " + path + ": " + std::strerror(errno);
    if (!error_.empty())
        return;
    wakes_ = {ends[0], ends[1]};
    const BlockedSignals blocked;
    thread_ = std::thread([this] { run(); });
}

Transport::~Transport() {
    stopping_ = true;
    wake();
    if (thread_.joinable())
        thread_.join();
    if (wakes_.readEnd >= 0) {
        ::close(wakes_.readEnd);
        ::close(wakes_.writeEnd);
    }
}

void Transport::send(ConnectionId connection, std::string_view line) {
    {
        const std::scoped_lock lock(mutex_);
        if (!client_ || client_->id != connection || client_->isBroken)
            return;
        const bool nothingWaits = client_->output.empty();
        client_->output += line;
        if (nothingWaits)
            client_->write();
        if (client_->output.empty())
            return;
    }
    wake();
}

void Transport::handled(std::size_t weight) {
    const std::size_t before = unhandled_.fetch_sub(weight);
    if (before >= mostWaiting && before - weight < mostWaiting)
        wake();
}

void Transport::finish(ConnectionId connection) {
    {
        const std::scoped_lock lock(mutex_);
        if (client_ && client_->id == connection)
            client_->isFinished = true;
    }
    wake();
}

void Transport::wake() const {
    const char byte = 0;
    // A full pipe wakes as well.
    [[maybe_unused]] const ssize_t count = ::write(wakes_.writeEnd, &byte, 1);
}

void Transport::drainWakes() const {
    std::array<char, 256> bytes{};
    while (::read(wakes_.readEnd, bytes.data(), bytes.size()) > 0) {
    }
}

void Transport::run() {
    while (!stopping_) {
        short events = 0;
        std::array<pollfd, 3> waits{};
        waits[0] = {wakes_.readEnd, POLLIN, 0};
        waits[1] = {client_ ? -1 : socket_.descriptor(), POLLIN, 0};
        waits[2].fd = pollClient(events);
        waits[2].events = events;
        if (::poll(waits.data(), waits.size(), -1) < 0)
            continue; // a signal
        drainWakes();
        if ((waits[1].revents & POLLIN) != 0)
            acceptClient();
        else if (client_)
            serveClient(waits[2].revents);
    }
    flushAtEnd();
}

/// Under the mutex.
bool Transport::mayRead() const {
    return !client_->inputEnded && unhandled_ < mostWaiting && client_->output.size() < mostWaiting;
}

/// What to wait for at the client; the descriptor is -1 when a hang-up would only wake us again and
/// again.
int Transport::pollClient(short& events) const {
    const std::scoped_lock lock(mutex_);
    if (!client_)
        return -1;
    const bool reads = mayRead();
    events = static_cast<short>((reads ? POLLIN : 0) | (client_->output.empty() ? 0 : POLLOUT));
    return client_->isGone && !reads ? -1 : client_->descriptor;
}

void Transport::acceptClient() {
    const int descriptor =
        ::accept4(socket_.descriptor(), nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
    if (descriptor < 0) {
        constexpr int pauseMs = 100; // out of descriptors, most likely: the client goes on waiting
        ::poll(nullptr, 0, errno == EAGAIN ? 0 : pauseMs);
        return;
    }
    const std::scoped_lock lock(mutex_);
    client_ = std::make_unique<Client>(descriptor, ++lastConnection_);
}

void Transport::serveClient(short events) {
    if ((events & POLLHUP) != 0 && !client_->isGone)
        noteGone();
    if ((events & (POLLIN | POLLHUP | POLLERR)) != 0)
        readClient();
    writeWaiting();
    closeIfFinished();
}

void Transport::writeWaiting() {
    const std::scoped_lock lock(mutex_);
    client_->write();
}

void Transport::noteGone() {
    client_->isGone = true;
    {
        const std::scoped_lock lock(mutex_);
        client_->isBroken = true;
        client_->output.clear();
    }
    report({.kind = Arrival::Kind::gone, .connection = client_->id});
}

void Transport::readClient() {
    {
        const std::scoped_lock lock(mutex_);
        if (!mayRead())
            return;
    }
    // Aligned as what follows it in the program's image: with bytes alone mold 1.10 may begin the
    // part that is protected after relocation on a page that is not there, and the program does not
    // load.
    alignas(std::max_align_t) static thread_local std::array<char, std::size_t(64) * 1024> bytes;
    const ssize_t count = ::recv(client_->descriptor, bytes.data(), bytes.size(), 0);
    if (count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR))
        return;
    client_->inputEnded = count <= 0;
    if (count > 0)
        client_->lines.add({bytes.data(), static_cast<std::size_t>(count)});
    else
        client_->lines.finish();
    reportLines();
    if (client_->inputEnded)
        report({.kind = Arrival::Kind::endOfInput, .connection = client_->id});
}

void Transport::reportLines() {
    while (const auto line = client_->lines.next())
        report(
            {.kind = Arrival::Kind::message,
             .connection = client_->id,
             .message = line->isTooLong ? tooLongMessage(longestMessage) : readMessage(line->text),
             .weight = weightOfMessage + line->text.size()});
}

void Transport::report(Arrival arrival) {
    unhandled_ += arrival.weight;
    receiver_(std::move(arrival));
}

void Transport::closeIfFinished() {
    const std::scoped_lock lock(mutex_);
    if (client_->isFinished && client_->output.empty())
        client_.reset();
}

void Transport::flushAtEnd() {
    constexpr std::chrono::seconds patience(1);
    const auto end = std::chrono::steady_clock::now() + patience;
    const std::scoped_lock lock(mutex_);
    while (client_ && !client_->output.empty()) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            end - std::chrono::steady_clock::now());
        pollfd wait{client_->descriptor, POLLOUT, 0};
        if (left.count() <= 0 || ::poll(&wait, 1, static_cast<int>(left.count())) <= 0)
            break;
        client_->write();
    }
    client_.reset();
}

} // namespace qor::automation
