#include "workbench/import/model/ImportReport.h"

#include <algorithm>

namespace qor::import {

namespace {

// Steps of progress smaller than this are not worth a line.
constexpr double smallestStep = 0.005;

} // namespace

void ImportReport::enter(const std::string& stage, double from, double to) {
    stage_ = stage;
    from_ = from;
    to_ = to;
    said_ = std::max(said_, from);
    progress_(stage_, said_);
}

void ImportReport::advance(double fractionOfStage) {
    const double fraction = from_ + (to_ - from_) * std::clamp(fractionOfStage, 0.0, 1.0);
    if (fraction < said_ + smallestStep)
        return;
    said_ = fraction;
    progress_(stage_, fraction);
}

void ImportReport::warn(const std::string& text) {
    if (text == lastWarning_)
        return;
    lastWarning_ = text;
    warning_(text);
}

} // namespace qor::import
