#include <orbel/orbel.h>
#include <support/Text.h>
#include <support/VirtualSlot.h>

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

class DataBaseTypeTest : public testing::Test {
protected:
    DataBaseType item{Text("item")};
    DataField referrer{Text("referrer")};
    int scene = 0;
    int show = 0;
};

class IndentationTest : public testing::Test {
protected:
    ~IndentationTest() override { DataBaseType::setIndent(0); }

    static std::string indented(int level) {
        DataBaseType::setIndent(level);
        std::ostringstream os;
        DataBaseType::indent(os);
        return os.str();
    }
};

TEST_F(IndentationTest, StartsAtZero) {
    EXPECT_EQ(DataBaseType::getIndent(), 0);
    EXPECT_EQ(DataBaseType::indentation, 0);
}

TEST_F(IndentationTest, IsSetAndCounted) {
    DataBaseType::setIndent(5);
    EXPECT_EQ(DataBaseType::getIndent(), 5);
    EXPECT_EQ(DataBaseType::indentation, 5);
    EXPECT_EQ(DataBaseType::incrIndent(), 6);
    EXPECT_EQ(DataBaseType::decrIndent(), 5);
    EXPECT_EQ(DataBaseType::getIndent(), 5);
}

TEST_F(IndentationTest, MayGoBelowZero) {
    EXPECT_EQ(DataBaseType::decrIndent(), -1);
    EXPECT_EQ(DataBaseType::decrIndent(), -2);
    EXPECT_EQ(DataBaseType::getIndent(), -2);
    EXPECT_EQ(DataBaseType::incrIndent(), -1);
}

TEST_F(IndentationTest, WritesOneTabForEachLevel) {
    EXPECT_EQ(indented(3), "\t\t\t");
    EXPECT_EQ(indented(1), "\t");
    EXPECT_EQ(indented(40), std::string(40, '\t'));
}

TEST_F(IndentationTest, WritesNothingAtLevelZeroAndBelow) {
    EXPECT_EQ(indented(0), "");
    EXPECT_EQ(indented(-1), "");
    EXPECT_EQ(indented(-1000), "");
}

TEST_F(IndentationTest, LeavesTheFillCharacterATab) {
    std::ostringstream os;
    os.fill('.');
    DataBaseType::setIndent(2);
    DataBaseType::indent(os);
    EXPECT_EQ(os.fill(), '\t');
    EXPECT_EQ(os.width(), 0);
    os << "x";
    EXPECT_EQ(os.str(), "\t\tx");
}

TEST_F(DataBaseTypeTest, ANewItemHasItsNameAndNoReferences) {
    EXPECT_STREQ(item.getName(), "item");
    EXPECT_EQ(item.getRef(), 0);
    EXPECT_EQ(item.getRefCalls(), 0);
    EXPECT_EQ(item.isExactType(DataBaseType::getClassType()), 1);
}

TEST_F(DataBaseTypeTest, NamesOfUpTo99CharactersAreWhole) {
    for (const std::size_t length : {0u, 1u, 98u, 99u}) {
        const std::string name(length, 'n');
        EXPECT_EQ(DataBaseType(Text(name)).getName(), name);
        item.setName(Text(name));
        EXPECT_EQ(item.getName(), name);
    }
}

