#include <support/DeclaredTypes.h>
#include <support/Environment.h>
#include <support/RecordingHandler.h>
#include <support/Shape.h>
#include <support/TreeCleanup.h>

#include <gtest/gtest.h>

#include <cstdarg>
#include <memory>
#include <utility>

/// Handlers of type changes may do anything, also to what is changing its type.

namespace {

constexpr char pointAndLabel[] = "Point = {string x=0;}; Label = {string text=Hi;};";

class ObjectHandlers : public testing::Test {
protected:
    ObjectHandlers() {
        object->registerHandler(&first);
        object->registerHandler(&second);
        diary.take();
    }

    DeclaredTypes types{pointAndLabel};
    Diary diary;
    RecordingHandler first{diary, "A"};
    RecordingHandler second{diary, "B"};
    Tree<DataObject> object{new DataObject(Text("o"))};
};

/// Three untyped elements; E observes the first, A the array.
class ArrayHandlers : public testing::Test {
protected:
    ArrayHandlers() {
        array->setSize(3);
        array->registerHandler(&onArray);
        array->getObject(0)->registerHandler(&onElement);
        diary.take();
    }

    DeclaredTypes types{pointAndLabel};
    DataObjectType* point = types["Point"];
    Diary diary;
    RecordingHandler onArray{diary, "A"};
    RecordingHandler onElement{diary, "E"};
    Tree<DataArray> array{new DataArray(Text("a"))};
};

} // namespace

TEST_F(ObjectHandlers, MayDeleteTheObjectTypedByType) {
    first.onceThen([&] { object.reset(); });
    object->setObjectType(types["Point"]);
    EXPECT_EQ(diary.take(), "A type Point");
    EXPECT_EQ(second.getField(), nullptr);
}

TEST_F(ObjectHandlers, MayDeleteTheObjectTypedByName) {
    second.onceThen([&] { object.reset(); });
    object->setObjectType(Text("Point"));
    EXPECT_EQ(diary.take(), "A type Point, B type Point");
}

TEST_F(ObjectHandlers, MayDeleteTheObjectOnTheSecondNotice) {
    first.onceThen([&] { first.onceThen([&] { object.reset(); }); });
    object->setObjectType(Text("Point"));
    EXPECT_EQ(diary.take(), "A type Point, B type Point, A type Point");
}

TEST_F(ObjectHandlers, MayRetypeTheObject) {
    first.onceThen([&] { object->setObjectType(types["Label"]); });
    object->setObjectType(types["Point"]);
    EXPECT_EQ(diary.take(), "A type Point, A type Label, B type Label, B type Point");
    EXPECT_EQ(shapeOf(*object), "o{text=Hi}");
    EXPECT_STREQ(object->getObjectTypeName(), "Label");
}

TEST_F(ObjectHandlers, MayRetypeTheObjectByName) {
    second.onceThen([&] { object->setObjectType(Text("Label")); });
    object->setObjectType(Text("Point"));
    EXPECT_EQ(diary.take(), "A type Point, B type Point, A type Label, B type Label, A type Label, B type Label, "
                            "A type Point, B type Point");
    EXPECT_EQ(shapeOf(*object), "o{text=Hi}");
}

TEST_F(ObjectHandlers, MayEmptyTheObject) {
    first.onceThen([&] { object->setObjectType(static_cast<DataObjectType*>(nullptr)); });
    object->setObjectType(types["Point"]);
    EXPECT_EQ(diary.take(), "A type Point, B type Point");
    EXPECT_EQ(shapeOf(*object), "o{}");
}

TEST_F(ObjectHandlers, MayBringMoreHandlers) {
    RecordingHandler third(diary, "C");
    first.onceThen([&] { object->registerHandler(&third); });
    object->setObjectType(types["Point"]);
    EXPECT_EQ(diary.take(), "A type Point, B type Point, C type Point");
}

TEST_F(ObjectHandlers, MayLeave) {
    first.onceThen([&] { object->unregisterHandler(&first); });
    object->setObjectType(types["Point"]);
    EXPECT_EQ(diary.take(), "A type Point");
    EXPECT_EQ(object->getNumHandlers(), 1);
}

