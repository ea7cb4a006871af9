#include <orbel/orbel.h>

#include <support/Expressions.h>
#include <support/RecordingHandler.h>
#include <support/TextList.h>

#include <gtest/gtest.h>

namespace {

using Requests = std::vector<std::string>;

/// A stage whose fields are read by path, and a host.
class ExpressionCommands : public testing::Test {
protected:
    std::string at(const std::string& path) {
        DataField* field = stage.root.getField(Text(path), 0, 0);
        return field ? allTexts(*field) : "(none)";
    }

    void run(const std::string& text, int index = 0) {
        stage.parse(text);
        stage.expression.executeExtended(&stage.root, Host::command, index);
    }

    std::string answered(const std::string& text) {
        return stage.expression.evaluate_Kor_Cmds(Text(text), Host::command);
    }

    ExpressionStage stage;
    Host host;
};

} // namespace

TEST_F(ExpressionCommands, ExecuteRunsTheTextOnTheRoot) {
    stage.parse("a = $(v) by $(FIELD_NAME); $(PARENT)/v[0-1] = p,q");
    stage.expression.execute(2);
    EXPECT_EQ(at("a"), "two by host");
    EXPECT_EQ(at("near/v"), "p|q|two");
}

TEST_F(ExpressionCommands, ExecuteKnowsNoOtherCommands) {
    stage.parse("0 REDRAW;C a = far/b;==0 GET;;a = 1");
    stage.expression.execute(0);
    EXPECT_EQ(at("a"), "1");
    EXPECT_TRUE(host.requests.empty());
}

TEST_F(ExpressionCommands, ExecuteWithoutARootDoesNothing) {
    Diary diary;
    RecordingHandler handler(diary, "A");
    stage.a()->registerHandler(&handler);
    diary.take();
    stage.expression.setHostField(nullptr, stage.host);
    stage.parse("$(REFRESH) $(a)");
    stage.expression.execute(0);
    EXPECT_EQ(diary.take(), "");
    stage.expression.executeExtended(nullptr, Host::command, 0);
    EXPECT_EQ(diary.take(), "");
}

TEST_F(ExpressionCommands, ExtendedStopsAtAnEmptyCommand) {
    ExpressionStage::add(stage.root, "b", "old");
    run("a=1;;b=2");
    EXPECT_EQ(at("a") + at("b"), "1old");
    run(";a=2");
    EXPECT_EQ(at("a"), "1");
    run("a=3;b=3;");
    EXPECT_EQ(at("a") + at("b"), "33");
    run("");
    run("a=4;  ;b=4");
    EXPECT_EQ(at("a") + at("b"), "44");
    run("   ");
    run("a=5;\t;b=5");
    EXPECT_EQ(at("a") + at("b"), "55");
}

TEST_F(ExpressionCommands, ExtendedRunsCopyLinkAndSetCommands) {
    for (const char* name : {"x", "y", "p", "q"})
        ExpressionStage::add(stage.root, name, name);
    run("C x = y;L p = q; v = 3;near/v = 3");
    EXPECT_EQ(at("x"), "y");
    EXPECT_EQ(at("p"), "q");
    EXPECT_EQ(at("near/v"), "3|one|two");
    stage.root.setFieldData(Text("q"), Text("followed"));
    EXPECT_EQ(at("p"), "followed");
    stage.root.setFieldData(Text("y"), Text("alone"));
    EXPECT_EQ(at("x"), "y");
}

TEST_F(ExpressionCommands, MalformedCommandsDoNotStopTheOthers) {
    run("C x y;L p q; v = 3;C ;L ;a;a = 1");
    EXPECT_EQ(at("a"), "1");
}

TEST_F(ExpressionCommands, LinkCommandReplacesTheLinksOfTheTree) {
    for (const char* name : {"p", "q", "r"})
        ExpressionStage::add(stage.root, name, name);
    run("L p = q");
    run("L r = q");
    stage.root.setFieldData(Text("q"), Text("set"));
    EXPECT_EQ(at("p") + ' ' + at("r"), "q set");
}

