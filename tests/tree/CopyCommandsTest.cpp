#include <support/SceneTree.h>
#include <support/TextList.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

/// Two values, "to" and "from", with texts of their own: "t0", "t1", ... and "f0", "f1", ...
class CopyOfValues : public testing::Test {
protected:
    CopyOfValues() {
        root.addField(to, 0);
        root.addField(from, 0);
    }

    /// What "to" holds after the copy command.
    std::string after(const char* command, int targets, int sources) {
        fillWith(to, "t", targets);
        fillWith(from, "f", sources);
        root.executeCopyCommand(Text(command));
        return allTexts(*to);
    }

    static void fillWith(DataValue* value, const char* letter, int size) {
        value->getDataVector()->resize(static_cast<std::size_t>(size));
        for (int index = 0; index < size; ++index)
            value->setData((letter + std::to_string(index)).c_str(), index);
    }

    Orbel root{Text("root")};
    const SubtreeCleanup belowRoot{root};
    DataValue* to = new DataValue(Text("to"));
    DataValue* from = new DataValue(Text("from"));
};

/// The arrays "to" and "from", the tables "left" and "right", all of objects with a value x.
class CopyOfNodes : public testing::Test {
protected:
    CopyOfNodes() {
        root.addField(to, 0);
        root.addField(from, 0);
        root.addField(left, 0);
        root.addField(right, 0);
        root.getField(Text("string:value"), 0, 0)->setData("v");
        root.getField(Text("node:object/string:x"), 0, 0)->setData("object");
    }

    void grow(DataArray* array, const char* letter, int size) {
        array->setSize(size);
        for (int index = 0; index < size; ++index)
            give(array->getObject(index), letter + std::to_string(index));
    }

    void enter(DataHashTable* table, const char* letter, const std::vector<std::string>& keys) {
        for (const std::string& key : keys)
            give(table->newObject(Text(key)), letter + key);
    }

    static void give(DataObject* object, const std::string& value) {
        if (object->getNumFields() == 0)
            object->addField(new DataValue(Text("x")), 0);
        object->getFieldByIndex(0)->setData(value.c_str());
    }

    void copy(const char* commands) { root.parseCopyCommand(Text(commands)); }

    /// The x of each element: "t0 t1 t2".
    static std::string all(DataArray* array) {
        std::string texts;
        for (int index = 0; index < array->getSize(); ++index)
            texts += (index == 0 ? "" : " ") + *array->DataArray::getObject(index)->getFieldByIndex(0)->getData(0);
        return texts;
    }

    Orbel root{Text("root")};
    const SubtreeCleanup belowRoot{root};
    DataArray* to = new DataArray(Text("to"));
    DataArray* from = new DataArray(Text("from"));
    DataHashTable* left = new DataHashTable(Text("left"));
    DataHashTable* right = new DataHashTable(Text("right"));
};

} // namespace

TEST_F(CopyOfValues, WithoutRangesCopiesWhatBothHaveRoomFor) {
    EXPECT_EQ(after("to = from", 1, 1), "f0");
    EXPECT_EQ(after("to = from", 3, 3), "f0|f1|f2");
    EXPECT_EQ(after("to = from", 3, 2), "f0|f1|t2");
    EXPECT_EQ(after("to = from", 2, 3), "f0|f1");
}

TEST_F(CopyOfValues, TheShorterRangeWins) {
    EXPECT_EQ(after("to[0-9] = from[0-1]", 10, 10), "f0|f1|t2|t3|t4|t5|t6|t7|t8|t9");
    EXPECT_EQ(after("to[0-1] = from[0-9]", 4, 10), "f0|f1|t2|t3");
    EXPECT_EQ(after("to[0-3] = from[2-5]", 5, 6), "f2|f3|f4|f5|t4");
}

TEST_F(CopyOfValues, ARangeOnOneSideMeetsTheWholeOther) {
    EXPECT_EQ(after("to[1-2] = from", 4, 4), "t0|f0|f1|t3");
    EXPECT_EQ(after("to = from[2-3]", 4, 4), "f2|f3|t2|t3");
    EXPECT_EQ(after("to[3] = from", 4, 4), "t0|t1|t2|f0");
    EXPECT_EQ(after("to = from[3]", 4, 4), "f3|t1|t2|t3");
}

TEST_F(CopyOfValues, ANegativeStartIsTheFirstAndAnEndBelowTheStartIsTheStart) {
    EXPECT_EQ(after("to[-1] = from[1]", 3, 3), "f1|t1|t2");
    EXPECT_EQ(after("to[-2] = from[-2]", 3, 3), "f0|f1|f2");
    EXPECT_EQ(after("to[] = from[2]", 3, 3), "f2|t1|t2");
    EXPECT_EQ(after("to[x] = from[2]", 3, 3), "f2|t1|t2");
    EXPECT_EQ(after("to[2-0] = from[1-0]", 3, 3), "t0|t1|f1");
    EXPECT_EQ(after("to[2-] = from[1-]", 3, 3), "t0|t1|f1");
}

