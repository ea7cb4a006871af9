#include <tools/check/CheckRun.h>
#include <tools/check/FindingWriters.h>

#include <support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

std::string textOf(const std::vector<std::string>& paths) {
    std::ostringstream text;
    writeText(text, check(paths), Colours::off);
    return text.str();
}

std::string textOfFile(const std::string& name, std::string_view bytes) {
    const TemporaryFolder folder;
    return textOf({folder.write(name, bytes)});
}

const std::string clean = "no findings in 1 file\n";

} // namespace

TEST(CleanFiles, TheWeatherSceneHasNoFindings) {
    EXPECT_EQ(textOf({(std::filesystem::path(ORBEL_TEST_DATA) / "../../examples/weather").string()}),
              "no findings in 5 files\n");
}

TEST(CleanFiles, TheCapitalLettersOfUnicodeHaveNoFindings) {
    EXPECT_EQ(textOf({ORBEL_TEST_DATA "/CapitalUnicodeData.txt"}), clean);
}

TEST(CleanFiles, CommentsAndBlankLinesAreNoFindings) {
    EXPECT_EQ(textOfFile("QX_ConvTables.csv", ",remark\n__TABLE__,Sky\n\n   \nsun,sun.png\n,rain,rain.png\n"), clean);
    EXPECT_EQ(textOfFile("QX_PreSets.csv", ",remark\n__PLUGIN__,Clock\n\nName,Colour\r\n\r\n,a,b\nShort,white\n"),
              clean);
    EXPECT_EQ(textOfFile("Orbel.ini", "# remark = 1\n\n  # remark = 2\nMultiOrbel=1\n"), clean);
    EXPECT_EQ(textOfFile("CapitalUnicodeData.txt", "# remark\n\n0041;0061;\n"), clean);
    EXPECT_EQ(textOfFile("types.qx", "// remark\n# remark\n# remark\nT = {# remark\n    string x; // remark\n"
                                     "    # remark\n# remark\n};\n\n"),
              clean);
}

TEST(CleanFiles, TheUsualUseOfMarkersIsNoFinding) {
    EXPECT_EQ(textOfFile("QX_ConvTables.csv", "__VERSION__,1.2\n__TABLE__,Sky\n01,sun.png\n__DEFAULT__,none\n"
                                              "__DELIMITER__,;\n03;fog, with rain.png\n__TABLE__,Wind\nN;north\n"
                                              "__DELIMITER__\nS,south\n__TABLE__,Sky\n04,star.png\n"),
              clean);
    EXPECT_EQ(textOfFile("QX_PreSets.csv", "__VERSION__,1\n__PLUGIN__,Clock\nName,Format\nShort,HH:MM\n"
                                           "__PLUGIN__,Ticker\nSpeed,Name\n10,Slow\n__PLUGIN__,Clock\nLong,HH:MM:SS\n"),
              clean);
}

TEST(CleanFiles, LinesOfTheCharacterDatabaseAreNoFindings) {
    EXPECT_EQ(textOfFile("CapitalUnicodeData.txt",
                         "0041;LATIN CAPITAL LETTER A;Lu;0;L;;;;;N;;;;0061;\n"
                         "0061;LATIN SMALL LETTER A;Ll;0;L;;;;;N;;;0041;;0041\n"
                         "01C4;LATIN CAPITAL LETTER DZ WITH CARON;Lu;0;L;<compat> 0044 017D;;;;N;;;;01C6;01C5\n"
                         "01C5;LATIN CAPITAL LETTER D WITH SMALL LETTER Z WITH CARON;Lt;0;L;<compat> 0044 "
                         "017E;;;;N;;;01C4;01C6;01C5\n"
                         "10400;DESERET CAPITAL LETTER LONG I;Lu;0;L;;;;;N;;;;10428;\n"),
              clean);
}

TEST(CleanFiles, TypesMayUseThoseOfFilesBefore) {
    const TemporaryFolder folder;
    folder.write("a.qx", "Point = {string x; string y;};\n");
    folder.write("b.qx", "Label = {string text=; Point places[3];};\n");
    EXPECT_EQ(textOf({folder.path()}), "no findings in 2 files\n");
    EXPECT_EQ(textOf({folder.path("a.qx"), folder.path("b.qx")}), "no findings in 2 files\n");
}

TEST(CleanFiles, AFolderIsReadAsItsSettingsSay) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.path("shows"));
    std::filesystem::create_directory(folder.path("shared"));
    folder.write("Orbel.ini", "ConfigurationFolder = shows; shared\n");
    folder.write("ignored.qx", "Broken = {number n;};\n");
    folder.write("shows/QX_ConvTables_a.csv", "__TABLE__,Sky\nsun,sun.png\n");
    folder.write("shared/types.qx", "Point = {string x;};\n");
    EXPECT_EQ(textOf({folder.path()}), "no findings in 3 files\n");
    folder.write("Orbel.ini", "ConfigurationFolder = shows\n");
    folder.write("shows/QX_PreSets.csv", "__PLUGIN__,Clock\nName\nShort\n");
    EXPECT_EQ(textOf({folder.path()}), "no findings in 3 files\n");
}