TEST_F(ObjectHandlers, MayReadTheTypesAnew) {
    first.onceThen([] { DataObject::readConfigFiles(); });
    object->setObjectType(Text("Point"));
    EXPECT_EQ(diary.take(), "A type Point, B type Point, A type Point, B type Point");
    EXPECT_EQ(types["Point"], nullptr);
    EXPECT_STREQ(object->getObjectTypeName(), "Point");
    EXPECT_EQ(shapeOf(*object), "o{x=0}");
}

TEST_F(ObjectHandlers, MayDeleteAnObjectThatAPathRetypes) {
    DataStructure root(Text("root"));
    const SubtreeCleanup belowRoot{root};
    DataObject* child = object.release();
    root.addField(child, 0);
    first.onceThen([&] {
        root.removeChildren();
        const Tree<DataObject> gone(child);
    });
    EXPECT_EQ(root.getField(Text("Point:o/string:z"), 0, 0), nullptr);
    EXPECT_EQ(diary.take(), "A type Point");
    EXPECT_EQ(shapeOf(root), "root{}");
}

TEST_F(ObjectHandlers, MayDeleteTheStructureThatRetypesByPath) {
    auto root = std::make_unique<DataStructure>(Text("root"));
    root->addField(object.get(), 0);
    first.onceThen([&] { root.reset(); });
    EXPECT_EQ(root->getField(Text("Point:o/x"), 0, 0), nullptr);
    EXPECT_EQ(object->getParent(), nullptr);
    EXPECT_EQ(shapeOf(*object), "o{x=0}");
}

TEST_F(ArrayHandlers, MayDeleteTheArrayFromAnElement) {
    onElement.onceThen([&] { array.reset(); });
    array->setObjectType(point);
    EXPECT_EQ(diary.take(), "E type Point");
    EXPECT_EQ(onArray.getField(), nullptr);
}

TEST_F(ArrayHandlers, MayDeleteTheArrayFromAnElementTypedByName) {
    onElement.onceThen([&] { array.reset(); });
    array->setObjectType(Text("Point"));
    EXPECT_EQ(diary.take(), "E type Point");
}

TEST_F(ArrayHandlers, MayDeleteTheArray) {
    onArray.onceThen([&] { array.reset(); });
    array->setObjectType(point);
    EXPECT_EQ(diary.take(), "E type Point, A type Point");
}

TEST_F(ArrayHandlers, MayRemoveTheElements) {
    onElement.onceThen([&] { array->removeChildren(); });
    array->setObjectType(point);
    EXPECT_EQ(diary.take(), "E type Point, A type Point");
    EXPECT_EQ(shapeOf(*array), "a[]");
    EXPECT_EQ(array->getObjectType(), point);
}

TEST_F(ArrayHandlers, MayRemoveTheElementsOnTheWayByName) {
    onElement.onceThen([&] { array->removeChildren(); });
    array->setObjectType(Text("Point"));
    EXPECT_EQ(diary.take(), "E type Point");
    EXPECT_EQ(shapeOf(*array), "a[]");
}

TEST_F(ArrayHandlers, MayGrowTheArray) {
    onElement.onceThen([&] { array->setSize(200); });
    onArray.onceThen([&] { array->setSize(201); });
    array->setObjectType(point);
    EXPECT_EQ(diary.take(), "E type Point, A type Point");
    EXPECT_EQ(array->getSize(), 201);
    EXPECT_EQ(shapeOf(*array->getObject(199)), "Item-#199{x=0}");
    EXPECT_EQ(shapeOf(*array->getObject(200)), "Point-#200{x=0}");
}

TEST_F(ArrayHandlers, MayRetypeAnElement) {
    onElement.onceThen([&] { array->getObject(0)->setObjectType(types["Label"]); });
    array->setObjectType(point);
    EXPECT_EQ(diary.take(), "E type Point, E type Label, A type Point");
    EXPECT_EQ(shapeOf(*array), "a[Item-#0{text=Hi},Item-#1{x=0},Item-#2{x=0}]");
}

TEST_F(ArrayHandlers, MayRetypeTheArray) {
    onArray.onceThen([&] { array->setObjectType(types["Label"]); });
    array->setObjectType(point);
    EXPECT_EQ(diary.take(), "E type Point, A type Point, E type Label, A type Label");
    EXPECT_EQ(shapeOf(*array), "a[Item-#0{text=Hi},Item-#1{text=Hi},Item-#2{text=Hi}]");
    EXPECT_STREQ(array->getObjectTypeName(), "Label");
}

