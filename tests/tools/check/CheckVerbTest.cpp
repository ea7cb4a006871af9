#include <tools/CommandLine.h>
#include <tools/check/CheckRun.h>
#include <tools/check/FindingWriters.h>

#include <support/Console.h>
#include <support/Environment.h>
#include <support/TemporaryFolder.h>
#include <support/WorkingFolder.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <iostream>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Json = nlohmann::json;

/// What a run of the program prints, and its exit code.
class Checked {
public:
    explicit Checked(std::vector<std::string> arguments) {
        const Variable noColours("NO_COLOR", "1");
        std::ostringstream errors;
        std::streambuf* const before = std::cerr.rdbuf(errors.rdbuf());
        std::vector<const char*> list{"orbel", "check"};
        for (const std::string& argument : arguments)
            list.push_back(argument.c_str());
        Console console;
        exitCode = runCommandLine(static_cast<int>(list.size()), list.data());
        std::cerr.rdbuf(before);
        output = console.takeOutput();
        error = errors.str();
    }

    int exitCode;
    std::string output;
    std::string error;
};

constexpr std::string_view brokenSettings = "MultOrbel=1\nMultiOrbel=2\n";

} // namespace

TEST(CheckVerb, TellsPlaceMessageRuleAndRemedy) {
    const WorkingFolder folder;
    folder.write("Orbel.ini", brokenSettings);
    const Checked run({"."});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.error, "");
    EXPECT_EQ(run.output,
              "Orbel.ini:1:1: error: the setting \"MultOrbel\" is unknown and ignored; did you mean \"MultiOrbel\"? "
              "[settings.unknown-key]\n"
              "    remedy: Correct the key, or begin the line with \"#\".\n"
              "Orbel.ini:2:12: warning: \"MultiOrbel\" is 2, which counts as 0: one tree for all scenes "
              "[settings.multi-orbel-value]\n"
              "    remedy: Write 1 for a tree for each scene, else 0.\n"
              "2 findings in 1 file: 1 error, 1 warning\n");
}

