#include <support/HostScene.h>

#include <algorithm>
#include <string>
#include <vector>

/// Plug-ins that stand for structures of the tree, and the plug-ins on the containers below theirs.

namespace {

/// A structure "board" on a container "board" of the root; leaves below it.
class StructureHandler : public HostScene {
protected:
    Leaf& leafIn(int container, const std::string& name, const std::string& field) {
        return putLeaf(add(name, container), field);
    }

    std::string namesOf(const std::vector<korDataHandler*>& handlers) {
        std::string children;
        for (korDataHandler* handler : handlers)
            children += (children.empty() ? "" : " ") + std::string(handler->getPluginName());
        return children;
    }

    std::string handlersOn(korDataHandler& asking, int container) {
        std::vector<korDataHandler*> handlers;
        asking.getContainerHandlers(container, handlers);
        return namesOf(handlers);
    }

    std::string handlersBelow(korDataHandler& asking, int container, bool includeSelf) {
        std::vector<korDataHandler*> handlers;
        asking.getChildrenHandlers(container, handlers, includeSelf);
        return namesOf(handlers);
    }

    void fill(int container, int count) {
        for (int index = 0; index < count; ++index)
            putNamed<Leaf>(container, "Text", "x", std::to_string(index));
    }

    int place = add("board", root);
    Structure& board = putStructure(place, "board");
};

} // namespace

TEST_F(StructureHandler, RegistersItselfThenTheHandlersBelow) {
    Leaf& title = leafIn(place, "title", "text");
    Leaf& deep = leafIn(add("group", place), "deep", "late");
    board.Register(Text("board"), 0);
    EXPECT_EQ(pathOf(board), "board");
    EXPECT_EQ(pathOf(title), "board/text");
    EXPECT_EQ(pathOf(deep), "board/late");
    EXPECT_EQ(done.take(), "board registers structure board, title unregisters, deep unregisters, "
                           "title registers text, board takes title as text 0, "
                           "deep registers late, board takes deep as late 1");
}

TEST_F(StructureHandler, RegisterAlwaysRefreshesItAndTheHandlersBelow) {
    Leaf& title = leafIn(place, "title", "text");
    board.Register(Text("board"), 0);
    tree()->setFieldData(Text("board/text"), Text("sunny"));
    DataHandler keeper(Text("keeper"));
    title.getField()->registerHandler(&keeper);
    heard.take();
    board.Register(Text("board"), 0);
    // Once because it joins the field.
    EXPECT_EQ(heard.take(), "title text=sunny, title text=sunny");
    title.getField()->unregisterHandler(&keeper);
}

TEST_F(StructureHandler, AConstNameRegistersThePlugInAlone) {
    Leaf& title = leafIn(place, "title", "text");
    board.Register("board", 0);
    EXPECT_EQ(pathOf(board), "board");
    EXPECT_EQ(title.getField(), nullptr);
    EXPECT_EQ(done.take(), "board registers board quietly");
}

TEST_F(StructureHandler, TakesItsOwnFieldName) {
    board.setFieldName("board");
    board.Register(const_cast<char*>(board.getFieldName()), 0);
    EXPECT_EQ(pathOf(board), "board");
}

TEST_F(StructureHandler, TheNameOutlivesWhatThePlugInsDoToIt) {
    Leaf& title = leafIn(place, "title", "text");
    const std::string name(60, 'n');
    board.setFieldName(name.c_str());
    title.onUnregister = [this] { board.setFieldName("other"); };
    board.Register(const_cast<char*>(board.getFieldName()), 0);
    EXPECT_EQ(pathOf(board), name);
    EXPECT_EQ(board.getFieldName(), name);
}

