#include <orbel/types/DataObjectField.h>
#include <orbel/types/DataObjectType.h>
#include <orbel/types/DataObjectTypesTable.h>
#include <orbel/types/TypesState.h>

#include <support/Console.h>
#include <support/Text.h>

#include <gtest/gtest.h>

TEST(TypesState, KnowsStringFromTheStart) {
    EXPECT_EQ(typesState.knownNames, (std::set<std::string, std::less<>>{"string"}));
}

TEST(TypesState, ARetiredTableIsToldLikeADestroyedOneAndLivesOn) {
    Console console;
    for (const char* text : {"A = {string x;}; B = {};", "A = {string y;};"}) {
        auto* table = new DataObjectTypesTable;
        table->parse(Text(text));
        console.takeMessages();
        DataObjectType* type = table->getTypeByName("A");
        retireTypesTable(table);
        EXPECT_EQ(console.takeMessages(), "DataObjectTYpesTable::~DataObjectTypesTable(): deleting " +
                                              std::to_string(table->getNumTypes()) + " types.\n");
        EXPECT_EQ(table->getTypeByName("A"), type);
        EXPECT_STREQ(type->getName(), "A");
    }
}

TEST(TypesState, NoTableCannotBeRetired) {
    Console console;
    retireTypesTable(nullptr);
    EXPECT_EQ(console.takeMessages(), "");
}

TEST(TypesState, KnownNamesFollowTheNewestTable) {
    auto* old = new DataObjectTypesTable;
    old->parse(Text("A = {};"));
    retireTypesTable(old);
    EXPECT_EQ(typesState.knownNames, (std::set<std::string, std::less<>>{"A", "string"}));
    const DataObjectTypesTable table;
    EXPECT_EQ(typesState.knownNames, (std::set<std::string, std::less<>>{"string"}));
}
