#pragma once

#include "platform/component/QorHandle.h"
#include "workbench/app/CommandLine.h"
#include "workbench/app/Commands.h"
#include "workbench/app/Host.h"
#include "workbench/app/MainFrame.h"
#include "workbench/app/RenderStatus.h"
#include "workbench/app/Session.h"

class QorFrmLayout;

namespace qor::app {

/// The program put together: frame, layout, documents, commands and menus. The same with windows
/// and without; a QorApplication exists as long as it lives.
class Workbench {
public:
    /// \p host outlives it.
    Workbench(const HostLoop& host, Options options);
    /// Closes what is open and destroys all windows.
    ~Workbench();
    Workbench(const Workbench&) = delete;
    Workbench& operator=(const Workbench&) = delete;

    /// Shows the frame and begins to open what the command line asks for; \p opened is called once
    /// that has worked or not.
    void start(const std::function<void()>& opened);

    /// Ends the program without a question: a box that is open is answered with what declines, and
    /// the loop returns.
    void quit();

    [[nodiscard]] Session& session() const { return *session_; }

private:
    void reportOpening(const std::string& reason);

    const HostLoop& host_;
    const Options options_;
    QorVar<MainFrame> frame_;
    QorFrmLayout* layout_; ///< a child of the frame
    std::unique_ptr<Session> session_;
    CommandContext context_;
    std::unique_ptr<RenderStatus> renderStatus_;
};

} // namespace qor::app
