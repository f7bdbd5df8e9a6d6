#pragma once

#include "workbench/document/product/Result.h"

#include <functional>
#include <memory>
#include <mutex>
#include <stop_token>
#include <string>

class QorEventLoop;

namespace qor::document {

/// Told how far long work is, on the user-interface thread: 0 to 100, never falling, and a word for
/// what is being done.
using ProgressListener = std::function<void(int percent, const std::string& stage)>;

/// Long work that runs on a worker, as whoever began it sees it.
class Operation {
public:
    virtual ~Operation() = default;

    /// Ends the work: its outcome is a failure with the text "cancelled" of kind Input, given at
    /// the next turn; the worker winds down on its own. Nothing happens when it has ended.
    /// User-interface thread.
    virtual void cancel() = 0;

    /// Until its outcome has been given.
    [[nodiscard]] virtual bool isRunning() const = 0;
};

using OperationPtr = std::shared_ptr<Operation>;

/// What the text of a failure ends with when the person wanted it.
inline constexpr const char* cancelledText = "cancelled";

/// Whether somebody cancelled, rather than something going wrong.
[[nodiscard]] bool isCancelled(const Failure& failure);

/// What work on a worker may ask and say; lives as long as the work runs.
class WorkContext {
public:
    virtual ~WorkContext() = default;

    [[nodiscard]] virtual std::stop_token stop() const = 0;

    /// Any thread; cheap. Listeners see the latest.
    virtual void report(int percent, const std::string& stage) const = 0;
};

} // namespace qor::document
