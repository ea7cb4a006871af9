#include <kor/CharacterGrid.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using Align = TextShape::Align;

/// Ten columns of ten pixels, four rows of twenty.
Frame frameWith(std::vector<Shape> shapes) {
    return {"Show", 100, 80, "#001122", std::move(shapes)};
}

std::vector<std::string> plain(std::vector<Shape> shapes) {
    return CharacterGrid(frameWith(std::move(shapes)), 10, 4).plainLines();
}

std::vector<std::string> coloured(std::vector<Shape> shapes, int columns, int rows) {
    return CharacterGrid(frameWith(std::move(shapes)), columns, rows).colouredLines();
}

TextShape text(double x, double top, const std::string& text, Align align = Align::Left) {
    return {x, top, 20, align, false, "#ffffff", text};
}

RectangleShape rectangle(const Box& box) {
    return {box, "#ff0000", 0, false};
}

RectangleShape bar(double x, double ground, double height) {
    return {{x, ground - height, 10, height}, "#ff8800", 0, true};
}

using Lines = std::vector<std::string>;

} // namespace

TEST(CharacterGrid, EmptyFrameIsBlank) {
    EXPECT_EQ(plain({}), (Lines{"", "", "", ""}));
}

TEST(CharacterGrid, RectanglesFillCharacters) {
    EXPECT_EQ(plain({rectangle({20, 20, 30, 40})}), (Lines{"", "  ███", "  ███", ""}));
    EXPECT_EQ(plain({rectangle({16, 29, 31, 41})}), (Lines{"", "  ███", "  ███", "  ███"}));
}

TEST(CharacterGrid, NarrowRectanglesAreOneColumnWide) {
    EXPECT_EQ(plain({rectangle({50, 0, 1, 20})}), (Lines{"     █", "", "", ""}));
}

TEST(CharacterGrid, ThinRectanglesAreLines) {
    EXPECT_EQ(plain({rectangle({0, 31, 100, 1})}), (Lines{"", "▁▁▁▁▁▁▁▁▁▁", "", ""}));
    EXPECT_EQ(plain({rectangle({0, 24, 100, 5})}), (Lines{"", "▂▂▂▂▂▂▂▂▂▂", "", ""}));
}

TEST(CharacterGrid, BarsAreAsHighAsEighths) {
    EXPECT_EQ(plain({bar(0, 80, 80), bar(10, 80, 70), bar(20, 80, 60), bar(30, 80, 45), bar(40, 80, 20),
                     bar(50, 80, 2.5), bar(60, 80, 0.1)}),
              (Lines{"█▄", "███▂", "████", "█████▁▁"}));
}

TEST(CharacterGrid, BarsStandOnRows) {
    EXPECT_EQ(plain({bar(0, 58, 30)}), (Lines{"", "▄", "█", ""}));
}

TEST(CharacterGrid, TextsAreWhereTheirMiddleIs) {
    EXPECT_EQ(plain({text(20, 0, "top"), text(0, 20, "next"), text(0, 49, "half")}),
              (Lines{"  top", "next", "half", ""}));
}

TEST(CharacterGrid, TextsAreAligned) {
    EXPECT_EQ(plain({text(50, 0, "left"), text(50, 20, "mid", Align::Middle), text(50, 40, "even", Align::Middle),
                     text(50, 60, "right", Align::Right)}),
              (Lines{"     left", "    mid", "   even", "right"}));
}

TEST(CharacterGrid, LettersOutsideAsciiAreOneColumnWide) {
    EXPECT_EQ(plain({text(100, 0, "Grüße", Align::Right), text(50, 20, "°C", Align::Middle)}),
              (Lines{"     Grüße", "    °C", "", ""}));
}

TEST(CharacterGrid, TextsAreCutAtTheEdges) {
    EXPECT_EQ(plain({text(70, 0, "beyond"), text(20, 20, "beyond", Align::Right), text(0, -20, "above"),
                     text(0, 80, "below"), text(1e300, 40, "far"), text(-1e300, 40, "far"), text(0, 1e300, "far")}),
              (Lines{"       bey", "nd", "", ""}));
}

