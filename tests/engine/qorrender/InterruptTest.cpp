#include "tests/engine/qorrender/RenderProgram.h"

namespace {

class InterruptedProgram : public RenderProgram {
protected:
    /// Exit code of a run that gets \p signal as soon as its error output holds \p sign.
    int interrupt(const std::string& words, const char* signal, const std::string& sign) {
        const std::string command =
            "cd '" + folder.GetPath() + "' && mkdir tmp && export TMPDIR=$PWD/tmp && { '" +
            std::getenv("QOR_RENDER_PROGRAM") + "' " + words +
            " --progress json 2>errors & child=$!; until grep -qs '" + sign +
            "' errors || ! kill -0 $child 2>/dev/null; do :; done; kill -" + signal +
            " $child; wait $child; }";
        const int status = std::system(command.c_str());
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    static constexpr const char* endless = "--size 800x600 --quality 2 --noise-target 1e-9";
    /// Soon rendered, long to write.
    static constexpr const char* quick =
        "--size 3000x2000 --quality 0 --final-gather off --time-limit 0.01";
};

TEST_F(InterruptedProgram, EndsWithCode130AtAnyStageAndLeavesNothing) {
    struct Row {
        const char* words;
        const char* signal;
        const char* stage;
    };

    for (const Row& row :
         {Row{"--size 64x48", "INT", "import"}, Row{"--size 64x48", "TERM", "read"},
          Row{endless, "INT", "prepare"}, Row{endless, "TERM", "render"},
          Row{endless, "HUP", "render"}, Row{quick, "INT", "write"}}) {
        SCOPED_TRACE(row.stage);
        folder.Write("old.png", "old");
        EXPECT_EQ(interrupt(std::string(row.words) + " -o old.png model.obj", row.signal,
                            "\"stage\":\"" + std::string(row.stage)),
                  130)
            << folder.Read("errors");
        EXPECT_NE(folder.Read("errors").find("\"interrupted\""), std::string::npos);
        EXPECT_EQ(folder.Read("old.png"), "old");
        EXPECT_EQ(folder.List(),
                  (std::vector<std::string>{"errors", "model.obj", "old.png", "tmp"}));
        for (const std::string& name : folder.List("tmp"))
            EXPECT_EQ(name.rfind("qorrender-", 0), std::string::npos) << name;
        std::filesystem::remove_all(folder.GetPath("tmp"));
        std::filesystem::remove(folder.GetPath("errors"));
    }
}

TEST_F(InterruptedProgram, OutlivesItsTerminalIfToldTo) {
    EXPECT_EQ(run("--size 64x48 --quality 0 -o a.png model.obj & child=$!; for i in $(seq 40); do "
                  "kill -HUP $child 2>/dev/null; sleep 0.01; done; wait $child",
                  "trap '' HUP;"),
              0)
        << folder.Read("errors");
    EXPECT_TRUE(std::filesystem::exists(folder.GetPath("a.png")));
}

TEST_F(InterruptedProgram, KilledItLeavesTheOldFile) {
    folder.Write("old.png", "old");
    for (const auto& [stage, words] :
         {std::pair{"import", "--size 64x48"}, {"render", endless}, {"write", quick}}) {
        EXPECT_EQ(interrupt(words + std::string(" -o old.png model.obj"), "KILL",
                            "\"stage\":\"" + std::string(stage)),
                  137)
            << stage;
        EXPECT_EQ(folder.Read("old.png"), "old") << stage;
        std::filesystem::remove_all(folder.GetPath("tmp"));
        std::filesystem::remove(folder.GetPath("errors"));
    }
}

} // namespace
