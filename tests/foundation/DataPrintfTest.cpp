#include <orbel/foundation/DataPrintf.h>

#include <gtest/gtest.h>

#include <cstdarg>
#include <cstdio>
#include <string>

namespace {

std::string printed;
int calls = 0;
const void* lastFormat = nullptr;

int printList(const char* format, va_list args) {
    ++calls;
    lastFormat = format;
    char text[200];
    const int length = std::vsnprintf(text, sizeof text, format, args);
    printed += text;
    return length;
}

int printArguments(const char* format, ...) {
    ++calls;
    lastFormat = format;
    return 77;
}

int printWideList(const wchar_t* format, va_list args) {
    ++calls;
    lastFormat = format;
    printed += std::to_string(va_arg(args, int));
    printed += va_arg(args, const char*);
    return 42;
}

/// The type is deduced, because a va_list may be an array, which va_arg cannot read.
template <class List>
int printNestedList(int (*print)(const wchar_t*, List), const wchar_t* format, va_list args) {
    return print(format, va_arg(args, List));
}

int printWideArguments(const wchar_t* format, ...) {
    va_list own;
    va_start(own, format);
    const int result = printNestedList(printWideList, format, own);
    va_end(own);
    return result;
}

int callVPrintf(const char* format, ...) {
    va_list args;
    va_start(args, format);
    const int result = DataVPrintf(format, args);
    va_end(args);
    return result;
}

int callVWPrintf(const wchar_t* format, ...) {
    va_list args;
    va_start(args, format);
    const int result = DataVWPrintf(format, args);
    va_end(args);
    return result;
}

/// Starts with no print function installed and checks that nothing but they ever prints.
class DataPrintfTest : public testing::Test {
protected:
    DataPrintfTest() {
        uninstallAll();
        printed.clear();
        calls = 0;
        lastFormat = nullptr;
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
    }

    ~DataPrintfTest() override {
        EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        uninstallAll();
    }

