#include <orbel/tables/AllPluginPreSets.h>

#include <support/Console.h>
#include <support/Environment.h>
#include <support/Locked.h>
#include <support/Platform.h>
#include <support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace std::string_view_literals;

constexpr std::string_view clocks = "__VERSION__,1\n"
                                    "__PLUGIN__,Clock\n"
                                    "Name,Format,Colour\n"
                                    "Short,HH:MM,white\n"
                                    "Long,HH:MM:SS,yellow\n"
                                    "__PLUGIN__,Ticker\n"
                                    "Name,Speed\n"
                                    "Slow,10\n";

constexpr const char* noName = "   First line of a PreSer has to include a \"Name\" as one of the variables\n";

/// All rows: "Short|HH:MM|white/Long|HH:MM:SS|yellow".
std::string rowsOf(PluginPreSets* presets) {
    if (!presets)
        return "no presets";
    std::string all;
    for (int index = 0; index < presets->getNumRows(); ++index) {
        all += index == 0 ? "" : "/";
        const std::vector<std::string>& row = *presets->getRow(index);
        for (std::size_t field = 0; field < row.size(); ++field)
            all += (field == 0 ? "" : "|") + row[field];
    }
    return all;
}

/// A folder with a file of presets.
class AllPluginPreSetsTest : public testing::Test {
protected:
    AllPluginPreSetsTest() { clearTypeVariables(); }

    void read(std::string_view bytes) {
        folder.write("QX_PreSets.csv", bytes);
        readFolder(folder.path());
    }

    /// Reads rows of the plug-in P with the columns Name and Speed.
    void readRows(std::string_view rows) { read(std::string("__PLUGIN__,P\nName,Speed\n").append(rows)); }

    void readFolder(const std::string& path) {
        Console console;
        presets = std::make_unique<AllPluginPreSets>(path);
        output = console.takeOutput();
        messages = console.takeMessages();
    }

    /// What was printed about the file that `read` wrote.
    std::string printed() {
        const std::string start = "\nReading Orbel PreSets file " + folder.path() + "/QX_PreSets.csv\n";
        EXPECT_EQ(output.substr(0, start.size()), start);
        return output.substr(std::min(start.size(), output.size()));
    }

    std::string rows(std::string_view plugin) { return rowsOf(presets->find(plugin)); }

    TemporaryFolder folder;
    std::unique_ptr<AllPluginPreSets> presets;
    std::string output;
    std::string messages;
};

} // namespace

TEST_F(AllPluginPreSetsTest, AreReadFromAFile) {
    read(clocks);
    PluginPreSets* clock = presets->find("Clock");
    ASSERT_NE(clock, nullptr);
    EXPECT_EQ(clock->getNumColumns(), 3);
    EXPECT_EQ(clock->getColumn("Name"), 0);
    EXPECT_EQ(clock->getColumn("Format"), 1);
    EXPECT_EQ(clock->getColumn("Colour"), 2);
    EXPECT_EQ(clock->getNameColumn(), 0);
    EXPECT_EQ(clock->getNumRows(), 2);
    EXPECT_EQ(rows("Clock"), "Short|HH:MM|white/Long|HH:MM:SS|yellow");
    EXPECT_EQ(rows("Ticker"), "Slow|10");
    EXPECT_EQ(printed(), "    File format version : 1\n    Adding plugin : Clock\n    Adding plugin : Ticker\n");
    EXPECT_EQ(messages, "");
}

TEST_F(AllPluginPreSetsTest, AreTheSameWithCarriageReturns) {
    std::string lines;
    for (const char character : clocks)
        lines += character == '\n' ? std::string("\r\n") : std::string(1, character);
    read(lines);
    EXPECT_EQ(rows("Clock"), "Short|HH:MM|white/Long|HH:MM:SS|yellow");
    EXPECT_EQ(presets->find("Clock")->getColumn("Colour"), 2);
    EXPECT_EQ(rows("Ticker"), "Slow|10");
    EXPECT_EQ(printed(), "    File format version : 1\n    Adding plugin : Clock\n    Adding plugin : Ticker\n");
}

