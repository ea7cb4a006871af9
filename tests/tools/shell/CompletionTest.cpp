#include <tools/shell/Completion.h>
#include <tools/shell/LiveTree.h>

#include <support/Environment.h>
#include <support/TemporaryFolder.h>
#include <support/Text.h>

#include <orbel/orbel.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace {

class ShellCompletion : public testing::Test {
protected:
    ShellCompletion() {
        clearTypeVariables();
        folder.write("types.qx", "Point = {string x=0; string y=0;};\n"
                                 "Label = {string text; Point pos; string tags[2]; Point corners[2];};\n");
        tree = std::make_unique<LiveTree>(std::vector<std::string>{folder.path("types.qx")});
        for (const char* path : {"Label:caption", "Point[2]:points", "DataHashTable:cities:Point", "string:watched"})
            tree->root().getField(Text(path), 0, 0);
        auto* cities = static_cast<DataHashTable*>(tree->root().getField(Text("cities"), 0, 0));
        cities->setObjectType(DataObject::getObjectTypeByName(Text("Point")));
        cities->newObject(Text("New York"));
    }

    /// The texts, each with what stays in front of it.
    std::vector<std::string> complete(const std::string& line) {
        const Completions found = completeLine(tree->root(), line);
        std::vector<std::string> lines;
        for (const std::string& text : found.texts)
            lines.push_back(line.substr(0, found.start) + text);
        return lines;
    }

    using Lines = std::vector<std::string>;

    const TemporaryFolder folder;
    std::unique_ptr<LiveTree> tree;
};

} // namespace

TEST_F(ShellCompletion, KnowsVerbsAndFields) {
    EXPECT_EQ(complete("wa"), (Lines{"watch ", "watched"}));
    EXPECT_EQ(complete("unw"), (Lines{"unwatch "}));
    EXPECT_EQ(complete("help qu"), (Lines{"help quit"}));
    EXPECT_EQ(complete("quit "), Lines{});
}

TEST_F(ShellCompletion, GoesLevelByLevel) {
    EXPECT_EQ(complete("dump cap"), (Lines{"dump caption/"}));
    EXPECT_EQ(complete("dump caption/p"), (Lines{"dump caption/pos/"}));
    EXPECT_EQ(complete("dump caption/pos/"), (Lines{"dump caption/pos/x", "dump caption/pos/y"}));
    EXPECT_EQ(complete("caption/te"), (Lines{"caption/text"}));
    EXPECT_EQ(complete("get nowhere/x"), Lines{});
}

TEST_F(ShellCompletion, KnowsIndicesAndKeys) {
    EXPECT_EQ(complete("get po"), (Lines{"get points["}));
    EXPECT_EQ(complete("get points["), (Lines{"get points[0]/", "get points[1]/"}));
    EXPECT_EQ(complete("get points[1]/"), (Lines{"get points[1]/x", "get points[1]/y"}));
    EXPECT_EQ(complete("get caption/tags["), (Lines{"get caption/tags[0]", "get caption/tags[1]"}));
    EXPECT_EQ(complete("get cities["), (Lines{"get cities[New York]/"}));
    EXPECT_EQ(complete("get cities[New Y"), (Lines{"get cities[New York]/"}));
    EXPECT_EQ(complete("get cities[New York]/x"), (Lines{"get cities[New York]/x"}));
}

TEST_F(ShellCompletion, StartsAnewBehindSeparators) {
    EXPECT_EQ(complete("dump caption; poi"), (Lines{"dump caption; points["}));
    EXPECT_EQ(complete("watched = 1; caption/te"), (Lines{"watched = 1; caption/text"}));
    EXPECT_EQ(complete("C caption/text = watc"), (Lines{"C caption/text = watched"}));
    EXPECT_EQ(complete("L cap"), (Lines{"L caption/"}));
    EXPECT_EQ(complete("watched = cap"), Lines{});
}

TEST_F(ShellCompletion, KnowsTypesAndKinds) {
    EXPECT_EQ(complete("types L"), (Lines{"types Label"}));
    EXPECT_EQ(complete("create La"), (Lines{"create Label:"}));
    EXPECT_EQ(complete("create caption/no"), (Lines{"create caption/node:"}));
    EXPECT_EQ(complete("str"), (Lines{"string:"}));
    EXPECT_EQ(complete("caption/"), (Lines{"caption/corners[", "caption/pos/", "caption/tags", "caption/text"}));
}

TEST_F(ShellCompletion, LooksBehindTime) {
    EXPECT_EQ(complete("time cap"), (Lines{"time caption/"}));
    EXPECT_EQ(complete("time 1000 caption/te"), (Lines{"time 1000 caption/text"}));
    EXPECT_EQ(complete("time 10 dump wa"), (Lines{"time 10 dump watched"}));
}

TEST_F(ShellCompletion, KnowsFiles) {
    std::filesystem::create_directory(folder.path("shows"));
    std::string start = folder.path();
    for (char& character : start)
        if (character == '\\')
            character = '/';
    EXPECT_EQ(complete("load " + start + "/"), (Lines{"load " + start + "/shows/", "load " + start + "/types.qx"}));
    EXPECT_EQ(complete("load " + start + "/t"), (Lines{"load " + start + "/types.qx"}));
}
