#include <support/HostScene.h>
#include <support/TreeCleanup.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <vector>

/// What plug-ins do to the scene, to each other and to the tree while the library calls them.

namespace {

/// A structure "board" with the leaves "a", "b" and "c" below it, on the fields of the same names.
class HostReentrancy : public HostScene {
protected:
    HostReentrancy() {
        for (const char* name : {"a", "b", "c"})
            leaves.push_back(&putLeaf(add(name, place), name));
    }

    int containerOf(korDataHandler& handler) { return handler.getLocalContainer().id; }

    static std::string inits(const std::string& name) { return name + " function init, " + name + " init"; }

    /// As if it had been in the tree before the scene was loaded, observed by nobody of the scene.
    void fillBoard() {
        for (const char* path : {"node:board/string:a", "node:board/string:b", "node:board/string:c"})
            tree()->getField(Text(path), 0, 1);
        for (const char* path : {"board/a", "board/b", "board/c"})
            tree()->setFieldData(Text(path), Text("1"));
    }

    void removeBoardField() {
        DataField* const field = at("board");
        ASSERT_NE(field, nullptr);
        tree()->removeField(Text("board"), -1);
        if (field->isOfType(DataNode::getClassType()) != 0)
            deleteSubtree(*static_cast<DataNode*>(field));
        delete field;
    }

    int place = add("board", root);
    Structure& board = putStructure(place, "board");
    std::vector<Leaf*> leaves;
};

class WhileRegistering : public HostReentrancy {
protected:
    /// Registers the structure; the second leaf reacts before it registers.
    std::string registerWith(std::function<void()> reaction) {
        board.Register("board", 0);
        done.take();
        leaves[1]->onRegister = [this, reaction] {
            const auto once = reaction;
            leaves[1]->onRegister = {};
            once();
        };
        board.registerChildrenHandlers();
        return done.takeNames();
    }
};

const std::string allInTurn = "aboardbboardcboard";

} // namespace

TEST_F(WhileRegistering, OneDestroysItself) {
    EXPECT_EQ(registerWith([&] { destroy(*leaves[1]); }), "aboardbcboard");
    EXPECT_EQ(pathOf(*leaves[2]), "board/c");
}

TEST_F(WhileRegistering, OneDestroysAnEarlierOne) {
    EXPECT_EQ(registerWith([&] { destroy(*leaves[0]); }), allInTurn);
    EXPECT_EQ(pathOf(*leaves[1]), "board/b");
    EXPECT_EQ(at("board/a"), nullptr);
}

TEST_F(WhileRegistering, OneDestroysALaterOne) {
    EXPECT_EQ(registerWith([&] { destroy(*leaves[2]); }), "aboardbboard");
    EXPECT_EQ(pathOf(*leaves[1]), "board/b");
}

TEST_F(WhileRegistering, OneDestroysTheStructure) {
    EXPECT_EQ(registerWith([&] { destroy(board); }), "aboardb");
    EXPECT_EQ(leaves[0]->getParent(), nullptr);
    EXPECT_EQ(pathOf(*leaves[1]), "b");
    EXPECT_EQ(leaves[2]->getField(), nullptr);
}

TEST_F(WhileRegistering, OneUnregistersTheStructure) {
    EXPECT_EQ(registerWith([&] { board.Unregister(); }), "aboard"
                                                         "b"
                                                         "boardabc"
                                                         "boardcboard");
    for (Leaf* leaf : leaves)
        EXPECT_EQ(leaf->getField(), nullptr);
    EXPECT_EQ(at("board"), nullptr);
}

TEST_F(WhileRegistering, OneMovesTheStructure) {
    registerWith([&] { board.Register(Text("panel"), 0); });
    EXPECT_EQ(pathOf(*leaves[0]), "panel/a");
    EXPECT_EQ(pathOf(*leaves[1]), "panel/b");
    EXPECT_EQ(pathOf(*leaves[2]), "panel/c");
    EXPECT_EQ(at("board"), nullptr);
}

TEST_F(WhileRegistering, OneUnregistersAllChildren) {
    registerWith([&] { board.UnregisterAllChildren(); });
    EXPECT_EQ(leaves[0]->getField(), nullptr);
    EXPECT_EQ(pathOf(*leaves[1]), "board/b");
    EXPECT_EQ(pathOf(*leaves[2]), "board/c");
}

