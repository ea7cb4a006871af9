#include <support/NumberFormat.h>
#include <support/RecordingHandler.h>
#include <support/SceneTree.h>
#include <support/TextList.h>

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>
#include <ostream>
#include <sstream>
#include <string>

namespace {

std::string dumpOf(DataField& field, int first = -1, int last = -1, int withName = 1) {
    std::ostringstream os;
    field.dump(os, first, last, withName);
    return os.str();
}

std::string xmlOf(DataField& field) {
    std::ostringstream os;
    field.dumpXML(os);
    return os.str();
}

std::string specOf(DataField* field) {
    std::ostringstream os;
    Orbel::dumpSpec(os, field);
    return os.str();
}

std::string labelledDumpOf(DataStructure& structure, int first = -1, int last = -1) {
    std::ostringstream os;
    structure.dumpInternal(os, first, last);
    return os.str();
}

std::string fieldAt(DataNode& node, const char* path) {
    std::ostringstream os;
    node.dumpField(Text(path), os);
    return os.str();
}

std::string dataAt(DataNode& node, const char* paths) {
    std::ostringstream os;
    node.dumpData(Text(paths), 7, os);
    return os.str();
}

/// A root with the values n = 3 and p = 1,2,3 and the structure pos with x = 1 and y = 2.
class Dump : public testing::Test {
protected:
    Dump() {
        root.parseCommand(Text("string:n = 3; string:p = ; node:pos = {string:x = 1; string:y = 2}"), 0);
        fill(*at("p"), {"1", "2", "3"});
    }

    DataField* at(const char* path) { return root.getField(Text(path), 0, 1); }
    DataStructure& pos() { return static_cast<DataStructure&>(*at("pos")); }

    DataArray* addArray(const char* name, int size) {
        auto* array = new DataArray(Text(name));
        root.addField(array, 0);
        array->setSize(size);
        for (int index = 0; index < size; ++index) {
            array->getObject(index)->addField(new DataValue(Text("x")), 0);
            array->getObject(index)->getFieldByIndex(0)->setData(std::to_string(index).c_str());
        }
        return array;
    }

    DataHashTable* addTable(const char* name, std::initializer_list<const char*> keys) {
        auto* table = new DataHashTable(Text(name));
        root.addField(table, 0);
        for (const char* key : keys) {
            table->newObject(Text(key))->addField(new DataValue(Text("x")), 0);
            table->getObject(Text(key))->getFieldByIndex(0)->setData(key);
        }
        return table;
    }

    Orbel root{Text("root")};
    const SubtreeCleanup belowRoot{root};
};

/// The same with a type Point and, of that type, the object o, the array a of two and the table t with the key k.
class TypedDump : public Dump {
protected:
    TypedDump() {
        DataObject::init();
        DataObject::s_tTypes->parse(Text("Point = {string x=1; string y=2;};"));
        for (const char* path : {"Point:o", "node:holder"})
            root.getField(Text(path), 0, 0);
        root.addField(array, 0);
        array->setObjectType(DataObject::s_tTypes->getTypeByName("Point"));
        array->setSize(2);
        root.addField(table, 0);
        table->setObjectType(DataObject::s_tTypes->getTypeByName("Point"));
        table->newObject(Text("k"));
    }

    DataArray* array = new DataArray(Text("a"));
    DataHashTable* table = new DataHashTable(Text("t"));
};

} // namespace

TEST_F(Dump, OfAValueWithOneValueHasNoBrackets) {
    EXPECT_EQ(dumpOf(*at("n")), "n=3;");
    EXPECT_EQ(dumpOf(*at("n"), 4, 7, 1), "n=3;");
    EXPECT_EQ(dumpOf(*at("n"), 0, 0, 0), "3;");
    EXPECT_EQ(dumpOf(*at("n"), -1, -1, 5), "n=3;");
}

TEST_F(Dump, OfAValueThatWasNeverSetShowsItsBlank) {
    DataValue fresh(Text("fresh"));
    EXPECT_EQ(dumpOf(fresh), "fresh= ;");
}

