#include <support/NumberFormat.h>
#include <support/Schema.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <type_traits>

namespace {

std::string specOf(DataObjectField& field, DataObjectTypesTable* table = nullptr) {
    std::ostringstream os;
    field.dumpSpec(os, table);
    return os.str();
}

std::string xmlOf(DataObjectField& field) {
    std::ostringstream os;
    field.dumpXML(os);
    return os.str();
}

/// "string:x[1]=0" of what a statement declares.
std::string declared(const std::string& statement) {
    DataObjectField field;
    if (!field.parse(Text(statement)))
        return "failed";
    return std::string(field.getType()) + ':' + field.getName() + '[' + std::to_string(field.getSize()) +
           "]=" + field.getDefaultValue();
}

} // namespace

static_assert(std::has_virtual_destructor_v<DataObjectField>);

TEST(DataObjectField, StartsUnknown) {
    DataObjectField field;
    EXPECT_STREQ(field.getType(), "Unknown");
    EXPECT_STREQ(field.getName(), "No name");
    EXPECT_STREQ(field.getDefaultValue(), "");
    EXPECT_EQ(field.getSize(), 1);
}

TEST(DataObjectField, KeepsWhatIsSet) {
    DataObjectField field;
    field.setType(Text("Point"));
    field.setName(Text("pos"));
    field.setDefaultValue(Text("{0,0}"));
    field.setSize(-3);
    EXPECT_STREQ(field.getType(), "Point");
    EXPECT_STREQ(field.getName(), "pos");
    EXPECT_STREQ(field.getDefaultValue(), "{0,0}");
    EXPECT_EQ(field.getSize(), -3);
}

TEST(DataObjectField, NullReadsAsTheEmptyText) {
    DataObjectField field;
    field.setType(nullptr);
    field.setName(nullptr);
    field.setDefaultValue(nullptr);
    EXPECT_STREQ(field.getType(), "");
    EXPECT_STREQ(field.getName(), "");
    EXPECT_STREQ(field.getDefaultValue(), "");
    EXPECT_FALSE(field.parse(nullptr));
}

TEST(DataObjectField, CopiesAllMembers) {
    DataObjectField field;
    ASSERT_TRUE(field.parse(Text("string tags[4]=none")));
    DataObjectField copy(field);
    DataObjectField assigned;
    assigned = field;
    DataObjectField& itself = assigned;
    assigned = itself;
    for (DataObjectField* other : {&copy, &assigned}) {
        EXPECT_STREQ(other->getType(), "string");
        EXPECT_STREQ(other->getName(), "tags");
        EXPECT_STREQ(other->getDefaultValue(), "none");
        EXPECT_EQ(other->getSize(), 4);
        EXPECT_NE(other->getName(), field.getName());
    }
}

TEST(DataObjectField, StringIsKnownWithoutAnyTable) {
    EXPECT_EQ(declared("string x"), "string:x[1]=");
}

TEST(DataObjectField, ParsesTypeNameSizeAndDefault) {
    const Schema schema("Point = {};");
    EXPECT_EQ(declared("string title"), "string:title[1]=");
    EXPECT_EQ(declared("string title=x"), "string:title[1]=x");
    EXPECT_EQ(declared("string tags[4]"), "string:tags[4]=");
    EXPECT_EQ(declared("string a[3]=x"), "string:a[3]=x");
    EXPECT_EQ(declared("Point pos"), "Point:pos[1]=");
    EXPECT_EQ(declared("Point pos[2]={1,2}"), "Point:pos[2]={1,2}");
}

TEST(DataObjectField, BlanksInFrontOfTypeAndNameAreSkipped) {
    EXPECT_EQ(declared(" \t\r\nstring \t\r\n title=x"), "string:title[1]=x");
}

TEST(DataObjectField, BlanksBehindTheNameBelongToIt) {
    EXPECT_EQ(declared("string title = x"), "string:title [1]=x");
    EXPECT_EQ(declared("string title \t\r\n"), "string:title \t\r\n[1]=");
    EXPECT_EQ(declared("string two words"), "string:two words[1]=");
    EXPECT_EQ(declared("string tags [4]"), "string:tags [4]=");
}

