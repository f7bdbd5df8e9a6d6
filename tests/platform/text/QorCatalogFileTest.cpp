#include "platform/text/QorCatalogFile.h"

#include "tests/support/QorWarningRecorder.h"

#include <gtest/gtest.h>

#include <map>

namespace {

using Entries = std::map<std::string, std::string>;
using Lines = std::vector<std::string>;

struct Result {
    Entries entries;
    Lines warnings;
};

Result Read(std::string_view iText) {
    QorWarningRecorder warnings;
    QorCatalogEntries entries;
    QorReadCatalogText(iText, "file", entries);
    return {{entries.begin(), entries.end()}, warnings.Take()};
}

} // namespace

TEST(QorCatalogFile, ReadsEntriesInAllTheirForms) {
    const std::pair<std::string_view, Entries> rows[] = {
        {"", {}},
        {"\n\r\n \t\n", {}},
        {"A=\"x\";", {{"A", "x"}}},
        {"A=\"x\";\nB=\"y\";\n", {{"A", "x"}, {"B", "y"}}},
        {"A=\"x\";\r\nB=\"y\";\r\n", {{"A", "x"}, {"B", "y"}}},
        {"\xEF\xBB\xBF"
         "A=\"x\";",
         {{"A", "x"}}},
        {"  A \t= \"x\"  ;  ", {{"A", "x"}}},
        {"A=\"\";", {{"A", ""}}},
        {"A=\" x \";", {{"A", " x "}}},
        {"A=\"a=b;c//d#e\";", {{"A", "a=b;c//d#e"}}},
        {"// A=\"x\";\n# B=\"y\";\n  // C", {}},
        {"A=\"x\"; // why\nB=\"y\";# why", {{"A", "x"}, {"B", "y"}}},
        {R"(A="say \"no\" \\ a\tb\nc";)", {{"A", "say \"no\" \\ a\tb\nc"}}},
        {R"(A="C:\dir\picture";)", {{"A", R"(C:\dir\picture)"}}},
        {"Scene1.Light.Color1=\"1,0.5,0\";", {{"Scene1.Light.Color1", "1,0.5,0"}}},
        {"A=\"größer…\";", {{"A", "größer…"}}},
    };
    for (const auto& [text, expected] : rows) {
        const Result result = Read(text);
        EXPECT_EQ(result.entries, expected) << text;
        EXPECT_EQ(result.warnings, Lines()) << text;
    }
}

TEST(QorCatalogFile, NamesDamagedLinesAndKeepsTheGoodOnes) {
    const std::string_view damaged[] = {
        "no entry",
        "=\"x\";",
        "A",
        "A=x;",
        "A=\"x",
        "A=\"x;",
        "A=\"x\"",
        "A=\"x\\\";",
        "A=\"x\"; B=\"y\";",
        "A=\"x\" y;",
        "A B=\"x\";",
        "A\"=\"x\";",
        "A=\"\xFF\";",
        std::string_view("A=\"\0\";", 6),
        std::string_view("\0\0\0\0", 4),
    };
    for (const std::string_view line : damaged) {
        const Result result = Read("Good1=\"1\";\n" + std::string(line) + "\r\nGood2=\"2\";\n");
        EXPECT_EQ(result.entries, (Entries{{"Good1", "1"}, {"Good2", "2"}})) << line;
        ASSERT_EQ(result.warnings.size(), 1U) << line;
        EXPECT_NE(result.warnings[0].find("file, line 2: "), std::string::npos)
            << result.warnings[0];
    }
}

TEST(QorCatalogFile, IsBriefAboutAFileThatIsNoCatalog) {
    std::string text;
    for (int i = 0; i < 1000; ++i)
        text += "rubbish\n";
    const Result result = Read(text + "A=\"x\";\n");
    EXPECT_EQ(result.entries, (Entries{{"A", "x"}}));
    ASSERT_EQ(result.warnings.size(), 11U);
    EXPECT_NE(result.warnings[10].find("990 more lines"), std::string::npos) << result.warnings[10];
}

TEST(QorCatalogFile, TheLaterOfTwoLinesCounts) {
    EXPECT_EQ(Read("A=\"1\";\nA=\"2\";\n").entries, (Entries{{"A", "2"}}));
}

TEST(QorCatalogFile, AFileDoesNotReplaceWhatAnEarlierOneGave) {
    QorCatalogEntries entries;
    QorReadCatalogText("A=\"first\";", "one", entries);
    QorReadCatalogText("A=\"second\";\nB=\"second\";", "two", entries);
    EXPECT_EQ(entries["A"], "first");
    EXPECT_EQ(entries["B"], "second");
}

TEST(QorCatalogFile, ReadsBackWhatItWrites) {
    for (const char* value :
         {"", "plain", "a \"b\" c", "\\", "\\\\", "\\n", "\n", "\\\n", "tab\there", "C:\\new\\text",
          "ends with \\", "\"", "größer…", " blanks ", "//", "\r"}) {
        const Result result = Read(QorWriteCatalogLine("Key", value) + "\n");
        EXPECT_EQ(result.entries, (Entries{{"Key", value}})) << value;
        EXPECT_EQ(result.warnings, Lines()) << value;
    }
    EXPECT_EQ(QorWriteCatalogLine("Scene.Ground", "1"), "Scene.Ground=\"1\";");
}
