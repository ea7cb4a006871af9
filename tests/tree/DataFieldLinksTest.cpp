#include <orbel/orbel.h>
#include <support/RecordingHandler.h>
#include <support/Text.h>
#include <support/TextList.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace {

/// Values a, b, c and d, each heard by a handler of its name in capitals.
class DataFieldLinksTest : public testing::Test {
protected:
    DataFieldLinksTest() {
        a.registerHandler(&handlerA);
        b.registerHandler(&handlerB);
        c.registerHandler(&handlerC);
        d.registerHandler(&handlerD);
    }

    std::string heardAfterSetting(DataField& field) {
        field.setData("x");
        return diary.takeNames();
    }

    Diary diary;
    DataValue a{Text("a")};
    DataValue b{Text("b")};
    DataValue c{Text("c")};
    DataValue d{Text("d")};
    RecordingHandler handlerA{diary, "A"};
    RecordingHandler handlerB{diary, "B"};
    RecordingHandler handlerC{diary, "C"};
    RecordingHandler handlerD{diary, "D"};
};

TEST_F(DataFieldLinksTest, ATargetFollowsItsSource) {
    a.addTargetLink(&b);
    EXPECT_EQ(b.getLinkSource(), &a);
    EXPECT_EQ(a.getLinkSource(), nullptr);
    a.setData("x");
    EXPECT_EQ(*b.getData(0), "x");
    b.setData("y");
    EXPECT_EQ(*a.getData(0), "x");
}

TEST_F(DataFieldLinksTest, LinkingCopiesNothing) {
    a.setData("x");
    diary.take();
    a.addTargetLink(&b);
    EXPECT_EQ(*b.getData(0), " ");
    EXPECT_EQ(diary.take(), "");
}

TEST_F(DataFieldLinksTest, TargetsStoreBeforeTheirSourceInTheOrderOfLinking) {
    a.addTargetLink(&c);
    a.addTargetLink(&b);
    EXPECT_EQ(heardAfterSetting(a), "CBA");
}

TEST_F(DataFieldLinksTest, ChainsStoreTheFarthestFirst) {
    a.addTargetLink(&b);
    a.addTargetLink(&d);
    b.addTargetLink(&c);
    EXPECT_EQ(heardAfterSetting(a), "CBDA");
    EXPECT_EQ(*c.getData(0), "x");
}

TEST_F(DataFieldLinksTest, EveryFormOfStoreIsPassedOn) {
    for (DataValue* value : {&a, &b})
        fill(*value, {"1", "2", "3"});
    a.addTargetLink(&b);
    a.setData("x");
    EXPECT_EQ(diary.take(), "B changed, A changed");
    a.setData("y", 1);
    EXPECT_EQ(diary.take(), "B changed 1-1, A changed 1-1");
    std::string text = "z";
    a.setData(&text, 2);
    EXPECT_EQ(diary.take(), "B changed 2-2, A changed 2-2");
    EXPECT_EQ(allTexts(b), "x|y|z");
    a.setData(TextList({"u", "v"}), 0, 2);
    EXPECT_EQ(diary.take(), "B changed 0-2, A changed 0-2");
    EXPECT_EQ(allTexts(b), "u|v|v");
    a.clearData();
    EXPECT_EQ(diary.take(), "B changed 0-0, A changed 0-0, B changed 1-1, A changed 1-1, B changed 2-2, A changed 2-2");
    EXPECT_EQ(allTexts(b), "||");
    a.parse(Text("0-1"), Text("m,n"));
    EXPECT_EQ(allTexts(b), "m|n|");
}

TEST_F(DataFieldLinksTest, ATargetStoresWhatItsSourceHasNoRoomFor) {
    fill(b, {"1", "2", "3"});
    a.addTargetLink(&b);
    a.setData("x", 2);
    a.setData(TextList({"y"}), 1, -1);
    EXPECT_EQ(allTexts(b), "1|y|x");
    EXPECT_EQ(allTexts(a), " ");
    EXPECT_EQ(diary.take(), "B changed 2-2, B changed 1-1");
}

TEST_F(DataFieldLinksTest, ATargetWithoutRoomStoresNothing) {
    fill(a, {"1", "2", "3"});
    a.addTargetLink(&b);
    a.setData("x", 2);
    EXPECT_EQ(allTexts(b), " ");
    EXPECT_EQ(diary.take(), "A changed 2-2");
    a.setData(TextList({"u", "v", "w"}), 0, -1);
    EXPECT_EQ(allTexts(b), "u");
    EXPECT_EQ(diary.take(), "B changed, A changed 0-2");
}

TEST_F(DataFieldLinksTest, EachTargetDetectsItsOwnChanges) {
    handlerB.setNotifyOnValueChange(1);
    b.countNotifyOnValueChange();
    a.addTargetLink(&b);
    b.setData("x");
    diary.take();
    a.setData("x");
    EXPECT_EQ(diary.take(), "B same, A changed");
}

