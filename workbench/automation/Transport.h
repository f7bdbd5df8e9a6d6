#pragma once

#include "workbench/automation/LineReader.h"
#include "workbench/automation/ListeningSocket.h"
#include "workbench/automation/Message.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

namespace qor::automation {

/// Identity of a client's connection; they count from 1 and are never used again.
using ConnectionId = std::uint64_t;

/// Longest message in bytes, its line end not counted.
inline constexpr std::size_t longestMessage = std::size_t(16) * 1024 * 1024;

/// Something that comes from a client.
struct Arrival {
    enum class Kind {
        message,
        endOfInput, ///< no message will follow; the client may still wait for answers
        gone        ///< it hears no more; messages that it sent before may still follow
    };

    Kind kind = Kind::message;
    ConnectionId connection = 0;
    Message message{};
    std::size_t weight = 0; ///< what the message counts in memory; to be given back by handled()
};

/// The wire of the port: one thread of its own that accepts one client at a time, reads its lines
/// and writes what did not fit when it was sent. All operations may be called from any thread.
/// A client that sends faster than it is served, or does not read its answers, is left waiting.
class Transport {
public:
    /// Called on the thread of the transport.
    using Receiver = std::function<void(Arrival)>;

    /// Begins to serve clients at \p path, unless error() says why not.
    Transport(const std::string& path, Receiver receiver);
    /// Writes what is waiting, for a second at most, and ends.
    ~Transport();
    Transport(const Transport&) = delete;
    Transport& operator=(const Transport&) = delete;

    [[nodiscard]] const std::string& error() const { return error_; }

    /// Sends a line, without waiting. Lines for a client that is gone are dropped.
    void send(ConnectionId connection, std::string_view line);

    /// A message that arrived has been handled; more may be read.
    void handled(std::size_t weight);

    /// No more will be sent to that client: closes its connection when all is written, and lets
    /// the next one in.
    void finish(ConnectionId connection);

private:
    struct Client;

    struct Pipe {
        int readEnd = -1;
        int writeEnd = -1;
    };

    void run();
    void wake() const;
    void drainWakes() const;
    void acceptClient();
    void serveClient(short events);
    void readClient();
    void noteGone();
    void report(Arrival arrival);
    void reportLines();
    void closeIfFinished();
    [[nodiscard]] bool mayRead() const;
    [[nodiscard]] int pollClient(short& events) const;
    void flushAtEnd();
    void writeWaiting();

    ListeningSocket socket_;
    std::string error_;
    Receiver receiver_;
    Pipe wakes_;
    std::atomic<bool> stopping_ = false;
    std::atomic<std::size_t> unhandled_ = 0; ///< weight of what was reported and not yet handled

    /// Set, and closed, by the transport's thread under the mutex; others look under the mutex.
    mutable std::mutex mutex_;
    std::unique_ptr<Client> client_;
    ConnectionId lastConnection_ = 0;

    std::thread thread_; ///< last, so that it starts when all else is there
};

} // namespace qor::automation
