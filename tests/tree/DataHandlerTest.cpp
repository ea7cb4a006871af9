#include <orbel/orbel.h>

#include <support/RecordingHandler.h>
#include <support/Text.h>

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace {

/// Opens what is there for derived classes.
class OpenHandler : public DataHandler {
public:
    using DataHandler::DataHandler;
    using DataHandler::m_flags;
    using DataHandler::setField;
};

class StructureHandler : public DataHandler {
public:
    using DataHandler::DataHandler;
    void dump() override { ++dumps; }
    DataType* getFieldType() override { return DataStructure::getClassType(); }
    int dumps = 0;
};

std::string dumpOf(DataHandler& handler) {
    testing::internal::CaptureStdout();
    handler.dump();
    return testing::internal::GetCapturedStdout();
}

TEST(DataHandlerTest, NewHandlerIsEmpty) {
    OpenHandler handler;
    EXPECT_STREQ(handler.getName(), "");
    EXPECT_EQ(handler.getOffset(), 0);
    EXPECT_EQ(handler.getField(), nullptr);
    EXPECT_EQ(handler.getNotifyOnValueChange(), 0);
    EXPECT_EQ(handler.getUseConvTable(), 0);
    EXPECT_EQ(handler.m_flags, 0);
}

TEST(DataHandlerTest, NewNamedHandlerHasOnlyItsName) {
    OpenHandler handler(Text("board"));
    EXPECT_STREQ(handler.getName(), "board");
    EXPECT_EQ(handler.getOffset(), 0);
    EXPECT_EQ(handler.getField(), nullptr);
    EXPECT_EQ(handler.getNotifyOnValueChange(), 0);
    EXPECT_EQ(handler.getUseConvTable(), 0);
    EXPECT_EQ(handler.m_flags, 0);
}

class HandlerNameTest : public testing::TestWithParam<std::size_t> {};

TEST_P(HandlerNameTest, KeepsAtMost99Characters) {
    const std::string name(GetParam(), 'n');
    const std::string kept = name.substr(0, 99);
    DataHandler constructed{Text(name)};
    EXPECT_EQ(constructed.getName(), kept);

    DataHandler renamed(Text("before"));
    renamed.setOffset(7);
    renamed.setName(Text(name));
    EXPECT_EQ(renamed.getName(), kept);
    EXPECT_EQ(renamed.getOffset(), 7);
}

INSTANTIATE_TEST_SUITE_P(Lengths, HandlerNameTest, testing::Values(0, 1, 98, 99, 100, 150));

TEST(DataHandlerTest, KeepsWhatItsOwnerSets) {
    DataHandler handler;
    handler.setOffset(-5);
    handler.setNotifyOnValueChange(1);
    handler.setUseConvTable(2);
    handler.setConvTableName(Text("colours"));
    EXPECT_EQ(handler.getOffset(), -5);
    EXPECT_EQ(handler.getNotifyOnValueChange(), 1);
    EXPECT_EQ(handler.getUseConvTable(), 2);
    EXPECT_STREQ(handler.getConvTableName(), "colours");
}

TEST(DataHandlerTest, ConversionTableNameHolds99Characters) {
    const std::string name(99, 't');
    DataHandler handler;
    handler.setConvTableName(Text(name));
    EXPECT_EQ(handler.getConvTableName(), name);
}

TEST(DataHandlerTest, NamesStayWhereTheyAre) {
    DataHandler handler;
    char* const name = handler.getName();
    char* const convTableName = handler.getConvTableName();
    std::string("written").copy(name, 7);
    EXPECT_STREQ(handler.getName(), "written");
    handler.setName(Text("board"));
    handler.setConvTableName(Text("colours"));
    EXPECT_STREQ(name, "board");
    EXPECT_STREQ(convTableName, "colours");
    handler.setName(nullptr);
    EXPECT_STREQ(name, "");
}

class HandlerCopyTest : public testing::Test {
protected:
    HandlerCopyTest() {
        original.setOffset(3);
        original.setNotifyOnValueChange(1);
        original.setUseConvTable(1);
        original.setConvTableName(Text("colours"));
        original.m_flags = 9;
        field->registerHandler(&original);
    }

    void expectAllCopied(OpenHandler& copy) {
        EXPECT_STREQ(copy.getName(), "original");
        EXPECT_EQ(copy.getOffset(), 3);
        EXPECT_EQ(copy.getNotifyOnValueChange(), 1);
        EXPECT_EQ(copy.getUseConvTable(), 1);
        EXPECT_STREQ(copy.getConvTableName(), "colours");
        EXPECT_EQ(copy.m_flags, 9);
        EXPECT_EQ(copy.getField(), field.get());
        EXPECT_EQ(field->getNumHandlers(), 1);
        EXPECT_EQ(field->getHandlerByID(0), &original);
    }

    std::unique_ptr<DataValue> field = std::make_unique<DataValue>(Text("x"));
    OpenHandler original{Text("original")};
};

TEST_F(HandlerCopyTest, CopyNamesTheFieldButIsRegisteredNowhere) {
    OpenHandler copy(original);
    expectAllCopied(copy);
}

TEST_F(HandlerCopyTest, AssignmentCopiesTheSame) {
    OpenHandler copy(Text("before"));
    copy = original;
    expectAllCopied(copy);
}

TEST_F(HandlerCopyTest, AssignmentWritesIntoTheBuffersThatClientsHold) {
    OpenHandler copy(Text("before"));
    copy.setConvTableName(Text("shapes"));
    const char* const name = copy.getName();
    const char* const convTableName = copy.getConvTableName();
    copy = original;
    EXPECT_STREQ(name, "original");
    EXPECT_STREQ(convTableName, "colours");
    copy = OpenHandler();
    EXPECT_STREQ(name, "");
    EXPECT_STREQ(convTableName, "");
}

TEST_F(HandlerCopyTest, DestroyedCopyLeavesTheOriginalRegistered) {
    std::make_unique<OpenHandler>(original).reset();
    EXPECT_EQ(field->getNumHandlers(), 1);
    EXPECT_EQ(field->getCountNotifyOnValueChange(), 1);
    EXPECT_EQ(original.getField(), field.get());
}

TEST_F(HandlerCopyTest, CopyMayOutliveTheField) {
    OpenHandler copy(original);
    field.reset();
    EXPECT_EQ(original.getField(), nullptr);

    DataValue other(Text("other"));
    other.registerHandler(&copy);
    EXPECT_EQ(copy.getField(), &other);
}

TEST_F(HandlerCopyTest, CopyOfADeadFieldsHandlerIsOnNoField) {
    OpenHandler copy(original);
    field.reset();
    DataStructure structure(Text("scene"));
    EXPECT_FALSE(structure.unregisterHandler(&copy));
}

TEST_F(HandlerCopyTest, CopyMayOutliveTheOriginal) {
    std::optional<OpenHandler> second(original);
    second->setName(Text("second"));
    field->registerHandler(&*second);
    OpenHandler copy(*second);
    second.reset();
    EXPECT_EQ(field->getNumHandlers(), 1);
    EXPECT_EQ(copy.getField(), field.get());
}

TEST(DataHandlerTest, DestroyedHandlerIsTakenOffItsField) {
    DataValue field(Text("x"));
    auto handler = std::make_unique<DataHandler>();
    handler->setNotifyOnValueChange(1);
    field.registerHandler(handler.get());
    EXPECT_EQ(field.getCountNotifyOnValueChange(), 1);
    handler.reset();
    EXPECT_EQ(field.getNumHandlers(), 0);
    EXPECT_EQ(field.getCountNotifyOnValueChange(), 0);
    field.setData("1");
}

TEST(DataHandlerTest, DumpWritesTheName) {
    DataHandler handler(Text("board"));
    EXPECT_EQ(dumpOf(handler), "DataHandler: Name=board\n");
}

TEST(DataHandlerTest, DumpWritesTheFieldToo) {
    DataValue field(Text("title"));
    DataHandler handler(Text("board"));
    field.registerHandler(&handler);
    EXPECT_EQ(dumpOf(handler), "DataHandler: Name=board\nDataHandler: fieldname=title\n");
    field.unregisterHandler(&handler);
    EXPECT_EQ(dumpOf(handler), "DataHandler: Name=board\n");
}

TEST(DataHandlerTest, DerivedClassesSetTheField) {
    DataValue field(Text("title"));
    OpenHandler handler;
    handler.setField(&field);
    EXPECT_EQ(handler.getField(), &field);
    EXPECT_EQ(field.getNumHandlers(), 0);
}

TEST(DataHandlerTest, PlainHandlerIgnoresEveryCall) {
    DataValue field(Text("x"));
    field.setSize(3);
    DataHandler handler;
    field.registerHandler(&handler);
    field.setData("1");
    field.setData("1", 2);
    field.fireOnTypeChange(Text("City"));
    EXPECT_EQ(handler.getFieldType(), DataValue::getClassType());
    EXPECT_EQ(field.getNumHandlers(), 1);
}

TEST(DataHandlerTest, OverridesAreReachedThroughTheBase) {
    Diary diary;
    DataValue field(Text("x"));
    field.setSize(3);
    RecordingHandler recording(diary, "A");
    DataHandler& handler = recording;
    handler.onChange(field, true);
    handler.onChange(field, false, 1, 2);
    handler.onTypeChange(field, Text("City"));
    EXPECT_EQ(diary.take(), "A changed, A same 1-2, A type City");

    StructureHandler structure;
    DataHandler& base = structure;
    base.dump();
    EXPECT_EQ(structure.dumps, 1);
    EXPECT_EQ(base.getFieldType(), DataStructure::getClassType());
}

TEST(DataHandlerTest, FieldDumpsItsHandlersInOrder) {
    DataValue field(Text("x"));
    DataHandler first(Text("first"));
    StructureHandler second(Text("second"));
    DataHandler third(Text("third"));
    for (DataHandler* handler : {&first, static_cast<DataHandler*>(&second), &third})
        field.registerHandler(handler);
    testing::internal::CaptureStdout();
    field.dumpHandlers();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "DataHandler: Name=first\nDataHandler: fieldname=x\n"
                                                      "DataHandler: Name=third\nDataHandler: fieldname=x\n");
    EXPECT_EQ(second.dumps, 1);
}

TEST(DataHandlerTest, StaysOnItsFieldWhenItIsAssignedToItself) {
    Diary diary;
    RecordingHandler handler(diary, "A");
    DataValue value(Text("value"));
    value.registerHandler(&handler);
    diary.take();
    DataHandler& same = handler;
    static_cast<DataHandler&>(handler) = same;
    EXPECT_EQ(handler.getField(), &value);
    EXPECT_STREQ(handler.getName(), "A");
    value.setData("one");
    EXPECT_EQ(diary.take(), "A changed");
}

} // namespace
