#include "FailingMemory.h"
#include "Survival.h"

#include <support/Schema.h>
#include <support/TemporaryFolder.h>

#include <memory>
#include <optional>
#include <sstream>

using memory::Operate;
using memory::survives;
using memory::survivesAnywhere;
using memory::World;

namespace {

class OutOfMemoryInTypes : public memory::OutOfMemory {};

/// All types of a table: "Point{string:x[1]=, ...} Label{...}".
std::string contents(DataObjectTypesTable& table) {
    std::string all;
    for (int index = 0; index < table.getNumTypes(); ++index) {
        DataObjectType* type = table.getTypeByIndex(index);
        EXPECT_EQ(table.getTypeByName(type->getName()), type);
        std::vector<char*> names;
        type->getFieldsList(names);
        for (char* name : names)
            EXPECT_NE(type->getField(name), nullptr) << name;
        all += std::string(type->getName()) + '{' + fieldsOf(type) + "} ";
    }
    return all;
}

/// The names of types are known to the process: those of a table go at the end, so that they do not count as lost.
struct NamesForgotten {
    NamesForgotten() = default;
    NamesForgotten(const NamesForgotten&) = delete;
    NamesForgotten& operator=(const NamesForgotten&) = delete;
    ~NamesForgotten() { const DataObjectTypesTable fresh; }
};

DataObject* makeObject(char* typeName) {
    return new DataObject(typeName);
}

} // namespace

TEST_F(OutOfMemoryInTypes, ReadingATextKeepsWholeTypes) {
    const std::string first = "Rather long name of a type = {string a long name of a field=its long default text;};";
    const std::string second = "Second type of this table = {string x; string y[3]=a|b|c|d|e|f|g|h|i|j|k|l;};";
    DataObjectTypesTable one;
    one.parse(Text(first));
    DataObjectTypesTable both;
    both.parse(Text(first + second));
    const std::string none;
    const std::string afterOne = contents(one);
    const std::string afterBoth = contents(both);
    survivesAnywhere([&](const Operate& operate) {
        const NamesForgotten namesForgotten;
        Text text(first + second);
        DataObjectTypesTable table;
        const bool isDone = operate([&] { table.parse(text); });
        const std::string found = contents(table);
        EXPECT_TRUE(found == afterBoth || (!isDone && (found == none || found == afterOne))) << found;
    });
}

TEST_F(OutOfMemoryInTypes, ExtendingATypeKeepsWholeFields) {
    survivesAnywhere([&](const Operate& operate) {
        const NamesForgotten namesForgotten;
        Text text("Point = {string z=the default text of a third coordinate; string more than three coordinates[2];};");
        DataObjectTypesTable table;
        table.parse(Text("Point = {string x;};"));
        const std::string before = contents(table);
        const bool isDone = operate([&] { table.parse(text); });
        const std::string found = contents(table);
        const std::string half = "Point{string:x[1]=, string:z[1]=the default text of a third coordinate} ";
        const std::string all = "Point{string:x[1]=, string:z[1]=the default text of a third coordinate, "
                                "string:more than three coordinates[2]=} ";
        EXPECT_TRUE(found == all || (!isDone && (found == before || found == half))) << found;
    });
}

TEST_F(OutOfMemoryInTypes, AddATypeWhollyOrNotAtAll) {
    survivesAnywhere([](const Operate& operate) {
        const NamesForgotten namesForgotten;
        DataObjectTypesTable table;
        auto type = std::make_unique<DataObjectType>();
        type->setName(Text("A type whose name takes memory"));
        DataObjectType* const added = type.get();
        const bool isDone = operate([&] {
            table.addType(added);
            type.release();
        });
        EXPECT_EQ(table.getNumTypes(), isDone ? 1 : 0);
        EXPECT_EQ(table.getTypeByName(added->getName()), isDone ? added : nullptr);
        if (!isDone) {
            table.addType(added);
            type.release();
        }
        EXPECT_EQ(table.getTypeByName(added->getName()), added);
        EXPECT_EQ(table.getNumTypes(), 1);
    });
}

