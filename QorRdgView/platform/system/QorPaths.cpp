#include "platform/system/QorPaths.h"

#include "platform/system/QorEnvironment.h"
#include "platform/text/QorCatalogs.h"
#include "platform/text/QorPathList.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace {

constexpr mode_t privateMode = 0700;

std::int64_t ToNanoseconds(const timespec& iTime) {
    constexpr std::int64_t nanosecondsInSecond = 1'000'000'000;
    return iTime.tv_sec * nanosecondsInSecond + iTime.tv_nsec;
}

bool IsDirectory(const std::string& iPath) {
    struct stat status = {};
    return stat(iPath.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

std::string Join(const std::string& iDirectory, const std::string& iName) {
    return iDirectory.ends_with('/') ? iDirectory + iName : iDirectory + '/' + iName;
}

/// Whether \p iPath itself, not through a link, is a directory of this user that nobody else may
/// enter.
bool IsPrivateDirectory(const std::string& iPath) {
    constexpr mode_t others = 0077;
    struct stat status = {};
    return lstat(iPath.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
           status.st_uid == geteuid() && (status.st_mode & others) == 0;
}

/// A private folder inside a directory that others can write to. A name that someone else has
/// taken is left to him.
std::string MakePrivateFolder(const std::string& iParent) {
    constexpr int mostTries = 100;
    const std::string name = Join(iParent, "qorworkbench-" + std::to_string(geteuid()));
    for (int i = 0; i < mostTries; ++i) {
        const std::string path = i == 0 ? name : name + "-" + std::to_string(i);
        if (mkdir(path.c_str(), privateMode) != 0 && errno != EEXIST)
            return {};
        if (IsPrivateDirectory(path))
            return path;
    }
    return {};
}

} // namespace

int QorGetFileInfo(const QorUnicodeString& iPath, QorFileInfo* oInfo) {
    struct stat status = {};
    if (stat(iPath.CastToCharPtr(), &status) != 0)
        return errno;
    if (oInfo != nullptr)
        *oInfo = {.sizeInBytes = static_cast<std::uint64_t>(status.st_size),
                  .modifiedInNanoseconds = ToNanoseconds(status.st_mtim),
                  .isDirectory = S_ISDIR(status.st_mode),
                  .isRegular = S_ISREG(status.st_mode)};
    return 0;
}

std::optional<QorUnicodeString> QorFindPath(const QorUnicodeString& iRelative,
                                            const QorUnicodeString& iList) {
    std::string relative = iRelative.Str();
    std::replace(relative.begin(), relative.end(), '\\', '/');
    if (relative.empty())
        return std::nullopt;
    for (const std::string& directory : QorSplitPathList(iList.Str())) {
        QorUnicodeString path(Join(directory, relative));
        if (QorGetFileInfo(path) == 0)
            return path;
    }
    return std::nullopt;
}

void QorSplitPath(const QorUnicodeString& iPath,
                  QorUnicodeString& oDirectory,
                  QorUnicodeString& oName) {
    const std::string path = iPath.Str();
    const std::size_t slash = path.rfind('/');
    const std::size_t nameAt = slash == std::string::npos ? 0 : slash + 1;
    oDirectory = path.substr(0, slash == 0 ? 1 : nameAt - (nameAt != 0 ? 1 : 0));
    oName = path.substr(nameAt);
}

QorResult QorCreateDirectory(const QorUnicodeString& iPath, unsigned iMode) {
    const std::string& path = iPath.Str();
    if (path.empty())
        return E_FAIL;
    for (std::size_t end = path.find('/', 1); end != std::string::npos;
         end = path.find('/', end + 1))
        mkdir(path.substr(0, end).c_str(), iMode); // what fails here fails below too
    mkdir(path.c_str(), iMode);
    return IsDirectory(path) ? S_OK : E_FAIL;
}

QorUnicodeString QorGetTempDirectory() {
    std::string base = QorGetEnv("TMPDIR").value_or("").Str();
    if (!base.starts_with('/') || !IsDirectory(base))
        base = "/tmp";
    return IsPrivateDirectory(base) ? base : MakePrivateFolder(base);
}

QorUnicodeString QorGetImagePathName(const QorUnicodeString& iName) {
    if (iName.IsNull() || QorGetFileInfo(iName) == 0)
        return iName;
    const QorUnicodeString relative = "rendering/" + iName;
    for (const QorUnicodeString& list :
         {QorGetEnv("QorStartupPath").value_or(""), QorCatalogs::GetProgramDirectory()})
        if (std::optional<QorUnicodeString> found = QorFindPath(relative, list))
            return *found;
    return iName;
}
