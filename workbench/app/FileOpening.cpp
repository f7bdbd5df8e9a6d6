#include "workbench/app/FileOpening.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>

namespace qor::app {

namespace {

/// Why a file cannot be read; empty when it can.
std::string whyUnreadable(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (file < 0)
        return std::strerror(errno);
    close(file);
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored) ? "" : "it is not a file";
}

} // namespace

std::string openDocument(const std::string& path) {
    const std::string reason = whyUnreadable(path);
    if (!reason.empty())
        return reason;
    // The rooms that read documents and models register nothing yet, so no kind of file is known.
    return "no reader is known for this kind of file";
}

} // namespace qor::app
