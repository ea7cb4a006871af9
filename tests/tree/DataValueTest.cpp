#include <orbel/orbel.h>
#include <support/RecordingHandler.h>
#include <support/Text.h>
#include <support/TextList.h>
#include <support/VirtualSlot.h>

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr int hugeIndex = std::numeric_limits<int>::max();

/// A value of four texts, heard by a handler A.
class DataValueTest : public testing::Test {
protected:
    DataValueTest() {
        fill(value, {"a", "b", "c", "d"});
        value.registerHandler(&handler);
        diary.take();
    }

    /// From here on the field tells real changes.
    void detectChanges() {
        handler.setNotifyOnValueChange(1);
        value.countNotifyOnValueChange();
    }

    std::string getRange(int from, int to) {
        char stale[] = "stale";
        std::vector<char*> out{stale};
        value.getData(&out, from, to);
        std::string all;
        for (const char* text : out)
            all += text;
        return all;
    }

    Diary diary;
    DataValue value{Text("v")};
    RecordingHandler handler{diary, "A"};
};

/// A new value, heard by a handler A.
class SingleValueTest : public testing::Test {
protected:
    SingleValueTest() { value.registerHandler(&handler); }

    Diary diary;
    DataValue value{Text("v")};
    RecordingHandler handler{diary, "A"};
};

TEST_F(SingleValueTest, ANewValueHoldsASpaceAndCountsAsNotStored) {
    EXPECT_STREQ(value.getName(), "v");
    EXPECT_STREQ(value.getTypeName(), "DataValue");
    EXPECT_EQ(value.isExactType(DataValue::getClassType()), 1);
    EXPECT_EQ(value.getSize(), 1);
    EXPECT_EQ(*value.getData(0), " ");
    EXPECT_EQ(value.getDataInitialized(), 0);
    EXPECT_EQ(value.getParent(), nullptr);
    EXPECT_EQ(diary.take(), "");
}

TEST_F(SingleValueTest, CanStartWithAText) {
    std::string text = "Hello";
    DataValue hello(Text("hello"), &text);
    text = "other";
    EXPECT_EQ(hello.getSize(), 1);
    EXPECT_EQ(*hello.getData(0), "Hello");
    EXPECT_EQ(hello.getDataInitialized(), 1);
}

TEST_F(SingleValueTest, TheFirstStoreIsNotifiedAsAChange) {
    value.setData("x");
    EXPECT_EQ(value.getDataInitialized(), 1);
    EXPECT_EQ(allTexts(value), "x");
    EXPECT_EQ(diary.take(), "A changed");
}

TEST_F(SingleValueTest, EveryFormOfStoreIsNotifiedWithoutARange) {
    value.setData("x", 0);
    EXPECT_EQ(diary.take(), "A changed");
    std::string text = "y";
    value.setData(&text, 0);
    EXPECT_EQ(diary.take(), "A changed");
    value.setData(TextList({"z", "unused"}), 0, -1);
    EXPECT_EQ(diary.take(), "A changed");
    EXPECT_EQ(allTexts(value), "z");
    value.clearData();
    EXPECT_EQ(diary.take(), "A changed");
    EXPECT_EQ(allTexts(value), "");
}

TEST_F(SingleValueTest, WithoutChangeDetectionTheSameTextIsAChange) {
    value.setData("x");
    value.setData("x");
    EXPECT_EQ(diary.take(), "A changed, A changed");
}

TEST_F(SingleValueTest, WithChangeDetectionTheSameTextIsNoChange) {
    handler.setNotifyOnValueChange(1);
    value.countNotifyOnValueChange();
    value.setData("x");
    EXPECT_EQ(diary.take(), "A changed");
    value.setData("x");
    EXPECT_EQ(diary.take(), "A same");
    value.setData("X");
    value.setData("X ");
    value.setData("");
    EXPECT_EQ(diary.take(), "A changed, A changed, A changed");
    value.setData("");
    EXPECT_EQ(diary.take(), "A same");
}

TEST_F(SingleValueTest, TheFirstStoreOfASpaceIsNoChange) {
    handler.setNotifyOnValueChange(1);
    value.countNotifyOnValueChange();
    value.setData(" ");
    EXPECT_EQ(diary.take(), "A same");
    EXPECT_EQ(value.getDataInitialized(), 1);
}

TEST_F(SingleValueTest, OneDetectingHandlerDecidesForAll) {
    RecordingHandler plain(diary, "B");
    value.registerHandler(&plain);
    handler.setNotifyOnValueChange(1);
    value.countNotifyOnValueChange();
    value.setData(" ");
    EXPECT_EQ(diary.take(), "A same, B same");
}