TEST_F(WhileRegistering, OneRegistersAllAgain) {
    EXPECT_EQ(registerWith([&] { board.registerChildrenHandlers(); }), "aboardb" + allInTurn + "boardcboard");
    EXPECT_EQ(pathOf(*leaves[2]), "board/c");
}

TEST_F(WhileRegistering, OneStartsATraversal) {
    registerWith([&] { initOrbel(); });
    EXPECT_EQ(heard.take(), inits("a") + ", " + inits("b") + ", " + inits("c"));
    EXPECT_EQ(pathOf(*leaves[2]), "board/c");
}

TEST_F(WhileRegistering, OneDeletesTheFieldOfTheStructure) {
    registerWith([&] { removeBoardField(); });
    EXPECT_EQ(board.getField(), nullptr);
    for (Leaf* leaf : leaves)
        EXPECT_EQ(leaf->getField(), nullptr);
}

TEST_F(WhileRegistering, OneAddsAPlugIn) {
    EXPECT_EQ(registerWith([&] { putLeaf(add("d", place), "d"); }), allInTurn);
}

TEST_F(WhileRegistering, OneRemovesTheContainerOfALaterOne) {
    // The plug-in is still there, though nowhere in the scene: it has no structure above.
    EXPECT_EQ(registerWith([&] { host.removeContainer(containerOf(*leaves[2])); }), "aboardbboardc");
    EXPECT_EQ(pathOf(*leaves[2]), "c");
}

TEST_F(WhileRegistering, OneRemovesItsOwnContainer) {
    EXPECT_EQ(registerWith([&] { host.removeContainer(containerOf(*leaves[1])); }), "aboardbcboard");
    EXPECT_EQ(pathOf(*leaves[1]), "b");
    EXPECT_EQ(pathOf(*leaves[2]), "board/c");
}

TEST_F(WhileRegistering, OneRemovesTheContainerOfTheStructure) {
    EXPECT_EQ(registerWith([&] { host.removeContainer(place); }), "aboardbc");
    EXPECT_EQ(pathOf(*leaves[0]), "board/a");
    EXPECT_EQ(pathOf(*leaves[2]), "c");
}

TEST_F(WhileRegistering, IndexesFollowTheContainersThatAreLeft) {
    board.Register("board", 0);
    done.take();
    leaves[1]->onRegister = [this] { host.removeContainer(containerOf(*leaves[0])); };
    board.registerChildrenHandlers();
    EXPECT_EQ(done.take(), "a registers a, board takes a as a 0, b registers b, board takes b as b 0, "
                           "c registers c, board takes c as c 1");
}

namespace {

/// The fields are there and have values, so all hear them when they join.
class WhileTold : public HostReentrancy {
protected:
    WhileTold() { fillBoard(); }

    std::string registerWith(std::function<void()> reaction) {
        leaves[1]->onceThen(std::move(reaction));
        board.Register(Text("board"), 0);
        return heard.takeNames();
    }
};

} // namespace

TEST_F(WhileTold, AllHearTheirValueWhenTheyJoinAndOnceMore) {
    EXPECT_EQ(registerWith([] {}), "aabbcc");
}

TEST_F(WhileTold, OneDestroysItself) {
    EXPECT_EQ(registerWith([&] { destroy(*leaves[1]); }), "aabcc");
}

TEST_F(WhileTold, OneDestroysOthers) {
    EXPECT_EQ(registerWith([&] {
                  destroy(*leaves[0]);
                  destroy(*leaves[2]);
              }),
              "aabb");
}

TEST_F(WhileTold, OneDestroysTheStructure) {
    EXPECT_EQ(registerWith([&] { destroy(board); }), "aabb");
    EXPECT_EQ(leaves[2]->getField(), nullptr);
}

TEST_F(WhileTold, OneDestroysTheStructureAndItself) {
    EXPECT_EQ(registerWith([&] {
                  destroy(board);
                  destroy(*leaves[1]);
              }),
              "aab");
}

TEST_F(WhileTold, OneDeletesTheFieldOfAll) {
    registerWith([&] { removeBoardField(); });
    for (Leaf* leaf : leaves)
        EXPECT_EQ(leaf->getField(), nullptr);
}

