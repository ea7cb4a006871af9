#include <orbel/tables/AllPluginPreSets.h>
#include <orbel/tables/CaseTable.h>
#include <orbel/tables/ConversionTables.h>

#include <support/Console.h>
#include <support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

using tables::LineUse;

namespace {

struct Heard {
    LineUse use;
    std::string what;

    bool operator==(const Heard&) const = default;
};

class Report : public tables::TableListener {
public:
    void onFile(const std::string& path) override { files.push_back(path); }
    void onLine(std::string_view line, LineUse use, std::string_view what) override {
        text += line;
        heard.push_back({use, std::string(what)});
    }

    std::vector<std::string> files;
    std::string text;
    std::vector<Heard> heard;
};

using Lines = std::vector<Heard>;

/// What is heard of a file; each line must come once, and nothing be printed.
template <class Read>
Lines heardOf(std::string_view bytes, Read read) {
    const TemporaryFolder folder;
    const std::string path = folder.write("QX_ConvTables.csv", bytes);
    Console console;
    Report report;
    read(path, report);
    EXPECT_EQ(console.takeOutput(), "");
    EXPECT_EQ(report.files, std::vector<std::string>{path});
    EXPECT_EQ(report.text, bytes);
    return report.heard;
}

Lines heardOfTables(std::string_view bytes) {
    return heardOf(bytes, [](const std::string& path, Report& report) {
        ConversionTables tables;
        tables.readFile(path, report);
    });
}

Lines heardOfPreSets(std::string_view bytes) {
    return heardOf(bytes, [](const std::string& path, Report& report) {
        AllPluginPreSets presets;
        presets.readFile(path, report);
    });
}

Lines heardOfCases(std::string_view bytes) {
    return heardOf(bytes, [](const std::string& path, Report& report) { CaseTable(path.c_str(), &report); });
}

} // namespace

TEST(TableListener, HearsTheVersion) {
    EXPECT_EQ(heardOfTables("__VERSION__, 1.2 \n"), (Lines{{LineUse::version, "1.2"}}));
    EXPECT_EQ(heardOfTables("__TABLE__,A\n__VERSION__,1\n"),
              (Lines{{LineUse::sectionNew, "A"}, {LineUse::row, "__VERSION__"}}));
}

TEST(TableListener, HearsNothingBehindAVersionLineWithoutAVersion) {
    const std::string line = "__VERSION__" + std::string(1'012, ',');
    const TemporaryFolder folder;
    Report report;
    ConversionTables tables;
    tables.readFile(folder.write("QX_ConvTables.csv", line + "__TABLE__,A\n"), report);
    EXPECT_EQ(report.heard, (Lines{{LineUse::abandoned, ""}}));
    EXPECT_TRUE(tables.all().empty());
}

TEST(TableListener, HearsSections) {
    EXPECT_EQ(heardOfTables("__TABLE__,A\n__TABLE__, A \n__TABLE__,B\n__TABLE__,A\n__TABLE__,\n"),
              (Lines{{LineUse::sectionNew, "A"},
                     {LineUse::sectionCurrent, "A"},
                     {LineUse::sectionNew, "B"},
                     {LineUse::sectionAgain, "A"},
                     {LineUse::sectionWithoutName, ""}}));
}

TEST(TableListener, HearsDelimiters) {
    EXPECT_EQ(heardOfTables("__DELIMITER__,;|\n__DELIMITER__,;|\n__DELIMITER__\n__DELIMITER__\n"),
              (Lines{{LineUse::delimiters, ";|\n"},
                     {LineUse::delimitersUnchanged, ";|\n"},
                     {LineUse::delimiters, ",|\n"},
                     {LineUse::delimitersUnchanged, ",|\n"}}));
}

TEST(TableListener, HearsRows) {
    EXPECT_EQ(heardOfTables("a,1\n__TABLE__,A\n a ,1\na,2\nb\n,c,3\n\n"), (Lines{{LineUse::rowOutside, ""},
                                                                                 {LineUse::sectionNew, "A"},
                                                                                 {LineUse::row, "a"},
                                                                                 {LineUse::rowAgain, "a"},
                                                                                 {LineUse::rowTooShort, ""},
                                                                                 {LineUse::skipped, ""},
                                                                                 {LineUse::rowTooShort, ""}}));
}

TEST(TableListener, HearsPresets) {
    EXPECT_EQ(heardOfPreSets("Name,x\n__PLUGIN__,Clock\nx,Name\n1,Short\n2\n3,Short\n\n__PLUGIN__,Clock\n"),
              (Lines{{LineUse::rowOutside, ""},
                     {LineUse::sectionNew, "Clock"},
                     {LineUse::header, ""},
                     {LineUse::row, "Short"},
                     {LineUse::tooShort, ""},
                     {LineUse::row, "Short"},
                     {LineUse::tooShort, ""},
                     {LineUse::sectionCurrent, "Clock"}}));
}

TEST(TableListener, HearsPresetsThatAreDropped) {
    EXPECT_EQ(heardOfPreSets("__PLUGIN__,A\nx,Name\nshort\n__PLUGIN__,B\nx,y\n1,2\n__PLUGIN__,A\n__PLUGIN__,\n"),
              (Lines{{LineUse::sectionNew, "A"},
                     {LineUse::header, ""},
                     {LineUse::rowTooShort, ""},
                     {LineUse::sectionNew, "B"},
                     {LineUse::headerWithoutName, ""},
                     {LineUse::rowWithoutHeader, ""},
                     {LineUse::sectionAgain, "A"},
                     {LineUse::sectionWithoutName, ""}}));
}

TEST(TableListener, HearsCasePairs) {
    EXPECT_EQ(heardOfCases("# A\n0041;0061;\n0041;0061;\n0041;0062;\n0042\n0043;;\n"),
              (Lines{{LineUse::skipped, ""},
                     {LineUse::pair, ""},
                     {LineUse::pairAgain, ""},
                     {LineUse::pairHalf, ""},
                     {LineUse::pairTooShort, ""},
                     {LineUse::pairWithoutCode, ""}}));
}

TEST(TableListener, HearsPiecesOfLongLines) {
    const auto heard = heardOfTables("__TABLE__,A\n" + std::string(2'000, 'x') + ",1\n");
    EXPECT_EQ(heard,
              (Lines{{LineUse::sectionNew, "A"}, {LineUse::rowTooShort, ""}, {LineUse::row, std::string(977, 'x')}}));
}
