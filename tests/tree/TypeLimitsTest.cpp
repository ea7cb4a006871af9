#include <support/DeclaredTypes.h>
#include <support/Shape.h>
#include <support/TreeCleanup.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// Types and paths that would make more than a host can hold.

namespace {

Tree<DataObject> limitedObject(const std::string& typeName) {
    return Tree<DataObject>(DataObject::createObject(Text(typeName), Text("o")));
}

/// Everything below a field, the field included.
int countOf(DataField& field) {
    int count = 1;
    if (field.isOfType(DataArray::getClassType()) != 0) {
        auto& array = static_cast<DataArray&>(field);
        for (int index = 0; index < array.getSize(); ++index)
            count += countOf(*array.getObject(index));
    } else if (field.isOfType(DataStructure::getClassType()) != 0) {
        std::vector<DataField*> children;
        static_cast<DataStructure&>(field).getFieldsVector(&children);
        for (DataField* child : children)
            count += countOf(*child);
    }
    return count;
}

/// T0 has a text, every further type two fields of the one before.
std::string doublingTypes(int levels) {
    std::string text = "T0 = {string x;};";
    for (int level = 1; level <= levels; ++level) {
        const std::string before = 'T' + std::to_string(level - 1);
        text += 'T' + std::to_string(level) + " = {" + before + " a; " + before + " b;};";
    }
    return text;
}

} // namespace

TEST(TypeLimits, KeepCountsBeyondWhatMemoryHoldsOut) {
    DeclaredTypes types("Point = {string x;}; T = {string s[2000000000]; Point p[2000000000]; string t[99999999999]=a;"
                        "Point q[-2000000000];};");
    EXPECT_EQ(shapeOf(*limitedObject("T")), "o{p[],q[],s?,t=a}");
}

TEST(TypeLimits, TheLowestCountIsNoCount) {
    DeclaredTypes types("Point = {string x;}; T = {string s[-2147483648]=a; Point p[-2147483648]=b;};");
    EXPECT_EQ(shapeOf(*limitedObject("T")), "o{p[],s=a}");
}

TEST(TypeLimits, KeepSizesOfPathsBeyondWhatMemoryHoldsOut) {
    DeclaredTypes types("Point = {string x;};");
    DataStructure root(Text("root"));
    const SubtreeCleanup belowRoot{root};
    EXPECT_NE(root.getField(Text("Point[2000000000]:p"), 0, 0), nullptr);
    EXPECT_NE(root.getField(Text("Point[99999999999999]:q"), 0, 0), nullptr);
    EXPECT_EQ(shapeOf(root), "root{p[],q[]}");
}

TEST(TypeLimits, ATypeInsideItselfHasNoField) {
    DeclaredTypes types("A = {string x=0;}; A = {A self; A several[3];};");
    EXPECT_EQ(shapeOf(*limitedObject("A")), "o{x=0}");
    const Tree<DataArray> array(DataObject::createArray(Text("A"), Text("a"), 2));
    EXPECT_EQ(shapeOf(*array), "a[A-#0{x=0},A-#1{x=0}]");
}

TEST(TypeLimits, TypesThatContainEachOtherEndAtTheFirstRepetition) {
    DeclaredTypes types("A = {string x=0;}; B = {A a;}; A = {B b;};");
    EXPECT_EQ(shapeOf(*limitedObject("A")), "o{b{},x=0}");
    EXPECT_EQ(shapeOf(*limitedObject("B")), "o{a{x=0}}");
    types.declare("A = {B bs[2];};");
    EXPECT_EQ(shapeOf(*limitedObject("A")), "o{b{},bs[B-#0{},B-#1{}],x=0}");
}

TEST(TypeLimits, ATypeMayStandBesideItself) {
    DeclaredTypes types("P = {string x=0;}; L = {P p; P q;}; M = {L l; P p; L m;};");
    EXPECT_EQ(shapeOf(*limitedObject("M")), "o{l{p{x=0},q{x=0}},m{p{x=0},q{x=0}},p{x=0}}");
}

