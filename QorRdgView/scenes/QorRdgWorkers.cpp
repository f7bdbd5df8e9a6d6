#include "scenes/QorRdgWorkers.h"

#include "platform/system/QorApplication.h"
#include "platform/system/QorEventLoop.h"
#include "platform/system/QorExitHooks.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace {

constexpr int exitPriority = 2; // before the managers go

/// Whether anybody waits for a job.
enum class Kind { Awaited, Aside };

/// The threads, the jobs and what they have left to deliver.
class Pool {
public:
    explicit Pool(QorEventLoop& iLoop) : loop(iLoop) {
        const unsigned count = std::clamp(std::thread::hardware_concurrency(), 1U, 4U);
        for (unsigned i = 0; i < count; ++i)
            threads.emplace_back([this] { Work(); });
    }

    /// Drops the jobs that have not begun and waits for those that have.
    ~Pool() {
        {
            const std::scoped_lock lock(mutex);
            ending = true;
            jobs.clear();
        }
        changed.notify_all();
        for (std::thread& thread : threads)
            thread.join();
    }

    Pool(const Pool&) = delete;
    Pool& operator=(const Pool&) = delete;

    void Add(QorRdgWorkers::Job iJob, Kind iKind) {
        {
            const std::scoped_lock lock(mutex);
            jobs.push_back({std::move(iJob), iKind});
            ++Unfinished(iKind);
        }
        changed.notify_one();
    }

    void WaitForAll() {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return Unfinished(Kind::Awaited) == 0; });
    }

    [[nodiscard]] std::size_t CountPending() {
        const std::scoped_lock lock(mutex);
        return Unfinished(Kind::Awaited) + deliveries.size();
    }

    [[nodiscard]] std::size_t CountAside() {
        const std::scoped_lock lock(mutex);
        return Unfinished(Kind::Aside);
    }

    void Deliver() {
        std::deque<QorRdgWorkers::Delivery> ready;
        {
            const std::scoped_lock lock(mutex);
            ready.swap(deliveries);
            posted = false;
        }
        for (const QorRdgWorkers::Delivery& one : ready)
            one();
    }

private:
    struct Queued {
        QorRdgWorkers::Job job;
        Kind kind;
    };

    [[nodiscard]] std::size_t& Unfinished(Kind iKind) {
        return iKind == Kind::Awaited ? awaited : aside;
    }

    void Work() {
        std::unique_lock lock(mutex);
        while (true) {
            changed.wait(lock, [this] { return ending || !jobs.empty(); });
            if (ending)
                return;
            const auto [job, kind] = std::move(jobs.front());
            jobs.pop_front();
            lock.unlock();
            QorRdgWorkers::Delivery delivery = Do(job);
            lock.lock();
            --Unfinished(kind);
            if (delivery) {
                deliveries.push_back(std::move(delivery));
                Post();
            }
            changed.notify_all();
        }
    }

    static QorRdgWorkers::Delivery Do(const QorRdgWorkers::Job& iJob) {
        try {
            return iJob();
        } catch (const std::exception&) { // memory is short
            return {};
        }
    }

    /// One posted turn for all that is ready until then.
    void Post();

    QorEventLoop& loop;
    std::mutex mutex; ///< guards all below but the threads
    std::condition_variable changed;
    std::deque<Queued> jobs;
    std::deque<QorRdgWorkers::Delivery> deliveries;
    std::size_t awaited = 0; ///< jobs that run or wait
    std::size_t aside = 0;
    bool posted = false;
    bool ending = false;
    std::vector<std::thread> threads;
};

std::unique_ptr<Pool>& ThePool() {
    static std::unique_ptr<Pool> pool;
    return pool;
}

void DeliverIfThere() {
    if (ThePool())
        ThePool()->Deliver();
}

void Pool::Post() {
    if (!posted && !ending) {
        posted = true;
        loop.Post(&DeliverIfThere);
    }
}

} // namespace

namespace {

void Start(QorRdgWorkers::Job iJob, Kind iKind) {
    const QorApplication* application = QorApplication::MainApplication();
    if (application == nullptr) {
        if (const QorRdgWorkers::Delivery delivery = iJob())
            delivery();
        return;
    }
    if (!ThePool()) {
        ThePool() = std::make_unique<Pool>(application->GetLoop());
        QorCallOnExit([] { ThePool().reset(); }, exitPriority);
    }
    ThePool()->Add(std::move(iJob), iKind);
}

} // namespace

void QorRdgWorkers::Run(Job iJob) {
    Start(std::move(iJob), Kind::Awaited);
}

void QorRdgWorkers::RunAside(Job iJob) {
    Start(std::move(iJob), Kind::Aside);
}

std::size_t QorRdgWorkers::CountAside() {
    return ThePool() ? ThePool()->CountAside() : 0;
}

std::size_t QorRdgWorkers::CountPending() {
    return ThePool() ? ThePool()->CountPending() : 0;
}

void QorRdgWorkers::Finish() {
    if (!ThePool())
        return;
    ThePool()->WaitForAll();
    ThePool()->Deliver();
}
