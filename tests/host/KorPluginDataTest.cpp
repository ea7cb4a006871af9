#include <orbel/orbel.h>

#include <support/TestHost.h>
#include <support/Text.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <type_traits>

namespace {

constexpr int lowestInt = std::numeric_limits<int>::min();
constexpr int highestInt = std::numeric_limits<int>::max();

/// A host with a scene and four containers below each other.
class PluginData : public testing::Test {
protected:
    PluginData() {
        host.localScene = scene.id;
        host.localContainer = text.id;
    }

    void setSceneName(const std::string& name) {
        host.scenes[scene.id].name = name;
        data.setLocalScene(scene);
    }

    void serveOther(int which) {
        data.setCurrentContainer(text);
        data.setIsOther(1);
        data.setWhichOther(which);
    }

    TestHost& host = TestHost::get();
    SCENE scene = host.addScene("Show/Weather/Today");
    CONTAINER show = host.addContainer("show");
    CONTAINER board = host.addContainer("board", show.id);
    CONTAINER line = host.addContainer("line", board.id);
    CONTAINER text = host.addContainer("text", line.id);
    korPluginData data;
};

} // namespace

static_assert(sizeof(CONTAINER) == 4 && sizeof(SCENE) == 4);
static_assert(std::has_virtual_destructor_v<korPluginData>);

TEST(Handles, AreInvalidUntilTheyNameAnObject) {
    EXPECT_EQ(CONTAINER().id, -1);
    EXPECT_EQ(SCENE().id, -1);
    CONTAINER container = 12;
    const CONTAINER copy = container;
    container.id = 13;
    EXPECT_EQ(copy.id, 12);
    SCENE scene = 7;
    const SCENE sceneCopy = scene;
    scene.id = 8;
    EXPECT_EQ(sceneCopy.id, 7);
}

TEST_F(PluginData, IsNowhereAtFirst) {
    EXPECT_EQ(data.getLocalContainer().id, -1);
    EXPECT_EQ(data.getCurrentContainer().id, -1);
    EXPECT_EQ(data.getLocalScene().id, -1);
    EXPECT_EQ(data.getCurrentItem(), 0);
    EXPECT_EQ(data.getIsOther(), 0);
    EXPECT_EQ(data.getRemoteContainer().id, -1);
    EXPECT_STREQ(data.getSceneID(), "");
    EXPECT_STREQ(data.getContainerName(), "");
    EXPECT_STREQ(data.getSceneFullName(), "");
    EXPECT_STREQ(data.getSceneName(), "");
    EXPECT_STREQ(data.getScenePath(), ".");
}

TEST_F(PluginData, GivenLocalContainerIsNotTheCurrentOne) {
    data.setLocalContainer(board);
    EXPECT_EQ(data.getLocalContainer().id, board.id);
    EXPECT_EQ(data.getCurrentContainer().id, -1);
    EXPECT_STREQ(data.getContainerName(), "board");
}

TEST_F(PluginData, LocalContainerOfTheHostIsTheCurrentOneToo) {
    data.setLocalContainer();
    EXPECT_EQ(data.getLocalContainer().id, text.id);
    EXPECT_EQ(data.getCurrentContainer().id, text.id);
    EXPECT_STREQ(data.getContainerName(), "text");

    host.localContainer = -1;
    data.setLocalContainer();
    EXPECT_EQ(data.getLocalContainer().id, -1);
    EXPECT_EQ(data.getCurrentContainer().id, -1);
}

TEST_F(PluginData, CurrentContainerIsSetAndReset) {
    data.setLocalContainer(board);
    data.setCurrentContainer(text);
    EXPECT_EQ(data.getCurrentContainer().id, text.id);
    EXPECT_EQ(data.getLocalContainer().id, board.id);
    EXPECT_STREQ(data.getContainerName(), "board");
    data.resetCurrentContainer();
    EXPECT_EQ(data.getCurrentContainer().id, board.id);
}

TEST_F(PluginData, ServesAContainerAbove) {
    serveOther(0);
    EXPECT_EQ(data.getCurrentContainer().id, line.id);
    serveOther(1);
    EXPECT_EQ(data.getCurrentContainer().id, board.id);
    serveOther(2);
    EXPECT_EQ(data.getCurrentContainer().id, show.id);
}