TEST_F(ArrayHandlers, MayReadTheTypesAnew) {
    onElement.onceThen([] { DataObject::readConfigFiles(); });
    array->setObjectType(Text("Point"));
    EXPECT_EQ(diary.take(), "E type Point, E type Point");
    EXPECT_EQ(shapeOf(*array), "a[Item-#0{x=0},Item-#1{},Item-#2{}]");
}

TEST_F(ArrayHandlers, MayDeleteTheArrayWhileItParses) {
    array->setObjectType(point);
    RecordingHandler onX(diary, "X");
    array->registerHandler(Text("x"), &onX, 1);
    diary.take();
    onX.onceThen([&] { array.reset(); });
    array->parse(nullptr, Text("{{x=1},{x=2},{x=3}}"));
    EXPECT_EQ(diary.take(), "X changed");
}

TEST_F(ArrayHandlers, MayDeleteEitherArrayWhileItIsCopied) {
    array->setObjectType(point);
    Tree<DataArray> source(DataObject::createArray(Text("Point"), Text("s"), 3));
    RecordingHandler onX(diary, "X");
    array->registerHandler(Text("x"), &onX, 0);
    onX.onceThen([&] { source.reset(); });
    EXPECT_TRUE(array->copyData(source.get(), 0, 0, -1));
    source.reset(DataObject::createArray(Text("Point"), Text("s"), 3));
    onX.onceThen([&] { array.reset(); });
    EXPECT_TRUE(array->copyData(source.get(), 0, 0, -1));
}

namespace {

DataArray* arrayToGrow = nullptr;

DataObject* growOnce(char* typeName) {
    if (DataArray* array = std::exchange(arrayToGrow, nullptr))
        array->setSize(2);
    return new DataObject(typeName);
}

void readOnce() {
    static bool done = false;
    if (!std::exchange(done, true))
        DataObject::readConfigFiles();
}

int readAtOnce(const char* /*format*/, va_list /*args*/) {
    readOnce();
    return 0;
}

} // namespace

TEST(TypeFunctionsReentrancy, MayGrowTheArrayThatAsks) {
    DeclaredTypes types(pointAndLabel);
    types["Point"]->setCreateObjectFunc(growOnce);
    DataArray array(Text("a"));
    const SubtreeCleanup belowArray{array};
    array.setObjectType(types["Point"]);
    arrayToGrow = &array;
    array.setSize(2);
    for (int index = 0; index < array.getSize(); ++index)
        EXPECT_EQ(array.getObject(index)->getParentInstance(), index);
}

TEST(TypeReadingReentrancy, PrintingMayReadTheTypesAnew) {
    DeclaredTypes types(pointAndLabel);
    DataSetVPrintfFunction(readAtOnce);
    types.declare("New = {string x;}; Other = {New n;};");
    DataObject::readConfigFiles();
    EXPECT_NE(DataObject::getTypesTable(), nullptr);
}

namespace {

/// What the first object that a type's function makes is observed by.
DataHandler* nextObserver = nullptr;

DataObject* makeObservedOnce(char* typeName) {
    auto* made = new DataObject(typeName);
    if (DataHandler* handler = std::exchange(nextObserver, nullptr))
        made->registerHandler(handler);
    return made;
}

/// An array or a table whose next element is observed by E.
template <class Array>
struct GrowingArray {
    GrowingArray() {
        types["Point"]->setCreateObjectFunc(makeObservedOnce);
        array->setObjectType(types["Point"]);
        nextObserver = &handler;
    }

    DeclaredTypes types{pointAndLabel};
    Diary diary;
    RecordingHandler handler{diary, "E"};
    Tree<Array> array{new Array(Text("a"))};
};

} // namespace

TEST(NewElement, MayDeleteTheArrayThatGrows) {
    GrowingArray<DataArray> growing;
    growing.handler.onceThen([&] { growing.array.reset(); });
    growing.array->setSize(3);
    EXPECT_EQ(growing.diary.take(), "E type Point");
    EXPECT_EQ(growing.array, nullptr);
}

