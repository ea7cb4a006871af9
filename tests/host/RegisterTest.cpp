#include <support/HostScene.h>
#include <support/WorkingFolder.h>

#include <string>

/// How plug-ins attach themselves to fields of the tree.

namespace {

class RegisterByName : public HostScene {
protected:
    RegisterByName() { leaf.setLocalContainer(place); }

    CONTAINER place = add("title", root);
    Leaf& leaf = putLeaf(place.id, "");
};

/// A structure "board" on the root, a leaf on the container "title" below.
class RegisterBelowStructure : public RegisterByName {
protected:
    RegisterBelowStructure() { board.korDataHandler::Register("board", 0); }

    Structure& board = putStructure(root, "board");
};

} // namespace

TEST_F(RegisterByName, MakesTheFieldInTheTreeOfTheScene) {
    leaf.Register("news", 0);
    ASSERT_EQ(leaf.getField(), at("news"));
    EXPECT_NE(leaf.getField()->isOfType(DataValue::getClassType()), 0);
    EXPECT_STREQ(leaf.getFieldName(), "news");
    EXPECT_EQ(leaf.getParent(), nullptr);
    EXPECT_EQ(heard.take(), "");
}

TEST_F(RegisterByName, TellsTheValueAtOnceIfAsked) {
    leaf.Register("news", 0);
    tree()->setFieldData(Text("news"), Text("sunny"));
    heard.take();
    leaf.Register("news", 0);
    EXPECT_EQ(heard.take(), "");
    leaf.Register("news", 1);
    EXPECT_EQ(heard.take(), "title news=sunny");
    leaf.Register("news", -1);
    EXPECT_EQ(heard.take(), "title news=sunny");
}

TEST_F(RegisterByName, MovesToAnotherField) {
    leaf.Register("news", 0);
    leaf.Register("late", 0);
    EXPECT_EQ(pathOf(leaf), "late");
    EXPECT_EQ(at("news"), nullptr);
}

TEST_F(RegisterByName, TakesItsOwnFieldName) {
    leaf.setFieldName("news");
    leaf.Register(leaf.getFieldName(), 0);
    EXPECT_STREQ(leaf.getFieldName(), "news");
    EXPECT_EQ(pathOf(leaf), "news");
}

TEST_F(RegisterByName, NullAndEmptyNamesAttachToNothing) {
    leaf.Register("", 1);
    EXPECT_EQ(leaf.getField(), nullptr);
    leaf.setFieldName("news");
    leaf.korDataHandler::Register(nullptr, 1);
    EXPECT_EQ(leaf.getField(), nullptr);
    EXPECT_STREQ(leaf.getFieldName(), "");
    EXPECT_EQ(tree()->getNumFields(), 0);
}

TEST_F(RegisterByName, RangesGiveOffsetAndSize) {
    leaf.Register("news[4]", 0);
    EXPECT_STREQ(leaf.getFieldName(), "news[4]");
    EXPECT_EQ(pathOf(leaf), "news");
    EXPECT_EQ(leaf.getOffset(), 0);
    EXPECT_EQ(leaf.getField()->getSize(), 4);
    leaf.Register("news[2-5]", 0);
    EXPECT_EQ(leaf.getOffset(), 2);
    EXPECT_EQ(leaf.getField()->getSize(), 5);
}

TEST_F(RegisterByName, AsteriskFindsAField) {
    tree()->getField(Text("node:scene/string:title"), 0, 1);
    leaf.Register("*scene/title", 0);
    EXPECT_EQ(leaf.getField(), at("scene/title"));
    EXPECT_STREQ(leaf.getFieldName(), "*scene/title");
    EXPECT_EQ(leaf.getParent(), nullptr);
    EXPECT_EQ(heard.take(), "");
}

TEST_F(RegisterByName, AsteriskFindsAFieldWhateverKindsAndIndexesThePathHas) {
    tree()->getField(Text("node:scene/string:title"), 0, 1);
    for (const char* path : {"*scene/string:title", "*node:scene/string:title", "*node:scene[2]/title",
                             "*node:scene[0]/string:title[1]", "*scene[0]/title"}) {
        leaf.Register(path, 0);
        EXPECT_EQ(leaf.getField(), at("scene/title")) << path;
        leaf.unregisterHandler();
    }
    leaf.Register("*node:scene[2]/string:none", 0);
    EXPECT_EQ(leaf.getField(), nullptr);
    tree()->getField(Text("DataHashTable:cities:"), 0, 1);
    DataField* name = new DataValue(Text("name"));
    static_cast<DataHashTable*>(at("cities"))->newObject(Text("Oslo"))->addField(name, 0);
    leaf.Register("*DataHashTable:cities:[Oslo]/string:name", 0);
    EXPECT_EQ(leaf.getField(), name);
}

