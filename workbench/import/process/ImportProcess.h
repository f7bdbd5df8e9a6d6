#pragma once

#include "workbench/import/process/ProgressLine.h"

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>

namespace qor::import {

/// What to import, and what it may cost.
struct ImportRequest {
    std::filesystem::path program; ///< qorimport
    std::filesystem::path model;
    std::filesystem::path
        target;              ///< the document file to make; written by the child only, by rename
    double deflectionMm = 0; ///< 0: relative to each part
    double angleDeg = 0;     ///< 0: the child's default
    std::chrono::milliseconds timeout{0}; ///< 0: none
    std::uint64_t memoryBytes = 0;        ///< address space of the child; 0: no cap
};

enum class ImportEnd : std::uint8_t { Done, Failed, Cancelled, TimedOut, Crashed };

/// How an import ended.
struct ImportOutcome {
    ImportEnd end = ImportEnd::Failed;
    std::string text;     ///< one sentence that names the model; empty if Done
    ProgressLine summary; ///< the child's last line, if Done
};

/// Runs qorimport as a child process. One object runs one import. All calls come from one thread;
/// none but wait() and the destructor blocks, and those no longer than the child takes to die.
/// Whatever happens to the child, the target is as it was or whole, and nothing is left beside it.
class ImportProcess {
public:
    /// Called from poll() for each progress line and warning, in order.
    using Listener = std::function<void(const ProgressLine& line)>;

    explicit ImportProcess(Listener listener) : listener_(std::move(listener)) {}

    /// Kills a child that still runs.
    ~ImportProcess();
    ImportProcess(const ImportProcess&) = delete;
    ImportProcess& operator=(const ImportProcess&) = delete;
    ImportProcess(ImportProcess&&) = delete;
    ImportProcess& operator=(ImportProcess&&) = delete;

    /// Starts the child. If that fails, outcome() says so at once.
    void start(const ImportRequest& request);

    /// A descriptor that becomes readable when poll() has something to do; -1 when nothing runs.
    /// For event loops; time-outs need a poll() now and then too.
    [[nodiscard]] int descriptor() const { return output_; }

    /// Takes what the child has said and notices its end. Returns whether it still runs.
    bool poll();

    /// Polls until the child has ended.
    const ImportOutcome& wait();

    /// Kills the child; the outcome is Cancelled unless it had ended before.
    void cancel();

    /// Nothing while the child runs.
    [[nodiscard]] const std::optional<ImportOutcome>& outcome() const { return outcome_; }

private:
    void drainOutput();
    void take(const ProgressLine& line);
    void stop(ImportEnd reason);
    void reap(bool block);
    void finish(int status);
    void finish(ImportEnd end, const std::string& clause);
    [[nodiscard]] bool isOverdue() const;

    Listener listener_;
    ImportRequest request_;
    pid_t child_ = -1;
    int output_ = -1;
    std::chrono::steady_clock::time_point start_;
    ProgressParser parser_;
    std::optional<ProgressLine> last_; ///< the child's Done or Error line
    std::string stage_;                ///< where it was, for messages about a crash
    std::optional<ImportEnd> killedFor_;
    std::optional<ImportOutcome> outcome_;
};

} // namespace qor::import
