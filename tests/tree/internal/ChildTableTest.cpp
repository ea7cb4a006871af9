#include <orbel/tree/ChildTable.h>

#include <orbel/orbel.h>

#include <support/Text.h>

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

namespace {

using Values = std::vector<std::unique_ptr<DataValue>>;

/// "field0", "field1", ... beside a table that lists them.
Values fill(ChildTable& table, int count) {
    Values values;
    for (int number = 0; number < count; ++number) {
        values.push_back(std::make_unique<DataValue>(Text("field" + std::to_string(number))));
        EXPECT_TRUE(table.insert(*values.back()));
    }
    return values;
}

/// The names under which children stand, in order: "a b c".
std::string namesOf(ChildTable& table) {
    std::string names;
    table.forEach([&](const char* name, DataField&) { names += (names.empty() ? "" : " ") + std::string(name); });
    return names;
}

std::string namesOf(ChildTable::Cursor& cursor) {
    std::string names;
    while (cursor.next())
        names += (names.empty() ? "" : " ") + std::string(cursor.name());
    return names;
}

} // namespace

TEST(ChildTable, StartsEmpty) {
    ChildTable table;
    EXPECT_EQ(table.size(), 0u);
    EXPECT_EQ(table.find(""), nullptr);
    EXPECT_FALSE(table.contains("a"));
    EXPECT_EQ(table.erase("a"), nullptr);
    EXPECT_EQ(table.takeFirst(), nullptr);
    EXPECT_EQ(table.at(0), nullptr);
    EXPECT_EQ(namesOf(table), "");
}

TEST(ChildTable, FindsAndListsFewAndMany) {
    for (const int count : {1, 6, 7, 8, 16, 17, 500}) {
        ChildTable table;
        const Values values = fill(table, count);
        EXPECT_EQ(table.size(), values.size());
        for (const auto& value : values)
            EXPECT_EQ(table.find(value->getName()), value.get());
        EXPECT_EQ(table.find("field"), nullptr);
        EXPECT_EQ(table.find("field00"), nullptr);
        for (std::size_t index = 1; index < values.size(); ++index)
            EXPECT_LT(std::string(table.at(index - 1)->getName()), table.at(index)->getName());
        EXPECT_EQ(table.at(values.size()), nullptr);
    }
}

TEST(ChildTable, ListsInByteOrder) {
    ChildTable table;
    Values values;
    for (const char* name : {"b", "a", "\xC3\xA4", "B", "aa", "a!"}) {
        values.push_back(std::make_unique<DataValue>(Text(name)));
        table.insert(*values.back());
    }
    EXPECT_EQ(namesOf(table), "B a a! aa b \xC3\xA4");
}

TEST(ChildTable, ListsInByteOrderHoweverMuchNamesHaveInCommon) {
    // The start is shared by all, then by some, and what differs lies inside, at and behind eight characters from
    // there.
    for (const std::string start : {"", "f", "field", "a name of more than eight characters "}) {
        ChildTable table;
        Values values;
        std::set<std::string> names;
        for (const char* end : {"12345678b", "12345678", "1234567", "12345678a", "1234567\x7F", "1234567\x80", "2",
                                "10", "1", "", "\xFF", "\x01", "123456789 and on", "123456789 and of"})
            names.insert(start + end);
        for (auto name = names.rbegin(); name != names.rend(); ++name) {
            values.push_back(std::make_unique<DataValue>(Text(*name)));
            ASSERT_TRUE(table.insert(*values.back()));
        }
        std::vector<std::string> listed;
        table.forEach([&](const char* name, DataField&) { listed.emplace_back(name); });
        EXPECT_EQ(listed, std::vector<std::string>(names.begin(), names.end()));
    }
}

