#include <orbel/tables/ConversionTables.h>

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

namespace {

using namespace std::string_view_literals;

std::string joined(const std::string& folder, const std::string& name) {
    return folder + (onWindows ? '\\' : '/') + name;
}

std::string heading(const std::string& folder, const std::string& name) {
    return "\nReading Orbel Conversion Tables file " + joined(folder, name) + '\n';
}

/// A folder with table files.
class ConversionTablesTest : public testing::Test {
protected:
    ConversionTablesTest() { clearTypeVariables(); }

    /// Reads the tables of one file.
    void read(std::string_view bytes) {
        folder.write("QX_ConvTables.csv", bytes);
        readFolders(folder.path());
    }

    void readFolders(const std::string& folders) {
        Console console;
        tables = std::make_unique<ConversionTables>(folders);
        output = console.takeOutput();
        messages = console.takeMessages();
    }

    /// What was printed about the file that `read` wrote.
    std::string printed() {
        const std::string start = heading(folder.path(), "QX_ConvTables.csv");
        EXPECT_EQ(output.substr(0, start.size()), start);
        return output.substr(std::min(start.size(), output.size()));
    }

    std::string lookup(std::string_view table, std::string_view value) {
        return std::string(tables->lookup(table, value));
    }

    /// What a row makes of a key in the table T, which says "none" for unknown keys.
    std::string lookup(std::string_view value) { return lookup("T", value); }

    void readRows(std::string_view rows) { read(std::string("__TABLE__,T\n__DEFAULT__,none\n").append(rows)); }

    TemporaryFolder folder;
    std::unique_ptr<ConversionTables> tables;
    std::string output;
    std::string messages;
};

constexpr std::string_view weather = "__VERSION__,1.2\n"
                                     "__TABLE__,Sky\n"
                                     "01,sun.png\n"
                                     "02,cloud.png\n"
                                     "__DEFAULT__,unknown.png\n"
                                     "__DELIMITER__,;\n"
                                     "03;fog with rain.png\n"
                                     "__TABLE__,Wind\n"
                                     "N;north\n";

} // namespace

TEST_F(ConversionTablesTest, AreReadFromAFile) {
    folder.write("QX_ConvTables_weather.csv", weather);
    readFolders(folder.path());
    EXPECT_EQ(lookup("Sky", "01"), "sun.png");
    EXPECT_EQ(lookup("Sky", "02"), "cloud.png");
    EXPECT_EQ(lookup("Sky", "03"), "fog with rain.png");
    EXPECT_EQ(lookup("Sky", "04"), "unknown.png");
    EXPECT_EQ(lookup("Wind", "N"), "north");
    EXPECT_EQ(lookup("Wind", "S"), "");
    EXPECT_EQ(output, heading(folder.path(), "QX_ConvTables_weather.csv") + "    File format version : 1.2\n"
                                                                            "    Adding table : Sky\n"
                                                                            "    Adding table : Wind\n");
    EXPECT_EQ(messages, "");
}

TEST_F(ConversionTablesTest, AreTheSameWithCarriageReturns) {
    std::string lines;
    for (const char character : weather)
        lines += character == '\n' ? std::string("\r\n") : std::string(1, character);
    read(lines);
    EXPECT_EQ(lookup("Sky", "01"), "sun.png");
    EXPECT_EQ(lookup("Sky", "03"), "fog with rain.png");
    EXPECT_EQ(lookup("Sky", "x"), "unknown.png");
    EXPECT_EQ(lookup("Wind", "N"), "north");
    EXPECT_EQ(printed(), "    File format version : 1.2\n    Adding table : Sky\n    Adding table : Wind\n");
}

TEST_F(ConversionTablesTest, ConvertWithTheLastLineWithoutItsEnd) {
    readRows("a,b\nc,d");
    EXPECT_EQ(lookup("c"), "d");
}

TEST_F(ConversionTablesTest, OfAnEmptyFileAreNone) {
    read("");
    EXPECT_EQ(printed(), "");
    EXPECT_EQ(lookup("", ""), "");
}

