#include <orbel/orbel.h>

#include <support/RecordingHandler.h>
#include <support/Text.h>
#include <support/TreeCleanup.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

/// Counts its instances, so that a test can tell whether the tree has deleted one.
class CountedValue : public DataValue {
public:
    explicit CountedValue(const std::string& name) : DataValue(Text(name)) { ++alive; }
    CountedValue(const CountedValue&) = delete;
    CountedValue& operator=(const CountedValue&) = delete;
    ~CountedValue() override { --alive; }

    static inline int alive = 0;
};

class HandlerOfStructures : public DataHandler {
public:
    DataType* getFieldType() override { return DataStructure::getClassType(); }
};

/// A root with scene/title and scene/note, and an array "points" of two objects with a value x each.
class RegistrationByPathTest : public testing::Test {
protected:
    RegistrationByPathTest() {
        root.addField(scene, 0);
        scene->addField(title, 0);
        scene->addField(note, 0);
        root.addField(points, 0);
        points->setSize(2);
        for (int index = 0; index < 2; ++index)
            points->getObject(index)->addField(new DataValue(Text("x")), 0);
    }

    bool registerOn(DataNode& node, const std::string& path, DataHandler& handler, int index = 0) {
        return node.registerHandler(Text(path), &handler, index);
    }

    DataField* at(const std::string& path) { return root.getField(Text(path), 0, 1); }
    DataField* xOf(int element) { return points->getObject(element)->getField(Text("x"), 0, 1); }
    DataField* lastChild(DataNode& node) { return node.getFieldByIndex(node.getNumFields() - 1); }

    Diary diary;
    Orbel root{Text("show")};
    const SubtreeCleanup belowRoot{root};
    DataStructure* scene = new DataStructure(Text("scene"));
    DataValue* title = new CountedValue("title");
    DataValue* note = new CountedValue("note");
    DataArray* points = new DataArray(Text("points"));
    RecordingHandler a{diary, "A"};
    RecordingHandler b{diary, "B"};
};

TEST_F(RegistrationByPathTest, PathOfAFieldRegistersThere) {
    EXPECT_TRUE(registerOn(root, "scene/title", a));
    EXPECT_EQ(a.getField(), title);
    EXPECT_EQ(title->getHandlerByID(0), &a);
    EXPECT_EQ(root.getNumFields(), 2);
    root.setFieldData(Text("scene/title"), Text("Hello"));
    EXPECT_EQ(diary.take(), "A changed");
}

TEST_F(RegistrationByPathTest, JoiningByPathIsToldToAll) {
    title->setData("Hello");
    registerOn(root, "scene/title", a);
    registerOn(root, "scene/title", b);
    EXPECT_EQ(diary.take(), "A same, A same, B same");
}

TEST_F(RegistrationByPathTest, SamePathTwiceTellsNobody) {
    title->setData("Hello");
    registerOn(root, "scene/title", a);
    diary.take();
    EXPECT_TRUE(registerOn(root, "scene/title", a));
    EXPECT_TRUE(registerOn(*scene, "title", a));
    EXPECT_EQ(diary.take(), "");
    EXPECT_EQ(title->getNumHandlers(), 1);
}

TEST_F(RegistrationByPathTest, UnknownPathBecomesTheNameOfANewField) {
    Orbel empty(Text("empty"));
    const SubtreeCleanup belowEmpty{empty};
    EXPECT_TRUE(registerOn(empty, "a/b", a, 7));
    DataField* created = empty.getFieldByIndex(0);
    EXPECT_EQ(empty.getNumFields(), 1);
    EXPECT_STREQ(created->getName(), "a/b");
    EXPECT_STREQ(created->getTypeName(), "DataValue");
    EXPECT_EQ(created->getParent(), &empty);
    EXPECT_EQ(created->getParentInstance(), 7);
    EXPECT_EQ(created->getRef(), 1);
    EXPECT_EQ(created->getDataInitialized(), 0);
    EXPECT_EQ(a.getField(), created);
    EXPECT_EQ(empty.getField(Text("a/b"), 0, 1), nullptr);
    EXPECT_EQ(diary.take(), "");
}

