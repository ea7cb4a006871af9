#include <support/Environment.h>
#include <support/Tool.h>
#include <support/WorkingFolder.h>

#include <gtest/gtest.h>

namespace {

class RunVerb : public testing::Test {
protected:
    RunVerb() { clearTypeVariables(); }

    const WorkingFolder folder;
};

/// The types and commands that docs/texts.md shows.
constexpr const char* typesOfTexts = "Point = {string x=0; string y=0;};\n"
                                     "# a label with a position\n"
                                     "Label = {string text=Hello; Point pos; string tags[4]=none; Point corners[2];};\n"
                                     "Label = {string colour=white;};\n";

constexpr const char* commandsOfTexts = "caption/text = Hello, world; caption/tags[0-1] = red,green; points[1]/x = 7\n"
                                        "caption = {text = Hello; pos = {x = 1; y = 2}}\n"
                                        "points[0-1] = {{x = 1},{x = 2}}\n"
                                        "points[0]/x = \"\"1,5\"\"\n"
                                        "lights/*/on = 1\n";

constexpr const char* treeOfTexts = "create Label:caption\n"
                                    "create Point[2]:points\n"
                                    "create node:lights/node:left/string:on\n"
                                    "create lights/node:right/string:on\n";

} // namespace

TEST_F(RunVerb, RunsTheCommandsOfThePage) {
    folder.write("types.qx", typesOfTexts);
    folder.write("tree.txt", treeOfTexts);
    folder.write("commands.txt", commandsOfTexts);
    const ToolRun run = runTool({"run", "tree.txt", "commands.txt", "--types", ".", "--dump", ""});
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, "Orbel ={\n"
                          "\tcaption ={\n"
                          "\t\tcolour=white;\n"
                          "\t\tcorners[0-1]={\n"
                          "\t\t\t{\n"
                          "\t\t\t\tx=0;\n"
                          "\t\t\t\ty=0;\n"
                          "\t\t\t},\n"
                          "\t\t\t{\n"
                          "\t\t\t\tx=0;\n"
                          "\t\t\t\ty=0;\n"
                          "\t\t\t}\n"
                          "\t\t};\n"
                          "\n"
                          "\t\tpos ={\n"
                          "\t\t\tx=1;\n"
                          "\t\t\ty=2;\n"
                          "\t\t}\n"
                          "\t\ttags[0-3]=red,green,none,none;\n"
                          "\t\ttext=Hello;\n"
                          "\t}\n"
                          "\tlights ={\n"
                          "\t\tleft ={\n"
                          "\t\t\ton=1;\n"
                          "\t\t}\n"
                          "\t\tright ={\n"
                          "\t\t\ton=1;\n"
                          "\t\t}\n"
                          "\t}\n"
                          "\tpoints[0-1]={\n"
                          "\t\t{\n"
                          "\t\t\tx=1,5;\n"
                          "\t\t\ty=0;\n"
                          "\t\t},\n"
                          "\t\t{\n"
                          "\t\t\tx=2;\n"
                          "\t\t\ty=0;\n"
                          "\t\t}\n"
                          "\t};\n"
                          "\n"
                          "}\n");
}

TEST_F(RunVerb, RunsCopiesAndLinks) {
    const ToolRun run = runTool({"run", "-", "--dump", "list;headline"},
                                "create node:list/string:a\ncreate list/string:b\nlist/a = 5\nC list/b = list/a\n"
                                "create node:headline/string:high\nL headline/high = list/b\nlist/b = 6\n");
    EXPECT_EQ(run.output, "list ={\n\ta=5;\n\tb=6;\n}\nheadline ={\n\thigh=6;\n}\n");
    EXPECT_EQ(run.exitCode, 0);
}

TEST_F(RunVerb, PrintsNothingUnlessItIsAsked) {
    const ToolRun run = runTool({"run", "-"}, "string:a = 1\n");
    EXPECT_EQ(run.output + run.errors, "");
    EXPECT_EQ(run.exitCode, 0);
}

TEST_F(RunVerb, PrintsJson) {
    folder.write("types.qx", typesOfTexts);
    const ToolRun run = runTool({"run", "-", "--types", "types.qx", "--json", "--dump", "caption;points[1]"},
                                "create Label:caption\ncreate Point[2]:points\ncaption/text = \xc3\xa4\"\n");
    EXPECT_EQ(run.output, "{\n"
                          "  \"caption/colour\": \"white\",\n"
                          "  \"caption/corners[0]/x\": \"0\",\n"
                          "  \"caption/corners[0]/y\": \"0\",\n"
                          "  \"caption/corners[1]/x\": \"0\",\n"
                          "  \"caption/corners[1]/y\": \"0\",\n"
                          "  \"caption/pos/x\": \"0\",\n"
                          "  \"caption/pos/y\": \"0\",\n"
                          "  \"caption/tags\": [\n"
                          "    \"none\",\n"
                          "    \"none\",\n"
                          "    \"none\",\n"
                          "    \"none\"\n"
                          "  ],\n"
                          "  \"caption/text\": \"\xc3\xa4\\\"\",\n"
                          "  \"points[1]/x\": \"0\",\n"
                          "  \"points[1]/y\": \"0\"\n"
                          "}\n");
}

TEST_F(RunVerb, PrintsTheWholeTreeAsJsonWithoutPaths) {
    EXPECT_EQ(runTool({"run", "-", "--json"}, "string:a = 1\n").output, "{\n  \"a\": \"1\"\n}\n");
    EXPECT_EQ(runTool({"run", "-", "--json"}).output, "{}\n");
}

TEST_F(RunVerb, TellsWhichCommandHasNoEffect) {
    folder.write("board.txt", "string:title = a\n\ntitel = b\n");
    const ToolRun run = runTool({"run", "board.txt", "--dump", "title;titel"});
    EXPECT_EQ(run.errors, "board.txt:3: nothing at titel; did you mean title?\n"
                          "--dump: nothing at titel; did you mean title?\n");
    EXPECT_EQ(run.output, "title=a;\n");
    EXPECT_EQ(run.exitCode, 1);
}

TEST_F(RunVerb, TellsWhatItCannotRead) {
    const ToolRun run = runTool({"run", "nothing.txt"});
    EXPECT_EQ(run.errors, "orbel run: cannot read nothing.txt\n");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(runTool({"run", "-", "--types", "nothing"}).errors, "orbel run: cannot read types from nothing\n");
}

TEST_F(RunVerb, KeepsMessagesAboutTypesOutOfTheResult) {
    folder.write("types.qx", "T = {number n; string x;};\n");
    const ToolRun run = runTool({"run", "-", "--types", "types.qx", "--json"});
    EXPECT_EQ(run.output, "{}\n");
    EXPECT_NE(run.errors.find("number n"), std::string::npos);
}
