#include "workbench/engine/adapter/RenderTask.h"

#include <exception>
#include <new>

namespace qor::adapter {

namespace {

/// From one picture for the screen to the next, at least: what is made of it until it is seen comes
/// on top.
constexpr std::chrono::milliseconds refreshInterval{50};
/// And at least so many times as long as it took to make one.
constexpr int restBetween = 2;
/// The listener wakes the worker without taking its lock, so now and then one call is missed.
constexpr std::chrono::milliseconds longestSleep{5};

bool isRunning(engine::RenderState state) {
    return state == engine::RenderState::preparing || state == engine::RenderState::tracing;
}

} // namespace

RenderTask::RenderTask(SceneRecipe recipe,
                       const engine::RenderOptions& options,
                       std::shared_ptr<ContentCache> cache)
    : recipe_(std::move(recipe)), options_(options), cache_(std::move(cache)), maker_(options) {}

void RenderTask::run() {
    try {
        carryOut();
    } catch (const std::bad_alloc&) {
        fail("there is not enough memory for this picture");
    } catch (const std::exception& failure) {
        fail(failure.what());
    }
    std::shared_ptr<engine::Render> render; // freed here: a large film takes a while
    const std::scoped_lock lock(mutex_);
    left_ = true;
    render = std::move(render_);
}

void RenderTask::carryOut() {
    if (!startRender())
        return;
    std::shared_ptr<engine::Render> render;
    {
        const std::scoped_lock lock(mutex_);
        render = render_;
    }
    if (stop_)
        return render->abort(); // asked for before there was a render to abort
    follow(*render);
}

bool RenderTask::startRender() {
    auto scene = cache_->makeScene(recipe_);
    const engine::Camera camera = recipe_.camera;
    recipe_ = {}; // the library's arrays are free to go
    if (stop_)
        return false;
    if (!scene) {
        fail(scene.error().message);
        return false;
    }
    auto render = engine::Render::start(std::move(scene).value(), camera, options_, [this] {
        changed_ = true;
        wake_.notify_one();
    });
    if (!render) {
        fail(render.error().message);
        return false;
    }
    const std::scoped_lock lock(mutex_);
    render_ = std::make_shared<engine::Render>(std::move(render).value());
    return true;
}

void RenderTask::follow(engine::Render& render) {
    bool shown = false;
    auto next = Clock::now();
    for (;;) {
        waitForChange(next);
        if (stop_)
            return keepPicture(render);
        const engine::RenderProgress progress = render.progress();
        {
            const std::scoped_lock lock(mutex_);
            news_.percent = static_cast<int>(progress.fraction * 100.0F);
        }
        if (!isRunning(progress.state)) {
            if (progress.state == engine::RenderState::failed)
                return fail(render.error().message);
            return publish(maker_.whole(render), true, true);
        }
        if (!progress.hasPicture || (shown && Clock::now() < next))
            continue;
        const auto start = Clock::now();
        publish(maker_.forScreen(render), maker_.fitsScreen(), false);
        shown = true;
        next = start +
               std::max<Clock::duration>(refreshInterval, (Clock::now() - start) * restBetween);
    }
}

/// Pictures for the screen that are whole ones are recent enough.
void RenderTask::keepPicture(engine::Render& render) {
    {
        const std::scoped_lock lock(mutex_);
        if (!keeps_ || whole_ || !render.progress().hasPicture)
            return;
    }
    MadePicture picture = maker_.whole(render);
    const std::scoped_lock lock(mutex_);
    whole_ = std::move(picture);
}

void RenderTask::waitForChange(Clock::time_point until) {
    std::unique_lock lock(waitMutex_);
    while (!stop_ && !changed_ && Clock::now() < until)
        wake_.wait_for(lock, longestSleep);
    if (!stop_ && !changed_)
        wake_.wait_for(lock, longestSleep);
    changed_ = false;
}

void RenderTask::publish(const MadePicture& picture, bool whole, bool last) {
    const std::scoped_lock lock(mutex_);
    if (whole)
        whole_ = picture;
    news_.picture = picture;
    news_.finished = last;
}

void RenderTask::fail(std::string message) {
    const std::scoped_lock lock(mutex_);
    news_.finished = news_.failed = true;
    news_.message = std::move(message);
}

RenderTask::News RenderTask::takeNews() {
    const std::scoped_lock lock(mutex_);
    News news = news_;
    news_.picture = {};
    return news;
}

bool RenderTask::isSettled() {
    const std::scoped_lock lock(mutex_);
    return whole_ || left_ || !render_ || !render_->progress().hasPicture;
}

MadePicture RenderTask::wholePicture() {
    const std::scoped_lock lock(mutex_);
    return whole_;
}

void RenderTask::abort(bool keepPicture) {
    keeps_ = keepPicture;
    stop_ = true;
    wake_.notify_one();
    std::shared_ptr<engine::Render> render;
    {
        const std::scoped_lock lock(mutex_);
        render = render_;
    }
    if (render)
        render->abort();
}

} // namespace qor::adapter
