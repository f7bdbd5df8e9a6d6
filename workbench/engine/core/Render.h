#pragma once

#include "workbench/engine/core/Camera.h"
#include "workbench/engine/core/Image.h"
#include "workbench/engine/core/RenderOptions.h"
#include "workbench/engine/core/RenderStats.h"
#include "workbench/engine/core/Scene.h"

#include <functional>
#include <memory>

namespace qor::engine {

class RenderJob;

enum class RenderState {
    preparing, ///< builds structures, fills the interpolation cache
    tracing,
    finished,
    aborted,
    failed,
};

/// A look at a running render.
struct RenderProgress {
    RenderState state = RenderState::preparing;
    float fraction = 0.0F;      ///< 0..1, never goes back
    std::uint64_t revision = 0; ///< grows whenever pixels have changed
    bool hasPicture = false;    ///< every pixel of the region shows something, at least coarsely
    bool hasWholePass = false;  ///< every pixel of the region has a sample of its own
};

/// One render on worker threads. The object is a handle: destroying or aborting it detaches it at
/// once, workers wind down on memory of their own. Its functions may be called from any thread and
/// never wait for a worker, wait() apart.
class Render {
public:
    /// Called on a worker after pixels or the state changed, not more often than about every 20 ms,
    /// and once after the end. It must be quick. Never called after abort() has returned.
    using Listener = std::function<void()>;

    /// Takes a snapshot of everything and returns at once. Fails with invalidInput, emptyRegion,
    /// tooLarge or outOfMemory; nothing has been started then.
    static Result<Render>
    start(Scene scene, const Camera& camera, const RenderOptions& options, Listener listener = {});

    ~Render();
    Render(Render&& other) noexcept;
    Render& operator=(Render&& other) noexcept;
    Render(const Render&) = delete;
    Render& operator=(const Render&) = delete;

    RenderProgress progress() const;
    RenderStats stats() const;

    /// Only in state failed.
    Error error() const;

    /// Copies the pixels as they are now into \p target, which is resized to the whole picture.
    /// Pixels without a sample show their coarse neighbour's. Works in every state, after abort()
    /// too.
    void snapshot(Image& target) const;
    /// The same for \p count rows from row \p first (from the top) on, all within the picture: for
    /// pictures that are too large to be copied at once.
    void snapshotRows(int first, int count, Image& target) const;

    /// Detaches: the state is aborted when this returns (unless it had ended), pixels do not change
    /// any more.
    void abort();

    /// Blocks until the render has ended; for programs without a user interface. The state it ended
    /// in.
    RenderState wait() const;

private:
    explicit Render(std::shared_ptr<RenderJob> job);

    std::shared_ptr<RenderJob> job_;
};

/// Waits until the workers of every render, detached ones included, have wound down. To be called
/// before a program exits.
void waitForAllRenders();

/// Renders on the calling thread's time: start(), wait() and snapshot() in one.
/// Fails as start() does, and with what made the render fail.
Result<Image> renderImage(Scene scene,
                          const Camera& camera,
                          const RenderOptions& options,
                          RenderStats* stats = nullptr);

} // namespace qor::engine
