#include <support/DeclaredTypes.h>
#include <support/RecordingHandler.h>
#include <support/SceneTree.h>
#include <support/Texts.h>

#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <string>
#include <vector>

/// Null reads as the empty text, or as nothing to write to, everywhere in a tree.

namespace {

char* const noText = nullptr;
std::string* const noString = nullptr;
std::vector<char*>* const noTexts = nullptr;
std::vector<DataField*>* const noFields = nullptr;
char** const noPointer = nullptr;
int* const noSize = nullptr;
DataHandler* const noHandler = nullptr;

class NullArguments : public testing::Test {
protected:
    /// Whether the tree still is what it was.
    std::string shown() {
        std::ostringstream os;
        tree.root.dump(os, -1, -1, 1);
        return os.str();
    }

    /// What every node has, whichever it is.
    static void askAll(DataNode& node, const char* path) {
        node.getFieldsVector(noFields);
        EXPECT_FALSE(node.addField(nullptr, 0));
        EXPECT_EQ(node.getField(noText, 0, 1), nullptr);
        node.removeField(noText, 0);
        EXPECT_FALSE(node.registerHandler(Text(path), noHandler, 0));
        EXPECT_FALSE(node.registerHandler(noText, noHandler, 0));
        EXPECT_FALSE(node.unregisterHandler(noHandler));
        EXPECT_FALSE(node.setFieldSize(noText, 3));
        EXPECT_FALSE(node.getFieldSize(noText, noSize));
        EXPECT_FALSE(node.getFieldData(noText, noString));
        EXPECT_FALSE(node.getFieldData(noText, noPointer));
        node.getFieldSize(Text(path), noSize);
        node.getFieldData(Text(path), noString);
        node.getFieldData(Text(path), noPointer);
        node.getFieldData(Text(path), noTexts, 0, -1);
        node.getFieldData(noText, noTexts, 0, -1);
        node.setFieldData(noText, noText);
        node.setFieldData(noText, noString);
        node.setFieldData(noText, noText, 0);
        node.setFieldData(noText, noTexts, 0, -1);
        node.executeCommand(noText, 0);
        node.parseCommand(noText, 0);
        node.executeCopyCommand(noText);
        node.parseCopyCommand(noText);
        node.executeClearField(noText);
        node.executeClearCommand(noText);
        node.getFieldsByRange(noText, noFields);
        node.getFieldsByRange(Text("0-9,Oslo"), noFields);
        node.setData(noText, 0);
        node.setData(noText);
        node.setData(noString, 0);
        node.setData(noTexts, 0, -1);
        node.parse(noText, noText);
        node.parse(Text("0"), noText);
        EXPECT_FALSE(node.getData(noPointer, 0));
        EXPECT_FALSE(node.copyData(nullptr, 0, 0, -1));
        node.addTargetLink(nullptr);
        node.removeTargetLink(nullptr);
        node.setLinkSource(nullptr);
        EXPECT_FALSE(node.findLinkSource(nullptr));
        EXPECT_EQ(node.getHandlerByName(noText), nullptr);
        std::ostringstream os;
        node.dumpData(noText, 0, os);
        node.dumpField(noText, os);
        EXPECT_EQ(os.str(), "");
    }

    SceneTree tree;
};

} // namespace

TEST_F(NullArguments, DoNothingToStructures) {
    const std::string before = shown();
    askAll(tree.root, "scene/title");
    askAll(*tree.scene, "title");
    tree.scene->clearFieldsVector(noFields);
    tree.scene->parseLinkCommand(noText);
    tree.scene->executeLinkCommand(noText);
    EXPECT_FALSE(tree.scene->addLink(noText, noText));
    EXPECT_FALSE(tree.scene->addLink(Text("title"), noText));
    EXPECT_FALSE(tree.scene->removeLink(noText));
    EXPECT_EQ(shown(), before);
}

TEST_F(NullArguments, DoNothingToPlainNodes) {
    DataNode node(Text("node"));
    askAll(node, "x");
}

TEST_F(NullArguments, DoNothingToArraysAndTheirElements) {
    const std::string before = shown();
    askAll(*tree.points, "x");
    askAll(*tree.points->getObject(1), "x");
    EXPECT_EQ(shown(), before);
}

TEST_F(NullArguments, DoNothingToTables) {
    const std::string before = shown();
    askAll(*tree.cities, "x");
    tree.cities->setObjectData(noText, noText);
    EXPECT_EQ(tree.cities->getObject(noText), nullptr);
    EXPECT_EQ(shown(), before);
    DataObject* unnamed = tree.cities->newObject(noText);
    EXPECT_EQ(tree.cities->getObject(Text("")), unnamed);
    EXPECT_EQ(tree.cities->newObject(noText), unnamed);
}

TEST_F(NullArguments, TellWhetherTheFieldIsThere) {
    EXPECT_TRUE(tree.root.getFieldSize(Text("scene/title"), noSize));
    EXPECT_TRUE(tree.root.getFieldData(Text("scene/title"), noString));
    EXPECT_TRUE(tree.root.getFieldData(Text("scene/title"), noPointer));
    EXPECT_TRUE(tree.root.getFieldData(Text("scene/title"), noTexts, 0, -1));
    EXPECT_TRUE(tree.points->getFieldData(Text("x"), noTexts, 0, -1));
    EXPECT_FALSE(tree.points->getFieldData(Text("x"), noTexts, 3, -1));
}

