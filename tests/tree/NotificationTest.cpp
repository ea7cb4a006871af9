#include <orbel/orbel.h>

#include <support/RecordingHandler.h>
#include <support/Text.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

class NotificationTest : public testing::Test {
protected:
    void makeFive() {
        five.setSize(5);
        five.setData("0");
        five.registerHandler(&a);
        diary.take();
    }

    void askForChanges(DataHandler& handler) { handler.setNotifyOnValueChange(1); }

    /// The range set, from literals.
    void set(DataField& field, std::vector<std::string> texts, int from, int to) {
        std::vector<char*> values;
        for (std::string& text : texts)
            values.push_back(text.data());
        field.setData(&values, from, to);
    }

    Diary diary;
    DataValue value{Text("value")};
    DataValue five{Text("five")};
    RecordingHandler a{diary, "A"};
    RecordingHandler b{diary, "B"};
    RecordingHandler c{diary, "C"};
};

TEST_F(NotificationTest, NothingIsToldBeforeTheFirstStore) {
    value.registerHandler(&a);
    value.fireHandlers(true);
    value.fireHandlers(true, 0, 0);
    EXPECT_EQ(diary.take(), "");
    value.setData("1");
    EXPECT_EQ(diary.take(), "A changed");
    EXPECT_EQ(a.lastField(), &value);
}

TEST_F(NotificationTest, TypeChangesAreToldAlsoBeforeTheFirstStore) {
    value.registerHandler(&a);
    value.registerHandler(&b);
    value.fireOnTypeChange(Text("City"));
    EXPECT_EQ(diary.take(), "A type City, B type City");
}

TEST_F(NotificationTest, HandlerSeesTheStoredText) {
    value.registerHandler(&a);
    std::string seen;
    a.onceThen([&] { seen = *value.getData(0); });
    value.setData("new");
    EXPECT_EQ(seen, "new");
}

TEST_F(NotificationTest, JoiningIsToldToAll) {
    value.setData("1");
    value.registerHandler(&a);
    EXPECT_EQ(diary.take(), "A same");
    value.registerHandler(&b);
    EXPECT_EQ(diary.take(), "A same, B same");
    EXPECT_EQ(value.getNumHandlers(), 2);
}

TEST_F(NotificationTest, JoiningAFieldOfSeveralValuesTellsTheWholeRange) {
    five.setSize(5);
    five.setData("1");
    five.registerHandler(&a);
    EXPECT_EQ(diary.take(), "A same 0-4");
}

TEST_F(NotificationTest, JoiningAFieldWithoutValuesTellsFromZeroToZero) {
    DataField field(Text("empty"));
    field.setDataInitialized(1);
    field.registerHandler(&a);
    EXPECT_EQ(diary.take(), "A same 0-0");
}

TEST_F(NotificationTest, JoiningAStructureTellsNoRange) {
    DataStructure structure(Text("scene"));
    structure.setDataInitialized(1);
    static_cast<DataField&>(structure).registerHandler(&a);
    EXPECT_EQ(diary.take(), "A same");
}

TEST_F(NotificationTest, JoiningTwiceIsToldOnceButRecounts) {
    value.setData("1");
    value.registerHandler(&a);
    diary.take();
    askForChanges(a);
    value.registerHandler(&a);
    EXPECT_EQ(diary.take(), "");
    EXPECT_EQ(value.getNumHandlers(), 1);
    EXPECT_EQ(value.getCountNotifyOnValueChange(), 1);
}

TEST_F(NotificationTest, SingleIndexIsToldAsARangeOfOne) {
    makeFive();
    five.setData("x", 3);
    EXPECT_EQ(diary.take(), "A changed 3-3");
    five.setData("x", 0);
    EXPECT_EQ(diary.take(), "A changed 0-0");
    std::string text = "y";
    five.setData(&text, 4);
    EXPECT_EQ(diary.take(), "A changed 4-4");
}

TEST_F(NotificationTest, SetWithoutIndexTellsNoRange) {
    makeFive();
    five.setData("x");
    EXPECT_EQ(diary.take(), "A changed");
}

