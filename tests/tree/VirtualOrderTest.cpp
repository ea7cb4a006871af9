#include <orbel/orbel.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

namespace {

/// GCC and MinGW hold one plus the byte offset into the table in a pointer to a virtual operation.
template <class Operation>
std::uintptr_t slotOf(Operation operation) {
    std::uintptr_t bits = 0;
    static_assert(sizeof(operation) >= sizeof(bits));
    std::memcpy(&bits, &operation, sizeof(bits));
    return (bits - 1) / sizeof(void*);
}

/// The slot that the first operation of a derived class would take: the length of the table.
template <class Base>
class Next : public Base {
public:
    using Base::Base;
    virtual void next() {}
};

template <class Base>
std::uintptr_t lengthOf() {
    return slotOf(&Next<Base>::next);
}

} // namespace

TEST(VirtualOrder, TypeRecordsBeginWithTheirDestructor) {
    EXPECT_EQ(slotOf(&DataType::alloc), 2u);
}

TEST(VirtualOrder, OfItems) {
    EXPECT_EQ(slotOf(&DataBaseType::getTypeName), 0u);
    EXPECT_EQ(slotOf(&DataBaseType::dump), 1u);
    EXPECT_EQ(slotOf(&DataBaseType::dumpXML), 2u);
    EXPECT_EQ(lengthOf<DataBaseType>(), 3u);
}

TEST(VirtualOrder, OfFields) {
    EXPECT_EQ(slotOf(&DataField::ClearLinks), 3u);
    // The destructor takes 4 and 5.
    EXPECT_EQ(slotOf(&DataField::setSize), 6u);
    EXPECT_EQ(slotOf(&DataField::getSize), 7u);
    EXPECT_EQ(slotOf(&DataField::clone), 8u);
    EXPECT_EQ(slotOf(&DataField::parse), 9u);
    EXPECT_EQ(slotOf<void (DataField::*)(const char*)>(&DataField::setData), 10u);
    EXPECT_EQ((slotOf<void (DataField::*)(const char*, int)>(&DataField::setData)), 11u);
    EXPECT_EQ((slotOf<void (DataField::*)(std::string*, int)>(&DataField::setData)), 12u);
    EXPECT_EQ((slotOf<void (DataField::*)(std::vector<char*>*, int, int)>(&DataField::setData)), 13u);
    EXPECT_EQ((slotOf<bool (DataField::*)(char**, int)>(&DataField::getData)), 14u);
    EXPECT_EQ(slotOf<std::string* (DataField::*)(int)>(&DataField::getData), 15u);
    EXPECT_EQ((slotOf<void (DataField::*)(std::vector<char*>*, int, int)>(&DataField::getData)), 16u);
    EXPECT_EQ(slotOf(&DataField::getDataVector), 17u);
    EXPECT_EQ(slotOf(&DataField::clearData), 18u);
    EXPECT_EQ(slotOf(&DataField::copyData), 19u);
    EXPECT_EQ(lengthOf<DataField>(), 20u);
    EXPECT_EQ(lengthOf<DataValue>(), 20u);
}

TEST(VirtualOrder, OfTheChildrenOfNodes) {
    EXPECT_EQ(slotOf(&DataNode::addField), 20u);
    EXPECT_EQ(slotOf(&DataNode::getFieldsVector), 21u);
    EXPECT_EQ(slotOf(&DataNode::getField), 22u);
    EXPECT_EQ(slotOf(&DataNode::removeField), 23u);
    EXPECT_EQ(slotOf(&DataNode::removeChildren), 24u);
    EXPECT_EQ(slotOf(&DataNode::deleteChildren), 25u);
    EXPECT_EQ(slotOf(&DataNode::getNumFields), 26u);
    EXPECT_EQ(slotOf(&DataNode::getFieldByIndex), 27u);
    EXPECT_EQ(slotOf<void (DataNode::*)()>(&DataNode::dump), 28u);
    EXPECT_EQ(slotOf(&DataNode::dumpData), 29u);
    EXPECT_EQ(slotOf(&DataNode::dumpField), 30u);
    EXPECT_EQ((slotOf<bool (DataNode::*)(char*, DataHandler*, int)>(&DataNode::registerHandler)), 31u);
    EXPECT_EQ(slotOf<bool (DataNode::*)(DataHandler*)>(&DataNode::unregisterHandler), 32u);
}

