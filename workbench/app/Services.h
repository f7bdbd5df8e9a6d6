#pragma once

#include "workbench/engine/adapter/Engine.h"
#include "workbench/imaging/PictureFiles.h"

class QorViewer;

namespace qor::app {

/// What the front-end library needs from outside and is no widget, the same with windows and
/// without: picture files, the render engine, and what viewers answer to it. Installed as long as
/// it lives, at most one at a time; outlives the windows.
class Services {
public:
    Services();
    ~Services();
    Services(const Services&) = delete;
    Services& operator=(const Services&) = delete;

    /// Has the engine build in idle time what a render of \p viewer will need.
    void prepareRender(QorViewer& viewer);

    [[nodiscard]] adapter::Engine& engine() const { return *engine_; }

private:
    imaging::PictureFiles pictures_;
    adapter::Engine* engine_; ///< belongs to the engine manager
};

} // namespace qor::app
