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

    void Add(QorRdgWorkers::Job iJob) {
        {
            const std::scoped_lock lock(mutex);
            jobs.push_back(std::move(iJob));
        }
        changed.notify_one();
    }

    void WaitForAll() {
        std::unique_lock lock(mutex);
        changed.wait(lock, [this] { return jobs.empty() && running == 0; });
    }

    [[nodiscard]] std::size_t CountPending() {
        const std::scoped_lock lock(mutex);
        return jobs.size() + static_cast<std::size_t>(running) + deliveries.size();
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
    void Work() {
        std::unique_lock lock(mutex);
        while (true) {
            changed.wait(lock, [this] { return ending || !jobs.empty(); });
            if (ending)
                return;
            const QorRdgWorkers::Job job = std::move(jobs.front());
            jobs.pop_front();
            ++running;
            lock.unlock();
            QorRdgWorkers::Delivery delivery = Do(job);
            lock.lock();
            --running;
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
    std::deque<QorRdgWorkers::Job> jobs;
    std::deque<QorRdgWorkers::Delivery> deliveries;
    int running = 0;
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

void QorRdgWorkers::Run(Job iJob) {
    const QorApplication* application = QorApplication::MainApplication();
    if (application == nullptr) {
        iJob()();
        return;
    }
    if (!ThePool()) {
        ThePool() = std::make_unique<Pool>(application->GetLoop());
        QorCallOnExit([] { ThePool().reset(); }, exitPriority);
    }
    ThePool()->Add(std::move(iJob));
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