TEST_F(SingleValueTest, LongTextsAreStoredWhole) {
    const std::string text(100'000, 'x');
    value.setData(text.c_str());
    EXPECT_EQ(*value.getData(0), text);
}

TEST_F(SingleValueTest, TextsOfEveryLengthTakeThePlaceOfOthersAsLong) {
    for (std::size_t length = 0; length <= 40; ++length) {
        const std::string old(length, '.');
        std::string text;
        for (std::size_t at = 0; at < length; ++at)
            text += static_cast<char>('A' + at);
        value.setData(old.c_str());
        value.setData(text.c_str());
        EXPECT_EQ(*value.getData(0), text);
        value.setData(static_cast<const char*>(value.getData(0)->c_str()));
        EXPECT_EQ(*value.getData(0), text);
    }
}

TEST_F(DataValueTest, VirtualOperationsKeepTheOrderOfFields) {
    EXPECT_EQ(virtualSlot(&DataValue::getSize), virtualSlot(&DataField::getSize));
    EXPECT_EQ(virtualSlot(&DataValue::copyData), 19u);
}

TEST_F(DataValueTest, SizeGrowsWithEmptyTexts) {
    value.setSize(6);
    EXPECT_EQ(allTexts(value), "a|b|c|d||");
    EXPECT_EQ(diary.take(), "");
}

TEST_F(DataValueTest, SizeNeverShrinks) {
    for (const int smaller : {3, 1, 0, -1, -hugeIndex}) {
        value.setSize(smaller);
        EXPECT_EQ(allTexts(value), "a|b|c|d");
    }
    DataValue other(Text("o"));
    other.setSize(5);
    other.setSize(2);
    EXPECT_EQ(other.getSize(), 5);
}

TEST_F(DataValueTest, SizeBeyondTheLimitChangesNothing) {
    for (const int size : {16'777'217, hugeIndex}) {
        value.setSize(size);
        EXPECT_EQ(value.getSize(), 4);
    }
}

TEST_F(DataValueTest, GrowingDoesNotCountAsStoring) {
    DataValue fresh(Text("fresh"));
    fresh.setSize(3);
    EXPECT_EQ(fresh.getDataInitialized(), 0);
    EXPECT_EQ(allTexts(fresh), " ||");
}

TEST_F(DataValueTest, GettersReachEveryIndex) {
    char* text = nullptr;
    EXPECT_TRUE(value.getData(&text, 3));
    EXPECT_STREQ(text, "d");
    EXPECT_EQ(text, value.getData(3)->c_str());
    EXPECT_EQ(*value.getData(0), "a");
    EXPECT_EQ(value.getDataVector()->size(), 4u);
    EXPECT_EQ(&value.getDataVector()->at(2), value.getData(2));
}

TEST_F(DataValueTest, GettersOutOfRangeFindNothing) {
    char mark[] = "mark";
    for (const int index : {4, 7, hugeIndex, -1, std::numeric_limits<int>::min()}) {
        char* text = mark;
        EXPECT_EQ(value.getData(index), nullptr);
        EXPECT_FALSE(value.getData(&text, index));
        EXPECT_EQ(text, mark);
    }
}

TEST_F(DataValueTest, GettingARangeReplacesWhatWasThere) {
    EXPECT_EQ(getRange(1, 2), "bc");
    EXPECT_EQ(getRange(2, 2), "c");
    EXPECT_EQ(getRange(0, 3), "abcd");
}

TEST_F(DataValueTest, MinusOneAsTheEndGetsAllTheRest) {
    EXPECT_EQ(getRange(0, -1), "abcd");
    EXPECT_EQ(getRange(2, -1), "cd");
    EXPECT_EQ(getRange(3, -1), "d");
    EXPECT_EQ(getRange(4, -1), "");
}

TEST_F(DataValueTest, GettingPastTheEndStopsAtTheLastValue) {
    EXPECT_EQ(getRange(2, 4), "cd");
    EXPECT_EQ(getRange(2, hugeIndex), "cd");
    EXPECT_EQ(getRange(4, 4), "");
    EXPECT_EQ(getRange(hugeIndex, hugeIndex), "");
    EXPECT_EQ(getRange(hugeIndex, -1), "");
}

TEST_F(DataValueTest, GettingABackwardRangeGetsNothing) {
    EXPECT_EQ(getRange(2, 1), "");
    EXPECT_EQ(getRange(0, -2), "");
}

TEST_F(DataValueTest, StoringATextStoresTheFirst) {
    value.setData("x");
    EXPECT_EQ(allTexts(value), "x|b|c|d");
    EXPECT_EQ(diary.take(), "A changed");
}

TEST_F(DataValueTest, StoringAtAnIndexNotifiesThatIndex) {
    value.setData("x", 3);
    EXPECT_EQ(diary.take(), "A changed 3-3");
    std::string text = "y";
    value.setData(&text, 1);
    EXPECT_EQ(diary.take(), "A changed 1-1");
    value.setData("z", 0);
    EXPECT_EQ(diary.take(), "A changed 0-0");
    EXPECT_EQ(allTexts(value), "z|y|c|x");
}

TEST_F(DataValueTest, StoringOutOfRangeChangesNothing) {
    std::string text = "x";
    value.setDataInitialized(0);
    for (const int index : {4, 7, hugeIndex, -1, std::numeric_limits<int>::min()}) {
        value.setData("x", index);
        value.setData(&text, index);
    }
    EXPECT_EQ(value.getDataInitialized(), 0);
    value.setDataInitialized(1);
    value.setData("x", 4);
    EXPECT_EQ(allTexts(value), "a|b|c|d");
    EXPECT_EQ(diary.take(), "");
}

TEST_F(DataValueTest, ChangeDetectionComparesTheTextAtTheIndex) {
    detectChanges();
    std::string text = "c";
    value.setData(&text, 2);
    EXPECT_EQ(diary.take(), "A same 2-2");
    value.setData("c", 1);
    EXPECT_EQ(diary.take(), "A changed 1-1");
    value.setData("c", 1);
    EXPECT_EQ(diary.take(), "A same 1-1");
    value.setData("a");
    EXPECT_EQ(diary.take(), "A same");
}

TEST_F(DataValueTest, TextsWithZeroBytesAreComparedWhole) {
    detectChanges();
    std::string text("c\0x", 3);
    value.setData(&text, 2);
    EXPECT_EQ(diary.take(), "A changed 2-2");
    EXPECT_EQ(*value.getData(2), text);
    value.setData(&text, 2);
    EXPECT_EQ(diary.take(), "A same 2-2");
    value.setData("c", 2);
    EXPECT_EQ(diary.take(), "A changed 2-2");
}

TEST_F(DataValueTest, NullTextsReadAsEmpty) {
    value.setData(static_cast<const char*>(nullptr));
    value.setData(static_cast<const char*>(nullptr), 1);
    value.setData(static_cast<std::string*>(nullptr), 2);
    EXPECT_EQ(allTexts(value), "|||d");
    std::vector<char*> list{nullptr};
    value.setData(&list, 3, -1);
    EXPECT_EQ(allTexts(value), "|||");
    EXPECT_EQ(diary.take(), "A changed, A changed 1-1, A changed 2-2, A changed 3-3");
}

TEST_F(DataValueTest, ItsOwnTextsCanBeStored) {
    value.setData(value.getData(2), 0);
    value.setData(value.getData(3)->c_str(), 3);
    value.setData(value.getData(1)->c_str());
    EXPECT_EQ(allTexts(value), "b|b|c|d");
}

TEST_F(DataValueTest, AListWithoutAnEndStoresAsManyAsItHolds) {
    value.setData(TextList({"x"}), 0, -1);
    EXPECT_EQ(allTexts(value), "x|b|c|d");
    EXPECT_EQ(diary.take(), "A changed 0-0");
    value.setData(TextList({"y", "z"}), 1, -1);
    EXPECT_EQ(allTexts(value), "x|y|z|d");
    EXPECT_EQ(diary.take(), "A changed 1-2");
}

TEST_F(DataValueTest, AListLongerThanTheValueStopsAtTheEnd) {
    value.setData(TextList({"1", "2", "3", "4", "5", "6"}), 0, -1);
    EXPECT_EQ(allTexts(value), "1|2|3|4");
    EXPECT_EQ(diary.take(), "A changed 0-3");
    value.setData(TextList({"x", "y", "z"}), 3, -1);
    EXPECT_EQ(allTexts(value), "1|2|3|x");
    EXPECT_EQ(diary.take(), "A changed 3-3");
}

TEST_F(DataValueTest, TheLastTextOfAListFillsTheRange) {
    value.setData(TextList({"x"}), 0, 3);
    EXPECT_EQ(allTexts(value), "x|x|x|x");
    EXPECT_EQ(diary.take(), "A changed 0-3");
    value.setData(TextList({"y", "z"}), 1, 3);
    EXPECT_EQ(allTexts(value), "x|y|z|z");
    EXPECT_EQ(diary.take(), "A changed 1-3");
}

TEST_F(DataValueTest, AListLongerThanTheRangeStopsWithTheRange) {
    value.setData(TextList({"x", "y", "z"}), 1, 2);
    EXPECT_EQ(allTexts(value), "a|x|y|d");
    EXPECT_EQ(diary.take(), "A changed 1-2");
}

TEST_F(DataValueTest, ARangePastTheEndIsLoweredToTheLastValue) {
    for (const int to : {4, 5, 6, 100, hugeIndex}) {
        fill(value, {"a", "b", "c", "d"});
        value.setData(TextList({"x", "y"}), 2, to);
        EXPECT_EQ(allTexts(value), "a|b|x|y");
        EXPECT_EQ(diary.take(), "A changed 2-3") << to;
    }
}

TEST_F(DataValueTest, AListFromPastTheEndNotifiesNobody) {
    value.setDataInitialized(0);
    value.setData(TextList({"x"}), 4, -1);
    EXPECT_EQ(value.getDataInitialized(), 1);
    value.setData(TextList({"x"}), 4, 5);
    value.setData(TextList({"x"}), hugeIndex, hugeIndex);
    value.setData(TextList({"x"}), hugeIndex, -1);
    EXPECT_EQ(allTexts(value), "a|b|c|d");
    EXPECT_EQ(diary.take(), "");
}

TEST_F(DataValueTest, AListFromBelowZeroStoresNothing) {
    value.setData(TextList({"x"}), -1, 3);
    value.setData(TextList({"x"}), std::numeric_limits<int>::min(), -1);
    EXPECT_EQ(allTexts(value), "a|b|c|d");
}

TEST_F(DataValueTest, ABackwardRangeStoresNothingAndNotifiesItsStart) {
    value.setData(TextList({"x"}), 2, 1);
    EXPECT_EQ(diary.take(), "A changed 2-2");
    value.setData(TextList({"x"}), 3, 0);
    EXPECT_EQ(diary.take(), "A changed 3-3");
    value.setData(TextList({"x"}), 1, -2);
    EXPECT_EQ(diary.take(), "A changed 1-1");
    EXPECT_EQ(allTexts(value), "a|b|c|d");
}

TEST_F(DataValueTest, ABackwardRangeIsNoDetectedChange) {
    detectChanges();
    value.setData(TextList({"x"}), 2, 1);
    EXPECT_EQ(diary.take(), "A same 2-2");
}

TEST_F(DataValueTest, AnEmptyListStoresNothing) {
    value.setData(TextList({}), 1, -1);
    EXPECT_EQ(diary.take(), "A changed 1-1");
    value.setData(TextList({}), 0, 3);
    EXPECT_EQ(allTexts(value), "a|b|c|d");
}

TEST_F(DataValueTest, AListIsADetectedChangeWhenOneTextDiffers) {
    detectChanges();
    value.setData(TextList({"a", "b", "c", "d"}), 0, -1);
    EXPECT_EQ(diary.take(), "A same 0-3");
    value.setData(TextList({"a", "b", "c", "x"}), 0, -1);
    EXPECT_EQ(diary.take(), "A changed 0-3");
    value.setData(TextList({"y", "b"}), 0, 1);
    EXPECT_EQ(diary.take(), "A changed 0-1");
    value.setData(TextList({"b"}), 1, 1);
    EXPECT_EQ(diary.take(), "A same 1-1");
    value.setData(TextList({"b"}), 1, 2);
    EXPECT_EQ(diary.take(), "A changed 1-2");
    value.setData(TextList({"c"}), 4, -1);
    EXPECT_EQ(diary.take(), "");
}

TEST_F(DataValueTest, ClearingNotifiesEveryIndex) {
    value.clearData();
    EXPECT_EQ(allTexts(value), "|||");
    EXPECT_EQ(diary.take(), "A changed 0-0, A changed 1-1, A changed 2-2, A changed 3-3");
    detectChanges();
    value.setData("x", 1);
    diary.take();
    value.clearData();
    EXPECT_EQ(diary.take(), "A same 0-0, A changed 1-1, A same 2-2, A same 3-3");
}

class CopyDataTest : public DataValueTest {
protected:
    CopyDataTest() { fill(source, {"1", "2", "3", "4", "5", "6"}); }

    DataValue source{Text("source")};
};

TEST_F(CopyDataTest, CopiesACountOfTextsBetweenIndices) {
    EXPECT_TRUE(value.copyData(&source, 3, 1, 2));
    EXPECT_EQ(allTexts(value), "a|4|5|d");
    EXPECT_EQ(allTexts(source), "1|2|3|4|5|6");
    EXPECT_EQ(diary.take(), "A changed 1-2");
}

TEST_F(CopyDataTest, ANegativeCountCopiesAllThatBothHave) {
    EXPECT_TRUE(value.copyData(&source, 0, 0, -1));
    EXPECT_EQ(allTexts(value), "1|2|3|4");
    EXPECT_EQ(diary.take(), "A changed 0-3");
    fill(value, {"a", "b", "c", "d"});
    EXPECT_TRUE(source.copyData(&value, 0, 0, -5));
    EXPECT_EQ(allTexts(source), "a|b|c|d|5|6");
}

TEST_F(CopyDataTest, ACountTooLargeIsLoweredToTheSmallerSize) {
    for (const int count : {4, 5, 6, 100, hugeIndex}) {
        fill(value, {"a", "b", "c", "d"});
        EXPECT_TRUE(value.copyData(&source, 0, 0, count));
        EXPECT_EQ(allTexts(value), "1|2|3|4");
        EXPECT_EQ(diary.take(), "A changed 0-3");
    }
    EXPECT_TRUE(source.copyData(&value, 0, 0, 100));
    EXPECT_EQ(allTexts(source), "1|2|3|4|5|6");
}

TEST_F(CopyDataTest, ACountOfZeroCopiesNothing) {
    value.setDataInitialized(0);
    EXPECT_TRUE(value.copyData(&source, 2, 1, 0));
    EXPECT_EQ(allTexts(value), "a|b|c|d");
    EXPECT_EQ(value.getDataInitialized(), 1);
    EXPECT_EQ(diary.take(), "A same 1-1");
}

TEST_F(CopyDataTest, TellsRealChangesEvenWithoutChangeDetection) {
    value.copyData(&source, 0, 0, -1);
    EXPECT_EQ(diary.take(), "A changed 0-3");
    value.copyData(&source, 0, 0, -1);
    EXPECT_EQ(diary.take(), "A same 0-3");
    source.setData("x", 3);
    value.copyData(&source, 0, 0, 3);
    EXPECT_EQ(diary.take(), "A same 0-2");
    value.copyData(&source, 3, 3, 1);
    EXPECT_EQ(diary.take(), "A changed 3-3");
}

TEST_F(CopyDataTest, ASingleValueIsNotifiedWithoutARange) {
    DataValue single(Text("single"));
    single.registerHandler(&handler);
    EXPECT_TRUE(single.copyData(&source, 0, 0, -1));
    EXPECT_EQ(allTexts(single), "1");
    EXPECT_EQ(single.getDataInitialized(), 1);
    EXPECT_EQ(diary.take(), "A changed");
}

TEST_F(CopyDataTest, OnlyValuesAreCopiedFrom) {
    DataField field(Text("f"));
    DataStructure structure(Text("s"));
    EXPECT_FALSE(value.copyData(&field, 0, 0, -1));
    EXPECT_FALSE(value.copyData(&structure, 0, 0, -1));
    EXPECT_FALSE(value.copyData(nullptr, 0, 0, -1));
    EXPECT_EQ(allTexts(value), "a|b|c|d");
    EXPECT_EQ(diary.take(), "");
}

TEST_F(CopyDataTest, DoesNotReachLinkTargets) {
    DataValue target(Text("t"));
    value.addTargetLink(&target);
    EXPECT_TRUE(value.copyData(&source, 0, 0, -1));
    EXPECT_EQ(target.getDataInitialized(), 0);
    EXPECT_EQ(allTexts(target), " ");
}

class ParseTest : public DataValueTest {
protected:
    std::string parsed(const char* indexSpec, const char* text) {
        fill(value, {"a", "b", "c", "d"});
        value.parse(Text(indexSpec), Text(text));
        return allTexts(value);
    }
};

TEST_F(ParseTest, WithoutAnIndexTheFirstTokenIsStored) {
    value.parse(nullptr, Text(" \t\r\n1 2 3,4"));
    EXPECT_EQ(allTexts(value), "1 2 3|b|c|d");
    EXPECT_EQ(diary.take(), "A changed");
    value.parse(nullptr, Text("\"\"x, y\"\""));
    EXPECT_EQ(*value.getData(0), "x, y");
}

TEST_F(ParseTest, AnIndexTakesOneToken) {
    EXPECT_EQ(parsed("2", "x,y"), "a|b|x|d");
    EXPECT_EQ(parsed("2]", "x"), "a|b|x|d");
    EXPECT_EQ(parsed("1-1", "x,y"), "a|x|c|d");
    EXPECT_EQ(parsed("1-", "x,y"), "a|x|c|d");
    EXPECT_EQ(diary.take(), "A changed 2-2, A changed 2-2, A changed 1-1, A changed 1-1");
}

TEST_F(ParseTest, ARangeTakesOneTokenForEachIndex) {
    EXPECT_EQ(parsed("1-2", "x,y,z"), "a|x|y|d");
    EXPECT_EQ(diary.take(), "A changed 1-2");
    EXPECT_EQ(parsed("0-3]", "w,x,y,z"), "w|x|y|z");
    EXPECT_EQ(diary.take(), "A changed 0-3");
}

TEST_F(ParseTest, RangesTakeTheirTokensInTurn) {
    EXPECT_EQ(parsed("3,0-1,2", "w,x,y,z"), "x|y|z|w");
    EXPECT_EQ(diary.take(), "A changed 3-3, A changed 0-1, A changed 2-2");
}

TEST_F(ParseTest, StopsWhenTheTokensRunOut) {
    EXPECT_EQ(parsed("0,1,2", "x"), "x|b|c|d");
    EXPECT_EQ(parsed("0,1,2", "x,"), "x|b|c|d");
    EXPECT_EQ(parsed("0,2-3", "x"), "x|b|c|d");
    EXPECT_EQ(parsed("0", ""), "a|b|c|d");
    EXPECT_EQ(parsed("0", " \n"), "a|b|c|d");
}

TEST_F(ParseTest, TheLastTokenFillsARange) {
    EXPECT_EQ(parsed("0-3", "x,y"), "x|y|y|y");
    EXPECT_EQ(diary.take(), "A changed 0-3");
    EXPECT_EQ(parsed("0-3", "x,"), "x|x|x|x");
}

TEST_F(ParseTest, StopsAtARangeWithoutAStart) {
    EXPECT_EQ(parsed("x", "1"), "a|b|c|d");
    EXPECT_EQ(parsed("", "1"), "a|b|c|d");
    EXPECT_EQ(parsed("-2", "1"), "a|b|c|d");
    EXPECT_EQ(parsed("0,x,1", "1,2,3"), "1|b|c|d");
    EXPECT_EQ(parsed("0,,1", "1,2,3"), "1|b|c|d");
}

TEST_F(ParseTest, ABackwardRangeStoresNothing) {
    EXPECT_EQ(parsed("3-1", "x,y,z"), "a|b|c|d");
}

TEST_F(ParseTest, HugeRangesStopAtTheLastValue) {
    EXPECT_EQ(parsed("0-2147483647", "x,y"), "x|y|y|y");
    EXPECT_EQ(diary.take(), "A changed 0-3");
    EXPECT_EQ(parsed("2-99999999999999999999", "x"), "a|b|x|x");
    EXPECT_EQ(diary.take(), "A changed 2-3");
    EXPECT_EQ(parsed("2147483647", "x"), "a|b|c|d");
    EXPECT_EQ(parsed("99999999999-99999999999", "x"), "a|b|c|d");
    EXPECT_EQ(parsed("2000000000-2147483647", "x,y"), "a|b|c|d");
    EXPECT_EQ(diary.take(), "");
}

TEST_F(ParseTest, IndicesPastTheEndUseUpTheirTokens) {
    EXPECT_EQ(parsed("7,1", "x,y"), "a|y|c|d");
}

TEST_F(ParseTest, DoubledQuotesHoldCommas) {
    EXPECT_EQ(parsed("0-1", "\"\"1,2\"\",3"), "1,2|3|c|d");
    EXPECT_EQ(parsed("0-2", "\"\"say \"hi\"\"\",\"\"\"\",z"), "say \"hi\"||z|d");
}

TEST_F(ParseTest, EmptyTokensAreStored) {
    EXPECT_EQ(parsed("0-2", "x,,z"), "x||z|d");
    EXPECT_EQ(parsed("1", ",x"), "a||c|d");
}

TEST_F(ParseTest, BlanksBehindATokenBelongToIt) {
    EXPECT_EQ(parsed("0-1", " x ,\n y "), "x |y |c|d");
}

class CloneTest : public DataValueTest {
protected:
    std::unique_ptr<DataField> origin = makeOrigin();
    std::unique_ptr<DataField> clone{origin->clone()};

private:
    std::unique_ptr<DataField> makeOrigin() {
        auto made = std::make_unique<DataValue>(Text("origin"));
        fill(*made, {"1", "2"});
        made->registerHandler(&handler);
        diary.take();
        return made;
    }
};

TEST_F(CloneTest, HasTheClassAndNameOfItsOrigin) {
    EXPECT_STREQ(clone->getTypeName(), "DataValue");
    EXPECT_STREQ(clone->getName(), "origin");
    EXPECT_EQ(clone->isExactType(DataValue::getClassType()), 1);
    EXPECT_EQ(clone->getDataInitialized(), 1);
}

TEST_F(CloneTest, SharesTheValues) {
    EXPECT_EQ(clone->getDataVector(), origin->getDataVector());
    clone->setData("x", 1);
    EXPECT_EQ(allTexts(*origin), "1|x");
    origin->setSize(3);
    EXPECT_EQ(clone->getSize(), 3);
}

TEST_F(CloneTest, SharesTheHandlers) {
    EXPECT_EQ(clone->getNumHandlers(), 1);
    clone->setData("x");
    EXPECT_EQ(diary.take(), "A changed");
    EXPECT_EQ(handler.lastField(), clone.get());
    origin->setData("y");
    EXPECT_EQ(handler.lastField(), origin.get());

    RecordingHandler later(diary, "B");
    clone->registerHandler(&later);
    EXPECT_EQ(origin->getNumHandlers(), 2);
    diary.take();
    origin->setData("z", 1);
    EXPECT_EQ(diary.take(), "A changed 1-1, B changed 1-1");
    origin->unregisterHandler(&handler);
    EXPECT_EQ(clone->getNumHandlers(), 1);
}

TEST_F(CloneTest, HasCopiesOfTheCountsParentAndFlags) {
    DataStructure parent(Text("parent"));
    int owner = 0;
    origin->ref(&owner, &parent);
    origin->ref(&owner, &parent);
    origin->setParent(&parent, 3);
    const std::unique_ptr<DataField> copy(origin->clone());
    EXPECT_EQ(copy->getRef(), 1);
    EXPECT_EQ(copy->getRefCalls(), 2);
    EXPECT_EQ(copy->getParent(), &parent);
    EXPECT_EQ(copy->getParentInstance(), 3);
    EXPECT_EQ(copy->unref(&owner, &parent), 0);
    copy->setParent(nullptr, 0);
    copy->setDataInitialized(0);
    copy->setName(Text("copy"));
    EXPECT_EQ(origin->getRef(), 1);
    EXPECT_EQ(origin->getParent(), &parent);
    EXPECT_EQ(origin->getDataInitialized(), 1);
    EXPECT_STREQ(origin->getName(), "origin");
}

TEST_F(CloneTest, OutlivesItsOrigin) {
    origin.reset();
    EXPECT_EQ(allTexts(*clone), "1|2");
    EXPECT_EQ(clone->getNumHandlers(), 0);
    EXPECT_EQ(handler.getField(), nullptr);
    clone->setData("x");
    clone->registerHandler(&handler);
    EXPECT_EQ(diary.take(), "A same 0-1");
    EXPECT_EQ(allTexts(*clone), "x|2");
}

TEST_F(CloneTest, CanDieBeforeItsOrigin) {
    clone.reset();
    EXPECT_EQ(allTexts(*origin), "1|2");
    EXPECT_EQ(origin->getNumHandlers(), 0);
    EXPECT_EQ(handler.getField(), nullptr);
    origin->setData("x");
    EXPECT_EQ(diary.take(), "");
    EXPECT_EQ(allTexts(*origin), "x|2");
}

TEST_F(CloneTest, AHandlerMayDieBeforeEither) {
    {
        RecordingHandler brief(diary, "B");
        clone->registerHandler(&brief);
        RecordingHandler briefer(diary, "C");
        origin->registerHandler(&briefer);
        EXPECT_EQ(clone->getNumHandlers(), 3);
        diary.take();
    }
    EXPECT_EQ(clone->getNumHandlers(), 1);
    EXPECT_EQ(origin->getNumHandlers(), 1);
    clone->setData("x");
    EXPECT_EQ(diary.take(), "A changed");
}

TEST_F(CloneTest, ChangeDetectionIsShared) {
    RecordingHandler detecting(diary, "B");
    detecting.setNotifyOnValueChange(1);
    clone->registerHandler(&detecting);
    diary.take();
    EXPECT_EQ(origin->getCountNotifyOnValueChange(), 1);
    origin->setData("1");
    EXPECT_EQ(diary.take(), "A same, B same");
}

TEST_F(CloneTest, ClonesOfClonesShareToo) {
    const std::unique_ptr<DataField> second(clone->clone());
    origin.reset();
    clone.reset();
    EXPECT_EQ(allTexts(*second), "1|2");
}

TEST_F(CloneTest, SharesTheLinkTargets) {
    DataValue first(Text("first"));
    DataValue second(Text("second"));
    origin->addTargetLink(&first);
    clone->addTargetLink(&second);
    clone->setData("x");
    EXPECT_EQ(allTexts(first), "x");
    origin->setData("y");
    EXPECT_EQ(allTexts(second), "y");
    EXPECT_EQ(first.getLinkSource(), origin.get());
    EXPECT_EQ(second.getLinkSource(), clone.get());
}

TEST_F(CloneTest, SharedLinksEndWithTheFirstToDie) {
    DataValue target(Text("target"));
    origin->addTargetLink(&target);
    clone.reset();
    EXPECT_EQ(target.getLinkSource(), nullptr);
    origin->setData("x");
    EXPECT_EQ(allTexts(target), " ");

    clone.reset(origin->clone());
    clone->addTargetLink(&target);
    clone.reset();
    EXPECT_EQ(target.getLinkSource(), nullptr);

    clone.reset(origin->clone());
    origin->addTargetLink(&target);
    origin.reset();
    EXPECT_EQ(target.getLinkSource(), nullptr);
    clone->setData("y");
    EXPECT_EQ(allTexts(target), " ");
}

TEST_F(CloneTest, ALinkTargetMayDieBeforeEither) {
    auto target = std::make_unique<DataValue>(Text("target"));
    origin->addTargetLink(target.get());
    target.reset();
    clone->setData("x");
    origin->setData("y");
    EXPECT_EQ(allTexts(*clone), "y|2");
}

TEST_F(CloneTest, NamesTheLinkSourceButIsNotWrittenByIt) {
    DataValue source(Text("source"));
    source.addTargetLink(origin.get());
    const std::unique_ptr<DataField> copy(origin->clone());
    EXPECT_EQ(copy->getLinkSource(), &source);
    diary.take();
    source.setData("x");
    EXPECT_EQ(diary.take(), "A changed");
    EXPECT_EQ(handler.lastField(), origin.get());
    EXPECT_EQ(allTexts(*copy), "x|2");
}

TEST_F(CloneTest, TheLinkSourceMayDieFirst) {
    auto source = std::make_unique<DataValue>(Text("source"));
    source->addTargetLink(origin.get());
    const std::unique_ptr<DataField> copy(origin->clone());
    source.reset();
    EXPECT_EQ(origin->getLinkSource(), nullptr);
    EXPECT_EQ(copy->getLinkSource(), nullptr);
    EXPECT_FALSE(copy->findLinkSource(origin.get()));
}

// A clone of a link target kept its dead source when a clone of the source had died before.
TEST_F(CloneTest, TheLinkSourceMayDieAfterACloneOfIt) {
    auto source = std::make_unique<DataValue>(Text("source"));
    source->addTargetLink(origin.get());
    const std::unique_ptr<DataField> copy(origin->clone());
    delete source->clone();
    EXPECT_EQ(copy->getLinkSource(), source.get());
    source.reset();
    EXPECT_EQ(copy->getLinkSource(), nullptr);
}

TEST_F(CloneTest, MayDieBeforeTheLinkSource) {
    DataValue source(Text("source"));
    source.addTargetLink(origin.get());
    clone.reset(origin->clone());
    clone.reset();
    origin.reset();
    source.setData("x");
    EXPECT_EQ(allTexts(source), "x");
}

/// Turns every text into capitals, as a plug-in's own class of field may.
class CapitalsValue : public DataValue {
public:
    using DataValue::DataValue;
    using DataValue::setData;

    void setData(const char* text) override { DataValue::setData(capitals(text).c_str()); }
    void setData(const char* text, int index) override { DataValue::setData(capitals(text).c_str(), index); }

private:
    static std::string capitals(std::string text) {
        for (char& letter : text)
            if (letter >= 'a' && letter <= 'z')
                letter = static_cast<char>(letter - 'a' + 'A');
        return text;
    }
};

TEST(OverriddenValueTest, ClearParseAndLinksReachTheOverride) {
    CapitalsValue value(Text("v"));
    value.parse(nullptr, Text("abc"));
    EXPECT_EQ(allTexts(value), "ABC");
    value.parse(Text("0"), Text("def"));
    EXPECT_EQ(allTexts(value), "DEF");
    DataValue source(Text("source"));
    source.addTargetLink(&value);
    source.setData("ghi");
    EXPECT_EQ(allTexts(value), "GHI");
    EXPECT_EQ(allTexts(source), "ghi");
    source.setData("jkl", 0);
    EXPECT_EQ(allTexts(value), "JKL");
}

} // namespace