TEST(CharacterGrid, RectanglesAreCutAtTheEdges) {
    EXPECT_EQ(plain({rectangle({-50, -50, 60, 70})}), (Lines{"█", "", "", ""}));
    EXPECT_EQ(plain({rectangle({90, 60, 1e300, 1e300})}), (Lines{"", "", "", "         █"}));
    EXPECT_EQ(
        plain({rectangle({-1e300, -1e300, 1, 1}), rectangle({1e300, 1e300, 1, 1}), bar(0, -20, 40), bar(0, 1e300, 10)}),
        (Lines{"", "", "", ""}));
    EXPECT_EQ(plain({bar(0, 120, 60)}), (Lines{"", "", "", "█"}));
}

TEST(CharacterGrid, PicturesAreTheirNames) {
    EXPECT_EQ(
        plain({PictureShape{{20, 0, 60, 60}, "sun.svg", "#ffffff"}, PictureShape{{0, 60, 40, 20}, "plain", "#ffffff"}}),
        (Lines{"", "    sun", "", "plai"}));
}

TEST(CharacterGrid, NamesOfSmallPicturesAreCut) {
    EXPECT_EQ(plain({PictureShape{{40, 0, 10, 20}, "drizzle.svg", "#ffffff"},
                     PictureShape{{0, 20, 20, 20}, "ä.b.svg", "#ffffff"}}),
              (Lines{"   dri", "ä.b", "", ""}));
}

TEST(CharacterGrid, GroundsAreLeftOutOfPlainText) {
    EXPECT_EQ(plain({rectangle({0, 0, 100, 80}), rectangle({10, 20, 80, 40}), text(20, 20, "card"),
                     rectangle({70, 40, 10, 20})}),
              (Lines{"", "  card", "       █", ""}));
}

TEST(CharacterGrid, BarsStayWhenSomethingLiesOnThem) {
    RectangleShape wide = bar(0, 80, 50);
    wide.box.width = 60;
    EXPECT_EQ(plain({wide, text(20, 60, "17")}), (Lines{"", "▄▄▄▄▄▄", "██████", "██17██"}));
}

TEST(CharacterGrid, ColouredLinesHaveAllColours) {
    const std::string ground = "\x1b[0;48;2;0;17;34m";
    EXPECT_EQ(coloured({}, 3, 1), (Lines{ground + "   \x1b[0m"}));
    EXPECT_EQ(coloured({rectangle({50, 0, 50, 40})}, 4, 2),
              (Lines{ground + "  \x1b[0;48;2;255;0;0m  \x1b[0m", ground + "    \x1b[0m"}));
}

TEST(CharacterGrid, ColouredBlocksShowWhatIsBehind) {
    EXPECT_EQ(coloured({RectangleShape{{0, 0, 100, 80}, "#0f0", 0, false},
                        RectangleShape{{0, 40, 50, 40}, "#ff8800", 0, true}},
                       2, 1),
              (Lines{"\x1b[0;48;2;0;255;0;38;2;255;136;0m▄\x1b[0;48;2;0;255;0m \x1b[0m"}));
}

TEST(CharacterGrid, ColouredTextsKeepTheGround) {
    TextShape bold = text(0, 30, "ab");
    bold.isBold = true;
    bold.colour = "#010203";
    EXPECT_EQ(coloured({rectangle({0, 0, 50, 80}), bold}, 2, 1),
              (Lines{"\x1b[0;48;2;255;0;0;38;2;1;2;3;1ma\x1b[0;48;2;0;17;34;38;2;1;2;3;1mb\x1b[0m"}));
}

TEST(CharacterGrid, UnknownColoursAreWhiteOnBlack) {
    for (const char* colour : {"red", "#12345g", "#12345", "1234567", "#", "", "#-12345", "rgb(1,2,3)"}) {
        TextShape shape = text(0, 30, "a");
        shape.colour = colour;
        Frame frame = frameWith({shape});
        frame.background = colour;
        EXPECT_EQ(CharacterGrid(frame, 1, 1).colouredLines(), (Lines{"\x1b[0;48;2;0;0;0;38;2;255;255;255ma\x1b[0m"}))
            << colour;
    }
}
