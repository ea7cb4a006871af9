#include <support/DeclaredTypes.h>
#include <support/RecordingHandler.h>
#include <support/Shape.h>
#include <support/Texts.h>
#include <support/TreeCleanup.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

/// Arrays whose elements have a type.

namespace {

constexpr int largest = std::numeric_limits<int>::max();
constexpr int smallest = std::numeric_limits<int>::min();

constexpr char typesText[] = "Point = {string x=0; string y=0;}; Label = {string text=Hi;};";

/// Two elements, E observes the first, A observes the array.
class TypedArray : public testing::Test {
protected:
    TypedArray() {
        array.setSize(2);
        array.registerHandler(&onArray);
        array.getObject(0)->registerHandler(&onElement);
        diary.take();
    }

    DataObject* element(int index) { return array.getObject(index); }

    DeclaredTypes types{typesText};
    DataObjectType* point = types["Point"];
    DataObjectType* noType = nullptr;
    DataArray array{Text("a")};
    const SubtreeCleanup belowArray{array};
    Diary diary;
    RecordingHandler onArray{diary, "A"};
    RecordingHandler onElement{diary, "E"};
};

/// Three points with x = 1, 2, 3.
class ThreeTypedPoints : public testing::Test {
protected:
    ThreeTypedPoints() {
        array.setObjectType(types["Point"]);
        array.setSize(3);
        array.parse(nullptr, Text("{{x=1},{x=2},{x=3}}"));
    }

    std::string xs(DataArray& points) {
        std::string all;
        for (int index = 0; index < points.getSize(); ++index)
            all += (index == 0 ? "" : " ") + *points.getField(Text("x"), index, 0)->getData(0);
        return all;
    }
    std::string xs() { return xs(array); }

    DeclaredTypes types{typesText};
    DataArray array{Text("a")};
    const SubtreeCleanup belowArray{array};
};

} // namespace

TEST_F(TypedArray, TypesItsElementsAndTellsThemFirst) {
    array.setObjectType(point);
    EXPECT_EQ(diary.take(), "E type Point, A type Point");
    EXPECT_EQ(onArray.lastField(), &array);
    EXPECT_EQ(onElement.lastField(), element(0));
    EXPECT_EQ(shapeOf(array), "a[Item-#0{x=0,y=0},Item-#1{x=0,y=0}]");
    EXPECT_EQ(array.getObjectType(), point);
    EXPECT_STREQ(array.getObjectTypeName(), "Point");
    EXPECT_EQ(array.getNumFields(), 2);
}

TEST_F(TypedArray, KeepsItsOldTypeWhileElementsHearOfTheNew) {
    std::string seen;
    onElement.onceThen([&] { seen = shapeOf(array) + (array.getObjectType() ? " typed" : " untyped"); });
    array.setObjectType(point);
    EXPECT_EQ(seen, "a[Item-#0{x=0,y=0},Item-#1{}] untyped");
    onArray.onceThen([&] { seen = shapeOf(array) + ' ' + array.getObjectTypeName(); });
    array.setObjectType(types["Label"]);
    EXPECT_EQ(seen, "a[Item-#0{text=Hi},Item-#1{text=Hi}] Label");
}

TEST_F(TypedArray, NamesItsElementsByTypeAndPosition) {
    array.setObjectType(point);
    array.setSize(3);
    EXPECT_EQ(shapeOf(array), "a[Item-#0{x=0,y=0},Item-#1{x=0,y=0},Point-#2{x=0,y=0}]");
    EXPECT_EQ(element(2)->getObjectType(), point);
    EXPECT_EQ(element(2)->getParent(), &array);
    EXPECT_EQ(element(2)->getParentInstance(), 2);
    EXPECT_EQ(element(2)->getRef(), 1);
    EXPECT_EQ(element(2)->getRefCalls(), 1);
}

TEST_F(TypedArray, GrowingTellsNobody) {
    array.setObjectType(point);
    diary.take();
    array.setSize(10);
    EXPECT_EQ(diary.take(), "");
}

