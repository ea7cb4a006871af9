#include <orbel/foundation/text/FixedText.h>
#include <orbel/foundation/text/Scanner.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace std::string_view_literals;

std::string_view withoutBlanks(std::string_view rest) {
    text::skipBlanks(rest);
    return rest;
}

std::vector<std::string_view> tokensOf(std::string_view rest, std::string_view separators) {
    std::vector<std::string_view> tokens;
    while (const auto token = text::cutToken(rest, separators))
        tokens.push_back(*token);
    EXPECT_EQ(rest, "");
    return tokens;
}

std::vector<std::string> listItems(std::string_view rest) {
    std::vector<std::string> items;
    while (!rest.empty())
        items.emplace_back(text::cutListItem(rest, ';'));
    return items;
}

std::vector<std::string> valueTokens(std::string_view rest) {
    std::vector<std::string> tokens;
    while (const auto token = text::readValueToken(rest))
        tokens.emplace_back(*token);
    return tokens;
}

using Texts = std::vector<std::string>;

TEST(ScannerTest, SkipBlanksStopsAtTheFirstOtherCharacter) {
    EXPECT_EQ(withoutBlanks(" \t\n\r x y "), "x y ");
    EXPECT_EQ(withoutBlanks("x"), "x");
    EXPECT_EQ(withoutBlanks(" \r\n"), "");
    EXPECT_EQ(withoutBlanks(""), "");
}

TEST(ScannerTest, SkipBlanksKeepsOtherWhiteSpace) {
    EXPECT_EQ(withoutBlanks("\v x"), "\v x");
    EXPECT_EQ(withoutBlanks("\f x"), "\f x");
}

TEST(ScannerTest, TrimDropsLeadingBlanksAndTrailingSpacesAndTabs) {
    EXPECT_EQ(text::trim(" \t\n\r a b \t"), "a b");
    EXPECT_EQ(text::trim("a"), "a");
    EXPECT_EQ(text::trim(""), "");
    EXPECT_EQ(text::trim(" \t \n "), "");
}

TEST(ScannerTest, TrimKeepsTrailingLineEnds) {
    EXPECT_EQ(text::trim("a \n"), "a \n");
    EXPECT_EQ(text::trim("a\r\n \t"), "a\r\n");
}

TEST(ScannerTest, CutAtSplitsAtTheFirstOccurrence) {
    std::string_view rest = "a=b=c";
    EXPECT_EQ(text::cutAt(rest, '='), "a");
    EXPECT_EQ(rest, "b=c");
}

TEST(ScannerTest, CutAtTakesEverythingWhenTheCharacterIsAbsent) {
    std::string_view rest = "abc";
    EXPECT_EQ(text::cutAt(rest, '='), "abc");
    EXPECT_EQ(rest, "");
    EXPECT_EQ(text::cutAt(rest, '='), "");
    rest = "=";
    EXPECT_EQ(text::cutAt(rest, '='), "");
    EXPECT_EQ(rest, "");
}

TEST(ScannerTest, HexadecimalNumbersTakeLettersOfBothCases) {
    EXPECT_EQ(text::readHexadecimal("0041"), 0x41U);
    EXPECT_EQ(text::readHexadecimal("00e0"), 0xE0U);
    EXPECT_EQ(text::readHexadecimal("FFfF"), 0xFFFFU);
    EXPECT_EQ(text::readHexadecimal("0000000000041"), 0x41U);
}

TEST(ScannerTest, HexadecimalNumbersFollowBlanksAndEndAtOtherCharacters) {
    EXPECT_EQ(text::readHexadecimal(" \t41g"), 0x41U);
    EXPECT_EQ(text::readHexadecimal("41 42"), 0x41U);
    EXPECT_EQ(text::readHexadecimal("0x41"), 0U);
    EXPECT_EQ(text::readHexadecimal("-41"), 0U);
    EXPECT_EQ(text::readHexadecimal("+41"), 0U);
}

