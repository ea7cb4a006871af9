#include <support/RecordingHandler.h>
#include <support/SceneTree.h>

#include <gtest/gtest.h>

namespace {

DataField* nothing(SceneTree& /*tree*/) {
    return nullptr;
}

DataField* scene(SceneTree& tree) {
    return tree.scene;
}

DataField* title(SceneTree& tree) {
    return tree.title;
}

DataField* points(SceneTree& tree) {
    return tree.points;
}

template <int Index>
DataField* xOfPoint(SceneTree& tree) {
    return tree.xOfPoint(Index);
}

DataField* cities(SceneTree& tree) {
    return tree.cities;
}

DataField* oslo(SceneTree& tree) {
    return tree.city("Oslo");
}

DataField* xOfOslo(SceneTree& tree) {
    return tree.xOf(tree.city("Oslo"));
}

constexpr int longestPath = 511;

/// A path to the root's scene/title that is filled up with "scene/../" and "..": every detour costs nine characters.
std::string pathOfLength(std::size_t length) {
    const std::string end = "scene/title";
    std::string path;
    while (path.size() + 9 + end.size() <= length)
        path += "scene/../";
    // Any name that begins with two dots stands for the parent, so the last detour can take the remainder.
    path.insert(path.size() - 1, length - path.size() - end.size(), '.');
    return path + end;
}

} // namespace

struct ReadRow {
    const char* path;
    int flag;
    DataField* (*expected)(SceneTree&);

    friend void PrintTo(const ReadRow& row, std::ostream* os) { *os << row.path; }
};

class PathToAField : public testing::TestWithParam<ReadRow> {};

TEST_P(PathToAField, GivesIt) {
    SceneTree tree;
    const ReadRow& row = GetParam();
    EXPECT_EQ(tree.at(row.path, row.flag), row.expected(tree)) << row.path;
}

INSTANTIATE_TEST_SUITE_P(Documented, PathToAField,
                         testing::Values(ReadRow{"scene/title", 0, title}, ReadRow{"scene/../scene/title", 0, title},
                                         ReadRow{"points/x", 0, xOfPoint<0>}, ReadRow{"points[2]/x", 0, xOfPoint<2>},
                                         ReadRow{"points[1-2]/x", 0, xOfPoint<1>}, ReadRow{"points[5]/x", 0, nothing},
                                         ReadRow{"cities[Oslo]/x", 0, xOfOslo}, ReadRow{"cities[ Oslo ]", 1, oslo},
                                         ReadRow{"cities[Oslo]", 0, cities}, ReadRow{"cities/x", 0, cities},
                                         ReadRow{"scene/title/more", 0, title}, ReadRow{"*/x", 0, nothing}));

INSTANTIATE_TEST_SUITE_P(
    Indices, PathToAField,
    testing::Values(ReadRow{"points[0]/x", 0, xOfPoint<0>}, ReadRow{"points[3]/x", 0, nothing},
                    ReadRow{"points[-1]/x", 0, nothing}, ReadRow{"points[x]/x", 0, nothing},
                    ReadRow{"points[]/x", 0, nothing}, ReadRow{"points[ \t\r\n2]/x", 0, xOfPoint<2>},
                    ReadRow{"points[2,0]/x", 0, xOfPoint<2>}, ReadRow{"points[2147483647]/x", 0, nothing},
                    ReadRow{"points[2147483648]/x", 0, nothing}, ReadRow{"points[4294967296]/x", 0, nothing},
                    ReadRow{"points[99999999999999999999999999]/x", 0, nothing},
                    ReadRow{"points[-99999999999999999999999999]/x", 0, nothing}, ReadRow{"points[2]", 0, points},
                    ReadRow{"points[9]", 1, points}, ReadRow{"scene[7]/title", 0, title},
                    ReadRow{"scene/title[3]", 0, title}));

