#pragma once

#include "platform/text/QorString.h"
#include "platform/vis/QorPixelImage.h"

#include <functional>
#include <memory>

class Qor3DViewer;
class Qor3DViewpoint;

namespace qor::adapter {

class ContentCache;

/// How a viewer without a window looks beyond what it holds.
struct ViewStyle {
    bool edges = true;
};

/// What \p viewpoint of \p viewer shows of space, in \p width by \p height pixels, as the desktop's
/// viewers show it: lights, surroundings, ground, highlight, edges; straight alpha, transparent
/// where nothing is. Null with a reason that begins in lower case on failure. The first picture of
/// a product builds its structures in \p cache and takes as long as that takes. User-interface
/// thread.
QorPixelImage_var takeViewPicture(ContentCache& cache,
                                  Qor3DViewer& viewer,
                                  const Qor3DViewpoint& viewpoint,
                                  int width,
                                  int height,
                                  QorUnicodeString& error,
                                  const ViewStyle& style = {});

/// The same as a function object that keeps \p cache: what programs without windows compose
/// pictures of viewers with.
using ViewCaster = std::function<QorPixelImage_var(Qor3DViewer& viewer,
                                                   const Qor3DViewpoint& viewpoint,
                                                   int width,
                                                   int height,
                                                   QorUnicodeString& error)>;
ViewCaster viewCaster(std::shared_ptr<ContentCache> cache);

} // namespace qor::adapter
