#pragma once

#include "platform/engine/QorRdgEngine.h"
#include "workbench/engine/adapter/ContentCache.h"
#include "workbench/engine/adapter/Workers.h"

namespace qor::adapter {

/// The render engine behind the engine manager. A program makes one and gives it to
/// QorRdgEngineManager::SetEngine. User-interface thread.
class Engine : public QorRdgEngine {
public:
    Engine();
    /// Waits for all that still winds down.
    ~Engine() override;
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;
    Engine(Engine&&) = delete;
    Engine& operator=(Engine&&) = delete;

    std::unique_ptr<QorRdgRender> Start(const QorRdgRequest& request,
                                        QorUnicodeString& reason) override;

    /// Makes meshes, pictures and structures for what \p snapshot holds in idle time, so that the
    /// first render has nothing to build; to be called when a document is shown or has changed. It
    /// needs no camera, and a failure shows in the render. What belongs to closed documents is let
    /// go of.
    void prepare(const QorRdgSnapshot& snapshot);
    /// The same for a viewer's or document's world.
    void prepare(QorIRdgWorld& world);

    /// What is shared with pictures of viewers without a window.
    const std::shared_ptr<ContentCache>& cache() const { return cache_; }

    /// Workers that have not ended yet: of running renders, aborted ones, preparations.
    int workersRunning() const { return workers_.running(); }

private:
    /// Start, by exceptions too.
    std::unique_ptr<QorRdgRender> startOrRefuse(const QorRdgRequest& request,
                                                QorUnicodeString& reason);

    std::shared_ptr<ContentCache> cache_;
    Workers workers_;
};

} // namespace qor::adapter
