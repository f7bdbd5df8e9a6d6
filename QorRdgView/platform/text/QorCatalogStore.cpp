#include "platform/text/QorCatalogStore.h"

#include "platform/text/QorFileReader.h"
#include "platform/text/QorWarning.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>

namespace {

constexpr std::int64_t nanosecondsInSecond = 1'000'000'000;

std::int64_t ToNanoseconds(const timespec& iTime) {
    return iTime.tv_sec * nanosecondsInSecond + iTime.tv_nsec;
}

QorFileStamp MakeStamp(std::string iPath) {
    struct stat status = {};
    QorFileStamp stamp{.path = std::move(iPath)};
    if (stat(stamp.path.c_str(), &status) != 0)
        return stamp;
    stamp.inode = status.st_ino;
    stamp.size = status.st_size;
    stamp.modified = ToNanoseconds(status.st_mtim);
    stamp.changed = ToNanoseconds(status.st_ctim);
    return stamp;
}

std::vector<QorFileStamp> MakeStamps(std::vector<std::string> iPaths) {
    std::vector<QorFileStamp> stamps;
    stamps.reserve(iPaths.size());
    for (std::string& path : iPaths)
        stamps.push_back(MakeStamp(std::move(path)));
    return stamps;
}

/// Whether every file was last changed so long ago that another change would show in its times;
/// file systems count those in steps of some milliseconds.
bool AreSettled(const std::vector<QorFileStamp>& iStamps) {
    using std::chrono::nanoseconds;
    constexpr std::int64_t young = nanosecondsInSecond / 20;
    const auto now =
        std::chrono::duration_cast<nanoseconds>(std::chrono::system_clock::now().time_since_epoch())
            .count();
    return std::none_of(iStamps.begin(), iStamps.end(), [&](const QorFileStamp& iStamp) {
        return iStamp.size >= 0 && iStamp.changed > now - young;
    });
}

/// A file as it was read.
struct FileText {
    const std::string* path;
    std::string text;
    int error;
};

/// The files that are there; with \p iFirstOnly up to the first that can be read.
std::vector<FileText> ReadTexts(const std::vector<QorFileStamp>& iFiles, bool iFirstOnly) {
    std::vector<FileText> texts;
    for (const QorFileStamp& file : iFiles) {
        if (file.size < 0)
            continue;
        FileText& text = texts.emplace_back(FileText{.path = &file.path, .text = {}, .error = 0});
        text.error = QorReadFile(file.path, text.text);
        if (iFirstOnly && text.error == 0)
            break;
    }
    return texts;
}

/// A number that differs when a path, a text or an error does.
std::size_t Digest(const std::vector<FileText>& iTexts) {
    constexpr std::size_t prime = 1'000'003;
    std::size_t digest = 1;
    for (const FileText& file : iTexts)
        for (const std::size_t part :
             {std::hash<std::string>()(*file.path), std::hash<std::string>()(file.text),
              static_cast<std::size_t>(file.error)})
            digest = digest * prime + part;
    return digest;
}

void AddEntries(const FileText& iFile, QorCatalogEntries& ioEntries) {
    if (iFile.error == 0)
        QorReadCatalogText(iFile.text, *iFile.path, ioEntries);
    else if (iFile.error != ENOENT && iFile.error != ENOTDIR)
        QorWarn(*iFile.path + ": cannot be read: " + std::strerror(iFile.error));
}

} // namespace

const std::string* QorCatalogStore::Find(std::string_view iCatalog, std::string_view iKey) {
    const QorCatalogEntries& entries = GetCatalog(iCatalog).entries;
    const auto found = entries.find(iKey);
    return found == entries.end() ? nullptr : &found->second;
}

void QorCatalogStore::Clear() {
    last = nullptr;
    lastName = nullptr;
    catalogs.clear();
}

QorCatalogStore::Catalog& QorCatalogStore::GetCatalog(std::string_view iName) {
    if (lastName == nullptr || *lastName != iName) {
        auto found = catalogs.find(iName);
        if (found == catalogs.end())
            found = catalogs.try_emplace(std::string(iName)).first;
        lastName = &found->first;
        last = &found->second;
    }
    if (const std::uint64_t state = QorGetCatalogState(); last->checked != state) {
        last->checked = state;
        Compare(*lastName, *last);
    }
    return *last;
}

void QorCatalogStore::Compare(const std::string& iName, Catalog& ioCatalog) const {
    const bool isName = !iName.empty() && iName.front() != '.' &&
                        iName.find_first_of(std::string_view("/\0", 2)) == std::string::npos;
    std::vector<QorFileStamp> files =
        isName ? MakeStamps(lister(iName)) : std::vector<QorFileStamp>();
    if (ioCatalog.settled && files == ioCatalog.files)
        return;
    ioCatalog.settled = AreSettled(files);
    ioCatalog.files = std::move(files);
    Read(ioCatalog);
}

void QorCatalogStore::Read(Catalog& ioCatalog) const {
    const std::vector<FileText> texts = ReadTexts(ioCatalog.files, firstOnly);
    const std::size_t digest = Digest(texts);
    if (digest == ioCatalog.digest)
        return; // read again only because the files are young; the same warnings are not for twice
    ioCatalog.digest = digest;
    ioCatalog.entries.clear();
    for (const FileText& file : texts)
        AddEntries(file, ioCatalog.entries);
}
