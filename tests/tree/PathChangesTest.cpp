#include <support/DeclaredTypes.h>
#include <support/RecordingHandler.h>
#include <support/SceneTree.h>
#include <support/Shape.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <new>
#include <string>

namespace {

/// Asks twice: a path in use is remembered.
DataField* at(DataNode& node, const std::string& path, int flag = 1) {
    Text text(path);
    DataField* first = node.getField(text, 0, flag);
    DataField* second = node.getField(text, 0, flag);
    EXPECT_EQ(first, second) << path;
    return second;
}

std::unique_ptr<DataValue> value(const char* name) {
    return std::make_unique<DataValue>(Text(name));
}

/// A structure of a client, which finds a field of its own under every path.
class Oracle : public DataStructure {
public:
    Oracle() : DataStructure(Text("oracle")) {}

    DataField* getField(char* /*path*/, int /*index*/, int /*flag*/) override { return &answer; }

    DataValue answer{Text("answer")};
};

/// A leaf of a client, which keeps what it is given elsewhere.
class Meter : public DataValue {
public:
    Meter() : DataValue(Text("meter")) {}

    using DataValue::getData;
    using DataValue::setData;

    void setData(const char* text) override { told = text; }
    bool getData(char** text, int /*index*/) override {
        *text = told.data();
        return true;
    }

    std::string told = "0";
};

/// A root of a client that may be switched to another tree.
class Switch : public Orbel {
public:
    Switch() : Orbel(Text("switch")) {}

    DataField* getField(char* path, int index, int flag) override {
        return other ? other->getField(path, index, flag) : DataStructure::getField(path, index, flag);
    }

    DataNode* other = nullptr;
};

/// The names of a field's handlers, in their order.
std::string handlersOf(DataField& field) {
    std::string names;
    for (int index = 0; index < field.getNumHandlers(); ++index)
        names += (index == 0 ? "" : " ") + std::string(field.getHandlerByID(index)->getName());
    return names;
}

/// So many structures by kind, in a text of this length.
std::string wayOf(std::size_t steps, std::size_t length) {
    std::size_t spare = length - std::min(length, steps * std::string("node:n/").size() - 1);
    std::string way;
    for (; steps > 0; --steps) {
        const std::size_t more = steps == 1 ? spare : std::min<std::size_t>(spare, 80);
        way += (way.empty() ? "node:" : "/node:") + std::string(1 + more, 'n');
        spare -= more;
    }
    return way;
}

} // namespace

TEST(PathChanges, ARemovedChildIsFoundNoMore) {
    SceneTree tree;
    EXPECT_EQ(at(tree.root, "scene/title"), tree.title);
    tree.scene->removeField(Text("title"), 0);
    const std::unique_ptr<DataValue> removed(tree.title);
    EXPECT_EQ(at(tree.root, "scene/title"), nullptr);
}

TEST(PathChanges, AnotherChildOfTheNameIsFoundInstead) {
    SceneTree tree;
    EXPECT_EQ(at(tree.root, "scene/title"), tree.title);
    tree.scene->removeField(Text("title"), 0);
    delete tree.title;
    auto* other = new DataValue(Text("title"));
    tree.scene->addField(other, 0);
    EXPECT_EQ(at(tree.root, "scene/title"), other);
}

TEST(PathChanges, ARemovedBranchTakesItsPathsAlong) {
    SceneTree tree;
    EXPECT_EQ(at(tree.root, "scene/title"), tree.title);
    EXPECT_EQ(at(*tree.scene, "title"), tree.title);
    tree.root.removeField(Text("scene"), 0);
    EXPECT_EQ(at(tree.root, "scene/title"), nullptr);
    EXPECT_EQ(at(*tree.scene, "title"), tree.title);
    tree.root.addField(tree.scene, 0);
    EXPECT_EQ(at(tree.root, "scene/title"), tree.title);
}

