#include "workbench/document/session/DocumentSession.h"

#include "platform/frame/QorApplicationFrame.h"
#include "platform/frame/QorFrmEditor.h"
#include "platform/text/QorMsgCatalog.h"

namespace qor::document {

namespace fs = std::filesystem;

namespace {

QorUnicodeString message(const char* key, const QorMsgParameters& parameters = {}) {
    return QorMsgCatalog::BuildMessage("DocumentSession", key, parameters);
}

Failure cancelled() {
    return {FaultKind::Input, cancelledText};
}

Failure nothingNamed() {
    return {FaultKind::Input, "no file is named"};
}

void conclude(const DocumentSession::Finished& finished, const Result<Document_var>& outcome) {
    if (finished)
        finished(outcome);
}

void showProgress(std::optional<QorApplicationFrame::Progress> progress) {
    if (QorApplicationFrame* frame = QorApplicationFrame::GetFrame())
        frame->SetProgress(std::move(progress));
}

/// In the status bar; a box would be in the way of looking at the model.
void showWarnings(const std::vector<std::string>& warnings) {
    QorApplicationFrame* frame = QorApplicationFrame::GetFrame();
    if (frame == nullptr)
        return;
    const std::size_t others = warnings.size() - 1;
    frame->SetStatus(others == 0
                         ? message("Warned", {warnings.front()})
                         : message("WarnedMore", {warnings.front(), std::to_string(others)}));
}

} // namespace

DocumentSession::DocumentSession(QorEventLoop& loop,
                                 QorFrmLayout& layout,
                                 DocumentHost& host,
                                 StoreOptions options)
    : layout_(layout), host_(host), store_(loop, std::move(options)) {
    layout_.GetCallbackManager()->AddCallback(this, QorFrmEditor::EDITOR_CLOSE_ENDED,
                                              &DocumentSession::editorClosedCB);
    store_.setDamageListener([this](const std::string& text) {
        host_.tell(QorNotifyKind::Warning, message("Damaged", {text}));
    });
    store_.setWarningListener(showWarnings);
}

DocumentSession::~DocumentSession() = default;

Document* DocumentSession::current() const {
    const QorFrmEditor* editor = layout_.GetCurrentEditor();
    return editor != nullptr ? dynamic_cast<Document*>(editor->GetDocument()) : nullptr;
}

void DocumentSession::newDocument(const Finished& finished) {
    if (refuseBusy(finished))
        return;
    leaveCurrent(
        [this, finished] {
            const auto document = QorMake<Document>();
            document->setTitle(message("Untitled").Str());
            store_.adopt(*document);
            replaceCurrent(*document);
            conclude(finished, document);
        },
        finished);
}

void DocumentSession::open(const fs::path& file, const Finished& finished) {
    if (file.empty())
        return conclude(finished, nothingNamed());
    if (refuseBusy(finished))
        return;
    leaveCurrent(
        [this, file, finished] {
            begin(message("Opening", {file.filename().string()}));
            operation_ = store_.openAsync(file, progress(),
                                          opened([this, file, finished](const auto& outcome) {
                                              if (outcome)
                                                  RecentFiles::add(file);
                                              else
                                                  RecentFiles::dropIfMissing(file);
                                              conclude(finished, outcome);
                                          }));
        },
        finished);
}

void DocumentSession::recover(const Recoverable& recoverable, const Finished& finished) {
    if (refuseBusy(finished))
        return;
    leaveCurrent(
        [this, recoverable, finished] {
            begin(message("Opening", {recoverable.title}));
            operation_ = store_.recoverAsync(recoverable, progress(), opened(finished));
        },
        finished);
}

DocumentStore::Opened DocumentSession::opened(const Finished& finished) {
    return [this, finished](Result<Document_var> document) {
        end();
        if (document)
            replaceCurrent(*document.value());
        conclude(finished, document);
    };
}

void DocumentSession::importInto(const fs::path& file, const Finished& finished) {
    if (file.empty())
        return conclude(finished, nothingNamed());
    if (refuseBusy(finished))
        return;
    const Document_var target(current());
    if (!target)
        return newDocument([this, file, finished](const Result<Document_var>& made) {
            if (made)
                importInto(file, finished);
            else
                conclude(finished, made);
        });
    begin(message("Importing", {file.filename().string()}));
    operation_ = store_.importAsync(
        *target, file, progress(), [this, target, finished](const Result<Done>& outcome) {
            end();
            conclude(finished, outcome ? Result<Document_var>(target) : outcome.failure());
        });
}

void DocumentSession::save(const Finished& finished) {
    const Document_var document(current());
    if (!document)
        return conclude(finished, Failure{FaultKind::Input, "no document is open"});
    if (!document->path().empty())
        return saveAs(document->path(), finished);
    host_.askSavePath(*document, [this, finished](const std::optional<fs::path>& file) {
        if (file)
            saveAs(*file, finished);
        else
            conclude(finished, cancelled());
    });
}

void DocumentSession::saveAs(const fs::path& file, const Finished& finished) {
    if (file.empty())
        return conclude(finished, nothingNamed());
    if (refuseBusy(finished))
        return;
    const Document_var document(current());
    if (!document)
        return conclude(finished, Failure{FaultKind::Input, "no document is open"});
    begin(message("Saving", {file.filename().string()}));
    operation_ = store_.saveAsync(
        *document, file, progress(), [this, document, finished](const Result<Done>& outcome) {
            end();
            if (outcome)
                RecentFiles::add(document->path());
            conclude(finished, outcome ? Result<Document_var>(document) : outcome.failure());
        });
}

void DocumentSession::close(const Finished& finished) {
    if (refuseBusy(finished))
        return;
    const Document_var document(current());
    if (!document)
        return conclude(finished, Failure{FaultKind::Input, "no document is open"});
    if (layout_.GetWindowsOf(layout_.GetCurrentEditor()).size() > 1) {
        layout_.CloseWindow(layout_.GetCurrentWindow());
        return conclude(finished, document);
    }
    closeDocument(finished);
}

void DocumentSession::closeDocument(const Finished& finished) {
    if (refuseBusy(finished))
        return;
    const Document_var document(current());
    if (!document)
        return conclude(finished, Failure{FaultKind::Input, "no document is open"});
    leaveCurrent(
        [this, document, finished] {
            closeEditorOf(*document);
            conclude(finished, document);
        },
        finished);
}

bool DocumentSession::cancel() {
    if (!isBusy())
        return false;
    operation_->cancel();
    return true;
}

std::vector<Recoverable> DocumentSession::listRecoverable() const {
    return findRecoverable(store_.recoveryFolder());
}

/// Goes on when the current document may be left: it is unmodified, was saved, or is given up.
void DocumentSession::leaveCurrent(const std::function<void()>& proceed, const Finished& finished) {
    const Document_var document(current());
    if (!document || !document->isModified())
        return proceed();
    switch (askAboutChanges(*document)) {
    case Answer::Lose:
        return proceed();
    case Answer::Stay:
        return conclude(finished, cancelled());
    case Answer::Save:
        break;
    }
    save([proceed, finished](const Result<Document_var>& saved) {
        if (saved)
            proceed();
        else
            conclude(finished, saved);
    });
}

DocumentSession::Answer DocumentSession::askAboutChanges(Document& document) const {
    auto* box = new QorFrmNotify(QorApplicationFrame::GetFrame(), "saveNotify",
                                 QorNotifyKind::Question, QorNotifyButtons::YesNoCancel);
    const int answer =
        box->DisplayBlocked(message("AskSave", {document.title()}), message("AskSaveTitle"));
    box->RequestDelayedDestruction();
    if (answer == QorNotifyConfirm)
        return Answer::Save;
    return answer == QorNotifyNo ? Answer::Lose : Answer::Stay;
}

bool DocumentSession::refuseBusy(const Finished& finished) const {
    if (!isBusy())
        return false;
    conclude(finished,
             Failure{FaultKind::Input, "another file is being opened, imported or saved"});
    return true;
}

void DocumentSession::begin(const QorUnicodeString& text) {
    working_ = text;
    showProgress(QorApplicationFrame::Progress{.text = text, .share = -1.0, .cancellable = true});
    host_.workChanged();
}

ProgressListener DocumentSession::progress() const {
    return [text = working_](int percent, const std::string& stage) {
        const QorUnicodeString doing =
            QorMsgCatalog::BuildMessage("DocumentSession", "Stage." + stage, {}, stage);
        showProgress(QorApplicationFrame::Progress{.text = message("Progress", {text, doing}),
                                                   .share = percent / 100.0,
                                                   .cancellable = true});
    };
}

void DocumentSession::end() {
    operation_.reset();
    showProgress(std::nullopt);
    host_.workChanged();
}

void DocumentSession::replaceCurrent(Document& document) {
    while (const Document* old = current())
        closeEditorOf(*old);
    host_.showDocument(document);
    document.dispatch(Document::DOCUMENT_OPENED);
}

void DocumentSession::closeEditorOf(const Document& document) {
    for (QorFrmEditor* editor : std::vector<QorFrmEditor*>(layout_.GetEditors()))
        if (editor->GetDocument() == &document)
            layout_.CloseEditor(editor);
}

void DocumentSession::editorClosedCB(QorEventName /*event*/,
                                     QorBaseUnknown* publisher,
                                     QorNotification* /*notification*/,
                                     QorSubscriberData /*data*/,
                                     QorCallbackId /*cookie*/) {
    const auto* editor = dynamic_cast<QorFrmEditor*>(publisher);
    if (auto* document =
            editor != nullptr ? dynamic_cast<Document*>(editor->GetDocument()) : nullptr)
        store_.release(*document);
}

} // namespace qor::document
