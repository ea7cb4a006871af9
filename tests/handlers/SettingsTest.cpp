#include <orbel/orbel.h>

#include <support/Console.h>
#include <support/Environment.h>
#include <support/Locked.h>
#include <support/Text.h>
#include <support/WorkingFolder.h>

#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <string>
#include <vector>

namespace {

const std::string stars(80, '*');
const std::string banner = "\n\n" + stars + "\n\t Orbel Version: 2.13.6.1473 \n";

class Settings : public testing::Test {
protected:
    Settings() { clearTypeVariables(); }

    void initWith(const std::string& text) {
        folder.write("Orbel.ini", text);
        IDataHandlerImpl::init();
    }

    /// What a fresh process has: nothing is set.
    void expectDefaults() {
        EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 0);
        EXPECT_TRUE(IDataHandlerImpl::IsRefreshAlways());
        EXPECT_TRUE(IDataHandlerImpl::CheckMaterialIfExists());
        EXPECT_TRUE(IDataHandlerImpl::CheckImageIfExists());
        EXPECT_STREQ(DataObject::get_ConfigFolder(), ".");
        EXPECT_EQ(DataObject::get_NofExtraTypes(), 0);
    }

    Console console;
    WorkingFolder folder;
};

int printAmongTheOutput(const char* format, va_list args) {
    char message[200];
    const int length = std::vsnprintf(message, sizeof message, format, args);
    std::cout << message;
    return length;
}

/// The fields of a line, however many.
std::vector<std::string> splitAtSemicolons(const std::string& line) {
    std::vector<std::string> fields(1);
    for (const char character : line)
        if (character == ';')
            fields.emplace_back();
        else
            fields.back() += character;
    return fields;
}

} // namespace

TEST(OrbelVersion, EndsInABlank) {
    char version[32] = {};
    OrbelGetVersion(version);
    EXPECT_STREQ(version, "2.13.6.1473 ");
}

TEST(OrbelVersion, NeedsABuffer) {
    OrbelGetVersion(nullptr);
}

