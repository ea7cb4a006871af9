#include <support/SceneTree.h>
#include <support/Texts.h>

#include <gtest/gtest.h>

namespace {

/// Five elements with a value x each.
class Points : public testing::Test {
protected:
    explicit Points(int size = 5) {
        array.setSize(size);
        for (int index = 0; index < size; ++index)
            array.getObject(index)->addField(new DataValue(Text("x")), 0);
    }

    DataField* x(int index) { return array.getObject(index)->getFieldByIndex(0); }

    std::vector<std::string> xs() {
        std::vector<std::string> texts;
        for (int index = 0; index < array.getSize(); ++index)
            texts.push_back(*x(index)->getData(0));
        return texts;
    }

    std::vector<int> selected(const char* range) {
        std::vector<DataField*> fields;
        array.getFieldsByRange(Text(range), &fields);
        std::vector<int> indices;
        for (DataField* field : fields)
            indices.push_back(field ? field->getParentInstance() : -1);
        return indices;
    }

    DataArray array{Text("points")};
    const SubtreeCleanup belowArray{array};
    DataHandler handler;
};

class ThreePoints : public Points {
protected:
    ThreePoints() : Points(3) {}
};

class FourPoints : public Points {
protected:
    FourPoints() : Points(4) {}
};

using Indices = std::vector<int>;
using Values = std::vector<std::string>;

} // namespace

TEST(DataArray, StartsEmpty) {
    DataArray array(Text("array"));
    char* pointer = nullptr;
    std::string string = "kept";
    int size = 7;
    EXPECT_STREQ(array.getTypeName(), "DataArray");
    EXPECT_EQ(array.isExactType(DataArray::getClassType()), 1);
    EXPECT_EQ(array.isOfType(DataNode::getClassType()), 1);
    EXPECT_EQ(array.getSize(), 0);
    EXPECT_EQ(array.getNumFields(), 0);
    EXPECT_EQ(array.getObject(0), nullptr);
    EXPECT_EQ(array.getField(Text("x"), 0, 1), nullptr);
    EXPECT_FALSE(array.getFieldSize(Text("x"), &size));
    EXPECT_FALSE(array.getFieldData(Text("x"), &pointer));
    EXPECT_FALSE(array.getFieldData(Text("x"), &string));
    EXPECT_FALSE(array.setFieldData(Text("x"), Text("a")));
    EXPECT_FALSE(array.setFieldData(Text("x"), &string));
    EXPECT_FALSE(array.setFieldData(Text("x"), Text("a"), 0));
    EXPECT_FALSE(array.setFieldData(Text("x"), Texts{"a"}, 0, -1));
    EXPECT_FALSE(array.setFieldData(Text("x"), Texts{}, 0, -1));
    array.clearData();
    array.parse(nullptr, Text("{{x=1}}"));
    array.removeChildren();
}

TEST(DataArray, GrowsByNumberedElements) {
    DataArray array(Text("array"));
    const SubtreeCleanup belowArray{array};
    array.setSize(3);
    ASSERT_EQ(array.getSize(), 3);
    for (int index = 0; index < 3; ++index) {
        DataObject* element = array.getObject(index);
        EXPECT_EQ(element->getName(), "Item-#" + std::to_string(index));
        EXPECT_STREQ(element->getTypeName(), "DataObject");
        EXPECT_EQ(element->getParent(), &array);
        EXPECT_EQ(element->getParentInstance(), index);
        EXPECT_EQ(element->getRef(), 1);
        EXPECT_EQ(element->getRefCalls(), 1);
        EXPECT_EQ(element->getNumFields(), 0);
    }
}

