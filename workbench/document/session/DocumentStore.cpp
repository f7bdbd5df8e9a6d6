#include "workbench/document/session/DocumentStore.h"

#include "workbench/document/product/DatabaseFile.h"
#include "workbench/document/session/StoreSettings.h"
#include "workbench/document/session/StoreWork.h"

#include <algorithm>

namespace qor::document {

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::seconds heartbeat{1};

/// Progress that the document publishes too.
ProgressListener publishing(Document& document, ProgressListener listener) {
    return [alive = Document_var(&document),
            listener = std::move(listener)](int percent, const std::string& stage) {
        alive->dispatch(Document::DOCUMENT_PROGRESS,
                        QorMake<DocumentProgressNotification>(percent, stage).Get());
        if (listener)
            listener(percent, stage);
    };
}

} // namespace

/// What an opening worker gives.
struct DocumentStore::Opening {
    LoadedDocument loaded;
    bool isDocument = false;
    std::string readOnlyReason;
    std::shared_ptr<DocumentLock> lock;
    std::shared_ptr<RecoveryFile> recovery;
};

DocumentStore::DocumentStore(QorEventLoop& loop, StoreOptions options)
    : loop_(loop), options_(std::move(options)), lastAutosave_(loop.Now()), workers_(loop) {
    heart_ = loop_.StartTimer(
        heartbeat, [this] { beat(); }, true);
}

DocumentStore::~DocumentStore() {
    loop_.StopTimer(heart_);
}

OperationPtr
DocumentStore::openAsync(const fs::path& file, ProgressListener progress, Opened done) {
    auto work = [file, import = importSettings(options_.import),
                 lock = ownLock(file)](const WorkContext& context) -> Result<Opening> {
        Opening opening;
        const Result<bool> kind = holdsDocument(file);
        if (!kind)
            return kind.failure();
        opening.isDocument = kind.value();
        if (!opening.isDocument) {
            Result<LoadedDocument> imported = importModel(file, import, context);
            if (!imported)
                return imported.failure();
            opening.loaded = std::move(imported.value());
            return opening;
        }
        opening.readOnlyReason = whyReadOnly(file);
        opening.lock = lock;
        if (opening.readOnlyReason.empty() && !lock) {
            Result<std::shared_ptr<DocumentLock>> taken = takeLock(file, context);
            if (!taken)
                return taken.failure();
            opening.lock = taken.value();
        }
        Result<LoadedDocument> read = readWithProgress(file, true, context);
        if (!read)
            return read.failure();
        opening.loaded = std::move(read.value());
        return opening;
    };
    return workers_.run<Opening>(std::move(work), std::move(progress),
                                 [this, file, done = std::move(done)](Result<Opening> opening) {
                                     if (!opening)
                                         return done(opening.failure());
                                     done(finishOpening(opening.value(), file));
                                 });
}

OperationPtr DocumentStore::recoverAsync(const Recoverable& recoverable,
                                         ProgressListener progress,
                                         Opened done) {
    auto work = [recoverable](const WorkContext& context) -> Result<Opening> {
        Opening opening;
        opening.recovery = RecoveryFile::adopt(recoverable.file);
        if (!opening.recovery)
            return Failure{FaultKind::Input,
                           recoverable.file.string() + ": another program is recovering it"};
        Result<LoadedDocument> read = readWithProgress(recoverable.file, true, context);
        if (!read) {
            opening.recovery->keep();
            return read.failure();
        }
        opening.loaded = std::move(read.value());
        if (!recoverable.path.empty()) {
            opening.readOnlyReason = whyReadOnly(recoverable.path);
            if (Result<std::shared_ptr<DocumentLock>> taken = takeLock(recoverable.path, context))
                opening.lock = taken.value();
        }
        return opening;
    };
    return workers_.run<Opening>(
        std::move(work), std::move(progress),
        [this, recoverable, done = std::move(done)](Result<Opening> opening) {
            if (!opening)
                return done(opening.failure());
            Document_var document = finishOpening(opening.value(), recoverable.path);
            document->setModified();
            find(*document)->recoveredChange = document->changeCount();
            done(document);
        });
}

Document_var DocumentStore::finishOpening(Opening& opening, const fs::path& file) {
    const bool hasFile = opening.isDocument || (opening.recovery && !file.empty());
    tellWarnings(opening.loaded);
    auto document = QorMake<Document>(std::move(opening.loaded));
    if (hasFile) {
        document->setPath(fs::absolute(file).lexically_normal());
        document->setReadOnlyReason(opening.readOnlyReason);
    }
    Entry entry;
    entry.document = document;
    entry.lock = opening.lock;
    entry.recovery = opening.recovery;
    entries_.push_back(std::move(entry));
    if (opening.isDocument)
        checkInBackground(entries_.back());
    return document;
}

