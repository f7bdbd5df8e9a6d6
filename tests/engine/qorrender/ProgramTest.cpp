#include "tests/engine/qorrender/RenderProgram.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <sstream>

namespace {

TEST_F(RenderProgram, WritesAPictureAndLeavesNothingElse) {
    ASSERT_EQ(run(view + "-o a.png --stats s.json"), 0) << folder.Read("errors");
    EXPECT_EQ(folder.List(),
              (std::vector<std::string>{"a.png", "errors", "model.obj", "output", "s.json"}));
    EXPECT_EQ(folder.Read("errors"), "");
    EXPECT_NE(folder.Read("s.json").find("\"render_s\""), std::string::npos);
}

TEST_F(RenderProgram, WritesFloatsThatAreUprightAndRepeat) {
    ASSERT_EQ(run(view + "-o a.pfm"), 0) << folder.Read("errors");
    ASSERT_EQ(run(view + "-o b.pfm --threads 1"), 0) << folder.Read("errors");
    const std::string map = folder.Read("a.pfm");
    EXPECT_EQ(map, folder.Read("b.pfm"));
    EXPECT_EQ(map.rfind("PF\n16 12\n", 0), 0U);
    // The backdrop is the same along a row; the wall hides it below the middle.
    EXPECT_LT(valueAt(map, 16, 12, 8, 0), valueAt(map, 16, 12, 8, 4));
    EXPECT_NE(valueAt(map, 16, 12, 8, 5), valueAt(map, 16, 12, 8, 7));
}

TEST_F(RenderProgram, WritesTheRegionAskedFor) {
    const std::string plain = view + "--final-gather off ";
    ASSERT_EQ(run(plain + "-o part.pfm --region 4,2,10,9"), 0) << folder.Read("errors");
    const std::string part = folder.Read("part.pfm");
    EXPECT_EQ(part.rfind("PF\n6 7\n", 0), 0U);
    ASSERT_EQ(run(plain + "-o whole.pfm"), 0) << folder.Read("errors");
    const std::string whole = folder.Read("whole.pfm");
    for (int y = 0; y < 7; ++y)
        for (int x = 0; x < 6; ++x)
            EXPECT_NEAR(valueAt(part, 6, 7, x, y), valueAt(whole, 16, 12, 4 + x, 2 + y), 1e-6)
                << x << ", " << y;
    EXPECT_EQ(run(view + "-o none.pfm --region 40,40,50,50"), 1);
    EXPECT_FALSE(std::filesystem::exists(folder.GetPath("none.pfm")));
}

TEST_F(RenderProgram, FailsWithCodeOneAndKeepsTheOldFile) {
    folder.Write("old.png", "old");
    folder.Write("broken.stp", "ISO-10303-21;\nnonsense");
    EXPECT_EQ(run("-o old.png missing.stp"), 1);
    EXPECT_EQ(run("-o old.png broken.stp"), 1);
    EXPECT_EQ(run("-o old.png --size 100000x100000 model.obj"), 1);
    EXPECT_EQ(run("-o no/where.png model.obj"), 1);
    EXPECT_NE(folder.Read("errors").find("where.png"), std::string::npos);
    EXPECT_EQ(folder.Read("old.png"), "old");
}

TEST_F(RenderProgram, ShowsScenesOfTheCatalogUnlikeEachOther) {
    const std::string plain = view + "--final-gather off ";
    std::vector<std::string> pictures;
    for (const char* scene : {"", "--scene 1 ", "--scene 7 ", "--scene custom "}) {
        ASSERT_EQ(run(plain + scene + "-o a.pfm"), 0) << scene << folder.Read("errors");
        EXPECT_EQ(folder.Read("errors"), "") << scene;
        pictures.push_back(folder.Read("a.pfm"));
    }
    for (std::size_t i = 0; i < pictures.size(); ++i)
        for (std::size_t j = 0; j < i; ++j)
            EXPECT_NE(pictures[i], pictures[j]) << i << ", " << j;
}

TEST_F(RenderProgram, ASceneTakesThePlaceOfTheFilesLight) {
    folder.Write("shining.mtl", "newmtl lamp\nKd 0.2 0.2 0.2\nKe 3 0 0\n");
    folder.Write("shining.obj",
                 "mtllib shining.mtl\nusemtl lamp\nv -1 0 -1\nv 1 0 -1\nv 0 0 1\nf 1 2 3\n");
    const std::string same = "shining.obj --size 8x6 --quality 0 ";
    ASSERT_EQ(run(same + "-o own.pfm"), 0) << folder.Read("errors");
    ASSERT_EQ(run(same + "--scene 10 -o scene.pfm"), 0) << folder.Read("errors");
    EXPECT_EQ(valueAt(folder.Read("own.pfm"), 8, 6, 0, 0), 0.0F) << "no surroundings but its own";
    EXPECT_GT(valueAt(folder.Read("scene.pfm"), 8, 6, 0, 0), 0.5F);
}

TEST_F(RenderProgram, TellsItsProgressAsJsonLines) {
    ASSERT_EQ(run(view + "-o a.png --progress json"), 0);
    std::istringstream lines(folder.Read("errors"));
    std::vector<std::string> stages;
    double last = 0;
    for (std::string line; std::getline(lines, line);) {
        const auto told = nlohmann::json::parse(line);
        EXPECT_EQ(told.at("event"), "progress") << line;
        const double fraction = told.at("fraction");
        EXPECT_GE(fraction, 0.0);
        EXPECT_LE(fraction, 1.0);
        const std::string stage = told.at("stage");
        if (stages.empty() || stages.back() != stage)
            stages.push_back(stage);
        else
            EXPECT_GE(fraction, last) << line;
        last = fraction;
    }
    ASSERT_FALSE(stages.empty());
    EXPECT_EQ(stages.front(), "import");
    EXPECT_EQ(stages.back(), "write");
    EXPECT_EQ(last, 1.0);
    for (const std::string& stage : stages)
        EXPECT_EQ(std::count(stages.begin(), stages.end(), stage), 1) << stage;
}

TEST_F(RenderProgram, CountsWhatItDid) {
    for (const char* words : {"--quality 0", "--quality 1 --final-gather off --diffuse-bounces 2",
                              "--quality 0 --region 12,20,19,26"}) {
        SCOPED_TRACE(words);
        ASSERT_EQ(run(eye + "--size 40x30 -o a.png --stats s.json " + words), 0)
            << folder.Read("errors");
        const auto stats = nlohmann::json::parse(folder.Read("s.json"));
        std::uint64_t sum = 0;
        for (const char* kind :
             {"camera", "shadow", "reflection", "refraction", "diffuse", "gather"})
            sum += stats.at("rays").at(kind).get<std::uint64_t>();
        EXPECT_EQ(stats.at("rays").at("total"), sum);
        const bool isPart = std::string(words).find("region") != std::string::npos;
        const int pixels = isPart ? 7 * 6 : 40 * 30;
        EXPECT_EQ(stats.at("pixels"), pixels);
        EXPECT_EQ(stats.at("triangles"), 2);
        EXPECT_GE(stats.at("passes"), 1);
        EXPECT_GE(stats.at("samples"), pixels);
        EXPECT_GE(stats.at("rays").at("camera"), pixels);
        const bool gathers = std::string(words).find("gather off") == std::string::npos;
        EXPECT_EQ(stats.at("rays").at("gather") > 0, gathers);
        EXPECT_EQ(stats.at("rays").at("diffuse") > 0, !gathers);
        for (const char* time :
             {"read_s", "scene_s", "build_s", "gather_s", "trace_s", "render_s", "write_s"})
            EXPECT_GE(stats.at(time), 0.0) << time;
        EXPECT_GT(stats.at("read_s"), 0.0);
        EXPECT_GE(stats.at("render_s").get<double>() + 1e-3,
                  stats.at("build_s").get<double>() + stats.at("trace_s").get<double>());
        EXPECT_GT(stats.at("peak_bytes"), stats.at("scene_bytes"));
    }
}

TEST_F(RenderProgram, AFullDiskLeavesTheOldFile) {
    folder.Write("old.pfm", "old");
    // No file may grow beyond 256 kB: enough for the imported model, not for the picture.
    const std::string command = "cd '" + folder.GetPath() + "' && ulimit -f 512 && exec '" +
                                std::getenv("QOR_RENDER_PROGRAM") + "' " + eye +
                                "--quality 0 --size 320x240 -o old.pfm 2>errors";
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 1);
    EXPECT_NE(folder.Read("errors").find("old.pfm"), std::string::npos) << folder.Read("errors");
    EXPECT_EQ(folder.Read("old.pfm"), "old");
    EXPECT_EQ(folder.List().size(), 3U) << "something is left";
}

