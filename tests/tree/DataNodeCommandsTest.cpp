#include <support/SceneTree.h>
#include <support/Texts.h>

#include <gtest/gtest.h>

namespace {

using Values = std::vector<std::string>;

/// A root with the values a, b and c, and the nodes s (p, q) and t (p).
class Commands : public testing::Test {
protected:
    Commands() {
        for (const char* path :
             {"string:a", "string:b", "string:c", "node:s/string:p", "node:s/string:q", "node:t/string:p"})
            root.getField(Text(path), 0, 0);
    }

    DataField* at(const char* path) { return root.getField(Text(path), 0, 0); }
    std::string text(const char* path) { return *at(path)->getData(0); }
    void run(const char* command) { root.executeCommand(Text(command), 0); }
    void runList(const char* commands) { root.parseCommand(Text(commands), 0); }
    void copy(const char* commands) { root.parseCopyCommand(Text(commands)); }
    void clear(const char* commands) { root.executeClearCommand(Text(commands)); }

    void fill() { runList("a = full; b = full; c = full; s/p = full; s/q = full; t/p = full"); }

    void grow(const char* path, int size) {
        at(path)->setSize(size);
        for (int index = 0; index < size; ++index)
            at(path)->setData((path + std::to_string(index)).c_str(), index);
    }

    Orbel root{Text("root")};
    const SubtreeCleanup belowRoot{root};
};

/// Keeps the commands it is asked to run, and runs them.
class CommandLog : public Owned<DataStructure> {
public:
    CommandLog(const char* name, std::vector<std::string>& entries)
        : Owned<DataStructure>(Text(name)), m_entries(entries) {}

    void executeCommand(char* command, int index) override {
        m_entries.push_back(std::string(getName()) + ": " + command + " @" + std::to_string(index));
        DataStructure::executeCommand(command, index);
    }

private:
    std::vector<std::string>& m_entries;
};

/// Keeps the paths that it is asked to clear, and clears none.
class ClearLog : public Owned<DataStructure> {
public:
    ClearLog() : Owned<DataStructure>(Text("careful")) {}

    void executeClearField(char* path) override { asked.emplace_back(path); }

    Values asked;
};

} // namespace

TEST_F(Commands, SetAField) {
    run("a = 1 2 3");
    EXPECT_EQ(text("a"), "1 2 3");
    run(" \t\r\n s/p \t=\n\t v = w ");
    EXPECT_EQ(text("s/p"), "v = w ");
    run("a=");
    EXPECT_EQ(text("a"), "");
}

TEST_F(Commands, WithAnEmptyValueStoreTheEmptyText) {
    run("a = x");
    run("a = ");
    EXPECT_EQ(text("a"), "");
}

TEST_F(Commands, KeepFurtherEqualSignsInTheValue) {
    run("a = x = y");
    EXPECT_EQ(text("a"), "x = y");
}

TEST_F(Commands, WithoutAnEqualSignChangeNothing) {
    run("a");
    run("");
    run("= 1");
    run("missing = 1");
    EXPECT_EQ(at("a")->getDataInitialized(), 0);
    EXPECT_EQ(root.getNumFields(), 5);
}

TEST_F(Commands, SetOneOfSeveralValues) {
    grow("a", 4);
    run("a[2] = 5");
    EXPECT_EQ(valuesOf(at("a")), (Values{"a0", "a1", "5", "a3"}));
    run("a[0-1,3] = x,y,z");
    EXPECT_EQ(valuesOf(at("a")), (Values{"x", "y", "5", "z"}));
    run("a[9] = lost");
    run("a[-1] = lost");
    run("a[99999999999] = lost");
    EXPECT_EQ(valuesOf(at("a")), (Values{"x", "y", "5", "z"}));
}

TEST_F(Commands, SetElementsAndEntries) {
    SceneTree tree;
    tree.root.executeCommand(Text("points[1]/x = 5"), 0);
    EXPECT_EQ(*tree.xOfPoint(1)->getData(0), "5");
    tree.root.executeCommand(Text("points[2] = {{x = 6}}"), 0);
    EXPECT_EQ(*tree.xOfPoint(2)->getData(0), "6");
    tree.root.executeCommand(Text("cities[Oslo]/x = 7"), 0);
    EXPECT_EQ(*tree.xOf(tree.city("Oslo"))->getData(0), "7");
    tree.root.executeCommand(Text("cities[Rome] = {{x = 8}}"), 0);
    EXPECT_EQ(*tree.xOf(tree.city("Rome"))->getData(0), "8");
}

