#include <orbel/orbel.h>

#include <support/Console.h>
#include <support/Environment.h>
#include <support/RecordingPlugin.h>
#include <support/Text.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Handler = RecordingPluginOf<korDataHandler>;
using Structure = RecordingPluginOf<korDataStructureHandler>;

/// A program whose executable exports no host functions.
class WithoutAHost : public testing::Test {
protected:
    WithoutAHost() { clearTypeVariables(); }

    /// Stores as a client of the tree does.
    static void store(const std::string& path, const std::string& value) {
        IDataHandlerImpl::getOrbel(0, false)->setFieldData(Text(path), Text(value));
    }

    Console console;
    Diary diary;
    CONTAINER container = 12;
    SCENE scene = 34;
};

} // namespace

TEST_F(WithoutAHost, PlugInsAreNowhere) {
    korPluginData data;
    data.setLocalContainer(container);
    data.setLocalScene(scene);
    data.setLocalContainer();
    data.setLocalScene();
    EXPECT_EQ(data.getLocalContainer().id, -1);
    EXPECT_EQ(data.getCurrentContainer().id, -1);
    EXPECT_EQ(data.getLocalScene().id, -1);
    EXPECT_STREQ(data.getSceneID(), "#-1");
    EXPECT_STREQ(data.getContainerName(), "");
    EXPECT_STREQ(data.getSceneFullName(), "");
    EXPECT_STREQ(data.getSceneName(), "");
    EXPECT_STREQ(data.getScenePath(), ".");
}

TEST_F(WithoutAHost, PlacesThatAreGivenAreKept) {
    korPluginData data;
    data.setLocalContainer(container);
    data.setCurrentContainer(container);
    data.setRemoteContainer(container);
    data.setLocalScene(scene);
    EXPECT_EQ(data.getLocalContainer().id, 12);
    EXPECT_EQ(data.getCurrentContainer().id, 12);
    EXPECT_EQ(data.getRemoteContainer().id, 12);
    EXPECT_EQ(data.getLocalScene().id, 34);
    EXPECT_STREQ(data.getSceneID(), "#34");
    EXPECT_STREQ(data.getContainerName(), "");
    EXPECT_STREQ(data.getSceneName(), "");
    EXPECT_STREQ(data.getScenePath(), ".");
}

TEST_F(WithoutAHost, ThereIsNoRemoteContainer) {
    korPluginData data;
    for (const char* name : {"board", "#12", "#", ""}) {
        data.setRemoteContainer(container);
        data.setRemoteContainer(Text(name));
        EXPECT_EQ(data.getRemoteContainer().id, -1) << name;
    }
    data.setRemoteContainer(container);
    data.setRemoteContainer(static_cast<char*>(nullptr));
    EXPECT_EQ(data.getRemoteContainer().id, -1);
}

TEST_F(WithoutAHost, ThereIsNothingAboveAContainer) {
    korPluginData data;
    CONTAINER remote = 13;
    data.setCurrentContainer(container);
    data.setRemoteContainer(remote);
    data.setIsOther(1);
    for (const int which : {0, 1, 2}) {
        data.setWhichOther(which);
        EXPECT_EQ(data.getCurrentContainer().id, -1) << which;
    }
    data.setWhichOther(3);
    EXPECT_EQ(data.getCurrentContainer().id, 12);
    data.setWhichOther(4);
    EXPECT_EQ(data.getCurrentContainer().id, 12);
}

