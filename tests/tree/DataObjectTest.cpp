#include <support/SceneTree.h>
#include <support/Shape.h>

#include <gtest/gtest.h>

#include <memory>

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
    DataObject object(Text("object"));
    const SubtreeCleanup belowObject{object};
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

namespace {

/// An object with the fields x and y and a handler on x.
class ObservedObject : public testing::Test {
protected:
    ObservedObject() {
        object.addField(x, 0);
        object.addField(y, 0);
        object.registerHandler(Text("x"), &handler, 0);
    }

    DataObject object{Text("object")};
    const SubtreeCleanup belowObject{object};
    DataValue* x = new DataValue(Text("x"));
    DataValue* y = new DataValue(Text("y"));
    DataHandler handler;
};

} // namespace

TEST_F(ObservedObject, LosesTheFieldThatItsLastHandlerLeaves) {
    EXPECT_TRUE(object.registerHandler(Text("y"), &handler, 0));
    EXPECT_EQ(handler.getField(), y);
    EXPECT_EQ(shapeOf(object), "object{y?}");
    EXPECT_EQ(x->getRef(), 0);
    delete x;
}

TEST_F(ObservedObject, KeepsAFieldThatOthersObserve) {
    DataHandler other;
    x->registerHandler(&other);
    EXPECT_TRUE(object.registerHandler(Text("y"), &handler, 0));
    EXPECT_EQ(shapeOf(object), "object{x?,y?}");
}

TEST_F(ObservedObject, KeepsAFieldWhereItsHandlerStays) {
    EXPECT_TRUE(object.registerHandler(Text("x"), &handler, 0));
    EXPECT_EQ(handler.getField(), x);
    EXPECT_EQ(x->getNumHandlers(), 1);
}

TEST_F(ObservedObject, IsNotRemovedFromItsParentByItsOwnHandler) {
    DataStructure root(Text("root"));
    const SubtreeCleanup belowRoot{root};
    auto* inner = new DataObject(Text("inner"));
    root.addField(inner, 0);
    inner->addField(new DataValue(Text("z")), 0);
    DataHandler onInner;
    inner->registerHandler(&onInner);
    EXPECT_TRUE(inner->registerHandler(Text("z"), &onInner, 0));
    EXPECT_EQ(shapeOf(root), "root{inner{z?}}");
}

TEST_F(ObservedObject, LetsGoOfAHandlerThatFindsNothing) {
    EXPECT_FALSE(object.registerHandler(Text("missing"), &handler, 0));
    EXPECT_EQ(handler.getField(), nullptr);
    EXPECT_EQ(shapeOf(object), "object{x?,y?}");
    EXPECT_FALSE(object.registerHandler(Text("x"), nullptr, 0));
    EXPECT_FALSE(object.unregisterHandler(nullptr));
}

TEST(DataObject, RegistersThroughTheNearestAncestorThatHasThePath) {
    DataStructure top(Text("top"));
    const SubtreeCleanup belowTop{top};
    auto* middle = new DataStructure(Text("middle"));
    auto* object = new DataObject(Text("object"));
    auto* value = new DataValue(Text("value"));
    top.addField(middle, 0);
    middle->addField(object, 0);
    top.addField(value, 0);
    DataHandler handler;
    EXPECT_TRUE(object->registerHandler(Text("value"), &handler, 0));
    EXPECT_EQ(handler.getField(), value);
}

TEST_F(ObservedObject, SharesItsChildrenWithACopy) {
    DataObject copy(object);
    EXPECT_EQ(shapeOf(copy), "object{x?,y?}");
    EXPECT_EQ(copy.getField(Text("x"), 0, 0), x);
    EXPECT_EQ(x->getParent(), &object);
    copy.addField(new DataValue(Text("z")), 0);
    EXPECT_EQ(shapeOf(object), "object{x?,y?,z?}");
    EXPECT_EQ(object.getField(Text("z"), 0, 0)->getParent(), &copy);
}

TEST_F(ObservedObject, OutlivesACopyAndDiesBeforeOne) {
    auto first = std::make_unique<DataObject>(object);
    auto second = std::make_unique<DataObject>(*first);
    first.reset();
    EXPECT_EQ(shapeOf(object), "object{x?,y?}");
    EXPECT_EQ(shapeOf(*second), "object{x?,y?}");
    deleteSubtree(object);
    EXPECT_EQ(shapeOf(*second), "object{}");
}

TEST_F(ObservedObject, IsAssignedWithItsChildren) {
    DataObject target(Text("target"));
    auto* old = new DataValue(Text("old"));
    target.addField(old, 0);
    target = object;
    EXPECT_EQ(target.getField(Text("y"), 0, 0), y);
    EXPECT_EQ(old->getParent(), nullptr);
    EXPECT_EQ(old->getRef(), 0);
    delete old;
    DataObject& same = target;
    target = same;
    EXPECT_EQ(target.getField(Text("y"), 0, 0), y);
    target = object;
    EXPECT_EQ(target.getField(Text("y"), 0, 0), y);
}

TEST_F(ObservedObject, CopiesDataAsAStructureDoes) {
    DataStructure source(Text("source"));
    const SubtreeCleanup belowSource{source};
    for (const char* name : {"x", "#y", "z"}) {
        auto* value = new DataValue(Text(name));
        source.addField(value, 0);
        value->setData(name);
    }
    object.addField(new DataValue(Text("#y")), 0);
    EXPECT_TRUE(object.copyData(&source, 7, 8, 9));
    EXPECT_EQ(shapeOf(object), "object{#y?,x=x,y?}");
    EXPECT_FALSE(object.copyData(x, 0, 0, -1));
    EXPECT_FALSE(object.copyData(nullptr, 0, 0, -1));
}

TEST(DataObject, CopiesAreOfTheSameType) {
    DataObjectType type;
    type.setName(Text("Type"));
    DataObject object(Text("object"));
    object.setObjectType(&type);
    const DataObject copy(object);
    DataObject assigned(Text("other"));
    assigned = object;
    EXPECT_EQ(const_cast<DataObject&>(copy).getObjectType(), &type);
    EXPECT_STREQ(assigned.getObjectTypeName(), "Type");
}