TEST_F(RegistrationByPathTest, NewFieldHangsUnderTheStructureThatWasAsked) {
    registerOn(*scene, "deep/down", a);
    EXPECT_EQ(a.getField()->getParent(), scene);
    EXPECT_EQ(scene->getNumFields(), 3);
    EXPECT_EQ(root.getNumFields(), 2);
}

TEST_F(RegistrationByPathTest, HandlerDecidesTheClassOfTheNewField) {
    HandlerOfStructures handler;
    registerOn(root, "zone", handler);
    EXPECT_EQ(lastChild(root), handler.getField());
    EXPECT_STREQ(handler.getField()->getTypeName(), "DataStructure");
    EXPECT_EQ(handler.getField()->isExactType(DataStructure::getClassType()), 1);
}

TEST_F(RegistrationByPathTest, KindInThePathCreatesTheFieldThere) {
    EXPECT_TRUE(registerOn(root, "scene/string:size", a));
    EXPECT_EQ(a.getField(), at("scene/size"));
    EXPECT_EQ(a.getField()->getParent(), scene);
    EXPECT_EQ(a.getField()->getNumHandlers(), 2);
    EXPECT_NE(a.getField()->getHandlerByName(Text("DUMMY")), nullptr);
}

TEST_F(RegistrationByPathTest, MovingTakesTheUnobservedFieldOutOfItsParent) {
    std::unique_ptr<DataField> left(title);
    registerOn(root, "scene/title", a);
    EXPECT_TRUE(registerOn(root, "scene/note", a));
    EXPECT_EQ(a.getField(), note);
    EXPECT_EQ(note->getNumHandlers(), 1);
    EXPECT_EQ(at("scene/title"), nullptr);
    EXPECT_EQ(CountedValue::alive, 2);
    EXPECT_EQ(left->getRef(), 0);
    EXPECT_EQ(left->getNumHandlers(), 0);
}

TEST_F(RegistrationByPathTest, MovingLeavesAnObservedField) {
    registerOn(root, "scene/title", a);
    registerOn(root, "scene/title", b);
    EXPECT_TRUE(registerOn(root, "scene/note", a));
    EXPECT_EQ(at("scene/title"), title);
    EXPECT_EQ(title->getNumHandlers(), 1);
    EXPECT_EQ(b.getField(), title);
    EXPECT_EQ(a.getField(), note);
}

TEST_F(RegistrationByPathTest, MovingToAnUnknownPathRenamesTheUnobservedField) {
    title->setData("Hello");
    registerOn(root, "scene/title", a);
    diary.take();
    EXPECT_TRUE(registerOn(root, "other/place", a, 4));
    EXPECT_EQ(a.getField(), title);
    EXPECT_STREQ(title->getName(), "other/place");
    EXPECT_EQ(*title->getData(0), "Hello");
    EXPECT_EQ(title->getParent(), &root);
    EXPECT_EQ(title->getParentInstance(), 4);
    EXPECT_EQ(title->getRef(), 1);
    EXPECT_EQ(scene->getNumFields(), 1);
    EXPECT_EQ(root.getNumFields(), 3);
    EXPECT_EQ(diary.take(), "A same");
}

TEST_F(RegistrationByPathTest, FieldNamedByItsPathIsRenamedAgain) {
    Orbel empty(Text("empty"));
    const SubtreeCleanup belowEmpty{empty};
    registerOn(empty, "a/b", a);
    DataField* created = a.getField();
    EXPECT_TRUE(registerOn(empty, "c/d", a));
    EXPECT_EQ(a.getField(), created);
    EXPECT_STREQ(created->getName(), "c/d");
    EXPECT_EQ(created->getRef(), 1);
    EXPECT_EQ(empty.getNumFields(), 1);
}