TEST_F(ConversionTablesTest, ConvertEverythingToTheEmptyTextWhenUnknown) {
    readRows("a,b\n");
    EXPECT_EQ(lookup("U", "a"), "");
    EXPECT_EQ(lookup("t", "a"), "");
    EXPECT_EQ(lookup("", "a"), "");
}

TEST_F(ConversionTablesTest, ConvertUnknownKeysByTheirDefault) {
    readRows("a,b\n");
    EXPECT_EQ(lookup("x"), "none");
    EXPECT_EQ(lookup(""), "none");
    EXPECT_EQ(lookup("A"), "none");
    EXPECT_EQ(lookup("__DEFAULT__"), "none");
}

TEST_F(ConversionTablesTest, WithoutADefaultConvertUnknownKeysToTheEmptyText) {
    read("__TABLE__,T\na,b\n");
    EXPECT_EQ(lookup("x"), "");
}

TEST_F(ConversionTablesTest, FindTheDefaultWithoutTheBlanksAroundIt) {
    read("__TABLE__,T\n __DEFAULT__\t,x\n__TABLE__,U\n__DEFAULT__,\n__TABLE__,V\n__default__,y\n");
    EXPECT_EQ(lookup("T", "a"), "x");
    EXPECT_EQ(lookup("U", "a"), "");
    EXPECT_EQ(lookup("V", "a"), "");
}

TEST_F(ConversionTablesTest, KeepTheFirstValueOfAKey) {
    readRows("a,1\na,2\n a ,3\n__DEFAULT__,later\n__TABLE__,U\na,4\n__TABLE__,T\na,5\nb,6\n");
    EXPECT_EQ(lookup("a"), "1");
    EXPECT_EQ(lookup("b"), "6");
    EXPECT_EQ(lookup("x"), "none");
    EXPECT_EQ(lookup("U", "a"), "4");
}

TEST_F(ConversionTablesTest, GrowByFurtherSectionsOfTheSameName) {
    read("__TABLE__,T\na,1\n__TABLE__,U\nb,2\n__TABLE__, T \nc,3\n");
    EXPECT_EQ(lookup("T", "a"), "1");
    EXPECT_EQ(lookup("T", "c"), "3");
    EXPECT_EQ(lookup("T", "b"), "");
    EXPECT_EQ(printed(), "    Adding table : T\n    Adding table : U\n");
}

TEST_F(ConversionTablesTest, FindKeysWithoutTheBlanksAroundThem) {
    readRows(" \ta b\t ,x\n");
    EXPECT_EQ(lookup("a b"), "x");
    EXPECT_EQ(lookup("\t a b \t\r\n"), "x");
    EXPECT_EQ(lookup("\na b"), "none");
    EXPECT_EQ(lookup("a  b"), "none");
    EXPECT_EQ(lookup(" T\t\r\n", "a b"), "x");
    EXPECT_EQ(lookup("\nT", "a b"), "");
}

TEST_F(ConversionTablesTest, KeepTheBlanksOfValues) {
    readRows("01,sun.png  \n02, \tcloud.png\n03, \n");
    EXPECT_EQ(lookup("01"), "sun.png  ");
    EXPECT_EQ(lookup("02"), " \tcloud.png");
    EXPECT_EQ(lookup("03"), " ");
}

TEST_F(ConversionTablesTest, TakeTheLineEndForTheValueOfARowWithoutOne) {
    readRows("a,\nb\nc,,\n");
    EXPECT_EQ(lookup("a"), "");
    EXPECT_EQ(lookup("b"), "none");
    EXPECT_EQ(lookup("c"), "");
}

TEST_F(ConversionTablesTest, IgnoreARowWithoutAValueAtTheEndOfTheFile) {
    readRows("a,");
    EXPECT_EQ(lookup("a"), "none");
}

TEST_F(ConversionTablesTest, KnowBlankKeys) {
    readRows(" ,x\n");
    EXPECT_EQ(lookup(""), "x");
    EXPECT_EQ(lookup(" \t"), "x");
}

