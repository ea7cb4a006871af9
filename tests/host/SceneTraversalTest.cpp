#include <support/HostScene.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

/// What the host calls on a whole scene.

namespace {

class SceneTraversal : public HostScene {
protected:
    /// A geometry with a plug-in, which is named after its container.
    template <class Plugin>
    Plugin& putGeometry(int container, const std::string& type, const std::string& field) {
        Plugin& plugin = make<Plugin>(container, field, host.nameOf(container));
        host.addGeometry(container, type, &recordOf(plugin));
        return plugin;
    }

    std::vector<std::string> takeLog() { return std::exchange(host.log, {}); }

    std::string number(int id) { return std::to_string(id); }

    /// What a leaf hears that has been attached, or has not: it is no structure.
    static std::string inits(const std::string& name) { return name + " function init, " + name + " init"; }
};

using Log = std::vector<std::string>;

} // namespace

TEST_F(SceneTraversal, AttachesLeavesBelowTheStructureAboveThem) {
    tree()->getField(Text("node:board/string:title"), 0, 1);
    put<Structure>(root, "DataStructure", "board");
    Leaf& title = putLeaf(add("title", root), "title");
    initOrbel();
    EXPECT_EQ(pathOf(title), "board/title");
    EXPECT_EQ(heard.take(), inits("title"));
    // Attached from outside: no plug-in was asked to register itself.
    EXPECT_EQ(done.take(), "");
}

TEST_F(SceneTraversal, AttachesToTheTreeWithoutAStructureAbove) {
    Leaf& title = putLeaf(add("title", root), "title");
    initOrbel();
    EXPECT_EQ(pathOf(title), "title");
    EXPECT_EQ(title.getParent(), nullptr);
    EXPECT_STREQ(title.getFieldName(), "title");
}

TEST_F(SceneTraversal, NodesHearNoCallbacks) {
    putStructure(root, "board");
    initOrbel();
    EXPECT_EQ(heard.take(), "");
}

TEST_F(SceneTraversal, HandlersWithoutAFieldHearTheCallbacks) {
    Leaf& title = putLeaf(root, "");
    initOrbel();
    EXPECT_EQ(title.getField(), nullptr);
    EXPECT_EQ(heard.take(), inits("root"));
}

TEST_F(SceneTraversal, PlugInsBesideAStructureAreNotBelowIt) {
    Structure& board = putStructure(root, "board");
    Leaf& beside = putNamed<Leaf>(root, "Text", "text", "beside");
    initOrbel();
    EXPECT_EQ(pathOf(board), "board");
    EXPECT_EQ(pathOf(beside), "text");
}

TEST_F(SceneTraversal, TheLastNodeOfAContainerIsTheParentBelow) {
    putStructure(root, "first");
    putNamed<Structure>(root, "DataObject", "last", "last");
    putNamed<Leaf>(root, "Text", "text", "beside");
    Leaf& title = putLeaf(add("title", root), "title");
    initOrbel();
    EXPECT_EQ(pathOf(title), "last/title");
}

TEST_F(SceneTraversal, StructuresNest) {
    putStructure(root, "board");
    const int middle = add("middle", root);
    const int inner = add("inner", middle);
    putStructure(inner, "box");
    Leaf& title = putLeaf(add("title", inner), "text");
    Leaf& after = putLeaf(add("after", middle), "late");
    initOrbel();
    EXPECT_EQ(pathOf(title), "board/box/text");
    EXPECT_EQ(pathOf(after), "board/late");
}

TEST_F(SceneTraversal, AnyHandlerOnANodeIsAParent) {
    tree()->getField(Text("node:board"), 0, 1);
    putLeaf(root, "board");
    Leaf& title = putLeaf(add("title", root), "text");
    initOrbel();
    EXPECT_EQ(pathOf(title), "board/text");
}

TEST_F(SceneTraversal, IndexIsThePositionAmongTheSiblings) {
    addArray("points", "Point", 3);
    putArray(root, "points[3]");
    add("empty", root);
    Leaf& second = putLeaf(add("second", root), "x");
    Leaf& third = putLeaf(add("third", root), "x");
    initOrbel();
    EXPECT_EQ(pathOf(second), "points[1]/x");
    EXPECT_EQ(pathOf(third), "points[2]/x");
}