TEST_F(WhileTold, OneUnregistersAllChildren) {
    registerWith([&] { board.UnregisterAllChildren(); });
    EXPECT_EQ(leaves[0]->getField(), nullptr);
    EXPECT_EQ(pathOf(*leaves[2]), "board/c");
}

TEST_F(WhileTold, OneMovesTheStructure) {
    registerWith([&] { board.Register(Text("panel"), 0); });
    for (Leaf* leaf : leaves)
        EXPECT_EQ(pathOf(*leaf), std::string("panel/") + leaf->getPluginName());
}

TEST_F(WhileTold, AStructureDestroysItselfAsItHearsItsValue) {
    const int value = add("value", root);
    tree()->getField(Text("string:late"), 0, 1);
    tree()->setFieldData(Text("late"), Text("1"));
    Structure& late = putStructure(value, "late");
    late.onceThen([&] { destroy(late); });
    late.Register(Text("late"), 0);
    EXPECT_EQ(heard.take(), "value late=1");
}

namespace {

class WhileUnregistering : public HostReentrancy {
protected:
    WhileUnregistering() {
        board.Register(Text("board"), 0);
        done.take();
    }

    std::string unregisterWith(std::function<void()> reaction) {
        leaves[1]->onUnregister = [this, reaction] {
            const auto once = reaction;
            leaves[1]->onUnregister = {};
            once();
        };
        board.Unregister();
        return done.takeNames();
    }
};

} // namespace

TEST_F(WhileUnregistering, OneDestroysItself) {
    EXPECT_EQ(unregisterWith([&] { destroy(*leaves[1]); }), "boardabc");
    EXPECT_EQ(board.getField(), nullptr);
}

TEST_F(WhileUnregistering, OneDestroysOthers) {
    EXPECT_EQ(unregisterWith([&] {
                  destroy(*leaves[0]);
                  destroy(*leaves[2]);
              }),
              "boardab");
    EXPECT_EQ(board.getField(), nullptr);
}

TEST_F(WhileUnregistering, OneDestroysTheStructure) {
    keep(*board.getField());
    EXPECT_EQ(unregisterWith([&] { destroy(board); }), "boardabc");
    EXPECT_EQ(leaves[2]->getField(), nullptr);
}

TEST_F(WhileUnregistering, OneUnregistersTheStructureAgain) {
    keep(*board.getField());
    EXPECT_EQ(unregisterWith([&] { board.Unregister(); }), "boardabboardc");
    EXPECT_EQ(board.getField(), nullptr);
}

TEST_F(WhileUnregistering, OneUnregistersAllChildrenAgain) {
    EXPECT_EQ(unregisterWith([&] { board.UnregisterAllChildren(); }), "boardabc");
    for (Leaf* leaf : leaves)
        EXPECT_EQ(leaf->getField(), nullptr);
}

TEST_F(WhileUnregistering, OneRegistersItselfAgain) {
    // It leaves only after that.
    EXPECT_EQ(unregisterWith([&] { leaves[1]->Register("late", 0); }), "boardabbboardc");
    EXPECT_EQ(leaves[1]->getField(), nullptr);
}

TEST_F(WhileUnregistering, OneAddsAPlugIn) {
    EXPECT_EQ(unregisterWith([&] { putLeaf(add("d", place), "d"); }), "boardabc");
}

TEST_F(WhileUnregistering, OneRemovesTheContainerOfTheStructure) {
    EXPECT_EQ(unregisterWith([&] { host.removeContainer(place); }), "boardabc");
    EXPECT_EQ(leaves[2]->getField(), nullptr);
}

TEST_F(WhileUnregistering, OneDeletesTheFieldOfAll) {
    EXPECT_EQ(unregisterWith([&] { removeBoardField(); }), "boardabc");
    EXPECT_EQ(board.getField(), nullptr);
}

