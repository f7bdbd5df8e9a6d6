#include "workbench/engine/core/Adaptive.h"

#include <algorithm>

namespace qor::engine {

namespace {

/// With fewer samples the spread of a block's eight pixels says nothing. What the eye is to be
/// pleased with is looked at more closely.
constexpr int fewestForTarget = 2;
constexpr int fewestForContrast = 4;
/// So much more than all of a block's pixels together may one of them be off.
constexpr double worstOverTogether = 3.0;
/// Most samples that one whole pass takes, so that pictures refine evenly.
constexpr int longestPass = 32;

std::vector<BlockWork> tileOrder(const BlockGrid& grid) {
    std::vector<BlockWork> order;
    order.reserve(grid.count());
    for (int tileY = 0; tileY < grid.tilesY(); ++tileY)
        for (int tileX = 0; tileX < grid.tilesX(); ++tileX)
            for (int y = tileY * tileBlocksY; y < std::min(grid.rows, (tileY + 1) * tileBlocksY);
                 ++y)
                for (int x = tileX * tileBlocksX;
                     x < std::min(grid.columns, (tileX + 1) * tileBlocksX); ++x)
                    order.push_back({x, y, 0, 0});
    return order;
}

} // namespace

Adaptive::Adaptive(const RenderOptions& options, const Film& film)
    : options_(options)
    , film_(film)
    , noise_(film)
    , order_(tileOrder(film.grid()))
    , planned_(static_cast<double>(order_.size()) * blockPixels * options.samples.minimum) {}

std::vector<BlockWork> Adaptive::nextPass() {
    const Samples& samples = options_.samples;
    const int least = leastSamples();
    if (uniform_ < least) {
        const int wanted =
            options_.progressive ? std::max(1, uniform_ * (uniform_ < 4 ? 3 : 1)) : least;
        return wholePass(std::min({wanted, least - uniform_, longestPass}));
    }
    return samples.maximum > samples.minimum ? refinedPass() : std::vector<BlockWork>{};
}

/// Of every block, before any is looked at.
int Adaptive::leastSamples() const {
    const Samples& samples = options_.samples;
    const int forEstimate = samples.noiseTarget ? fewestForTarget : fewestForContrast;
    return std::max(samples.minimum, std::min(forEstimate, samples.maximum));
}

std::vector<BlockWork> Adaptive::wholePass(int count) {
    std::vector<BlockWork> pass = order_;
    for (BlockWork& work : pass) {
        work.first = uniform_;
        work.count = count;
    }
    uniform_ += count;
    planned_ = std::max(planned_, static_cast<double>(order_.size()) * blockPixels * uniform_);
    return pass;
}

int Adaptive::nextCount(int have) const {
    return std::min({have, options_.samples.maximum - have, 4 * longestPass});
}

std::vector<BlockWork> Adaptive::refinedPass() {
    const std::vector<bool> chosen =
        options_.samples.noiseTarget ? chooseByTarget() : chooseByContrast();
    std::vector<BlockWork> pass;
    for (std::size_t place = 0; place < order_.size(); ++place) {
        if (!chosen[place])
            continue;
        BlockWork work = order_[place];
        work.first = static_cast<int>(film_.samples(indexOf(work)));
        work.count = nextCount(work.first);
        if (work.count > 0)
            pass.push_back(work);
        planned_ += static_cast<double>(work.count) * blockPixels;
    }
    return pass;
}

std::size_t Adaptive::indexOf(const BlockWork& work) const {
    return film_.grid().index(work.column, work.row);
}

/// Doubling the samples of a block halves its error at least; the blocks where that gains most for
/// a sample are taken until the target would be met.
std::vector<bool> Adaptive::chooseByTarget() {
    struct Want {
        double error = 0.0;
        double gain = 0.0; ///< for a sample
        std::size_t place = 0;
    };

    const std::vector<double> errors = noise_.relativeErrors();
    std::vector<Want> wants;
    wants.reserve(order_.size());
    double total = 0.0;
    for (std::size_t place = 0; place < order_.size(); ++place) {
        const std::size_t index = indexOf(order_[place]);
        const auto count = static_cast<int>(film_.samples(index));
        total += errors[index];
        wants.push_back({errors[index], nextCount(count) > 0 ? errors[index] / count : 0.0, place});
    }
    const auto blocks = static_cast<double>(order_.size());
    estimatedError_ = total / blocks;
    const double target = *options_.samples.noiseTarget * blocks;
    std::vector<bool> chosen(order_.size());
    std::stable_sort(wants.begin(), wants.end(),
                     [](const Want& a, const Want& b) { return a.gain > b.gain; });
    for (const Want& want : wants) {
        if (total <= target || want.gain <= 0.0)
            break;
        chosen[want.place] = true;
        total -= 0.5 * want.error;
    }
    return chosen;
}

std::vector<bool> Adaptive::chooseByContrast() const {
    const std::vector<BlockNoise::Visible> errors = noise_.visibleErrors();
    const double allowed = options_.samples.contrast;
    std::vector<bool> chosen(order_.size());
    for (std::size_t place = 0; place < order_.size(); ++place) {
        const BlockNoise::Visible& error = errors[indexOf(order_[place])];
        chosen[place] = error.together > allowed || error.worst > worstOverTogether * allowed;
    }
    return chosen;
}

} // namespace qor::engine
