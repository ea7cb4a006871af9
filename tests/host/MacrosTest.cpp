#include <orbel/orbel.h>

#include <support/Environment.h>
#include <support/RecordingPlugin.h>
#include <support/TestHost.h>
#include <support/Text.h>
#include <support/TreeCleanup.h>

#include <gtest/gtest.h>

#include <string>

namespace {

/// A plug-in on a container "title" below "board" below "show".
class Macros : public testing::Test {
protected:
    Macros() {
        clearTypeVariables();
        host.localScene = scene.id;
        host.localContainer = title.id;
        host.answers["0 MAIN*ONAIR GET_INFO"] = "Hostname studio IP address: 10.0.0.7";
        plugin.setLocalContainer();
        plugin.setLocalScene();
    }

    /// "(null)" for an unknown name.
    std::string valueOf(const char* name) {
        const char* const value = plugin.parseMacro(name);
        return value ? value : "(null)";
    }

    std::string numberOf(int id) { return '#' + std::to_string(id); }

    void setEverywhere(int id) {
        CONTAINER container = id;
        SCENE other = id;
        plugin.setLocalContainer(container);
        plugin.setCurrentContainer(container);
        plugin.setLocalScene(other);
    }

    TestHost& host = TestHost::get();
    SCENE scene = host.addScene("Show/Weather/Today");
    CONTAINER show = host.addContainer("show");
    CONTAINER board = host.addContainer("board", show.id);
    CONTAINER title = host.addContainer("title", board.id);
    CONTAINER text = host.addContainer("text", title.id);
    Diary diary;
    RecordingPluginOf<korDataHandler> plugin{diary, "Text"};
};

constexpr const char* names[] = {
    "CONTAINER", "CONTNAME",   "CONTAINER_NAME", "LOCAL_CONTAINER", "LOCAL_CONTNAME",  "LOCAL_CONTAINER_NAME",
    "SCENE",     "THIS_SCENE", "SCENE_NAME",     "SCENE_FULLNAME",  "SCENE_FULL_NAME", "SCENE_PATH",
    "HOSTNAME",  "HOSTIP"};

} // namespace

TEST_F(Macros, NameTheContainerThatIsServed) {
    plugin.setCurrentContainer(text);
    EXPECT_EQ(valueOf("CONTAINER"), numberOf(text.id));
    EXPECT_EQ(valueOf("CONTNAME"), "text");
    EXPECT_EQ(valueOf("CONTAINER_NAME"), "text");
    EXPECT_EQ(valueOf("LOCAL_CONTAINER"), numberOf(title.id));
    EXPECT_EQ(valueOf("LOCAL_CONTNAME"), "title");
    EXPECT_EQ(valueOf("LOCAL_CONTAINER_NAME"), "title");
    plugin.setIsOther(1);
    plugin.setWhichOther(1);
    EXPECT_EQ(valueOf("CONTAINER"), numberOf(board.id));
    EXPECT_EQ(valueOf("CONTNAME"), "board");
    EXPECT_EQ(valueOf("CONTAINER_NAME"), "board");
    EXPECT_EQ(valueOf("LOCAL_CONTAINER"), numberOf(title.id));
    plugin.setWhichOther(3);
    plugin.setRemoteContainer(show);
    EXPECT_EQ(valueOf("CONTAINER"), numberOf(show.id));
    EXPECT_EQ(valueOf("CONTAINER_NAME"), "show");
}

TEST_F(Macros, NameTheScene) {
    EXPECT_EQ(valueOf("SCENE"), numberOf(scene.id));
    EXPECT_EQ(valueOf("THIS_SCENE"), numberOf(scene.id));
    EXPECT_EQ(valueOf("SCENE_NAME"), "Today");
    EXPECT_EQ(valueOf("SCENE_FULLNAME"), "Show/Weather/Today");
    EXPECT_EQ(valueOf("SCENE_FULL_NAME"), "Show/Weather/Today");
    EXPECT_EQ(valueOf("SCENE_PATH"), "Show/Weather/");
    host.scenes[scene.id].name = "Today";
    EXPECT_EQ(valueOf("SCENE_NAME"), "Today");
    EXPECT_EQ(valueOf("SCENE_PATH"), ".");
}

TEST_F(Macros, NameTheMachineOfTheHost) {
    EXPECT_EQ(valueOf("HOSTNAME"), "studio");
    EXPECT_EQ(valueOf("HOSTIP"), "10.0.0.7");
}