TEST_F(TypedArray, RetypingToTheSameTypeChangesNothing) {
    array.setObjectType(point);
    element(0)->setObjectType(types["Label"]);
    diary.take();
    array.setObjectType(point);
    EXPECT_EQ(diary.take(), "");
    EXPECT_EQ(shapeOf(array), "a[Item-#0{text=Hi},Item-#1{x=0,y=0}]");
}

TEST_F(TypedArray, RetypingRebuildsEveryElement) {
    array.setObjectType(point);
    diary.take();
    array.setObjectType(types["Label"]);
    EXPECT_EQ(diary.take(), "E type Label, A type Label");
    EXPECT_EQ(shapeOf(array), "a[Item-#0{text=Hi},Item-#1{text=Hi}]");
}

TEST_F(TypedArray, ElementsThatHaveTheTypeHearNothing) {
    element(0)->setObjectType(point);
    diary.take();
    array.setObjectType(point);
    EXPECT_EQ(diary.take(), "A type Point");
}

TEST_F(TypedArray, NoTypeEmptiesTheElementsSilently) {
    array.setObjectType(point);
    diary.take();
    array.setObjectType(noType);
    EXPECT_EQ(diary.take(), "");
    EXPECT_EQ(shapeOf(array), "a[Item-#0{},Item-#1{}]");
    EXPECT_EQ(array.getObjectType(), nullptr);
    EXPECT_EQ(array.getObjectTypeName(), nullptr);
    array.setSize(3);
    EXPECT_EQ(shapeOf(array), "a[Item-#0{},Item-#1{},Item-#2{}]");
}

TEST_F(TypedArray, TypingByNameConcernsTheElementsAlone) {
    array.setObjectType(Text("Point"));
    EXPECT_EQ(diary.take(), "E type Point, E type Point");
    EXPECT_EQ(shapeOf(array), "a[Item-#0{x=0,y=0},Item-#1{x=0,y=0}]");
    EXPECT_EQ(array.getObjectType(), nullptr);
    EXPECT_EQ(array.getObjectTypeName(), nullptr);
    array.setSize(3);
    EXPECT_EQ(shapeOf(array), "a[Item-#0{x=0,y=0},Item-#1{x=0,y=0},Item-#2{}]");
}

TEST_F(TypedArray, TypingByNameKeepsTheTypeOfLaterElements) {
    array.setObjectType(point);
    array.setObjectType(Text("Label"));
    array.setSize(3);
    EXPECT_EQ(shapeOf(array), "a[Item-#0{text=Hi},Item-#1{text=Hi},Point-#2{x=0,y=0}]");
}

TEST_F(TypedArray, TypingByAnUnknownNameDoesNothing) {
    array.setObjectType(Text("Missing"));
    array.setObjectType(static_cast<char*>(nullptr));
    EXPECT_EQ(diary.take(), "");
    EXPECT_EQ(shapeOf(array), "a[Item-#0{},Item-#1{}]");
}

TEST(EmptyTypedArray, IsTypedByTypeOnly) {
    DeclaredTypes types(typesText);
    DataArray array(Text("a"));
    const SubtreeCleanup belowArray{array};
    array.setObjectType(Text("Point"));
    EXPECT_EQ(array.getObjectType(), nullptr);
    array.setObjectType(types["Point"]);
    EXPECT_EQ(array.getNumFields(), 0);
    array.setSize(1);
    EXPECT_EQ(shapeOf(array), "a[Point-#0{x=0,y=0}]");
}

TEST_F(TypedArray, RemovingKeepsTheType) {
    array.setObjectType(point);
    array.removeChildren();
    EXPECT_EQ(shapeOf(array), "a[]");
    EXPECT_EQ(array.getObjectType(), point);
    array.setSize(1);
    EXPECT_EQ(shapeOf(array), "a[Point-#0{x=0,y=0}]");
}