TEST_F(StructureHandler, UnregistersTheHandlersBelowThenItself) {
    Leaf& title = leafIn(place, "title", "text");
    Leaf& deep = leafIn(add("group", place), "deep", "late");
    board.Register(Text("board"), 0);
    done.take();
    std::string fields;
    deep.onUnregister = [&] { fields = pathOf(board) + ' ' + pathOf(title) + ' ' + pathOf(deep); };
    board.Unregister();
    EXPECT_EQ(fields, "board  board/late");
    EXPECT_EQ(done.take(), "board unregisters, title unregisters, deep unregisters");
    EXPECT_EQ(board.getField(), nullptr);
    EXPECT_EQ(title.getField(), nullptr);
    EXPECT_EQ(deep.getField(), nullptr);
    EXPECT_EQ(at("board"), nullptr);
}

TEST_F(StructureHandler, UnregisterForgetsTheParent) {
    Structure& outer = putStructure(root, "outer");
    outer.Register(Text("outer"), 0);
    EXPECT_EQ(board.getParent(), &outer);
    EXPECT_EQ(pathOf(board), "outer/board");
    board.Unregister();
    EXPECT_EQ(board.getParent(), nullptr);
    EXPECT_EQ(pathOf(outer), "outer");
}

TEST_F(StructureHandler, RegisterMovesAllToAnotherField) {
    Leaf& title = leafIn(place, "title", "text");
    board.Register(Text("board"), 0);
    board.Register(Text("panel"), 0);
    EXPECT_EQ(pathOf(title), "panel/text");
    EXPECT_EQ(at("board"), nullptr);
}

TEST_F(StructureHandler, ChildrenWithAbsoluteNamesStayOnTheTree) {
    Leaf& title = leafIn(place, "title", "/text");
    Leaf& seeker = leafIn(place, "seeker", "*text");
    board.Register(Text("board"), 0);
    EXPECT_EQ(pathOf(title), "text");
    EXPECT_EQ(pathOf(seeker), "text");
}

TEST_F(StructureHandler, ChildrenOfArraysHaveTheElementsInOrder) {
    addArray("points", "Point", 4);
    const int list = add("list", root);
    Structure& array = putArray(list, "points[1-4]");
    Leaf& first = leafIn(list, "first", "x");
    Leaf& second = leafIn(list, "second", "x");
    array.Register(Text("points[1-4]"), 0);
    EXPECT_EQ(pathOf(first), "points[1]/x");
    EXPECT_EQ(pathOf(second), "points[2]/x");
    // Else the fields would go with their last handler.
    DataHandler firstKeeper(Text("first"));
    DataHandler secondKeeper(Text("second"));
    first.getField()->registerHandler(&firstKeeper);
    second.getField()->registerHandler(&secondKeeper);
    array.Register(Text("points[0-4]"), 0);
    EXPECT_EQ(pathOf(first), "points[0]/x");
    EXPECT_EQ(pathOf(second), "points[1]/x");
    firstKeeper.getField()->unregisterHandler(&firstKeeper);
    secondKeeper.getField()->unregisterHandler(&secondKeeper);
}

TEST_F(StructureHandler, RegisterChildNeedsANode) {
    Leaf& title = leafIn(place, "title", "text");
    board.RegisterChild(&title, "text", 0);
    EXPECT_EQ(title.getField(), nullptr);
    board.fieldType = DataValue::getClassType();
    board.Register("board", 0);
    ASSERT_NE(board.getField(), nullptr);
    board.RegisterChild(&title, "text", 0);
    EXPECT_EQ(title.getField(), nullptr);
    board.Unregister();
    board.fieldType = DataStructure::getClassType();
    board.Register("board", 0);
    board.RegisterChild(&title, "text", 7);
    EXPECT_EQ(pathOf(title), "board/text");
    board.korDataStructureHandler::RegisterChild(nullptr, "text", 0);
}

TEST_F(StructureHandler, RegisterChildAddsTheOffset) {
    addArray("points", "Point", 5);
    const int list = add("list", root);
    Structure& array = putArray(list, "");
    array.korDataHandler::Register("points[2-5]", 0);
    Leaf& title = leafIn(list, "title", "x");
    array.RegisterChild(&title, "x", 1);
    EXPECT_EQ(pathOf(title), "points[3]/x");
}