TEST_F(AllPluginPreSetsTest, AreFoundByTheExactNameOfTheirPlugin) {
    read("__PLUGIN__, Clock \nName\nShort\n");
    EXPECT_EQ(rows("Clock"), "Short");
    for (const char* other : {"Clock ", " Clock", "clock", "Cloc", ""})
        EXPECT_EQ(presets->find(other), nullptr);
    EXPECT_EQ(printed(), "    Adding plugin : Clock\n");
}

TEST_F(AllPluginPreSetsTest, AreNoneWithoutAFile) {
    readFolder(folder.path());
    EXPECT_EQ(output, "");
    EXPECT_EQ(presets->find("Clock"), nullptr);
    EXPECT_EQ(presets->find(""), nullptr);
}

TEST_F(AllPluginPreSetsTest, AreNotReadFromAFolder) {
    std::filesystem::create_directory(folder.path("QX_PreSets.csv"));
    readFolder(folder.path());
    EXPECT_EQ(output, "");
}

TEST_F(AllPluginPreSetsTest, AreNoneWithoutAFolder) {
    for (const std::string& path : {folder.path("missing"), folder.write("file", "")}) {
        readFolder(path);
        EXPECT_EQ(output, "");
        EXPECT_EQ(presets->find(""), nullptr);
    }
}

TEST_F(AllPluginPreSetsTest, AreNoneWhenTheFileCannotBeRead) {
    const Locked locked(folder.write("QX_PreSets.csv", clocks));
    if (locked.isReadable())
        GTEST_SKIP() << "this user may read everything";
    readFolder(folder.path());
    EXPECT_EQ(output, "");
    EXPECT_EQ(presets->find("Clock"), nullptr);
}

TEST_F(AllPluginPreSetsTest, AreNoneWhenTheFolderCannotBeRead) {
    folder.write("QX_PreSets.csv", clocks);
    const Locked locked(folder.path());
    if (locked.isReadable())
        GTEST_SKIP() << "this user may read everything";
    readFolder(folder.path());
    EXPECT_EQ(output, "");
    EXPECT_EQ(presets->find("Clock"), nullptr);
}

TEST_F(AllPluginPreSetsTest, OfAnEmptyFileAreNone) {
    read("");
    EXPECT_EQ(printed(), "");
}

TEST_F(AllPluginPreSetsTest, AreReadFromTheFolderAsItIsWritten) {
    folder.write("QX_PreSets.csv", "__PLUGIN__,Clock\n");
    readFolder(folder.path() + '/');
    EXPECT_EQ(output,
              "\nReading Orbel PreSets file " + folder.path() + "//QX_PreSets.csv\n    Adding plugin : Clock\n");
}

TEST_F(AllPluginPreSetsTest, AreNotReadFromAListOfFolders) {
    folder.write("QX_PreSets.csv", "__PLUGIN__,Clock\n");
    readFolder(folder.path() + ';' + folder.path());
    EXPECT_EQ(output, "");
    readFolder(' ' + folder.path());
    EXPECT_EQ(output, "");
}

TEST_F(AllPluginPreSetsTest, AreReadFromTheFolderOfTheVariableWhenItIsSet) {
    const TemporaryFolder configured;
    folder.write("QX_PreSets.csv", "__PLUGIN__,Clock\n");
    configured.write("QX_PreSets.csv", "__PLUGIN__,Ticker\n");
    const Variable variable("QX_OBJECTS_DIR", folder.path());
    readFolder(configured.path());
    EXPECT_EQ(printed(), "    Adding plugin : Clock\n");
    EXPECT_EQ(presets->find("Ticker"), nullptr);
}

