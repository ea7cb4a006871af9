#include <support/Schema.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <type_traits>

namespace {

DataObjectType* newType(const std::string& name) {
    auto* type = new DataObjectType;
    type->setName(Text(name));
    return type;
}

std::string specOf(DataObjectTypesTable& table) {
    std::ostringstream os;
    table.dumpSpec(os);
    return os.str();
}

std::string destroyedNames;

class ObservedType : public DataObjectType {
public:
    explicit ObservedType(const std::string& name) { setName(Text(name)); }
    ~ObservedType() override { destroyedNames += getName(); }
};

} // namespace

static_assert(std::has_virtual_destructor_v<DataObjectTypesTable>);

TEST(DataObjectTypesTable, StartsEmpty) {
    Schema schema;
    EXPECT_EQ(schema.table.getNumTypes(), 0);
    EXPECT_EQ(schema.table.getTypeByIndex(0), nullptr);
    EXPECT_EQ(schema.type("string"), nullptr);
    EXPECT_EQ(specOf(schema.table), "");
    EXPECT_EQ(schema.console.takeMessages(), "");
}

TEST(DataObjectTypesTable, ListsTypesInTheOrderTheyCame) {
    Schema schema;
    DataObjectType* b = newType("b");
    DataObjectType* a = newType("a");
    schema.table.addType(b);
    schema.table.addType(a);
    EXPECT_EQ(schema.table.getNumTypes(), 2);
    EXPECT_EQ(schema.table.getTypeByIndex(0), b);
    EXPECT_EQ(schema.table.getTypeByIndex(1), a);
    EXPECT_EQ(schema.table.getTypeByIndex(2), nullptr);
    EXPECT_EQ(schema.table.getTypeByIndex(-1), nullptr);
}

TEST(DataObjectTypesTable, FindsTypesByTheirExactName) {
    Schema schema("Point = {}; Label = {};");
    EXPECT_EQ(schema.type("Point"), schema.table.getTypeByIndex(0));
    EXPECT_EQ(schema.type("Label"), schema.table.getTypeByIndex(1));
    for (const char* name : {"point", "POINT", "Poin", "Points", " Point", "Point ", ""})
        EXPECT_EQ(schema.type(name), nullptr) << name;
    EXPECT_EQ(schema.table.getTypeByName(nullptr), nullptr);
}

TEST(DataObjectTypesTable, TheFirstOfEqualNamesIsFound) {
    Schema schema;
    DataObjectType* first = newType("T");
    schema.table.addType(newType("A"));
    schema.table.addType(first);
    schema.table.addType(newType("T"));
    EXPECT_EQ(schema.table.getNumTypes(), 3);
    EXPECT_EQ(schema.type("T"), first);
    schema.table.sortTypes();
    EXPECT_EQ(schema.type("T"), first);
    EXPECT_EQ(schema.table.getTypeByIndex(1), first);
}

TEST(DataObjectTypesTable, ARenamedTypeIsFoundUnderItsNewName) {
    Schema schema("A = {}; B = {}; C = {};");
    DataObjectType* first = schema.table.getTypeByIndex(0);
    DataObjectType* second = schema.table.getTypeByIndex(1);
    EXPECT_EQ(schema.type("A"), first);
    second->setName(Text("D"));
    EXPECT_EQ(schema.type("B"), nullptr);
    EXPECT_EQ(schema.type("D"), second);
    first->setName(Text("D"));
    EXPECT_EQ(schema.type("D"), first);
    first->setName(Text("E"));
    EXPECT_EQ(schema.type("D"), second);
    schema.table.addType(newType("D"));
    EXPECT_EQ(schema.type("D"), second);
}

TEST(DataObjectTypesTable, ARenameMakesNoNameKnown) {
    Schema schema("A = {};");
    schema.type("A")->setName(Text("B"));
    schema.parse("C = {A a; B b;};");
    EXPECT_EQ(schema.fields("C"), "A:a[1]=");
}

TEST(DataObjectTypesTable, SortsByBytesAndKeepsEqualNamesInOrder) {
    Schema schema;
    for (const char* name : {"b", "\xC3\xA4", "a", "B", "ab", "", "b"})
        schema.table.addType(newType(name));
    DataObjectType* first = schema.table.getTypeByIndex(0);
    DataObjectType* last = schema.table.getTypeByIndex(6);
    schema.table.sortTypes();
    EXPECT_EQ(schema.names(), ", B, a, ab, b, b, \xC3\xA4");
    EXPECT_EQ(schema.table.getTypeByIndex(4), first);
    EXPECT_EQ(schema.table.getTypeByIndex(5), last);
}

TEST(DataObjectTypesTable, AddingATypeAgainChangesNothing) {
    Schema schema;
    DataObjectType* type = newType("T");
    schema.table.addType(type);
    schema.table.addType(type);
    schema.table.addType(nullptr);
    EXPECT_EQ(schema.names(), "T");
}

TEST(DataObjectTypesTable, ANewTableKnowsStringOnly) {
    Schema schema("A = {};");
    {
        DataObjectTypesTable other;
        DataObjectField field;
        EXPECT_FALSE(field.parse(Text("A a")));
        EXPECT_TRUE(field.parse(Text("string a")));
    }
    schema.parse("B = {A a;};");
    EXPECT_EQ(schema.fields("B"), "");
}

