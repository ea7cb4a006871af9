#include <support/SceneTree.h>
#include <support/TextList.h>

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::string times(int count, const std::string& text) {
    std::string all;
    all.reserve(text.size() * static_cast<std::size_t>(count));
    for (int done = 0; done < count; ++done)
        all += text;
    return all;
}

/// A root with the values a and b, the node s with p, and the array list of three objects with a value x.
class HostileCommands : public testing::Test {
protected:
    HostileCommands() {
        for (const char* path : {"string:a", "string:b", "node:s/string:p"})
            root.getField(Text(path), 0, 0);
        root.addField(list, 0);
        list->setSize(3);
        for (int index = 0; index < 3; ++index)
            list->getObject(index)->addField(new DataValue(Text("x")), 0);
    }

    DataField* at(const std::string& path) { return root.getField(Text(path), 0, 0); }
    std::string text(const std::string& path) { return *at(path)->getData(0); }

    /// Runs the text as a list and as one command of every language.
    void runEverywhere(const std::string& text) {
        std::ostringstream os;
        root.parseCommand(Text(text), 0);
        root.executeCommand(Text(text), 0);
        root.parseCopyCommand(Text(text));
        root.executeCopyCommand(Text(text));
        root.parseLinkCommand(Text(text));
        root.executeLinkCommand(Text(text));
        root.dumpData(Text(text), 0, os);
        root.dumpField(Text(text), os);
        root.executeClearCommand(Text(text));
        root.executeClearField(Text(text));
        root.ClearLinks();
    }

    /// The tree is still what it was, and works.
    void expectSound() {
        root.parseCommand(Text("a = 1; s = {p = 2}; list[2] = {{x = 3}}"), 0);
        EXPECT_EQ(text("a"), "1");
        EXPECT_EQ(text("s/p"), "2");
        EXPECT_EQ(text("list[2]/x"), "3");
        EXPECT_EQ(list->getSize(), 3);
        EXPECT_EQ(at("a")->getSize(), 1);
    }

    Orbel root{Text("root")};
    const SubtreeCleanup belowRoot{root};
    DataArray* list = new DataArray(Text("list"));
};

} // namespace

TEST_F(HostileCommands, OfAMillionCharactersAreOneText) {
    const std::string value(1'000'000, 'v');
    root.executeCommand(Text("a = " + value), 0);
    EXPECT_EQ(text("a"), value);
    root.executeCopyCommand(Text("b = a"));
    EXPECT_EQ(text("b"), value);
    root.executeLinkCommand(Text("s/p = a"));
    EXPECT_EQ(text("s/p"), value);
    std::ostringstream os;
    root.dumpData(Text("a"), 0, os);
    EXPECT_EQ(os.str(), "a=" + value + ";");
}

