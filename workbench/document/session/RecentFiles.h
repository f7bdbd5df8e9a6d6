#pragma once

#include <filesystem>
#include <vector>

namespace qor::document {

/// The files that were opened and saved last, newest first, kept in the settings repository
/// "documents". User-interface thread.
class RecentFiles {
public:
    static constexpr std::size_t most = 10;

    [[nodiscard]] static std::vector<std::filesystem::path> list();

    /// To the front, and the settings to the disk.
    static void add(const std::filesystem::path& file);

    /// Forgets \p file if it is not there any more. Whether it did.
    static bool dropIfMissing(const std::filesystem::path& file);
};

} // namespace qor::document
