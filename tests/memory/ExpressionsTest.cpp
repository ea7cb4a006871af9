#include "Survival.h"

#include <support/Expressions.h>

#include <cstring>

using memory::Operate;
using memory::survivesAnywhere;

namespace {

constexpr char text[] = "a literal of some length $(a) and $(far/b) $(v[1]) $(INDEX) $(FIELD_DATA) "
                        "$(PARENT_FULL_NAME) $(REFRESH) $(a) $(no such field in any of the nodes above)";
constexpr char evaluated[] = "a literal of some length outer and beyond one 0 hosted near  outer ";

int answer(const char* /*request*/, const char** out) {
    *out = "the answer of the host, which is longer than the request";
    return 1;
}

} // namespace

TEST(OutOfMemoryInExpressions, ParseLeavesAllOrNothing) {
    survivesAnywhere([](const Operate& operate) {
        ExpressionStage stage;
        stage.parse("what the expression was before it is parsed again");
        Text written(text);
        const bool isDone = operate([&] { stage.expression.parse(written); });
        EXPECT_EQ(stage.evaluate(), isDone ? evaluated : "");
        stage.expression.parse(written);
        EXPECT_EQ(stage.evaluate(), evaluated);
        // Nobody but the tree holds a field that no expression refers to any more.
        stage.parse("");
        EXPECT_EQ(stage.a()->getRef(), 1);
        EXPECT_EQ(stage.v()->getRef(), 1);
    });
}

TEST(OutOfMemoryInExpressions, SetHostField) {
    survivesAnywhere([](const Operate& operate) {
        ExpressionStage stage;
        stage.parse(text);
        DataField* other = ExpressionStage::add(*stage.far, "other", "another host");
        operate([&] { stage.expression.setHostField(&stage.root, other); });
        stage.expression.setHostField(&stage.root, stage.host);
        EXPECT_EQ(stage.evaluate(), evaluated);
    });
}

TEST(OutOfMemoryInExpressions, EvaluateAndFindFields) {
    survivesAnywhere([](const Operate& operate) {
        ExpressionStage stage;
        stage.parse("$(later and longer than a small text) $(v[2]) $(INDEX)");
        ExpressionStage::add(*stage.near, "later", "found when it is evaluated");
        std::string found;
        const bool isDone = operate([&] { found = stage.expression.evaluate(7); });
        EXPECT_EQ(found, isDone ? "found when it is evaluated two 7" : "");
        EXPECT_EQ(stage.evaluate(7), "found when it is evaluated two 7");
        stage.parse("");
        EXPECT_EQ(stage.root.getField(Text("near/later"), 0, 0)->getRef(), 1);
    });
}

TEST(OutOfMemoryInExpressions, Execute) {
    survivesAnywhere([](const Operate& operate) {
        ExpressionStage stage;
        stage.parse("a = a new text for a which needs memory; far/b = $(a) which is longer than any text before");
        const bool isDone = operate([&] { stage.expression.execute(0); });
        const std::string a = *stage.a()->getData(0);
        const std::string b = *stage.root.getField(Text("far/b"), 0, 0)->getData(0);
        const bool first = a == "a new text for a which needs memory";
        const bool second = b == "outer which is longer than any text before";
        EXPECT_TRUE(first || a == "outer") << a;
        EXPECT_TRUE(second || b == "beyond") << b;
        EXPECT_TRUE(isDone ? first && second : first || !second);
    });
}

TEST(OutOfMemoryInExpressions, ExecuteExtended) {
    survivesAnywhere([](const Operate& operate) {
        ExpressionStage stage;
        stage.parse(
            "a ==0 A REQUEST OF THE HOST, QUITE LONG;C far/b = near/v;L near/v = a;0 ANOTHER COMMAND OF THE HOST");
        operate([&] { stage.expression.executeExtended(&stage.root, answer, 0); });
        stage.expression.executeExtended(&stage.root, answer, 0);
        EXPECT_EQ(stage.v()->getLinkSource(), stage.a());
    });
}

TEST(OutOfMemoryInExpressions, AskAQuery) {
    survivesAnywhere([](const Operate& operate) {
        ExpressionStage stage;
        RecordingQuery query;
        query.answer = "a text that only the query knows, not the tree";
        stage.expression.registerVariableQuery(&query);
        stage.parse("$(aNameThatIsNowhereInTheTree)");
        operate([&] { stage.expression.evaluate(0); });
        EXPECT_EQ(stage.evaluate(), query.answer);
    });
}