TEST(NewElement, MayDeleteItself) {
    GrowingArray<DataArray> growing;
    growing.handler.onceThen([&] {
        DataNode* element = static_cast<DataNode*>(growing.handler.getField());
        element->deleteChildren();
        delete element;
    });
    growing.array->setSize(3);
    EXPECT_EQ(shapeOf(*growing.array), "a[]");
    growing.array->setSize(1);
    EXPECT_EQ(shapeOf(*growing.array), "a[Point{x=0}]");
}

TEST(NewElement, MayDeleteTheTableThatAsks) {
    GrowingArray<DataHashTable> growing;
    growing.handler.onceThen([&] { growing.array.reset(); });
    EXPECT_EQ(growing.array->newObject(Text("Oslo")), nullptr);
    EXPECT_EQ(growing.array, nullptr);
}

namespace {

/// A root with the array "points" of three objects and a value x in the first; H observes it and hears of the marker
/// that "string:x" leaves there.
struct MarkedElement {
    MarkedElement() {
        root->addField(points, 0);
        points->setSize(3);
        auto* x = new DataValue(Text("x"));
        points->getObject(0)->addField(x, 0);
        x->setData("1");
        x->registerHandler(&handler);
        diary.take();
    }

    Diary diary;
    RecordingHandler handler{diary, "H"};
    Tree<Orbel> root{new Orbel(Text("root"))};
    DataArray* points = new DataArray(Text("points"));
};

} // namespace

TEST(MarkedFields, MayEmptyTheArrayThatIsRead) {
    MarkedElement marked;
    marked.handler.onceThen([&] { deleteSubtree(*marked.points); });
    std::vector<char*> texts(3);
    EXPECT_TRUE(marked.points->getFieldData(Text("string:x"), &texts, 0, -1));
    EXPECT_EQ(marked.diary.take(), "H same");
    EXPECT_EQ(texts, (std::vector<char*>{nullptr, nullptr, nullptr}));
}

TEST(MarkedFields, MayDeleteTheFieldThatTheirNewHandlerLeaves) {
    MarkedElement marked;
    RecordingHandler moving(marked.diary, "M");
    auto* old = new DataValue(Text("old"));
    old->registerHandler(&moving);
    marked.handler.onceThen([&] { delete old; });
    EXPECT_TRUE(marked.points->registerHandler(Text("string:x"), &moving, 0));
    EXPECT_EQ(moving.getField(), marked.points->getField(Text("x"), 0, 0));
}

TEST(MarkedFields, MayDeleteTheObjectThatRegisters) {
    MarkedElement marked;
    RecordingHandler moving(marked.diary, "M");
    marked.handler.onceThen([&] { deleteSubtree(*marked.points); });
    EXPECT_FALSE(marked.points->getObject(0)->registerHandler(Text("string:x"), &moving, 0));
    EXPECT_EQ(moving.getField(), nullptr);
}

TEST(MarkedFields, MayDeleteTheStructureThatRegistersLinksOrCopies) {
    for (const int way : {0, 1, 2}) {
        Diary diary;
        RecordingHandler handler(diary, "H");
        RecordingHandler moving(diary, "M");
        Tree<DataStructure> root(new DataStructure(Text("root")));
        auto* x = new DataValue(Text("x"));
        root->addField(x, 0);
        x->setData("1");
        x->registerHandler(&handler);
        handler.onceThen([&] { root.reset(); });
        DataStructure* asked = root.get();
        if (way == 0)
            EXPECT_FALSE(asked->registerHandler(Text("string:x"), &moving, 0));
        else if (way == 1)
            EXPECT_FALSE(asked->addLink(Text("string:x"), Text("y")));
        else
            asked->executeCopyCommand(Text("string:x = y"));
        EXPECT_EQ(root, nullptr);
        EXPECT_EQ(moving.getField(), nullptr);
    }
}

TEST_F(ArrayHandlers, MayDeleteTheArrayWhileItParsesARange) {
    array->setObjectType(point);
    RecordingHandler onX(diary, "X");
    array->registerHandler(Text("x"), &onX, 1);
    diary.take();
    onX.onceThen([&] { array.reset(); });
    array->parse(Text("0,1,2"), Text("{{x=1},{x=2},{x=3}}"));
    EXPECT_EQ(array, nullptr);
    EXPECT_EQ(diary.take(), "X changed");
}

