#include <support/RecordingHandler.h>
#include <support/SceneTree.h>
#include <support/TextList.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <tuple>

namespace {

/// A root with the nodes m, n and o, each with the values x and y, and the node src with the same. n follows src as a
/// node, n/x follows src/x as a value. The handler on n/x does something in the middle of whatever tells it.
class CommandStage {
public:
    CommandStage() {
        for (const char* node : {"m", "n", "o", "src"})
            for (const char* value : {"/string:x", "/string:y"})
                root.getField(Text(std::string("node:") + node + value), 0, 0);
        root.parseCommand(Text("src = {x = s; y = s}"), 0);
        root.addLink(Text("src/x"), Text("n/x"));
        root.addLink(Text("src"), Text("n"));
        at("n/x")->unregisterAllHandlers();
        at("n/x")->registerHandler(&handler);
        diary.take();
    }

    DataField* at(const std::string& path) { return root.getField(Text(path), 0, 1); }
    DataStructure* node(const char* path) { return static_cast<DataStructure*>(at(path)); }

    void destroy(const std::string& parent, const char* name) {
        auto* owner = parent.empty() ? &root : node(parent.c_str());
        DataField* field = owner ? owner->getField(Text(name), 0, 1) : nullptr;
        if (!field)
            return;
        owner->removeField(Text(name), 0);
        if (field->isOfType(DataNode::getClassType()) != 0)
            deleteSubtree(static_cast<DataNode&>(*field));
        delete field;
    }

    Diary diary;
    Orbel root{Text("root")};
    const SubtreeCleanup belowRoot{root};
    RecordingHandler handler{diary, "H"};
};

struct CommandWay {
    const char* name;
    std::function<void(CommandStage&)> go;
};

const CommandWay commandWays[] = {
    {"Set", [](CommandStage& stage) { stage.root.parseCommand(Text("n/x = 1; n/y = 2; m/x = 3"), 0); }},
    {"SetInBraces", [](CommandStage& stage) { stage.root.parseCommand(Text("n = {x = 1; y = 2}; m/x = 3"), 0); }},
    {"Broadcast", [](CommandStage& stage) { stage.root.parseCommand(Text("*/x = 1; */y = 2"), 0); }},
    {"BroadcastToAll", [](CommandStage& stage) { stage.root.parseCommand(Text("n/* = 1; * = {x = 1; y = 2}"), 0); }},
    {"BroadcastTwice", [](CommandStage& stage) { stage.root.parseCommand(Text("*/../*/* = 1"), 0); }},
    {"Forwarding", [](CommandStage& stage) { stage.node("src")->parseCommand(Text("x = 1; y = 2"), 0); }},
    {"ForwardedBroadcast", [](CommandStage& stage) { stage.node("src")->parseCommand(Text("* = 1; */y = 2"), 0); }},
    {"CopyOfValues", [](CommandStage& stage) { stage.root.parseCopyCommand(Text("n/x = m/x; n/y = m/y")); }},
    {"CopyOfNodes", [](CommandStage& stage) { stage.root.parseCopyCommand(Text("n = src; m = n; n = m")); }},
    {"Clear", [](CommandStage& stage) { stage.root.executeClearCommand(Text("n/x;n/y;m")); }},
    {"ClearOfFieldsInUse",
     [](CommandStage& stage) {
         for (const char* path : {"n/x", "n/y", "m"})
             stage.root.getField(Text(path), 0, 1);
         stage.root.executeClearCommand(Text("n/x;n/y;m"));
     }},
    {"ClearOfANode", [](CommandStage& stage) { stage.root.executeClearCommand(Text("n;m")); }},
    {"ClearOfTheTree", [](CommandStage& stage) { stage.root.executeClearCommand(Text("")); }},
    {"Link", [](CommandStage& stage) { stage.root.parseLinkCommand(Text("n/x = m/x; n/y = m/y; ~n/x; n = o")); }},
    {"LinkedStore", [](CommandStage& stage) { stage.root.parseCommand(Text("src/x = 1; src/y = 2"), 0); }},
};

const CommandWay commandDisturbances[] = {
    {"DeletesTheField", [](CommandStage& stage) { stage.destroy("n", "x"); }},
    {"DeletesItsParent", [](CommandStage& stage) { stage.destroy("", "n"); }},
    {"DeletesTheOtherNodes",
     [](CommandStage& stage) {
         stage.destroy("", "m");
         stage.destroy("", "o");
     }},
    {"DeletesTheSourceNode", [](CommandStage& stage) { stage.destroy("", "src"); }},
    {"DeletesTheSourceValue", [](CommandStage& stage) { stage.destroy("src", "x"); }},
    {"DeletesEverything", [](CommandStage& stage) { deleteSubtree(stage.root); }},
    {"ClearsAllLinks", [](CommandStage& stage) { stage.root.ClearLinks(); }},
    {"AddsLinks",
     [](CommandStage& stage) {
         stage.root.addLink(Text("n"), Text("m"));
         stage.root.addLink(Text("n/x"), Text("o/x"));
         stage.root.addLink(Text("src"), Text("o"));
     }},
    {"ReplacesAllLinks", [](CommandStage& stage) { stage.root.parseLinkCommand(Text("o = src; m = o; n/y = src/x")); }},
    {"RunsCommands",
     [](CommandStage& stage) {
         stage.root.parseCommand(Text("*/* = inner; n/x = again; missing/* = 1"), 0);
         stage.root.parseCopyCommand(Text("m = n; n/x = m/x"));
         stage.root.executeClearCommand(Text("o;Orbel"));
     }},
    {"AddsAndRemovesFields",
     [](CommandStage& stage) {
         stage.root.parseCommand(Text("node:a/string:x = 1; node:z/string:x = 1; n/string:a = 1"), 0);
         stage.destroy("", "a");
         stage.destroy("n", "y");
     }},
};

void PrintTo(const CommandWay& way, std::ostream* os) {
    *os << way.name;
}

class CommandReentrancy : public testing::TestWithParam<std::tuple<CommandWay, CommandWay>> {};

} // namespace