TEST_F(RegistrationByPathTest, MovingToAnUnknownPathLeavesAnObservedField) {
    registerOn(root, "scene/title", a);
    registerOn(root, "scene/title", b);
    EXPECT_TRUE(registerOn(root, "other/place", a));
    EXPECT_STREQ(title->getName(), "title");
    EXPECT_EQ(title->getNumHandlers(), 1);
    EXPECT_NE(a.getField(), title);
    EXPECT_STREQ(a.getField()->getName(), "other/place");
}

TEST_F(RegistrationByPathTest, FieldWithoutParentIsAdoptedUnderThePath) {
    auto* loose = new DataValue(Text("loose"));
    loose->registerHandler(&a);
    EXPECT_TRUE(registerOn(root, "other/place", a));
    EXPECT_EQ(a.getField(), loose);
    EXPECT_EQ(loose->getParent(), &root);
    EXPECT_STREQ(loose->getName(), "other/place");
}

TEST_F(RegistrationByPathTest, FieldWithoutParentIsLeftToItsOwner) {
    DataValue loose(Text("loose"));
    loose.registerHandler(&a);
    EXPECT_TRUE(registerOn(root, "scene/title", a));
    EXPECT_EQ(a.getField(), title);
    EXPECT_EQ(loose.getNumHandlers(), 0);
    EXPECT_STREQ(loose.getName(), "loose");
}

TEST_F(RegistrationByPathTest, LastHandlerLeavingDeletesTheField) {
    registerOn(root, "scene/title", a);
    EXPECT_TRUE(root.unregisterHandler(&a));
    EXPECT_EQ(CountedValue::alive, 1);
    EXPECT_EQ(a.getField(), nullptr);
    EXPECT_EQ(at("scene/title"), nullptr);
    EXPECT_EQ(scene->getNumFields(), 1);
}

TEST_F(RegistrationByPathTest, LastHandlerLeavingDeletesAFieldNamedByItsPath) {
    Orbel empty(Text("empty"));
    registerOn(empty, "a/b", a);
    EXPECT_TRUE(empty.unregisterHandler(&a));
    EXPECT_EQ(empty.getNumFields(), 0);
    EXPECT_EQ(a.getField(), nullptr);
}

TEST_F(RegistrationByPathTest, OtherHandlersKeepTheField) {
    registerOn(root, "scene/title", a);
    registerOn(root, "scene/title", b);
    EXPECT_TRUE(root.unregisterHandler(&a));
    EXPECT_EQ(at("scene/title"), title);
    EXPECT_EQ(b.getField(), title);
}

TEST_F(RegistrationByPathTest, MarkerKeepsAFieldCreatedByKind) {
    registerOn(root, "string:size", a);
    DataField* created = a.getField();
    EXPECT_TRUE(root.unregisterHandler(&a));
    EXPECT_EQ(at("size"), created);
    EXPECT_EQ(created->getNumHandlers(), 1);
}

TEST_F(RegistrationByPathTest, AnotherReferenceKeepsTheFieldAliveOutsideTheTree) {
    std::unique_ptr<DataField> kept(title);
    int owner = 0;
    title->ref(&owner, nullptr);
    registerOn(root, "scene/title", a);
    EXPECT_TRUE(root.unregisterHandler(&a));
    EXPECT_EQ(at("scene/title"), nullptr);
    EXPECT_EQ(CountedValue::alive, 2);
    EXPECT_EQ(title->getRef(), 1);
}

TEST_F(RegistrationByPathTest, NodeIsDeletedWithItsChildren) {
    registerOn(root, "scene", a);
    EXPECT_TRUE(root.unregisterHandler(&a));
    EXPECT_EQ(at("scene"), nullptr);
    EXPECT_EQ(CountedValue::alive, 0);
}