TEST_F(RegisterByName, AsteriskTellsTheValueIfAsked) {
    tree()->getField(Text("string:news"), 0, 1);
    tree()->setFieldData(Text("news"), Text("sunny"));
    leaf.Register("*news", 0);
    // A field tells its value to those that join it.
    EXPECT_EQ(heard.take(), "title news=sunny");
    leaf.Register("*news", 1);
    EXPECT_EQ(heard.take(), "title news=sunny, title news=sunny");
}

TEST_F(RegisterByName, AsteriskMakesNoField) {
    leaf.Register("*nothing", 1);
    EXPECT_EQ(leaf.getField(), nullptr);
    leaf.Register("*node:nothing", 1);
    EXPECT_EQ(leaf.getField(), nullptr);
    leaf.Register("*node:nothing/string:x", 1);
    EXPECT_EQ(tree()->getNumFields(), 0);
    EXPECT_EQ(heard.take(), "");
}

TEST_F(RegisterByName, AsteriskPassesOverKinds) {
    DataField* const title = tree()->getField(Text("node:scene/string:title"), 0, 1);
    leaf.Register("*node:scene/string:title", 0);
    EXPECT_EQ(leaf.getField(), title);
    leaf.Register("*node:scene", 0);
    EXPECT_EQ(leaf.getField(), at("scene"));
}

TEST_F(RegisterByName, AsteriskFindsElements) {
    addArray("points", "Point", 3);
    leaf.Register("*points[1]/x", 0);
    EXPECT_EQ(pathOf(leaf), "points[1]/x");
}

TEST_F(RegisterByName, WithoutAFindStaysAndStillRefreshes) {
    leaf.Register("news", 0);
    tree()->setFieldData(Text("news"), Text("sunny"));
    heard.take();
    leaf.Register("*nothing", 1);
    EXPECT_EQ(pathOf(leaf), "news");
    EXPECT_EQ(heard.take(), "title news=sunny");
}

TEST_F(RegisterByName, AsteriskLeavesTheOldFieldInTheTree) {
    tree()->getField(Text("string:late"), 0, 1);
    leaf.Register("news", 0);
    leaf.Register("*late", 0);
    EXPECT_EQ(pathOf(leaf), "late");
    EXPECT_NE(at("news"), nullptr);
}

TEST_F(RegisterByName, AnAsteriskAloneIsAName) {
    leaf.Register("*", 0);
    ASSERT_NE(leaf.getField(), nullptr);
    EXPECT_STREQ(leaf.getField()->getName(), "*");
}

TEST_F(RegisterByName, SlashRegistersOnTheTree) {
    leaf.Register("/news", 0);
    EXPECT_EQ(leaf.getField(), at("news"));
    EXPECT_STREQ(leaf.getFieldName(), "/news");
    tree()->setFieldData(Text("news"), Text("sunny"));
    heard.take();
    leaf.Register("/news", 1);
    EXPECT_EQ(heard.take(), "title news=sunny");
}

TEST_F(RegisterByName, SlashTakesPathsWithKindsAndRanges) {
    leaf.Register("/node:scene/string:title[3]", 0);
    EXPECT_EQ(pathOf(leaf), "scene/title");
    EXPECT_EQ(leaf.getField()->getSize(), 3);
}

TEST_F(RegisterByName, SlashKeepsMacros) {
    leaf.Register("/$(CONTNAME)", 0);
    EXPECT_STREQ(leaf.getField()->getName(), "$(CONTNAME)");
}

TEST_F(RegisterByName, ReplacesContainerMacros) {
    leaf.Register("$(CONTAINER)", 0);
    EXPECT_EQ(pathOf(leaf), "KorId_" + std::to_string(place.id));
    EXPECT_STREQ(leaf.getFieldName(), "$(CONTAINER)");
    leaf.Register("$(CONTNAME)", 0);
    EXPECT_EQ(pathOf(leaf), "title");
}

TEST_F(RegisterByName, ContainerMacrosNameTheLocalContainer) {
    CONTAINER other = root;
    leaf.setCurrentContainer(other);
    leaf.Register("$(CONTNAME)", 0);
    EXPECT_EQ(pathOf(leaf), "title");
    leaf.Register("$(CONTAINER)", 0);
    EXPECT_EQ(pathOf(leaf), "KorId_" + std::to_string(place.id));
}

