#include "workbench/document/session/StoreWork.h"

#include "platform/system/QorClock.h"

#include <chrono>
#include <thread>

namespace qor::document {

namespace fs = std::filesystem;

namespace {

constexpr const char* documentSuffix = ".qor";
constexpr int lockAttempts = 100;
constexpr std::chrono::milliseconds betweenAttempts{20};

Failure cancelled() {
    return {FaultKind::Input, cancelledText};
}

ProductProgress percentOf(const WorkContext& context, const char* stage) {
    return [&context, stage](double fraction) {
        context.report(static_cast<int>(100.0 * fraction), stage);
    };
}

} // namespace

Result<std::shared_ptr<DocumentLock>> takeLock(const fs::path& file, const WorkContext& context) {
    for (int attempt = 0;; ++attempt) {
        Result<std::unique_ptr<DocumentLock>> lock = DocumentLock::acquire(file);
        if (lock)
            return std::shared_ptr<DocumentLock>(std::move(lock.value()));
        if (attempt == lockAttempts || !DocumentLock::isHeldByThisProgram(file))
            return lock.failure();
        if (context.stop().stop_requested())
            return cancelled();
        std::this_thread::sleep_for(betweenAttempts);
    }
}

Result<bool> holdsDocument(const fs::path& file) {
    std::error_code error;
    if (!fs::exists(file, error))
        return false; // the import says so
    // A pipe may never say what it holds.
    if (!fs::is_regular_file(file, error))
        return Failure{FaultKind::Input, file.string() + ": it is not a file"};
    const bool isDocument = looksLikeDocument(file);
    if (!isDocument && file.extension() == documentSuffix)
        return Failure{FaultKind::Input,
                       file.string() + ": it is not a document of this program, or it is damaged"};
    return isDocument;
}

Result<LoadedDocument>
readWithProgress(const fs::path& file, bool quickCheck, const WorkContext& context) {
    Result<LoadedDocument> read = readDocument(
        file,
        {.quickCheck = quickCheck, .progress = percentOf(context, "open"), .stop = context.stop()});
    if (!read && context.stop().stop_requested())
        return cancelled();
    return read;
}

Result<Done> writeWithProgress(const fs::path& file,
                               const DocumentSnapshot& snapshot,
                               const WorkContext& context) {
    return writeDocument(file, snapshot, percentOf(context, "save"), context.stop());
}

DocumentSnapshot snapshotFor(const Document& document) {
    QorTimeStamp now;
    QorGetCurrentTime(&now);
    DocumentSnapshot snapshot = document.takeSnapshot();
    snapshot.info.savedAt = now.seconds;
    return snapshot;
}

} // namespace qor::document
