#include <orbel/orbel.h>

#include <support/Console.h>
#include <support/Environment.h>
#include <support/RecordingPlugin.h>
#include <support/Text.h>
#include <support/TextList.h>
#include <support/TreeCleanup.h>
#include <support/WorkingFolder.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

const std::string cannotRetrieve = "------------  Can't Retrieve Orbel ------------\n";

/// What a plug-in has to supply, and no more.
class PlainPlugin : public IDataHandler {
public:
    char* getPluginName() override { return nullptr; }
    int getPluginType() override { return 0; }
    char* getPluginFolder() override { return nullptr; }
};

class PlugIns : public testing::Test {
protected:
    PlugIns() { clearTypeVariables(); }

    void initWith(const std::string& settings) {
        folder.write("Orbel.ini", settings);
        IDataHandlerImpl::init();
        console.takeOutput();
    }

    Console console;
    WorkingFolder folder;
    Diary diary;
    RecordingPlugin plugin{diary, "A"};
};

/// A plug-in in the single tree, which holds a title and a list of two values.
class PlugInInTree : public PlugIns {
protected:
    PlugInInTree() {
        tree->addField(title, 0);
        tree->addField(list, 0);
        list->setSize(2);
        plugin.init(0);
    }

    DataField* at(const std::string& path) { return tree->getField(Text(path), 0, 1); }

    Orbel* tree = IDataHandlerImpl::getOrbel(0, false);
    DataValue* title = new DataValue(Text("title"));
    DataValue* list = new DataValue(Text("list"));
};

class ConversionInPlugIns : public PlugInInTree {
protected:
    ConversionInPlugIns() {
        folder.write("QX_ConvTables.csv", "__TABLE__,Sky\n01,sun.png\n02,cloud.png\n__DEFAULT__,unknown.png\n");
        IDataHandlerImpl::init();
        plugin.setUseConvTable(1);
        plugin.setConvTableNmae(Text("Sky"));
    }
};

class PlugInsPerScene : public PlugIns {
protected:
    PlugInsPerScene() { initWith("MultiOrbel=1\n"); }
};

} // namespace

TEST_F(PlugIns, StartWithoutABridge) {
    EXPECT_TRUE(plugin.needsInit());
    EXPECT_EQ(plugin.getUserData(), nullptr);
    EXPECT_EQ(plugin.getDataHandler(), nullptr);
    EXPECT_EQ(plugin.getField(), nullptr);
    EXPECT_EQ(plugin.getOffset(), 0);
    EXPECT_EQ(plugin.getNotifyOnValueChange(), 0);
    EXPECT_EQ(plugin.getUseConvTable(), 0);
    EXPECT_EQ(plugin.getConvTableName(), nullptr);
}

TEST_F(PlugIns, DoNothingBeforeInit) {
    Orbel root(Text("root"));
    const SubtreeCleanup belowRoot{root};
    auto* title = new DataValue(Text("title"));
    root.addField(title, 0);
    plugin.setNotifyOnValueChange(1);
    plugin.setUseConvTable(1);
    plugin.setConvTableNmae(Text("Sky"));
    plugin.setName(Text("B"));
    plugin.registerHandler("title", &root, 0);
    plugin.registerHandler(title);
    plugin.unregisterHandler();
    plugin.refresh();
    plugin.setFieldData(Text("title"), Text("news"));
    plugin.setFieldData(Text("title"), Text("news"), 0);
    EXPECT_EQ(title->getNumHandlers(), 0);
    EXPECT_EQ(title->getDataInitialized(), 0);
    EXPECT_EQ(root.getNumFields(), 1);
    EXPECT_TRUE(plugin.needsInit());
    EXPECT_EQ(plugin.getNotifyOnValueChange(), 0);
    EXPECT_EQ(plugin.getUseConvTable(), 0);
}

TEST_F(PlugIns, HaveDefaults) {
    PlainPlugin plain;
    EXPECT_STREQ(plain.getPluginVersion(), "0");
    EXPECT_EQ(plain.getFieldType(), DataValue::getClassType());
    EXPECT_EQ(plain.getPluginFlags(), 5u);
    EXPECT_STREQ(plain.getPluginInfoText(), "");
}

TEST_F(PlugIns, HearNothingByDefault) {
    PlainPlugin plain;
    plain.onLoad();
    plain.onInit();
    plain.onFunctionInit();
    plain.onCleanup();
    plain.onBuildGeometry(1);
    plain.onExecAction(1);
    plain.onParamChange(1);
    plain.onGuiStatus();
    plain.perFrame();
    unsigned long long answer = 7;
    plain.onDispatcher(1, 2, answer);
    plain.dump();
    EXPECT_EQ(answer, 7u);
    EXPECT_EQ(console.takeOutput(), "");

    plain.init(0);
    Orbel root(Text("root"));
    const SubtreeCleanup belowRoot{root};
    auto* title = new DataValue(Text("title"));
    root.addField(title, 0);
    plain.registerHandler(title);
    title->setData("news");
    title->setSize(2);
    title->setData("late news", 1);
    title->fireOnTypeChange(Text("City"));
    title->dumpHandlers();
    EXPECT_STREQ(plain.getDataHandler()->getName(), "");
    EXPECT_EQ(console.takeOutput(), "");
}

