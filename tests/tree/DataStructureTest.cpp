#include <support/SceneTree.h>
#include <support/Texts.h>

#include <gtest/gtest.h>

#include <utility>

namespace {

DataField* value(const char* name) {
    return new DataValue(Text(name));
}

/// Keeps what parse hands to parseCommand.
class CommandRecorder : public DataStructure {
public:
    CommandRecorder() : DataStructure(Text("recorder")) {}

    void parseCommand(char* text, int index) override { commands.emplace_back(text, index); }

    std::vector<std::pair<std::string, int>> commands;
};

using CommandTexts = std::vector<std::pair<std::string, int>>;

TEST(DataStructure, AChildMayBeDestroyedBeforeItsParent) {
    DataStructure scene(Text("scene"));
    {
        DataValue title(Text("title"));
        scene.addField(&title, 0);
    }
    EXPECT_EQ(scene.getNumFields(), 1);
}

TEST(DataStructure, AParentThatIsDestroyedFirstIsForgottenByAllWhoNameIt) {
    DataValue title(Text("title"));
    DataValue refused(Text("title"));
    {
        Orbel root(Text("root"));
        DataStructure scene(Text("scene"));
        root.addField(&scene, 0);
        EXPECT_TRUE(scene.addField(&title, 3));
        EXPECT_FALSE(scene.addField(&refused, 4));
        EXPECT_STREQ(refused.getFullPath(), "scene/title");
    }
    EXPECT_EQ(title.getParent(), nullptr);
    EXPECT_EQ(title.getParentInstance(), 3);
    EXPECT_EQ(refused.getParent(), nullptr);
    EXPECT_STREQ(title.getFullPath(), "");
}

} // namespace

TEST(DataStructure, StartsEmpty) {
    DataStructure structure(Text("empty"));
    EXPECT_STREQ(structure.getTypeName(), "DataStructure");
    EXPECT_EQ(structure.isExactType(DataStructure::getClassType()), 1);
    EXPECT_EQ(structure.getNumFields(), 0);
    EXPECT_EQ(structure.getFieldByIndex(0), nullptr);
    EXPECT_EQ(structure.getFieldByIndex(-1), nullptr);
    EXPECT_EQ(structure.getField(Text("a"), 0, 0), nullptr);
    structure.removeField(Text("a"), 0);
    structure.removeChildren();
    structure.deleteChildren();
    EXPECT_EQ(structure.getNumFields(), 0);
}

TEST(DataStructure, CountsAsOneWithoutText) {
    SceneTree tree;
    char* text = nullptr;
    EXPECT_EQ(tree.scene->getSize(), 1);
    tree.scene->setSize(5);
    EXPECT_EQ(tree.scene->getSize(), 1);
    EXPECT_FALSE(tree.scene->getData(&text, 0));
    EXPECT_EQ(text, nullptr);
    EXPECT_EQ(tree.scene->getData(0), nullptr);
    EXPECT_EQ(tree.scene->getDataVector(), nullptr);
}

TEST(DataStructure, KeepsChildrenInByteOrderOfNames) {
    DataStructure structure(Text("s"));
    const SubtreeCleanup belowStructure{structure};
    for (const char* name : {"b", "a10", "Z", "a2", "\xc3\xa4", "_"})
        EXPECT_TRUE(structure.addField(value(name), 0));
    std::vector<DataField*> fields = {nullptr};
    structure.getFieldsVector(&fields);
    ASSERT_EQ(fields.size(), 6u);
    const std::vector<std::string> names = {"Z", "_", "a10", "a2", "b", "\xc3\xa4"};
    for (int index = 0; index < 6; ++index) {
        EXPECT_EQ(fields.at(index)->getName(), names.at(index));
        EXPECT_EQ(structure.getFieldByIndex(index), fields.at(index));
    }
}

TEST(DataStructure, IndexBelowZeroIsTheFirstChildAndPastTheEndNone) {
    SceneTree tree;
    EXPECT_EQ(tree.root.getFieldByIndex(-3), tree.cities);
    EXPECT_EQ(tree.root.getFieldByIndex(0), tree.cities);
    EXPECT_EQ(tree.root.getFieldByIndex(2), tree.scene);
    EXPECT_EQ(tree.root.getFieldByIndex(tree.root.getNumFields()), nullptr);
    EXPECT_EQ(tree.root.getFieldByIndex(1000), nullptr);
}