DataHashTable* tableOfTypeFunction = nullptr;

DataObject* makeTheEntryAtOnce(char* /*typeName*/) {
    if (DataHashTable* table = std::exchange(tableOfTypeFunction, nullptr))
        table->newObject(Text("Oslo"));
    return new DataObject(Text("made"));
}

TEST(NewElement, MayMakeTheEntryThatIsAskedFor) {
    DeclaredTypes types(pointAndLabel);
    types["Point"]->setCreateObjectFunc(makeTheEntryAtOnce);
    DataHashTable table(Text("cities"));
    const SubtreeCleanup belowTable{table};
    table.setObjectType(types["Point"]);
    tableOfTypeFunction = &table;
    DataObject* oslo = table.newObject(Text("Oslo"));
    EXPECT_EQ(tableOfTypeFunction, nullptr);
    EXPECT_EQ(table.getObject(Text("Oslo")), oslo);
    EXPECT_EQ(table.newObject(Text("Oslo")), oslo);
    EXPECT_STREQ(table.getObjectKey(0), "Oslo");
    EXPECT_EQ(table.getObjectKey(1), nullptr);
}

Tree<DataObject> objectOfTypeFunction;

DataObject* makeAndDeleteTheOuter(char* /*typeName*/) {
    objectOfTypeFunction.reset();
    return new DataObject(Text("made"));
}

TEST(NewElement, MayDeleteTheObjectThatItIsMadeFor) {
    DeclaredTypes types("Point = {string x=0;}; Line = {string width=1; Point from; Point to;};");
    types["Point"]->setCreateObjectFunc(makeAndDeleteTheOuter);
    objectOfTypeFunction.reset(new DataObject(Text("line")));
    objectOfTypeFunction->setObjectType(types["Line"]);
    EXPECT_EQ(objectOfTypeFunction, nullptr);
}

DataObject* makeWithoutFields(char* /*typeName*/) {
    return new DataObject(Text("made"));
}

TEST(NewElement, MayDeleteTheObjectWhoseInnerOneGetsWhatItLacks) {
    DeclaredTypes types("Point = {string x=0;}; Line = {Point from; Point to;}; Figure = {Line line;};");
    types["Line"]->setCreateObjectFunc(makeWithoutFields);
    types["Point"]->setCreateObjectFunc(makeAndDeleteTheOuter);
    objectOfTypeFunction.reset(new DataObject(Text("figure")));
    objectOfTypeFunction->setObjectType(types["Figure"]);
    EXPECT_EQ(objectOfTypeFunction, nullptr);
}

/// A structure of a client that is gone once it has been asked.
class Vanishing : public DataStructure {
public:
    Vanishing() : DataStructure(Text("vanishing")) {}

    DataField* getField(char* /*path*/, int /*index*/, int /*flag*/) override {
        delete this;
        return nullptr;
    }
};

TEST(Ancestors, MayBeGoneWhenAnObjectAsksThemForAPath) {
    Diary diary;
    RecordingHandler handler(diary, "A");
    DataValue before(Text("before"));
    DataObject object(Text("object"));
    auto* parent = new Vanishing;
    parent->addField(&object, 0);
    before.registerHandler(&handler);
    EXPECT_FALSE(object.registerHandler(Text("x"), &handler, 0));
    EXPECT_EQ(object.getParent(), nullptr);
    EXPECT_EQ(handler.getField(), nullptr);
    EXPECT_EQ(before.getNumHandlers(), 0);
}

DataType* classOfEarlyObject = nullptr;

int makeAnObjectAtOnce(const char* /*format*/, va_list /*args*/) {
    DataSetVPrintfFunction(nullptr);
    const DataObject early(Text("early"));
    classOfEarlyObject = DataObject::getClassType();
    return 0;
}

TEST(TypeReadingReentrancy, PrintingMayMakeTheFirstObject) {
    clearTypeVariables();
    const Variable file("QX_OBJECTS_FILE", "no such file");
    DataSetVPrintfFunction(makeAnObjectAtOnce);
    DataObject::init();
    ASSERT_NE(classOfEarlyObject, nullptr);
    EXPECT_EQ(DataObject::getClassType(), classOfEarlyObject);
    EXPECT_STREQ(classOfEarlyObject->getName(), "DataObject");
}