TEST_F(PlugIns, KeepUserData) {
    int data = 0;
    plugin.setUserData(&data);
    EXPECT_EQ(plugin.getUserData(), &data);
}

TEST_F(PlugIns, AreBridgedUnderTheirName) {
    plugin.init(0);
    EXPECT_FALSE(plugin.needsInit());
    ASSERT_NE(plugin.getDataHandler(), nullptr);
    EXPECT_STREQ(plugin.getDataHandler()->getName(), "A");
    EXPECT_EQ(plugin.getField(), nullptr);
    EXPECT_EQ(plugin.getOffset(), 0);
    EXPECT_EQ(plugin.getNotifyOnValueChange(), 0);
    EXPECT_EQ(plugin.getUseConvTable(), 0);
    EXPECT_STREQ(plugin.getConvTableName(), "");
}

TEST_F(PlugIns, AreAskedForTheirNameAlone) {
    class CountingPlugin : public IDataHandler {
    public:
        char* getPluginName() override { return ++names, nullptr; }
        int getPluginType() override { return ++others; }
        char* getPluginFolder() override { return ++others, nullptr; }
        char* getPluginVersion() override { return ++others, nullptr; }
        unsigned int getPluginFlags() override { return static_cast<unsigned int>(++others); }
        char* getPluginInfoText() override { return ++others, nullptr; }

        int names = 0;
        int others = 0;
    };
    CountingPlugin counting;
    EXPECT_EQ(counting.names, 0);
    counting.init(0);
    counting.registerHandler("string:caption", nullptr, 0);
    counting.setFieldData(Text("caption"), Text("news"));
    counting.refresh();
    counting.unregisterHandler();
    EXPECT_EQ(counting.names, 1);
    EXPECT_EQ(counting.others, 0);
}

TEST_F(PlugIns, HaveNamesOfNinetyNineCharacters) {
    RecordingPlugin other(diary, std::string(120, 'n'));
    other.init(0);
    EXPECT_EQ(other.getDataHandler()->getName(), std::string(99, 'n'));
    other.setName(Text(std::string(120, 'm')));
    EXPECT_EQ(other.getDataHandler()->getName(), std::string(99, 'm'));
    other.setName(nullptr);
    EXPECT_STREQ(other.getDataHandler()->getName(), "");
}

TEST_F(PlugIns, SetTheirBridge) {
    plugin.init(0);
    plugin.setNotifyOnValueChange(3);
    plugin.setUseConvTable(4);
    EXPECT_EQ(plugin.getNotifyOnValueChange(), 3);
    EXPECT_EQ(plugin.getUseConvTable(), 4);
    EXPECT_EQ(plugin.getDataHandler()->getNotifyOnValueChange(), 3);
    EXPECT_EQ(plugin.getDataHandler()->getUseConvTable(), 4);
    plugin.getDataHandler()->setOffset(5);
    EXPECT_EQ(plugin.getOffset(), 5);
}

TEST_F(PlugIns, BoundTheNameOfTheConversionTable) {
    plugin.init(0);
    plugin.setConvTableNmae(Text("Sky"));
    EXPECT_STREQ(plugin.getConvTableName(), "Sky");
    plugin.setConvTableNmae(nullptr);
    EXPECT_STREQ(plugin.getConvTableName(), "Sky");
    EXPECT_EQ(plugin.getConvTableName(), plugin.getDataHandler()->getConvTableName());
    plugin.setConvTableNmae(Text(std::string(250, 't')));
    EXPECT_EQ(plugin.getConvTableName(), std::string(99, 't'));
}

TEST_F(PlugIns, ShareTheBridgeWithTheirCopies) {
    // Only one of them may be destroyed.
    alignas(RecordingPlugin) unsigned char places[2][sizeof(RecordingPlugin)];
    int data = 0;
    plugin.init(0);
    plugin.setUserData(&data);
    auto* copy = new (places[0]) RecordingPlugin(plugin);
    EXPECT_EQ(copy->getDataHandler(), plugin.getDataHandler());
    EXPECT_EQ(copy->getUserData(), &data);
    auto* assigned = new (places[1]) RecordingPlugin(diary, "C");
    assigned->IDataHandler::operator=(plugin);
    EXPECT_EQ(assigned->getDataHandler(), plugin.getDataHandler());
    EXPECT_EQ(assigned->getUserData(), &data);
}