TEST_F(RegisterByName, MacrosOfAnInvalidContainer) {
    CONTAINER none;
    leaf.setLocalContainer(none);
    leaf.Register("$(CONTAINER)", 0);
    EXPECT_EQ(pathOf(leaf), "KorId_-1");
    leaf.Unregister();
    leaf.Register("$(CONTNAME)", 0);
    EXPECT_EQ(leaf.getField(), nullptr);
}

TEST_F(RegisterByName, ReplacesSceneMacros) {
    leaf.Register("$(SCENE)", 0);
    EXPECT_STREQ(leaf.getField()->getName(), "Weather");
    leaf.Register("$(SCENE_ID)", 0);
    EXPECT_STREQ(leaf.getField()->getName(), ('#' + std::to_string(host.localScene)).c_str());
    leaf.Unregister();
    tree()->getField(Text("node:Show"), 0, 1);
    leaf.Register("$(SCENE_FULL_NAME)", 0);
    EXPECT_EQ(pathOf(leaf), "Show/Weather");
}

TEST_F(RegisterByName, ReplacesHostMacros) {
    leaf.Register("$(HOSTNAME)", 0);
    EXPECT_STREQ(leaf.getField() ? leaf.getField()->getName() : "", leaf.parseMacro("HOSTNAME"));
    leaf.Unregister();
    leaf.Register("$(HOSTIP)", 0);
    EXPECT_STREQ(leaf.getField() ? leaf.getField()->getName() : "", leaf.parseMacro("HOSTIP"));
}

TEST_F(RegisterByName, NearMissesStayAsTheyAre) {
    for (const std::string name :
         {"$(container)", "$(CONTAINER)x", "x$(CONTAINER)", " $(CONTAINER)x", "$(CONTAINER", "CONTAINER", "$CONTAINER",
          "$(CONTAINER_NAME)", "$(SCENE)x", "$(SCENE_ID)x", "$(SCENE_NAME)", "$(SCENE_FULLNAME)", "$(SCENE_PATH)",
          "$(THIS_SCENE)", "$(LOCAL_CONTAINER)", "$(HOSTNAME)x", "$()"}) {
        leaf.Register(name.c_str(), 0);
        ASSERT_NE(leaf.getField(), nullptr) << name;
        EXPECT_EQ(leaf.getField()->getName(), name.substr(name.find_first_not_of(' ')));
    }
}

TEST_F(RegisterByName, MacrosWithARangeAreNone) {
    leaf.Register("$(CONTNAME)[4]", 0);
    EXPECT_STREQ(leaf.getField()->getName(), "$(CONTNAME)");
    EXPECT_EQ(leaf.getField()->getSize(), 4);
}

TEST_F(RegisterByName, MacroValuesMayHoldRanges) {
    host.containers.at(place.id).name = "title[4]";
    leaf.Register("$(CONTNAME)", 0);
    EXPECT_EQ(pathOf(leaf), "title");
    EXPECT_EQ(leaf.getField()->getSize(), 4);
}

TEST_F(RegisterByName, MacroValuesMayBeAbsoluteLookingPaths) {
    // A value is no name that was given: its first character stands for nothing.
    host.containers.at(place.id).name = "*news";
    tree()->getField(Text("string:news"), 0, 1);
    leaf.Register("$(CONTNAME)", 0);
    EXPECT_STREQ(leaf.getField()->getName(), "*news");
}

TEST_F(RegisterByName, WithATreeTheBridgeKeepsItsName) {
    leaf.getDataHandler()->setName(Text("mine"));
    leaf.Register("news", 0);
    EXPECT_STREQ(leaf.getDataHandler()->getName(), "mine");
    leaf.RegisterField("news", 0);
    EXPECT_STREQ(leaf.getDataHandler()->getName(), "mine");
}

TEST_F(RegisterByName, BeforeInitNothingHappens) {
    Leaf fresh(heard, done, "fresh");
    fresh.Register("news", 1);
    fresh.Register("*news", 1);
    fresh.Register("/news", 1);
    fresh.RegisterField("news", 1);
    EXPECT_STREQ(fresh.getFieldName(), "news");
    EXPECT_EQ(fresh.getField(), nullptr);
    EXPECT_EQ(tree()->getNumFields(), 0);
    fresh.Unregister();
}

TEST_F(RegisterByName, UnregisterTakesTheFieldAlong) {
    leaf.Register("news", 0);
    leaf.Unregister();
    EXPECT_EQ(leaf.getField(), nullptr);
    EXPECT_EQ(at("news"), nullptr);
    EXPECT_STREQ(leaf.getFieldName(), "news");
    leaf.Unregister();
    EXPECT_EQ(done.take(), "title registers news quietly, title unregisters, title unregisters");
}

