#include <support/RecordingHandler.h>
#include <support/SceneTree.h>
#include <support/TextList.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

/// A root with the values a, b, c and d, and the nodes anim and cam with pos and rot each.
class LinkCommands : public testing::Test {
protected:
    LinkCommands() {
        for (const char* path : {"string:a", "string:b", "string:c", "string:d", "node:anim/string:pos",
                                 "node:anim/string:rot", "node:cam/string:pos", "node:cam/string:rot"})
            root.getField(Text(path), 0, 0);
    }

    DataField* at(const char* path) { return root.getField(Text(path), 0, 0); }
    DataStructure* node(const char* path) { return static_cast<DataStructure*>(at(path)); }
    std::string text(const char* path) { return *at(path)->getData(0); }
    void set(const char* path, const char* value) { at(path)->setData(value); }
    void link(const char* commands) { root.parseLinkCommand(Text(commands)); }
    void run(const char* command) { root.executeLinkCommand(Text(command)); }

    /// The name of the field that the one at `path` follows, "-" for none.
    std::string sourceOf(const char* path) {
        DataField* source = at(path)->getLinkSource();
        return source ? source->getName() : "-";
    }

    std::string sources() {
        return "a<" + sourceOf("a") + " b<" + sourceOf("b") + " c<" + sourceOf("c") + " d<" + sourceOf("d");
    }

    Orbel root{Text("root")};
    const SubtreeCleanup belowRoot{root};
};

} // namespace

TEST_F(LinkCommands, MakeTargetsFollowTheirSources) {
    set("anim/pos", "1 2 3");
    set("anim/rot", "90");
    link("cam/pos = anim/pos; cam/rot = anim/rot");
    EXPECT_EQ(text("cam/pos"), "1 2 3");
    EXPECT_EQ(text("cam/rot"), "90");
    set("anim/pos", "4 5 6");
    set("anim/rot", "180");
    EXPECT_EQ(text("cam/pos"), "4 5 6");
    EXPECT_EQ(text("cam/rot"), "180");
    run("~cam/rot");
    set("anim/pos", "7");
    set("anim/rot", "270");
    EXPECT_EQ(text("cam/pos"), "7");
    EXPECT_EQ(text("cam/rot"), "180");
}

TEST_F(LinkCommands, CopyOnceWhenTheyLink) {
    set("a", "1");
    Diary diary;
    RecordingHandler handler(diary, "B");
    at("b")->registerHandler(&handler);
    diary.take();
    run("b = a");
    EXPECT_EQ(diary.take(), "B changed");
    run("b = a");
    EXPECT_EQ(diary.take(), "B same");
    set("a", "2");
    EXPECT_EQ(diary.take(), "B changed");
}

TEST_F(LinkCommands, CopyAllValues) {
    for (const char* path : {"a", "b"})
        at(path)->setSize(3);
    fill(*at("a"), {"1", "2", "3"});
    run("b = a");
    EXPECT_EQ(allTexts(*at("b")), "1|2|3");
}

TEST_F(LinkCommands, CopyOnlyTheRangesWrittenButLinkTheWholeFields) {
    fill(*at("a"), {"1", "2", "3"});
    fill(*at("b"), {"x", "y", "z"});
    run("b[0-1] = a[1-2]");
    EXPECT_EQ(allTexts(*at("b")), "2|3|z");
    EXPECT_EQ(sourceOf("b"), "a");
    at("a")->setData("9", 2);
    EXPECT_EQ(allTexts(*at("b")), "2|3|9");
}

TEST_F(LinkCommands, CopyBetweenNodesWhatBothHave) {
    set("anim/pos", "1");
    set("anim/rot", "2");
    run("cam = anim");
    EXPECT_EQ(text("cam/pos"), "1");
    EXPECT_EQ(text("cam/rot"), "2");
    node("anim")->executeCommand(Text("pos = 3"), 0);
    EXPECT_EQ(text("cam/pos"), "3");
    // The link is between the nodes; a value that is set directly is not passed on.
    set("anim/rot", "4");
    EXPECT_EQ(text("cam/rot"), "2");
}

TEST_F(LinkCommands, LinkANodeAndAValueWithoutCopying) {
    set("a", "1");
    run("cam = a");
    EXPECT_EQ(sourceOf("cam"), "a");
    EXPECT_EQ(at("cam/pos")->getDataInitialized(), 0);
}

