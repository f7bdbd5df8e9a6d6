#include "platform/text/QorFileReader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>

namespace {

constexpr std::size_t most = 16U << 20U;

int ReadAll(int iFile, std::string& oBytes) {
    std::array<char, 1U << 16U> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init)
    for (;;) {
        const ssize_t count = read(iFile, buffer.data(), buffer.size());
        if (count == 0)
            return 0;
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return errno;
        oBytes.append(buffer.data(), static_cast<std::size_t>(count));
        if (oBytes.size() > most)
            return EFBIG;
    }
}

int CheckKind(int iFile) {
    struct stat status = {};
    if (fstat(iFile, &status) != 0)
        return errno;
    if (S_ISDIR(status.st_mode))
        return EISDIR;
    return S_ISREG(status.st_mode) ? 0 : EINVAL;
}

} // namespace

int QorReadFile(const std::string& iPath, std::string& oBytes) {
    const int file = open(iPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return errno;
    oBytes.clear();
    int error = CheckKind(file);
    if (error == 0)
        error = ReadAll(file, oBytes);
    close(file);
    return error;
}
