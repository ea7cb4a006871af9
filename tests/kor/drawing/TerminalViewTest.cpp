#include <kor/CharacterGrid.h>
#include <kor/TerminalView.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <sstream>
#include <string>
#include <utility>

namespace {

const std::string begin = "\x1b[?25l\x1b[?7l";
const std::string end = "\x1b[0m\x1b[?7h\x1b[?25h";

Frame frameWith(const std::string& text) {
    return {"Show", 800, 480, "#000000", {TextShape{0, 0, 20, TextShape::Align::Left, false, "#ffffff", text}}};
}

/// All rows of a screen, each at its place.
std::string screen(const Frame& frame, int columns, int rows) {
    std::string bytes;
    const auto lines = CharacterGrid(frame, std::max(columns, 80), std::max(rows, 24)).colouredLines();
    for (int row = 0; row < rows; ++row)
        bytes += "\x1b[" + std::to_string(row + 1) + ";1H" + lines[static_cast<std::size_t>(row)];
    return bytes;
}

/// Takes what was written since the last time.
std::string taken(std::ostringstream& os) {
    std::string text = os.str();
    os.str("");
    return text;
}

} // namespace

TEST(TerminalView, HidesTheCursorAsLongAsItLives) {
    std::ostringstream os;
    {
        const TerminalView view(os);
        EXPECT_EQ(taken(os), begin);
    }
    EXPECT_EQ(os.str(), end);
}

TEST(TerminalView, ClearsTheScreenOnceAndDrawsInPlace) {
    std::ostringstream os;
    TerminalView view(os);
    taken(os);
    view.draw(frameWith("one"), TerminalSize{100, 30});
    EXPECT_EQ(taken(os), "\x1b[2J" + screen(frameWith("one"), 100, 30));
    view.draw(frameWith("two"), TerminalSize{100, 30});
    EXPECT_EQ(taken(os), screen(frameWith("two"), 100, 30));
}

TEST(TerminalView, WritesNothingForTheSameFrame) {
    std::ostringstream os;
    TerminalView view(os);
    view.draw(frameWith("one"), TerminalSize{100, 30});
    taken(os);
    view.draw(frameWith("one"), TerminalSize{100, 30});
    EXPECT_EQ(os.str(), "");
}

TEST(TerminalView, FollowsTheSizeOfTheTerminal) {
    std::ostringstream os;
    TerminalView view(os);
    view.draw(frameWith("one"), TerminalSize{100, 30});
    taken(os);
    view.draw(frameWith("one"), TerminalSize{120, 40});
    EXPECT_EQ(os.str(), "\x1b[2J" + screen(frameWith("one"), 120, 40));
}

TEST(TerminalView, SmallerTerminalsShowTheTop) {
    std::ostringstream os;
    TerminalView view(os);
    taken(os);
    view.draw(frameWith("one"), TerminalSize{40, 10});
    EXPECT_EQ(os.str(), "\x1b[2J" + screen(frameWith("one"), 40, 10));
}

TEST(TerminalView, UnknownSizeIsTheSmallest) {
    std::ostringstream os;
    TerminalView view(os);
    taken(os);
    view.draw(frameWith("one"), std::nullopt);
    EXPECT_EQ(os.str(), "\x1b[2J" + screen(frameWith("one"), 80, 24));
}

TEST(TerminalView, LeavesTheCursorBelowTheLastFrame) {
    std::ostringstream os;
    {
        TerminalView view(os);
        view.draw(frameWith("one"), TerminalSize{100, 30});
        taken(os);
    }
    EXPECT_EQ(os.str(), end + "\x1b[30;1H\n");
}

TEST(TerminalView, PlainFrameHasTwentyFourLines) {
    std::ostringstream os;
    printPlain(os, frameWith("one"));
    EXPECT_EQ(os.str(), "one" + std::string(24, '\n'));
}
