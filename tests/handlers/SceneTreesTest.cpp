#include <orbel/orbel.h>

#include <support/Console.h>
#include <support/Environment.h>
#include <support/WorkingFolder.h>

#include <gtest/gtest.h>

#include <string>

namespace {

const std::string noTree = "------------  Can't Retrieve Orbel ------------\n";

std::string creating(const std::string& name) {
    return "++++++++++ Creating new Orbel : " + name + " ++++++++++\n";
}

class SceneTrees : public testing::Test {
protected:
    SceneTrees() { clearTypeVariables(); }

    void initWith(const std::string& settings) {
        folder.write("Orbel.ini", settings);
        IDataHandlerImpl::init();
        console.takeOutput();
    }

    Console console;
    WorkingFolder folder;
};

class SingleTree : public SceneTrees {};

class TreePerScene : public SceneTrees {
protected:
    TreePerScene() { initWith("MultiOrbel=1\n"); }
};

} // namespace

TEST_F(SingleTree, ServesAllScenes) {
    IDataHandlerImpl::init();
    console.takeOutput();
    Orbel* tree = IDataHandlerImpl::getOrbel(3, true);
    ASSERT_NE(tree, nullptr);
    EXPECT_STREQ(tree->getName(), "Orbel");
    EXPECT_EQ(tree->getNumFields(), 0);
    EXPECT_EQ(IDataHandlerImpl::getOrbel(9, false), tree);
    EXPECT_EQ(IDataHandlerImpl::getOrbel(-1, false), tree);
    EXPECT_EQ(console.takeOutput(), "");
}

TEST_F(SingleTree, IsThereBeforeTheSettings) {
    Orbel* tree = IDataHandlerImpl::getOrbel(-1, false);
    ASSERT_NE(tree, nullptr);
    EXPECT_EQ(IDataHandlerImpl::IsMultiOrbel(), -1);
    IDataHandlerImpl::init();
    EXPECT_EQ(IDataHandlerImpl::getOrbel(1, false), tree);
}

TEST_F(SingleTree, ServesUnlessTheSettingIsOne) {
    initWith("MultiOrbel=2\n");
    EXPECT_EQ(IDataHandlerImpl::getOrbel(1, false), IDataHandlerImpl::getOrbel(2, false));
    EXPECT_STREQ(IDataHandlerImpl::getOrbel(1, false)->getName(), "Orbel");
}

TEST_F(SingleTree, RemembersTheCurrentScene) {
    Orbel* single = IDataHandlerImpl::getOrbel(3, true);
    initWith("MultiOrbel=1\n");
    Orbel* current = IDataHandlerImpl::getOrbel(-1, false);
    EXPECT_EQ(console.takeOutput(), creating("Scene-#3"));
    EXPECT_NE(current, single);
    EXPECT_EQ(IDataHandlerImpl::getOrbel(3, false), current);
}

TEST_F(SingleTree, RemembersTheSceneThatIsSetCurrent) {
    IDataHandlerImpl::SetLastSceneID(5);
    initWith("MultiOrbel=1\n");
    EXPECT_STREQ(IDataHandlerImpl::getOrbel(-1, false)->getName(), "Scene-#5");
}

TEST_F(SingleTree, RemembersTheSceneOfTheLastCallThatMadeOneCurrent) {
    IDataHandlerImpl::getOrbel(3, true);
    IDataHandlerImpl::getOrbel(9, false);
    initWith("MultiOrbel=1\n");
    EXPECT_STREQ(IDataHandlerImpl::getOrbel(-1, false)->getName(), "Scene-#3");
}

TEST_F(SingleTree, RemembersNoSceneToo) {
    IDataHandlerImpl::getOrbel(3, true);
    IDataHandlerImpl::getOrbel(-1, true);
    initWith("MultiOrbel=1\n");
    EXPECT_EQ(IDataHandlerImpl::getOrbel(-1, false), nullptr);
    EXPECT_EQ(console.takeOutput(), noTree);
}

