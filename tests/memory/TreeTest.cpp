#include "Survival.h"

#include <support/TextList.h>
#include <support/TreeCleanup.h>

#include <memory>
#include <new>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

using memory::Expected;
using memory::survives;
using memory::survivesAnywhere;
using memory::survivesCommands;
using memory::World;

namespace {

class OutOfMemoryInTree : public memory::OutOfMemory {};

constexpr char longText[] = "a new text, longer by far than any of the texts that have been stored anywhere before it";

/// Gives a field to a node that takes it over when it succeeds.
void give(DataNode& node, std::unique_ptr<DataField> field) {
    node.addField(field.get(), -1);
    field.release();
}

template <class Field>
std::unique_ptr<DataField> make(const char* name) {
    return std::make_unique<Field>(Text(name));
}

} // namespace

TEST_F(OutOfMemoryInTree, AddFieldToARoot) {
    survives([](World& world) { give(world.root, make<DataValue>("new")); });
}

TEST_F(OutOfMemoryInTree, AddFieldToAFullStructure) {
    survives([](World& world) { give(*static_cast<DataNode*>(world.at("six")), make<DataStructure>("new")); });
}

TEST_F(OutOfMemoryInTree, AddFieldToAnEmptyStructure) {
    survives(
        [](World& world) {
            auto parent = std::make_unique<DataStructure>(Text("parent"));
            DataStructure& node = *parent;
            give(world.root, std::move(parent));
            give(node, make<DataValue>("new"));
        },
        {{[](World& world) { give(world.root, make<DataStructure>("parent")); }}, true});
}

TEST_F(OutOfMemoryInTree, AddFieldThatStandsElsewhereToo) {
    survives([](World& world) { world.root.addField(world.at("six/child 1"), -1); });
}

TEST_F(OutOfMemoryInTree, AddFieldThatManyHold) {
    const auto owners = std::make_unique<int[]>(3);
    survives(
        [&](World& world) {
            DataField* field = world.at("six/child 1");
            for (int owner = 0; owner < 3; ++owner)
                field->ref(&owners[static_cast<std::size_t>(owner)], nullptr);
        },
        {{[&](World& world) { world.at("six/child 1")->ref(&owners[0], nullptr); },
          [&](World& world) {
              world.at("six/child 1")->ref(&owners[0], nullptr);
              world.at("six/child 1")->ref(&owners[1], nullptr);
          }},
         true});
}

TEST_F(OutOfMemoryInTree, AddFieldUnderATakenName) {
    std::unique_ptr<DataField> stray;
    survives([&](World& world) {
        stray = make<DataValue>("title");
        world.root.addField(stray.get(), -1);
    });
}

TEST_F(OutOfMemoryInTree, AddFieldInThePlaceOfOneThatWasDestroyed) {
    survives(
        [](World& world) {
            world.isOdd = true;
            delete world.at("six/child 1");
            give(*static_cast<DataNode*>(world.at("six")), make<DataValue>("child 1"));
        },
        {{[](World& world) {
             world.isOdd = true;
             delete world.at("six/child 1");
         }},
         true});
}

TEST_F(OutOfMemoryInTree, SetNameOfAChild) {
    survives([](World& world) {
        world.isOdd = true;
        world.at("six/child 1")->setName(Text("renamed"));
    });
}

TEST_F(OutOfMemoryInTree, GetFieldBuildsAStructure) {
    survives([](World& world) { world.root.getField(Text("node:new"), 0, 0); });
}

TEST_F(OutOfMemoryInTree, GetFieldBuildsAPathStepByStep) {
    survives([](World& world) { world.root.getField(Text("node:a/node:b/string:c"), 0, 0); },
             {{[](World& world) { world.root.getField(Text("node:a"), 0, 0); },
               [](World& world) { world.root.getField(Text("node:a/node:b"), 0, 0); }}});
}

TEST_F(OutOfMemoryInTree, GetFieldBuildsInAFullStructure) {
    survives([](World& world) { world.root.getField(Text("six/string:new"), 0, 0); });
}

TEST_F(OutOfMemoryInTree, GetFieldMarksWhatIsThere) {
    survives([](World& world) { world.root.getField(Text("string:title"), 0, 0); });
}

TEST_F(OutOfMemoryInTree, GetFieldMarksAnObservedField) {
    survives([](World& world) { world.root.getField(Text("string:loose"), 0, 0); });
}

