#include "workbench/engine/qorrender/Options.h"

#include "platform/component/QorHandle.h"
#include "platform/engine/QorRdgOptionsDefaults.h"
#include "workbench/engine/adapter/OptionsTranslation.h"

#include <algorithm>

namespace qor::render {

namespace {

/// A level of quality of the quick render, without the settings that it reads.
class Level : public QorRdgOptionsDefaults {
public:
    explicit Level(int level) : level_(level) {}

protected:
    ~Level() override = default;

    [[nodiscard]] const Quality& GetQuality() const override { return QualityOf(level_); }

private:
    int level_;
};

/// What a file asks for beyond it is meant as no limit.
constexpr int mostBounces = 1000;

void setDepth(engine::TraceDepth& depth, const Request& request, const document::RenderWork& work) {
    const auto choose = [](int& value, const std::optional<int>& file,
                           const std::optional<int>& line) {
        value = line ? *line : file ? std::clamp(*file, 0, mostBounces) : value;
    };
    choose(depth.reflections, work.glossyBounces, request.reflections);
    choose(depth.refractions, work.transmissionBounces, request.refractions);
    choose(depth.diffuseBounces, work.diffuseBounces, request.diffuseBounces);
    depth.total =
        std::max({depth.total, depth.reflections, depth.refractions, depth.diffuseBounces});
}

/// Who counts the bounces wants them traced; everybody else gets gathered light.
bool gathers(const Request& request, const document::RenderWork& work) {
    return request.finalGather.value_or(!request.diffuseBounces && !work.diffuseBounces);
}

std::optional<engine::Region> regionOf(const Request& request) {
    if (!request.region)
        return std::nullopt;
    const auto [x1, y1, x2, y2] = *request.region;
    // Brought into the picture first, so that differences of wild numbers cannot overflow.
    const auto column = [&](int x) {
        return std::clamp(x, 0, request.width);
    };
    const auto row = [&](int y) {
        return std::clamp(y, 0, request.height);
    };
    return engine::Region{column(x1), request.height - row(y2), column(x2) - column(x1),
                          row(y2) - row(y1)};
}

} // namespace

engine::RenderOptions makeOptions(const Request& request, const document::RenderWork& work) {
    constexpr int unlimitedSamples = 65536;
    engine::RenderOptions options;
    adapter::applyOptions(*QorMake<Level>(request.quality), options);
    options.width = request.width;
    options.height = request.height;
    options.region = regionOf(request);
    setDepth(options.depth, request, work);
    options.finalGather.on = gathers(request, work);
    options.caustics = work.caustics.value_or(false);
    options.filter = request.filter;
    options.seed = request.seed;
    options.threads = request.threads;
    // Sums are rounded as they are made: the steps of a quick render give its very pixels.
    options.progressive = !request.scene.empty();
    options.timeLimitSeconds = request.timeLimitS;
    if (request.noiseTarget) {
        options.samples.noiseTarget = static_cast<float>(*request.noiseTarget);
        options.samples.maximum = unlimitedSamples;
    }
    return options;
}

} // namespace qor::render
