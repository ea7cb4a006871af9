#include <orbel/orbel.h>

#include <support/Console.h>
#include <support/Environment.h>
#include <support/RecordingPlugin.h>
#include <support/TestHost.h>
#include <support/Text.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

/// A plug-in on a container "title" below "board" below "show", with a container "text" below its own.
class HostHandlers : public testing::Test {
protected:
    HostHandlers() {
        clearTypeVariables();
        host.localScene = scene.id;
        host.localContainer = title.id;
        plugin.setLocalContainer();
        plugin.setLocalScene();
    }

    void setContainers(CONTAINER container) {
        plugin.setLocalContainer(container);
        plugin.setCurrentContainer(container);
    }

    Console console;
    TestHost& host = TestHost::get();
    SCENE scene = host.addScene("Today");
    CONTAINER show = host.addContainer("show");
    CONTAINER board = host.addContainer("board", show.id);
    CONTAINER title = host.addContainer("title", board.id);
    CONTAINER text = host.addContainer("text", title.id);
    Diary diary;
    RecordingPluginOf<korDataHandler> plugin{diary, "Text"};
};

} // namespace

TEST_F(HostHandlers, ContainerPathGoesFromTheOutermostDown) {
    EXPECT_EQ(plugin.getContainerFullPath(), "show/board/title");
    plugin.setCurrentContainer(text);
    EXPECT_EQ(plugin.getContainerFullPath(), "show/board/title/text");
    plugin.setCurrentContainer(show);
    EXPECT_EQ(plugin.getContainerFullPath(), "show");
    plugin.setCurrentContainer(text);
    plugin.setIsOther(1);
    plugin.setWhichOther(0);
    EXPECT_EQ(plugin.getContainerFullPath(), "show/board/title");
    setContainers(-1);
    EXPECT_EQ(plugin.getContainerFullPath(), "");
    setContainers(4711);
    EXPECT_EQ(plugin.getContainerFullPath(), "");
}

TEST_F(HostHandlers, ContainerPathKeepsEmptyNames) {
    host.containers[title.id].name = "";
    EXPECT_EQ(plugin.getContainerFullPath(), "show/board/");
    host.containers[board.id].name = "";
    EXPECT_EQ(plugin.getContainerFullPath(), "show//");
    host.isSilent = true;
    EXPECT_EQ(plugin.getContainerFullPath(), "//");
}