TEST_F(AllPluginPreSetsTest, AreNotReadFromTheConfiguredFolderWhenThatOfTheVariableHasNone) {
    const TemporaryFolder empty;
    folder.write("QX_PreSets.csv", "__PLUGIN__,Clock\n");
    const Variable variable("QX_OBJECTS_DIR", empty.path());
    readFolder(folder.path());
    EXPECT_EQ(output, "");
}

TEST_F(AllPluginPreSetsTest, AreNotReadFromTheConfiguredFolderWhenTheVariableIsEmpty) {
    if (onWindows)
        GTEST_SKIP() << "no variable is empty there";
    folder.write("QX_PreSets.csv", "__PLUGIN__,Clock\n");
    const Variable variable("QX_OBJECTS_DIR", "");
    readFolder(folder.path());
    EXPECT_EQ(presets->find("Clock"), nullptr);
}

TEST_F(AllPluginPreSetsTest, TellTheVersionOfTheFirstLineOnly) {
    read("__VERSION__, 1.2 beta \t,more\n__VERSION__,2\n__PLUGIN__,P\n__VERSION__,Name\n");
    EXPECT_EQ(printed(), "    File format version : 1.2 beta\n    Adding plugin : P\n");
    EXPECT_EQ(presets->find("P")->getColumn("__VERSION__"), 0);
    EXPECT_EQ(presets->find("P")->getNameColumn(), 1);
}

TEST_F(AllPluginPreSetsTest, LookForTheVersionBehindSkippedLines) {
    read(",x\n\nA\n__VERSION__,7\n");
    EXPECT_EQ(printed(), "    File format version : 7\n");
    read("AB\n__VERSION__,7\n");
    EXPECT_EQ(printed(), "");
}

TEST_F(AllPluginPreSetsTest, EndAtAVersionLineWithoutAVersion) {
    // A NUL keeps the line end from being the version.
    for (const std::string_view line : {"__VERSION__,,,\0\n"sv, "__VERSION__more,\0\n"sv}) {
        read(std::string(line) + "__PLUGIN__,Clock\n");
        EXPECT_EQ(printed(), "");
    }
}

TEST_F(AllPluginPreSetsTest, ReadOnBehindAVersionOfNothingButALineEnd) {
    read("__VERSION__, \n__PLUGIN__,Clock\n");
    EXPECT_EQ(printed(), "    File format version : \n    Adding plugin : Clock\n");
    read("__VERSION__,\n__PLUGIN__,Clock\n");
    EXPECT_EQ(printed(), "    Adding plugin : Clock\n");
}

TEST_F(AllPluginPreSetsTest, TakeAFirstLineWithAByteOrderMarkForNoMarker) {
    read("\xEF\xBB\xBF__VERSION__,1\n__PLUGIN__,Clock\n");
    EXPECT_EQ(printed(), "    Adding plugin : Clock\n");
    read("\xEF\xBB\xBF__PLUGIN__,Clock\nName\n");
    EXPECT_EQ(printed(), "");
}

TEST_F(AllPluginPreSetsTest, IgnoreLinesBeforeTheFirstPlugin) {
    read("Name,Speed\nFast,1\n__PLUGIN__,P\nName\nSlow\n");
    EXPECT_EQ(rows("P"), "Slow");
}

TEST_F(AllPluginPreSetsTest, IgnorePluginLinesWithoutAName) {
    for (const std::string line :
         {"__PLUGIN__,\n", "__PLUGIN__, \n", "__PLUGIN__, \t \r\n", "__PLUGIN__,,,\n", "__PLUGIN__more,\n"}) {
        SCOPED_TRACE(line);
        readRows(line + "Fast,1\n");
        EXPECT_EQ(rows("P"), "Fast|1");
        EXPECT_EQ(printed(), "    Adding plugin : P\n");
    }
}

