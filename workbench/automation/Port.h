#pragma once

#include "workbench/automation/Method.h"

#include <functional>
#include <memory>
#include <string>

class QorEventLoop;

namespace qor::automation {

struct PortOptions {
    std::string name;    ///< of the program, as app.info gives it
    std::string version; ///< of the program
    bool isHeadless = false;
    bool isOnce = false; ///< the program ends when the client hangs up
    /// Ends the program; by default the loop is asked to quit. Called on the user-interface thread,
    /// after the answer of app.quit was sent, possibly inside a nested turn.
    std::function<void()> quit;
};

/// The automation port: serves JSON-RPC 2.0, one message a line, at a Unix-domain socket. Requests
/// are handled one after another on the user-interface thread, as work posted to its loop, so
/// nothing happens before the loop runs. There is at most one port a process. It keeps every event
/// of the program from its construction on for events.take, so make it before anything else.
/// User-interface thread only.
class Port {
public:
    /// Listens at \p path, which only this user can reach; a socket file that a dead program left
    /// is replaced. See error() for whether that went well. \p loop outlives the port.
    Port(QorEventLoop& loop, const std::string& path, PortOptions options);
    /// Answers requests that are still open with an error, writes what is waiting for a second at
    /// most, and removes the socket. Not to be called from inside a request.
    ~Port();
    Port(const Port&) = delete;
    Port& operator=(const Port&) = delete;

    /// Why it does not listen, in lower case and with the path; empty when it does.
    [[nodiscard]] const std::string& error() const;

    /// Adds the methods of another room: `port.add(viewerMethods())`. A method of a name that is
    /// there already replaces it.
    void add(MethodGroup group);

    /// While it is held no request is handled; they wait in their order. For a program that is not
    /// yet what its command line asks for.
    void hold(bool isHeld);

private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace qor::automation
