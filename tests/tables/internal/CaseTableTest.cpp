#include <orbel/tables/CaseTable.h>

#include <support/Locked.h>
#include <support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <string_view>

namespace {

using namespace std::string_view_literals;

constexpr std::string_view capitalA = "0041;LATIN CAPITAL LETTER A;Lu;0;L;;;;;N;;;;0061;\n";

CaseTable tableOf(std::string_view bytes) {
    const TemporaryFolder folder;
    return CaseTable(folder.write("CapitalUnicodeData.txt", bytes).c_str());
}

/// The partner of a character; 0 when it has none, and is left alone.
unsigned long upper(const CaseTable& table, unsigned long character) {
    auto converted = static_cast<wchar_t>(character);
    const bool isConverted = table.toUpper(converted);
    EXPECT_TRUE(isConverted || converted == static_cast<wchar_t>(character));
    return isConverted ? static_cast<unsigned long>(converted) : 0;
}

unsigned long lower(const CaseTable& table, unsigned long character) {
    auto converted = static_cast<wchar_t>(character);
    const bool isConverted = table.toLower(converted);
    EXPECT_TRUE(isConverted || converted == static_cast<wchar_t>(character));
    return isConverted ? static_cast<unsigned long>(converted) : 0;
}

/// The number of characters that a table converts.
int countOf(const CaseTable& table) {
    int count = 0;
    for (unsigned long character = 0; character < 0x10000; ++character)
        count += (upper(table, character) != 0 ? 1 : 0) + (lower(table, character) != 0 ? 1 : 0);
    return count;
}

} // namespace

TEST(CaseTable, ConvertsBothWays) {
    const CaseTable table = tableOf(capitalA);
    EXPECT_EQ(upper(table, 'a'), 0x41U);
    EXPECT_EQ(lower(table, 'A'), 0x61U);
    EXPECT_EQ(upper(table, 'A'), 0U);
    EXPECT_EQ(lower(table, 'a'), 0U);
    EXPECT_EQ(upper(table, 'b'), 0U);
    EXPECT_EQ(upper(table, 0), 0U);
}

TEST(CaseTable, IsEmptyWithoutItsFile) {
    const TemporaryFolder folder;
    EXPECT_EQ(countOf(CaseTable(folder.path("CapitalUnicodeData.txt").c_str())), 0);
    std::filesystem::create_directory(folder.path("CapitalUnicodeData.txt"));
    EXPECT_EQ(countOf(CaseTable(folder.path("CapitalUnicodeData.txt").c_str())), 0);
    EXPECT_EQ(countOf(tableOf("")), 0);
}

TEST(CaseTable, IsEmptyWhenItsFileCannotBeRead) {
    const TemporaryFolder folder;
    const std::string path = folder.write("CapitalUnicodeData.txt", capitalA);
    const Locked locked(path);
    if (locked.isReadable())
        GTEST_SKIP() << "this user may read everything";
    EXPECT_EQ(countOf(CaseTable(path.c_str())), 0);
}

TEST(CaseTable, IsEmptyWhenTheFolderIsMissingOrCannotBeRead) {
    const TemporaryFolder folder;
    EXPECT_EQ(countOf(CaseTable(folder.path("missing/CapitalUnicodeData.txt").c_str())), 0);
    const std::string path = folder.write("CapitalUnicodeData.txt", capitalA);
    const Locked locked(folder.path());
    if (locked.isReadable())
        GTEST_SKIP() << "this user may read everything";
    EXPECT_EQ(countOf(CaseTable(path.c_str())), 0);
}

TEST(CaseTable, IsTheSameWithCarriageReturns) {
    const CaseTable table =
        tableOf("#\r\n\r\n0041;LATIN CAPITAL LETTER A;Lu;0;L;;;;;N;;;;0061;\r\n0042;LATIN CAPITAL LETTER "
                "B;Lu;0;L;;;;;N;;;;0062;\r\n00C0;\r\n");
    EXPECT_EQ(countOf(table), 6);
    EXPECT_EQ(lower(table, 'A'), 0x61U);
    EXPECT_EQ(upper(table, 'b'), 0x42U);
    EXPECT_EQ(lower(table, 0xC0), 0xC0U);
}