TEST_F(PlugIns, BridgesWithoutAPlugInAreSilent) {
    IDataHandlerImpl bridge(nullptr, 0);
    DataValue value(Text("value"));
    value.registerHandler(&bridge);
    value.setData("news");
    value.setSize(2);
    value.setData("late news", 1);
    value.fireOnTypeChange(Text("City"));
    value.dumpHandlers();
    EXPECT_STREQ(bridge.getName(), "");
    EXPECT_EQ(bridge.getFieldType(), DataValue::getClassType());
    EXPECT_EQ(console.takeOutput(), "");
}

TEST_F(PlugInsPerScene, MakeTheTreeOfTheirScene) {
    plugin.init(3);
    EXPECT_EQ(console.takeOutput(), "++++++++++ Creating new Orbel : Scene-#3 ++++++++++\n");
    plugin.init(4);
    EXPECT_EQ(console.takeOutput(), "");
    plugin.registerHandler("title", nullptr, 0);
    EXPECT_EQ(plugin.getField()->getParent(), IDataHandlerImpl::getOrbel(3, false));
    plugin.setFieldData(Text("title"), Text("news"));
    EXPECT_EQ(diary.take(), "A title=news");
}

TEST_F(PlugInsPerScene, FollowTheCurrentScene) {
    plugin.init(-1);
    EXPECT_EQ(console.takeOutput(), cannotRetrieve);
    for (int scene : {5, 6}) {
        IDataHandlerImpl::getOrbel(scene, true)->addField(new DataValue(Text("title")), 0);
        plugin.setFieldData(Text("title"), Text("scene " + std::to_string(scene)));
    }
    EXPECT_STREQ(IDataHandlerImpl::getOrbel(5, false)->getFieldByIndex(0)->getData(0)->c_str(), "scene 5");
    EXPECT_STREQ(IDataHandlerImpl::getOrbel(6, false)->getFieldByIndex(0)->getData(0)->c_str(), "scene 6");
}

TEST_F(PlugInsPerScene, RegisterInTheCurrentScene) {
    plugin.init(-1);
    Orbel* five = IDataHandlerImpl::getOrbel(5, true);
    plugin.registerHandler("string:title", nullptr, 0);
    EXPECT_EQ(plugin.getField()->getParent(), five);
    Orbel* six = IDataHandlerImpl::getOrbel(6, true);
    plugin.setFieldData(Text("title"), Text("news"));
    EXPECT_EQ(diary.take(), "");
    EXPECT_EQ(plugin.getField()->getParent(), five);
    plugin.registerHandler("string:title", nullptr, 0);
    EXPECT_EQ(plugin.getField()->getParent(), six);
}

TEST_F(PlugInsPerScene, DoNothingWithoutATree) {
    Orbel root(Text("root"));
    const SubtreeCleanup belowRoot{root};
    plugin.init(-1);
    console.takeOutput();
    plugin.setFieldData(Text("title"), Text("news"));
    plugin.setFieldData(Text("title"), Text("news"), 0);
    plugin.registerHandler("title", nullptr, 0);
    EXPECT_EQ(plugin.getField(), nullptr);
    EXPECT_EQ(console.takeOutput(), cannotRetrieve + cannotRetrieve + cannotRetrieve);

    plugin.registerHandler("title", &root, 0);
    EXPECT_EQ(console.takeOutput(), cannotRetrieve);
    ASSERT_NE(plugin.getField(), nullptr);
    plugin.unregisterHandler();
    EXPECT_NE(plugin.getField(), nullptr);
    EXPECT_EQ(console.takeOutput(), cannotRetrieve);
}

TEST_F(PlugInsPerScene, GetAnyTree) {
    EXPECT_EQ(plugin.getOrbel2(-1), nullptr);
    void* tree = plugin.getOrbel2(8);
    EXPECT_EQ(tree, IDataHandlerImpl::getOrbel(8, false));
    EXPECT_EQ(plugin.getOrbel2(-1), nullptr);
    EXPECT_TRUE(plugin.needsInit());
}

TEST_F(PlugInInTree, RegistersInTheTreeOfItsScene) {
    plugin.registerHandler("title", nullptr, 0);
    EXPECT_EQ(plugin.getField(), title);
    EXPECT_EQ(title->getHandlerByID(0), plugin.getDataHandler());
    EXPECT_EQ(diary.take(), "");
    title->setData("news");
    EXPECT_EQ(diary.take(), "A title=news");
}

TEST_F(PlugInInTree, RegistersInAnotherTree) {
    Orbel root(Text("root"));
    const SubtreeCleanup belowRoot{root};
    auto* other = new DataValue(Text("title"));
    root.addField(other, 0);
    plugin.registerHandler("title", &root, 0);
    EXPECT_EQ(plugin.getField(), other);
}

TEST_F(PlugInInTree, HandsTheIndexToTheFieldItCreates) {
    plugin.registerHandler("new", nullptr, 7);
    EXPECT_EQ(plugin.getField()->getParent(), tree);
    EXPECT_EQ(plugin.getField()->getParentInstance(), 7);
}

