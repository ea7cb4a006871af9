#include <orbel/handlers/SceneRegistry.h>
#include <orbel/tree/Orbel.h>

#include <support/AllocationCount.h>
#include <support/Console.h>

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(SceneRegistry, KeepsThatASceneHasNoTreeForLackOfMemory) {
    const Console console;
    SceneRegistry scenes;
    {
        const FailingAllocations outOfMemory(sizeof(Orbel));
        EXPECT_EQ(scenes.treeOf(7, true, true), nullptr);
    }
    EXPECT_EQ(scenes.treeOf(7, false, true), nullptr);
    EXPECT_EQ(scenes.treeOf(-1, false, true), nullptr);
}

TEST(SceneRegistry, TriesAgainToMakeTheOnlyTree) {
    SceneRegistry scenes;
    {
        const FailingAllocations outOfMemory(sizeof(Orbel));
        EXPECT_EQ(scenes.treeOf(7, true, false), nullptr);
    }
    Orbel* const tree = scenes.treeOf(7, false, false);
    ASSERT_NE(tree, nullptr);
    EXPECT_STREQ(tree->getName(), "Orbel");
    delete tree;
}

} // namespace