TEST_F(OutOfMemoryInTypes, AddAFieldWhollyOrNotAtAll) {
    survivesAnywhere([](const Operate& operate) {
        DataObjectType type;
        for (int count = 0; count < 20; ++count) {
            auto field = std::make_unique<DataObjectField>();
            DataObjectField* const added = field.get();
            const bool isDone = operate([&] {
                type.addField(added);
                field.release();
            });
            EXPECT_EQ(type.getField(added->getName()), isDone ? added : nullptr);
            if (!isDone) {
                type.addField(added);
                field.release();
            }
            EXPECT_EQ(type.getField(added->getName()), added);
        }
    });
}

TEST_F(OutOfMemoryInTypes, ChangeADeclarationWhollyOrNotAtAll) {
    survivesAnywhere([](const Operate& operate) {
        DataObjectType type;
        auto* field = new DataObjectField;
        type.addField(field);
        field->parse(Text("string old[2]=short"));
        Text text("string a new name that takes memory[7]=a new default text that takes memory");
        const bool isDone = operate([&] { field->parse(text); });
        EXPECT_EQ(fieldsOf(&type), isDone
                                       ? "string:a new name that takes memory[7]=a new default text that takes memory"
                                       : "string:old[2]=short");
        EXPECT_EQ(type.getField(field->getName()), field);
    });
}

TEST_F(OutOfMemoryInTypes, RenameADeclarationWhollyOrNotAtAll) {
    survivesAnywhere([](const Operate& operate) {
        DataObjectType type;
        auto* field = new DataObjectField;
        type.addField(field);
        Text name("a name of a declaration that takes memory");
        const bool isDone = operate([&] { field->setName(name); });
        EXPECT_STREQ(field->getName(), isDone ? name : Text("No name"));
        EXPECT_EQ(type.getField(field->getName()), field);
    });
}

TEST_F(OutOfMemoryInTypes, RenameATypeWhollyOrNotAtAll) {
    survivesAnywhere([](const Operate& operate) {
        DataObjectTypesTable table;
        auto* type = new DataObjectType;
        type->setName(Text("Short"));
        table.addType(type);
        Text name("A name of a type that takes memory");
        const bool isDone = operate([&] { type->setName(name); });
        EXPECT_EQ(table.getTypeByName(isDone ? static_cast<char*>(name) : "Short"), type);
    });
}

TEST_F(OutOfMemoryInTypes, AskAndSortAndRender) {
    survivesAnywhere([](const Operate& operate) {
        DataObjectTypesTable table;
        table.parse(Text(memory::worldTypes));
        operate([&] {
            table.sortTypes();
            std::ostringstream out;
            out.exceptions(std::ios::badbit);
            table.dumpSpec(out);
            table.getTypeByName("Label")->dumpXML(out);
            char text[500];
            table.getTypeByName("Label")->getFieldsDescription(text);
        });
        std::ostringstream out;
        table.dumpSpec(out);
        EXPECT_EQ(out.str().find("Type Label {\n\tValue text;"), 0U) << out.str();
    });
}

TEST_F(OutOfMemoryInTypes, DestroyingThemTakesNoMemory) {
    // What collects the messages would take some.
    DataSetVPrintfFunction(nullptr);
    survivesAnywhere([](const Operate& operate) {
        const NamesForgotten namesForgotten;
        std::optional<DataObjectTypesTable> table(std::in_place);
        table->parse(Text(memory::worldTypes));
        std::vector<DataObjectField*> letGo;
        table->getTypeByIndex(1)->getFieldsList(letGo);
        EXPECT_TRUE(operate([&] {
            table->getTypeByIndex(1)->removeAll();
            table.reset();
        }));
        for (DataObjectField* field : letGo)
            delete field;
    });
}

