#include <tools/CommandLine.h>
#include <tools/diff/DumpReader.h>

#include <gtest/gtest.h>

#include <string>

namespace {

std::string listOf(const Facts& facts) {
    std::string list;
    for (const auto& [path, text] : facts)
        list += path + '=' + text + '|';
    return list;
}

std::string factsOf(const std::string& dump) {
    return listOf(readDump(dump));
}

} // namespace

TEST(DumpReader, ReadsValuesAndNodes) {
    EXPECT_EQ(factsOf("Orbel ={\n\tscene ={\n\t\ttitle=Hello, world;\n\t}\n\tx=;\n}\n"),
              "scene/title=Hello, world|x=|");
    EXPECT_EQ(factsOf("scene ={\n\ttitle=a;\n}\nx=1;\n"), "scene/title=a|x=1|");
    EXPECT_EQ(factsOf(""), "");
    EXPECT_EQ(factsOf("Orbel ={\r\n\tx=1;\r\n}\r\n"), "x=1|");
}

TEST(DumpReader, ReadsArrays) {
    EXPECT_EQ(factsOf("points[0-1]={\n\t{\n\t\tx=1;\n\t},\n\t{\n\t\tx=2;\n\t}\n};\n"), "points[0]/x=1|points[1]/x=2|");
    EXPECT_EQ(factsOf("points={\n\t{\n\t\tx=1;\n\t}\n};\n"), "points[0]/x=1|");
    EXPECT_EQ(factsOf("points[2]={\n\t{\n\t\tx=1;\n\t}\n};\n"), "points[2]/x=1|");
}

TEST(DumpReader, ReadsOnBehindAnEmptyArray) {
    EXPECT_EQ(factsOf("Orbel ={\n\tnone={\n};\n\nscene ={\n\ttitle=a;\n}\nx=1;\n}\n"), "scene/title=a|x=1|");
}

TEST(DumpReader, ReadsTablesByKey) {
    EXPECT_EQ(factsOf("cities[Oslo,New York]={\n\tPoint-#0 ={\n\t\tx=1;\n\t},\n\tPoint-#1 ={\n\t\tx=2;\n\t}\n};\n"),
              "cities[New York]/x=2|cities[Oslo]/x=1|");
    EXPECT_EQ(factsOf("cities[]={\n};\n"), "");
}

TEST(DumpReader, ReadsSeveralTexts) {
    EXPECT_EQ(factsOf("tags[0-2]=a,,b;\n"), "tags[0]=a|tags[1]=|tags[2]=b|");
    EXPECT_EQ(factsOf("tags[1]=a;\n"), "tags[1]=a|");
    EXPECT_EQ(factsOf("tags[0-1]=a,b,c;\n"), "tags[0-1]=a,b,c|");
}

TEST(DumpReader, ReadsTextsOfSeveralLines) {
    EXPECT_EQ(factsOf("Orbel ={\n\ta=one;\ntwo;\n\tb=x\ny;\n}\n"), "a=one;\ntwo|b=x\ny|");
}

TEST(DumpReader, ReadsJson) {
    EXPECT_EQ(factsOf("{\"scene/title\": \"a\", \"tags\": [\"x\", \"y,z\"], \"n\": 5, \"in\": {\"x\": \"1\"}}"),
              "in/x=1|n=5|scene/title=a|tags[0]=x|tags[1]=y,z|");
}

TEST(DumpReader, RefusesOtherTexts) {
    EXPECT_THROW(readDump("create node:scene\n"), Trouble);
    EXPECT_THROW(readDump("Orbel ={\n\tx=1;\n"), Trouble);
    EXPECT_THROW(readDump("x=1"), Trouble);
    EXPECT_THROW(readDump("points={\n\tx=1;\n};\n"), Trouble);
}

TEST(DumpReader, JoinsWhatTheOtherSideHasJoined) {
    Facts apart{{"tags[0]", "a,b"}, {"tags[1]", "c"}, {"x", "1"}};
    joinWhereTheOtherHasJoined(apart, Facts{{"tags[0-1]", "a,b,c"}});
    EXPECT_EQ(listOf(apart), "tags[0-1]=a,b,c|x=1|");
}

TEST(PathOrder, KnowsNumbers) {
    const PathOrder isBefore;
    EXPECT_TRUE(isBefore("a[2]", "a[10]"));
    EXPECT_TRUE(isBefore("a/b", "a/bc"));
    EXPECT_TRUE(isBefore("a01", "a1"));
    EXPECT_FALSE(isBefore("a1", "a1"));
    EXPECT_FALSE(isBefore("b", "a9"));
}
