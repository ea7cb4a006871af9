#include "Survival.h"

using memory::survives;
using memory::survivesCommands;
using memory::World;

namespace {

class OutOfMemoryInCommands : public memory::OutOfMemory {};

constexpr char longText[] = "a text longer than all of those that are in the world so far so that it takes memory";

} // namespace

TEST_F(OutOfMemoryInCommands, SetOneField) {
    survivesCommands(std::string("loose = ") + longText);
    survivesCommands(std::string("six/child 1 = ") + longText);
}

TEST_F(OutOfMemoryInCommands, SetAListOfFields) {
    const std::string one = std::string("loose = ") + longText;
    const std::string two = one + ";points[1]/x = " + longText;
    survivesCommands(two + ";label/text = " + longText, {one, two});
}

TEST_F(OutOfMemoryInCommands, SetValuesByIndex) {
    const std::string text = longText + std::string("");
    survives(
        [&](World& world) {
            world.root.parseCommand(Text("list[0,2] = \"\"" + text + "\"\",\"\"" + text + "\"\""), 0);
        },
        {{[&](World& world) { world.at("list")->setData(text.c_str(), 0); }}});
    survivesCommands("list[0-2] = \"\"" + text + "\"\",\"\"" + text + "\"\",b");
}

TEST_F(OutOfMemoryInCommands, SetTheFieldsOfAStructure) {
    const std::string text = longText;
    survivesCommands("label = {text=" + text + ";pos={x=" + text + ";};};",
                     {"label/text=" + text, "label/text=" + text + ";label/pos/x=" + text});
}

TEST_F(OutOfMemoryInCommands, SetElementsAndEntries) {
    const std::string text = longText;
    survivesCommands("points = {{x=" + text + ";},{x=" + text + ";}}",
                     {"points[0]/x=" + text, "points[0]/x=" + text + ";points[1]/x=" + text});
    survivesCommands("cities[Oslo,Rome] = {{x=" + text + ";},{x=" + text + ";}}",
                     {"cities[Oslo]/x=" + text, "cities[Oslo]/x=" + text + ";cities[Rome]/x=" + text});
}

TEST_F(OutOfMemoryInCommands, BuildATree) {
    survivesCommands(std::string("node:stage/node:left/string:name = ") + longText,
                     {"node:stage = ", "node:stage/node:left = ", "node:stage/node:left/string:name[9]= "});
}

TEST_F(OutOfMemoryInCommands, Broadcast) {
    memory::Expected expected;
    for (int count = 1; count <= 6; ++count)
        expected.steps.push_back([=](World& world) {
            for (int index = 0; index < count; ++index)
                world.at(("six/child " + std::to_string(index)).c_str())->setData(longText);
        });
    survives([](World& world) { world.root.parseCommand(Text(std::string("six/* = ") + longText), 0); }, expected);
}

TEST_F(OutOfMemoryInCommands, BroadcastInElements) {
    const std::string text = longText;
    survivesCommands("points/* = " + text, {"points[0]/x = " + text});
}

TEST_F(OutOfMemoryInCommands, Copy) {
    const auto copy = [](const std::string& commands) {
        return [=](World& world) { world.root.parseCopyCommand(Text(commands)); };
    };
    survives(copy("label/text = list; six = others/six"), {{copy("label/text = list")}});
    survives(copy("points[0-1] = others/points[1]"), {{copy("points[0] = others/points[1]")}});
    survives(copy("list[0-1] = list[1-2]"));
    survives(copy("cities[Oslo,Rome] = cities[Rome]"));
}

TEST_F(OutOfMemoryInCommands, Link) {
    const auto link = [](const std::string& commands) {
        return [=](World& world) { world.root.parseLinkCommand(Text(commands)); };
    };
    const auto linkOnly = [](World& world) {
        world.root.ClearLinks();
        world.root.addLink(Text("loose"), Text("label/text"));
    };
    survives(link("label/text = loose; points[0]/x = points[1]/y"),
             {{[](World& world) { world.root.ClearLinks(); }, linkOnly, link("label/text = loose"),
               [=](World& world) {
                   link("label/text = loose")(world);
                   world.root.addLink(Text("points[1]/y"), Text("points[0]/x"));
               }}});
    survives([](World& world) { world.root.executeLinkCommand(Text("~subtitle")); });
}

TEST_F(OutOfMemoryInCommands, Clear) {
    const auto clear = [](const std::string& commands) {
        return [=](World& world) { world.root.executeClearCommand(Text(commands)); };
    };
    survives(clear("loose; list; points[1]"), {{clear("loose"), clear("loose; list")}});
}

TEST_F(OutOfMemoryInCommands, SizesAndRanges) {
    survives(
        [](World& world) {
            world.root.setFieldSize(Text("list"), 12);
            int size = 0;
            world.root.getFieldSize(Text("list"), &size);
            std::vector<DataField*> fields;
            world.points()->getFieldsByRange(Text("0-5]"), &fields);
            world.cities()->getFieldsByRange(Text("Oslo,Rome]"), &fields);
            world.root.getFieldsByRange(Text("0"), &fields);
            world.root.getFieldsVector(&fields);
        },
        {{[](World& world) { world.root.setFieldSize(Text("list"), 12); }}});
}