TEST_F(PlugInInTree, RegistersInAnElement) {
    auto* points = new DataArray(Text("points"));
    tree->addField(points, 0);
    points->setSize(2);
    for (int index : {0, 1})
        points->getObject(index)->addField(new DataValue(Text("x")), 0);
    plugin.registerHandler("x", points, 1);
    EXPECT_EQ(plugin.getField(), points->getObject(1)->getFieldByIndex(0));
}

TEST_F(PlugInInTree, LeavesTheSizeOfAFieldInAnElement) {
    auto* points = new DataArray(Text("points"));
    tree->addField(points, 0);
    points->setSize(2);
    for (int index : {0, 1})
        points->getObject(index)->addField(new DataValue(Text("x")), 0);
    plugin.registerHandler("x[2-5]", points, 1);
    EXPECT_EQ(plugin.getOffset(), 2);
    for (int index : {0, 1})
        EXPECT_EQ(points->getObject(index)->getFieldByIndex(0)->getSize(), 1);
    tree->removeField(Text("points"), 0);
    deleteSubtree(*points);
    delete points;
}

TEST_F(PlugInInTree, TakesTheOffsetWithoutAField) {
    DataArray points(Text("points"));
    plugin.registerHandler("x[2-5]", &points, 1);
    EXPECT_EQ(plugin.getField(), nullptr);
    EXPECT_EQ(plugin.getOffset(), 2);
}

TEST_F(PlugInInTree, CreatesAFieldNamedByTheWholePath) {
    plugin.registerHandler("scene/caption", nullptr, 0);
    ASSERT_NE(plugin.getField(), nullptr);
    EXPECT_STREQ(plugin.getField()->getName(), "scene/caption");
    EXPECT_EQ(plugin.getField()->getParent(), tree);
    plugin.setFieldData(Text("scene/caption"), Text("news"));
    EXPECT_EQ(diary.take(), "");
    EXPECT_EQ(*plugin.getField()->getData(0), " ");
}

TEST_F(PlugInInTree, CreatesNodesAndFieldsByKind) {
    plugin.registerHandler("node:scene/string:caption[3]", nullptr, 0);
    ASSERT_NE(plugin.getField(), nullptr);
    EXPECT_EQ(plugin.getField(), at("scene/caption"));
    EXPECT_EQ(plugin.getField()->getSize(), 3);
    plugin.unregisterHandler();
    EXPECT_NE(at("scene/caption"), nullptr);
}

TEST_F(PlugInInTree, TakesItsFieldAlongToAPathWithoutOne) {
    title->setData("news");
    plugin.registerHandler("title", nullptr, 0);
    plugin.registerHandler("headline", nullptr, 0);
    EXPECT_EQ(plugin.getField(), title);
    EXPECT_EQ(at("headline"), title);
    EXPECT_EQ(at("title"), nullptr);
    EXPECT_EQ(diary.take(), "A title=news, A headline=news");
}

TEST_F(PlugInInTree, TakesAnUnobservedFieldOutWhenItRegistersElsewhere) {
    const std::unique_ptr<DataField> left(title);
    plugin.registerHandler("title", nullptr, 0);
    plugin.registerHandler("list", nullptr, 0);
    EXPECT_EQ(plugin.getField(), list);
    EXPECT_EQ(at("title"), nullptr);
}

TEST_F(PlugInInTree, CreatesTheFieldOfItsType) {
    class StructurePlugin : public PlainPlugin {
        DataType* getFieldType() override { return DataStructure::getClassType(); }
    };
    StructurePlugin other;
    other.init(0);
    other.registerHandler("group", nullptr, 0);
    ASSERT_NE(other.getField(), nullptr);
    EXPECT_STREQ(other.getField()->getTypeName(), "DataStructure");
    EXPECT_EQ(at("group"), other.getField());
}

TEST_F(PlugInInTree, IgnoresTextsWithoutAPath) {
    for (const char* path : {"", " \t\r\n", "[4]", "  [2-5]"})
        plugin.registerHandler(path, nullptr, 0);
    plugin.registerHandler(nullptr, nullptr, 0);
    EXPECT_EQ(plugin.getField(), nullptr);
    EXPECT_EQ(tree->getNumFields(), 2);
}