TEST_F(SceneTraversal, OffsetsCountForRegisteringOnly) {
    addArray("points", "Point", 3);
    putArray(root, "points[1-3]");
    Leaf& first = putLeaf(add("first", root), "x");
    initOrbel();
    EXPECT_EQ(pathOf(first), "points[0]/x");
}

TEST_F(SceneTraversal, GoesOnWithTheSiblingsOfTheRoot) {
    host.containers.clear();
    TestHost::reset();
    host.localScene = host.addScene("Show");
    Leaf& early = putLeaf(add("early", -1), "early");
    root = add("root", -1);
    Leaf& own = putLeaf(root, "own");
    Leaf& late = putLeaf(add("late", -1), "late");
    host.scenes[host.localScene].root = host.localContainer = root;
    initOrbel();
    EXPECT_EQ(pathOf(early), "");
    EXPECT_EQ(pathOf(own), "own");
    EXPECT_EQ(pathOf(late), "late");
}

TEST_F(SceneTraversal, StructuresAreNoParentsOfTheirSiblings) {
    putStructure(root, "board");
    Leaf& beside = putLeaf(add("beside", -1), "text");
    initOrbel();
    EXPECT_EQ(pathOf(beside), "text");
}

TEST_F(SceneTraversal, WithoutARootStartsAtTheTopOfTheLocalContainer) {
    host.scenes[host.localScene].root = -1;
    Leaf& title = putLeaf(root, "title");
    const int deep = add("deep", add("middle", root));
    Leaf& last = putLeaf(deep, "last");
    Leaf& beside = putLeaf(add("beside", -1), "beside");
    host.localContainer = deep;
    initOrbel();
    EXPECT_EQ(pathOf(title), "title");
    EXPECT_EQ(pathOf(last), "last");
    EXPECT_EQ(pathOf(beside), "beside");
}

TEST_F(SceneTraversal, AnInvalidRootIsNoRoot) {
    host.scenes[host.localScene].root = 12345;
    Leaf& title = putLeaf(root, "title");
    initOrbel();
    EXPECT_EQ(pathOf(title), "title");
}

TEST_F(SceneTraversal, WithoutAnyContainerNothingHappens) {
    host.scenes[host.localScene].root = -1;
    host.localContainer = -1;
    Leaf& title = putLeaf(root, "title");
    initOrbel();
    initContainer();
    resetAllTypedObjects();
    EXPECT_EQ(title.getField(), nullptr);
    EXPECT_EQ(takeLog(), Log{});
}

TEST_F(SceneTraversal, NamesWithAnAsteriskAreLeftAlone) {
    tree()->getField(Text("string:title"), 0, 1);
    Leaf& title = putLeaf(root, "*title");
    initOrbel();
    EXPECT_EQ(title.getField(), nullptr);
    title.Register("*title", 0);
    initOrbel();
    EXPECT_EQ(pathOf(title), "title");
    EXPECT_EQ(heard.take(), inits("root") + ", " + inits("root"));
}

TEST_F(SceneTraversal, NamesWithASlashAreRegisteredOnTheTree) {
    putStructure(root, "board");
    Leaf& title = putLeaf(add("title", root), "/text");
    Leaf& nothing = putLeaf(add("nothing", root), "/");
    initOrbel();
    EXPECT_EQ(pathOf(title), "text");
    EXPECT_EQ(nothing.getField(), nullptr);
}

TEST_F(SceneTraversal, ReplacesMacros) {
    const int first = add("first", root);
    const std::vector<std::pair<const char*, std::string>> values{
        {"$(CONTAINER)", "KorId_" + number(first)},
        {"$(CONTNAME)", "first"},
        {"$(SCENE)", "Weather"},
        {"$(SCENE_ID)", '#' + number(host.localScene)},
        {"$(SCENE)x", "Weatherx"},
        {"$(SCENE_ID)x", '#' + number(host.localScene) + 'x'},
        {"$(SCENE)$(SCENE)", "Weather$(SCENE)"},
        {"$(CONTNAME)x", "$(CONTNAME)x"},
        {"x$(SCENE)", "x$(SCENE)"},
        {"$(scene)", "$(scene)"},
    };
    for (const auto& [name, value] : values) {
        Leaf& leaf = putLeaf(first, name);
        initOrbel();
        EXPECT_STREQ(leaf.getField() ? leaf.getField()->getName() : "", value.c_str()) << name;
        EXPECT_STREQ(leaf.getFieldName(), name);
        host.containers.at(first).plugins.clear();
    }
}