TEST(PathChanges, DeletedAndReleasedChildrenAreFoundNoMore) {
    SceneTree tree;
    EXPECT_EQ(at(tree.root, "scene/title"), tree.title);
    tree.scene->deleteChildren();
    EXPECT_EQ(at(tree.root, "scene/title"), nullptr);
    EXPECT_EQ(at(tree.root, "scene"), tree.scene);
    tree.root.removeChildren();
    EXPECT_EQ(at(tree.root, "scene"), nullptr);
    for (DataNode* node :
         {static_cast<DataNode*>(tree.scene), static_cast<DataNode*>(tree.points), static_cast<DataNode*>(tree.cities)})
        tree.root.addField(node, 0);
}

TEST(PathChanges, AnArrayThatIsEmptiedAndGrownHasOtherElements) {
    SceneTree tree;
    EXPECT_EQ(at(tree.root, "points[2]/x"), tree.xOfPoint(2));
    tree.points->removeChildren();
    EXPECT_EQ(at(tree.root, "points[2]/x"), nullptr);
    tree.points->setSize(3);
    EXPECT_EQ(at(tree.root, "points[2]/x"), nullptr);
    auto* x = new DataValue(Text("x"));
    tree.points->getObject(2)->addField(x, 0);
    EXPECT_EQ(at(tree.root, "points[2]/x"), x);
}

TEST(PathChanges, ATableThatIsEmptiedHasOtherEntriesUnderTheSameKey) {
    SceneTree tree;
    EXPECT_EQ(at(tree.root, "cities[Oslo]/x"), tree.xOf(tree.city("Oslo")));
    EXPECT_EQ(at(tree.root, "cities[Oslo]"), tree.city("Oslo"));
    tree.cities->removeChildren();
    EXPECT_EQ(at(tree.root, "cities[Oslo]/x"), nullptr);
    EXPECT_EQ(at(tree.root, "cities[Oslo]"), nullptr);
    auto* x = new DataValue(Text("x"));
    tree.cities->newObject(Text("Oslo"))->addField(x, 0);
    EXPECT_EQ(at(tree.root, "cities[Oslo]/x"), x);
}

TEST(PathChanges, TheFlagStillTellsATableFromItsEntry) {
    SceneTree tree;
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(at(tree.root, "cities[Oslo]", 0), tree.cities);
        EXPECT_EQ(at(tree.root, "cities[Oslo]", 1), tree.city("Oslo"));
    }
}

TEST(PathChanges, ARenamedChildIsFoundByTheNameItCameInWith) {
    SceneTree tree;
    EXPECT_EQ(at(tree.root, "scene/title"), tree.title);
    tree.title->setName(Text("headline"));
    EXPECT_EQ(at(tree.root, "scene/title"), tree.title);
    EXPECT_EQ(at(tree.root, "scene/headline"), nullptr);
    auto* headline = new DataValue(Text("headline"));
    EXPECT_TRUE(tree.scene->addField(headline, 0));
    EXPECT_EQ(at(tree.root, "scene/headline"), headline);
    EXPECT_EQ(at(tree.root, "scene/title"), tree.title);
    DataValue refused(Text("title"));
    EXPECT_FALSE(tree.scene->addField(&refused, 0));
}

TEST(PathChanges, AChildMayStandUnderTwoNames) {
    DataStructure scene(Text("scene"));
    auto title = value("title");
    scene.addField(title.get(), 0);
    title->setName(Text("headline"));
    EXPECT_TRUE(scene.addField(title.get(), 0));
    EXPECT_EQ(at(scene, "title"), title.get());
    EXPECT_EQ(at(scene, "headline"), title.get());
    scene.removeField(Text("headline"), 0);
    EXPECT_EQ(at(scene, "title"), title.get());
    EXPECT_EQ(at(scene, "headline"), nullptr);
}

// A field that was deleted under one of its two names was deleted again under the other.
TEST(PathChanges, AChildUnderTwoNamesIsDeletedOnce) {
    DataStructure scene(Text("scene"));
    auto* title = new DataValue(Text("title"));
    scene.addField(title, 0);
    title->setName(Text("headline"));
    scene.addField(title, 0);
    scene.deleteChildren();
    EXPECT_EQ(scene.getNumFields(), 0);
}

