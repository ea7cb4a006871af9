#include <orbel/foundation/text/LineReader.h>

#include <support/Platform.h>
#include <support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace std::string_view_literals;
using Lines = std::vector<std::string>;

Lines linesOf(std::string_view bytes, std::size_t limit) {
    const TemporaryFolder folder;
    text::LineReader reader(files::openText(folder.write("lines.txt", bytes).c_str()), limit);
    EXPECT_TRUE(reader.isOpen());
    Lines lines;
    while (const auto line = reader.next())
        lines.emplace_back(*line);
    EXPECT_EQ(reader.next(), std::nullopt);
    return lines;
}

/// How long the lines are that a table file of one line comes in.
std::vector<std::size_t> lengthsOf(std::size_t characters, std::string_view lineEnd) {
    std::vector<std::size_t> lengths;
    for (const std::string& line : linesOf(std::string(characters, 'x').append(lineEnd), 1'023))
        lengths.push_back(line.size());
    return lengths;
}

using Lengths = std::vector<std::size_t>;

} // namespace

TEST(LineReader, KeepsLineEnds) {
    EXPECT_EQ(linesOf("one\n\ntwo\n", 9), (Lines{"one\n", "\n", "two\n"}));
}

TEST(LineReader, TakesALastLineWithoutItsEnd) {
    EXPECT_EQ(linesOf("one\ntwo", 9), (Lines{"one\n", "two"}));
}

TEST(LineReader, HasNothingInAnEmptyFile) {
    EXPECT_EQ(linesOf("", 9), Lines{});
}

TEST(LineReader, ReadsCarriageReturnsAsThePlatformsTextsHaveThem) {
    EXPECT_EQ(linesOf("a\r\nb\r\n", 9), onWindows ? (Lines{"a\n", "b\n"}) : (Lines{"a\r\n", "b\r\n"}));
    EXPECT_EQ(linesOf("a\rb\n", 9), Lines{"a\rb\n"});
}

TEST(LineReader, CountsTheLineEndInTheLengthOfALine) {
    EXPECT_EQ(linesOf("abc\nd", 4), (Lines{"abc\n", "d"}));
    EXPECT_EQ(linesOf("abcd\ne", 4), (Lines{"abcd", "\n", "e"}));
    EXPECT_EQ(linesOf("abcde\nf", 4), (Lines{"abcd", "e\n", "f"}));
    EXPECT_EQ(linesOf("abcdefghi", 4), (Lines{"abcd", "efgh", "i"}));
    EXPECT_EQ(linesOf("abcd", 4), Lines{"abcd"});
}

TEST(LineReader, CutsLinesAtTheLengthOfTableLines) {
    EXPECT_EQ(lengthsOf(1'022, ""), (Lengths{1'022}));
    EXPECT_EQ(lengthsOf(1'022, "\n"), (Lengths{1'023}));
    EXPECT_EQ(lengthsOf(1'023, ""), (Lengths{1'023}));
    EXPECT_EQ(lengthsOf(1'023, "\n"), (Lengths{1'023, 1}));
    EXPECT_EQ(lengthsOf(1'024, ""), (Lengths{1'023, 1}));
    EXPECT_EQ(lengthsOf(1'024, "\n"), (Lengths{1'023, 2}));
}

TEST(LineReader, HidesTheRestOfALineBehindANul) {
    EXPECT_EQ(linesOf("one\0hidden\ntwo\n"sv, 20), (Lines{"one", "two\n"}));
    EXPECT_EQ(linesOf("\0\n\0\0"sv, 20), (Lines{"", ""}));
    EXPECT_EQ(linesOf("a\0cdef\n"sv, 4), (Lines{"a", "ef\n"}));
}

TEST(LineReader, EndsAtAControlZWhereThePlatformsTextsDo) {
    EXPECT_EQ(linesOf("a\x1A\nb\n", 9), onWindows ? Lines{"a"} : (Lines{"a\x1A\n", "b\n"}));
}

TEST(LineReader, KeepsAllOtherBytes) {
    EXPECT_EQ(linesOf("\xEF\xBB\xBF\xFF\xC0\x80\x01\n", 20), Lines{"\xEF\xBB\xBF\xFF\xC0\x80\x01\n"});
}

TEST(LineReader, HasNothingWithoutAFile) {
    const TemporaryFolder folder;
    for (const std::string& path : {folder.path("missing"), folder.path()}) {
        text::LineReader reader(files::openText(path.c_str()), 9);
        EXPECT_FALSE(reader.isOpen());
        EXPECT_EQ(reader.next(), std::nullopt);
    }
}
