#include <support/RecordingHandler.h>
#include <support/SceneTree.h>
#include <support/TextList.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace {

/// A source and the values 0 to 5, each heard under its number; 0 to 4 follow the source.
class LinkWalk : public testing::Test {
protected:
    LinkWalk() {
        for (int number = 0; number < 6; ++number) {
            const std::string name = std::to_string(number);
            targets.push_back(std::make_unique<DataValue>(Text(name)));
            handlers.push_back(std::make_unique<RecordingHandler>(diary, name));
            targets.back()->registerHandler(handlers.back().get());
            if (number < 5)
                source.addTargetLink(targets.back().get());
        }
    }

    /// Who hears when the handler of `number` does this.
    std::string heardWhen(std::size_t number, const std::function<void()>& act) {
        handlers[number]->onceThen(act);
        source.setData("x");
        return diary.takeNames();
    }

    std::string heard() {
        source.setData("y");
        return diary.takeNames();
    }

    void release(std::size_t number) { targets[number]->removeSourceLink(); }

    Diary diary;
    DataValue source{Text("source")};
    std::vector<std::unique_ptr<DataValue>> targets;
    std::vector<std::unique_ptr<RecordingHandler>> handlers;
};

class ManyLinks : public testing::Test {
protected:
    static constexpr int count = 100'000;

    DataValue* add(const std::string& name) {
        auto* value = new DataValue(Text(name));
        root.addField(value, 0);
        return value;
    }

    Orbel root{Text("root")};
    const SubtreeCleanup belowRoot{root};
};

} // namespace

TEST_F(LinkWalk, SkipsTheNeighbourOfATargetThatLeaves) {
    EXPECT_EQ(heardWhen(1, [this] { release(1); }), "0134");
    EXPECT_EQ(heard(), "0234");
}

TEST_F(LinkWalk, SkipsOneForEachEarlierTargetThatLeaves) {
    EXPECT_EQ(heardWhen(1,
                        [this] {
                            release(0);
                            release(1);
                        }),
              "014");
    EXPECT_EQ(heard(), "234");
}

TEST_F(LinkWalk, CountsATargetThatWouldBeSkippedAndLeavesOnlyOnce) {
    EXPECT_EQ(heardWhen(1,
                        [this] {
                            release(1);
                            release(2);
                        }),
              "014");
    EXPECT_EQ(heard(), "034");
}

TEST_F(LinkWalk, DoesNotReachALaterTargetThatLeaves) {
    EXPECT_EQ(heardWhen(1, [this] { release(3); }), "0124");
    EXPECT_EQ(heardWhen(0, [this] { targets[2].reset(); }), "014");
    EXPECT_EQ(heard(), "014");
}

TEST_F(LinkWalk, ReachesATargetThatJoins) {
    EXPECT_EQ(heardWhen(4, [this] { source.addTargetLink(targets[5].get()); }), "012345");
    EXPECT_EQ(heard(), "012345");
}

TEST_F(LinkWalk, ReachesATargetAgainThatMovesToTheEnd) {
    EXPECT_EQ(heardWhen(0,
                        [this] {
                            release(0);
                            source.addTargetLink(targets[0].get());
                        }),
              "02340");
    EXPECT_EQ(heard(), "12340");
}

TEST_F(LinkWalk, EndsWhenAllTargetsLeave) {
    EXPECT_EQ(heardWhen(1, [this] { source.removeAllTargets(); }), "01");
    EXPECT_EQ(heard(), "");
    EXPECT_EQ(*source.getData(0), "y");
}

TEST_F(LinkWalk, KeepsItsPlaceAroundAWalkInside) {
    EXPECT_EQ(heardWhen(2,
                        [this] {
                            handlers[1]->onceThen([this] { release(1); });
                            source.setData("inner");
                        }),
              "01201344");
    EXPECT_EQ(heard(), "0234");
}