// Looking up a renamed child that had been destroyed read freed memory.
TEST(PathChanges, ARenamedChildThatIsDestroyedIsFoundNoMore) {
    DataStructure scene(Text("scene"));
    auto title = value("title");
    scene.addField(title.get(), 0);
    title->setName(Text("headline"));
    EXPECT_EQ(at(scene, "title"), title.get());
    title.reset();
    EXPECT_EQ(at(scene, "title"), nullptr);
    EXPECT_EQ(at(scene, "headline"), nullptr);
    EXPECT_EQ(scene.getFieldByIndex(0), nullptr);
    scene.clearData();
}

// The same, of a child of two structures.
TEST(PathChanges, AChildOfTwoStructuresThatIsDestroyedIsFoundInNeither) {
    DataStructure first(Text("first"));
    DataStructure second(Text("second"));
    auto title = value("title");
    first.addField(title.get(), 0);
    second.addField(title.get(), 0);
    EXPECT_EQ(at(first, "title"), title.get());
    EXPECT_EQ(at(second, "title"), title.get());
    title.reset();
    EXPECT_EQ(at(first, "title"), nullptr);
    EXPECT_EQ(at(second, "title"), nullptr);
    std::vector<DataField*> fields;
    second.getFieldsVector(&fields);
    EXPECT_TRUE(fields.empty());
}

TEST(PathChanges, AChildOfTwoStructuresLeavesEachByItself) {
    DataStructure first(Text("first"));
    DataStructure second(Text("second"));
    auto title = value("title");
    first.addField(title.get(), 0);
    second.addField(title.get(), 0);
    first.removeField(Text("title"), 0);
    EXPECT_EQ(at(first, "title"), nullptr);
    EXPECT_EQ(at(second, "title"), title.get());
    title->setName(Text("headline"));
    EXPECT_EQ(at(second, "title"), title.get());
    EXPECT_TRUE(first.addField(title.get(), 0));
    EXPECT_EQ(at(first, "headline"), title.get());
}

// The name of a child that had been destroyed stayed taken: each path with a kind made a field that nobody found.
TEST(PathChanges, AFieldTakesThePlaceOfOneThatWasDestroyed) {
    DataStructure scene(Text("scene"));
    const SubtreeCleanup belowScene{scene};
    {
        DataValue title(Text("title"));
        scene.addField(&title, 0);
    }
    DataField* created = scene.getField(Text("string:title"), 0, 0);
    EXPECT_EQ(at(scene, "title"), created);
    EXPECT_EQ(scene.getNumFields(), 1);
    EXPECT_EQ(created->getRef(), 1);
}

// A structure without parent had a child "..", and that was still found when the structure got a parent.
TEST(PathChanges, TwoDotsAreTheParentAsSoonAsThereIsOne) {
    Orbel root(Text("root"));
    DataStructure scene(Text("scene"));
    DataValue dots(Text(".."));
    DataValue title(Text("title"));
    scene.addField(&dots, 0);
    root.addField(&title, 0);
    EXPECT_EQ(at(scene, ".."), &dots);
    EXPECT_EQ(at(scene, "../title"), &dots);
    root.addField(&scene, 0);
    EXPECT_EQ(at(scene, ".."), nullptr);
    EXPECT_EQ(at(scene, "../title"), &title);
    root.removeChildren();
    EXPECT_EQ(at(scene, ".."), &dots);
}

TEST(PathChanges, AssigningAStructureGivesItTheChildrenOfTheOther) {
    DataStructure first(Text("first"));
    DataStructure second(Text("second"));
    DataValue inFirst(Text("x"));
    DataValue inSecond(Text("x"));
    first.addField(&inFirst, 0);
    second.addField(&inSecond, 0);
    EXPECT_EQ(at(first, "x"), &inFirst);
    EXPECT_EQ(at(second, "x"), &inSecond);
    first = second;
    EXPECT_EQ(at(first, "x"), &inSecond);
    EXPECT_EQ(at(second, "x"), &inSecond);
    EXPECT_EQ(inFirst.getParent(), nullptr);
    EXPECT_EQ(inFirst.getRef(), 0);
}