// Dumping a value whose vector a client had emptied read from null.
TEST(DataValueOfNoTexts, IsAnEmptyValueThatTakesTextsAgain) {
    DataValue value(Text("value"));
    std::vector<std::string>* texts = value.getDataVector();
    texts->clear();
    std::ostringstream os;
    value.dump(os, -1, -1, 1);
    value.dumpXML(os);
    EXPECT_NE(os.str().find("<value></value>"), std::string::npos);
    EXPECT_EQ(value.getSize(), 0);
    EXPECT_EQ(value.getData(0), nullptr);
    value.clearData();
    EXPECT_TRUE(value.copyData(&value, 0, 0, -1));
    value.setData("ignored", 0);
    EXPECT_EQ(value.getSize(), 0);
    value.setData("text");
    EXPECT_EQ(value.getSize(), 1);
    EXPECT_EQ(*value.getData(0), "text");
    EXPECT_EQ(value.getDataVector(), texts);
}

TEST(PlainValue, HasNoTextsBeforeItsFirst) {
    DataValue value(Text("value"));
    value.setData("one");
    char before[] = "before";
    std::vector<char*> texts = {before};
    value.getData(&texts, -1, -1);
    EXPECT_TRUE(texts.empty());
    value.getData(&texts, 0, 7);
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_STREQ(texts[0], "one");
}

TEST(PlainValue, KeepsEverythingWhenItIsAssignedToItself) {
    Diary diary;
    RecordingHandler handler(diary, "A");
    DataStructure scene(Text("scene"));
    DataValue value(Text("value"));
    scene.addField(&value, 0);
    value.setData("one");
    value.registerHandler(&handler);
    diary.take();
    DataValue& same = value;
    value = same;
    static_cast<DataField&>(value) = same;
    static_cast<DataBaseType&>(value) = same;
    EXPECT_STREQ(value.getName(), "value");
    EXPECT_EQ(*value.getData(0), "one");
    EXPECT_EQ(value.getParent(), &scene);
    EXPECT_EQ(value.getRef(), 1);
    EXPECT_EQ(value.getNumHandlers(), 1);
    EXPECT_EQ(diary.take(), "");
    value.setData("two");
    EXPECT_EQ(diary.take(), "A changed");
}