TEST_F(DataBaseTypeTest, LongerNamesAreCutToTheirFirst99Characters) {
    const std::string kept = "a" + std::string(97, 'n') + "z";
    for (const std::size_t more : {1u, 51u, 100'000u}) {
        const std::string name = kept + std::string(more, '#');
        EXPECT_EQ(DataBaseType(Text(name)).getName(), kept);
        item.setName(Text("short"));
        item.setName(Text(name));
        EXPECT_EQ(item.getName(), kept);
    }
}

TEST_F(DataBaseTypeTest, AShorterNameReplacesALongerOne) {
    item.setName(Text(std::string(150, 'n')));
    item.setName(Text("x"));
    EXPECT_STREQ(item.getName(), "x");
}

TEST_F(DataBaseTypeTest, OperationsDoNothingByDefault) {
    std::ostringstream os;
    EXPECT_STREQ(item.getTypeName(), "DataBaseType");
    item.dump(os, 0, 0, 1);
    item.dumpXML(os);
    EXPECT_EQ(os.str(), "");
}

class Labelled : public DataBaseType {
public:
    using DataBaseType::DataBaseType;
    const char* getTypeName() override { return "Labelled"; }
    void dump(std::ostream& os, int first, int last, int withName) override { os << first << last << withName; }
    void dumpXML(std::ostream& os) override { os << "<Labelled/>"; }
};

TEST_F(DataBaseTypeTest, OperationsCanBeOverridden) {
    Labelled labelled(Text("l"));
    DataBaseType& asItem = labelled;
    std::ostringstream os;
    asItem.dump(os, 1, 2, 3);
    asItem.dumpXML(os);
    EXPECT_EQ(os.str(), "123<Labelled/>");
    EXPECT_STREQ(asItem.getTypeName(), "Labelled");
}

TEST_F(DataBaseTypeTest, VirtualOperationsKeepTheirOrder) {
    EXPECT_EQ(virtualSlot(&DataBaseType::getTypeName), 0u);
    EXPECT_EQ(virtualSlot(&DataBaseType::dump), 1u);
    EXPECT_EQ(virtualSlot(&DataBaseType::dumpXML), 2u);
}

TEST_F(DataBaseTypeTest, TheTypeNameDoesNotFollowTheRecord) {
    item.setType(DataValue::getClassType());
    EXPECT_EQ(item.isExactType(DataValue::getClassType()), 1);
    EXPECT_EQ(item.isExactType(DataBaseType::getClassType()), 0);
    EXPECT_EQ(item.isOfType(DataField::getClassType()), 1);
    EXPECT_STREQ(item.getTypeName(), "DataBaseType");
}

TEST_F(DataBaseTypeTest, AnonymousReferencesCountUpAndDown) {
    EXPECT_EQ(item.ref(), 1);
    EXPECT_EQ(item.ref(), 2);
    EXPECT_EQ(item.getRef(), 2);
    EXPECT_EQ(item.getRefCalls(), 0);
    EXPECT_EQ(item.unref(), 1);
    EXPECT_EQ(item.unref(), 0);
    EXPECT_EQ(item.unref(), 0);
    EXPECT_EQ(item.getRef(), 0);
}

TEST_F(DataBaseTypeTest, EachOwnerCountsOnce) {
    EXPECT_EQ(item.ref(&scene, &referrer), 1);
    EXPECT_EQ(item.ref(&scene, &referrer), 1);
    EXPECT_EQ(item.ref(&show, &referrer), 2);
    EXPECT_EQ(item.getRef(), 2);
    EXPECT_EQ(item.getRefCalls(), 3);
}

TEST_F(DataBaseTypeTest, TwoReferencesAndOneReleaseOfAnOwnerLeaveOneCall) {
    item.ref(&scene, &referrer);
    item.ref(&scene, &referrer);
    EXPECT_EQ(item.unref(&scene, &referrer), 0);
    EXPECT_EQ(item.getRef(), 0);
    EXPECT_EQ(item.getRefCalls(), 1);
}

TEST_F(DataBaseTypeTest, ReleasingAnUnknownOwnerOnlyLowersTheCalls) {
    item.ref(&scene, &referrer);
    item.ref(&scene, &referrer);
    EXPECT_EQ(item.unref(&show, &referrer), 1);
    EXPECT_EQ(item.getRefCalls(), 1);
    EXPECT_EQ(item.unref(&show, &referrer), 1);
    EXPECT_EQ(item.getRefCalls(), 0);
    EXPECT_EQ(item.unref(&show, &referrer), 1);
    EXPECT_EQ(item.getRefCalls(), 0);
    EXPECT_EQ(item.unref(&scene, &referrer), 0);
}

TEST_F(DataBaseTypeTest, TheReferrerIsNotConsultedOnRelease) {
    item.ref(&scene, &referrer);
    EXPECT_EQ(item.unref(&scene, nullptr), 0);
    EXPECT_EQ(item.ref(&scene, nullptr), 1);
    EXPECT_EQ(item.unref(&scene, &referrer), 0);
}

TEST_F(DataBaseTypeTest, ReleasedOwnersCanReferAgain) {
    item.ref(&scene, &referrer);
    item.unref(&scene, &referrer);
    EXPECT_EQ(item.ref(&scene, &referrer), 1);
    EXPECT_EQ(item.getRefCalls(), 1);
}

TEST_F(DataBaseTypeTest, AnonymousAndOwnedReferencesShareTheCount) {
    item.ref();
    EXPECT_EQ(item.ref(&scene, &referrer), 2);
    EXPECT_EQ(item.unref(), 1);
    EXPECT_EQ(item.unref(), 0);
    EXPECT_EQ(item.unref(&scene, &referrer), 0);
    EXPECT_EQ(item.getRefCalls(), 0);
}

TEST_F(DataBaseTypeTest, ClearingTheCountKeepsTheOwners) {
    item.ref(&scene, &referrer);
    item.clearRef();
    EXPECT_EQ(item.getRef(), 0);
    EXPECT_EQ(item.getRefCalls(), 1);
    EXPECT_EQ(item.ref(&scene, &referrer), 0);
    EXPECT_EQ(item.ref(&show, &referrer), 1);
    EXPECT_EQ(item.unref(&scene, &referrer), 0);
    EXPECT_EQ(item.ref(&scene, &referrer), 1);
}

TEST_F(DataBaseTypeTest, CopiesHaveTheTypeNameCountsAndOwners) {
    item.setType(DataValue::getClassType());
    item.ref(&scene, &referrer);
    item.ref(&scene, &referrer);
    item.ref();
    DataBaseType copy(item);
    DataBaseType assigned(Text("other"));
    assigned = item;
    for (DataBaseType* each : {&copy, &assigned}) {
        EXPECT_STREQ(each->getName(), "item");
        EXPECT_EQ(each->isExactType(DataValue::getClassType()), 1);
        EXPECT_EQ(each->getRef(), 2);
        EXPECT_EQ(each->getRefCalls(), 2);
        EXPECT_EQ(each->unref(&scene, &referrer), 1);
        EXPECT_EQ(each->ref(&show, &referrer), 2);
    }
    EXPECT_EQ(item.getRef(), 2);
    EXPECT_EQ(item.ref(&scene, &referrer), 2);
}

} // namespace