TEST(PathChanges, StructuresThatShareChildrenLoseThemTogether) {
    DataStructure origin(Text("origin"));
    DataValue x(Text("x"));
    origin.addField(&x, 0);
    DataStructure copy(origin);
    EXPECT_EQ(at(origin, "x"), &x);
    EXPECT_EQ(at(copy, "x"), &x);
    copy.removeField(Text("x"), 0);
    EXPECT_EQ(at(origin, "x"), nullptr);
    EXPECT_EQ(at(copy, "x"), nullptr);
    origin.addField(&x, 0);
    EXPECT_EQ(at(copy, "x"), &x);
}

TEST(PathChanges, AStructureInThePlaceOfAnotherFindsItsOwn) {
    DataValue inFirst(Text("x"));
    DataValue inSecond(Text("x"));
    alignas(DataStructure) unsigned char room[sizeof(DataStructure)];
    auto* asked = new (room) DataStructure(Text("first"));
    asked->addField(&inFirst, 0);
    EXPECT_EQ(at(*asked, "x"), &inFirst);
    asked->~DataStructure();
    asked = new (room) DataStructure(Text("second"));
    EXPECT_EQ(at(*asked, "x"), nullptr);
    asked->addField(&inSecond, 0);
    EXPECT_EQ(at(*asked, "x"), &inSecond);
    asked->~DataStructure();
}

TEST(PathChanges, ANodeThatBecomesALeafEndsThePath) {
    SceneTree tree;
    EXPECT_EQ(at(tree.root, "scene/title"), tree.title);
    tree.scene->setType(DataField::getClassType());
    EXPECT_EQ(at(tree.root, "scene/title"), tree.scene);
    tree.scene->setType(DataStructure::getClassType());
    EXPECT_EQ(at(tree.root, "scene/title"), tree.title);
}

// Changing the class of a child whose reference count had been cleared left paths through it as they were.
TEST(PathChanges, AnUncountedNodeMayBecomeALeafToo) {
    for (const bool byClearing : {true, false}) {
        SceneTree tree;
        if (byClearing)
            tree.scene->clearRef();
        else
            tree.scene->unref();
        EXPECT_EQ(at(tree.root, "scene/title"), tree.title);
        tree.scene->setType(DataField::getClassType());
        EXPECT_EQ(at(tree.root, "scene/title"), tree.scene);
        tree.scene->setType(DataStructure::getClassType());
    }
}

// The same when the class came with an assignment.
TEST(PathChanges, AnAssignedClassCountsAtOnce) {
    Orbel root(Text("root"));
    DataStructure scene(Text("scene"));
    DataStructure other(Text("scene"));
    DataValue title(Text("title"));
    root.addField(&scene, 0);
    scene.addField(&title, 0);
    other.setType(DataField::getClassType());
    EXPECT_EQ(at(root, "scene/title"), &title);
    static_cast<DataField&>(scene) = other;
    EXPECT_EQ(at(root, "scene/title"), &scene);
}

TEST(PathChanges, RetypedObjectsHaveOtherFields) {
    SceneTree tree;
    auto* object = new DataObject(Text("object"));
    tree.root.addField(object, 0);
    object->addField(new DataValue(Text("x")), 0);
    EXPECT_NE(at(tree.root, "object/x"), nullptr);
    object->setObjectType(static_cast<DataObjectType*>(nullptr));
    EXPECT_NE(at(tree.root, "object/x"), nullptr);
    DataObjectType type;
    object->setObjectType(&type);
    EXPECT_EQ(at(tree.root, "object/x"), nullptr);
    object->addField(new DataValue(Text("x")), 0);
    DataField* x = at(tree.root, "object/x");
    EXPECT_EQ(x, object->getFieldByIndex(0));
    object->setObjectType(static_cast<DataObjectType*>(nullptr));
    EXPECT_EQ(at(tree.root, "object/x"), nullptr);
}

TEST(PathChanges, StructuresOfClientsAreAskedEachTime) {
    Orbel root(Text("root"));
    Oracle oracle;
    root.addField(&oracle, 0);
    DataValue stored(Text("x"));
    oracle.addField(&stored, 0);
    EXPECT_EQ(at(root, "oracle/x"), &oracle.answer);
    EXPECT_EQ(oracle.DataStructure::getField(Text("x"), 0, 0), &stored);
    EXPECT_TRUE(oracle.setFieldData(Text("x"), Text("told")));
    EXPECT_EQ(*oracle.answer.getData(0), "told");
    EXPECT_EQ(*stored.getData(0), " ");
}