TEST_F(TreePerScene, NeedsACurrentScene) {
    EXPECT_EQ(IDataHandlerImpl::getOrbel(-1, false), nullptr);
    EXPECT_EQ(console.takeOutput(), noTree);
    EXPECT_EQ(IDataHandlerImpl::getOrbel(-1, true), nullptr);
    EXPECT_EQ(console.takeOutput(), noTree);
}

TEST_F(TreePerScene, IsMadeOnce) {
    Orbel* tree = IDataHandlerImpl::getOrbel(7, false);
    EXPECT_EQ(console.takeOutput(), creating("Scene-#7"));
    ASSERT_NE(tree, nullptr);
    EXPECT_STREQ(tree->getName(), "Scene-#7");
    EXPECT_EQ(IDataHandlerImpl::getOrbel(7, false), tree);
    EXPECT_EQ(console.takeOutput(), "");
}

TEST_F(TreePerScene, BecomesCurrentOnDemandOnly) {
    Orbel* tree = IDataHandlerImpl::getOrbel(7, false);
    console.takeOutput();
    EXPECT_EQ(IDataHandlerImpl::getOrbel(-1, false), nullptr);
    EXPECT_EQ(console.takeOutput(), noTree);
    EXPECT_EQ(IDataHandlerImpl::getOrbel(7, true), tree);
    EXPECT_EQ(IDataHandlerImpl::getOrbel(-1, false), tree);
    EXPECT_EQ(IDataHandlerImpl::getOrbel(-1, true), tree);
    EXPECT_EQ(IDataHandlerImpl::getOrbel(-1, false), tree);
    EXPECT_EQ(console.takeOutput(), "");
}

TEST_F(TreePerScene, IsDifferentForEachScene) {
    Orbel* seven = IDataHandlerImpl::getOrbel(7, true);
    Orbel* other = IDataHandlerImpl::getOrbel(-2, false);
    EXPECT_NE(seven, other);
    EXPECT_STREQ(other->getName(), "Scene-#-2");
    EXPECT_EQ(console.takeOutput(), creating("Scene-#7") + creating("Scene-#-2"));
    EXPECT_EQ(IDataHandlerImpl::getOrbel(-1, false), seven);
}

TEST_F(TreePerScene, IsMadeForASceneThatIsSetCurrent) {
    IDataHandlerImpl::SetLastSceneID(12);
    EXPECT_EQ(console.takeOutput(), "");
    EXPECT_STREQ(IDataHandlerImpl::getOrbel(-1, false)->getName(), "Scene-#12");
    EXPECT_EQ(console.takeOutput(), creating("Scene-#12"));
    IDataHandlerImpl::SetLastSceneID(-1);
    EXPECT_EQ(IDataHandlerImpl::getOrbel(-1, false), nullptr);
}

TEST_F(TreePerScene, IsMadeForAnyNumberButMinusOne) {
    for (const int scene : {0, -2, 2'147'483'647, -2'147'483'647 - 1}) {
        const std::string name = "Scene-#" + std::to_string(scene);
        IDataHandlerImpl::SetLastSceneID(scene);
        Orbel* tree = IDataHandlerImpl::getOrbel(-1, false);
        ASSERT_NE(tree, nullptr);
        EXPECT_EQ(tree->getName(), name);
        EXPECT_EQ(console.takeOutput(), creating(name));
        EXPECT_EQ(IDataHandlerImpl::getOrbel(scene, false), tree);
    }
    EXPECT_EQ(console.takeOutput(), "");
}

TEST_F(TreePerScene, StaysCurrentUntilAnotherIsMadeCurrent) {
    IDataHandlerImpl::getOrbel(-1, true);
    Orbel* seven = IDataHandlerImpl::getOrbel(7, true);
    Orbel* eight = IDataHandlerImpl::getOrbel(8, false);
    EXPECT_NE(seven, eight);
    EXPECT_EQ(IDataHandlerImpl::getOrbel(-1, false), seven);
    EXPECT_EQ(IDataHandlerImpl::getOrbel(8, true), eight);
    EXPECT_EQ(IDataHandlerImpl::getOrbel(-1, false), eight);
}