TEST(DataStructure, ClearFieldsVectorOnlyEmptiesIt) {
    SceneTree tree;
    std::vector<DataField*> fields = {tree.title};
    tree.scene->clearFieldsVector(&fields);
    EXPECT_TRUE(fields.empty());
    EXPECT_EQ(tree.scene->getNumFields(), 1);
}

TEST(DataStructure, AddingMakesItParentAndOwner) {
    DataStructure structure(Text("s"));
    const SubtreeCleanup belowStructure{structure};
    DataField* child = value("child");
    EXPECT_TRUE(structure.addField(child, 4));
    EXPECT_EQ(child->getParent(), &structure);
    EXPECT_EQ(child->getParentInstance(), 4);
    EXPECT_EQ(child->getRef(), 1);
    EXPECT_EQ(child->getRefCalls(), 1);
    EXPECT_EQ(structure.getNumFields(), 1);
}

TEST(DataStructure, AddingUnderATakenNameKeepsTheEntryYetSetsParentAndReference) {
    DataStructure structure(Text("s"));
    const SubtreeCleanup belowStructure{structure};
    DataField* child = value("same");
    DataValue second(Text("same"));
    EXPECT_TRUE(structure.addField(child, 0));
    EXPECT_FALSE(structure.addField(&second, 7));
    EXPECT_EQ(structure.getNumFields(), 1);
    EXPECT_EQ(structure.getField(Text("same"), 0, 0), child);
    EXPECT_EQ(second.getParent(), &structure);
    EXPECT_EQ(second.getParentInstance(), 7);
    EXPECT_EQ(second.getRef(), 1);
    EXPECT_EQ(child->getRefCalls(), 1);
}

TEST(DataStructure, AddingAChildAgainCountsACallOnly) {
    DataStructure structure(Text("s"));
    const SubtreeCleanup belowStructure{structure};
    DataField* child = value("child");
    EXPECT_TRUE(structure.addField(child, 0));
    EXPECT_FALSE(structure.addField(child, 1));
    EXPECT_EQ(child->getRef(), 1);
    EXPECT_EQ(child->getRefCalls(), 2);
    EXPECT_EQ(child->getParentInstance(), 1);
}

TEST(DataStructure, RemovingReleasesTheFieldAndDeletesNothing) {
    SceneTree tree;
    tree.scene->removeField(Text("title"), 0);
    EXPECT_EQ(tree.scene->getNumFields(), 0);
    EXPECT_EQ(tree.title->getRef(), 0);
    EXPECT_EQ(tree.title->getRefCalls(), 0);
    delete tree.title;
}

TEST(DataStructure, RemovingTakesPlainChildNamesOnly) {
    SceneTree tree;
    tree.root.removeField(Text("scene/title"), 0);
    EXPECT_EQ(tree.at("scene/title"), tree.title);
    EXPECT_EQ(tree.title->getRef(), 1);
    EXPECT_EQ(tree.title->getParent(), tree.scene);
    tree.root.removeField(Text("missing"), 0);
    tree.root.removeField(Text(""), 0);
    EXPECT_EQ(tree.root.getNumFields(), 3);
}

TEST(DataStructure, RemovingFindsAChildNamedWithAWholePath) {
    DataStructure structure(Text("s"));
    const SubtreeCleanup belowStructure{structure};
    DataField* child = value("a/b");
    structure.addField(child, 0);
    structure.removeField(Text("a/b"), 0);
    EXPECT_EQ(structure.getNumFields(), 0);
    EXPECT_EQ(child->getRef(), 0);
    delete child;
}

TEST(DataStructure, RemovingAllKeepsTheOrdinalsAsInstances) {
    DataStructure structure(Text("s"));
    std::vector<DataField*> children = {value("a"), value("b"), value("c")};
    for (DataField* child : children)
        structure.addField(child, 9);
    structure.removeChildren();
    EXPECT_EQ(structure.getNumFields(), 0);
    for (int index = 0; index < 3; ++index) {
        EXPECT_EQ(children.at(index)->getParent(), nullptr);
        EXPECT_EQ(children.at(index)->getParentInstance(), index);
        EXPECT_EQ(children.at(index)->getRef(), 0);
        delete children.at(index);
    }
}

