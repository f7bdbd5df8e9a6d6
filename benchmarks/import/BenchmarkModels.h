#pragma once

#include <filesystem>

namespace qor::import::benchmarks {

/// An assembly of \p parts different turned and drilled parts, with \p instances of each, as STEP.
/// A part has about 7,500 triangles with the default settings.
void writeStepAssembly(const std::filesystem::path& file, int parts, int instances);

/// The product of a STEP file again, as binary glTF.
void writeGlb(const std::filesystem::path& file, const std::filesystem::path& step);

} // namespace qor::import::benchmarks