TEST_F(OutOfMemoryInTypes, ReadAllTypesAnew) {
    const TemporaryFolder folder;
    folder.write("a.qx", memory::worldTypes);
    const std::string path = folder.path();
    for (const memory::Shortage shortage : {memory::Shortage::passing, memory::Shortage::lasting})
        for (long long number = 1;; ++number) {
            DataObject::set_ConfigFolder(Text(path));
            bool hadFault = false;
            {
                const memory::Fault fault(number, shortage);
                try {
                    DataObject::readConfigFiles();
                } catch (const std::bad_alloc&) {
                }
                hadFault = fault.happened();
            }
            if (DataObject::getTypesTable())
                contents(*DataObject::getTypesTable());
            DataObject::readConfigFiles();
            ASSERT_EQ(DataObject::getTypesTable()->getNumTypes(), 3);
            if (!hadFault)
                break;
        }
}

TEST_F(OutOfMemoryInTypes, MakeATypedFieldByPath) {
    survives([](World& world) { world.root.getField(Text("Label:new"), 0, 0); });
    survives([](World& world) { world.root.getField(Text("Label[2]:new"), 0, 0); });
    survives([](World& world) { world.root.getField(Text("six/Point:new"), 0, 0); });
}

TEST_F(OutOfMemoryInTypes, MakeAnElementByAFunctionOfTheType) {
    types["Point"]->setCreateObjectFunc(makeObject);
    survives([](World& world) { world.points()->setSize(3); });
    survives([](World& world) { world.root.getField(Text("Point:new"), 0, 0); });
}

TEST_F(OutOfMemoryInTypes, GiveAnObjectAnotherType) {
    const auto point = [](World& world) { return world.points()->getObject(0); };
    survives([=](World& world) { point(world)->setObjectType(Text("Other")); },
             {{[=](World& world) { point(world)->setObjectType(static_cast<DataObjectType*>(nullptr)); }}});
    const auto build = [](const char* path) { return [=](World& world) { world.root.getField(Text(path), 0, 0); }; };
    survives(
        [=](World& world) {
            build("Point:new")(world);
            build("Other:new")(world);
        },
        {{build("Point:new"),
          [=](World& world) {
              build("Point:new")(world);
              static_cast<DataObject*>(world.at("new"))->setObjectType(static_cast<DataObjectType*>(nullptr));
          },
          [=](World& world) {
              build("Point:new")(world);
              static_cast<DataObject*>(world.at("new"))->setObjectType(Text("Other"));
          }},
         true});
}

TEST_F(OutOfMemoryInTypes, GiveAnArrayAnotherType) {
    const auto retype = [](World& world, int element, const char* type) {
        world.points()->getObject(element)->setObjectType(type ? DataObject::getTypesTable()->getTypeByName(type)
                                                               : nullptr);
    };
    survives([](World& world) { world.points()->setObjectType(DataObject::getTypesTable()->getTypeByName("Other")); },
             {{[=](World& world) { retype(world, 0, nullptr); }, [=](World& world) { retype(world, 0, "Other"); },
               [=](World& world) {
                   retype(world, 0, "Other");
                   retype(world, 1, nullptr);
               }}});
}

TEST_F(OutOfMemoryInTypes, MakeObjectsAndArraysForTheCaller) {
    survivesAnywhere([](const Operate& operate) {
        DataObject* object = nullptr;
        DataArray* array = nullptr;
        operate([&] {
            object = DataObject::createObject(Text("Label"), Text("an object"));
            array = DataObject::createArray(Text("Label"), Text("an array"), 2);
        });
        const Tree<DataObject> ownedObject(object);
        const Tree<DataArray> ownedArray(array);
    });
}

TEST_F(OutOfMemoryInTypes, ListTypesAndFields) {
    survivesAnywhere([](const Operate& operate) {
        std::vector<char*> names;
        operate([&] {
            DataObject::getTypeNames(&names);
            DataObject::getTypeFieldNames(Text("Label"), &names);
            DataObject::getObjectTypeByName(Text("Label"));
        });
    });
}
