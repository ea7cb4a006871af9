#include <orbel/tree/FieldPath.h>

#include <gtest/gtest.h>

struct SegmentRow {
    std::string_view segment;
    std::optional<std::string_view> kind;
    std::string_view name;
    std::optional<std::string_view> indexText;

    friend void PrintTo(const SegmentRow& row, std::ostream* os) { *os << row.segment; }
};

class Segment : public testing::TestWithParam<SegmentRow> {};

TEST_P(Segment, IsTakenApart) {
    const SegmentRow& row = GetParam();
    const PathSegment segment = readSegment(row.segment);
    EXPECT_EQ(segment.kind, row.kind) << row.segment;
    EXPECT_EQ(segment.name, row.name) << row.segment;
    EXPECT_EQ(segment.indexText, row.indexText) << row.segment;
}

INSTANTIATE_TEST_SUITE_P(
    Rows, Segment,
    testing::Values(
        SegmentRow{"", std::nullopt, "", std::nullopt}, SegmentRow{"title", std::nullopt, "title", std::nullopt},
        SegmentRow{"points[3]", std::nullopt, "points", "3]"},
        SegmentRow{"points[2-5]", std::nullopt, "points", "2-5]"}, SegmentRow{"points[", std::nullopt, "points", ""},
        SegmentRow{"points]", std::nullopt, "points]", std::nullopt}, SegmentRow{"a[1][2]", std::nullopt, "a", "1][2]"},
        SegmentRow{"[1]", std::nullopt, "", "1]"}, SegmentRow{"string:title", "string", "title", std::nullopt},
        SegmentRow{"string:list[7]", "string", "list", "7]"}, SegmentRow{":", "", "", std::nullopt},
        SegmentRow{":name", "", "name", std::nullopt}, SegmentRow{"kind:", "kind", "", std::nullopt},
        SegmentRow{"Point[4]:points", "Point[4]", "points", std::nullopt},
        SegmentRow{"Point[4]:points[2]", "Point[4]", "points", "2]"},
        SegmentRow{"DataHashTable:cities:City", "DataHashTable", "cities:City", std::nullopt},
        // A ":" inside the brackets comes first all the same.
        SegmentRow{"cities[a:b]", "cities[a", "b]", std::nullopt}));

TEST(Segment, NamesThatBeginWithAStarAreWildcards) {
    EXPECT_TRUE(readSegment("*").isWildcard());
    EXPECT_TRUE(readSegment("*tail").isWildcard());
    EXPECT_TRUE(readSegment("string:*").isWildcard());
    EXPECT_TRUE(readSegment("*[2]").isWildcard());
    EXPECT_FALSE(readSegment("a*").isWildcard());
    EXPECT_FALSE(readSegment("").isWildcard());
    EXPECT_FALSE(readSegment("*:a").isWildcard());
}

TEST(Segment, NamesThatBeginWithTwoDotsAreTheParent) {
    EXPECT_TRUE(readSegment("..").isParent());
    EXPECT_TRUE(readSegment("...").isParent());
    EXPECT_TRUE(readSegment("..up").isParent());
    EXPECT_FALSE(readSegment(".").isParent());
    EXPECT_FALSE(readSegment("a..").isParent());
}

TEST(TableName, IsWhatPrecedesTheFirstColon) {
    const auto name = readTableName("cities:City");
    ASSERT_TRUE(name.has_value());
    EXPECT_EQ(name->table, "cities");
    EXPECT_EQ(name->entryType, "City");
    EXPECT_EQ(readTableName("a:b:c")->entryType, "b:c");
    EXPECT_EQ(readTableName(":City")->table, "");
    EXPECT_FALSE(readTableName("cities").has_value());
}
