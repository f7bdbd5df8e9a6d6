#include "platform/text/QorNumberFormat.h"

#include "tests/support/DecimalComma.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

struct Row {
    const char* format;
    double number;
    const char* expected;
};

constexpr Row rows[] = {
    {"%4.0f", 299.7, " 300"},
    {"%4.0f", 299.5, " 300"}, // to even, as printf rounds
    {"%4.0f", 300.5, " 300"},
    {"%4.2f", 1.005, "1.00"},
    {"%f", 1e21, "1000000000000000000000.000000"},
    {"%f", -0.0, "-0.000000"},
    {"%.3g", 1234.5, "1.23e+03"},
    {"%g", 0.0001, "0.0001"},
    {"%e", 12345.678, "1.234568e+04"},
    {"%-8.2f|", 1.5, "1.50    |"},
    {"%+.1f", 1.5, "+1.5"},
    {"% .1f", 1.5, " 1.5"},
    {"%08.2f", -1.5, "-0001.50"},
    {"%#.0f", 1.0, "1."},
    {"%.f", 1.6, "2"},
    {"%lf mm", 2.5, "2.500000 mm"},
    {"%Lf", 2.5, "2.500000"},
    {"%d", 3.99, "3"},
    {"%d", -3.99, "-3"},
    {"%i", 7, "7"},
    {"%5d|", 42, "   42|"},
    {"%05d", 42, "00042"},
    {"%.3d", 7, "007"},
    {"%ld", 7, "7"},
    {"%hhd", 300, "300"}, // length modifiers mean nothing
    {"%x", 255, "ff"},
    {"%X", 255, "FF"},
    {"%#x", 255, "0xff"},
    {"%o", 8, "10"},
    {"%u", 4000000000.0, "4000000000"},
    {"%x", -1, "ffffffff"}, // the bits of an int
    {"%d", 1e30, "9223372036854775807"},
    {"%d", -1e30, "-9223372036854775808"},
    {"%d", infinity, "0"},
    {"%f", infinity, "inf"},
    {"100%%: %d", 5, "100%: 5"},
    {"%d%%", 5, "5%"},
    {"größe %d px", 5, "größe 5 px"},
    {"%%d %d", 5, "%d 5"},
};

constexpr const char* refused[] = {
    "",       "text",
    "%",      "%%",
    "100%",   "%d %",
    "%s",     "%n",
    "%c",     "%p",
    "%a",     "%d%d",
    "%d %s",  "%s %d",
    "%*d",    "%.*f",
    "%1$d",   "%'d",
    "%Id",    "%201d",
    "%.201f", "%99999999999999999999d",
    "% ",     "%5",
    "%5.",    "%l",
    "%m",     "%d%n",
};

} // namespace

TEST(QorNumberFormat, FormatsAsPrintfDoes) {
    for (const Row& row : rows) {
        const QorNumberFormat format(row.format);
        EXPECT_TRUE(format.IsValid()) << row.format;
        EXPECT_EQ(format.Format(row.number), row.expected) << row.format;
    }
}

TEST(QorNumberFormat, IsTheSameUnderADecimalComma) {
    const DecimalComma german;
    std::array<char, 16> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%.1f", 1.5);
    ASSERT_STREQ(buffer.data(), "1,5") << "the locale does not do what this test is about";
    for (const Row& row : rows)
        EXPECT_EQ(QorNumberFormat(row.format).Format(row.number), row.expected) << row.format;
    std::snprintf(buffer.data(), buffer.size(), "%.1f", 1.5);
    EXPECT_STREQ(buffer.data(), "1,5") << "the program's own locale was changed";
}

TEST(QorNumberFormat, RefusesWhatIsNotOneNumber) {
    for (const char* text : refused) {
        const QorNumberFormat format(text);
        EXPECT_FALSE(format.IsValid()) << text;
        EXPECT_FALSE(format.IsInteger()) << text;
        EXPECT_EQ(format.Format(1.25), "1.25") << text;
    }
    EXPECT_FALSE(QorNumberFormat(std::string_view("%d\0", 3)).IsValid());
}

TEST(QorNumberFormat, KnowsIntegers) {
    for (const char* text : {"%d", "%i", "%u", "%x", "%X", "%o", "%5ld mm"})
        EXPECT_TRUE(QorNumberFormat(text).IsInteger()) << text;
    for (const char* text : {"%f", "%F", "%e", "%E", "%g", "%G"})
        EXPECT_FALSE(QorNumberFormat(text).IsInteger()) << text;
}

TEST(QorNumberFormat, TakesIntegers) {
    EXPECT_EQ(QorNumberFormat("%d").Format(std::numeric_limits<int>::min()), "-2147483648");
    EXPECT_EQ(QorNumberFormat("%.1f").Format(3), "3.0");
    EXPECT_EQ(QorNumberFormat("%x").Format(-1), "ffffffff");
}

TEST(QorNumberFormat, AllowsLongResults) {
    EXPECT_EQ(QorNumberFormat("%.200f").Format(1e308).size(), 309U + 1U + 200U);
    EXPECT_EQ(QorNumberFormat("%200d").Format(1).size(), 200U);
}
