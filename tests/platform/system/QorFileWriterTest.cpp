#include "platform/system/QorFileWriter.h"

#include "tests/support/QorTempDirectory.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace {

using Lines = std::vector<std::string>;

QorResult WriteFile(const std::string& iPath, std::string_view iText) {
    QorFileWriter writer(iPath);
    writer.Write(iText);
    return writer.Commit();
}

/// Has a child process write half of a file, and kills it there. Returns its process id.
pid_t KillHalfWay(const std::string& iPath) {
    std::array<int, 2> ready{};
    EXPECT_EQ(pipe(ready.data()), 0);
    const pid_t child = fork();
    if (child == 0) {
        QorFileWriter writer(iPath);
        writer.Write("half of the ne");
        static_cast<void>(!write(ready[1], "x", 1));
        for (;;)
            pause();
    }
    char byte = 0;
    EXPECT_EQ(read(ready[0], &byte, 1), 1);
    kill(child, SIGKILL);
    waitpid(child, nullptr, 0);
    close(ready[0]);
    close(ready[1]);
    return child;
}

} // namespace

TEST(QorFileWriter, WritesAWholeFileAndLeavesNothingElse) {
    const QorTempDirectory directory;
    EXPECT_EQ(WriteFile(directory.GetPath("file"), "first"), S_OK);
    EXPECT_EQ(directory.Read("file"), "first");
    EXPECT_EQ(WriteFile(directory.GetPath("file"), "second"), S_OK);
    EXPECT_EQ(directory.Read("file"), "second");
    EXPECT_EQ(directory.List(), Lines{"file"});
}

TEST(QorFileWriter, ChangesNothingWithoutCommit) {
    const QorTempDirectory directory;
    directory.Write("file", "before");
    {
        QorFileWriter writer(directory.GetPath("file"));
        writer.Write("after");
        EXPECT_EQ(directory.Read("file"), "before");
        EXPECT_EQ(directory.List().size(), 2U);
    }
    EXPECT_EQ(directory.Read("file"), "before");
    EXPECT_EQ(directory.List(), Lines{"file"});
}

TEST(QorFileWriter, KeepsTheAccessModeAndFollowsLinks) {
    const QorTempDirectory directory;
    const std::string file = directory.Write("real/file", "before");
    chmod(file.c_str(), 0600);
    std::filesystem::create_symlink("real/file", directory.GetPath("link"));
    EXPECT_EQ(WriteFile(directory.GetPath("link"), "after"), S_OK);
    EXPECT_EQ(directory.Read("real/file"), "after");
    EXPECT_TRUE(std::filesystem::is_symlink(directory.GetPath("link")));
    struct stat status = {};
    stat(file.c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST(QorFileWriter, WritesIntoTheWorkingDirectoryToo) {
    const QorTempDirectory directory;
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(directory.GetPath());
    EXPECT_EQ(WriteFile("plain", "text"), S_OK);
    std::filesystem::current_path(before);
    EXPECT_EQ(directory.Read("plain"), "text");
}

TEST(QorFileWriter, FailsWithTheReason) {
    const QorTempDirectory directory;
    std::filesystem::create_directory(directory.GetPath("folder"));
    const std::string places[] = {directory.GetPath("none/file"), directory.GetPath("folder"),
                                  "/dev/null", directory.GetPath(std::string(300, 'x'))};
    for (const std::string& path : places) {
        QorFileWriter writer(path);
        writer.Write("text");
        EXPECT_EQ(writer.Commit(), E_FAIL) << path;
        EXPECT_NE(writer.GetError().find(path), std::string::npos) << writer.GetError();
    }
    EXPECT_TRUE(QorFileWriter(directory.GetPath("folder")).GetError().ends_with("Is a directory"));
    EXPECT_EQ(directory.List(), Lines{"folder"});
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/null"));
}

TEST(QorFileWriter, AFullDiskLeavesTheFileAsItWas) {
    const QorTempDirectory directory;
    directory.Write("file", "before");
    const pid_t child = fork();
    if (child == 0) {
        // A limit on the size of files stands for a disk that is full.
        const rlimit limit{.rlim_cur = 1000, .rlim_max = 1000};
        std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
        const bool failed = WriteFile(directory.GetPath("file"), std::string(5000, 'x')) == E_FAIL;
        _exit(failed ? 0 : 1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(directory.Read("file"), "before");
    EXPECT_EQ(directory.List(), Lines{"file"});
}

TEST(QorFileWriter, AKilledWriterLeavesTheFileAndItsRestGoesLater) {
    const QorTempDirectory directory;
    directory.Write("file", "before");
    KillHalfWay(directory.GetPath("file"));
    EXPECT_EQ(directory.Read("file"), "before");
    ASSERT_EQ(directory.List().size(), 2U);
    const std::string rest = directory.List()[0];

    EXPECT_EQ(WriteFile(directory.GetPath("file"), "after"), S_OK);
    EXPECT_EQ(directory.Read("file"), "after");
    EXPECT_EQ(directory.List().size(), 2U); // too young: it might belong to another machine

    const timespec old[2] = {{.tv_sec = 1000, .tv_nsec = 0}, {.tv_sec = 1000, .tv_nsec = 0}};
    utimensat(AT_FDCWD, directory.GetPath(rest).c_str(), old, 0);
    EXPECT_EQ(WriteFile(directory.GetPath("file"), "later"), S_OK);
    EXPECT_EQ(directory.List(), Lines{"file"});
}

TEST(QorFileWriter, OtherFilesAndLivingWritersAreLeftAlone) {
    const QorTempDirectory directory;
    const timespec old[2] = {{.tv_sec = 1000, .tv_nsec = 0}, {.tv_sec = 1000, .tv_nsec = 0}};
    const std::string mine = ".file." + std::to_string(getpid()) + "-99.qortmp";
    for (const std::string& name : {mine, std::string(".file.x.qortmp"), std::string(".file.1"),
                                    std::string(".other.999999999-1.qortmp")}) {
        directory.Write(name, "");
        utimensat(AT_FDCWD, directory.GetPath(name).c_str(), old, 0);
    }
    EXPECT_EQ(WriteFile(directory.GetPath("file"), "x"), S_OK);
    EXPECT_EQ(directory.List().size(), 5U);
}
