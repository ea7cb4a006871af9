#include <orbel/orbel.h>
#include <support/Text.h>

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

struct ClassRecord {
    DataType* record;
    const char* name;
    std::set<std::string> ancestors;
};

std::vector<ClassRecord> allRecords() {
    return {
        {DataBaseType::getClassType(), "DataBaseType", {}},
        {DataField::getClassType(), "DataField", {"DataBaseType"}},
        {DataValue::getClassType(), "DataValue", {"DataField", "DataBaseType"}},
        {DataNode::getClassType(), "DataNode", {"DataField", "DataBaseType"}},
        {DataStructure::getClassType(), "DataStructure", {"DataNode", "DataField", "DataBaseType"}},
        {DataObject::getClassType(), "DataObject", {"DataStructure", "DataNode", "DataField", "DataBaseType"}},
        {Orbel::getClassType(), "Orbel", {"DataStructure", "DataNode", "DataField", "DataBaseType"}},
        {DataArray::getClassType(), "DataArray", {"DataNode", "DataField", "DataBaseType"}},
        {DataHashTable::getClassType(), "DataHashTable", {"DataArray", "DataNode", "DataField", "DataBaseType"}},
    };
}

/// A class that a client adds to the hierarchy.
class Clock : public DataValue {
public:
    static DataType* classType;
    static int inits;

    static void init() {
        ++inits;
        if (!classType)
            classType = new DataClassType<Clock, DataValue>(Text("Clock"));
    }

    explicit Clock(char* name) : DataValue(name) { setType(classType); }

    const char* getTypeName() override { return "Clock"; }
};

DataType* Clock::classType = nullptr;
int Clock::inits = 0;

class AlarmClock : public Clock {
public:
    explicit AlarmClock(char* name) : Clock(name) {}
};

/// Has no record yet, and makes none.
class Unregistered : public DataBaseType {
public:
    explicit Unregistered(char* name) : DataBaseType(name) {}
};

TEST(DataTypeTest, EveryClassHasARecordOfItsName) {
    for (const ClassRecord& entry : allRecords()) {
        ASSERT_NE(entry.record, nullptr) << entry.name;
        EXPECT_STREQ(entry.record->getName(), entry.name);
    }
}

TEST(DataTypeTest, RecordsDeriveFromThemselvesAndTheirAncestorsOnly) {
    const std::vector<ClassRecord> records = allRecords();
    for (const ClassRecord& entry : records)
        for (const ClassRecord& other : records) {
            const bool derived = entry.record == other.record || entry.ancestors.count(other.name) != 0;
            EXPECT_EQ(entry.record->isDerivedFrom(other.record), derived ? 1 : 0) << entry.name << " " << other.name;
        }
}

TEST(DataTypeTest, NothingDerivesFromNull) {
    EXPECT_EQ(DataHashTable::getClassType()->isDerivedFrom(nullptr), 0);
}

TEST(DataTypeTest, TheRootRecordHasIdZero) {
    EXPECT_EQ(DataBaseType::getClassType()->getID(), 0);
    EXPECT_EQ(DataBaseType::classType, DataBaseType::getClassType());
}

TEST(DataTypeTest, LastIdIsTheNumberOfRecords) {
    std::set<int> ids;
    for (const ClassRecord& entry : allRecords()) {
        EXPECT_GE(entry.record->getID(), 0);
        EXPECT_LT(entry.record->getID(), DataType::lastId);
        ids.insert(entry.record->getID());
    }
    EXPECT_EQ(ids.size(), 9u);
    EXPECT_GE(DataType::lastId, 9);
}

TEST(DataTypeTest, ANewRecordTakesTheNextId) {
    DataValue::init();
    const int next = DataType::lastId;
    DataClassType<DataValue, DataField> record(Text("Extra"));
    EXPECT_EQ(record.getID(), next);
    EXPECT_EQ(DataType::lastId, next + 1);
    DataRootClassType<DataBaseType> root(Text("Root"));
    EXPECT_EQ(root.getID(), next + 1);
    EXPECT_EQ(DataType::lastId, next + 2);
}

