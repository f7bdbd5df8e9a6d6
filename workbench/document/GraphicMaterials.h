#pragma once

#include "platform/vis/QorGraphicMaterial.h"
#include "workbench/document/product/Material.h"

#include <span>

namespace qor::document {

/// The material as viewers and the engine take it. \p images are those of Product::textures. Any
/// thread.
[[nodiscard]] QorVar<QorGraphicMaterial> graphicMaterial(const Material& material,
                                                         std::span<const QorPixelImage_var> images);

/// The way back. An image that is not in \p images yet is appended.
[[nodiscard]] Material materialOf(const QorGraphicMaterial& material,
                                  std::vector<QorPixelImage_var>& images);

/// The picture of a texture. Takes its pixels: an empty one of that name is left. Any thread.
[[nodiscard]] QorPixelImage_var imageOf(Texture& texture);

/// What is shown where nobody names a material: a light grey, half rough. Shared by all documents.
[[nodiscard]] QorVar<QorGraphicMaterial> plainMaterial();

} // namespace qor::document