TEST_F(RegistrationByPathTest, ObservedChildOfADeletedNodeSurvives) {
    std::unique_ptr<DataField> survivor(title);
    registerOn(root, "scene", a);
    registerOn(root, "scene/title", b);
    EXPECT_TRUE(root.unregisterHandler(&a));
    EXPECT_EQ(CountedValue::alive, 1);
    EXPECT_EQ(b.getField(), title);
    EXPECT_EQ(title->getParent(), nullptr);
}

TEST_F(RegistrationByPathTest, FieldWithoutParentIsNeverDeleted) {
    CountedValue loose("loose");
    loose.registerHandler(&a);
    EXPECT_TRUE(root.unregisterHandler(&a));
    EXPECT_EQ(CountedValue::alive, 3);
    EXPECT_EQ(loose.getNumHandlers(), 0);
}

TEST_F(RegistrationByPathTest, HandlerOnNoFieldCannotLeave) {
    EXPECT_FALSE(root.unregisterHandler(&a));
    EXPECT_FALSE(points->unregisterHandler(&a));
    EXPECT_FALSE(points->getObject(0)->unregisterHandler(&a));
}

TEST_F(RegistrationByPathTest, PlainNodeRefuses) {
    DataNode node(Text("node"));
    EXPECT_FALSE(registerOn(node, "x", a));
    title->registerHandler(&a);
    EXPECT_FALSE(node.unregisterHandler(&a));
    EXPECT_EQ(a.getField(), title);
}

TEST_F(RegistrationByPathTest, ArrayAsksTheElementOfTheIndex) {
    EXPECT_TRUE(registerOn(*points, "x", a, 1));
    EXPECT_EQ(a.getField(), xOf(1));
    EXPECT_EQ(xOf(0)->getNumHandlers(), 0);
}

TEST_F(RegistrationByPathTest, ArrayRefusesAnIndexOutOfRange) {
    EXPECT_FALSE(registerOn(*points, "x", a, -1));
    EXPECT_FALSE(registerOn(*points, "x", a, 2));
    EXPECT_EQ(a.getField(), nullptr);
}

TEST_F(RegistrationByPathTest, ArrayDoesNotPassTheIndexOn) {
    EXPECT_TRUE(registerOn(*points, "new/one", a, 1));
    EXPECT_EQ(a.getField()->getParent(), &root);
    EXPECT_EQ(a.getField()->getParentInstance(), 0);
}

TEST_F(RegistrationByPathTest, ArraysAndObjectsRemoveNoField) {
    DataField* x = xOf(0);
    registerOn(root, "points/x", a);
    EXPECT_TRUE(points->unregisterHandler(&a));
    EXPECT_EQ(xOf(0), x);
    EXPECT_EQ(a.getField(), nullptr);
    registerOn(root, "points/x", a);
    EXPECT_TRUE(points->getObject(1)->unregisterHandler(&a));
    EXPECT_EQ(xOf(0), x);
    EXPECT_EQ(x->getNumHandlers(), 0);
}

TEST_F(RegistrationByPathTest, ObjectMovesAHandlerIntoItself) {
    std::unique_ptr<DataField> left(title);
    registerOn(root, "scene/title", a);
    EXPECT_TRUE(registerOn(*points->getObject(0), "x", a));
    EXPECT_EQ(a.getField(), xOf(0));
    EXPECT_EQ(at("scene/title"), nullptr);
    EXPECT_TRUE(registerOn(*points->getObject(0), "x", a));
    EXPECT_EQ(xOf(0)->getNumHandlers(), 1);
}

TEST_F(RegistrationByPathTest, ObjectIsNotRemovedWhenItsOwnHandlerMovesIntoIt) {
    auto* object = new DataObject(Text("object"));
    object->addField(new DataValue(Text("x")), 0);
    root.addField(object, 0);
    registerOn(root, "object", a);
    EXPECT_TRUE(registerOn(*object, "x", a));
    EXPECT_EQ(at("object"), object);
    EXPECT_EQ(a.getField(), at("object/x"));
}