TEST_F(ConversionTablesTest, CountSeparatorsInARowAsOneAndIgnoreFurtherFields) {
    readRows("a,,,b\nc,d,e\n");
    EXPECT_EQ(lookup("a"), "b");
    EXPECT_EQ(lookup("c"), "d");
}

TEST_F(ConversionTablesTest, IgnoreLinesThatBeginWithAComma) {
    readRows(",a,b\n__DELIMITER__,;\n,c;d\n;e;f\n");
    EXPECT_EQ(lookup("a"), "none");
    EXPECT_EQ(lookup(",c"), "none");
    EXPECT_EQ(lookup("e"), "f");
}

TEST_F(ConversionTablesTest, IgnoreRowsBeforeTheFirstTable) {
    read("a,b\n__TABLE__,T\nc,d\n");
    EXPECT_EQ(lookup("a"), "");
    EXPECT_EQ(lookup("c"), "d");
}

TEST_F(ConversionTablesTest, IgnoreTableLinesWithoutAName) {
    for (const std::string line :
         {"__TABLE__,\n", "__TABLE__, \n", "__TABLE__, \t \r\n", "__TABLE__,,,\n", "__TABLE__more,\n"}) {
        SCOPED_TRACE(line);
        readRows(line + "a,b\n");
        EXPECT_EQ(lookup("a"), "b");
        EXPECT_EQ(lookup("__TABLE__"), "none");
        EXPECT_EQ(printed(), "    Adding table : T\n");
    }
}

TEST_F(ConversionTablesTest, TakeTheTokenBehindTheMarkerForTheName) {
    read("__TABLE__,,Two,Three\na,1\n__TABLE__s and more,Four words here \na,2\n");
    EXPECT_EQ(lookup("Two", "a"), "1");
    EXPECT_EQ(lookup("Four words here", "a"), "2");
    EXPECT_EQ(printed(), "    Adding table : Two\n    Adding table : Four words here\n");
}

TEST_F(ConversionTablesTest, SplitMarkerLinesAtCommasWhateverTheDelimiter) {
    readRows("__DELIMITER__,;\n__TABLE__;x\n__TABLE__,U;V\na;b\n");
    EXPECT_EQ(lookup("T", "__TABLE__"), "x");
    EXPECT_EQ(lookup("U;V", "a"), "b");
}

TEST_F(ConversionTablesTest, TakeOtherSpellingsOfMarkersForRows) {
    readRows("__table__,U\n __TABLE__,V\n__Delimiter__,;\n");
    EXPECT_EQ(lookup("__table__"), "U");
    EXPECT_EQ(lookup("__TABLE__"), "V");
    EXPECT_EQ(lookup("__Delimiter__"), ";");
}

TEST_F(ConversionTablesTest, TakeATableLineThatIsTooShortForARow) {
    readRows("__TABLE__,U");
    EXPECT_EQ(lookup("__TABLE__"), "U");
    EXPECT_EQ(printed(), "    Adding table : T\n");
}

TEST_F(ConversionTablesTest, AreMadeByATableLineThatIsJustLongEnough) {
    read("__TABLE__,U\n__TABLE__,VV");
    EXPECT_EQ(printed(), "    Adding table : U\n    Adding table : VV\n");
}

TEST_F(ConversionTablesTest, TakeAnyCharacterOfTheDelimiterForASeparator) {
    readRows("__DELIMITER__,;|\na;b\nc|d\n;|e|;|f;|\ng,h;i j\n");
    EXPECT_EQ(lookup("a"), "b");
    EXPECT_EQ(lookup("c"), "d");
    EXPECT_EQ(lookup("e"), "f");
    EXPECT_EQ(lookup("g,h"), "i j");
}

TEST_F(ConversionTablesTest, CountTheLineEndAmongTheDelimiters) {
    readRows("__DELIMITER__,;\na;\nb; \n");
    EXPECT_EQ(lookup("a"), "none");
    EXPECT_EQ(lookup("b"), " ");
}

TEST_F(ConversionTablesTest, ReadADelimiterUpToTheNextComma) {
    readRows("__DELIMITER__,;,|\na;b|c\nd;\n");
    EXPECT_EQ(lookup("a"), "b|c");
    EXPECT_EQ(lookup("d"), "");
}

