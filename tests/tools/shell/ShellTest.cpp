#include <tools/shell/Shell.h>

#include <support/Environment.h>
#include <support/TemporaryFolder.h>
#include <support/Text.h>

#include <orbel/orbel.h>

#include <gtest/gtest.h>

#include <memory>
#include <regex>
#include <sstream>
#include <string>

namespace {

class ShellSession : public testing::Test {
protected:
    ShellSession() {
        clearTypeVariables();
        folder.write("types.qx", "Point = {string x=0; string y=0;};\n"
                                 "Label = {string text=Hello; Point pos; string tags[4]=none; Point corners[2];};\n");
        tree = std::make_unique<LiveTree>(std::vector<std::string>{folder.path("types.qx")});
        shell = std::make_unique<Shell>(*tree, out, [this](const std::string& text) { out << "! " << text << '\n'; });
    }

    /// What a line makes the shell print, complaints behind "! ".
    std::string say(const std::string& line) {
        out.str("");
        shell->run(line);
        return out.str();
    }

    void sayAll(std::initializer_list<const char*> lines) {
        for (const char* line : lines)
            EXPECT_EQ(say(line), "") << line;
    }

    const TemporaryFolder folder;
    std::ostringstream out;
    std::unique_ptr<LiveTree> tree;
    std::unique_ptr<Shell> shell;
};

} // namespace

TEST_F(ShellSession, SetsAndGets) {
    sayAll({"create node:scene/string:title", "scene/title = Hello"});
    EXPECT_EQ(say("get scene/title"), "Hello\n");
    EXPECT_EQ(say("dump scene"), "scene ={\n\ttitle=Hello;\n}\n");
}

TEST_F(ShellSession, PrintsTheWholeTreeWithoutPath) {
    sayAll({"create string:a", "a = 1"});
    EXPECT_EQ(say("dump"), "Orbel ={\n\ta=1;\n}\n");
}

TEST_F(ShellSession, PrintsSeveralItemsWithRanges) {
    sayAll({"create Label:caption", "caption/tags[0-1] = red,green", "create Point[3]:points"});
    EXPECT_EQ(say("dump caption/tags[1-2]; points[2]"),
              "tags[1-2]=green,none;\npoints[2]={\n\t{\n\t\tx=0;\n\t\ty=0;\n\t}\n};\n");
}

TEST_F(ShellSession, StartsEachDumpAtTheLeft) {
    sayAll({"create Point[0]:none", "create string:a"});
    const std::string first = say("dump");
    EXPECT_EQ(say("dump"), first);
}

TEST_F(ShellSession, GetsEachValueInALine) {
    sayAll({"create Label:caption", "caption/tags[0-1] = red,green"});
    EXPECT_EQ(say("get caption/tags"), "red\ngreen\nnone\nnone\n");
    EXPECT_EQ(say("get caption/tags[1]"), "green\n");
    EXPECT_EQ(say("get caption/tags[1-2]"), "green\nnone\n");
    EXPECT_EQ(say("get caption/tags[4]"), "! caption/tags has no value [4]\n");
    EXPECT_EQ(say("get caption"), "! caption is a node; dump shows it\n");
    EXPECT_EQ(say("get caption/tag"), "! nothing at caption/tag; did you mean caption/tags?\n");
}

TEST_F(ShellSession, TellsOfPathsThatAreNotThere) {
    sayAll({"create node:scene/string:title"});
    EXPECT_EQ(say("scene/titel = x"), "! nothing at scene/titel; did you mean scene/title?\n");
    EXPECT_EQ(say("Scene/title = x"), "! nothing at Scene/title; did you mean scene/title?\n");
    EXPECT_EQ(say("elsewhere = x"), "! nothing at elsewhere\n");
    EXPECT_EQ(say("scene/title = y; scene/x = z"), "! nothing at scene/x\n");
    EXPECT_EQ(say("get scene/title"), "y\n");
    EXPECT_EQ(say(std::string(512, 'p') + " = x"), "! a path of 512 characters finds nothing; the longest has 511\n");
}

TEST_F(ShellSession, TellsOfElementsAndValuesThatAreNotThere) {
    sayAll({"create Point[3]:points", "create Label:caption"});
    EXPECT_EQ(say("points[7]/x = 1"), "! nothing at points[7]/x; did you mean points[2]/x?\n");
    EXPECT_EQ(say("points[7] = {{x = 1}}"), "! points has 3 elements, so there is no [7]\n");
    EXPECT_EQ(say("caption/tags[9] = a"), "! caption/tags has 4 values, so there is no [9]\n");
    EXPECT_EQ(say("caption/tags[x] = a"), "! the brackets behind caption/tags hold no number\n");
    EXPECT_EQ(say("caption/tags[1] ="), "! no text for caption/tags[1]\n");
}