TEST_F(RenderProgram, NamesTheTemporaryFolderThatItCannotMake) {
    folder.Write("old.png", "old");
    EXPECT_EQ(run(view + "-o old.png", "export TMPDIR=/no/such/folder;"), 1);
    EXPECT_NE(folder.Read("errors").find("/no/such/folder"), std::string::npos)
        << folder.Read("errors");
    EXPECT_EQ(folder.Read("old.png"), "old");
}

TEST_F(RenderProgram, RefusesSizesBeyondMeasureWithASentence) {
    for (const char* size : {"65536x65536", "2147483647x2147483647", "300000x1000"}) {
        EXPECT_EQ(run("-o a.png --size " + std::string(size) + " model.obj"), 1) << size;
        const std::string side = std::string(size).substr(0, std::string(size).find('x'));
        EXPECT_NE(folder.Read("errors").find(side), std::string::npos) << folder.Read("errors");
    }
}

TEST_F(RenderProgram, EndsWhenItsTimeIsOver) {
    ASSERT_EQ(run(eye + "--size 16x12 -o a.png --quality 2 --noise-target 1e-9 --time-limit 0.3"),
              0)
        << folder.Read("errors");
    EXPECT_TRUE(std::filesystem::exists(folder.GetPath("a.png")));
}

TEST_F(RenderProgram, EndsWithACoarsePictureWhenThereIsNoTimeForMore) {
    folder.Write("old.pfm", "old");
    ASSERT_EQ(run(eye + "--size 640x480 -o old.pfm --quality 2 --time-limit 0.001 --stats s.json"),
              0)
        << folder.Read("errors");
    const std::string map = folder.Read("old.pfm");
    ASSERT_EQ(map.rfind("PF\n640 480\n", 0), 0U);
    for (const int y : {0, 123, 240, 479})
        for (const int x : {0, 77, 639})
            EXPECT_GT(valueAt(map, 640, 480, x, y), 0.0F) << x << ", " << y;
}

TEST_F(RenderProgram, SaysWhatIsWrongAmongJsonLinesAsOneOfThem) {
    EXPECT_EQ(run("--progress json -o a.png missing.stp"), 1);
    const std::string text = folder.Read("errors");
    EXPECT_EQ(text.front(), '{') << text;
    EXPECT_NE(text.find("missing.stp"), std::string::npos) << text;
    EXPECT_NE(text.find("\"error\""), std::string::npos) << text;
}

TEST_F(RenderProgram, SaysWhatItCanDo) {
    ASSERT_EQ(run("--help"), 0);
    for (const char* option :
         {"--output",     "--size",         "--region",      "--quality",     "--final-gather",
          "--scene",      "--shooting",     "--frames",      "--eye",         "--target",
          "--up",         "--fov",          "--reflections", "--refractions", "--diffuse-bounces",
          "--filter",     "--no-denoise",   "--projection",  "--view-height", "--seed",
          "--time-limit", "--noise-target", "--threads",     "--progress",    "--stats"})
        EXPECT_NE(folder.Read("output").find(option), std::string::npos) << option;
}

} // namespace