TEST_F(StructureHandler, UnregisterAllChildrenTakesTheOwnContainerToo) {
    Leaf& beside = putNamed<Leaf>(place, "Text", "x", "beside");
    Leaf& below = leafIn(place, "below", "y");
    Leaf& outside = leafIn(root, "outside", "z");
    board.Register("board", 0);
    beside.Register("x", 0);
    below.Register("y", 0);
    outside.Register("z", 0);
    done.take();
    board.UnregisterAllChildren();
    EXPECT_EQ(done.take(), "beside unregisters, below unregisters");
    EXPECT_EQ(beside.getField(), nullptr);
    EXPECT_EQ(below.getField(), nullptr);
    EXPECT_EQ(pathOf(outside), "z");
    EXPECT_EQ(pathOf(board), "board");
}

TEST_F(StructureHandler, HandlersBesideAreNotRegisteredAgain) {
    Leaf& beside = putNamed<Leaf>(place, "Text", "x", "beside");
    beside.Register("x", 0);
    board.Register(Text("board"), 0);
    EXPECT_EQ(beside.getField(), nullptr);
}

TEST_F(StructureHandler, WithoutAFieldNoChildIsRegistered) {
    leafIn(place, "title", "text");
    board.registerChildrenHandlers();
    EXPECT_EQ(done.take(), "");
    board.Register(Text(""), 0);
    EXPECT_EQ(done.take(), "board registers structure , title unregisters");
}

TEST_F(StructureHandler, OnAValueNoChildIsRegistered) {
    Leaf& title = leafIn(place, "title", "text");
    board.fieldType = DataValue::getClassType();
    board.Register(Text("board"), 0);
    EXPECT_EQ(done.take(), "board registers structure board, title unregisters");
    EXPECT_EQ(title.getField(), nullptr);
    tree()->setFieldData(Text("board"), Text("sunny"));
    heard.take();
    board.Register(Text("board"), 0);
    EXPECT_EQ(heard.take(), "board board=sunny");
}

TEST_F(StructureHandler, NestedStructuresTakeTheirOwnChildren) {
    const int inner = add("inner", place);
    Structure& box = putStructure(inner, "box");
    Leaf& title = leafIn(inner, "title", "text");
    board.Register(Text("board"), 0);
    EXPECT_EQ(pathOf(box), "board/box");
    EXPECT_EQ(pathOf(title), "board/box/text");
    EXPECT_EQ(title.getParent(), &box);
    EXPECT_EQ(done.take(), "board registers structure board, inner unregisters, title unregisters, "
                           "inner registers box, board takes inner as box 0, "
                           "title registers text, inner takes title as text 0");
}

TEST_F(StructureHandler, ChildrenWhoseParentHasGoneRegisterOnTheTree) {
    Leaf& title = leafIn(place, "title", "text");
    board.Register(Text("board"), 0);
    destroy(board);
    title.Register(title.getFieldName(), 1);
    EXPECT_EQ(pathOf(title), "text");
}

TEST_F(StructureHandler, SyncChildrenDoesNothing) {
    leafIn(place, "title", "text");
    std::vector<int> indices{1, 2};
    board.syncChildren(&board, indices);
    EXPECT_EQ(indices, (std::vector<int>{1, 2}));
    EXPECT_EQ(done.take(), "");
}

TEST_F(StructureHandler, GeometryPlugInsMayChangeTheContainersBelow) {
    for (const std::string plugin : {"Data3DObject", "DataGeom"}) {
        const int list = add("list", root);
        Structure& structure = putStructure(list, "board");
        auto& maker = putNamed<Leaf>(add("maker", list), "Geometry", "model", plugin);
        leafIn(list, "last", "text");
        maker.onRegister = [&, this] {
            maker.onRegister = {};
            host.removeContainer(host.containers.at(list).children.back());
            leafIn(maker.getLocalContainer().id, "made", "one");
            leafIn(list, "added", "two");
        };
        done.take();
        structure.Register(Text("panel"), 0);
        EXPECT_EQ(done.take(), "list registers structure panel, " + plugin + " unregisters, last unregisters, " +
                                   plugin + " registers model, list takes " + plugin + " as model 0, " +
                                   "made registers one, list takes made as one 0, " +
                                   "added registers two, list takes added as two 1");
        structure.Unregister();
    }
}