TEST(DataObjectField, ANameMayBeEmpty) {
    EXPECT_EQ(declared("string"), "string:[1]=");
    EXPECT_EQ(declared("string "), "string:[1]=");
    EXPECT_EQ(declared("string =x"), "string:[1]=x");
    EXPECT_EQ(declared("string [2]"), "string:[2]=");
}

TEST(DataObjectField, TheSizeIsReadAsFarAsItIsANumber) {
    EXPECT_EQ(declared("string a[0]"), "string:a[0]=");
    EXPECT_EQ(declared("string a[]"), "string:a[0]=");
    EXPECT_EQ(declared("string a[x]"), "string:a[0]=");
    EXPECT_EQ(declared("string a[-2]"), "string:a[-2]=");
    EXPECT_EQ(declared("string a[+2]"), "string:a[2]=");
    EXPECT_EQ(declared("string a[ \t\n7 ]"), "string:a[7]=");
    EXPECT_EQ(declared("string a[4th]"), "string:a[4]=");
    EXPECT_EQ(declared("string a[2.9]"), "string:a[2]=");
    EXPECT_EQ(declared("string a[- 2]"), "string:a[0]=");
    EXPECT_EQ(declared("string a[5"), "string:a[5]=");
    EXPECT_EQ(declared("string a[2][3]"), "string:a[2]=");
    EXPECT_EQ(declared("string a[2]b"), "string:a[2]=");
    EXPECT_EQ(declared("string a]3["), "string:a]3[0]=");
    EXPECT_EQ(declared("string a[=3]"), "string:a[0]=3]");
}

TEST(DataObjectField, SizesBeyondIntStayAtItsEnds) {
    EXPECT_EQ(declared("string a[99999999999999999999]"), "string:a[2147483647]=");
    EXPECT_EQ(declared("string a[-99999999999999999999]"), "string:a[-2147483648]=");
}

TEST(DataObjectField, TheDefaultLosesLeadingBlanksOnly) {
    EXPECT_EQ(declared("string x= \t\r\n a b \t\n"), "string:x[1]=a b \t\n");
    EXPECT_EQ(declared("string x="), "string:x[1]=");
    EXPECT_EQ(declared("string x=a=b"), "string:x[1]=a=b");
    EXPECT_EQ(declared("string x=a[3]"), "string:x[1]=a[3]");
}

TEST(DataObjectField, AStatementWithoutDefaultKeepsTheOldOne) {
    DataObjectField field;
    ASSERT_TRUE(field.parse(Text("string x[5]=old")));
    ASSERT_TRUE(field.parse(Text("string y")));
    EXPECT_STREQ(field.getName(), "y");
    EXPECT_STREQ(field.getDefaultValue(), "old");
    EXPECT_EQ(field.getSize(), 1);
}

TEST(DataObjectField, ParsesTextsOfItsOwn) {
    DataObjectField field;
    field.setType(Text("string b[2]=2"));
    EXPECT_TRUE(field.parse(field.getType()));
    EXPECT_STREQ(field.getType(), "string");
    EXPECT_STREQ(field.getName(), "b");
    EXPECT_EQ(field.getSize(), 2);
    EXPECT_STREQ(field.getDefaultValue(), "2");
    field.setName(Text("string c[3]=3"));
    EXPECT_TRUE(field.parse(field.getName()));
    EXPECT_STREQ(field.getName(), "c");
    EXPECT_EQ(field.getSize(), 3);
    EXPECT_STREQ(field.getDefaultValue(), "3");
    field.setDefaultValue(Text("string d[4]=4"));
    EXPECT_TRUE(field.parse(field.getDefaultValue()));
    EXPECT_STREQ(field.getName(), "d");
    EXPECT_EQ(field.getSize(), 4);
    EXPECT_STREQ(field.getDefaultValue(), "4");
}

TEST(DataObjectField, AnUnknownTypeIsToldAndChangesNothing) {
    Console console;
    DataObjectField field;
    ASSERT_TRUE(field.parse(Text("string x[5]=old")));
    EXPECT_FALSE(field.parse(Text("number n[2] = 3")));
    EXPECT_EQ(console.takeOutput(), "\nThe line below will be ignored. Probably the variable type is not defined. \n"
                                    "line : \"number n[2] = 3;\"\n");
    EXPECT_EQ(console.takeMessages(), "");
    EXPECT_STREQ(field.getType(), "string");
    EXPECT_STREQ(field.getName(), "x");
    EXPECT_STREQ(field.getDefaultValue(), "old");
    EXPECT_EQ(field.getSize(), 5);
}

