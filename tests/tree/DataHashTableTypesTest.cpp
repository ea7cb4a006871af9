#include <support/DeclaredTypes.h>
#include <support/Shape.h>
#include <support/TreeCleanup.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// Hash tables whose entries have a type.

namespace {

/// Entries keyed "Oslo", "Rome", " Bonn" and "".
class TypedTable : public testing::Test {
protected:
    TypedTable() {
        table.setObjectType(types["Point"]);
        for (const char* key : {"Oslo", "Rome", " Bonn", ""})
            table.newObject(Text(key));
    }

    std::string x(const char* key) { return *table.getObject(Text(key))->getField(Text("x"), 0, 0)->getData(0); }

    std::string xs() { return x("Oslo") + ' ' + x("Rome") + ' ' + x(" Bonn") + ' ' + x(""); }

    DeclaredTypes types{"Point = {string x=0; string y=0;}; Label = {string text=Hi;};"};
    DataHashTable table{Text("t")};
    const SubtreeCleanup belowTable{table};
};

} // namespace

TEST_F(TypedTable, NamesEntriesByTypeAndPosition) {
    EXPECT_EQ(shapeOf(*table.getObject(Text("Oslo"))), "Point-#0{x=0,y=0}");
    EXPECT_EQ(shapeOf(*table.getObject(Text(" Bonn"))), "Point-#2{x=0,y=0}");
    EXPECT_EQ(table.getObject(Text("Rome"))->getParentInstance(), 1);
    EXPECT_EQ(table.getObject(Text("Rome"))->getRefCalls(), 1);
    EXPECT_EQ(table.getSize(), 4);
    EXPECT_EQ(table.getNumFields(), 2);
}

TEST_F(TypedTable, ParsePairsPlainKeysWithValues) {
    table.parse(Text("Rome, Bonn,Oslo]ignored"), Text("{{x=1},{x=2},{x=3},{x=4}}"));
    EXPECT_EQ(xs(), "3 1 2 0");
    table.parse(Text(",Oslo,Rome"), Text("{{x=5},{x=6}}"));
    EXPECT_EQ(xs(), "6 1 2 5");
    table.parse(Text("Rome ,Paris,Rome"), Text("{{x=7},{x=8},{x=9}}"));
    EXPECT_EQ(xs(), "6 9 2 5");
    table.parse(Text("Oslo"), Text("x=1"));
    table.parse(Text("Oslo"), nullptr);
    EXPECT_EQ(xs(), "6 9 2 5");
    EXPECT_EQ(table.getSize(), 4);
}

TEST_F(TypedTable, SelectsByTrimmedKeysUpToTheirLastBracket) {
    table.newObject(Text("a]b"));
    const auto selected = [&](const char* keys) {
        std::vector<DataField*> fields;
        table.getFieldsByRange(Text(keys), &fields);
        std::string indices;
        for (DataField* field : fields)
            indices += field ? std::to_string(field->getParentInstance()) : "-";
        return indices;
    };
    EXPECT_EQ(selected("Oslo"), "0");
    EXPECT_EQ(selected(" \r\n\tOslo \t,Rome]"), "01");
    EXPECT_EQ(selected("Oslo]x,Rome"), "01");
    EXPECT_EQ(selected("a]b]"), "4");
    EXPECT_EQ(selected(" Bonn"), "-");
    EXPECT_EQ(selected("Oslo\n"), "-");
    EXPECT_EQ(selected("Oslo,,Paris,Rome"), "03-1");
    EXPECT_EQ(selected(""), "");
}

TEST_F(TypedTable, CopiesByPositionNotByKey) {
    DataHashTable source(Text("s"));
    const SubtreeCleanup belowSource{source};
    source.setObjectType(types["Point"]);
    source.newObject(Text("Rome"));
    source.parse(Text("Rome"), Text("{{x=r}}"));
    EXPECT_TRUE(table.copyData(&source, 0, 0, -1));
    EXPECT_EQ(xs(), "r 0 0 0");
}

TEST_F(TypedTable, IsRetypedLikeAnArray) {
    table.setObjectType(types["Label"]);
    EXPECT_EQ(shapeOf(*table.getObject(Text("Rome"))), "Point-#1{text=Hi}");
    EXPECT_EQ(shapeOf(*table.newObject(Text("new"))), "Label-#4{text=Hi}");
    table.setObjectType(Text("Point"));
    EXPECT_EQ(shapeOf(*table.getObject(Text("Rome"))), "Point-#1{x=0,y=0}");
    EXPECT_STREQ(table.getObjectTypeName(), "Label");
}

TEST_F(TypedTable, PlainSettersLeavePlainEntriesAlone) {
    table.setObjectData(Text("5"), Text("Oslo"));
    table.setObjectData(Text("5"), Text("Paris"));
    table.setObjectData(nullptr, Text("Oslo"));
    EXPECT_EQ(xs(), "0 0 0 0");
    EXPECT_EQ(table.getSize(), 4);
}
