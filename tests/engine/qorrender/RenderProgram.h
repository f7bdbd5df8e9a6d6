#pragma once

#include "tests/support/QorTempDirectory.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <string>

/// The program qorrender as a child, with a triangle to render, in a folder of its own.
class RenderProgram : public testing::Test {
protected:
    /// Exit code of a run; its error output goes into the file "errors".
    int run(const std::string& arguments, const std::string& before = {}) {
        const std::string command = "cd '" + folder.GetPath() + "' && " + before + " exec '" +
                                    std::getenv("QOR_RENDER_PROGRAM") + "' " + arguments +
                                    " 2>errors >output";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    /// A channel of a pixel of a float map, counted from the top left.
    static float
    valueAt(const std::string& map, int width, int height, int x, int y, int channel = 0) {
        const std::size_t head = map.size() - std::size_t{12} * width * height;
        float value = 0;
        std::memcpy(&value,
                    map.data() + head + std::size_t{12} * ((height - 1 - y) * width + x) +
                        std::size_t{4} * channel,
                    4);
        return value;
    }

    QorTempDirectory folder;
    // Stands in the lower half of what the eye sees along y, facing it.
    std::string model = folder.Write(
        "model.obj", "v -100 0 -100\nv 100 0 -100\nv 100 0 0\nv -100 0 0\nf 1 2 3\nf 1 3 4\n");
    const std::string eye = "model.obj --eye 0,-100,0 --target 0,0,0 --fov 30 ";
    const std::string view = eye + "--size 16x12 --quality 0 ";
};
