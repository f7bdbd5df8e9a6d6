#include "workbench/import/process/ProgressLine.h"

#include <gtest/gtest.h>

#include <vector>

using namespace qor::import;

namespace {

ProgressLine progressAt(double fraction) {
    ProgressLine line;
    line.stage = "mesh";
    line.fraction = fraction;
    return line;
}

} // namespace

TEST(ProgressLine, EveryKindSurvivesTheWay) {
    ProgressLine warning;
    warning.kind = ProgressKind::Warning;
    warning.text = "a \"quoted\"\nline, \xc3\xa4";
    ProgressLine error;
    error.kind = ProgressKind::Error;
    error.error = ErrorKind::Machine;
    error.text = "x.step: the disk is full";
    ProgressLine done;
    done.kind = ProgressKind::Done;
    done.nodes = 12;
    done.parts = 3;
    done.triangles = 1ULL << 40;
    done.librarySeconds = 1.25;
    done.totalSeconds = 1.5;
    for (const ProgressLine& line : {progressAt(0.25), warning, error, done}) {
        const std::string text = formatProgressLine(line);
        EXPECT_EQ(text.find('\n'), std::string::npos);
        EXPECT_EQ(parseProgressLine(text), line) << text;
    }
}

TEST(ProgressLine, TextThatIsNotUtf8IsMended) {
    ProgressLine line;
    line.kind = ProgressKind::Warning;
    line.text = "a\xFFz";
    const auto parsed = parseProgressLine(formatProgressLine(line));
    ASSERT_TRUE(parsed);
    EXPECT_EQ(parsed->text, "a\xEF\xBF\xBDz");
}

TEST(ProgressLine, WhatIsNoProgressLineIsNone) {
    for (const char* text :
         {"", "hello", "{", "[]", "7", "null", "{}", R"({"event":7})", R"({"event":"party"})",
          R"({"event":"progress")", R"({"event":["progress"]})", "\xFF\xFE"})
        EXPECT_FALSE(parseProgressLine(text)) << text;
}

TEST(ProgressLine, NumbersOutOfRangeAreClampedAndWrongTypesIgnored) {
    const auto fractionOf = [](const std::string& value) {
        std::string text = R"({"event":"progress","fraction":)";
        const auto line = parseProgressLine(text.append(value).append("}"));
        return line ? line->fraction : -1;
    };
    EXPECT_EQ(fractionOf("7"), 1);
    EXPECT_EQ(fractionOf("-7"), 0);
    EXPECT_EQ(fractionOf("\"a\""), 0);
    EXPECT_EQ(fractionOf("{\"a\":1}"), 0);
    EXPECT_EQ(fractionOf("null"), 0);
}

TEST(ProgressParser, LinesAreFoundHoweverTheBytesArrive) {
    const std::string stream = formatProgressLine(progressAt(0.5)) + "\nnoise\n" +
                               formatProgressLine(progressAt(1)) + "\n";
    for (std::size_t step = 1; step <= stream.size(); ++step) {
        ProgressParser parser;
        std::vector<double> fractions;
        for (std::size_t at = 0; at < stream.size(); at += step)
            parser.feed(std::string_view(stream).substr(at, step),
                        [&](const ProgressLine& line) { fractions.push_back(line.fraction); });
        EXPECT_EQ(fractions, (std::vector<double>{0.5, 1}));
        EXPECT_EQ(parser.badLines(), 1U);
    }
}

TEST(ProgressParser, ALineWithoutEndCostsNoMemoryAndTheNextOneCounts) {
    ProgressParser parser;
    int lines = 0;
    const auto count = [&lines](const ProgressLine&) {
        ++lines;
    };
    const std::string junk(longestProgressLine, 'x');
    for (int i = 0; i < 100; ++i)
        parser.feed(junk, count);
    parser.feed("\n", count);
    parser.feed(formatProgressLine(progressAt(1)), count);
    parser.feed("\n", count);
    EXPECT_EQ(lines, 1);
    EXPECT_EQ(parser.badLines(), 1U);
}