TEST(VirtualOrder, OfWholePathAccess) {
    EXPECT_EQ(slotOf(&DataNode::setFieldSize), 33u);
    EXPECT_EQ(slotOf(&DataNode::getFieldSize), 34u);
    EXPECT_EQ((slotOf<bool (DataNode::*)(char*, std::string*)>(&DataNode::setFieldData)), 35u);
    EXPECT_EQ((slotOf<bool (DataNode::*)(char*, char*)>(&DataNode::setFieldData)), 36u);
    EXPECT_EQ((slotOf<bool (DataNode::*)(char*, char*, int)>(&DataNode::setFieldData)), 37u);
    EXPECT_EQ((slotOf<bool (DataNode::*)(char*, std::vector<char*>*, int, int)>(&DataNode::setFieldData)), 38u);
    EXPECT_EQ((slotOf<bool (DataNode::*)(char*, std::string*)>(&DataNode::getFieldData)), 39u);
    EXPECT_EQ((slotOf<bool (DataNode::*)(char*, char**)>(&DataNode::getFieldData)), 40u);
    EXPECT_EQ((slotOf<bool (DataNode::*)(char*, std::vector<char*>*, int, int)>(&DataNode::getFieldData)), 41u);
}

TEST(VirtualOrder, OfCommands) {
    EXPECT_EQ(slotOf(&DataNode::executeCommand), 42u);
    EXPECT_EQ(slotOf(&DataNode::parseCommand), 43u);
    EXPECT_EQ(slotOf(&DataNode::getFieldsByRange), 44u);
    EXPECT_EQ(slotOf(&DataNode::executeCopyCommand), 45u);
    EXPECT_EQ(slotOf(&DataNode::parseCopyCommand), 46u);
    EXPECT_EQ(slotOf(&DataNode::executeClearField), 47u);
    EXPECT_EQ(slotOf(&DataNode::executeClearCommand), 48u);
    EXPECT_EQ((slotOf<void (DataNode::*)(char*, int)>(&DataNode::setData)), 49u);
    EXPECT_EQ(slotOf<void (DataNode::*)(char*)>(&DataNode::setData), 50u);
    EXPECT_EQ(lengthOf<DataNode>(), 51u);
}

TEST(VirtualOrder, StructuresAndArraysAddNothing) {
    EXPECT_EQ(lengthOf<DataStructure>(), 51u);
    EXPECT_EQ(lengthOf<Orbel>(), 51u);
    EXPECT_EQ(lengthOf<DataObject>(), 51u);
    EXPECT_EQ(lengthOf<DataArray>(), 51u);
}

TEST(VirtualOrder, HashTablesAddTheirEntries) {
    EXPECT_EQ(slotOf<DataObject* (DataHashTable::*)(int)>(&DataHashTable::getObject), 51u);
    EXPECT_EQ(slotOf<DataObject* (DataHashTable::*)(char*)>(&DataHashTable::getObject), 52u);
    EXPECT_EQ(lengthOf<DataHashTable>(), 53u);
}

TEST(VirtualOrder, OfHandlers) {
    EXPECT_EQ(slotOf(&DataHandler::dump), 0u);
    EXPECT_EQ((slotOf<void (DataHandler::*)(DataField&, bool)>(&DataHandler::onChange)), 1u);
    EXPECT_EQ((slotOf<void (DataHandler::*)(DataField&, bool, int, int)>(&DataHandler::onChange)), 2u);
    EXPECT_EQ(slotOf(&DataHandler::onTypeChange), 3u);
    EXPECT_EQ(slotOf(&DataHandler::getFieldType), 4u);
    EXPECT_EQ(lengthOf<DataHandler>(), 5u);
}