TEST_F(ShellSession, TellsOfNodesThatAreGivenAText) {
    sayAll({"create Label:caption", "create Point[2]:points", "create DataHashTable:cities:Point"});
    EXPECT_EQ(say("caption = hello"), "! caption is a node: write {name = value; ...}\n");
    EXPECT_EQ(say("points = hello"), "! points is an array: write {{name = value}, ...}\n");
    EXPECT_EQ(say("points = {hello}"), "! points[0] is a node: write {name = value; ...}\n");
    EXPECT_EQ(say("cities = {{x = 1}}"), "! cities is a hash table: write cities[KEY]\n");
    EXPECT_EQ(say("cities[Oslo] = {{x = 1}}"), "! no entry Oslo in cities\n");
}

TEST_F(ShellSession, LooksIntoBraces) {
    sayAll({"create Label:caption", "create Point[2]:points"});
    EXPECT_EQ(say("caption = {text = Hi; poss = {x = 1}; pos = {z = 1; y = 2}}"),
              "! nothing at caption/poss; did you mean caption/pos?\n! nothing at caption/pos/z\n");
    EXPECT_EQ(say("points[0-1] = {{x = 1},{xx = 2}}"), "! nothing at points[1]/xx; did you mean points[1]/x?\n");
    EXPECT_EQ(say("get caption/pos/y"), "2\n");
}

TEST_F(ShellSession, KnowsTheEntriesOfTables) {
    sayAll({"create DataHashTable:cities:Point"});
    auto* cities = static_cast<DataHashTable*>(tree->root().getField(Text("cities"), 0, 0));
    cities->setObjectType(DataObject::getObjectTypeByName(Text("Point")));
    cities->newObject(Text("Oslo"));
    cities->newObject(Text("New York"));
    sayAll({"cities[Oslo]/x = 5", "cities[New York,Oslo] = {{y = 1},{y = 2}}"});
    EXPECT_EQ(say("cities[Olso]/x = 5"), "! nothing at cities[Olso]/x; did you mean cities[Oslo]/x?\n");
    EXPECT_EQ(say("cities[Olso] = {{x = 5}}"), "! no entry Olso in cities; did you mean Oslo?\n");
    EXPECT_EQ(say("watch cities"), "");
    EXPECT_EQ(say("cities[New York]/x = 7"), "cities[New York]/x = 7\n");
}

TEST_F(ShellSession, CreatesByKindsInCommandsToo) {
    sayAll({"node:scene/string:title = Hello"});
    EXPECT_EQ(say("get scene/title"), "Hello\n");
    EXPECT_EQ(say("Labl:caption/text = x"), "! no type Labl; did you mean Label?\n");
    EXPECT_EQ(say("create Lable:x"), "! no type Lable; did you mean Label?\n");
    EXPECT_EQ(say("create"), "! create what? create node:scene/string:title\n");
}

TEST_F(ShellSession, BroadcastsToChildren) {
    sayAll({"create node:lights/node:a/string:on", "create lights/node:b/string:on", "lights/*/on = 1"});
    EXPECT_EQ(say("get lights/b/on"), "1\n");
    EXPECT_EQ(say("lights/*/off = 1"), "! nothing at lights/*/off\n");
}

TEST_F(ShellSession, Copies) {
    sayAll({"create Label:a", "create Label:b", "a/text = Hi; a/tags[0-1] = x,y",
            "C b/tags[2-3] = a/tags[0-1]; b/text = a/text"});
    EXPECT_EQ(say("dump b/tags;b/text"), "tags[0-3]=none,none,x,y;\ntext=Hi;\n");
    EXPECT_EQ(say("C b = c"), "! nothing at c\n");
    EXPECT_EQ(say("C b = a/text"), "! a/text is a value and b is a node, so nothing is copied\n");
    EXPECT_EQ(say("C b/corners = a"), "! a is a node and b/corners is an array, so nothing is copied\n");
    EXPECT_EQ(say("C b/text"), "! no \"=\" in b/text\n");
    EXPECT_EQ(say("C b/tags[7] = a/tags"), "! b/tags has 4 values, so there is no [7]\n");
    sayAll({"C b/corners[0] = a/corners[1]"});
    EXPECT_EQ(say("C b/corners[5] = a/corners[1]"), "! nothing at b/corners[5]\n");
}

TEST_F(ShellSession, LinksInsteadOfAllLinksBefore) {
    sayAll({"create string:a", "create string:b", "create string:c", "L b = a; c = b", "a = 1"});
    EXPECT_EQ(say("dump b;c"), "b=1;\nc=1;\n");
    EXPECT_EQ(say("L a = a"), "! a would follow itself\n");
    EXPECT_EQ(say("a = 2"), "");
    EXPECT_EQ(say("get b"), "1\n");
    EXPECT_EQ(say("L b = d"), "! nothing at d\n");
}

