#include <orbel/orbel.h>

#include <support/Console.h>
#include <support/Environment.h>
#include <support/Text.h>
#include <support/WorkingFolder.h>

#include <gtest/gtest.h>

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

    Console console;
    WorkingFolder folder;
};

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
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 0);
    EXPECT_TRUE(IDataHandlerImpl::IsRefreshAlways());
    EXPECT_TRUE(IDataHandlerImpl::CheckMaterialIfExists());
    EXPECT_TRUE(IDataHandlerImpl::CheckImageIfExists());
    EXPECT_STREQ(DataObject::get_ConfigFolder(), ".");
    EXPECT_EQ(DataObject::get_NofExtraTypes(), 0);
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

TEST_F(Settings, AreNotFoundBehindABlank) {
    initWith(" MultiOrbel=1\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 0);
}

TEST_F(Settings, AreNotReadFromComments) {
    initWith("#MultiOrbel=1\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 0);
}

TEST_F(Settings, NeedAnEqualsSign) {
    initWith("MultiOrbel 1\nRefreshAlways\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 0);
    EXPECT_TRUE(IDataHandlerImpl::IsRefreshAlways());
}

TEST_F(Settings, IgnoreOtherLines) {
    initWith("\n=\nSomething=1\nMulti=1\nMultiOrbe=1\n");
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), 0);
}

TEST_F(Settings, AreTakenFromLongerWordsToo) {
    initWith("RefreshAlwaysAndForever=0\n");
    EXPECT_FALSE(IDataHandlerImpl::IsRefreshAlways());
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
