#include "platform/system/QorFileWriter.h"

#include "platform/system/QorPaths.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>

namespace {

constexpr std::string_view temporarySuffix = ".qortmp";

/// Where a link leads; the path itself when it is none or leads nowhere yet.
std::string FollowLinks(std::string iPath) {
    char* real = realpath(iPath.c_str(), nullptr);
    if (real == nullptr)
        return iPath;
    iPath = real;
    std::free(real); // NOLINT: realpath allocates so
    return iPath;
}

struct Split {
    std::string directory;
    std::string name;
};

Split SplitTarget(const std::string& iPath) {
    QorUnicodeString directory;
    QorUnicodeString name;
    QorSplitPath(iPath, directory, name);
    return {directory.IsNull() ? "." : directory.Str(), name.Str()};
}

/// The process that made a temporary file, from its name; 0 when it is not one of this target.
pid_t GetWriter(std::string_view iFileName, std::string_view iTargetName) {
    std::string prefix(".");
    prefix.append(iTargetName).append(".");
    if (!iFileName.starts_with(prefix) || !iFileName.ends_with(temporarySuffix))
        return 0;
    iFileName.remove_prefix(prefix.size());
    pid_t process = 0;
    const auto result =
        std::from_chars(iFileName.data(), iFileName.data() + iFileName.size(), process);
    return result.ec == std::errc() ? process : 0;
}

bool IsDead(pid_t iProcess) {
    return iProcess > 0 && kill(iProcess, 0) != 0 && errno == ESRCH;
}

/// A file system shared between machines shows files of processes that live elsewhere, so a file
/// must be old too.
bool IsOld(const std::string& iPath) {
    constexpr std::time_t oldInSeconds = 60;
    struct stat status = {};
    return lstat(iPath.c_str(), &status) == 0 && S_ISREG(status.st_mode) &&
           status.st_mtim.tv_sec < std::time(nullptr) - oldInSeconds;
}

/// Why a path is not to be replaced by a file: a folder or device is there. 0: nothing speaks
/// against it.
int FindObstacle(const std::string& iPath) {
    struct stat status = {};
    if (stat(iPath.c_str(), &status) != 0 || S_ISREG(status.st_mode))
        return 0;
    return S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
}

void CopyMode(const std::string& iFrom, int iFile) {
    struct stat status = {};
    constexpr mode_t permissions = 0777;
    if (stat(iFrom.c_str(), &status) == 0)
        fchmod(iFile, status.st_mode & permissions);
}

bool WriteAll(int iFile, std::string_view iBytes) {
    while (!iBytes.empty()) {
        const ssize_t count = write(iFile, iBytes.data(), iBytes.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return false;
        iBytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

/// Makes the rename itself last. File systems that cannot do it for directories say EINVAL.
bool SyncDirectory(const std::string& iDirectory) {
    const int file = open(iDirectory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (file < 0)
        return false;
    const bool done = fsync(file) == 0 || errno == EINVAL;
    close(file);
    return done;
}

} // namespace

QorFileWriter::QorFileWriter(std::string iPath) : target(FollowLinks(std::move(iPath))) {
    constexpr mode_t usual = 0666; // less the umask
    static std::atomic<int> count = 0;
    if (const int obstacle = FindObstacle(target); obstacle != 0) {
        Fail("cannot be written", obstacle);
        return;
    }
    const Split split = SplitTarget(target);
    RemoveStale();
    temporary = split.directory + "/." + split.name + "." + std::to_string(getpid()) + "-" +
                std::to_string(++count) + std::string(temporarySuffix);
    file = open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, usual);
    if (file < 0)
        Fail("cannot be written", errno);
    else
        CopyMode(target, file);
}

QorFileWriter::~QorFileWriter() {
    if (file < 0)
        return;
    close(file);
    unlink(temporary.c_str());
}

void QorFileWriter::Write(std::string_view iBytes) {
    if (error.empty() && !WriteAll(file, iBytes))
        Fail("cannot be written", errno);
}

QorResult QorFileWriter::Commit() {
    if (error.empty() && fsync(file) != 0)
        Fail("cannot be written to disk", errno);
    if (error.empty() && rename(temporary.c_str(), target.c_str()) != 0)
        Fail("cannot be replaced", errno);
    if (!error.empty())
        return E_FAIL;
    close(file);
    file = -1;
    // The new file is in its place now; a failure here means only that a power cut may undo it.
    SyncDirectory(SplitTarget(target).directory);
    return S_OK;
}

void QorFileWriter::Fail(const char* iWhat, int iError) {
    error = target + ": " + iWhat + ": " + std::strerror(iError);
}

void QorFileWriter::RemoveStale() const {
    const Split split = SplitTarget(target);
    DIR* directory = opendir(split.directory.c_str());
    if (directory == nullptr)
        return;
    while (const dirent* entry = readdir(directory)) {
        const std::string path = split.directory + "/" + entry->d_name;
        if (IsDead(GetWriter(entry->d_name, split.name)) && IsOld(path))
            unlink(path.c_str());
    }
    closedir(directory);
}