TEST_F(StructureHandler, WalksGoOnByPositionInTheNewList) {
    auto& maker = putNamed<Leaf>(add("maker", place), "Geometry", "model", "DataGeom");
    leafIn(place, "last", "text");
    maker.onRegister = [&, this] {
        // In front of the maker, which is the second now and therefore the next.
        maker.onRegister = {};
        auto& children = host.containers.at(place).children;
        leafIn(place, "early", "one");
        std::rotate(children.begin(), children.end() - 1, children.end());
    };
    board.Register(Text("board"), 0);
    EXPECT_EQ(done.take(), "board registers structure board, DataGeom unregisters, last unregisters, "
                           "DataGeom registers model, board takes DataGeom as model 1, "
                           "DataGeom registers model, board takes DataGeom as model 1, "
                           "last registers text, board takes last as text 2");
}

TEST_F(StructureHandler, AShorterListEndsTheWalk) {
    leafIn(place, "first", "one");
    auto& maker = putNamed<Leaf>(add("maker", place), "Geometry", "model", "DataGeom");
    const int third = add("third", place);
    putLeaf(third, "three");
    maker.onRegister = [&, this] { host.removeContainer(third); };
    board.Register(Text("board"), 0);
    EXPECT_EQ(done.take(), "board registers structure board, first unregisters, DataGeom unregisters, third "
                           "unregisters, first registers one, board takes first as one 0, "
                           "DataGeom registers model, board takes DataGeom as model 1");
}

TEST_F(StructureHandler, OtherPlugInsChangeNothingForTheWalk) {
    for (const std::string plugin : {"data3dobject", "DataGeomX", "Data3DObjects", "DataGeo"}) {
        const int list = add("list", root);
        Structure& structure = putStructure(list, "board");
        auto& maker = putNamed<Leaf>(add("maker", list), "Data3DObject", "model", plugin);
        maker.onRegister = [&, this] { leafIn(list, "added", "two"); };
        done.take();
        structure.Register(Text("panel"), 0);
        EXPECT_EQ(done.take(), "list registers structure panel, " + plugin + " unregisters, " + plugin +
                                   " registers model, list takes " + plugin + " as model 0");
        structure.Unregister();
    }
}

TEST_F(StructureHandler, TheHandlersOfAContainerAreInTheOrderOfTheHost) {
    const int other = add("other", root);
    putNamed<Leaf>(other, "Text", "", "c");
    putNamed<Leaf>(other, "Image", "", "a");
    putNamed<Leaf>(other, "Text", "", "b");
    EXPECT_EQ(handlersOn(board, other), "c a b");
    EXPECT_EQ(host.log.size(), 3U);
}

TEST_F(StructureHandler, AListThatTheHostLeavesOpenEndsBehindItsPlugIns) {
    const int other = add("other", root);
    const int single = add("single", root);
    for (const char* name : {"a", "b", "c"})
        putNamed<Leaf>(other, "Text", "", name);
    putNamed<Leaf>(single, "Text", "", "d");
    host.leavesListsOpen = true;
    EXPECT_EQ(handlersOn(board, other), "a b c");
    EXPECT_EQ(handlersOn(board, single), "d");
    EXPECT_EQ(handlersOn(board, single), "d");
}

TEST_F(StructureHandler, HandlersAreAppended) {
    Leaf& title = leafIn(place, "title", "");
    std::vector<korDataHandler*> handlers{&board};
    board.getContainerHandlers(title.getLocalContainer(), handlers);
    EXPECT_EQ(namesOf(handlers), "board title");
    board.getChildrenHandlers(place, handlers, false);
    EXPECT_EQ(namesOf(handlers), "board title title");
}

