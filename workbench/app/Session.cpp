#include "workbench/app/Session.h"

#include "platform/text/QorMsgCatalog.h"
#include "workbench/app/ProgramResources.h"
#include "workbench/session/Settings.h"

#include <algorithm>

namespace qor::app {

namespace fs = std::filesystem;
using document::Document;
using document::Document_var;
using document::Result;

namespace {

constexpr const char* treeKey = "ProductTree";

QorUnicodeString message(const char* key, const QorMsgParameters& parameters = {}) {
    return QorMsgCatalog::BuildMessage("MainFrame", key, parameters);
}

/// qorimport stands beside the program.
fs::path importProgram() {
    std::error_code missing;
    const fs::path own = fs::read_symlink("/proc/self/exe", missing);
    return missing ? fs::path("qorimport") : own.parent_path() / "qorimport";
}

document::StoreOptions storeOptions() {
    document::StoreOptions options;
    options.import.program = importProgram();
    return options;
}

/// A number with narrow gaps that do not break between its thousands.
std::string grouped(std::uint64_t number) {
    std::string text = std::to_string(number);
    for (auto place = static_cast<std::ptrdiff_t>(text.size()) - 3; place > 0; place -= 3)
        text.insert(static_cast<std::size_t>(place), "\u202f");
    return text;
}

/// "18 parts · 24 310 triangles · mm"
QorUnicodeString factsOf(const Document& document) {
    const auto& nodes = document.product().nodes();
    const auto parts = std::count_if(nodes.begin(), nodes.end(),
                                     [](const auto& node) { return node->children().empty(); });
    if (parts == 0)
        return {};
    return message(parts == 1 ? "FactsOfOne" : "Facts",
                   {grouped(static_cast<std::uint64_t>(parts)),
                    grouped(document.product().countTriangles()), document.unit().name});
}

} // namespace

Session::Session(QorEventLoop& loop, MainFrame& frame, QorFrmLayout& layout, SessionHooks hooks)
    : loop_(loop)
    , frame_(frame)
    , layout_(layout)
    , hooks_(std::move(hooks))
    , documents_(std::make_unique<document::DocumentSession>(loop, layout, *this, storeOptions())) {
    for (const QorEventName& event :
         {QorFrmEditor::EDITOR_ACTIVATED, QorFrmEditor::EDITOR_CLOSE_ENDED,
          QorFrmWindow::VIEWER_ACTIVATED, QorFrmWindow::WINDOW_DELETED})
        layout_.GetCallbackManager()->AddCallback(this, event, &Session::changedCB);
    recent_ = document::RecentFiles::list();
}

Session::~Session() = default;

DocumentEditor* Session::editor() const {
    return dynamic_cast<DocumentEditor*>(layout_.GetCurrentEditor());
}

DocumentWindow* Session::window() const {
    return dynamic_cast<DocumentWindow*>(layout_.GetCurrentWindow());
}

QorNavigation3DViewer* Session::viewer() const {
    const DocumentWindow* current = window();
    return current != nullptr ? &current->viewer() : nullptr;
}

void Session::start(const fs::path& file,
                    const std::function<void(const std::string& reason)>& ended) {
    const auto tellEnd = [this, ended](const Result<Document_var>& outcome) {
        changed();
        const std::string reason =
            outcome || isCancelled(outcome.failure()) ? std::string() : outcome.failure().text;
        // After what changed() has posted: whoever waits for the end finds the commands in step.
        loop_.Post(
            [alive = std::weak_ptr<bool>(alive_), ended, reason] {
                if (!alive.expired())
                    ended(reason);
            },
            QorEventLoop::Scope::AnyDepth);
    };
    if (file.empty())
        documents_->newDocument(tellEnd);
    else
        documents_->open(fs::absolute(file), tellEnd);
    changed();
}

/// What follows an operation that a person began.
document::DocumentSession::Finished Session::telling() {
    return [this](const Result<Document_var>& outcome) {
        finished(outcome);
    };
}

void Session::finished(const Result<Document_var>& outcome) {
    if (!outcome && !isCancelled(outcome.failure()))
        tell(QorNotifyKind::Error, outcome.failure().text);
    changed();
}

void Session::newDocument() {
    documents_->newDocument(telling());
}

void Session::askOpen() {
    ask(FileQuestion::Open, {}, [this](const std::optional<fs::path>& file) {
        if (file)
            open(*file);
    });
}

void Session::open(const fs::path& file) {
    documents_->open(file, telling());
    changed();
}

void Session::openRecent(std::size_t index) {
    if (index < recent_.size())
        open(fs::path(recent_[index]));
}

void Session::recover(const document::Recoverable& recoverable) {
    documents_->recover(recoverable, telling());
    changed();
}

void Session::askImport() {
    ask(FileQuestion::Import, {}, [this](const std::optional<fs::path>& file) {
        if (file)
            documents_->importInto(*file, telling());
        changed();
    });
}

void Session::save() {
    documents_->save(telling());
    changed();
}

void Session::askSaveAs() {
    if (editor() == nullptr)
        return;
    askSavePath(editor()->document(), [this](const std::optional<fs::path>& file) {
        if (file)
            documents_->saveAs(*file, telling());
        changed();
    });
}

void Session::closeDocument() {
    documents_->closeDocument(telling());
}

void Session::cancel() {
    documents_->cancel();
}

/// The first of several is opened, the others come into the same document.
void Session::drop(const std::vector<QorUnicodeString>& files) {
    std::deque<fs::path> others;
    for (const QorUnicodeString& file : files)
        others.emplace_back(file.Str());
    if (others.empty())
        return;
    const fs::path first = others.front();
    others.pop_front();
    documents_->open(first, [this, others](const Result<Document_var>& outcome) {
        importNext(others, outcome);
    });
    changed();
}

void Session::importNext(std::deque<fs::path> files, const Result<Document_var>& before) {
    finished(before);
    if (!before || files.empty())
        return;
    const fs::path next = files.front();
    files.pop_front();
    documents_->importInto(next,
                           [this, files = std::move(files)](const Result<Document_var>& outcome) {
                               importNext(files, outcome);
                           });
    changed();
}

void Session::quit() {
    if (isBusy())
        cancel();
    if (editor() == nullptr) {
        hooks_.ended();
        return;
    }
    documents_->closeDocument([this](const Result<Document_var>& outcome) {
        if (outcome)
            hooks_.ended();
        else
            finished(outcome);
    });
}

void Session::showDocument(Document& document) {
    auto* editor = new DocumentEditor(&layout_, &document);
    openWindow(*editor);
}

void Session::openWindow(DocumentEditor& editor) {
    auto* window =
        new DocumentWindow(&frame_, "documentWindow" + std::to_string(++lastWindow_), editor,
                           [this](DocumentWindow& closed) { closeWindow(closed); });
    window->viewer().SetTreeDisplay(session::setting(treeKey, "on") == "on");
    nameWindows(editor);
    layout_.SetCurrentWindow(window);
    hooks_.shown(window->viewer());
    listen();
    changed();
}

void Session::newWindow() {
    if (editor() == nullptr)
        return;
    const DocumentWindow* from = window();
    const QorView view = QorView::Of(*from->viewer().GetMain3DViewpoint());
    const bool tree = from->viewer().IsTreeDisplayed();
    openWindow(*editor());
    view.ApplyTo(*viewer()->GetMain3DViewpoint());
    viewer()->SetTreeDisplay(tree);
    viewer()->GetMain3DViewpoint()->Modified();
}

void Session::closeWindow() {
    if (DocumentWindow* current = window())
        closeWindow(*current);
}

void Session::closeWindow(DocumentWindow& window) {
    if (layout_.GetWindowsOf(window.GetEditor()).size() > 1)
        layout_.CloseWindow(&window);
    else
        closeDocument();
}

void Session::nextWindow() {
    const auto& windows = layout_.GetWindows();
    const auto place = std::find(windows.begin(), windows.end(), layout_.GetCurrentWindow());
    if (place == windows.end())
        return;
    layout_.SetCurrentWindow(place + 1 != windows.end() ? *(place + 1) : windows.front());
}

void Session::askSavePath(Document& document, std::function<void(std::optional<fs::path>)> answer) {
    fs::path suggestion = document.path();
    if (suggestion.empty())
        suggestion = fs::path(document.title().Str()).filename().stem().string() + ".qor";
    ask(FileQuestion::Save, suggestion, std::move(answer));
}

/// Dialogs that are open at the end of the program outlive the session, and answer then.
void Session::ask(FileQuestion question, const fs::path& suggestion, FileAnswer answer) {
    askFile(frame_, question, suggestion,
            [alive = std::weak_ptr<bool>(alive_),
             answer = std::move(answer)](const std::optional<fs::path>& file) {
                if (!alive.expired())
                    answer(file);
            });
}

/// Once the loop turns: the box wants a turn of it, and whoever tells may be in the middle of
/// something.
void Session::tell(QorNotifyKind kind, const QorUnicodeString& text) {
    loop_.Post([this, alive = std::weak_ptr<bool>(alive_), kind, text] {
        if (alive.expired())
            return;
        auto* box = new QorFrmNotify(&frame_, "errNotify", kind);
        const QorVar<QorFrmNotify> kept(box);
        box->DisplayBlocked(text,
                            message(kind == QorNotifyKind::Error ? "ErrorTitle" : "WarningTitle"));
        box->RequestDelayedDestruction();
    });
}

void Session::changedCB(QorEventName /*event*/,
                        QorBaseUnknown* /*publisher*/,
                        QorNotification* /*notification*/,
                        QorSubscriberData /*data*/,
                        QorCallbackId /*cookie*/) {
    changed();
}

/// The tree of the next window is as a person left the last.
void Session::treeCB(QorEventName event,
                     QorBaseUnknown* /*publisher*/,
                     QorNotification* /*notification*/,
                     QorSubscriberData /*data*/,
                     QorCallbackId /*cookie*/) {
    session::keepSetting(treeKey, event == Qor3DViewer::TREE_DISPLAY_ON ? "on" : "off");
    changed();
}

/// To what the current editor and viewer publish; what is subscribed to already stays.
void Session::listen() {
    DocumentEditor* current = editor();
    if (current == nullptr)
        return;
    current->GetCSO()->GetCallbackManager()->AddCallback(this, QorCSO::CSO_MODIFIED,
                                                         &Session::changedCB);
    for (const QorEventName& event :
         {Document::DOCUMENT_MODIFIED, Document::DOCUMENT_SAVED, Document::DOCUMENT_TREE_MODIFIED})
        current->document().GetCallbackManager()->AddCallback(this, event, &Session::changedCB);
    if (QorNavigation3DViewer* shown = viewer()) {
        for (const QorEventName& event :
             {Qor3DViewer::TREE_DISPLAY_ON, Qor3DViewer::TREE_DISPLAY_OFF})
            shown->GetCallbackManager()->AddCallback(this, event, &Session::treeCB);
        shown->GetMain3DViewpoint()->GetCallbackManager()->AddCallback(
            this, QorViewpoint::VIEWPOINT_MODIFIED, &Session::changedCB);
    }
}

void Session::changed() {
    if (std::exchange(refreshPosted_, true))
        return;
    loop_.Post(
        [this, alive = std::weak_ptr<bool>(alive_)] {
            if (!alive.expired())
                refresh();
        },
        QorEventLoop::Scope::AnyDepth);
}

void Session::refresh() {
    refreshPosted_ = false;
    recent_ = document::RecentFiles::list();
    listen();
    const DocumentEditor* current = editor();
    if (current != nullptr)
        nameWindows(*current);
    frame_.SetTitle(current == nullptr
                        ? message("Title")
                        : message(current->document().isModified() ? "TitleModified" : "TitleOf",
                                  {current->document().title()}));
    frame_.SetFacts(current == nullptr ? QorUnicodeString() : factsOf(current->document()));
    hooks_.changed();
}

void Session::nameWindows(const DocumentEditor& editor) const {
    const auto windows = layout_.GetWindowsOf(&editor);
    int number = 0;
    for (QorFrmWindow* window : windows) {
        ++number;
        const QorUnicodeString& title = editor.document().title();
        window->SetTitle(windows.size() == 1
                             ? title
                             : message("TitleOfWindow", {title, std::to_string(number)}));
    }
}

} // namespace qor::app
