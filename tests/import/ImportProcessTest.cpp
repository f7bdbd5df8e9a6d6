#include "workbench/import/process/ImportProcess.h"

#include "tests/support/QorTempDirectory.h"
#include "workbench/document/product/ProductFile.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <csignal>
#include <fstream>
#include <vector>

using namespace qor::import;
using namespace std::chrono_literals;

namespace {

// A child that is a shell script: it gets MODEL and OUT.qor as $1 and $2.
std::filesystem::path script(const QorTempDirectory& folder, const std::string& body) {
    const auto file = folder / "child";
    std::ofstream(file) << "#!/bin/sh\n" << body << "\n";
    chmod(file.c_str(), 0700);
    return file;
}

ImportRequest requestFor(const std::filesystem::path& program) {
    ImportRequest request;
    request.program = program;
    request.model = "/models/gear.step";
    request.target = program.parent_path() / "gear.qor";
    return request;
}

ImportOutcome outcomeOf(const ImportRequest& request) {
    ImportProcess process({});
    process.start(request);
    return process.wait();
}

// How a child behaves, and what must come of it.
struct Behaviour {
    const char* body;
    ImportEnd end;
    const char* text;
};

const auto behaviours = std::to_array<Behaviour>({
    {R"(echo '{"event":"done","nodes":3}')", ImportEnd::Done, ""},
    {R"(echo noise; echo '{"event":"done","nodes":3}')", ImportEnd::Done, ""},
    {R"(echo '{"event":"error","kind":"input","text":"/models/gear.step: it is cut off"}'; exit 1)",
     ImportEnd::Failed, "/models/gear.step: it is cut off"},
    {"exit 0", ImportEnd::Crashed,
     "/models/gear.step: the import ended without a result (exit code 0); nothing was changed"},
    {"exit 3", ImportEnd::Crashed,
     "/models/gear.step: the import ended without a result (exit code 3); nothing was changed"},
    {R"(echo '{"event":"done"}'; exit 1)", ImportEnd::Crashed,
     "/models/gear.step: the import ended without a result (exit code 1); nothing was changed"},
    {"kill -SEGV $$", ImportEnd::Crashed,
     "/models/gear.step: the import crashed (Segmentation fault); nothing was changed"},
    {R"(echo '{"event":"progress","stage":"transfer","fraction":0.5}'; kill -ABRT $$)",
     ImportEnd::Crashed,
     "/models/gear.step: the import crashed (Aborted) in the stage \"transfer\"; nothing was "
     "changed"},
});

} // namespace

TEST(ImportProcess, EveryEndIsToldApartAndNamesTheModel) {
    const QorTempDirectory folder;
    for (const Behaviour& behaviour : behaviours) {
        const ImportOutcome outcome = outcomeOf(requestFor(script(folder, behaviour.body)));
        EXPECT_EQ(outcome.end, behaviour.end) << behaviour.body;
        EXPECT_EQ(outcome.text, behaviour.text);
        EXPECT_EQ(outcome.summary.nodes, outcome.end == ImportEnd::Done ? 3U : 0U);
    }
}

TEST(ImportProcess, AProgramThatIsMissingIsSaid) {
    const ImportOutcome outcome = outcomeOf(requestFor("/nowhere/qorimport"));
    EXPECT_EQ(outcome.end, ImportEnd::Failed);
    EXPECT_EQ(outcome.text,
              "/models/gear.step: the program /nowhere/qorimport could not be started");
}

