#include <orbel/foundation/text/CharacterSet.h>

#include <gtest/gtest.h>

namespace {

constexpr text::CharacterSet vowels("aeiou");

} // namespace

TEST(CharacterSet, HoldsItsCharactersOnly) {
    EXPECT_TRUE(vowels.contains('u'));
    EXPECT_FALSE(vowels.contains('A'));
    EXPECT_FALSE(vowels.contains('\0'));
    EXPECT_TRUE(text::CharacterSet("\xE4").contains('\xE4'));
}

TEST(CharacterSet, FindsWhatIsInItAndWhatIsNot) {
    EXPECT_EQ(vowels.findIn("crowd"), 2U);
    EXPECT_EQ(vowels.findIn("oak tree", 2), 6U);
    EXPECT_EQ(vowels.findOutside("audio tape"), 2U);
    EXPECT_EQ(vowels.findOutside("audio", 3), 5U);
}

TEST(CharacterSet, FindsTheEndWhenThereIsNothing) {
    EXPECT_EQ(vowels.findIn("rhythm"), 6U);
    EXPECT_EQ(vowels.findOutside("aeiou"), 5U);
    EXPECT_EQ(vowels.findIn(""), 0U);
    EXPECT_EQ(text::CharacterSet("").findIn("abc"), 3U);
}

TEST(CharacterSet, DropsItsCharactersAtTheBeginningOrTheEnd) {
    EXPECT_EQ(vowels.skip("eerie"), "rie");
    EXPECT_EQ(vowels.dropEnd("eerie"), "eer");
    EXPECT_EQ(vowels.skip("aei"), "");
    EXPECT_EQ(vowels.dropEnd("aei"), "");
}

TEST(CharacterSet, OfOneCharacterFindsIt) {
    constexpr text::CharacterSet comma(",");
    EXPECT_EQ(comma.findIn("key,value,"), 3u);
    EXPECT_EQ(comma.findIn("key,value,", 4), 9u);
    EXPECT_EQ(comma.findIn("key"), 3u);
    EXPECT_EQ(comma.findIn("key", 3), 3u);
    EXPECT_EQ(comma.findIn(""), 0u);
    EXPECT_EQ(comma.findOutside(",,a"), 2u);
}