TEST_F(LinkWalk, SkipsInTheOuterWalkForWhatLeavesInTheInner) {
    // Inside: 0 and 1, which leaves, so 2 is skipped. Outside: 2 has had its turn, and 3 is skipped for 1.
    EXPECT_EQ(heardWhen(2,
                        [this] {
                            handlers[1]->onceThen([this] { release(1); });
                            source.setData("inner");
                            diary.take();
                        }),
              "4");
}

TEST_F(LinkWalk, MayClearAllLinksAndMakeThemAnew) {
    EXPECT_EQ(heardWhen(2,
                        [this] {
                            source.ClearLinks();
                            source.addTargetLink(targets[5].get());
                            source.addTargetLink(targets[0].get());
                        }),
              "012");
    EXPECT_EQ(heard(), "50");
}

TEST_F(LinkWalk, ForgetsAFollowerThatOnlyNamesItsSource) {
    DataValue follower(Text("follower"));
    {
        DataValue brief(Text("brief"));
        follower.setLinkSource(&brief);
        static_cast<DataField&>(brief) = source;
        EXPECT_EQ(follower.getLinkSource(), nullptr);
        brief.ClearLinks();
    }
    EXPECT_FALSE(follower.findLinkSource(&source));
}

TEST_F(LinkWalk, MakesATargetOfAFollowerThatOnlyNamedItsSource) {
    targets[5]->setLinkSource(&source);
    EXPECT_EQ(heard(), "01234");
    source.addTargetLink(targets[5].get());
    EXPECT_EQ(heard(), "012345");
    release(5);
    EXPECT_EQ(heard(), "01234");
}

TEST_F(LinkWalk, MakesATargetOfAFollowerOfAClone) {
    std::unique_ptr<DataField> clone(source.clone());
    targets[5]->setLinkSource(clone.get());
    source.addTargetLink(targets[5].get());
    EXPECT_EQ(targets[5]->getLinkSource(), &source);
    EXPECT_EQ(heard(), "012345");
}

TEST_F(LinkWalk, FindsNoSourceInACircleOfNamedSources) {
    DataValue a(Text("a")), b(Text("b")), c(Text("c")), d(Text("d"));
    a.setLinkSource(&b);
    b.setLinkSource(&c);
    c.setLinkSource(&b);
    EXPECT_TRUE(a.findLinkSource(&c));
    EXPECT_TRUE(b.findLinkSource(&b));
    EXPECT_FALSE(a.findLinkSource(&d));
    EXPECT_FALSE(a.findLinkSource(&a));
    a.addTargetLink(&d);
    EXPECT_EQ(d.getLinkSource(), &a);
}

TEST_F(ManyLinks, OfOneSourceAreMadeInOrderAndClearedWithTheTree) {
    DataValue* source = add("source");
    std::vector<DataValue*> targets;
    for (int number = 0; number < count; ++number) {
        targets.push_back(add(std::to_string(number)));
        source->addTargetLink(targets.back());
        source->addTargetLink(targets.back());
    }
    source->setData("1");
    EXPECT_EQ(*targets.front()->getData(0) + *targets.back()->getData(0), "11");
    root.ClearLinks();
    source->setData("2");
    EXPECT_EQ(*targets.front()->getData(0) + *targets.back()->getData(0), "11");
    EXPECT_EQ(targets.back()->getLinkSource(), nullptr);
}

TEST_F(ManyLinks, OfOneSourceEndWithTheirTargets) {
    DataValue source(Text("source"));
    for (const bool forwards : {true, false}) {
        std::vector<std::unique_ptr<DataValue>> targets;
        for (int number = 0; number < count; ++number) {
            targets.push_back(std::make_unique<DataValue>(Text("t")));
            source.addTargetLink(targets.back().get());
        }
        for (std::size_t at = 0; at < targets.size(); ++at)
            targets[forwards ? at : targets.size() - 1 - at].reset();
        source.setData("1");
    }
    source.removeAllTargets();
}

