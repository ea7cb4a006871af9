#include <support/Schema.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

namespace {

DataObjectField* newField(const std::string& statement) {
    auto* field = new DataObjectField;
    EXPECT_TRUE(field->parse(Text(statement)));
    return field;
}

std::string specOf(DataObjectType& type, DataObjectTypesTable* table = nullptr, int indent = -1) {
    std::ostringstream os;
    type.dumpSpec(os, table, indent);
    return os.str();
}

std::string xmlOf(DataObjectType& type) {
    std::ostringstream os;
    type.dumpXML(os);
    return os.str();
}

std::string descriptionOf(DataObjectType& type) {
    char out[1000] = "old text";
    type.getFieldsDescription(out);
    return out;
}

/// Counts how many of its kind were destroyed.
class CountedField : public DataObjectField {
public:
    explicit CountedField(int& destroyed) : m_destroyed(&destroyed) {}
    CountedField(const CountedField&) = delete;
    CountedField& operator=(const CountedField&) = delete;
    ~CountedField() override { ++*m_destroyed; }

private:
    int* m_destroyed;
};

/// Looks for itself in a type when it is destroyed.
class AskingField : public DataObjectField {
public:
    AskingField(DataObjectType& type, std::vector<std::string>& found) : m_type(&type), m_found(&found) {}
    AskingField(const AskingField&) = delete;
    AskingField& operator=(const AskingField&) = delete;
    ~AskingField() override {
        std::vector<DataObjectField*> fields;
        m_type->getFieldsList(fields);
        m_found->push_back((m_type->getField(getName()) ? "one of " : "none of ") + std::to_string(fields.size()));
    }

private:
    DataObjectType* m_type;
    std::vector<std::string>* m_found;
};

/// What parseGetName makes of a text.
struct NameSplit {
    explicit NameSplit(std::string statement) : text(std::move(statement)), name(text.size() + 2, '?') {
        rest = text.data();
        found = DataObjectType::parseGetName(&rest, name.data());
    }

    std::string text;
    std::string name;
    char* rest = nullptr;
    bool found = false;
};

std::string calledWith;

DataObject* makeObject(char* typeName) {
    calledWith = std::string("object of ") + typeName;
    return new DataObject(Text("made"));
}

DataArray* makeArray(char* typeName) {
    calledWith = std::string("array of ") + typeName;
    return new DataArray(Text("made"));
}

} // namespace

static_assert(std::has_virtual_destructor_v<DataObjectType>);

TEST(DataObjectType, StartsEmpty) {
    DataObjectType type;
    EXPECT_STREQ(type.getName(), "");
    EXPECT_EQ(fieldsOf(&type), "");
    EXPECT_EQ(type.createObject(), nullptr);
    EXPECT_EQ(type.createArray(), nullptr);
    EXPECT_EQ(descriptionOf(type), "");
    EXPECT_EQ(specOf(type), "");
    EXPECT_EQ(xmlOf(type), "<TYPE name=>\n</TYPE>\n");
}

TEST(DataObjectType, KeepsItsName) {
    DataObjectType type;
    type.setName(Text("Point"));
    EXPECT_STREQ(type.getName(), "Point");
    type.setName(nullptr);
    EXPECT_STREQ(type.getName(), "");
}

TEST(DataObjectType, ParseAddsTheFieldsOfABody) {
    DataObjectType type;
    EXPECT_TRUE(type.parse(Text("{string x=0; string y=0;}")));
    EXPECT_TRUE(type.parse(Text("ignored {string z;} ignored")));
    EXPECT_EQ(fieldsOf(&type), "string:x[1]=0, string:y[1]=0, string:z[1]=");
}

TEST(DataObjectType, ParseWithoutABraceAddsNothing) {
    Console console;
    DataObjectType type;
    EXPECT_TRUE(type.parse(Text("string x;")));
    EXPECT_TRUE(type.parse(Text("")));
    EXPECT_TRUE(type.parse(nullptr));
    EXPECT_EQ(fieldsOf(&type), "");
    EXPECT_EQ(console.takeOutput(), "");
}

