#pragma once

#include "platform/component/QorEventSubscriber.h"
#include "platform/frame/QorFrmLayout.h"
#include "workbench/document/session/DocumentHost.h"
#include "workbench/document/session/DocumentStore.h"
#include "workbench/document/session/RecentFiles.h"

namespace qor::document {

/// What a person does with documents: new, open, import, save, close, recover; shared by commands
/// and the automation port. There is one document at a time in the current layout: opening another
/// closes it, and a modified one asks first (box "saveNotify": yes saves, no loses the changes,
/// cancel stays). Long work shows its progress in the application frame's status bar; one of it
/// runs at a time. Texts are in the message catalog "DocumentSession".
/// User-interface thread.
class DocumentSession : public QorEventSubscriber {
public:
    /// Called once with the document that is current then, or with why it did not work; a cancel
    /// is a failure for which isCancelled holds. May be empty.
    using Finished = std::function<void(const Result<Document_var>& outcome)>;

    /// \p loop, \p layout and \p host outlive it.
    DocumentSession(QorEventLoop& loop,
                    QorFrmLayout& layout,
                    DocumentHost& host,
                    StoreOptions options);
    ~DocumentSession();
    DocumentSession(const DocumentSession&) = delete;
    DocumentSession& operator=(const DocumentSession&) = delete;
    DocumentSession(DocumentSession&&) = delete;
    DocumentSession& operator=(DocumentSession&&) = delete;

    /// The document of the current editor, or null.
    [[nodiscard]] Document* current() const;

    void newDocument(const Finished& finished);

    /// A document or a model. The one that is open stays until this one has been read.
    void open(const std::filesystem::path& file, const Finished& finished);

    /// Into the current document, or into a new one when there is none.
    void importInto(const std::filesystem::path& file, const Finished& finished);

    /// Under its own path; asks for one when it has none.
    void save(const Finished& finished);

    void saveAs(const std::filesystem::path& file, const Finished& finished);

    /// As the close box of the current window: one of several closes alone, the last one closes the
    /// document. The outcome holds the document.
    void close(const Finished& finished);

    /// The document with all its windows.
    void closeDocument(const Finished& finished);

    /// Ends the open, import or save that runs; false when nothing does. The program's frame, which
    /// alone hears of a person's Cancel beside the progress, calls it.
    bool cancel();

    [[nodiscard]] bool isBusy() const { return operation_ && operation_->isRunning(); }

    /// What an earlier program that died has left; ask at the start.
    [[nodiscard]] std::vector<Recoverable> listRecoverable() const;
    void recover(const Recoverable& recoverable, const Finished& finished);

    [[nodiscard]] DocumentStore& store() { return store_; }

private:
    enum class Answer { Save, Lose, Stay };

    [[nodiscard]] Answer askAboutChanges(Document& document) const;
    void leaveCurrent(const std::function<void()>& proceed, const Finished& finished);
    void begin(const QorUnicodeString& text);
    [[nodiscard]] ProgressListener progress() const;
    [[nodiscard]] bool refuseBusy(const Finished& finished) const;
    void end();
    void replaceCurrent(Document& document);
    void closeEditorOf(const Document& document);
    [[nodiscard]] DocumentStore::Opened opened(const Finished& finished);
    void editorClosedCB(QorEventName event,
                        QorBaseUnknown* publisher,
                        QorNotification* notification,
                        QorSubscriberData data,
                        QorCallbackId cookie);

    QorFrmLayout& layout_;
    DocumentHost& host_;
    OperationPtr operation_;
    QorUnicodeString working_; ///< what the status bar says while it runs
    DocumentStore store_;
};

} // namespace qor::document
