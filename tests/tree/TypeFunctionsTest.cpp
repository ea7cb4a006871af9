#include <support/DeclaredTypes.h>
#include <support/RecordingHandler.h>
#include <support/Shape.h>
#include <support/TreeCleanup.h>

#include <gtest/gtest.h>

#include <string>

/// Plug-ins make the objects and arrays of a type themselves by functions that they install.

namespace {

std::string askedFor;
Diary diary;

DataObject* makeUntyped(char* typeName) {
    askedFor += (askedFor.empty() ? "" : " ") + std::string(typeName);
    return new DataObject(Text("made"));
}

DataObject* makeWithOthers(char* /*typeName*/) {
    auto* object = new DataObject(Text("made"));
    object->addField(new DataValue(Text("x")), 0);
    object->addField(new DataValue(Text("extra")), 0);
    return object;
}

DataObject* makeTyped(char* typeName) {
    auto* object = new DataObject(Text("made"));
    object->setObjectType(typeName);
    return object;
}

RecordingHandler& observer() {
    static RecordingHandler handler(diary, "H");
    return handler;
}

DataObject* makeObserved(char* /*typeName*/) {
    auto* object = new DataObject(Text("made"));
    object->registerHandler(&observer());
    diary.take();
    return object;
}

DataObject* makeObservedAndTyped(char* typeName) {
    DataObject* object = makeTyped(typeName);
    object->registerHandler(&observer());
    diary.take();
    return object;
}

DataObject* theOnlyOne = nullptr;

DataObject* makeOnlyOne(char* /*typeName*/) {
    if (!theOnlyOne)
        theOnlyOne = new DataObject(Text("made"));
    return theOnlyOne;
}

DataObject* makeNone(char* /*typeName*/) {
    return nullptr;
}

DataArray* makeArray(char* typeName) {
    askedFor += (askedFor.empty() ? "" : " ") + std::string(typeName) + "[]";
    return new DataArray(Text("made"));
}

DataArray* makeFilledArray(char* /*typeName*/) {
    auto* array = new DataArray(Text("made"));
    array->setSize(2);
    return array;
}

DataArray* makeObservedArray(char* /*typeName*/) {
    auto* array = new DataArray(Text("made"));
    array->registerHandler(&observer());
    diary.take();
    return array;
}

DataArray* makeNoArray(char* /*typeName*/) {
    return nullptr;
}

/// Answers setData, which plain objects leave empty.
class Hooked : public DataObject {
public:
    using DataObject::DataObject;
    using DataObject::setData;

    void setData(char* value, int index) override { note(std::string(value) + '@' + std::to_string(index)); }
    void setData(std::string* value, int index) override { note('"' + *value + "\"@" + std::to_string(index)); }

    std::string heard;

private:
    void note(const std::string& what) { heard += (heard.empty() ? "" : " ") + what; }
};

DataObject* makeHooked(char* /*typeName*/) {
    return new Hooked(Text("hooked"));
}

class TypeFunctions : public testing::Test {
protected:
    Tree<DataObject> object(const char* typeName) {
        return Tree<DataObject>(DataObject::createObject(Text(typeName), Text("o")));
    }

    Tree<DataArray> array(const char* typeName, int size) {
        return Tree<DataArray>(DataObject::createArray(Text(typeName), Text("a"), size));
    }

    std::string references(DataField* field) {
        return std::to_string(field->getRef()) + " by " + std::to_string(field->getRefCalls());
    }

    DeclaredTypes types{"Point = {string x=0; string y=0;}; Label = {Point pos; string text=Hi;};"
                        "Path = {Point points[2];};"};
    DataObjectType* point = types["Point"];
};

} // namespace

TEST_F(TypeFunctions, TheirObjectIsReturnedAsItIs) {
    point->setCreateObjectFunc(makeUntyped);
    const auto made = object("Point");
    EXPECT_EQ(askedFor, "Point");
    EXPECT_EQ(shapeOf(*made), "made{}");
    EXPECT_EQ(made->getObjectType(), nullptr);
    EXPECT_EQ(references(made.get()), "0 by 0");
    point->setCreateObjectFunc(makeWithOthers);
    EXPECT_EQ(shapeOf(*object("Point")), "made{extra?,x?}");
}

