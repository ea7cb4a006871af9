#include <orbel/orbel.h>
#include <support/RecordingHandler.h>
#include <support/Text.h>
#include <support/TextList.h>
#include <support/VirtualSlot.h>

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

class DataFieldTest : public testing::Test {
protected:
    Diary diary;
    DataField field{Text("f")};
};

TEST_F(DataFieldTest, ANewFieldHasNothing) {
    EXPECT_STREQ(field.getName(), "f");
    EXPECT_EQ(field.isExactType(DataField::getClassType()), 1);
    EXPECT_EQ(field.getNumHandlers(), 0);
    EXPECT_EQ(field.getParent(), nullptr);
    EXPECT_EQ(field.getParentInstance(), 0);
    EXPECT_EQ(field.getDataInitialized(), 0);
    EXPECT_EQ(field.getCountNotifyOnValueChange(), 0);
    EXPECT_EQ(field.getLinkSource(), nullptr);
}

TEST_F(DataFieldTest, ALongNameIsCut) {
    DataField longNamed(Text(std::string(150, 'n')));
    EXPECT_EQ(longNamed.getName(), std::string(99, 'n'));
}

TEST_F(DataFieldTest, OperationsDoNothingByDefault) {
    EXPECT_STREQ(field.getTypeName(), "DataField");
    std::ostringstream os;
    field.dump(os, -1, -1, 1);
    field.dumpXML(os);
    EXPECT_EQ(os.str(), "");

    field.setSize(5);
    EXPECT_EQ(field.getSize(), 0);

    field.setData("x");
    field.setData("x", 0);
    std::string text = "x";
    field.setData(&text, 0);
    field.setData(TextList({"x"}), 0, -1);
    EXPECT_EQ(field.getDataInitialized(), 0);

    char mark[] = "mark";
    char* out = mark;
    EXPECT_FALSE(field.getData(&out, 0));
    EXPECT_EQ(out, mark);
    EXPECT_EQ(field.getData(0), nullptr);
    std::vector<char*> list{mark};
    field.getData(&list, 0, -1);
    EXPECT_EQ(list, std::vector<char*>{mark});
    EXPECT_EQ(field.getDataVector(), nullptr);

    field.clearData();
    DataValue value(Text("v"));
    EXPECT_FALSE(field.copyData(&value, 0, 0, -1));
    EXPECT_FALSE(field.copyData(nullptr, 0, 0, 0));
}

TEST_F(DataFieldTest, StoringNotifiesNobodyByDefault) {
    RecordingHandler handler(diary, "A");
    field.setDataInitialized(1);
    field.registerHandler(&handler);
    diary.take();
    field.setData("x");
    field.setData("x", 0);
    field.clearData();
    EXPECT_EQ(diary.take(), "");
}

TEST_F(DataFieldTest, VirtualOperationsKeepTheirOrder) {
    EXPECT_EQ(virtualSlot(&DataField::getTypeName), 0u);
    EXPECT_EQ(virtualSlot(&DataField::dump), 1u);
    EXPECT_EQ(virtualSlot(&DataField::dumpXML), 2u);
    EXPECT_EQ(virtualSlot(&DataField::ClearLinks), 3u);
    EXPECT_EQ(virtualSlot(&DataField::setSize), 6u);
    EXPECT_EQ(virtualSlot(&DataField::getSize), 7u);
    EXPECT_EQ(virtualSlot(&DataField::clone), 8u);
    EXPECT_EQ(virtualSlot(&DataField::parse), 9u);
    EXPECT_EQ((virtualSlot<void, DataField, const char*>(&DataField::setData)), 10u);
    EXPECT_EQ((virtualSlot<void, DataField, const char*, int>(&DataField::setData)), 11u);
    EXPECT_EQ((virtualSlot<void, DataField, std::string*, int>(&DataField::setData)), 12u);
    EXPECT_EQ((virtualSlot<void, DataField, std::vector<char*>*, int, int>(&DataField::setData)), 13u);
    EXPECT_EQ((virtualSlot<bool, DataField, char**, int>(&DataField::getData)), 14u);
    EXPECT_EQ((virtualSlot<std::string*, DataField, int>(&DataField::getData)), 15u);
    EXPECT_EQ((virtualSlot<void, DataField, std::vector<char*>*, int, int>(&DataField::getData)), 16u);
    EXPECT_EQ(virtualSlot(&DataField::getDataVector), 17u);
    EXPECT_EQ(virtualSlot(&DataField::clearData), 18u);
    EXPECT_EQ(virtualSlot(&DataField::copyData), 19u);
}

