#include <support/DeclaredTypes.h>
#include <support/RecordingHandler.h>
#include <support/Shape.h>
#include <support/TreeCleanup.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

/// Objects of a type: what they are made of, and how they change their type.

namespace {

constexpr char pointText[] = "Point = {string x=0; string y=0;};";

Tree<DataObject> object(const char* typeName) {
    return Tree<DataObject>(DataObject::createObject(Text(typeName), Text("o")));
}

std::string shapeOfNew(const char* typeName) {
    return shapeOf(*object(typeName));
}

DataField* childOf(const Tree<DataObject>& parent, const char* name) {
    return parent->getField(Text(name), 0, 0);
}

/// How many referrers a field has, and how often it was referred to.
std::string referencesOf(DataField* field) {
    return std::to_string(field->getRef()) + " by " + std::to_string(field->getRefCalls());
}

} // namespace

TEST(TypedObject, HasAChildForEachDeclaration) {
    DeclaredTypes types(pointText);
    const auto point = object("Point");
    EXPECT_EQ(shapeOf(*point), "o{x=0,y=0}");
    EXPECT_EQ(point->getObjectType(), types["Point"]);
    EXPECT_STREQ(point->getObjectTypeName(), "Point");
    EXPECT_STREQ(point->getTypeName(), "DataObject");
    EXPECT_STREQ(childOf(point, "x")->getTypeName(), "DataValue");
    EXPECT_EQ(childOf(point, "x")->getParent(), point.get());
    EXPECT_EQ(childOf(point, "x")->getParentInstance(), -1);
    EXPECT_EQ(childOf(point, "x")->getNumHandlers(), 0);
}

TEST(TypedObject, StartsUntyped) {
    DeclaredTypes types(pointText);
    DataObject untyped(Text("o"));
    EXPECT_EQ(untyped.getObjectType(), nullptr);
    EXPECT_EQ(untyped.getObjectTypeName(), nullptr);
    EXPECT_EQ(untyped.getNumFields(), 0);
}

TEST(TypedObject, MayHaveATypeWithoutFields) {
    DeclaredTypes types("Empty = {};");
    EXPECT_EQ(shapeOfNew("Empty"), "o{}");
    EXPECT_STREQ(object("Empty")->getObjectTypeName(), "Empty");
}

TEST(TypedObject, MakesValuesForTextsOfAnyCount) {
    DeclaredTypes types("T = {string a; string b[0]; string c[1]; string d[3]; string e[-4];};");
    const auto o = object("T");
    EXPECT_EQ(shapeOf(*o), "o{a?,b?,c?,d?,e?}");
    for (const auto& [name, size] : {std::pair("a", 1), {"b", 1}, {"c", 1}, {"d", 3}, {"e", 1}}) {
        EXPECT_EQ(childOf(o, name)->getSize(), size) << name;
        EXPECT_STREQ(childOf(o, name)->getTypeName(), "DataValue") << name;
    }
}

TEST(TypedObject, MakesAnObjectForACountOfOneOnly) {
    DeclaredTypes types(std::string(pointText) + "T = {Point a; Point b[1]; Point c[0]; Point d[3]; Point e[-2];};");
    const auto o = object("T");
    EXPECT_EQ(shapeOf(*o), "o{a{x=0,y=0},b{x=0,y=0},c[],"
                           "d[Point-#0{x=0,y=0},Point-#1{x=0,y=0},Point-#2{x=0,y=0}],e[]}");
    for (const auto& [name, className] :
         {std::pair("a", "DataObject"), {"b", "DataObject"}, {"c", "DataArray"}, {"d", "DataArray"}})
        EXPECT_STREQ(childOf(o, name)->getTypeName(), className);
    EXPECT_EQ(static_cast<DataObject*>(childOf(o, "a"))->getObjectType(), types["Point"]);
    EXPECT_EQ(static_cast<DataArray*>(childOf(o, "c"))->getObjectType(), types["Point"]);
    EXPECT_EQ(static_cast<DataArray*>(childOf(o, "d"))->getObject(2)->getObjectType(), types["Point"]);
}