TEST_F(NotificationTest, IndexOfASingleValueTellsNoRange) {
    value.registerHandler(&a);
    value.setData("x", 0);
    EXPECT_EQ(diary.take(), "A changed");
    set(value, {"y"}, 0, -1);
    EXPECT_EQ(diary.take(), "A changed");
}

TEST_F(NotificationTest, IndexBeyondTheSizeTellsNothing) {
    makeFive();
    std::string text = "x";
    five.setData("x", 5);
    five.setData(&text, 7);
    set(five, {"x"}, 5, 6);
    EXPECT_EQ(diary.take(), "");
}

TEST_F(NotificationTest, RangeIsToldAsStored) {
    makeFive();
    set(five, {"x", "y", "z"}, 1, -1);
    EXPECT_EQ(diary.take(), "A changed 1-3");
    set(five, {"x"}, 0, 3);
    EXPECT_EQ(diary.take(), "A changed 0-3");
    set(five, {"x", "y"}, 4, -1);
    EXPECT_EQ(diary.take(), "A changed 4-4");
    set(five, {"x"}, 1, 99);
    EXPECT_EQ(diary.take(), "A changed 1-4");
}

TEST_F(NotificationTest, ReversedRangeIsToldButStoresNothing) {
    makeFive();
    set(five, {"x"}, 2, 1);
    EXPECT_EQ(diary.take(), "A changed 2-2");
    EXPECT_EQ(*five.getData(1), "");
    EXPECT_EQ(*five.getData(2), "");

    askForChanges(a);
    five.countNotifyOnValueChange();
    set(five, {"x"}, 2, 1);
    EXPECT_EQ(diary.take(), "A same 2-2");
}

TEST_F(NotificationTest, EndOfARangeIsRaisedToItsStart) {
    makeFive();
    five.fireHandlers(false, 4, 1);
    EXPECT_EQ(diary.take(), "A same 4-4");
    five.fireHandlers(true, 1, 3);
    EXPECT_EQ(diary.take(), "A changed 1-3");
    five.fireHandlers(true);
    EXPECT_EQ(diary.take(), "A changed");
}

TEST_F(NotificationTest, ClearingTellsEachValue) {
    value.registerHandler(&a);
    value.clearData();
    EXPECT_EQ(diary.take(), "A changed");
    value.unregisterHandler(&a);

    five.setSize(3);
    five.registerHandler(&a);
    five.clearData();
    EXPECT_EQ(diary.take(), "A changed 0-0, A changed 1-1, A changed 2-2");
}

TEST_F(NotificationTest, CopyingTellsTheTargetRangeAndComparesAlways) {
    makeFive();
    DataValue source(Text("source"));
    source.setSize(5);
    set(source, {"p", "q"}, 0, 1);
    EXPECT_TRUE(five.copyData(&source, 0, 1, 2));
    EXPECT_EQ(diary.take(), "A changed 1-2");
    EXPECT_TRUE(five.copyData(&source, 0, 1, 2));
    EXPECT_EQ(diary.take(), "A same 1-2");
    EXPECT_TRUE(five.copyData(&source, 0, 0, -1));
    EXPECT_EQ(diary.take(), "A changed 0-4");
}

TEST_F(NotificationTest, WithoutChangeDetectionEveryStoreIsAChange) {
    value.registerHandler(&a);
    value.setData("1");
    value.setData("1");
    EXPECT_EQ(diary.take(), "A changed, A changed");
}

TEST_F(NotificationTest, OneHandlerAskingForChangesIsEnoughForAll) {
    askForChanges(b);
    value.setData("1");
    value.registerHandler(&a);
    value.registerHandler(&b);
    diary.take();
    value.setData("1");
    EXPECT_EQ(diary.take(), "A same, B same");
    value.setData("1", 0);
    EXPECT_EQ(diary.take(), "A same, B same");
    value.setData("2");
    EXPECT_EQ(diary.take(), "A changed, B changed");
    value.unregisterHandler(&b);
    value.setData("2");
    EXPECT_EQ(diary.take(), "A changed");
}

