#include <orbel/foundation/text/Writer.h>

#include <gtest/gtest.h>

#include <iomanip>
#include <limits>
#include <sstream>
#include <string>

namespace {

std::string tabs(int count) {
    std::ostringstream os;
    text::writeTabs(os, count);
    return os.str();
}

std::string lineEnd(int count) {
    std::ostringstream os;
    text::writeLineEnd(os, count);
    return os.str();
}

std::string digits(int number) {
    std::string out = "=";
    text::appendNumber(out, number);
    return out;
}

} // namespace

TEST(Writer, PadsATextAsTheStreamWould) {
    std::ostringstream os;
    os << std::setw(6) << std::setfill('.') << std::left;
    text::write(os, "abc");
    text::write(os, "abc");
    EXPECT_EQ(os.str(), "abc...abc");
    EXPECT_EQ(os.width(), 0);
}

TEST(Writer, PadsAnEmptyTextToOneCharacterToo) {
    std::ostringstream os;
    os << std::setw(1) << std::setfill('.');
    text::write(os, "");
    text::write(os, "");
    EXPECT_EQ(os.str(), ".");
    EXPECT_EQ(os.width(), 0);
}

TEST(Writer, AppendsAnyNumber) {
    EXPECT_EQ(digits(0), "=0");
    EXPECT_EQ(digits(std::numeric_limits<int>::max()), "=2147483647");
    EXPECT_EQ(digits(std::numeric_limits<int>::min()), "=-2147483648");
}

TEST(Writer, WritesAnyNumberOfTabs) {
    for (const int count : {0, 1, 15, 16, 17, 32, 33, 100}) {
        EXPECT_EQ(tabs(count), std::string(static_cast<std::size_t>(count), '\t'));
        EXPECT_EQ(lineEnd(count), '\n' + std::string(static_cast<std::size_t>(count), '\t'));
    }
}

TEST(Writer, WritesNoTabsForANegativeCount) {
    EXPECT_EQ(tabs(-3), "");
    EXPECT_EQ(lineEnd(std::numeric_limits<int>::min()), "\n");
}

TEST(Writer, LeavesTheFillCharacterATabAndNoWidth) {
    for (const auto write : {text::writeTabs, text::writeLineEnd}) {
        std::ostringstream os;
        os << std::setw(9);
        write(os, -1);
        EXPECT_EQ(os.width(), 0);
        EXPECT_EQ(os.fill(), '\t');
    }
}