TEST(DataTypeTest, RecordsAreMadeOnce) {
    const std::vector<ClassRecord> before = allRecords();
    const int lastId = DataType::lastId;
    DataBaseType::init();
    DataField::init();
    DataValue::init();
    DataNode::init();
    DataStructure::init();
    DataObject::init();
    Orbel::init();
    DataArray::init();
    DataHashTable::init();
    const DataValue value(Text("v"));
    const std::vector<ClassRecord> after = allRecords();
    for (std::size_t index = 0; index < before.size(); ++index)
        EXPECT_EQ(after[index].record, before[index].record);
    EXPECT_EQ(DataType::lastId, lastId);
}

TEST(DataTypeTest, InitFillsTheStaticMember) {
    DataHashTable::init();
    EXPECT_NE(DataHashTable::classType, nullptr);
    EXPECT_EQ(DataHashTable::classType, DataHashTable::getClassType());
    EXPECT_EQ(DataArray::classType, DataArray::getClassType());
    EXPECT_EQ(DataNode::classType, DataNode::getClassType());
    EXPECT_EQ(DataField::classType, DataField::getClassType());
    EXPECT_EQ(DataValue::getClassType(), DataValue::classType);
    EXPECT_EQ(DataStructure::getClassType(), DataStructure::classType);
    EXPECT_EQ(DataObject::getClassType(), DataObject::classType);
    EXPECT_EQ(Orbel::getClassType(), Orbel::classType);
}

TEST(DataTypeTest, ConstructingAnItemMakesTheRecordsOfItsAncestorsFirst) {
    DataHashTable table(Text("t"));
    EXPECT_LT(DataBaseType::classType->getID(), DataField::classType->getID());
    EXPECT_LT(DataField::classType->getID(), DataNode::classType->getID());
    EXPECT_LT(DataNode::classType->getID(), DataArray::classType->getID());
    EXPECT_LT(DataArray::classType->getID(), DataHashTable::classType->getID());
}

TEST(DataTypeTest, AllocMakesAnItemOfTheRecordsClass) {
    for (const ClassRecord& entry : allRecords()) {
        if (entry.record == DataBaseType::getClassType())
            continue;
        for (const int ignored : {0, 123, -1}) {
            const std::unique_ptr<DataField> item(static_cast<DataField*>(entry.record->alloc(Text("made"), ignored)));
            ASSERT_NE(item, nullptr) << entry.name;
            EXPECT_STREQ(item->getName(), "made");
            EXPECT_STREQ(item->getTypeName(), entry.name);
            EXPECT_EQ(item->isExactType(entry.record), 1) << entry.name;
            EXPECT_EQ(item->isOfType(DataField::getClassType()), 1) << entry.name;
            EXPECT_EQ(item->isOfType(DataBaseType::getClassType()), 1) << entry.name;
        }
    }
}

TEST(DataTypeTest, TheNumberGivenToAllocIsIgnored) {
    const std::unique_ptr<DataField> some(static_cast<DataField*>(DataValue::getClassType()->alloc(Text("v"), 123)));
    const std::unique_ptr<DataField> none(static_cast<DataField*>(DataValue::getClassType()->alloc(Text("v"), 0)));
    EXPECT_EQ(some->getSize(), 1);
    EXPECT_EQ(none->getSize(), 1);
    EXPECT_EQ(*some->getData(0), *none->getData(0));
}

TEST(DataTypeTest, TheRootRecordAllocatesPlainItems) {
    DataBaseType* item = DataBaseType::getClassType()->alloc(Text("made"), 0);
    ASSERT_NE(item, nullptr);
    EXPECT_STREQ(item->getName(), "made");
    EXPECT_STREQ(item->getTypeName(), "DataBaseType");
    EXPECT_EQ(item->isExactType(DataBaseType::getClassType()), 1);
    EXPECT_EQ(item->isOfType(DataField::getClassType()), 0);
    item->DataBaseType::~DataBaseType();
    ::operator delete(item);
}

TEST(DataTypeTest, ExactTypeIsNotDerivedType) {
    DataObject object(Text("o"));
    EXPECT_EQ(object.isExactType(DataObject::getClassType()), 1);
    EXPECT_EQ(object.isExactType(DataStructure::getClassType()), 0);
    EXPECT_EQ(object.isOfType(DataStructure::getClassType()), 1);
    EXPECT_EQ(object.isOfType(DataValue::getClassType()), 0);
    EXPECT_EQ(object.isOfType(Orbel::getClassType()), 0);
}