TEST_F(SceneTraversal, ReplacesTheFullNameOfTheScene) {
    tree()->getField(Text("node:Show"), 0, 1);
    Leaf& leaf = putLeaf(root, "$(SCENE_FULL_NAME)");
    initOrbel();
    EXPECT_EQ(pathOf(leaf), "Show/Weather");
}

TEST_F(SceneTraversal, TheRemainderOfAMacroMayBeAPath) {
    tree()->getField(Text("node:Weather/string:title"), 0, 1);
    Leaf& leaf = putLeaf(root, "$(SCENE)/title[4]");
    initOrbel();
    EXPECT_EQ(pathOf(leaf), "Weather/title");
    EXPECT_EQ(leaf.getField()->getSize(), 4);
}

TEST_F(SceneTraversal, GeometriesOfTheHostAreNeverAsked) {
    for (const char* type : {"TEXT", "IMAGE", "REFERENCE", "POLYGON"}) {
        Leaf& leaf = putGeometry<Leaf>(add(type, root), type, type);
        initOrbel();
        EXPECT_EQ(takeLog(), Log{}) << type;
        EXPECT_EQ(leaf.getField(), nullptr);
    }
}

TEST_F(SceneTraversal, OtherGeometriesAreAttached) {
    for (const std::string type : {"text", "TEXT2", "CHART", ""}) {
        Leaf& leaf = putGeometry<Leaf>(add("chart" + type, root), type, "chart" + type);
        takeLog();
        initOrbel();
        EXPECT_EQ(pathOf(leaf), "chart" + type);
        EXPECT_EQ(takeLog().back(),
                  "data of geometry " + number(host.containers.at(leaf.getLocalContainer().id).geometry));
        heard.take();
    }
}

TEST_F(SceneTraversal, GeometriesComeBeforePlugInsAndAreNoParentsOfThem) {
    Structure& board = putGeometry<Structure>(root, "CHART", "board");
    Leaf& beside = putNamed<Leaf>(root, "Text", "text", "beside");
    Leaf& title = putLeaf(add("title", root), "late");
    initOrbel();
    EXPECT_EQ(pathOf(board), "board");
    EXPECT_EQ(pathOf(beside), "text");
    EXPECT_EQ(pathOf(title), "board/late");
    EXPECT_EQ(heard.take(), inits("beside") + ", " + inits("title"));
}

TEST_F(SceneTraversal, GeometriesHearTheCallbacksToo) {
    putGeometry<Leaf>(root, "CHART", "chart");
    initOrbel();
    EXPECT_EQ(heard.take(), inits("root"));
}

TEST_F(SceneTraversal, GeometriesThatFindNoFieldAreAttachedToTheirOwnTree) {
    // An element that is not there.
    addArray("points", "Point", 1);
    putArray(root, "points[1]");
    add("first", root);
    Leaf& chart = putGeometry<Leaf>(add("chart", root), "CHART", "height");
    Leaf& plugin = putLeaf(add("plugin", root), "width");
    initOrbel();
    EXPECT_EQ(pathOf(chart), "height");
    EXPECT_EQ(plugin.getField(), nullptr);
    EXPECT_EQ(heard.take(), inits("chart") + ", " + inits("plugin"));
}

TEST_F(SceneTraversal, GeometriesWithoutAnOwnRecordAreSkipped) {
    const int chart = add("chart", root);
    host.addGeometry(chart, "CHART");
    Leaf& foreign = putGeometry<Leaf>(add("foreign", root), "CHART", "height");
    recordOf(foreign).marker = 1;
    Leaf& unbuilt = putGeometry<Leaf>(add("unbuilt", root), "CHART", "height");
    recordOf(unbuilt).handler = nullptr;
    Leaf& gone = putGeometry<Leaf>(add("gone", root), "CHART", "height");
    host.geometries.erase(host.containers.at(gone.getLocalContainer().id).geometry);
    initOrbel();
    EXPECT_EQ(heard.take(), "");
    EXPECT_EQ(console.takeOutput(), "");
    EXPECT_EQ(takeLog().size(), 3U);
}