TEST(DataObjectType, ParseGetNameSplitsAtTheFirstEqualsSign) {
    const NameSplit split(" \t\r\nPoint \t= \t\r\n{string x=0;}");
    EXPECT_TRUE(split.found);
    EXPECT_STREQ(split.name.c_str(), "Point");
    EXPECT_STREQ(split.rest, "{string x=0;}");
    EXPECT_STREQ(split.text.c_str(), " \t\r\nPoint \t");
}

TEST(DataObjectType, ParseGetNameWithoutAnEqualsSignChangesNothing) {
    for (const char* text : {"Point {string x;}", ""}) {
        const NameSplit split(text);
        EXPECT_FALSE(split.found);
        EXPECT_EQ(split.name.front(), '?');
        EXPECT_EQ(split.rest, split.text.data());
        EXPECT_EQ(split.text, text);
    }
}

TEST(DataObjectType, ParseGetNameTakesEmptyParts) {
    const NameSplit noName("=x");
    EXPECT_TRUE(noName.found);
    EXPECT_STREQ(noName.name.c_str(), "");
    EXPECT_STREQ(noName.rest, "x");
    const NameSplit noRest("Point= \n");
    EXPECT_TRUE(noRest.found);
    EXPECT_STREQ(noRest.name.c_str(), "Point");
    EXPECT_STREQ(noRest.rest, "");
}

TEST(DataObjectType, ParseGetNameKeepsTrailingLineEndsInTheName) {
    EXPECT_STREQ(NameSplit("Point\n=x").name.c_str(), "Point\n");
    EXPECT_STREQ(NameSplit("Po int\r \t=x").name.c_str(), "Po int\r");
}

TEST(DataObjectType, ParseGetNameNeedsATextAndRoomForTheName) {
    char name[] = "?";
    char* none = nullptr;
    EXPECT_FALSE(DataObjectType::parseGetName(nullptr, name));
    EXPECT_FALSE(DataObjectType::parseGetName(&none, name));
    EXPECT_STREQ(name, "?");
    Text text("A = {}");
    char* rest = text;
    EXPECT_FALSE(DataObjectType::parseGetName(&rest, nullptr));
    EXPECT_STREQ(rest, "A = {}");
}

TEST(DataObjectType, FieldsAreFoundByTheirOwnNameTextOnly) {
    DataObjectType type;
    DataObjectField* field = newField("string x");
    type.addField(field);
    EXPECT_EQ(type.getField(field->getName()), field);
    EXPECT_EQ(type.getField(Text("x")), nullptr);
    EXPECT_EQ(type.getField(nullptr), nullptr);
    DataObjectField copy(*field);
    EXPECT_EQ(type.getField(copy.getName()), nullptr);
}

TEST(DataObjectType, EveryFieldOfSeveralWithOneNameIsFound) {
    Schema schema("Point = {string x=1; string x=2;};");
    DataObjectType* type = schema.type("Point");
    EXPECT_EQ(fieldsOf(type), "string:x[1]=1, string:x[1]=2");
    std::vector<char*> names;
    std::vector<DataObjectField*> fields;
    type->getFieldsList(names);
    type->getFieldsList(fields);
    ASSERT_EQ(names.size(), 2U);
    ASSERT_EQ(fields.size(), 2U);
    EXPECT_NE(fields[0], fields[1]);
    for (std::size_t index = 0; index < 2; ++index) {
        EXPECT_STREQ(names[index], "x");
        EXPECT_EQ(names[index], fields[index]->getName());
        EXPECT_EQ(type->getField(names[index]), fields[index]);
    }
}

TEST(DataObjectType, AFieldIsFoundUnderItsNewNameTextAfterARename) {
    DataObjectType type;
    DataObjectField* field = newField("string x");
    type.addField(field);
    const std::string longName(1000, 'n');
    field->setName(Text(longName));
    EXPECT_EQ(type.getField(field->getName()), field);
    field->parse(Text("string " + longName + longName));
    EXPECT_EQ(type.getField(field->getName()), field);
    *field = DataObjectField();
    EXPECT_EQ(type.getField(field->getName()), field);
    EXPECT_EQ(fieldsOf(&type), "Unknown:No name[1]=");
}

