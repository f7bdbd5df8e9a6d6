#include "platform/system/QorSettingFile.h"

#include "tests/support/DecimalComma.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace {

using Integers = std::vector<int>;
using Floats = std::vector<double>;

constexpr std::string_view header = "# QorWorkbench settings, version 1\n";

QorSettingFile Parse(std::string_view iText, int iDamaged = 0) {
    QorSettingFile file;
    const QorSettingFile::Damage damage = file.Parse(iText);
    EXPECT_EQ(damage.count, iDamaged) << iText << damage.reason;
    return file;
}

bool IsSame(double iFirst, double iSecond) {
    return std::isnan(iFirst)
               ? std::isnan(iSecond)
               : std::bit_cast<std::uint64_t>(iFirst) == std::bit_cast<std::uint64_t>(iSecond);
}

} // namespace

TEST(QorSettingFile, ReadsEveryKind) {
    const std::pair<const char*, QorSettingValue> rows[] = {
        {"A = 1", Integers{1}},
        {"A=-1", Integers{-1}},
        {"A = 1, 2,3 ,4", Integers{1, 2, 3, 4}},
        {"A = 2147483647", Integers{2147483647}},
        {"A = 2147483648", Floats{2147483648.0}},
        {"A = 0.2", Floats{0.2}},
        {"A = 1.0", Floats{1}},
        {"A = 1, 2.5", Floats{1, 2.5}},
        {"A = 1e-05", Floats{1e-5}},
        {"A = inf, -inf", Floats{INFINITY, -INFINITY}},
        {"A = \"text\"", std::string("text")},
        {"A = \"\"", std::string()},
        {"A = \"a = \\\"b\\\" \\\\ \\n\\r\\t\\0\"", std::string("a = \"b\" \\ \n\r\t\0", 14)},
        {"  A\t= 1  ", Integers{1}},
        {"A = 1\r", Integers{1}},
    };
    const DecimalComma german;
    for (const auto& [text, expected] : rows) {
        const QorSettingFile file = Parse(text);
        ASSERT_NE(file.Find("A"), nullptr) << text;
        EXPECT_EQ(*file.Find("A"), expected) << text;
    }
}

TEST(QorSettingFile, CountsDamagedLinesAndKeepsTheGoodOnes) {
    for (const char* line : {"no setting", "A", "= 1", "A = ", "A = x", "A = 1,", "A = 1 2",
                             "A = 0,5,", "A = ,1", "A = \"open", "A = \"x\" y", "A = \"x\\q\"",
                             "A = \"x\\", "A B = 1", "A = 1e999", "A = 0x10", "A = 1.5f"}) {
        QorSettingFile file;
        const auto damage =
            file.Parse(std::string(header) + "Good = 1\n" + line + "\nMore = 2\nbroken\n");
        EXPECT_EQ(damage.count, 2) << line;
        EXPECT_EQ(damage.firstLine, 3) << line;
        EXPECT_FALSE(damage.reason.empty()) << line;
        EXPECT_EQ(file.CountSettings(), 2U) << line;
        EXPECT_EQ(*file.Find("More"), QorSettingValue(Integers{2})) << line;
    }
}

TEST(QorSettingFile, RubbishIsDamageAndNoCrash) {
    Parse(std::string(1000, '\0'), 1);
    Parse("\xFF\xFE\x41\x00", 1);
    Parse(std::string(100000, '='), 1);
    Parse("", 0);
    Parse("\n\n\r\n", 0);
}

TEST(QorSettingFile, PrintsReadably) {
    QorSettingFile file;
    EXPECT_TRUE(file.Set("Quality", Integers{1}));
    EXPECT_TRUE(file.Set("LightColor1", Floats{1, 0.5, -0.0}));
    EXPECT_TRUE(file.Set("BackgroundImage", std::string("größer \"x\"\n")));
    const DecimalComma german;
    EXPECT_EQ(file.Print(), std::string(header) + "Quality = 1\n"
                                                  "LightColor1 = 1.0, 0.5, -0.0\n"
                                                  "BackgroundImage = \"größer \\\"x\\\"\\n\"\n");
}

