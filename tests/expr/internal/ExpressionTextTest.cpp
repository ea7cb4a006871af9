#include <orbel/expr/ExpressionText.h>

#include <gtest/gtest.h>

#include <string>

namespace {

/// The pieces of a text with the numbers of their kinds: "0:literal 8:$(name)".
std::string piecesOf(std::string_view text) {
    std::string all;
    ExpressionText pieces(text);
    while (const auto piece = pieces.next()) {
        all += all.empty() ? "" : "|";
        all += std::to_string(static_cast<int>(piece->kind)) + ':' + std::string(piece->text);
    }
    return all;
}

std::string reference(std::string_view written) {
    const WrittenReference found = readReference(written);
    if (found.isIndex)
        return "index";
    return std::string(found.name) + ' ' + std::to_string(found.range.start) + ' ' + std::to_string(found.range.end);
}

} // namespace

TEST(ExpressionText, SplitsAtReferences) {
    EXPECT_EQ(piecesOf(""), "0:");
    EXPECT_EQ(piecesOf(" \t\n\r"), "0:");
    EXPECT_EQ(piecesOf("A$(x)B"), "0:A|8:$(x)|0:B");
    EXPECT_EQ(piecesOf("$(x)"), "8:$(x)");
    EXPECT_EQ(piecesOf("$(x) "), "8:$(x)|0: ");
    EXPECT_EQ(piecesOf("a$(b$(c)d"), "0:a|8:$(b$(c)|0:d");
    EXPECT_EQ(piecesOf("a$(b"), "0:a|0:$(b");
}

TEST(ExpressionText, KnowsTheMacros) {
    EXPECT_EQ(piecesOf("$(PARENT)$(PARENT_NAME)$(PARENT_FULL_NAME)$(FIELD_NAME)$(FIELD_FULL_NAME)$(FIELD_DATA)"),
              "2:$(PARENT)|3:$(PARENT_NAME)|4:$(PARENT_FULL_NAME)|5:$(FIELD_NAME)|6:$(FIELD_FULL_NAME)|"
              "7:$(FIELD_DATA)");
}

TEST(ExpressionText, RefreshComesWithTheWordBehindIt) {
    EXPECT_EQ(piecesOf("$(REFRESH) $(a)"), "1:$(a)|0: |8:$(a)");
    EXPECT_EQ(piecesOf("x $(REFRESH)y z"), "0:x |1:z|0:y z");
    EXPECT_EQ(piecesOf("$(REFRESH)"), "1:");
    EXPECT_EQ(piecesOf("$(REFRESH) "), "1:|0: ");
    EXPECT_EQ(piecesOf("$(REFRESH)$(REFRESH) a b $(REFRESH) c"), "1:a|1:a|0: a b |1:c|0: c");
}

TEST(ExpressionText, ReadsTheNameAndTheRangeOfAReference) {
    EXPECT_EQ(reference("$(name)"), "name -1 -1");
    EXPECT_EQ(reference("$( name more)"), "name -1 -1");
    EXPECT_EQ(reference("$(name[2])"), "name 2 -1");
    EXPECT_EQ(reference("$(name[2-7])"), "name 2 7");
    EXPECT_EQ(reference("$(name[2-7,9])"), "name 2 7");
    EXPECT_EQ(reference("$(name[-7])"), "name -1 7");
    EXPECT_EQ(reference("$(name[x-7])"), "name -1 7");
    EXPECT_EQ(reference("$(name[2"), "name 2 -1");
    EXPECT_EQ(reference("$([2])"), " 2 -1");
    EXPECT_EQ(reference("$()"), " -1 -1");
    EXPECT_EQ(reference("x"), " -1 -1");
    EXPECT_EQ(reference(""), " -1 -1");
    EXPECT_EQ(reference("$(INDEX)"), "index");
    EXPECT_EQ(reference("$(INDEX[1])"), "INDEX 1 -1");
}