TEST_F(DataFieldTest, TheParentAndInstanceAreSetTogether) {
    DataStructure parent(Text("parent"));
    field.setParent(&parent, 7);
    EXPECT_EQ(field.getParent(), &parent);
    EXPECT_EQ(field.getParentInstance(), 7);
    field.setParent(nullptr, -1);
    EXPECT_EQ(field.getParent(), nullptr);
    EXPECT_EQ(field.getParentInstance(), -1);
}

TEST_F(DataFieldTest, TheInitializedFlagCanBeSetBack) {
    field.setDataInitialized(1);
    EXPECT_EQ(field.getDataInitialized(), 1);
    field.setDataInitialized(0);
    EXPECT_EQ(field.getDataInitialized(), 0);
}

TEST_F(DataFieldTest, CountsItsHandlersAndThoseThatDetectChanges) {
    RecordingHandler plain(diary, "A");
    RecordingHandler detecting(diary, "B");
    detecting.setNotifyOnValueChange(1);
    field.registerHandler(&plain);
    EXPECT_EQ(field.getNumHandlers(), 1);
    EXPECT_EQ(field.getCountNotifyOnValueChange(), 0);
    field.registerHandler(&detecting);
    EXPECT_EQ(field.getNumHandlers(), 2);
    EXPECT_EQ(field.getCountNotifyOnValueChange(), 1);
    field.unregisterHandler(&detecting);
    EXPECT_EQ(field.getNumHandlers(), 1);
    EXPECT_EQ(field.getCountNotifyOnValueChange(), 0);
}

TEST_F(DataFieldTest, DestroyingAFieldTakesItsHandlersOff) {
    auto shortLived = std::make_unique<DataField>(Text("s"));
    RecordingHandler first(diary, "A");
    RecordingHandler second(diary, "B");
    shortLived->registerHandler(&first);
    shortLived->registerHandler(&second);
    EXPECT_EQ(second.getField(), shortLived.get());
    shortLived.reset();
    EXPECT_EQ(first.getField(), nullptr);
    EXPECT_EQ(second.getField(), nullptr);
}

TEST_F(DataFieldTest, DestroyingAFieldLeavesItsParentAlone) {
    DataStructure parent(Text("parent"));
    {
        DataField child(Text("child"));
        child.setParent(&parent, 0);
    }
    EXPECT_EQ(parent.getNumFields(), 0);
}

TEST_F(DataFieldTest, ACloneHasTheClassAndNameOnly) {
    RecordingHandler handler(diary, "A");
    DataStructure parent(Text("parent"));
    DataField source(Text("source"));
    int owner = 0;
    field.registerHandler(&handler);
    field.setParent(&parent, 3);
    field.setDataInitialized(1);
    field.ref(&owner, &parent);
    source.addTargetLink(&field);

    const std::unique_ptr<DataField> clone(field.clone());
    EXPECT_STREQ(clone->getName(), "f");
    EXPECT_STREQ(clone->getTypeName(), "DataField");
    EXPECT_EQ(clone->isExactType(DataField::getClassType()), 1);
    EXPECT_EQ(clone->getNumHandlers(), 0);
    EXPECT_EQ(clone->getParent(), nullptr);
    EXPECT_EQ(clone->getParentInstance(), 0);
    EXPECT_EQ(clone->getDataInitialized(), 0);
    EXPECT_EQ(clone->getRef(), 0);
    EXPECT_EQ(clone->getLinkSource(), nullptr);
}

TEST_F(DataFieldTest, AssigningTakesTheFieldOffItsHandlersAndLinks) {
    RecordingHandler own(diary, "A");
    RecordingHandler shared(diary, "B");
    DataField target(Text("target"));
    DataField other(Text("other"));
    field.registerHandler(&own);
    field.addTargetLink(&target);
    other.registerHandler(&shared);
    field = other;
    EXPECT_STREQ(field.getName(), "other");
    EXPECT_EQ(own.getField(), nullptr);
    EXPECT_EQ(target.getLinkSource(), nullptr);
    EXPECT_EQ(field.getNumHandlers(), 1);
    EXPECT_EQ(field.getHandlerByID(0), &shared);
}

/// A plug-in's own class of field: three values, kept elsewhere, that notes what it is asked.
class NotingField : public DataField {
public:
    explicit NotingField(Diary& diary) : DataField(Text("noting")), m_diary(&diary) {}