TEST(QorSettingFile, KeepsOrderCommentsAndPlaces) {
    const std::string text = std::string(header) + "# mine\nB = 1\n\nA = 2\n# end\n";
    QorSettingFile file = Parse(text);
    EXPECT_EQ(file.Print(), text);
    file.Set("B", Integers{5});
    file.Set("C", Integers{3});
    EXPECT_EQ(file.Print(), std::string(header) + "# mine\nB = 5\n\nA = 2\n# end\nC = 3\n");
}

TEST(QorSettingFile, TheLaterOfTwoLinesCounts) {
    EXPECT_EQ(Parse("A = 1\nB = 2\nA = 3\n").Print(), std::string(header) + "A = 3\nB = 2\n");
}

TEST(QorSettingFile, KeepsWhatALaterVersionWrote) {
    const std::string text = "# QorWorkbench settings, version 2, with sections\n"
                             "[section]\nA = 1\nB = <new kind>\n";
    QorSettingFile file = Parse(text);
    EXPECT_EQ(*file.Find("A"), QorSettingValue(Integers{1}));
    file.Set("A", Integers{2});
    EXPECT_EQ(file.Print(), "# QorWorkbench settings, version 2, with sections\n"
                            "[section]\nA = 2\nB = <new kind>\n");
}

TEST(QorSettingFile, RefusesKeysThatCouldNotBeReadBack) {
    QorSettingFile file;
    for (const char* key : {"", "a b", "a=b", "a\"b", "#a", "a\n", "\ta"})
        EXPECT_FALSE(file.Set(key, Integers{1})) << key;
    for (const char* key : {"a", "a#b", "Scene1.Light", "größer", "[x]", "0"})
        EXPECT_TRUE(file.Set(key, Integers{1})) << key;
    EXPECT_EQ(Parse(file.Print()).CountSettings(), 6U);
}

TEST(QorSettingFile, NumbersComeBackExactly) {
    const DecimalComma german;
    std::mt19937_64 random(1); // NOLINT(cert-msc51-cpp): the same numbers every time
    Floats numbers{0.0,
                   -0.0,
                   0.1,
                   1.0 / 3,
                   1e21,
                   1e-300,
                   5e-324,
                   NAN,
                   INFINITY,
                   123456789.0,
                   std::numeric_limits<double>::max()};
    for (int i = 0; i < 2000; ++i)
        numbers.push_back(std::bit_cast<double>(random()));
    QorSettingFile file;
    file.Set("A", numbers);
    const QorSettingFile again = Parse(file.Print());
    const auto& back = std::get<Floats>(*again.Find("A"));
    ASSERT_EQ(back.size(), numbers.size());
    for (std::size_t i = 0; i < numbers.size(); ++i)
        EXPECT_TRUE(IsSame(back[i], numbers[i])) << numbers[i];
}

TEST(QorSettingFile, EveryByteOfAStringComesBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    QorSettingFile file;
    file.Set("A", all);
    const QorSettingFile again = Parse(file.Print());
    EXPECT_EQ(*again.Find("A"), QorSettingValue(all));
}

TEST(QorSettingFile, FloatsAreWidenedToWhatAPersonWouldWrite) {
    EXPECT_EQ(QorWidenFloat(0.2F), 0.2);
    EXPECT_EQ(QorWidenFloat(-1.0F), -1.0);
    EXPECT_TRUE(std::isnan(QorWidenFloat(NAN)));
    EXPECT_EQ(QorWidenFloat(INFINITY), INFINITY);
    std::mt19937 random(1); // NOLINT(cert-msc51-cpp)
    for (int i = 0; i < 20000; ++i) {
        const auto value = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
        if (std::isnan(value))
            continue;
        EXPECT_EQ(static_cast<float>(QorWidenFloat(value)), value);
    }
}