TEST(ImportProcess, ProgressAndWarningsArriveInOrder) {
    const QorTempDirectory folder;
    std::vector<std::string> heard;
    ImportProcess process([&heard](const ProgressLine& line) {
        heard.push_back(line.kind == ProgressKind::Warning ? line.text : line.stage);
    });
    process.start(requestFor(script(folder, R"(echo '{"event":"progress","stage":"read"}'
echo '{"event":"warning","text":"w"}'
echo '{"event":"progress","stage":"mesh"}'
echo '{"event":"done"}')")));
    EXPECT_EQ(process.wait().end, ImportEnd::Done);
    EXPECT_EQ(heard, (std::vector<std::string>{"read", "w", "mesh"}));
}

TEST(ImportProcess, CancelKillsTheChildAndRemovesWhatItWasWriting) {
    const QorTempDirectory folder;
    ImportRequest request =
        requestFor(script(folder, R"(touch "$(dirname "$2")/.$(basename "$2").$$.unfinished"
echo '{"event":"progress","stage":"write"}'
exec sleep 600)"));
    bool started = false;
    ImportProcess process([&started](const ProgressLine&) { started = true; });
    process.start(request);
    while (!started && process.poll())
        continue;
    ASSERT_EQ(folder.List().size(), 2U);
    process.cancel();
    ASSERT_TRUE(process.outcome());
    EXPECT_EQ(process.outcome()->end, ImportEnd::Cancelled);
    EXPECT_EQ(process.outcome()->text, "/models/gear.step: the import was cancelled");
    EXPECT_EQ(process.descriptor(), -1);
    EXPECT_EQ(folder.List().size(), 1U);
}

TEST(ImportProcess, TimeOutEndsAChildThatHangs) {
    const QorTempDirectory folder;
    ImportRequest request = requestFor(script(folder, "exec sleep 600"));
    request.timeout = 1000ms;
    const auto start = std::chrono::steady_clock::now();
    const ImportOutcome outcome = outcomeOf(request);
    EXPECT_EQ(outcome.end, ImportEnd::TimedOut);
    EXPECT_EQ(outcome.text, "/models/gear.step: the import took longer than 1 s and was stopped");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 30s);
}

TEST(ImportProcess, AChildThatClosesItsOutputAndHangsIsStillTimedOut) {
    const QorTempDirectory folder;
    ImportRequest request = requestFor(script(folder, "exec sleep 600 >&-"));
    request.timeout = 300ms;
    EXPECT_EQ(outcomeOf(request).end, ImportEnd::TimedOut);
}

TEST(ImportProcess, TheMemoryCapReachesTheChild) {
    const QorTempDirectory folder;
    ImportRequest request = requestFor(script(
        folder, R"(echo '{"event":"warning","text":"'$(ulimit -v)'"}'; echo '{"event":"done"}')"));
    request.memoryBytes = std::uint64_t{512} << 20;
    std::string heard;
    ImportProcess process([&heard](const ProgressLine& line) { heard = line.text; });
    process.start(request);
    EXPECT_EQ(process.wait().end, ImportEnd::Done);
    EXPECT_EQ(heard, "524288");
}

TEST(ImportProcess, OptionsAndNamesWithDashesReachTheChild) {
    const QorTempDirectory folder;
    ImportRequest request = requestFor(
        script(folder, R"(echo '{"event":"warning","text":"'"$*"'"}'; echo '{"event":"done"}')"));
    request.model = "-gear.step";
    request.target = "-gear.qor";
    request.deflectionMm = 0.25;
    request.angleDeg = 7;
    std::string heard;
    ImportProcess process([&heard](const ProgressLine& line) { heard = line.text; });
    process.start(request);
    EXPECT_EQ(process.wait().end, ImportEnd::Done);
    EXPECT_EQ(heard, "./-gear.step ./-gear.qor --deflection 0.25 --angle 7");
}

TEST(ImportProcess, AnAbandonedObjectLeavesNoChild) {
    const QorTempDirectory folder;
    std::string heard;
    {
        ImportProcess process([&heard](const ProgressLine& line) { heard = line.text; });
        process.start(requestFor(
            script(folder, R"(echo '{"event":"warning","text":"'$$'"}'; exec sleep 600)")));
        while (heard.empty() && process.poll())
            continue;
    }
    ASSERT_FALSE(heard.empty());
    EXPECT_EQ(kill(static_cast<pid_t>(std::stol(heard)), 0), -1);
}
