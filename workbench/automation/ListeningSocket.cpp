#include "workbench/automation/ListeningSocket.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <utility>

namespace qor::automation {

namespace {

/// Closes a file descriptor.
class Descriptor {
public:
    explicit Descriptor(int number) : number_(number) {}

    ~Descriptor() {
        if (number_ >= 0)
            ::close(number_);
    }

    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] int get() const { return number_; }

private:
    int number_;
};

/// Keeps two programs that start at the same moment from replacing each other's socket: holds a
/// lock on the folder. When the lock cannot be had within a second we go on without.
class FolderLock {
public:
    explicit FolderLock(const std::string& path)
        : folder_(::open(folderOf(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        constexpr int attempts = 100;
        constexpr int pauseMs = 10;
        for (int i = 0; i < attempts && ::flock(folder_.get(), LOCK_EX | LOCK_NB) != 0; ++i) {
            if (errno != EWOULDBLOCK)
                return;
            ::poll(nullptr, 0, pauseMs);
        }
    }

private:
    static std::string folderOf(const std::string& path) {
        const auto slash = path.rfind('/');
        if (slash == std::string::npos)
            return ".";
        return slash == 0 ? "/" : path.substr(0, slash);
    }

    Descriptor folder_;
};

int makeSocket() {
    return ::socket(AF_UNIX, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
}

sockaddr_un addressOf(const std::string& path) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, path.data(), path.size());
    return address;
}

/// connect and bind take every kind of address through this type.
const sockaddr* generic(const sockaddr_un& address) {
    return reinterpret_cast<const sockaddr*>(&address);
}

/// Whether nobody listens at that socket file. When in doubt somebody does.
bool isAbandoned(const sockaddr_un& address) {
    const Descriptor probe(makeSocket());
    return probe.get() >= 0 && ::connect(probe.get(), generic(address), sizeof(address)) != 0 &&
           errno == ECONNREFUSED;
}

} // namespace

ListeningSocket::ListeningSocket(std::string path) : path_(std::move(path)) {
    if (open())
        return;
    if (descriptor_ >= 0)
        ::close(descriptor_);
    descriptor_ = -1;
}

ListeningSocket::~ListeningSocket() {
    if (descriptor_ < 0)
        return;

    struct stat found {};

    if (::lstat(path_.c_str(), &found) == 0 && found.st_dev == device_ && found.st_ino == inode_)
        ::unlink(path_.c_str());
    ::close(descriptor_);
}

bool ListeningSocket::fail(const std::string& what) {
    error_ = "cannot listen at " + path_ + ": " + what;
    return false;
}

bool ListeningSocket::open() {
    if (path_.empty() || path_.find('\0') != std::string::npos)
        return fail("this is no path");
    if (path_.size() >= sizeof(sockaddr_un::sun_path))
        return fail("the path is longer than " + std::to_string(sizeof(sockaddr_un::sun_path) - 1) +
                    " bytes, the longest for a socket");
    const FolderLock lock(path_);
    return clearPath() && bindAndListen();
}

bool ListeningSocket::clearPath() {
    struct stat found {};

    if (::lstat(path_.c_str(), &found) != 0)
        return errno == ENOENT || fail(std::strerror(errno));
    if (!S_ISSOCK(found.st_mode))
        return fail("there is a file that is no socket");
    if (!isAbandoned(addressOf(path_)))
        return fail("another program listens there");
    return ::unlink(path_.c_str()) == 0 || fail(std::strerror(errno));
}

bool ListeningSocket::bindAndListen() {
    constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;
    constexpr int backlog = 16;
    descriptor_ = makeSocket();
    if (descriptor_ < 0)
        return fail(std::strerror(errno));
    // The file gets the mode of the socket, so it is never open to others, not even before listen.
    if (::fchmod(descriptor_, ownerOnly) != 0)
        return fail(std::strerror(errno));
    const sockaddr_un address = addressOf(path_);

    struct stat made {};

    if (::bind(descriptor_, generic(address), sizeof(address)) != 0 ||
        ::lstat(path_.c_str(), &made) != 0)
        return fail(std::strerror(errno));
    device_ = made.st_dev;
    inode_ = made.st_ino;
    if (::listen(descriptor_, backlog) == 0)
        return true;
    const int reason = errno;
    ::unlink(path_.c_str());
    return fail(std::strerror(reason));
}

} // namespace qor::automation
