#include <orbel/handlers/RegisteredPath.h>

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <tuple>

namespace {

using Parts = std::tuple<std::string, int, int>;

Parts partsOf(const std::string& text) {
    const RegisteredPath path(text);
    return {path.path, path.offset, path.size};
}

TEST(RegisteredPath, WithoutARangeAsksForOneValue) {
    EXPECT_EQ(partsOf("scene/list"), Parts("scene/list", 0, 1));
    EXPECT_EQ(partsOf(""), Parts("", 0, 1));
}

TEST(RegisteredPath, LosesTheBlanksAroundIt) {
    EXPECT_EQ(partsOf(" \t\r\nlist \t"), Parts("list", 0, 1));
    EXPECT_EQ(partsOf(" list \t[4]"), Parts("list", 0, 4));
    EXPECT_EQ(partsOf("list\n[4]"), Parts("list\n", 0, 4));
}

TEST(RegisteredPath, TakesOneNumberForTheSize) {
    EXPECT_EQ(partsOf("list[4]"), Parts("list", 0, 4));
    EXPECT_EQ(partsOf("list[ 4th]"), Parts("list", 0, 4));
    EXPECT_EQ(partsOf("list[4-4]"), Parts("list", 0, 4));
    EXPECT_EQ(partsOf("list[4-]"), Parts("list", 0, 4));
    EXPECT_EQ(partsOf("list[0]"), Parts("list", 0, 0));
}

TEST(RegisteredPath, TakesTwoNumbersForTheOffsetAndTheSize) {
    EXPECT_EQ(partsOf("list[2-5]"), Parts("list", 2, 5));
    EXPECT_EQ(partsOf("list[2- 5]"), Parts("list", 2, 5));
    EXPECT_EQ(partsOf("list[5-2]"), Parts("list", 5, 2));
}

TEST(RegisteredPath, TakesTheFirstRangeOnly) {
    EXPECT_EQ(partsOf("list[2,7]"), Parts("list", 0, 2));
    EXPECT_EQ(partsOf("list[2-5,7-9]"), Parts("list", 2, 5));
    EXPECT_EQ(partsOf("list[3][4]"), Parts("list", 0, 3));
}

TEST(RegisteredPath, IgnoresRangesWithoutAFirstNumber) {
    for (const char* range : {"[]", "[", "[]4", "[x]", "[-5]", "[,4]"})
        EXPECT_EQ(partsOf(std::string("list") + range), Parts("list", 0, 1)) << range;
}

TEST(RegisteredPath, TakesTheRestForTheRangeWithoutItsEnd) {
    EXPECT_EQ(partsOf("list[2-5"), Parts("list", 2, 5));
}

TEST(RegisteredPath, FindsTheRangeBehindQuotes) {
    EXPECT_EQ(partsOf(R"(""a[1]b""[4])"), Parts(R"(""a[1]b"")", 0, 4));
    EXPECT_EQ(partsOf(R"(""a[1]"""b""[4])"), Parts(R"(""a[1]"""b"")", 0, 4));
}

TEST(RegisteredPath, IsCutToNinetyNineCharacters) {
    const std::string name(99, 'x');
    EXPECT_EQ(partsOf(name + "y"), Parts(name, 0, 1));
    EXPECT_EQ(partsOf(name.substr(1) + "[4]"), Parts(name.substr(1), 0, 1));
    EXPECT_EQ(partsOf(name.substr(3) + "[45]"), Parts(name.substr(3), 0, 45));
    EXPECT_EQ(partsOf(' ' + name), Parts(name.substr(1), 0, 1));
}

} // namespace