TEST_F(ThreeTypedPoints, AreReachedByPath) {
    DataStructure root(Text("root"));
    const SubtreeCleanup belowRoot{root};
    auto* points = DataObject::createArray(Text("Point"), Text("points"), 3);
    root.addField(points, 0);
    EXPECT_EQ(root.getField(Text("points/x"), 0, 0), points->getField(Text("x"), 0, 0));
    EXPECT_EQ(root.getField(Text("points[2]/y"), 0, 0), points->getField(Text("y"), 2, 0));
    EXPECT_EQ(root.getField(Text("points[3]/y"), 0, 0), nullptr);
}

TEST_F(ThreeTypedPoints, AnswerForTheFirst) {
    int size = 0;
    char* pointer = nullptr;
    std::string text;
    EXPECT_TRUE(array.getFieldSize(Text("x"), &size));
    EXPECT_EQ(size, 1);
    EXPECT_TRUE(array.getFieldData(Text("x"), &pointer));
    EXPECT_STREQ(pointer, "1");
    EXPECT_TRUE(array.getFieldData(Text("x"), &text));
    EXPECT_EQ(text, "1");
    EXPECT_FALSE(array.getFieldSize(Text("z"), &size));
    EXPECT_FALSE(array.getFieldData(Text("z"), &pointer));
    EXPECT_FALSE(array.getFieldData(Text("z"), &text));
}

TEST_F(ThreeTypedPoints, TakeValuesBetweenAnyBounds) {
    const auto given = [&](int from, int to) {
        array.parse(nullptr, Text("{{x=1},{x=2},{x=3}}"));
        const bool done = array.setFieldData(Text("x"), Texts{"a", "b"}, from, to);
        return xs() + (done ? "" : " refused");
    };
    EXPECT_EQ(given(0, -1), "a b 3");
    EXPECT_EQ(given(1, -1), "1 a b");
    EXPECT_EQ(given(2, -1), "1 2 a");
    EXPECT_EQ(given(3, -1), "1 2 3 refused");
    EXPECT_EQ(given(-1, -1), "1 2 3 refused");
    EXPECT_EQ(given(0, 0), "a 2 3");
    EXPECT_EQ(given(0, 2), "a b b");
    EXPECT_EQ(given(1, 3), "1 a b");
    EXPECT_EQ(given(1, largest), "1 a b");
    EXPECT_EQ(given(2, 1), "1 2 3");
    EXPECT_EQ(given(0, smallest), "1 2 3");
    EXPECT_EQ(given(smallest, largest), "1 2 3 refused");
}

TEST_F(ThreeTypedPoints, TakeNoValuesFromAnEmptyList) {
    EXPECT_TRUE(array.setFieldData(Text("x"), Texts{}, 0, -1));
    EXPECT_TRUE(array.setFieldData(Text("x"), Texts{}, 0, 2));
    EXPECT_FALSE(array.setFieldData(Text("x"), Texts{}, 3, -1));
    EXPECT_FALSE(array.setFieldData(Text("x"), static_cast<std::vector<char*>*>(nullptr), 0, -1));
    EXPECT_EQ(xs(), "1 2 3");
}

TEST_F(ThreeTypedPoints, GiveValuesBetweenAnyBounds) {
    const auto taken = [&](std::size_t room, int from, int to) {
        std::vector<char*> out(room);
        std::string all = array.getFieldData(Text("x"), &out, from, to) ? "" : "refused";
        for (const char* text : out)
            all += text ? text : "-";
        return all;
    };
    EXPECT_EQ(taken(3, 0, -1), "123");
    EXPECT_EQ(taken(5, 0, -1), "123--");
    EXPECT_EQ(taken(2, 0, -1), "12");
    EXPECT_EQ(taken(2, 1, -1), "23");
    EXPECT_EQ(taken(3, 2, -1), "3--");
    EXPECT_EQ(taken(3, 1, 1), "2--");
    EXPECT_EQ(taken(1, 0, 2), "1");
    EXPECT_EQ(taken(0, 0, -1), "");
    EXPECT_EQ(taken(4, 1, 3), "23--");
    EXPECT_EQ(taken(4, 1, 0), "----");
    EXPECT_EQ(taken(2, 3, -1), "refused--");
    EXPECT_EQ(taken(2, -1, -1), "refused--");
    // These bounds overflowed.
    EXPECT_EQ(taken(4, 0, largest), "123-");
    EXPECT_EQ(taken(4, 1, smallest), "----");
}