TEST_F(ConversionTablesTest, GoBackToCommasByADelimiterLineWithoutOne) {
    readRows("__DELIMITER__,|\nA|B\n__DELIMITER__\nK,V\nL|W\nM,\n");
    EXPECT_EQ(lookup("A"), "B");
    EXPECT_EQ(lookup("K"), "V");
    EXPECT_EQ(lookup("L|W"), "none");
    EXPECT_EQ(lookup("M"), "none");
}

TEST_F(ConversionTablesTest, KeepFurtherDelimitersWhenGoingBackToCommas) {
    readRows("__DELIMITER__,;|\n__DELIMITER__ and more\na|b\nc,d\ne;f,g\n");
    EXPECT_EQ(lookup("a"), "b");
    EXPECT_EQ(lookup("c"), "d");
    EXPECT_EQ(lookup("e;f"), "g");
}

TEST_F(ConversionTablesTest, TakeOnlyTheLineEndOfAnEmptyDelimiter) {
    readRows("__DELIMITER__,\na,b\n__DELIMITER__\nc,d\n");
    EXPECT_EQ(lookup("a"), "none");
    EXPECT_EQ(lookup("c"), "d");
}

TEST_F(ConversionTablesTest, KeepTheDelimiterWhenTheLineHasNone) {
    readRows("__DELIMITER__,;\n__DELIMITER__,\0\n__DELIMITER__,,,\0\na;b\n"sv);
    EXPECT_EQ(lookup("a"), "b");
}

TEST_F(ConversionTablesTest, NeedADelimiterLineToBeLongerThanItsMarker) {
    readRows("__DELIMITER__,;\n__DELIMITER__\0\na;b\n"sv);
    EXPECT_EQ(lookup("a"), "b");
}

TEST_F(ConversionTablesTest, TakeFifteenCharactersOfADelimiter) {
    readRows("__DELIMITER__,123456789ABCDEFG\naFb\ncGd\ne1f\n");
    EXPECT_EQ(lookup("a"), "b");
    EXPECT_EQ(lookup("cGd"), "none");
    EXPECT_EQ(lookup("e"), "f");
}

TEST_F(ConversionTablesTest, StartEachFileWithCommas) {
    folder.write("QX_ConvTables1.csv", "__TABLE__,T\n__DELIMITER__,;\na;b\n");
    folder.write("QX_ConvTables2.csv", "x,y\n__TABLE__,T\nc,d\n");
    readFolders(folder.path());
    EXPECT_EQ(lookup("a"), "b");
    EXPECT_EQ(lookup("c"), "d");
    EXPECT_EQ(lookup("x"), "");
}

TEST_F(ConversionTablesTest, TellTheVersionOfTheFirstLineOnly) {
    read("__VERSION__,1.2 beta \t,more\n__VERSION__,2\n__TABLE__,T\na,b\n__VERSION__,3\n");
    EXPECT_EQ(printed(), "    File format version : 1.2 beta\n    Adding table : T\n");
    EXPECT_EQ(lookup("__VERSION__"), "3");
}

TEST_F(ConversionTablesTest, LookForTheVersionBehindSkippedLines) {
    read(",\n,x\n__VERSION__,7\n");
    EXPECT_EQ(printed(), "    File format version : 7\n");
}

TEST_F(ConversionTablesTest, LookForNoVersionBehindAnEmptyLine) {
    read("\n__VERSION__,7\n");
    EXPECT_EQ(printed(), "");
}

TEST_F(ConversionTablesTest, AreAbandonedWhenTheVersionIsMissing) {
    // A NUL keeps the line end from being the version.
    for (const std::string_view line : {"__VERSION__,,,\0\n"sv, "__VERSION__more,\0\n"sv}) {
        read(std::string(line) + "__TABLE__,T\na,b\n");
        EXPECT_EQ(lookup("a"), "");
        EXPECT_EQ(printed(), "");
    }
}

TEST_F(ConversionTablesTest, ReadOnBehindAVersionOfNothingButALineEnd) {
    read("__VERSION__, \n__TABLE__,T\na,b\n");
    EXPECT_EQ(printed(), "    File format version : \n    Adding table : T\n");
    EXPECT_EQ(lookup("a"), "b");
}