TEST_F(RegisterByName, DestructionUnregisters) {
    leaf.Register("news", 0);
    destroy(leaf);
    EXPECT_EQ(at("news"), nullptr);
}

TEST_F(RegisterByName, FirstTimeIsForThePlugIn) {
    EXPECT_TRUE(leaf.getFirstTime());
    leaf.Register("news", 1);
    EXPECT_TRUE(leaf.getFirstTime());
    leaf.setFirstTime(false);
    EXPECT_FALSE(leaf.getFirstTime());
}

TEST_F(RegisterByName, DumpTellsTheContainer) {
    leaf.Register("news", 0);
    console.takeOutput();
    leaf.korDataHandler::dump();
    EXPECT_EQ(console.takeOutput(), "Handler Name=title Field=news Container=" + std::to_string(place.id) + "\n");
}

TEST_F(RegisterByName, ThePathOfAContainerNamesAllAboveIt) {
    const int above = add("above", -1);
    CONTAINER deep = add("deep", add("middle", above));
    leaf.setCurrentContainer(deep);
    EXPECT_EQ(leaf.getContainerFullPath(), "above/middle/deep");
    deep = above;
    leaf.setCurrentContainer(deep);
    EXPECT_EQ(leaf.getContainerFullPath(), "above");
    deep = CONTAINER();
    leaf.setCurrentContainer(deep);
    EXPECT_EQ(leaf.getContainerFullPath(), "");
}

TEST_F(RegisterByName, TheTreeIsThatOfTheLocalScene) {
    EXPECT_EQ(leaf.getOrbel(), tree());
}

namespace {

class RegisterInSceneTrees : public HostScene {
protected:
    RegisterInSceneTrees() {
        folder.write("Orbel.ini", "MultiOrbel=1\n");
        IDataHandlerImpl::init();
    }

    WorkingFolder folder;
};

} // namespace

TEST_F(RegisterInSceneTrees, WithoutATreeTheBridgeIsNamedAfterTheContainer) {
    Leaf leaf(heard, done, "leaf");
    leaf.init(-1);
    CONTAINER place = add("title", root);
    leaf.setLocalContainer(place);
    ASSERT_EQ(leaf.getOrbel(), nullptr);
    leaf.Register("news", 1);
    EXPECT_STREQ(leaf.getDataHandler()->getName(), "title");
    EXPECT_EQ(leaf.getField(), nullptr);
    leaf.getDataHandler()->setName(Text("mine"));
    leaf.RegisterField("*news", 1);
    EXPECT_STREQ(leaf.getDataHandler()->getName(), "title");
    leaf.RegisterField("/news", 1);
    leaf.Register("/news", 1);
    EXPECT_EQ(leaf.getField(), nullptr);
}

TEST_F(RegisterInSceneTrees, TheNameDependsOnTheLocalSceneAndTheFieldOnThatOfTheBridge) {
    Leaf leaf(heard, done, "leaf");
    leaf.init(host.localScene);
    CONTAINER place = add("title", root);
    leaf.setLocalContainer(place);
    leaf.Register("news", 0);
    EXPECT_STREQ(leaf.getDataHandler()->getName(), "title");
    EXPECT_EQ(leaf.getField(), at("news"));
}

TEST_F(RegisterInSceneTrees, EachSceneHasItsOwnFields) {
    Leaf& here = putLeaf(add("here", root), "");
    here.Register("news", 0);
    const int first = host.localScene;
    host.localScene = host.addScene("Other");
    Leaf& there = putLeaf(add("there", -1), "");
    there.Register("news", 0);
    EXPECT_EQ(here.getField(), IDataHandlerImpl::getOrbel(first, false)->getField(Text("news"), 0, 0));
    EXPECT_EQ(there.getField(), at("news"));
    EXPECT_NE(here.getField(), there.getField());
}

TEST_F(RegisterBelowStructure, GoesBelowItsField) {
    leaf.Register("text", 0);
    EXPECT_EQ(pathOf(leaf), "board/text");
    EXPECT_EQ(leaf.getParent(), &board);
    EXPECT_EQ(done.take(), "title registers text quietly, root takes title as text 0");
}

TEST_F(RegisterBelowStructure, RefreshesIfAsked) {
    leaf.Register("text", 0);
    tree()->setFieldData(Text("board/text"), Text("sunny"));
    heard.take();
    leaf.Register("text", 1);
    EXPECT_EQ(heard.take(), "title text=sunny");
}

TEST_F(RegisterBelowStructure, ReplacesMacrosFirst) {
    leaf.Register("$(CONTNAME)", 0);
    EXPECT_EQ(pathOf(leaf), "board/title");
    EXPECT_EQ(done.take(), "title registers $(CONTNAME) quietly, root takes title as title 0");
}