TEST(TypeLimits, TypesNestAHundredDeep) {
    std::string text = "T0 = {string x;};";
    for (int level = 1; level <= 1'000; ++level)
        text += 'T' + std::to_string(level) + " = {T" + std::to_string(level - 1) + " in;};";
    DeclaredTypes types(text);
    const auto depth = [](const Tree<DataObject>& outermost) {
        int levels = 0;
        for (DataField* field = outermost.get(); field;
             field = static_cast<DataObject*>(field)->getField(Text("in"), 0, 0))
            ++levels;
        return levels;
    };
    EXPECT_EQ(depth(limitedObject("T1000")), 100);
    EXPECT_EQ(depth(limitedObject("T100")), 100);
    EXPECT_EQ(depth(limitedObject("T99")), 100);
    EXPECT_EQ(depth(limitedObject("T98")), 99);
    EXPECT_NE(limitedObject("T98")->getField(Text("in"), 0, 0), nullptr);
}

TEST(TypeLimits, AnArrayIsNoLevel) {
    std::string text = "T0 = {string x;};";
    for (int level = 1; level <= 200; ++level)
        text += 'T' + std::to_string(level) + " = {T" + std::to_string(level - 1) + " in;};";
    DeclaredTypes types(text + "Top = {T200 list[2];};");
    const auto depth = [](DataField* field) {
        int levels = 0;
        for (; field; field = static_cast<DataObject*>(field)->getField(Text("in"), 0, 0))
            ++levels;
        return levels;
    };
    const Tree<DataArray> array(DataObject::createArray(Text("T200"), Text("a"), 2));
    EXPECT_EQ(depth(array->getObject(1)), 100);
    const auto top = limitedObject("Top");
    EXPECT_EQ(depth(static_cast<DataArray*>(top->getField(Text("list"), 0, 0))->getObject(1)), 99);
}

TEST(TypeLimits, ArraysOfArraysEndToo) {
    std::string text = "T0 = {string x;};";
    for (int level = 1; level <= 1'000; ++level)
        text += 'T' + std::to_string(level) + " = {T" + std::to_string(level - 1) + " in[2];};";
    DeclaredTypes types(text);
    EXPECT_EQ(countOf(*limitedObject("T3")), 30);
    EXPECT_EQ(countOf(*limitedObject("T1000")), 1 + 262'144);
}

// Forty such levels stand for a million million fields.
TEST(TypeLimits, TypesThatDoubleEndAtAQuarterMillionFields) {
    DeclaredTypes types(doublingTypes(40));
    EXPECT_EQ(countOf(*limitedObject("T10")), 3'071);
    // Field b is beyond the limit, yet declared by the object's own type.
    EXPECT_EQ(countOf(*limitedObject("T40")), 1 + 262'144 + 1);
}

TEST(TypeLimits, ElementsCountAsFields) {
    DeclaredTypes types("Point = {string x;}; T = {Point p[16000000]; string s;};");
    const auto o = limitedObject("T");
    // The array, then each element with its field.
    EXPECT_EQ(static_cast<DataArray*>(o->getField(Text("p"), 0, 0))->getSize(), 131'072);
    // Beyond the limit, yet declared by the object's own type.
    EXPECT_NE(o->getField(Text("s"), 0, 0), nullptr);
    EXPECT_EQ(countOf(*o), 1 + 262'144 + 1);
}

TEST(TypeLimits, EveryObjectHasItsOwn) {
    DeclaredTypes types("Point = {string x;}; T = {Point p[200000];};");
    DataStructure root(Text("root"));
    const SubtreeCleanup belowRoot{root};
    root.getField(Text("T:a"), 0, 0);
    root.getField(Text("T:b"), 0, 0);
    EXPECT_EQ(countOf(root), 1 + 2 * (1 + 262'144));
}

TEST(TypeLimits, ADefaultMayNotMultiplyEither) {
    DeclaredTypes types("Point = {string x;}; T = {Point p;};");
    types.field("T", "p")->setDefaultValue(Text("{T:inner={};Point[3]:points={};Point[16000000]:many={}}"));
    const auto o = limitedObject("T");
    EXPECT_EQ(shapeOf(*static_cast<DataObject*>(o->getField(Text("p/inner"), 0, 0))), "inner{}");
    EXPECT_LE(countOf(*o), 1 + 262'144 + 8);
}