TEST(DataTypeTest, NamesOfNineteenCharactersFit) {
    DataClassType<DataValue, DataField> record(Text("First"));
    record.setName(Text("Second"));
    EXPECT_STREQ(record.getName(), "Second");
    record.setName(Text(std::string(19, 'n')));
    EXPECT_EQ(std::string(record.getName()), std::string(19, 'n'));
}

TEST(DataTypeTest, ANameOfTwentyCharactersIsNotTaken) {
    DataClassType<DataValue, DataField> record(Text("First"));
    record.setName(Text(std::string(20, 'n')));
    EXPECT_STREQ(record.getName(), "First");
}

TEST(DataTypeTest, IdsCanBeSet) {
    DataClassType<DataValue, DataField> record(Text("Extra"));
    const int lastId = DataType::lastId;
    record.setID(-7);
    EXPECT_EQ(record.getID(), -7);
    EXPECT_EQ(DataType::lastId, lastId);
}

TEST(DataTypeTest, CopiesHaveTheSameIdNameAndParent) {
    DataClassType<DataValue, DataField> record(Text("Extra"));
    const int lastId = DataType::lastId;
    DataClassType<DataValue, DataField> copy(record);
    EXPECT_EQ(copy.getID(), record.getID());
    EXPECT_STREQ(copy.getName(), "Extra");
    EXPECT_EQ(copy.isDerivedFrom(DataField::getClassType()), 1);
    EXPECT_EQ(copy.isDerivedFrom(&record), 0);

    DataRootClassType<DataBaseType> root(Text("Root"));
    static_cast<DataType&>(root) = record;
    EXPECT_EQ(root.getID(), record.getID());
    EXPECT_STREQ(root.getName(), "Extra");
    EXPECT_EQ(root.isDerivedFrom(DataField::getClassType()), 1);
    EXPECT_EQ(DataType::lastId, lastId + 1);
}

TEST(DataTypeTest, ARootRecordHasNoParent) {
    DataRootClassType<DataBaseType> root(Text("Root"));
    EXPECT_EQ(root.isDerivedFrom(&root), 1);
    EXPECT_EQ(root.isDerivedFrom(DataBaseType::getClassType()), 0);
}

TEST(DataTypeTest, ARecordInitialisesItsBaseClassOnlyWhenThatHasNone) {
    Clock::classType = nullptr;
    Clock::inits = 0;
    DataClassType<AlarmClock, Clock> first(Text("AlarmClock"));
    EXPECT_EQ(Clock::inits, 1);
    EXPECT_EQ(first.isDerivedFrom(Clock::classType), 1);
    EXPECT_EQ(first.isDerivedFrom(DataValue::getClassType()), 1);
    EXPECT_EQ(first.getID(), Clock::classType->getID() + 1);

    DataClassType<AlarmClock, Clock> second(Text("AlarmClock"));
    EXPECT_EQ(Clock::inits, 1);
    EXPECT_EQ(second.isDerivedFrom(Clock::classType), 1);
    EXPECT_EQ(second.isDerivedFrom(&first), 0);

    delete std::exchange(Clock::classType, nullptr);
}

TEST(DataTypeTest, ClientsCanAddClasses) {
    Clock::init();
    {
        const std::unique_ptr<DataField> item(static_cast<DataField*>(Clock::classType->alloc(Text("noon"), 0)));
        EXPECT_STREQ(item->getTypeName(), "Clock");
        EXPECT_EQ(item->isOfType(DataValue::getClassType()), 1);
        EXPECT_EQ(item->isExactType(DataValue::getClassType()), 0);
        const std::unique_ptr<DataField> copy(item->clone());
        EXPECT_STREQ(copy->getTypeName(), "Clock");
    }
    delete std::exchange(Clock::classType, nullptr);
}

TEST(DataTypeTest, ClassesDirectlyBelowTheRootTakeItsRecordAsParent) {
    DataClassType<Unregistered, DataBaseType> record(Text("Unregistered"));
    EXPECT_EQ(record.isDerivedFrom(DataBaseType::getClassType()), 1);
    EXPECT_EQ(record.isDerivedFrom(DataField::getClassType()), 0);
}

} // namespace
