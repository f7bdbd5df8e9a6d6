#pragma once

#include "workbench/engine/qorrender/Request.h"

#include <chrono>
#include <string>

namespace qor::render {

/// Tells on the error output how far the work is: a bar that redraws itself, one JSON object a
/// line, or nothing.
class Progress {
public:
    explicit Progress(ProgressStyle style) : style_(style) {}

    ~Progress() { finish(); }

    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;
    Progress(Progress&&) = delete;
    Progress& operator=(Progress&&) = delete;

    /// \p fraction of a stage, 0..1. Said at most ten times a second within a stage.
    void show(const std::string& stage, double fraction);
    /// A sentence for the person, whatever the style; among JSON lines one of them.
    void warn(const std::string& text);
    /// The same of why the program ends.
    void fail(const std::string& text);
    /// Clears the bar away.
    void finish();

private:
    void drawBar(double fraction);
    void say(const char* event, const char* before, const std::string& text);

    ProgressStyle style_;
    std::string stage_;
    std::chrono::steady_clock::time_point last_;
    bool drawn_ = false;
};

} // namespace qor::render