TEST_F(StructureHandler, TheOneThatAsksIsLeftOut) {
    putNamed<Leaf>(place, "Text", "", "beside");
    EXPECT_EQ(handlersOn(board, place), "beside");
    EXPECT_EQ(handlersBelow(board, place, true), "beside");
}

TEST_F(StructureHandler, OnlyOwnRecordsWithAHandlerAndAValidContainerCount) {
    const int other = add("other", root);
    host.addPlugin(other, "Foreign");
    recordOf(putNamed<Leaf>(other, "Text", "", "foreign")).marker = 9474;
    recordOf(putNamed<Leaf>(other, "Text", "", "unbuilt")).handler = nullptr;
    recordOf(putNamed<Leaf>(other, "Text", "", "nowhere")).container = 12345;
    recordOf(putNamed<Leaf>(other, "Text", "", "lost")).container = -1;
    recordOf(putNamed<Leaf>(other, "Text", "", "elsewhere")).container = root;
    putNamed<Leaf>(other, "Text", "", "here");
    EXPECT_EQ(handlersOn(board, other), "elsewhere here");
}

TEST_F(StructureHandler, InvalidPlugInsArePassedOver) {
    const int other = add("other", root);
    putNamed<Leaf>(other, "Text", "", "a");
    putNamed<Leaf>(other, "Text", "", "b");
    auto& plugins = host.containers.at(other).plugins;
    plugins.insert(plugins.begin() + 1, 12345);
    EXPECT_EQ(handlersOn(board, other), "a b");
    // This one ends the list.
    plugins.insert(plugins.begin() + 1, -1);
    EXPECT_EQ(handlersOn(board, other), "a");
}

TEST_F(StructureHandler, InvalidContainersHaveNoHandlers) {
    EXPECT_EQ(handlersOn(board, -1), "");
    EXPECT_EQ(handlersOn(board, 12345), "");
    EXPECT_EQ(handlersBelow(board, -1, true), "");
    EXPECT_EQ(handlersBelow(board, 12345, true), "");
}

TEST_F(StructureHandler, TwentyPlugInsCount) {
    const int other = add("other", root);
    const std::string all = "0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19";
    fill(other, 20);
    EXPECT_EQ(handlersOn(board, other), all);
    putNamed<Leaf>(other, "Text", "x", "20");
    EXPECT_EQ(handlersOn(board, other), all);
    EXPECT_EQ(handlersBelow(board, other, true), all);
}

TEST_F(StructureHandler, TheTwentyFirstIsNeverRegistered) {
    const int below = add("below", place);
    fill(below, 21);
    done.take();
    board.Register(Text("board"), 0);
    std::size_t registered = 0;
    std::string calls = done.take();
    for (std::size_t found = calls.find(" registers x"); found != std::string::npos;
         found = calls.find(" registers x", found + 1))
        ++registered;
    EXPECT_EQ(registered, 20U);
    EXPECT_EQ(calls.find("20 registers"), std::string::npos);
}

TEST_F(StructureHandler, HandlersBelowAreListedDepthFirst) {
    const int a = add("a", root);
    const int b = add("b", root);
    putLeaf(root, "");
    putLeaf(b, "");
    putLeaf(add("a1", a), "");
    putLeaf(a, "");
    putLeaf(add("deep", add("a2", a)), "");
    putLeaf(add("b1", b), "");
    Leaf outside(heard, done, "outside");
    EXPECT_EQ(handlersBelow(outside, root, false), "board a a1 deep b b1");
    EXPECT_EQ(handlersBelow(outside, root, true), "root board a a1 deep b b1");
    EXPECT_EQ(handlersBelow(outside, a, true), "a a1 deep");
    EXPECT_EQ(handlersBelow(outside, a, false), "a1 deep");
}