TEST_F(SceneTraversal, AsksForAHandlerThatIsNotBuilt) {
    const int container = add("title", root);
    Leaf& title = make<Leaf>(container, "text", "title");
    korPluginRecord& record = recordOf(title);
    record = {};
    const int plugin = host.addPlugin(container, "Text", &record, [&] { record.handler = &title; });
    record.container = -1;
    initOrbel();
    EXPECT_EQ(pathOf(title), "text");
    EXPECT_EQ(record.container.id, container);
    EXPECT_EQ(record.sceneId, host.localScene);
    EXPECT_EQ(takeLog(), (Log{"data of plug-in " + number(plugin), "build of plug-in " + number(plugin),
                              "data of plug-in " + number(plugin)}));
    EXPECT_EQ(heard.take(), inits("title"));
    EXPECT_EQ(console.takeOutput(), "");
}

TEST_F(SceneTraversal, BuiltHandlersAreAskedOnce) {
    Leaf& title = putLeaf(root, "text");
    recordOf(title).container = 77;
    recordOf(title).sceneId = 78;
    initOrbel();
    EXPECT_EQ(takeLog(), Log{"data of plug-in " + number(host.pluginOn(root, "Text"))});
    EXPECT_EQ(recordOf(title).container.id, 77);
    EXPECT_EQ(recordOf(title).sceneId, 78);
}

TEST_F(SceneTraversal, PlugInsThatBuildNothingAreSkipped) {
    korPluginRecord record;
    host.addPlugin(root, "Text", &record);
    Leaf& next = putNamed<Leaf>(root, "Text", "text", "next");
    record.container = -1;
    initOrbel();
    EXPECT_EQ(record.container.id, root);
    EXPECT_EQ(record.sceneId, host.localScene);
    EXPECT_EQ(pathOf(next), "text");
    EXPECT_EQ(console.takeOutput(), "");
}

TEST_F(SceneTraversal, TellsOfPlugInsWithoutARecord) {
    const int container = add("title", root);
    const int plugin = host.addPlugin(container, "Text");
    console.takeOutput();
    initOrbel();
    EXPECT_EQ(console.takeOutput(), "Orbel Init Traversal: Container title Function: Text\n"
                                    "returned data=0 and data->handler=0\n");
    EXPECT_EQ(takeLog(), Log{"data of plug-in " + number(plugin)});
}

TEST_F(SceneTraversal, TellsOfPlugInsThatLoseTheirRecord) {
    korPluginRecord record;
    const int plugin = host.addPlugin(root, "Text", &record, [&] { host.plugins.begin()->second.record = nullptr; });
    tree();
    console.takeOutput();
    initOrbel();
    EXPECT_EQ(host.plugins.begin()->first, plugin);
    EXPECT_EQ(console.takeOutput(), "Orbel Init Traversal: Container root Function: Text\n"
                                    "returned data=0 and data->handler=0\n");
}

TEST_F(SceneTraversal, ForeignRecordsAreLeftAlone) {
    Leaf& foreign = putLeaf(root, "text");
    korPluginRecord& record = recordOf(foreign);
    record.marker = 9472;
    record.handler = nullptr;
    record.sceneId = 78;
    initOrbel();
    EXPECT_EQ(takeLog(), Log{"data of plug-in " + number(host.pluginOn(root, "Text"))});
    EXPECT_EQ(record.sceneId, 78);
    EXPECT_EQ(console.takeOutput(), "");
    EXPECT_EQ(heard.take(), "");
}

TEST_F(SceneTraversal, TwentyPlugInsOfAContainerCount) {
    for (int index = 0; index < 21; ++index)
        putNamed<Leaf>(root, "Text", "text", number(index));
    initOrbel();
    EXPECT_EQ(takeLog().size(), 20U);
    EXPECT_EQ(at("text")->getNumHandlers(), 20);
}

TEST_F(SceneTraversal, AttachesAgain) {
    putStructure(root, "board");
    Leaf& title = putLeaf(add("title", root), "text");
    initOrbel();
    DataField* const field = title.getField();
    initOrbel();
    EXPECT_EQ(title.getField(), field);
    EXPECT_EQ(heard.take(), inits("title") + ", " + inits("title"));
}

TEST_F(SceneTraversal, FieldsTellTheirValueBeforeTheCallbacks) {
    tree()->getField(Text("string:text"), 0, 1);
    tree()->setFieldData(Text("text"), Text("sunny"));
    putLeaf(root, "text");
    initOrbel();
    EXPECT_EQ(heard.take(), "root text=sunny, " + inits("root"));
}