TEST(DataStructure, RemovingAllCountsThoseThatWereDestroyedToo) {
    DataStructure structure(Text("s"));
    std::vector<DataField*> children = {value("c"), value("b"), value("a")};
    for (DataField* child : children)
        structure.addField(child, 0);
    delete children.at(1);
    structure.removeChildren();
    EXPECT_EQ(children.at(0)->getParentInstance(), 2);
    EXPECT_EQ(children.at(2)->getParentInstance(), 0);

    // Nothing is left behind that would be in the way.
    for (int number = 0; number < 20; ++number)
        structure.addField(value(std::to_string(number).c_str()), 0);
    structure.addField(children.at(0), 0);
    EXPECT_EQ(structure.getNumFields(), 21);
    EXPECT_EQ(structure.getField(Text("c"), 0, 0), children.at(0));
    EXPECT_EQ(structure.getField(Text("19"), 0, 0), structure.getFieldByIndex(11));
    structure.deleteChildren();
    delete children.at(2);
}

TEST(DataStructure, DeletingTakesUnusedChildrenOfAllLevels) {
    Orbel root(Text("root"));
    auto* branch = new DataStructure(Text("branch"));
    auto* twig = new DataStructure(Text("twig"));
    root.addField(branch, 0);
    branch->addField(twig, 0);
    twig->addField(value("leaf"), 0);
    root.addField(value("other"), 0);
    root.deleteChildren();
    EXPECT_EQ(root.getNumFields(), 0);
}

TEST(DataStructure, DeletingSparesWhatIsReferenced) {
    DataStructure structure(Text("s"));
    DataValue referenced(Text("referenced"));
    int owner = 0;
    referenced.ref(&owner, nullptr);
    structure.addField(&referenced, 5);
    structure.addField(value("other"), 0);
    structure.deleteChildren();
    EXPECT_EQ(structure.getNumFields(), 0);
    EXPECT_EQ(referenced.getParent(), nullptr);
    EXPECT_EQ(referenced.getParentInstance(), 0);
    EXPECT_EQ(referenced.getRef(), 1);
}

TEST(DataStructure, DeletingSparesWhatIsObserved) {
    DataStructure structure(Text("s"));
    DataValue observed(Text("observed"));
    DataHandler handler;
    observed.registerHandler(&handler);
    structure.addField(&observed, 5);
    structure.deleteChildren();
    EXPECT_EQ(structure.getNumFields(), 0);
    EXPECT_EQ(observed.getParent(), nullptr);
    EXPECT_EQ(observed.getParentInstance(), 0);
    EXPECT_EQ(observed.getRef(), 0);
    EXPECT_EQ(handler.getField(), &observed);
}

TEST(DataStructure, DeletingSparesAnObservedNodeWithItsChildren) {
    DataStructure structure(Text("s"));
    DataStructure branch(Text("branch"));
    const SubtreeCleanup belowBranch{branch};
    DataHandler handler;
    branch.registerHandler(&handler);
    branch.addField(value("leaf"), 0);
    structure.addField(&branch, 0);
    structure.deleteChildren();
    EXPECT_EQ(structure.getNumFields(), 0);
    EXPECT_EQ(branch.getNumFields(), 1);
}

TEST(DataStructure, DeletingABranchDetachesWhatIsObservedInIt) {
    DataStructure structure(Text("s"));
    auto* branch = new DataStructure(Text("branch"));
    DataValue observed(Text("observed"));
    DataHandler handler;
    observed.registerHandler(&handler);
    branch->addField(&observed, 3);
    structure.addField(branch, 0);
    structure.deleteChildren();
    EXPECT_EQ(structure.getNumFields(), 0);
    EXPECT_EQ(observed.getParent(), nullptr);
    EXPECT_EQ(handler.getField(), &observed);
}

TEST(DataStructure, DeletingSparesArraysWhoseElementsHaveFields) {
    DataStructure structure(Text("s"));
    DataArray array(Text("array"));
    const SubtreeCleanup belowArray{array};
    array.setSize(2);
    array.getObject(0)->addField(value("x"), 0);
    structure.addField(&array, 0);
    structure.deleteChildren();
    EXPECT_EQ(structure.getNumFields(), 0);
    EXPECT_EQ(array.getParent(), nullptr);
    EXPECT_EQ(array.getSize(), 2);
    EXPECT_EQ(array.getNumFields(), 1);
}

