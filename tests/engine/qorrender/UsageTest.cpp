#include "tests/engine/qorrender/RenderProgram.h"

namespace {

TEST_F(RenderProgram, RefusesWrongUsageWithCodeTwoAndASentence) {
    struct Row {
        const char* words;
        const char* said; ///< part of the error output
    };

    for (const Row& row : {
             Row{"", "MODEL"},
             Row{"model.obj another.obj", "another.obj"},
             Row{"--no-such-option model.obj", "--no-such-option"},
             Row{"--size 0x4 model.obj", "positive"},
             Row{"--size 4 model.obj", "\"4\""},
             Row{"--size 1.5x2 model.obj", "two whole numbers"},
             Row{"--size 99999999999x1 model.obj", "two whole numbers"},
             Row{"-o a.xyz model.obj", "a.xyz"},
             Row{"-o . model.obj", "ending"},
             Row{"--quality 3 model.obj", "from 0 to 2"},
             Row{"--quality good model.obj", "from 0 to 2"},
             Row{"--eye 1,2 model.obj", "3 numbers"},
             Row{"--eye nan,0,0 model.obj", "\"nan,0,0\""},
             Row{"--target 1e30,0,0 model.obj", "\"1e30,0,0\""},
             Row{"--eye 1,2,3 --target 1,2,3 model.obj", "where it is"},
             Row{"--up 0,0,0 model.obj", "no direction"},
             Row{"--eye 0,-9,0 --target 0,0,0 --up 0,2,0 model.obj", "along the sight"},
             Row{"--scene 0 model.obj", "number from 1 on"},
             Row{"--scene night model.obj", "\"night\""},
             Row{"--scene 99 model.obj", "there is no scene 99"},
             Row{"--fov 200 model.obj", "from 0.01 to 179"},
             Row{"--fov 0 model.obj", "from 0.01 to 179"},
             Row{"--fov nan model.obj", "\"nan\""},
             Row{"--view-height 0 model.obj", "--view-height"},
             Row{"--view-height nan model.obj", "\"nan\""},
             Row{"--view-height 5 --projection perspective model.obj", "parallel projection"},
             Row{"--projection Parallel model.obj", "{perspective,parallel}"},
             Row{"--region 1,2,3 model.obj", "four whole numbers"},
             Row{"--region 8,2,8,5 model.obj", "is empty"},
             Row{"--region 8,5,9,2 model.obj", "is empty"},
             Row{"--time-limit 0 model.obj", "--time-limit"},
             Row{"--time-limit nan model.obj", "\"nan\""},
             Row{"--noise-target nan model.obj", "\"nan\""},
             Row{"--noise-target 0 model.obj", "--noise-target"},
             Row{"--threads -1 model.obj", "from 0 to 1024"},
             Row{"--threads 1.5 model.obj", "whole number"},
             Row{"--seed -1 model.obj", "whole number"},
             Row{"--reflections 1001 model.obj", "from 0 to 1000"},
             Row{"--filter tent model.obj", "{box,gaussian}"},
             Row{"--filter 1 model.obj", "{box,gaussian}"},
             Row{"--progress loud model.obj", "{bar,json,none}"},
             Row{"--progress 2 model.obj", "{bar,json,none}"},
             Row{"--final-gather yes model.obj", "{on,off}"},
             Row{"--shooting x model.obj", "shootings cannot be rendered"},
             Row{"--frames 1:2 model.obj", "shootings cannot be rendered"},
         }) {
        const std::string words = std::string(row.words);
        const bool named = words.find("-o ") != std::string::npos;
        EXPECT_EQ(run((named ? "" : "-o a.png ") + words), 2) << words;
        EXPECT_NE(folder.Read("errors").find(row.said), std::string::npos) << words << '\n'
                                                                           << folder.Read("errors");
    }
    EXPECT_FALSE(std::filesystem::exists(folder.GetPath("a.png")));
}

TEST_F(RenderProgram, TakesTheEndsOfEveryRange) {
    for (const char* words :
         {"--fov 0.01", "--fov 179", "--threads 1000", "--threads 1", "--seed 4294967295",
          "--reflections 1000 --refractions 0", "--diffuse-bounces 0", "--view-height 1e-6",
          "--projection parallel", "--time-limit 0.001", "--noise-target 1", "--region -5,-5,4,4",
          "--region 0,0,2147483647,2147483647", "--up 0,0,1e-30", "--size 1x1", "--progress none",
          "--filter gaussian", "--no-denoise"}) {
        const bool sized = std::string(words).find("--size") != std::string::npos;
        EXPECT_EQ(run(std::string("model.obj -o a.png --quality 0 ") +
                      (sized ? "" : "--size 16x12 ") + words),
                  0)
            << words << '\n'
            << folder.Read("errors");
        EXPECT_EQ(folder.Read("errors"), "") << words;
    }
}

TEST_F(RenderProgram, WritesNothingOverWhatItReadsOrHasWritten) {
    folder.Write("document.png", folder.Read("model.obj"));
    std::filesystem::create_symlink("model.obj", folder.GetPath("link.json"));

    struct Row {
        const char* words;
        const char* said;
    };

    for (const Row& row : {Row{"-o document.png document.png", "the model itself"},
                           Row{"-o ./document.png document.png", "the model itself"},
                           Row{"-o a.png --stats model.obj model.obj", "the model itself"},
                           Row{"-o a.png --stats link.json model.obj", "the model itself"},
                           Row{"-o a.png --stats ./a.png model.obj", "the picture itself"}}) {
        EXPECT_EQ(run(row.words), 2) << row.words;
        EXPECT_NE(folder.Read("errors").find(row.said), std::string::npos) << row.words << '\n'
                                                                           << folder.Read("errors");
    }
    EXPECT_EQ(folder.Read("document.png"), folder.Read("model.obj"));
    EXPECT_EQ(folder.Read("model.obj").substr(0, 2), "v ");
    EXPECT_FALSE(std::filesystem::exists(folder.GetPath("a.png")));
}

TEST_F(RenderProgram, NamesTheModelWhenItsViewOrMemoryFails) {
    // The middle of the model, which no command line can know.
    EXPECT_EQ(run("-o a.png --size 8x6 --eye 0,0,-50 model.obj"), 1);
    EXPECT_NE(folder.Read("errors").find("model.obj: camera: eye and target"), std::string::npos)
        << folder.Read("errors");
    EXPECT_EQ(run("-o a.png --size 16777217x1 model.obj"), 1);
    EXPECT_NE(folder.Read("errors").find("width 16777217 is not in 1 .. 1048576"),
              std::string::npos)
        << folder.Read("errors");
}

// Sanitizers take more addresses than any limit leaves.
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST_F(RenderProgram, SaysWhenThereIsTooLittleMemoryAndKeepsTheOldFile) {
    folder.Write("old.pfm", "old");
    // From too little for the ray tracer to too little for the picture.
    for (const int megabytes : {500, 800}) {
        EXPECT_EQ(run("-o old.pfm --quality 0 --size 6000x4000 model.obj",
                      "ulimit -v " + std::to_string(megabytes * 1024) + " &&"),
                  1)
            << megabytes;
        const std::string errors = folder.Read("errors");
        EXPECT_NE(errors.find("model.obj: "), std::string::npos) << errors;
        EXPECT_NE(errors.find("not enough memory"), std::string::npos) << megabytes << errors;
        EXPECT_EQ(folder.Read("old.pfm"), "old");
        EXPECT_EQ(folder.List().size(), 4U) << "something is left";
    }
}
#endif

} // namespace
