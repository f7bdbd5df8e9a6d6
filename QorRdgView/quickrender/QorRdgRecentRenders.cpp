#include "quickrender/QorRdgRecentRenders.h"

#include "platform/frame/QorFrmDesktop.h"
#include "platform/system/QorEnvironment.h"
#include "platform/system/QorExitHooks.h"
#include "platform/system/QorPaths.h"
#include "platform/system/QorTrace.h"
#include "scenes/QorRdgWorkers.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <deque>
#include <filesystem>
#include <mutex>
#include <new>
#include <optional>
#include <utility>

namespace {

constexpr std::string_view prefix = "render-";
constexpr std::string_view suffix = ".png";
constexpr unsigned onlyMine = 0700;
constexpr mode_t onlyMineToWrite = 0600;
constexpr int beforeTheWorkersGo = 1;
constexpr std::size_t mostWaitingBytes = std::size_t{1} << 30U;

/// A picture that waits to be written. Immutable, so that a worker may read it.
struct Waiting {
    QorPixelImage_var image;
    QorRdgWindow region;
    std::string directory;

    [[nodiscard]] std::size_t Bytes() const { return image->GetPixels()->size(); }
};

std::mutex queueMutex; ///< guards `queue`, `hired` and `hooked`
std::deque<Waiting> queue;
bool hired = false; ///< whether a worker will write all that is queued
bool hooked = false;
std::mutex writeMutex; ///< one writer at a time, so that numbers follow each other

std::string DataDirectory() {
    const std::string given = QorGetEnv("XDG_DATA_HOME").value_or("").Str();
    if (given.starts_with('/'))
        return given;
    std::string home = QorGetEnv("HOME").value_or("").Str();
    if (const passwd* user = home.empty() ? getpwuid(geteuid()) : nullptr)
        home = user->pw_dir;
    return home.empty() ? home : home + "/.local/share";
}

/// The number in a file's name; nothing for files that are none of ours.
std::optional<unsigned long> NumberOf(std::string_view iName) {
    if (!iName.starts_with(prefix) || !iName.ends_with(suffix))
        return std::nullopt;
    iName.remove_prefix(prefix.size());
    iName.remove_suffix(suffix.size());
    unsigned long number = 0;
    const auto [end, error] = std::from_chars(iName.data(), iName.data() + iName.size(), number);
    if (error != std::errc() || end != iName.data() + iName.size())
        return std::nullopt;
    return number;
}

struct Kept {
    unsigned long number;
    std::string path;
};

/// Our files in a folder, the highest number first.
std::vector<Kept> Look(const std::string& iDirectory) {
    std::vector<Kept> kept;
    std::error_code missing;
    for (const auto& entry : std::filesystem::directory_iterator(iDirectory, missing))
        if (const auto number = NumberOf(entry.path().filename().string()))
            kept.push_back({*number, entry.path().string()});
    std::sort(kept.begin(), kept.end(),
              [](const Kept& iOne, const Kept& iOther) { return iOne.number > iOther.number; });
    return kept;
}

/// Makes an empty file of the next number that nobody else can take or read; empty when that fails.
std::string Reserve(const std::string& iDirectory) {
    constexpr int attempts = 1000;
    const std::vector<Kept> kept = Look(iDirectory);
    unsigned long number = kept.empty() ? 0 : kept.front().number;
    for (int i = 0; i < attempts; ++i) {
        std::string digits = std::to_string(++number);
        constexpr std::size_t width = 6;
        digits.insert(0, width - std::min(width, digits.size()), '0');
        std::string path = iDirectory + "/" + std::string(prefix) + digits + std::string(suffix);
        const int file =
            open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, onlyMineToWrite);
        if (file >= 0) {
            close(file);
            return path;
        }
        if (errno != EEXIST)
            break;
    }
    return {};
}

void RemoveOld(const std::string& iDirectory) {
    const std::vector<Kept> kept = Look(iDirectory);
    for (std::size_t i = QorRdgRecentRenders::most; i < kept.size(); ++i)
        unlink(kept[i].path.c_str());
}

