#include "workbench/document/session/RecentFiles.h"

#include "platform/system/QorSettingRepository.h"
#include "tests/document/DocumentTest.h"

using namespace qor::document;
using namespace qor::document::testing;

namespace {

class RecentFilesTest : public DocumentTest {};

} // namespace

TEST_F(RecentFilesTest, TheNewestStandsFirstAndOnceAndTenAreKept) {
    EXPECT_TRUE(RecentFiles::list().empty());
    for (int i = 0; i < 12; ++i)
        RecentFiles::add(file(std::to_string(i)));
    RecentFiles::add(file("5"));
    const auto files = RecentFiles::list();
    ASSERT_EQ(files.size(), RecentFiles::most);
    EXPECT_EQ(files[0], file("5"));
    EXPECT_EQ(files[1], file("11"));
    EXPECT_EQ(files[9], file("2"));
}

TEST_F(RecentFilesTest, TheyAreOnTheDisk) {
    RecentFiles::add(file("a"));
    QorSettingRepository::ForgetAll();
    EXPECT_EQ(RecentFiles::list(), (std::vector<std::filesystem::path>{file("a")}));
}

TEST_F(RecentFilesTest, AMissingOneIsForgottenWhenItIsOpened) {
    RecentFiles::add(file("gone"));
    RecentFiles::add(directory.Write("there", "x"));
    EXPECT_FALSE(RecentFiles::dropIfMissing(file("there")));
    EXPECT_TRUE(RecentFiles::dropIfMissing(file("gone")));
    EXPECT_EQ(RecentFiles::list(), (std::vector<std::filesystem::path>{file("there")}));
}
