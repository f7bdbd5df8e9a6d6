#pragma once

#include "workbench/import/process/ImportProcess.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

namespace qor::import::testing {

/// A request for the real qorimport of this build.
inline ImportRequest realRequest(const std::filesystem::path& model,
                                 const std::filesystem::path& target) {
    ImportRequest request;
    const char* program = std::getenv("QOR_IMPORT_PROGRAM");
    request.program = program == nullptr ? "qorimport" : program;
    request.model = model;
    request.target = target;
    return request;
}

/// A PLY grid of 2 * \p steps * \p steps triangles.
inline void writePlyGrid(const std::filesystem::path& file, int steps) {
    std::ofstream out(file);
    const int side = steps + 1;
    out << "ply\nformat ascii 1.0\nelement vertex " << side * side
        << "\nproperty float x\nproperty float y\nproperty float z\nelement face "
        << 2 * steps * steps << "\nproperty list uchar int vertex_indices\nend_header\n";
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            out << x << ' ' << y << " 0\n";
    for (int y = 0; y < steps; ++y)
        for (int x = 0; x < steps; ++x) {
            const int a = y * side + x;
            out << "3 " << a << ' ' << a + 1 << ' ' << a + side << "\n3 " << a + 1 << ' '
                << a + side + 1 << ' ' << a + side << '\n';
        }
}

} // namespace qor::import::testing