TEST_F(ConversionTablesTest, ReadOnBehindAVersionLineThatIsTooShort) {
    read("__VERSION__,\n__TABLE__,T\na,b\n");
    EXPECT_EQ(printed(), "    Adding table : T\n");
    EXPECT_EQ(lookup("a"), "b");
    read("__VERSION__ 1.2\n__TABLE__,T\na,b\n");
    EXPECT_EQ(printed(), "    Adding table : T\n");
    EXPECT_EQ(lookup("a"), "b");
}

TEST_F(ConversionTablesTest, KeepTheTablesOfEarlierFilesWhenALaterOneIsAbandoned) {
    folder.write("QX_ConvTables1.csv", "__TABLE__,T\na,b\n");
    folder.write("QX_ConvTables2.csv", "__VERSION__,,,\0\n__TABLE__,T\nc,d\n"sv);
    folder.write("QX_ConvTables3.csv", "__TABLE__,T\ne,f\n");
    readFolders(folder.path());
    EXPECT_EQ(lookup("a"), "b");
    EXPECT_EQ(lookup("c"), "");
    EXPECT_EQ(lookup("e"), "f");
}

TEST_F(ConversionTablesTest, TakeAFirstLineWithAByteOrderMarkForARow) {
    read("\xEF\xBB\xBF__VERSION__,1\n__TABLE__,T\na,b\n");
    EXPECT_EQ(printed(), "    Adding table : T\n");
    EXPECT_EQ(lookup("a"), "b");
    read("\xEF\xBB\xBF__TABLE__,T\na,b\n");
    EXPECT_EQ(printed(), "");
    EXPECT_EQ(lookup("a"), "");
}

