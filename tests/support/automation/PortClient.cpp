#include "tests/support/automation/PortClient.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

bool tryConnect(int socket, const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path.copy(address.sun_path, sizeof(address.sun_path) - 1);
    return ::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0;
}

} // namespace

PortClient::PortClient(const std::string& path, milliseconds limit) : limit_(limit) {
    constexpr int pauseMs = 2;
    const auto end = steady_clock::now() + limit;
    do {
        socket_ = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
        if (tryConnect(socket_, path))
            return;
        close();
        ::poll(nullptr, 0, pauseMs);
    } while (steady_clock::now() < end);
    throw std::runtime_error("cannot connect to " + path);
}

PortClient::~PortClient() {
    close();
}

void PortClient::close() {
    if (socket_ >= 0)
        ::close(socket_);
    socket_ = -1;
}

void PortClient::endInput() {
    ::shutdown(socket_, SHUT_WR);
}

void PortClient::send(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (count < 0 && errno != EINTR)
            throw std::runtime_error(std::string("cannot send: ") + std::strerror(errno));
        bytes.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
}

void PortClient::sendLine(std::string_view line) {
    send(std::string(line) + '\n');
}

int PortClient::request(const std::string& method, const Json& params) {
    const Json message{
        {"jsonrpc", "2.0"}, {"id", ++lastId_}, {"method", method}, {"params", params}};
    sendLine(message.dump());
    return lastId_;
}

void PortClient::notify(const std::string& method, const Json& params) {
    sendLine(Json{{"jsonrpc", "2.0"}, {"method", method}, {"params", params}}.dump());
}

bool PortClient::fill(milliseconds time) {
    pollfd wait{socket_, POLLIN, 0};
    if (ended_ || ::poll(&wait, 1, static_cast<int>(time.count())) <= 0)
        return false;
    std::array<char, 65536> bytes{};
    const ssize_t count = ::recv(socket_, bytes.data(), bytes.size(), 0);
    if (count > 0)
        buffer_.append(bytes.data(), static_cast<std::size_t>(count));
    ended_ = count <= 0;
    return !ended_;
}

PortClient::Json PortClient::read() {
    std::size_t searched = 0;
    std::size_t end = std::string::npos;
    while ((end = buffer_.find('\n', searched)) == std::string::npos) {
        searched = buffer_.size();
        if (!fill(limit_))
            throw std::runtime_error(ended_ ? "the port has hung up" : "no answer in time");
    }
    const std::string line = buffer_.substr(0, end);
    buffer_.erase(0, end + 1);
    return Json::parse(line);
}

bool PortClient::isSilentFor(milliseconds time) {
    return buffer_.empty() && !fill(time) && !ended_;
}

bool PortClient::isClosed() {
    while (fill(limit_)) {
    }
    return ended_;
}

PortClient::Json PortClient::result(int id) {
    const Json answer = read();
    if (answer.at("id") != id)
        throw std::runtime_error("an answer to something else: " + answer.dump());
    if (const auto error = answer.find("error"); error != answer.end())
        throw Failure(error->at("code"), error->at("message"));
    return answer.at("result");
}

PortClient::Json PortClient::call(const std::string& method, const Json& params) {
    return result(request(method, params));
}

int PortClient::callForError(const std::string& method, const Json& params) {
    try {
        call(method, params);
    } catch (const Failure& failure) {
        return failure.code();
    }
    return 0;
}