TEST_F(ExpressionCommands, OnlySpacesAreSkippedInFrontOfACommand) {
    run("   0 FIRST;  C a = far/b;\t0 SECOND;\n0 THIRD");
    EXPECT_EQ(host.requests, (Requests{"-1 FIRST"}));
    EXPECT_EQ(at("a"), "beyond");
}

TEST_F(ExpressionCommands, CommandLettersNeedTheirSpace) {
    for (const char* name : {"C", "L", "0", "Cx"})
        ExpressionStage::add(stage.root, name, "old");
    run("C= 1;L= 2;0= 3;Cx = 4;c = 5");
    EXPECT_EQ(at("C") + at("L") + at("0") + at("Cx"), "1234");
    EXPECT_TRUE(host.requests.empty());
}

TEST_F(ExpressionCommands, HostCommandsAreSentWithMinusOne) {
    run("0 REDRAW");
    EXPECT_EQ(host.requests, (Requests{"-1 REDRAW"}));
    run("0 A b  c ;0 ;0 $(v) = 0;a = after", 1);
    EXPECT_EQ(host.requests, (Requests{"-1 REDRAW", "-1 A b  c ", "-1 ", "-1 one = 0"}));
    EXPECT_EQ(at("a"), "after");
}

TEST_F(ExpressionCommands, RequestsOfAnyLengthAreSent) {
    const std::string longCommand(1'000'000, 'x');
    run("0 s;0 " + longCommand + ";0 t");
    EXPECT_EQ(host.requests, (Requests{"-1 s", "-1 " + longCommand, "-1 t"}));
}

TEST_F(ExpressionCommands, SplitsAtEverySemicolon) {
    run("a = {1;near/v = 2}");
    EXPECT_EQ(at("a"), "{1");
    EXPECT_EQ(at("near/v"), "2}|one|two");
}

TEST_F(ExpressionCommands, EmbeddedHostCommandsAreAnsweredFirst) {
    host.answer = "7; near/host = more";
    run("a==0 GET A;near/v = 2");
    EXPECT_EQ(host.requests, (Requests{"0 GET A"}));
    EXPECT_EQ(at("a") + ' ' + at("near/host") + ' ' + at("near/v"), "7 more 2|one|two");
}

TEST_F(ExpressionCommands, WithoutACallbackAnswersAreEmptyAndCommandsUnsent) {
    stage.parse("a==0 GET;0 REDRAW;near/host = ran");
    stage.expression.executeExtended(&stage.root, nullptr, 0);
    EXPECT_EQ(at("a") + at("near/host"), "ran");
}

TEST_F(ExpressionCommands, ExtendedCommandsTheGivenRoot) {
    Orbel other{Text("other")};
    const SubtreeCleanup belowOther{other};
    ExpressionStage::add(other, "a", "elsewhere");
    stage.parse("a = $(a) too");
    stage.expression.executeExtended(&other, Host::command, 0);
    EXPECT_EQ(at("a"), "outer");
    EXPECT_EQ(*other.getField(Text("a"), 0, 0)->getData(0), "outer too");
}

