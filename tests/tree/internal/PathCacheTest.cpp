#include <orbel/tree/PathCache.h>
#include <orbel/tree/TreeState.h>

#include <support/SceneTree.h>
#include <support/TreeCleanup.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>

namespace {

// A cache lives until the process ends and is never taken apart, so those of the tests are static.

/// What the cache has for a path of the scene, null without an entry.
DataField* cached(const PathCache& cache, SceneTree& tree, const std::string& path) {
    const PathCache::Entry* entry = cache.find(tree.root, path);
    return entry ? entry->field : nullptr;
}

/// All that a path tells and does behind another one, with or without the way kept between them.
std::string traceOf(const std::string& segment, bool keepsWay) {
    Orbel root(Text("show"));
    const SubtreeCleanup belowRoot{root};
    root.getField(Text("node:a/node:b/DataHashTable:t:"), 0, 0);
    root.getField(Text("node:a/node:b/string:first"), 0, 0);
    if (!keepsWay)
        treeState.paths.drop();
    DataField* found = root.getField(Text("node:a/node:b/" + segment), 0, 0);
    std::ostringstream trace;
    trace << (found ? found->getFullPath() : "-") << ' ' << (found ? found->getTypeName() : "-") << ' '
          << (found ? found->getRefCalls() : -1) << ' ' << (found ? found->getNumHandlers() : -1) << ' '
          << root.getField(Text("a"), 0, 1)->getRefCalls() << root.getField(Text("a/b"), 0, 1)->getRefCalls() << ' ';
    found = root.getField(Text("node:a/node:b/" + segment), 0, 0);
    trace << treeState.wildcard << ' ' << treeState.lastSearched->getName() << ' ';
    root.dump(trace, -1, -1, 1);
    return trace.str();
}

} // namespace

TEST(PathCache, KnowsNothingAtFirst) {
    SceneTree tree;
    static PathCache cache;
    EXPECT_EQ(cached(cache, tree, ""), nullptr);
    EXPECT_EQ(cached(cache, tree, "scene/title"), nullptr);
    cache.drop();
    EXPECT_EQ(cached(cache, tree, ""), nullptr);
}

TEST(PathCache, NotesAnObserverOnlyBehindPathsThatLeaveRoom) {
    SceneTree tree;
    static PathCache cache;
    const DataHandler observer;
    for (std::size_t length = 1; length <= PathCache::maxLength; ++length)
        cache.insert(tree.root, std::string(length, 'p'), *tree.title, *tree.scene);
    for (std::size_t length = 1; length <= PathCache::maxLength; ++length) {
        const std::string path(length, 'p');
        PathCache::Entry* const entry = cache.find(tree.root, path);
        ASSERT_NE(entry, nullptr) << length;
        EXPECT_EQ(entry->hasRoomForObserver(), length <= 22) << length;
        entry->noteObserver(&observer);
        entry->bringObserverNear();
        EXPECT_EQ(std::string(entry->path, length), path);
        EXPECT_EQ(cache.find(tree.root, path), entry);
    }
}

TEST(PathCache, ASetMayExpectAnObserverThatHasGone) {
    SceneTree tree;
    tree.root.setFieldData(Text("scene/title"), Text("plain"));
    {
        DataHandler observer;
        tree.title->registerHandler(&observer);
        tree.root.setFieldData(Text("scene/title"), Text("observed"));
        tree.root.setFieldData(Text("scene/title"), Text("observed again"));
    }
    EXPECT_TRUE(tree.root.setFieldData(Text("scene/title"), Text("plain again")));
    EXPECT_STREQ(tree.title->getData(0)->c_str(), "plain again");
}

TEST(PathCache, KeepsTheFieldAndWhereItWasLookedUp) {
    SceneTree tree;
    static PathCache cache;
    cache.insert(tree.root, "scene/title", *tree.title, *tree.scene);
    const PathCache::Entry* entry = cache.find(tree.root, "scene/title");
    ASSERT_NE(entry, nullptr);
    EXPECT_EQ(entry->asked, &tree.root);
    EXPECT_EQ(entry->field, tree.title);
    EXPECT_EQ(entry->searched, tree.scene);
    EXPECT_EQ(cache.find(*tree.scene, "scene/title"), nullptr);
    EXPECT_EQ(cache.find(tree.root, "scene/titl"), nullptr);
    EXPECT_EQ(cache.find(tree.root, "scene/title/"), nullptr);
}

