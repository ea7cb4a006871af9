#include "Survival.h"

#include <support/Console.h>
#include <support/Environment.h>
#include <support/TestHost.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

using memory::Operate;
using memory::survivesAnywhere;

/// Plug-ins that stand for structures of the tree, and those on the containers below theirs.

namespace {

/// Keeps how often it was told, and takes no memory for it.
template <class Base>
class StagedPlugin : public Base {
public:
    StagedPlugin(const char* kind, int container, const char* field, const char* name = "staged") : m_name(name) {
        TestHost& host = TestHost::get();
        m_record.sceneId = host.localScene;
        m_record.handler = this;
        SCENE scene = host.localScene;
        CONTAINER place = container;
        this->init(scene.id);
        this->setLocalScene(scene);
        this->setLocalContainer(place);
        this->setCurrentContainer(place);
        this->setFieldName(field);
        m_plugin = host.addPlugin(container, kind, &m_record);
    }
    StagedPlugin(const StagedPlugin&) = delete;
    StagedPlugin& operator=(const StagedPlugin&) = delete;
    ~StagedPlugin() override { TestHost::get().removePlugin(m_plugin); }

    char* getPluginName() override { return m_name.data(); }
    int getPluginType() override { return 1; }
    char* getPluginFolder() override { return getPluginName(); }
    using Base::onDataChange;
    void onDataChange(char* /*fieldName*/, char* /*value*/) override { ++calls; }

    int calls = 0;

private:
    std::string m_name;
    korPluginRecord m_record{};
    int m_plugin = -1;
};

using StagedLeaf = StagedPlugin<korDataHandler>;

class StagedStructure : public StagedPlugin<korDataStructureHandler> {
public:
    using StagedPlugin::StagedPlugin;
    DataType* getFieldType() override { return DataStructure::getClassType(); }
};

/// A scene without its plug-ins. Each begins with the same ids, and so with the same tree.
struct EmptyStage {
    EmptyStage() {
        host = TestHost();
        host.keepsLog = false;
        host.localScene = host.addScene("Show/Weather");
        root = host.scenes[host.localScene].root = host.addContainer("root");
        host.localContainer = root;
    }
    EmptyStage(const EmptyStage&) = delete;
    EmptyStage& operator=(const EmptyStage&) = delete;
    ~EmptyStage() {
        deleteSubtree(*tree());
        TestHost::reset();
    }

    int add(const char* name, int parent) { return host.addContainer(name, parent); }
    Orbel* tree() { return IDataHandlerImpl::getOrbel(host.localScene, false); }

    TestHost& host = TestHost::get();
    int root = -1;
};

constexpr char boardName[] = "the board that all of them are on";

/// A structure with four containers below it: two values, a structure with a value of its own, and a plug-in that may
/// make others below it. Nothing is registered.
struct Stage : EmptyStage {
    int place = add("board", root);
    int inner = add("group", place);
    StagedStructure board{"DataStructure", place, boardName};
    StagedStructure group{"DataStructure", inner, "the group that stands on the board"};
    StagedLeaf deep{"Text", add("deep", inner), "the text that is in the group"};
    StagedLeaf title{"Text", add("title", place), "the title that stands on the board"};
    StagedLeaf maker{"Geometry", add("maker", place), "the model that stands on the board", "DataGeom"};

    std::vector<korDataHandler*> all() { return {&board, &group, &deep, &title, &maker}; }

    void registerAll() { board.Register(Text(boardName), 0); }

    /// Where the plug-ins are, and the tree.
    std::string state() {
        std::string text;
        for (korDataHandler* plugin : all())
            text += note(*plugin) + '\n';
        note(*tree(), text);
        return text;
    }

    /// Whoever is on a value hears of it.
    void probe() {
        for (StagedLeaf* leaf : {&deep, &title, &maker}) {
            if (!leaf->getField())
                continue;
            leaf->calls = 0;
            leaf->getField()->setData("a change");
            EXPECT_EQ(leaf->calls, 1) << leaf->getFieldName();
        }
    }

private:
    static std::string note(korDataHandler& plugin) {
        std::string text = std::string(plugin.getFieldName()) + " is on ";
        DataField* const field = plugin.getField();
        if (!field)
            return text + "nothing";
        bool isThere = false;
        for (int index = 0; index < field->getNumHandlers(); ++index)
            isThere = isThere || field->getHandlerByID(index) == plugin.getDataHandler();
        EXPECT_TRUE(isThere) << text;
        return text + field->getFullPath() + (plugin.getParent() ? " below another" : "");
    }