TEST_F(ThreeTypedPoints, RangesWithAnyBlanksAndTexts) {
    const auto selected = [&](const char* range) {
        std::vector<DataField*> fields;
        array.getFieldsByRange(Text(range), &fields);
        std::string indices;
        for (DataField* field : fields)
            indices += field ? std::to_string(field->getParentInstance()) : "-";
        return indices;
    };
    EXPECT_EQ(selected("1"), "1");
    EXPECT_EQ(selected(" \t\r\n1"), "1");
    EXPECT_EQ(selected("0 - 2"), "012");
    EXPECT_EQ(selected("0-2]"), "012");
    EXPECT_EQ(selected("1]"), "1");
    EXPECT_EQ(selected("1,1,0"), "110");
    EXPECT_EQ(selected("2-1"), "2");
    EXPECT_EQ(selected("1-x"), "1");
    EXPECT_EQ(selected("x-1"), "01");
    EXPECT_EQ(selected("1-2-0"), "12");
    EXPECT_EQ(selected("-"), "0");
    EXPECT_EQ(selected(""), "0");
    EXPECT_EQ(selected(",2"), "02");
    EXPECT_EQ(selected("01x"), "1");
    EXPECT_EQ(selected("0-4"), "012--");
    EXPECT_EQ(selected("5"), "-");
}