TEST_F(ManyLinks, MoveFromSourceToSource) {
    DataValue first(Text("first"));
    DataValue second(Text("second"));
    std::vector<std::unique_ptr<DataValue>> targets;
    for (int number = 0; number < count; ++number) {
        targets.push_back(std::make_unique<DataValue>(Text("t")));
        first.addTargetLink(targets.back().get());
    }
    for (const auto& target : targets)
        second.addTargetLink(target.get());
    first.setData("1");
    EXPECT_EQ(targets.back()->getDataInitialized(), 0);
    EXPECT_EQ(targets.back()->getLinkSource(), &second);
    second.removeAllTargets();
    EXPECT_EQ(targets.front()->getLinkSource(), nullptr);
}

TEST_F(ManyLinks, InARowPassAChangeOn256Times) {
    for (const bool fromTheHead : {true, false}) {
        std::string links;
        for (int number = 1; number < count; ++number) {
            const int at = fromTheHead ? number : count - number;
            links += "f" + std::to_string(at) + " = f" + std::to_string(at - 1) + ";";
        }
        if (fromTheHead)
            for (int number = 0; number < count; ++number)
                add("f" + std::to_string(number));
        const auto at = [&](int number) { return root.getField(Text("f" + std::to_string(number)), 0, 1); };
        root.parseLinkCommand(Text(links));
        EXPECT_EQ(at(count - 1)->getLinkSource(), at(count - 2));
        EXPECT_TRUE(at(count - 1)->findLinkSource(at(0)));
        at(0)->setData("far");
        EXPECT_EQ(*at(256)->getData(0), "far");
        EXPECT_EQ(*at(257)->getData(0), " ");
        root.executeLinkCommand(Text("f0 = f" + std::to_string(count - 1)));
        EXPECT_EQ(at(0)->getLinkSource(), nullptr);
        at(0)->setData(" ");
    }
}

TEST(LinkListsTest, AWalkKeepsItsPlaceWhenMostTargetsLeave) {
    Diary diary;
    DataValue source(Text("source"));
    std::vector<std::unique_ptr<DataValue>> targets;
    for (int number = 0; number < 60; ++number) {
        targets.push_back(std::make_unique<DataValue>(Text("target")));
        source.addTargetLink(targets.back().get());
    }
    RecordingHandler handler(diary, "");
    targets[10]->registerHandler(&handler);
    // 10 to 29, 58 and 59 stay, and 10 are skipped for the 10 that stood before.
    handler.onceThen([&] {
        for (std::size_t number = 0; number < 58; ++number)
            if (number < 10 || number >= 30)
                targets[number]->removeSourceLink();
    });
    source.setData("x");
    std::string told;
    for (std::size_t number = 0; number < targets.size(); ++number)
        if (targets[number]->getDataInitialized() != 0)
            told += std::to_string(number) + ' ';
    EXPECT_EQ(told, "0 1 2 3 4 5 6 7 8 9 10 21 22 23 24 25 26 27 28 29 58 59 ");
}

// A target that joined when few were left of many was never taken off again: it was still set after it was released,
// also when it had been destroyed.
TEST(LinkListsTest, TargetThatJoinsAfterMostHaveGoneCanLeave) {
    DataValue source(Text("source"));
    std::vector<std::unique_ptr<DataValue>> early;
    for (int number = 0; number < 12; ++number) {
        early.push_back(std::make_unique<DataValue>(Text("early")));
        source.addTargetLink(early.back().get());
    }
    early.resize(1);
    DataValue released(Text("released"));
    auto destroyed = std::make_unique<DataValue>(Text("destroyed"));
    source.addTargetLink(&released);
    source.addTargetLink(destroyed.get());
    source.removeTargetLink(&released);
    destroyed.reset();
    source.setData("1");
    EXPECT_EQ(*early.front()->getData(0), "1");
    EXPECT_EQ(released.getDataInitialized(), 0);
}