TEST_F(Settings, HaveDefaultsBeforeTheyAreRead) {
    folder.write("Orbel.ini", "MultiOrbel=1\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), -1);
    EXPECT_TRUE(IDataHandlerImpl::IsRefreshAlways());
    EXPECT_TRUE(IDataHandlerImpl::CheckMaterialIfExists());
    EXPECT_TRUE(IDataHandlerImpl::CheckImageIfExists());
    EXPECT_STREQ(DataObject::get_ConfigFolder(), "");
    EXPECT_EQ(console.takeOutput(), "");
}

TEST_F(Settings, KeepTheirDefaultsWithoutAFile) {
    IDataHandlerImpl::init();
    expectDefaults();
}

TEST_F(Settings, KeepTheirDefaultsWithAnEmptyFile) {
    initWith("");
    expectDefaults();
    EXPECT_EQ(console.takeOutput(), banner + stars + '\n');
}

TEST_F(Settings, KeepTheirDefaultsWithAFolderForTheFile) {
    folder.makeFolder("Orbel.ini");
    IDataHandlerImpl::init();
    expectDefaults();
    EXPECT_EQ(console.takeOutput(), banner + stars + '\n');
}

TEST_F(Settings, KeepTheirDefaultsWhenTheFileCannotBeRead) {
    const Locked locked(folder.write("Orbel.ini", "MultiOrbel=1\n"));
    if (locked.isReadable())
        GTEST_SKIP() << "this user may read everything";
    IDataHandlerImpl::init();
    expectDefaults();
    EXPECT_EQ(console.takeOutput(), banner + stars + '\n');
}

TEST_F(Settings, KeepTheirDefaultsWhenTheCurrentFolderCannotBeRead) {
    folder.write("Orbel.ini", "MultiOrbel=1\n");
    folder.write("CapitalUnicodeData.txt", "0041;0061;\n");
    folder.write("QX_ConvTables.csv", "__TABLE__,Sky\n");
    folder.write("QX_PreSets.csv", "__PLUGIN__,Clock\n");
    const Locked locked(std::filesystem::current_path().string());
    if (locked.isReadable())
        GTEST_SKIP() << "this user may read everything";
    IDataHandlerImpl::init();
    expectDefaults();
    wchar_t small = L'a';
    EXPECT_FALSE(IDataHandlerImpl::toUpper(&small));
    EXPECT_EQ(console.takeOutput(), banner + stars + '\n');
}

TEST_F(Settings, AreReadInsideABanner) {
    IDataHandlerImpl::init();
    EXPECT_EQ(console.takeOutput(), banner + stars + '\n');
}

TEST_F(Settings, AreReadOnce) {
    initWith("MultiOrbel=1\nRefreshAlways=0\n");
    console.takeOutput();
    initWith("MultiOrbel=0\nRefreshAlways=1\nConfigurationFolder=elsewhere\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 1);
    EXPECT_FALSE(IDataHandlerImpl::IsRefreshAlways());
    EXPECT_STREQ(DataObject::get_ConfigFolder(), ".");
    EXPECT_EQ(console.takeOutput(), banner + stars + '\n');
}

TEST_F(Settings, AreReadOnceEvenWhenTheFileSaysTheyAreUnread) {
    initWith("MultiOrbel=-1\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), -1);
    initWith("MultiOrbel=1\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), -1);
}

TEST_F(Settings, SetEverything) {
    folder.makeFolder("configuration");
    initWith("MultiOrbel=2\n"
             "Nof_Extra_Types=12\n"
             "ConfigurationFolder=configuration\n"
             "RefreshAlways=0\n"
             "CheckMaterialIfExists=0\n"
             "CheckImageIfExists=0\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 2);
    EXPECT_EQ(DataObject::get_NofExtraTypes(), 12);
    EXPECT_STREQ(DataObject::get_ConfigFolder(), "configuration");
    EXPECT_FALSE(IDataHandlerImpl::IsRefreshAlways());
    EXPECT_FALSE(IDataHandlerImpl::CheckMaterialIfExists());
    EXPECT_FALSE(IDataHandlerImpl::CheckImageIfExists());
}

TEST_F(Settings, AreFoundInAnyCaseAndWithBlanksBeforeTheSign) {
    initWith("multiorbel \t = 1\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 1);
}

TEST_F(Settings, AreAllFoundInAnyCase) {
    folder.makeFolder("configuration");
    initWith("MULTIORBEL=3\nnof_extra_types=4\nconfigurationFOLDER=configuration\nrefreshalways=0\n"
             "checkMATERIALifEXISTS=0\nCHECKIMAGEIFEXISTS=0\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 3);
    EXPECT_EQ(DataObject::get_NofExtraTypes(), 4);
    EXPECT_STREQ(DataObject::get_ConfigFolder(), "configuration");
    EXPECT_FALSE(IDataHandlerImpl::IsRefreshAlways());
    EXPECT_FALSE(IDataHandlerImpl::CheckMaterialIfExists());
    EXPECT_FALSE(IDataHandlerImpl::CheckImageIfExists());
}

TEST_F(Settings, AreTheSameWithCarriageReturns) {
    folder.makeFolder("configuration");
    initWith("# comment\r\nMultiOrbel=1\r\nNof_Extra_Types = 12\r\nConfigurationFolder= configuration\r\n"
             "RefreshAlways=0\r\n\r\nCheckMaterialIfExists=\r\nCheckImageIfExists=2\r\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 1);
    EXPECT_EQ(DataObject::get_NofExtraTypes(), 12);
    EXPECT_STREQ(DataObject::get_ConfigFolder(), "configuration");
    EXPECT_FALSE(IDataHandlerImpl::IsRefreshAlways());
    EXPECT_FALSE(IDataHandlerImpl::CheckMaterialIfExists());
    EXPECT_TRUE(IDataHandlerImpl::CheckImageIfExists());
}

TEST_F(Settings, AreTakenFromALastLineWithoutItsEnd) {
    folder.makeFolder("configuration");
    initWith("MultiOrbel=1\nConfigurationFolder=configuration");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 1);
    EXPECT_STREQ(DataObject::get_ConfigFolder(), "configuration");
}

TEST_F(Settings, AreNotTakenFromAFirstLineWithAByteOrderMark) {
    initWith("\xEF\xBB\xBFMultiOrbel=1\nRefreshAlways=0\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 0);
    EXPECT_FALSE(IDataHandlerImpl::IsRefreshAlways());
}

TEST_F(Settings, AreNotTakenFromBehindANul) {
    initWith(std::string("MultiOrbel\0=1\nRefreshAlways=0\0001\n", 32));
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 0);
    EXPECT_FALSE(IDataHandlerImpl::IsRefreshAlways());
}

TEST_F(Settings, AreNotFoundBehindABlank) {
    initWith(" MultiOrbel=1\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 0);
}

TEST_F(Settings, AreNotReadFromComments) {
    initWith("#MultiOrbel=1\n# RefreshAlways=0\n #CheckImageIfExists=0\n");
    expectDefaults();
}

TEST_F(Settings, KnowNoCommentsBehindAValue) {
    initWith("MultiOrbel=1 # one tree for each scene\nConfigurationFolder=shows # all of them\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 1);
    EXPECT_STREQ(DataObject::get_ConfigFolder(), "shows # all of them");
}

TEST_F(Settings, NeedAnEqualsSign) {
    initWith("MultiOrbel 1\nRefreshAlways\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 0);
    EXPECT_TRUE(IDataHandlerImpl::IsRefreshAlways());
}

TEST_F(Settings, IgnoreOtherLines) {
    initWith("\n=\nSomething=1\nMulti=1\nMultiOrbe=1\nx=MultiOrbel=1\n[MultiOrbel]=1\n=MultiOrbel=1\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 0);
}

TEST_F(Settings, AreTakenFromLongerWordsToo) {
    initWith("RefreshAlwaysAndForever=0\nMultiOrbel is what counts = 1\n");
    EXPECT_FALSE(IDataHandlerImpl::IsRefreshAlways());
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 1);
}

TEST_F(Settings, TakeTheValueBehindTheFirstEqualsSign) {
    initWith("MultiOrbel=1=0\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 1);
}

TEST_F(Settings, AreOverriddenByLaterLines) {
    initWith("MultiOrbel=0\nMultiOrbel=3\nRefreshAlways=0\nRefreshAlways=1");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 3);
    EXPECT_TRUE(IDataHandlerImpl::IsRefreshAlways());
}

TEST_F(Settings, ReadNumbersWithBlanksAndSigns) {
    initWith("MultiOrbel= \t-12abc\nNof_Extra_Types=+7\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), -12);
    EXPECT_EQ(DataObject::get_NofExtraTypes(), 7);
}

TEST_F(Settings, ReadZeroForWhatIsNoNumber) {
    initWith("MultiOrbel=yes\nRefreshAlways=true\nCheckImageIfExists=\nCheckMaterialIfExists=-1\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 0);
    EXPECT_FALSE(IDataHandlerImpl::IsRefreshAlways());
    EXPECT_FALSE(IDataHandlerImpl::CheckImageIfExists());
    EXPECT_TRUE(IDataHandlerImpl::CheckMaterialIfExists());
}

TEST_F(Settings, KeepNumbersInRange) {
    initWith("MultiOrbel=99999999999\nNof_Extra_Types=-99999999999\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 2'147'483'647);
    EXPECT_EQ(DataObject::get_NofExtraTypes(), -2'147'483'647 - 1);
}

TEST_F(Settings, StripTheFolder) {
    initWith("ConfigurationFolder=\t my folder \r\n");
    EXPECT_STREQ(DataObject::get_ConfigFolder(), "my folder");
}

TEST_F(Settings, KeepATabAtTheEndOfTheFolder) {
    initWith("ConfigurationFolder=folder\t \n");
    EXPECT_STREQ(DataObject::get_ConfigFolder(), "folder\t");
}

TEST_F(Settings, TakeAnEmptyFolderAsItIs) {
    initWith("ConfigurationFolder= \t \n");
    EXPECT_STREQ(DataObject::get_ConfigFolder(), "");
}

TEST_F(Settings, AreReadFromPiecesOfLongLines) {
    initWith("#" + std::string(510, '-') + "MultiOrbel=1\n" + std::string(512, '-') + "RefreshAlways=0\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 1);
    EXPECT_TRUE(IDataHandlerImpl::IsRefreshAlways());
}

TEST_F(Settings, TakeALineOfFiveHundredAndTenCharactersAsAWhole) {
    const std::string key = "ConfigurationFolder=";
    const std::string name(510 - key.size(), 'f');
    initWith(key + name.substr(1) + "\nRefreshAlways=0");
    EXPECT_EQ(DataObject::get_ConfigFolder(), name.substr(1));
    EXPECT_FALSE(IDataHandlerImpl::IsRefreshAlways());
}

TEST_F(Settings, TakeALineOfFiveHundredAndElevenCharactersAsAWhole) {
    const std::string key = "ConfigurationFolder=";
    const std::string name(510 - key.size(), 'f');
    initWith(key + name + "\nRefreshAlways=0");
    EXPECT_EQ(DataObject::get_ConfigFolder(), name);
    EXPECT_FALSE(IDataHandlerImpl::IsRefreshAlways());
}

TEST_F(Settings, TakeTheLineEndOfALineOfFiveHundredAndTwelveCharactersForAnEmptyLine) {
    const std::string key = "ConfigurationFolder=";
    const std::string name(511 - key.size(), 'f');
    initWith(key + name + "\nRefreshAlways=0");
    EXPECT_EQ(DataObject::get_ConfigFolder(), name);
    EXPECT_FALSE(IDataHandlerImpl::IsRefreshAlways());
}

TEST_F(Settings, ReadMillionsOfBytes) {
    std::string lines;
    for (int line = 0; line < 100'000; ++line)
        lines += "Nof_Extra_Types=" + std::to_string(line) + '\n';
    // One line of three megabytes.
    initWith(lines + std::string(3'000'000, 'x') + "\nMultiOrbel=1\n");
    EXPECT_EQ(DataObject::get_NofExtraTypes(), 99'999);
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 1);
}

TEST_F(Settings, CutAFolderAtTheEndOfThePiece) {
    const std::string key = "ConfigurationFolder=";
    initWith(key + std::string(600, 'f') + '\n');
    EXPECT_EQ(DataObject::get_ConfigFolder(), std::string(511 - key.size(), 'f'));
}

TEST_F(Settings, SayWhereTablesAndPresetsAre) {
    folder.makeFolder("shows");
    folder.write("shows/QX_ConvTables.csv", "__TABLE__,Sky\n");
    folder.write("shows/QX_PreSets.csv", "__PLUGIN__,Clock\nName,Format\nShort,HH:MM\n");
    folder.write("shows/types.qx", "City = {string name;};\n");
    initWith("ConfigurationFolder=shows\n");
    const std::string separator = onWindows ? "\\" : "/";
    EXPECT_EQ(console.takeOutput(), banner + "\nReading Orbel Conversion Tables file shows" + separator +
                                        "QX_ConvTables.csv\n    Adding table : Sky\n"
                                        "\nReading Orbel PreSets file shows/QX_PreSets.csv\n"
                                        "    Adding plugin : Clock\n" +
                                        stars + '\n');
    EXPECT_NE(DataObject::getTypesTable()->getTypeByName("City"), nullptr);
}

TEST_F(Settings, NameOneFolderForPresetsAndAListForTheRest) {
    for (const std::string name : {"a", "b"}) {
        folder.makeFolder(name);
        folder.write(name + "/QX_ConvTables.csv", "__TABLE__,T" + name + '\n');
        folder.write(name + "/QX_PreSets.csv", "__PLUGIN__,P" + name + '\n');
        folder.write(name + "/types.qx", "C" + name + " = {string name;};\n");
    }
    initWith("ConfigurationFolder=a; b\n");
    const std::string separator = onWindows ? "\\" : "/";
    const std::string reading = "\nReading Orbel Conversion Tables file ";
    EXPECT_EQ(console.takeOutput(), banner + reading + 'a' + separator + "QX_ConvTables.csv\n    Adding table : Ta\n" +
                                        reading + 'b' + separator + "QX_ConvTables.csv\n    Adding table : Tb\n" +
                                        stars + '\n');
    EXPECT_EQ(IDataHandlerImpl::getPreSets("Pa"), nullptr);
    EXPECT_NE(DataObject::getTypesTable()->getTypeByName("Ca"), nullptr);
    EXPECT_NE(DataObject::getTypesTable()->getTypeByName("Cb"), nullptr);
}

TEST_F(Settings, AreReadBeforeTablesPresetsAndTypes) {
    folder.write("QX_ConvTables.csv", "__TABLE__,Sky\n");
    folder.write("QX_PreSets.csv", "__PLUGIN__,Clock\n");
    folder.write("types.qx", "City = {string name;};\n");
    DataSetVPrintfFunction(printAmongTheOutput);
    IDataHandlerImpl::init();
    const std::string separator = onWindows ? "\\" : "/";
    EXPECT_EQ(console.takeOutput(), banner + "\nReading Orbel Conversion Tables file ." + separator +
                                        "QX_ConvTables.csv\n    Adding table : Sky\n"
                                        "\nReading Orbel PreSets file ./QX_PreSets.csv\n    Adding plugin : Clock\n"
                                        "DataObject: Reading configuration file: ." +
                                        separator + "types.qx\n\t\tCreating type: City\n" + stars + '\n');
}

TEST_F(Settings, AreReadTogetherWithEverythingElseOnce) {
    IDataHandlerImpl::init();
    console.takeOutput();
    folder.write("Orbel.ini", "MultiOrbel=1\n");
    folder.write("QX_ConvTables.csv", "__TABLE__,Sky\n");
    folder.write("QX_PreSets.csv", "__PLUGIN__,Clock\n");
    folder.write("CapitalUnicodeData.txt", "0041;0061;\n");
    folder.write("types.qx", "City = {string name;};\n");
    IDataHandlerImpl::init();
    EXPECT_EQ(console.takeOutput(), banner + stars + '\n');
    EXPECT_EQ(console.takeMessages(), "");
    expectDefaults();
    wchar_t small = L'a';
    EXPECT_FALSE(IDataHandlerImpl::toUpper(&small));
    EXPECT_EQ(IDataHandlerImpl::getPreSets("Clock"), nullptr);
    EXPECT_EQ(DataObject::getTypesTable()->getTypeByName("City"), nullptr);
}

TEST_F(Settings, BuildNothingTwice) {
    folder.write("QX_ConvTables.csv", "__TABLE__,Sky\n");
    folder.write("QX_PreSets.csv", "__PLUGIN__,Clock\nName\n");
    IDataHandlerImpl::init();
    PluginPreSets* presets = IDataHandlerImpl::getPreSets("Clock");
    console.takeOutput();
    IDataHandlerImpl::init();
    EXPECT_EQ(console.takeOutput(), banner + stars + '\n');
    EXPECT_EQ(IDataHandlerImpl::getPreSets("Clock"), presets);
}

TEST_F(Settings, AreReadWhenPresetsAreAskedFor) {
    folder.write("QX_PreSets.csv", "__PLUGIN__,Clock\nName,Format\nShort,HH:MM\n");
    PluginPreSets* presets = IDataHandlerImpl::getPreSets("Clock");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 0);
    ASSERT_NE(presets, nullptr);
    EXPECT_EQ(presets->getNumRows(), 1);
    const std::vector<std::string>* row = presets->findRow("Short");
    ASSERT_NE(row, nullptr);
    EXPECT_EQ(row->at(static_cast<std::size_t>(presets->getColumn("Format"))), "HH:MM");
    EXPECT_NE(console.takeOutput().find(banner), std::string::npos);
    EXPECT_EQ(IDataHandlerImpl::getPreSets("Clock "), nullptr);
    EXPECT_EQ(IDataHandlerImpl::getPreSets(""), nullptr);
    EXPECT_EQ(IDataHandlerImpl::getPreSets(nullptr), nullptr);
    EXPECT_EQ(console.takeOutput(), "");
}

TEST_F(Settings, RefreshReadsTheTablesAndNothingElse) {
    IDataHandlerImpl::init();
    folder.write("QX_ConvTables.csv", "__TABLE__,Sky\n");
    folder.write("QX_PreSets.csv", "__PLUGIN__,Clock\nName\n");
    console.takeOutput();
    IDataHandlerImpl::RefreshConvTables();
    EXPECT_EQ(console.takeOutput(), std::string("\nReading Orbel Conversion Tables file .") + (onWindows ? '\\' : '/') +
                                        "QX_ConvTables.csv\n    Adding table : Sky\n");
    EXPECT_EQ(IDataHandlerImpl::getPreSets("Clock"), nullptr);
}

TEST_F(Settings, RefreshLooksAtTheVariableAnew) {
    folder.makeFolder("other");
    folder.write("other/QX_ConvTables.csv", "__TABLE__,Sky\n");
    IDataHandlerImpl::init();
    console.takeOutput();
    const Variable variable("QX_OBJECTS_DIR", "other");
    IDataHandlerImpl::RefreshConvTables();
    EXPECT_EQ(console.takeOutput(), std::string("\nReading Orbel Conversion Tables file other") +
                                        (onWindows ? '\\' : '/') + "QX_ConvTables.csv\n    Adding table : Sky\n");
}

TEST_F(Settings, RefreshReadsTablesBeforeInitToo) {
    folder.write("QX_ConvTables.csv", "__TABLE__,Sky\n");
    IDataHandlerImpl::RefreshConvTables();
    EXPECT_NE(console.takeOutput().find("Adding table : Sky\n"), std::string::npos);
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), -1);
    IDataHandlerImpl::init();
    EXPECT_EQ(console.takeOutput(), banner + stars + '\n');
}

TEST_F(Settings, CharactersChangeTheirCase) {
    folder.write("CapitalUnicodeData.txt", "0041;LATIN CAPITAL LETTER A;Lu;0;L;;;;;N;;;;0061;\n");
    wchar_t small = L'a';
    EXPECT_FALSE(IDataHandlerImpl::toUpper(&small));
    IDataHandlerImpl::init();
    EXPECT_TRUE(IDataHandlerImpl::toUpper(&small));
    EXPECT_EQ(small, L'A');
    EXPECT_FALSE(IDataHandlerImpl::toUpper(&small));
    EXPECT_TRUE(IDataHandlerImpl::toLower(&small));
    EXPECT_EQ(small, L'a');
    EXPECT_FALSE(IDataHandlerImpl::toLower(&small));
    EXPECT_FALSE(IDataHandlerImpl::toUpper(nullptr));
    EXPECT_FALSE(IDataHandlerImpl::toLower(nullptr));
}

TEST_F(Settings, AllCapitalLettersChangeTheirCase) {
    std::filesystem::copy_file(ORBEL_TEST_DATA "/CapitalUnicodeData.txt", "CapitalUnicodeData.txt");
    IDataHandlerImpl::init();
    std::map<unsigned long, unsigned long> lowers, uppers;
    std::ifstream file("CapitalUnicodeData.txt");
    int lines = 0;
    for (std::string line; std::getline(file, line); ++lines) {
        const std::vector<std::string> fields = splitAtSemicolons(line);
        ASSERT_EQ(fields.size(), 15U) << line;
        const unsigned long capital = std::strtoul(fields[0].c_str(), nullptr, 16);
        const unsigned long small = std::strtoul(fields[13].c_str(), nullptr, 16);
        ASSERT_NE(small, 0U) << line;
        if (capital < 0x10000 && small < 0x10000) {
            lowers.emplace(capital, small);
            uppers.emplace(small, capital);
        }
    }
    EXPECT_EQ(lines, 1'433);
    EXPECT_EQ(lowers.size(), 1'173U);
    EXPECT_EQ(uppers.size(), 1'164U);
    for (unsigned long code = 0; code < 0x10000; ++code) {
        auto character = static_cast<wchar_t>(code);
        ASSERT_EQ(IDataHandlerImpl::toLower(&character), lowers.count(code) != 0) << code;
        ASSERT_EQ(character, static_cast<wchar_t>(lowers.emplace(code, code).first->second)) << code;
        character = static_cast<wchar_t>(code);
        ASSERT_EQ(IDataHandlerImpl::toUpper(&character), uppers.count(code) != 0) << code;
        ASSERT_EQ(character, static_cast<wchar_t>(uppers.emplace(code, code).first->second)) << code;
    }
}
