#pragma once

#include "workbench/document/session/Operation.h"

#include <thread>
#include <type_traits>
#include <vector>

namespace qor::document {

/// Runs long work on threads of its own and gives the outcomes on the user-interface thread, never
/// in a deeper turn of the loop than the one where the work was begun. All but the work itself is
/// for that thread.
class Workers {
public:
    /// \p loop outlives it.
    explicit Workers(QorEventLoop& loop);

    /// Cancels what runs, gives no outcome any more, and waits for the threads.
    ~Workers();
    Workers(const Workers&) = delete;
    Workers& operator=(const Workers&) = delete;
    Workers(Workers&&) = delete;
    Workers& operator=(Workers&&) = delete;

    /// \p work runs on a worker; \p done gets what it gave, or the failure of a cancel. Both are
    /// called once and dropped then.
    template <typename T>
    OperationPtr run(std::function<Result<T>(const WorkContext&)> work,
                     ProgressListener progress,
                     std::function<void(Result<T>)> done) {
        auto result = std::make_shared<Result<T>>(cancelledFailure());
        return start([work = std::move(work),
                      result](const WorkContext& context) { *result = work(context); },
                     [done = std::move(done), result](bool cancelled) {
                         done(cancelled ? Result<T>(cancelledFailure()) : std::move(*result));
                     },
                     std::move(progress));
    }

    /// How many threads still run, those of cancelled work included.
    [[nodiscard]] std::size_t countThreads();

private:
    class Job;
    using Body = std::function<void(const WorkContext& context)>;
    using Outcome = std::function<void(bool cancelled)>;

    [[nodiscard]] static Failure cancelledFailure();
    OperationPtr start(Body work, Outcome done, ProgressListener progress);
    void joinEnded();

    QorEventLoop& loop_;
    std::vector<std::pair<std::shared_ptr<Job>, std::thread>> jobs_;
};

} // namespace qor::document
