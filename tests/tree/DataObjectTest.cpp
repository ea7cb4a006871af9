#include <support/SceneTree.h>

#include <gtest/gtest.h>

TEST(DataObject, IsAStructure) {
    DataObject object(Text("object"));
    EXPECT_STREQ(object.getTypeName(), "DataObject");
    EXPECT_EQ(object.isExactType(DataObject::getClassType()), 1);
    EXPECT_EQ(object.isOfType(DataStructure::getClassType()), 1);
    EXPECT_EQ(object.getNumFields(), 0);
    EXPECT_EQ(object.getSize(), 1);
}

TEST(DataObject, ParseIgnoresTheIndex) {
    SceneTree tree;
    DataObject* point = tree.points->getObject(1);
    point->parse(Text("7,8"), Text("{x = 1}"));
    EXPECT_EQ(*tree.xOfPoint(1)->getData(0), "1");
    point->parse(nullptr, Text("{x = 2}}"));
    EXPECT_EQ(*tree.xOfPoint(1)->getData(0), "2");
}

TEST(DataObject, RegistersOnItsOwnFields) {
    SceneTree tree;
    DataHandler handler;
    EXPECT_TRUE(tree.points->getObject(1)->registerHandler(Text("x"), &handler, 0));
    EXPECT_EQ(handler.getField(), tree.xOfPoint(1));
    EXPECT_TRUE(tree.points->getObject(1)->unregisterHandler(&handler));
    EXPECT_EQ(tree.points->getObject(1)->getNumFields(), 1);
    EXPECT_FALSE(tree.points->getObject(1)->unregisterHandler(&handler));
}

TEST(DataObject, LeavesCreatingToTheRoot) {
    SceneTree tree;
    DataHandler handler;
    EXPECT_TRUE(tree.points->getObject(1)->registerHandler(Text("fresh"), &handler, 0));
    ASSERT_NE(handler.getField(), nullptr);
    EXPECT_EQ(handler.getField()->getParent(), &tree.root);
    EXPECT_EQ(tree.points->getObject(1)->getNumFields(), 1);
}

TEST(DataObject, WithoutARootRegistersNothing) {
    Owned<DataObject> object(Text("object"));
    DataHandler handler;
    EXPECT_FALSE(object.registerHandler(Text("fresh"), &handler, 0));
    EXPECT_EQ(handler.getField(), nullptr);
    EXPECT_EQ(object.getNumFields(), 0);
}

TEST(DataObject, ClonesWithItsChildren) {
    SceneTree tree;
    auto* copy = static_cast<DataObject*>(tree.points->getObject(1)->clone());
    EXPECT_STREQ(copy->getTypeName(), "DataObject");
    EXPECT_STREQ(copy->getName(), "Item-#1");
    EXPECT_EQ(copy->getParent(), nullptr);
    EXPECT_EQ(copy->getNumFields(), 1);
    deleteSubtree(*copy);
    delete copy;
}