TEST_F(ExpressionCommands, ManySemicolonsAndManyCommands) {
    std::string many;
    for (int count = 0; count < 10'000; ++count)
        many += ';';
    run(many + "a = 1");
    EXPECT_EQ(at("a"), "outer");
    many.clear();
    for (int count = 0; count < 10'000; ++count)
        many += "a = " + std::to_string(count) + ';';
    run(many);
    EXPECT_EQ(at("a"), "9999");
    run(std::string(1'000'000, ' ') + "0 X;" + std::string(1'000'000, ' '));
    EXPECT_EQ(host.requests, (Requests{"-1 X"}));
}

TEST_F(ExpressionCommands, HostAnswersReplaceEmbeddedCommands) {
    const std::pair<const char*, const char*> rows[] = {
        {"p==0 GET;q", "p=5;q"},
        {"pos==0 GET X;rest", "pos=5;rest"},
        {"p==0 GET", "p=5;"},
        {"p==0 GET;", "p=5;"},
        {"p==0 ", "p=5;"},
        {"==0 ;==0 ;", "=5;=5;"},
        {"", ""},
        {"nothing = 1;here==0;x==1 2", "nothing = 1;here==0;x==1 2"},
        {"a==0 B==0 C;d==0 E;f", "a=5;d=5;f"},
        {"===0 A;b", "==5;b"},
        {"a == 0 B;c", "a == 0 B;c"},
    };
    for (const auto& [text, result] : rows)
        EXPECT_EQ(answered(text), result) << text;
}

TEST_F(ExpressionCommands, RequestsOfEmbeddedCommandsBeginWithZero) {
    answered("p==0 GET  X ;a==0 B==0 C;d==0 E");
    EXPECT_EQ(host.requests, (Requests{"0 GET  X ", "0 B==0 C", "0 E"}));
}

TEST_F(ExpressionCommands, UnsetOrNullAnswerIsEmpty) {
    host.silent = true;
    EXPECT_EQ(answered("p==0 GET;q"), "p=;q");
    host.silent = false;
    host.answer = nullptr;
    EXPECT_EQ(answered("p==0 GET;q"), "p=;q");
    EXPECT_STREQ(stage.expression.evaluate_Kor_Cmds(Text("p==0 GET;q"), nullptr), "p=;q");
    EXPECT_STREQ(stage.expression.evaluate_Kor_Cmds(nullptr, Host::command), "");
    host.answer = "==0 X;";
    EXPECT_EQ(answered("p==0 GET;q"), "p===0 X;;q");
}

TEST_F(ExpressionCommands, EmbeddedCommandsAreCutInPlace) {
    std::string text = "p==0 GET;q==0 B;r";
    stage.expression.evaluate_Kor_Cmds(text.data(), Host::command);
    EXPECT_EQ(text, std::string("p==0 GET\0q==0 B\0r", 17));
}

TEST_F(ExpressionCommands, AnswersStandInABufferOfTheirOwn) {
    stage.parse("evaluated");
    const char* evaluated = stage.expression.evaluate(0);
    const char* answers = stage.expression.evaluate_Kor_Cmds(Text("p==0 GET;q"), Host::command);
    EXPECT_STREQ(evaluated, "evaluated");
    EXPECT_STREQ(stage.expression.evaluate(0), "evaluated");
    EXPECT_STREQ(answers, "p=5;q");
}

TEST_F(ExpressionCommands, ResultsMayBeGivenBackIn) {
    host.answer = "=0 NEXT;";
    char* once = stage.expression.evaluate_Kor_Cmds(Text("p==0 GET;q"), Host::command);
    EXPECT_STREQ(once, "p==0 NEXT;;q");
    host.answer = "5";
    EXPECT_STREQ(stage.expression.evaluate_Kor_Cmds(once, Host::command), "p=5;;q");
    stage.parse("x==0 $(a);");
    EXPECT_STREQ(stage.expression.evaluate_Kor_Cmds(stage.expression.evaluate(0), Host::command), "x=5;");
    EXPECT_EQ(host.requests, (Requests{"0 GET", "0 NEXT", "0 outer"}));
}

TEST_F(ExpressionCommands, ManyEmbeddedCommandsTakeLinearTime) {
    std::string many;
    std::string expected;
    for (int count = 0; count < 100'000; ++count) {
        many += "a==0 b;";
        expected += "a=5;";
    }
    EXPECT_EQ(answered(many), expected);
    EXPECT_EQ(answered(std::string(1'000'000, '=')), std::string(1'000'000, '='));
}
