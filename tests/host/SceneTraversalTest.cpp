#include <orbel/orbel.h>

#include <support/Console.h>
#include <support/Environment.h>
#include <support/RecordingPlugin.h>
#include <support/TestHost.h>
#include <support/Text.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using Leaf = RecordingPluginOf<korDataHandler>;
using Structure = RecordingPluginOf<korDataStructureHandler>;

class SceneTraversal : public testing::Test {
protected:
    SceneTraversal() {
        clearTypeVariables();
        host.localScene = host.addScene("Show/Weather");
        root = host.scenes[host.localScene].root = host.addContainer("root");
        host.localContainer = root;
    }

    /// Puts a plug-in on a container, as the host does when it loads a scene.
    template <class Plugin>
    void put(int container, Plugin& plugin, korPluginRecord& record, const char* kind, const char* field) {
        SCENE scene = host.localScene;
        CONTAINER place = container;
        plugin.init(host.localScene);
        plugin.setLocalScene(scene);
        plugin.setLocalContainer(place);
        plugin.setFieldName(field);
        record.handler = &plugin;
        host.addPlugin(container, kind, &record);
    }

    Console console;
    TestHost& host = TestHost::get();
    int root = -1;
    Diary diary;
    korPluginRecord records[8];
};

TEST_F(SceneTraversal, AttachesLeavesBelowTheStructureAboveThem) {
    Orbel* const tree = IDataHandlerImpl::getOrbel(host.localScene, false);
    tree->getField(Text("node:board/string:title"), 0, 1);
    Structure board(diary, "DataStructure");
    Leaf title(diary, "Text");
    put(root, board, records[0], "DataStructure", "board");
    put(host.addContainer("title", root), title, records[1], "Text", "title");
    initOrbel();
    ASSERT_NE(title.getField(), nullptr);
    EXPECT_STREQ(title.getField()->getFullPath(), "board/title");
    EXPECT_EQ(diary.take(), "Text function init, Text init");
}

} // namespace
