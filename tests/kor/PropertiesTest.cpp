#include <kor/support/RunningScene.h>

#include <gtest/gtest.h>

#include <clocale>
#include <string>

namespace {

const char* const board =
    "[{'name': 'board', 'children': [{'name': 'title', 'position': [1.5, -2], 'geometry': {'type': 'TEXT', 'text': "
    "'News', 'picture': 'p.png', 'colour': '#010203', 'bold': true, 'width': 3, 'height': 4, 'size': 5}}]}]";

TEST(KorProperties, TellTheMachine) {
    RunningScene running(board);
    const std::string info = "Hostname: " + Host::machineName() + " IP address " + Host::machineAddress();
    EXPECT_EQ(running.ask("MAIN*ONAIR GET_INFO"), info);
    EXPECT_EQ(running.ask("0 MAIN*ONAIR GET_INFO"), info);
    EXPECT_EQ(running.ask("-1 MAIN*ONAIR GET_INFO"), info);
    EXPECT_EQ(running.ask("MAIN*ONAIR GET"), "");
}

TEST(KorProperties, AreReadByIdNameAndPath) {
    RunningScene running(board);
    EXPECT_EQ(running.ask("#3*NAME GET"), "title");
    EXPECT_EQ(running.ask("title*NAME GET"), "title");
    EXPECT_EQ(running.ask("board/title*NAME GET"), "title");
    EXPECT_EQ(running.ask("-1 board/title*NAME GET"), "title");
    for (const char* unknown : {"#4*NAME GET", "#*NAME GET", "#3x*NAME GET", "#99999999999999*NAME GET", "#-1*NAME GET",
                                "none*NAME GET", "*NAME GET", "", " ", "*", "#", "-1 ", "title", "title*NAME",
                                "title*NAME get", "title*name GET", "title* GET"})
        EXPECT_EQ(running.ask(unknown), "") << unknown;
}

TEST(KorProperties, AreAllReadable) {
    RunningScene running(board);
    const std::pair<const char*, const char*> all[] = {
        {"ACTIVE", "1"},
        {"NAME", "title"},
        {"TRANSFORMATION*POSITION*X", "1.5"},
        {"TRANSFORMATION*POSITION*Y", "-2"},
        {"TRANSFORMATION*SCALING*X", "1"},
        {"TRANSFORMATION*SCALING*Y", "1"},
        {"GEOM*TEXT", "News"},
        {"GEOM*IMAGE", "p.png"},
        {"GEOM*COLOUR", "#010203"},
        {"GEOM*WIDTH", "3"},
        {"GEOM*HEIGHT", "4"},
        {"GEOM*SIZE", "5"},
        {"GEOM*BOLD", "1"},
        {"GEOM*NONE", ""},
        {"NONE", ""},
    };
    for (const auto& [property, value] : all)
        EXPECT_EQ(running.ask(std::string("title*") + property + " GET"), value) << property;
    EXPECT_EQ(running.ask("board*GEOM*TEXT GET"), "");
}

TEST(KorProperties, AreAllWritable) {
    RunningScene running(board);
    const std::pair<const char*, const char*> all[] = {
        {"ACTIVE", "0"},
        {"TRANSFORMATION*POSITION*X", "123456789"},
        {"TRANSFORMATION*POSITION*Y", "0.1"},
        {"TRANSFORMATION*SCALING*X", "-2"},
        {"TRANSFORMATION*SCALING*Y", "0"},
        {"GEOM*TEXT", "two words * and #3 SET"},
        {"GEOM*IMAGE", ""},
        {"GEOM*COLOUR", "red"},
        {"GEOM*WIDTH", "3.25"},
        {"GEOM*HEIGHT", "40"},
        {"GEOM*SIZE", "12"},
        {"GEOM*BOLD", "0"},
    };
    for (const auto& [property, value] : all) {
        EXPECT_EQ(running.ask(std::string("-1 #3*") + property + " SET " + value), "") << property;
        EXPECT_EQ(running.ask(std::string("#3*") + property + " GET"), value) << property;
    }
    running.ask("#3*NAME SET head line");
    EXPECT_EQ(running.scene.find("head line"), 3);
    running.ask("#3*NONE SET 1");
    running.ask("board*GEOM*TEXT SET 1");
    EXPECT_EQ(running.errors.take(), "");
}

TEST(KorProperties, StayAsTheyAreWithoutANumber) {
    RunningScene running(board);
    for (const char* text : {"", "x", "nan", "inf", "1e999", "-"}) {
        running.ask(std::string("title*TRANSFORMATION*POSITION*X SET ") + text);
        EXPECT_EQ(running.ask("title*TRANSFORMATION*POSITION*X GET"), "1.5") << text;
    }
    running.ask("title*TRANSFORMATION*POSITION*X SET +7 px");
    EXPECT_EQ(running.ask("title*TRANSFORMATION*POSITION*X GET"), "7");
}

TEST(KorProperties, HideForWhatIsNoNumberButZero) {
    RunningScene running(board);
    for (const char* shown : {"1", "2", "-1", "0.5"}) {
        running.ask(std::string("title*ACTIVE SET ") + shown);
        EXPECT_TRUE(running.container("title").isVisible) << shown;
    }
    for (const char* hidden : {"0", "", "no", "0.0"}) {
        running.ask(std::string("title*ACTIVE SET ") + hidden);
        EXPECT_FALSE(running.container("title").isVisible) << hidden;
    }
}

TEST(KorProperties, AreTheSameInEveryLocale) {
    for (const char* locale : {"de_DE.UTF-8", "de_DE.utf8", "German_Germany.1252"})
        if (std::setlocale(LC_ALL, locale))
            break;
    RunningScene running(board);
    EXPECT_EQ(running.ask("title*TRANSFORMATION*POSITION*X GET"), "1.5");
    running.ask("title*TRANSFORMATION*POSITION*X SET 2.75");
    EXPECT_EQ(running.container("title").x, 2.75);
    std::setlocale(LC_ALL, "C");
}

TEST(KorProperties, AddAndDeletePlugIns) {
    RunningScene running(board);
    running.ask("title*FUNCTION*Trial ADD");
    const int added = running.scene.plugInOn(3, "Trial");
    EXPECT_NE(added, -1);
    running.ask("-1 title*FUNCTION*Trial DELETE");
    EXPECT_EQ(running.scene.plugInOn(3, "Trial"), -1);
    running.ask("title*FUNCTION*Trial DELETE");
    running.ask("title*FUNCTION*Trial NOTHING");
    running.ask("title*FUNCTION* ADD");
    running.ask("none*FUNCTION*Trial ADD");
    EXPECT_TRUE(running.container("title").plugins.empty());
}

TEST(KorProperties, HoldSettingsOfPlugIns) {
    RunningScene running("[{'name': 'a', 'plugins': [{'kind': 'Trial', 'FieldName': 'x'}]}]");
    EXPECT_EQ(running.ask("a*FUNCTION*Trial*FieldName GET"), "x");
    EXPECT_EQ(running.ask("a*FUNCTION*Trial*TypeStr GET"), "");
    EXPECT_EQ(running.ask("a*FUNCTION*Trial*TypeStr SET Day[7]"), "");
    EXPECT_EQ(running.ask("a*FUNCTION*Trial*TypeStr GET"), "Day[7]");
    EXPECT_EQ(running.ask("a*FUNCTION*Second*FieldName GET"), "");
    EXPECT_EQ(running.ask("a*FUNCTION*Second*FieldName SET x"), "");
    EXPECT_EQ(running.scene.plugInOn(running.scene.find("a"), "Second"), -1);
}

TEST(KorProperties, OfPlugInsTakeEffectInTheNextFrame) {
    RunningScene running("[{'name': 'a', 'plugins': [{'kind': 'Trial'}]}]");
    running.ask("a*FUNCTION*Trial*TypeStr SET 1");
    running.ask("a*FUNCTION*Trial*FieldName SET x");
    running.console.takeOutput();
    running.host.callFrame();
    const std::string calls = running.console.takeOutput();
    EXPECT_EQ(calls.find("Trial made"), calls.rfind("Trial made"));
    running.host.callFrame();
    EXPECT_EQ(running.console.takeOutput(), "Trial perFrame in a\n");
}

} // namespace
