#include "workbench/engine/core/Render.h"

#include "workbench/engine/core/RenderJob.h"

#include <system_error>
#include <thread>

namespace qor::engine {

namespace {

/// Counts the threads that run jobs. They are detached, so that nobody has to wait for one that
/// winds down.
class RunningJobs {
public:
    RunningJobs() = default;

    ~RunningJobs() { waitForAll(); }

    RunningJobs(const RunningJobs&) = delete;
    RunningJobs(RunningJobs&&) = delete;
    RunningJobs& operator=(const RunningJobs&) = delete;
    RunningJobs& operator=(RunningJobs&&) = delete;

    void start(std::shared_ptr<RenderJob> job) {
        const std::scoped_lock lock(mutex_);
        std::thread([this, running = std::move(job)]() mutable {
            running->run();
            running.reset();
            const std::scoped_lock ended(mutex_);
            --count_;
            allEnded_.notify_all();
        }).detach();
        ++count_;
    }

    void waitForAll() {
        std::unique_lock lock(mutex_);
        allEnded_.wait(lock, [this] { return count_ == 0; });
    }

private:
    std::mutex mutex_;
    std::condition_variable allEnded_;
    int count_ = 0;
};

RunningJobs& runningJobs() {
    static RunningJobs instance;
    return instance;
}

Result<Done> validateAll(const Scene& scene, const Camera& camera, const RenderOptions& options) {
    Result<Done> result = validate(options);
    if (result)
        result = validate(camera);
    if (result)
        result = validate(scene);
    return result;
}

} // namespace

Result<Render>
Render::start(Scene scene, const Camera& camera, const RenderOptions& options, Listener listener) {
    const Result<Done> valid = validateAll(scene, camera, options);
    if (!valid)
        return valid.error();
    try {
        auto job =
            std::make_shared<RenderJob>(std::move(scene), camera, options, std::move(listener));
        runningJobs().start(job);
        return Render(std::move(job));
    } catch (const std::bad_alloc&) {
        return Error{ErrorCode::outOfMemory, "not enough memory for " +
                                                 std::to_string(options.width) + " x " +
                                                 std::to_string(options.height) + " pixels"};
    } catch (const std::system_error& failure) {
        return Error{ErrorCode::outOfMemory, failure.what()};
    }
}

Render::Render(std::shared_ptr<RenderJob> job) : job_(std::move(job)) {}

Render::~Render() {
    if (job_)
        job_->abort();
}

Render::Render(Render&& other) noexcept = default;

Render& Render::operator=(Render&& other) noexcept {
    if (this != &other) {
        if (job_)
            job_->abort();
        job_ = std::move(other.job_);
    }
    return *this;
}

RenderProgress Render::progress() const {
    return job_->progress();
}

RenderStats Render::stats() const {
    return job_->stats();
}

Error Render::error() const {
    return job_->error();
}

void Render::snapshot(Image& target) const {
    job_->film().snapshot(target);
}

void Render::snapshotRows(int first, int count, Image& target) const {
    job_->film().snapshotRows(first, count, target);
}

void Render::abort() {
    job_->abort();
}

RenderState Render::wait() const {
    return job_->wait();
}

void waitForAllRenders() {
    runningJobs().waitForAll();
}

Result<Image>
renderImage(Scene scene, const Camera& camera, const RenderOptions& options, RenderStats* stats) {
    auto started = Render::start(std::move(scene), camera, options);
    if (!started)
        return started.error();
    const Render render = std::move(started).value();
    const RenderState state = render.wait();
    if (state != RenderState::finished)
        return render.error();
    Image image;
    render.snapshot(image);
    if (stats != nullptr)
        *stats = render.stats();
    return image;
}

} // namespace qor::engine
