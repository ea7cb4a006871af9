#include <support/DeclaredTypes.h>
#include <support/RecordingHandler.h>
#include <support/Shape.h>
#include <support/TreeCleanup.h>

#include <gtest/gtest.h>

#include <string>

/// Paths that name an object type create fields of it, or retype those that are there.

namespace {

class TypedPaths : public testing::Test {
protected:
    DataField* at(const std::string& path, int flag = 0) { return root.getField(Text(path), 0, flag); }

    DeclaredTypes types{"Point = {string x=0; string y=0;}; Label = {string text=Hi; Point pos;};"};
    DataStructure root{Text("root")};
    const SubtreeCleanup belowRoot{root};
    Diary diary;
};

} // namespace

TEST_F(TypedPaths, CreateObjects) {
    DataField* p = at("Point:p");
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(shapeOf(root), "root{p{x=0,y=0}}");
    EXPECT_STREQ(static_cast<DataObject*>(p)->getObjectTypeName(), "Point");
    EXPECT_EQ(p->getParent(), &root);
    EXPECT_EQ(p->getParentInstance(), -1);
    EXPECT_EQ(p->getRef(), 1);
    EXPECT_EQ(p->getRefCalls(), 1);
    EXPECT_EQ(p->getNumHandlers(), 1);
    EXPECT_NE(p->getHandlerByName(Text("DUMMY")), nullptr);
    EXPECT_EQ(at("p/x")->getNumHandlers(), 0);
}

TEST_F(TypedPaths, CreateObjectsAndDescend) {
    EXPECT_EQ(*at("Label:l/pos/y")->getData(0), "0");
    EXPECT_EQ(shapeOf(root), "root{l{pos{x=0,y=0},text=Hi}}");
    EXPECT_EQ(at("Label:m/missing"), nullptr);
    EXPECT_NE(at("m"), nullptr);
    DataField* z = at("node:n/Point:p/string:z");
    EXPECT_EQ(z, at("n/p/z"));
    EXPECT_EQ(shapeOf(*at("n")), "n{p{x=0,y=0,z?}}");
}

TEST_F(TypedPaths, CreateArrays) {
    DataField* p = at("Point[2]:p");
    ASSERT_NE(p, nullptr);
    EXPECT_EQ(shapeOf(root), "root{p[Point-#0{x=0,y=0},Point-#1{x=0,y=0}]}");
    EXPECT_EQ(p->getParentInstance(), -1);
    // The array's own anonymous one and the parent's.
    EXPECT_EQ(p->getRef(), 2);
    EXPECT_EQ(p->getRefCalls(), 2);
    DataField* y = at("Point[3]:q[2]/y");
    EXPECT_NE(y, nullptr);
    EXPECT_EQ(y, at("q[2]/y"));
    EXPECT_EQ(at("Point[3]:r[3]/y"), nullptr);
    EXPECT_NE(at("r"), nullptr);
}

TEST_F(TypedPaths, ReadTheSizeUpToItsDigits) {
    const auto size = [&](const std::string& kind) {
        DataField* array = at(kind + ":p" + kind.substr(5));
        root.removeField(Text("p"), 0);
        const Tree<DataNode> owner(static_cast<DataNode*>(array));
        return array->getSize();
    };
    for (const auto& [kind, expected] : {std::pair("Point[4]", 4),
                                         {"Point[4", 4},
                                         {"Point[ 2]", 2},
                                         {"Point[+2]", 2},
                                         {"Point[1]", 1},
                                         {"Point[0]", 0},
                                         {"Point[]", 0},
                                         {"Point[", 0},
                                         {"Point[x]", 0},
                                         {"Point[-3]", 0},
                                         {"Point[2-5]", 2},
                                         {"Point[2][3]", 2}})
        EXPECT_EQ(size(kind), expected) << kind;
}

TEST_F(TypedPaths, OfUnknownTypesCreateNothing) {
    for (const char* path :
         {"Missing:p", "Missing[3]:p", "point:p", "Point :p", ":p", "[3]:p", "String:p", "Missing:p/x"})
        EXPECT_EQ(at(path), nullptr) << path;
    EXPECT_EQ(shapeOf(root), "root{}");
}

TEST_F(TypedPaths, RetypeAnObject) {
    DataField* p = at("Point:p");
    RecordingHandler handler(diary, "H");
    p->registerHandler(&handler);
    diary.take();
    EXPECT_EQ(at("Label:p"), p);
    EXPECT_EQ(diary.take(), "H type Label, H type Label");
    EXPECT_EQ(shapeOf(root), "root{p{pos{x=0,y=0},text=Hi}}");
    EXPECT_EQ(p->getRef(), 1);
    EXPECT_EQ(p->getRefCalls(), 2);
    EXPECT_EQ(p->getNumHandlers(), 2);
}

TEST_F(TypedPaths, KeepAnObjectOfTheSameType) {
    at("Point:p/x")->setData("5");
    DataField* x = at("p/x");
    EXPECT_EQ(at("Point:p/x"), x);
    EXPECT_EQ(shapeOf(root), "root{p{x=5,y=0}}");
    EXPECT_EQ(at("p")->getRefCalls(), 2);
}