TEST_F(Dump, OfAValueShowsTheRangeAskedFor) {
    DataField& p = *at("p");
    EXPECT_EQ(dumpOf(p), "p[0-2]=1,2,3;");
    EXPECT_EQ(dumpOf(p, 1, -1, 1), "p[1]=2;");
    EXPECT_EQ(dumpOf(p, 1, 1, 1), "p[1]=2;");
    EXPECT_EQ(dumpOf(p, 1, 2, 1), "p[1-2]=2,3;");
    EXPECT_EQ(dumpOf(p, 0, -1, 1), "p[0]=1;");
    EXPECT_EQ(dumpOf(p, 0, 1, 0), "1,2;");
    EXPECT_EQ(dumpOf(p, -1, 1, 1), "p[0-2]=1,2,3;");
}

TEST_F(Dump, OfAValueBeyondItsEndNamesTheRangeAndShowsWhatThereIs) {
    DataField& p = *at("p");
    EXPECT_EQ(dumpOf(p, 1, 9, 1), "p[1-9]=2,3;");
    EXPECT_EQ(dumpOf(p, 7, 9, 1), "p[7-9]=3;");
    EXPECT_EQ(dumpOf(p, 7, -1, 1), "p[7]=3;");
    EXPECT_EQ(dumpOf(p, 0, 2147483647, 1), "p[0-2147483647]=1,2,3;");
}

TEST_F(Dump, OfAValueIsNotIndentedByItself) {
    DataBaseType::setIndent(2);
    EXPECT_EQ(dumpOf(*at("n")), "n=3;");
    EXPECT_EQ(xmlOf(*at("n")), "\t\t<n>3</n>");
}

TEST_F(Dump, OfARangeThatEndsBeforeItStarts) {
    DataArray* list = addArray("list", 3);
    EXPECT_EQ(dumpOf(*at("p"), 2, 1, 1), "p[2-1]=;");
    EXPECT_EQ(dumpOf(*list, 2, 1, 1), "list[2-1]={\n\t{\n\t\tx=1;\n\t}\n};\n");
    EXPECT_EQ(fieldAt(root, "p[2-1]"), "p[2-1]=;");
}

TEST_F(Dump, OfTheLowestAndHighestIndices) {
    constexpr int lowest = std::numeric_limits<int>::min();
    constexpr int highest = std::numeric_limits<int>::max();
    DataField& p = *at("p");
    DataArray* list = addArray("list", 2);
    EXPECT_EQ(dumpOf(p, lowest, highest), "p[0-2]=1,2,3;");
    EXPECT_EQ(dumpOf(p, 1, lowest), "p[1]=2;");
    EXPECT_EQ(dumpOf(p, highest, lowest, lowest), "p[2147483647]=3;");
    EXPECT_EQ(dumpOf(*list, lowest, lowest), dumpOf(*list));
    EXPECT_EQ(dumpOf(*list, highest, highest), "list[2147483647]={\n\t{\n\t\tx=1;\n\t}\n};\n");
}

TEST_F(Dump, OfAStructureHasALineForEachChild) {
    EXPECT_EQ(dumpOf(pos()), "pos ={\n\tx=1;\n\ty=2;\n}");
    EXPECT_EQ(dumpOf(pos(), -1, -1, 0), "{\n\tx=1;\n\ty=2;\n}");
    EXPECT_EQ(DataBaseType::getIndent(), 0);
}

TEST_F(Dump, OfAStructureIsIndentedAsDeepAsItIsNested) {
    EXPECT_EQ(dumpOf(root), "root ={\n\tn=3;\n\tp[0-2]=1,2,3;\n\tpos ={\n\t\tx=1;\n\t\ty=2;\n\t}\n}");
    DataBaseType::setIndent(1);
    EXPECT_EQ(dumpOf(pos()), "\tpos ={\n\t\tx=1;\n\t\ty=2;\n\t}");
    EXPECT_EQ(DataBaseType::getIndent(), 1);
}

TEST_F(Dump, OfAnEmptyStructureIsTwoBraces) {
    DataStructure empty(Text("empty"));
    EXPECT_EQ(dumpOf(empty), "empty ={\n}");
}

TEST_F(Dump, OfAStructureHandsItsRangeDown) {
    EXPECT_EQ(dumpOf(root, 1, -1, 1), "root ={\n\tn=3;\n\tp[1]=2;\n\tpos ={\n\t\tx=1;\n\t\ty=2;\n\t}\n}");
    EXPECT_EQ(dumpOf(root, 0, 1, 0), "{\n\tn=3;\n\tp[0-1]=1,2;\n\tpos ={\n\t\tx=1;\n\t\ty=2;\n\t}\n}");
}

