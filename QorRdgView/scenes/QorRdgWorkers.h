#pragma once

#include <cstddef>
#include <functional>

/// A few threads for jobs that would hold up the user interface. User-interface thread only, but
/// for the jobs themselves.
class QorRdgWorkers {
public:
    /// What a job leaves to be done on the user-interface thread.
    using Delivery = std::function<void()>;
    /// Runs on a worker; must not touch the environment. One that throws leaves nothing.
    using Job = std::function<Delivery()>;

    /// Queues a job; jobs begin in order. Its delivery is done in a posted turn. Without an
    /// application both are done at once.
    static void Run(Job iJob);
    /// The same for a job that may take long and that whoever waits for the others does not wait
    /// for: it is never pending, and Finish leaves it alone.
    static void RunAside(Job iJob);
    /// Jobs of Run that run or wait, and deliveries that wait.
    [[nodiscard]] static std::size_t CountPending();
    /// Jobs of RunAside that run or wait.
    [[nodiscard]] static std::size_t CountAside();
    /// Waits for all jobs of Run and does their deliveries now; for whoever wants to see the final
    /// state, such as the automation port before it answers.
    static void Finish();
};
