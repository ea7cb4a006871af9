#include "Survival.h"

#include <memory>

using memory::survives;
using memory::World;

namespace {

class OutOfMemoryInHandlers : public memory::OutOfMemory {};

} // namespace

TEST_F(OutOfMemoryInHandlers, RegisterOnAField) {
    for (const char* path : {"title", "subtitle", "loose", "list"})
        survives([=](World& world) { world.at(path)->registerHandler(&world.idle); });
}

TEST_F(OutOfMemoryInHandlers, RegisterOnSeveralFields) {
    survives(
        [](World& world) {
            for (const char* path : {"six/child 0", "six/child 1", "six/child 2"})
                world.at(path)->registerHandler(&world.idle);
            for (const char* path : {"six/child 0", "six/child 1", "six/child 2"})
                world.at(path)->unregisterHandler(&world.idle);
        },
        {{[](World& world) { world.at("six/child 0")->registerHandler(&world.idle); },
          [](World& world) {
              world.at("six/child 0")->registerHandler(&world.idle);
              world.at("six/child 1")->registerHandler(&world.idle);
          }}});
}

TEST_F(OutOfMemoryInHandlers, RegisterByPath) {
    for (const char* path : {"title", "subtitle", "loose", "points[1]/x", "cities[Oslo]/y"})
        survives([=](World& world) { world.root.registerHandler(Text(path), &world.idle, 0); });
}

TEST_F(OutOfMemoryInHandlers, RegisterByAPathThatNamesNoField) {
    survives([](World& world) { world.root.registerHandler(Text("new"), &world.idle, 0); });
    survives([](World& world) { world.root.registerHandler(Text("no/such/field"), &world.idle, 0); });
    survives(
        [](World& world) { static_cast<DataNode*>(world.at("six"))->registerHandler(Text("new"), &world.idle, 0); });
}

TEST_F(OutOfMemoryInHandlers, MoveByPathToAnotherField) {
    survives([](World& world) { world.root.registerHandler(Text("loose"), &world.second, 0); });
    survives([](World& world) {
        world.keep("list");
        world.root.registerHandler(Text("title"), &world.third, 0);
    });
}

TEST_F(OutOfMemoryInHandlers, MoveByPathFromAFieldThatLeavesItsTree) {
    survives([](World& world) {
        world.keep("loose");
        world.root.registerHandler(Text("title"), &world.alone, 0);
    });
}

TEST_F(OutOfMemoryInHandlers, MoveByPathToAFieldThatIsMade) {
    survives([](World& world) { world.root.registerHandler(Text("new"), &world.second, 0); });
}

TEST_F(OutOfMemoryInHandlers, MoveByPathTakesTheFieldAlong) {
    survives([](World& world) { world.root.registerHandler(Text("new"), &world.alone, 0); });
    survives(
        [](World& world) { static_cast<DataNode*>(world.at("six"))->registerHandler(Text("new"), &world.alone, 0); });
}

TEST_F(OutOfMemoryInHandlers, RegisterThroughAnObjectAndAnArray) {
    for (const char* path : {"text", "pos/x", "title", "new"}) {
        survives([=](World& world) { world.label()->registerHandler(Text(path), &world.idle, 0); });
        survives([=](World& world) { world.points()->registerHandler(Text(path), &world.second, 1); });
    }
}

TEST_F(OutOfMemoryInHandlers, Unregister) {
    survives([](World& world) {
        world.at("title")->unregisterHandler(&world.first);
        world.root.unregisterHandler(&world.second);
        world.at("list")->unregisterAllHandlers();
    });
}

TEST_F(OutOfMemoryInHandlers, UnregisterFromAFieldThatGoes) {
    survives([](World& world) { world.root.unregisterHandler(&world.alone); });
}

TEST_F(OutOfMemoryInHandlers, AskForAHandler) {
    for (const char* path : {"string:title", "string:subtitle", "string:loose"})
        survives(
            [=](World& world) {
                DataField* field = world.root.getField(Text(path), 0, 0);
                for (int index = 0; index < field->getNumHandlers(); ++index)
                    field->getHandlerByID(index);
                field->getHandlerByName(Text("DUMMY"));
            },
            {{[=](World& world) { world.root.getField(Text(path), 0, 0); }}});
}

TEST_F(OutOfMemoryInHandlers, DestroyAHandler) {
    survives([](World& world) {
        memory::Listener listener{Text("passing")};
        world.at("title")->registerHandler(&listener);
        world.at("list")->registerHandler(&listener);
    });
}
