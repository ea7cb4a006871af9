#include <orbel/tree/NameOrder.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>

TEST(NameOrder, CountsWhatTextsHaveInCommon) {
    EXPECT_EQ(nameorder::commonStart("field1", "field2", 6), 5u);
    EXPECT_EQ(nameorder::commonStart("field1", "field2", 3), 3u);
    EXPECT_EQ(nameorder::commonStart("field", "field2", 10), 5u);
    EXPECT_EQ(nameorder::commonStart("same", "same", 10), 4u);
    EXPECT_EQ(nameorder::commonStart("", "", 10), 0u);
}

TEST(NameOrder, NumbersAreOrderedAsTextsAre) {
    const std::string texts[] = {"",        "\x01",        "1",           "10",       "2",    "a",    "a!",      "aa",
                                 "1234567", "1234567\x7F", "1234567\x80", "12345678", "\x80", "\xFF", "\xFF\xFF"};
    for (const std::string& left : texts)
        for (const std::string& right : texts)
            EXPECT_EQ(nameorder::numberOf(left.c_str()) < nameorder::numberOf(right.c_str()),
                      std::strcmp(left.c_str(), right.c_str()) < 0)
                << left << ' ' << right;
}

TEST(NameOrder, NumbersAreOfEightCharacters) {
    EXPECT_EQ(nameorder::numberOf("abcdefgh"), 0x6162636465666768u);
    EXPECT_EQ(nameorder::numberOf("abcdefghi"), nameorder::numberOf("abcdefgh"));
    EXPECT_EQ(nameorder::numberOf("ab"), 0x6162000000000000u);
    EXPECT_EQ(nameorder::numberOf(""), 0u);
}
