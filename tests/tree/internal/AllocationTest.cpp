#include <support/AllocationCount.h>
#include <support/SceneTree.h>

#include <gtest/gtest.h>

namespace {

class Counter : public DataHandler {
public:
    void onChange(DataField& /*field*/, bool /*changed*/) override { ++calls; }
    void onChange(DataField& /*field*/, bool /*changed*/, int /*from*/, int /*to*/) override { ++calls; }

    int calls = 0;
};

// Longer than any string object holds within itself.
const std::string first(60, 'a');
const std::string sameLength(60, 'b');
const std::string shorter(40, 'c');

/// A scene whose title is stored and observed.
class Allocation : public testing::Test {
protected:
    Allocation() {
        tree.title->setData(first.c_str());
        tree.root.registerHandler(path, &handler, 0);
        handler.calls = 0;
    }

    SceneTree tree;
    Counter handler;
    Text path{"scene/title"};
    Text fromTheSide{"scene/../scene/title"};
    Text text{sameLength};
    Text shortText{shorter};
};

} // namespace

TEST(AllocationCount, SeesAnAllocation) {
    EXPECT_EQ(allocationsOf([] { ::operator delete(::operator new(10)); }), 1);
}

TEST_F(Allocation, NoneToSetTextOfTheSameLength) {
    EXPECT_EQ(allocationsOf([&] { tree.root.setFieldData(path, static_cast<char*>(text)); }), 0);
    EXPECT_EQ(*tree.title->getData(0), sameLength);
    EXPECT_EQ(handler.calls, 1);
}

TEST_F(Allocation, NoneToSetShorterTextAndTheOldLengthAgain) {
    EXPECT_EQ(allocationsOf([&] {
                  tree.root.setFieldData(path, static_cast<char*>(shortText));
                  tree.root.setFieldData(fromTheSide, static_cast<char*>(text));
              }),
              0);
    EXPECT_EQ(*tree.title->getData(0), sameLength);
    EXPECT_EQ(handler.calls, 2);
}

TEST_F(Allocation, NoneWhileRealChangesAreDetected) {
    handler.setNotifyOnValueChange(1);
    tree.title->countNotifyOnValueChange();
    EXPECT_EQ(allocationsOf([&] { tree.root.setFieldData(path, static_cast<char*>(text)); }), 0);
    EXPECT_EQ(handler.calls, 1);
}

TEST_F(Allocation, NoneToSetAString) {
    std::string value = sameLength;
    EXPECT_EQ(allocationsOf([&] { tree.root.setFieldData(path, &value); }), 0);
    EXPECT_EQ(*tree.title->getData(0), sameLength);
    EXPECT_EQ(handler.calls, 1);
}

TEST_F(Allocation, NoneToSetOneOfSeveralValues) {
    tree.title->setSize(3);
    tree.title->setData(first.c_str(), 2);
    handler.calls = 0;
    EXPECT_EQ(allocationsOf([&] { tree.root.setFieldData(path, static_cast<char*>(text), 2); }), 0);
    EXPECT_EQ(*tree.title->getData(2), sameLength);
    EXPECT_EQ(handler.calls, 1);
}

TEST_F(Allocation, NoneToSetSeveralValues) {
    tree.title->setSize(2);
    tree.title->setData(first.c_str(), 1);
    handler.calls = 0;
    std::vector<char*> values = {text, shortText};
    EXPECT_EQ(allocationsOf([&] { tree.root.setFieldData(path, &values, 0, -1); }), 0);
    EXPECT_EQ(*tree.title->getData(1), shorter);
    EXPECT_EQ(handler.calls, 1);
}

TEST_F(Allocation, NoneToSetInAnElementOrAnEntry) {
    const std::string longKey(40, 'k');
    tree.cities->newObject(Text(longKey))->addField(new DataValue(Text("x")), 0);
    for (const std::string& where :
         {std::string("points[2]/x"), std::string("cities[Oslo]/x"), "cities[ " + longKey + " ]/x"}) {
        Text address(where);
        tree.root.setFieldData(address, Text(first));
        // A handler that moves by path takes its old field out of the tree, which then nobody would free.
        handler.getField()->unregisterHandler(&handler);
        tree.root.registerHandler(address, &handler, 0);
        handler.calls = 0;
        EXPECT_EQ(allocationsOf([&] { tree.root.setFieldData(address, static_cast<char*>(text)); }), 0) << where;
        EXPECT_EQ(*tree.at(where)->getData(0), sameLength);
        EXPECT_EQ(handler.calls, 1);
    }
}