void DocumentStore::tellWarnings(const LoadedDocument& loaded) const {
    if (warningListener_ && !loaded.warnings.empty())
        warningListener_(loaded.warnings);
}

void DocumentStore::checkInBackground(Entry& entry) {
    const fs::path file = entry.document->path();
    entry.check = workers_.run<std::string>(
        [file](const WorkContext& context) -> Result<std::string> {
            return findDamage(file, context.stop());
        },
        {},
        [this, file](const Result<std::string>& damage) {
            if (damage && !damage.value().empty() && damageListener_)
                damageListener_(file.string() + ": the file is damaged: " + damage.value());
        });
}

OperationPtr DocumentStore::importAsync(Document& document,
                                        const fs::path& file,
                                        ProgressListener progress,
                                        Finished done) {
    auto work = [file, import = importSettings(options_.import)](
                    const WorkContext& context) -> Result<LoadedDocument> {
        const Result<bool> isDocument = holdsDocument(file);
        if (!isDocument)
            return isDocument.failure();
        if (!isDocument.value())
            return importModel(file, import, context);
        return readWithProgress(file, true, context);
    };
    return workers_.run<LoadedDocument>(std::move(work), publishing(document, std::move(progress)),
                                        [this, alive = Document_var(&document),
                                         done = std::move(done)](Result<LoadedDocument> loaded) {
                                            if (!loaded)
                                                return done(loaded.failure());
                                            tellWarnings(loaded.value());
                                            alive->merge(std::move(loaded.value()));
                                            done(Done{});
                                        });
}

OperationPtr DocumentStore::saveAsync(Document& document,
                                      const fs::path& file,
                                      ProgressListener progress,
                                      Finished done) {
    adopt(document);
    const fs::path target = fs::absolute(file).lexically_normal();
    auto lockHolder = std::make_shared<std::shared_ptr<DocumentLock>>(ownLock(target));
    auto snapshot = std::make_shared<const DocumentSnapshot>(snapshotFor(document));
    auto work = [target, snapshot, lockHolder](const WorkContext& context) -> Result<Done> {
        if (const std::string reason = whyReadOnly(target); !reason.empty())
            return Failure{FaultKind::Machine, target.string() + ": not saved: " + reason};
        if (!*lockHolder) {
            Result<std::shared_ptr<DocumentLock>> taken = takeLock(target, context);
            if (!taken)
                return taken.failure();
            *lockHolder = taken.value();
        }
        return writeWithProgress(target, *snapshot, context);
    };
    auto finish = [this, alive = Document_var(&document), target, lockHolder,
                   change = document.changeCount(),
                   done = std::move(done)](const Result<Done>& written) {
        if (Entry* entry = find(*alive))
            entry->save.reset();
        if (written)
            finishSave(*alive, target, *lockHolder, change);
        done(written);
    };
    OperationPtr save = workers_.run<Done>(
        std::move(work), publishing(document, std::move(progress)), std::move(finish));
    find(document)->save = save;
    return save;
}

void DocumentStore::finishSave(Document& document,
                               const fs::path& file,
                               std::shared_ptr<DocumentLock> lock,
                               std::uint64_t change) {
    document.setPath(file);
    document.setReadOnlyReason({});
    if (document.changeCount() == change)
        document.setModified(false);
    if (Entry* entry = find(document)) {
        entry->lock = std::move(lock);
        if (!document.isModified())
            entry->recovery.reset();
        entry->recoveredChange = 0;
    }
    document.dispatch(Document::DOCUMENT_SAVED);
}

void DocumentStore::adopt(Document& document) {
    if (find(document) != nullptr)
        return;
    Entry entry;
    entry.document = &document;
    entries_.push_back(std::move(entry));
}

void DocumentStore::release(Document& document) {
    Entry* entry = find(document);
    if (entry == nullptr)
        return;
    for (const OperationPtr& operation : {entry->autosave, entry->check})
        if (operation)
            operation->cancel();
    const Document_var alive(&document);
    entries_.remove_if([&](const Entry& one) { return one.document.Get() == &document; });
}

bool DocumentStore::isSaving(const Document& document) const {
    return std::any_of(entries_.begin(), entries_.end(), [&](const Entry& entry) {
        return entry.document.Get() == &document && entry.save;
    });
}

DocumentStore::Entry* DocumentStore::find(const Document& document) {
    const auto found = std::find_if(entries_.begin(), entries_.end(), [&](const Entry& entry) {
        return entry.document.Get() == &document;
    });
    return found == entries_.end() ? nullptr : &*found;
}

std::shared_ptr<DocumentLock> DocumentStore::ownLock(const fs::path& file) {
    const fs::path wanted = DocumentLock::fileOf(file);
    for (const Entry& entry : entries_)
        if (entry.lock && entry.lock->file() == wanted)
            return entry.lock;
    return nullptr;
}

} // namespace qor::document
