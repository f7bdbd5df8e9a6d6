#include "workbench/engine/qorrender/Progress.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace qor::render {

namespace {

/// File names may hold bytes that are no text.
void printLine(const nlohmann::json& line) {
    const std::string text =
        line.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
    std::fputs(text.c_str(), stderr);
}

} // namespace

void Progress::show(const std::string& stage, double fraction) {
    constexpr std::chrono::milliseconds pause(100);
    const auto now = std::chrono::steady_clock::now();
    if (style_ == ProgressStyle::none || (stage == stage_ && now - last_ < pause && fraction < 1))
        return;
    stage_ = stage;
    last_ = now;
    fraction = std::clamp(fraction, 0.0, 1.0);
    if (style_ == ProgressStyle::bar)
        drawBar(fraction);
    else
        printLine({{"event", "progress"}, {"stage", stage}, {"fraction", fraction}});
}

void Progress::warn(const std::string& text) {
    say("warning", "qorrender: warning: ", text);
}

void Progress::fail(const std::string& text) {
    say("error", "qorrender: ", text);
}

void Progress::say(const char* event, const char* before, const std::string& text) {
    finish();
    if (style_ == ProgressStyle::json)
        printLine({{"event", event}, {"text", text}});
    else
        std::fprintf(stderr, "%s%s\n", before, text.c_str());
}

void Progress::finish() {
    if (drawn_)
        std::fputs("\r\033[K", stderr);
    drawn_ = false;
}

void Progress::drawBar(double fraction) {
    constexpr int width = 40;
    const int filled = static_cast<int>(std::lround(fraction * width));
    const std::string bar = std::string(static_cast<std::size_t>(filled), '#') +
                            std::string(static_cast<std::size_t>(width - filled), '.');
    std::fprintf(stderr, "\r\033[K%-8s [%s] %3d %%", stage_.c_str(), bar.c_str(),
                 static_cast<int>(std::lround(fraction * 100)));
    std::fflush(stderr);
    drawn_ = true;
}

} // namespace qor::render