TEST_F(PlugInInTree, ReadsTheRange) {
    const struct {
        const char* text;
        const char* name;
        int offset;
        int size;
    } cases[] = {
        {"a", "a", 0, 1},           {"b[4]", "b", 0, 4},       {"c[2-5]", "c", 2, 5},   {"d[]", "d", 0, 1},
        {"e[4-4]", "e", 0, 4},      {"f[4-]", "f", 0, 4},      {"g[-4]", "g", 0, 1},    {"h[x]", "h", 0, 1},
        {"i[4th]", "i", 0, 4},      {"j[ 3 - 6 ]", "j", 3, 6}, {"k[2-5,9]", "k", 2, 5}, {"l[3", "l", 0, 3},
        {"m[3]9]/more", "m", 0, 3}, {" \t\r\nn", "n", 0, 1},   {"o \t[2]", "o", 0, 2},  {"p[0-3]", "p", 0, 3},
        {"q[5-2]", "q", 5, 2},      {"r[x-5]", "r", 0, 1},     {"s[4-x]", "s", 0, 4},   {"t[,7]", "t", 0, 1},
        {"u[3][4]", "u", 0, 3},     {"v w \t", "v w", 0, 1},
    };
    for (const auto& [text, name, offset, size] : cases) {
        RecordingPlugin other(diary, "B");
        other.init(0);
        other.registerHandler(text, nullptr, 0);
        ASSERT_NE(other.getField(), nullptr) << text;
        EXPECT_STREQ(other.getField()->getName(), name) << text;
        EXPECT_EQ(other.getOffset(), offset) << text;
        EXPECT_EQ(other.getField()->getSize(), size) << text;
    }
}

TEST_F(PlugInInTree, KeepsALineEndBehindThePath) {
    for (const std::string name : {"a\n", "b \r\n", "c\t\n"}) {
        RecordingPlugin other(diary, "B");
        other.init(0);
        other.registerHandler((" \n" + name + " \t[3]").c_str(), nullptr, 0);
        ASSERT_NE(other.getField(), nullptr);
        EXPECT_EQ(other.getField()->getName(), name);
        EXPECT_EQ(other.getField()->getSize(), 3);
    }
}

TEST_F(PlugInInTree, FindsTheRangeBehindQuotes) {
    plugin.registerHandler("\"\"a[1]\"\"[2-5]", nullptr, 0);
    ASSERT_NE(plugin.getField(), nullptr);
    EXPECT_STREQ(plugin.getField()->getName(), "\"\"a[1]\"\"");
    EXPECT_EQ(plugin.getOffset(), 2);
}

TEST_F(PlugInInTree, DoesNotEndQuotesAtThreeOfThem) {
    plugin.registerHandler("\"\"a[1]\"\"\"[2]\"\" [3-7]", nullptr, 0);
    ASSERT_NE(plugin.getField(), nullptr);
    EXPECT_EQ(plugin.getOffset(), 0);
    EXPECT_STREQ(plugin.getField()->getName(), "\"\"a[1]\"\"\"");
}

TEST_F(PlugInInTree, FindsNoRangeInQuotesWithoutAnEnd) {
    plugin.registerHandler("\"\"a[3-7]", nullptr, 0);
    ASSERT_NE(plugin.getField(), nullptr);
    EXPECT_STREQ(plugin.getField()->getName(), "\"\"a[3-7]");
    EXPECT_EQ(plugin.getOffset(), 0);
}

TEST_F(PlugInInTree, CutsThePath) {
    plugin.registerHandler(std::string(120, 'p').c_str(), nullptr, 0);
    ASSERT_NE(plugin.getField(), nullptr);
    EXPECT_EQ(plugin.getField()->getName(), std::string(99, 'p'));
    plugin.registerHandler(('\t' + std::string(96, 'q') + "[2-5]").c_str(), nullptr, 0);
    EXPECT_EQ(plugin.getField()->getName(), std::string(96, 'q'));
    EXPECT_EQ(plugin.getOffset(), 0);
    EXPECT_EQ(plugin.getField()->getSize(), 2);
}

TEST_F(PlugInInTree, NeverShrinksTheField) {
    plugin.registerHandler("list[5]", nullptr, 0);
    EXPECT_EQ(list->getSize(), 5);
    plugin.registerHandler("list[3]", nullptr, 0);
    plugin.registerHandler("list", nullptr, 0);
    EXPECT_EQ(list->getSize(), 5);
    plugin.registerHandler("list[99999999]", nullptr, 0);
    EXPECT_EQ(list->getSize(), 5);
}

TEST_F(PlugInInTree, ForgetsTheOffsetOfTheLastRange) {
    plugin.registerHandler("list[2-5]", nullptr, 0);
    EXPECT_EQ(plugin.getOffset(), 2);
    plugin.registerHandler("list", nullptr, 0);
    EXPECT_EQ(plugin.getOffset(), 0);
}

TEST_F(PlugInInTree, MovesToAField) {
    plugin.registerHandler(title);
    plugin.registerHandler(list);
    EXPECT_EQ(plugin.getField(), list);
    EXPECT_EQ(title->getNumHandlers(), 0);
    EXPECT_EQ(at("title"), title);
    plugin.registerHandler(static_cast<DataField*>(nullptr));
    EXPECT_EQ(plugin.getField(), list);
}

