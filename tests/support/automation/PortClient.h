#pragma once

#include <nlohmann/json.hpp>

#include <chrono>
#include <stdexcept>
#include <string>
#include <string_view>

/// A blocking client of the automation port. Whatever does not come within the time limit throws
/// std::runtime_error.
class PortClient {
public:
    using Json = nlohmann::json;

    /// An answer that is an error.
    class Failure : public std::runtime_error {
    public:
        Failure(int code, const std::string& message) : std::runtime_error(message), code_(code) {}

        [[nodiscard]] int code() const { return code_; }

    private:
        int code_;
    };

    /// Connects, waiting for a program that is still starting.
    explicit PortClient(const std::string& path,
                        std::chrono::milliseconds limit = std::chrono::seconds(30));
    ~PortClient();
    PortClient(const PortClient&) = delete;
    PortClient& operator=(const PortClient&) = delete;

    /// Calls a method and gives its result; throws Failure.
    Json call(const std::string& method, const Json& params = Json::object());

    /// The code of the error that a call must give; 0 when it succeeds.
    int callForError(const std::string& method, const Json& params = Json::object());

    /// Sends a request without waiting for its answer; returns its id.
    int request(const std::string& method, const Json& params = Json::object());
    /// Sends a notification.
    void notify(const std::string& method, const Json& params = Json::object());

    /// Sends bytes as they are.
    void send(std::string_view bytes);
    /// Sends a line.
    void sendLine(std::string_view line);

    /// The next message, whatever it answers.
    Json read();
    /// Whether nothing comes for that long.
    [[nodiscard]] bool isSilentFor(std::chrono::milliseconds time);
    /// Whether the other side has hung up, and all was read.
    [[nodiscard]] bool isClosed();

    /// Ends the sending half; answers can still be read.
    void endInput();
    /// Hangs up.
    void close();

private:
    bool fill(std::chrono::milliseconds time);
    Json result(int id);

    int socket_ = -1;
    std::chrono::milliseconds limit_;
    std::string buffer_;
    bool ended_ = false;
    int lastId_ = 0;
};