TEST_F(Commands, CreateThroughKinds) {
    run("string:fresh = 1");
    EXPECT_EQ(text("fresh"), "1");
}

TEST_F(Commands, InListsAreSplitAtSemicolons) {
    runList("  a = 1; b = a b;\n\t c = 3;");
    EXPECT_EQ(text("a"), "1");
    EXPECT_EQ(text("b"), "a b");
    EXPECT_EQ(text("c"), "3");
}

TEST_F(Commands, InListsKeepBracesTogether) {
    runList("s = {p = 1; q = 2}; t = {p = 3}");
    EXPECT_EQ(text("s/p"), "1");
    EXPECT_EQ(text("s/q"), "2");
    EXPECT_EQ(text("t/p"), "3");
}

TEST_F(Commands, InListsKeepWhatDoubledQuotesHoldTogether) {
    runList("a = \"\"x;{y\"\"; b = 2");
    EXPECT_EQ(text("a"), "x;{y");
    EXPECT_EQ(text("b"), "2");
}

TEST_F(Commands, InListsTakeTheRestBehindAnOpenBraceAsOne) {
    runList("a = {x; b = 2; c = 3");
    EXPECT_EQ(text("a"), "{x; b = 2; c = 3");
    EXPECT_EQ(at("b")->getDataInitialized(), 0);
}

TEST_F(Commands, InListsGoOnAfterAFailure) {
    runList("missing = 1; nonsense; ; a = 1");
    EXPECT_EQ(text("a"), "1");
}

TEST_F(Commands, InListsLeaveTheTextAlone) {
    std::string list = "a = 1; b[0] = 2";
    root.parseCommand(list.data(), 0);
    EXPECT_EQ(list, "a = 1; b[0] = 2");
    root.parseCommand(nullptr, 0);
    root.parseCopyCommand(nullptr);
}

TEST_F(Commands, GiveTheirIndexToTheKeysOfATable) {
    SceneTree tree;
    DataObject* oslo = tree.city("Oslo");
    auto* list = new DataArray(Text("list"));
    oslo->addField(list, 0);
    list->setSize(2);
    tree.root.executeCommand(Text("cities[Oslo]/list[1]/string:v = 1"), 9);
    EXPECT_NE(list->getField(Text("v"), 1, 0), nullptr);
    EXPECT_EQ(list->getField(Text("v"), 0, 0), nullptr);
}

TEST_F(Commands, WithAWildcardReachAllChildrenThatAreNodes) {
    run("*/p = 1");
    EXPECT_EQ(text("s/p"), "1");
    EXPECT_EQ(text("t/p"), "1");
    EXPECT_EQ(at("s/q")->getDataInitialized(), 0);
    EXPECT_EQ(at("a")->getDataInitialized(), 0);
}

TEST_F(Commands, WithAWildcardAtTheEndReachAllChildren) {
    run("s/* = 1");
    EXPECT_EQ(text("s/p"), "1");
    EXPECT_EQ(text("s/q"), "1");
    EXPECT_EQ(at("t/p")->getDataInitialized(), 0);
    run("* = {p = 2}");
    EXPECT_EQ(text("a"), "{p = 2}");
    EXPECT_EQ(text("t/p"), "2");
}

TEST_F(Commands, WithTwoWildcardsReachAllGrandchildren) {
    run("*/* = 1");
    EXPECT_EQ(text("s/p"), "1");
    EXPECT_EQ(text("s/q"), "1");
    EXPECT_EQ(text("t/p"), "1");
    EXPECT_EQ(at("a")->getDataInitialized(), 0);
}

TEST_F(Commands, WithAWildcardCreateThroughKindsBelowIt) {
    run("*/string:fresh = 1");
    EXPECT_EQ(text("s/fresh"), "1");
    EXPECT_EQ(text("t/fresh"), "1");
    EXPECT_EQ(at("fresh"), nullptr);
}