TEST_F(SceneTraversal, DoesNothingInsideATraversal) {
    Leaf& first = putLeaf(add("first", root), "one");
    putLeaf(add("second", root), "two");
    first.onceThen([&] {
        takeLog();
        initOrbel();
        initContainer();
        EXPECT_EQ(takeLog(), Log{});
    });
    initOrbel();
    EXPECT_EQ(heard.take(), inits("first") + ", " + inits("second"));
    initOrbel();
    EXPECT_EQ(heard.take(), inits("first") + ", " + inits("second"));
}

TEST_F(SceneTraversal, InitOrbelEndsTheWaitOfItsScene) {
    korDataHandler::setInitQX(1);
    Leaf& leaf = putLeaf(root, "text");
    int inside = -1;
    leaf.onceThen([&] {
        // The call that does nothing ends nothing either.
        initOrbel();
        inside = korDataHandler::getInitQX();
    });
    initOrbel();
    EXPECT_EQ(inside, 1);
    EXPECT_EQ(korDataHandler::getInitQX(), 0);
    EXPECT_EQ(korDataHandler::qxNeedsInit, 0);
}

TEST_F(SceneTraversal, InitOrbelLeavesOtherScenesWaiting) {
    const int own = host.localScene;
    korDataHandler::setInitQX(1);
    host.localScene = host.addScene("Other");
    korDataHandler::setInitQX(1);
    initOrbel();
    EXPECT_EQ(korDataHandler::getInitQX(), 0);
    host.localScene = own;
    EXPECT_EQ(korDataHandler::getInitQX(), 1);
}

TEST_F(SceneTraversal, InitContainerAttachesTheLocalContainerAndBelow) {
    putStructure(root, "board");
    const int middle = add("middle", root);
    Leaf& own = putLeaf(middle, "own");
    Leaf& below = putLeaf(add("below", middle), "below");
    Leaf& beside = putLeaf(add("beside", root), "beside");
    host.localContainer = middle;
    korDataHandler::setInitQX(1);
    initContainer();
    EXPECT_EQ(pathOf(own), "own");
    EXPECT_EQ(pathOf(below), "below");
    EXPECT_EQ(beside.getField(), nullptr);
    EXPECT_EQ(korDataHandler::getInitQX(), 1);
    EXPECT_EQ(korDataHandler::qxNeedsInit, 1);
}

TEST_F(SceneTraversal, InitContainerUsesStructuresFromTheLocalContainerOn) {
    const int middle = add("middle", root);
    putStructure(middle, "board");
    Leaf& below = putLeaf(add("below", middle), "text");
    host.localContainer = middle;
    initContainer();
    EXPECT_EQ(pathOf(below), "board/text");
}

TEST_F(SceneTraversal, InitContainerWithoutAContainerDoesNothing) {
    putLeaf(root, "text");
    for (const int none : {-1, 12345}) {
        host.localContainer = none;
        initContainer();
    }
    EXPECT_EQ(takeLog(), Log{});
}

TEST_F(SceneTraversal, ParentsThatGoMeanwhileAreReplacedByTheTree) {
    Structure& board = putStructure(root, "board");
    putLeaf(add("first", root), "one").onceThen([&] { board.unregisterHandler(); });
    Leaf& second = putLeaf(add("second", root), "two");
    initOrbel();
    EXPECT_EQ(board.getField(), nullptr);
    EXPECT_NE(second.getField(), nullptr);
    EXPECT_EQ(heard.take(), inits("first") + ", " + inits("second"));
}

namespace {

class TypedReset : public SceneTraversal {
protected:
    /// The commands of one plug-in, in their order.
    Log commands(int container, const std::string& kind, const std::string& field, const std::string& type) {
        const std::string path = '#' + number(container) + "*FUNCTION*" + kind + '*';
        return {path + "FieldName GET",
                path + "TypeStr GET",
                "delete " + kind + " on " + number(container),
                "create BUILT_IN*FUNCTION*" + kind + " on " + number(container),
                path + "FieldName SET " + field,
                path + "TypeStr SET " + type};
    }

    void answer(int container, const std::string& kind, const std::string& field, const std::string& type) {
        const std::string path = '#' + number(container) + "*FUNCTION*" + kind + '*';
        host.answers[path + "FieldName GET"] = field;
        host.answers[path + "TypeStr GET"] = type;
    }

    static Log joined(const std::vector<Log>& logs) {
        Log all;
        for (const Log& log : logs)
            all.insert(all.end(), log.begin(), log.end());
        return all;
    }
};

} // namespace

