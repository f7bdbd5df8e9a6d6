#include "workbench/engine/qorrender/Command.h"

#include "workbench/document/product/ProductQuery.h"
#include "workbench/engine/adapter/Memory.h"
#include "workbench/engine/core/Render.h"
#include "workbench/engine/qorrender/Failure.h"
#include "workbench/engine/qorrender/Input.h"
#include "workbench/engine/qorrender/Interrupt.h"
#include "workbench/engine/qorrender/Options.h"
#include "workbench/engine/qorrender/Output.h"
#include "workbench/engine/qorrender/SceneMaker.h"
#include "workbench/engine/qorrender/Stage.h"
#include "workbench/engine/qorrender/Statistics.h"
#include "workbench/engine/qorrender/View.h"

#include <condition_variable>
#include <cstdio>
#include <mutex>
#include <new>

namespace qor::render {

namespace {

class Stopwatch {
public:
    /// Seconds since it was made or last asked.
    double lap() {
        const auto before = std::exchange(start_, std::chrono::steady_clock::now());
        return std::chrono::duration<double>(start_ - before).count();
    }

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

bool isRunning(engine::RenderState state) {
    return state == engine::RenderState::preparing || state == engine::RenderState::tracing;
}

/// Whether two names lead to the same file, be it there or not.
bool isSameFile(const std::filesystem::path& a, const std::filesystem::path& b) {
    std::error_code error;
    const auto placeOf = [&](const std::filesystem::path& file) {
        return std::filesystem::weakly_canonical(std::filesystem::absolute(file, error), error);
    };
    return std::filesystem::equivalent(a, b, error) || placeOf(a) == placeOf(b);
}

/// Nothing that is written may take the place of what is read, or of what else is written.
void checkFilesDiffer(const Request& request) {
    if (isSameFile(request.output, request.model))
        throw WrongUsage("--output: " + request.output.string() + " is the model itself");
    if (request.statistics.empty())
        return;
    if (isSameFile(request.statistics, request.model))
        throw WrongUsage("--stats: " + request.statistics.string() + " is the model itself");
    if (isSameFile(request.statistics, request.output))
        throw WrongUsage("--stats: " + request.statistics.string() + " is the picture itself");
}

class Command {
public:
    explicit Command(const Request& request) : request_(request), progress_(request.progress) {}

    void run() {
        checkBeforeTheLongWork();
        Stopwatch watch;
        engine::Scene scene = read(watch);
        checkInterrupt();
        times_.sceneS = watch.lap();
        const engine::Image image = render(std::move(scene));
        times_.renderS = watch.lap();
        checkInterrupt();
        progress_.show("write", 0);
        writePicture(image, engine::clippedRegion(options_), request_.output,
                     [this](double fraction) { progress_.show("write", fraction); });
        progress_.show("write", 1);
        times_.writeS = watch.lap();
        if (!request_.statistics.empty())
            writeWhole(request_.statistics, formatStatistics(times_, stats_, options_, triangles_));
    }

private:
    void checkBeforeTheLongWork() {
        const engine::RenderOptions options = makeOptions(request_, {});
        if (const auto valid = engine::validate(options); !valid)
            throw Failure(valid.error().message);
        if (const std::string shortage = adapter::findShortageOfMemory(options); !shortage.empty())
            throw Failure(shortage);
        checkFilesDiffer(request_);
        checkWritable(request_.output);
        if (!request_.statistics.empty())
            checkWritable(request_.statistics);
        if (!request_.scene.empty())
            stage_.chooseScene(request_.scene);
    }

    engine::Scene read(Stopwatch& watch) {
        document::Product product = readInput(request_.model, progress_);
        times_.readS = watch.lap();
        checkInterrupt();
        triangles_ = document::instancedTriangleCount(product);
        options_ = makeOptions(request_, product.work);
        try {
            camera_ = makeCamera(product, request_.view,
                                 static_cast<double>(request_.width) / request_.height);
            return makeScene(
                makeRecipe(std::move(product), camera_, options_, stage_, request_, progress_));
        } catch (const Failure& failure) {
            throw Failure(request_.model.string() + ": " + failure.what());
        }
    }

    engine::Image render(engine::Scene scene) {
        auto started = engine::Render::start(std::move(scene), camera_, options_,
                                             [this] { changed_.notify_all(); });
        if (!started)
            throw Failure(request_.model.string() + ": " + started.error().message);
        engine::Render& render = started.value();
        follow(render);
        if (render.progress().state == engine::RenderState::failed)
            throw Failure(request_.model.string() + ": " + render.error().message);
        stats_ = render.stats();
        engine::Image image;
        render.snapshot(image);
        return image;
    }

    void follow(engine::Render& render) {
        constexpr std::chrono::milliseconds turn(30);
        for (auto now = render.progress(); isRunning(now.state); now = render.progress()) {
            progress_.show(now.state == engine::RenderState::preparing ? "prepare" : "render",
                           now.fraction);
            std::unique_lock lock(mutex_);
            changed_.wait_for(lock, turn);
            if (isInterrupted()) {
                render.abort();
                throw Interrupted();
            }
        }
    }

    const Request& request_;
    Stage stage_;
    std::mutex mutex_;
    std::condition_variable changed_;
    Progress progress_;
    RunTimes times_;
    engine::RenderOptions options_;
    engine::RenderStats stats_;
    engine::Camera camera_;
    std::uint64_t triangles_ = 0;
};

int complain(ProgressStyle style, const char* text) {
    Progress(style).fail(text);
    return failed;
}

} // namespace

int runRequest(const Request& request) {
    try {
        Command(request).run();
        return done;
    } catch (const Interrupted&) {
        complain(request.progress, "interrupted");
        return interrupted;
    } catch (const WrongUsage& error) {
        complain(request.progress, error.what());
        return usage;
    } catch (const std::bad_alloc&) {
        const std::string text = request.model.string() +
                                 ": there is not enough memory for a picture of " +
                                 std::to_string(request.width) + " x " +
                                 std::to_string(request.height) + " pixels of it";
        return complain(request.progress, text.c_str());
    } catch (const std::exception& error) {
        return complain(request.progress, error.what());
    }
}

} // namespace qor::render
