#include <support/SceneTree.h>

#include <gtest/gtest.h>

TEST(Orbel, IsAStructureOfItsOwnClass) {
    Orbel root(Text("show"));
    EXPECT_STREQ(root.getTypeName(), "Orbel");
    EXPECT_STREQ(Orbel::getClassType()->getName(), "Orbel");
    EXPECT_EQ(root.isExactType(Orbel::getClassType()), 1);
    EXPECT_EQ(root.isOfType(DataStructure::getClassType()), 1);
    EXPECT_EQ(root.isExactType(DataStructure::getClassType()), 0);
    EXPECT_EQ(root.getNumFields(), 0);
    EXPECT_EQ(root.getParent(), nullptr);
}

TEST(Orbel, IsMadeByItsRecord) {
    auto* made = static_cast<Orbel*>(Orbel::getClassType()->alloc(Text("show"), 0));
    EXPECT_STREQ(made->getTypeName(), "Orbel");
    EXPECT_STREQ(made->getName(), "show");
    delete made;
}

TEST(Orbel, IsLeftOutOfFullPaths) {
    SceneTree tree;
    EXPECT_STREQ(tree.root.getFullPath(), "");
    EXPECT_STREQ(tree.scene->getFullPath(), "scene");
    EXPECT_STREQ(tree.title->getFullPath(), "scene/title");
}

TEST(Orbel, ClonesAsARoot) {
    SceneTree tree;
    auto* copy = static_cast<Orbel*>(tree.scene->getParent()->clone());
    EXPECT_EQ(copy->isExactType(Orbel::getClassType()), 1);
    EXPECT_STREQ(copy->getName(), "show");
    deleteSubtree(*copy);
    delete copy;
}