TEST_F(Commands, WithAWildcardTakeLongTexts) {
    const std::string value(100'000, 'v');
    run(("s/* = " + value).c_str());
    EXPECT_EQ(text("s/q"), value);
}

TEST_F(Commands, OnAPathBeyondTheLimitChangeNothing) {
    run(("*/" + std::string(600, 'x') + " = 1").c_str());
    run((std::string(100'000, 'x') + " = 1").c_str());
    EXPECT_EQ(at("a")->getDataInitialized(), 0);
    EXPECT_EQ(root.getNumFields(), 5);
}

TEST(CommandForwarding, GoesToTheTargetsFirst) {
    std::vector<std::string> entries;
    CommandLog source("source", entries);
    CommandLog first("first", entries);
    CommandLog second("second", entries);
    DataValue leaf(Text("leaf"));
    for (DataStructure* node : {static_cast<DataStructure*>(&source), static_cast<DataStructure*>(&first),
                                static_cast<DataStructure*>(&second)})
        node->addField(new DataValue(Text("a")), 0);
    source.addTargetLink(&first);
    source.addTargetLink(&leaf);
    source.addTargetLink(&second);
    source.executeCommand(Text("a = 1"), 4);
    EXPECT_EQ(entries, (Values{"source: a = 1 @4", "first: a = 1 @4", "second: a = 1 @4"}));
    for (DataStructure* node : {static_cast<DataStructure*>(&source), static_cast<DataStructure*>(&first),
                                static_cast<DataStructure*>(&second)})
        EXPECT_EQ(*node->getFieldByIndex(0)->getData(0), "1");
    EXPECT_EQ(leaf.getDataInitialized(), 0);
    source.removeAllTargets();
}

TEST(CommandForwarding, HappensForMalformedCommandsToo) {
    std::vector<std::string> entries;
    CommandLog source("source", entries);
    CommandLog target("target", entries);
    source.addTargetLink(&target);
    source.executeCommand(Text("a"), 0);
    EXPECT_EQ(entries, (Values{"source: a @0", "target: a @0"}));
    source.removeAllTargets();
}

TEST_F(Commands, CopyAValue) {
    run("b = from b");
    copy("a = b; missing = b; c = missing; s/p = a");
    EXPECT_EQ(text("a"), "from b");
    EXPECT_EQ(text("s/p"), "from b");
    EXPECT_EQ(at("c")->getDataInitialized(), 0);
}

TEST_F(Commands, CopyRangesOfValuesAsFarAsTheShorterGoes) {
    grow("a", 10);
    grow("b", 2);
    copy("a[0-9] = b[0-1]");
    EXPECT_EQ(valuesOf(at("a")), (Values{"b0", "b1", "a2", "a3", "a4", "a5", "a6", "a7", "a8", "a9"}));
}

TEST_F(Commands, CopyRangesOfValuesFromWhereTheyStart) {
    grow("a", 5);
    grow("b", 6);
    copy("a[0-3] = b[2-5]");
    EXPECT_EQ(valuesOf(at("a")), (Values{"b2", "b3", "b4", "b5", "a4"}));
    copy("a[4] = b[0]");
    EXPECT_EQ(*at("a")->getData(4), "b0");
}

TEST_F(Commands, CopyRangesPastTheEndWithoutGrowing) {
    grow("a", 2);
    grow("b", 2);
    copy("a[1-2000000000] = b[0-2000000000]");
    EXPECT_EQ(valuesOf(at("a")), (Values{"a0", "b0"}));
    EXPECT_EQ(at("a")->getSize(), 2);
}

TEST_F(Commands, CopyNodes) {
    runList("s/p = 1; s/q = 2");
    copy("t = s");
    EXPECT_EQ(text("t/p"), "1");
    EXPECT_EQ(at("t/q"), nullptr);
}

TEST_F(Commands, CopyNothingBetweenANodeAndAValue) {
    fill();
    copy("s = a; b = t; a; = b");
    EXPECT_EQ(text("s/p"), "full");
    EXPECT_EQ(text("b"), "full");
}

TEST_F(Commands, CopyTheLastSourceElementToSurplusTargets) {
    auto* targets = new DataArray(Text("targets"));
    auto* sources = new DataArray(Text("sources"));
    root.addField(targets, 0);
    root.addField(sources, 0);
    targets->setSize(10);
    sources->setSize(2);
    for (DataArray* array : {targets, sources})
        for (int index = 0; index < array->getSize(); ++index)
            array->getObject(index)->addField(new DataValue(Text("x")), 0);
    runList("sources[0]/x = first; sources[1]/x = second");
    copy("targets[0-9] = sources[0-1]");
    EXPECT_EQ(text("targets[0]/x"), "first");
    for (int index = 1; index < 10; ++index)
        EXPECT_EQ(*targets->getField(Text("x"), index, 0)->getData(0), "second");
}

TEST_F(Commands, CopyEntries) {
    SceneTree tree;
    tree.xOf(tree.city("Oslo"))->setData("12");
    tree.root.parseCopyCommand(Text("cities[Rome] = cities[Oslo]"));
    EXPECT_EQ(*tree.xOf(tree.city("Rome"))->getData(0), "12");
}

TEST_F(Commands, ClearFields) {
    fill();
    clear(" a; s ;missing");
    EXPECT_EQ(text("a"), "");
    EXPECT_EQ(text("s/p"), "");
    EXPECT_EQ(text("s/q"), "");
    EXPECT_EQ(text("b"), "full");
}

TEST_F(Commands, ClearListsAreSplitAtEverySemicolon) {
    fill();
    clear("{a;b};\"\"c;s\"\"");
    EXPECT_EQ(text("a"), "full");
    EXPECT_EQ(text("b"), "full");
    clear("{a;b;c}");
    EXPECT_EQ(text("b"), "");
    EXPECT_EQ(text("c"), "full");
}

TEST_F(Commands, ClearTheWholeTreeByTheNameOfItsClass) {
    for (const char* name : {"Orbel", "orbel", " ORBEL\t", ""}) {
        fill();
        static_cast<DataNode*>(at("s"))->executeClearCommand(Text(name));
        for (const char* path : {"a", "b", "c", "s/p", "s/q", "t/p"})
            EXPECT_EQ(text(path), "") << name;
    }
}

TEST_F(Commands, ClearTheWholeTreeAlsoWhenAFieldInUseHasThatName) {
    fill();
    root.getField(Text("string:orbel"), 0, 0);
    root.setFieldData(Text("orbel"), Text("full"));
    ASSERT_EQ(text("orbel"), "full");
    clear("c; orbel");
    for (const char* path : {"a", "b", "c", "s/p", "orbel"})
        EXPECT_EQ(text(path), "") << path;
}

TEST_F(Commands, ClearListsAskTheNodeToClearEachField) {
    ClearLog node;
    node.executeCommand(Text("string:one = full"), 0);
    node.executeCommand(Text("string:other = full"), 0);
    node.executeClearCommand(Text(" one ; other"));
    EXPECT_EQ(node.asked, (Values{"one", "other"}));
    EXPECT_EQ(*node.getField(Text("one"), 0, 1)->getData(0), "full");
}

TEST(CommandsWithoutARoot, ClearNoWholeTree) {
    DataStructure branch(Text("branch"));
    const SubtreeCleanup belowBranch{branch};
    auto* leaf = new DataValue(Text("leaf"));
    branch.addField(leaf, 0);
    leaf->setData("full");
    branch.executeClearCommand(Text(""));
    branch.executeClearField(Text("orbel"));
    EXPECT_EQ(*leaf->getData(0), "full");
}

TEST_F(Commands, ClearRangesOfNodesOnly) {
    SceneTree tree;
    for (int index = 0; index < 3; ++index)
        tree.xOfPoint(index)->setData("full");
    tree.root.executeClearCommand(Text("points[1-7]"));
    EXPECT_EQ(*tree.xOfPoint(0)->getData(0), "full");
    EXPECT_EQ(*tree.xOfPoint(1)->getData(0), "");
    EXPECT_EQ(*tree.xOfPoint(2)->getData(0), "");

    grow("a", 2);
    clear("a[0]");
    EXPECT_EQ(valuesOf(at("a")), (Values{"a0", "a1"}));
}

TEST_F(Commands, ClearEntriesOfATable) {
    SceneTree tree;
    for (const char* key : {"Oslo", "Rome"})
        tree.xOf(tree.city(key))->setData("full");
    tree.root.executeClearCommand(Text("cities[ Rome, Paris ]"));
    EXPECT_EQ(*tree.xOf(tree.city("Oslo"))->getData(0), "full");
    EXPECT_EQ(*tree.xOf(tree.city("Rome"))->getData(0), "");
}