TEST_F(PlugInInTree, HearsAgainWhenItMovesToTheSameField) {
    title->setData("news");
    plugin.registerHandler(title);
    EXPECT_EQ(diary.take(), "A title=news");
    plugin.registerHandler(title);
    EXPECT_EQ(diary.take(), "A title=news");
    EXPECT_EQ(title->getNumHandlers(), 1);
}

TEST_F(PlugInInTree, TakesAnUnobservedFieldAlongWhenItUnregisters) {
    plugin.registerHandler("title", nullptr, 0);
    plugin.unregisterHandler();
    EXPECT_EQ(plugin.getField(), nullptr);
    EXPECT_EQ(at("title"), nullptr);
    plugin.unregisterHandler();
    EXPECT_EQ(tree->getNumFields(), 1);
}

TEST_F(PlugInInTree, TakesItsFieldOutOfAnotherTreeToo) {
    Orbel root(Text("root"));
    const SubtreeCleanup belowRoot{root};
    root.addField(new DataValue(Text("title")), 0);
    plugin.registerHandler("title", &root, 0);
    plugin.unregisterHandler();
    EXPECT_EQ(plugin.getField(), nullptr);
    EXPECT_EQ(root.getNumFields(), 0);
    EXPECT_EQ(at("title"), title);
}

TEST_F(PlugInInTree, LeavesAFieldThatAKindCreatedWhenItUnregisters) {
    plugin.registerHandler("string:caption", nullptr, 0);
    plugin.unregisterHandler();
    EXPECT_EQ(plugin.getField(), nullptr);
    EXPECT_NE(at("caption"), nullptr);
}

TEST_F(PlugInInTree, LeavesAnObservedFieldWhenItUnregisters) {
    RecordingHandler other(diary, "B");
    title->registerHandler(&other);
    plugin.registerHandler("title", nullptr, 0);
    plugin.unregisterHandler();
    EXPECT_EQ(plugin.getField(), nullptr);
    EXPECT_EQ(at("title"), title);
    title->setData("news");
    EXPECT_EQ(diary.take(), "B changed");
}

TEST_F(PlugInInTree, LeavesItsFieldWhenItIsDestroyed) {
    {
        RecordingPlugin other(diary, "B");
        other.init(0);
        other.registerHandler("title", nullptr, 0);
        EXPECT_EQ(title->getNumHandlers(), 1);
    }
    EXPECT_EQ(title->getNumHandlers(), 0);
    EXPECT_EQ(at("title"), title);
    title->setData("news");
    EXPECT_EQ(diary.take(), "");
}

TEST_F(PlugInInTree, IsOnNoFieldWhenTheFieldIsDestroyed) {
    plugin.registerHandler(title);
    tree->removeField(Text("title"), 0);
    delete title;
    EXPECT_EQ(plugin.getField(), nullptr);
    plugin.refresh();
    plugin.unregisterHandler();
    EXPECT_EQ(diary.take(), "");
}

TEST_F(PlugInInTree, StoresInTheTree) {
    plugin.setFieldData(Text("title"), Text("news"));
    plugin.setFieldData(Text("list"), Text("second"), 1);
    EXPECT_EQ(*title->getData(0), "news");
    EXPECT_EQ(*list->getData(1), "second");
    plugin.setFieldData(Text("nowhere"), Text("news"));
    plugin.setFieldData(nullptr, nullptr);
    plugin.setFieldData(nullptr, nullptr, 0);
    plugin.setFieldData(Text("title"), nullptr);
    EXPECT_EQ(*title->getData(0), "");
    EXPECT_EQ(tree->getNumFields(), 2);
}

TEST_F(PlugInInTree, HearsEverySetOfTheSameValue) {
    plugin.registerHandler("title", nullptr, 0);
    title->setData("news");
    title->setData("news");
    EXPECT_EQ(diary.take(), "A title=news, A title=news");
}

TEST_F(PlugInInTree, HearsOnlyRealChangesWhenItAsksForThem) {
    plugin.setNotifyOnValueChange(1);
    plugin.registerHandler("title", nullptr, 0);
    title->setData("news");
    title->setData("news");
    EXPECT_EQ(diary.take(), "A title=news");
    title->setData("late news");
    EXPECT_EQ(diary.take(), "A title=late news");
}

TEST_F(PlugInInTree, HearsTheFirstNoticeAlthoughItIsNoChange) {
    title->setData("news");
    plugin.setNotifyOnValueChange(1);
    plugin.registerHandler("title", nullptr, 0);
    EXPECT_EQ(diary.take(), "A title=news");
    title->setData("news");
    EXPECT_EQ(diary.take(), "");
}

TEST_F(PlugInInTree, HearsNothingOfAnotherThatJoinsWhenItAsksForChanges) {
    title->setData("news");
    plugin.setNotifyOnValueChange(1);
    plugin.registerHandler("title", nullptr, 0);
    RecordingPlugin other(diary, "B");
    other.init(0);
    diary.take();
    other.registerHandler("title", nullptr, 0);
    EXPECT_EQ(diary.take(), "B title=news");
}

