#pragma once

#include "workbench/engine/adapter/ContentCache.h"
#include "workbench/engine/adapter/PictureMaker.h"

#include <atomic>
#include <condition_variable>
#include <string>

namespace qor::adapter {

/// One order to render, shared by the user-interface thread and the worker that carries it out, so
/// that either may let go of it first.
class RenderTask {
public:
    RenderTask(SceneRecipe recipe,
               const engine::RenderOptions& options,
               std::shared_ptr<ContentCache> cache);

    /// The whole work: makes the scene, starts the render, makes pictures of it until it ends. On a
    /// worker.
    void run();

    /// What has happened since it was last asked. Any thread, never waits.
    struct News {
        int percent = 0;
        bool finished = false;
        bool failed = false;
        MadePicture picture; ///< newer than the last one, or none
        std::string message; ///< why it failed
    };

    News takeNews();

    /// Returns at once; no pixel changes any more afterwards. \p keepPicture: the worker still
    /// makes the whole picture, if it has not and there is one. A later call may take that back.
    void abort(bool keepPicture);

    /// After an abort or the end: whether wholePicture() has its answer.
    bool isSettled();
    /// The newest picture of full size; none if there was never one.
    MadePicture wholePicture();

private:
    using Clock = std::chrono::steady_clock;

    void carryOut();
    bool startRender();
    void follow(engine::Render& render);
    void keepPicture(engine::Render& render);
    void publish(const MadePicture& picture, bool whole, bool last);
    void fail(std::string message);
    /// Waits for something new, or for the abort.
    void waitForChange(Clock::time_point until);

    SceneRecipe recipe_;
    const engine::RenderOptions options_;
    const std::shared_ptr<ContentCache> cache_;
    const PictureMaker maker_;

    std::atomic<bool> stop_{false};
    std::atomic<bool> keeps_{false}; ///< after the abort: the whole picture is wanted
    std::atomic<bool> changed_{false};
    std::mutex waitMutex_; ///< of the worker alone, with wake_
    std::condition_variable wake_;

    std::mutex mutex_; ///< guards all below
    std::shared_ptr<engine::Render> render_;
    News news_;
    MadePicture whole_;
    bool left_ = false; ///< the worker has done its work
};

} // namespace qor::adapter
