#include "platform/system/QorPaths.h"

#include "tests/support/QorTestApplication.h"

#include <sys/stat.h>
#include <unistd.h>

namespace {

class QorPathsTest : public QorTestApplication {
protected:
    [[nodiscard]] std::string Path(const char* iName) const { return directory.GetPath(iName); }

    [[nodiscard]] mode_t Mode(const std::string& iPath) const {
        struct stat status = {};
        EXPECT_EQ(lstat(iPath.c_str(), &status), 0) << iPath;
        return status.st_mode & 0777U;
    }
};

} // namespace

TEST_F(QorPathsTest, TellsFilesFromNothing) {
    const std::string file = directory.Write("file.txt", "12345");
    QorFileInfo info;
    EXPECT_EQ(QorGetFileInfo(file, &info), 0);
    EXPECT_EQ(info.sizeInBytes, 5U);
    EXPECT_TRUE(info.isRegular);
    EXPECT_FALSE(info.isDirectory);
    EXPECT_GT(info.modifiedInNanoseconds, 1'600'000'000'000'000'000);
    EXPECT_EQ(QorGetFileInfo(directory.GetPath(), &info), 0);
    EXPECT_TRUE(info.isDirectory);
    EXPECT_NE(QorGetFileInfo(Path("nothing"), &info), 0);
    EXPECT_TRUE(info.isDirectory); // as it was
    EXPECT_NE(QorGetFileInfo(""), 0);
    EXPECT_EQ(QorGetFileInfo(file), 0);
}

TEST_F(QorPathsTest, FindsTheFirstOfAList) {
    directory.Write("two/rendering/a.jpg", "");
    directory.Write("three/rendering/a.jpg", "");
    const QorUnicodeString list(Path("one") + "::" + Path("two") + "/:" + Path("three"));
    EXPECT_EQ(QorFindPath("rendering\\a.jpg", list), QorUnicodeString(Path("two/rendering/a.jpg")));
    EXPECT_EQ(QorFindPath("rendering/a.jpg", list), QorUnicodeString(Path("two/rendering/a.jpg")));
    EXPECT_EQ(QorFindPath("rendering/b.jpg", list), std::nullopt);
    EXPECT_EQ(QorFindPath("rendering/a.jpg", ""), std::nullopt);
    EXPECT_EQ(QorFindPath("", list), std::nullopt);
}

TEST_F(QorPathsTest, SplitsAtTheLastSlash) {
    const char* rows[][3] = {
        {"/a/b.png", "/a", "b.png"}, {"/b", "/", "b"},  {"b", "", "b"},       {"a/b", "a", "b"},
        {"/a/", "/a", ""},           {"", "", ""},      {"/", "/", ""},       {"a//b", "a/", "b"},
        {"/a.b/c", "/a.b", "c"},     {"ä/ö", "ä", "ö"}, {"a\\b", "", "a\\b"},
    };
    for (const auto& [path, expectedDirectory, expectedName] : rows) {
        QorUnicodeString folder;
        QorUnicodeString name;
        QorSplitPath(path, folder, name);
        EXPECT_EQ(folder, expectedDirectory) << path;
        EXPECT_EQ(name, expectedName) << path;
    }
    QorUnicodeString same("/x/y"); // the output may be the input
    QorUnicodeString name;
    QorSplitPath(same, same, name);
    EXPECT_EQ(same, "/x");
    EXPECT_EQ(name, "y");
}

TEST_F(QorPathsTest, MakesDirectoriesAndThoseAbove) {
    EXPECT_EQ(QorCreateDirectory(Path("a/b/c")), S_OK);
    EXPECT_TRUE(std::filesystem::is_directory(Path("a/b/c")));
    EXPECT_EQ(QorCreateDirectory(Path("a/b/c")), S_OK);
    EXPECT_EQ(QorCreateDirectory(Path("a/b/d/")), S_OK);
    EXPECT_EQ(QorCreateDirectory(Path("private"), 0700), S_OK);
    EXPECT_EQ(Mode(Path("private")), 0700U);
    directory.Write("file", "");
    EXPECT_EQ(QorCreateDirectory(Path("file")), E_FAIL);
    EXPECT_EQ(QorCreateDirectory(Path("file/below")), E_FAIL);
    EXPECT_EQ(QorCreateDirectory(""), E_FAIL);
}

TEST_F(QorPathsTest, APrivateTemporaryDirectoryIsUsedItself) {
    std::filesystem::create_directory(Path("mine"));
    chmod(Path("mine").c_str(), 0700);
    const QorScopedVariable variable("TMPDIR", Path("mine"));
    EXPECT_EQ(QorGetTempDirectory(), QorUnicodeString(Path("mine")));
}