TEST_F(RegisterBelowStructure, SlashPassesItOver) {
    leaf.Register("text", 0);
    leaf.Register("/text", 0);
    EXPECT_EQ(pathOf(leaf), "text");
    EXPECT_EQ(leaf.getParent(), nullptr);
}

TEST_F(RegisterBelowStructure, AsteriskPassesItOver) {
    tree()->getField(Text("string:text"), 0, 1);
    leaf.Register("text", 0);
    leaf.Register("*text", 0);
    EXPECT_EQ(pathOf(leaf), "text");
    EXPECT_EQ(leaf.getParent(), nullptr);
}

TEST_F(RegisterBelowStructure, RegisterFieldPassesItOverAndNeverRefreshes) {
    leaf.RegisterField("text", 1);
    EXPECT_EQ(pathOf(leaf), "text");
    EXPECT_EQ(leaf.getParent(), nullptr);
    leaf.RegisterField("/text", 1);
    EXPECT_EQ(pathOf(leaf), "text");
    leaf.RegisterField("*text", 1);
    EXPECT_EQ(pathOf(leaf), "text");
    EXPECT_STREQ(leaf.getFieldName(), "*text");
    leaf.RegisterField("$(CONTNAME)", 1);
    EXPECT_EQ(pathOf(leaf), "title");
    leaf.RegisterField("$(CONTAINER)", 1);
    EXPECT_EQ(pathOf(leaf), "KorId_" + std::to_string(place.id));
    leaf.RegisterField("news[2-5]", 1);
    EXPECT_EQ(leaf.getOffset(), 2);
    EXPECT_EQ(leaf.getField()->getSize(), 5);
    leaf.RegisterField("", 1);
    EXPECT_EQ(pathOf(leaf), "news");
    EXPECT_EQ(heard.take(), "");
}

TEST_F(RegisterBelowStructure, RegisterFieldMakesNoFieldForAsterisks) {
    leaf.RegisterField("*nothing", 1);
    EXPECT_EQ(leaf.getField(), nullptr);
    EXPECT_EQ(at("nothing"), nullptr);
}

TEST_F(RegisterBelowStructure, NothingHappensBelowAStructureWithoutANode) {
    board.Unregister();
    done.take();
    leaf.Register("text", 1);
    EXPECT_EQ(leaf.getField(), nullptr);
    EXPECT_EQ(leaf.getParent(), &board);
    EXPECT_EQ(done.take(), "title registers text, root takes title as text 0");
    EXPECT_EQ(at("text"), nullptr);
}

TEST_F(RegisterBelowStructure, TheParentIsForgottenWhenItDies) {
    leaf.Register("text", 0);
    destroy(board);
    EXPECT_EQ(leaf.getParent(), nullptr);
    leaf.Register("text", 0);
    EXPECT_EQ(pathOf(leaf), "text");
}

TEST_F(RegisterBelowStructure, UnregisterKeepsTheParent) {
    leaf.Register("text", 0);
    leaf.Unregister();
    EXPECT_EQ(leaf.getField(), nullptr);
    EXPECT_EQ(leaf.getParent(), &board);
}

TEST_F(RegisterBelowStructure, IndexIsThatOfTheWayDown) {
    add("first", root);
    const int second = add("second", root);
    const int below = add("below", second);
    Leaf& deep = putLeaf(add("deep", below), "");
    deep.Register("x", 0);
    EXPECT_EQ(pathOf(deep), "board/x");
    EXPECT_EQ(done.take(), "deep registers x quietly, root takes deep as x 2");
}

namespace {

/// Containers "list", with an array plug-in of four points, and below it "a", "b" and "c".
class RegisterInArray : public HostScene {
protected:
    RegisterInArray() {
        addArray("points", "Point", 4);
        array.korDataHandler::Register("points[4]", 0);
    }

    DataObject* point(int index) { return static_cast<DataArray*>(at("points"))->getObject(index); }
    DataField* fieldOf(int index, const std::string& name) { return point(index)->getField(Text(name), 0, 0); }

    int list = add("list", root);
    Structure& array = putArray(list, "points[4]");
    int a = add("a", list);
    int b = add("b", list);
    int c = add("c", list);
};

} // namespace

TEST_F(RegisterInArray, EachChildHasTheElementOfItsPosition) {
    Leaf& first = putLeaf(a, "");
    Leaf& last = putLeaf(c, "");
    first.Register("x", 0);
    last.Register("x", 0);
    ASSERT_NE(first.getField(), nullptr);
    EXPECT_EQ(first.getField(), fieldOf(0, "x"));
    EXPECT_EQ(last.getField(), fieldOf(2, "x"));
}

