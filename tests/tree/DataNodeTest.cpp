#include <support/Text.h>
#include <support/Texts.h>
#include <support/TreeCleanup.h>

#include <gtest/gtest.h>

namespace {

class NodeDefaults : public testing::Test {
protected:
    DataNode node{Text("node")};
    DataValue value{Text("value")};
    DataHandler handler;
};

/// Answers the two questions that every node operation is built on.
class OneFieldNode : public DataNode {
public:
    OneFieldNode() : DataNode(Text("one")) {}

    DataField* getField(char* path, int /*index*/, int /*flag*/) override {
        return std::string_view(path) == "only" ? &only : nullptr;
    }
    int getNumFields() override { return 1; }

    DataValue only{Text("only")};
};

} // namespace

TEST_F(NodeDefaults, IsANodeWithoutChildren) {
    EXPECT_STREQ(node.getTypeName(), "DataNode");
    EXPECT_EQ(node.isExactType(DataNode::getClassType()), 1);
    EXPECT_EQ(node.isOfType(DataField::getClassType()), 1);
    EXPECT_EQ(node.getNumFields(), 0);
    EXPECT_EQ(node.getSize(), 0);
}

TEST_F(NodeDefaults, TakesNoField) {
    EXPECT_FALSE(node.addField(&value, 3));
    EXPECT_EQ(value.getParent(), nullptr);
    EXPECT_EQ(value.getRef(), 0);
    EXPECT_EQ(value.getRefCalls(), 0);
}

TEST_F(NodeDefaults, EmptiesTheVectorOfChildren) {
    std::vector<DataField*> fields = {&value, &value};
    node.getFieldsVector(&fields);
    EXPECT_TRUE(fields.empty());
}

TEST_F(NodeDefaults, FindsNothing) {
    for (const char* path : {"", "node", "string:new", "*", ".."})
        EXPECT_EQ(node.getField(Text(path), 0, 1), nullptr);
    for (const int index : {-1, 0, 1})
        EXPECT_EQ(node.getFieldByIndex(index), nullptr);
}

TEST_F(NodeDefaults, RemovesNothing) {
    value.setParent(&node, 2);
    node.removeField(Text("value"), 0);
    node.removeChildren();
    node.deleteChildren();
    EXPECT_EQ(value.getParent(), &node);
    EXPECT_EQ(value.getParentInstance(), 2);
}

TEST_F(NodeDefaults, PrintsNothingByItself) {
    testing::internal::CaptureStdout();
    node.dump();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

TEST_F(NodeDefaults, RegistersNoHandler) {
    EXPECT_FALSE(node.registerHandler(Text("value"), &handler, 0));
    EXPECT_EQ(handler.getField(), nullptr);
    EXPECT_FALSE(node.unregisterHandler(&handler));
}

TEST_F(NodeDefaults, TakesNoHandlerOffAField) {
    value.registerHandler(&handler);
    EXPECT_FALSE(node.unregisterHandler(&handler));
    EXPECT_EQ(handler.getField(), &value);
}

TEST_F(NodeDefaults, HasNoDataByPath) {
    std::string text = "kept";
    char* pointer = text.data();
    int size = 7;
    std::vector<char*> list = {pointer};
    EXPECT_FALSE(node.setFieldSize(Text("value"), 3));
    EXPECT_FALSE(node.getFieldSize(Text("value"), &size));
    EXPECT_FALSE(node.setFieldData(Text("value"), &text));
    EXPECT_FALSE(node.setFieldData(Text("value"), Text("a")));
    EXPECT_FALSE(node.setFieldData(Text("value"), Text("a"), 0));
    EXPECT_FALSE(node.setFieldData(Text("value"), &list, 0, -1));
    EXPECT_FALSE(node.getFieldData(Text("value"), &text));
    EXPECT_FALSE(node.getFieldData(Text("value"), &pointer));
    EXPECT_FALSE(node.getFieldData(Text("value"), &list, 0, -1));
    EXPECT_EQ(text, "kept");
    EXPECT_EQ(pointer, text.data());
    EXPECT_EQ(size, 7);
    EXPECT_EQ(list.size(), 1u);
}

TEST_F(NodeDefaults, IsWhatEveryRangeSelects) {
    for (const char* range : {"", "0", "2-5", "x"}) {
        std::vector<DataField*> fields = {&value, &value};
        node.getFieldsByRange(Text(range), &fields);
        EXPECT_EQ(fields, std::vector<DataField*>{&node});
    }
}

TEST_F(NodeDefaults, CommandsFindNothingToChange) {
    node.executeCommand(Text("value = 1"), 0);
    node.executeCommand(Text("* = 1"), 0);
    node.parseCommand(Text("value = 1; value = 2"), 0);
    node.executeCopyCommand(Text("value = value"));
    node.parseCopyCommand(Text("value = value"));
    node.executeClearField(Text("value"));
    node.executeClearField(Text("Orbel"));
    node.executeClearCommand(Text(""));
    EXPECT_EQ(value.getDataInitialized(), 0);
}

TEST_F(NodeDefaults, ReachesTheRootWithClearCommands) {
    Orbel root(Text("root"));
    const SubtreeCleanup belowRoot{root};
    auto* leaf = new DataValue(Text("leaf"));
    root.addField(leaf, 0);
    leaf->setData("full");
    node.setParent(&root, 0);
    node.executeClearCommand(Text(""));
    EXPECT_EQ(*leaf->getData(0), "");
}

// Plug-ins override these two hooks; a plain node must not treat them as the stores they resemble.
TEST_F(NodeDefaults, TextsThatMayBeWrittenToAreNotStored) {
    node.addTargetLink(&value);
    node.setData(Text("new"));
    node.setData(Text("new"), 0);
    EXPECT_EQ(value.getDataInitialized(), 0);
    node.setData(static_cast<const char*>("new"));
    EXPECT_EQ(*value.getData(0), "new");
    node.removeAllTargets();
}

TEST(DataNode, CommandsAskOverriddenOperations) {
    OneFieldNode node;
    node.executeCommand(Text("only = set"), 0);
    EXPECT_EQ(*node.only.getData(0), "set");
    node.executeClearField(Text("only"));
    EXPECT_EQ(*node.only.getData(0), "");
    EXPECT_EQ(node.getNumFields(), 1);
}

TEST(DataNode, IsMadeByItsRecord) {
    Text name("made");
    auto* made = static_cast<DataNode*>(DataNode::getClassType()->alloc(name, 0));
    EXPECT_STREQ(made->getTypeName(), "DataNode");
    EXPECT_STREQ(made->getName(), "made");
    delete made;
}