TEST(TypedObject, NestsTypesInTypes) {
    DeclaredTypes types("Point = {string x=0;}; Label = {string text=Hi; Point pos;}; Page = {Label title; Label "
                        "rows[2];};");
    EXPECT_EQ(shapeOfNew("Page"), "o{rows[Label-#0{pos{x=0},text=Hi},Label-#1{pos{x=0},text=Hi}],"
                                  "title{pos{x=0},text=Hi}}");
}

TEST(TypedObject, LeavesOutFieldsOfMissingTypes) {
    DeclaredTypes types("T = {string a; string b; string c;};");
    types.field("T", "b")->setType(Text("Missing"));
    types.field("T", "b")->setDefaultValue(Text("lost"));
    EXPECT_EQ(shapeOfNew("T"), "o{a?,c?}");
}

TEST(TypedObject, MakesTheFirstOfTwoFieldsOfOneName) {
    DeclaredTypes types("Point = {string x=0;}; T = {string a=first; string a=second; Point a; Point b; string b;};");
    EXPECT_EQ(shapeOfNew("T"), "o{a=first,b{x=0}}");
}

TEST(TypedObject, TypesThatAreExtendedConcernLaterObjects) {
    DeclaredTypes types(pointText);
    const auto before = object("Point");
    types.declare("Point = {string z=1;};");
    EXPECT_EQ(shapeOf(*before), "o{x=0,y=0}");
    EXPECT_EQ(shapeOfNew("Point"), "o{x=0,y=0,z=1}");
}

TEST(TypedObject, ATypeNamedLikeTheTextTypeMakesObjectsButNoFields) {
    DeclaredTypes types("string = {string x=0;}; T = {string s=1;};");
    EXPECT_EQ(shapeOfNew("string"), "o{x=0}");
    EXPECT_EQ(shapeOfNew("T"), "o{s=1}");
}

// Names with these characters cannot be reached by path.
TEST(TypedObject, TakesNamesAsTheyStandInTypeFiles) {
    DeclaredTypes types("T = {string a/b=1; string c:d=2; string =3; string two words=4; string e =5;};");
    EXPECT_EQ(shapeOfNew("T"), "o{=3,a/b=1,c:d=2,e =5,two words=4}");
    const auto o = object("T");
    EXPECT_EQ(childOf(o, "a/b"), nullptr);
    EXPECT_EQ(childOf(o, "c:d"), nullptr);
    EXPECT_NE(childOf(o, "two words"), nullptr);
}

TEST(TypedObject, CutsLongNames) {
    const std::string name(120, 'n');
    DeclaredTypes types("T = {string " + name + "=1; string " + name + "more=2;}; " + name + " = {T items[1];};");
    EXPECT_EQ(shapeOfNew("T"), "o{" + name.substr(0, 99) + "=1}");
    const Tree<DataArray> array(DataObject::createArray(Text(name), Text("a"), 1));
    EXPECT_EQ(array->getObject(0)->getName(), name.substr(0, 99));
    EXPECT_EQ(array->getObjectTypeName(), name);
}

TEST(TypedObjectDefaults, AreStoredInValues) {
    DeclaredTypes types("T = {string a=Hello; string b=; string c=1,2; string d=\"\"1,2\"\"; string e[0]=zero;};");
    EXPECT_EQ(shapeOfNew("T"), "o{a=Hello,b?,c=1,d=1,2,e=zero}");
}

TEST(TypedObjectDefaults, AreDealtOutToSeveralValues) {
    DeclaredTypes types("T = {string a[3]=a; string b[3]=a,b; string c[3]=a,b,c,d; string d[2]=\"\"1,2\"\",3;};");
    EXPECT_EQ(shapeOfNew("T"), "o{a=a|a|a,b=a|b|b,c=a|b|c,d=1,2|3}");
}

TEST(TypedObjectDefaults, OfObjectsAreCommands) {
    DeclaredTypes types(std::string(pointText) + "T = {Point p; string s;};");
    types.field("T", "p")->setDefaultValue(Text("{x=1;y=2}"));
    EXPECT_EQ(shapeOfNew("T"), "o{p{x=1,y=2},s?}");
    types.field("T", "p")->setDefaultValue(Text("x=1;y=2"));
    EXPECT_EQ(shapeOfNew("T"), "o{p{x=0,y=0},s?}");
    types.field("T", "p")->setDefaultValue(Text("ignored {x={3};string:z=4;missing=5} ignored"));
    EXPECT_EQ(shapeOfNew("T"), "o{p{x={3},y=0,z=4},s?}");
}