TEST_F(NullArguments, AreStoredAsTheEmptyText) {
    tree.title->setData(static_cast<const char*>(nullptr));
    EXPECT_EQ(*tree.title->getData(0), "");
    tree.title->setData("full");
    EXPECT_TRUE(tree.root.setFieldData(Text("scene/title"), noText));
    EXPECT_EQ(*tree.title->getData(0), "");
    tree.title->setData("full");
    EXPECT_TRUE(tree.root.setFieldData(Text("scene/title"), noString));
    EXPECT_EQ(*tree.title->getData(0), "");
    std::vector<char*> texts(2);
    EXPECT_TRUE(tree.points->setFieldData(Text("x"), &texts, 0, -1));
    EXPECT_EQ(*tree.xOfPoint(1)->getData(0), "");
    EXPECT_EQ(tree.xOfPoint(2)->getDataInitialized(), 0);
}

TEST_F(NullArguments, NameFieldsWithTheEmptyText) {
    EXPECT_STREQ(Owned<DataArray>(noText).getName(), "");
    EXPECT_STREQ(Owned<DataHashTable>(noText).getName(), "");
    EXPECT_STREQ(Owned<DataObject>(noText).getName(), "");
    DataHandler handler;
    EXPECT_TRUE(tree.root.registerHandler(noText, &handler, 0));
    ASSERT_NE(handler.getField(), nullptr);
    EXPECT_STREQ(handler.getField()->getName(), "");
    EXPECT_TRUE(tree.root.unregisterHandler(&handler));
}

TEST_F(NullArguments, TellHandlersOfATypeWithoutAName) {
    Diary diary;
    RecordingHandler handler(diary, "A");
    tree.points->registerHandler(&handler);
    diary.take();
    tree.points->fireOnTypeChange(noText);
    EXPECT_EQ(diary.take(), "A type ");
}

TEST(NullTypes, AreUnknown) {
    DeclaredTypes types("Point = {string x;};");
    DataObjectType* const noType = nullptr;
    EXPECT_EQ(DataObject::createObject(noType, noText), nullptr);
    EXPECT_EQ(DataObject::createObject(noText, noText), nullptr);
    EXPECT_EQ(DataObject::createArray(noText, noText, 2), nullptr);
    EXPECT_EQ(DataObject::getObjectTypeByName(noText), nullptr);
    char description[] = "kept";
    DataObject::getTypeFieldsDescription(noText, description);
    DataObject::getTypeFieldsDescription(Text("Point"), noText);
    EXPECT_STREQ(description, "kept");
    DataObject::getTypeNames(noTexts);
    DataObject::getTypeFieldNames(noText, noTexts);
    EXPECT_FALSE(DataObject::readTypesTable(noText));
    DataObject::readConfigFilesDir(noText);
    DataObject::readConfigFilesPath(noText);
    DataObject::set_ConfigFolder(noText);
    EXPECT_STREQ(DataObject::get_ConfigFolder(), "");
    const Tree<DataObject> unnamed(DataObject::createObject(types["Point"], noText));
    EXPECT_STREQ(unnamed->getName(), "");
}

TEST_F(NullArguments, AndIndicesAtTheLimitsOfIntReachNothing) {
    const int smallest = std::numeric_limits<int>::min();
    const int largest = std::numeric_limits<int>::max();
    for (const int index : {smallest, -1, largest}) {
        char* text = nullptr;
        std::vector<char*> texts(2);
        std::ostringstream os;
        EXPECT_FALSE(tree.points->getFieldData(Text("x"), &texts, index, -1));
        EXPECT_FALSE(tree.points->setFieldData(Text("x"), Texts{"a"}, index, -1));
        EXPECT_EQ(tree.points->getObject(index), nullptr);
        EXPECT_FALSE(tree.title->getData(&text, index));
        tree.title->setData("a", index);
        tree.title->setData(Texts{"a", "b"}, index, index);
        tree.title->copyData(tree.xOfPoint(0), index, 0, index);
        tree.title->copyData(tree.xOfPoint(0), 0, index, index);
        tree.points->copyData(tree.cities, index, index, index);
        tree.points->dump(os, index, index, 1);
        tree.cities->dump(os, index, index, 1);
        tree.title->dump(os, index, index, 1);
        tree.root.executeCommand(Text("scene/title = b"), index);
        tree.points->executeCommand(Text("x = b"), index);
        EXPECT_FALSE(tree.points->setFieldSize(Text("x"), index));
        EXPECT_EQ(*tree.xOfPoint(0)->getData(0), " ");
    }
    EXPECT_EQ(tree.cities->getObject(smallest), tree.city("Oslo"));
    EXPECT_STREQ(tree.cities->getObjectKey(smallest), "Oslo");
    EXPECT_EQ(tree.cities->getObject(largest), nullptr);
    EXPECT_EQ(tree.cities->getObjectKey(largest), nullptr);
}

TEST_F(NullArguments, DoNothingToLeaves) {
    Diary diary;
    RecordingHandler handler(diary, "A");
    tree.title->setData("kept");
    tree.title->registerHandler(&handler);
    diary.take();
    tree.title->registerHandler(noHandler);
    tree.title->unregisterHandler(noHandler);
    EXPECT_EQ(tree.title->getNumHandlers(), 1);
    tree.title->setData(noTexts, 0, -1);
    tree.title->getData(noTexts, 0, -1);
    EXPECT_EQ(diary.take(), "");
    EXPECT_EQ(*tree.title->getData(0), "kept");
    tree.title->unregisterHandler(&handler);
}

TEST_F(NullArguments, GiveAValueNoTextToBeginWith) {
    DataValue value(Text("value"), noString);
    EXPECT_STREQ(value.getName(), "value");
    EXPECT_EQ(value.getDataInitialized(), 0);
    EXPECT_EQ(*value.getData(0), *DataValue(Text("other")).getData(0));
}
