#include <kor/support/RunningScene.h>

#include <gtest/gtest.h>

#include <string>

namespace {

const char* const oneTrial = "[{'name': 'a', 'plugins': [{'kind': 'Trial', 'FieldName': 'x'}]}]";

/// One Trial on "a" with one more setting, and one Second on "b" below it.
std::string withAction(const std::string& call, const std::string& action) {
    return "[{'name': 'a', 'plugins': [{'kind': 'Trial', 'FieldName': 'x', '" + call + "': '" + action +
           "'}], 'children': [{'name': 'b', 'plugins': [{'kind': 'Second', 'FieldName': 'y'}]}]}]";
}

/// Loads a scene and lets it run through all calls. Texts of the failing plug-in only.
std::string errorsOf(const std::string& call, const std::string& action) {
    std::string all;
    {
        RunningScene running(withAction(call, action));
        running.host.runCommands("x = 1\n");
        running.host.callFrame();
        running.host.callFrame();
        running.console.takeOutput();
        EXPECT_EQ(running.scene.plugIn(running.scene.plugInOn(running.scene.find("b"), "Second"))->hasFailed, false);
        running.set("y", "2");
        running.host.callFrame();
        const std::string output = running.console.takeOutput();
        EXPECT_EQ(output.find("Second onDataChange y=2 in b\n"), 0U) << output;
        EXPECT_NE(output.find("Second perFrame in b\n"), std::string::npos) << output;
        all = running.errors.take();
    }
    return all;
}

TEST(KorHost, CallsAPlugInFromItsMakingToItsEnd) {
    Console console;
    std::string output;
    {
        RunningScene running(oneTrial);
        EXPECT_EQ(running.console.takeOutput(),
                  "Trial made in a\nTrial onLoad in a\nTrial onFunctionInit in a\nTrial onInit in a\n");
        running.host.callFrame();
        EXPECT_EQ(running.console.takeOutput(), "Trial perFrame in a\n");
        running.host.runCommands("x = 5");
        EXPECT_EQ(running.console.takeOutput(), "Trial onDataChange x=5 in a\n");
        EXPECT_EQ(running.ask("a*FUNCTION*Trial DELETE"), "");
        EXPECT_EQ(running.console.takeOutput(), "Trial onCleanup in a\n");
        running.host.callFrame();
        EXPECT_EQ(running.console.takeOutput(), "Trial destroyed\n");
        EXPECT_EQ(running.errors.take(), "");
    }
}

TEST(KorHost, CleansUpAllPlugInsAtItsEnd) {
    Console console;
    Modules modules(KOR_TEST_MODULES);
    Scene scene;
    readScene(R"({"containers": [{"name": "a", "plugins": [{"kind": "Trial"}, {"kind": "Second"}]}]})", "test", scene);
    {
        Host host(scene, modules);
        EXPECT_EQ(Host::current(), &host);
        host.attachAll();
        console.takeOutput();
    }
    EXPECT_EQ(console.takeOutput(), "Trial onCleanup in a\nSecond onCleanup in a\nSecond destroyed\nTrial destroyed\n");
    EXPECT_EQ(Host::current(), nullptr);
}

TEST(KorHost, MakesAPlugInAnewWithNewSettingsAndTheSameValue) {
    RunningScene running(oneTrial);
    running.set("x", "5");
    running.host.callFrame();
    running.console.takeOutput();
    EXPECT_EQ(running.ask("a*FUNCTION*Trial*Other SET 1"), "");
    EXPECT_EQ(running.console.takeOutput(), "");
    running.host.callFrame();
    // The first line comes from who keeps the field meanwhile.
    EXPECT_EQ(running.console.takeOutput(),
              "Trial onDataChange x=5 in a\nTrial onCleanup in a\nTrial destroyed\nTrial made in a\nTrial onLoad in a\n"
              "Trial onDataChange x=5 in a\nTrial onFunctionInit in a\nTrial onInit in a\nTrial perFrame in a\n");
    EXPECT_EQ(running.value("x"), "5");
}

TEST(KorHost, MovesAPlugInToAnotherField) {
    RunningScene running(oneTrial);
    running.ask("a*FUNCTION*Trial*FieldName SET z");
    running.host.callFrame();
    running.console.takeOutput();
    running.set("z", "1");
    EXPECT_EQ(running.console.takeOutput(), "Trial onDataChange z=1 in a\n");
    EXPECT_EQ(running.field("x"), nullptr);
}

TEST(KorHost, AttachesAddedPlugInsInTheNextFrame) {
    RunningScene running("[{'name': 'a'}]");
    running.ask("a*FUNCTION*Trial ADD");
    running.ask("a*FUNCTION*Trial*FieldName SET x");
    running.ask("a*FUNCTION*Trial ADD");
    EXPECT_EQ(running.console.takeOutput(), "");
    running.host.callFrame();
    EXPECT_EQ(running.console.takeOutput(), "Trial made in a\nTrial onLoad in a\nTrial onFunctionInit in a\nTrial "
                                            "onInit in a\nTrial perFrame in a\n");
    EXPECT_EQ(running.scene.container(running.scene.find("a"))->plugins.size(), 1U);
}

TEST(KorHost, AttachesPlugInsThatWereAddedWhileOthersWereAttached) {
    RunningScene running("[{'name': 'a'}, {'name': 'b', 'plugins': [{'kind': 'Trial', 'onInit': 'a*FUNCTION*Second "
                         "ADD'}]}]");
    EXPECT_EQ(running.console.takeOutput().find("Second made"), std::string::npos);
    running.host.callFrame();
    EXPECT_NE(running.console.takeOutput().find("Second onInit in a\n"), std::string::npos);
    running.host.callFrame();
    EXPECT_EQ(running.console.takeOutput(), "Second perFrame in a\nTrial perFrame in b\n");
}

TEST(KorHost, RefusesMorePlugInsThanTheLibrarySees) {
    RunningScene running("[{'name': 'a'}]");
    for (int count = 0; count <= 20; ++count)
        running.ask("a*FUNCTION*K" + std::to_string(count) + " ADD");
    EXPECT_EQ(running.errors.take(), "Kor: plug-in K20 on container \"a\": there are already 20 on it\n");
}

TEST(KorHost, ReportsMissingModulesAndGoesOn) {
    RunningScene running("[{'name': 'a', 'plugins': [{'kind': 'Missing'}, {'kind': 'Neither'}, {'kind': 'Nothing'}, "
                         "{'kind': 'Trial'}]}]");
    const std::string errors = running.errors.take();
    EXPECT_EQ(errors.find("Kor: plug-in Missing on container \"a\": there is no module "), 0U) << errors;
    EXPECT_NE(errors.find("\nKor: plug-in Neither on container \"a\": "), std::string::npos) << errors;
    EXPECT_NE(errors.find(" exports no korCreatePlugin\n"), std::string::npos) << errors;
    EXPECT_NE(errors.find("\nKor: plug-in Nothing on container \"a\": its module made none\n"), std::string::npos);
    running.host.callFrame();
    EXPECT_NE(running.console.takeOutput().find("Trial onInit in a\nTrial perFrame in a\n"), std::string::npos);
    EXPECT_EQ(running.errors.take(), "");
}

TEST(KorHost, ReportsWhatPlugInsThrowByNameAndLeavesThemAlone) {
    for (const std::string call : {"made", "onLoad", "onFunctionInit", "onInit", "perFrame"}) {
        EXPECT_EQ(errorsOf(call, "throw no luck"), "Kor: plug-in Trial on container \"a\": no luck\n") << call;
        EXPECT_EQ(errorsOf(call, "throw"),
                  "Kor: plug-in Trial on container \"a\": threw something that is no exception\n")
            << call;
        EXPECT_EQ(errorsOf(call, "throw "),
                  "Kor: plug-in Trial on container \"a\": threw an exception that says nothing\n")
            << call;
    }
}

TEST(KorHost, ReportsWhatIsThrownAtChangesByTheLine) {
    EXPECT_EQ(errorsOf("onDataChange", "throw no luck"), "Kor: a plug-in at \"x = 1\n\": no luck\n");
}

TEST(KorHost, ReportsWhatIsThrownAtTheEnd) {
    RunningScene running(withAction("onCleanup", "throw no luck"));
    running.ask("a*FUNCTION*Trial DELETE");
    EXPECT_EQ(running.errors.take(), "Kor: plug-in Trial on container \"a\": no luck\n");
    EXPECT_EQ(running.scene.plugInOn(running.scene.find("a"), "Trial"), -1);
}

TEST(KorHost, TriesAFailedPlugInAgainWithOtherSettings) {
    RunningScene running(withAction("onInit", "throw no luck"));
    EXPECT_EQ(running.errors.take(), "Kor: plug-in Trial on container \"a\": no luck\n");
    running.ask("a*FUNCTION*Trial*onInit SET ");
    running.host.callFrame();
    EXPECT_EQ(running.errors.take(), "");
    running.console.takeOutput();
    running.host.callFrame();
    EXPECT_EQ(running.console.takeOutput(), "Trial perFrame in a\nSecond perFrame in b\n");
}

TEST(KorHost, LetsPlugInsRemoveThemselvesInEveryCall) {
    for (const std::string call :
         {"made", "onLoad", "onFunctionInit", "onInit", "perFrame", "onDataChange", "onCleanup"}) {
        RunningScene running(withAction(call, "a*FUNCTION*Trial DELETE"));
        running.set("x", "1");
        running.host.callFrame();
        if (call == "onCleanup")
            running.ask("a*FUNCTION*Trial DELETE");
        EXPECT_EQ(running.scene.plugInOn(running.scene.find("a"), "Trial"), -1) << call;
        running.host.callFrame();
        running.host.callFrame();
        running.console.takeOutput();
        running.host.callFrame();
        EXPECT_EQ(running.console.takeOutput(), "Second perFrame in b\n") << call;
        EXPECT_EQ(running.errors.take(), "") << call;
    }
}

TEST(KorHost, LetsPlugInsRemoveOthersInEveryCall) {
    for (const std::string call :
         {"made", "onLoad", "onFunctionInit", "onInit", "perFrame", "onDataChange", "onCleanup"}) {
        RunningScene running(withAction(call, "b*FUNCTION*Second DELETE"));
        running.set("x", "1");
        running.host.callFrame();
        if (call == "onCleanup")
            running.ask("a*FUNCTION*Trial DELETE");
        EXPECT_EQ(running.scene.plugInOn(running.scene.find("b"), "Second"), -1) << call;
        running.host.callFrame();
        EXPECT_EQ(running.errors.take(), "") << call;
    }
}

TEST(KorHost, LetsAPlugInBeMadeAnewInEveryCall) {
    for (const std::string call :
         {"made", "onLoad", "onFunctionInit", "onInit", "perFrame", "onDataChange", "onCleanup"}) {
        RunningScene running(withAction(call, "a*FUNCTION*Trial*Other SET 1"));
        running.set("x", "1");
        running.host.callFrame();
        running.host.callFrame();
        EXPECT_EQ(running.errors.take(), "") << call;
        EXPECT_NE(running.scene.plugInOn(running.scene.find("a"), "Trial"), -1) << call;
    }
}

TEST(KorHost, LetsPlugInsCallInitOrbel) {
    for (const std::string call : {"made", "onLoad", "onFunctionInit", "onInit", "perFrame", "onDataChange"}) {
        RunningScene running(withAction(call, "initOrbel"));
        running.set("x", "1");
        running.host.callFrame();
        EXPECT_EQ(running.errors.take(), "") << call;
        running.console.takeOutput();
        running.set("y", "1");
        EXPECT_EQ(running.console.takeOutput(), "Second onDataChange y=1 in b\n") << call;
    }
}

TEST(KorHost, RunsPlugInsOfGeometries) {
    RunningScene running("[{'name': 'a', 'geometry': {'type': 'Shape', 'settings': {'FieldName': 'x'}}}]");
    EXPECT_EQ(running.console.takeOutput(),
              "Shape made in a\nShape onLoad in a\nShape onFunctionInit in a\nShape onInit in a\n");
    running.set("x", "1");
    running.host.callFrame();
    EXPECT_EQ(running.console.takeOutput(), "Shape onDataChange x=1 in a\nShape perFrame in a\n");
}

TEST(KorHost, ReportsPlugInsOfGeometriesThatThrow) {
    RunningScene running("[{'name': 'a', 'geometry': {'type': 'Shape', 'settings': {'onInit': 'throw no luck'}},"
                         "'plugins': [{'kind': 'Trial'}]}, {'name': 'b', 'geometry': {'type': 'Missing'}}]");
    const std::string errors = running.errors.take();
    EXPECT_EQ(errors.find("Kor: plug-in Shape on container \"a\": no luck\n"), 0U) << errors;
    EXPECT_NE(errors.find("Kor: plug-in Missing on container \"b\": there is no module "), std::string::npos) << errors;
    running.console.takeOutput();
    running.host.callFrame();
    EXPECT_EQ(running.console.takeOutput(), "Trial perFrame in a\n");
}

TEST(KorHost, SaysWhereThePlugInIsThatIsCalled) {
    RunningScene running("[{'name': 'a'}, {'name': 'b', 'plugins': [{'kind': 'Trial'}]}]");
    EXPECT_EQ(running.host.localContainer(), -1);
    // The plug-in tells its own container in each line.
    EXPECT_EQ(running.console.takeOutput().substr(0, 16), "Trial made in b\n");
}

TEST(KorHost, RunsCommandsOfTheTreeAndOfTheHost) {
    RunningScene running("[{'name': 'a'}]");
    running.tree().getField(Text("string:x"), 0, 1);
    running.tree().getField(Text("string:y"), 0, 1);
    running.host.runCommands("x = 1; y = 2;");
    running.host.runCommands("0 a*ACTIVE SET 0");
    EXPECT_EQ(running.value("x"), "1");
    EXPECT_EQ(running.value("y"), "2");
    EXPECT_FALSE(running.container("a").isVisible);
    running.host.runCommands("C y = x");
    EXPECT_EQ(running.value("y"), "1");
    running.host.runCommands("L y = x");
    running.host.runCommands("x = 3");
    EXPECT_EQ(running.value("y"), "3");
    for (const char* line : {"", "nonsense", "0", "0 ", "C ", "L ", "X x = 4"})
        running.host.runCommands(line);
    EXPECT_EQ(running.value("x"), "3");
}

TEST(KorHost, MakesTypedPlugInsAnewWithTheirFieldAndType) {
    RunningScene running("[{'name': 'a', 'plugins': [{'kind': 'DataObject', 'FieldName': 'town', 'TypeStr': 'Town'},"
                         "{'kind': 'DataTable', 'FieldName': 'list', 'Other': '1'}]}]",
                         KOR_PLUGINS);
    const int before = running.scene.plugInOn(running.scene.find("a"), "DataObject");
    resetAllTypedObjects();
    const int after = running.scene.plugInOn(running.scene.find("a"), "DataObject");
    EXPECT_NE(before, after);
    EXPECT_EQ(running.ask("a*FUNCTION*DataObject*FieldName GET"), "town");
    EXPECT_EQ(running.ask("a*FUNCTION*DataObject*TypeStr GET"), "Town");
    EXPECT_EQ(running.ask("a*FUNCTION*DataTable*FieldName GET"), "list");
    EXPECT_EQ(running.ask("a*FUNCTION*DataTable*Other GET"), "");
    EXPECT_FALSE(running.scene.plugIn(after)->handler);
    running.host.callFrame();
    EXPECT_TRUE(running.scene.plugIn(after)->handler);
    EXPECT_EQ(running.errors.take(), "");
}

TEST(KorHost, KnowsItsMachine) {
    EXPECT_FALSE(Host::machineName().empty());
    EXPECT_EQ(Host::machineName().find(' '), std::string::npos);
    EXPECT_NE(Host::machineAddress().find('.'), std::string::npos);
}

} // namespace