TEST_F(OutOfMemoryInTree, GetFieldBuildsATable) {
    survives([](World& world) { world.root.getField(Text("DataHashTable:prices:Point"), 0, 0); });
}

TEST_F(OutOfMemoryInTree, GetFieldFindsManyFieldsWithoutTheCache) {
    survives([](World& world) {
        for (int index = 0; index < 8; ++index)
            world.root.getField(Text("followers/follower" + std::to_string(index)), 0, 0);
    });
}

TEST_F(OutOfMemoryInTree, RemoveAndDelete) {
    survives(
        [](World& world) {
            world.keep("others");
            world.root.removeField(Text("others"), -1);
            static_cast<DataNode*>(world.at("six"))->deleteChildren();
        },
        {{[](World& world) {
             world.keep("others");
             world.root.removeField(Text("others"), -1);
         }},
         true});
}

TEST_F(OutOfMemoryInTree, SetData) {
    survives([](World& world) { world.at("loose")->setData(longText); });
}

TEST_F(OutOfMemoryInTree, SetDataOfAFieldThatWasNeverSet) {
    survives(
        [](World& world) {
            world.root.getField(Text("string:new"), 0, 0);
            world.at("new")->setData(longText);
        },
        {{[](World& world) { world.root.getField(Text("string:new"), 0, 0); }}});
}

TEST_F(OutOfMemoryInTree, SetDataOfAFieldThatWasNeverSetAndIsAskedForChanges) {
    survives(
        [](World& world) {
            world.root.getField(Text("string:new"), 0, 0);
            world.idle.setNotifyOnValueChange(1);
            world.at("new")->registerHandler(&world.idle);
            world.at("new")->setData(longText);
        },
        {{[](World& world) { world.root.getField(Text("string:new"), 0, 0); },
          [](World& world) {
              world.root.getField(Text("string:new"), 0, 0);
              world.idle.setNotifyOnValueChange(1);
              world.at("new")->registerHandler(&world.idle);
          }}});
}

TEST_F(OutOfMemoryInTree, SetDataAtAnIndex) {
    survives([](World& world) { world.at("list")->setData(longText, 1); });
    survives([](World& world) {
        std::string text = longText;
        world.at("list")->setData(&text, 1);
    });
}

TEST_F(OutOfMemoryInTree, SetDataAtAnIndexOfAFieldThatWasNeverSet) {
    survives(
        [](World& world) {
            world.root.getField(Text("string:new"), 0, 0)->setSize(2);
            world.at("new")->setData(longText, 1);
        },
        {{[](World& world) { world.root.getField(Text("string:new"), 0, 0); },
          [](World& world) { world.root.getField(Text("string:new"), 0, 0)->setSize(2); }}});
}

TEST_F(OutOfMemoryInTree, SetDataOfSeveralValues) {
    survives([](World& world) { world.at("list")->setData(TextList({longText, "short", longText}), 0, -1); });
}

TEST_F(OutOfMemoryInTree, SetDataThatOthersFollow) {
    survives([](World& world) { world.at("title")->setData(longText); },
             {{[](World& world) { world.at("subtitle")->setData(longText); }}});
}

TEST_F(OutOfMemoryInTree, SetFieldData) {
    survives([](World& world) { world.root.setFieldData(Text("points[1]/x"), Text(longText)); });
    survives([](World& world) { world.root.setFieldData(Text("cities[Oslo]/x"), Text(longText)); });
    survives([](World& world) { world.root.setFieldData(Text("list"), TextList({longText, longText}), 0, -1); });
}

TEST_F(OutOfMemoryInTree, GetData) {
    survives([](World& world) {
        std::string text;
        std::vector<char*> texts;
        char* value = nullptr;
        world.root.getFieldData(Text("list"), &text);
        world.root.getFieldData(Text("list"), &texts, 0, -1);
        world.root.getFieldData(Text("list"), &value);
        world.at("list")->getData(&texts, 0, -1);
        world.at("list")->getDataVector();
        world.at("loose")->getDataVector();
        world.at("six/child 1")->getFullPath();
    });
}

TEST_F(OutOfMemoryInTree, SetSize) {
    survives([](World& world) { world.at("list")->setSize(40); });
    survives([](World& world) { world.at("loose")->setSize(3); });
}

