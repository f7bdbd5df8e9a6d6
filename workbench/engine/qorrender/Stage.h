#pragma once

#include "platform/engine/QorIRdgWorld.h"
#include "workbench/document/ProductReps.h"

#include <memory>
#include <string>

namespace qor::render {

/// The workbench around one viewer without a window, so that what is rendered here is what the
/// workbench would render. Main thread; one a process.
class Stage {
public:
    Stage();
    ~Stage();
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;
    Stage(Stage&&) = delete;
    Stage& operator=(Stage&&) = delete;

    /// Throws WrongUsage when there is no such scene: the number in the catalog from 1 on, or
    /// "custom". To be called before the long work.
    void chooseScene(const std::string& name);

    /// \p product in the chosen scene, else in the standard light on a plain backdrop. The camera
    /// is left to the caller.
    QorRdgSnapshot show(const document::ProductReps& product);

private:
    class Window;
    std::unique_ptr<Window> window_;
};

} // namespace qor::render