TEST(CaseTable, TakesALastLineWithoutItsEnd) {
    const CaseTable table = tableOf(std::string(capitalA) + "0042;LATIN CAPITAL LETTER B;Lu;0;L;;;;;N;;;;0062;");
    EXPECT_EQ(countOf(table), 4);
    EXPECT_EQ(lower(table, 'B'), 0x62U);
}

TEST(CaseTable, TakesNothingFromTheLineOfASmallLetter) {
    EXPECT_EQ(countOf(tableOf("0061;LATIN SMALL LETTER A;Ll;0;L;;;;;N;;;0041;;0041\n")), 0);
}

TEST(CaseTable, SkipsEmptyLinesAndComments) {
    const CaseTable table = tableOf("\n#0042;0062;\n#\n" + std::string(capitalA) + "\n");
    EXPECT_EQ(countOf(table), 2);
    EXPECT_EQ(lower(table, 'A'), 0x61U);
}

TEST(CaseTable, ReadsTheFieldBeforeTheLast) {
    EXPECT_EQ(lower(tableOf("0041;0061;\n"), 'A'), 0x61U);
    EXPECT_EQ(lower(tableOf("0041;0061;0062\n"), 'A'), 0x61U);
    EXPECT_EQ(lower(tableOf("0041;0061;"), 'A'), 0x61U);
    EXPECT_EQ(lower(tableOf("0041;0061;\r\n"), 'A'), 0x61U);
    EXPECT_EQ(countOf(tableOf("0041;;\n")), 0);
}

TEST(CaseTable, TakesALineOfTwoFieldsForACharacterThatIsItsOwnPartner) {
    const CaseTable table = tableOf("00C0;\n00C0;00E0;\n00C1;\n00E1;00C1;\n");
    EXPECT_EQ(upper(table, 0xC0), 0xC0U);
    EXPECT_EQ(lower(table, 0xC0), 0xC0U);
    EXPECT_EQ(upper(table, 0xE0), 0xC0U);
    EXPECT_EQ(upper(table, 0xC1), 0xC1U);
    EXPECT_EQ(lower(table, 0xE1), 0xC1U);
    EXPECT_EQ(lower(tableOf("00C0;"), 0xC0), 0xC0U);
    EXPECT_EQ(lower(tableOf("00C0;00E0\n"), 0xC0), 0xC0U);
}

TEST(CaseTable, SkipsLinesOfOneField) {
    EXPECT_EQ(countOf(tableOf("0041\n0042")), 0);
}

TEST(CaseTable, KeepsTheFirstPairOfAKey) {
    const CaseTable table = tableOf("0041;0061;\n0041;0062;\n0043;0061;\n");
    EXPECT_EQ(lower(table, 'A'), 0x61U);
    EXPECT_EQ(upper(table, 'b'), 0x41U);
    EXPECT_EQ(upper(table, 'a'), 0x41U);
    EXPECT_EQ(lower(table, 'C'), 0x61U);
}

TEST(CaseTable, ReadsNumbersUpToTheFirstOtherCharacter) {
    const CaseTable table = tableOf("  41 x; \t61z;\nc0;E0;\n");
    EXPECT_EQ(lower(table, 'A'), 0x61U);
    EXPECT_EQ(lower(table, 0xC0), 0xE0U);
}

TEST(CaseTable, LeavesOutPairsWithAMissingOrImpossibleCharacter) {
    EXPECT_EQ(countOf(tableOf("0;0061;\n0041;0;\n;0061;\nx;0061;\n0041;x;\n10400;10428;\n0041;10061;\n10041;0061;\n"
                              "100000041;0061;\n0041;FFFFFFFFFFFFFFFFFF;\n-41;0061;\n")),
              0);
    EXPECT_EQ(countOf(tableOf("0x41;0061;\n0041;+61;\nU+0041;0061;\n")), 0);
    EXPECT_EQ(lower(tableOf("FFFF;FFFE;\n"), 0xFFFF), 0xFFFEU);
}

TEST(CaseTable, LeavesWideCharactersAlone) {
    if (sizeof(wchar_t) < 4)
        GTEST_SKIP() << "characters have 16 bits here";
    const CaseTable table = tableOf(capitalA);
    EXPECT_EQ(lower(table, 0x10041), 0U);
    EXPECT_EQ(lower(table, 0x80000041), 0U);
    EXPECT_EQ(lower(table, 0xFFFFFFFF), 0U);
}