TEST_F(RegistrationByPathTest, ObjectAsksTheNearestAncestorThatHasThePath) {
    auto* object = new DataObject(Text("object"));
    scene->addField(object, 0);
    auto* shadowed = new DataValue(Text("title"));
    root.addField(shadowed, 0);
    EXPECT_TRUE(registerOn(*object, "title", a));
    EXPECT_EQ(a.getField(), title);
    EXPECT_EQ(shadowed->getNumHandlers(), 0);
}

TEST_F(RegistrationByPathTest, ObjectLetsTheRootCreate) {
    auto* object = new DataObject(Text("object"));
    scene->addField(object, 0);
    EXPECT_TRUE(registerOn(*object, "new/one", a, 3));
    EXPECT_EQ(object->getNumFields(), 0);
    EXPECT_STREQ(a.getField()->getName(), "new/one");
    EXPECT_EQ(a.getField()->getParent(), &root);
    EXPECT_EQ(a.getField()->getParentInstance(), 3);
}

TEST_F(RegistrationByPathTest, ObjectWithoutRootFailsAndTakesTheHandlerOff) {
    DataStructure top(Text("top"));
    const SubtreeCleanup belowTop{top};
    auto* object = new DataObject(Text("object"));
    top.addField(object, 0);
    title->registerHandler(&a);
    EXPECT_FALSE(registerOn(*object, "missing", a));
    EXPECT_EQ(a.getField(), nullptr);
    EXPECT_EQ(title->getNumHandlers(), 0);
    EXPECT_EQ(at("scene/title"), title);
    EXPECT_EQ(top.getNumFields(), 1);
}

// A structure became its own child, and whatever went over the tree never ended.
TEST_F(RegistrationByPathTest, HandlerOfAStructureMayMoveToANewFieldBelowIt) {
    auto* inner = new DataStructure(Text("inner"));
    scene->addField(inner, 0);
    for (DataStructure* node : {scene, inner}) {
        static_cast<DataField*>(scene)->registerHandler(&a);
        EXPECT_TRUE(registerOn(*node, "new/one", a));
        EXPECT_STREQ(a.getField()->getName(), "new/one");
        EXPECT_EQ(a.getField()->getParent(), node);
        EXPECT_EQ(at("scene"), scene);
        EXPECT_EQ(scene->getNumHandlers(), 0);
    }
}

TEST_F(RegistrationByPathTest, HandlerOfAnArrayTakesItAlongToANewFieldBesideIt) {
    static_cast<DataField*>(points)->registerHandler(&a);
    EXPECT_TRUE(registerOn(*scene, "new", a));
    EXPECT_EQ(a.getField(), points);
    EXPECT_STREQ(points->getName(), "new");
    EXPECT_EQ(points->getParent(), scene);
}

// Dumping never ended: the array was made a child of an element that had moved elsewhere, but was still its own.
TEST_F(RegistrationByPathTest, HandlerOfAnArrayMayMoveToANewFieldBelowAnElementThatHasMoved) {
    DataObject* const element = points->getObject(1);
    auto* inner = new DataStructure(Text("inner"));
    element->addField(inner, 0);
    static_cast<DataField*>(element)->registerHandler(&a);
    EXPECT_TRUE(registerOn(*scene, "moved", a));
    EXPECT_EQ(element->getParent(), scene);

    static_cast<DataField*>(points)->registerHandler(&b);
    EXPECT_TRUE(registerOn(*inner, "new", b));
    EXPECT_EQ(points->getParent(), &root);
    EXPECT_STREQ(b.getField()->getName(), "new");
    EXPECT_EQ(b.getField()->getParent(), inner);
    // The element has two owners now; its array lets go of it with the tree.
    static_cast<DataField*>(element)->unregisterHandler(&a);
    scene->removeField(Text("moved"), 0);
}

} // namespace