TEST_F(Allocation, NoneToSetOnTheLongestPath) {
    std::string longest;
    while (longest.size() + 20 <= 511)
        longest += "scene/../";
    Text address(longest + "scene/title");
    EXPECT_EQ(allocationsOf([&] { tree.root.setFieldData(address, static_cast<char*>(text)); }), 0);
    EXPECT_EQ(handler.calls, 1);
}

TEST_F(Allocation, NoneToGetAField) {
    DataField* found = nullptr;
    EXPECT_EQ(allocationsOf([&] { found = tree.root.getField(path, 0, 0); }), 0);
    EXPECT_EQ(found, tree.title);
    Text missing("scene/missing/anything");
    EXPECT_EQ(allocationsOf([&] { found = tree.root.getField(missing, 0, 0); }), 0);
    EXPECT_EQ(found, nullptr);
}

TEST_F(Allocation, NoneToGetAFieldByAKindThatItHas) {
    Text withKind("node:scene/string:title");
    DataField* found = tree.root.getField(withKind, 0, 0);
    EXPECT_EQ(found, tree.title);
    EXPECT_EQ(allocationsOf([&] { found = tree.root.getField(withKind, 0, 0); }), 0);
    EXPECT_EQ(found, tree.title);
}

TEST_F(Allocation, NoneToGetText) {
    char* stored = nullptr;
    EXPECT_EQ(allocationsOf([&] { tree.root.getFieldData(path, &stored); }), 0);
    EXPECT_EQ(stored, first);
    std::string copy(first.size(), ' ');
    EXPECT_EQ(allocationsOf([&] { tree.root.getFieldData(path, &copy); }), 0);
    EXPECT_EQ(copy, first);
    std::vector<char*> texts(1);
    EXPECT_EQ(allocationsOf([&] { tree.root.getFieldData(path, &texts, 0, -1); }), 0);
    EXPECT_EQ(texts.at(0), first);
    int size = 0;
    EXPECT_EQ(allocationsOf([&] { tree.root.getFieldSize(path, &size); }), 0);
    EXPECT_EQ(size, 1);
}

namespace {

/// Runs a list twice; how many allocations the second time makes.
template <class Run>
int allocationsOfRunningAgain(Run run) {
    run();
    return allocationsOf(run);
}

} // namespace

TEST_F(Allocation, NoneToRunAListOfCommandsAgain) {
    tree.scene->addField(new DataValue(Text("a_name_longer_than_a_string_holds")), 0);
    Text list("scene/title = short text; scene/a_name_longer_than_a_string_holds = 1; missing = 2; points[1]/x = 3;");
    EXPECT_EQ(allocationsOfRunningAgain([&] { tree.root.parseCommand(list, 0); }), 0);
    EXPECT_EQ(*tree.title->getData(0), "short text");
    EXPECT_EQ(*tree.at("scene/a_name_longer_than_a_string_holds")->getData(0), "1");
    EXPECT_EQ(*tree.xOfPoint(1)->getData(0), "3");
}

TEST_F(Allocation, NoneToPassCommandsOnToALinkedNode) {
    DataStructure follower(Text("follower"));
    const SubtreeCleanup belowFollower{follower};
    follower.addField(new DataValue(Text("title")), 0);
    tree.scene->addTargetLink(&follower);
    Text list("title = of both scenes;");
    EXPECT_EQ(allocationsOfRunningAgain([&] { tree.scene->parseCommand(list, 0); }), 0);
    EXPECT_EQ(*follower.getField(Text("title"), 0, 0)->getData(0), "of both scenes");
}