TEST_F(Dump, LeavesTheFillCharacterATab) {
    std::ostringstream os;
    pos().dump(os, -1, -1, 1);
    EXPECT_EQ(os.fill(), '\t');
}

TEST_F(Dump, OfAnArrayShowsItsElementsWithoutNames) {
    EXPECT_EQ(dumpOf(*addArray("list", 2)), "list[0-1]={\n\t{\n\t\tx=0;\n\t},\n\t{\n\t\tx=1;\n\t}\n};\n");
    EXPECT_EQ(DataBaseType::getIndent(), 0);
}

TEST_F(Dump, OfAnArrayOfOneHasNoBrackets) {
    DataArray* one = addArray("one", 1);
    EXPECT_EQ(dumpOf(*one), "one={\n\t{\n\t\tx=0;\n\t}\n};\n");
    EXPECT_EQ(dumpOf(*one, 3, 5, 1), "one={\n\t{\n\t\tx=0;\n\t}\n};\n");
}

TEST_F(Dump, OfAnArrayShowsTheRangeAskedFor) {
    DataArray* list = addArray("list", 3);
    EXPECT_EQ(dumpOf(*list, 1, -1, 1), "list[1]={\n\t{\n\t\tx=1;\n\t}\n};\n");
    EXPECT_EQ(dumpOf(*list, 1, 2, 0), "{\n\t{\n\t\tx=1;\n\t},\n\t{\n\t\tx=2;\n\t}\n};\n");
    EXPECT_EQ(dumpOf(*list, 2, 9, 1), "list[2-9]={\n\t{\n\t\tx=2;\n\t}\n};\n");
    EXPECT_EQ(dumpOf(*list, 8, -1, 1), "list[8]={\n\t{\n\t\tx=2;\n\t}\n};\n");
}

TEST_F(Dump, OfAnArrayIsIndentedOnlyWithItsName) {
    DataArray* list = addArray("list", 1);
    DataBaseType::setIndent(1);
    EXPECT_EQ(dumpOf(*list), "\tlist={\n\t\t{\n\t\t\tx=0;\n\t\t}\n\t};\n");
    EXPECT_EQ(dumpOf(*list, -1, -1, 0), "{\n\t\t{\n\t\t\tx=0;\n\t\t}\n\t};\n");
}

TEST_F(Dump, OfAnEmptyArrayLowersTheLevel) {
    DataArray* empty = addArray("empty", 0);
    DataBaseType::setIndent(2);
    EXPECT_EQ(dumpOf(*empty), "\t\tempty={\n\t};\n");
    EXPECT_EQ(DataBaseType::getIndent(), 1);
    EXPECT_EQ(dumpOf(*empty), "\tempty={\n};\n");
    EXPECT_EQ(DataBaseType::getIndent(), 0);
    EXPECT_EQ(dumpOf(*empty), "empty={\n};\n");
    EXPECT_EQ(dumpOf(*empty), "empty={\n};\n");
    EXPECT_EQ(DataBaseType::getIndent(), -2);
    EXPECT_EQ(dumpOf(pos()), "pos ={\nx=1;\ny=2;\n}");
    EXPECT_EQ(DataBaseType::getIndent(), -2);
}

TEST_F(Dump, OfAnEmptyArrayLowersTheLevelOfItsSurroundings) {
    DataStructure scene(Text("scene"));
    const SubtreeCleanup belowScene{scene};
    scene.addField(new DataArray(Text("a")), 0);
    scene.addField(new DataValue(Text("b")), 0);
    EXPECT_EQ(dumpOf(scene), "scene ={\n\ta={\n};\n\nb= ;\n}");
    EXPECT_EQ(DataBaseType::getIndent(), -1);
}

TEST_F(Dump, OfATableShowsItsKeysAndItsEntriesByName) {
    EXPECT_EQ(dumpOf(*addTable("people", {"ann", "bob"})),
              "people[ann,bob]={\n\tItem-#0 ={\n\t\tx=ann;\n\t},\n\tItem-#1 ={\n\t\tx=bob;\n\t}\n};\n");
    EXPECT_EQ(DataBaseType::getIndent(), 0);
}