TEST_F(DataFieldLinksTest, PlainFieldsPassOnToo) {
    DataField plain(Text("plain"));
    a.addTargetLink(&plain);
    plain.addTargetLink(&b);
    EXPECT_EQ(heardAfterSetting(a), "BA");
    EXPECT_EQ(*b.getData(0), "x");
}

TEST_F(DataFieldLinksTest, ClearingAPlainFieldPassesNothingOn) {
    DataField plain(Text("plain"));
    plain.addTargetLink(&b);
    plain.clearData();
    EXPECT_EQ(diary.take(), "");
}

TEST_F(DataFieldLinksTest, LinkingTwiceLeavesOneLink) {
    a.addTargetLink(&b);
    a.addTargetLink(&b);
    EXPECT_EQ(heardAfterSetting(a), "BA");
    a.removeTargetLink(&b);
    EXPECT_EQ(heardAfterSetting(a), "A");
}

TEST_F(DataFieldLinksTest, LinksToNothingAndToItselfAreRefused) {
    a.addTargetLink(nullptr);
    a.addTargetLink(&a);
    EXPECT_EQ(a.getLinkSource(), nullptr);
    EXPECT_EQ(heardAfterSetting(a), "A");
}

TEST_F(DataFieldLinksTest, CyclesAreRefused) {
    a.addTargetLink(&b);
    b.addTargetLink(&a);
    EXPECT_EQ(a.getLinkSource(), nullptr);
    b.addTargetLink(&c);
    c.addTargetLink(&a);
    EXPECT_EQ(a.getLinkSource(), nullptr);
    c.addTargetLink(&d);
    d.addTargetLink(&a);
    EXPECT_EQ(a.getLinkSource(), nullptr);
    d.addTargetLink(&b);
    EXPECT_EQ(b.getLinkSource(), &a);
    EXPECT_EQ(heardAfterSetting(a), "DCBA");
}

TEST_F(DataFieldLinksTest, LinkingElsewhereMovesTheTarget) {
    a.addTargetLink(&c);
    b.addTargetLink(&c);
    EXPECT_EQ(c.getLinkSource(), &b);
    EXPECT_EQ(heardAfterSetting(a), "A");
    EXPECT_EQ(heardAfterSetting(b), "CB");
}

TEST_F(DataFieldLinksTest, FindsTheSourcesAlongTheChain) {
    a.addTargetLink(&b);
    b.addTargetLink(&c);
    EXPECT_TRUE(c.findLinkSource(&b));
    EXPECT_TRUE(c.findLinkSource(&a));
    EXPECT_FALSE(c.findLinkSource(&c));
    EXPECT_FALSE(c.findLinkSource(&d));
    EXPECT_FALSE(a.findLinkSource(&b));
    EXPECT_FALSE(a.findLinkSource(nullptr));
}

TEST_F(DataFieldLinksTest, ReleasingTheMiddleOfAChainKeepsItsEnd) {
    a.addTargetLink(&b);
    b.addTargetLink(&c);
    b.removeSourceLink();
    EXPECT_EQ(heardAfterSetting(a), "A");
    EXPECT_EQ(heardAfterSetting(b), "CB");
    EXPECT_EQ(c.getLinkSource(), &b);
}

TEST_F(DataFieldLinksTest, RemovingATargetEndsItsLink) {
    a.addTargetLink(&b);
    a.addTargetLink(&c);
    a.removeTargetLink(&b);
    EXPECT_EQ(b.getLinkSource(), nullptr);
    EXPECT_EQ(c.getLinkSource(), &a);
    EXPECT_EQ(heardAfterSetting(a), "CA");
}

TEST_F(DataFieldLinksTest, RemovingATargetOfAnotherSourceEndsThatLink) {
    a.addTargetLink(&b);
    d.removeTargetLink(&b);
    EXPECT_EQ(b.getLinkSource(), nullptr);
    EXPECT_EQ(heardAfterSetting(a), "A");
}

TEST_F(DataFieldLinksTest, RemovingWhatIsNotLinkedChangesNothing) {
    a.addTargetLink(&b);
    a.removeTargetLink(&c);
    a.removeSourceLink();
    c.removeSourceLink();
    c.removeAllTargets();
    c.ClearLinks();
    EXPECT_EQ(heardAfterSetting(a), "BA");
}

TEST_F(DataFieldLinksTest, RemovingAllTargetsKeepsTheSource) {
    a.addTargetLink(&b);
    b.addTargetLink(&c);
    b.addTargetLink(&d);
    b.removeAllTargets();
    EXPECT_EQ(c.getLinkSource(), nullptr);
    EXPECT_EQ(d.getLinkSource(), nullptr);
    EXPECT_EQ(heardAfterSetting(a), "BA");
}

TEST_F(DataFieldLinksTest, ClearingLinksEndsBothSides) {
    a.addTargetLink(&b);
    b.addTargetLink(&c);
    b.ClearLinks();
    EXPECT_EQ(b.getLinkSource(), nullptr);
    EXPECT_EQ(c.getLinkSource(), nullptr);
    EXPECT_EQ(heardAfterSetting(a), "A");
    EXPECT_EQ(heardAfterSetting(b), "B");
}

