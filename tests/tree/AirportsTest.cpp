#include "support/Csv.h"
#include "support/Text.h"
#include "support/TreeCleanup.h"

#include <orbel/orbel.h>

#include <gtest/gtest.h>

#include <array>
#include <sstream>

namespace {

const std::array<std::string, 6> fieldNames{"name", "city", "state", "country", "latitude", "longitude"};

/// 3,376 airports in a hash table of typed objects, keyed by their IATA codes and written by command texts.
class Airports : public testing::Test {
protected:
    Airports() {
        DataObject::init();
        DataObject::s_tTypes->parse(Text("Airport = {string name; string city; string state; string country=USA;"
                                         " string latitude; string longitude;};"));
        m_table = static_cast<DataHashTable*>(m_root.getField(Text("DataHashTable:airports:Airport"), 0, 1));
        m_table->setObjectType(DataObject::getObjectTypeByName(Text("Airport")));
        for (const CsvRow& row : m_rows) {
            m_table->newObject(Text(row[0]));
            m_root.parseCommand(Text(commandsFor(row)), 0);
        }
    }

    /// Values in doubled quotes, because some hold commas.
    static std::string commandsFor(const CsvRow& row) {
        std::string commands;
        for (std::size_t field = 0; field < fieldNames.size(); ++field)
            commands += "airports[" + row[0] + "]/" + fieldNames[field] + " = \"\"" + row[field + 1] + "\"\"; ";
        return commands;
    }

    /// What a dump of the entry must say: fields in order of their names.
    static std::string dumpOf(const CsvRow& row, const std::string& objectName) {
        std::ostringstream text;
        text << '\t' << objectName << " ={\n"
             << "\t\tcity=" << row[2] << ";\n"
             << "\t\tcountry=" << row[4] << ";\n"
             << "\t\tlatitude=" << row[5] << ";\n"
             << "\t\tlongitude=" << row[6] << ";\n"
             << "\t\tname=" << row[1] << ";\n"
             << "\t\tstate=" << row[3] << ";\n"
             << "\t}";
        return text.str();
    }

    const std::vector<CsvRow> m_rows = readCsv(ORBEL_TEST_DATA "/airports.csv");
    Orbel m_root{Text("root")};
    const SubtreeCleanup m_belowRoot{m_root};
    DataHashTable* m_table = nullptr;
};

TEST_F(Airports, AreAllThereUnderTheirCodes) {
    ASSERT_EQ(m_rows.size(), 3376u);
    EXPECT_EQ(m_table->getSize(), 3376);
    for (const CsvRow& row : m_rows)
        for (std::size_t field = 0; field < fieldNames.size(); ++field) {
            std::string value;
            ASSERT_TRUE(m_root.getFieldData(Text("airports[" + row[0] + "]/" + fieldNames[field]), &value));
            ASSERT_EQ(value, row[field + 1]) << row[0] << ' ' << fieldNames[field];
        }
}

TEST_F(Airports, KeepCommasQuotesAndSlashes) {
    std::string value;
    EXPECT_TRUE(m_root.getFieldData(Text("airports[35A]/name"), &value));
    EXPECT_EQ(value, "Union County, Troy Shelton");
    EXPECT_TRUE(m_root.getFieldData(Text("airports[DBN]/name"), &value));
    EXPECT_EQ(value, "W. H. \"Bud\" Barron");
    EXPECT_TRUE(m_root.getFieldData(Text("airports[PUW]/city"), &value));
    EXPECT_EQ(value, "Pullman/Moscow,ID");
}

TEST_F(Airports, AreNotFoundUnderOtherCodes) {
    EXPECT_EQ(m_table->getObject(Text("XXX")), nullptr);
    EXPECT_EQ(m_table->getObject(Text("jfk")), nullptr);
    EXPECT_NE(m_table->getObject(Text("JFK")), nullptr);
    EXPECT_EQ(m_root.getField(Text("airports[XXX]/name"), 0, 1), nullptr);
}

TEST_F(Airports, AreObjectsOfTheirTypeInTheOrderInWhichTheyCame) {
    for (int index = 0; index < m_table->getSize(); ++index) {
        DataObject* element = m_table->DataArray::getObject(index);
        ASSERT_STREQ(element->getName(), ("Airport-#" + std::to_string(index)).c_str());
        ASSERT_STREQ(element->getObjectTypeName(), "Airport");
        ASSERT_EQ(element, m_table->getObject(Text(m_rows[static_cast<std::size_t>(index)][0])));
    }
}

TEST_F(Airports, DumpAsTheCsvSays) {
    std::string codes;
    std::string entries;
    for (int index = 0; index < m_table->getSize(); ++index) {
        char* code = m_table->getObjectKey(index);
        DataObject* airport = m_table->getObject(code);
        const auto row = static_cast<std::size_t>(airport->getParentInstance());
        ASSERT_EQ(m_rows[row][0], code);
        const bool isLast = index + 1 == m_table->getSize();
        codes += std::string(code) + (isLast ? "" : ",");
        entries += dumpOf(m_rows[row], airport->getName()) + (isLast ? "\n" : ",\n");
    }
    std::ostringstream dump;
    m_root.dumpField(Text("airports"), dump);
    EXPECT_EQ(dump.str(), "airports[" + codes + "]={\n" + entries + "};\n");
}

TEST_F(Airports, AreDumpedByKey) {
    const auto rowOf = [&](const std::string& code) {
        for (const CsvRow& row : m_rows)
            if (row[0] == code)
                return row;
        return CsvRow(7);
    };
    std::ostringstream dump;
    m_root.dumpField(Text("airports[JFK,LAX]"), dump);
    EXPECT_EQ(dump.str(), "airports[JFK,LAX]={\n" + dumpOf(rowOf("JFK"), m_table->getObject(Text("JFK"))->getName()) +
                              ",\n" + dumpOf(rowOf("LAX"), m_table->getObject(Text("LAX"))->getName()) + "\n};\n");
}

} // namespace