TEST_F(PluginData, ServesNoContainerAboveTheTop) {
    serveOther(0);
    data.setCurrentContainer(show);
    EXPECT_EQ(data.getCurrentContainer().id, -1);
    serveOther(2);
    data.setCurrentContainer(line);
    EXPECT_EQ(data.getCurrentContainer().id, -1);
    CONTAINER dead = 4711;
    data.setCurrentContainer(dead);
    EXPECT_EQ(data.getCurrentContainer().id, -1);
}

TEST_F(PluginData, ServesTheRemoteContainerWhenTheHostKnowsIt) {
    serveOther(3);
    EXPECT_EQ(data.getCurrentContainer().id, text.id);
    data.setRemoteContainer(board);
    EXPECT_EQ(data.getCurrentContainer().id, board.id);
    CONTAINER dead = 4711;
    data.setRemoteContainer(dead);
    EXPECT_EQ(data.getCurrentContainer().id, text.id);
    EXPECT_EQ(data.getRemoteContainer().id, 4711);
}

TEST_F(PluginData, UnknownOthersAreTheCurrentContainer) {
    data.setRemoteContainer(board);
    for (const int which : {-1, lowestInt, 4, 5, highestInt}) {
        serveOther(which);
        EXPECT_EQ(data.getCurrentContainer().id, text.id) << which;
    }
}

TEST_F(PluginData, CurrentItemKeepsTheCurrentContainer) {
    for (const int which : {0, 1, 2, 3}) {
        serveOther(which);
        data.setRemoteContainer(board);
        data.setCurrentItem(0);
        EXPECT_EQ(data.getCurrentContainer().id, text.id) << which;
        data.setCurrentItem(-2);
        EXPECT_NE(data.getCurrentContainer().id, text.id) << which;
    }
}

TEST_F(PluginData, AnyNumberButZeroIsOther) {
    serveOther(0);
    data.setIsOther(-1);
    EXPECT_EQ(data.getCurrentContainer().id, line.id);
    data.setIsOther(highestInt);
    EXPECT_EQ(data.getCurrentContainer().id, line.id);
    data.setIsOther(0);
    EXPECT_EQ(data.getCurrentContainer().id, text.id);
}

TEST_F(PluginData, LookingAtAnotherContainerChangesNothing) {
    serveOther(1);
    EXPECT_EQ(data.getCurrentContainer().id, board.id);
    EXPECT_EQ(data.getCurrentContainer().id, board.id);
    data.setIsOther(0);
    EXPECT_EQ(data.getCurrentContainer().id, text.id);
}

TEST_F(PluginData, FlagsAreKeptAsTheyAre) {
    for (const int flag : {0, 1, 3, -7, lowestInt, highestInt}) {
        data.setIsOther(flag);
        EXPECT_EQ(data.getIsOther(), flag);
        data.setWhichOther(flag);
        EXPECT_EQ(data.getWhichOther(), flag);
    }
}

TEST_F(PluginData, NegativeItemsReadAsZero) {
    data.setCurrentItem(5);
    EXPECT_EQ(data.getCurrentItem(), 5);
    data.resetCurrentItem();
    EXPECT_EQ(data.getCurrentItem(), 0);
    for (const int item : {-1, -2, lowestInt}) {
        data.setCurrentItem(item);
        EXPECT_EQ(data.getCurrentItem(), 0);
    }
    data.setCurrentItem(highestInt);
    EXPECT_EQ(data.getCurrentItem(), highestInt);
}

TEST_F(PluginData, RemoteContainerIsFoundByName) {
    data.setRemoteContainer(Text("board"));
    EXPECT_EQ(data.getRemoteContainer().id, board.id);
    for (const char* unknown : {"nowhere", "Board", "", " board", "x#1"}) {
        data.setRemoteContainer(board);
        data.setRemoteContainer(Text(unknown));
        EXPECT_EQ(data.getRemoteContainer().id, -1) << unknown;
    }
}

TEST_F(PluginData, RemoteContainerIsFoundByNumber) {
    const std::string number = std::to_string(line.id);
    for (const std::string& name : {'#' + number, '#' + number + "abc", "# \t" + number, "#+" + number, "#0" + number,
                                    '#' + number + ".9", '#' + number + " 1"}) {
        data.setRemoteContainer(Text("board"));
        data.setRemoteContainer(Text(name));
        EXPECT_EQ(data.getRemoteContainer().id, line.id) << name;
    }
}