TEST_F(WithoutAHost, MacrosAreNumbersAndEmptyNames) {
    Handler handler(diary, "A");
    handler.setLocalContainer(container);
    handler.setCurrentContainer(container);
    handler.setLocalScene(scene);
    EXPECT_STREQ(handler.parseMacro("CONTAINER"), "#12");
    EXPECT_STREQ(handler.parseMacro("LOCAL_CONTAINER"), "#12");
    EXPECT_STREQ(handler.parseMacro("SCENE"), "#34");
    EXPECT_STREQ(handler.parseMacro("THIS_SCENE"), "#34");
    for (const char* name : {"CONTNAME", "CONTAINER_NAME", "LOCAL_CONTNAME", "LOCAL_CONTAINER_NAME", "SCENE_NAME",
                             "SCENE_FULLNAME", "SCENE_FULL_NAME"})
        EXPECT_STREQ(handler.parseMacro(name), "") << name;
    EXPECT_STREQ(handler.parseMacro("SCENE_PATH"), ".");
    EXPECT_STREQ(handler.parseMacro("HOSTNAME"), "localhost");
    EXPECT_STREQ(handler.parseMacro("HOSTIP"), "0.0.0.0");
    EXPECT_EQ(handler.parseMacro("ELSE"), nullptr);
    EXPECT_EQ(handler.parseMacro(nullptr), nullptr);
}

TEST_F(WithoutAHost, HandlersFindNobody) {
    Handler handler(diary, "A");
    handler.setLocalContainer(container);
    handler.setCurrentContainer(container);
    Structure structure(diary, "S");
    korDataStructureHandler* parent = &structure;
    int index = 7;
    EXPECT_TRUE(handler.getParentHandler(&parent, &index));
    EXPECT_EQ(parent, nullptr);
    EXPECT_EQ(handler.getParent(), nullptr);
    EXPECT_EQ(handler.searchChild(container, 13), -1);
    EXPECT_EQ(handler.searchChild(container, container), -1);
    EXPECT_EQ(handler.getContainerFullPath(), "");
    EXPECT_EQ(handler.getOrbel(), IDataHandlerImpl::getOrbel(-1, false));
    handler.setLocalScene(scene);
    EXPECT_NE(handler.getOrbel(), nullptr);
    std::vector<korDataHandler*> handlers;
    handler.getContainerHandlers(container, handlers);
    handler.getChildrenHandlers(container, handlers, true);
    handler.getChildrenHandlers(container, handlers, false);
    EXPECT_TRUE(handlers.empty());
    handler.sync();
    handler.onSyncParams(&handler);
    EXPECT_EQ(diary.take(), "");
}

TEST_F(WithoutAHost, HandlersThatWereNeverInitialisedDoNothing) {
    Structure structure(diary, "S");
    structure.Register("title", 1);
    structure.Register(Text("title"), 1);
    structure.RegisterField("title", 1);
    structure.registerChildrenHandlers();
    structure.RegisterChild(&structure, "title", 0);
    structure.RegisterChild(nullptr, nullptr, 0);
    structure.UnregisterAllChildren();
    structure.Unregister();
    EXPECT_EQ(structure.getField(), nullptr);
    EXPECT_STREQ(structure.getFieldName(), "title");
    EXPECT_EQ(diary.take(), "");
}

TEST_F(WithoutAHost, HandlersAreDumped) {
    Handler handler(diary, "A");
    handler.init(0);
    handler.setFieldName("title");
    console.takeOutput();
    handler.korDataHandler::dump();
    EXPECT_EQ(console.takeOutput(), "Handler Name=A Field=title Container=-1\n");
}

TEST_F(WithoutAHost, HandlersRegisterOnTheTree) {
    Handler handler(diary, "A");
    handler.init(0);
    handler.Register("node:board/string:title", 1);
    ASSERT_NE(handler.getField(), nullptr);
    EXPECT_STREQ(handler.getField()->getFullPath(), "board/title");
    EXPECT_EQ(handler.getParent(), nullptr);
    diary.take();
    store("board/title", "News");
    EXPECT_EQ(diary.take(), "A title=News");
    handler.Register("board/title", 1);
    EXPECT_EQ(diary.take().substr(0, 12), "A title=News");
    handler.Unregister();
    EXPECT_EQ(handler.getField(), nullptr);
    EXPECT_EQ(diary.take(), "");
}