TEST_F(Dump, OfATableIgnoresTheRangeAndAlwaysShowsTheName) {
    DataHashTable* people = addTable("people", {"ann", "bob"});
    EXPECT_EQ(dumpOf(*people, 1, 1, 0), dumpOf(*people));
}

TEST_F(Dump, OfAnEmptyTableKeepsTheLevel) {
    DataBaseType::setIndent(1);
    EXPECT_EQ(dumpOf(*addTable("none", {})), "\tnone[]={\n\t};\n");
    EXPECT_EQ(DataBaseType::getIndent(), 1);
}

TEST_F(Dump, OfKeysShowsThoseThatExist) {
    DataHashTable* people = addTable("people", {"ann", "bob", "cid"});
    const auto keys = [&](const char* list, int withName) {
        std::ostringstream os;
        people->dumpKeys(os, Text(list), withName);
        return os.str();
    };
    EXPECT_EQ(keys("bob", 1), "people[bob]={\n\tItem-#1 ={\n\t\tx=bob;\n\t}\n};\n");
    EXPECT_EQ(keys("cid,ann", 0), "people[cid,ann]={\n\t{\n\t\tx=cid;\n\t},\n\t{\n\t\tx=ann;\n\t}\n};\n");
    EXPECT_EQ(keys(" \t\r\nbob", 0), "people[bob]={\n\t{\n\t\tx=bob;\n\t}\n};\n");
    EXPECT_EQ(keys("", 1), "people[]={\n};\n");
    EXPECT_EQ(keys("nobody", 1), "people[]={\n};\n");
    // Commas and line ends go by the list, not by which keys exist.
    EXPECT_EQ(keys("nobody,bob", 0), "people[bob]={\n\t{\n\t\tx=bob;\n\t}\n};\n");
    EXPECT_EQ(keys("bob,nobody", 0), "people[bob,]={\n\t{\n\t\tx=bob;\n\t},\n};\n");
    // Only the blanks in front of the list are skipped.
    EXPECT_EQ(keys("ann, bob", 0), "people[ann,]={\n\t{\n\t\tx=ann;\n\t},\n};\n");
    EXPECT_EQ(keys("bob,bob", 0), "people[bob,bob]={\n\t{\n\t\tx=bob;\n\t},\n\t{\n\t\tx=bob;\n\t}\n};\n");
}

TEST_F(Dump, OfNodesInAStructureAreIndentedByThemselves) {
    DataStructure scene(Text("scene"));
    const SubtreeCleanup belowScene{scene};
    auto* list = new DataArray(Text("list"));
    auto* people = new DataHashTable(Text("people"));
    scene.addField(list, 0);
    scene.addField(people, 0);
    list->setSize(2);
    people->newObject(Text("ann"));
    EXPECT_EQ(dumpOf(scene), "scene ={\n"
                             "\tlist[0-1]={\n\t\t{\n\t\t},\n\t\t{\n\t\t}\n\t};\n\n"
                             "\tpeople[ann]={\n\t\tItem-#0 ={\n\t\t}\n\t};\n\n"
                             "}");
    EXPECT_EQ(dumpOf(scene, 1, -1, 1), "scene ={\n"
                                       "\tlist[1]={\n\t\t{\n\t\t}\n\t};\n\n"
                                       "\tpeople[ann]={\n\t\tItem-#0 ={\n\t\t}\n\t};\n\n"
                                       "}");
}

TEST_F(Dump, OfPlainFieldsAndNodesIsEmpty) {
    DataField field(Text("field"));
    DataNode node(Text("node"));
    EXPECT_EQ(dumpOf(field), "");
    EXPECT_EQ(dumpOf(node), "");
    EXPECT_EQ(xmlOf(field) + xmlOf(node), "");
}

TEST_F(Dump, WithoutArgumentsGoesToStandardOutput) {
    testing::internal::CaptureStdout();
    pos().dump();
    static_cast<DataNode&>(pos()).dump();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "pos ={\n\tx=1;\n\ty=2;\n}pos ={\n\tx=1;\n\ty=2;\n}");
}