TEST(PathChanges, LeavesOfClientsAreToldThemselves) {
    Orbel root(Text("root"));
    Meter meter;
    root.addField(&meter, 0);
    for (const char* text : {"1", "2"}) {
        EXPECT_TRUE(root.setFieldData(Text("meter"), Text(text)));
        EXPECT_EQ(meter.told, text);
        char* read = nullptr;
        EXPECT_TRUE(root.getFieldData(Text("meter"), &read));
        EXPECT_STREQ(read, text);
    }
    EXPECT_EQ(*meter.DataValue::getData(0), " ");
}

TEST(PathChanges, RootsOfClientsDecideEachTime) {
    SceneTree tree;
    Switch root;
    DataValue own(Text("scene"));
    root.addField(&own, 0);
    EXPECT_EQ(at(root, "scene"), &own);
    EXPECT_TRUE(root.setFieldData(Text("scene"), Text("1")));
    EXPECT_TRUE(root.setFieldData(Text("scene"), Text("2")));
    EXPECT_EQ(*own.getData(0), "2");
    root.other = &tree.root;
    EXPECT_EQ(at(root, "scene"), tree.scene);
    EXPECT_EQ(at(root, "scene/title"), tree.title);
    EXPECT_TRUE(root.setFieldData(Text("scene/title"), Text("3")));
    EXPECT_EQ(*tree.title->getData(0), "3");
    EXPECT_EQ(*own.getData(0), "2");
}

TEST(PathChanges, PathsAroundTheLengthThatIsRememberedAreAlike) {
    for (const int length : {1, 2, 3, 4, 7, 8, 15, 16, 17, 29, 30, 31, 32, 33, 64, 98, 99, 100}) {
        Orbel root(Text("root"));
        DataValue first(Text(std::string(static_cast<std::size_t>(length), 'n')));
        DataValue second(Text(first.getName()));
        const std::string path = first.getName();
        root.addField(&first, 0);
        EXPECT_EQ(at(root, path), &first);
        EXPECT_EQ(at(root, path + 'n'), nullptr);
        EXPECT_EQ(at(root, path + '/'), &first);
        EXPECT_TRUE(root.setFieldData(Text(path), Text("1")));
        EXPECT_TRUE(root.setFieldData(Text(path), Text("2")));
        EXPECT_EQ(*first.getData(0), "2");
        root.removeField(Text(path), 0);
        EXPECT_EQ(at(root, path), nullptr);
        EXPECT_FALSE(root.setFieldData(Text(path), Text("3")));
        root.addField(&second, 0);
        EXPECT_EQ(at(root, path), &second);
        EXPECT_EQ(*first.getData(0), "2");
    }
}

TEST(PathChanges, NamesThatNoPathCanSayAreNeverFound) {
    Orbel root(Text("root"));
    DataValue bracket(Text("a[1]"));
    DataValue colon(Text("string:b"));
    DataValue slash(Text("c/d"));
    DataValue plain(Text("a"));
    for (DataValue* child : {&bracket, &colon, &slash})
        EXPECT_TRUE(root.addField(child, 0));
    EXPECT_EQ(at(root, "a[1]"), nullptr);
    EXPECT_EQ(at(root, "c/d"), nullptr);
    EXPECT_EQ(at(root, "b"), nullptr);
    root.addField(&plain, 0);
    EXPECT_EQ(at(root, "a[1]"), &plain);
    root.removeField(Text("a[1]"), 0);
    EXPECT_EQ(bracket.getRef(), 0);
    EXPECT_EQ(at(root, "a[1]"), &plain);
    root.removeField(Text("c/d"), 0);
    root.removeField(Text("string:b"), 0);
    EXPECT_EQ(root.getNumFields(), 1);
}