    void note(DataField& field, std::string& text) {
        text += std::string(field.getFullPath()) + ' ' + field.getTypeName() + " held " +
                std::to_string(field.getRef()) + " told " + std::to_string(field.getNumHandlers()) + '\n';
        if (field.isOfType(DataStructure::getClassType()) == 0)
            return;
        auto& node = static_cast<DataStructure&>(field);
        std::vector<DataField*> children;
        node.getFieldsVector(&children);
        for (std::size_t at = 0; at < children.size(); ++at) {
            EXPECT_EQ(node.getFieldByIndex(static_cast<int>(at)), children[at]);
            EXPECT_EQ(children[at]->getParent(), &node);
            EXPECT_EQ(tree()->getField(Text(children[at]->getFullPath()), 0, 0), children[at]);
            note(*children[at], text);
        }
    }
};

using Act = std::function<void(Stage&)>;
using Acts = std::vector<Act>;

void runAll(const Acts& acts, Stage& stage) {
    for (const Act& act : acts)
        act(stage);
}

void registerAll(Stage& stage) {
    stage.registerAll();
}

/// The plug-ins below, in the order in which they leave their fields.
const Acts leaving = {
    [](Stage& stage) { stage.deep.Unregister(); },
    [](Stage& stage) { stage.group.korDataHandler::Unregister(); },
    [](Stage& stage) { stage.title.Unregister(); },
    [](Stage& stage) { stage.maker.Unregister(); },
};

/// The same in the order in which they register.
const Acts joining = {
    [](Stage& stage) { stage.group.Register(stage.group.getFieldName(), 1); },
    [](Stage& stage) { stage.deep.Register(stage.deep.getFieldName(), 1); },
    [](Stage& stage) { stage.title.Register(stage.title.getFieldName(), 1); },
    [](Stage& stage) { stage.maker.Register(stage.maker.getFieldName(), 1); },
};

Act attachedTo(const char* name) {
    return [name](Stage& stage) { stage.board.korDataHandler::Register(name, 1); };
}

Act namedAs(const char* name) {
    return [name](Stage& stage) { stage.board.setFieldName(name); };
}

Acts operator+(Acts first, const Acts& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

class OutOfMemoryInStructureHandlers : public testing::Test {
protected:
    OutOfMemoryInStructureHandlers() {
        clearTypeVariables();
        Stage().registerAll();
        console.takeOutput();
        console.takeMessages();
    }

    /// Expects that as many of the steps are done as there was memory for, and all when it is run again.
    static void survives(const Acts& before, const Act& act, const Acts& steps) {
        std::vector<std::string> allowed;
        for (std::size_t count = 0; count <= steps.size(); ++count) {
            Stage stage;
            runAll(before, stage);
            runAll(Acts(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(count)), stage);
            allowed.push_back(stage.state());
        }
        survivesAnywhere([&](const Operate& operate) {
            Stage stage;
            runAll(before, stage);
            const bool isDone = operate([&] { act(stage); });
            const std::string state = stage.state();
            if (isDone) {
                EXPECT_EQ(state, allowed.back());
            } else {
                EXPECT_NE(std::find(allowed.begin(), allowed.end(), state), allowed.end()) << state;
            }
            stage.probe();
            act(stage);
            EXPECT_EQ(stage.state(), allowed.back());
            stage.probe();
        });
    }

    Console console;
};

} // namespace

TEST_F(OutOfMemoryInStructureHandlers, RegisterAttachesOnePlugInAfterTheOther) {
    survives({}, registerAll, Acts{attachedTo(boardName)} + joining);
}

TEST_F(OutOfMemoryInStructureHandlers, RegisterAgainTakesOffOnePlugInAfterTheOtherFirst) {
    survives({registerAll}, registerAll, leaving + Acts{attachedTo(boardName)} + joining);
}

TEST_F(OutOfMemoryInStructureHandlers, RegisterUnderAnotherNameKeepsThatName) {
    const char* const other = "another board, and all of them on it";
    survives(
        {registerAll}, [other](Stage& stage) { stage.board.Register(Text(other), 0); },
        leaving + Acts{namedAs(other), attachedTo(other)} + joining);
}

TEST_F(OutOfMemoryInStructureHandlers, RegisterAloneAttachesOrDoesNot) {
    const char* const other = "another board, and none of them on it";
    survives({}, [other](Stage& stage) { stage.board.Register(other, 0); }, {namedAs(other), attachedTo(other)});
}

TEST_F(OutOfMemoryInStructureHandlers, RegisterChildAttachesOrDoesNot) {
    const auto registerTitle = [](Stage& stage) { stage.board.RegisterChild(&stage.title, "a title by itself", 0); };
    survives({attachedTo(boardName)}, registerTitle, {registerTitle});
    // From one field to another.
    survives({registerAll}, registerTitle, {registerTitle});
}

TEST_F(OutOfMemoryInStructureHandlers, UnregisterAllChildrenTakesOffOnePlugInAfterTheOther) {
    survives(
        {registerAll}, [](Stage& stage) { stage.board.UnregisterAllChildren(); }, leaving);
}

TEST_F(OutOfMemoryInStructureHandlers, UnregisterTakesOffOnePlugInAfterTheOtherAndItselfLast) {
    survives(
        {registerAll}, [](Stage& stage) { stage.board.Unregister(); },
        leaving + Acts{[](Stage& stage) { stage.board.korDataHandler::Unregister(); }});
}

TEST_F(OutOfMemoryInStructureHandlers, UnregisterOfAStructureBelowLeavesTheOthers) {
    survives({registerAll}, [](Stage& stage) { stage.group.Unregister(); }, {leaving[0], leaving[1]});
}

TEST_F(OutOfMemoryInStructureHandlers, RegisterChildrenHandlersAttachesOnePlugInAfterTheOther) {
    survives(
        {attachedTo(boardName)}, [](Stage& stage) { stage.board.registerChildrenHandlers(); }, joining);
}

TEST_F(OutOfMemoryInStructureHandlers, SyncChildrenTakesNoMemory) {
    survivesAnywhere([](const Operate& operate) {
        Stage stage;
        stage.registerAll();
        const std::string before = stage.state();
        std::vector<int> indices{1, 2};
        EXPECT_TRUE(operate([&] { stage.board.syncChildren(&stage.title, indices); }));
        EXPECT_EQ(stage.state(), before);
    });
}

TEST_F(OutOfMemoryInStructureHandlers, ItIsMadeOrNotAtAll) {
    survivesAnywhere([](const Operate& operate) {
        EmptyStage stage;
        stage.host.addContainer("board", stage.root);
        std::unique_ptr<StagedStructure> board;
        const bool isDone =
            operate([&] { board = std::make_unique<StagedStructure>("DataStructure", stage.root, boardName); });
        EXPECT_EQ(board != nullptr, isDone);
        EXPECT_EQ(stage.tree()->getNumFields(), 0);
    });
}

TEST_F(OutOfMemoryInStructureHandlers, ItGoesWithoutMemoryAndLeavesThoseBelow) {
    survivesAnywhere([](const Operate& operate) {
        EmptyStage stage;
        const int place = stage.add("board", stage.root);
        StagedLeaf title("Text", stage.add("title", place), "the title that stands on the board");
        auto board = std::make_unique<StagedStructure>("DataStructure", place, boardName);
        board->Register(Text(boardName), 0);
        EXPECT_TRUE(operate([&] { board.reset(); }));
        EXPECT_EQ(title.getParent(), nullptr);
        ASSERT_NE(title.getField(), nullptr);
        title.calls = 0;
        title.getField()->setData("a change");
        EXPECT_EQ(title.calls, 1);
        title.Register("a title by itself", 0);
        EXPECT_STREQ(title.getField()->getFullPath(), "a title by itself");
        title.Unregister();
    });
}