TEST(DataObjectType, ListsReplaceWhatTheVectorHeld) {
    DataObjectType type;
    std::vector<char*> names(3, nullptr);
    std::vector<DataObjectField*> fields(3, nullptr);
    type.getFieldsList(names);
    type.getFieldsList(fields);
    EXPECT_TRUE(names.empty());
    EXPECT_TRUE(fields.empty());
}

TEST(DataObjectType, AddingAFieldAgainChangesNothing) {
    int destroyed = 0;
    {
        DataObjectType type;
        auto* field = new CountedField(destroyed);
        type.addField(field);
        type.addField(field);
        type.addField(nullptr);
        EXPECT_EQ(fieldsOf(&type), "Unknown:No name[1]=");
        DataObjectType other;
        other.addField(field);
        EXPECT_EQ(fieldsOf(&other), "");
    }
    EXPECT_EQ(destroyed, 1);
}

TEST(DataObjectType, DestroysTheFieldsItHolds) {
    int destroyed = 0;
    {
        DataObjectType type;
        type.addField(new CountedField(destroyed));
        type.addField(new CountedField(destroyed));
        EXPECT_EQ(destroyed, 0);
    }
    EXPECT_EQ(destroyed, 2);
}

TEST(DataObjectType, HasNoFieldsAnyMoreWhenItDestroysThem) {
    std::vector<std::string> found;
    {
        DataObjectType type;
        type.addField(new AskingField(type, found));
        type.addField(new AskingField(type, found));
    }
    EXPECT_EQ(found, (std::vector<std::string>{"none of 0", "none of 0"}));
}

TEST(DataObjectType, RemoveAllLetsGoOfTheFields) {
    int destroyed = 0;
    CountedField field(destroyed);
    {
        DataObjectType type;
        type.addField(&field);
        type.removeAll();
        EXPECT_EQ(fieldsOf(&type), "");
        EXPECT_EQ(type.getField(field.getName()), nullptr);
    }
    EXPECT_EQ(destroyed, 0);
    DataObjectType next;
    next.addField(&field);
    EXPECT_EQ(next.getField(field.getName()), &field);
    next.removeAll();
}

TEST(DataObjectType, AFieldThatIsDestroyedLeavesItsType) {
    DataObjectType type;
    type.parse(Text("{string x; string y; string z;}"));
    std::vector<DataObjectField*> fields;
    type.getFieldsList(fields);
    char* const nameOfTheGone = fields[1]->getName();
    delete fields[1];
    EXPECT_EQ(fieldsOf(&type), "string:x[1]=, string:z[1]=");
    EXPECT_EQ(type.getField(nameOfTheGone), nullptr);
    EXPECT_EQ(type.getField(fields[2]->getName()), fields[2]);
    delete fields[0];
    delete fields[2];
    type.removeAll();
    EXPECT_EQ(fieldsOf(&type), "");
}

TEST(DataObjectType, CallsTheInstalledFunctionsWithItsName) {
    DataObjectType type;
    type.setName(Text("City"));
    type.setCreateObjectFunc(makeObject);
    type.setCreateArrayFunc(makeArray);
    DataObject* object = type.createObject();
    EXPECT_EQ(calledWith, "object of City");
    DataArray* array = type.createArray();
    EXPECT_EQ(calledWith, "array of City");
    EXPECT_NE(object, nullptr);
    EXPECT_NE(array, nullptr);
    delete object;
    delete array;
    type.setCreateObjectFunc(nullptr);
    type.setCreateArrayFunc(nullptr);
    EXPECT_EQ(type.createObject(), nullptr);
    EXPECT_EQ(type.createArray(), nullptr);
}

TEST(DataObjectType, TypesOfATableHaveNoFunctions) {
    Schema schema("Point = {string x;};");
    EXPECT_EQ(schema.type("Point")->createObject(), nullptr);
    EXPECT_EQ(schema.type("Point")->createArray(), nullptr);
}