TEST_F(HostileCommands, OfOneCharacterAllOverChangeNoStructure) {
    for (const char character :
         {'x', '=', ';', '{', '}', '"', '[', ']', ',', '-', '*', '/', '.', '~', ':', ' ', '9', '\n', '\x80', '\xff'}) {
        const std::string many(50'000, character);
        runEverywhere(many);
        runEverywhere("a = " + many);
        runEverywhere(many + " = a");
    }
    expectSound();
}

TEST_F(HostileCommands, OfLongRunsOfBracesOrSeparatorsChangeNoStructure) {
    for (const char character : {'{', '}', ';', '"'})
        runEverywhere("s = {" + std::string(200'000, character));
    expectSound();
}

TEST_F(HostileCommands, OfRepeatedPiecesChangeNoStructure) {
    for (const char* piece : {"../", "*/", "[0]", "[0-2000000000]", "{=", "}=", "a=", "\"\"{", "\"\";", "~a;", "=[",
                              "]=", "a[0-1],", "{}", "{;}", "a=b;", "*;", "../a={"}) {
        runEverywhere(times(5'000, piece));
        runEverywhere("list[0-2000000000] = " + times(5'000, piece));
        runEverywhere("a[" + times(5'000, piece) + "] = b");
    }
    expectSound();
}

TEST_F(HostileCommands, RunSixtyFourLevelsOfBraces) {
    const auto nested = [&](int levels) {
        root.executeCommand(Text(times(levels, "s = {../") + "s = {p = deep" + std::string(2 * levels, '}')), 0);
        return text("s/p");
    };
    EXPECT_EQ(nested(1), "deep");
    root.executeClearCommand(Text(""));
    EXPECT_EQ(nested(62), "deep");
    root.executeClearCommand(Text(""));
    EXPECT_EQ(nested(63), "");
    EXPECT_EQ(nested(10'000), "");
    EXPECT_EQ(nested(30'000), "");
    expectSound();
}

// Whatever goes over a whole tree calls itself from level to level.
TEST_F(HostileCommands, BuildTreesAThousandLevelsDeep) {
    std::string command = "string:leaf = 1";
    for (int nested = 0; nested < 60; ++nested)
        command = times(70, "node:n/") + "node:n = {" + command + "}";
    root.executeCommand(Text(command), 0);
    int levels = 0;
    for (DataNode* node = &root; node; node = static_cast<DataNode*>(node->getField(Text("n"), 0, 0)))
        ++levels;
    EXPECT_EQ(levels, 1'001);

    std::ostringstream dump;
    root.dump(dump, -1, -1, 1);
    EXPECT_NE(dump.str(), "");
    root.clearData();
    root.ClearLinks();
}

TEST_F(HostileCommands, GoOnBehindWhatIsTooDeep) {
    root.executeCommand(Text("s = {" + times(1'000, "../s = {") + "p = 1" + std::string(1'000, '}') + "; p = 2}"), 0);
    EXPECT_EQ(text("s/p"), "2");
}

TEST_F(HostileCommands, WithUnbalancedBracesAndQuotesAreTheRestOfTheText) {
    root.parseCommand(Text("a = }; b = 1; s = {p = 1}"), 0);
    EXPECT_EQ(text("a"), "}; b = 1; s = {p = 1}");
    root.parseCommand(Text("s = {p = \"\"1; ../a = 2}; b = 3"), 0);
    EXPECT_EQ(text("s/p"), "1; ../a = 2}; b = 3");
    root.parseCommand(Text("s = {p = {{{"), 0);
    EXPECT_EQ(text("s/p"), "{{{");
    root.parseCommand(Text("s = {p = \"\""), 0);
    EXPECT_EQ(text("s/p"), "");
    expectSound();
}

TEST_F(HostileCommands, InLongListsAreAllRun) {
    std::string commands;
    for (int number = 1; number <= 100'000; ++number)
        commands += "a = " + std::to_string(number) + ";b=" + std::to_string(-number) + ";";
    root.parseCommand(Text(commands), 0);
    EXPECT_EQ(text("a"), "100000");
    EXPECT_EQ(text("b"), "-100000");
    root.executeCommand(Text("s = {" + times(10'000, "p = 1;") + "p = 2}"), 0);
    EXPECT_EQ(text("s/p"), "2");
    root.parseCopyCommand(Text(times(10'000, "a=b;b=a;")));
    EXPECT_EQ(text("a"), "-100000");
    root.parseLinkCommand(Text(times(10'000, "a=b;~a;")));
    EXPECT_EQ(at("a")->getLinkSource(), nullptr);
    root.executeClearCommand(Text(times(10'000, "a;s;") + "b"));
    EXPECT_EQ(text("b"), "");
}

TEST_F(HostileCommands, WithHugeRangesReachWhatExists) {
    at("a")->setSize(3);
    for (const char* command : {"a[0-2000000000] = b", "list[0-2000000000] = b", "list[0-2000000000] = {{x = 1}}",
                                "a[2000000000-2147483647] = c", "a[99999999999-99999999999] = c",
                                "list[2147483647] = {{x = 2}}", "s[0-2000000000] = {p = 3}"})
        root.parseCommand(Text(times(50'000, std::string(command) + ";")), 0);
    EXPECT_EQ(allTexts(*at("a")), "b|b|b");
    EXPECT_EQ(text("list[0]/x"), "1");
    EXPECT_EQ(text("list[1]/x"), " ");
    EXPECT_EQ(at("a")->getSize(), 3);
    EXPECT_EQ(list->getSize(), 3);
}

TEST_F(HostileCommands, WithHugeRangesCopyWhatExists) {
    at("a")->setSize(3);
    fill(*at("a"), {"1", "2", "3"});
    root.executeCommand(Text("list[0] = {{x = 1}}"), 0);
    root.parseCopyCommand(Text(times(5'000, "a[0-2000000000] = b; b = a[0-2000000000];")));
    EXPECT_EQ(allTexts(*at("a")), " |2|3");
    root.parseCopyCommand(Text(times(200, "list[0-2000000000] = list[0-2000000000];")));
    root.parseCopyCommand(Text("list[1-2000000000] = list[0]"));
    EXPECT_EQ(text("list[2]/x"), "1");
    root.executeClearCommand(Text(times(200, "list[0-2000000000];")));
    EXPECT_EQ(text("list[2]/x"), "");
    EXPECT_EQ(list->getSize(), 3);
}

TEST_F(HostileCommands, WithRangesOfManySegmentsTakeThemAll) {
    const std::string segments = times(100'000, "0,1,") + "2";
    fill(*at("a"), {"1", "2", "3"});
    std::ostringstream os;
    root.dumpField(Text("a[" + segments + "]"), os);
    EXPECT_EQ(os.str(), times(100'000, "a[0]=1;a[1]=2;") + "a[2]=3;");

    root.executeCommand(Text("list[2] = {{x = 1}}"), 0);
    root.executeCopyCommand(Text("list[" + segments + "] = list[" + times(200'000, "2,") + "0]"));
    EXPECT_EQ(text("list[0]/x"), "1");
    EXPECT_EQ(text("list[1]/x"), "1");

    at("a")->parse(Text(segments), Text(times(200'000, "v,") + "last"));
    EXPECT_EQ(allTexts(*at("a")), "v|v|last");
}

TEST_F(HostileCommands, TakeARangeThatIsSetOrClearedAsPartOfThePath) {
    const std::string segments = times(300, "0,") + "0";
    root.executeCommand(Text("a = 1"), 0);
    root.executeCommand(Text("a[" + segments + "] = 2"), 0);
    EXPECT_EQ(text("a"), "1");
    root.executeCommand(Text("list[0] = {{x = 1}}"), 0);
    root.executeClearField(Text("list[" + segments + "]"));
    EXPECT_EQ(text("list[0]/x"), "1");
}

TEST_F(HostileCommands, TakePathsOf511Characters) {
    const std::string padding(511 - std::string("a[]").size(), ' ');
    root.executeCommand(Text("a[" + padding + "] = 1"), 0);
    root.executeCommand(Text("a[0" + padding + "] = 2"), 0);
    EXPECT_EQ(text("a"), " ");
    root.executeCommand(Text("a[0" + padding.substr(1) + "] = 3"), 0);
    EXPECT_EQ(text("a"), "3");

    const std::string way = times(102, "s/../");
    ASSERT_EQ(way.size(), 510u);
    for (const char* end : {"b", "bb"}) {
        root.executeCommand(Text(way + end + " = " + end), 0);
        root.executeCopyCommand(Text("s/p = " + way + end));
        root.executeLinkCommand(Text(way + end + " = a"));
    }
    EXPECT_EQ(at("b")->getLinkSource(), at("a"));
    EXPECT_EQ(text("s/p"), "b");
    root.executeClearCommand(Text(way + "a;" + way + "bb"));
    EXPECT_EQ(text("a"), "");
    std::ostringstream os;
    root.dumpData(Text(way + "a;" + way + "bb"), 0, os);
    EXPECT_EQ(os.str(), "a=;");
}

TEST_F(HostileCommands, OfBytesThatAreNoTextAreTakenAsTheyAre) {
    const std::string odd = "\xff\xfe\x80\xc3(\x01\x7f\xed\xa0\x80";
    root.executeCommand(Text("string:" + odd + " = " + odd), 0);
    EXPECT_EQ(text(odd), odd);
    root.executeCopyCommand(Text("a = " + odd));
    EXPECT_EQ(text("a"), odd);
    root.executeLinkCommand(Text("b = " + odd));
    EXPECT_EQ(text("b"), odd);
    std::ostringstream os;
    root.dumpData(Text("a;" + odd), 0, os);
    EXPECT_EQ(os.str(), "a=" + odd + ";" + odd + "=" + odd + ";");
    root.executeClearCommand(Text(odd));
    EXPECT_EQ(text("a"), odd);
    EXPECT_EQ(text("b"), "");
}

TEST_F(HostileCommands, EndAtTheFirstZero) {
    root.parseCommand(Text(std::string("a = 1\0; b = 2", 13)), 0);
    EXPECT_EQ(text("a"), "1");
    EXPECT_EQ(text("b"), " ");
    for (const char* odd : {"",
                            "=",
                            "[",
                            "]",
                            "[=]",
                            "]=[",
                            "a[",
                            "a]",
                            "a]=",
                            "=]",
                            "[]",
                            "~",
                            "~[",
                            ";",
                            "{",
                            "}",
                            "\"",
                            "\"\"",
                            "\"\"\"",
                            "\"=\"",
                            "a[0-",
                            "a[-",
                            "a[0-=",
                            "*",
                            "*=",
                            "*/=",
                            "*[=",
                            "..=",
                            "../=",
                            ":=",
                            "a:=",
                            ":a=",
                            "::=",
                            "/=",
                            "//=",
                            "list[=",
                            "list[]/=",
                            "list[0]/=",
                            "list[/]=",
                            "DataHashTable:=",
                            "DataHashTable::=",
                            "DataHashTable:t=",
                            "Orbel[",
                            "Orbel]",
                            "Orbel[]"})
        runEverywhere(odd);
    root.parseCommand(Text("list[2] = {{x = 3}}"), 0);
    EXPECT_EQ(text("list[2]/x"), "3");
}

TEST_F(HostileCommands, ThatMultiplyThemselvesByWildcardsComeToAnEnd) {
    for (const char* path : {"node:t", "node:u", "string:after"})
        root.getField(Text(path), 0, 0);
    root.parseCommand(Text(times(40, "*/../") + "a = 1; after = 2"), 0);
    EXPECT_EQ(text("a"), "1");
    EXPECT_EQ(text("after"), "2");
}

TEST_F(HostileCommands, ThatMultiplyALongTextComeToAnEnd) {
    for (const char* path : {"node:t", "node:u"})
        root.getField(Text(path), 0, 0);
    root.parseCommand(Text(times(40, "*/../") + "a = " + std::string(200'000, 'v')), 0);
    EXPECT_EQ(text("a").size(), 200'000u);
}

TEST_F(HostileCommands, ThatMultiplyThemselvesAlongLinksComeToAnEnd) {
    std::vector<std::unique_ptr<DataStructure>> followers;
    DataNode* source = static_cast<DataNode*>(at("s"));
    for (int number = 0; number < 32; ++number) {
        followers.push_back(std::make_unique<DataStructure>(Text("s")));
        root.getField(Text("node:n" + std::to_string(number)), 0, 0);
        static_cast<DataNode*>(at("n" + std::to_string(number)))->addField(followers.back().get(), 0);
        source->addTargetLink(followers.back().get());
        source = followers.back().get();
    }
    // Long, so that what may run is reached after some ten thousand commands.
    const std::string value(10'000, 'v');
    root.executeCommand(Text("s = {" + times(60, "../s = {") + "p = " + value + std::string(61, '}')), 0);
    EXPECT_EQ(text("s/p"), value);
    for (int number = 0; number < 32; ++number)
        static_cast<DataNode*>(at("n" + std::to_string(number)))->removeChildren();
}

TEST_F(HostileCommands, MayBeChangedWhileTheyRunInAFollower) {
    struct Shortener : DataHandler {
        void onChange(DataField& /*field*/, bool /*changed*/) override { command[5] = '\0'; }
        std::string command = "p = 1 and more";
    } shortener;
    auto* source = static_cast<DataNode*>(at("s"));
    auto* follower = static_cast<DataNode*>(at("node:t"));
    source->addTargetLink(follower);
    at("t/string:p")->registerHandler(&shortener);
    source->executeCommand(shortener.command.data(), 0);
    EXPECT_EQ(text("t/p"), "1 and more");
    EXPECT_EQ(text("s/p"), "1");
}

TEST_F(HostileCommands, OfBroadcastsGoToEveryChildOfALargeNode) {
    auto* many = new DataStructure(Text("many"));
    root.addField(many, 0);
    for (int number = 0; number < 50'000; ++number)
        many->addField(new DataValue(Text(std::to_string(number))), 0);
    root.executeCommand(Text("many/* = 1"), 0);
    for (const char* name : {"0", "49999", "9999"})
        EXPECT_EQ(text(std::string("many/") + name), "1");
    int without = 0;
    for (int number = 0; number < 50'000; ++number)
        without += text("many/" + std::to_string(number)) == "1" ? 0 : 1;
    EXPECT_EQ(without, 0);
}