// Only the last statement of the last file can hold one: its brace has no partner.
TEST(TypedObjectDefaults, OfObjectsInTypeFilesEndWithTheType) {
    DeclaredTypes types(std::string(pointText) + "T = {Point p={x=5;};");
    EXPECT_EQ(shapeOfNew("T"), "o{p{x=5,y=0}}");
}

TEST(TypedObjectDefaults, OfArraysAreDealtOutOnce) {
    DeclaredTypes types("Point = {string x=0;}; T = {Point p[3]; Point q[0];};");
    types.field("T", "p")->setDefaultValue(Text("{{x=1},{x=2}}"));
    types.field("T", "q")->setDefaultValue(Text("{{x=1},{x=2}}"));
    EXPECT_EQ(shapeOfNew("T"), "o{p[Point-#0{x=1},Point-#1{x=2},Point-#2{x=0}],q[]}");
}

TEST(TypedObjectDefaults, OfTheInnerTypeComeFirst) {
    DeclaredTypes types("Point = {string x=1; string y=1;}; Label = {Point p; string t=a;}; Page = {Label l;};");
    types.field("Label", "p")->setDefaultValue(Text("{y=2}"));
    types.field("Page", "l")->setDefaultValue(Text("{t=b;p/y=3}"));
    EXPECT_EQ(shapeOfNew("Label"), "o{p{x=1,y=2},t=a}");
    EXPECT_EQ(shapeOfNew("Page"), "o{l{p{x=1,y=3},t=b}}");
}

TEST(TypedObjectReferences, AreOneByItsOwnerCalledTwice) {
    DeclaredTypes types("Point = {string x=0;}; T = {string s; Point p; Point a[2]; Point e[0];};");
    const auto o = object("T");
    EXPECT_EQ(referencesOf(o.get()), "0 by 0");
    for (const char* name : {"s", "p", "a", "e", "p/x", "a[1]/x"})
        EXPECT_EQ(referencesOf(childOf(o, name)), "1 by 2") << name;
    EXPECT_EQ(referencesOf(static_cast<DataArray*>(childOf(o, "a"))->getObject(1)), "1 by 1");
}

TEST(TypedObjectReferences, AreAnonymousOnAnArrayOnly) {
    DeclaredTypes types(pointText);
    const Tree<DataArray> array(DataObject::createArray(Text("Point"), Text("a"), 2));
    const Tree<DataArray> empty(DataObject::createArray(Text("Point"), Text("a"), 0));
    EXPECT_EQ(referencesOf(array.get()), "1 by 1");
    EXPECT_EQ(referencesOf(empty.get()), "1 by 1");
    EXPECT_EQ(array->unref(nullptr, nullptr), 0);
    EXPECT_EQ(referencesOf(array->getObject(0)), "1 by 1");
    EXPECT_EQ(referencesOf(object("Point").get()), "0 by 0");
}

class Retyping : public testing::Test {
protected:
    Retyping() {
        o->registerHandler(&handler);
        diary.take();
    }

    DeclaredTypes types{"Point = {string x=0; string y=0;}; Label = {string text=Hi;};"};
    Diary diary;
    RecordingHandler handler{diary, "H"};
    DataObject owner{Text("owner")};
    const SubtreeCleanup belowOwner{owner};
    DataObject* o = &owner;
};

TEST_F(Retyping, ByTypeIsHeardOnce) {
    o->setObjectType(types["Point"]);
    EXPECT_EQ(diary.take(), "H type Point");
    EXPECT_EQ(handler.lastField(), o);
    EXPECT_EQ(shapeOf(*o), "owner{x=0,y=0}");
    o->setObjectType(types["Label"]);
    EXPECT_EQ(diary.take(), "H type Label");
    EXPECT_EQ(shapeOf(*o), "owner{text=Hi}");
}

TEST_F(Retyping, ByNameIsHeardTwice) {
    o->setObjectType(Text("Point"));
    EXPECT_EQ(diary.take(), "H type Point, H type Point");
    EXPECT_EQ(shapeOf(*o), "owner{x=0,y=0}");
    EXPECT_EQ(o->getObjectType(), types["Point"]);
    o->setObjectType(Text("Label"));
    EXPECT_EQ(diary.take(), "H type Label, H type Label");
    EXPECT_EQ(shapeOf(*o), "owner{text=Hi}");
}