TEST_F(RegisterInArray, TheOffsetOfTheArrayIsAdded) {
    array.korDataHandler::Register("points[1-4]", 0);
    ASSERT_EQ(array.getOffset(), 1);
    Leaf& last = putLeaf(c, "");
    last.Register("x", 0);
    ASSERT_NE(last.getField(), nullptr);
    EXPECT_EQ(last.getField(), fieldOf(3, "x"));
    EXPECT_EQ(done.takeNames(), "clist");
}

TEST_F(RegisterInArray, BehindTheLastElementIsNothing) {
    add("d", list);
    Leaf& behind = putLeaf(add("e", list), "");
    behind.Register("x", 1);
    EXPECT_EQ(behind.getField(), nullptr);
    EXPECT_EQ(heard.take(), "");
}

TEST_F(RegisterInArray, PlugInsFurtherDownHaveTheElementOfTheContainerAbove) {
    Leaf& deep = putLeaf(add("deep", add("middle", b)), "");
    deep.Register("x", 0);
    ASSERT_NE(deep.getField(), nullptr);
    EXPECT_EQ(deep.getField(), fieldOf(1, "x"));
}

TEST_F(RegisterInArray, IndexFollowsTheScene) {
    Leaf& last = putLeaf(c, "");
    host.removeContainer(a);
    last.Register("x", 0);
    ASSERT_NE(last.getField(), nullptr);
    EXPECT_EQ(last.getField(), fieldOf(1, "x"));
}

TEST_F(RegisterInArray, SearchChildCountsFromTheFirst) {
    EXPECT_EQ(array.searchChild(list, a), 0);
    EXPECT_EQ(array.searchChild(list, c), 2);
    EXPECT_EQ(array.searchChild(list, root), -1);
    EXPECT_EQ(array.searchChild(list, -1), -1);
    EXPECT_EQ(array.searchChild(a, b), -1);
    EXPECT_EQ(array.searchChild(-1, b), -1);
}

namespace {

class ParentHandler : public HostScene {
protected:
    korDataStructureHandler* parentOf(korDataHandler& handler) {
        korDataStructureHandler* parent = nullptr;
        index = -2;
        EXPECT_TRUE(handler.getParentHandler(&parent, &index));
        return parent;
    }

    int top = add("top", root);
    int middle = add("middle", top);
    int bottom = add("bottom", middle);
    Leaf& leaf = putLeaf(bottom, "x");
    int index = -2;
};

} // namespace

TEST_F(ParentHandler, IsNullWhenTheTopIsReached) {
    korDataStructureHandler* parent = &make<Structure>(root, "", "other");
    EXPECT_TRUE(leaf.getParentHandler(&parent, &index));
    EXPECT_EQ(parent, nullptr);
}

TEST_F(ParentHandler, IsOfAnyStructureKind) {
    for (const char* kind : {"DataStructure", "DataArray", "DataObject"}) {
        Structure& structure = put<Structure>(top, kind, "");
        EXPECT_EQ(parentOf(leaf), &structure) << kind;
        EXPECT_EQ(index, 0);
        host.removePlugin(host.pluginOn(top, kind));
    }
}

TEST_F(ParentHandler, IsOfNoOtherKind) {
    for (const char* kind : {"DataTable", "Data3DObject", "DataGeom", "dataarray", "Text"})
        put<Structure>(top, kind, "");
    EXPECT_EQ(parentOf(leaf), nullptr);
}

TEST_F(ParentHandler, KindsHaveAnOrder) {
    Structure& object = put<Structure>(top, "DataObject", "");
    EXPECT_EQ(parentOf(leaf), &object);
    Structure& array = put<Structure>(top, "DataArray", "");
    EXPECT_EQ(parentOf(leaf), &array);
    Structure& structure = put<Structure>(top, "DataStructure", "");
    EXPECT_EQ(parentOf(leaf), &structure);
}

TEST_F(ParentHandler, IsTheNearest) {
    put<Structure>(root, "DataStructure", "");
    put<Structure>(top, "DataStructure", "");
    Structure& near = put<Structure>(middle, "DataObject", "");
    EXPECT_EQ(parentOf(leaf), &near);
}

TEST_F(ParentHandler, IsNotOnTheContainerItself) {
    put<Structure>(bottom, "DataStructure", "");
    EXPECT_EQ(parentOf(leaf), nullptr);
}

TEST_F(ParentHandler, IndexIsThatOfTheChildOnTheWay) {
    putStructure(root, "");
    add("second", root);
    const int third = add("third", root);
    add("first below", third);
    Leaf& deep = putLeaf(add("deep", add("second below", third)), "");
    parentOf(deep);
    EXPECT_EQ(index, 2);
}