TEST(DataStructure, DeletingSparesWhatAPathWithAKindCreated) {
    DataStructure structure(Text("s"));
    DataField* note = structure.getField(Text("string:note"), 0, 0);
    structure.deleteChildren();
    EXPECT_EQ(structure.getNumFields(), 0);
    EXPECT_EQ(note->getNumHandlers(), 1);
    EXPECT_EQ(note->getParent(), nullptr);
    delete note;
}

TEST(DataStructure, DestroyingLeavesChildrenAlive) {
    DataValue child(Text("child"));
    {
        DataStructure structure(Text("s"));
        structure.addField(&child, 0);
        child.setData("kept");
    }
    EXPECT_EQ(*child.getData(0), "kept");
    EXPECT_EQ(child.getRef(), 1);
}

TEST(DataStructure, ClonesItselfAndItsChildren) {
    SceneTree tree;
    auto* twig = new DataStructure(Text("twig"));
    tree.scene->addField(twig, 0);
    twig->addField(value("leaf"), 0);
    tree.title->setData("text");
    DataHandler handler;
    DataValue target(Text("target"));
    tree.scene->registerHandler(&handler);
    tree.scene->addTargetLink(&target);
    int owner = 0;
    tree.scene->ref(&owner, nullptr);

    auto* copy = static_cast<DataStructure*>(tree.scene->clone());
    EXPECT_STREQ(copy->getTypeName(), "DataStructure");
    EXPECT_STREQ(copy->getName(), "scene");
    EXPECT_EQ(copy->getParent(), nullptr);
    EXPECT_EQ(copy->getRef(), 0);
    EXPECT_EQ(copy->getNumHandlers(), 0);
    ASSERT_EQ(copy->getNumFields(), 2);
    DataField* title = copy->getField(Text("title"), 0, 0);
    EXPECT_NE(title, tree.title);
    EXPECT_EQ(*title->getData(0), "text");
    EXPECT_EQ(title->getParent(), copy);
    EXPECT_EQ(title->getParentInstance(), -1);
    DataField* leaf = copy->getField(Text("twig/leaf"), 0, 0);
    ASSERT_NE(leaf, nullptr);
    EXPECT_NE(leaf->getParent(), twig);
    EXPECT_EQ(tree.scene->getNumFields(), 2);

    deleteSubtree(*copy);
    delete copy;
    EXPECT_EQ(tree.scene->getNumHandlers(), 1);
    // Through the structure it would take the scene, which nobody observes any more, out of the tree.
    tree.scene->DataField::unregisterHandler(&handler);
    tree.scene->removeAllTargets();
}

TEST(DataStructure, ClearsAllBelow) {
    SceneTree tree;
    tree.title->setData("full");
    tree.title->setSize(2);
    tree.title->setData("full", 1);
    tree.xOfPoint(2)->setData("full");
    tree.xOf(tree.city("Oslo"))->setData("full");
    tree.root.clearData();
    EXPECT_EQ(valuesOf(tree.title), (std::vector<std::string>{"", ""}));
    EXPECT_EQ(*tree.xOfPoint(2)->getData(0), "");
    EXPECT_EQ(*tree.xOf(tree.city("Oslo"))->getData(0), "");
}

TEST(DataStructure, CopiesWhatBothHave) {
    SceneTree from;
    SceneTree to;
    from.title->setData("new");
    from.xOfPoint(1)->setData("7");
    from.at("scene/string:onlyThere");
    from.at("scene/string:#hidden")->setData("secret");
    to.at("scene/string:#hidden")->setData("own");
    to.at("scene/string:onlyHere")->setData("kept");
    EXPECT_TRUE(to.root.copyData(&from.root, 0, 0, 0));
    EXPECT_EQ(*to.title->getData(0), "new");
    EXPECT_EQ(*to.xOfPoint(1)->getData(0), "7");
    EXPECT_EQ(to.at("scene/onlyThere"), nullptr);
    EXPECT_EQ(*to.at("scene/#hidden")->getData(0), "own");
    EXPECT_EQ(*to.at("scene/onlyHere")->getData(0), "kept");
}

