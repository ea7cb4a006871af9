#include <tools/SourceText.h>

#include <gtest/gtest.h>

#include <string_view>

namespace {

TextPosition at(const SourceText& text, std::string_view word) {
    return text.positionOf(text.kept().substr(text.kept().find(word)));
}

} // namespace

TEST(SourceText, TellsWhereTheKeptTextStandsInTheFile) {
    const SourceText text("// one\nA = {string x; // two\n string y;};// three\nB = {};");
    EXPECT_EQ(text.kept(), "\nA = {string x; \n string y;};\nB = {};");
    EXPECT_EQ(at(text, "A ="), (TextPosition{2, 1}));
    EXPECT_EQ(at(text, "string x"), (TextPosition{2, 6}));
    EXPECT_EQ(at(text, "string y"), (TextPosition{3, 2}));
    EXPECT_EQ(at(text, "B ="), (TextPosition{4, 1}));
}

TEST(SourceText, CountsCharactersNotBytes) {
    const SourceText text("Gr\u00F6\u00DFe = {string x;};");
    EXPECT_EQ(at(text, "="), (TextPosition{1, 7}));
}

TEST(SourceText, TakesPlacesBehindTheTextForItsEnd) {
    const SourceText text("A");
    EXPECT_EQ(text.positionInFile(99), (TextPosition{1, 2}));
    EXPECT_EQ(SourceText("").positionInFile(0), (TextPosition{1, 1}));
}

TEST(SourceText, PutsWhatFollowsACommentBehindIt) {
    const SourceText text("a//b\nc");
    EXPECT_EQ(text.fileOffset(0), 0U);
    EXPECT_EQ(text.fileOffset(1), 4U);
    EXPECT_EQ(text.fileOffset(2), 5U);
    EXPECT_EQ(text.fileOffset(3), 6U);
}

TEST(SourceText, KnowsItsComments) {
    const SourceText text("a//b\nc // d\n");
    ASSERT_EQ(text.comments().size(), 2U);
    EXPECT_EQ(text.commentText(text.comments()[0]), "//b");
    EXPECT_EQ(text.commentText(text.comments()[1]), "// d");
    EXPECT_EQ(text.commentOffset(text.comments()[1]), 7U);
}