TEST_F(Allocation, NoneToRunAListOfCopiesOfValuesAgain) {
    tree.scene->addField(new DataValue(Text("copy_of_the_title_of_the_scene")), 0);
    Text list("scene/copy_of_the_title_of_the_scene = scene/title; points[0]/x[0] = points[1]/x;");
    EXPECT_EQ(allocationsOfRunningAgain([&] { tree.root.parseCopyCommand(list); }), 0);
    EXPECT_EQ(*tree.at("scene/copy_of_the_title_of_the_scene")->getData(0), first);
}

TEST_F(Allocation, NoneToRunAListOfClearsAgain) {
    Text list(" scene/title ; points[0]/x; missing/field/with/a/long/path");
    EXPECT_EQ(allocationsOfRunningAgain([&] { tree.root.executeClearCommand(list); }), 0);
    EXPECT_EQ(*tree.title->getData(0), "");
}

TEST_F(Allocation, NoneToDumpATreeIntoRoomThatIsThere) {
    class Nowhere : public std::streambuf {
    protected:
        int_type overflow(int_type character) override { return traits_type::not_eof(character); }
        std::streamsize xsputn(const char* /*text*/, std::streamsize length) override { return length; }
    } nowhere;
    std::ostream os(&nowhere);
    tree.title->setSize(3);
    EXPECT_EQ(allocationsOfRunningAgain([&] { tree.scene->dump(os, -1, -1, 1); }), 0);
}

// The handler stayed on a list that it did not know of, and was told after its death.
TEST(WithoutMemory, AHandlerIsOnNoFurtherFieldOrWhollyOnIt) {
    DataValue first(Text("first"));
    DataValue second(Text("second"));
    DataHandler others[3];
    for (DataHandler& other : others)
        second.registerHandler(&other);
    Counter handler;
    first.registerHandler(&handler);
    bool failed = false;
    try {
        const FailingAllocations none(1);
        second.registerHandler(&handler);
    } catch (const std::bad_alloc&) {
        failed = true;
    }
    EXPECT_TRUE(failed);
    EXPECT_EQ(second.getNumHandlers(), 3);
    EXPECT_EQ(first.getNumHandlers(), 1);
    second.setData("1");
    EXPECT_EQ(handler.calls, 0);
}

TEST(WithoutMemory, AChildIsNotListedOrWholly) {
    for (int count = 0; count < 40; ++count) {
        DataStructure scene(Text("scene"));
        const SubtreeCleanup belowScene{scene};
        for (int number = 0; number < count; ++number)
            scene.addField(new DataValue(Text("field" + std::to_string(number))), 0);
        DataValue last(Text("last"));
        bool failed = false;
        try {
            const FailingAllocations none(1);
            scene.addField(&last, 0);
        } catch (const std::bad_alloc&) {
            failed = true;
        }
        Text name("last");
        EXPECT_EQ(scene.getField(name, 0, 0), failed ? nullptr : &last) << count;
        EXPECT_EQ(scene.getNumFields(), failed ? count : count + 1);
        scene.removeField(name, 0);
        EXPECT_EQ(last.getRef(), 0);
    }
}

TEST(WithoutMemory, AChildKeepsItsNameOrIsRenamedWholly) {
    DataStructure scene(Text("scene"));
    DataValue title(Text("title"));
    scene.addField(&title, 0);
    Text longer("a_name_longer_than_a_string_holds");
    try {
        const FailingAllocations none(1);
        title.setName(longer);
    } catch (const std::bad_alloc&) {
        EXPECT_STREQ(title.getName(), "title");
    }
    EXPECT_EQ(scene.getField(Text("title"), 0, 0), &title);
}

TEST(WithoutMemory, AChildMayBeDestroyed) {
    DataStructure scene(Text("scene"));
    auto title = std::make_unique<DataValue>(Text("title"));
    scene.addField(title.get(), 0);
    {
        const FailingAllocations none(1);
        title.reset();
    }
    EXPECT_EQ(scene.getField(Text("title"), 0, 0), nullptr);
}

TEST(WithoutMemory, PathsAreWalked) {
    SceneTree tree;
    const FailingAllocations none(1);
    EXPECT_EQ(tree.root.getField(Text("scene"), 0, 0), tree.scene);
    EXPECT_EQ(tree.root.getField(Text("scene"), 0, 0), tree.scene);
}