TEST_F(NotificationTest, ChangeIsExactToTheByte) {
    askForChanges(a);
    value.setData("Text");
    value.registerHandler(&a);
    diary.take();
    for (const char* text : {"text", "text ", "", ""})
        value.setData(text);
    EXPECT_EQ(diary.take(), "A changed, A changed, A changed, A same");
}

TEST_F(NotificationTest, OneDifferenceMakesARangeChanged) {
    askForChanges(a);
    makeFive();
    set(five, {"x", "y", "z"}, 1, 3);
    EXPECT_EQ(diary.take(), "A changed 1-3");
    set(five, {"x", "y", "z"}, 1, 3);
    EXPECT_EQ(diary.take(), "A same 1-3");
    set(five, {"x", "other", "z"}, 1, 3);
    EXPECT_EQ(diary.take(), "A changed 1-3");
    five.setData("z", 3);
    EXPECT_EQ(diary.take(), "A same 3-3");
}

TEST_F(NotificationTest, NotifyCountFollowsTheList) {
    askForChanges(a);
    askForChanges(b);
    for (DataHandler* handler : {&a, &b, &c})
        value.registerHandler(handler);
    EXPECT_EQ(value.getCountNotifyOnValueChange(), 2);
    value.unregisterHandler(&a);
    EXPECT_EQ(value.getCountNotifyOnValueChange(), 1);
    value.unregisterAllHandlers();
    EXPECT_EQ(value.getCountNotifyOnValueChange(), 0);
}

TEST_F(NotificationTest, FlagSetLaterCountsFromTheNextRecount) {
    value.registerHandler(&a);
    askForChanges(a);
    EXPECT_EQ(value.getCountNotifyOnValueChange(), 0);
    value.countNotifyOnValueChange();
    EXPECT_EQ(value.getCountNotifyOnValueChange(), 1);
}

TEST_F(NotificationTest, HandlersAreFoundByNameAndPosition) {
    RecordingHandler second(diary, "A");
    for (DataHandler* handler : {&b, &a, &second})
        value.registerHandler(handler);
    EXPECT_EQ(value.getHandlerByName(Text("A")), &a);
    EXPECT_EQ(value.getHandlerByName(Text("B")), &b);
    EXPECT_EQ(value.getHandlerByName(Text("a")), nullptr);
    EXPECT_EQ(value.getHandlerByName(Text("")), nullptr);
    EXPECT_EQ(value.getHandlerByID(0), &b);
    EXPECT_EQ(value.getHandlerByID(2), &second);
    EXPECT_EQ(value.getHandlerByID(-1), nullptr);
    EXPECT_EQ(value.getHandlerByID(value.getNumHandlers()), nullptr);
}

TEST_F(NotificationTest, FieldWithoutHandlersAnswersNull) {
    EXPECT_EQ(value.getNumHandlers(), 0);
    EXPECT_EQ(value.getHandlerByID(0), nullptr);
    EXPECT_EQ(value.getHandlerByName(Text("A")), nullptr);
}

TEST_F(NotificationTest, UnregisteredHandlerHearsNoMore) {
    value.registerHandler(&a);
    value.registerHandler(&b);
    value.unregisterHandler(&a);
    EXPECT_EQ(a.getField(), nullptr);
    EXPECT_EQ(b.getField(), &value);
    value.setData("1");
    EXPECT_EQ(diary.take(), "B changed");
}

TEST_F(NotificationTest, UnregisteringAStrangerChangesNothing) {
    value.registerHandler(&a);
    five.unregisterHandler(&a);
    EXPECT_EQ(a.getField(), &value);
    EXPECT_EQ(value.getNumHandlers(), 1);
}

TEST_F(NotificationTest, UnregisteringAllFreesAll) {
    value.registerHandler(&a);
    value.registerHandler(&b);
    value.unregisterAllHandlers();
    EXPECT_EQ(value.getNumHandlers(), 0);
    EXPECT_EQ(a.getField(), nullptr);
    EXPECT_EQ(b.getField(), nullptr);
}