TEST_F(OutOfMemoryInTree, ClearData) {
    survives([](World& world) { world.at("list")->clearData(); });
    survives([](World& world) { world.at("six")->clearData(); });
}

TEST_F(OutOfMemoryInTree, CopyData) {
    survives(
        [](World& world) {
            world.at("list")->setData(longText, 1);
            world.at("list")->setData(longText, 2);
            world.root.getField(Text("string:new"), 0, 0)->setSize(3);
            world.at("new")->copyData(world.at("list"), 0, 0, -1);
        },
        {{[](World& world) { world.at("list")->setData(longText, 1); },
          [](World& world) {
              world.at("list")->setData(longText, 1);
              world.at("list")->setData(longText, 2);
          },
          [](World& world) {
              world.at("list")->setData(longText, 1);
              world.at("list")->setData(longText, 2);
              world.root.getField(Text("string:new"), 0, 0);
          },
          [](World& world) {
              world.at("list")->setData(longText, 1);
              world.at("list")->setData(longText, 2);
              world.root.getField(Text("string:new"), 0, 0)->setSize(3);
          }}});
}

TEST_F(OutOfMemoryInTree, CopyDataOfAStructure) {
    survives([](World& world) { world.at("six")->copyData(world.at("others/six"), 0, 0, -1); });
}

TEST_F(OutOfMemoryInTree, CopyDataOfAnArray) {
    survives([](World& world) { world.points()->copyData(world.at("others/points"), 0, 0, -1); }, {{[](World& world) {
                 world.points()->getObject(0)->copyData(
                     static_cast<DataArray*>(world.at("others/points"))->getObject(0), 0, 0, -1);
             }}});
}

TEST_F(OutOfMemoryInTree, SetSizeOfAnArray) {
    survives([](World& world) { world.points()->setSize(5); },
             {{[](World& world) { world.points()->setSize(3); }, [](World& world) { world.points()->setSize(4); }}});
}

TEST_F(OutOfMemoryInTree, SetSizeOfAnUntypedArray) {
    survives(
        [](World& world) {
            give(world.root, make<DataArray>("plain"));
            static_cast<DataArray*>(world.at("plain"))->setSize(1);
        },
        {{[](World& world) { give(world.root, make<DataArray>("plain")); }}, true});
}

TEST_F(OutOfMemoryInTree, RemoveChildrenOfAnArray) {
    survives([](World& world) { world.points()->removeChildren(); });
    survives([](World& world) { world.cities()->removeChildren(); });
}

TEST_F(OutOfMemoryInTree, NewObjectInATable) {
    survives([](World& world) { world.cities()->newObject(Text("a key that needs memory of its own")); });
}

TEST_F(OutOfMemoryInTree, NewObjectsInATable) {
    const auto add = [](World& world, int count) {
        for (int index = 0; index < count; ++index)
            world.cities()->newObject(Text("a key that needs memory of its own " + std::to_string(index)));
    };
    Expected expected;
    for (int count = 1; count < 14; ++count)
        expected.steps.push_back([=](World& world) { add(world, count); });
    survives([=](World& world) { add(world, 14); }, expected);
}

TEST_F(OutOfMemoryInTree, Clone) {
    for (const char* path : {"title", "loose", "list", "six", "label", "points", "cities"}) {
        SCOPED_TRACE(path);
        survives([=](World& world) { world.own(world.at(path)->clone()); });
    }
}

TEST_F(OutOfMemoryInTree, CopyConstructAValue) {
    for (const char* path : {"title", "subtitle", "list"})
        survives([=](World& world) { const DataValue copy(*world.value(path)); });
}

TEST_F(OutOfMemoryInTree, AssignAValue) {
    for (const auto& [to, from] : {std::pair("loose", "six/child 1"), std::pair("title", "subtitle"),
                                   std::pair("loose", "list"), std::pair("followers/follower1", "subtitle")})
        survives([to = to, from = from](World& world) {
            world.isOdd = true;
            *world.value(to) = *world.value(from);
        });
}

TEST_F(OutOfMemoryInTree, AssignAStructure) {
    survives([](World& world) {
        auto copy = std::make_unique<DataStructure>(Text("copy"));
        give(*copy, make<DataValue>("child"));
        DataField* const child = copy->getFieldByIndex(0);
        const std::unique_ptr<DataField> owned(child);
        *copy = *static_cast<DataStructure*>(world.at("six"));
    });
}