TEST(CaseTable, ReadsSixtyFourFields) {
    const std::string to61 = "0041" + std::string(61, ';');
    EXPECT_EQ(lower(tableOf(to61 + ";0061;\n"), 'A'), 0x61U);
    EXPECT_EQ(lower(tableOf(to61 + ";0061;;\n"), 'A'), 0x61U);
    EXPECT_EQ(lower(tableOf(to61 + ";0061;0062;0063;\n"), 'A'), 0x61U);
    EXPECT_EQ(lower(tableOf(to61 + ";;0061;\n"), 'A'), 0U);
}

TEST(CaseTable, ReadsLongLinesInPieces) {
    const std::string name(1'023 - 10, 'N');
    EXPECT_EQ(lower(tableOf("0041;" + name + ";0061;\n"), 'A'), 0U);
    EXPECT_EQ(lower(tableOf("0041;" + name.substr(1) + ";0061;\n"), 'A'), 0x61U);
    EXPECT_EQ(lower(tableOf("0041;" + name.substr(2) + ";0061;\n"), 'A'), 0x61U);
    EXPECT_EQ(lower(tableOf("0041;" + name.substr(3) + ";0061;\n"), 'A'), 0x61U);
    EXPECT_EQ(lower(tableOf("0041;" + name.substr(1) + ";0061;"), 'A'), 0x61U);
    EXPECT_EQ(lower(tableOf("0041;" + name + ";0061;"), 'A'), 0U);
    const CaseTable table = tableOf(std::string(1'023, 'x') + std::string(capitalA));
    EXPECT_EQ(lower(table, 'A'), 0x61U);
}

TEST(CaseTable, LeavesOutAFirstLineWithAByteOrderMark) {
    const CaseTable table = tableOf("\xEF\xBB\xBF" + std::string(capitalA) + "0042;0062;\n");
    EXPECT_EQ(lower(table, 'A'), 0U);
    EXPECT_EQ(lower(table, 'B'), 0x62U);
}

TEST(CaseTable, HidesTheRestOfALineBehindANul) {
    const CaseTable table = tableOf("0041;\0;0061;\n0042;0062;\xFF\xC0\n"sv);
    EXPECT_EQ(lower(table, 'A'), 0x41U);
    EXPECT_EQ(lower(table, 'B'), 0x62U);
}

TEST(CaseTable, HasAllCapitalLettersOfTheUnicodeCharacterDatabase) {
    const std::string path = ORBEL_TEST_DATA "/CapitalUnicodeData.txt";
    std::ifstream file(path);
    ASSERT_TRUE(file.is_open());
    std::map<unsigned long, unsigned long> lowers, uppers;
    int lines = 0;
    for (std::string line; std::getline(file, line); ++lines) {
        std::istringstream fields(line);
        std::string code, field;
        std::getline(fields, code, ';');
        for (int index = 1; index <= 13; ++index)
            std::getline(fields, field, ';');
        const unsigned long capital = std::strtoul(code.c_str(), nullptr, 16);
        const unsigned long small = std::strtoul(field.c_str(), nullptr, 16);
        ASSERT_NE(small, 0U) << line;
        if (capital < 0x10000 && small < 0x10000) {
            lowers.emplace(capital, small);
            uppers.emplace(small, capital);
        }
    }
    EXPECT_EQ(lines, 1'433);
    const CaseTable table(path.c_str());
    for (unsigned long character = 0; character < 0x10000; ++character) {
        ASSERT_EQ(lower(table, character), lowers.count(character) != 0 ? lowers[character] : 0) << character;
        ASSERT_EQ(upper(table, character), uppers.count(character) != 0 ? uppers[character] : 0) << character;
    }
    EXPECT_EQ(lower(table, 0x0130), 0x69U);
    EXPECT_EQ(lower(table, 0x1E9E), 0xDFU);
    EXPECT_EQ(upper(table, 0xE4), 0xC4U);
}

TEST(CaseTable, ReadsMillionsOfBytes) {
    std::string lines;
    for (int line = 0; line < 50'000; ++line)
        lines += "0041;LATIN CAPITAL LETTER A;0061;\n";
    // One line of three megabytes.
    lines += std::string(3'000'000, 'x') + "\n0042;0062;\n";
    const CaseTable table = tableOf(lines);
    EXPECT_EQ(countOf(table), 4);
    EXPECT_EQ(lower(table, 'B'), 0x62U);
}
