#include <kor/Scene.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::vector<int> walk(Scene& scene) {
    std::vector<int> found;
    for (int id = scene.tops().empty() ? -1 : scene.tops().front(); id != -1;
         id = scene.siblingBehind(*scene.container(id)))
        found.push_back(id);
    return found;
}

TEST(KorScene, GivesEveryObjectAnIdOfItsOwnFromOne) {
    Scene scene;
    Container& container = scene.addContainer("a", -1);
    EXPECT_EQ(scene.id(), 1);
    EXPECT_EQ(container.id, 2);
    EXPECT_EQ(scene.addGeometry(container, "TEXT").id, 3);
    EXPECT_EQ(scene.addPlugIn(container, "DataText", {}).id, 4);
    EXPECT_EQ(scene.addContainer("b", 2).id, 5);
}

TEST(KorScene, KnowsWhatIsValidAndItsName) {
    Scene scene;
    Container& container = scene.addContainer("a", -1);
    const int geometry = scene.addGeometry(container, "TEXT").id;
    const int plugIn = scene.addPlugIn(container, "DataText", {}).id;
    for (const int id : {scene.id(), container.id, geometry, plugIn})
        EXPECT_TRUE(scene.isValid(id)) << id;
    for (const int id : {-1, 0, 99})
        EXPECT_FALSE(scene.isValid(id)) << id;
    EXPECT_EQ(scene.nameOf(scene.id()), "Kor");
    EXPECT_EQ(scene.nameOf(container.id), "a");
    EXPECT_EQ(scene.nameOf(geometry), "TEXT");
    EXPECT_EQ(scene.nameOf(plugIn), "DataText");
    EXPECT_EQ(scene.nameOf(99), "");
}

TEST(KorScene, TellsSiblingsInTheOrderTheyWereAdded) {
    Scene scene;
    const int a = scene.addContainer("a", -1).id;
    const int below = scene.addContainer("below", a).id;
    const int b = scene.addContainer("b", -1).id;
    const int c = scene.addContainer("c", -1).id;
    EXPECT_EQ(walk(scene), (std::vector<int>{a, b, c}));
    EXPECT_EQ(scene.siblingBehind(*scene.container(below)), -1);
}

TEST(KorScene, FindsContainersByNameTheOldestFirstAndByPath) {
    Scene scene;
    const int a = scene.addContainer("a", -1).id;
    const int first = scene.addContainer("x", a).id;
    const int b = scene.addContainer("b", -1).id;
    const int second = scene.addContainer("x", b).id;
    EXPECT_EQ(scene.find("x"), first);
    EXPECT_EQ(scene.find("b/x"), second);
    EXPECT_EQ(scene.find("b"), b);
    for (const char* unknown : {"", "y", "a/y", "a/x/", "/a", "x/a", "A"})
        EXPECT_EQ(scene.find(unknown), -1) << unknown;
}

TEST(KorScene, RemovesContainersInAnyOrder) {
    Scene scene;
    std::vector<int> ids;
    for (int count = 0; count < 6; ++count)
        ids.push_back(scene.addContainer("c", -1).id);
    for (const int index : {3, 0, 5})
        scene.removeContainer(ids[static_cast<std::size_t>(index)]);
    EXPECT_EQ(walk(scene), (std::vector<int>{ids[1], ids[2], ids[4]}));
    const int added = scene.addContainer("d", -1).id;
    scene.removeContainer(ids[4]);
    scene.removeContainer(ids[4]);
    EXPECT_EQ(walk(scene), (std::vector<int>{ids[1], ids[2], added}));
}

TEST(KorScene, RemovesWhatIsOnAndBelowAContainer) {
    Scene scene;
    const int top = scene.addContainer("top", -1).id;
    const int below = scene.addContainer("below", top).id;
    const int geometry = scene.addGeometry(*scene.container(below), "Shape").id;
    const int shape = scene.addGeometryPlugIn(*scene.container(below), "Shape", {}).id;
    const int plugIn = scene.addPlugIn(*scene.container(top), "DataText", {}).id;
    EXPECT_EQ(scene.geometry(geometry)->plugin, shape);
    EXPECT_EQ(scene.allPlugIns(), (std::vector<int>{plugIn, shape}));
    scene.removeContainer(top);
    for (const int id : {top, below, geometry, shape, plugIn})
        EXPECT_FALSE(scene.isValid(id)) << id;
    EXPECT_TRUE(scene.tops().empty());
    EXPECT_TRUE(scene.allPlugIns().empty());
}

TEST(KorScene, ReplacesTheGeometryOfAContainer) {
    Scene scene;
    Container& container = scene.addContainer("a", -1);
    const int before = scene.addGeometry(container, "Shape").id;
    const int plugIn = scene.addGeometryPlugIn(container, "Shape", {}).id;
    const int after = scene.addGeometry(container, "TEXT").id;
    EXPECT_FALSE(scene.isValid(before));
    EXPECT_FALSE(scene.isValid(plugIn));
    EXPECT_EQ(scene.geometry(after)->type, "TEXT");
}

TEST(KorScene, ListsPlugInsOfContainersAboveFirstAndGeometriesBeforeTheRest) {
    Scene scene;
    const int a = scene.addContainer("a", -1).id;
    const int below = scene.addContainer("below", a).id;
    const int b = scene.addContainer("b", -1).id;
    const int onB = scene.addPlugIn(*scene.container(b), "X", {}).id;
    const int onBelow = scene.addPlugIn(*scene.container(below), "X", {}).id;
    const int onA = scene.addPlugIn(*scene.container(a), "X", {}).id;
    scene.addGeometry(*scene.container(a), "Shape");
    const int shape = scene.addGeometryPlugIn(*scene.container(a), "Shape", {}).id;
    EXPECT_EQ(scene.allPlugIns(), (std::vector<int>{shape, onA, onBelow, onB}));
}

TEST(KorScene, HoldsManySiblings) {
    Scene scene;
    std::vector<int> ids;
    for (int count = 0; count < 30'000; ++count)
        ids.push_back(scene.addContainer("c", -1).id);
    EXPECT_EQ(walk(scene), ids);
    // From the front, which costs most.
    for (std::size_t index = 0; index < 29'999; ++index)
        scene.removeContainer(ids[index]);
    EXPECT_EQ(walk(scene), std::vector<int>{ids.back()});
}

TEST(KorScene, HoldsAHundredThousandLevels) {
    Scene scene;
    int id = -1;
    for (int depth = 0; depth < 100'000; ++depth)
        id = scene.addContainer("c", id).id;
    scene.addPlugIn(*scene.container(id), "X", {});
    EXPECT_EQ(scene.allPlugIns().size(), 1U);
    scene.removeContainer(scene.tops().front());
    EXPECT_FALSE(scene.isValid(id));
}

} // namespace