TEST_F(OutOfMemoryInTree, Dump) {
    survives([](World& world) {
        std::ostringstream out;
        world.root.dump(out, -1, -1, 1);
        world.root.dumpInternal(out, -1, -1);
        world.root.dumpXML(out);
        world.root.dumpSpec(out, &world.root);
        world.root.dumpData(Text("points[0-1];cities[Oslo,Rome];label;list[1-2]"), 0, out);
    });
}

TEST_F(OutOfMemoryInTree, DumpLeavesTheIndentationAsItWas) {
    memory::survivesAnywhere([](const memory::Operate& operate) {
        World world;
        operate([&] {
            std::ostringstream out;
            out.exceptions(std::ios::badbit);
            world.root.dump(out, -1, -1, 1);
        });
        EXPECT_EQ(DataBaseType::getIndent(), 0);
        DataBaseType::setIndent(0);
    });
}

TEST_F(OutOfMemoryInTree, ChildrenAreListedInOrderWithoutMemory) {
    memory::survivesAnywhere([](const memory::Operate& operate) {
        DataStructure parent(Text("parent"));
        const SubtreeCleanup belowParent{parent};
        for (const char* name : {"field10", "field2", "field1", "field"})
            give(parent, make<DataValue>(name));
        std::vector<DataField*> listed(4);
        EXPECT_TRUE(operate([&] {
            for (int index = 0; index < 4; ++index)
                listed[static_cast<std::size_t>(index)] = parent.getFieldByIndex(index);
        }));
        std::string names;
        for (DataField* field : listed)
            names += std::string(field->getName()) + ' ';
        EXPECT_EQ(names, "field field1 field10 field2 ");
    });
}

TEST_F(OutOfMemoryInTree, TakingApartTakesNoMemory) {
    memory::survivesAnywhere([](const memory::Operate& operate) {
        World world;
        DataField* const title = world.at("title");
        DataField* const followed = world.at("source");
        world.keep("six");
        std::unique_ptr<DataField> deleted(world.at("list"));
        Text six("six");
        EXPECT_TRUE(operate([&] {
            title->unregisterHandler(&world.first);
            title->unregisterAllHandlers();
            world.root.unregisterHandler(&world.alone);
            followed->removeAllTargets();
            world.root.ClearLinks();
            world.root.removeField(six, -1);
            deleted.reset();
        }));
        EXPECT_EQ(world.alone.getField(), nullptr);
        EXPECT_EQ(world.third.getField(), nullptr);
    });
}

TEST_F(OutOfMemoryInTree, DeletingChildrenTakesNoMemory) {
    memory::survivesAnywhere([](const memory::Operate& operate) {
        World world;
        DataArray* const points = world.points();
        DataHashTable* const cities = world.cities();
        auto* const six = static_cast<DataStructure*>(world.at("six"));
        auto* const followers = static_cast<DataStructure*>(world.at("followers"));
        EXPECT_TRUE(operate([&] {
            points->removeChildren();
            cities->removeChildren();
            six->deleteChildren();
            followers->deleteChildren();
        }));
        for (DataNode* node : {static_cast<DataNode*>(points), static_cast<DataNode*>(cities),
                               static_cast<DataNode*>(six), static_cast<DataNode*>(followers)})
            EXPECT_EQ(node->getNumFields(), 0) << node->getName();
    });
}

TEST_F(OutOfMemoryInTree, AClassWhoseRecordCannotBeMadeIsMadeLater) {
    DataType* const before = DataValue::classType;
    memory::survivesAnywhere([](const memory::Operate& operate) {
        DataValue::classType = nullptr;
        operate([] { const DataValue value(Text("value")); });
        EXPECT_STREQ(DataValue::getClassType()->getName(), "DataValue");
        delete DataValue::classType;
    });
    DataValue::classType = before;
}

namespace {

/// Runs out of memory once, whenever it hears something.
class Failing : public DataHandler {
public:
    void onChange(DataField& /*field*/, bool /*changed*/) override { fail(); }
    void onChange(DataField& /*field*/, bool /*changed*/, int /*from*/, int /*to*/) override { fail(); }
    void onTypeChange(DataField& /*field*/, char* /*typeName*/) override { fail(); }

