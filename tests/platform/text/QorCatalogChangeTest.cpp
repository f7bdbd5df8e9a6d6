#include "platform/text/QorMsgCatalog.h"
#include "platform/text/QorRscCatalog.h"
#include "tests/support/QorTestApplication.h"

#include <fcntl.h>
#include <sys/stat.h>

// When catalogs notice that something has changed.

namespace {

class QorCatalogChange : public QorTestApplication {
protected:
    QorCatalogChange() { QorSetEnv("QorStartupPath", directory.GetPath("one")); }

    static std::string Find() { return QorMsgCatalog::BuildMessage("Cat", "A", {}, "none").Str(); }

    /// Makes a file look as if it had been written long ago.
    void Age(const char* iName) const {
        const timespec old[2] = {{.tv_sec = 1000, .tv_nsec = 0}, {.tv_sec = 1000, .tv_nsec = 0}};
        utimensat(AT_FDCWD, directory.GetPath(iName).c_str(), old, 0);
    }
};

} // namespace

TEST_F(QorCatalogChange, AChangedPathIsSeenAtOnce) {
    directory.Write("one/messages/Cat.QorMsg", "A=\"one\";");
    directory.Write("two/messages/Cat.QorMsg", "A=\"two\";");
    EXPECT_EQ(Find(), "one");
    QorSetEnv("QorStartupPath", directory.GetPath("two"));
    EXPECT_EQ(Find(), "two");
    setenv("QorStartupPath", directory.GetPath("one").c_str(), 1);
    EXPECT_EQ(Find(), "one");
    unsetenv("QorStartupPath");
    EXPECT_EQ(Find(), "none");
}

TEST_F(QorCatalogChange, AChangedFileIsSeenInTheNextTurn) {
    directory.Write("one/messages/Cat.QorMsg", "A=\"before\";");
    EXPECT_EQ(Find(), "before");
    directory.Write("one/messages/Cat.QorMsg", "A=\"after!\";"); // of the same size
    EXPECT_EQ(Find(), "before");
    loop.RunOneTurn();
    EXPECT_EQ(Find(), "after!");
}

TEST_F(QorCatalogChange, ANewAndARemovedFileAreSeen) {
    EXPECT_EQ(Find(), "none");
    const std::string path = directory.Write("one/messages/Cat.QorMsg", "A=\"new\";");
    loop.Post([] {});
    loop.RunPosted();
    EXPECT_EQ(Find(), "new");
    std::filesystem::remove(path);
    QorCatalogs::Refresh();
    EXPECT_EQ(Find(), "none");
}

TEST_F(QorCatalogChange, AReplacedFileOfTheSameTimeAndSizeIsSeen) {
    directory.Write("one/messages/Cat.QorMsg", "A=\"before\";");
    Age("one/messages/Cat.QorMsg");
    EXPECT_EQ(Find(), "before");
    directory.Write("one/messages/New", "A=\"after!\";");
    Age("one/messages/New");
    std::filesystem::rename(directory.GetPath("one/messages/New"),
                            directory.GetPath("one/messages/Cat.QorMsg"));
    QorCatalogs::Refresh();
    EXPECT_EQ(Find(), "after!");
}

TEST_F(QorCatalogChange, AChangedLanguageIsSeenWithTheVariable) {
    directory.Write("one/messages/Cat.QorMsg", "A=\"plain\";");
    directory.Write("one/messages/fr/Cat.QorMsg", "A=\"fr\";");
    EXPECT_EQ(Find(), "plain");
    QorSetEnv("LC_ALL", "fr_FR.UTF-8");
    EXPECT_EQ(Find(), "fr");
}

TEST_F(QorCatalogChange, ResourcesFollowToo) {
    directory.Write("one/resources/Cat.QorRsc", "A=\"1\";");
    QorString value;
    EXPECT_NE(QorRscCatalog::BuildResource("Cat", "A", value), 0);
    directory.Write("one/resources/Cat.QorRsc", "A=\"2\";");
    loop.Advance(std::chrono::milliseconds(1));
    EXPECT_NE(QorRscCatalog::BuildResource("Cat", "A", value), 0);
    EXPECT_EQ(value, "2");
}

TEST_F(QorCatalogChange, NothingIsReadAgainWithoutNeed) {
    directory.Write("one/messages/Cat.QorMsg", "A=\"x\";\nbroken\n");
    EXPECT_EQ(Find(), "x");
    EXPECT_EQ(warnings.Take().size(), 1U);
    for (int i = 0; i < 1000; ++i)
        EXPECT_EQ(Find(), "x");
    EXPECT_EQ(warnings.Take().size(), 0U); // reading it again would warn again
}
