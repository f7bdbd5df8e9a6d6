#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace qor::import {

/// Where an import says how far it is and what it had to leave out. Calls come from the importing
/// thread only.
class ImportReport {
public:
    using Progress = std::function<void(const std::string& stage, double fraction)>;
    using Warning = std::function<void(const std::string& text)>;

    ImportReport(Progress progress, Warning warning)
        : progress_(std::move(progress)), warning_(std::move(warning)) {}

    /// Says that stages named \p stage follow, which take the whole from \p from to \p to.
    void enter(const std::string& stage, double from, double to);

    /// The share of the current stage that is done.
    void advance(double fractionOfStage);

    /// Something was left out or mended; a clause that begins in lower case, without the file's
    /// name. The same text is passed on once only.
    void warn(const std::string& text);

    /// Runs \p work and counts its time as the library's.
    template <typename Work>
    auto inLibrary(const Work& work) {
        const Stopwatch watch(librarySeconds_);
        return work();
    }

    [[nodiscard]] double librarySeconds() const { return librarySeconds_; }

private:
    // Adds the time of its life to a sum.
    class Stopwatch {
    public:
        explicit Stopwatch(double& sum) : sum_(sum) {}

        ~Stopwatch() {
            sum_ +=
                std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
        }

        Stopwatch(const Stopwatch&) = delete;
        Stopwatch& operator=(const Stopwatch&) = delete;
        Stopwatch(Stopwatch&&) = delete;
        Stopwatch& operator=(Stopwatch&&) = delete;

    private:
        double& sum_;
        std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    };

    Progress progress_;
    Warning warning_;
    std::string stage_;
    std::string lastWarning_;
    double from_ = 0;
    double to_ = 0;
    double said_ = -1;
    double librarySeconds_ = 0;
};

} // namespace qor::import
