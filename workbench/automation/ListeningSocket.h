#pragma once

#include <sys/types.h>

#include <string>

namespace qor::automation {

/// A Unix-domain stream socket that listens at a path and that only this user can reach, from its
/// first moment on.
class ListeningSocket {
public:
    /// Listens at \p path. A socket file that nobody listens at any more is replaced. Fails, see
    /// error(), when the path is too long for a socket, in use by a living listener, something else
    /// than a socket, or cannot be made.
    explicit ListeningSocket(std::string path);
    /// Closes, and removes the file if it is still ours.
    ~ListeningSocket();
    ListeningSocket(const ListeningSocket&) = delete;
    ListeningSocket& operator=(const ListeningSocket&) = delete;

    /// What went wrong, in lower case and with the path; empty when it listens.
    [[nodiscard]] const std::string& error() const { return error_; }

    /// Non-blocking; -1 after a failure.
    [[nodiscard]] int descriptor() const { return descriptor_; }

    [[nodiscard]] const std::string& path() const { return path_; }

private:
    bool open();
    bool clearPath();
    bool bindAndListen();
    bool fail(const std::string& what);

    std::string path_;
    std::string error_;
    int descriptor_ = -1;
    dev_t device_ = 0; ///< identity of our file
    ino_t inode_ = 0;
};

} // namespace qor::automation