TEST_F(DataFieldLinksTest, NamingASourceDoesNotMakeATarget) {
    b.setLinkSource(&a);
    EXPECT_EQ(b.getLinkSource(), &a);
    EXPECT_TRUE(b.findLinkSource(&a));
    EXPECT_EQ(heardAfterSetting(a), "A");
}

TEST_F(DataFieldLinksTest, NamingASourceLeavesTheOldOne) {
    a.addTargetLink(&b);
    b.setLinkSource(&b);
    EXPECT_EQ(b.getLinkSource(), &a);
    b.setLinkSource(&c);
    EXPECT_EQ(b.getLinkSource(), &c);
    EXPECT_EQ(heardAfterSetting(a), "A");
    b.setLinkSource(nullptr);
    EXPECT_EQ(b.getLinkSource(), nullptr);
}

TEST_F(DataFieldLinksTest, DestroyingATargetLeavesTheOthers) {
    auto brief = std::make_unique<DataValue>(Text("brief"));
    a.addTargetLink(brief.get());
    a.addTargetLink(&b);
    brief.reset();
    EXPECT_EQ(heardAfterSetting(a), "BA");
}

TEST_F(DataFieldLinksTest, DestroyingASourceReleasesItsTargets) {
    auto brief = std::make_unique<DataValue>(Text("brief"));
    brief->addTargetLink(&a);
    brief->addTargetLink(&b);
    c.setLinkSource(brief.get());
    brief.reset();
    EXPECT_EQ(a.getLinkSource(), nullptr);
    EXPECT_EQ(b.getLinkSource(), nullptr);
    EXPECT_EQ(c.getLinkSource(), nullptr);
}

TEST_F(DataFieldLinksTest, DestroyingTheMiddleOfAChainSplitsIt) {
    auto brief = std::make_unique<DataValue>(Text("brief"));
    a.addTargetLink(brief.get());
    brief->addTargetLink(&b);
    brief.reset();
    EXPECT_EQ(b.getLinkSource(), nullptr);
    EXPECT_EQ(heardAfterSetting(a), "A");
}

TEST_F(DataFieldLinksTest, AHandlerOfATargetMayDestroyTheSource) {
    auto* brief = new DataValue(Text("brief"));
    brief->addTargetLink(&b);
    brief->addTargetLink(&c);
    handlerB.onceThen([brief] { delete brief; });
    EXPECT_EQ(heardAfterSetting(*brief), "B");
    EXPECT_EQ(b.getLinkSource(), nullptr);
    EXPECT_EQ(c.getLinkSource(), nullptr);
}

TEST_F(DataFieldLinksTest, AHandlerOfATargetMayEndTheLink) {
    a.addTargetLink(&b);
    handlerB.onceThen([this] { a.removeAllTargets(); });
    EXPECT_EQ(heardAfterSetting(a), "BA");
    EXPECT_EQ(heardAfterSetting(a), "A");
}

TEST_F(DataFieldLinksTest, StructuresClearTheLinksOfTheirChildren) {
    DataStructure scene(Text("scene"));
    DataStructure other(Text("other"));
    scene.addField(&b, 0);
    scene.addField(&c, 0);
    other.addTargetLink(&scene);
    a.addTargetLink(&b);
    c.addTargetLink(&d);
    scene.ClearLinks();
    EXPECT_EQ(scene.getLinkSource(), nullptr);
    EXPECT_EQ(b.getLinkSource(), nullptr);
    EXPECT_EQ(d.getLinkSource(), nullptr);
    scene.removeChildren();
}

TEST_F(DataFieldLinksTest, ArraysClearTheLinksOfTheirElements) {
    DataArray points(Text("points"));
    points.setSize(2);
    DataObject* first = points.getObject(0);
    DataObject* second = points.getObject(1);
    second->addField(&b, 0);
    a.addTargetLink(&b);
    c.addTargetLink(first);
    points.ClearLinks();
    EXPECT_EQ(b.getLinkSource(), nullptr);
    EXPECT_EQ(first->getLinkSource(), nullptr);
    second->removeChildren();
    points.removeChildren();
}

// A copy of a source shares its followers. Naming the copy ends the link, as naming any other source does.
TEST_F(DataFieldLinksTest, NamingACopyOfTheSourceEndsTheLink) {
    a.addTargetLink(&b);
    {
        DataValue copy(a);
        b.setLinkSource(&copy);
        EXPECT_EQ(b.getLinkSource(), &copy);
        copy.setData("one");
        a.setData("two");
        EXPECT_EQ(*b.getData(0), " ");
    }
    EXPECT_EQ(b.getLinkSource(), nullptr);
    a.addTargetLink(&b);
    a.setData("three");
    EXPECT_EQ(*b.getData(0), "three");
}

} // namespace
