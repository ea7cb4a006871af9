#include <orbel/tree/TreeState.h>
#include <support/SceneTree.h>

#include <gtest/gtest.h>

TEST(TreeState, NamesTheStructureOfTheLastSegment) {
    SceneTree tree;
    tree.at("scene");
    EXPECT_EQ(treeState.lastSearched, &tree.root);
    tree.at("scene/title");
    EXPECT_EQ(treeState.lastSearched, tree.scene);
    tree.at("scene/../scene");
    EXPECT_EQ(treeState.lastSearched, &tree.root);
    tree.at("points[1]/x");
    EXPECT_EQ(treeState.lastSearched, tree.points->getObject(1));
    tree.at("cities[Oslo]/x");
    EXPECT_EQ(treeState.lastSearched, tree.city("Oslo"));
}

TEST(TreeState, NamesTheStructureOfAMissingSegment) {
    SceneTree tree;
    tree.at("scene/missing/more");
    EXPECT_EQ(treeState.lastSearched, tree.scene);
    tree.at("missing/title");
    EXPECT_EQ(treeState.lastSearched, &tree.root);
    tree.at("points[5]/x");
    EXPECT_EQ(treeState.lastSearched, &tree.root);
}

TEST(TreeState, NamesTheStructureBelowWhichALeafEndsThePath) {
    SceneTree tree;
    tree.at("scene/title/more");
    EXPECT_EQ(treeState.lastSearched, tree.scene);
    tree.at("cities/x");
    EXPECT_EQ(treeState.lastSearched, &tree.root);
}

TEST(TreeState, PathsAreRememberedUntilTheLastStructureGoes) {
    {
        Orbel root(Text("root"));
        DataValue title(Text("title"));
        root.addField(&title, 0);
        EXPECT_FALSE(treeState.paths.hasMemory());
        EXPECT_EQ(root.getField(Text("title"), 0, 0), &title);
        EXPECT_TRUE(treeState.paths.hasMemory());
        { const DataStructure brief(Text("brief")); }
        EXPECT_TRUE(treeState.paths.hasMemory());
    }
    EXPECT_FALSE(treeState.paths.hasMemory());
}

TEST(TreeState, WildcardKeepsTheRestOfThePath) {
    SceneTree tree;
    EXPECT_EQ(tree.at("*/x"), nullptr);
    EXPECT_TRUE(treeState.wildcard);
    EXPECT_STREQ(treeState.wildcardRest, "x");
    EXPECT_EQ(treeState.lastSearched, &tree.root);

    EXPECT_EQ(tree.at("scene/*/a/b[2]/*"), nullptr);
    EXPECT_TRUE(treeState.wildcard);
    EXPECT_STREQ(treeState.wildcardRest, "a/b[2]/*");
    EXPECT_EQ(treeState.lastSearched, tree.scene);

    EXPECT_EQ(tree.at("*"), nullptr);
    EXPECT_TRUE(treeState.wildcard);
    EXPECT_STREQ(treeState.wildcardRest, "");
}

TEST(TreeState, WildcardKeepsTheLongestRest) {
    SceneTree tree;
    const std::string rest(509, 'r');
    tree.at("*/" + rest);
    EXPECT_TRUE(treeState.wildcard);
    EXPECT_EQ(treeState.wildcardRest, rest);
}

TEST(TreeState, AnotherResolutionClearsTheWildcard) {
    SceneTree tree;
    tree.at("*/x");
    tree.at("scene");
    EXPECT_FALSE(treeState.wildcard);
    EXPECT_EQ(treeState.lastSearched, &tree.root);

    tree.at("*/x");
    tree.at("missing");
    EXPECT_FALSE(treeState.wildcard);

    tree.at("*/x");
    tree.at("");
    EXPECT_FALSE(treeState.wildcard);
}

TEST(TreeState, APathBeyondTheLimitLeavesAllResultsAlone) {
    SceneTree tree;
    tree.at("scene/*/kept");
    for (const std::size_t length : {512u, 100'000u})
        for (const std::string& start : {std::string("*/"), std::string("scene/"), std::string("string:")}) {
            EXPECT_EQ(tree.at(start + std::string(length - start.size(), 'x')), nullptr);
            EXPECT_TRUE(treeState.wildcard);
            EXPECT_STREQ(treeState.wildcardRest, "kept");
            EXPECT_EQ(treeState.lastSearched, tree.scene);
        }
}

TEST(TreeState, ACommandTakesTheWildcardItMet) {
    SceneTree tree;
    tree.root.executeCommand(Text("scene/* = 1"), 0);
    EXPECT_FALSE(treeState.wildcard);
    EXPECT_EQ(*tree.title->getData(0), "1");
}
