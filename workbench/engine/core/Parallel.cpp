#include "workbench/engine/core/Parallel.h"

#include <sys/resource.h>

#include <tbb/info.h>
#include <tbb/parallel_for.h>
#include <tbb/task_arena.h>
#include <tbb/task_scheduler_observer.h>

#include <algorithm>
#include <optional>

namespace qor::engine::parallel {

namespace {

/// The niceness of the calling thread: on Linux each has its own.
int ownNiceness() {
    return getpriority(PRIO_PROCESS, 0);
}

/// Makes the workers of an arena wait behind others as the thread does that has opened it. They
/// stay so: only a privileged process may raise them again.
class EquallyNice : public tbb::task_scheduler_observer {
public:
    explicit EquallyNice(tbb::task_arena& arena) : task_scheduler_observer(arena) { observe(true); }

    ~EquallyNice() override { observe(false); }

    EquallyNice(const EquallyNice&) = delete;
    EquallyNice(EquallyNice&&) = delete;
    EquallyNice& operator=(const EquallyNice&) = delete;
    EquallyNice& operator=(EquallyNice&&) = delete;

    void on_scheduler_entry(bool isWorker) override {
        if (isWorker && ownNiceness() < niceness_)
            setpriority(PRIO_PROCESS, 0, niceness_);
    }

private:
    int niceness_ = ownNiceness();
};

} // namespace

void runInArena(int threads, Call call, const void* task) {
    // More than there are processors would find no worker, and the library would say so aloud.
    const int most = tbb::info::default_concurrency();
    tbb::task_arena arena(threads > 0 ? std::min(threads, most) : most);
    std::optional<EquallyNice> watch;
    if (ownNiceness() > 0)
        watch.emplace(arena);
    arena.execute([=] { call(task); });
}

void runIsolated(Call call, const void* task) {
    tbb::this_task_arena::isolate([=] { call(task); });
}

void runOnWorkers(Call call, const void* task) {
    tbb::parallel_for(
        0, tbb::this_task_arena::max_concurrency(), [=](int /*worker*/) { call(task); },
        tbb::simple_partitioner());
}

} // namespace qor::engine::parallel