TEST_F(HostHandlers, ContainerPathsMayBeDeep) {
    CONTAINER deepest = text;
    for (int level = 0; level < 20'000; ++level)
        deepest = host.addContainer("n", deepest.id);
    plugin.setCurrentContainer(deepest);
    EXPECT_EQ(plugin.getContainerFullPath().size(), std::string("show/board/title/text").size() + 40'000);
}

TEST_F(HostHandlers, ChildrenAreCountedFromZero) {
    const CONTAINER first = host.addContainer("first", board.id);
    const CONTAINER second = host.addContainer("second", board.id);
    EXPECT_EQ(plugin.searchChild(board, title), 0);
    EXPECT_EQ(plugin.searchChild(board, first), 1);
    EXPECT_EQ(plugin.searchChild(board, second), 2);
    EXPECT_EQ(plugin.searchChild(show, board), 0);
    host.removeContainer(first.id);
    EXPECT_EQ(plugin.searchChild(board, second), 1);
}

TEST_F(HostHandlers, ContainersElsewhereAreNoChildren) {
    EXPECT_EQ(plugin.searchChild(show, title), -1) << "a grandchild";
    EXPECT_EQ(plugin.searchChild(text, title), -1) << "the parent";
    EXPECT_EQ(plugin.searchChild(title, title), -1) << "itself";
    EXPECT_EQ(plugin.searchChild(board, CONTAINER()), -1);
    EXPECT_EQ(plugin.searchChild(CONTAINER(), board), -1);
    EXPECT_EQ(plugin.searchChild(4711, board), -1);
}

TEST_F(HostHandlers, DumpIsOneLine) {
    plugin.init(scene.id);
    plugin.setName(Text("headline"));
    plugin.setFieldName("news/title");
    plugin.setCurrentContainer(text);
    console.takeOutput();
    plugin.korDataHandler::dump();
    EXPECT_EQ(console.takeOutput(),
              "Handler Name=headline Field=news/title Container=" + std::to_string(title.id) + "\n");
    EXPECT_EQ(console.takeMessages(), "");
}

TEST_F(HostHandlers, DumpOfAPlugInThatWasNeverInitialisedHasNoName) {
    RecordingPluginOf<korDataHandler> fresh(diary, "Fresh");
    fresh.korDataHandler::dump();
    EXPECT_EQ(console.takeOutput(), "Handler Name= Field= Container=-1\n");
}

TEST_F(HostHandlers, PlainSettingsOfAPlugInAreKept) {
    class Plain : public korDataHandler {
    public:
        int getPluginType() override { return 0; }
        char* getPluginFolder() override { return nullptr; }
    };
    Plain plain;
    EXPECT_STREQ(plain.getPluginName(), "");
    EXPECT_TRUE(plain.getFirstTime());
    plain.setFirstTime(false);
    EXPECT_FALSE(plain.getFirstTime());
    EXPECT_STREQ(plain.getFieldName(), "");
    plain.setFieldName("a/b");
    EXPECT_STREQ(plain.getFieldName(), "a/b");
    plain.setFieldName(plain.getFieldName() + 2);
    EXPECT_STREQ(plain.getFieldName(), "b");
    plain.setFieldName(nullptr);
    EXPECT_STREQ(plain.getFieldName(), "");
    EXPECT_EQ(plain.getParent(), nullptr);
    std::vector<std::string> values = {"a"};
    plain.onDataChange(Text("field"), values, 0, 0);
    plain.onSyncParams(&plain);
    plain.onSyncParams(nullptr);
}

TEST_F(HostHandlers, TheTreeIsThatOfTheLocalScene) {
    EXPECT_EQ(plugin.getOrbel(), IDataHandlerImpl::getOrbel(scene.id, false));
    EXPECT_NE(plugin.getOrbel(), nullptr);
}

TEST_F(HostHandlers, ScenesWaitForTheirInitUntilItIsDone) {
    EXPECT_EQ(korDataHandler::qxNeedsInit, 0);
    EXPECT_EQ(korDataHandler::getInitQX(), 0);
    korDataHandler::setInitQX(1);
    EXPECT_EQ(korDataHandler::getInitQX(), 1);
    EXPECT_EQ(korDataHandler::qxNeedsInit, 1);
    const int other = host.addScene("Other");
    host.localScene = other;
    EXPECT_EQ(korDataHandler::getInitQX(), 0);
    korDataHandler::setInitQX(7);
    EXPECT_EQ(korDataHandler::getInitQX(), 1);
    EXPECT_EQ(korDataHandler::qxNeedsInit, 7);
    korDataHandler::setInitQX(0);
    EXPECT_EQ(korDataHandler::getInitQX(), 0);
    EXPECT_EQ(korDataHandler::qxNeedsInit, 0);
    host.localScene = scene.id;
    EXPECT_EQ(korDataHandler::getInitQX(), 1);
    korDataHandler::setInitQX(-1);
    EXPECT_EQ(korDataHandler::getInitQX(), 1);
    EXPECT_EQ(korDataHandler::qxNeedsInit, -1);
    initOrbel();
    EXPECT_EQ(korDataHandler::getInitQX(), 0);
    EXPECT_EQ(korDataHandler::qxNeedsInit, 0);
}

TEST_F(HostHandlers, NoSceneNeverWaits) {
    for (const int nothing : {-1, 4711}) {
        host.localScene = nothing;
        korDataHandler::setInitQX(1);
        EXPECT_EQ(korDataHandler::getInitQX(), 0);
        EXPECT_EQ(korDataHandler::qxNeedsInit, 1);
        korDataHandler::setInitQX(0);
        EXPECT_EQ(korDataHandler::getInitQX(), 0);
        EXPECT_EQ(korDataHandler::qxNeedsInit, 0);
    }
}

TEST_F(HostHandlers, ASceneThatIsGoneStillWaits) {
    korDataHandler::setInitQX(1);
    host.scenes.erase(scene.id);
    EXPECT_EQ(korDataHandler::getInitQX(), 1);
    korDataHandler::setInitQX(0);
    EXPECT_EQ(korDataHandler::getInitQX(), 1) << "only scenes that the host knows are forgotten";
}

TEST_F(HostHandlers, AHundredScenesWait) {
    std::vector<int> scenes;
    const auto waits = [this](int id) {
        host.localScene = id;
        return korDataHandler::getInitQX();
    };
    for (int count = 0; count < 101; ++count) {
        scenes.push_back(host.localScene = host.addScene("scene"));
        korDataHandler::setInitQX(1);
    }
    EXPECT_EQ(waits(scenes[0]), 0);
    EXPECT_EQ(waits(scenes[1]), 1);
    EXPECT_EQ(waits(scenes[100]), 1);
}
