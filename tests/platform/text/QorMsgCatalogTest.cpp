#include "platform/text/QorMsgCatalog.h"

#include "platform/text/QorRscCatalog.h"
#include "tests/support/QorTestApplication.h"

namespace {

class QorMsgCatalogTest : public QorTestApplication {
protected:
    QorMsgCatalogTest() { QorSetEnv("QorStartupPath", directory.GetPath()); }
};

} // namespace

TEST_F(QorMsgCatalogTest, SubstitutesParameters) {
    directory.Write("messages/Cat.QorMsg", R"(Size="/P1 × /P2 pixels";
Twice="/P1/P1";
Plain="no parameters";
Ten="/P10";
Zero="/P0";
End="ends with /P";
Escaped="//P1 is /P1";
Address="http://Place/P1";
Third="/P3.";
)");
    const auto build = [](const char* iKey, const QorMsgParameters& iParameters) {
        return QorMsgCatalog::BuildMessage("Cat", iKey, iParameters);
    };
    EXPECT_EQ(build("Size", {"640", "480"}), "640 × 480 pixels");
    EXPECT_EQ(build("Twice", {"a"}), "aa");
    EXPECT_EQ(build("Plain", {"a", "b"}), "no parameters");
    EXPECT_EQ(build("Ten", {"a"}), "a0"); // one digit: there are nine parameters
    EXPECT_EQ(build("Zero", {"a"}), "/P0");
    EXPECT_EQ(build("End", {"a"}), "ends with /P");
    EXPECT_EQ(build("Escaped", {"a"}), "/P1 is a");
    EXPECT_EQ(build("Address", {"a"}), "http://Placea");
    EXPECT_EQ(build("Third", {"a", "b"}), ".");
    EXPECT_EQ(build("Twice", {"/P2"}), "/P2/P2"); // what is substituted is not looked at again
    EXPECT_EQ(build("Size", {"%s%n", "\""}), "%s%n × \" pixels");
}

TEST_F(QorMsgCatalogTest, AMissingKeyGivesItselfOrTheDefault) {
    directory.Write("messages/Cat.QorMsg", "Empty=\"\";");
    EXPECT_EQ(QorMsgCatalog::BuildMessage("Cat", "Missing"), "Missing");
    EXPECT_EQ(QorMsgCatalog::BuildMessage("NoCatalog", "Missing"), "Missing");
    EXPECT_EQ(QorMsgCatalog::BuildMessage("NoCatalog", "Missing", {"a.png", "/P1"}),
              "Missing: a.png, /P1");
    EXPECT_EQ(QorMsgCatalog::BuildMessage("Cat", "Missing", {}, ""), "");
    EXPECT_EQ(QorMsgCatalog::BuildMessage("Cat", "Missing", {"x"}, "default /P1"), "default x");
    EXPECT_EQ(QorMsgCatalog::BuildMessage("Cat", "Empty", {}, "default"), "");
    EXPECT_EQ(QorMsgCatalog::FindMessage("Cat", "Missing"), nullptr);
    ASSERT_NE(QorMsgCatalog::FindMessage("Cat", "Empty"), nullptr);
}

TEST_F(QorMsgCatalogTest, ANameIsNoPath) {
    directory.Write("secret.QorMsg", "A=\"x\";");
    directory.Write("messages/.hidden.QorMsg", "A=\"x\";");
    for (const char* name : {"../secret", "", ".", "..", ".hidden", "/etc/passwd"})
        EXPECT_EQ(QorMsgCatalog::FindMessage(name, "A"), nullptr) << name;
    EXPECT_EQ(QorMsgCatalog::FindMessage(std::string_view("a\0b", 3), "A"), nullptr);
}

TEST_F(QorMsgCatalogTest, ResourcesAreFoundOrLeaveTheValue) {
    directory.Write("resources/Cat.QorRsc", "Count=\"3\";\n");
    QorString value("before");
    EXPECT_NE(QorRscCatalog::BuildResource("Cat", "Count", value), 0);
    EXPECT_EQ(value, "3");
    EXPECT_EQ(QorRscCatalog::BuildResource("Cat", "Missing", value), 0);
    EXPECT_EQ(QorRscCatalog::BuildResource("NoCatalog", "Count", value), 0);
    EXPECT_EQ(value, "3");
    QorUnicodeString text;
    EXPECT_NE(QorRscCatalog::BuildResource("Cat", "Count", text), 0);
    EXPECT_EQ(text, "3");
}

TEST_F(QorMsgCatalogTest, DamagedFilesAreNamedOnceAndTheirGoodLinesCount) {
    directory.Write("messages/Cat.QorMsg", "A=\"x\";\nbroken\nB=\"y\";\n");
    for (int turn = 0; turn < 3; ++turn) {
        loop.RunOneTurn();
        EXPECT_EQ(QorMsgCatalog::BuildMessage("Cat", "A"), "x");
        EXPECT_EQ(QorMsgCatalog::BuildMessage("Cat", "B"), "y");
        for (int i = 0; i < 10; ++i)
            EXPECT_EQ(QorMsgCatalog::FindMessage("Cat", "broken"), nullptr);
    }
    const auto seen = warnings.Take();
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_NE(seen[0].find(directory.GetPath("messages/Cat.QorMsg") + ", line 2: "),
              std::string::npos)
        << seen[0];
}

TEST_F(QorMsgCatalogTest, ADirectoryOrPipeInPlaceOfAFileIsAWarning) {
    std::filesystem::create_directories(directory.GetPath("messages/Cat.QorMsg"));
    EXPECT_EQ(QorMsgCatalog::FindMessage("Cat", "A"), nullptr);
    const auto seen = warnings.Take();
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_NE(seen[0].find("cannot be read"), std::string::npos) << seen[0];
}