TEST_P(CommandReentrancy, LeavesATreeThatWorks) {
    const auto& [way, disturbance] = GetParam();
    CommandStage stage;
    stage.handler.onceThen([&, act = disturbance.go] { act(stage); });
    way.go(stage);
    EXPECT_NE(stage.diary.take(), "");

    stage.root.parseLinkCommand(Text(""));
    stage.root.parseCommand(Text("node:n/string:x = 1; node:m/string:x = 2; */x = 3"), 0);
    EXPECT_EQ(*stage.at("n/x")->getData(0), "3");
    EXPECT_EQ(*stage.at("m/x")->getData(0), "3");
    stage.root.parseLinkCommand(Text("n/x = m/x"));
    stage.root.executeCommand(Text("m/x = 4"), 0);
    EXPECT_EQ(*stage.at("n/x")->getData(0), "4");
}

INSTANTIATE_TEST_SUITE_P(, CommandReentrancy,
                         testing::Combine(testing::ValuesIn(commandWays), testing::ValuesIn(commandDisturbances)),
                         [](const auto& test) {
                             return std::string(std::get<0>(test.param).name) + "_" + std::get<1>(test.param).name;
                         });

TEST(CommandReentrancyTest, AListGoesOnBehindAFieldThatDied) {
    CommandStage stage;
    stage.handler.onceThen([&] { stage.destroy("n", "x"); });
    stage.root.parseCommand(Text("n/x = 1; n/y = 2"), 0);
    EXPECT_EQ(*stage.at("n/y")->getData(0), "2");
}

TEST(CommandReentrancyTest, AListEndsWithTheNodeItRunsOn) {
    CommandStage stage;
    stage.handler.onceThen([&] { stage.destroy("", "n"); });
    stage.node("n")->parseCommand(Text("x = 1; y = 2; ../m/x = 3"), 0);
    EXPECT_EQ(stage.at("n"), nullptr);
    EXPECT_EQ(stage.at("m/x")->getDataInitialized(), 0);
}