TEST(PathCache, IsDirectBetweenTheLibrarysOwnClasses) {
    class Box : public DataStructure {
        using DataStructure::DataStructure;
    } box(Text("box"));
    class Meter : public DataValue {
        using DataValue::DataValue;
    } meter(Text("meter"));
    SceneTree tree;
    Orbel root(Text("root"));
    DataObject object(Text("object"));
    static PathCache cache;
    const auto isDirect = [&](DataStructure& asked, DataField& field, const char* path) {
        cache.insert(asked, path, field, asked);
        return cache.find(asked, path)->isDirect;
    };
    EXPECT_TRUE(isDirect(root, *tree.title, "value"));
    EXPECT_TRUE(isDirect(*tree.scene, *tree.title, "value"));
    EXPECT_TRUE(isDirect(object, *tree.title, "value"));
    EXPECT_FALSE(isDirect(root, *tree.scene, "node"));
    EXPECT_FALSE(isDirect(root, meter, "meter"));
    EXPECT_FALSE(isDirect(box, *tree.title, "value"));
    EXPECT_TRUE(isDirect(tree.root, *tree.title, "value"));
}

TEST(PathCache, TakesPathsOfUpTo30Characters) {
    SceneTree tree;
    static PathCache cache;
    EXPECT_EQ(PathCache::maxLength, 30u);
    for (std::size_t length = 0; length <= 32; ++length) {
        const std::string path(length, 'p');
        cache.insert(tree.root, path, *tree.title, *tree.scene);
        EXPECT_EQ(cached(cache, tree, path), length <= 30 ? tree.title : nullptr) << length;
    }
    EXPECT_EQ(cached(cache, tree, std::string(29, 'p') + "q"), nullptr);
}