TEST(ScannerTest, HexadecimalNumbersOutOfRangeAreZero) {
    EXPECT_EQ(text::readHexadecimal("10000"), 0U);
    EXPECT_EQ(text::readHexadecimal("100000041"), 0U);
    EXPECT_EQ(text::readHexadecimal("FFFFFFFFFFFFFFFFFFFF"), 0U);
    EXPECT_EQ(text::readHexadecimal(""), 0U);
    EXPECT_EQ(text::readHexadecimal(" "), 0U);
    EXPECT_EQ(text::readHexadecimal("xyz"), 0U);
}

TEST(ScannerTest, NumbersAreDecimalDigitsAfterBlanks) {
    EXPECT_EQ(text::readNumber("0"), 0);
    EXPECT_EQ(text::readNumber(" \t\r\n42]"), 42);
    EXPECT_EQ(text::readNumber("007x"), 7);
    EXPECT_EQ(text::readNumber("4th"), 4);
    EXPECT_EQ(text::readNumber("1 2"), 1);
}

TEST(ScannerTest, ANumberThatDoesNotStartWithADigitIsMinusOne) {
    for (const std::string_view notANumber : {""sv, "  "sv, "x"sv, "-1"sv, "+1"sv, "]"sv, ".5"sv, "\xB2"sv})
        EXPECT_EQ(text::readNumber(notANumber), -1) << notANumber;
}