TEST_F(TypedReset, MakesTypedPlugInsAgain) {
    for (const char* kind : {"DataObject", "DataArray", "DataTable"}) {
        const int container = add("typed", root);
        const int before = host.addPlugin(container, kind);
        answer(container, kind, "cities[4]", "City ");
        resetAllTypedObjects();
        EXPECT_EQ(takeLog(), commands(container, kind, "cities[4]", "City "));
        EXPECT_NE(host.pluginOn(container, kind), -1);
        EXPECT_NE(host.pluginOn(container, kind), before);
        host.removeContainer(container);
    }
}

TEST_F(TypedReset, AnswersMayBeEmpty) {
    host.addPlugin(root, "DataObject");
    resetAllTypedObjects();
    EXPECT_EQ(takeLog(), commands(root, "DataObject", "", ""));
}

TEST_F(TypedReset, OtherPlugInsStayAsTheyAre) {
    for (const char* kind : {"DataStructure", "Data3DObject", "DataGeom", "dataobject", "DataObjects", "Text"})
        host.addPlugin(root, kind);
    resetAllTypedObjects();
    EXPECT_EQ(takeLog(), Log{});
}

TEST_F(TypedReset, GoesThroughTheSceneParentsFirstKindByKind) {
    const int first = add("first", root);
    const int deep = add("deep", first);
    const int second = add("second", root);
    const int beside = add("beside", -1);
    host.addPlugin(root, "DataTable");
    host.addPlugin(root, "DataObject");
    host.addPlugin(root, "DataArray");
    for (const int container : {deep, second, beside, first})
        host.addPlugin(container, "DataObject");
    host.localContainer = deep;
    resetAllTypedObjects();
    EXPECT_EQ(takeLog(), joined({commands(root, "DataObject", "", ""), commands(root, "DataArray", "", ""),
                                 commands(root, "DataTable", "", ""), commands(first, "DataObject", "", ""),
                                 commands(deep, "DataObject", "", ""), commands(second, "DataObject", "", ""),
                                 commands(beside, "DataObject", "", "")}));
}

TEST_F(TypedReset, StartsAtTheTopOfTheLocalContainerWithoutARoot) {
    host.scenes[host.localScene].root = -1;
    host.localContainer = add("deep", add("middle", root));
    host.addPlugin(root, "DataObject");
    resetAllTypedObjects();
    EXPECT_EQ(takeLog(), commands(root, "DataObject", "", ""));
}

TEST_F(TypedReset, PlugInsThatAreNotMadeAgainAreNotSet) {
    host.addPlugin(root, "DataObject");
    host.onCreate = [this](int plugin) { host.removePlugin(plugin); };
    resetAllTypedObjects();
    const Log all = commands(root, "DataObject", "", "");
    EXPECT_EQ(takeLog(), Log(all.begin(), all.begin() + 4));
}

TEST_F(TypedReset, SettingsOutliveTheAnswersOfTheHost) {
    host.addPlugin(root, "DataObject");
    answer(root, "DataObject", std::string(100, 'f'), std::string(100, 't'));
    host.onCreate = [this](int) { host.answers.clear(); };
    resetAllTypedObjects();
    EXPECT_EQ(takeLog(), commands(root, "DataObject", std::string(100, 'f'), std::string(100, 't')));
}

TEST_F(TypedReset, ContainersMayChangeMeanwhile) {
    const int first = add("first", root);
    const int second = add("second", root);
    const int third = add("third", root);
    for (const int container : {first, second, third})
        host.addPlugin(container, "DataObject");
    host.onCreate = [&, this](int) {
        host.onCreate = {};
        host.removeContainer(second);
        host.addPlugin(add("below", first), "DataTable");
    };
    resetAllTypedObjects();
    const int below = host.containers.at(first).children.front();
    EXPECT_EQ(takeLog(), joined({commands(first, "DataObject", "", ""), commands(below, "DataTable", "", ""),
                                 commands(third, "DataObject", "", "")}));
}

TEST_F(TypedReset, WorksInsideATraversal) {
    host.addPlugin(root, "DataObject");
    Leaf& leaf = putLeaf(add("leaf", root), "text");
    leaf.onceThen([&] {
        takeLog();
        resetAllTypedObjects();
        EXPECT_EQ(takeLog(), commands(root, "DataObject", "", ""));
    });
    initOrbel();
    EXPECT_EQ(heard.take(), inits("leaf"));
}