TEST_F(LinkCommands, TrimBothSides) {
    set("a", "1");
    run(" \t\r\n b \t= \n\ta\t ");
    EXPECT_EQ(sourceOf("b"), "a");
    EXPECT_EQ(text("b"), "1");
}

TEST_F(LinkCommands, AreCutAtTheFirstEqualSign) {
    run("b = a = c");
    run("b == a");
    EXPECT_EQ(sources(), "a<- b<- c<- d<-");
}

TEST_F(LinkCommands, DoNotTrimThePathBehindATilde) {
    run("b = a");
    for (const char* command : {"~ b", "~b ", "~\tb", "~missing", "~", "~~b"}) {
        run(command);
        EXPECT_EQ(sourceOf("b"), "a") << command;
    }
    run("~b");
    EXPECT_EQ(sourceOf("b"), "-");
    run("~b");
    EXPECT_EQ(sourceOf("b"), "-");
}

TEST_F(LinkCommands, EndALinkEvenWithAnEqualSignInTheName) {
    auto* odd = new DataValue(Text("x = y"));
    root.addField(odd, 0);
    at("a")->addTargetLink(odd);
    run("~x = y");
    EXPECT_EQ(odd->getLinkSource(), nullptr);
}

TEST_F(LinkCommands, WithATildeBehindBlanksAreNoRelease) {
    run("b = a");
    run(" ~b");
    EXPECT_EQ(sourceOf("b"), "a");
}

TEST_F(LinkCommands, IgnoreWhatIsMissing) {
    set("a", "1");
    for (const char* command : {"missing = a", "b = missing", "b", "", "=", "b =", "= a"})
        run(command);
    EXPECT_EQ(sources(), "a<- b<- c<- d<-");
    EXPECT_EQ(at("b")->getDataInitialized(), 0);
    EXPECT_EQ(root.getNumFields(), 6);
    root.executeLinkCommand(nullptr);
}

TEST_F(LinkCommands, CreateThroughKinds) {
    set("a", "1");
    run("string:fresh = a");
    EXPECT_EQ(sourceOf("fresh"), "a");
    EXPECT_EQ(text("fresh"), "1");
}

TEST_F(LinkCommands, CreateTheTargetThoughTheSourceIsMissing) {
    EXPECT_FALSE(root.addLink(Text("missing"), Text("string:fresh")));
    ASSERT_NE(at("fresh"), nullptr);
    EXPECT_EQ(sourceOf("fresh"), "-");
    run("string:other = missing");
    ASSERT_NE(at("other"), nullptr);
    EXPECT_EQ(at("other")->getDataInitialized(), 0);
    EXPECT_FALSE(root.addLink(Text("string:new"), Text("missing")));
    EXPECT_NE(at("new"), nullptr);
}

TEST_F(LinkCommands, LetHandlersOfTheTargetSeeTheOldSource) {
    link("b = a");
    set("a", "old");
    Diary diary;
    RecordingHandler onTarget(diary, "T");
    RecordingHandler onSource(diary, "S");
    at("b")->registerHandler(&onTarget);
    at("a")->registerHandler(&onSource);
    std::string seen;
    diary.take();
    onTarget.onceThen([&] { seen = text("a") + ' ' + text("b"); });
    set("a", "new");
    EXPECT_EQ(seen, "old new");
    EXPECT_EQ(diary.take(), "T changed, S changed");
}

TEST_F(LinkCommands, RefuseACycleAndCopyAllTheSame) {
    set("a", "from a");
    set("b", "from b");
    link("a = b; b = a");
    EXPECT_EQ(sources(), "a<b b<- c<- d<-");
    EXPECT_EQ(text("a"), "from b");
    set("d", "from d");
    run("b = d");
    set("a", "changed");
    run("d = a");
    EXPECT_EQ(sources(), "a<b b<d c<- d<-");
    EXPECT_EQ(text("d"), "changed");
    EXPECT_EQ(text("b"), "from d");
}

TEST_F(LinkCommands, RefuseAFieldToFollowItself) {
    run("a = a");
    EXPECT_EQ(sources(), "a<- b<- c<- d<-");
}

TEST_F(LinkCommands, MoveATargetToAnotherSource) {
    run("c = a");
    run("c = b");
    EXPECT_EQ(sources(), "a<- b<- c<b d<-");
    set("a", "1");
    EXPECT_EQ(text("c"), " ");
    set("b", "2");
    EXPECT_EQ(text("c"), "2");
}