TEST_F(Dump, ThroughAStreamIsTheDumpOfEverything) {
    DataArray* list = addArray("list", 1);
    DataHashTable* people = addTable("people", {"ann"});
    std::ostringstream os;
    EXPECT_EQ(&(os << *at("n")), &os);
    os << *at("p") << pos() << static_cast<DataField&>(*list) << *people;
    EXPECT_EQ(os.str(), "n=3;p[0-2]=1,2,3;pos ={\n\tx=1;\n\ty=2;\n}" + dumpOf(*list) + dumpOf(*people));
    std::ostringstream whole;
    whole << root << '!';
    EXPECT_EQ(whole.str(), dumpOf(root) + '!');
}

TEST_F(Dump, InXmlOfAValueIsOneElement) {
    EXPECT_EQ(xmlOf(*at("n")), "<n>3</n>");
    EXPECT_EQ(xmlOf(*at("p")), "<p>1,2,3</p>");
}

TEST_F(Dump, InXmlOfAStructureHoldsPlainDumpsOfItsChildren) {
    // Values are not indented there: only nodes indent themselves.
    EXPECT_EQ(xmlOf(pos()), "<pos>\nx=1;\ny=2;\n</pos>\n");
    EXPECT_EQ(xmlOf(root), "<root>\nn=3;\np[0-2]=1,2,3;\n\tpos ={\n\t\tx=1;\n\t\ty=2;\n\t}\n</root>\n");
    DataBaseType::setIndent(1);
    EXPECT_EQ(xmlOf(pos()), "\t<pos>\nx=1;\ny=2;\n\t</pos>\n");
    EXPECT_EQ(DataBaseType::getIndent(), 1);
}

TEST_F(Dump, InXmlOfAnUntypedArrayHasAnEmptyType) {
    EXPECT_EQ(xmlOf(*addArray("list", 1)), "<list type=>\n\tItem-#0 ={\n\t\tx=0;\n\t}\n</list>\n");
    EXPECT_EQ(xmlOf(*addArray("none", 0)), "<none type=>\n</none>\n");
    EXPECT_EQ(DataBaseType::getIndent(), 0);
}

TEST_F(Dump, InXmlOfATableIsThatOfAnArray) {
    EXPECT_EQ(xmlOf(*addTable("people", {"ann"})), "<people type=>\n\tItem-#0 ={\n\t\tx=ann;\n\t}\n</people>\n");
}

TEST_F(TypedDump, InXmlNamesTheTypeOfArraysAndTables) {
    EXPECT_EQ(xmlOf(*array), "<a type=Point>\n\tPoint-#0 ={\n\t\tx=1;\n\t\ty=2;\n\t}\n"
                             "\tPoint-#1 ={\n\t\tx=1;\n\t\ty=2;\n\t}\n</a>\n");
    EXPECT_EQ(xmlOf(*table), "<t type=Point>\n\tPoint-#0 ={\n\t\tx=1;\n\t\ty=2;\n\t}\n</t>\n");
    EXPECT_EQ(xmlOf(*at("o")), "<o>\nx=1;\ny=2;\n</o>\n");
}

TEST_F(TypedDump, DoesNotTellTypes) {
    EXPECT_EQ(dumpOf(*at("o")), "o ={\n\tx=1;\n\ty=2;\n}");
    EXPECT_EQ(dumpOf(*table), "t[k]={\n\tPoint-#0 ={\n\t\tx=1;\n\t\ty=2;\n\t}\n};\n");
    EXPECT_EQ(dumpOf(*array, 1, -1, 1), "a[1]={\n\t{\n\t\tx=1;\n\t\ty=2;\n\t}\n};\n");
}

TEST_F(Dump, LabelledOfAValue) {
    DataStructure scene(Text("scene"));
    const SubtreeCleanup belowScene{scene};
    auto* n = new DataValue(Text("n"));
    scene.addField(n, 0);
    n->setData("3");
    EXPECT_EQ(labelledDumpOf(scene), "string:n=3;\n");
    DataBaseType::setIndent(1);
    EXPECT_EQ(labelledDumpOf(scene), "\tstring:n=3;\n");
}

TEST_F(TypedDump, LabelledTellsTheTypeOfEveryChild) {
    EXPECT_EQ(labelledDumpOf(root),
              "Point[2]:a[0-1]={\n\t{\n\t\tx=1;\n\t\ty=2;\n\t},\n\t{\n\t\tx=1;\n\t\ty=2;\n\t}\n};\n\n"
              "node:holder ={\n}\n"
              "string:n=3;\n"
              "Point:o ={\n\tx=1;\n\ty=2;\n};\n"
              "string:p[0-2]=1,2,3;\n"
              "node:pos ={\n\tx=1;\n\ty=2;\n}\n"
              "Point:t[k]={\n\tPoint-#0 ={\n\t\tx=1;\n\t\ty=2;\n\t}\n};\n\n");
    EXPECT_EQ(DataBaseType::getIndent(), 0);
}