INSTANTIATE_TEST_SUITE_P(Brackets, PathToAField,
                         testing::Values(ReadRow{"points[2/x", 0, xOfPoint<2>}, ReadRow{"points[[2]]/x", 0, nothing},
                                         ReadRow{"points[2]]/x", 0, xOfPoint<2>}, ReadRow{"points[", 0, points},
                                         ReadRow{"points[/x", 0, nothing}, ReadRow{"points]/x", 0, nothing},
                                         ReadRow{"[2]", 0, nothing}, ReadRow{"cities[Oslo", 1, oslo},
                                         ReadRow{"cities[Oslo]]", 1, oslo}, ReadRow{"cities[Oslo]tail/x", 0, xOfOslo}));

INSTANTIATE_TEST_SUITE_P(Keys, PathToAField,
                         testing::Values(ReadRow{"cities", 0, cities}, ReadRow{"cities", 1, cities},
                                         ReadRow{"cities[ \t\n\rOslo \t]/x", 0, xOfOslo},
                                         ReadRow{"cities[Oslo\n]/x", 0, nothing}, ReadRow{"cities[oslo]", 1, nothing},
                                         ReadRow{"cities[Paris]", 1, nothing}, ReadRow{"cities[Paris]/x", 0, nothing},
                                         ReadRow{"cities[]", 1, nothing}, ReadRow{"cities[ ]", 1, nothing},
                                         ReadRow{"cities[]", 0, cities}, ReadRow{"cities[ ]/x", 0, nothing},
                                         ReadRow{"cities[Oslo,Rome]/x", 0, cities},
                                         ReadRow{"cities[Oslo]/y", 0, nothing}));

INSTANTIATE_TEST_SUITE_P(EmptySegments, PathToAField,
                         testing::Values(ReadRow{"", 0, nothing}, ReadRow{"/", 0, nothing}, ReadRow{"/x", 0, nothing},
                                         ReadRow{"/scene/title", 0, nothing}, ReadRow{"scene/", 0, nothing},
                                         ReadRow{"scene//title", 0, nothing}, ReadRow{"scene/title/", 0, title},
                                         ReadRow{"scene/title//", 0, title}));

INSTANTIATE_TEST_SUITE_P(Parents, PathToAField,
                         testing::Values(ReadRow{"scene/..", 0, nothing}, ReadRow{"scene/../", 0, nothing},
                                         ReadRow{"..", 0, nothing}, ReadRow{"../scene", 0, nothing},
                                         ReadRow{"scene/..anything/scene", 0, scene},
                                         ReadRow{"scene/.../scene", 0, scene}, ReadRow{"scene/../../scene", 0, nothing},
                                         ReadRow{"scene/..[3]/scene", 0, scene}, ReadRow{"scene/./title", 0, nothing},
                                         ReadRow{"Scene/title", 0, nothing}));

TEST(FieldPath, NullIsNoPath) {
    SceneTree tree;
    EXPECT_EQ(tree.root.getField(nullptr, 0, 0), nullptr);
}

TEST(FieldPath, LeavesTheTextAlone) {
    SceneTree tree;
    for (const char* path : {"scene/../cities[ Oslo ]/x", "points[1-2]/x", "string:scene/node:extra/string:v"}) {
        std::string text = path;
        tree.root.getField(text.data(), 0, 1);
        EXPECT_EQ(text, path);
    }
}

TEST(FieldPath, OfALeafLeavesNamesAsTheyAre) {
    SceneTree tree;
    EXPECT_EQ(tree.scene->getField(Text("title"), 0, 0), tree.title);
    EXPECT_EQ(tree.scene->getField(Text("../points[1]/x"), 0, 0), tree.xOfPoint(1));
    EXPECT_EQ(tree.scene->getField(Text("scene/title"), 0, 0), nullptr);
}

TEST(FieldPath, ReadsFullPathsBackFromTheRoot) {
    SceneTree tree;
    for (DataField* field : {static_cast<DataField*>(tree.title), tree.xOfPoint(2), tree.xOfPoint(0)}) {
        const std::string path = field->getFullPath();
        EXPECT_EQ(tree.at(path), field) << path;
    }
    EXPECT_STREQ(tree.xOfPoint(2)->getFullPath(), "points[2]/x");
    EXPECT_STREQ(tree.title->getFullPath(), "scene/title");
}

