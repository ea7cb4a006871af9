#include <tools/Nearest.h>

#include <gtest/gtest.h>

TEST(Nearest, KnowsSlipsOfTheHand) {
    const std::vector<std::string> names{"title", "text", "tile"};
    EXPECT_EQ(namesNear("titel", names), (std::vector<std::string>{"title", "tile"}));
    EXPECT_EQ(namesNear("Title", names), (std::vector<std::string>{"title", "tile"}));
    EXPECT_EQ(namesNear("tile", names), (std::vector<std::string>{"tile", "title"}));
    EXPECT_EQ(namesNear("colour", names), std::vector<std::string>{});
}

TEST(Nearest, LeavesShortNamesAlone) {
    EXPECT_EQ(suggestionFor("x", {"y"}), "");
    EXPECT_EQ(suggestionFor("X", {"x"}), "; did you mean x?");
    EXPECT_EQ(suggestionFor("ax", {"ay"}), "; did you mean ay?");
}

TEST(Nearest, StandsLongNames) {
    EXPECT_EQ(namesNear(std::string(100'000, 'x'), {std::string(100'000, 'x'), "x"}).size(), 1u);
}