TEST_F(WhileUnregistering, OneIsReplacedByAnotherAtTheSameAddress) {
    // A plug-in that took the address of one that had been unregistered was left on its field.
    struct Place {
        alignas(Leaf) unsigned char bytes[sizeof(Leaf)];
    };
    const auto memory = std::make_unique<Place>();
    const int inner = add("inner", place);
    const int deep = add("deep", inner);
    CONTAINER container = deep;
    korPluginRecord record;
    const auto build = [&] {
        auto* const leaf = new (memory->bytes) Leaf(heard, done, "replaced");
        SCENE scene = host.localScene;
        leaf->init(scene.id);
        leaf->setLocalScene(scene);
        leaf->setLocalContainer(container);
        record.handler = leaf;
        return leaf;
    };
    Leaf* leaf = build();
    host.addPlugin(deep, "Text", &record);
    leaf->Register("x", 0);
    putStructure(inner, "late");
    // Before the structure further in is unregistered, but after the plug-in was.
    host.containers.at(inner).plugins.push_back(host.containers.at(inner).plugins.front());
    Leaf& last = putLeaf(add("last", place), "");
    Structure& lastStructure = putStructure(containerOf(last), "");
    container = add("below last", containerOf(last));
    last.onUnregister = [&] {
        leaf->~Leaf();
        host.removePlugin(host.pluginOn(deep, "Text"));
        leaf = build();
        host.addPlugin(container.id, "Text", &record);
        leaf->RegisterField("y", 0);
    };
    board.Unregister();
    EXPECT_EQ(lastStructure.getField(), nullptr);
    EXPECT_EQ(leaf->getField(), nullptr);
    record.handler = nullptr;
    leaf->~Leaf();
}

TEST_F(WhileUnregistering, AStructureFurtherInMayGo) {
    const int inner = add("inner", place);
    Structure& box = putStructure(inner, "box");
    Leaf& first = putLeaf(add("x", inner), "x");
    Leaf& second = putLeaf(add("y", inner), "y");
    board.Register(Text("board"), 0);
    ASSERT_EQ(pathOf(second), "board/box/y");
    keep(*box.getField());
    done.take();
    first.onUnregister = [&] { destroy(box); };
    EXPECT_EQ(unregisterWith([] {}), "boardabcinnerxy");
    EXPECT_EQ(first.getField(), nullptr);
    EXPECT_EQ(second.getField(), nullptr);
}

TEST_F(WhileUnregistering, AContainerFurtherInMayGo) {
    const int inner = add("inner", place);
    Structure& box = putStructure(inner, "box");
    Leaf& first = putLeaf(add("x", inner), "x");
    Leaf& second = putLeaf(add("y", inner), "y");
    board.Register(Text("board"), 0);
    keep(*box.getField());
    done.take();
    first.onUnregister = [&] { host.removeContainer(inner); };
    EXPECT_EQ(unregisterWith([] {}), "boardabcinnerxy");
    EXPECT_EQ(second.getField(), nullptr);
}

TEST_F(WhileUnregistering, ContainersFurtherInAreLeftAfterThoseBelowThem) {
    const int inner = add("inner", place);
    Structure& box = putStructure(inner, "box");
    Leaf& leaf = putLeaf(add("x", inner), "x");
    board.Register(Text("board"), 0);
    done.take();
    std::string fields;
    leaf.onUnregister = [&] { fields = pathOf(board) + ' ' + pathOf(box) + ' ' + pathOf(leaf); };
    board.Unregister();
    EXPECT_EQ(fields, "board board/box board/box/x");
    EXPECT_EQ(tree()->getNumFields(), 0);
}

TEST_F(HostReentrancy, TwoStructuresOnOneContainerUnregisterEachOtherOnce) {
    Structure& other = putNamed<Structure>(place, "DataObject", "other", "other");
    other.Register("other", 0);
    board.Register(Text("board"), 0);
    EXPECT_EQ(done.take(), "other registers other quietly, board registers structure board, other unregisters, "
                           "a unregisters, b unregisters, c unregisters, a registers a, board takes a as a 0, "
                           "b registers b, board takes b as b 1, c registers c, board takes c as c 2");
    EXPECT_EQ(other.getField(), nullptr);
    EXPECT_EQ(pathOf(board), "board");
    other.Unregister();
    EXPECT_EQ(done.take(), "other unregisters, board unregisters, a unregisters, b unregisters, c unregisters");
    EXPECT_EQ(board.getField(), nullptr);
}

TEST_F(HostReentrancy, AHandlerDestroyedByThePassBeforeLeavesNoTrace) {
    board.Register(Text("board"), 0);
    board.Unregister();
    destroy(*leaves[0]);
    board.Register(Text("board"), 0);
    EXPECT_EQ(pathOf(*leaves[1]), "board/b");
}

