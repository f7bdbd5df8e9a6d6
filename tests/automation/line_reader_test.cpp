// Lines out of a stream of bytes.
#include "workbench/automation/LineReader.h"

#include <gtest/gtest.h>

#include <vector>

namespace qor::automation {

namespace {

/// The lines that are complete now; one that was too long shows as "(too long)".
std::vector<std::string> drain(LineReader& reader) {
    std::vector<std::string> lines;
    while (const auto line = reader.next())
        lines.push_back(line->isTooLong ? "(too long)" : line->text);
    return lines;
}

using Lines = std::vector<std::string>;

TEST(LineReader, GivesALineOnceItsEndIsThere) {
    LineReader reader(100);
    reader.add("one");
    EXPECT_EQ(drain(reader), Lines());
    reader.add("\ntwo\nthr");
    EXPECT_EQ(drain(reader), Lines({"one", "two"}));
    reader.add("ee\n");
    EXPECT_EQ(drain(reader), Lines({"three"}));
}

TEST(LineReader, LeavesOutBlankLines) {
    LineReader reader(100);
    reader.add("\n \t\r\n\na\r\n\n");
    EXPECT_EQ(drain(reader), Lines({"a\r"}));
}

TEST(LineReader, TakesTheRestAsALineAtTheEnd) {
    LineReader reader(100);
    reader.add("rest");
    reader.finish();
    EXPECT_EQ(drain(reader), Lines({"rest"}));
    LineReader empty(100);
    empty.finish();
    EXPECT_EQ(drain(empty), Lines());
}

TEST(LineReader, AcceptsExactlyTheLimit) {
    LineReader reader(4);
    reader.add("1234\n12345\n1\n");
    EXPECT_EQ(drain(reader), Lines({"1234", "(too long)", "1"}));
}

TEST(LineReader, ReportsALongLineAtOnceAndSkipsItsRest) {
    LineReader reader(4);
    reader.add("12345");
    EXPECT_EQ(drain(reader), Lines({"(too long)"}));
    reader.add("6789012345");
    EXPECT_EQ(drain(reader), Lines());
    reader.add("67\nnext\n");
    EXPECT_EQ(drain(reader), Lines({"next"}));
}

TEST(LineReader, GivesTheSameLinesHoweverTheBytesCome) {
    const std::string stream = "a\n\nbb\nccccccc\ndddd\n \ne";
    const Lines expected{"a", "bb", "(too long)", "dddd", "e"};
    for (std::size_t step = 1; step <= stream.size(); ++step) {
        LineReader reader(4);
        Lines lines;
        for (std::size_t i = 0; i < stream.size(); i += step) {
            reader.add(std::string_view(stream).substr(i, step));
            for (const std::string& line : drain(reader))
                lines.push_back(line);
        }
        reader.finish();
        for (const std::string& line : drain(reader))
            lines.push_back(line);
        EXPECT_EQ(lines, expected) << step;
    }
}

} // namespace

} // namespace qor::automation
