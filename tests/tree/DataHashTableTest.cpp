#include <support/SceneTree.h>

#include <gtest/gtest.h>

#include <set>

TEST(DataHashTable, StartsEmpty) {
    DataHashTable table(Text("table"));
    EXPECT_STREQ(table.getTypeName(), "DataHashTable");
    EXPECT_EQ(table.isOfType(DataArray::getClassType()), 1);
    EXPECT_EQ(table.getSize(), 0);
    EXPECT_EQ(table.getObject(Text("Oslo")), nullptr);
    for (const int index : {-1, 0, 1}) {
        EXPECT_EQ(table.getObject(index), nullptr);
        EXPECT_EQ(table.getObjectKey(index), nullptr);
    }
}

TEST(DataHashTable, GrowsByNewKeysOnly) {
    DataHashTable table(Text("table"));
    const SubtreeCleanup belowTable{table};
    table.setSize(10);
    EXPECT_EQ(table.getSize(), 0);
    DataObject* oslo = table.newObject(Text("Oslo"));
    EXPECT_EQ(table.newObject(Text("Oslo")), oslo);
    EXPECT_EQ(table.getSize(), 1);
    EXPECT_STREQ(oslo->getName(), "Item-#0");
    EXPECT_EQ(oslo->getParent(), &table);
    EXPECT_EQ(oslo->getParentInstance(), 0);
    EXPECT_STREQ(table.newObject(Text("Rome"))->getName(), "Item-#1");
    table.setSize(10);
    EXPECT_EQ(table.getSize(), 2);
}

TEST(DataHashTable, FindsKeysExactly) {
    SceneTree tree;
    EXPECT_EQ(tree.city("Oslo"), tree.cities->DataArray::getObject(0));
    EXPECT_EQ(tree.city("Rome"), tree.cities->DataArray::getObject(1));
    for (const char* key : {"oslo", " Oslo", "Oslo ", "Osl", ""})
        EXPECT_EQ(tree.city(key), nullptr) << key;
}

TEST(DataHashTable, TellsOfEveryEntryInAnOrderOfItsOwn) {
    DataHashTable table(Text("table"));
    const SubtreeCleanup belowTable{table};
    std::set<std::string> keys;
    for (int number = 0; number < 50; ++number) {
        keys.insert("key" + std::to_string(number));
        table.newObject(Text("key" + std::to_string(number)));
    }
    std::set<std::string> told;
    for (int index = 0; index < 50; ++index) {
        char* key = table.getObjectKey(index);
        EXPECT_EQ(table.getObject(index), table.getObject(key));
        told.insert(key);
    }
    EXPECT_EQ(told, keys);
    EXPECT_EQ(table.getObject(-1), table.getObject(0));
    EXPECT_STREQ(table.getObjectKey(-1), table.getObjectKey(0));
    EXPECT_EQ(table.getObject(50), nullptr);
    EXPECT_EQ(table.getObjectKey(50), nullptr);
}

TEST(DataHashTable, ParseGivesEachKeyAValue) {
    SceneTree tree;
    tree.cities->parse(Text("Rome,Oslo]"), Text("{{x=1},{x=2}}"));
    EXPECT_EQ(*tree.at("cities[Rome]/x")->getData(0), "1");
    EXPECT_EQ(*tree.at("cities[Oslo]/x")->getData(0), "2");
}

TEST(DataHashTable, ParseUsesUpTheValueOfAMissingKey) {
    SceneTree tree;
    tree.cities->parse(Text("Paris,Oslo"), Text("{{x=1},{x=2},{x=3}}"));
    EXPECT_EQ(*tree.at("cities[Oslo]/x")->getData(0), "2");
    EXPECT_EQ(tree.cities->getSize(), 2);
}

TEST(DataHashTable, ParseDoesNotTrimKeys) {
    SceneTree tree;
    tree.cities->parse(Text("Rome, Oslo"), Text("{{x=1},{x=2}}"));
    EXPECT_EQ(*tree.at("cities[Rome]/x")->getData(0), "1");
    EXPECT_EQ(tree.at("cities[Oslo]/x")->getDataInitialized(), 0);
}

TEST(DataHashTable, ParseWithoutKeysDoesNothing) {
    SceneTree tree;
    tree.cities->parse(nullptr, Text("{{x=1},{x=2}}"));
    EXPECT_EQ(tree.at("cities[Oslo]/x")->getDataInitialized(), 0);
}

TEST(DataHashTable, SelectsTrimmedKeysAndNullForMissingOnes) {
    SceneTree tree;
    std::vector<DataField*> fields;
    tree.cities->getFieldsByRange(nullptr, &fields);
    EXPECT_TRUE(fields.empty());
    tree.cities->getFieldsByRange(Text(" Rome ,Paris,\tOslo \t]"), &fields);
    EXPECT_EQ(fields, (std::vector<DataField*>{tree.city("Rome"), nullptr, tree.city("Oslo")}));
}

TEST(DataHashTable, RemovingForgetsTheKeys) {
    DataHashTable table(Text("table"));
    const SubtreeCleanup belowTable{table};
    table.newObject(Text("Oslo"));
    table.removeChildren();
    EXPECT_EQ(table.getSize(), 0);
    EXPECT_EQ(table.getObject(Text("Oslo")), nullptr);
    EXPECT_EQ(table.getObject(0), nullptr);
    EXPECT_STREQ(table.newObject(Text("Oslo"))->getName(), "Item-#0");
}

namespace {

/// Answers for every key with one entry, as tables of plug-ins that load on demand do.
class OnDemandTable : public DataHashTable {
public:
    OnDemandTable() : DataHashTable(Text("table")) {}

    DataObject* getObject(int /*index*/) override { return &entry; }
    DataObject* getObject(char* /*key*/) override { return &entry; }

    DataObject entry{Text("entry")};
    const SubtreeCleanup belowEntry{entry};
};

} // namespace

TEST(DataHashTable, PathsAskOverriddenLookups) {
    DataStructure root(Text("root"));
    const SubtreeCleanup belowRoot{root};
    auto* table = new OnDemandTable;
    root.addField(table, 0);
    auto* x = new DataValue(Text("x"));
    table->entry.addField(x, 0);
    EXPECT_EQ(root.getField(Text("table[any]/x"), 0, 0), x);
    EXPECT_EQ(root.getField(Text("table[any]"), 0, 1), &table->entry);
}
