#pragma once

#include "platform/system/QorEventLoop.h"
#include "workbench/document/Document.h"
#include "workbench/document/session/ImportTask.h"
#include "workbench/document/session/Recovery.h"
#include "workbench/document/session/Workers.h"

#include <list>

namespace qor::document {

struct StoreOptions {
    ImportOptions import;
    std::filesystem::path recoveryFolder = defaultRecoveryFolder();
};

/// Opens, imports and saves documents on workers, keeps other programs from the files of those that
/// are open, and saves what is modified into recovery files now and then. No window and no question
/// to a person: see DocumentSession for those. User-interface thread.
///
/// Settings repository "documents": AutosaveInterval (seconds, 120; 0: never), ImportTimeLimit
/// (seconds, 0: none), ImportMemoryLimit (MB, 0: the computer's memory), ImportDeflection (mm, 0:
/// relative to each part), ImportAngle (degrees, 0: the import's default).
class DocumentStore {
public:
    using Opened = std::function<void(Result<Document_var>)>;
    using Finished = std::function<void(Result<Done>)>;

    /// \p loop outlives it.
    DocumentStore(QorEventLoop& loop, StoreOptions options);

    /// Cancels what runs without an outcome, frees the files and removes their recovery files.
    ~DocumentStore();
    DocumentStore(const DocumentStore&) = delete;
    DocumentStore& operator=(const DocumentStore&) = delete;
    DocumentStore(DocumentStore&&) = delete;
    DocumentStore& operator=(DocumentStore&&) = delete;

    /// Opens a document, or a model as a new document without a path that is called as the model. A
    /// document that may not be written is opened all the same and says so (readOnlyReason); one
    /// that another program has open is refused. The full check of the file goes on afterwards.
    OperationPtr
    openAsync(const std::filesystem::path& file, ProgressListener progress, Opened done);

    /// Opens what a dead program left: modified, with the path of its own file. Its recovery file
    /// stays until the document is saved or released.
    OperationPtr
    recoverAsync(const Recoverable& recoverable, ProgressListener progress, Opened done);

    /// Puts a model, or another document's product, into \p document, which is untouched until then
    /// and if that fails. Dispatches DOCUMENT_PROGRESS on the way.
    OperationPtr importAsync(Document& document,
                             const std::filesystem::path& file,
                             ProgressListener progress,
                             Finished done);

    /// Saves a snapshot of \p document; if that succeeds, \p file is its path from then on, and it
    /// is unmodified unless it was changed meanwhile. Dispatches DOCUMENT_PROGRESS and
    /// DOCUMENT_SAVED.
    OperationPtr saveAsync(Document& document,
                           const std::filesystem::path& file,
                           ProgressListener progress,
                           Finished done);

    /// A new document: from now on it is saved for recovery.
    void adopt(Document& document);

    /// The document is closed: its file is free, its recovery file goes.
    void release(Document& document);

    /// Whether a save of \p document runs.
    [[nodiscard]] bool isSaving(const Document& document) const;

    /// Whether one for recovery runs.
    [[nodiscard]] bool isAutosaving(const Document& document) const;

    /// Told what the import of a model left out or mended, before its outcome is given; each is a
    /// sentence that names the model, and there is at least one.
    using WarningListener = std::function<void(const std::vector<std::string>& warnings)>;

    void setWarningListener(WarningListener listener) { warningListener_ = std::move(listener); }

    /// Told when the full check of a file that was opened finds damage; the text names the file.
    void setDamageListener(std::function<void(const std::string& text)> listener) {
        damageListener_ = std::move(listener);
    }

    /// Saves every modified document into its recovery file; done from time to time.
    void autosave();

    [[nodiscard]] const std::filesystem::path& recoveryFolder() const {
        return options_.recoveryFolder;
    }

private:
    struct Entry {
        Document_var document;
        std::shared_ptr<DocumentLock> lock; ///< null: read-only, or without a path
        std::shared_ptr<RecoveryFile> recovery;
        std::uint64_t recoveredChange = 0; ///< what the recovery file holds
        OperationPtr save;
        OperationPtr autosave;
        OperationPtr check;
    };

    struct Opening;

    [[nodiscard]] Entry* find(const Document& document);
    [[nodiscard]] std::shared_ptr<DocumentLock> ownLock(const std::filesystem::path& file);
    [[nodiscard]] Document_var finishOpening(Opening& opening, const std::filesystem::path& file);
    void tellWarnings(const LoadedDocument& loaded) const;
    void checkInBackground(Entry& entry);
    void autosave(Entry& entry);
    void finishSave(Document& document,
                    const std::filesystem::path& file,
                    std::shared_ptr<DocumentLock> lock,
                    std::uint64_t change);
    void beat();

    QorEventLoop& loop_;
    const StoreOptions options_;
    std::list<Entry> entries_;
    std::function<void(const std::string&)> damageListener_;
    WarningListener warningListener_;
    QorTimerId heart_ = 0;
    QorEventLoop::Clock::time_point lastAutosave_;
    Workers workers_; ///< last, so that it ends first
};

} // namespace qor::document
