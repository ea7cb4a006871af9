#include "Survival.h"

#include <memory>

using memory::survives;
using memory::World;

namespace {

class OutOfMemoryInLinks : public memory::OutOfMemory {};

} // namespace

TEST_F(OutOfMemoryInLinks, AddALink) {
    survives([](World& world) { world.at("loose")->addTargetLink(world.at("list")); });
    survives([](World& world) { world.root.addLink(Text("points[0]/x"), Text("points[1]/x")); });
}

TEST_F(OutOfMemoryInLinks, AddTheLinkThatMakesAnIndex) {
    survives([](World& world) { world.at("source")->addTargetLink(world.at("loose")); });
}

TEST_F(OutOfMemoryInLinks, AddLinksBehindTheIndex) {
    survives(
        [](World& world) {
            world.at("source")->addTargetLink(world.at("loose"));
            world.at("source")->addTargetLink(world.at("list"));
        },
        {{[](World& world) { world.at("source")->addTargetLink(world.at("loose")); }}});
}

TEST_F(OutOfMemoryInLinks, MoveALink) {
    survives([](World& world) { world.at("source")->addTargetLink(world.at("subtitle")); });
    survives([](World& world) { world.at("title")->addTargetLink(world.at("followers/follower3")); });
}

TEST_F(OutOfMemoryInLinks, NameASource) {
    survives([](World& world) {
        world.at("list")->setLinkSource(world.at("loose"));
        world.at("list")->setLinkSource(nullptr);
    });
    survives(
        [](World& world) {
            // A source that is only named passes nothing along.
            world.at("subtitle")->setLinkSource(world.at("loose"));
            world.at("subtitle")->removeSourceLink();
        },
        {{[](World& world) { world.at("subtitle")->removeSourceLink(); }}});
}

TEST_F(OutOfMemoryInLinks, NameASourceOfASilentFollower) {
    survives([](World& world) {
        const std::unique_ptr<DataField> silent(world.at("subtitle")->clone());
        silent->setLinkSource(world.at("source"));
        world.at("title")->addTargetLink(silent.get());
    });
}

TEST_F(OutOfMemoryInLinks, ASilentFollowerBecomesATarget) {
    survives(
        [](World& world) {
            const std::unique_ptr<DataField> silent(world.at("subtitle")->clone());
            world.at("title")->addTargetLink(silent.get());
            world.at("title")->setData("which the new follower has too");
            EXPECT_STREQ(silent->getData(0)->c_str(), "which the new follower has too");
        },
        {{[](World& world) { world.at("title")->setData("which the new follower has too"); }}});
}

TEST_F(OutOfMemoryInLinks, TakeLinksOff) {
    survives(
        [](World& world) {
            world.root.removeLink(Text("subtitle"));
            world.at("source")->removeTargetLink(world.at("followers/follower1"));
            world.at("source")->removeAllTargets();
        },
        {{[](World& world) { world.root.removeLink(Text("subtitle")); }}});
    survives([](World& world) { world.root.ClearLinks(); });
}

TEST_F(OutOfMemoryInLinks, PassAChangeOn) {
    memory::Expected expected;
    for (int count = 1; count <= 8; ++count)
        expected.steps.push_back([=](World& world) {
            for (int index = 0; index < count; ++index)
                world.at(("followers/follower" + std::to_string(index)).c_str())
                    ->setData("a text that is longer than those of the followers have been before");
        });
    survives(
        [](World& world) {
            world.at("source")->setData("a text that is longer than those of the followers have been before");
        },
        expected);
}