TEST_F(AllPluginPreSetsTest, TakeTheTokenBehindTheMarkerForTheName) {
    read("__PLUGIN__,,Two,Three\nName\nFast\n__PLUGIN__s and more,Four words here \nName\nSlow\n");
    EXPECT_EQ(rows("Two"), "Fast");
    EXPECT_EQ(rows("Four words here"), "Slow");
}

TEST_F(AllPluginPreSetsTest, TakeOtherSpellingsOfMarkersForRows) {
    readRows("__plugin__,Q\n __PLUGIN__,R\n__PLUGIN__\n__PLUGIN__,S");
    EXPECT_EQ(rows("P"), "__plugin__|Q/ __PLUGIN__|R/__PLUGIN__/__PLUGIN__|S");
}

TEST_F(AllPluginPreSetsTest, SkipShortLinesAndThoseThatBeginWithAComma) {
    read("__PLUGIN__,P\n,Name\n\nX\nName,Speed\n,Fast\nA\nAB\n\nC,\n,,,\nD");
    EXPECT_EQ(presets->find("P")->getColumn("Name"), 0);
    EXPECT_EQ(rows("P"), "AB/C|");
}

TEST_F(AllPluginPreSetsTest, CountTheLineEndInTheLengthOfShortLines) {
    readRows("AB\nCDE\nFG");
    EXPECT_EQ(rows("P"), "AB/CDE");
    readRows("AB\nCDE");
    EXPECT_EQ(rows("P"), "AB/CDE");
}

TEST_F(AllPluginPreSetsTest, CountACarriageReturnUnlessThePlatformDropsIt) {
    readRows("A\r\nBC\r\n");
    EXPECT_EQ(rows("P"), onWindows ? "BC" : "A/BC");
}

TEST_F(AllPluginPreSetsTest, TakeAPluginLineThatIsTooShortForARow) {
    readRows("__PLUGIN__,Q");
    EXPECT_EQ(rows("P"), "__PLUGIN__|Q");
    readRows("__PLUGIN__,Q\nName\nQ1\n__PLUGIN__,RR");
    EXPECT_EQ(rows("Q"), "Q1");
    EXPECT_EQ(printed(), "    Adding plugin : P\n    Adding plugin : Q\n    Adding plugin : RR\n");
}

TEST_F(AllPluginPreSetsTest, ReadOnBehindAVersionLineWithoutAComma) {
    read("__VERSION__ 1.2\n__PLUGIN__,Clock\n");
    EXPECT_EQ(printed(), "    Adding plugin : Clock\n");
}

TEST_F(AllPluginPreSetsTest, AreReadFromOneFileOnly) {
    folder.write("QX_PreSets2.csv", clocks);
    read("__PLUGIN__,P\nName,Speed\nFast,1");
    EXPECT_EQ(rows("P"), "Fast|1");
    EXPECT_EQ(presets->find("Clock"), nullptr);
}

TEST_F(AllPluginPreSetsTest, KeepBlanksOfColumnsAndValues) {
    read("__PLUGIN__,P\nName, Speed \nFast , 1 \n");
    EXPECT_EQ(presets->find("P")->getColumn(" Speed "), 1);
    EXPECT_EQ(presets->find("P")->getColumn("Speed"), -1);
    EXPECT_EQ(rows("P"), "Fast | 1 ");
}

TEST_F(AllPluginPreSetsTest, KeepEmptyFields) {
    readRows("Short,,white\nLong,,\n");
    EXPECT_EQ(rows("P"), "Short||white/Long||");
}

TEST_F(AllPluginPreSetsTest, KeepRowsThatReachTheName) {
    readRows("Fast\nA,1,2,3\n");
    EXPECT_EQ(rows("P"), "Fast/A|1|2|3");
    read("__PLUGIN__,P\nSpeed,Size,Name\n1,2\n3\n4,5,Fast\n6,7,\n");
    EXPECT_EQ(presets->find("P")->getNameColumn(), 2);
    EXPECT_EQ(rows("P"), "4|5|Fast/6|7|");
}