TEST_F(TypedDump, LabelledCountsTheFieldsOfTheFirstElement) {
    DataStructure scene(Text("scene"));
    const SubtreeCleanup belowScene{scene};
    auto* none = new DataArray(Text("none"));
    scene.addField(none, 0);
    none->setObjectType(DataObject::s_tTypes->getTypeByName("Point"));
    EXPECT_EQ(labelledDumpOf(scene), "Point[0]:none={\n};\n\n");
    DataBaseType::setIndent(0);
    none->setSize(3);
    EXPECT_EQ(labelledDumpOf(scene, 2, -1), "Point[2]:none[2]={\n\t{\n\t\tx=1;\n\t\ty=2;\n\t}\n};\n\n");
}

TEST_F(TypedDump, LabelledIndentsTheDumpsOfNodesBehindTheirLabels) {
    DataBaseType::setIndent(1);
    DataStructure scene(Text("scene"));
    const SubtreeCleanup belowScene{scene};
    scene.getField(Text("Point:o/x"), 0, 0);
    scene.getField(Text("node:s"), 0, 0);
    EXPECT_EQ(labelledDumpOf(scene), "Point:\to ={\n\t\tx=1;\n\t\ty=2;\n\t};\nnode:\ts ={\n\t}\n");
}

TEST_F(Dump, LabelledHasNoLabelForUntypedArraysAndTables) {
    DataStructure scene(Text("scene"));
    const SubtreeCleanup belowScene{scene};
    scene.addField(new DataHashTable(Text("t")), 0);
    auto* list = new DataArray(Text("a"));
    scene.addField(list, 0);
    list->setSize(1);
    EXPECT_EQ(labelledDumpOf(scene), "a={\n\t{\n\t}\n};\n\nt[]={\n};\n\n");
}

TEST_F(Dump, LabelledEndsAnUntypedObjectWithASemicolonToo) {
    DataStructure scene(Text("scene"));
    const SubtreeCleanup belowScene{scene};
    scene.addField(new DataObject(Text("o")), 0);
    EXPECT_EQ(labelledDumpOf(scene), "node:o ={\n};\n");
}

TEST_F(Dump, LabelledHandsTheRangeDown) {
    EXPECT_EQ(labelledDumpOf(root, 1, 2), "string:n=3;\nstring:p[1-2]=2,3;\nnode:pos ={\n\tx=1;\n\ty=2;\n}\n");
}

