#include <orbel/foundation/text/LentText.h>

#include <support/AllocationCount.h>

#include <gtest/gtest.h>

#include <string>

namespace {

const std::string longText(200, 't');

} // namespace

TEST(LentText, BeginsEmptyOrAsACopy) {
    text::TextShelf shelf;
    { text::LentText first(shelf, "left over"); }
    EXPECT_EQ(text::LentText(shelf).view(), "");
    EXPECT_EQ(text::LentText(shelf, "scene/title").view(), "scene/title");
}

TEST(LentText, IsNotTouchedByThoseLentInsideIt) {
    text::TextShelf shelf;
    const text::LentText outer(shelf, longText);
    const char* const place = outer.view().data();
    for (int round = 0; round < 3; ++round) {
        const text::LentText inner(shelf, "inner");
        const text::LentText innermost(shelf, longText);
        EXPECT_EQ(inner.view(), "inner");
    }
    EXPECT_EQ(outer.view(), longText);
    EXPECT_EQ(outer.view().data(), place);
}

TEST(LentText, AllocatesNothingOnceEachLevelHasItsRoom) {
    text::TextShelf shelf;
    const auto nest = [&] {
        const text::LentText outer(shelf, longText);
        const text::LentText inner(shelf, longText);
    };
    nest();
    EXPECT_EQ(allocationsOf(nest), 0);
}

TEST(LentText, GivesUpTheRoomOfATextOutOfTheOrdinary) {
    text::TextShelf shelf;
    const std::string huge(1'000'000, 'h');
    { const text::LentText text(shelf, huge); }
    text::LentText next(shelf);
    EXPECT_LT(next.get().capacity(), 1'000U);
}

TEST(LentText, CutsItsPartsInPlace) {
    text::TextShelf shelf;
    text::LentText text(shelf, "a=1;b=2");
    EXPECT_STREQ(text.cut(text.view().substr(0, 3)), "a=1");
    EXPECT_STREQ(text.cut(text.view().substr(4)), "b=2");
    EXPECT_STREQ(text.cut(text.view().substr(4, 0)), "");
}
