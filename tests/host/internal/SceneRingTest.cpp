#include <orbel/host/SceneRing.h>

#include <gtest/gtest.h>

#include <string>

namespace {

class SceneRingTest : public testing::Test {
protected:
    void addAll(int from, int to) {
        for (int scene = from; scene <= to; ++scene)
            ring.add(scene);
    }

    /// "2-100" for the first and the last scene kept; with "!" when one in between is not.
    std::string kept() {
        int first = 0;
        int last = 0;
        int count = 0;
        for (int scene = 1; scene < 1'000; ++scene)
            if (ring.holds(scene)) {
                first = first == 0 ? scene : first;
                last = scene;
                ++count;
            }
        return std::to_string(first) + '-' + std::to_string(last) + (last - first + 1 == count ? "" : "!");
    }

    SceneRing ring;
};

} // namespace

TEST_F(SceneRingTest, IsEmptyAtFirst) {
    EXPECT_FALSE(ring.holds(0));
    EXPECT_FALSE(ring.holds(1));
    ring.remove(1);
    EXPECT_FALSE(ring.holds(1));
}

TEST_F(SceneRingTest, KeepsAHundredScenes) {
    addAll(1, 100);
    EXPECT_EQ(kept(), "1-100");
}

TEST_F(SceneRingTest, AFurtherSceneTakesThePlaceOfTheOldest) {
    addAll(1, 101);
    EXPECT_EQ(kept(), "2-101");
    ring.add(102);
    EXPECT_EQ(kept(), "3-102");
    addAll(103, 350);
    EXPECT_EQ(kept(), "251-350");
}

TEST_F(SceneRingTest, ASceneThatIsKeptTakesNoSecondPlace) {
    addAll(1, 50);
    ring.add(1);
    addAll(51, 100);
    EXPECT_EQ(kept(), "1-100");
    ring.add(101);
    EXPECT_EQ(kept(), "2-101") << "seeing a scene again does not make it younger";
}

TEST_F(SceneRingTest, ASceneThatWasRemovedIsGoneAndCanComeBack) {
    addAll(1, 3);
    ring.remove(2);
    EXPECT_TRUE(ring.holds(1));
    EXPECT_FALSE(ring.holds(2));
    EXPECT_TRUE(ring.holds(3));
    ring.add(2);
    EXPECT_TRUE(ring.holds(2));
    EXPECT_TRUE(ring.holds(3));
    ring.remove(99);
    EXPECT_EQ(kept(), "1-3");
}

TEST_F(SceneRingTest, ThePlaceOfTheLastSceneIsTakenAgain) {
    // The same scene over and over never drives another one out.
    addAll(1, 99);
    for (int round = 0; round < 1'000; ++round) {
        ring.add(500);
        ring.remove(500);
    }
    EXPECT_EQ(kept(), "1-99");
    ring.add(100);
    EXPECT_EQ(kept(), "1-100");
}

TEST_F(SceneRingTest, OtherPlacesThatAreFreeAreNotLookedFor) {
    addAll(1, 100);
    ring.remove(50);
    ring.add(101);
    EXPECT_FALSE(ring.holds(1)) << "the next place in the ring is that of scene 1";
    EXPECT_TRUE(ring.holds(101));
    EXPECT_TRUE(ring.holds(2));
}

TEST_F(SceneRingTest, TheLastPlaceIsFollowedByTheFirst) {
    addAll(1, 100);
    ring.remove(100);
    ring.add(200);
    EXPECT_TRUE(ring.holds(1)) << "the place of the last scene was free";
    ring.add(201);
    EXPECT_FALSE(ring.holds(1));
    EXPECT_TRUE(ring.holds(2));
}

TEST_F(SceneRingTest, AnyNumberNamesAScene) {
    for (const int scene : {0, -2, 2'147'483'647, -2'147'483'647}) {
        EXPECT_FALSE(ring.holds(scene));
        ring.add(scene);
        EXPECT_TRUE(ring.holds(scene));
        ring.remove(scene);
        EXPECT_FALSE(ring.holds(scene));
    }
}