TEST_F(TypedDump, NumbersArePlainDigits) {
    at("p")->setSize(12'345);
    array->setSize(12);
    EXPECT_EQ(writtenWithOtherNumbers([&](std::ostream& os) { at("p")->dump(os, 4'660, 12'344, 1); }).substr(0, 15),
              "p[4660-12344]=,");
    EXPECT_EQ(writtenWithOtherNumbers([&](std::ostream& os) { array->dump(os, 10, -1, 1); }).substr(0, 7), "a[10]={");
    EXPECT_EQ(writtenWithOtherNumbers([&](std::ostream& os) { Orbel::dumpSpec(os, at("p")); }),
              "Array<Value> p[12345];\n");
    EXPECT_EQ(writtenWithOtherNumbers([&](std::ostream& os) { Orbel::dumpSpec(os, array); }),
              "Array<Point> a[12] {\n};\n");
    for (int number = 0; number < 10; ++number)
        array->getObject(0)->addField(new DataValue(Text('f' + std::to_string(number))), 0);
    EXPECT_EQ(writtenWithOtherNumbers([&](std::ostream& os) { root.dumpInternal(os, 0, -1); }).substr(0, 15),
              "Point[12]:a[0]=");
}

TEST_F(TypedDump, FlushesBehindValuesArraysAndTables) {
    const auto flushes = [](auto write) {
        class Counter : public std::stringbuf {
        public:
            int count = 0;

        protected:
            int sync() override { return ++count, 0; }
        } counter;
        std::ostream os(&counter);
        write(os);
        return counter.count;
    };
    const auto dumps = [&](const char* path) {
        return flushes([&](std::ostream& os) { at(path)->dump(os, -1, -1, 1); });
    };
    const auto xmls = [&](const char* path) { return flushes([&](std::ostream& os) { at(path)->dumpXML(os); }); };
    EXPECT_EQ(dumps("p"), 1);
    EXPECT_EQ(dumps("holder"), 0);
    EXPECT_EQ(dumps("pos"), 2);
    EXPECT_EQ(dumps("a"), 5);
    EXPECT_EQ(dumps("t"), 3);
    EXPECT_EQ(xmls("p"), 1);
    EXPECT_EQ(xmls("holder"), 1);
    EXPECT_EQ(xmls("a"), 5);
}

TEST_F(TypedDump, SpecOfTheWholeTree) {
    DataBaseType::setIndent(0);
    EXPECT_EQ(specOf(&root), "Orbel {\n"
                             "Array<Point> a[2] {\n};\n"
                             "Value n;\n"
                             "Object<Point> o {\n};\n"
                             "Array<Value> p[3];\n"
                             "Table<Point> t[k] {\n};\n"
                             "};\n");
    EXPECT_EQ(specOf(nullptr), "");
}

TEST_F(TypedDump, SpecOfOneItemIsIndented) {
    table->newObject(Text("another"));
    DataBaseType::setIndent(1);
    EXPECT_EQ(specOf(array), "\tArray<Point> a[2] {\n\t};\n");
    EXPECT_EQ(specOf(table), "\tTable<Point> t[k,another] {\n\t};\n");
    EXPECT_EQ(specOf(at("o")), "\tObject<Point> o {\n\t};\n");
    EXPECT_EQ(specOf(at("p")), "\tArray<Value> p[3];\n");
    EXPECT_EQ(specOf(at("n")), "Value n;\n");
}

TEST_F(TypedDump, SpecOfWhatHasNoSchemaIsEmpty) {
    EXPECT_EQ(specOf(at("holder")), "");
    DataObject untyped(Text("untyped"));
    DataField plain(Text("plain"));
    DataNode node(Text("node"));
    EXPECT_EQ(specOf(&untyped) + specOf(&plain) + specOf(&node), "");
}

TEST_F(Dump, SpecOfUntypedArraysAndTablesHasAnEmptyType) {
    EXPECT_EQ(specOf(addArray("list", 3)), "Array<> list[3] {\n};\n");
    EXPECT_EQ(specOf(addTable("people", {"ann", "bob"})), "Table<> people[ann,bob] {\n};\n");
    EXPECT_EQ(specOf(addTable("none", {})), "Table<> none[] {\n};\n");
}

TEST_F(Dump, OfAFieldByPath) {
    EXPECT_EQ(fieldAt(root, "n"), "n=3;");
    EXPECT_EQ(fieldAt(root, " \t\r\n pos/x \t"), "x=1;");
    EXPECT_EQ(fieldAt(root, "pos"), "pos ={\n\tx=1;\n\ty=2;\n}");
    EXPECT_EQ(fieldAt(root, "p"), "p[0-2]=1,2,3;");
    for (const char* nothing : {"missing", "", " ", "*", "pos/", "missing[0]", "]", "[", "[]"})
        EXPECT_EQ(fieldAt(root, nothing), "") << nothing;
    std::ostringstream os;
    root.dumpField(nullptr, os);
    root.dumpData(nullptr, 0, os);
    EXPECT_EQ(os.str(), "");
}

TEST_F(Dump, OfAFieldByPathOncePerSegmentOfItsRange) {
    EXPECT_EQ(fieldAt(root, "p[1]"), "p[1]=2;");
    EXPECT_EQ(fieldAt(root, "p[0-1]"), "p[0-1]=1,2;");
    EXPECT_EQ(fieldAt(root, "p[2,0-1]"), "p[2]=3;p[0-1]=1,2;");
    EXPECT_EQ(fieldAt(root, "p[x]"), "p[0-2]=1,2,3;");
    EXPECT_EQ(fieldAt(root, "p[]"), "p[0-2]=1,2,3;");
    EXPECT_EQ(fieldAt(root, "p[1,,2]"), "p[1]=2;p[0-2]=1,2,3;p[2]=3;");
    EXPECT_EQ(fieldAt(root, "n[5]"), "n=3;");
    EXPECT_EQ(fieldAt(root, "p[1"), "p[0-2]=1,2,3;");
    EXPECT_EQ(fieldAt(root, "pos[1]"), "pos ={\n\tx=1;\n\ty=2;\n}");
}

TEST_F(Dump, OfAnArrayByPath) {
    addArray("list", 3);
    EXPECT_EQ(fieldAt(root, "list[1]"), "list[1]={\n\t{\n\t\tx=1;\n\t}\n};\n");
    EXPECT_EQ(fieldAt(root, "list[0-1]"), "list[0-1]={\n\t{\n\t\tx=0;\n\t},\n\t{\n\t\tx=1;\n\t}\n};\n");
    EXPECT_EQ(fieldAt(root, "list[1]/x"), "x=1;");
    EXPECT_EQ(fieldAt(root, "list[2]/x[0]"), "x=2;");
}

TEST_F(Dump, OfATableByPathTakesAListOfKeys) {
    addTable("people", {"ann", "bob"});
    EXPECT_EQ(fieldAt(root, "people[bob]"), "people[bob]={\n\tItem-#1 ={\n\t\tx=bob;\n\t}\n};\n");
    EXPECT_EQ(fieldAt(root, "people[ bob,nobody]"), "people[bob,]={\n\tItem-#1 ={\n\t\tx=bob;\n\t},\n};\n");
    EXPECT_EQ(fieldAt(root, "people[]"), "people[]={\n};\n");
    EXPECT_EQ(fieldAt(root, "people[ann]/x"), "x=ann;");
    EXPECT_EQ(fieldAt(root, "people"), dumpOf(*at("people")));
}

TEST_F(Dump, OfTheRootByTheNameOfItsClass) {
    const std::string whole = dumpOf(root);
    for (const char* name : {"Orbel", "orbel", " ORBEL\t"})
        EXPECT_EQ(fieldAt(pos(), name), whole) << name;
    EXPECT_EQ(fieldAt(pos(), "Orbel[1]"), dumpOf(root, 1, -1, 1));
    EXPECT_EQ(fieldAt(root, "root"), "");
    DataStructure branch(Text("branch"));
    const SubtreeCleanup belowBranch{branch};
    EXPECT_EQ(fieldAt(branch, "Orbel"), "");
}

TEST_F(Dump, OfAListOfPaths) {
    EXPECT_EQ(dataAt(root, "n; p[1];\n\tmissing;;pos/y"), "n=3;p[1]=2;y=2;");
    EXPECT_EQ(dataAt(root, " n "), "n=3;");
    EXPECT_EQ(dataAt(root, ""), "");
    EXPECT_EQ(dataAt(root, ";;;"), "");
    EXPECT_EQ(dataAt(root, "{p[0];n}"), "");
    EXPECT_EQ(dataAt(root, "\"\"p[0];n;p[0]\"\""), "n=3;p[0-2]=1,2,3;");
    EXPECT_EQ(dataAt(pos(), "x;../n"), "x=1;n=3;");
}

TEST_F(Dump, OfPathsOfAnyLength) {
    const std::string longName(100'000, 'n');
    EXPECT_EQ(fieldAt(root, longName.c_str()), "");
    EXPECT_EQ(fieldAt(root, ("n[" + longName + ']').c_str()), "n=3;");
    EXPECT_EQ(fieldAt(root, (std::string(100'000, ' ') + 'n' + std::string(100'000, '\t')).c_str()), "n=3;");
    EXPECT_EQ(dataAt(root, (std::string(100'000, ';') + 'n' + std::string(100'000, ';')).c_str()), "n=3;");
    EXPECT_EQ(fieldAt(root, std::string(100'000, ']').c_str()), "");
}

TEST_F(Dump, OfAnythingIsEmptyOnAPlainNode) {
    DataNode node(Text("node"));
    EXPECT_EQ(fieldAt(node, "Orbel") + fieldAt(node, "node") + fieldAt(node, "") + dataAt(node, "a;b[0]"), "");
}

TEST_F(Dump, OfFieldNamesRunsThemTogether) {
    testing::internal::CaptureStdout();
    root.dumpListOfFields();
    DataStructure(Text("empty")).dumpListOfFields();
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Fields: nppos\nFields: \n");
}
