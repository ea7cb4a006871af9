#include <orbel/tables/TableText.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

using Fields = std::vector<std::string_view>;

} // namespace

TEST(TableText, KeysLoseTheBlanksAroundThem) {
    EXPECT_EQ(tables::normalizeKey(" \ta b \t\r\n"), "a b");
    EXPECT_EQ(tables::normalizeKey("\n\ra\n"), "\n\ra");
    EXPECT_EQ(tables::normalizeKey("\v\fa\v\f"), "\v\fa\v\f");
    EXPECT_EQ(tables::normalizeKey("  \t\n"), "");
    EXPECT_EQ(tables::normalizeKey(""), "");
}

TEST(TableText, ValuesLoseTheirLineEnds) {
    EXPECT_EQ(tables::normalizeValue(" a \t\r\n\n\r"), " a \t");
    EXPECT_EQ(tables::normalizeValue("\na"), "\na");
    EXPECT_EQ(tables::normalizeValue("\r\n"), "");
    EXPECT_EQ(tables::normalizeValue(""), "");
}

TEST(TableText, FieldsMayBeEmpty) {
    EXPECT_EQ(tables::splitFields("a,,b,", ','), (Fields{"a", "", "b", ""}));
    EXPECT_EQ(tables::splitFields(",\n", ','), (Fields{"", "\n"}));
    EXPECT_EQ(tables::splitFields("", ','), Fields{""});
}

TEST(TableText, FieldsPastTheSixtyFourthAreDropped) {
    EXPECT_EQ(tables::splitFields(std::string(62, ','), ',').size(), 63U);
    EXPECT_EQ(tables::splitFields(std::string(63, ','), ',').size(), 64U);
    EXPECT_EQ(tables::splitFields(std::string(64, ','), ',').size(), 64U);
    EXPECT_EQ(tables::splitFields(std::string(63, ',') + "a,b", ',').back(), "a");
}
