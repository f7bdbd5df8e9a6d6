#pragma once

#include "workbench/engine/core/Image.h"
#include "workbench/engine/core/RenderOptions.h"

#include <filesystem>
#include <functional>
#include <string_view>

namespace qor::render {

/// Whether the ending of \p file names a format that can be written.
bool knowsFormatOf(const std::filesystem::path& file);

/// Throws Failure when no file can be put in the place of \p file; to be called before the long
/// work.
void checkWritable(const std::filesystem::path& file);

/// Writes the part of \p image that \p region holds in the format of the ending: .pfm as linear
/// radiance, all others as opaque sRGB. \p told hears how far it is, 0..1. Throws Failure, or
/// Interrupted; what was there before stays then.
void writePicture(const engine::Image& image,
                  const engine::Region& region,
                  const std::filesystem::path& file,
                  const std::function<void(double fraction)>& told);

/// Puts \p text in the place of \p file as a whole. Throws Failure.
void writeWhole(const std::filesystem::path& file, std::string_view text);

} // namespace qor::render