TEST_F(LinkCommands, LinkTwiceAsOnce) {
    run("b = a");
    run("b = a");
    Diary diary;
    RecordingHandler handler(diary, "B");
    at("b")->registerHandler(&handler);
    diary.take();
    set("a", "1");
    EXPECT_EQ(diary.take(), "B changed");
}

TEST_F(LinkCommands, ReleaseTheMiddleOfAChain) {
    link("b = a; c = b");
    set("a", "1");
    EXPECT_EQ(text("c"), "1");
    run("~b");
    set("a", "2");
    EXPECT_EQ(text("b"), "1");
    EXPECT_EQ(text("c"), "1");
    EXPECT_EQ(sources(), "a<- b<- c<b d<-");
}

TEST_F(LinkCommands, StoreTheFarthestFirstAndThenInOrder) {
    link("d = a; b = a; c = d");
    Diary diary;
    RecordingHandler onA(diary, "A"), onB(diary, "B"), onC(diary, "C"), onD(diary, "D");
    at("a")->registerHandler(&onA);
    at("b")->registerHandler(&onB);
    at("c")->registerHandler(&onC);
    at("d")->registerHandler(&onD);
    diary.take();
    set("a", "1");
    EXPECT_EQ(diary.takeNames(), "CDBA");
}

TEST_F(LinkCommands, AreResolvedFromTheNodeTheyRunOn) {
    set("anim/pos", "1");
    set("a", "2");
    node("cam")->executeLinkCommand(Text("pos = ../anim/pos"));
    node("cam")->executeLinkCommand(Text("rot = ../a"));
    EXPECT_EQ(at("cam/pos")->getLinkSource(), at("anim/pos"));
    EXPECT_EQ(text("cam/rot"), "2");
}

TEST_F(LinkCommands, InListsReplaceAllLinksOfTheTree) {
    link("b = a; cam/pos = anim/pos");
    link("c = a");
    EXPECT_EQ(sources(), "a<- b<- c<a d<-");
    EXPECT_EQ(sourceOf("cam/pos"), "-");
    run("b = a");
    node("cam")->parseLinkCommand(Text("pos = rot"));
    EXPECT_EQ(sources(), "a<- b<- c<- d<-");
    EXPECT_EQ(sourceOf("cam/pos"), "rot");
}

TEST(LinkLists, ReplaceTheLinksOfElementsAndEntriesToo) {
    SceneTree tree;
    tree.root.executeLinkCommand(Text("points[1]/x = scene/title"));
    tree.root.executeLinkCommand(Text("cities[Oslo]/x = scene/title"));
    EXPECT_EQ(tree.xOfPoint(1)->getLinkSource(), tree.title);
    EXPECT_EQ(tree.xOf(tree.city("Oslo"))->getLinkSource(), tree.title);
    tree.city("Rome")->parseLinkCommand(Text(""));
    EXPECT_EQ(tree.xOfPoint(1)->getLinkSource(), nullptr);
    EXPECT_EQ(tree.xOf(tree.city("Oslo"))->getLinkSource(), nullptr);
}

TEST_F(LinkCommands, InEmptyListsClearAllLinks) {
    for (const char* none : {"", " ", " \t\r\n "}) {
        link("b = a; cam/pos = anim/pos");
        link(none);
        EXPECT_EQ(sources(), "a<- b<- c<- d<-");
        EXPECT_EQ(sourceOf("cam/pos"), "-");
    }
}

TEST_F(LinkCommands, WithoutATextClearNothing) {
    link("b = a");
    root.parseLinkCommand(nullptr);
    EXPECT_EQ(sourceOf("b"), "a");
}

TEST_F(LinkCommands, InListsWithoutARootClearNothing) {
    DataStructure branch(Text("branch"));
    const SubtreeCleanup belowBranch{branch};
    for (const char* path : {"string:p", "string:q", "string:r"})
        branch.getField(Text(path), 0, 0);
    branch.parseLinkCommand(Text("q = p"));
    branch.parseLinkCommand(Text("r = p"));
    for (const char* path : {"q", "r"})
        EXPECT_EQ(branch.getField(Text(path), 0, 0)->getLinkSource(), branch.getField(Text("p"), 0, 0)) << path;
}