TEST_F(Macros, AreNullForAnyOtherName) {
    EXPECT_EQ(plugin.parseMacro(nullptr), nullptr);
    for (const char* name : {"",           " ",          "UNKNOWN",        "container",
                             "Container",  "contname",   "container_name", "local_container",
                             "scene",      "this_scene", "Scene_Name",     "scene_path",
                             "hostname",   "HostName",   "hostip",         "$(SCENE)",
                             "SCENE ",     " SCENE",     "SCENE_ID",       "LOCAL_SCENE",
                             "CONTAINER_", "CONTAINE",   "HOST",           "HOST_NAME",
                             "HOST_IP",    "SCENE_FULL"})
        EXPECT_EQ(valueOf(name), "(null)") << name;
}

TEST_F(Macros, OfNowhereAreNumbersAndEmptyNames) {
    setEverywhere(-1);
    EXPECT_EQ(valueOf("CONTAINER"), "#-1");
    EXPECT_EQ(valueOf("CONTNAME"), "");
    EXPECT_EQ(valueOf("CONTAINER_NAME"), "");
    EXPECT_EQ(valueOf("LOCAL_CONTAINER"), "#-1");
    EXPECT_EQ(valueOf("LOCAL_CONTNAME"), "");
    EXPECT_EQ(valueOf("LOCAL_CONTAINER_NAME"), "");
    EXPECT_EQ(valueOf("SCENE"), "#-1");
    EXPECT_EQ(valueOf("THIS_SCENE"), "#-1");
    EXPECT_EQ(valueOf("SCENE_NAME"), "");
    EXPECT_EQ(valueOf("SCENE_FULLNAME"), "");
    EXPECT_EQ(valueOf("SCENE_FULL_NAME"), "");
    EXPECT_EQ(valueOf("SCENE_PATH"), ".");
    EXPECT_EQ(valueOf("HOSTNAME"), "studio");
}

TEST_F(Macros, OfObjectsThatAreGoneAreNumbersAndEmptyNames) {
    setEverywhere(4711);
    EXPECT_EQ(valueOf("CONTAINER"), "#4711");
    EXPECT_EQ(valueOf("LOCAL_CONTAINER"), "#4711");
    EXPECT_EQ(valueOf("SCENE"), "#4711");
    for (const char* name : {"CONTNAME", "CONTAINER_NAME", "LOCAL_CONTNAME", "LOCAL_CONTAINER_NAME", "SCENE_NAME",
                             "SCENE_FULLNAME", "SCENE_FULL_NAME"})
        EXPECT_EQ(valueOf(name), "") << name;
    EXPECT_EQ(valueOf("SCENE_PATH"), ".");
}

TEST_F(Macros, DoNotRelyOnTheHostForNamesOfNothing) {
    host.nameOfNothing = "leftover";
    for (const int nothing : {-1, 4711}) {
        setEverywhere(nothing);
        for (const char* name : {"CONTNAME", "CONTAINER_NAME", "LOCAL_CONTNAME", "LOCAL_CONTAINER_NAME"})
            EXPECT_EQ(valueOf(name), "") << name;
    }
}

TEST_F(Macros, AreEmptyWhenTheHostGivesNoTexts) {
    host.isSilent = true;
    for (const char* name : {"CONTNAME", "CONTAINER_NAME", "LOCAL_CONTNAME", "LOCAL_CONTAINER_NAME", "SCENE_NAME",
                             "SCENE_FULLNAME", "SCENE_FULL_NAME"})
        EXPECT_EQ(valueOf(name), "") << name;
    EXPECT_EQ(valueOf("SCENE_PATH"), ".");
    EXPECT_EQ(valueOf("HOSTNAME"), "localhost");
    EXPECT_EQ(valueOf("HOSTIP"), "0.0.0.0");
}

TEST_F(Macros, DoNotAskTheHostForCommands) {
    for (const char* name : names)
        if (std::string(name).substr(0, 4) != "HOST")
            valueOf(name);
    EXPECT_TRUE(host.log.empty());
}