TEST_F(CopyOfValues, OnlyTheFirstSegmentOfARangeCounts) {
    EXPECT_EQ(after("to[2,0] = from[1,0]", 3, 3), "t0|t1|f1");
    EXPECT_EQ(after("to[0,1-2] = from[0-2]", 3, 3), "f0|t1|t2");
}

TEST_F(CopyOfValues, NothingIsCopiedFromOrToBeyondTheEnd) {
    EXPECT_EQ(after("to[3] = from[0]", 3, 3), "t0|t1|t2");
    EXPECT_EQ(after("to[0] = from[3]", 3, 3), "t0|t1|t2");
    EXPECT_EQ(after("to[2-9] = from[0-9]", 3, 3), "t0|t1|f0");
    EXPECT_EQ(after("to[0-9] = from[2-9]", 3, 3), "f2|t1|t2");
    EXPECT_EQ(after("to[0-2000000000] = from[0-99999999999]", 2, 2), "f0|f1");
    EXPECT_EQ(after("to[2147483647] = from[2147483647]", 2, 2), "t0|t1");
    EXPECT_EQ(after("to[2147483646-2147483647] = from", 2, 2), "t0|t1");
}

TEST_F(CopyOfValues, BlanksInsideTheBracketsDoNotMatter) {
    EXPECT_EQ(after("to[ 1 - 2 ] = from[\t0\t-\t1\t]", 3, 3), "t0|f0|f1");
    EXPECT_EQ(after("  to[1]\t=\n\tfrom[2] \t", 3, 3), "t0|f2|t2");
}

TEST_F(CopyOfValues, ABlankInFrontOfTheBracketBelongsToTheName) {
    EXPECT_EQ(after("to [1] = from[2]", 3, 3), "t0|t1|t2");
    EXPECT_EQ(after("to[1] = from [2]", 3, 3), "t0|t1|t2");
}

TEST_F(CopyOfValues, TheLastBracketIsTheRange) {
    EXPECT_EQ(after("to[0][1] = from[0][2]", 3, 3), "t0|f2|t2");
}

TEST_F(CopyOfValues, WithoutAClosingBracketAllIsCopied) {
    EXPECT_EQ(after("to[1 = from[2", 3, 3), "f0|f1|f2");
}

TEST_F(CopyOfValues, ToItselfMovesValues) {
    fillWith(to, "t", 4);
    root.executeCopyCommand(Text("to[1-3] = to[0-2]"));
    EXPECT_EQ(allTexts(*to), "t0|t0|t1|t2");
    fillWith(to, "t", 4);
    root.executeCopyCommand(Text("to[0-2] = to[1-3]"));
    EXPECT_EQ(allTexts(*to), "t1|t2|t3|t3");
}

TEST_F(CopyOfValues, WhatCannotBeUnderstoodChangesNothing) {
    for (const char* command : {"to", "", "=", "to =", "= from", "missing = from", "to = missing", "to = from = from",
                                "* = from", "to = *", "]=]", "[]=[]", "to = from;"})
        EXPECT_EQ(after(command, 2, 2), "t0|t1") << command;
    root.executeCopyCommand(nullptr);
    root.parseCopyCommand(nullptr);
}

TEST_F(CopyOfValues, ListsGoOnAfterAFailure) {
    fillWith(from, "f", 2);
    fillWith(to, "t", 2);
    root.parseCopyCommand(Text(" \n nonsense; ;to = missing;\n\tto[1] = from[0];"));
    EXPECT_EQ(allTexts(*to), "t0|f0");
}

TEST_F(CopyOfValues, ListsKeepBracesAndDoubledQuotesTogether) {
    fillWith(from, "f", 2);
    fillWith(to, "t", 2);
    root.parseCopyCommand(Text("{to[1] = from[0]; to[0] = from[0]}; to[0] = from[1]"));
    EXPECT_EQ(allTexts(*to), "f1|t1");
    root.parseCopyCommand(Text("\"\";to[1] = from[0];\"\"; to[0] = from[0]"));
    EXPECT_EQ(allTexts(*to), "f0|t1");
}

TEST_F(CopyOfValues, TellsTheHandlersOfTheTargetOnly) {
    fillWith(from, "f", 3);
    fillWith(to, "t", 3);
    DataValue follower(Text("follower"));
    to->addTargetLink(&follower);
    root.executeCopyCommand(Text("to[1-2] = from[0-1]"));
    EXPECT_EQ(allTexts(*to), "t0|f0|f1");
    EXPECT_EQ(follower.getDataInitialized(), 0);
}

TEST_F(CopyOfNodes, WithoutRangesCopiesWhatBothHave) {
    grow(to, "t", 3);
    grow(from, "f", 2);
    copy("to = from");
    EXPECT_EQ(all(to), "f0 f1 t2");
    grow(from, "f", 5);
    copy("to = from");
    EXPECT_EQ(all(to), "f0 f1 f2");
}

TEST_F(CopyOfNodes, SurplusTargetsReceiveTheLastSource) {
    grow(to, "t", 10);
    grow(from, "f", 2);
    copy("to[0-9] = from[0-1]");
    EXPECT_EQ(all(to), "f0 f1 f1 f1 f1 f1 f1 f1 f1 f1");
}