TEST_F(ShellSession, RefusesLinksInACircle) {
    sayAll({"create string:a", "create string:b"});
    EXPECT_EQ(say("L b = a; a = b"), "! a would follow itself\n");
}

TEST_F(ShellSession, Clears) {
    sayAll({"create string:a", "create string:b", "a = 1; b = 2", "clear a"});
    EXPECT_EQ(say("dump a;b"), "a=;\nb=2;\n");
    EXPECT_EQ(say("clear aa"), "! nothing at aa; did you mean a?\n");
    sayAll({"clear"});
    EXPECT_EQ(say("dump a;b"), "a=;\nb=;\n");
}

TEST_F(ShellSession, ClearsElementsButNotSingleValues) {
    sayAll({"create Point[2]:points", "points = {{x = 1},{x = 2}}", "clear points[1]", "create Label:a"});
    EXPECT_EQ(say("dump points[1]"), "points[1]={\n\t{\n\t\tx=;\n\t\ty=;\n\t}\n};\n");
    EXPECT_EQ(say("clear a/tags[1]"), "! values are cleared together: clear a/tags\n");
    EXPECT_EQ(say("clear points[7]"), "! nothing at points[7]\n");
}

TEST_F(ShellSession, TellsWatchersAsItComes) {
    sayAll({"create Label:caption", "create string:a", "watch caption/text", "watch caption/tags"});
    EXPECT_EQ(say("caption/text = Hi"), "caption/text = Hi\n");
    EXPECT_EQ(say("caption/text = Hi"), "caption/text = Hi (unchanged)\n");
    EXPECT_EQ(say("caption/tags[1-2] = x,y"), "caption/tags[1-2] = x, y\n");
    EXPECT_EQ(say("caption/tags[3] = z"), "caption/tags[3] = z\n");
    EXPECT_EQ(say("a = 1; caption/text = Ho"), "caption/text = Ho\n");
    EXPECT_EQ(say("watch"), "caption/text\ncaption/tags\n");
    EXPECT_EQ(say("unwatch caption/text"), "");
    EXPECT_EQ(say("caption/text = Hey"), "");
    EXPECT_EQ(say("unwatch caption/text"), "! caption/text is not watched; did you mean caption/tags?\n");
    EXPECT_EQ(say("unwatch caption/tag"), "! caption/tag is not watched; did you mean caption/tags?\n");
    EXPECT_EQ(say("watch captoin"), "! nothing at captoin; did you mean caption?\n");
}

TEST_F(ShellSession, WatchesAllBelowANode) {
    sayAll({"create Label:caption", "watch caption"});
    EXPECT_EQ(say("caption = {text = Hi; pos = {y = 2}}"), "caption/text = Hi\ncaption/pos/y = 2\n");
    EXPECT_EQ(say("caption/corners[1]/x = 3"), "caption/corners[1]/x = 3\n");
}

TEST_F(ShellSession, WatchesWhatComesBelowANode) {
    sayAll({"create node:scene", "watch scene"});
    EXPECT_EQ(say("scene/string:title = Hello"), "scene/title = Hello\n");
    EXPECT_EQ(say("scene/title = Ho"), "scene/title = Ho\n");
}

TEST_F(ShellSession, WatchesEveryChild) {
    sayAll({"create node:lights/node:a/string:on", "create lights/node:b/string:on", "watch lights/*/on"});
    EXPECT_EQ(say("lights/*/on = 1"), "lights/a/on = 1\nlights/b/on = 1\n");
}

TEST_F(ShellSession, TellsWhichFieldFollows) {
    sayAll({"create string:a", "create string:b", "L b = a", "watch a", "watch b"});
    EXPECT_EQ(say("a = 1"), "b = 1\na = 1\n");
}

TEST_F(ShellSession, TellsOfNewTypes) {
    sayAll({"create Point:thing", "watch thing"});
    EXPECT_EQ(say("create Label:thing").substr(0, 14), "thing : Label\n");
    EXPECT_EQ(say("thing/text = x"), "thing/text = x\n");
}

TEST_F(ShellSession, ListsTypes) {
    EXPECT_EQ(say("types"), "Label\nPoint\n");
    EXPECT_EQ(say("types Point"), "Type Point {\n\tValue x;\n\tValue y;\n};\n");
    EXPECT_EQ(say("types Piont"), "! no type Piont; did you mean Point?\n");
}

