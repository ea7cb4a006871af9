#include <kor/Picture.h>

#include <gtest/gtest.h>

TEST(Picture, NamesAreThoseOfIdentifiers) {
    EXPECT_TRUE(isPictureName("sun.svg"));
    EXPECT_TRUE(isPictureName("Sun_2-b.svg"));
    EXPECT_FALSE(isPictureName(""));
    EXPECT_FALSE(isPictureName(" "));
    EXPECT_FALSE(isPictureName("../sun.svg"));
    EXPECT_FALSE(isPictureName("a\\b"));
}

TEST(Picture, IsWhatStandsBetweenTheTags) {
    const auto picture = parsePicture("<?xml version=\"1.0\"?>\n<svg width=\"9\" viewBox=\"0 0 64 32\"><g/></svg>\n");
    EXPECT_EQ(picture, (Picture{"0 0 64 32", "<g/>"}));
}

TEST(Picture, NeedsAnElementWithAViewBox) {
    EXPECT_FALSE(parsePicture(""));
    EXPECT_FALSE(parsePicture("PNG"));
    EXPECT_FALSE(parsePicture("<svg><g/></svg>"));
    EXPECT_FALSE(parsePicture("<svg viewBox=\"0 0 1 1\">"));
    EXPECT_FALSE(parsePicture("<svg viewBox=\"0 0 1 1></svg>"));
}
