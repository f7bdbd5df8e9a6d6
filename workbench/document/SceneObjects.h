#pragma once

#include "platform/scene/QorRscContainer.h"
#include "workbench/document/ProductReps.h"
#include "workbench/document/file/SceneRows.h"

#include <vector>

namespace qor::document {

// Between the objects of a document's scene and their rows in its file. User-interface thread.

/// The objects as rows. \p materials are those of the product, by index; materials of the scene
/// that are not among them are appended, so that the file has all of them in one place.
[[nodiscard]] SceneRows rowsOf(const QorRscContainer& scene,
                               std::vector<QorVar<QorGraphicMaterial>>& materials);

/// Where in a document's product that of a file begins.
struct SceneOffset {
    std::size_t nodes = 0;
    std::size_t materials = 0;
};

/// Makes the objects of \p rows, which a file has given, behind those that are there. Kinds and
/// attributes that are unknown, and values that an attribute does not take, are left out. See
/// Document::merge for surroundings.
void addScene(QorRscContainer& scene,
              const SceneRows& rows,
              const ProductReps& product,
              const SceneOffset& offset);

/// Makes objects of what \p product, which a model file has given, holds from the given places on:
/// its materials, cameras, lights and surroundings, in the world's axes.
void addProductObjects(QorRscContainer& scene,
                       const ProductReps& product,
                       std::size_t firstMaterial = 0,
                       std::size_t firstCamera = 0,
                       std::size_t firstLight = 0);

} // namespace qor::document
