#pragma once

#include <atomic>
#include <cstddef>

namespace qor::engine {

/// The doors to oneTBB. Its templates are compiled in Parallel.cpp alone, which thread sanitizers
/// leave out as they leave out the library itself: they would see halves of its hand-overs only.
namespace parallel {

using Call = void (*)(const void* task);

void runInArena(int threads, Call call, const void* task);
void runIsolated(Call call, const void* task);
void runOnWorkers(Call call, const void* task);

/// Everything before a parallel part happens before what its workers do, and that before what
/// follows. The library sees to it; it is said once more here, in a way that race detectors can
/// see.
inline void meet() {
    static std::atomic<unsigned> meeting{0};
    meeting.fetch_add(1, std::memory_order_acq_rel);
}

template <typename Task>
void call(const void* task) {
    meet();
    (*static_cast<const Task*>(task))();
    meet();
}

} // namespace parallel

/// Calls \p task() in an arena of \p threads threads (0: all processors) and waits. Its workers are
/// scheduled no more eagerly than the calling thread.
template <typename Task>
void inArena(int threads, const Task& task) {
    parallel::meet();
    parallel::runInArena(threads, parallel::call<Task>, &task);
    parallel::meet();
}

/// Calls \p task(); parallel parts in it do not take up other work of this thread while they wait.
template <typename Task>
void isolated(const Task& task) {
    parallel::runIsolated(parallel::call<Task>, &task);
}

/// Calls \p task() once for each worker of the current arena, at once as far as there are idle
/// ones, and waits. A worker may be called after others have ended, so tasks share their work by a
/// counter, not by number.
template <typename Task>
void onEveryWorker(const Task& task) {
    parallel::meet();
    parallel::runOnWorkers(parallel::call<Task>, &task);
    parallel::meet();
}

/// Calls \p task(i) for each i below \p count on the workers of the current arena.
template <typename Task>
void forEachIndex(std::size_t count, const Task& task) {
    std::atomic<std::size_t> next{0};
    onEveryWorker([&] {
        for (std::size_t i = next.fetch_add(1); i < count; i = next.fetch_add(1))
            task(i);
    });
}

} // namespace qor::engine