TEST_F(LinkCommands, InListsAreSplitOutsideBracesAndDoubledQuotes) {
    link("  b = a;\n\t~d; nonsense; ;c = a;");
    EXPECT_EQ(sources(), "a<- b<a c<a d<-");
    link("b = {a; c = a}; d = a");
    EXPECT_EQ(sources(), "a<- b<- c<- d<a");
    link("b = \"\"a; c = a\"\"; d = a");
    EXPECT_EQ(sources(), "a<- b<- c<- d<a");
    link("b = a; {c = a; d = a");
    EXPECT_EQ(sources(), "a<- b<a c<- d<-");
}

TEST_F(LinkCommands, InListsSkipBlanksInFrontOfATilde) {
    at("a")->addTargetLink(at("b"));
    link("c = a; d = a; \n ~c");
    EXPECT_EQ(sources(), "a<- b<- c<- d<a");
}

TEST_F(LinkCommands, LeaveTheirTextAlone) {
    std::string list = "b = a ; ~c";
    root.parseLinkCommand(list.data());
    EXPECT_EQ(list, "b = a ; ~c");
    std::string command = " b [0] = a ";
    root.executeLinkCommand(command.data());
    EXPECT_EQ(command, " b [0] = a ");
}

TEST_F(LinkCommands, AddingALinkTellsWhetherBothFieldsAreThere) {
    EXPECT_TRUE(root.addLink(Text("a"), Text("cam/pos")));
    EXPECT_EQ(sourceOf("cam/pos"), "a");
    EXPECT_FALSE(root.addLink(Text("missing"), Text("b")));
    EXPECT_FALSE(root.addLink(Text("a"), Text("missing")));
    EXPECT_FALSE(root.addLink(nullptr, Text("a")));
    EXPECT_FALSE(root.addLink(Text("a"), nullptr));
    EXPECT_FALSE(root.addLink(Text("*"), Text("b")));
    EXPECT_TRUE(root.addLink(Text("cam/pos"), Text("a")));
    EXPECT_TRUE(root.addLink(Text("a"), Text("a")));
    EXPECT_EQ(sources(), "a<- b<- c<- d<-");
}

TEST_F(LinkCommands, AddingALinkCopiesNothing) {
    set("a", "1");
    root.addLink(Text("a"), Text("b"));
    EXPECT_EQ(at("b")->getDataInitialized(), 0);
}

TEST_F(LinkCommands, AddingALinkReachesEntriesAndElementsFields) {
    SceneTree tree;
    EXPECT_TRUE(tree.root.addLink(Text("cities[Oslo]"), Text("cities[Rome]")));
    EXPECT_EQ(tree.city("Rome")->getLinkSource(), tree.city("Oslo"));
    EXPECT_TRUE(tree.root.addLink(Text("points[0]/x"), Text("points[2]/x")));
    EXPECT_EQ(tree.xOfPoint(2)->getLinkSource(), tree.xOfPoint(0));
    EXPECT_TRUE(tree.root.addLink(Text("points[0]"), Text("cities")));
    EXPECT_EQ(tree.cities->getLinkSource(), tree.points);
}

TEST_F(LinkCommands, RemovingALinkTellsWhetherTheTargetIsThere) {
    run("b = a");
    EXPECT_TRUE(root.removeLink(Text("b")));
    EXPECT_EQ(sourceOf("b"), "-");
    EXPECT_TRUE(root.removeLink(Text("b")));
    EXPECT_TRUE(root.removeLink(Text("cam")));
    EXPECT_FALSE(root.removeLink(Text("missing")));
    EXPECT_FALSE(root.removeLink(nullptr));
}

TEST_F(LinkCommands, OfANodeFollowItsSourceInEveryCommand) {
    SceneTree tree;
    tree.root.parseLinkCommand(Text("cities[Rome] = cities[Oslo]"));
    tree.city("Oslo")->parseCommand(Text("x = 1; string:fresh = 2"), 0);
    EXPECT_EQ(*tree.at("cities[Rome]/x")->getData(0), "1");
    EXPECT_EQ(*tree.at("cities[Rome]/fresh")->getData(0), "2");
}

TEST_F(LinkCommands, OnASubtreeThatDiesLeaveTheRestLinked) {
    link("cam/pos = anim/pos; a = cam/pos; b = anim/rot");
    DataStructure* cam = node("cam");
    root.removeField(Text("cam"), 0);
    deleteSubtree(*cam);
    delete cam;
    set("anim/pos", "1");
    set("anim/rot", "2");
    EXPECT_EQ(sources(), "a<- b<rot c<- d<-");
    EXPECT_EQ(text("a"), " ");
    EXPECT_EQ(text("b"), "2");
}
