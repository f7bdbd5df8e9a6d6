#include "platform/text/QorNumberScan.h"

#include "tests/support/DecimalComma.h"

#include <gtest/gtest.h>

#include <array>
#include <cfloat>

namespace {

constexpr int untouched = -77;

struct IntegerRow {
    const char* text;
    bool read;
    int value;
};

constexpr IntegerRow integers[] = {
    {"5", true, 5},
    {"-5", true, -5},
    {"+5", true, 5},
    {" \t\n12 mm", true, 12},
    {"12.9", true, 12},
    {"007", true, 7},
    {"2147483647", true, 2147483647},
    {"-2147483648", true, -2147483648LL},
    {"2147483648", false, untouched},
    {"99999999999999999999", false, untouched},
    {"", false, untouched},
    {" ", false, untouched},
    {"x1", false, untouched},
    {"+", false, untouched},
    {"-", false, untouched},
    {"+-5", false, untouched},
    {"++5", false, untouched},
    {"- 5", false, untouched},
    {".5", false, untouched},
};

struct FloatRow {
    const char* text;
    bool read;
    double value;
};

constexpr FloatRow floats[] = {
    {"0.2", true, 0.2},
    {"-1", true, -1},
    {"+.5", true, 0.5},
    {"5.", true, 5},
    {"1e-05", true, 1e-5},
    {"1E2x", true, 100},
    {"1e", true, 1},
    {"1,5", true, 1}, // a comma ends a number in every locale
    {" 3 4", true, 3},
    {"1e-400", true, 0},
    {"1e999", false, untouched},
    {"-1e999", false, untouched},
    {"inf", false, untouched},
    {"nan", false, untouched},
    {"", false, untouched},
    {"abc", false, untouched},
    {".", false, untouched},
    {"-.", false, untouched},
    {"+-1", false, untouched},
};

} // namespace

TEST(QorNumberScan, ReadsIntegersAsScanfDoes) {
    for (const IntegerRow& row : integers) {
        int value = untouched;
        EXPECT_EQ(QorScanInteger(row.text, value), row.read) << row.text;
        EXPECT_EQ(value, row.value) << row.text;
    }
}

TEST(QorNumberScan, ReadsFloatsInEveryLocale) {
    const DecimalComma german;
    for (const FloatRow& row : floats) {
        double value = untouched;
        EXPECT_EQ(QorScanFloat(row.text, value), row.read) << row.text;
        EXPECT_EQ(value, row.value) << row.text;
        float narrow = untouched;
        EXPECT_EQ(QorScanFloat(row.text, narrow), row.read) << row.text;
        EXPECT_EQ(narrow, static_cast<float>(row.value)) << row.text;
    }
}

TEST(QorNumberScan, KnowsTheRangeOfAFloat) {
    float value = untouched;
    EXPECT_FALSE(QorScanFloat("1e39", value));
    EXPECT_EQ(value, untouched);
    EXPECT_TRUE(QorScanFloat("3.4028234e38", value));
    EXPECT_EQ(value, FLT_MAX);
    EXPECT_TRUE(QorScanFloat("1e-60", value));
    EXPECT_EQ(value, 0.0F);
    EXPECT_TRUE(QorScanFloat("1.4e-45", value));
    EXPECT_GT(value, 0.0F);
}

TEST(QorNumberScan, RoundsAFloatOnce) {
    // Just above the middle between 1 and the next float: by way of a double it would be rounded to
    // the middle, and from there down to 1.
    float value = 0;
    EXPECT_TRUE(QorScanFloat("1.00000005960464477539062500000001", value));
    EXPECT_EQ(value, 1.00000011920928955078125F);
}

TEST(QorNumberScan, ReadsAListAndLeavesTheRest) {
    struct Row {
        const char* text;
        std::size_t count;
        std::array<float, 3> values;
    };

    const Row rows[] = {
        {"1,2,3", 3, {1, 2, 3}},
        {" 1, 2,\t3", 3, {1, 2, 3}},
        {"1,2,3,4", 3, {1, 2, 3}},
        {"0.5,-0.25,1e1 rest", 3, {0.5, -0.25, 10}},
        {"1,2", 2, {1, 2, 9}},
        {"1,2,", 2, {1, 2, 9}},
        {"1,x,3", 1, {1, 9, 9}},
        {"1 ,2,3", 1, {1, 9, 9}}, // as with "%f,%f,%f": no blank before a comma
        {"1;2;3", 1, {1, 9, 9}},
        {"1 2 3", 1, {1, 9, 9}},
        {",2,3", 0, {9, 9, 9}},
        {"", 0, {9, 9, 9}},
        {"red", 0, {9, 9, 9}},
        {"1,inf,3", 1, {1, 9, 9}},
    };
    const DecimalComma german;
    for (const Row& row : rows) {
        std::array<float, 3> values{9, 9, 9};
        EXPECT_EQ(QorScanFloats(row.text, values), row.count) << row.text;
        EXPECT_EQ(values, row.values) << row.text;
    }
}