    static void uninstallAll() {
        DataSetPrintfFunction(nullptr);
        DataSetWPrintfFunction(nullptr);
        DataSetVPrintfFunction(nullptr);
        DataSetVWPrintfFunction(nullptr);
    }
};

TEST_F(DataPrintfTest, WithoutPrintFunctionsEveryFormReturnsZeroAndPrintsNothing) {
    EXPECT_EQ(DataPrintf("plain"), 0);
    EXPECT_EQ(DataPrintf("%d %s\n", 5, "five"), 0);
    EXPECT_EQ(DataWPrintf(L"%d\n", 5), 0);
    EXPECT_EQ(callVPrintf("%d\n", 5), 0);
    EXPECT_EQ(callVWPrintf(L"%d\n", 5), 0);
}

TEST_F(DataPrintfTest, PrintfCallsTheNarrowListFunctionAndReturnsItsResult) {
    DataSetVPrintfFunction(printList);
    const char* format = "%s has %d fields, %.1f%%";
    EXPECT_EQ(DataPrintf(format, "City", 12, 99.5), 25);
    EXPECT_EQ(printed, "City has 12 fields, 99.5%");
    EXPECT_EQ(lastFormat, format);
    EXPECT_EQ(calls, 1);
}

TEST_F(DataPrintfTest, PrintfPassesMoreArgumentsThanRegistersHold) {
    DataSetVPrintfFunction(printList);
    DataPrintf("%d %d %d %d %d %d %d %d %d %.1f", 1, 2, 3, 4, 5, 6, 7, 8, 9, 0.5);
    EXPECT_EQ(printed, "1 2 3 4 5 6 7 8 9 0.5");
}

TEST_F(DataPrintfTest, VPrintfCallsTheNarrowListFunctionAndReturnsItsResult) {
    DataSetVPrintfFunction(printList);
    EXPECT_EQ(callVPrintf("%d-%s", 7, "x"), 3);
    EXPECT_EQ(printed, "7-x");
}

TEST_F(DataPrintfTest, TheNarrowVariadicFunctionIsNeverCalled) {
    DataSetPrintfFunction(printArguments);
    EXPECT_EQ(DataPrintf("%d", 1), 0);
    EXPECT_EQ(callVPrintf("%d", 1), 0);
    EXPECT_EQ(DataWPrintf(L"%d", 1), 0);
    EXPECT_EQ(callVWPrintf(L"%d", 1), 0);
    EXPECT_EQ(calls, 0);
}

TEST_F(DataPrintfTest, WPrintfHandsTheWideVariadicFunctionItsArgumentList) {
    DataSetWPrintfFunction(printWideArguments);
    const wchar_t* format = L"%d %hs";
    EXPECT_EQ(DataWPrintf(format, 31, "C"), 42);
    EXPECT_EQ(printed, "31C");
    EXPECT_EQ(lastFormat, format);
    EXPECT_EQ(calls, 1);
}

TEST_F(DataPrintfTest, WPrintfDoesNotUseTheWideListFunction) {
    DataSetVWPrintfFunction(printWideList);
    EXPECT_EQ(DataWPrintf(L"%d %hs", 31, "C"), 0);
    EXPECT_EQ(calls, 0);
}

TEST_F(DataPrintfTest, VWPrintfReturnsZeroWhateverTheWideListFunctionReturns) {
    DataSetVWPrintfFunction(printWideList);
    const wchar_t* format = L"%d %hs";
    EXPECT_EQ(callVWPrintf(format, 31, "C"), 0);
    EXPECT_EQ(printed, "31C");
    EXPECT_EQ(lastFormat, format);
}

TEST_F(DataPrintfTest, VWPrintfDoesNotUseTheWideVariadicFunction) {
    DataSetWPrintfFunction(printWideArguments);
    EXPECT_EQ(callVWPrintf(L"%d %hs", 31, "C"), 0);
    EXPECT_EQ(calls, 0);
}

TEST_F(DataPrintfTest, NarrowAndWideOutputsDoNotMix) {
    DataSetVPrintfFunction(printList);
    EXPECT_EQ(DataWPrintf(L"%d", 1), 0);
    EXPECT_EQ(callVWPrintf(L"%d", 1), 0);
    EXPECT_EQ(calls, 0);
    DataSetVPrintfFunction(nullptr);
    DataSetWPrintfFunction(printWideArguments);
    DataSetVWPrintfFunction(printWideList);
    EXPECT_EQ(DataPrintf("%d", 1), 0);
    EXPECT_EQ(callVPrintf("%d", 1), 0);
    EXPECT_EQ(calls, 0);
}

TEST_F(DataPrintfTest, StoringNullSwitchesAnOutputOffAgain) {
    DataSetVPrintfFunction(printList);
    DataPrintf("on");
    DataSetVPrintfFunction(nullptr);
    EXPECT_EQ(DataPrintf("off"), 0);
    EXPECT_EQ(printed, "on");

    DataSetWPrintfFunction(printWideArguments);
    DataSetWPrintfFunction(nullptr);
    EXPECT_EQ(DataWPrintf(L"%d %hs", 1, "off"), 0);
    DataSetVWPrintfFunction(printWideList);
    DataSetVWPrintfFunction(nullptr);
    EXPECT_EQ(callVWPrintf(L"%d %hs", 1, "off"), 0);
    EXPECT_EQ(printed, "on");
}

TEST_F(DataPrintfTest, DebugIgnoresEveryLevel) {
    DataSetVPrintfFunction(printList);
    for (const int level : {-1, 0, 1, 1000})
        DataDebug(level);
    EXPECT_EQ(calls, 0);
}

TEST_F(DataPrintfTest, InitIOStreamsPrintsNothing) {
    DataSetVPrintfFunction(printList);
    InitIOStreams();
    EXPECT_EQ(calls, 0);
}

} // namespace
