#include <orbel/tree/FieldHandlers.h>

#include <orbel/orbel.h>
#include <orbel/tree/HandlerList.h>

#include <support/Text.h>

#include <gtest/gtest.h>

namespace {

/// The observers of a field, beside the field.
class Observed : public testing::Test {
protected:
    ~Observed() override { handlers.removeAll(field); }

    DataValue field{Text("field")};
    DataHandler a{Text("A")};
    DataHandler b{Text("B")};
    FieldHandlers handlers;
};

} // namespace

TEST_F(Observed, NobodyAtFirst) {
    EXPECT_TRUE(handlers.empty());
    EXPECT_EQ(handlers.size(), 0);
    EXPECT_EQ(handlers.single(), nullptr);
    EXPECT_EQ(handlers.list(), nullptr);
    EXPECT_EQ(handlers.notifyCount(), 0);
    EXPECT_TRUE(handlers.isSimple());
    EXPECT_FALSE(handlers.remove(field, &a));
}

TEST_F(Observed, OneStandsInTheWord) {
    handlers.append(field, &a);
    EXPECT_EQ(handlers.size(), 1);
    EXPECT_EQ(handlers.single(), &a);
    EXPECT_EQ(handlers.list(), nullptr);
    EXPECT_TRUE(handlers.contains(a));
    EXPECT_FALSE(handlers.contains(b));
    EXPECT_STREQ(handlers.nameAt(0), "A");
    EXPECT_EQ(handlers.at(field, 0), &a);
    EXPECT_EQ(handlers.list(), nullptr);
    EXPECT_TRUE(handlers.remove(field, &a));
    EXPECT_FALSE(handlers.contains(a));
    EXPECT_TRUE(handlers.empty());
}

TEST_F(Observed, AMarkerInFrontOfOneStandsInTheWordToo) {
    handlers.appendMarker(field);
    handlers.append(field, &a);
    EXPECT_EQ(handlers.size(), 2);
    EXPECT_EQ(handlers.list(), nullptr);
    EXPECT_TRUE(handlers.hasMarkerInFront());
    EXPECT_STREQ(handlers.nameAt(0), "DUMMY");
    EXPECT_STREQ(handlers.nameAt(1), "A");
    EXPECT_EQ(handlers.at(field, 1), &a);
    EXPECT_EQ(handlers.list(), nullptr);
    EXPECT_TRUE(handlers.remove(field, &a));
    EXPECT_EQ(handlers.size(), 1);
    EXPECT_EQ(handlers.single(), nullptr);
}

TEST_F(Observed, AskingForTheMarkerMakesIt) {
    handlers.appendMarker(field);
    handlers.append(field, &a);
    DataHandler* marker = handlers.at(field, 0);
    ASSERT_NE(handlers.list(), nullptr);
    EXPECT_STREQ(marker->getName(), "DUMMY");
    EXPECT_EQ(marker->getField(), &field);
    EXPECT_EQ(handlers.at(field, 0), marker);
    EXPECT_EQ(handlers.at(field, 1), &a);
    EXPECT_TRUE(handlers.contains(a));
    EXPECT_TRUE(handlers.contains(*marker));
    EXPECT_FALSE(handlers.hasMarkerInFront());
}

TEST_F(Observed, AMarkerBehindAnotherComesOntoAList) {
    handlers.append(field, &a);
    handlers.appendMarker(field);
    ASSERT_NE(handlers.list(), nullptr);
    EXPECT_EQ(handlers.size(), 2);
    EXPECT_STREQ(handlers.nameAt(0), "A");
    EXPECT_STREQ(handlers.nameAt(1), "DUMMY");
    EXPECT_TRUE(handlers.contains(a));
}

TEST_F(Observed, TwoComeOntoAListAndStayThere) {
    handlers.append(field, &a);
    handlers.append(field, &b);
    ASSERT_NE(handlers.list(), nullptr);
    EXPECT_EQ(handlers.single(), nullptr);
    EXPECT_FALSE(handlers.isSimple());
    EXPECT_EQ(handlers.at(field, 0), &a);
    EXPECT_EQ(handlers.at(field, 1), &b);
    EXPECT_TRUE(handlers.remove(field, &a));
    EXPECT_TRUE(handlers.remove(field, &b));
    EXPECT_FALSE(handlers.remove(field, &b));
    EXPECT_EQ(handlers.size(), 0);
}

TEST_F(Observed, CountOfThoseWhoAskChangesWithTheNextRecount) {
    for (const bool onList : {false, true}) {
        handlers.append(field, &a);
        if (onList)
            handlers.append(field, &b);
        a.setNotifyOnValueChange(1);
        EXPECT_EQ(handlers.notifyCount(), 0);
        handlers.recount();
        EXPECT_EQ(handlers.notifyCount(), 1);
        EXPECT_FALSE(handlers.isSimple());
        a.setNotifyOnValueChange(0);
        EXPECT_EQ(handlers.notifyCount(), 1);
        handlers.recount();
        EXPECT_EQ(handlers.notifyCount(), 0);
        handlers.removeAll(field);
    }
}

TEST_F(Observed, TheCountGoesAlongOntoTheList) {
    a.setNotifyOnValueChange(1);
    handlers.append(field, &a);
    handlers.recount();
    a.setNotifyOnValueChange(0);
    handlers.append(field, &b);
    EXPECT_EQ(handlers.notifyCount(), 1);
    handlers.recount();
    EXPECT_EQ(handlers.notifyCount(), 0);
    a.setNotifyOnValueChange(1);
    handlers.recount();
    EXPECT_EQ(handlers.notifyCount(), 1);
}

TEST_F(Observed, ADestroyedHandlerIsTakenOff) {
    for (const bool withAnother : {false, true}) {
        DataValue value(Text("value"));
        if (withAnother)
            value.registerHandler(&a);
        {
            DataHandler passing(Text("P"));
            value.registerHandler(&passing);
        }
        EXPECT_EQ(value.getNumHandlers(), withAnother ? 1 : 0);
    }
}

TEST_F(Observed, SharedOnesBelongToBoth) {
    DataValue otherField(Text("other"));
    FieldHandlers other;
    handlers.appendMarker(field);
    handlers.append(field, &a);
    other.share(handlers, field);
    EXPECT_EQ(other.list(), handlers.list());
    EXPECT_EQ(other.size(), 2);
    EXPECT_TRUE(other.contains(a));
    other.append(otherField, &b);
    EXPECT_EQ(handlers.size(), 3);
    EXPECT_TRUE(handlers.remove(field, &b));
    other.removeAll(otherField);
    EXPECT_EQ(handlers.size(), 0);
    EXPECT_FALSE(handlers.contains(a));
    EXPECT_EQ(a.getField(), nullptr);
}