TEST(CommandReentrancyTest, ABroadcastSkipsChildrenThatDied) {
    CommandStage stage;
    stage.handler.onceThen([&] { stage.destroy("", "o"); });
    stage.root.executeCommand(Text("*/x = 1"), 0);
    EXPECT_EQ(*stage.at("m/x")->getData(0), "1");
    EXPECT_EQ(*stage.at("src/x")->getData(0), "1");
}

TEST(CommandReentrancyTest, ACommandIsForwardedThoughATargetLeavesInBetween) {
    CommandStage stage;
    stage.root.addLink(Text("src"), Text("o"));
    stage.root.addLink(Text("src"), Text("m"));
    stage.handler.onceThen([&] { stage.destroy("", "o"); });
    stage.node("src")->executeCommand(Text("x = 1"), 0);
    EXPECT_EQ(*stage.at("m/x")->getData(0), "1");
    EXPECT_EQ(*stage.at("src/x")->getData(0), "1");
}

TEST(CommandReentrancyTest, AHandlerThatAnswersEachSetWithASetEndsAtSixtyFour) {
    Diary diary;
    Orbel root(Text("root"));
    const SubtreeCleanup belowRoot{root};
    root.getField(Text("string:a"), 0, 0);
    RecordingHandler handler(diary, "A");
    int sets = 0;
    std::function<void()> again = [&] {
        ++sets;
        handler.onceThen(again);
        root.executeCommand(Text("a = " + std::to_string(sets)), 0);
    };
    root.registerHandler(Text("a"), &handler, 0);
    handler.onceThen(again);
    root.executeCommand(Text("a = 0"), 0);
    EXPECT_EQ(sets, 64);
}

TEST(WildcardReport, OfALookUpThatNeverStartedIsNotUsed) {
    Orbel root(Text("root"));
    const SubtreeCleanup belowRoot{root};
    for (const char* path : {"node:s/string:p", "string:a"})
        root.getField(Text(path), 0, 0);
    EXPECT_EQ(root.getField(Text("s/*"), 0, 0), nullptr);
    root.executeCommand(Text(std::string(512, 'x') + " = 1"), 0);
    root.executeCommand(Text("s/.. = 1"), 0);
    root.executeCommand(Text(" = 1"), 0);
    EXPECT_EQ(root.getField(Text("s/p"), 0, 0)->getDataInitialized(), 0);
    EXPECT_EQ(root.getField(Text("a"), 0, 0)->getDataInitialized(), 0);
}

TEST(WildcardReport, OfANodeThatDiedIsNotUsed) {
    Orbel root(Text("root"));
    const SubtreeCleanup belowRoot{root};
    {
        DataStructure brief(Text("brief"));
        const SubtreeCleanup belowBrief{brief};
        brief.getField(Text("string:p"), 0, 0);
        EXPECT_EQ(brief.getField(Text("*"), 0, 0), nullptr);
    }
    root.executeCommand(Text("missing = 1"), 0);
    root.executeCommand(Text("* = 1"), 0);
    EXPECT_EQ(root.getNumFields(), 0);
}

TEST(WildcardReport, IsNotUsedByTheCommandsOfABroadcast) {
    Orbel root(Text("root"));
    const SubtreeCleanup belowRoot{root};
    for (const char* path : {"node:s/string:p", "node:t/string:q", "string:a"})
        root.getField(Text(path), 0, 0);
    // Neither s/q nor t/p exist: only what is found is set.
    root.parseCommand(Text("*/q = 1; */missing = 2"), 0);
    EXPECT_EQ(root.getField(Text("s/p"), 0, 0)->getDataInitialized(), 0);
    EXPECT_EQ(*root.getField(Text("t/q"), 0, 0)->getData(0), "1");
    EXPECT_EQ(root.getField(Text("a"), 0, 0)->getDataInitialized(), 0);
}