TEST(ChildTable, RefusesANameThatIsTaken) {
    ChildTable table;
    const Values values = fill(table, 10);
    DataValue other(Text("field3"));
    EXPECT_FALSE(table.insert(other));
    EXPECT_FALSE(table.insert(*values[3]));
    EXPECT_EQ(table.find("field3"), values[3].get());
    EXPECT_EQ(table.erase("field3"), values[3].get());
    EXPECT_TRUE(table.insert(other));
    EXPECT_EQ(table.find("field3"), &other);
}

TEST(ChildTable, StaysInOrderWhileChildrenComeAndGo) {
    ChildTable table;
    const Values values = fill(table, 300);
    for (int number = 0; number < 300; ++number) {
        if (number % 10 == 0)
            continue;
        EXPECT_EQ(table.erase("field" + std::to_string(number)), values[static_cast<std::size_t>(number)].get());
    }
    EXPECT_EQ(table.size(), 30u);
    EXPECT_EQ(table.at(0), values[0].get());
    EXPECT_EQ(table.at(29), values[90].get());
    for (const int number : {5, 295, 155})
        EXPECT_TRUE(table.insert(*values[static_cast<std::size_t>(number)]));
    EXPECT_EQ(table.takeFirst(), values[0].get());
    EXPECT_EQ(table.takeFirst(), values[10].get());
    EXPECT_EQ(table.at(0), values[100].get());
    for (int number = 0; number < 300; ++number) {
        const bool isThere = (number % 10 == 0 && number > 10) || number == 5 || number == 295 || number == 155;
        EXPECT_EQ(table.contains("field" + std::to_string(number)), isThere) << number;
    }
}

TEST(ChildTable, KeepsTheNameOfAChildThatIsRenamed) {
    for (const int count : {3, 30}) {
        ChildTable table;
        const Values values = fill(table, count);
        values[1]->setName(Text("other"));
        EXPECT_EQ(table.find("field1"), values[1].get());
        EXPECT_EQ(table.find("other"), nullptr);
        DataValue other(Text("other"));
        EXPECT_TRUE(table.insert(other));
        EXPECT_EQ(table.find("other"), &other);
        EXPECT_EQ(table.erase("field1"), values[1].get());
        EXPECT_EQ(table.find("field1"), nullptr);
    }
}

TEST(ChildTable, KeepsThePlaceOfAChildThatIsDestroyed) {
    for (const int count : {3, 30}) {
        ChildTable table;
        Values values = fill(table, count);
        values[1].reset();
        EXPECT_EQ(table.size(), static_cast<std::size_t>(count));
        EXPECT_TRUE(table.contains("field1"));
        EXPECT_EQ(table.find("field1"), nullptr);
        EXPECT_EQ(table.at(1), nullptr);
        DataValue other(Text("field1"));
        EXPECT_TRUE(table.insert(other));
        EXPECT_EQ(table.at(1), &other);
        EXPECT_EQ(table.size(), static_cast<std::size_t>(count));
    }
}

TEST(ChildTable, ForgetsADestroyedChildWhateverItsNameWas) {
    ChildTable first;
    ChildTable second;
    auto value = std::make_unique<DataValue>(Text("value"));
    first.insert(*value);
    second.insert(*value);
    value->setName(Text("renamed"));
    second.insert(*value);
    EXPECT_EQ(first.find("value"), value.get());
    EXPECT_EQ(second.find("renamed"), value.get());
    value.reset();
    EXPECT_EQ(first.find("value"), nullptr);
    EXPECT_EQ(second.find("value"), nullptr);
    EXPECT_EQ(second.find("renamed"), nullptr);
    EXPECT_EQ(namesOf(first) + namesOf(second), "");
}

TEST(ChildTable, MayGoBeforeItsChildren) {
    auto table = std::make_unique<ChildTable>();
    const Values values = fill(*table, 3);
    values[0]->setName(Text("before"));
    table.reset();
    values[1]->setName(Text("after"));
    EXPECT_STREQ(values[1]->getName(), "after");
}

