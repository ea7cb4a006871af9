#include <support/AllocationCount.h>
#include <support/Expressions.h>

#include <gtest/gtest.h>

namespace {

const std::string longText(300, 't');

} // namespace

TEST(ExpressionAllocationCount, SeesAnAllocation) {
    EXPECT_EQ(allocationsOf([] { ::operator delete(::operator new(10)); }), 1);
}

TEST(ExpressionAllocation, NoneToEvaluateOnceTheResultHasGrown) {
    ExpressionStage stage;
    stage.a()->setData(longText.c_str());
    stage.parse("some literal text $(a) $(v[1]) $(v) $(INDEX) $(PARENT) $(FIELD_NAME) $(FIELD_DATA) $(REFRESH) $(a)");
    const std::string expected = stage.evaluate(2);
    const char* text = nullptr;
    EXPECT_EQ(allocationsOf([&] { text = stage.expression.evaluate(2); }), 0);
    EXPECT_EQ(text, expected);
    EXPECT_EQ(expected, "some literal text " + longText + " one two 2 near host hosted  " + longText);
}

TEST(ExpressionAllocation, NoneToParseAgain) {
    ExpressionStage stage;
    Text text("some literal text $(a) $(v[1]) $(near/host) $(INDEX) $(FIELD_DATA)");
    stage.expression.parse(text);
    EXPECT_EQ(allocationsOf([&] { stage.expression.parse(text); }), 0);
}

TEST(ExpressionAllocation, NoneToEvaluateAnotherExpressionWithAShorterText) {
    ExpressionStage stage;
    stage.parse(longText);
    stage.evaluate();
    DataExpression other;
    other.setHostField(&stage.root, nullptr);
    other.parse(Text("$(near/host) $(a)"));
    EXPECT_EQ(allocationsOf([&] { other.evaluate(0); }), 0);
}

TEST(ExpressionAllocation, NoneToLookForMissingNames) {
    ExpressionStage stage;
    stage.parse("$(a/name/that/is/longer/than/a/string/object/holds) $(REFRESH) $(missing/too)");
    stage.evaluate();
    EXPECT_EQ(allocationsOf([&] { stage.expression.evaluate(0); }), 0);
}

TEST(ExpressionAllocation, NoneToExecuteAgain) {
    ExpressionStage stage;
    stage.parse("near/host = a text of the same length; a = $(INDEX)$(INDEX)");
    stage.expression.execute(7);
    EXPECT_LE(allocationsOf([&] { stage.expression.execute(7); }), 1) << "the field's copy of a long text";
    EXPECT_STREQ(stage.a()->getData(0)->c_str(), "77");
}

TEST(ExpressionAllocation, NoneToSendRequestsAgain) {
    ExpressionStage stage;
    const auto command = [](const char* request, const char** answer) {
        *answer = request;
        return 0;
    };
    stage.parse("0 a command that is longer than a string object holds;a = ==0 GET;C a = near/host");
    stage.expression.executeExtended(&stage.root, command, 0);
    EXPECT_EQ(allocationsOf([&] { stage.expression.executeExtended(&stage.root, command, 0); }), 0);
}

TEST(ExpressionAllocation, NoneToAskAQueryForALongName) {
    class Answers : public DataVariableQuery {
    public:
        const char* queryVariable(const char* name) override { return name; }
    } answers;
    ExpressionStage stage;
    stage.expression.registerVariableQuery(&answers);
    stage.parse("$(a_name_that_is_longer_than_a_string_object_holds)");
    stage.evaluate();
    EXPECT_EQ(allocationsOf([&] { stage.expression.evaluate(0); }), 0);
    EXPECT_EQ(stage.evaluate(), "a_name_that_is_longer_than_a_string_object_holds");
}
