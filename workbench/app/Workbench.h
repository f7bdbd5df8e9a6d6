#pragma once

#include "platform/component/QorHandle.h"
#include "workbench/app/CommandLine.h"
#include "workbench/app/MainFrame.h"

class QorEventLoop;
class QorFrmLayout;

namespace qor::app {

/// The program put together: frame, layout, commands and menus. The same with windows and without;
/// a QorApplication exists as long as it lives.
class Workbench {
public:
    /// \p loop outlives it.
    Workbench(QorEventLoop& loop, Options options);
    /// Closes what is open and destroys all windows.
    ~Workbench();
    Workbench(const Workbench&) = delete;
    Workbench& operator=(const Workbench&) = delete;

    /// Shows the frame and opens what the command line asks for.
    void start();

    /// Ends the program: a box that is open is answered with what declines, and the loop returns.
    void quit();

private:
    void openFile();

    QorEventLoop& loop_;
    const Options options_;
    QorVar<MainFrame> frame_;
    QorFrmLayout* layout_; ///< a child of the frame
};

} // namespace qor::app