    const char* getTypeName() override { return "NotingField"; }
    void dump(std::ostream& os, int, int, int) override { os << "dump"; }
    void dumpXML(std::ostream& os) override { os << "xml"; }
    void ClearLinks() override { note("ClearLinks"); }
    void setSize(int n) override { note("setSize", n); }
    int getSize() override { return 3; }
    DataField* clone() override { return new NotingField(*m_diary); }
    void setData(const char* value) override { note(value); }
    void setData(const char* value, int index) override { note(std::string(value) + '@', index); }
    void setData(std::string* value, int index) override { note("string " + *value + '@', index); }
    void setData(std::vector<char*>* values, int from, int to) override {
        std::string all;
        for (const char* value : *values)
            all += value;
        note(all + '@' + std::to_string(from) + '-', to);
    }
    bool getData(char** value, int) override {
        *value = m_text.data();
        return true;
    }
    std::string* getData(int) override { return &m_text; }
    void getData(std::vector<char*>* out, int, int) override { out->assign(3, m_text.data()); }
    std::vector<std::string>* getDataVector() override { return nullptr; }
    void clearData() override { note("clear"); }
    bool copyData(DataField*, int, int, int) override { return true; }

private:
    void note(const std::string& what) { m_diary->note("N", what); }
    void note(const std::string& what, int number) { note(what + std::to_string(number)); }

    Diary* m_diary;
    std::string m_text = "text";
};

TEST_F(DataFieldTest, EveryOperationCanBeOverridden) {
    NotingField noting(diary);
    DataField& overridden = noting;
    EXPECT_STREQ(overridden.getTypeName(), "NotingField");
    std::ostringstream os;
    overridden.dump(os, 0, 0, 0);
    overridden.dumpXML(os);
    EXPECT_EQ(os.str(), "dumpxml");
    overridden.ClearLinks();
    overridden.setSize(9);
    overridden.clearData();
    EXPECT_EQ(diary.take(), "N ClearLinks, N setSize9, N clear");
    EXPECT_EQ(overridden.getSize(), 3);
    const std::unique_ptr<DataField> clone(overridden.clone());
    EXPECT_STREQ(clone->getTypeName(), "NotingField");
    char* text = nullptr;
    EXPECT_TRUE(overridden.getData(&text, 0));
    EXPECT_STREQ(text, "text");
    EXPECT_EQ(*overridden.getData(8), "text");
    std::vector<char*> list;
    overridden.getData(&list, 0, -1);
    EXPECT_EQ(list.size(), 3u);
    EXPECT_EQ(overridden.getDataVector(), nullptr);
    EXPECT_TRUE(overridden.copyData(nullptr, 0, 0, 0));
}

TEST_F(DataFieldTest, EveryFormOfStoreReachesTheOverrideOfALinkTarget) {
    NotingField target(diary);
    field.addTargetLink(&target);
    field.setData("a");
    field.setData("b", 7);
    std::string text = "c";
    field.setData(&text, -1);
    field.setData(TextList({"d", "e"}), 5, -1);
    EXPECT_EQ(diary.take(), "N a, N b@7, N string c@-1, N de@5--1");
}

TEST_F(DataFieldTest, ParseStoresThroughTheOverride) {
    NotingField noting(diary);
    noting.parse(nullptr, Text("a,b"));
    noting.parse(Text("4"), Text("a,b"));
    noting.parse(Text("9-7,1-2"), Text("a,b"));
    noting.parse(Text("2-5,1"), Text("a,b,\"\"c,c\"\",d,e,f"));
    EXPECT_EQ(diary.take(), "N a, N a@4, N ab@1-2, N abc,cd@2-5, N e@1");
}

TEST_F(DataFieldTest, NotificationAsksTheOverrideForTheSize) {
    NotingField noting(diary);
    RecordingHandler handler(diary, "A");
    noting.setDataInitialized(1);
    noting.registerHandler(&handler);
    EXPECT_EQ(diary.take(), "A same 0-2");
}

class FullPathTest : public testing::Test {
protected:
    Orbel root{Text("Scene-#1")};
    DataStructure scene{Text("scene")};
    DataArray points{Text("points")};
    DataHashTable cities{Text("cities")};
    DataObject element{Text("Item-#2")};
    DataValue title{Text("title")};
    DataValue x{Text("x")};
};

TEST_F(FullPathTest, JoinsTheNamesBelowTheRoot) {
    scene.setParent(&root, 0);
    title.setParent(&scene, 0);
    EXPECT_STREQ(title.getFullPath(), "scene/title");
    EXPECT_STREQ(scene.getFullPath(), "scene");
}

