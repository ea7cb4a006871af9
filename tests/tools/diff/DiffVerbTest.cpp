#include <support/Environment.h>
#include <support/Tool.h>
#include <support/WorkingFolder.h>

#include <gtest/gtest.h>

#include <string>

namespace {

class DiffVerb : public testing::Test {
protected:
    DiffVerb() {
        clearTypeVariables();
        for (const char* name : {"old", "new"})
            folder.makeFolder(name);
    }

    const WorkingFolder folder;
};

} // namespace

TEST_F(DiffVerb, ComparesDumps) {
    folder.write("old.dump", "Orbel ={\n\ta=1;\n\tb=2;\n\ttags[0-1]=x,y;\n}\n");
    folder.write("new.dump", "Orbel ={\n\tb=3;\n\tc=;\n\ttags[0-1]=x,z;\n}\n");
    const ToolRun run = runTool({"diff", "old.dump", "new.dump"});
    EXPECT_EQ(run.output, "- a = 1\n~ b: 2 -> 3\n+ c =\n~ tags[1]: y -> z\n");
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(runTool({"diff", "old.dump", "old.dump"}).exitCode, 0);
}

TEST_F(DiffVerb, ComparesDumpsWithJson) {
    const std::string commands = "node:scene/string:title = "
                                 "a\"\nnode:scene/string:x = 5\n";
    folder.write("tree.dump", runTool({"run", "-", "--dump", ""}, commands).output);
    folder.write("tree.json", runTool({"run", "-", "--json"}, commands).output);
    const ToolRun run = runTool({"diff", "tree.dump", "tree.json"});
    EXPECT_EQ(run.output + run.errors, "");
    EXPECT_EQ(run.exitCode, 0);
}

TEST_F(DiffVerb, KeepsEachDifferenceInALine) {
    folder.write("old.json", R"({"a": "x\ny"})");
    folder.write("new.json", R"({"a": "x\r"})");
    EXPECT_EQ(runTool({"diff", "old.json", "new.json"}).output, "~ a: x\\ny -> x\\r\n");
}

TEST_F(DiffVerb, PrintsJson) {
    folder.write("old.dump", "a=1;\nb=2;\n");
    folder.write("new.dump", "b=3;\nc=4;\n");
    EXPECT_EQ(runTool({"diff", "old.dump", "new.dump", "--json"}).output, "{\n"
                                                                          "  \"removed\": {\n"
                                                                          "    \"a\": \"1\"\n"
                                                                          "  },\n"
                                                                          "  \"added\": {\n"
                                                                          "    \"c\": \"4\"\n"
                                                                          "  },\n"
                                                                          "  \"changed\": {\n"
                                                                          "    \"b\": {\n"
                                                                          "      \"before\": \"2\",\n"
                                                                          "      \"after\": \"3\"\n"
                                                                          "    }\n"
                                                                          "  }\n"
                                                                          "}\n");
}

TEST_F(DiffVerb, ComparesSettingsWithTheirDefaults) {
    folder.write("old/Orbel.ini", "# nothing\nRefreshAlways = 1\nMultiOrbel=1\nNof_Extra_Types = 3\n");
    folder.write("new/Orbel.ini", "multiorbel = 0\nCheckImageIfExists=0\n");
    EXPECT_EQ(runTool({"diff", "old", "new"}).output, "~ settings/CheckImageIfExists: 1 -> 0\n"
                                                      "~ settings/MultiOrbel: 1 -> 0\n"
                                                      "~ settings/Nof_Extra_Types: 3 -> 0\n");
}

TEST_F(DiffVerb, ComparesTablesByKey) {
    folder.write("old/QX_ConvTables_a.csv", "__TABLE__,Sky\n01,sun\n02,rain\n");
    folder.write("new/QX_ConvTables_a.csv", "__VERSION__,2\n__TABLE__,Sky\n02,rain\n");
    folder.write("new/QX_ConvTables_b.csv", "__TABLE__,Sky\n__DELIMITER__,;\n01;Sun\n01;never\n");
    const ToolRun run = runTool({"diff", "old", "new"});
    EXPECT_EQ(run.output, "~ tables/Sky/01: sun -> Sun\n");
    EXPECT_EQ(run.errors, "");
}

TEST_F(DiffVerb, ComparesPresetsByColumn) {
    folder.write("old/QX_PreSets.csv", "__PLUGIN__,Clock\nName,Format,Colour\nShort,HH:MM,white\nShort,never,\n");
    folder.write("new/QX_PreSets.csv", "__PLUGIN__,Clock\nColour,Name,Format\nwhite,Short,HH\nred,Long,,extra\n");
    EXPECT_EQ(runTool({"diff", "old", "new"}).output, "+ presets/Clock/Long/Colour = red\n"
                                                      "+ presets/Clock/Long/Format =\n"
                                                      "+ presets/Clock/Long/Name = Long\n"
                                                      "+ presets/Clock/Long/field 4 = extra\n"
                                                      "~ presets/Clock/Short/Format: HH:MM -> HH\n");
}

TEST_F(DiffVerb, ComparesLetters) {
    folder.write("old/CapitalUnicodeData.txt", "0041;A;0061;\n");
    folder.write("new/CapitalUnicodeData.txt", "# capitals\n0041;0061;\n00C4;00E4;\n");
    EXPECT_EQ(runTool({"diff", "old", "new"}).output, "+ letters/lower/00C4 = 00E4\n+ letters/upper/00E4 = 00C4\n");
}

TEST_F(DiffVerb, ComparesTypesByField) {
    folder.write("old/a.qx", "Point = {string x=0; string y=0;};\nLabel = {Point pos; string tags[4]=none;};\n");
    folder.write("new/points.qx", "# split\nPoint = {string x=1;};\nPoint = {string y=0; string y=5;};\n");
    folder.write("new/town.qx", "Label = {string tags[5]=none; Point pos;};\nTown = {string name;};\n");
    EXPECT_EQ(runTool({"diff", "old", "new"}).output, "~ types/Label/tags: string[4] = none -> string[5] = none\n"
                                                      "~ types/Point/x: string = 0 -> string = 1\n"
                                                      "+ types/Town =\n"
                                                      "+ types/Town/name = string\n");
}

TEST_F(DiffVerb, FollowsTheConfiguredFolder) {
    folder.makeFolder("old/shows");
    folder.write("old/Orbel.ini", "ConfigurationFolder = shows\n");
    folder.write("old/shows/a.qx", "T = {string x;};\n");
    folder.write("new/a.qx", "T = {string x;};\n");
    EXPECT_EQ(runTool({"diff", "old", "new"}).output, "~ settings/ConfigurationFolder: shows -> .\n");
}

TEST_F(DiffVerb, TellsWhatItCannotRead) {
    folder.write("old.dump", "a=1;\n");
    folder.write("commands.txt", "a=1;\ncreate node:x\n");
    EXPECT_EQ(runTool({"diff", "old.dump", "nothing"}).errors, "orbel diff: cannot read nothing\n");
    EXPECT_EQ(runTool({"diff", "old.dump", "new"}).errors,
              "orbel diff: a folder and a file are not compared: old.dump, new\n");
    const ToolRun run = runTool({"diff", "old.dump", "commands.txt"});
    EXPECT_EQ(run.errors, "orbel diff: commands.txt: line 1 has no end\n");
    EXPECT_EQ(run.exitCode, 2);
}