TEST_F(ConversionTablesTest, ReadLongLinesInPieces) {
    const std::string key(1'020, 'k');
    // With its line end: as long as a line may be.
    readRows(key + ",v\n");
    EXPECT_EQ(lookup(key), "v");
    readRows(key + ",vw\na,b\n");
    EXPECT_EQ(lookup(key), "vw");
    EXPECT_EQ(lookup("a"), "b");
    readRows(key + ",vwx,y\nz,b\n");
    EXPECT_EQ(lookup(key), "vw");
    EXPECT_EQ(lookup("x"), "y");
    EXPECT_EQ(lookup("z"), "b");
    readRows(std::string(2'046, 'k') + "__TABLE__,U\na,b\n");
    EXPECT_EQ(lookup("U", "a"), "b");
    EXPECT_EQ(lookup("a"), "none");
}

TEST_F(ConversionTablesTest, CountTheLineEndInTheLengthOfALine) {
    const std::string key(1'019, 'k');
    for (const char* value : {"v", "vw"})
        for (const char* end : {"\n", ""}) {
            readRows(key + ',' + value + "x" + end);
            EXPECT_EQ(lookup(key), value + std::string("x"));
        }
    readRows(key + ",vwx\na,b");
    EXPECT_EQ(lookup(key), "vwx");
    EXPECT_EQ(lookup("a"), "b");
    readRows(key + ",vwxy");
    EXPECT_EQ(lookup(key), "vwx");
    readRows(key + ",vwxy,z");
    EXPECT_EQ(lookup(key), "vwx");
    EXPECT_EQ(lookup("y"), "z");
}

TEST_F(ConversionTablesTest, ReadPiecesOfLongLinesAsLines) {
    const std::string full(1'023, 'k');
    readRows(full + ",a,b\n" + full + "__DELIMITER__,;\n" + full + "c;d\n" + full + "__TABLE__,UU");
    EXPECT_EQ(lookup("a"), "none");
    EXPECT_EQ(lookup("c"), "d");
    EXPECT_EQ(printed(), "    Adding table : T\n    Adding table : UU\n");
    read(full + "__VERSION__,7\n");
    EXPECT_EQ(printed(), "");
    read(',' + full.substr(1) + "__VERSION__,7\n");
    EXPECT_EQ(printed(), "    File format version : 7\n");
}

TEST_F(ConversionTablesTest, ConvertKeysAndNamesOfAnyLength) {
    readRows("a,b\n");
    EXPECT_EQ(lookup(std::string(5'000, ' ') + 'a' + std::string(5'000, ' ')), "b");
    EXPECT_EQ(lookup(std::string(5'000, 'a')), "none");
    EXPECT_EQ(lookup(std::string(5'000, ' ') + 'T', "a"), "b");
}

TEST_F(ConversionTablesTest, HideTheRestOfALineBehindANul) {
    readRows("a,b\0c\nd\0,e\nf,g\n"sv);
    EXPECT_EQ(lookup("a"), "b");
    EXPECT_EQ(lookup("d"), "none");
    EXPECT_EQ(lookup("f"), "g");
}

TEST_F(ConversionTablesTest, ConvertBytesThatAreNoCharacters) {
    readRows("\xFF\xC0,\x80\xFE\n\xC3\xA4,\xC3\x84\n");
    EXPECT_EQ(lookup("\xFF\xC0"), "\x80\xFE");
    EXPECT_EQ(lookup("\xC3\xA4"), "\xC3\x84");
}

TEST_F(ConversionTablesTest, MergeAllFilesOfAFolderByTheirNames) {
    folder.write("QX_ConvTables_b.csv", "__TABLE__,T\nk,2\nb,3\n");
    folder.write("QX_ConvTables_a.csv", "__TABLE__,T\nk,1\na,4\n");
    folder.write("QX_ConvTables.csv", "__TABLE__,T\n__DEFAULT__,0\n");
    for (const char* other : {"ConvTables.csv", "QX_ConvTables.txt", "QX_ConvTable.csv", "xQX_ConvTables.csv"})
        folder.write(other, "__TABLE__,T\nk,5\nc,6\n");
    readFolders(folder.path());
    EXPECT_EQ(lookup("k"), "1");
    EXPECT_EQ(lookup("a"), "4");
    EXPECT_EQ(lookup("b"), "3");
    EXPECT_EQ(lookup("c"), "0");
    EXPECT_EQ(output, heading(folder.path(), "QX_ConvTables.csv") + "    Adding table : T\n" +
                          heading(folder.path(), "QX_ConvTables_a.csv") +
                          heading(folder.path(), "QX_ConvTables_b.csv"));
}

TEST_F(ConversionTablesTest, AreNotReadFromFolders) {
    std::filesystem::create_directory(folder.path("QX_ConvTables.csv"));
    readFolders(folder.path());
    EXPECT_EQ(output, "");
}

TEST_F(ConversionTablesTest, AreReadWithoutFilesThatCannotBeRead) {
    const Locked locked(folder.write("QX_ConvTables1.csv", "__TABLE__,T\na,1\n"));
    folder.write("QX_ConvTables2.csv", "__TABLE__,T\na,2\n");
    if (locked.isReadable())
        GTEST_SKIP() << "this user may read everything";
    readFolders(folder.path());
    EXPECT_EQ(lookup("a"), "2");
    EXPECT_EQ(output, heading(folder.path(), "QX_ConvTables2.csv") + "    Adding table : T\n");
}

TEST_F(ConversionTablesTest, AreReadWithoutFoldersThatCannotBeRead) {
    const TemporaryFolder second;
    folder.write("QX_ConvTables.csv", "__TABLE__,T\na,1\n");
    second.write("QX_ConvTables.csv", "__TABLE__,T\na,2\n");
    const Locked locked(folder.path());
    if (locked.isReadable())
        GTEST_SKIP() << "this user may read everything";
    readFolders(folder.path() + ';' + second.path());
    EXPECT_EQ(lookup("a"), "2");
    EXPECT_EQ(output, heading(second.path(), "QX_ConvTables.csv") + "    Adding table : T\n");
}

TEST_F(ConversionTablesTest, OfAFileForAFolderAreNone) {
    readFolders(folder.write("QX_ConvTables.csv", "__TABLE__,T\na,1\n"));
    EXPECT_EQ(output, "");
}

TEST_F(ConversionTablesTest, MergeSeveralFoldersInTheirOrder) {
    const TemporaryFolder second, empty;
    folder.write("QX_ConvTables_z.csv", "__TABLE__,T\nk,1\n");
    second.write("QX_ConvTables_a.csv", "__TABLE__,T\nk,2\nb,3\n");
    readFolders(";" + empty.path() + "; ;" + folder.path("missing") + ";\t" + folder.path() + "\r\n; \v\f" +
                second.path() + " ;");
    EXPECT_EQ(lookup("k"), "1");
    EXPECT_EQ(lookup("b"), "3");
    EXPECT_EQ(output, heading(folder.path(), "QX_ConvTables_z.csv") + "    Adding table : T\n" +
                          heading(second.path(), "QX_ConvTables_a.csv"));
}

TEST_F(ConversionTablesTest, ReadAFolderAsOftenAsItIsNamed) {
    folder.write("QX_ConvTables.csv", "__TABLE__,T\na,b\n");
    readFolders(folder.path() + ';' + folder.path());
    const std::string once = heading(folder.path(), "QX_ConvTables.csv");
    EXPECT_EQ(output, once + "    Adding table : T\n" + once);
}

TEST_F(ConversionTablesTest, AreReadFromTheFoldersOfTheVariableWhenItIsSet) {
    const TemporaryFolder second, configured;
    folder.write("QX_ConvTables.csv", "__TABLE__,T\nk,1\n");
    second.write("QX_ConvTables.csv", "__TABLE__,T\nk,2\nb,3\n");
    configured.write("QX_ConvTables.csv", "__TABLE__,T\nc,4\n");
    const Variable variable("QX_OBJECTS_DIR", folder.path() + "; " + second.path());
    readFolders(configured.path());
    EXPECT_EQ(lookup("k"), "1");
    EXPECT_EQ(lookup("b"), "3");
    EXPECT_EQ(lookup("c"), "");
}

TEST_F(ConversionTablesTest, AreNoneWhenTheVariableIsEmpty) {
    if (onWindows)
        GTEST_SKIP() << "no variable is empty there";
    folder.write("QX_ConvTables.csv", "__TABLE__,T\nk,1\n");
    const Variable variable("QX_OBJECTS_DIR", "");
    readFolders(folder.path());
    EXPECT_EQ(output, "");
}

TEST_F(ConversionTablesTest, AreReadFromTheCurrentFolderByDefault) {
    const auto before = std::filesystem::current_path();
    folder.write("QX_ConvTables.csv", "__TABLE__,T\nk,1\n");
    std::filesystem::current_path(folder.path());
    readFolders(".");
    std::filesystem::current_path(before);
    EXPECT_EQ(lookup("k"), "1");
    EXPECT_EQ(output, heading(".", "QX_ConvTables.csv") + "    Adding table : T\n");
}

TEST_F(ConversionTablesTest, KeepNothingOfAnEarlierReading) {
    read("__TABLE__,T\na,1\n__TABLE__,U\n");
    read("__TABLE__,T\nb,2\n");
    EXPECT_EQ(lookup("a"), "");
    EXPECT_EQ(lookup("b"), "2");
    EXPECT_EQ(printed(), "    Adding table : T\n");
}

TEST_F(ConversionTablesTest, LendTheirTexts) {
    readRows("a,b\n");
    const char* const text = tables->lookup("T", "a").data();
    EXPECT_EQ(tables->lookup("T", " a ").data(), text);
    EXPECT_EQ(tables->lookup("T", "x").data(), tables->lookup("T", "y").data());
}

TEST_F(ConversionTablesTest, ReadMillionsOfBytes) {
    std::string rows;
    for (int row = 0; row < 100'000; ++row)
        rows += std::to_string(row) + ',' + std::to_string(-row) + '\n';
    // One line of three megabytes.
    rows += std::string(3'000'000, 'x') + '\n';
    readRows(rows + "last,one\n");
    EXPECT_EQ(lookup("0"), "0");
    EXPECT_EQ(lookup("99999"), "-99999");
    EXPECT_EQ(lookup("last"), "one");
}