TEST(DataStructure, CopiesAllValuesUpToTheSmallerSize) {
    SceneTree from;
    SceneTree to;
    from.title->setSize(3);
    from.title->setData(Texts{"a", "b", "c"}, 0, -1);
    to.title->setSize(2);
    EXPECT_TRUE(to.scene->copyData(from.scene, 1, 1, 1));
    EXPECT_EQ(valuesOf(to.title), (std::vector<std::string>{"a", "b"}));
}

TEST(DataStructure, CopiesFromObjectsAndRootsToo) {
    DataObject object(Text("object"));
    const SubtreeCleanup belowObject{object};
    Orbel root(Text("root"));
    const SubtreeCleanup belowRoot{root};
    DataStructure target(Text("target"));
    const SubtreeCleanup belowTarget{target};
    for (DataStructure* structure : {static_cast<DataStructure*>(&object), static_cast<DataStructure*>(&root)})
        structure->addField(value("x"), 0);
    target.addField(value("x"), 0);
    object.getFieldByIndex(0)->setData("object");
    root.getFieldByIndex(0)->setData("root");
    EXPECT_TRUE(target.copyData(&object, 0, 0, -1));
    EXPECT_EQ(*target.getFieldByIndex(0)->getData(0), "object");
    EXPECT_TRUE(target.copyData(&root, 0, 0, -1));
    EXPECT_EQ(*target.getFieldByIndex(0)->getData(0), "root");
}

TEST(DataStructure, CopiesFromNothingElse) {
    SceneTree tree;
    DataNode node(Text("node"));
    EXPECT_FALSE(tree.scene->copyData(tree.title, 0, 0, -1));
    EXPECT_FALSE(tree.scene->copyData(tree.points, 0, 0, -1));
    EXPECT_FALSE(tree.scene->copyData(&node, 0, 0, -1));
    EXPECT_TRUE(tree.scene->copyData(tree.scene, 0, 0, -1));
}

TEST(DataStructureParse, RunsTheCommandsBetweenTheBraces) {
    CommandRecorder recorder;
    recorder.parse(nullptr, Text("ignored {a = 1; b = {c = 2}} tail}"));
    EXPECT_EQ(recorder.commands, (CommandTexts{{"a = 1; b = {c = 2}", 0}}));
}

TEST(DataStructureParse, WithoutBracesRunsNothing) {
    CommandRecorder recorder;
    recorder.parse(nullptr, Text("a = 1"));
    recorder.parse(nullptr, Text(""));
    EXPECT_TRUE(recorder.commands.empty());
}

TEST(DataStructureParse, GivesOneGroupToEachIndex) {
    CommandRecorder recorder;
    recorder.parse(Text("1-2,5]"), Text("{a=1},{a=2;b=3},{a=4}"));
    EXPECT_EQ(recorder.commands, (CommandTexts{{"a=1", 1}, {"a=2;b=3", 2}, {"a=4", 5}}));
}

TEST(DataStructureParse, StopsWhenGroupsOrIndicesRunOut) {
    CommandRecorder fewGroups;
    fewGroups.parse(Text("0-2000000000"), Text("{a=1},{a=2}"));
    EXPECT_EQ(fewGroups.commands, (CommandTexts{{"a=1", 0}, {"a=2", 1}}));
    CommandRecorder fewIndices;
    fewIndices.parse(Text("4"), Text("{a=1},{a=2}"));
    EXPECT_EQ(fewIndices.commands, (CommandTexts{{"a=1", 4}}));
}

// A range as long as this ran nothing at all.
TEST(DataStructureParse, TakesRangesUpToTheLargestNumber) {
    CommandRecorder recorder;
    recorder.parse(Text("0-2147483647"), Text("{a=1}"));
    recorder.parse(Text("2147483646-2147483647,0"), Text("{a=1},{a=2},{a=3}"));
    EXPECT_EQ(recorder.commands, (CommandTexts{{"a=1", 0}, {"a=1", 2147483646}, {"a=2", 2147483647}, {"a=3", 0}}));
}