namespace {

class WhileTraversing : public HostReentrancy {
protected:
    std::string traverseWith(std::function<void()> reaction) {
        leaves[1]->onceThen(std::move(reaction));
        initOrbel();
        return heard.take();
    }

    const std::string all = inits("a") + ", " + inits("b") + ", " + inits("c");
};

} // namespace

TEST_F(WhileTraversing, OneDestroysItself) {
    EXPECT_EQ(traverseWith([&] { destroy(*leaves[1]); }), inits("a") + ", b function init, " + inits("c"));
}

TEST_F(WhileTraversing, OneDestroysItselfInTheSecondCallback) {
    EXPECT_EQ(traverseWith([&] { leaves[1]->onceThen([&] { destroy(*leaves[1]); }); }), all);
}

TEST_F(WhileTraversing, OneDestroysItselfAsItHearsItsValue) {
    fillBoard();
    EXPECT_EQ(traverseWith([&] { destroy(*leaves[1]); }), "a a=1, " + inits("a") + ", b b=1, c c=1, " + inits("c"));
}

TEST_F(WhileTraversing, OneDestroysAnEarlierOne) {
    EXPECT_EQ(traverseWith([&] { destroy(*leaves[0]); }), all);
}

TEST_F(WhileTraversing, OneDestroysALaterOne) {
    // Its record is without a handler then, which the host is asked to build.
    EXPECT_EQ(traverseWith([&] { destroy(*leaves[2]); }), inits("a") + ", " + inits("b"));
}

TEST_F(WhileTraversing, OneDestroysTheStructureAbove) {
    EXPECT_EQ(traverseWith([&] { destroy(board); }), all);
    EXPECT_NE(leaves[2]->getField(), nullptr);
}

TEST_F(WhileTraversing, OneDeletesTheFieldOfTheStructureAbove) {
    EXPECT_EQ(traverseWith([&] { removeBoardField(); }), all);
    EXPECT_EQ(pathOf(*leaves[2]), "c");
}

TEST_F(WhileTraversing, OneRemovesItsContainer) {
    Leaf& below = putLeaf(add("below", containerOf(*leaves[1])), "below");
    EXPECT_EQ(traverseWith([&] { host.removeContainer(containerOf(*leaves[1])); }), all);
    EXPECT_EQ(below.getField(), nullptr);
}

TEST_F(WhileTraversing, OneRemovesTheNextContainer) {
    Leaf& last = putLeaf(add("d", place), "d");
    EXPECT_EQ(traverseWith([&] { host.removeContainer(containerOf(*leaves[2])); }),
              inits("a") + ", " + inits("b") + ", " + inits("d"));
    EXPECT_EQ(pathOf(last), "board/d");
}

TEST_F(WhileTraversing, OneRemovesTheContainerAbove) {
    Leaf& last = putLeaf(add("d", root), "d");
    EXPECT_EQ(traverseWith([&] { host.removeContainer(place); }), inits("a") + ", " + inits("b") + ", " + inits("d"));
    EXPECT_EQ(pathOf(last), "d");
}

TEST_F(WhileTraversing, OneRemovesEverything) {
    EXPECT_EQ(traverseWith([&] { host.removeContainer(root); }), inits("a") + ", " + inits("b"));
}

TEST_F(WhileTraversing, OneAddsAContainerBelow) {
    EXPECT_EQ(traverseWith([&] { putLeaf(add("d", containerOf(*leaves[1])), "d"); }),
              inits("a") + ", " + inits("b") + ", " + inits("d") + ", " + inits("c"));
}

TEST_F(WhileTraversing, OneAddsAContainerBeside) {
    // Siblings are those that were there when the first of them had its turn.
    EXPECT_EQ(traverseWith([&] { putLeaf(add("d", place), "d"); }), all);
}

TEST_F(WhileTraversing, OneRemovesAPlugInOfItsContainer) {
    Leaf& beside = putNamed<Leaf>(containerOf(*leaves[1]), "Image", "beside", "beside");
    EXPECT_EQ(traverseWith([&] { host.removePlugin(host.pluginOn(containerOf(*leaves[1]), "Image")); }), all);
    EXPECT_EQ(beside.getField(), nullptr);
}

