#include "workbench/app/Workbench.h"

#include "platform/frame/QorFrmEditor.h"
#include "platform/frame/QorFrmLayout.h"
#include "platform/frame/QorFrmNotify.h"
#include "platform/system/QorEventLoop.h"
#include "platform/text/QorMsgCatalog.h"
#include "workbench/app/Commands.h"
#include "workbench/app/FileOpening.h"
#include "workbench/app/Menus.h"

#include <iostream>

namespace qor::app {

namespace {

/// Tells of a failure in a box that waits for OK.
void showError(QorCommand& father, const QorUnicodeString& text) {
    const QorUnicodeString title = QorMsgCatalog::BuildMessage("MainFrame", "ErrorTitle");
    auto* box = new QorFrmNotify(&father, "errNotify", QorNotifyKind::Error);
    box->DisplayBlocked(text, title);
    box->RequestDelayedDestruction();
}

} // namespace

Workbench::Workbench(QorEventLoop& loop, Options options)
    : loop_(loop)
    , options_(std::move(options))
    , frame_(QorMake<MainFrame>([this] { quit(); }))
    , layout_(new QorFrmLayout(frame_.Get(), "layout")) {
    addCommands(*frame_, {.quit = [this] { quit(); }, .hasGallery = options_.hasGallery});
    addMenus(*frame_);
}

Workbench::~Workbench() {
    while (layout_->GetEditorCount() > 0)
        layout_->CloseEditor(layout_->GetEditors().front());
    loop_.RunPosted();
    frame_.Reset();
    loop_.RunPosted();
}

void Workbench::start() {
    frame_->SetStatus(QorMsgCatalog::BuildMessage("MainFrame", "Ready"));
    frame_->SetVisibility(QorDlgSHOW);
    if (options_.hasGallery)
        QorCommandHeader::GetHeaderFromList("Gallery", 1)->StartCommand();
    if (!options_.file.empty())
        openFile();
}

void Workbench::quit() {
    loop_.Quit();
}

void Workbench::openFile() {
    const std::string reason = openDocument(options_.file);
    if (reason.empty())
        return;
    std::cerr << "qorworkbench: cannot open " << options_.file << ": " << reason << std::endl;
    if (options_.isHeadless)
        return;
    const auto text =
        QorMsgCatalog::BuildMessage("MainFrame", "OpenError", {options_.file, reason});
    // Once the loop runs: the box wants a turn of it.
    loop_.Post([alive = frame_, text] { showError(*alive, text); });
}

} // namespace qor::app