TEST_F(AllPluginPreSetsTest, HaveNoRowsWhenTheHeaderHasNoName) {
    for (const char* header : {" Name,Speed", "name,Speed", "Name ,Speed", "Speed"}) {
        read("__PLUGIN__,P\n" + std::string(header) + "\nFast,1\nName,Speed\nSlow,2\n__PLUGIN__,Q\nName\nX1\n");
        EXPECT_EQ(presets->find("P")->getNameColumn(), -1);
        EXPECT_EQ(presets->find("P")->getColumn("Speed"), std::string_view(header) == "Speed" ? 0 : 1);
        EXPECT_EQ(rows("P"), "");
        EXPECT_EQ(rows("Q"), "X1");
        EXPECT_EQ(printed(), std::string("    Adding plugin : P\n") + noName + "    Adding plugin : Q\n");
    }
}

TEST_F(AllPluginPreSetsTest, HaveNoColumnsWithoutAHeader) {
    read("__PLUGIN__,P\n__PLUGIN__,Q\n");
    EXPECT_EQ(presets->find("P")->getNameColumn(), -999);
    EXPECT_EQ(presets->find("P")->getNumColumns(), 0);
    EXPECT_EQ(presets->find("P")->getNumRows(), 0);
    EXPECT_EQ(presets->find("P")->findRow(""), nullptr);
}

TEST_F(AllPluginPreSetsTest, GrowByFurtherSectionsOfTheSameName) {
    read("__PLUGIN__,Clock\nName,Format\nShort,1\n__PLUGIN__,Other\n__PLUGIN__, Clock\nName,Format\nLong,2\n");
    EXPECT_EQ(rows("Clock"), "Short|1/Name|Format/Long|2");
    EXPECT_EQ(printed(), "    Adding plugin : Clock\n    Adding plugin : Other\n");
}

TEST_F(AllPluginPreSetsTest, ReadTheHeaderInALaterSectionWhenTheFirstIsEmpty) {
    read("__PLUGIN__,Clock\n__PLUGIN__,Clock\nName,Format\nShort,1\n");
    EXPECT_EQ(rows("Clock"), "Short|1");
}

TEST_F(AllPluginPreSetsTest, TakeTheFirstOfRepeatedColumns) {
    read("__PLUGIN__,P\nSpeed,Name,Speed,Name,\n1,2,3,4,5\n");
    PluginPreSets* plugin = presets->find("P");
    EXPECT_EQ(plugin->getNumColumns(), 3);
    EXPECT_EQ(plugin->getColumn("Speed"), 0);
    EXPECT_EQ(plugin->getNameColumn(), 1);
    EXPECT_EQ(plugin->getColumn(""), 4);
    EXPECT_EQ(plugin->getColumn(nullptr), 4);
    EXPECT_EQ(plugin->getColumn("unknown"), -1);
    EXPECT_EQ(rows("P"), "1|2|3|4|5");
}

TEST_F(AllPluginPreSetsTest, HaveSixtyFourFieldsAtMost) {
    std::string header = "Name", row = "Fast";
    for (int field = 1; field < 66; ++field) {
        header += ",c" + std::to_string(field);
        row += ',' + std::to_string(field);
    }
    read("__PLUGIN__,P\n" + header + '\n' + row + '\n');
    PluginPreSets* plugin = presets->find("P");
    EXPECT_EQ(plugin->getNumColumns(), 64);
    EXPECT_EQ(plugin->getColumn("c63"), 63);
    EXPECT_EQ(plugin->getColumn("c64"), -1);
    ASSERT_EQ(plugin->getRow(0)->size(), 64U);
    EXPECT_EQ(plugin->getRow(0)->back(), "63");
}