TEST_F(FullPathTest, WritesAnElementAsItsArrayAndInstance) {
    points.setParent(&root, 0);
    element.setParent(&points, 2);
    x.setParent(&element, 0);
    EXPECT_STREQ(x.getFullPath(), "points[2]/x");
    EXPECT_STREQ(element.getFullPath(), "points[2]");
    EXPECT_STREQ(points.getFullPath(), "points");
}

TEST_F(FullPathTest, WritesAnEntryWithItsInstanceNotItsKey) {
    cities.setParent(&root, 0);
    element.setParent(&cities, 4);
    x.setParent(&element, 0);
    EXPECT_STREQ(x.getFullPath(), "cities[4]/x");
    EXPECT_STREQ(cities.getFullPath(), "cities");
}

TEST_F(FullPathTest, NestsArrays) {
    scene.setParent(&root, 0);
    points.setParent(&scene, 0);
    element.setParent(&points, 2);
    DataObject inner(Text("Item-#0"));
    cities.setParent(&element, 0);
    inner.setParent(&cities, 11);
    x.setParent(&inner, 0);
    EXPECT_STREQ(x.getFullPath(), "scene/points[2]/cities[11]/x");
    EXPECT_STREQ(cities.getFullPath(), "scene/points[2]/cities");
}

TEST_F(FullPathTest, IsTheNameDirectlyUnderTheRoot) {
    title.setParent(&root, 0);
    EXPECT_STREQ(title.getFullPath(), "title");
}

TEST_F(FullPathTest, IsEmptyForWhatHasNoParent) {
    EXPECT_STREQ(title.getFullPath(), "");
    EXPECT_STREQ(root.getFullPath(), "");
    EXPECT_STREQ(points.getFullPath(), "");
}

TEST_F(FullPathTest, LeavesOutTheTopWhateverItIs) {
    title.setParent(&scene, 0);
    EXPECT_STREQ(title.getFullPath(), "title");
    DataValue first(Text("first"));
    element.setParent(&points, 2);
    first.setParent(&element, 0);
    EXPECT_STREQ(first.getFullPath(), "Item-#2/first");
}

TEST_F(FullPathTest, SkipsEveryOrbel) {
    Orbel inner(Text("inner"));
    scene.setParent(&root, 0);
    inner.setParent(&scene, 0);
    title.setParent(&inner, 0);
    EXPECT_STREQ(title.getFullPath(), "scene/title");
    EXPECT_STREQ(inner.getFullPath(), "scene");
    inner.setParent(&root, 0);
    EXPECT_STREQ(title.getFullPath(), "title");
}

TEST_F(FullPathTest, TheNextCallOverwritesTheResult) {
    scene.setParent(&root, 0);
    title.setParent(&scene, 0);
    char* path = title.getFullPath();
    EXPECT_EQ(scene.getFullPath(), path);
    EXPECT_STREQ(path, "scene");
}

TEST_F(FullPathTest, ReachesThroughThirtyLevels) {
    std::deque<DataStructure> levels;
    DataNode* parent = &root;
    std::string expected;
    for (int level = 1; level < 30; ++level) {
        const std::string name = "level" + std::to_string(level);
        levels.emplace_back(Text(name)).setParent(parent, 0);
        parent = &levels.back();
        expected += (level == 1 ? "" : "/") + name;
    }
    EXPECT_STREQ(parent->getFullPath(), expected.c_str());

    // Deeper trees have no full path, but asking for one is harmless.
    for (int level = 30; level < 100; ++level) {
        levels.emplace_back(Text("deep")).setParent(parent, 0);
        parent = &levels.back();
        EXPECT_NE(parent->getFullPath(), nullptr);
    }
}

TEST_F(FullPathTest, NamesOf99CharactersAreWrittenWhole) {
    scene.setName(Text(std::string(150, 's')));
    title.setName(Text(std::string(99, 't')));
    scene.setParent(&root, 0);
    title.setParent(&scene, 0);
    EXPECT_EQ(title.getFullPath(), std::string(99, 's') + '/' + std::string(99, 't'));
}

TEST_F(FullPathTest, IsReadBackFromTheRoot) {
    DataValue* made = static_cast<DataValue*>(root.getField(Text("node:scene/string:title"), 0, 0));
    ASSERT_NE(made, nullptr);
    EXPECT_STREQ(made->getFullPath(), "scene/title");
    EXPECT_EQ(root.getField(Text(made->getFullPath()), 0, 1), made);
    root.deleteChildren();
}

} // namespace
