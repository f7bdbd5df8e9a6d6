#pragma once

#include <filesystem>

namespace qor::import::benchmarks {

/// An assembly of \p parts different turned and drilled parts, with \p instances of each, as STEP.
/// A part has about 7,500 triangles with the default settings.
void writeStepAssembly(const std::filesystem::path& file, int parts, int instances);

/// The product of a STEP file again, as binary glTF.
void writeGlb(const std::filesystem::path& file, const std::filesystem::path& step);

/// An assembly of about half a million triangles in a folder of its own, as STEP and glTF, and the
/// place for a document of it. Removed at the end.
class Models {
public:
    Models();
    ~Models();
    Models(const Models&) = delete;
    Models& operator=(const Models&) = delete;
    Models(Models&&) = delete;
    Models& operator=(Models&&) = delete;

    [[nodiscard]] std::filesystem::path step() const { return folder_ / "assembly.step"; }

    [[nodiscard]] std::filesystem::path glb() const { return folder_ / "assembly.glb"; }

    /// Not written yet.
    [[nodiscard]] std::filesystem::path saved() const { return folder_ / "assembly.qor"; }

private:
    std::filesystem::path folder_;
};

} // namespace qor::import::benchmarks