TEST_F(PlugInInTree, HasHadItsFirstNoticeOnAnotherField) {
    title->setData("news");
    list->setData("one", 0);
    plugin.setNotifyOnValueChange(1);
    plugin.registerHandler(title);
    EXPECT_EQ(diary.take(), "A title=news");
    plugin.registerHandler(list);
    EXPECT_EQ(diary.take(), "");
}

TEST_F(PlugInInTree, HearsRanges) {
    plugin.registerHandler("list", nullptr, 0);
    list->setData(TextList({"one", "two"}), 0, -1);
    EXPECT_EQ(diary.take(), "A list=one|two 0-1");
    EXPECT_EQ(plugin.lastList(), list->getDataVector());
    list->setData("last", 1);
    EXPECT_EQ(diary.take(), "A list=one|last 1-1");
}

TEST_F(PlugInInTree, HearsTheFirstOfSeveralValuesWhenOneIsSetWithoutAnIndex) {
    plugin.registerHandler("list", nullptr, 0);
    plugin.setFieldData(Text("list"), Text("one"));
    EXPECT_EQ(diary.take(), "A list=one");
    plugin.setFieldData(Text("list"), Text("two"), 1);
    EXPECT_EQ(diary.take(), "A list=one|two 1-1");
}

TEST_F(PlugInInTree, HearsOfOneValueWithoutARange) {
    plugin.registerHandler("title", nullptr, 0);
    plugin.setFieldData(Text("title"), Text("news"), 0);
    title->setData(TextList({"late news"}), 0, -1);
    EXPECT_EQ(diary.take(), "A title=news, A title=late news");
}

TEST_F(PlugInInTree, HearsOfARangeBehindTheLastValue) {
    plugin.registerHandler("list", nullptr, 0);
    list->copyData(title, 0, 5, 1);
    EXPECT_EQ(diary.take(), "A list= | 5-5");
}

TEST_F(PlugInInTree, HearsTheWholeListWhenItJoins) {
    list->setData("last", 1);
    plugin.registerHandler("list", nullptr, 0);
    EXPECT_EQ(diary.take(), "A list= |last 0-1");
}

TEST_F(PlugInInTree, HearsEachValueThatIsCleared) {
    list->setData(TextList({"one", "two"}), 0, -1);
    plugin.registerHandler("list", nullptr, 0);
    diary.take();
    list->clearData();
    EXPECT_EQ(diary.take(), "A list=|two 0-0, A list=| 1-1");
}

TEST_F(PlugInInTree, HearsNothingOfTheFieldsBelowItsOwn) {
    plugin.registerHandler("node:scene", nullptr, 0);
    tree->getField(Text("scene/string:caption"), 0, 0);
    tree->setFieldData(Text("scene/caption"), Text("news"));
    plugin.refresh();
    EXPECT_EQ(diary.take(), "");
}

TEST_F(PlugInInTree, HearsOfTheTypeOfAnObjectAndOfAnArray) {
    DataObject::init();
    DataObject::s_tTypes->parse(Text("Point = {string x=0;};"));
    auto* point = new DataObject(Text("point"));
    auto* points = new DataArray(Text("points"));
    tree->addField(point, 0);
    tree->addField(points, 0);
    plugin.registerHandler(point);
    point->setObjectType(DataObject::getObjectTypeByName(Text("Point")));
    EXPECT_EQ(diary.take(), "A point:Point");
    plugin.registerHandler(points);
    points->setObjectType(DataObject::getObjectTypeByName(Text("Point")));
    EXPECT_EQ(diary.take(), "A points:Point");
}

TEST_F(PlugInInTree, HasHadItsFirstNoticeAsARange) {
    list->setData("one", 0);
    title->setData("news");
    plugin.setNotifyOnValueChange(1);
    plugin.registerHandler(list);
    EXPECT_EQ(diary.take(), "A list=one| 0-1");
    plugin.registerHandler(title);
    EXPECT_EQ(diary.take(), "");
}

TEST_F(PlugInInTree, GetsTheTextOfTheFieldItself) {
    plugin.registerHandler("title", nullptr, 0);
    title->setData("news");
    EXPECT_EQ(plugin.lastValue(), title->getData(0)->data());
    plugin.setUseConvTable(1);
    title->setData("late news");
    EXPECT_NE(plugin.lastValue(), title->getData(0)->data());
}

TEST_F(PlugInInTree, HearsOnlyRealChangesOfRanges) {
    plugin.setNotifyOnValueChange(1);
    plugin.registerHandler("list", nullptr, 0);
    list->setData("last", 1);
    list->setData("last", 1);
    EXPECT_EQ(diary.take(), "A list= |last 1-1");
    list->setData("first", 0);
    EXPECT_EQ(diary.take(), "A list=first|last 0-0");
}