TEST_F(AllPluginPreSetsTest, FindTheNameInTheLastFieldAndNotBehindIt) {
    read("__PLUGIN__,P\nx" + std::string(63, ',') + "Name\n" + "y" + std::string(63, ',') + "Fast,cut\n" +
         "__PLUGIN__,Q\nx" + std::string(64, ',') + "Name\n");
    EXPECT_EQ(presets->find("P")->getNameColumn(), 63);
    EXPECT_NE(presets->find("P")->findRow("Fast"), nullptr);
    EXPECT_EQ(presets->find("Q")->getNameColumn(), -1);
}

TEST_F(AllPluginPreSetsTest, FindTheFirstRowOfExactlyThisName) {
    read("__PLUGIN__,P\nSpeed,Name\n1,Fast\n2,Fast\n3,Slow \nFast,\n");
    PluginPreSets* plugin = presets->find("P");
    EXPECT_EQ(plugin->findRow("Fast"), plugin->getRow(0));
    EXPECT_EQ(plugin->findRow("Slow "), plugin->getRow(2));
    EXPECT_EQ(plugin->findRow(""), plugin->getRow(3));
    EXPECT_EQ(plugin->findRow(nullptr), plugin->getRow(3));
    for (const char* other : {"Slow", "fast", "1", "Fas"})
        EXPECT_EQ(plugin->findRow(other), nullptr);
}

TEST_F(AllPluginPreSetsTest, HaveNoRowsOutOfRange) {
    readRows("Fast,1\nSlow,2\n");
    PluginPreSets* plugin = presets->find("P");
    EXPECT_EQ(plugin->getRow(-1), nullptr);
    EXPECT_EQ(plugin->getRow(2), nullptr);
    EXPECT_EQ((*plugin->getRow(1))[0], "Slow");
}

TEST_F(AllPluginPreSetsTest, ReadLongLinesInPieces) {
    const std::string value(1'020, 'v');
    readRows("N," + value + "\nEnd\n");
    EXPECT_EQ(rows("P"), "N|" + value + "/End");
    readRows("N," + value + "w\nEnd\n");
    EXPECT_EQ(rows("P"), "N|" + value + "w/End");
    readRows("N," + value + "wx\nEnd\n");
    EXPECT_EQ(rows("P"), "N|" + value + "w/End");
    readRows("N," + value + "wxy\nEnd\n");
    EXPECT_EQ(rows("P"), "N|" + value + "w/xy/End");
    readRows("N," + value.substr(1) + "\nEnd\n");
    EXPECT_EQ(rows("P"), "N|" + value.substr(1) + "/End");
    readRows("N," + value);
    EXPECT_EQ(rows("P"), "N|" + value);
    readRows("N," + value + 'w');
    EXPECT_EQ(rows("P"), "N|" + value + 'w');
    readRows("N," + value + "wx");
    EXPECT_EQ(rows("P"), "N|" + value + 'w');
    readRows("N," + value + "wxyz");
    EXPECT_EQ(rows("P"), "N|" + value + "w/xyz");
}

TEST_F(AllPluginPreSetsTest, HideTheRestOfALineBehindANul) {
    readRows("Fast,1\0,2\n\0\nSlow\0\n"sv);
    EXPECT_EQ(rows("P"), "Fast|1/Slow");
}

TEST_F(AllPluginPreSetsTest, KeepBytesThatAreNoCharacters) {
    readRows("\xFF\xC0,\x80\n\xC3\xA4,1\n");
    EXPECT_EQ(rows("P"), "\xFF\xC0|\x80/\xC3\xA4|1");
}

TEST_F(AllPluginPreSetsTest, ReadMillionsOfBytes) {
    std::string lines;
    for (int row = 0; row < 50'000; ++row)
        lines += "row" + std::to_string(row) + ",1\n";
    readRows(lines);
    EXPECT_EQ(presets->find("P")->getNumRows(), 50'000);
    EXPECT_EQ((*presets->find("P")->getRow(49'999))[0], "row49999");
}