TEST_F(Retyping, ToTheSameTypeChangesNothing) {
    o->setObjectType(types["Point"]);
    DataField* x = o->getField(Text("x"), 0, 0);
    x->setData("5");
    diary.take();
    o->setObjectType(types["Point"]);
    o->setObjectType(Text("Point"));
    EXPECT_EQ(diary.take(), "");
    EXPECT_EQ(o->getField(Text("x"), 0, 0), x);
    EXPECT_EQ(shapeOf(*o), "owner{x=5,y=0}");
}

TEST_F(Retyping, ToNoTypeEmptiesSilently) {
    o->setObjectType(types["Point"]);
    diary.take();
    o->setObjectType(static_cast<DataObjectType*>(nullptr));
    EXPECT_EQ(diary.take(), "");
    EXPECT_EQ(shapeOf(*o), "owner{}");
    EXPECT_EQ(o->getObjectType(), nullptr);
    EXPECT_EQ(o->getObjectTypeName(), nullptr);
}

TEST_F(Retyping, ToAnUnknownNameDoesNothing) {
    o->setObjectType(types["Point"]);
    diary.take();
    for (const char* name : {"Missing", "point", "Point ", "", "string"})
        o->setObjectType(Text(name));
    o->setObjectType(static_cast<char*>(nullptr));
    EXPECT_EQ(diary.take(), "");
    EXPECT_EQ(shapeOf(*o), "owner{x=0,y=0}");
}

TEST_F(Retyping, WithoutATableByNameDoesNothing) {
    DataObjectTypesTable* table = std::exchange(DataObject::s_tTypes, nullptr);
    o->setObjectType(Text("Point"));
    EXPECT_EQ(o->getObjectType(), nullptr);
    DataObject::s_tTypes = table;
    EXPECT_EQ(diary.take(), "");
}

TEST_F(Retyping, DiscardsChildrenOfAnyOrigin) {
    o->addField(new DataValue(Text("x")), 0);
    o->addField(new DataStructure(Text("more")), 0);
    o->setObjectType(types["Point"]);
    EXPECT_EQ(shapeOf(*o), "owner{x=0,y=0}");
}

TEST_F(Retyping, SparesChildrenThatAreObservedOrReferredTo) {
    o->setObjectType(types["Point"]);
    DataField* x = o->getField(Text("x"), 0, 0);
    DataField* y = o->getField(Text("y"), 0, 0);
    RecordingHandler onX(diary, "X");
    x->registerHandler(&onX);
    y->ref(this, nullptr);
    diary.take();
    o->setObjectType(types["Label"]);
    EXPECT_EQ(diary.take(), "H type Label");
    EXPECT_EQ(shapeOf(*o), "owner{text=Hi}");
    EXPECT_EQ(x->getParent(), nullptr);
    EXPECT_EQ(onX.getField(), x);
    EXPECT_EQ(y->getParent(), nullptr);
    delete x;
    delete y;
}

TEST_F(Retyping, EndsTheLinksOfDiscardedChildren) {
    o->setObjectType(types["Point"]);
    DataValue target(Text("target"));
    o->getField(Text("x"), 0, 0)->addTargetLink(&target);
    o->setObjectType(types["Label"]);
    EXPECT_EQ(target.getLinkSource(), nullptr);
}

TEST(TypeFactories, KnowNothingOfUnknownTypes) {
    DeclaredTypes types(pointText);
    EXPECT_EQ(DataObject::createObject(Text("Missing"), Text("o")), nullptr);
    EXPECT_EQ(DataObject::createObject(Text("string"), Text("o")), nullptr);
    EXPECT_EQ(DataObject::createObject(static_cast<char*>(nullptr), Text("o")), nullptr);
    EXPECT_EQ(DataObject::createObject(static_cast<DataObjectType*>(nullptr), Text("o")), nullptr);
    EXPECT_EQ(DataObject::createArray(Text("Missing"), Text("a"), 3), nullptr);
}

TEST(TypeFactories, MakeNothingBeforeTypesAreRead) {
    EXPECT_EQ(DataObject::createObject(Text("Point"), Text("o")), nullptr);
    EXPECT_EQ(DataObject::createArray(Text("Point"), Text("a"), 3), nullptr);
    EXPECT_EQ(DataObject::getTypesTable(), nullptr);
}