// A handler that assigned the structure being cleared made the walk go on over freed memory.
TEST(PathChanges, AStructureMayBeAssignedWhileItIsCleared) {
    Diary diary;
    RecordingHandler handler(diary, "A");
    DataStructure other(Text("other"));
    DataValue inOther(Text("z"));
    other.addField(&inOther, 0);
    DataStructure scene(Text("scene"));
    DataValue x(Text("x"));
    DataValue y(Text("y"));
    scene.addField(&x, 0);
    scene.addField(&y, 0);
    x.registerHandler(&handler);
    y.setData("kept");
    handler.onceThen([&] { scene = other; });
    scene.clearData();
    EXPECT_EQ(diary.take(), "A changed");
    EXPECT_EQ(*y.getData(0), "kept");
    EXPECT_EQ(x.getParent(), nullptr);
    EXPECT_EQ(y.getRef(), 0);
    EXPECT_EQ(at(scene, "z"), &inOther);
}

// The same from which is copied: it kept its references on the children that it had.
TEST(PathChanges, AStructureMayBeAssignedWhileItIsCopied) {
    Diary diary;
    RecordingHandler handler(diary, "A");
    DataStructure other(Text("other"));
    DataStructure source(Text("source"));
    DataStructure target(Text("target"));
    DataValue x(Text("x"));
    DataValue y(Text("y"));
    source.addField(&x, 0);
    source.addField(&y, 0);
    DataValue toX(Text("x"));
    DataValue toY(Text("y"));
    target.addField(&toX, 0);
    target.addField(&toY, 0);
    toX.registerHandler(&handler);
    handler.onceThen([&] { source = other; });
    EXPECT_TRUE(target.copyData(&source, 0, 0, -1));
    EXPECT_EQ(diary.take(), "A same");
    EXPECT_EQ(source.getNumFields(), 0);
    EXPECT_EQ(x.getParent(), nullptr);
    EXPECT_EQ(x.getRef(), 0);
    EXPECT_EQ(y.getRef(), 0);
}

// The structure that a path with kinds went through is kept for the next path, which goes the same way once more.
TEST(PathChanges, WaysOfKindsHaveTheirEffectsEachTime) {
    Orbel root(Text("show"));
    const SubtreeCleanup belowRoot{root};
    root.getField(Text("node:a/node:b/string:x"), 0, 0);
    auto* a = static_cast<DataStructure*>(root.getField(Text("a"), 0, 0));
    DataField* b = a->getField(Text("b"), 0, 0);
    EXPECT_EQ(a->getRefCalls(), 1);
    a->setParent(&root, 7);
    DataField* y = root.getField(Text("node:a/node:b/string:y"), 0, 0);
    EXPECT_EQ(y->getParent(), b);
    EXPECT_EQ(y->getNumHandlers(), 1);
    EXPECT_EQ(a->getRefCalls(), 2);
    EXPECT_EQ(a->getRef(), 1);
    EXPECT_EQ(b->getRefCalls(), 2);
    EXPECT_EQ(a->getParentInstance(), -1);
    EXPECT_EQ(root.getField(Text("node:a/node:b/y"), 0, 0), y);
    EXPECT_EQ(b->getRefCalls(), 3);
    EXPECT_EQ(root.getField(Text("node:a/node:b/missing"), 0, 0), nullptr);
    EXPECT_EQ(b->getRefCalls(), 4);
}

TEST(PathChanges, AWayOfKindsWithoutItsMarkerGetsOneAgain) {
    Orbel root(Text("show"));
    const SubtreeCleanup belowRoot{root};
    auto* a = static_cast<DataStructure*>(root.getField(Text("node:a/string:x"), 0, 0)->getParent());
    a->DataField::unregisterHandler(a->getHandlerByName(Text("DUMMY")));
    EXPECT_EQ(a->getNumHandlers(), 0);
    DataField* y = root.getField(Text("node:a/string:y"), 0, 0);
    EXPECT_EQ(y->getParent(), a);
    EXPECT_EQ(handlersOf(*a), "DUMMY");
    EXPECT_EQ(a->getRefCalls(), 2);
    EXPECT_EQ(shapeOf(root), "show{a{x?,y?}}");
}