TEST(DataObjectField, EveryStatementWithoutAKnownTypeIsToldAsItStands) {
    Console console;
    for (const char* statement : {" ", "\n", "=", "=x", "[3]", "String x", "STRING x", "strings x", "string[3] x",
                                  "string\vx", "\xFF\xFE x", " \n# note\n string x"}) {
        EXPECT_EQ(declared(statement), "failed");
        EXPECT_EQ(console.takeOutput(), ignoredLine(statement));
    }
}

TEST(DataObjectField, AnEmptyStatementFailsSilently) {
    Console console;
    EXPECT_EQ(declared(""), "failed");
    EXPECT_EQ(console.takeOutput(), "");
}

TEST(DataObjectField, ATypeIsKnownOnceItIsListed) {
    Schema schema;
    EXPECT_EQ(declared("Point pos"), "failed");
    auto* type = new DataObjectType;
    type->setName(Text("Point"));
    EXPECT_EQ(declared("Point pos"), "failed");
    schema.table.addType(type);
    EXPECT_EQ(declared("Point pos"), "Point:pos[1]=");
}

TEST(DataObjectField, SpecShowsTextFieldsAsValues) {
    DataObjectField field;
    field.parse(Text("string x=0"));
    EXPECT_EQ(specOf(field), "Value x;\n");
    field.setSize(2);
    EXPECT_EQ(specOf(field), "Array<Value> x[2];\n");
    for (const int size : {1, 0, -1}) {
        field.setSize(size);
        EXPECT_EQ(specOf(field), "Value x;\n");
    }
}

TEST(DataObjectField, SpecShowsTheFieldsOfATypeWhenTheTableHasIt) {
    Schema schema("Point = {string x=0; string y=0;};");
    DataObjectField field;
    field.parse(Text("Point pos"));
    EXPECT_EQ(specOf(field), "Point pos{\n};\n");
    EXPECT_EQ(specOf(field, &schema.table), "Point pos{\n\tValue x;\n\tValue y;\n};\n");
    field.setSize(3);
    EXPECT_EQ(specOf(field, &schema.table), "Array<Point> pos[3]{\n\tValue x;\n\tValue y;\n};\n");
    field.setType(Text("Line"));
    EXPECT_EQ(specOf(field, &schema.table), "Array<Line> pos[3]{\n};\n");
}

TEST(DataObjectField, SpecWritesTheSizeInPlainDigits) {
    DataObjectField field;
    field.parse(Text("string x[12345]"));
    EXPECT_EQ(writtenWithOtherNumbers([&](std::ostream& os) { field.dumpSpec(os, nullptr); }),
              "Array<Value> x[12345];\n");
}

TEST(DataObjectField, SpecShowsASizeOfTwoOrMoreOnly) {
    DataObjectField field;
    field.parse(Text("string x"));
    field.setSize(2147483647);
    EXPECT_EQ(specOf(field), "Array<Value> x[2147483647];\n");
    field.setSize(-2147483647 - 1);
    EXPECT_EQ(specOf(field), "Value x;\n");
}

TEST(DataObjectField, SpecLeavesATabAsTheFillCharacter) {
    DataObjectField field;
    std::ostringstream os;
    field.dumpSpec(os, nullptr);
    EXPECT_EQ(os.str(), "Unknown No name{\n};\n");
    EXPECT_EQ(os.fill(), '\t');
}

TEST(DataObjectField, XmlHasTypeAndName) {
    DataObjectField field;
    field.parse(Text("string tags[4]=none"));
    EXPECT_EQ(xmlOf(field), "<string>tags</string>\n");
}

TEST(DataObjectField, RenderingsStandAtTheLevelThatATypeHasSet) {
    Console console;
    DataObjectField field;
    field.parse(Text("string x"));
    DataObjectType type;
    std::ostringstream none;
    type.dumpSpec(none, nullptr, 2);
    EXPECT_EQ(specOf(field), "\t\tValue x;\n");
    EXPECT_EQ(xmlOf(field), "\t\t<string>x</string>\n");
}