    bool isReady = false;

private:
    void fail() {
        if (std::exchange(isReady, false))
            throw std::bad_alloc();
    }
};

/// What is left when a handler throws.
std::string stateBehindAHandlerThatFails(const char* path, const memory::Action& action) {
    World world;
    Failing failing;
    world.at(path)->registerHandler(&failing);
    failing.isReady = true;
    EXPECT_THROW(action(world), std::bad_alloc) << path;
    EXPECT_FALSE(failing.isReady);
    world.at(path)->unregisterHandler(&failing);
    std::string state = world.state();
    world.probe();
    return state;
}

std::string stateAfter(const memory::Action& action) {
    World world;
    action(world);
    return world.state();
}

} // namespace

TEST_F(OutOfMemoryInTree, WhatAHandlerThrowsLeavesTheValueStored) {
    const std::pair<const char*, memory::Action> rows[] = {
        {"title", [](World& world) { world.at("title")->setData(longText); }},
        {"list", [](World& world) { world.at("list")->setData(longText, 2); }},
        {"list",
         [](World& world) {
             world.at("list")->setData(TextList({longText, longText}), 0, -1);
         }},
        {"list", [](World& world) { world.at("list")->copyData(world.at("list"), 0, 1, 2); }},
        {"points[1]/x", [](World& world) { world.root.parseCommand(Text("points[1] = {{x=new;}}"), 0); }},
    };
    for (const auto& [path, action] : rows)
        EXPECT_EQ(stateBehindAHandlerThatFails(path, action), stateAfter(action)) << path;
}

TEST_F(OutOfMemoryInTree, WhatAHandlerThrowsEndsAListOfCommands) {
    EXPECT_EQ(stateBehindAHandlerThatFails(
                  "loose", [](World& world) { world.root.parseCommand(Text("title=a;loose=b;subtitle=c"), 0); }),
              stateAfter([](World& world) { world.root.parseCommand(Text("title=a;loose=b"), 0); }));
}

TEST_F(OutOfMemoryInTree, WhatAFollowersHandlerThrowsLeavesTheSourceAsItWas) {
    EXPECT_EQ(stateBehindAHandlerThatFails("subtitle", [](World& world) { world.at("title")->setData("new"); }),
              stateAfter([](World& world) { world.at("subtitle")->setData("new"); }));
}

TEST_F(OutOfMemoryInTree, WhatAHandlerThrowsOnANewTypeLeavesTheType) {
    EXPECT_EQ(
        stateBehindAHandlerThatFails(
            "points",
            [](World& world) { world.points()->setObjectType(DataObject::getTypesTable()->getTypeByName("Other")); }),
        stateAfter(
            [](World& world) { world.points()->setObjectType(DataObject::getTypesTable()->getTypeByName("Other")); }));
}

TEST_F(OutOfMemoryInTree, WhatAHandlerThrowsWhenOneJoinsLeavesItRegistered) {
    World world;
    Failing failing;
    failing.isReady = true;
    EXPECT_THROW(world.root.registerHandler(Text("loose"), &failing, 0), std::bad_alloc);
    EXPECT_EQ(failing.getField(), world.at("loose"));
    EXPECT_EQ(world.at("loose")->getNumHandlers(), 2);
}

// What paths have led to is remembered in larger and larger memory; without it they are walked.
TEST_F(OutOfMemoryInTree, FindFieldsByPath) {
    survivesAnywhere([](const memory::Operate& operate) {
        Orbel root(Text("show"));
        const SubtreeCleanup belowRoot{root};
        std::vector<std::string> names;
        std::vector<DataField*> fields;
        for (int number = 0; number < 200; ++number) {
            names.push_back("field" + std::to_string(number));
            fields.push_back(new DataValue(names.back().data()));
            root.addField(fields.back(), 0);
        }
        int found = 0;
        EXPECT_TRUE(operate([&] {
            for (std::size_t at = 0; at < names.size(); ++at)
                found += root.getField(names[at].data(), 0, 0) == fields[at] ? 1 : 0;
        }));
        EXPECT_EQ(found, 200);
        for (std::size_t at = 0; at < names.size(); ++at)
            EXPECT_EQ(root.getField(names[at].data(), 0, 0), fields[at]);
    });
}