TEST_F(TypeFunctions, WithoutAResultAreAsNone) {
    point->setCreateObjectFunc(makeNone);
    point->setCreateArrayFunc(makeNoArray);
    EXPECT_EQ(shapeOf(*object("Point")), "o{x=0,y=0}");
    EXPECT_EQ(shapeOf(*array("Point", 1)), "a[Point-#0{x=0,y=0}]");
    EXPECT_EQ(shapeOf(*object("Label")), "o{pos{x=0,y=0},text=Hi}");
}

TEST_F(TypeFunctions, AFieldGetsWhatItsObjectLacks) {
    point->setCreateObjectFunc(makeUntyped);
    const auto label = object("Label");
    EXPECT_EQ(shapeOf(*label), "o{made{x=0,y=0},text=Hi}");
    auto* made = static_cast<DataObject*>(label->getField(Text("made"), 0, 0));
    EXPECT_EQ(made->getObjectType(), nullptr);
    EXPECT_EQ(made->getField(Text("x"), 0, 0)->getParent(), made);
    // One by the object, one by the object around it, which has made them.
    EXPECT_EQ(references(made->getField(Text("x"), 0, 0)), "2 by 3");
    EXPECT_EQ(references(made), "1 by 2");
}

TEST_F(TypeFunctions, AFieldKeepsWhatItsObjectHas) {
    point->setCreateObjectFunc(makeWithOthers);
    EXPECT_EQ(shapeOf(*object("Label")), "o{made{extra?,x?,y=0},text=Hi}");
    point->setCreateObjectFunc(makeTyped);
    const auto label = object("Label");
    EXPECT_EQ(shapeOf(*label), "o{made{x=0,y=0},text=Hi}");
    EXPECT_EQ(references(label->getField(Text("made/x"), 0, 0)), "1 by 2");
}

TEST_F(TypeFunctions, AFieldsDefaultReachesTheirObject) {
    point->setCreateObjectFunc(makeUntyped);
    types.field("Label", "pos")->setDefaultValue(Text("{y=7}"));
    EXPECT_EQ(shapeOf(*object("Label")), "o{made{x=0,y=7},text=Hi}");
}

TEST_F(TypeFunctions, ElementsKeepTheNameAndGetTheType) {
    point->setCreateObjectFunc(makeUntyped);
    const auto points = array("Point", 2);
    EXPECT_EQ(askedFor, "Point Point");
    EXPECT_EQ(shapeOf(*points), "a[made{x=0,y=0},made{x=0,y=0}]");
    EXPECT_EQ(points->getObject(1)->getObjectType(), point);
    EXPECT_EQ(points->getObject(1)->getParentInstance(), 1);
    EXPECT_EQ(references(points->getObject(1)), "1 by 1");
}

TEST_F(TypeFunctions, ThatGiveTheSameObjectAgainGiveNone) {
    point->setCreateObjectFunc(makeOnlyOne);
    EXPECT_EQ(shapeOf(*array("Point", 3)), "a[made{x=0,y=0},Point-#1{x=0,y=0},Point-#2{x=0,y=0}]");
}

TEST_F(TypeFunctions, ElementsLoseChildrenOfTheirOwn) {
    point->setCreateObjectFunc(makeWithOthers);
    EXPECT_EQ(shapeOf(*array("Point", 1)), "a[made{x=0,y=0}]");
}

TEST_F(TypeFunctions, ElementsHearOfTheirType) {
    point->setCreateObjectFunc(makeObserved);
    const auto points = array("Point", 1);
    EXPECT_EQ(diary.take(), "H type Point");
}