TEST_F(WithoutAHost, HandlersRegisterAbsolutelyAndOnFieldsThatExist) {
    Handler first(diary, "A");
    first.init(0);
    first.Register("/title", 0);
    ASSERT_NE(first.getField(), nullptr);
    EXPECT_STREQ(first.getField()->getFullPath(), "title");
    Handler second(diary, "B");
    second.init(0);
    second.Register("*title", 0);
    EXPECT_EQ(second.getField(), first.getField());
    Handler third(diary, "C");
    third.init(0);
    third.RegisterField("title", 1);
    EXPECT_EQ(third.getField(), first.getField());
    Handler fourth(diary, "D");
    fourth.init(0);
    fourth.Register("*missing", 1);
    EXPECT_EQ(fourth.getField(), nullptr);
    diary.take();
    store("title", "News");
    EXPECT_EQ(diary.take(), "A title=News, B title=News, C title=News");
}

TEST_F(WithoutAHost, FieldNamesMayBeMacros) {
    const auto nameOf = [this](const char* macro) {
        Handler handler(diary, "A");
        handler.init(0);
        handler.setLocalContainer(container);
        handler.setLocalScene(scene);
        handler.Register(macro, 0);
        return std::string(handler.getField() ? handler.getField()->getName() : "(none)");
    };
    EXPECT_EQ(nameOf("$(CONTAINER)"), "KorId_12");
    EXPECT_EQ(nameOf("$(SCENE_ID)"), "#34");
    EXPECT_EQ(nameOf("$(HOSTNAME)"), "localhost");
    for (const char* macro : {"$(CONTNAME)", "$(SCENE)", "$(SCENE_FULL_NAME)"})
        EXPECT_EQ(nameOf(macro), "(none)") << macro;
}

TEST_F(WithoutAHost, StructuresRegisterOnTheTreeAndTakeChildren) {
    Structure board(diary, "S");
    Handler title(diary, "A");
    board.init(0);
    title.init(0);
    IDataHandlerImpl::getOrbel(0, false)->getField(Text("node:board"), 0, 1);
    board.Register(Text("board"), 0);
    ASSERT_NE(board.getField(), nullptr);
    board.RegisterChild(&title, "string:title", 0);
    ASSERT_NE(title.getField(), nullptr);
    EXPECT_STREQ(title.getField()->getFullPath(), "board/title");
    board.UnregisterAllChildren();
    EXPECT_NE(title.getField(), nullptr) << "nobody tells what is below";
    std::vector<int> indices;
    board.syncChildren(&title, indices);
    board.Unregister();
    EXPECT_EQ(board.getField(), nullptr);
}

TEST_F(WithoutAHost, NoSceneWaitsForItsInit) {
    EXPECT_EQ(korDataHandler::getInitQX(), 0);
    korDataHandler::setInitQX(1);
    EXPECT_EQ(korDataHandler::getInitQX(), 0);
    EXPECT_EQ(korDataHandler::qxNeedsInit, 1);
    korDataHandler::setInitQX(0);
    EXPECT_EQ(korDataHandler::qxNeedsInit, 0);
}

TEST_F(WithoutAHost, ScenesAreNotTraversed) {
    IDataHandlerImpl::init();
    console.takeOutput();
    korDataHandler::setInitQX(1);
    initOrbel();
    EXPECT_EQ(korDataHandler::qxNeedsInit, 0);
    initContainer();
    resetAllTypedObjects();
    EXPECT_EQ(console.takeOutput(), "");
}

TEST_F(WithoutAHost, ScenesAreNotTraversedInAFreshProcess) {
    initOrbel();
    initContainer();
    resetAllTypedObjects();
    Handler handler(diary, "A");
    handler.init(0);
    handler.Register("title", 0);
    EXPECT_NE(handler.getField(), nullptr);
}

TEST_F(WithoutAHost, PointersAndAxesNeedNone) {
    Handler handler(diary, "A");
    EXPECT_EQ(korDataHandler::PtrToBase64(1), "AQAAAAAAAAA=");
    EXPECT_EQ(korDataHandler::Base64ToPtr("AQAAAAAAAAA="), 1U);
    handler.setRanges(0, 10, 0, 1, 0, -1);
    EXPECT_EQ(handler.normalizeData(5, 0), 0.5F);
}
