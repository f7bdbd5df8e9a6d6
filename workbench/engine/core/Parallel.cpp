#include "workbench/engine/core/Parallel.h"

#include <tbb/parallel_for.h>
#include <tbb/task_arena.h>

namespace qor::engine::parallel {

void runInArena(int threads, Call call, const void* task) {
    tbb::task_arena arena(threads > 0 ? threads : tbb::task_arena::automatic);
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