TEST_F(QorPathsTest, InASharedOneThereIsAPrivateFolder) {
    std::filesystem::create_directory(Path("shared"));
    chmod(Path("shared").c_str(), 0777);
    const QorScopedVariable variable("TMPDIR", Path("shared"));
    const std::string folder = QorGetTempDirectory().Str();
    EXPECT_TRUE(folder.starts_with(Path("shared") + "/")) << folder;
    EXPECT_EQ(Mode(folder), 0700U);
    EXPECT_EQ(QorGetTempDirectory(), QorUnicodeString(folder)); // the same again
}

TEST_F(QorPathsTest, AFolderThatSomebodyElsePreparedIsNotUsed) {
    std::filesystem::create_directory(Path("shared"));
    std::filesystem::create_directory(Path("trap"));
    chmod(Path("shared").c_str(), 0777);
    chmod(Path("trap").c_str(), 0700);
    const QorScopedVariable variable("TMPDIR", Path("shared"));
    const std::string folder = QorGetTempDirectory().Str();
    for (const char* kind : {"open", "link", "file"}) {
        std::filesystem::remove(folder);
        if (*kind == 'o') {
            std::filesystem::create_directory(folder);
            chmod(folder.c_str(), 0777);
        } else if (*kind == 'l') {
            std::filesystem::create_symlink(Path("trap"), folder);
        } else {
            directory.Write(std::filesystem::relative(folder, directory.GetPath()).string(), "");
        }
        const std::string other = QorGetTempDirectory().Str();
        EXPECT_NE(other, folder) << kind;
        EXPECT_EQ(Mode(other), 0700U) << kind;
        EXPECT_TRUE(std::filesystem::is_directory(std::filesystem::symlink_status(other))) << kind;
    }
}

TEST_F(QorPathsTest, ATemporaryDirectoryThatIsNoneIsNotUsed) {
    for (const char* value : {"", "relative", "/no/such/directory"}) {
        const QorScopedVariable variable("TMPDIR", value);
        EXPECT_TRUE(QorGetTempDirectory().Str().starts_with("/tmp")) << value;
    }
}

TEST_F(QorPathsTest, LooksForPicturesInThreePlaces) {
    const std::string given = directory.Write("given.jpg", "");
    directory.Write("one/rendering/both.jpg", "");
    directory.Write("own/rendering/both.jpg", "");
    directory.Write("own/rendering/own.jpg", "");
    QorSetEnv("QorStartupPath", Path("none") + ":" + Path("one"));
    QorCatalogs::SetProgramDirectory(Path("own"));
    EXPECT_EQ(QorGetImagePathName(given), QorUnicodeString(given));
    EXPECT_EQ(QorGetImagePathName("both.jpg"), QorUnicodeString(Path("one/rendering/both.jpg")));
    EXPECT_EQ(QorGetImagePathName("own.jpg"), QorUnicodeString(Path("own/rendering/own.jpg")));
    EXPECT_EQ(QorGetImagePathName("missing.jpg"), "missing.jpg");
    EXPECT_EQ(QorGetImagePathName(""), "");
    QorSetEnv("QorStartupPath", std::nullopt);
    EXPECT_EQ(QorGetImagePathName("both.jpg"), QorUnicodeString(Path("own/rendering/both.jpg")));
}

TEST_F(QorPathsTest, EnvironmentVariablesAreSetAndUnset) {
    EXPECT_TRUE(QorSetEnv("QorTestVariable", "größer"));
    EXPECT_EQ(QorGetEnv("QorTestVariable"), QorUnicodeString("größer"));
    EXPECT_TRUE(QorSetEnv("QorTestVariable", ""));
    EXPECT_EQ(QorGetEnv("QorTestVariable"), QorUnicodeString(""));
    EXPECT_TRUE(QorSetEnv("QorTestVariable", std::nullopt));
    EXPECT_EQ(QorGetEnv("QorTestVariable"), std::nullopt);
    EXPECT_FALSE(QorSetEnv("", "x"));
    EXPECT_FALSE(QorSetEnv("a=b", "x"));
}

TEST_F(QorPathsTest, TheClockIsRealUnlessATestSetsIt) {
    QorTimeStamp before;
    QorTimeStamp after;
    QorGetCurrentTime(&before);
    QorGetCurrentTime(&after);
    EXPECT_GT(before.seconds, 1'600'000'000);
    EXPECT_GE(std::pair(after.seconds, after.microseconds),
              std::pair(before.seconds, before.microseconds));
    EXPECT_LT(after.microseconds, 1'000'000);
    QorSetClock([] { return QorTimeStamp{.seconds = 5, .microseconds = 999'999}; });
    QorGetCurrentTime(&after);
    EXPECT_EQ(after, (QorTimeStamp{5, 999'999}));
    QorGetCurrentTime(nullptr);
}
