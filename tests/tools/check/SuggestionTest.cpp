#include <tools/check/Suggestion.h>
#include <tools/check/Texts.h>

#include <gtest/gtest.h>

#include <string>

TEST(Suggestion, IsTheNameWithTheFewestLettersToChange) {
    EXPECT_EQ(closestName("Pont", {"string", "Point", "Paint"}), "Point");
    EXPECT_EQ(closestName("strng", {"string", "Point"}), "string");
    EXPECT_EQ(closestName("STRING", {"string", "Point"}), "string");
    EXPECT_EQ(suggestion("Pont", {"Point"}), "; did you mean \"Point\"?");
}

TEST(Suggestion, IsNothingWhenNoNameIsClose) {
    EXPECT_EQ(closestName("number", {"string", "Point"}), "");
    EXPECT_EQ(closestName("Point", {"Point"}), "");
    EXPECT_EQ(closestName("", {"a"}), "");
    EXPECT_EQ(closestName("x", {"y"}), "");
    EXPECT_EQ(closestName(std::string(101, 'x'), {"x"}), "");
    EXPECT_EQ(suggestion("number", {"string"}), "");
}

TEST(Texts, InQuotesShowControlCharacters) {
    EXPECT_EQ(inQuotes("a\tb\r\n\x01\x7F"), "\"a\\tb\\r\\n\\x01\\x7f\"");
}

TEST(Texts, InQuotesAreCutBetweenCharacters) {
    EXPECT_EQ(inQuotes(std::string(48, 'x')), '"' + std::string(48, 'x') + '"');
    EXPECT_EQ(inQuotes(std::string(47, 'x') + "\u00E4y"), '"' + std::string(47, 'x') + "...\"");
}

TEST(Texts, StrippedAreWithoutBlanksAndLineEnds) {
    EXPECT_EQ(stripped(" \t a b\r\n"), "a b");
    EXPECT_EQ(stripped(" \n"), "");
}
