#include <kor/support/RunningScene.h>
#include <support/WorkingFolder.h>

#include <gtest/gtest.h>

#include <clocale>
#include <string>

namespace {

/// A scene of one container "a" with a geometry and one plug-in on the field "x".
std::string leaf(const std::string& kind, const std::string& settings = "") {
    return "[{'name': 'a', 'geometry': {'type': 'TEXT', 'text': 'before'}, 'plugins': [{'kind': '" + kind +
           "', 'FieldName': 'x'" + (settings.empty() ? "" : ", ") + settings + "}]}]";
}

/// Values of "x" are shown on the container "a" by one plug-in.
class ShownValue : public RunningScene {
public:
    explicit ShownValue(const std::string& kind, const std::string& settings = "")
        : RunningScene(leaf(kind, settings), KOR_PLUGINS) {}
    ~ShownValue() { EXPECT_EQ(errors.take(), ""); }

    std::string text(const std::string& value) {
        set("x", value);
        return geometry("a").text;
    }
    double height(const std::string& value) {
        set("x", value);
        return geometry("a").height;
    }
    std::string position(const std::string& value) {
        set("x", value);
        return ask("a*TRANSFORMATION*POSITION*X GET") + ' ' + ask("a*TRANSFORMATION*POSITION*Y GET");
    }
    bool isVisible(const std::string& value) {
        set("x", value);
        return container("a").isVisible;
    }
};

/// A working folder with tables, presets, types and letters, which have been read.
class Tables {
public:
    Tables() {
        m_folder.write("QX_ConvTables.csv", "__TABLE__,Sky\n0,clear\n1,cloudy\n");
        m_folder.write("QX_PreSets.csv", "__PLUGIN__,DataText\nName,COLOUR,SIZE,Other\nAlarm,#ff0000,40,x\n");
        m_folder.write("types.qx", "Day = {string high;};\nTown = {string name;};\n");
        std::string letters;
        for (char letter = 'A'; letter <= 'Z'; ++letter)
            letters += "00" + hexadecimal(letter) + ";00" + hexadecimal(letter - 'A' + 'a') + ";\n";
        m_folder.write("CapitalUnicodeData.txt", letters);
        clearTypeVariables();
        const Console console;
        IDataHandlerImpl::init();
    }

private:
    static std::string hexadecimal(int number) {
        constexpr const char* digits = "0123456789ABCDEF";
        return {digits[number / 16], digits[number % 16]};
    }

