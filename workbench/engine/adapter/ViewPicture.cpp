#include "workbench/engine/adapter/ViewPicture.h"

#include "workbench/engine/adapter/ContentCache.h"
#include "workbench/engine/adapter/EightBit.h"
#include "workbench/engine/adapter/ViewCanvas.h"
#include "workbench/engine/adapter/ViewerWorld.h"
#include "workbench/engine/core/Parallel.h"

#include <new>

namespace qor::adapter {

namespace {

/// Rows of pixels that a worker takes at a time.
constexpr int bandRows = 16;

std::shared_ptr<QorPixelImage::Pixels> drawAll(const ViewCanvas& canvas, int width, int height) {
    constexpr std::size_t channels = 4;
    const auto rowBytes = static_cast<std::size_t>(width) * channels;
    auto pixels =
        std::make_shared<QorPixelImage::Pixels>(rowBytes * static_cast<std::size_t>(height));
    const auto bands = static_cast<std::size_t>((height + bandRows - 1) / bandRows);
    engine::inArena(0, [&] {
        engine::forEachIndex(bands, [&](std::size_t band) {
            const int first = static_cast<int>(band) * bandRows;
            canvas.draw(first, std::min(bandRows, height - first),
                        pixels->data() + static_cast<std::size_t>(first) * rowBytes);
        });
    });
    return pixels;
}

QorPixelImage_var refuse(QorUnicodeString& error, const std::string& text) {
    error = text.c_str();
    return nullptr;
}

} // namespace

QorPixelImage_var takeViewPicture(ContentCache& cache,
                                  Qor3DViewer& viewer,
                                  const Qor3DViewpoint& viewpoint,
                                  int width,
                                  int height,
                                  QorUnicodeString& error,
                                  const ViewStyle& style) {
    try {
        QorRdgSnapshot snapshot;
        collectViewpoint(viewer, viewpoint, snapshot);
        const SceneRecipe recipe = sceneRecipe(snapshot);
        auto scene = cache.makeScene(recipe);
        if (!scene)
            return refuse(error, scene.error().message);
        auto probe = engine::Probe::create(std::move(scene).value(), recipe.camera, width, height);
        if (!probe)
            return refuse(error, probe.error().message);
        const ViewCanvas canvas(std::move(probe).value(), recipe, snapshot, width, height, style);
        return QorMake<QorPixelImage>(width, height, 4, drawAll(canvas, width, height));
    } catch (const std::bad_alloc&) {
        return refuse(error, "there is not enough memory for a picture of the viewer");
    }
}

ViewCaster viewCaster(std::shared_ptr<ContentCache> cache) {
    return [cache = std::move(cache)](Qor3DViewer& viewer, const Qor3DViewpoint& viewpoint,
                                      int width, int height, QorUnicodeString& error) {
        return takeViewPicture(*cache, viewer, viewpoint, width, height, error);
    };
}

} // namespace qor::adapter