TEST_F(ParentHandler, IsNeverTheHandlerItself) {
    Structure& own = putStructure(top, "");
    CONTAINER place = bottom;
    own.setLocalContainer(place);
    EXPECT_EQ(parentOf(own), nullptr);
    Structure& further = putStructure(root, "");
    EXPECT_EQ(parentOf(own), &further);
    EXPECT_EQ(index, 0);
}

TEST_F(ParentHandler, IsAnotherKindWhenTheFirstIsTheHandlerItself) {
    Structure& own = putStructure(top, "");
    Structure& other = putArray(top, "");
    CONTAINER place = bottom;
    own.setLocalContainer(place);
    EXPECT_EQ(parentOf(own), &other);
}

TEST_F(ParentHandler, RecordsThatAreNotReadyArePassedOver) {
    Structure& far = putStructure(root, "");
    Structure& unbuilt = putStructure(top, "");
    recordOf(unbuilt).handler = nullptr;
    EXPECT_EQ(parentOf(leaf), &far);
    recordOf(unbuilt).handler = &unbuilt;
    recordOf(unbuilt).marker = 9472;
    EXPECT_EQ(parentOf(leaf), &far);
    recordOf(unbuilt).marker = 9473;
    EXPECT_EQ(parentOf(leaf), &unbuilt);
}

TEST_F(ParentHandler, PlugInsWithoutARecordArePassedOver) {
    Structure& far = putStructure(root, "");
    host.addPlugin(top, "DataStructure");
    EXPECT_EQ(parentOf(leaf), &far);
    Structure& array = putArray(top, "");
    EXPECT_EQ(parentOf(leaf), &array);
}

TEST_F(ParentHandler, HandlersThatAreNoStructureArePassedOver) {
    put<Leaf>(top, "DataStructure", "");
    EXPECT_EQ(parentOf(leaf), nullptr);
    Structure& far = putStructure(root, "");
    EXPECT_EQ(parentOf(leaf), &far);
}

TEST_F(ParentHandler, IsNullForAPlugInNowhere) {
    Leaf nowhere(heard, done, "nowhere");
    EXPECT_EQ(parentOf(nowhere), nullptr);
}

namespace {

/// A container "list" with an array of points, and below it, "p0" to "p2", a leaf "x" in each element. All leaves are
/// of one plug-in.
class Sync : public HostScene {
protected:
    Sync() {
        addArray("points", "Point", 3);
        addArray("rows", "Row", 2);
        array.Register("points[3]", 0);
        for (int index = 0; index < 3; ++index)
            leaves.push_back(&in(list, "p" + std::to_string(index), "x"));
    }

    Leaf& in(int container, const std::string& name, const std::string& field, const std::string& plugin = "Text") {
        return on(add(name, container), name, field, plugin);
    }

    Leaf& on(int container, const std::string& name, const std::string& field, const std::string& plugin = "Text") {
        Leaf& leaf = putNamed<Leaf>(container, "Text", field, plugin);
        leaf.Register(field.c_str(), 0);
        leaf.onSync = [this, name] { synced += (synced.empty() ? "" : " ") + name; };
        return leaf;
    }

    template <class Plugin = Structure>
    int structureIn(int container, const char* kind, const std::string& name, const std::string& field) {
        const int place = add(name, container);
        auto& structure = put<Plugin>(place, kind, field);
        if (std::string(kind) == "DataArray")
            structure.fieldType = DataArray::getClassType();
        structure.Register(field.c_str(), 0);
        EXPECT_NE(structure.getField(), nullptr) << name;
        keep(*structure.getField());
        return place;
    }

    std::string syncedBy(korDataHandler& source) {
        synced.clear();
        source.sync();
        return synced;
    }

    int list = add("list", root);
    Structure& array = putArray(list, "points[3]");
    std::vector<Leaf*> leaves;
    std::string synced;
};

} // namespace

TEST_F(Sync, CallsTheHandlersOfAllOtherElements) {
    EXPECT_EQ(syncedBy(*leaves[1]), "p0 p2");
    EXPECT_EQ(syncedBy(*leaves[0]), "p1 p2");
}

TEST_F(Sync, HandsItselfOver) {
    done.take();
    leaves[2]->sync();
    EXPECT_EQ(done.take(), "Text syncs with Text, Text syncs with Text");
}