TEST(PathChanges, AWayOfKindsWithoutHandlersGetsItsMarkerAgain) {
    Orbel root(Text("show"));
    const SubtreeCleanup belowRoot{root};
    auto* a = static_cast<DataStructure*>(root.getField(Text("node:a/string:x"), 0, 0)->getParent());
    a->unregisterAllHandlers();
    EXPECT_EQ(root.getField(Text("node:a/string:y"), 0, 0)->getParent(), a);
    EXPECT_EQ(handlersOf(*a), "DUMMY");
    EXPECT_EQ(a->getRefCalls(), 2);
}

TEST(PathChanges, AWayOfKindsMayHaveGotObserversMeanwhile) {
    Orbel root(Text("show"));
    const SubtreeCleanup belowRoot{root};
    DataHandler one(Text("one")), other(Text("other"));
    auto* a = static_cast<DataStructure*>(root.getField(Text("node:a/string:x"), 0, 0)->getParent());
    a->DataField::registerHandler(&one);
    a->DataField::registerHandler(&other);
    DataField* y = root.getField(Text("node:a/string:y"), 0, 0);
    EXPECT_EQ(y->getParent(), a);
    EXPECT_EQ(handlersOf(*a), "DUMMY one other");
    EXPECT_EQ(a->getRefCalls(), 2);
    EXPECT_EQ(a->getRef(), 1);
}

// Each structure on the way counts its kind once, whichever of them has been changed.
TEST(PathChanges, AWayOfKindsCountsEachStepOnceWhenOneHasNoMarkerInFront) {
    for (int changed = 0; changed < 3; ++changed) {
        Orbel root(Text("show"));
        const SubtreeCleanup belowRoot{root};
        DataHandler first(Text("first"));
        DataNode* steps[3] = {};
        steps[2] = root.getField(Text("node:a/node:b/node:c/string:x"), 0, 0)->getParent();
        steps[1] = steps[2]->getParent();
        steps[0] = steps[1]->getParent();
        steps[changed]->unregisterAllHandlers();
        steps[changed]->DataField::registerHandler(&first);
        DataField* y = root.getField(Text("node:a/node:b/node:c/string:y"), 0, 0);
        EXPECT_EQ(shapeOf(root), "show{a{b{c{x?,y?}}}}");
        EXPECT_EQ(y->getParent(), steps[2]);
        for (int step = 0; step < 3; ++step) {
            EXPECT_EQ(steps[step]->getRefCalls(), 2) << changed << ' ' << step;
            EXPECT_EQ(handlersOf(*steps[step]), step == changed ? "first DUMMY" : "DUMMY") << changed;
        }
    }
}

TEST(PathChanges, AWayOfKindsThatWasTakenOutIsMadeAnew) {
    Orbel root(Text("show"));
    const SubtreeCleanup belowRoot{root};
    root.getField(Text("node:a/string:x"), 0, 0);
    Tree<DataStructure> old(static_cast<DataStructure*>(root.getField(Text("a"), 0, 0)));
    root.removeField(Text("a"), -1);
    DataField* y = root.getField(Text("node:a/string:y"), 0, 0);
    EXPECT_NE(y->getParent(), old.get());
    EXPECT_EQ(old->getNumFields(), 1);
    EXPECT_EQ(root.getField(Text("a"), 0, 0), y->getParent());
}

// A path with kinds that goes on behind a value led to the value at first, and to nothing when it was asked again.
TEST(PathChanges, AWayOfKindsThatEndsAtAValueLeadsThereAgain) {
    Orbel root(Text("show"));
    const SubtreeCleanup belowRoot{root};
    DataField* title = root.getField(Text("node:scene/string:title"), 0, 0);
    for (const char* path : {"node:scene/title/y", "node:scene/string:title/y", "node:scene/title/y/z"})
        EXPECT_EQ(at(root, path), title) << path;
    EXPECT_NE(at(root, "node:scene/string:y"), title);
    EXPECT_EQ(at(root, "node:scene/title/y"), title);
    EXPECT_TRUE(root.setFieldData(Text("node:scene/title/y"), Text("set")));
    EXPECT_EQ(*title->getData(0), "set");
}