TEST_F(PluginData, NumbersOfNoObjectAreInvalid) {
    for (const char* name : {"#", "#abc", "##3", "#-1", "#-3", "#0", "#4711", "#2147483647", "#99999999999999999999",
                             "#-99999999999999999999"}) {
        data.setRemoteContainer(board);
        data.setRemoteContainer(Text(name));
        EXPECT_EQ(data.getRemoteContainer().id, -1) << name;
    }
}

TEST_F(PluginData, NumberOfTheRemoteContainerIsReadUpToTheFirstOtherCharacter) {
    while (host.containers.count(12) == 0)
        host.addContainer("further");
    data.setRemoteContainer(Text("#12abc"));
    EXPECT_EQ(data.getRemoteContainer().id, 12);
}

TEST_F(PluginData, NullNamesNoRemoteContainer) {
    data.setRemoteContainer(board);
    data.setRemoteContainer(static_cast<char*>(nullptr));
    EXPECT_EQ(data.getRemoteContainer().id, -1);
}

TEST_F(PluginData, RemoteContainerIsNotTheCurrentOne) {
    data.setLocalContainer();
    data.setRemoteContainer(board);
    EXPECT_EQ(data.getCurrentContainer().id, text.id);
    EXPECT_EQ(data.getLocalContainer().id, text.id);
}

TEST_F(PluginData, SceneIsGivenOrAskedFor) {
    SCENE other = host.addScene("Other");
    data.setLocalScene(other);
    EXPECT_EQ(data.getLocalScene().id, other.id);
    EXPECT_EQ(data.getSceneID(), '#' + std::to_string(other.id));
    EXPECT_STREQ(data.getSceneFullName(), "Other");
    data.setLocalScene();
    EXPECT_EQ(data.getLocalScene().id, scene.id);
    EXPECT_EQ(data.getSceneID(), '#' + std::to_string(scene.id));
    EXPECT_STREQ(data.getSceneFullName(), "Show/Weather/Today");
    host.localScene = -1;
    data.setLocalScene();
    EXPECT_EQ(data.getLocalScene().id, -1);
    EXPECT_STREQ(data.getSceneID(), "#-1");
    EXPECT_STREQ(data.getSceneFullName(), "");
}

TEST_F(PluginData, SceneIdTextHoldsAnyNumber) {
    const auto textOf = [this](int id) {
        SCENE other = id;
        data.setLocalScene(other);
        return std::string(data.getSceneID());
    };
    EXPECT_EQ(textOf(highestInt), "#2147483647");
    EXPECT_EQ(textOf(lowestInt), "#-2147483648");
    EXPECT_EQ(textOf(0), "#0");
    EXPECT_EQ(textOf(-1), "#-1");
    EXPECT_EQ(textOf(7), "#7");
}

TEST_F(PluginData, SceneNameIsTheLastPartAndItsPathAllBeforeIt) {
    const auto parts = [this](const std::string& fullName) {
        setSceneName(fullName);
        EXPECT_EQ(data.getSceneFullName(), fullName);
        return data.getSceneName() + std::string(" in ") + data.getScenePath();
    };
    EXPECT_EQ(parts("Show/Weather/Today"), "Today in Show/Weather/");
    EXPECT_EQ(parts("Today"), "Today in .");
    EXPECT_EQ(parts("Show*Weather*Today"), "Today in Show*Weather*");
    EXPECT_EQ(parts("Show/Weather*Today"), "Weather*Today in Show/");
    EXPECT_EQ(parts("Show*Weather/Today"), "Today in Show*Weather/");
    EXPECT_EQ(parts("/Today"), "Today in /");
    EXPECT_EQ(parts("*Today"), "Today in *");
    EXPECT_EQ(parts("Show/Weather/"), " in Show/Weather/");
    EXPECT_EQ(parts("Show*"), " in Show*");
    EXPECT_EQ(parts("/"), " in /");
    EXPECT_EQ(parts("*"), " in *");
    EXPECT_EQ(parts(""), " in .");
    EXPECT_EQ(parts("Show\\Weather today"), "Show\\Weather today in .");
}