TEST_F(WhileTraversing, OneRegistersTheStructureElsewhere) {
    // The containers below keep the field that the traversal found.
    EXPECT_EQ(traverseWith([&] { board.korDataHandler::Register("panel", 0); }), all);
    EXPECT_EQ(pathOf(*leaves[0]).substr(pathOf(*leaves[0]).find('/')), "/a");
}

TEST_F(WhileTraversing, AStructureDestroysItselfWhenItIsBuilt) {
    const int container = add("late", root);
    korPluginRecord record;
    host.addPlugin(container, "DataStructure", &record, [&] { host.removeContainer(container); });
    EXPECT_EQ(traverseWith([] {}), all);
    EXPECT_NE(console.takeOutput().find("returned data=0 and data->handler=0\n"), std::string::npos);
}

namespace {

class DeepScene : public HostScene {
protected:
    static constexpr int depth = 1000;

    /// As many structures, `each` on every container, the containers below each other. Each structure unregisters those
    /// below it inside its own call: the stack of a Windows program has no room for many more.
    std::vector<Structure*> nest(int each) {
        std::vector<Structure*> structures;
        int container = root;
        const char* kinds[] = {"DataStructure", "DataArray", "DataObject"};
        for (int level = 0; level < depth / each; ++level) {
            container = add("s", container);
            for (int which = 0; which < each; ++which)
                structures.push_back(&put<Structure>(container, kinds[which], which == 0 ? "s" : ""));
        }
        return structures;
    }

    std::size_t count(const std::string& calls, const std::string& what) {
        std::size_t found = 0;
        for (std::size_t start = calls.find(what); start != std::string::npos; start = calls.find(what, start + 1))
            ++found;
        return found;
    }
};

} // namespace

TEST_F(DeepScene, NestedStructuresAreRegisteredAndUnregisteredOnce) {
    const auto structures = nest(1);
    structures[0]->Register(Text("s"), 0);
    EXPECT_EQ(structures.back()->getField()->getParent(), structures[depth - 2]->getField());
    std::string calls = done.take();
    EXPECT_EQ(count(calls, "unregisters"), depth - 1U);
    EXPECT_EQ(count(calls, " registers s"), static_cast<std::size_t>(depth));
    structures[0]->Unregister();
    calls = done.take();
    EXPECT_EQ(count(calls, "unregisters"), static_cast<std::size_t>(depth));
    EXPECT_EQ(count(calls, " registers"), 0U);
    EXPECT_EQ(structures.back()->getField(), nullptr);
    EXPECT_EQ(tree()->getNumFields(), 0);
}

TEST_F(DeepScene, SoAreSeveralOnEachContainer) {
    const auto structures = nest(2);
    structures[0]->Register(Text("s"), 0);
    EXPECT_EQ(structures[depth - 2]->getField()->getParent(), structures[depth - 4]->getField());
    EXPECT_EQ(count(done.take(), "unregisters"), depth - 1U);
    structures[0]->Unregister();
    EXPECT_EQ(count(done.take(), "unregisters"), static_cast<std::size_t>(depth));
    EXPECT_EQ(tree()->getNumFields(), 0);
}

TEST_F(DeepScene, IsTraversed) {
    int container = root;
    for (int level = 0; level < 100 * depth; ++level)
        container = add("c", container);
    Leaf& last = putLeaf(container, "last");
    initOrbel();
    EXPECT_EQ(pathOf(last), "last");
    resetAllTypedObjects();
    std::vector<korDataHandler*> handlers;
    last.getChildrenHandlers(root, handlers, true);
    EXPECT_TRUE(handlers.empty());
}

TEST_F(DeepScene, OfStructuresIsTraversed) {
    const auto structures = nest(1);
    initOrbel();
    EXPECT_EQ(structures.back()->getField()->getParent(), structures[depth - 2]->getField());
}

TEST_F(HostReentrancy, WideScenesAreTraversed) {
    Leaf* last = nullptr;
    for (int index = 0; index < 100'000; ++index)
        last = &putNamed<Leaf>(add("c", root), "Text", "x" + std::to_string(index), "c");
    initOrbel();
    EXPECT_EQ(pathOf(*last), "x99999");
    // And the board.
    EXPECT_EQ(tree()->getNumFields(), 100'001);
}