TEST_F(TypedPaths, OfOtherKindsKeepAnObject) {
    DataField* p = at("Point:p");
    for (const char* path : {"string:p", "node:p", "Missing:p", "Label[3]:p"})
        EXPECT_EQ(at(path), p) << path;
    EXPECT_EQ(shapeOf(root), "root{p{x=0,y=0}}");
    EXPECT_EQ(p->getRefCalls(), 5);
}

TEST_F(TypedPaths, RetypeTheElementsOfAnArray) {
    DataField* p = at("Point[2]:p");
    EXPECT_EQ(at("Label:p"), p);
    EXPECT_EQ(shapeOf(root), "root{p[Point-#0{pos{x=0,y=0},text=Hi},Point-#1{pos{x=0,y=0},text=Hi}]}");
    EXPECT_STREQ(static_cast<DataArray*>(p)->getObjectTypeName(), "Point");
}

TEST_F(TypedPaths, WithASizeKeepAnArray) {
    DataField* p = at("Point[2]:p");
    EXPECT_EQ(at("Point[5]:p"), p);
    EXPECT_EQ(at("Label[5]:p"), p);
    EXPECT_EQ(shapeOf(root), "root{p[Point-#0{x=0,y=0},Point-#1{x=0,y=0}]}");
}

TEST_F(TypedPaths, KeepValuesAndStructures) {
    DataField* v = at("string:v");
    DataField* n = at("node:n");
    EXPECT_EQ(at("Point:v"), v);
    EXPECT_EQ(at("Point:n"), n);
    EXPECT_EQ(shapeOf(root), "root{n{},v?}");
}

TEST_F(TypedPaths, TypeAnUntypedObject) {
    root.addField(new DataObject(Text("o")), 4);
    EXPECT_EQ(at("Point:o")->getParentInstance(), -1);
    EXPECT_EQ(shapeOf(root), "root{o{x=0,y=0}}");
}

TEST_F(TypedPaths, CreateTablesOfUntypedEntries) {
    DataField* table = at("DataHashTable:cities:Point");
    ASSERT_NE(table, nullptr);
    EXPECT_STREQ(table->getTypeName(), "DataHashTable");
    EXPECT_STREQ(table->getName(), "cities");
    EXPECT_EQ(table->getNumHandlers(), 1);
    auto* cities = static_cast<DataHashTable*>(table);
    EXPECT_EQ(cities->getObjectType(), nullptr);
    EXPECT_EQ(shapeOf(*cities->newObject(Text("Oslo"))), "Item-#0{}");
    EXPECT_EQ(at("DataHashTable:cities:Point"), table);
    EXPECT_EQ(at("cities[Oslo]", 1), cities->getObject(Text("Oslo")));
    EXPECT_EQ(at("Point:cities"), table);
    EXPECT_EQ(shapeOf(*cities), "cities[Item-#0{x=0,y=0}]");
    EXPECT_EQ(*at("cities[ Oslo ]/x")->getData(0), "0");
}

TEST_F(TypedPaths, CreateNoTableWithoutAnEntryType) {
    EXPECT_EQ(at("DataHashTable:cities"), nullptr);
    EXPECT_EQ(shapeOf(root), "root{}");
}

TEST_F(TypedPaths, CreateTablesForTypesThatNobodyKnows) {
    EXPECT_STREQ(at("DataHashTable:cities:Missing")->getTypeName(), "DataHashTable");
    EXPECT_STREQ(at("DataHashTable:others:")->getName(), "others");
}

TEST_F(TypedPaths, ReachAnObjectUnderTheNameItsTypeGave) {
    types["Point"]->setCreateObjectFunc([](char*) { return new DataObject(Text("made")); });
    DataField* made = at("Point:p");
    EXPECT_STREQ(made->getName(), "made");
    EXPECT_EQ(at("p"), nullptr);
    EXPECT_EQ(at("made"), made);
    EXPECT_EQ(shapeOf(root), "root{made{}}");
}

TEST_F(TypedPaths, InCommandsCreateAndSet) {
    root.parseCommand(Text("Point:p/x = 5; Point[2]:q = {{y=1},{y=2}}; Label:l = {text=a;pos={x=3}}"), 0);
    EXPECT_EQ(shapeOf(root), "root{l{pos{x=3,y=0},text=a},p{x=5,y=0},q[Point-#0{x=0,y=1},Point-#1{x=0,y=2}]}");
}

TEST(TypedPathsAlone, ReadTheTypesWhenTheyNeedThem) {
    clearTypeVariables();
    DataStructure root(Text("root"));
    const SubtreeCleanup belowRoot{root};
    EXPECT_NE(root.getField(Text("string:a/node:b"), 0, 0), nullptr);
    EXPECT_EQ(DataObject::getTypesTable(), nullptr);
    EXPECT_EQ(root.getField(Text("Point:p"), 0, 0), nullptr);
    EXPECT_NE(DataObject::getTypesTable(), nullptr);
}