TEST_F(TypeFunctions, ElementsThatHaveTheTypeHearNothing) {
    point->setCreateObjectFunc(makeObservedAndTyped);
    const auto points = array("Point", 1);
    EXPECT_EQ(diary.take(), "");
    EXPECT_EQ(shapeOf(*points), "a[made{x=0,y=0}]");
}

TEST_F(TypeFunctions, TheirArrayKeepsItsNameAndGetsTypeAndSize) {
    point->setCreateArrayFunc(makeArray);
    const auto points = array("Point", 1);
    EXPECT_EQ(askedFor, "Point[]");
    EXPECT_EQ(shapeOf(*points), "made[Point-#0{x=0,y=0}]");
    EXPECT_EQ(points->getObjectType(), point);
    EXPECT_EQ(references(points.get()), "1 by 1");
    EXPECT_EQ(shapeOf(*object("Path")), "o{made[Point-#0{x=0,y=0},Point-#1{x=0,y=0}]}");
}

TEST_F(TypeFunctions, TheirArrayMayHoldElementsAlready) {
    point->setCreateArrayFunc(makeFilledArray);
    EXPECT_EQ(shapeOf(*array("Point", 3)), "made[Item-#0{x=0,y=0},Item-#1{x=0,y=0},Point-#2{x=0,y=0}]");
    EXPECT_EQ(shapeOf(*array("Point", 1)), "made[Item-#0{x=0,y=0},Item-#1{x=0,y=0}]");
}

TEST_F(TypeFunctions, TheirArrayHearsOfItsType) {
    point->setCreateArrayFunc(makeObservedArray);
    const auto points = array("Point", 1);
    EXPECT_EQ(diary.take(), "H type Point");
}

TEST_F(TypeFunctions, TablesMakeTheirEntriesByThem) {
    point->setCreateObjectFunc(makeUntyped);
    DataHashTable table(Text("table"));
    const SubtreeCleanup belowTable{table};
    table.setObjectType(point);
    EXPECT_EQ(shapeOf(*table.newObject(Text("key"))), "made{x=0,y=0}");
}

TEST_F(TypeFunctions, SettersOfArraysReachTheHooksOfTheirObjects) {
    point->setCreateObjectFunc(makeHooked);
    const auto points = array("Point", 3);
    std::string text = "b";
    EXPECT_TRUE(points->setFieldData(Text("x"), Text("a")));
    EXPECT_TRUE(points->setFieldData(Text("x"), &text));
    EXPECT_TRUE(points->setFieldData(Text("x"), Text("c"), 0));
    EXPECT_TRUE(points->setFieldData(Text("x"), Text("d"), 2));
    EXPECT_EQ(static_cast<Hooked*>(points->getObject(0))->heard, "a@0 \"b\"@0 c@0");
    EXPECT_EQ(static_cast<Hooked*>(points->getObject(1))->heard, "");
    EXPECT_EQ(static_cast<Hooked*>(points->getObject(2))->heard, "d@2");
}

TEST_F(TypeFunctions, EntriesOfTablesAreReachedByTheirHooks) {
    point->setCreateObjectFunc(makeHooked);
    DataHashTable table(Text("table"));
    const SubtreeCleanup belowTable{table};
    table.setObjectType(point);
    auto* oslo = static_cast<Hooked*>(table.newObject(Text("Oslo")));
    table.newObject(Text("Rome"));
    table.setObjectData(Text("1"), Text("Oslo"));
    table.setObjectData(Text("2"), Text("Paris"));
    EXPECT_EQ(oslo->heard, "1@0");
}

// A type that contains itself overflowed the stack when its function left the objects empty.
TEST_F(TypeFunctions, EndWhereATypeContainsItself) {
    types.declare("Point = {Point inner;}; Box = {Point p;};");
    point->setCreateObjectFunc(makeUntyped);
    EXPECT_EQ(shapeOf(*object("Box")), "o{made{x=0,y=0}}");
    EXPECT_EQ(shapeOf(*array("Point", 1)), "a[made{x=0,y=0}]");
}