TEST(FieldPath, WithoutParentTwoDotsAreAName) {
    DataStructure alone(Text("alone"));
    const SubtreeCleanup belowAlone{alone};
    auto* dots = new DataValue(Text(".."));
    auto* branch = new DataStructure(Text("..up"));
    auto* leaf = new DataValue(Text("leaf"));
    alone.addField(dots, 0);
    alone.addField(branch, 0);
    branch->addField(leaf, 0);
    EXPECT_EQ(alone.getField(Text(".."), 0, 0), dots);
    EXPECT_EQ(alone.getField(Text("..up/leaf"), 0, 0), leaf);
    EXPECT_EQ(alone.getField(Text("..up/../..up/leaf"), 0, 0), leaf);
}

TEST(FieldPath, UpToTheLimitIsResolved) {
    SceneTree tree;
    const std::string path = pathOfLength(longestPath);
    ASSERT_EQ(path.size(), 511u);
    EXPECT_EQ(tree.at(path), tree.title);
}

TEST(FieldPath, BeyondTheLimitIsNull) {
    SceneTree tree;
    for (const std::size_t length : {512u, 513u, 1000u, 100'000u}) {
        const std::string path = pathOfLength(length);
        ASSERT_EQ(path.size(), length);
        EXPECT_EQ(tree.at(path), nullptr);
    }
}

TEST(FieldPath, BeyondTheLimitCreatesNothing) {
    SceneTree tree;
    for (const std::size_t length : {512u, 100'000u}) {
        EXPECT_EQ(tree.at("node:extra/string:" + std::string(length - 18, 'v')), nullptr);
        EXPECT_EQ(tree.root.getNumFields(), 3);
    }
}

TEST(FieldPath, OfManySegmentsOrOfOneUpToTheLimit) {
    SceneTree tree;
    EXPECT_EQ(tree.at(std::string(511, '/')), nullptr);
    EXPECT_EQ(tree.at(std::string(511, '[')), nullptr);
    EXPECT_EQ(tree.at(std::string(511, 'a')), nullptr);
    EXPECT_EQ(tree.at(std::string(511, '.')), nullptr);
    EXPECT_EQ(tree.at("cities[" + std::string(503, 'k') + "]", 1), nullptr);
    EXPECT_EQ(tree.at("points[" + std::string(500, '9') + "]/x"), nullptr);
}

TEST(FieldPathKind, OnAnExistingChildBelongsToItsOwnSegment) {
    SceneTree tree;
    EXPECT_EQ(tree.at("string:scene/note"), nullptr);
    EXPECT_EQ(tree.scene->getNumFields(), 1);
    EXPECT_NE(tree.scene->getHandlerByName(Text("DUMMY")), nullptr);
    EXPECT_EQ(tree.scene->getParentInstance(), -1);
}

TEST(FieldPathKind, StringCreatesAValue) {
    SceneTree tree;
    DataField* note = tree.at("scene/string:note");
    ASSERT_NE(note, nullptr);
    EXPECT_STREQ(note->getTypeName(), "DataValue");
    EXPECT_STREQ(note->getName(), "note");
    EXPECT_EQ(note->getParent(), tree.scene);
    EXPECT_EQ(note->getParentInstance(), -1);
    EXPECT_EQ(note->getRef(), 1);
    EXPECT_EQ(note->getRefCalls(), 1);
    EXPECT_EQ(note->getNumHandlers(), 1);
    EXPECT_STREQ(note->getHandlerByID(0)->getName(), "DUMMY");
    EXPECT_EQ(note->getDataInitialized(), 0);
    EXPECT_EQ(tree.at("scene/note"), note);
    EXPECT_EQ(tree.scene->getNumHandlers(), 0);
}

TEST(FieldPathKind, NodeCreatesAStructureAndThePathGoesOnInIt) {
    SceneTree tree;
    DataField* v = tree.at("node:extra/string:v");
    ASSERT_NE(v, nullptr);
    EXPECT_STREQ(v->getTypeName(), "DataValue");
    DataField* extra = tree.at("extra");
    ASSERT_NE(extra, nullptr);
    EXPECT_STREQ(extra->getTypeName(), "DataStructure");
    EXPECT_EQ(v->getParent(), extra);
    EXPECT_EQ(extra->getParent(), &tree.root);
    EXPECT_NE(extra->getHandlerByName(Text("DUMMY")), nullptr);
    EXPECT_STREQ(v->getFullPath(), "extra/v");
}

TEST(FieldPathKind, HashTableTakesItsNameFromBetweenTheColons) {
    SceneTree tree;
    DataField* table = tree.at("DataHashTable:towns:City");
    ASSERT_NE(table, nullptr);
    EXPECT_STREQ(table->getTypeName(), "DataHashTable");
    EXPECT_STREQ(table->getName(), "towns");
    EXPECT_EQ(table->getSize(), 0);
    EXPECT_EQ(table->getParentInstance(), -1);
    EXPECT_NE(table->getHandlerByName(Text("DUMMY")), nullptr);
    EXPECT_EQ(tree.at("towns"), table);
    EXPECT_EQ(tree.at("DataHashTable:towns:City"), table);
    EXPECT_EQ(table->getRefCalls(), 2);
    EXPECT_EQ(tree.root.getNumFields(), 4);
}

TEST(FieldPathKind, HashTableWithoutEntryTypeCreatesNothing) {
    SceneTree tree;
    EXPECT_EQ(tree.at("DataHashTable:towns"), nullptr);
    EXPECT_EQ(tree.root.getNumFields(), 3);
}

TEST(FieldPathKind, HashTableOnAnExistingTableReachesItsEntries) {
    SceneTree tree;
    EXPECT_EQ(tree.at("DataHashTable:cities:City"), tree.cities);
    EXPECT_EQ(tree.cities->getSize(), 2);
}

TEST(FieldPathKind, UnknownCreatesNothing) {
    SceneTree tree;
    for (const char* path : {"Unheard:thing", "Unheard[4]:thing", "String:thing", "NODE:thing", ":thing",
                             " string:thing", "string :thing", "datahashtable:a:b"})
        EXPECT_EQ(tree.at(path), nullptr) << path;
    EXPECT_EQ(tree.root.getNumFields(), 3);
}

TEST(FieldPathKind, OnlyTheFirstColonSeparates) {
    SceneTree tree;
    DataField* field = tree.at("string:a:b");
    ASSERT_NE(field, nullptr);
    EXPECT_STREQ(field->getName(), "a:b");
    EXPECT_EQ(tree.at("string:a:b"), field);
    EXPECT_EQ(tree.at("a:b"), nullptr);
}

TEST(FieldPathKind, IndexIsNoPartOfTheName) {
    SceneTree tree;
    DataField* field = tree.at("string:list[7]");
    ASSERT_NE(field, nullptr);
    EXPECT_STREQ(field->getName(), "list");
    EXPECT_EQ(field->getSize(), 1);
}

TEST(FieldPathKind, OnAnExistingChildCountsOneMoreCallEachTime) {
    SceneTree tree;
    tree.scene->setParent(&tree.root, 5);
    for (int calls = 2; calls < 6; ++calls) {
        EXPECT_EQ(tree.at("node:scene"), tree.scene);
        EXPECT_EQ(tree.scene->getRefCalls(), calls);
        EXPECT_EQ(tree.scene->getRef(), 1);
        EXPECT_EQ(tree.scene->getNumHandlers(), 1);
        EXPECT_EQ(tree.scene->getParentInstance(), -1);
    }
    EXPECT_EQ(tree.at("scene"), tree.scene);
    EXPECT_EQ(tree.scene->getRefCalls(), 5);
}

TEST(FieldPathKind, OnAnExistingChildKeepsItsClassAndValue) {
    SceneTree tree;
    tree.title->setData("kept");
    for (const char* path : {"scene/node:title", "scene/Unheard:title", "scene/string:title", "scene/:title"})
        EXPECT_EQ(tree.at(path), tree.title) << path;
    EXPECT_EQ(*tree.title->getData(0), "kept");
    EXPECT_EQ(tree.title->getNumHandlers(), 1);
}

TEST(FieldPathKind, OnAnExistingChildKeepsAHandlerOfThatName) {
    SceneTree tree;
    DataHandler own(Text("DUMMY"));
    tree.title->registerHandler(&own);
    EXPECT_EQ(tree.at("scene/string:title"), tree.title);
    EXPECT_EQ(tree.title->getNumHandlers(), 1);
    EXPECT_EQ(tree.title->getHandlerByName(Text("DUMMY")), &own);
    tree.title->unregisterHandler(&own);
}

TEST(FieldPathKind, OnAnExistingChildAddsItsMarkerBehindOtherHandlers) {
    SceneTree tree;
    DataHandler other(Text("other"));
    tree.title->registerHandler(&other);
    tree.at("scene/string:title");
    ASSERT_EQ(tree.title->getNumHandlers(), 2);
    EXPECT_EQ(tree.title->getHandlerByID(0), &other);
    EXPECT_STREQ(tree.title->getHandlerByID(1)->getName(), "DUMMY");
}

TEST(FieldPathKind, OnAnExistingChildCountsAnewWhoAsksForRealChanges) {
    SceneTree tree;
    DataHandler other(Text("other"));
    tree.title->registerHandler(&other);
    other.setNotifyOnValueChange(1);
    EXPECT_EQ(tree.title->getCountNotifyOnValueChange(), 0);
    tree.at("scene/string:title");
    EXPECT_EQ(tree.title->getCountNotifyOnValueChange(), 1);
}

TEST(FieldPathKind, AddsAMarkerThatHidesNobodyWhereverItStands) {
    SceneTree tree;
    Diary diary;
    RecordingHandler a(diary, "A");
    RecordingHandler b(diary, "B");
    RecordingHandler c(diary, "C");
    tree.title->registerHandler(&a);
    tree.title->registerHandler(&b);
    tree.at("scene/string:title");
    tree.title->registerHandler(&c);
    diary.take();
    tree.title->setData("1");
    EXPECT_EQ(diary.take(), "A changed, B changed, C changed");

    // From the middle to the front, and to the end.
    tree.title->unregisterHandler(&a);
    tree.title->setData("2");
    EXPECT_EQ(diary.take(), "B changed, C changed");
    tree.title->unregisterHandler(&b);
    tree.title->setData("3");
    EXPECT_EQ(diary.take(), "C changed");
    tree.title->unregisterHandler(&c);
    tree.title->setData("4");
    EXPECT_EQ(diary.take(), "");
    EXPECT_STREQ(tree.title->getHandlerByID(0)->getName(), "DUMMY");

    tree.title->registerHandler(&a);
    tree.title->registerHandler(&b);
    diary.take();
    tree.title->setData("5");
    EXPECT_EQ(diary.take(), "A changed, B changed");
}

// Each look-up added the marker once more.
TEST(FieldPathKind, OnAnExistingChildAddsOneMarkerForOneThatWasRenamed) {
    SceneTree tree;
    tree.at("scene/string:title");
    DataHandler* first = tree.title->getHandlerByName(Text("DUMMY"));
    first->setName(Text("renamed"));
    tree.at("scene/string:title");
    tree.at("scene/string:title");
    ASSERT_EQ(tree.title->getNumHandlers(), 2);
    EXPECT_EQ(tree.title->getHandlerByName(Text("renamed")), first);
    EXPECT_STREQ(tree.title->getHandlerByID(1)->getName(), "DUMMY");
    EXPECT_NE(tree.title->getHandlerByID(1), first);
    tree.title->unregisterHandler(first);
    EXPECT_EQ(tree.title->getNumHandlers(), 1);
    EXPECT_EQ(first->getField(), nullptr);
}

// The marker was then on both fields.
TEST(FieldPathKind, OnAnExistingChildAddsAnotherMarkerWhenItsOwnWentElsewhere) {
    SceneTree tree;
    tree.at("scene/string:title");
    DataHandler* first = tree.title->getHandlerByName(Text("DUMMY"));
    tree.title->unregisterHandler(first);
    tree.scene->DataField::registerHandler(first);
    tree.at("scene/string:title");
    EXPECT_EQ(tree.scene->getHandlerByName(Text("DUMMY")), first);
    EXPECT_EQ(first->getField(), tree.scene);
    EXPECT_NE(tree.title->getHandlerByName(Text("DUMMY")), first);
    tree.scene->DataField::unregisterHandler(first);
    EXPECT_EQ(tree.scene->getNumHandlers(), 0);
    EXPECT_EQ(tree.title->getNumHandlers(), 1);
}

TEST(FieldPathKind, BelowAMissingNodeCreatesNothing) {
    SceneTree tree;
    EXPECT_EQ(tree.at("missing/string:v"), nullptr);
    EXPECT_EQ(tree.at("points[3]/string:v"), nullptr);
    EXPECT_EQ(tree.at("cities[Paris]/string:v"), nullptr);
    EXPECT_EQ(tree.root.getNumFields(), 3);
    EXPECT_EQ(tree.points->getSize(), 3);
    EXPECT_EQ(tree.cities->getSize(), 2);
}

TEST(FieldPathKind, CreatesInsideElementsAndEntries) {
    SceneTree tree;
    DataField* y = tree.at("points[1]/string:y");
    ASSERT_NE(y, nullptr);
    EXPECT_EQ(y->getParent(), tree.points->getObject(1));
    DataField* mayor = tree.at("cities[Oslo]/string:mayor");
    ASSERT_NE(mayor, nullptr);
    EXPECT_EQ(mayor->getParent(), tree.city("Oslo"));
}

TEST(FieldPathKind, BelowALeafIsNotLookedAt) {
    SceneTree tree;
    EXPECT_EQ(tree.at("scene/title/string:v"), tree.title);
    EXPECT_EQ(tree.scene->getNumFields(), 1);
}

TEST(FieldPathLongName, IsCutByKindsAndNotByLookups) {
    SceneTree tree;
    const std::string name(150, 'n');
    EXPECT_EQ(tree.at(name), nullptr);
    EXPECT_EQ(tree.root.getNumFields(), 3);

    DataField* field = tree.at("string:" + name);
    ASSERT_NE(field, nullptr);
    EXPECT_STREQ(field->getName(), name.substr(0, 99).c_str());
    EXPECT_EQ(tree.root.getNumFields(), 4);
    EXPECT_EQ(tree.at(name.substr(0, 99)), field);
    EXPECT_EQ(tree.at(name.substr(0, 100)), nullptr);
    EXPECT_EQ(tree.at(name), nullptr);

    EXPECT_NE(tree.at("string:" + name), nullptr);
    EXPECT_EQ(tree.root.getNumFields(), 4);
}

TEST(FieldPathLongName, OfNodesAndTablesIsCutToo) {
    SceneTree tree;
    const std::string node(150, 'n');
    const std::string table(150, 't');
    DataField* leaf = tree.at("node:" + node + "/string:v");
    ASSERT_NE(leaf, nullptr);
    EXPECT_STREQ(leaf->getParent()->getName(), node.substr(0, 99).c_str());
    DataField* created = tree.at("DataHashTable:" + table + ":City");
    ASSERT_NE(created, nullptr);
    EXPECT_STREQ(created->getName(), table.substr(0, 99).c_str());
}

TEST(FieldPathWildcard, CreatesNothing) {
    SceneTree tree;
    for (const char* path : {"*", "*/x", "scene/*", "string:*", "*anything/x", "*[2]/x"})
        EXPECT_EQ(tree.at(path), nullptr) << path;
    EXPECT_EQ(tree.root.getNumFields(), 3);
    EXPECT_EQ(tree.scene->getNumFields(), 1);
}

TEST(FieldPathWildcard, StopsBeforeAChildOfThatName) {
    SceneTree tree;
    tree.root.addField(new DataValue(Text("*")), 0);
    EXPECT_EQ(tree.at("*"), nullptr);
}

TEST(FieldPathWildcard, ReachesAllChildrenThroughCommands) {
    SceneTree tree;
    tree.at("scene/string:note");
    tree.root.executeCommand(Text("scene/* = all"), 0);
    EXPECT_EQ(*tree.title->getData(0), "all");
    EXPECT_EQ(*tree.at("scene/note")->getData(0), "all");
}

TEST(FieldPathWildcard, OfAnEarlierPathIsForgotten) {
    SceneTree tree;
    tree.title->setData("old");
    EXPECT_EQ(tree.at("scene/*"), nullptr);
    tree.root.executeCommand(Text("missing = new"), 0);
    EXPECT_EQ(*tree.title->getData(0), "old");
}
