#include "workbench/app/Workbench.h"

#include "platform/frame/QorFrmLayout.h"
#include "platform/system/QorEventLoop.h"
#include "platform/text/QorMsgCatalog.h"
#include "quickrender/QorRdgQuickRenderCommands.h"
#include "workbench/app/Menus.h"
#include "workbench/app/RecoveryDialog.h"
#include "workbench/app/Services.h"

#include <iostream>

namespace qor::app {

Workbench::Workbench(const HostLoop& host, Options options)
    : host_(host)
    , options_(std::move(options))
    , frame_(
          QorMake<MainFrame>(FrameActions{.close = [this] { session_->quit(); },
                                          .cancel = [this] { session_->cancel(); },
                                          .drop =
                                              [this](const std::vector<QorUnicodeString>& files) {
                                                  session_->drop(files);
                                              }}))
    , layout_(new QorFrmLayout(frame_.Get(), "layout"))
    , session_(
          std::make_unique<Session>(host.loop,
                                    *frame_,
                                    *layout_,
                                    SessionHooks{.changed = [this] { refreshCommands(context_); },
                                                 .ended = [this] { quit(); },
                                                 .shown =
                                                     [this](QorViewer& viewer) {
                                                         host_.services.prepareRender(viewer);
                                                     }}))
    , context_{.session = session_.get(),
               .quit = [this] { quit(); },
               .chooseTheme = host.chooseTheme,
               .hasGallery = options_.hasGallery}
    , renderStatus_(std::make_unique<RenderStatus>(*frame_)) {
    addCommands(*frame_, context_);
    QorAddQuickRenderCommands(frame_.Get());
    addMenus(*frame_);
}

Workbench::~Workbench() {
    renderStatus_.reset();
    while (layout_->GetEditorCount() > 0)
        layout_->CloseEditor(layout_->GetEditors().front());
    host_.loop.RunPosted();
    session_.reset();
    context_.session = nullptr;
    frame_.Reset();
    host_.loop.RunPosted();
}

void Workbench::start(const std::function<void()>& opened) {
    frame_->SetStatus(QorMsgCatalog::BuildMessage("MainFrame", "Ready"));
    frame_->SetVisibility(QorDlgSHOW);
    if (options_.hasGallery)
        QorCommandHeader::GetHeaderFromList("Gallery", 1)->StartCommand();
    session_->start(options_.file, [this, opened](const std::string& reason) {
        if (!reason.empty())
            reportOpening(reason);
        opened();
    });
    offerRecovery(*frame_, *session_);
}

void Workbench::quit() {
    host_.loop.Quit();
}

/// A person in front of a terminal reads it there, one in front of a window in a box.
void Workbench::reportOpening(const std::string& reason) {
    std::cerr << "qorworkbench: " << reason << std::endl;
    if (!options_.isHeadless)
        session_->tell(QorNotifyKind::Error, reason);
}

} // namespace qor::app