TEST(TypeFactories, NameWhatTheyMake) {
    DeclaredTypes types(pointText);
    EXPECT_EQ(shapeOfNew("Point"), "o{x=0,y=0}");
    const Tree<DataObject> byType(DataObject::createObject(types["Point"], Text("by type")));
    EXPECT_EQ(shapeOf(*byType), "by type{x=0,y=0}");
    const Tree<DataArray> array(DataObject::createArray(Text("Point"), Text("a"), 1));
    EXPECT_EQ(shapeOf(*array), "a[Point-#0{x=0,y=0}]");
    EXPECT_EQ(array->getObjectType(), types["Point"]);
    EXPECT_EQ(array->getParent(), nullptr);
}

TEST(TypeQueries, DoNothingWithoutATable) {
    std::vector<char*> names = {nullptr};
    char description[20] = "kept";
    std::ostringstream dump;
    EXPECT_EQ(DataObject::getTypesTable(), nullptr);
    DataObject::getTypeNames(&names);
    DataObject::getTypeFieldNames(Text("Point"), &names);
    DataObject::getTypeFieldsDescription(Text("Point"), description);
    DataObject::dumpAllTypes(dump);
    EXPECT_EQ(names.size(), 1u);
    EXPECT_STREQ(description, "kept");
    EXPECT_EQ(dump.str(), "");
    EXPECT_EQ(DataObject::getTypesTable(), nullptr);
}

TEST(TypeQueries, TellOfAllTypes) {
    DeclaredTypes types("Point = {string x=0; string y;}; Label = {string text; Point pos; string tags[4];};");
    std::vector<char*> names = {nullptr};
    DataObject::getTypeNames(&names);
    ASSERT_EQ(names.size(), 2u);
    EXPECT_STREQ(names[0], "Point");
    EXPECT_STREQ(names[1], "Label");
    DataObject::getTypeFieldNames(Text("Label"), &names);
    ASSERT_EQ(names.size(), 3u);
    EXPECT_STREQ(names[0], "text");
    EXPECT_STREQ(names[1], "pos");
    EXPECT_STREQ(names[2], "tags");
    DataObject::getTypeFieldNames(Text("Missing"), &names);
    EXPECT_TRUE(names.empty());
    DataObject::getTypeNames(nullptr);
    DataObject::getTypeFieldNames(Text("Label"), nullptr);
}

TEST(TypeQueries, DescribeTheFieldsOfAType) {
    DeclaredTypes types("Point = {string x;}; Label = {string text; Point pos; string tags[4];};");
    char description[100] = "kept";
    DataObject::getTypeFieldsDescription(Text("Missing"), description);
    EXPECT_STREQ(description, "kept");
    DataObject::getTypeFieldsDescription(Text("Label"), description);
    EXPECT_STREQ(description, "Point \t pos;\nstring \t tags[4];\nstring \t text;\n");
}

TEST(TypeQueries, DumpTheSchema) {
    DeclaredTypes types("Point = {string x;}; Label = {Point pos; string tags[4];};");
    std::ostringstream dump;
    DataObject::dumpAllTypes(dump);
    EXPECT_EQ(dump.str(), "Type Point {\n\tValue x;\n};\n"
                          "Type Label {\n\tPoint pos{\n\t\tValue x;\n\t};\n\tArray<Value> tags[4];\n};\n");
}

TEST(TypeQueries, FindTypesByTheirExactName) {
    DeclaredTypes types(pointText);
    EXPECT_EQ(DataObject::getObjectTypeByName(Text("Point")), types["Point"]);
    for (const char* name : {"point", "Point ", "", "string"})
        EXPECT_EQ(DataObject::getObjectTypeByName(Text(name)), nullptr) << name;
    EXPECT_EQ(DataObject::getObjectTypeByName(nullptr), nullptr);
}

TEST(TypeQueries, AreReadOnceOnlyByTheSearchForAName) {
    clearTypeVariables();
    EXPECT_EQ(DataObject::getObjectTypeByName(Text("Point")), nullptr);
    DataObjectTypesTable* table = DataObject::getTypesTable();
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(DataObject::getObjectTypeByName(Text("Point")), nullptr);
    EXPECT_EQ(DataObject::getTypesTable(), table);
}