TEST_F(ShellSession, LoadsTypesAndCommands) {
    const std::string types = folder.write("more.qx", "Line = {Point from; Point to;};\n");
    const std::string board = folder.write("board.txt", "# a board\n\ncreate Line:l\r\nl/from/x = 1\nl/fro/x = 2\n~\n");
    sayAll({("load " + types).c_str()});
    EXPECT_EQ(say("load " + board), "! " + board + ":5: nothing at l/fro/x; did you mean l/from/x?\n");
    EXPECT_EQ(say("get l/from/x"), "1\n");
    EXPECT_EQ(say("load nothing.qx"), "! cannot read types from nothing.qx\n");
    EXPECT_EQ(say("load nothing.txt"), "! cannot read nothing.txt\n");
}

TEST_F(ShellSession, LoadsFoldersOfTypes) {
    const TemporaryFolder other;
    other.write("a.qx", "Line = {Point from;};\n");
    sayAll({("load " + other.path()).c_str(), "create Line:l"});
}

TEST_F(ShellSession, StopsFilesThatLoadEachOther) {
    const std::string path = folder.path("loop.txt");
    folder.write("loop.txt", "load " + path + "\n");
    const std::string told = say("load " + path);
    EXPECT_NE(told.find("too many files load each other: " + path), std::string::npos) << told;
}

TEST_F(ShellSession, TellsWhatACommandCosts) {
    sayAll({"create string:a", "watch a"});
    EXPECT_TRUE(std::regex_match(say("time a = 1"), std::regex("a = 1\n[0-9.e+]+ (s|ms|us|ns)\n")));
    EXPECT_TRUE(
        std::regex_match(say("time 1000 a = 2"), std::regex("[0-9.e+]+ (s|ms|us|ns), [0-9.e+]+ (s|ms|us|ns) each\n")));
    EXPECT_EQ(say("get a"), "2\n");
    EXPECT_EQ(say("time 5"), "! time what? time 1000 scene/title = Hello\n");
    EXPECT_EQ(say("time 2 b = 1").substr(0, 15), "! nothing at b\n");
    EXPECT_EQ(say("time dump a").substr(0, 5), "a=2;\n");
}

TEST_F(ShellSession, TellsVerbsFromFieldsByTheEquals) {
    sayAll({"create string:time", "create string:dump", "create string:C", "time = 5", "dump = 6", "C = 7"});
    EXPECT_EQ(say("get time"), "5\n");
    EXPECT_EQ(say("dump dump"), "dump=6;\n");
    EXPECT_EQ(say("get C"), "7\n");
}

TEST_F(ShellSession, TellsOfUnknownVerbs) {
    EXPECT_EQ(say("dmup"), "! no verb dmup; did you mean dump?\n");
    EXPECT_EQ(say("paint it"), "! no verb paint; commands are PATH = VALUE, and help lists the verbs\n");
    EXPECT_EQ(say("0 #12*ACTIVE SET 0"), "! there is no host here for #12*ACTIVE SET 0\n");
    sayAll({"create node:scene/string:title"});
    EXPECT_EQ(say("scene/title"), "! scene/title is a path: dump prints it, PATH = VALUE sets it\n");
}

TEST_F(ShellSession, Helps) {
    const std::string all = say("help");
    for (const char* verb :
         {"clear", "create", "dump", "get", "help", "load", "quit", "time", "types", "unwatch", "watch"})
        EXPECT_NE(all.find(std::string("\n") + verb), std::string::npos) << verb;
    EXPECT_EQ(say("help unwatch"), "unwatch PATH\n    ends a watch\n");
    EXPECT_EQ(say("help wach"), "! no verb wach; did you mean watch?\n");
}

TEST_F(ShellSession, Quits) {
    EXPECT_FALSE(shell->hasQuit());
    sayAll({"quit"});
    EXPECT_TRUE(shell->hasQuit());
}

TEST(LiveTree, ReadsTypesFromWhereTheEnvironmentSays) {
    clearTypeVariables();
    const TemporaryFolder folder;
    folder.write("a.qx", "City = {string name;};\n");
    const Variable variable("QX_OBJECTS_DIR", folder.path());
    LiveTree tree({});
    EXPECT_NE(tree.root().getField(Text("City:oslo"), 0, 0), nullptr);
}

TEST(LiveTree, PrefersTheTypesThatItIsGiven) {
    clearTypeVariables();
    const TemporaryFolder folder;
    const TemporaryFolder other;
    folder.write("a.qx", "City = {string name;};\n");
    other.write("b.qx", "Town = {string name;};\n");
    const Variable variable("QX_OBJECTS_DIR", folder.path());
    LiveTree tree({other.path()});
    EXPECT_EQ(tree.root().getField(Text("City:oslo"), 0, 0), nullptr);
    EXPECT_NE(tree.root().getField(Text("Town:oslo"), 0, 0), nullptr);
    EXPECT_EQ(tree.dump("oslo"), "oslo ={\n\tname= ;\n}\n");
}