TEST(DataStructureParse, StopsAtARangeWithoutAStart) {
    CommandRecorder recorder;
    recorder.parse(Text("3,x,4"), Text("{a=1},{a=2},{a=3}"));
    EXPECT_EQ(recorder.commands, (CommandTexts{{"a=1", 3}}));
}

TEST(DataStructureParse, StoresIntoChildren) {
    SceneTree tree;
    tree.at("scene/string:note");
    tree.scene->parse(nullptr, Text("{title = a b; note = {x;y}; missing = 1}"));
    EXPECT_EQ(*tree.title->getData(0), "a b");
    EXPECT_EQ(*tree.at("scene/note")->getData(0), "{x;y}");
    EXPECT_EQ(tree.scene->getNumFields(), 2);
}

TEST(WholePathAccess, ChangesAndReadsSizes) {
    SceneTree tree;
    int size = 0;
    EXPECT_TRUE(tree.root.setFieldSize(Text("scene/title"), 3));
    EXPECT_TRUE(tree.root.getFieldSize(Text("scene/title"), &size));
    EXPECT_EQ(size, 3);
    EXPECT_TRUE(tree.root.getFieldSize(Text("points"), &size));
    EXPECT_EQ(size, 3);
    EXPECT_TRUE(tree.root.getFieldSize(Text("scene"), &size));
    EXPECT_EQ(size, 1);
}

TEST(WholePathAccess, StoresInAllFourForms) {
    SceneTree tree;
    Text path("scene/title");
    tree.title->setSize(4);
    std::string string = "from string";
    EXPECT_TRUE(tree.root.setFieldData(path, &string));
    EXPECT_EQ(*tree.title->getData(0), "from string");
    EXPECT_TRUE(tree.root.setFieldData(path, Text("first")));
    EXPECT_EQ(*tree.title->getData(0), "first");
    EXPECT_TRUE(tree.root.setFieldData(path, Text("indexed"), 3));
    EXPECT_TRUE(tree.root.setFieldData(path, Texts{"b", "c"}, 1, -1));
    EXPECT_EQ(valuesOf(tree.title), (std::vector<std::string>{"first", "b", "c", "indexed"}));
}

TEST(WholePathAccess, ReadsInAllThreeForms) {
    SceneTree tree;
    Text path("scene/title");
    tree.title->setSize(3);
    tree.title->setData(Texts{"a", "b", "c"}, 0, -1);
    std::string string;
    char* pointer = nullptr;
    std::vector<char*> list;
    EXPECT_TRUE(tree.root.getFieldData(path, &string));
    EXPECT_EQ(string, "a");
    EXPECT_TRUE(tree.root.getFieldData(path, &pointer));
    EXPECT_EQ(pointer, tree.title->getData(0)->data());
    EXPECT_TRUE(tree.root.getFieldData(path, &list, 1, -1));
    ASSERT_EQ(list.size(), 2u);
    EXPECT_STREQ(list[0], "b");
    EXPECT_STREQ(list[1], "c");
}

TEST(WholePathAccess, TellsOnlyWhetherTheFieldWasFound) {
    SceneTree tree;
    char* pointer = nullptr;
    std::vector<char*> list;
    EXPECT_TRUE(tree.root.setFieldData(Text("scene/title"), Text("lost"), 99));
    EXPECT_TRUE(tree.root.setFieldData(Text("scene/title"), Texts{"lost"}, -5, -1));
    EXPECT_TRUE(tree.root.setFieldData(Text("scene"), Text("lost")));
    EXPECT_TRUE(tree.root.setFieldSize(Text("scene/title"), -5));
    EXPECT_TRUE(tree.root.getFieldData(Text("scene"), &pointer));
    EXPECT_TRUE(tree.root.getFieldData(Text("scene"), &list, 0, -1));
    EXPECT_EQ(pointer, nullptr);
    EXPECT_EQ(tree.title->getDataInitialized(), 1);
    EXPECT_EQ(valuesOf(tree.title), std::vector<std::string>{" "});
}

TEST(WholePathAccess, OfAFieldWithoutTextsLeavesTheStringAlone) {
    SceneTree tree;
    std::string string = "kept";
    EXPECT_FALSE(tree.root.getFieldData(Text("scene"), &string));
    EXPECT_EQ(string, "kept");
}