TEST_F(NotificationTest, DestroyedFieldFreesItsHandlers) {
    auto field = std::make_unique<DataValue>(Text("x"));
    field->registerHandler(&a);
    field.reset();
    EXPECT_EQ(a.getField(), nullptr);
}

TEST_F(NotificationTest, HandlerOnTwoFieldsHearsBoth) {
    value.registerHandler(&a);
    five.registerHandler(&a);
    EXPECT_EQ(a.getField(), &five);
    value.setData("1");
    EXPECT_EQ(a.lastField(), &value);
    five.setData("1");
    EXPECT_EQ(a.lastField(), &five);
    EXPECT_EQ(diary.take(), "A changed, A changed");

    value.unregisterHandler(&a);
    five.setData("2");
    EXPECT_EQ(diary.take(), "A changed");
}

TEST_F(NotificationTest, HandlerOnTwoFieldsIsTakenOffBothWhenDestroyed) {
    auto handler = std::make_unique<RecordingHandler>(diary, "T");
    value.registerHandler(handler.get());
    five.registerHandler(handler.get());
    handler.reset();
    EXPECT_EQ(value.getNumHandlers(), 0);
    EXPECT_EQ(five.getNumHandlers(), 0);
    value.setData("1");
    five.setData("1");
    EXPECT_EQ(diary.take(), "");
}

TEST_F(NotificationTest, HandlerOnTwoFieldsSurvivesOneOfThem) {
    auto handler = std::make_unique<RecordingHandler>(diary, "T");
    auto first = std::make_unique<DataValue>(Text("first"));
    first->registerHandler(handler.get());
    value.registerHandler(handler.get());
    first.reset();
    value.setData("1");
    EXPECT_EQ(diary.take(), "T changed");
    handler.reset();
    EXPECT_EQ(value.getNumHandlers(), 0);
}

TEST_F(NotificationTest, CloneSharesTheHandlers) {
    value.setData("1");
    value.registerHandler(&a);
    diary.take();
    std::unique_ptr<DataField> clone(value.clone());
    EXPECT_EQ(clone->getNumHandlers(), 1);
    clone->setData("2");
    EXPECT_EQ(a.lastField(), clone.get());
    EXPECT_EQ(*value.getData(0), "2");
    value.setData("3");
    EXPECT_EQ(a.lastField(), &value);
    EXPECT_EQ(diary.take(), "A changed, A changed");

    clone->registerHandler(&b);
    EXPECT_EQ(value.getNumHandlers(), 2);
}

TEST_F(NotificationTest, FirstOfACloneAndItsOriginToDieFreesTheHandlers) {
    for (const bool cloneFirst : {true, false}) {
        auto origin = std::make_unique<DataValue>(Text("x"));
        origin->registerHandler(&a);
        std::unique_ptr<DataField> clone(origin->clone());
        std::unique_ptr<DataField> survivor = std::move(clone);
        if (cloneFirst)
            survivor.reset();
        else
            origin.reset();
        EXPECT_EQ(a.getField(), nullptr);
        DataField& left = cloneFirst ? *origin : *survivor;
        EXPECT_EQ(left.getNumHandlers(), 0);
        left.setData("1");
        EXPECT_EQ(diary.take(), "");
    }
}

TEST_F(NotificationTest, SharedHandlerMayDieFirst) {
    auto handler = std::make_unique<RecordingHandler>(diary, "T");
    value.registerHandler(handler.get());
    std::unique_ptr<DataField> clone(value.clone());
    handler.reset();
    EXPECT_EQ(value.getNumHandlers(), 0);
    EXPECT_EQ(clone->getNumHandlers(), 0);
}

TEST_F(NotificationTest, LinkTargetIsToldBeforeItsSource) {
    DataValue target(Text("target"));
    value.addTargetLink(&target);
    value.registerHandler(&a);
    target.registerHandler(&b);
    value.setData("1");
    EXPECT_EQ(diary.take(), "B changed, A changed");
    target.setData("2");
    EXPECT_EQ(diary.take(), "B changed");
}

} // namespace