TEST_F(Sync, OtherPlugInsAndOtherFieldsHearNothing) {
    const int more = host.containers.at(list).children[0];
    on(more, "image", "x", "Image");
    on(more, "y", "y");
    EXPECT_EQ(syncedBy(*leaves[1]), "p0 p2");
    leaves[2]->Unregister();
    EXPECT_EQ(syncedBy(*leaves[1]), "p0");
}

TEST_F(Sync, OfSeveralHandlersOfTheSamePlugInTheFirstHears) {
    on(host.containers.at(list).children[0], "p0 too", "x");
    EXPECT_EQ(syncedBy(*leaves[1]), "p0 p2");
}

TEST_F(Sync, OutsideOfStructuresNothingHappens) {
    Leaf& first = in(root, "first", "x");
    in(root, "second", "x");
    EXPECT_EQ(syncedBy(first), "");
}

TEST_F(Sync, BelowAStructureNothingHappens) {
    const int board = structureIn(root, "DataStructure", "board", "board");
    Leaf& first = in(board, "first", "x");
    in(board, "second", "x");
    EXPECT_EQ(syncedBy(first), "");
}

TEST_F(Sync, FieldNamesMayBeMacrosAndHaveRanges) {
    for (Leaf* leaf : leaves) {
        host.containers.at(leaf->getLocalContainer().id).name = "same";
        keep(*leaf->getField());
        leaf->Register("$(CONTNAME)", 0);
    }
    EXPECT_EQ(syncedBy(*leaves[1]), "p0 p2");
    for (Leaf* leaf : leaves) {
        keep(*leaf->getField());
        leaf->Register(" y[4]", 0);
    }
    EXPECT_EQ(syncedBy(*leaves[1]), "p0 p2");
}

TEST_F(Sync, StructuresBetweenArePartOfThePath) {
    std::vector<Leaf*> deep;
    for (int index = 0; index < 3; ++index) {
        const std::string number = std::to_string(index);
        const int place = host.containers.at(list).children[static_cast<std::size_t>(index)];
        deep.push_back(&in(structureIn(place, "DataStructure", "box" + number, "box"), "deep" + number, "x"));
    }
    EXPECT_STREQ(deep[2]->getField()->getFullPath(), "points[2]/box/x");
    EXPECT_EQ(syncedBy(*deep[2]), "deep0 deep1");
    EXPECT_EQ(syncedBy(*leaves[2]), "p0 p1");
}

TEST_F(Sync, ReachesAllArraysAround) {
    const int rows = structureIn(root, "DataArray", "rows", "rows[2]");
    std::vector<Leaf*> cells;
    for (const std::string row : {"r0", "r1"}) {
        const int columns = structureIn(add(row, rows), "DataArray", row + " cells", "cells[2]");
        for (const char* cell : {"c0", "c1"})
            cells.push_back(&in(columns, row + cell, "x"));
    }
    EXPECT_EQ(syncedBy(*cells[1]), "r0c0 r1c1");
    EXPECT_EQ(syncedBy(*cells[2]), "r1c1 r0c0");
}

TEST_F(Sync, PathsCountFromTheOffsetOfTheArray) {
    const int rows = structureIn(root, "DataArray", "rows", "rows[2]");
    std::vector<Leaf*> cells;
    for (const std::string row : {"r0", "r1"}) {
        const int columns = structureIn(add(row, rows), "DataArray", row + " cells", "cells[1-3]");
        for (const char* cell : {"c0", "c1"})
            cells.push_back(&in(columns, row + cell, "x"));
    }
    EXPECT_EQ(cells[1]->getField()->getParent(), static_cast<DataArray*>(at("rows[0]/cells"))->getObject(2));
    EXPECT_EQ(syncedBy(*cells[1]), "r0c0 r1c1");
}

TEST_F(Sync, TheSourceMayGoMeanwhile) {
    leaves[0]->onSync = [this] { destroy(*leaves[1]); };
    EXPECT_EQ(syncedBy(*leaves[1]), "");
}

TEST_F(Sync, ElementsMayGoMeanwhile) {
    leaves[0]->onSync = [this] {
        destroy(*leaves[2]);
        array.getField()->setSize(1);
    };
    EXPECT_EQ(syncedBy(*leaves[1]), "");
}

TEST_F(Sync, TheStructureMayGoMeanwhile) {
    leaves[0]->onSync = [this] { destroy(array); };
    EXPECT_EQ(syncedBy(*leaves[1]), "p2");
}

TEST_F(Sync, MayBeAskedForByTheOnesThatHear) {
    leaves[0]->onSync = [this] {
        leaves[1]->onSync = {};
        leaves[0]->onSync = {};
        leaves[0]->sync();
    };
    EXPECT_EQ(syncedBy(*leaves[1]), "p2 p2");
}
