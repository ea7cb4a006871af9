#include <orbel/foundation/text/Scanner.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

using Items = std::vector<std::string>;

Items itemsOf(std::string_view list, char separator = ';') {
    Items items;
    for (text::ListScanner scanner(list); !scanner.atEnd();)
        items.emplace_back(scanner.cut(separator));
    return items;
}

/// The same by the scanner that looks at every character.
Items cutOneByOne(std::string_view rest) {
    Items items;
    while (!rest.empty())
        items.emplace_back(text::cutListItem(rest, ';'));
    return items;
}

} // namespace

TEST(ListScanner, CutsAtTheSeparatorOutsideBracesAndDoubledQuotes) {
    EXPECT_EQ(itemsOf("a = 1;b = {c = 2;d = 3};e = \"\"x;y\"\";f"),
              (Items{"a = 1", "b = {c = 2;d = 3}", "e = \"\"x;y\"\"", "f"}));
}

TEST(ListScanner, KeepsWhatIsUnbalancedTogether) {
    EXPECT_EQ(itemsOf("a;b};c;d"), (Items{"a", "b};c;d"}));
    EXPECT_EQ(itemsOf("a;{b;c"), (Items{"a", "{b;c"}));
    EXPECT_EQ(itemsOf("a;\"\"b;c"), (Items{"a", "\"\"b;c"}));
}

TEST(ListScanner, HasNoItemBehindTheLastSeparator) {
    EXPECT_EQ(itemsOf("a;"), Items{"a"});
    EXPECT_EQ(itemsOf(";;"), (Items{"", ""}));
    EXPECT_EQ(itemsOf(""), Items{});
}

TEST(ListScanner, SkipsBlanksAndTellsTheRest) {
    text::ListScanner scanner(" \t\r\n a; b");
    scanner.skipBlanks();
    EXPECT_EQ(scanner.rest(), "a; b");
    EXPECT_EQ(scanner.cut(';'), "a");
    scanner.skipBlanks();
    EXPECT_EQ(scanner.rest(), "b");
    EXPECT_EQ(scanner.cut(';'), "b");
    EXPECT_TRUE(scanner.atEnd());
    EXPECT_EQ(scanner.rest(), "");
    EXPECT_EQ(scanner.cut(';'), "");
}

TEST(ListScanner, TakesAnotherSeparatorForEachItem) {
    text::ListScanner scanner("# a; {\nb};c\nd;e");
    EXPECT_EQ(scanner.cut('\n'), "# a; {\nb};c");
    EXPECT_EQ(scanner.cut(';'), "d");
    EXPECT_EQ(scanner.cut(';'), "e");
}

TEST(ListScanner, AgreesWithTheScannerOfSingleItemsOnEveryShortText) {
    constexpr std::string_view letters = "a;{}\"";
    constexpr int longest = 7;
    std::vector<std::string> texts{""};
    for (std::size_t at = 0; at < texts.size(); ++at) {
        const std::string text = texts[at];
        ASSERT_EQ(itemsOf(text), cutOneByOne(text)) << text;
        if (text.size() < longest)
            for (const char letter : letters)
                texts.push_back(text + letter);
    }
}