TEST(DataObjectType, DescribesItsFieldsInTheOrderOfTheirNames) {
    Schema schema("Point = {}; Label = {string text=Hello; Point pos; string tags[4]; string Zoom; string b[2];};");
    EXPECT_EQ(descriptionOf(*schema.type("Label")), "string \t Zoom;\n"
                                                    "string \t b[2];\n"
                                                    "Point \t pos;\n"
                                                    "string \t tags[4];\n"
                                                    "string \t text;\n");
}

TEST(DataObjectType, DescribesEveryFieldOfOneName) {
    Schema schema("Point = {}; T = {string b; string a[3]; Point a; string a;};");
    EXPECT_EQ(descriptionOf(*schema.type("T")), "string \t a[3];\nPoint \t a;\nstring \t a;\nstring \t b;\n");
    schema.type("T")->getFieldsDescription(nullptr);
}

TEST(DataObjectType, DescribesSizesBelowTwoWithoutABracket) {
    Schema schema("T = {string a[0]; string b[1]; string c[-4];};");
    EXPECT_EQ(descriptionOf(*schema.type("T")), "string \t a;\nstring \t b;\nstring \t c;\n");
}

TEST(DataObjectType, DescriptionsOrderNamesByBytes) {
    Schema schema("T = {string \xC3\xA4; string z; string ab; string a; string \x01;};");
    EXPECT_EQ(descriptionOf(*schema.type("T")),
              "string \t \x01;\nstring \t a;\nstring \t ab;\nstring \t z;\nstring \t \xC3\xA4;\n");
}

TEST(DataObjectType, SpecWritesTheFieldsAtTheLevel) {
    Schema schema("Point = {string x; string y[2];};");
    DataObjectType& point = *schema.type("Point");
    EXPECT_EQ(specOf(point), "Value x;\nArray<Value> y[2];\n");
    EXPECT_EQ(specOf(point, nullptr, 2), "\t\tValue x;\n\t\tArray<Value> y[2];\n");
}

TEST(DataObjectType, AnIndentAboveZeroStaysForFurtherRenderings) {
    Schema schema("Point = {string x;};");
    DataObjectType& point = *schema.type("Point");
    specOf(point, nullptr, 1);
    EXPECT_EQ(specOf(point, nullptr, 0), "\tValue x;\n");
    EXPECT_EQ(specOf(point, nullptr, -5), "\tValue x;\n");
    EXPECT_EQ(xmlOf(point), "\t<TYPE name=Point>\n\t\t<string>x</string>\n\t</TYPE>\n");
    EXPECT_EQ(specOf(point), "\tValue x;\n");
}

TEST(DataObjectType, SpecExpandsTypesWithATableOnly) {
    Schema schema("Point = {string x;}; Label = {Point pos; Point corners[4];};");
    DataObjectType& label = *schema.type("Label");
    EXPECT_EQ(specOf(label), "Point pos{\n};\nArray<Point> corners[4]{\n};\n");
    EXPECT_EQ(specOf(label, &schema.table), "Point pos{\n\tValue x;\n};\nArray<Point> corners[4]{\n\tValue x;\n};\n");
}

TEST(DataObjectType, XmlListsTheFieldsOneLevelDeeper) {
    Schema schema("Point = {}; Label = {string text=Hello; Point pos; string tags[4];};");
    EXPECT_EQ(xmlOf(*schema.type("Label")), "<TYPE name=Label>\n"
                                            "\t<string>text</string>\n"
                                            "\t<Point>pos</Point>\n"
                                            "\t<string>tags</string>\n"
                                            "</TYPE>\n");
}

TEST(DataObjectType, XmlIsFlushedAtItsEnd) {
    class Counter : public std::stringbuf {
    public:
        int count = 0;

    protected:
        int sync() override { return ++count, 0; }
    } counter;
    std::ostream os(&counter);
    Schema("Point = {string x;};").type("Point")->dumpXML(os);
    EXPECT_EQ(counter.str(), "<TYPE name=Point>\n\t<string>x</string>\n</TYPE>\n");
    EXPECT_EQ(counter.count, 1);
}
