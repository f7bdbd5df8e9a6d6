// Where the port may listen, and what becomes of the file.
#include "tests/support/QorTempDirectory.h"
#include "workbench/automation/ListeningSocket.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <optional>

namespace qor::automation {

namespace {

class ListeningSocketTest : public testing::Test {
protected:
    [[nodiscard]] std::string path() const { return directory.GetPath("port"); }

    [[nodiscard]] static bool exists(const std::string& file) {
        struct stat found {};

        return ::lstat(file.c_str(), &found) == 0;
    }

    QorTempDirectory directory;
};

TEST_F(ListeningSocketTest, IsForItsOwnerAloneWhateverTheMask) {
    const mode_t before = ::umask(0);
    const ListeningSocket socket(path());
    ::umask(before);
    ASSERT_EQ(socket.error(), "");

    struct stat found {};

    ASSERT_EQ(::lstat(path().c_str(), &found), 0);
    EXPECT_TRUE(S_ISSOCK(found.st_mode));
    EXPECT_EQ(found.st_mode & 07777U, 0600U);
}

TEST_F(ListeningSocketTest, RemovesItsFileAtTheEnd) {
    auto socket = std::make_unique<ListeningSocket>(path());
    EXPECT_TRUE(exists(path()));
    socket.reset();
    EXPECT_FALSE(exists(path()));
}

TEST_F(ListeningSocketTest, LeavesAFileThatIsNotItsOwn) {
    auto socket = std::make_unique<ListeningSocket>(path());
    std::filesystem::rename(path(), path() + ".moved");
    directory.Write("port", "somebody else's");
    socket.reset();
    EXPECT_EQ(directory.Read("port"), "somebody else's");
    EXPECT_TRUE(exists(path() + ".moved"));
}

TEST_F(ListeningSocketTest, IsRefusedWhileAnotherListens) {
    const ListeningSocket first(path());
    const ListeningSocket second(path());
    EXPECT_EQ(second.error(), "cannot listen at " + path() + ": another program listens there");
    EXPECT_EQ(second.descriptor(), -1);
    EXPECT_TRUE(exists(path()));
}

TEST_F(ListeningSocketTest, ReplacesTheSocketOfADeadProgram) {
    {
        const ListeningSocket first(path());
        std::filesystem::create_hard_link(path(), path() + ".kept");
    }
    std::filesystem::rename(path() + ".kept", path());
    ASSERT_TRUE(exists(path()));
    const ListeningSocket second(path());
    EXPECT_EQ(second.error(), "");
}

TEST_F(ListeningSocketTest, IsRefusedWhereSomethingElseIs) {
    directory.Write("port", "text");
    const ListeningSocket onFile(path());
    EXPECT_EQ(onFile.error(), "cannot listen at " + path() + ": there is a file that is no socket");
    EXPECT_EQ(directory.Read("port"), "text");
    const ListeningSocket onFolder(directory.GetPath());
    EXPECT_NE(onFolder.error(), "");
    std::filesystem::create_symlink("nowhere", directory.GetPath("link"));
    const ListeningSocket onLink(directory.GetPath("link"));
    EXPECT_NE(onLink.error(), "");
    const ListeningSocket inNoFolder(directory.GetPath("none/port"));
    EXPECT_NE(inNoFolder.error(), "");
    const ListeningSocket nameless("");
    EXPECT_NE(nameless.error(), "");
}

TEST_F(ListeningSocketTest, IsRefusedWhenThePathIsTooLong) {
    constexpr std::size_t longest = sizeof(sockaddr_un::sun_path) - 1;
    const std::string folder = directory.GetPath() + "/";
    ASSERT_LT(folder.size(), longest);
    const std::string fits = folder + std::string(longest - folder.size(), 'x');
    const ListeningSocket good(fits);
    EXPECT_EQ(good.error(), "");
    const ListeningSocket bad(fits + "x");
    EXPECT_NE(bad.error().find("longer than 107 bytes"), std::string::npos) << bad.error();
    EXPECT_FALSE(exists(fits + "x"));
}

} // namespace

} // namespace qor::automation