    WorkingFolder m_folder;
};

TEST(KorDataText, ShowsItsValue) {
    ShownValue shown("DataText");
    EXPECT_EQ(shown.geometry("a").text, "before");
    EXPECT_EQ(shown.text("News"), "News");
    EXPECT_EQ(shown.text("a * b SET #1; c"), "a * b SET #1; c");
    EXPECT_EQ(shown.text(""), "");
}

TEST(KorDataText, ShowsAValueThatWasThereBefore) {
    ShownValue shown("DataImage");
    shown.set("x", "5");
    shown.ask("a*FUNCTION*DataText ADD");
    shown.ask("a*FUNCTION*DataText*FieldName SET x");
    shown.host.callFrame();
    EXPECT_EQ(shown.geometry("a").text, "5");
}

TEST(KorDataText, ShowsAnExpression) {
    ShownValue shown("DataText", "'Text': '<$(VALUE)|$(CONTNAME)|$(unit)>'");
    shown.tree().getField(Text("string:unit"), 0, 1);
    shown.set("unit", "km");
    EXPECT_EQ(shown.text("5"), "<5|a|km>");
    EXPECT_EQ(shown.text("6"), "<6|a|km>");
}

TEST(KorDataText, ShowsCapitals) {
    const Tables tables;
    ShownValue shown("DataText", "'UpperCase': true");
    EXPECT_EQ(shown.text("News 1"), "NEWS 1");
}

TEST(KorDataText, ShowsCapitalsOfAnExpression) {
    const Tables tables;
    ShownValue shown("DataText", "'UpperCase': 1, 'Text': 'no $(VALUE)'");
    EXPECT_EQ(shown.text("News"), "NO NEWS");
}

TEST(KorDataText, ConvertsByATable) {
    const Tables tables;
    ShownValue shown("DataText", "'ConversionTable': 'Sky', 'Text': 'sky: $(VALUE)'");
    EXPECT_EQ(shown.text("1"), "sky: cloudy");
    EXPECT_EQ(shown.text("0"), "sky: clear");
}

TEST(KorDataText, UsesAPreset) {
    const Tables tables;
    ShownValue shown("DataText", "'Preset': 'Alarm'");
    EXPECT_EQ(shown.geometry("a").colour, "#ff0000");
    EXPECT_EQ(shown.geometry("a").fontSize, 40);
    EXPECT_FALSE(shown.geometry("a").isBold);
}

TEST(KorDataText, LeavesUnknownPresetsOut) {
    const Tables tables;
    ShownValue shown("DataText", "'Preset': 'None'");
    EXPECT_EQ(shown.geometry("a").colour, "#ffffff");
}

TEST(KorDataImage, ShowsThePictureOfItsValue) {
    const Tables tables;
    ShownValue shown("DataImage", "'ConversionTable': 'Sky'");
    shown.set("x", "1");
    EXPECT_EQ(shown.geometry("a").picture, "cloudy");
    EXPECT_EQ(shown.geometry("a").text, "before");
}

TEST(KorDataBar, MapsItsValueOntoTheHeight) {
    ShownValue shown("DataBar", "'InMin': -20, 'InMax': 20, 'OutMin': 0, 'OutMax': 10.5");
    EXPECT_FLOAT_EQ(shown.height("0"), 5.25F);
    EXPECT_FLOAT_EQ(shown.height("20"), 10.5F);
    EXPECT_FLOAT_EQ(shown.height("40"), 15.75F);
    EXPECT_FLOAT_EQ(shown.height("-40"), -5.25F);
    EXPECT_EQ(shown.geometry("a").width, 0);
}

TEST(KorDataBar, KeepsToItsRange) {
    ShownValue shown("DataBar", "'Clamp': true, 'OutMax': 200");
    EXPECT_FLOAT_EQ(shown.height("50"), 100.0F);
    EXPECT_FLOAT_EQ(shown.height("500"), 200.0F);
    EXPECT_FLOAT_EQ(shown.height("-5"), 0.0F);
}

TEST(KorDataBar, MapsItsValueOntoTheWidth) {
    ShownValue shown("DataBar", "'Axis': 'x', 'OutMax': 10");
    EXPECT_FLOAT_EQ(shown.height("50"), 0.0F);
    EXPECT_EQ(shown.geometry("a").width, 5);
}

TEST(KorDataBar, MapsTheSameInEveryLocale) {
    for (const char* locale : {"de_DE.UTF-8", "de_DE.utf8", "German_Germany.1252"})
        if (std::setlocale(LC_ALL, locale))
            break;
    {
        ShownValue shown("DataBar", "'OutMax': 0.5");
        EXPECT_FLOAT_EQ(shown.height("50"), 0.25F);
    }
    std::setlocale(LC_ALL, "C");
}

TEST(KorDataPosition, MovesToTwoNumbers) {
    ShownValue shown("DataPosition");
    EXPECT_EQ(shown.position("3 -4.5"), "3 -4.5");
    EXPECT_EQ(shown.position("7"), "7 7");
    EXPECT_EQ(shown.position("none"), "7 7");
}

TEST(KorDataPosition, MovesAlongOneAxis) {
    ShownValue x("DataPosition", "'Axis': 'x'");
    EXPECT_EQ(x.position("3"), "3 0");
}

TEST(KorDataPosition, MovesAlongTheOtherAxis) {
    ShownValue y("DataPosition", "'Axis': 'y'");
    EXPECT_EQ(y.position("3"), "0 3");
}

TEST(KorDataPosition, MapsEachAxis) {
    ShownValue shown("DataPosition", "'XInMin': -180, 'XInMax': 180, 'XOutMin': 0, 'XOutMax': 360, 'YInMin': 90, "
                                     "'YInMax': -90, 'YOutMin': 0, 'YOutMax': 90");
    EXPECT_EQ(shown.position("0 0"), "180 45");
    EXPECT_EQ(shown.position("-180 90"), "0 0");
    EXPECT_EQ(shown.position("360 -90"), "540 90");
}

TEST(KorDataPosition, KeepsToItsRanges) {
    ShownValue shown("DataPosition", "'Clamp': 1, 'XInMax': 10, 'XOutMax': 20, 'YInMax': 10, 'YOutMax': 30");
    EXPECT_EQ(shown.position("50 -1"), "20 0");
    EXPECT_EQ(shown.position("5 5"), "10 15");
}

TEST(KorDataVisible, HidesForNothingAndZero) {
    ShownValue shown("DataVisible");
    EXPECT_TRUE(shown.container("a").isVisible);
    EXPECT_FALSE(shown.isVisible("0"));
    EXPECT_TRUE(shown.isVisible("1"));
    EXPECT_FALSE(shown.isVisible(""));
    EXPECT_TRUE(shown.isVisible("no"));
}

TEST(KorDataVisible, ShowsForOneValueOnly) {
    ShownValue shown("DataVisible", "'Is': 'live'");
    EXPECT_FALSE(shown.isVisible("1"));
    EXPECT_TRUE(shown.isVisible("live"));
    EXPECT_FALSE(shown.isVisible("Live"));
}

TEST(KorDataStructure, IsWhatPlugInsBelowItAreIn) {
    RunningScene running("[{'name': 'a', 'plugins': [{'kind': 'DataStructure', 'FieldName': 'show'}], 'children': "
                         "[{'name': 'b', 'geometry': {'type': 'TEXT'}, 'plugins': [{'kind': 'DataText', 'FieldName': "
                         "'title'}]}, {'name': 'c', 'geometry': {'type': 'TEXT'}, 'plugins': [{'kind': 'DataText', "
                         "'FieldName': '/title'}]}]}]",
                         KOR_PLUGINS);
    running.set("show/title", "inside");
    running.set("title", "outside");
    EXPECT_EQ(running.geometry("b").text, "inside");
    EXPECT_EQ(running.geometry("c").text, "outside");
    EXPECT_STREQ(running.field("show")->getTypeName(), "DataStructure");
}

TEST(KorDataStructure, LeavesWhatIsBelowToTheTreeWhenItIsDeleted) {
    RunningScene running("[{'name': 'a', 'plugins': [{'kind': 'DataStructure', 'FieldName': 'show'}], 'children': "
                         "[{'name': 'b', 'geometry': {'type': 'TEXT'}, 'plugins': [{'kind': 'DataText', 'FieldName': "
                         "'title'}]}]}]",
                         KOR_PLUGINS);
    running.ask("a*FUNCTION*DataStructure DELETE");
    running.host.callFrame();
    running.set("title", "outside");
    EXPECT_EQ(running.geometry("b").text, "outside");
}

TEST(KorDataArray, GivesEachContainerAnElement) {
    const Tables tables;
    RunningScene running("[{'name': 'week', 'plugins': [{'kind': 'DataArray', 'FieldName': 'days', 'TypeStr': "
                         "'Day[3]'}], 'children': [{'name': 'day', 'repeat': 3, 'geometry': {'type': 'TEXT'}, "
                         "'plugins': [{'kind': 'DataText', 'FieldName': 'high'}]}]}]",
                         KOR_PLUGINS);
    running.set("days[1]/high", "21");
    running.set("days[2]/high", "22");
    EXPECT_EQ(running.geometry("day0").text, "");
    EXPECT_EQ(running.geometry("day1").text, "21");
    EXPECT_EQ(running.geometry("day2").text, "22");
}

TEST(KorDataArray, IsMadeInTheStructureAboveIt) {
    const Tables tables;
    RunningScene running("[{'plugins': [{'kind': 'DataStructure', 'FieldName': 'show'}], 'children': [{'name': 'week', "
                         "'plugins': [{'kind': 'DataArray', 'FieldName': 'days', 'TypeStr': 'Day[2]'}], 'children': "
                         "[{'name': 'day', 'repeat': 2, 'geometry': {'type': 'TEXT'}, 'plugins': [{'kind': 'DataText', "
                         "'FieldName': 'high'}]}]}]}]",
                         KOR_PLUGINS);
    running.set("show/days[1]/high", "21");
    EXPECT_EQ(running.geometry("day1").text, "21");
}

TEST(KorDataArray, GrowsWithItsType) {
    const Tables tables;
    RunningScene running("[{'name': 'week', 'plugins': [{'kind': 'DataArray', 'FieldName': 'days', 'TypeStr': "
                         "'Day[1]'}], 'children': [{'name': 'day', 'repeat': 2, 'geometry': {'type': 'TEXT'}, "
                         "'plugins': [{'kind': 'DataText', 'FieldName': 'high'}]}]}]",
                         KOR_PLUGINS);
    running.set("days[0]/high", "20");
    running.ask("week*FUNCTION*DataArray*TypeStr SET Day[2]");
    running.host.callFrame();
    running.set("days[1]/high", "21");
    EXPECT_EQ(running.geometry("day0").text, "20");
    EXPECT_EQ(running.geometry("day1").text, "21");
}

TEST(KorDataObject, StandsForAnObject) {
    const Tables tables;
    RunningScene running("[{'name': 'a', 'plugins': [{'kind': 'DataObject', 'FieldName': 'town', 'TypeStr': 'Town'}], "
                         "'children': [{'name': 'b', 'geometry': {'type': 'TEXT'}, 'plugins': [{'kind': 'DataText', "
                         "'FieldName': 'name'}]}]}]",
                         KOR_PLUGINS);
    ASSERT_NE(running.field("town"), nullptr);
    running.set("town/name", "Sofia");
    EXPECT_EQ(running.geometry("b").text, "Sofia");
}

TEST(KorDataTable, StandsForAHashTable) {
    const Tables tables;
    RunningScene running("[{'name': 'a', 'plugins': [{'kind': 'DataTable', 'FieldName': 'towns', 'TypeStr': 'Town'}], "
                         "'children': [{'name': 'b', 'geometry': {'type': 'TEXT'}, 'plugins': [{'kind': 'DataText', "
                         "'FieldName': '/towns{SOF}/name'}]}]}]",
                         KOR_PLUGINS);
    ASSERT_NE(running.field("towns"), nullptr);
    EXPECT_STREQ(running.field("towns")->getTypeName(), "DataHashTable");
}

TEST(KorPlugIns, AreTheSameAsTheirKind) {
    for (const char* kind : {"DataText", "DataImage", "DataBar", "DataPosition", "DataVisible", "DataStructure",
                             "DataObject", "DataTable"}) {
        RunningScene running(leaf(kind), KOR_PLUGINS);
        korDataHandler* const handler =
            running.scene.plugIn(running.scene.plugInOn(running.scene.find("a"), kind))->handler.get();
        ASSERT_NE(handler, nullptr) << kind;
        EXPECT_STREQ(handler->getPluginName(), kind);
        EXPECT_STREQ(handler->getFieldName(), "x");
        EXPECT_STREQ(handler->getPluginFolder(), "Kor");
        EXPECT_EQ(running.errors.take(), "");
    }
}

} // namespace