TEST(ChildTable, StandsANameThatIsWrittenOver) {
    ChildTable table;
    Values values = fill(table, 30);
    values[3]->getName()[0] = 'F';
    EXPECT_NE(table.at(0), nullptr);
    values[3].reset();
    EXPECT_EQ(table.size(), 30u);
    values.clear();
    while (table.size() > 0)
        EXPECT_EQ(table.takeFirst(), nullptr);
}

TEST(ChildTableCursor, GoesOnBehindTheLastName) {
    const SharedPart<ChildTable> table(new ChildTable);
    const Values values = fill(*table, 5);
    DataValue between(Text("field1a"));
    DataValue before(Text("a"));
    ChildTable::Cursor cursor(table);
    EXPECT_EQ(cursor.next(), values[0].get());
    EXPECT_EQ(cursor.next(), values[1].get());
    table->erase("field1");
    table->erase("field2");
    table->insert(between);
    table->insert(before);
    EXPECT_EQ(namesOf(cursor), "field1a field3 field4");
    EXPECT_EQ(cursor.next(), nullptr);
}

TEST(ChildTableCursor, PassesOverTheDestroyed) {
    const SharedPart<ChildTable> table(new ChildTable);
    Values values = fill(*table, 20);
    ChildTable::Cursor cursor(table);
    EXPECT_EQ(cursor.next(), values[0].get());
    for (std::size_t at = 1; at < 19; ++at)
        values[at].reset();
    EXPECT_EQ(namesOf(cursor), "field19");
}

TEST(ChildTableCursor, IsNoStructure) {
    const SharedPart<ChildTable> table(new ChildTable);
    EXPECT_TRUE(table->hasOneStructure());
    const ChildTable::Cursor cursor(table);
    EXPECT_TRUE(table->hasOneStructure());
    const SharedPart<ChildTable> copy(table);
    EXPECT_FALSE(table->hasOneStructure());
}

// The name is the field's own buffer, and whoever asked for it can write there.
TEST(ChildTable, LetsGoOfFieldsWhoseNamesWereOverwritten) {
    for (const int count : {3, 8, 20}) {
        ChildTable table;
        Values values = fill(table, count);
        values[1]->getName()[0] = 'z';
        values[2]->getName()[0] = 'z';
        values[1].reset();
        EXPECT_EQ(table.find("zield1"), nullptr);
        EXPECT_EQ(table.find("field0"), values[0].get());
        std::size_t taken = 0;
        while (table.size() != 0)
            taken += table.takeFirst() ? 1 : 0;
        EXPECT_EQ(taken, values.size() - 1);
        EXPECT_EQ(namesOf(table), "");
    }
}

TEST(ChildTableCursor, PassesOverWhatWasTakenOut) {
    for (const int count : {5, 9}) {
        const SharedPart<ChildTable> table(new ChildTable);
        const Values values = fill(*table, count);
        ChildTable::Cursor cursor(table);
        EXPECT_EQ(cursor.next(), values.front().get());
        for (int number = 1; number < count - 1; ++number)
            table->erase("field" + std::to_string(number));
        EXPECT_EQ(cursor.next(), values.back().get());
        EXPECT_EQ(cursor.next(), nullptr);
    }
}

TEST(ChildTableCursor, GoesOnAmongGapsWhenAnotherHasComeIn) {
    const SharedPart<ChildTable> table(new ChildTable);
    const Values values = fill(*table, 9);
    ChildTable::Cursor cursor(table);
    EXPECT_EQ(cursor.next(), values.front().get());
    for (int number = 1; number < 8; ++number)
        table->erase("field" + std::to_string(number));
    DataValue last(Text("fieldz"));
    table->insert(last);
    EXPECT_EQ(cursor.next(), values.back().get());
    EXPECT_EQ(cursor.next(), &last);
    EXPECT_EQ(cursor.next(), nullptr);
    table->erase("fieldz");
}