TEST(ScannerTest, HugeNumbersStayAtTheLargest) {
    constexpr int largest = std::numeric_limits<int>::max();
    EXPECT_EQ(text::readNumber("2147483646"), largest - 1);
    EXPECT_EQ(text::readNumber("2147483647"), largest);
    EXPECT_EQ(text::readNumber("2147483648"), largest);
    EXPECT_EQ(text::readNumber("4294967296"), largest);
    EXPECT_EQ(text::readNumber(std::string(100'000, '9')), largest);
}

TEST(ScannerTest, SignedNumbersFollowWhiteSpaceAndASign) {
    EXPECT_EQ(text::readSignedNumber("42]"), 42);
    EXPECT_EQ(text::readSignedNumber(" \t\n\v\f\r-42x"), -42);
    EXPECT_EQ(text::readSignedNumber("+007"), 7);
    EXPECT_EQ(text::readSignedNumber("1 2"), 1);
}

TEST(ScannerTest, ASignedNumberWithoutDigitsIsZero) {
    for (const std::string_view notANumber : {""sv, "  "sv, "x"sv, "-"sv, "- 1"sv, "+-1"sv, "--1"sv, "]"sv, "\xB2"sv})
        EXPECT_EQ(text::readSignedNumber(notANumber), 0) << notANumber;
}

TEST(ScannerTest, HugeSignedNumbersStayAtTheEnds) {
    constexpr int largest = std::numeric_limits<int>::max();
    constexpr int least = std::numeric_limits<int>::min();
    EXPECT_EQ(text::readSignedNumber("2147483647"), largest);
    EXPECT_EQ(text::readSignedNumber("2147483648"), largest);
    EXPECT_EQ(text::readSignedNumber("-2147483647"), least + 1);
    EXPECT_EQ(text::readSignedNumber("-2147483648"), least);
    EXPECT_EQ(text::readSignedNumber("-2147483649"), least);
    EXPECT_EQ(text::readSignedNumber(std::string(100'000, '9')), largest);
    EXPECT_EQ(text::readSignedNumber('-' + std::string(100'000, '9')), least);
}

TEST(ScannerTest, IndexRangesAreOneNumberOrTwo) {
    const auto expectRange = [](std::string_view rest, int start, int end) {
        const text::IndexRange range = text::readIndexRange(rest);
        EXPECT_EQ(range.start, start);
        EXPECT_EQ(range.end, end);
    };
    expectRange("3]", 3, -1);
    expectRange("2-5]", 2, 5);
    expectRange("x]", -1, -1);
    expectRange("", -1, -1);
    expectRange(" 7 - 9 ", 7, 9);
    expectRange("5-2", 5, 2);
    expectRange("-3", -1, 3);
    expectRange("3-", 3, -1);
    expectRange("3-x", 3, -1);
    expectRange("0-99999999999", 0, std::numeric_limits<int>::max());
}

TEST(ScannerTest, IndexRangesAreSeparatedByCommas) {
    std::string_view rest = "1-2,7,,9]";
    EXPECT_EQ(text::readIndexRange(rest).end, 2);
    EXPECT_EQ(rest, "7,,9]");
    EXPECT_EQ(text::readIndexRange(rest).start, 7);
    EXPECT_EQ(text::readIndexRange(rest).start, -1);
    EXPECT_EQ(text::readIndexRange(rest).start, 9);
    EXPECT_EQ(rest, "");
}

TEST(ScannerTest, ListsSplitAtTheSeparator) {
    EXPECT_EQ(listItems("a=1;b=2; c=3"), (Texts{"a=1", "b=2", " c=3"}));
    EXPECT_EQ(listItems("a;"), (Texts{"a"}));
    EXPECT_EQ(listItems(";;a"), (Texts{"", "", "a"}));
    EXPECT_EQ(listItems(""), Texts{});
}

TEST(ScannerTest, ListsDoNotSplitInsideBraces) {
    EXPECT_EQ(listItems("s={a=1;t={b=2;};};c=3"), (Texts{"s={a=1;t={b=2;};}", "c=3"}));
}

TEST(ScannerTest, ListsDoNotSplitInsideDoubledQuotes) {
    EXPECT_EQ(listItems("a=\"\"x;y\"\";b"), (Texts{"a=\"\"x;y\"\"", "b"}));
    EXPECT_EQ(listItems("a=\"\"{\"\";b=\"\"}\"\";c"), (Texts{"a=\"\"{\"\"", "b=\"\"}\"\"", "c"}));
    EXPECT_EQ(listItems("a=\"\"x;y"), (Texts{"a=\"\"x;y"}));
}

TEST(ScannerTest, ASingleQuoteProtectsNothing) {
    EXPECT_EQ(listItems("a=\"x;y\";b"), (Texts{"a=\"x", "y\"", "b"}));
}

TEST(ScannerTest, UnbalancedBracesKeepTheRestTogether) {
    EXPECT_EQ(listItems("a={1;b=2;c=3"), (Texts{"a={1;b=2;c=3"}));
    EXPECT_EQ(listItems("a;b};c;d"), (Texts{"a", "b};c;d"}));
}

TEST(ScannerTest, BraceGroupIsWhatTheFirstBracesEnclose) {
    EXPECT_EQ(text::braceGroup("x = { a=1; b={c;}; } tail {z}"), " a=1; b={c;}; ");
    EXPECT_EQ(text::braceGroup("{}"), "");
    EXPECT_EQ(text::braceGroup("{a=\"\"}\"\";}"), "a=\"\"}\"\";");
}

TEST(ScannerTest, AnOpenBraceGroupRunsToTheEnd) {
    EXPECT_EQ(text::braceGroup("{a=1;{b"), "a=1;{b");
    EXPECT_EQ(text::braceGroup("{"), "");
}

TEST(ScannerTest, WithoutABraceThereIsNoGroup) {
    EXPECT_EQ(text::braceGroup("a=1"), std::nullopt);
    EXPECT_EQ(text::braceGroup(""), std::nullopt);
}

TEST(ScannerTest, ValueTokensAreSeparatedByCommas) {
    EXPECT_EQ(valueTokens("1,2 3,x"), (Texts{"1", "2 3", "x"}));
    EXPECT_EQ(valueTokens("one"), (Texts{"one"}));
}

TEST(ScannerTest, ValueTokensLoseLeadingBlanksOnly) {
    EXPECT_EQ(valueTokens(" \t\r\na ,\n b\t"), (Texts{"a ", "b\t"}));
}

TEST(ScannerTest, ValueTokensMayBeEmpty) {
    EXPECT_EQ(valueTokens("a,,b"), (Texts{"a", "", "b"}));
    EXPECT_EQ(valueTokens(",a"), (Texts{"", "a"}));
    EXPECT_EQ(valueTokens("\"\"\"\",a"), (Texts{"", "a"}));
}

TEST(ScannerTest, ATrailingCommaEndsTheValueTokens) {
    EXPECT_EQ(valueTokens("a,"), (Texts{"a"}));
    EXPECT_EQ(valueTokens("a, \n"), (Texts{"a"}));
    EXPECT_EQ(valueTokens("\"\"a\"\","), (Texts{"a"}));
    EXPECT_EQ(valueTokens(" "), Texts{});
}

TEST(ScannerTest, ValueTokensInDoubledQuotesMayHoldCommas) {
    EXPECT_EQ(valueTokens("\"\"a,b\"\",c"), (Texts{"a,b", "c"}));
    EXPECT_EQ(valueTokens(" \"\" a \"\" ignored , c"), (Texts{" a ", "c"}));
}

TEST(ScannerTest, ADoubledQuoteFollowedByAThirdDoesNotClose) {
    EXPECT_EQ(valueTokens("\"\"say \"hi\"\"\",c"), (Texts{"say \"hi\"", "c"}));
    EXPECT_EQ(valueTokens("\"\"a\"\"\"\",c"), (Texts{"a\"\"", "c"}));
}

TEST(ScannerTest, AnOpenDoubledQuoteRunsToTheEnd) {
    EXPECT_EQ(valueTokens("\"\"a,b"), (Texts{"a,b"}));
    EXPECT_EQ(valueTokens("\"\""), (Texts{""}));
}

TEST(ScannerTest, SingleQuotesBelongToTheValueToken) {
    EXPECT_EQ(valueTokens("\"a,b\",c"), (Texts{"\"a", "b\"", "c"}));
    EXPECT_EQ(valueTokens("a\"\"b,c\"\",d"), (Texts{"a\"\"b", "c\"\"", "d"}));
}

TEST(ScannerTest, ComparesAsciiLettersWithoutCase) {
    EXPECT_TRUE(text::equalsIgnoringCase("Orbel", "oRBEL"));
    EXPECT_TRUE(text::equalsIgnoringCase("", ""));
    EXPECT_FALSE(text::equalsIgnoringCase("Orbel", "Orbe"));
    EXPECT_FALSE(text::equalsIgnoringCase("a[", "a{"));
    EXPECT_FALSE(text::equalsIgnoringCase("\xC4", "\xE4"));
}

TEST(FixedTextTest, NullIsTheEmptyText) {
    EXPECT_EQ(text::viewOf(nullptr), "");
    EXPECT_EQ(text::viewOf("a b"), "a b");
}

TEST(FixedTextTest, KeepsWhatFitsBeforeTheTerminator) {
    char buffer[4] = {'#', '#', '#', '#'};
    text::copyCut(buffer, "abc");
    EXPECT_STREQ(buffer, "abc");
    text::copyCut(buffer, "wxyz");
    EXPECT_STREQ(buffer, "wxy");
    text::copyCut(buffer, buffer + 1);
    EXPECT_STREQ(buffer, "xy");
    text::copyCut(buffer, nullptr);
    EXPECT_STREQ(buffer, "");
}

} // namespace

TEST(ScannerTest, FoldersOfAListLoseTheWhiteSpaceAroundThem) {
    std::string_view list = " \f\n\r\t\vc:\\a b \f\n\r\t\v; \f\n\r\t\v;;d";
    EXPECT_EQ(text::cutFolder(list), "c:\\a b");
    EXPECT_EQ(text::cutFolder(list), "");
    EXPECT_EQ(text::cutFolder(list), "");
    EXPECT_EQ(text::cutFolder(list), "d");
    EXPECT_EQ(text::cutFolder(list), "");
}

TEST(ScannerTest, TokensHaveAnyNumberOfSeparatorsBetweenThem) {
    EXPECT_EQ(tokensOf(",;a;,b c,,", ",;"), (std::vector<std::string_view>{"a", "b c"}));
    EXPECT_EQ(tokensOf("a,\n", ","), (std::vector<std::string_view>{"a", "\n"}));
    EXPECT_EQ(tokensOf(",,", ","), std::vector<std::string_view>{});
    EXPECT_EQ(tokensOf("", ","), std::vector<std::string_view>{});
}