TEST(PathCache, FindsEachOfThousands) {
    SceneTree tree;
    static PathCache cache;
    DataField* const fields[] = {tree.title, tree.scene, tree.points};
    for (int number = 0; number < 10'000; ++number)
        cache.insert(tree.root, "field" + std::to_string(number), *fields[number % 3], tree.root);
    for (int number = 0; number < 10'000; ++number)
        ASSERT_EQ(cached(cache, tree, "field" + std::to_string(number)), fields[number % 3]) << number;
    EXPECT_EQ(cached(cache, tree, "field10000"), nullptr);
}

TEST(PathCache, DropsEverythingAtOnce) {
    SceneTree tree;
    static PathCache cache;
    for (int number = 0; number < 1'000; ++number)
        cache.insert(tree.root, std::to_string(number), *tree.title, *tree.scene);
    cache.drop();
    for (int number = 0; number < 1'000; ++number)
        EXPECT_EQ(cached(cache, tree, std::to_string(number)), nullptr);
    cache.insert(tree.root, "7", *tree.scene, tree.root);
    EXPECT_EQ(cached(cache, tree, "7"), tree.scene);
}

TEST(PathCache, StaysSoundWhenItHasDroppedMoreOftenThanItCanCount) {
    SceneTree tree;
    static PathCache cache(UINT32_MAX - 3);
    for (int round = 0; round < 8; ++round) {
        const std::string path = "round" + std::to_string(round);
        EXPECT_EQ(cached(cache, tree, path), nullptr);
        cache.insert(tree.root, path, *tree.title, *tree.scene);
        EXPECT_EQ(cached(cache, tree, path), tree.title);
        cache.drop();
        for (int earlier = 0; earlier <= round; ++earlier)
            EXPECT_EQ(cached(cache, tree, "round" + std::to_string(earlier)), nullptr);
    }
}

TEST(PathCache, StartsAnewBeyondItsLargestSize) {
    EXPECT_EQ(PathCache::maxEntries, 3'000'000u);
    SceneTree tree;
    for (const std::size_t most : {64u, 79u, 80u, 1'000u, 20'000u}) {
        PathCache cache(0, most);
        std::size_t kept = 0;
        // So often that it has begun anew a few times.
        for (std::size_t number = 0; number < most * 3; ++number) {
            cache.insert(tree.root, std::to_string(number), *tree.title, *tree.scene);
            ASSERT_EQ(cached(cache, tree, std::to_string(number)), tree.title) << number;
            if (cached(cache, tree, std::to_string(number - kept))) {
                ++kept;
                continue;
            }
            // All that came before has gone at once, and there were many of them.
            ASSERT_EQ(cached(cache, tree, std::to_string(number - 1)), nullptr) << number;
            ASSERT_GE(kept, most / 2) << number;
            kept = 1;
        }
        EXPECT_LE(kept, most);
        EXPECT_EQ(cached(cache, tree, "0"), nullptr) << most;
        cache.release();
    }
}

TEST(PathCache, OfTheProcessFollowsTheTree) {
    SceneTree tree;
    EXPECT_EQ(treeState.paths.find(tree.root, "scene/title"), nullptr);
    tree.at("scene/title");
    ASSERT_NE(treeState.paths.find(tree.root, "scene/title"), nullptr);
    EXPECT_EQ(treeState.paths.find(tree.root, "scene/title")->field, tree.title);
    // What comes changes no path that leads somewhere.
    tree.scene->addField(new DataValue(Text("other")), 0);
    EXPECT_NE(treeState.paths.find(tree.root, "scene/title"), nullptr);
    tree.scene->removeField(Text("title"), 0);
    EXPECT_EQ(treeState.paths.find(tree.root, "scene/title"), nullptr);
    tree.scene->addField(tree.title, 0);
}

TEST(PathCache, OfTheProcessTakesPlainPathsAlone) {
    SceneTree tree;
    for (const char* path : {"cities[Oslo]", "scene/../scene/title", "string:scene", "scene/missing", "*/x", ".."}) {
        tree.at(path, 1);
        EXPECT_EQ(treeState.paths.find(tree.root, path), nullptr) << path;
    }
    for (const char* path : {"scene", "points[1]/x", "cities[Oslo]/x", "cities", "scene/title/more"}) {
        tree.at(path, 1);
        EXPECT_NE(treeState.paths.find(tree.root, path), nullptr) << path;
    }
}

// Of a path with kinds the way is kept, without its last segment.
TEST(PathCache, KeepsAWayOfUpTo8Steps) {
    Orbel root(Text("show"));
    const SubtreeCleanup belowRoot{root};
    const PathPlace& place = treeState.paths.place();
    std::string way = "node:a";
    for (std::size_t steps = 1; steps <= 10; ++steps, way += "/node:a") {
        treeState.paths.drop();
        DataField* x = root.getField(Text(way + "/string:x"), 0, 0);
        const std::string sibling = way + "/string:y";
        ASSERT_EQ(place.behind(root, sibling).has_value(), steps <= 8) << steps;
        if (steps > 8)
            continue;
        EXPECT_EQ(place.behind(root, sibling), "string:y");
        EXPECT_EQ(place.depth, steps);
        EXPECT_EQ(place.chain[0], &root);
        EXPECT_EQ(place.chain[steps], x->getParent());
        EXPECT_FALSE(place.behind(root, way));
        EXPECT_FALSE(place.behind(root, way + "b/string:y"));
        EXPECT_FALSE(place.behind(root, way + "/node:b/string:y"));
        EXPECT_FALSE(place.behind(*place.chain[1], way + "/string:y"));
    }
}

TEST(PathCache, GoesTheWayThatThePathFromTheStartGoes) {
    for (const char* segment : {"string:first",
                                "string:x",
                                "node:x",
                                "string:",
                                ":x",
                                "x",
                                "first",
                                "string:first[0]",
                                "string:x[1]",
                                "string:a:b",
                                "string:*",
                                "*",
                                "string:..",
                                "string:..x",
                                "..",
                                "DataHashTable:t:",
                                "DataHashTable:t",
                                "t[k]",
                                "node:t",
                                "Point:x",
                                "Point:first",
                                "Point[4]:x",
                                "string[2]:x",
                                ""})
        EXPECT_EQ(traceOf(segment, true), traceOf(segment, false)) << segment;
}

TEST(PathCache, KeepsAWayOfUpTo120Characters) {
    const PathPlace& place = treeState.paths.place();
    for (const std::size_t length : {119u, 120u, 121u}) {
        Orbel root(Text("show"));
        const SubtreeCleanup belowRoot{root};
        const std::string way = "node:" + std::string(50, 'n') + "/node:" + std::string(length - 61, 'n');
        ASSERT_EQ(way.size(), length);
        root.getField(Text(way + "/string:x"), 0, 0);
        EXPECT_EQ(place.length, length <= 120 ? length : 0u);
    }
}

// The first plain path after a path with kinds made it look for the way from the start.
TEST(PathCache, KeepsAWayWhilePlainPathsComeIn) {
    Orbel root(Text("show"));
    const SubtreeCleanup belowRoot{root};
    for (int number = 0; number < 500; ++number)
        root.getField(Text("string:plain" + std::to_string(number)), 0, 0);
    DataField* x = root.getField(Text("node:a/string:x"), 0, 0);
    const PathPlace& place = treeState.paths.place();
    for (int number = 0; number < 500; ++number) {
        ASSERT_NE(root.getField(Text("plain" + std::to_string(number)), 0, 0), nullptr);
        ASSERT_TRUE(place.behind(root, "node:a/string:y")) << number;
    }
    EXPECT_EQ(place.chain[place.depth], x->getParent());
}

TEST(PathCache, KeepsNoWayThroughClassesOfClients) {
    class Show : public Orbel {
        using Orbel::Orbel;
    } show(Text("show"));
    const SubtreeCleanup belowShow{show};
    show.getField(Text("node:a/string:x"), 0, 0);
    EXPECT_EQ(treeState.paths.place().length, 0u);
}
