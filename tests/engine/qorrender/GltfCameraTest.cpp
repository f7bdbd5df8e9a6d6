// The camera of a glTF file, and what the command line changes about it.
#include "tests/engine/qorrender/WallFile.h"

namespace qor::render::testing {
namespace {

/// A wall that shines with 1, half as high as what a camera 5 m before it sees.
WallFile shiningWall(double half) {
    WallFile file;
    const auto side = static_cast<float>(half);
    file.wall(file.material({{"emissiveFactor", {1, 1, 1}}}), -side, side, -side, side, 0);
    return file;
}

TEST_F(GltfProgram, TheFilesOwnCameraIsUsed) {
    constexpr double yfov = 0.6;
    WallFile file = shiningWall(5 * std::tan(yfov / 2) / 2);
    file.json["cameras"] = {
        {{"type", "perspective"}, {"perspective", {{"yfov", yfov}, {"znear", 0.01}}}}};
    file.root({{"camera", 0}, {"translation", {0, 0, 5}}});
    EXPECT_EQ(show(file, "", 64).brightRows(), 32);
    EXPECT_EQ(show(file, "", 64).brightColumns(), 32);
    const double whole = 2 * std::atan(std::tan(yfov / 2) / 2) * 180 / pi;
    EXPECT_EQ(show(file, "--fov " + std::to_string(whole * 0.999), 64).brightRows(), 64);
    EXPECT_EQ(show(file, "--projection parallel", 64).brightRows(), 32);
    file.json["cameras"][0]["perspective"]["znear"] = 6;
    EXPECT_EQ(show(file, "", 64).brightRows(), 0);
}

TEST_F(GltfProgram, ParallelProjectionStaysParallel) {
    // A second wall far behind, above the first: as wide as the first.
    WallFile file;
    const int shining = file.matt(0, 0, 0);
    file.json["materials"][0]["emissiveFactor"] = {1, 1, 1};
    file.wall(shining, -1, 1, -2, 0, 0);
    file.wall(shining, -1, 1, 0, 2, -300);
    file.json["cameras"] = {
        {{"type", "orthographic"},
         {"orthographic", {{"xmag", 2}, {"ymag", 2}, {"znear", 0.01}, {"zfar", 1000}}}}};
    file.root({{"camera", 0}, {"translation", {0, 0, 5}}});
    const auto widthAt = [](const Shown& shown, int y) {
        int width = 0;
        for (int x = 0; x < shown.size; ++x)
            width += shown.at(x, y) == 1.0F ? 1 : shown.at(x, y) == 0.0F ? 0 : 1000;
        return width;
    };
    for (const auto& [words, half] :
         {std::pair{"", 32},
          {"--view-height 8000", 16},
          {"--eye 0,-90000,0 --target 0,0,0 --projection parallel --view-height 8000", 16}}) {
        const Shown shown = show(file, words, 64);
        EXPECT_EQ(widthAt(shown, 32 - half / 2), half) << words;
        EXPECT_EQ(widthAt(shown, 32 + half / 2 - 1), half) << words;
    }
}

} // namespace
} // namespace qor::render::testing