void Write(const Waiting& iOne) {
    if (!QorSucceeded(QorCreateDirectory(iOne.directory, onlyMine)) ||
        chmod(iOne.directory.c_str(), onlyMine) != 0)
        return;
    const QorRdgWindow& region = iOne.region;
    const QorPixelImage_var part =
        QorAdopt(iOne.image->ExtractRegion(region.x1, region.y1, region.x2, region.y2));
    const std::string path = part ? Reserve(iOne.directory) : std::string();
    if (path.empty())
        return;
    QorUnicodeString error;
    if (part->WriteToFile("PNG", path, &error) != 0) {
        QorTrace(1, "(QorRdgRecentRenders::Write) %s\n", error.CastToCharPtr());
        unlink(path.c_str());
    }
    RemoveOld(iOne.directory);
}

std::optional<Waiting> Take() {
    const std::scoped_lock lock(queueMutex);
    if (queue.empty()) {
        hired = false;
        return std::nullopt;
    }
    Waiting next = std::move(queue.front());
    queue.pop_front();
    return next;
}

/// Writes the picture that has waited longest; whether there was one.
bool WriteNext() {
    const std::scoped_lock lock(writeMutex);
    const std::optional<Waiting> next = Take();
    if (!next)
        return false;
    try {
        Write(*next);
    } catch (const std::bad_alloc&) {
        QorTrace(1, "(QorRdgRecentRenders::Write) there is not enough memory\n");
    }
    return true;
}

/// Queues a picture; those that would not stay anyway, or take too much memory, go. Whether a
/// worker must be found for it: there is one at a time, so that the others stay free.
bool Queue(Waiting iOne) {
    const std::scoped_lock lock(queueMutex);
    queue.push_back(std::move(iOne));
    std::size_t bytes = 0;
    for (const Waiting& one : queue)
        bytes += one.Bytes();
    while (queue.size() > QorRdgRecentRenders::most ||
           (queue.size() > 1 && bytes > mostWaitingBytes)) {
        bytes -= queue.front().Bytes();
        queue.pop_front();
    }
    if (!std::exchange(hooked, true))
        QorCallOnExit(
            [] {
                {
                    const std::scoped_lock again(queueMutex);
                    hooked = false;
                }
                QorRdgRecentRenders::Finish();
            },
            beforeTheWorkersGo);
    return !std::exchange(hired, true);
}

} // namespace

QorUnicodeString QorRdgRecentRenders::GetDirectory() {
    const std::string data = DataDirectory();
    return data.empty() ? data : data + "/qorworkbench/recent-renders";
}

void QorRdgRecentRenders::Add(const QorPixelImage& iImage,
                              const QorRdgWindow& iRegion,
                              double iPixelsPerInch) {
    QorTrace(4, "(QorRdgRecentRenders::Add) \n");
    const std::string directory = GetDirectory().Str();
    if (directory.empty() || iImage.IsEmpty())
        return;
    const auto image = QorMake<QorPixelImage>(iImage);
    image->SetPixelsPerInch(iPixelsPerInch);
    if (!Queue({image, iRegion, directory}))
        return;
    QorRdgWorkers::RunAside([]() -> QorRdgWorkers::Delivery {
        while (WriteNext()) {
        }
        return {};
    });
}

std::vector<QorRdgRecentRenders::Picture> QorRdgRecentRenders::List() {
    constexpr std::int64_t nanosecondsInSecond = 1'000'000'000;
    std::vector<Picture> pictures;
    for (const Kept& one : Look(GetDirectory().Str())) {
        QorFileInfo info;
        // An empty file is one that is being written.
        if (QorGetFileInfo(one.path, &info) == 0 && info.isRegular && info.sizeInBytes > 0)
            pictures.push_back({one.path, info.modifiedInNanoseconds / nanosecondsInSecond});
    }
    return pictures;
}

bool QorRdgRecentRenders::Open(const QorUnicodeString& iPath) {
    QorTrace(4, "(QorRdgRecentRenders::Open) \n");
    QorFrmDesktop* desktop = QorFrmDesktop::GetInstalled();
    return desktop != nullptr && QorGetFileInfo(iPath) == 0 && desktop->OpenDocument(iPath);
}

void QorRdgRecentRenders::Finish() {
    while (WriteNext()) {
    }
    const std::scoped_lock waits(writeMutex); // for the worker that writes the last one
}