TEST_F(ThreeTypedPoints, RangesOfAnyLengthEnd) {
    const auto count = [&](const std::string& range) {
        std::vector<DataField*> fields;
        array.getFieldsByRange(Text(range), &fields);
        return fields.size();
    };
    EXPECT_EQ(count("0-2000000000"), 3u + 65'536u);
    EXPECT_EQ(count("2000000000"), 1u);
    EXPECT_EQ(count("1999999999-2000000000"), 2u);
    EXPECT_EQ(count("0-99999999999999999999"), 3u + 65'536u);
    EXPECT_EQ(count("99999999999999999999-0"), 1u);
    std::string many;
    for (int times = 0; times < 100; ++times)
        many += "0-2147483647,";
    EXPECT_EQ(count(many), 300u + 65'536u);
}

TEST_F(ThreeTypedPoints, ParseReadsRangesInFull) {
    const auto parsed = [&](const char* range) {
        array.parse(nullptr, Text("{{x=1},{x=2},{x=3}}"));
        array.parse(Text(range), Text("{{x=a},{x=b}}"));
        return xs();
    };
    EXPECT_EQ(parsed("1"), "1 a 3");
    EXPECT_EQ(parsed("2,0"), "b 2 a");
    EXPECT_EQ(parsed("0-1"), "a b 3");
    EXPECT_EQ(parsed(" 1 - 2 "), "1 a b");
    EXPECT_EQ(parsed("1-1"), "1 a 3");
    EXPECT_EQ(parsed("1-x,0"), "b a 3");
    EXPECT_EQ(parsed("2-1"), "1 2 3");
    EXPECT_EQ(parsed("2-1,0"), "a 2 3");
    EXPECT_EQ(parsed("3,1"), "1 a 3");
    EXPECT_EQ(parsed("1-9"), "1 a b");
    EXPECT_EQ(parsed("7-9,0"), "a 2 3");
    EXPECT_EQ(parsed("x,0"), "1 2 3");
    EXPECT_EQ(parsed("-1,0"), "1 2 3");
    EXPECT_EQ(parsed("0,x,1"), "a 2 3");
    EXPECT_EQ(parsed("0]"), "a 2 3");
    EXPECT_EQ(parsed("1999999999-2000000000,2147483647,0-2147483647"), "a b 3");
}

TEST_F(ThreeTypedPoints, ParseReadsValuesInFull) {
    const auto parsed = [&](const char* text) {
        array.parse(nullptr, Text("{{x=1},{x=2},{x=3}}"));
        array.parse(nullptr, Text(text));
        return xs();
    };
    EXPECT_EQ(parsed("{x=a},{x=b}"), "b 2 3");
    EXPECT_EQ(parsed("noise{{x=a}}"), "a 2 3");
    EXPECT_EQ(parsed("{ {x=a} , {x=b} }"), "a b 3");
    EXPECT_EQ(parsed("{{x=a},,{x=c}}"), "a 2 c");
    EXPECT_EQ(parsed("{{x=a},{}}"), "a 2 3");
    EXPECT_EQ(parsed("{{x=a,b},{x=\"\"c},{\"\"}}"), "a c},{ 3");
    EXPECT_EQ(parsed("{x=a}"), "1 2 3");
    EXPECT_EQ(parsed("x=a"), "1 2 3");
    EXPECT_EQ(parsed(""), "1 2 3");
    array.parse(nullptr, nullptr);
    EXPECT_EQ(xs(), "1 2 3");
}

TEST_F(ThreeTypedPoints, CopyBetweenAnyBounds) {
    DataArray source(Text("source"));
    const SubtreeCleanup belowSource{source};
    source.setObjectType(types["Point"]);
    source.setSize(4);
    source.parse(nullptr, Text("{{x=a},{x=b},{x=c},{x=d}}"));
    const auto copied = [&](int sourceFirst, int targetFirst, int count) {
        array.parse(nullptr, Text("{{x=1},{x=2},{x=3}}"));
        return xs() == "1 2 3" && array.copyData(&source, sourceFirst, targetFirst, count) ? xs() : "refused";
    };
    EXPECT_EQ(copied(0, 0, -1), "a b c");
    EXPECT_EQ(copied(1, 0, -1), "b c d");
    EXPECT_EQ(copied(2, 0, -1), "c d 3");
    EXPECT_EQ(copied(0, 1, -1), "1 a b");
    EXPECT_EQ(copied(0, 2, 2), "1 2 a");
    EXPECT_EQ(copied(3, 1, 1), "1 d 3");
    EXPECT_EQ(copied(0, 0, 0), "1 2 3");
    EXPECT_EQ(copied(-7, -7, 1), "a 2 3");
    EXPECT_EQ(copied(smallest, smallest, smallest), "a b c");
    EXPECT_EQ(copied(largest, 0, largest), "1 2 3");
    EXPECT_EQ(copied(0, largest, largest), "1 2 3");
    EXPECT_FALSE(array.copyData(nullptr, 0, 0, -1));
    EXPECT_TRUE(array.copyData(&array, 0, 1, 2));
}

TEST_F(ThreeTypedPoints, CopyWhatBothTypesHave) {
    DataArray source(Text("source"));
    const SubtreeCleanup belowSource{source};
    types.declare("Other = {string x=o; string z=o;};");
    source.setObjectType(types["Other"]);
    source.setSize(2);
    EXPECT_TRUE(array.copyData(&source, 0, 0, -1));
    EXPECT_EQ(shapeOf(array), "a[Point-#0{x=o,y=0},Point-#1{x=o,y=0},Point-#2{x=3,y=0}]");
}

TEST_F(ThreeTypedPoints, RegisterOnTheFieldsOfAnElement) {
    Diary diary;
    RecordingHandler handler(diary, "H");
    EXPECT_TRUE(array.registerHandler(Text("y"), &handler, 1));
    EXPECT_EQ(handler.getField(), array.getField(Text("y"), 1, 0));
    EXPECT_FALSE(array.registerHandler(Text("y"), &handler, 3));
    EXPECT_EQ(handler.getField(), array.getField(Text("y"), 1, 0));
    EXPECT_FALSE(array.registerHandler(Text("z"), &handler, 1));
    EXPECT_EQ(handler.getField(), nullptr);
    EXPECT_FALSE(array.unregisterHandler(&handler));
    EXPECT_FALSE(array.unregisterHandler(nullptr));
}