TEST(CheckVerb, EndsWithZeroWithoutFindings) {
    const WorkingFolder folder;
    folder.write("types.qx", "Point = {string x;};\n");
    const Checked run({"types.qx"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, "no findings in 1 file\n");
}

TEST(CheckVerb, TellsWhichTypeWasMeantAndWhereItIsDeclared) {
    const WorkingFolder folder;
    folder.write("types.qx", "Label = {\n  Pont a;\n  Point b;\n};\nPoint = {string x;};\n");
    EXPECT_EQ(Checked({"types.qx"}).output,
              "types.qx:1:1: warning: the type \"Label\" has no fields [types.type-without-fields]\n"
              "    remedy: Give it fields, or remove it.\n"
              "types.qx:2:3: error: the type \"Pont\" is declared nowhere; the field is ignored; did you mean "
              "\"Point\"? [types.unknown-field-type]\n"
              "    remedy: Declare the type above, or use \"string\".\n"
              "types.qx:3:3: error: the type \"Point\" is declared later, in line 5; the field is ignored "
              "[types.field-type-declared-later]\n"
              "    remedy: Declare the type above, or in a file that is read before this one.\n"
              "3 findings in 1 file: 2 errors, 1 warning\n");
}

TEST(CheckVerb, ReadsTypeFilesInTheOrderGiven) {
    const WorkingFolder folder;
    folder.write("a.qx", "Label = {Point place;};\n");
    folder.write("b.qx", "Point = {string x;};\n");
    EXPECT_EQ(Checked({"b.qx", "a.qx"}).exitCode, 0);
    const Checked run({"a.qx", "b.qx"});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_NE(run.output.find("the type \"Point\" is declared later, in b.qx:1;"), std::string::npos) << run.output;
}

TEST(CheckVerb, NamesTheLineThatCounts) {
    const WorkingFolder folder;
    folder.write("QX_ConvTables_a.csv", "__TABLE__,Sky\nsun,sun.png\nsun,star.png\n");
    EXPECT_EQ(
        Checked({"QX_ConvTables_a.csv"}).output,
        "QX_ConvTables_a.csv:3:1: error: the key \"sun\" is in the table \"Sky\" already, in line 2, which counts "
        "[tables.duplicate-key]\n"
        "    remedy: Remove one of the rows, or change its key.\n"
        "1 finding in 1 file: 1 error\n");
}

TEST(CheckVerb, TellsWhatCannotBeReadInOneLine) {
    const WorkingFolder folder;
    folder.makeFolder("empty");
    folder.write("notes.csv", "");
    const std::vector<std::pair<std::vector<std::string>, std::string>> runs = {
        {{}, "orbel: name a folder or files to check (orbel check --help)\n"},
        {{"missing.qx"}, "orbel: cannot open missing.qx\n"},
        {{"missing.ini"}, "orbel: cannot open missing.ini\n"},
        {{"QX_ConvTables_missing.csv"}, "orbel: cannot open QX_ConvTables_missing.csv\n"},
        {{"QX_PreSets.csv"}, "orbel: cannot open QX_PreSets.csv\n"},
        {{"missing.txt"}, "orbel: cannot open missing.txt\n"},
        {{"notes.csv"},
         "orbel: cannot tell from its name what notes.csv is: expected *.ini, *.txt, *.qx, QX_ConvTables*.csv or "
         "QX_PreSets*.csv\n"},
        {{"empty"}, "orbel: empty holds no file that the library reads\n"},
        {{"empty", "notes.csv"}, "orbel: empty is a folder: check it alone\n"},
    };
    for (const auto& [arguments, error] : runs) {
        const Checked run(arguments);
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(run.error, error);
    }
    EXPECT_EQ(Checked({"--format", "xml", "empty"}).exitCode, 2);
}

TEST(CheckVerb, ListsItsRules) {
    const Checked run({"--rules"});
    EXPECT_EQ(run.exitCode, 0);
    for (const Rule& rule : allRules)
        EXPECT_NE(run.output.find(std::string(rule.id) + " (" + std::string(nameOf(rule.severity)) + ")\n    " +
                                  std::string(rule.text) + "\n    remedy: " + std::string(rule.remedy) + '\n'),
                  std::string::npos)
            << rule.id;
}

TEST(CheckVerb, ShowsExamplesInItsHelp) {
    const Checked run({"--help"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_NE(run.output.find("orbel check shows --format sarif"), std::string::npos);
}

TEST(CheckVerb, WritesTheSameFindingsInAllFormats) {
    const std::filesystem::path broken = std::filesystem::path(ORBEL_TEST_DATA) / "broken";
    for (const auto& folder : std::filesystem::directory_iterator(broken))
        for (const auto& entry : std::filesystem::directory_iterator(folder)) {
            if (entry.path().filename() == "expected.txt")
                continue;
            const std::string path = entry.path().string();
            const Checked text({path});
            const Checked json({path, "--format", "json"});
            const Checked sarif({path, "--format", "sarif"});
            EXPECT_EQ(json.exitCode, 1);
            EXPECT_EQ(sarif.exitCode, 1);
            const Json findings = Json::parse(json.output).at("findings");
            const Json run = Json::parse(sarif.output).at("runs").at(0);
            const Json& results = run.at("results");
            ASSERT_EQ(findings.size(), results.size()) << path;
            for (std::size_t index = 0; index < findings.size(); ++index) {
                const Json& finding = findings[index];
                const Json& result = results[index];
                const Json& region = result.at("locations").at(0).at("physicalLocation").at("region");
                EXPECT_EQ(result.at("ruleId"), finding.at("rule"));
                EXPECT_EQ(result.at("level"), finding.at("severity"));
                EXPECT_EQ(region.at("startLine"), finding.at("line"));
                EXPECT_EQ(region.at("startColumn"), finding.at("column"));
                EXPECT_EQ(region.at("endLine"), finding.at("endLine"));
                EXPECT_EQ(region.at("endColumn"), finding.at("endColumn"));
                const Json& rule =
                    run.at("tool").at("driver").at("rules").at(result.at("ruleIndex").get<std::size_t>());
                EXPECT_EQ(rule.at("id"), finding.at("rule"));
                EXPECT_NE(text.output.find(finding.at("message").get<std::string>()), std::string::npos) << path;
            }
        }
}

TEST(CheckVerb, WritesSarifOfTheRightShape) {
    const WorkingFolder folder;
    folder.write("a b.ini", brokenSettings);
    const Json sarif = Json::parse(Checked({"a b.ini", "--format", "sarif"}).output);
    EXPECT_EQ(sarif.at("version"), "2.1.0");
    EXPECT_EQ(sarif.at("$schema"), "https://json.schemastore.org/sarif-2.1.0.json");
    const Json run = sarif.at("runs").at(0);
    EXPECT_EQ(run.at("columnKind"), "unicodeCodePoints");
    EXPECT_EQ(run.at("tool").at("driver").at("name"), "orbel check");
    EXPECT_EQ(run.at("tool").at("driver").at("version"), "2.13.6.1473");
    EXPECT_EQ(run.at("results").at(0).at("locations").at(0).at("physicalLocation").at("artifactLocation").at("uri"),
              "a%20b.ini");
    EXPECT_EQ(
        run.at("results").at(0).at("message").at("text"),
        "the setting \"MultOrbel\" is unknown and ignored; did you mean \"MultiOrbel\"? Correct the key, or begin "
        "the line with \"#\".");
}

TEST(CheckVerb, TellsInJsonWhatHasNoEffect) {
    const WorkingFolder folder;
    folder.write("Orbel.ini", brokenSettings);
    const Json json = Json::parse(Checked({"Orbel.ini", "--format", "json"}).output);
    EXPECT_EQ(json.at("files"), Json::array({"Orbel.ini"}));
    EXPECT_EQ(json.at("findings").at(0).at("effect"), "none");
    EXPECT_EQ(json.at("findings").at(1).at("effect"), "other");
}

TEST(CheckVerb, WritesValidJsonWhateverTheFileHolds) {
    const WorkingFolder folder;
    folder.write("Orbel.ini", "\xFF\xFE\x01 key\x80=1\n");
    EXPECT_EQ(Json::parse(Checked({"Orbel.ini", "--format", "json"}).output).at("findings").size(), 1U);
    EXPECT_TRUE(Json::accept(Checked({"Orbel.ini", "--format", "sarif"}).output));
}

TEST(FindingWriters, ColourSeveritiesOnRequest) {
    const WorkingFolder folder;
    folder.write("Orbel.ini", "[Orbel]\n");
    std::ostringstream text;
    writeText(text, check({"Orbel.ini"}), Colours::on);
    EXPECT_EQ(text.str(), "\x1B[1mOrbel.ini:1:1: \x1B[1;36mnote: \x1B[0m\"[Orbel]\" means nothing [settings.heading]\n"
                          "    remedy: Remove it, or begin the line with \"#\".\n"
                          "1 finding in 1 file: 1 note\n");
}