TEST(DataObjectTypesTable, ItsEndIsToldThenTypesGoFromLastToFirst) {
    Console console;
    destroyedNames.clear();
    auto* table = new DataObjectTypesTable;
    for (const char* name : {"A", "C", "B"})
        table->addType(new ObservedType(name));
    delete table;
    EXPECT_EQ(console.takeMessages(), "DataObjectTYpesTable::~DataObjectTypesTable(): deleting 3 types.\n");
    EXPECT_EQ(console.takeOutput(), "");
    EXPECT_EQ(destroyedNames, "BCA");
}

TEST(DataObjectTypesTable, TheEndOfAnEmptyTableIsToldToo) {
    Console console;
    delete new DataObjectTypesTable;
    EXPECT_EQ(console.takeMessages(), "DataObjectTYpesTable::~DataObjectTypesTable(): deleting 0 types.\n");
}

TEST(DataObjectTypesTable, SpecShowsTheWholeSchema) {
    Schema schema("Point = {string x=0; string y=0;};\n"
                  "Label = {string text=Hello; Point pos; string tags[4];};\n"
                  "Label = {string colour=white;};\n"
                  "Broken = {number n;};\n");
    EXPECT_EQ(specOf(schema.table), "Type Point {\n"
                                    "\tValue x;\n"
                                    "\tValue y;\n"
                                    "};\n"
                                    "Type Label {\n"
                                    "\tValue text;\n"
                                    "\tPoint pos{\n"
                                    "\t\tValue x;\n"
                                    "\t\tValue y;\n"
                                    "\t};\n"
                                    "\tArray<Value> tags[4];\n"
                                    "\tValue colour;\n"
                                    "};\n"
                                    "Type Broken {\n"
                                    "};\n");
}

TEST(DataObjectTypesTable, SpecStartsAtLevelZeroAndEndsThere) {
    Schema schema("T = {string x;};");
    DataObjectType& type = *schema.type("T");
    std::ostringstream os;
    type.dumpSpec(os, nullptr, 5);
    EXPECT_EQ(specOf(schema.table), "Type T {\n\tValue x;\n};\n");
    os.str("");
    type.dumpSpec(os, nullptr, -1);
    EXPECT_EQ(os.str(), "Value x;\n");
}

TEST(DataObjectTypesTable, SpecShowsNoArrayForASizeBelowTwo) {
    Schema schema("T = {string a[0]; string b[1];};");
    EXPECT_EQ(specOf(schema.table), "Type T {\n\tValue a;\n\tValue b;\n};\n");
}

TEST(DataObjectTypesTable, SpecWritesATypeInsideItselfWithoutFields) {
    Schema schema("Node = {string name;}; Node = {Node next[2]; string last;};");
    EXPECT_EQ(specOf(schema.table), "Type Node {\n"
                                    "\tValue name;\n"
                                    "\tArray<Node> next[2]{\n"
                                    "\t};\n"
                                    "\tValue last;\n"
                                    "};\n");
}

TEST(DataObjectTypesTable, SpecEndsWhereTypesContainEachOther) {
    Schema schema("A = {string x;}; B = {A a;}; A = {B b; B c;};");
    EXPECT_EQ(specOf(schema.table), "Type A {\n"
                                    "\tValue x;\n"
                                    "\tB b{\n"
                                    "\t\tA a{\n"
                                    "\t\t};\n"
                                    "\t};\n"
                                    "\tB c{\n"
                                    "\t\tA a{\n"
                                    "\t\t};\n"
                                    "\t};\n"
                                    "};\n"
                                    "Type B {\n"
                                    "\tA a{\n"
                                    "\t\tValue x;\n"
                                    "\t\tB b{\n"
                                    "\t\t};\n"
                                    "\t\tB c{\n"
                                    "\t\t};\n"
                                    "\t};\n"
                                    "};\n");
}

TEST(DataObjectTypesTable, SpecExpandsAHundredTypesInsideEachOther) {
    std::string text = "T0 = {string x;};";
    for (int number = 1; number < 200; ++number)
        text += 'T' + std::to_string(number) + " = {T" + std::to_string(number - 1) + " p;};";
    Schema schema(text);
    const auto lines = [&](const std::string& name) {
        std::ostringstream os;
        schema.type(name)->dumpSpec(os, &schema.table, -1);
        const std::string spec = os.str();
        return std::count(spec.begin(), spec.end(), '\n');
    };
    EXPECT_EQ(lines("T98"), 98 * 2 + 1);
    EXPECT_EQ(lines("T99"), 99 * 2 + 1);
    EXPECT_EQ(lines("T100"), 100 * 2);
    EXPECT_EQ(lines("T199"), 100 * 2);
}

TEST(DataObjectTypesTable, SpecOpens65536TypesForOne) {
    const auto manyOf = [](const std::string& type) {
        std::string fields;
        for (int number = 0; number < 300; ++number)
            fields += type + " f" + std::to_string(number) + ';';
        return '{' + fields + "};";
    };
    Schema schema("Leaf = {string x;}; Row = " + manyOf("Leaf") + " Wide = " + manyOf("Row"));
    std::ostringstream os;
    schema.type("Wide")->dumpSpec(os, &schema.table, -1);
    const std::string spec = os.str();
    int leaves = 0;
    for (std::size_t at = spec.find("Value x;"); at != std::string::npos; at = spec.find("Value x;", at + 1))
        ++leaves;
    // Itself, 217 rows with all their leaves, and one more with 217 of them; the others are shown closed.
    EXPECT_EQ(leaves, 217 * 300 + 217);
    EXPECT_EQ(1 + 217 + leaves + 1, 65'536);
    EXPECT_EQ(std::count(spec.begin(), spec.end(), '{'), 300 + 218 * 300);
}
