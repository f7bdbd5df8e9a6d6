#include "workbench/document/session/Workers.h"

#include "platform/system/QorEventLoop.h"

#include <atomic>

namespace qor::document {

namespace {

constexpr std::chrono::milliseconds untilTheBoxIsGone{20};

} // namespace

/// One piece of work. The worker and the loop hold it; whoever began it holds it as an Operation.
class Workers::Job
    : public Operation
    , public WorkContext
    , public std::enable_shared_from_this<Job> {
public:
    Job(QorEventLoop& loop, Outcome done, ProgressListener progress)
        : loop_(loop)
        , depth_(loop.GetDepth())
        , done_(std::move(done))
        , listener_(std::move(progress)) {}

    void work(const Body& body) {
        body(*this);
        const std::scoped_lock lock(mutex_);
        if (!detached_)
            loop_.Post([job = shared_from_this()] { job->deliver(); });
        hasEnded_ = true;
    }

    void cancel() override {
        if (!done_ || cancelled_)
            return;
        cancelled_ = true;
        stop_.request_stop();
        loop_.Post([job = shared_from_this()] { job->conclude(); });
    }

    [[nodiscard]] bool isRunning() const override { return static_cast<bool>(done_); }

    [[nodiscard]] std::stop_token stop() const override { return stop_.get_token(); }

    void report(int percent, const std::string& stage) const override {
        const std::scoped_lock lock(mutex_);
        percent_ = std::max(percent_, percent);
        stage_ = stage;
        if (isReportPosted_ || detached_)
            return;
        isReportPosted_ = true;
        loop_.Post([job = shared_from_this()] { job->tell(); });
    }

    /// The workers are going: nothing is told any more, and the loop is not touched.
    void detach() {
        stop_.request_stop();
        if (waiting_ != 0)
            loop_.StopTimer(waiting_);
        done_ = {};
        listener_ = {};
        const std::scoped_lock lock(mutex_);
        detached_ = true;
    }

    [[nodiscard]] bool hasEnded() const { return hasEnded_; }

private:
    void tell() const {
        std::unique_lock lock(mutex_);
        isReportPosted_ = false;
        const int percent = percent_;
        const std::string stage = stage_;
        lock.unlock();
        if (done_ && !cancelled_ && listener_)
            listener_(percent, stage);
    }

    // Work that ends while a box is open waits for the box: its outcome may open windows.
    void deliver() {
        if (!done_)
            return;
        if (loop_.GetDepth() <= depth_)
            return conclude();
        waiting_ = loop_.StartTimer(
            untilTheBoxIsGone,
            [job = shared_from_this()] {
                job->waiting_ = 0;
                job->deliver();
            },
            false);
    }

    void conclude() {
        if (waiting_ != 0)
            loop_.StopTimer(waiting_);
        listener_ = {};
        if (const Outcome done = std::exchange(done_, {}))
            done(cancelled_);
    }

    QorEventLoop& loop_;
    const int depth_;
    Outcome done_;
    ProgressListener listener_;
    std::stop_source stop_;
    bool cancelled_ = false;
    QorTimerId waiting_ = 0;
    std::atomic<bool> hasEnded_ = false;
    mutable std::mutex mutex_; ///< guards what follows
    mutable bool isReportPosted_ = false;
    mutable int percent_ = 0;
    mutable std::string stage_;
    bool detached_ = false;
};

Workers::Workers(QorEventLoop& loop) : loop_(loop) {}

Workers::~Workers() {
    for (auto& [job, thread] : jobs_)
        job->detach();
    for (auto& [job, thread] : jobs_)
        thread.join();
}

OperationPtr Workers::start(Body work, Outcome done, ProgressListener progress) {
    joinEnded();
    auto job = std::make_shared<Job>(loop_, std::move(done), std::move(progress));
    jobs_.emplace_back(job, std::thread([job, body = std::move(work)] { job->work(body); }));
    return job;
}

std::size_t Workers::countThreads() {
    joinEnded();
    return jobs_.size();
}

void Workers::joinEnded() {
    std::erase_if(jobs_, [](auto& one) {
        if (!one.first->hasEnded())
            return false;
        one.second.join();
        return true;
    });
}

Failure Workers::cancelledFailure() {
    return {FaultKind::Input, cancelledText};
}

bool isCancelled(const Failure& failure) {
    return failure.text.ends_with(cancelledText);
}

} // namespace qor::document
