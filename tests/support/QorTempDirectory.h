#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// A directory of the test's own, removed with all that is in it.
class QorTempDirectory {
public:
    QorTempDirectory() {
        std::string name = (std::filesystem::temp_directory_path() / "qortest-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("cannot make a directory like " + name);
        path = name;
    }

    ~QorTempDirectory() {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
    }

    QorTempDirectory(const QorTempDirectory&) = delete;
    QorTempDirectory& operator=(const QorTempDirectory&) = delete;

    /// The directory, or a file in it.
    [[nodiscard]] std::string GetPath(std::string_view iName = {}) const {
        return iName.empty() ? path.string() : (path / iName).string();
    }

    [[nodiscard]] const std::filesystem::path& GetFolder() const { return path; }

    std::filesystem::path operator/(std::string_view iName) const { return path / iName; }

    /// Writes a file, and the folders on the way to it; returns its path.
    std::string Write(std::string_view iName, std::string_view iText) const {
        const std::filesystem::path file = path / iName;
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file, std::ios::binary) << iText;
        return file.string();
    }

    /// The bytes of a file; empty when there is none.
    [[nodiscard]] std::string Read(std::string_view iName) const {
        std::ifstream file(path / iName, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// Names of what is in a folder, sorted.
    [[nodiscard]] std::vector<std::string> List(std::string_view iFolder = {}) const {
        std::vector<std::string> names;
        std::error_code missing;
        for (const auto& entry : std::filesystem::directory_iterator(path / iFolder, missing))
            names.push_back(entry.path().filename().string());
        std::sort(names.begin(), names.end());
        return names;
    }

private:
    std::filesystem::path path;
};