// Ways of up to eight steps, in up to 120 characters, are kept.
TEST(PathChanges, WaysOfKindsAroundTheLengthsThatAreKeptAreAlike) {
    for (const std::size_t steps : {1u, 2u, 7u, 8u, 9u, 10u}) {
        for (const std::size_t length : {0u, 119u, 120u, 121u, 122u}) {
            SCOPED_TRACE(std::to_string(steps) + " steps, " + std::to_string(length) + " characters");
            Orbel root(Text("show"));
            const SubtreeCleanup belowRoot{root};
            const std::string way = wayOf(steps, length);
            DataField* x = root.getField(Text(way + "/string:x"), 0, 0);
            ASSERT_NE(x, nullptr);
            auto* last = static_cast<DataStructure*>(x->getParent());
            ASSERT_NE(last, &root);
            EXPECT_EQ(last->getRefCalls(), 1);
            DataField* y = root.getField(Text(way + "/string:y"), 0, 0);
            EXPECT_EQ(last->getField(Text("y"), 0, 0), y);
            EXPECT_EQ(root.getField(Text(way + "/y"), 0, 0), y);
            EXPECT_EQ(root.getField(Text(way + "/string:x"), 0, 0), x);
            EXPECT_EQ(root.getField(Text(way + "/z"), 0, 0), nullptr);
            EXPECT_EQ(last->getRefCalls(), 5);
            EXPECT_EQ(last->getRef(), 1);
            EXPECT_EQ(last->getNumFields(), 2);
            static_cast<DataStructure*>(last->getParent())->removeField(Text(last->getName()), 0);
            const Tree<DataStructure> removed(last);
            DataField* anew = root.getField(Text(way + "/string:x"), 0, 0);
            EXPECT_NE(anew, x);
            EXPECT_NE(anew->getParent(), last);
        }
    }
}

// The second path has the text of the first way in front of it, yet another name or another root.
TEST(PathChanges, AWayOfKindsIsTakenByPathsThroughItAlone) {
    Orbel root(Text("show"));
    const SubtreeCleanup belowRoot{root};
    Orbel other(Text("other"));
    const SubtreeCleanup belowOther{other};
    DataField* x = root.getField(Text("node:a/string:x"), 0, 0);
    DataField* longer = root.getField(Text("node:ab/string:x"), 0, 0);
    EXPECT_STREQ(longer->getParent()->getName(), "ab");
    EXPECT_EQ(root.getField(Text("node:a/string:x"), 0, 0), x);
    DataField* deeper = root.getField(Text("node:a/node:b/string:x"), 0, 0);
    EXPECT_STREQ(deeper->getParent()->getName(), "b");
    EXPECT_EQ(root.getField(Text("node:a"), 0, 0), x->getParent());
    DataField* elsewhere = other.getField(Text("node:a/string:x"), 0, 0);
    EXPECT_EQ(elsewhere->getParent()->getParent(), &other);
    EXPECT_EQ(root.getField(Text("node:a/string:x"), 0, 0), x);
}

Orbel* rootOfTypeFunction = nullptr;

DataObject* makeAndTakeOut(char* /*typeName*/) {
    rootOfTypeFunction->removeField(Text("a"), -1);
    return new DataObject(Text("made"));
}

// What makes an object may take out what the path went through, which then leads there no more.
TEST(PathChanges, AWayOfKindsThatIsTakenOutOnTheWayIsMadeAnew) {
    DeclaredTypes types("Point = {string x=0;};");
    types["Point"]->setCreateObjectFunc(makeAndTakeOut);
    Orbel root(Text("show"));
    const SubtreeCleanup belowRoot{root};
    rootOfTypeFunction = &root;
    root.getField(Text("node:a/string:x"), 0, 0);
    Tree<DataStructure> old(static_cast<DataStructure*>(root.getField(Text("a"), 0, 0)));
    root.getField(Text("node:a/Point:p"), 0, 0);
    EXPECT_EQ(root.getField(Text("a"), 0, 0), nullptr);
    DataField* y = root.getField(Text("node:a/string:y"), 0, 0);
    EXPECT_NE(y->getParent(), old.get());
    EXPECT_EQ(root.getField(Text("a"), 0, 0), y->getParent());
}