TEST_F(CopyOfNodes, SurplusSourcesAreIgnored) {
    grow(to, "t", 3);
    grow(from, "f", 5);
    copy("to[1] = from[2-4]");
    EXPECT_EQ(all(to), "t0 f2 t2");
}

TEST_F(CopyOfNodes, RangesAreListsOfSegments) {
    grow(to, "t", 5);
    grow(from, "f", 5);
    copy("to[4,0-1] = from[3,-1,2]");
    EXPECT_EQ(all(to), "f0 f1 t2 t3 f3");
}

TEST_F(CopyOfNodes, ElementsBeyondTheEndAreSkipped) {
    grow(to, "t", 2);
    grow(from, "f", 3);
    copy("to[0-9] = from[1-9]");
    EXPECT_EQ(all(to), "f1 f2");
    EXPECT_EQ(to->getSize(), 2);
    grow(from, "f", 3);
    // Of two sources the second is missing: the first target receives, the surplus ones have nothing to take.
    copy("to[0-1] = from[0,9]");
    EXPECT_EQ(all(to), "f0 f2");
    copy("to[9,1] = from[2,0]");
    EXPECT_EQ(all(to), "f0 f0");
}

TEST_F(CopyOfNodes, EntriesAreChosenByTheirKeys) {
    enter(left, "l", {"a", "b", "c"});
    enter(right, "r", {"a", "b", "c"});
    copy("left[a] = right[b]");
    EXPECT_EQ(all(left), "rb lb lc");
    copy("left[ b , c ] = right[ a , b ]");
    EXPECT_EQ(all(left), "rb ra rb");
    copy("left[a,b,c] = right[c]");
    EXPECT_EQ(all(left), "rc rc rc");
}

TEST_F(CopyOfNodes, MissingKeysAreSkipped) {
    enter(left, "l", {"a", "b", "c"});
    enter(right, "r", {"a", "b"});
    copy("left[a,x,c] = right[b,a,x]");
    EXPECT_EQ(all(left), "rb lb lc");
    copy("left[x] = right[a]; left[a] = right[x]; left[A] = right[a]");
    EXPECT_EQ(all(left), "rb lb lc");
}

TEST_F(CopyOfNodes, EntriesAndElementsMix) {
    grow(to, "t", 3);
    enter(right, "r", {"a", "b"});
    copy("to[2,0] = right[a,b]");
    EXPECT_EQ(all(to), "rb t1 ra");
    copy("right[b] = to[1]");
    EXPECT_EQ(all(right), "ra t1");
    copy("to[0-2] = object");
    EXPECT_EQ(all(to), "object object object");
    copy("to[1] = right[a]; object = to[1]");
    EXPECT_EQ(*root.getField(Text("object/x"), 0, 0)->getData(0), "ra");
}

TEST_F(CopyOfNodes, TablesCopyTheirElementsInOrder) {
    enter(left, "l", {"a", "b", "c"});
    enter(right, "r", {"x", "y"});
    copy("left = right");
    EXPECT_EQ(all(left), "rx ry lc");
}

TEST_F(CopyOfNodes, ARangeOfAPlainStructureIsTheStructure) {
    grow(to, "t", 1);
    copy("to[0] = object[7]");
    EXPECT_EQ(all(to), "object");
}

TEST_F(CopyOfNodes, AnArrayIsNotCopiedToAnObject) {
    grow(to, "t", 2);
    copy("object = to; to = object");
    EXPECT_EQ(all(to), "t0 t1");
    EXPECT_EQ(*root.getField(Text("object/x"), 0, 0)->getData(0), "object");
}

TEST_F(CopyOfNodes, NothingIsCopiedBetweenANodeAndAValue) {
    grow(to, "t", 2);
    copy("to = value; value = to; to[0] = value; value[0] = to[0]; to[0] = value[0]");
    EXPECT_EQ(all(to), "t0 t1");
    EXPECT_EQ(*root.getField(Text("value"), 0, 0)->getData(0), "v");
}

TEST_F(CopyOfNodes, ValuesBelowElementsAreReachedThroughTheirPath) {
    grow(to, "t", 2);
    enter(right, "r", {"a"});
    copy("to[1]/x = right[a]/x; value = to[1]/x");
    EXPECT_EQ(all(to), "t0 ra");
    EXPECT_EQ(*root.getField(Text("value"), 0, 0)->getData(0), "ra");
}

TEST_F(CopyOfNodes, WithoutElementsNothingHappens) {
    grow(to, "t", 1);
    copy("to[0] = from[0]; from[0] = to[0]; to = from; left[] = to[0]; to[0] = left[]");
    EXPECT_EQ(all(to), "t0");
    EXPECT_EQ(from->getSize(), 0);
}

TEST_F(CopyOfNodes, NamesWithANumberSignStayBehind) {
    root.parseCommand(Text("node:p={string:#id=1;string:x=2}; node:q={string:#id=3;string:x=4}"), 0);
    copy("q = p");
    EXPECT_EQ(*root.getField(Text("q/#id"), 0, 0)->getData(0), "3");
    EXPECT_EQ(*root.getField(Text("q/x"), 0, 0)->getData(0), "2");
}