TEST_F(PluginData, LongSceneNamesStayWhole) {
    const std::string part(5'000, 'x');
    setSceneName(part + '/' + part + 'y');
    EXPECT_EQ(data.getSceneName(), part + 'y');
    EXPECT_EQ(data.getScenePath(), part + '/');
    setSceneName("a/b");
    EXPECT_STREQ(data.getSceneName(), "b");
    EXPECT_STREQ(data.getScenePath(), "a/");
}

TEST_F(PluginData, SceneNameAndPathAreKeptApart) {
    const char* const name = data.getSceneName();
    EXPECT_STREQ(name, "");
    setSceneName("Show/Today");
    const char* const today = data.getSceneName();
    EXPECT_STREQ(data.getScenePath(), "Show/");
    EXPECT_STREQ(today, "Today");
}

TEST_F(PluginData, AllPlugInsShareTheTextOfTheSceneName) {
    korPluginData other;
    SCENE news = host.addScene("Show/Nightly");
    other.setLocalScene(news);
    setSceneName("Show/Morning");
    const char* const name = data.getSceneName();
    EXPECT_STREQ(name, "Morning");
    EXPECT_EQ(other.getSceneName(), name);
    EXPECT_STREQ(name, "Nightly");
    const char* const path = data.getScenePath();
    EXPECT_EQ(other.getScenePath(), path);
}

TEST_F(PluginData, SceneNameMayBeWrittenTo) {
    data.setLocalScene();
    data.getSceneName()[0] = 'X';
    data.getScenePath()[0] = 'X';
    EXPECT_STREQ(data.getSceneFullName(), "Show/Weather/Today");
}

TEST_F(PluginData, NamesOfObjectsThatAreGoneAreEmpty) {
    CONTAINER deadContainer = 4711;
    SCENE deadScene = 4712;
    data.setLocalContainer(deadContainer);
    data.setLocalScene(deadScene);
    EXPECT_STREQ(data.getContainerName(), "");
    EXPECT_STREQ(data.getSceneFullName(), "");
    EXPECT_STREQ(data.getSceneName(), "");
    EXPECT_STREQ(data.getScenePath(), ".");
    EXPECT_STREQ(data.getSceneID(), "#4712");
}

TEST_F(PluginData, HostsMayGiveNoTexts) {
    data.setLocalContainer();
    data.setLocalScene();
    host.isSilent = true;
    EXPECT_STREQ(data.getContainerName(), "");
    EXPECT_STREQ(data.getSceneFullName(), "");
    EXPECT_STREQ(data.getSceneName(), "");
    EXPECT_STREQ(data.getScenePath(), ".");
}

TEST_F(PluginData, NamesFollowTheHost) {
    data.setLocalContainer();
    data.setLocalScene();
    host.containers[text.id].name = "renamed";
    host.scenes[scene.id].name = "Archive/Today";
    EXPECT_STREQ(data.getContainerName(), "renamed");
    EXPECT_STREQ(data.getScenePath(), "Archive/");
}

TEST_F(PluginData, CopiesTakeEverything) {
    data.setLocalContainer(line);
    data.setCurrentContainer(text);
    data.setLocalScene(scene);
    data.setCurrentItem(4);
    data.setIsOther(1);
    data.setWhichOther(3);
    data.setRemoteContainer(show);
    korPluginData copy(data);
    korPluginData assigned;
    SCENE other = lowestInt;
    assigned.setLocalScene(other);
    assigned = data;
    for (korPluginData* taken : {&copy, &assigned}) {
        EXPECT_EQ(taken->getLocalContainer().id, line.id);
        EXPECT_EQ(taken->getCurrentContainer().id, text.id);
        EXPECT_EQ(taken->getLocalScene().id, scene.id);
        EXPECT_EQ(taken->getSceneID(), '#' + std::to_string(scene.id));
        EXPECT_EQ(taken->getCurrentItem(), 4);
        EXPECT_EQ(taken->getIsOther(), 1);
        EXPECT_EQ(taken->getWhichOther(), 3);
        EXPECT_EQ(taken->getRemoteContainer().id, show.id);
        taken->resetCurrentItem();
        EXPECT_EQ(taken->getCurrentContainer().id, show.id);
    }
    EXPECT_EQ(data.getCurrentItem(), 4);
}

TEST_F(PluginData, CopiesHaveASceneIdTextOfTheirOwn) {
    data.setLocalScene(scene);
    korPluginData copy(data);
    SCENE other = highestInt;
    copy.setLocalScene(other);
    EXPECT_STREQ(copy.getSceneID(), "#2147483647");
    EXPECT_EQ(data.getSceneID(), '#' + std::to_string(scene.id));
    const korPluginData& itself = data;
    data = itself;
    EXPECT_EQ(data.getSceneID(), '#' + std::to_string(scene.id));
}
