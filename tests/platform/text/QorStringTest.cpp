#include "platform/text/QorString.h"

#include "platform/text/QorPathList.h"
#include "platform/text/QorUtf8.h"
#include "tests/support/DecimalComma.h"

#include <gtest/gtest.h>

TEST(QorString, IsMadeFromTextAndFromNothing) {
    EXPECT_TRUE(QorString().IsNull());
    EXPECT_TRUE(QorString(static_cast<const char*>(nullptr)).IsNull());
    EXPECT_EQ(QorString("abc").GetLengthInChar(), 3U);
    EXPECT_STREQ(QorString("abc").CastToCharPtr(), "abc");
    EXPECT_EQ(QorString(std::string_view("abcd").substr(1)).Str(), "bcd");
    EXPECT_EQ(QorString(std::string("a\0b", 3)).GetLengthInChar(), 3U);
}

TEST(QorString, ComparesAndJoins) {
    EXPECT_EQ(QorString("a") + "b", QorString("ab"));
    EXPECT_LT(QorString("a"), QorString("b"));
    EXPECT_LT(QorString("a"), QorString("aa"));
    QorUnicodeString text("x");
    text += "y";
    EXPECT_EQ(text, "xy");
    EXPECT_EQ(std::hash<QorString>()("k"), std::hash<QorString>()(QorString("k")));
}

TEST(QorString, StripsBlanksAtBothEnds) {
    EXPECT_EQ(QorUnicodeString(" \t a b\r\n").Strip(), "a b");
    EXPECT_EQ(QorUnicodeString(" \t ").Strip(), "");
    EXPECT_EQ(QorUnicodeString("").Strip(), "");
}

TEST(QorUnicodeString, CountsCodePoints) {
    EXPECT_EQ(QorUnicodeString("").CountCharacters(), 0U);
    EXPECT_EQ(QorUnicodeString("abc").CountCharacters(), 3U);
    EXPECT_EQ(QorUnicodeString("größer…").CountCharacters(), 7U);
    EXPECT_EQ(QorUnicodeString("\xF0\x9F\x93\xB7").CountCharacters(), 1U);
}

TEST(QorUnicodeString, IsBuiltFromNumbersInEveryLocale) {
    const DecimalComma german;
    EXPECT_EQ(QorUnicodeString().BuildFromNum(1234567), "1234567");
    EXPECT_EQ(QorUnicodeString().BuildFromNum(-3, "%d px"), "-3 px");
    EXPECT_EQ(QorUnicodeString().BuildFromNum(0.5), "0.500000");
    EXPECT_EQ(QorUnicodeString().BuildFromNum(299.7, "%4.0f"), " 300");
    EXPECT_EQ(QorUnicodeString().BuildFromNum(1234567.25, "%4.2f"), "1234567.25");
}

TEST(QorUnicodeString, AFormatThatIsNoneCountsAsTheUsualOne) {
    for (const char* format : {"%s", "%n", "%d %d", "", "none", "%", "%*d"}) {
        EXPECT_EQ(QorUnicodeString().BuildFromNum(7, format), "7") << format;
        EXPECT_EQ(QorUnicodeString().BuildFromNum(7.5, format), "7.500000") << format;
    }
    EXPECT_EQ(QorUnicodeString().BuildFromNum(7, nullptr), "7");
}

TEST(QorPathList, LeavesEmptyDirectoriesOut) {
    using List = std::vector<std::string>;
    EXPECT_EQ(QorSplitPathList(""), List());
    EXPECT_EQ(QorSplitPathList("/a"), List{"/a"});
    EXPECT_EQ(QorSplitPathList(":/a::/b c:"), (List{"/a", "/b c"}));
}

TEST(QorUtf8, KnowsWellFormedText) {
    const std::pair<std::string_view, bool> rows[] = {
        {"", true},
        {"plain", true},
        {"\xC3\xA9", true},
        {"\xE2\x82\xAC", true},
        {"\xF4\x8F\xBF\xBF", true},
        {"\xEF\xBF\xBD", true},
        {"\x80", false},             // a continuation alone
        {"\xC3", false},             // cut off
        {"\xE2\x82", false},         // cut off
        {"\xF0\x9F\x93", false},     // cut off
        {"\xC0\x80", false},         // overlong
        {"\xE0\x80\x80", false},     // overlong
        {"\xF0\x80\x80\x80", false}, // overlong
        {"\xED\xA0\x80", false},     // a surrogate
        {"\xF4\x90\x80\x80", false}, // past the last code point
        {"\xFF", false},
        {"\xE2\x28\xA1", false},
        {"a\xC3(", false},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(QorIsUtf8(text), expected) << testing::PrintToString(text);
}
