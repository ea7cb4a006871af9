#include <support/Environment.h>
#include <support/Tool.h>
#include <support/WorkingFolder.h>

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

namespace {

class TypesVerb : public testing::Test {
protected:
    TypesVerb() {
        clearTypeVariables();
        folder.write("types.qx", "//! A place.\n"
                                 "Point = {string x=0; string y=0;};\n"
                                 "//! A text with a place.\n"
                                 "Label = {\n"
                                 "    string text=Hello; //! what it says\n"
                                 "    Point pos;\n"
                                 "    string tags[4]=none;\n"
                                 "};\n");
    }

    const WorkingFolder folder;
};

std::string wholeFile(const std::string& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

} // namespace

TEST_F(TypesVerb, PrintsTextAsTheLibraryDoes) {
    const ToolRun run = runTool({"types", "types.qx"});
    EXPECT_EQ(run.output, "Type Label {\n"
                          "\tValue text;\n"
                          "\tPoint pos{\n"
                          "\t\tValue x;\n"
                          "\t\tValue y;\n"
                          "\t};\n"
                          "\tArray<Value> tags[4];\n"
                          "};\n"
                          "Type Point {\n"
                          "\tValue x;\n"
                          "\tValue y;\n"
                          "};\n");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(run.exitCode, 0);
}

TEST_F(TypesVerb, PrintsOneType) {
    EXPECT_EQ(runTool({"types", "types.qx", "--type", "Point"}).output, "Type Point {\n\tValue x;\n\tValue y;\n};\n");
    const ToolRun run = runTool({"types", "types.qx", "--type", "Piont"});
    EXPECT_EQ(run.errors, "orbel types: no type Piont; did you mean Point?\n");
    EXPECT_EQ(run.exitCode, 2);
}

TEST_F(TypesVerb, PrintsAPage) {
    EXPECT_EQ(runTool({"types", ".", "--format", "markdown"}).output, "# Types\n"
                                                                      "\n"
                                                                      "| Type | What it is |\n"
                                                                      "|---|---|\n"
                                                                      "| [Label](#label) | A text with a place. |\n"
                                                                      "| [Point](#point) | A place. |\n"
                                                                      "\n"
                                                                      "## Label\n"
                                                                      "\n"
                                                                      "A text with a place.\n"
                                                                      "\n"
                                                                      "| Field | Type | Default | Meaning |\n"
                                                                      "|---|---|---|---|\n"
                                                                      "| `text` | text | `Hello` | what it says |\n"
                                                                      "| `pos` | [Point](#point) | | |\n"
                                                                      "| `tags[4]` | text | `none` | |\n"
                                                                      "\n"
                                                                      "## Point\n"
                                                                      "\n"
                                                                      "A place.\n"
                                                                      "\n"
                                                                      "Part of: [Label](#label).\n"
                                                                      "\n"
                                                                      "| Field | Type | Default | Meaning |\n"
                                                                      "|---|---|---|---|\n"
                                                                      "| `x` | text | `0` | |\n"
                                                                      "| `y` | text | `0` | |\n");
}

TEST_F(TypesVerb, KeepsTablesOfPagesWhole) {
    folder.write("odd.qx", "//! a|b\nT = {string x=a|b`c; string y=`;};\n");
    const std::string page = runTool({"types", "odd.qx", "--format", "markdown"}).output;
    EXPECT_NE(page.find("| [T](#t) | a\\|b |\n"), std::string::npos) << page;
    EXPECT_NE(page.find("| `x` | text | ``a\\|b`c`` | |\n"), std::string::npos) << page;
    EXPECT_NE(page.find("| `y` | text | `` ` `` | |\n"), std::string::npos) << page;
}

TEST_F(TypesVerb, PrintsJson) {
    EXPECT_EQ(runTool({"types", "types.qx", "--format", "json", "--type", "Point"}).output,
              "{\n"
              "  \"types\": [\n"
              "    {\n"
              "      \"name\": \"Point\",\n"
              "      \"description\": \"A place.\",\n"
              "      \"fields\": [\n"
              "        {\n"
              "          \"name\": \"x\",\n"
              "          \"type\": \"string\",\n"
              "          \"count\": 1,\n"
              "          \"default\": \"0\",\n"
              "          \"description\": \"\"\n"
              "        },\n"
              "        {\n"
              "          \"name\": \"y\",\n"
              "          \"type\": \"string\",\n"
              "          \"count\": 1,\n"
              "          \"default\": \"0\",\n"
              "          \"description\": \"\"\n"
              "        }\n"
              "      ]\n"
              "    }\n"
              "  ]\n"
              "}\n");
}

TEST_F(TypesVerb, PrintsAGraph) {
    EXPECT_EQ(runTool({"types", "types.qx", "--format", "dot"}).output,
              "digraph types {\n"
              "    rankdir=LR;\n"
              "    node [shape=record, fontname=\"sans-serif\"];\n"
              "    \"Label\" [label=\"{Label|text\\lpos\\ltags[4]\\l}\"];\n"
              "    \"Point\" [label=\"{Point|x\\ly\\l}\"];\n"
              "    \"Label\" -> \"Point\" [label=\"pos\"];\n"
              "}\n");
}

TEST_F(TypesVerb, LooksWhereTheEnvironmentSays) {
    const std::string place = folder.makeFolder("shows");
    folder.write("shows/city.qx", "City = {string name;};\n");
    EXPECT_EQ(runTool({"types", "--type", "Point"}).exitCode, 0);
    const Variable variable("QX_OBJECTS_DIR", place);
    EXPECT_EQ(runTool({"types"}).output, "Type City {\n\tValue name;\n};\n");
}

TEST_F(TypesVerb, ReadsSeveralFilesAsOne) {
    folder.write("line.qx", "Line = {Point from;};\n");
    EXPECT_EQ(runTool({"types", "types.qx", "line.qx", "--type", "Line"}).output,
              "Type Line {\n\tPoint from{\n\t\tValue x;\n\t\tValue y;\n\t};\n};\n");
}

TEST_F(TypesVerb, TellsOfFieldsThatAreLeftOut) {
    folder.write("bad.qx", "T = {\n    string x;\n    number n;\n};\n");
    const ToolRun run = runTool({"types", "bad.qx"});
    EXPECT_EQ(run.output, "Type T {\n\tValue x;\n};\n");
    EXPECT_EQ(run.errors, "orbel types: bad.qx:3: field left out: number n\n");
    EXPECT_EQ(run.exitCode, 1);
}

TEST_F(TypesVerb, TellsWhatItCannotRead) {
    const ToolRun run = runTool({"types", "nothing.qx"});
    EXPECT_EQ(run.errors, "orbel types: cannot read nothing.qx\n");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(runTool({"types", "types.qx", "--format", "paper"}).exitCode, 2);
}

TEST(TypesOfTheWeather, ArePrintedAsTheirPageHasThem) {
    const std::string weather = ORBEL_WEATHER;
    EXPECT_EQ(runTool({"types", weather, "--format", "markdown"}).output, wholeFile(weather + "/TYPES.md"));
}