TEST_F(PlugInInTree, HearsNothingOfFieldsWithoutValues) {
    DataField bare(Text("bare"));
    bare.setDataInitialized(1);
    plugin.registerHandler(&bare);
    bare.fireHandlers(true);
    bare.fireHandlers(true, 0, 0);
    EXPECT_EQ(diary.take(), "");
    title->setData("news");
    plugin.setNotifyOnValueChange(1);
    plugin.registerHandler(title);
    EXPECT_EQ(diary.take(), "A title=news");
}

TEST_F(PlugInInTree, HearsOfTypes) {
    plugin.registerHandler("title", nullptr, 0);
    title->fireOnTypeChange(Text("City"));
    EXPECT_EQ(diary.take(), "A title:City");
}

TEST_F(PlugInInTree, IsDumpedByItsField) {
    plugin.registerHandler("title", nullptr, 0);
    title->dumpHandlers();
    EXPECT_EQ(diary.take(), "A dump");
    EXPECT_EQ(console.takeOutput(), "");
}

TEST_F(PlugInInTree, RefreshesEveryHandlerOfItsField) {
    RecordingHandler other(diary, "B");
    title->setData("news");
    title->registerHandler(&other);
    plugin.setNotifyOnValueChange(1);
    plugin.registerHandler(title);
    diary.take();
    plugin.refresh();
    EXPECT_EQ(diary.take(), "B changed, A title=news");
}

TEST_F(PlugInInTree, RefreshesAllValues) {
    plugin.registerHandler("list", nullptr, 0);
    list->setData("last", 1);
    diary.take();
    plugin.refresh();
    EXPECT_EQ(diary.take(), "A list= |last 0-1");
}

TEST_F(PlugInInTree, RefreshesNothingThatWasNeverSet) {
    plugin.refresh();
    plugin.registerHandler("title", nullptr, 0);
    plugin.refresh();
    EXPECT_EQ(diary.take(), "");
}

TEST_F(PlugInInTree, RefreshMakesANewFlagTakeEffect) {
    plugin.registerHandler("title", nullptr, 0);
    title->setData("news");
    plugin.setNotifyOnValueChange(1);
    title->setData("news");
    EXPECT_EQ(title->getCountNotifyOnValueChange(), 0);
    EXPECT_EQ(diary.take(), "A title=news, A title=news");
    plugin.refresh();
    EXPECT_EQ(title->getCountNotifyOnValueChange(), 1);
    EXPECT_EQ(diary.take(), "A title=news");
    title->setData("news");
    EXPECT_EQ(diary.take(), "");
}

TEST_F(ConversionInPlugIns, TurnsAValueIntoItsEntry) {
    plugin.registerHandler("title", nullptr, 0);
    for (const char* value : {"01", " 02\t", "03"})
        title->setData(value);
    EXPECT_EQ(diary.take(), "A title=sun.png, A title=cloud.png, A title=unknown.png");
    EXPECT_EQ(*title->getData(0), "03");
}

TEST_F(ConversionInPlugIns, TurnsAListIntoANewOne) {
    plugin.registerHandler("list", nullptr, 0);
    list->setData(TextList({"02", "01"}), 0, -1);
    EXPECT_EQ(diary.take(), "A list=cloud.png|sun.png 0-1");
    EXPECT_EQ(allTexts(*list), "02|01");
    EXPECT_NE(plugin.lastList(), list->getDataVector());
}

TEST_F(ConversionInPlugIns, IsPossibleForEachHandlerOnItsOwn) {
    plugin.registerHandler("title", nullptr, 0);
    plugin.setUseConvTable(0);
    title->setData("01");
    EXPECT_EQ(diary.take(), "A title=01");
}

TEST_F(ConversionInPlugIns, GivesEmptyTextsForUnknownTables) {
    plugin.setConvTableNmae(Text("Sea"));
    plugin.registerHandler("title", nullptr, 0);
    title->setData("01");
    EXPECT_EQ(diary.take(), "A title=");
}

TEST_F(ConversionInPlugIns, UsesTheTablesOfTheLastRefresh) {
    plugin.registerHandler("title", nullptr, 0);
    folder.write("QX_ConvTables.csv", "__TABLE__,Sky\n01,sunshine.png\n");
    title->setData("01");
    EXPECT_EQ(diary.take(), "A title=sun.png");
    IDataHandlerImpl::RefreshConvTables();
    plugin.refresh();
    EXPECT_EQ(diary.take(), "A title=sunshine.png");
}

TEST_F(PlugInInTree, ConvertsToEmptyTextsWithoutTables) {
    plugin.setUseConvTable(1);
    plugin.registerHandler("title", nullptr, 0);
    title->setData("01");
    EXPECT_EQ(diary.take(), "A title=");
}