TEST_F(Macros, LongNamesAreWhole) {
    const std::string longName(5'000, 'n');
    host.containers[title.id].name = longName;
    host.scenes[scene.id].name = longName + '/' + longName;
    EXPECT_EQ(valueOf("CONTNAME"), longName);
    EXPECT_EQ(valueOf("SCENE_FULL_NAME"), longName + '/' + longName);
    EXPECT_EQ(valueOf("SCENE_PATH"), longName + '/');
}

TEST_F(Macros, StayUntilTheSameOneIsAskedForAgain) {
    const char* const name = plugin.parseMacro("HOSTNAME");
    const char* const number = plugin.parseMacro("CONTAINER");
    for (const char* other : {"HOSTIP", "SCENE", "LOCAL_CONTAINER", "SCENE_FULL_NAME", "UNKNOWN"})
        plugin.parseMacro(other);
    EXPECT_STREQ(name, "studio");
    EXPECT_EQ(number, numberOf(title.id));
}

TEST_F(Macros, MayBeWrittenTo) {
    for (const char* name : names)
        plugin.parseMacro(name)[0] = 'X';
    EXPECT_EQ(valueOf("HOSTNAME"), "studio");
    EXPECT_EQ(valueOf("SCENE_FULL_NAME"), "Show/Weather/Today");
    EXPECT_STREQ(plugin.getSceneName(), "Today");
    EXPECT_EQ(plugin.getSceneID(), numberOf(scene.id));
}

TEST_F(Macros, TakeTheirOwnValuesAsNames) {
    host.containers[title.id].name = "SCENE_NAME";
    EXPECT_STREQ(plugin.parseMacro(plugin.parseMacro("CONTNAME")), "Today");
}

TEST_F(Macros, WorkBeforeAPlugInIsInitialised) {
    RecordingPluginOf<korDataHandler> fresh(diary, "Fresh");
    EXPECT_STREQ(fresh.parseMacro("CONTAINER"), "#-1");
    EXPECT_STREQ(fresh.parseMacro("SCENE"), "#-1");
    EXPECT_STREQ(fresh.parseMacro("SCENE_PATH"), ".");
    EXPECT_EQ(fresh.parseMacro("ELSE"), nullptr);
}

TEST_F(Macros, FillTextsOfExpressions) {
    Orbel root{Text("show")};
    const SubtreeCleanup belowRoot{root};
    auto* const value = new DataValue(Text("temperature"));
    root.addField(value, 0);
    value->setData("21");
    MacroQuery query(plugin);
    DataExpression expression;
    expression.registerVariableQuery(&query);
    expression.setHostField(&root, value);
    const auto textOf = [&](const std::string& written) {
        expression.parse(Text(written));
        return std::string(expression.evaluate(0));
    };
    EXPECT_EQ(textOf("$(temperature) in $(SCENE_NAME) on $(HOSTNAME)"), "21 in Today on studio");
    EXPECT_EQ(textOf("$(CONTAINER)*TEXT SET $(temperature)"), numberOf(title.id) + "*TEXT SET 21");
    EXPECT_EQ(textOf("$(SCENE) $(THIS_SCENE)"), numberOf(scene.id) + ' ' + numberOf(scene.id));
    EXPECT_EQ(textOf("$(CONTNAME[1])"), "title");
    EXPECT_EQ(textOf("[$(scene_name)$(UNKNOWN)]"), "[]");
    expression.registerVariableQuery(nullptr);
    EXPECT_EQ(textOf("[$(SCENE_NAME)]"), "[]");
}

TEST_F(Macros, OfExpressionsComeAfterTheTree) {
    Orbel root{Text("show")};
    const SubtreeCleanup belowRoot{root};
    auto* const value = new DataValue(Text("SCENE_NAME"));
    root.addField(value, 0);
    value->setData("from the tree");
    MacroQuery query(plugin);
    DataExpression expression;
    expression.registerVariableQuery(&query);
    expression.setHostField(&root, value);
    expression.parse(Text("$(SCENE_NAME), $(SCENE_PATH)"));
    EXPECT_STREQ(expression.evaluate(0), "from the tree, Show/Weather/");
}

TEST_F(Macros, OfExpressionsAreThePlugInsOwn) {
    class Own : public RecordingPluginOf<korDataHandler> {
    public:
        using RecordingPluginOf::RecordingPluginOf;
        char* parseMacro(const char* name) override {
            static char mood[] = "sunny";
            return std::string(name) == "MOOD" ? mood : RecordingPluginOf::parseMacro(name);
        }
    };
    Own own(diary, "Own");
    own.setLocalScene();
    MacroQuery query(own);
    DataExpression expression;
    expression.registerVariableQuery(&query);
    expression.parse(Text("$(MOOD) $(SCENE_NAME)"));
    EXPECT_STREQ(expression.evaluate(0), "sunny Today");
}