TEST(WholePathAccess, OfAMissingFieldIsFalse) {
    SceneTree tree;
    for (const char* path : {"missing", "", "scene/missing", "points[3]/x", "*"}) {
        std::string string = "kept";
        char* pointer = string.data();
        int size = 7;
        std::vector<char*> list = {pointer};
        EXPECT_FALSE(tree.root.setFieldSize(Text(path), 2));
        EXPECT_FALSE(tree.root.getFieldSize(Text(path), &size));
        EXPECT_FALSE(tree.root.setFieldData(Text(path), &string));
        EXPECT_FALSE(tree.root.setFieldData(Text(path), Text("a")));
        EXPECT_FALSE(tree.root.setFieldData(Text(path), Text("a"), 0));
        EXPECT_FALSE(tree.root.setFieldData(Text(path), &list, 0, -1));
        EXPECT_FALSE(tree.root.getFieldData(Text(path), &string));
        EXPECT_FALSE(tree.root.getFieldData(Text(path), &pointer));
        EXPECT_FALSE(tree.root.getFieldData(Text(path), &list, 0, -1));
        EXPECT_EQ(string, "kept");
        EXPECT_EQ(size, 7);
        EXPECT_EQ(list.size(), 1u);
    }
    EXPECT_EQ(tree.root.getNumFields(), 3);
}

TEST(WholePathAccess, ResolvesTheEntryOfAKey) {
    SceneTree tree;
    int size = 0;
    EXPECT_TRUE(tree.root.setFieldData(Text("cities[Oslo]/x"), Text("12")));
    EXPECT_EQ(*tree.xOf(tree.city("Oslo"))->getData(0), "12");
    EXPECT_TRUE(tree.root.getFieldSize(Text("cities[Oslo]"), &size));
    EXPECT_EQ(size, 1);
    EXPECT_TRUE(tree.root.getFieldSize(Text("cities"), &size));
    EXPECT_EQ(size, 2);
}

TEST(WholePathAccess, OutOfAnElementLeadsToTheFirstElement) {
    SceneTree tree;
    DataObject& last = *tree.points->getObject(2);
    DataField* const x = tree.xOfPoint(0);
    Text path("../x");
    int size = 0;
    std::string string = "string";
    char* pointer = nullptr;
    std::vector<char*> list;
    EXPECT_TRUE(last.setFieldSize(path, 2));
    EXPECT_EQ(x->getSize(), 2);
    EXPECT_TRUE(last.getFieldSize(path, &size));
    EXPECT_EQ(size, 2);
    EXPECT_TRUE(last.setFieldData(path, Text("text")));
    EXPECT_EQ(*x->getData(0), "text");
    EXPECT_TRUE(last.setFieldData(path, &string));
    EXPECT_EQ(*x->getData(0), "string");
    EXPECT_TRUE(last.setFieldData(path, Text("indexed"), 1));
    EXPECT_EQ(*x->getData(1), "indexed");
    EXPECT_TRUE(last.getFieldData(path, &string));
    EXPECT_EQ(string, "string");
    EXPECT_TRUE(last.getFieldData(path, &pointer));
    EXPECT_EQ(pointer, x->getData(0)->data());
    EXPECT_TRUE(last.getFieldData(path, &list, 0, -1));
    ASSERT_EQ(list.size(), 2u);
    EXPECT_STREQ(list[1], "indexed");
    EXPECT_TRUE(last.setFieldData(path, Texts{"a", "b"}, 0, -1));
    EXPECT_EQ(valuesOf(x), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(tree.xOfPoint(1)->getDataInitialized(), 0);
}

TEST(WholePathAccess, CreatesThroughKinds) {
    SceneTree tree;
    EXPECT_TRUE(tree.root.setFieldData(Text("node:extra/string:v"), Text("new")));
    EXPECT_EQ(*tree.at("extra/v")->getData(0), "new");
}

TEST(DataStructure, ClearLinksReachesChildren) {
    SceneTree from;
    SceneTree to;
    from.title->addTargetLink(to.title);
    from.scene->addTargetLink(to.scene);
    from.root.ClearLinks();
    EXPECT_EQ(to.title->getLinkSource(), nullptr);
    EXPECT_EQ(to.scene->getLinkSource(), nullptr);
}
