#pragma once

#include "platform/system/QorEventLoop.h"
#include "platform/vis/QorNavigation3DViewer.h"
#include "workbench/app/DocumentWindow.h"
#include "workbench/app/FileDialogs.h"
#include "workbench/app/MainFrame.h"
#include "workbench/document/session/DocumentSession.h"

#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

namespace qor::app {

/// What a session calls on the program around it.
struct SessionHooks {
    /// Commands, titles and status are to be brought in step; once for many changes.
    std::function<void()> changed;
    /// All documents are closed and the program may end.
    std::function<void()> ended;
    /// A viewer shows a product, or another one.
    std::function<void(QorViewer& viewer)> shown;
};

/// The document that is open, its editor and windows, and what a person does with them: the file
/// commands with their dialogs, windows, drops, the end of the program. User-interface thread.
class Session
    : public document::DocumentHost
    , public QorEventSubscriber {
public:
    /// The others outlive it.
    Session(QorEventLoop& loop, MainFrame& frame, QorFrmLayout& layout, SessionHooks hooks);
    ~Session() override;
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// The current editor, window and viewer; null while no document is open.
    [[nodiscard]] DocumentEditor* editor() const;
    [[nodiscard]] DocumentWindow* window() const;
    [[nodiscard]] QorNavigation3DViewer* viewer() const;

    /// Whether a document is being read or written.
    [[nodiscard]] bool isBusy() const { return documents_->isBusy(); }

    [[nodiscard]] document::DocumentSession& documents() { return *documents_; }

    [[nodiscard]] const std::vector<std::filesystem::path>& recentFiles() const { return recent_; }

    // Commands. What fails is told to the person.

    void newDocument();
    void askOpen();
    void open(const std::filesystem::path& file);
    void openRecent(std::size_t index);
    /// What a program that died had not saved.
    void recover(const document::Recoverable& recoverable);
    void askImport();
    void save();
    void askSaveAs();
    void closeDocument();
    void newWindow();
    /// Closes the current window, and with the last one the document.
    void closeWindow();
    void nextWindow();
    /// Ends the reading or writing under way.
    void cancel();
    /// One document is open at a time: the first of the files is.
    void drop(const std::vector<QorUnicodeString>& files);
    /// Ends the program once the document may be left.
    void quit();

    /// Opens the file of the command line, or an empty document without one. \p ended is called
    /// once, with why it did not work or with nothing.
    void start(const std::filesystem::path& file,
               const std::function<void(const std::string& reason)>& ended);

    // What the document session asks for.

    void showDocument(document::Document& document) override;
    void askSavePath(document::Document& document,
                     std::function<void(std::optional<std::filesystem::path>)> answer) override;
    void tell(QorNotifyKind kind, const QorUnicodeString& text) override;

    void workChanged() override { changed(); }

private:
    using FileAnswer = std::function<void(std::optional<std::filesystem::path>)>;

    void ask(FileQuestion question, const std::filesystem::path& suggestion, FileAnswer answer);
    void openWindow(DocumentEditor& editor);
    void closeWindow(DocumentWindow& window);
    [[nodiscard]] document::DocumentSession::Finished telling();
    void finished(const document::Result<document::Document_var>& outcome);
    void importNext(std::deque<std::filesystem::path> files,
                    const document::Result<document::Document_var>& before);
    void changedCB(QorEventName event,
                   QorBaseUnknown* publisher,
                   QorNotification* notification,
                   QorSubscriberData data,
                   QorCallbackId cookie);
    void treeCB(QorEventName event,
                QorBaseUnknown* publisher,
                QorNotification* notification,
                QorSubscriberData data,
                QorCallbackId cookie);
    void listen();
    void changed();
    void refresh();
    void nameWindows(const DocumentEditor& editor) const;

    QorEventLoop& loop_;
    MainFrame& frame_;
    QorFrmLayout& layout_;
    SessionHooks hooks_;
    std::unique_ptr<document::DocumentSession> documents_;
    std::vector<std::filesystem::path> recent_;
    int lastWindow_ = 0;
    /// Lives as long as the session; posted work and file dialogs look whether it still does.
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
    bool refreshPosted_ = false;
};

} // namespace qor::app