TEST_F(Points, NeverShrink) {
    DataObject* last = array.getObject(4);
    for (const int size : {2, 5, 0, -1, -2'000'000'000}) {
        array.setSize(size);
        EXPECT_EQ(array.getSize(), 5);
    }
    EXPECT_EQ(array.getObject(4), last);
}

TEST_F(Points, DoNotGrowBeyondWhatMemoryHolds) {
    array.setSize(16'777'217);
    array.setSize(2'147'483'647);
    EXPECT_EQ(array.getSize(), 5);
}

TEST_F(Points, HaveNoElementsOutOfRange) {
    for (const int index : {-1, 5, 6, 2'147'483'647, -2'147'483'647}) {
        EXPECT_EQ(array.getObject(index), nullptr);
        EXPECT_EQ(array.getField(Text("x"), index, 1), nullptr);
        EXPECT_FALSE(array.setFieldData(Text("x"), Text("a"), index));
        EXPECT_FALSE(array.registerHandler(Text("x"), &handler, index));
    }
    EXPECT_EQ(handler.getField(), nullptr);
}

TEST_F(Points, ResolvePathsInsideTheElement) {
    EXPECT_EQ(array.getField(Text("x"), 3, 0), x(3));
    EXPECT_EQ(array.getField(Text("missing"), 3, 0), nullptr);
    EXPECT_EQ(array.getField(Text("../x"), 2, 0), x(2));
}

TEST_F(Points, RegisterHandlersOnTheElementAndUnregisterThemWithoutRemoval) {
    EXPECT_TRUE(array.registerHandler(Text("x"), &handler, 2));
    EXPECT_EQ(handler.getField(), x(2));
    EXPECT_TRUE(array.unregisterHandler(&handler));
    EXPECT_EQ(handler.getField(), nullptr);
    EXPECT_EQ(array.getObject(2)->getNumFields(), 1);
    EXPECT_FALSE(array.unregisterHandler(&handler));
}

TEST_F(Points, AnswerForTheirFirstElement) {
    x(0)->setSize(2);
    x(0)->setData("first");
    x(1)->setData("second");
    int size = 0;
    char* pointer = nullptr;
    std::string string;
    EXPECT_EQ(array.getNumFields(), 1);
    EXPECT_TRUE(array.getFieldSize(Text("x"), &size));
    EXPECT_EQ(size, 2);
    EXPECT_TRUE(array.getFieldData(Text("x"), &pointer));
    EXPECT_STREQ(pointer, "first");
    EXPECT_TRUE(array.getFieldData(Text("x"), &string));
    EXPECT_EQ(string, "first");
    EXPECT_FALSE(array.getFieldSize(Text("missing"), &size));
}

// Element classes of plug-ins override the hooks behind these; plain objects leave them empty.
TEST_F(Points, SettersByPathReachHooksThatPlainElementsLeaveEmpty) {
    std::string string = "b";
    EXPECT_TRUE(array.setFieldData(Text("x"), Text("a")));
    EXPECT_TRUE(array.setFieldData(Text("x"), &string));
    EXPECT_TRUE(array.setFieldData(Text("x"), Text("c"), 4));
    for (int index = 0; index < 5; ++index)
        EXPECT_EQ(x(index)->getDataInitialized(), 0);
}

TEST_F(Points, ReadOneFieldOfSeveralElements) {
    for (int index = 0; index < 5; ++index)
        x(index)->setData(std::to_string(index).c_str());
    std::vector<char*> two(2);
    EXPECT_TRUE(array.getFieldData(Text("x"), &two, 1, -1));
    EXPECT_STREQ(two[0], "1");
    EXPECT_STREQ(two[1], "2");

    std::vector<char*> few(2);
    EXPECT_TRUE(array.getFieldData(Text("x"), &few, 3, 400));
    EXPECT_STREQ(few[0], "3");
    EXPECT_STREQ(few[1], "4");

    std::vector<char*> many(9);
    EXPECT_TRUE(array.getFieldData(Text("x"), &many, 2, 3));
    EXPECT_STREQ(many[0], "2");
    EXPECT_STREQ(many[1], "3");
    EXPECT_EQ(many[2], nullptr);

    std::vector<char*> past(9);
    EXPECT_TRUE(array.getFieldData(Text("x"), &past, 4, -1));
    EXPECT_STREQ(past[0], "4");
    EXPECT_EQ(past[1], nullptr);
    EXPECT_FALSE(array.getFieldData(Text("x"), &past, 5, -1));
}

TEST_F(FourPoints, TakeOneValueEachAsFarAsTheValuesGo) {
    EXPECT_TRUE(array.setFieldData(Text("x"), Texts{"a", "b"}, 0, -1));
    EXPECT_EQ(xs(), (Values{"a", "b", " ", " "}));
    EXPECT_TRUE(array.setFieldData(Text("x"), Texts{"c", "d", "e"}, 2, -1));
    EXPECT_EQ(xs(), (Values{"a", "b", "c", "d"}));
}

TEST_F(FourPoints, RepeatTheLastValueUpToAGivenEnd) {
    EXPECT_TRUE(array.setFieldData(Text("x"), Texts{"a", "b"}, 0, 3));
    EXPECT_EQ(xs(), (Values{"a", "b", "b", "b"}));
    EXPECT_TRUE(array.setFieldData(Text("x"), Texts{"c"}, 2, 2'147'483'647));
    EXPECT_EQ(xs(), (Values{"a", "b", "c", "c"}));
    EXPECT_FALSE(array.setFieldData(Text("x"), Texts{"d"}, 4, -1));
}

TEST_F(ThreePoints, AreSelectedByRanges) {
    EXPECT_EQ(selected("2"), (Indices{2}));
    EXPECT_EQ(selected("1-2"), (Indices{1, 2}));
    EXPECT_EQ(selected("-2"), (Indices{0, 1, 2}));
    EXPECT_EQ(selected("2-1"), (Indices{2}));
    EXPECT_EQ(selected("0-4"), (Indices{0, 1, 2, -1, -1}));
    EXPECT_EQ(selected("3"), (Indices{-1}));
    EXPECT_EQ(selected("x"), (Indices{0}));
    EXPECT_EQ(selected("2, 0-1]"), (Indices{2, 0, 1}));
}

TEST_F(ThreePoints, AreAppendedBySelection) {
    std::vector<DataField*> fields = {&array};
    array.getFieldsByRange(nullptr, &fields);
    EXPECT_EQ(fields.size(), 1u);
    array.getFieldsByRange(Text("1"), &fields);
    EXPECT_EQ(fields, (std::vector<DataField*>{&array, array.getObject(1)}));
}

TEST_F(ThreePoints, ParseDealsValuesOut) {
    array.parse(nullptr, Text("{{x=1},{x=2}}"));
    EXPECT_EQ(xs(), (Values{"1", "2", " "}));
    array.parse(Text("2"), Text("{{x=5}}"));
    EXPECT_EQ(xs(), (Values{"1", "2", "5"}));
    array.parse(nullptr, Text("{{x=a},{x=b},{x=c},{x=d}}"));
    EXPECT_EQ(xs(), (Values{"a", "b", "c"}));
}

TEST_F(ThreePoints, ParseDealsValuesOutToRanges) {
    array.parse(Text("2,0-1]"), Text("{{x=1},{x=2},{x=3}}"));
    EXPECT_EQ(xs(), (Values{"2", "3", "1"}));
}

TEST_F(ThreePoints, ParseKeepsAValueThatItsIndexDoesNotTake) {
    array.parse(Text("7,1"), Text("{{x=1},{x=2}}"));
    EXPECT_EQ(xs(), (Values{" ", "1", " "}));
}

TEST_F(ThreePoints, ParseCutsRangesAtTheEnd) {
    array.parse(Text("1-2000000000,0"), Text("{{x=1},{x=2},{x=3}}"));
    EXPECT_EQ(xs(), (Values{"3", "1", "2"}));
    EXPECT_EQ(array.getSize(), 3);
}

TEST_F(ThreePoints, ParseStopsAtARangeWithoutAStart) {
    array.parse(Text("0,x,1"), Text("{{x=1},{x=2}}"));
    EXPECT_EQ(xs(), (Values{"1", " ", " "}));
    array.parse(Text("-1"), Text("{{x=3}}"));
    EXPECT_EQ(xs(), (Values{"1", " ", " "}));
}

TEST_F(ThreePoints, ParseSplitsOutsideBracesAndQuotesOnly) {
    array.parse(nullptr, Text("{{x=a,b},{x={c,d}},{x=e}}"));
    EXPECT_EQ(*x(2)->getData(0), "e");
}

TEST_F(ThreePoints, ClearAllElements) {
    for (int index = 0; index < 3; ++index)
        x(index)->setData("full");
    array.clearData();
    EXPECT_EQ(xs(), (Values{"", "", ""}));
}

TEST_F(ThreePoints, CopyElementByElement) {
    SceneTree source;
    for (int index = 0; index < 3; ++index)
        source.xOfPoint(index)->setData(std::to_string(index).c_str());
    EXPECT_TRUE(array.copyData(source.points, 1, 0, 1));
    EXPECT_EQ(xs(), (Values{"1", " ", " "}));
    EXPECT_TRUE(array.copyData(source.points, -4, -4, -1));
    EXPECT_EQ(xs(), (Values{"0", "1", "2"}));
    EXPECT_TRUE(array.copyData(source.points, 0, 2, 99));
    EXPECT_EQ(xs(), (Values{"0", "1", "0"}));
    EXPECT_TRUE(array.copyData(source.points, 2, 0, 3));
    EXPECT_EQ(xs(), (Values{"2", "1", "0"}));
    EXPECT_TRUE(array.copyData(source.points, 0, 0, 0));
    EXPECT_TRUE(array.copyData(source.points, 2'147'483'647, 2'147'483'647, 3));
    EXPECT_EQ(xs(), (Values{"2", "1", "0"}));
}

TEST_F(ThreePoints, CopyFromArraysOnly) {
    SceneTree source;
    EXPECT_FALSE(array.copyData(source.scene, 0, 0, -1));
    EXPECT_FALSE(array.copyData(source.title, 0, 0, -1));
    EXPECT_TRUE(array.copyData(source.cities, 0, 0, -1));
}

TEST_F(ThreePoints, RemovingDestroysElementsAndTheirFields) {
    x(1)->registerHandler(&handler);
    DataHandler onElement;
    array.getObject(2)->registerHandler(&onElement);
    x(1)->unregisterHandler(&handler);
    array.removeChildren();
    EXPECT_EQ(array.getSize(), 0);
    EXPECT_EQ(array.getNumFields(), 0);
    EXPECT_EQ(onElement.getField(), nullptr);
    array.setSize(1);
    EXPECT_STREQ(array.getObject(0)->getName(), "Item-#0");
}

TEST_F(ThreePoints, RemovingSparesElementsThatSomebodyRefersTo) {
    int owner = 0;
    DataObject* kept = array.getObject(1);
    kept->ref(&owner, nullptr);
    array.removeChildren();
    EXPECT_EQ(array.getSize(), 0);
    EXPECT_EQ(kept->getRef(), 1);
    EXPECT_EQ(kept->getNumFields(), 0);
    delete kept;
}

TEST_F(ThreePoints, RemovingReleasesTheFieldsThatTheArrayRefersTo) {
    int owner = 0;
    DataField* held = x(0);
    held->ref(&array, &array);
    DataField* kept = x(1);
    kept->ref(&array, &array);
    kept->ref(&owner, nullptr);
    EXPECT_EQ(kept->getRef(), 3);
    array.removeChildren();
    EXPECT_EQ(kept->getRef(), 1);
    EXPECT_EQ(kept->getRefCalls(), 1);
    EXPECT_EQ(kept->getParent(), nullptr);
    delete kept;
}

TEST_F(ThreePoints, CommandsRunOnTheElementOfTheIndex) {
    Text command("x = 5");
    char* text = command;
    array.executeCommand(text, 2);
    EXPECT_EQ(xs(), (Values{" ", " ", "5"}));
    EXPECT_STREQ(text, "x");
    array.parseCommand(Text("x = 6; x = 7"), 1);
    EXPECT_EQ(xs(), (Values{" ", "7", "5"}));
    array.executeCommand(Text("x = 8"), 3);
    array.executeCommand(Text("x = 8"), -1);
    EXPECT_EQ(xs(), (Values{" ", "7", "5"}));
}

TEST_F(ThreePoints, WildcardsInAnElementStayThere) {
    array.getObject(1)->addField(new DataValue(Text("y")), 0);
    array.executeCommand(Text("* = 9"), 1);
    EXPECT_EQ(xs(), (Values{" ", "9", " "}));
    EXPECT_EQ(*array.getField(Text("y"), 1, 0)->getData(0), "9");
}

TEST_F(ThreePoints, ArePassedSetsByTheLinksOfTheArray) {
    SceneTree follower;
    array.addTargetLink(follower.points);
    array.executeCommand(Text("x = 4"), 2);
    EXPECT_EQ(xs(), (Values{" ", " ", "4"}));
    EXPECT_EQ(*follower.xOfPoint(2)->getData(0), "4");
    EXPECT_EQ(*follower.xOfPoint(0)->getData(0), " ");
}

TEST_F(ThreePoints, ClearLinksReachesElements) {
    SceneTree source;
    source.points->addTargetLink(&array);
    source.points->getObject(1)->addTargetLink(array.getObject(1));
    DataValue target(Text("target"));
    array.addTargetLink(&target);
    array.ClearLinks();
    EXPECT_EQ(array.getLinkSource(), nullptr);
    EXPECT_EQ(array.getObject(1)->getLinkSource(), nullptr);
    EXPECT_EQ(target.getLinkSource(), nullptr);
}
