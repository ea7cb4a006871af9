#include <orbel/orbel.h>

#include <support/Expressions.h>
#include <support/RecordingHandler.h>
#include <support/SceneTree.h>

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace {

/// A stage, a second expression on it, and handlers of a that react with a function, on every call.
class ExpressionReentrancy : public testing::Test {
protected:
    class Reacting : public DataHandler {
    public:
        void onChange(DataField& /*field*/, bool /*changed*/) override {
            ++calls;
            if (react)
                react();
        }

        std::function<void()> react;
        int calls = 0;
    };

    ExpressionReentrancy() {
        stage.a()->registerHandler(&handler);
        handler.calls = 0;
        other.setHostField(&stage.root, stage.v());
        other.parse(Text("[other $(v[2]) $(b) $(INDEX)]"));
    }

    /// A second expression on the heap, as callbacks destroy it.
    DataExpression& make(const std::string& text) {
        owned = std::make_unique<DataExpression>();
        owned->setHostField(&stage.root, stage.host);
        owned->registerVariableQuery(&query);
        owned->parse(Text(text));
        return *owned;
    }

    std::string a() { return *stage.a()->getData(0); }

    ExpressionStage stage;
    Reacting handler;
    RecordingQuery query;
    Host host;
    DataExpression other;
    std::unique_ptr<DataExpression> owned;
};

const std::string longText(500, 'l');

} // namespace

TEST_F(ExpressionReentrancy, HandlerEvaluatesAnotherExpression) {
    std::string inner;
    handler.react = [&] { inner = other.evaluate(5); };
    EXPECT_EQ(stage.textOf("$(INDEX) before $(REFRESH) $(a) $(INDEX)", 1), "1 before  outer 1");
    EXPECT_EQ(inner, "[other two  5]");
}

TEST_F(ExpressionReentrancy, HandlerEvaluatesTheSameExpressionWithoutFiringAgain) {
    std::string inner;
    handler.react = [&] { inner = stage.evaluate(8); };
    EXPECT_EQ(stage.textOf("$(INDEX) before $(REFRESH) $(a) $(INDEX)", 1), "1 before  outer 1");
    EXPECT_EQ(inner, "8 before  outer 8");
    EXPECT_EQ(handler.calls, 1);
    stage.evaluate();
    EXPECT_EQ(handler.calls, 2);
}

TEST_F(ExpressionReentrancy, TwoExpressionsThatRefreshEachOtherComeToAnEnd) {
    other.parse(Text("$(REFRESH) $(a)"));
    handler.react = [&] {
        other.evaluate(0);
        stage.evaluate();
    };
    EXPECT_EQ(stage.textOf("$(REFRESH) $(a)"), " outer");
    EXPECT_EQ(handler.calls, 2);
}

TEST_F(ExpressionReentrancy, HandlerParsesTheExpressionAnew) {
    handler.react = [&] { stage.parse("anew " + longText + "$(v[1])"); };
    EXPECT_EQ(stage.textOf("before$(REFRESH) $(a) behind"), "before");
    EXPECT_EQ(stage.evaluate(), "anew " + longText + "one");
}

TEST_F(ExpressionReentrancy, HandlerParsesAndEvaluatesTheExpressionEachTime) {
    const std::string text = "before$(REFRESH) $(a) behind";
    std::string inner;
    handler.react = [&] { inner = stage.textOf(text); };
    EXPECT_EQ(stage.textOf(text), "before");
    EXPECT_EQ(inner, "before outer behind");
    EXPECT_EQ(handler.calls, 1);
}

TEST_F(ExpressionReentrancy, HandlerDestroysTheExpression) {
    DataExpression& expression = make("before$(REFRESH) $(a) behind " + longText);
    handler.react = [&] { owned.reset(); };
    EXPECT_STREQ(expression.evaluate(0), "before");
    EXPECT_EQ(stage.a()->getRef(), 1);
}

TEST_F(ExpressionReentrancy, NothingIsExecutedWhenTheEvaluationIsCutShort) {
    for (const bool destroy : {false, true}) {
        handler.react = [&, destroy] {
            if (destroy)
                owned.reset();
            else
                owned->parse(Text("near/host = anew"));
        };
        make("near/host = cut;0 CUT $(REFRESH) $(a)").execute(0);
        make("near/host = cut;0 CUT $(REFRESH) $(a)").executeExtended(&stage.root, Host::command, 0);
        EXPECT_EQ(*stage.host->getData(0), "hosted");
        EXPECT_TRUE(host.requests.empty());
    }
}

TEST_F(ExpressionReentrancy, HandlerDestroysTheFieldThatIsRefreshed) {
    handler.react = [&] {
        DataField* field = stage.a();
        stage.root.removeField(Text("a"), 0);
        delete field;
    };
    EXPECT_EQ(stage.textOf("<$(REFRESH) $(a)|$(a)>"), "< |>");
    ExpressionStage::add(stage.root, "a", "again");
    EXPECT_EQ(stage.evaluate(), "< again|again>");
}

TEST_F(ExpressionReentrancy, HandlerDestroysTheContextAndTheHostField) {
    auto* parent = new DataStructure(Text("parent"));
    stage.root.addField(parent, 0);
    DataValue* child = ExpressionStage::add(*parent, "child", "held");
    DataExpression expression;
    expression.setHostField(&stage.root, child);
    expression.parse(Text("<$(REFRESH) $(a)|$(child)|$(FIELD_DATA)|$(PARENT)|$(late)>"));
    bool alive = true;
    handler.react = [&] {
        if (!std::exchange(alive, false))
            return;
        parent->removeChildren();
        delete child;
        stage.root.removeField(Text("parent"), 0);
        delete parent;
    };
    EXPECT_STREQ(expression.evaluate(0), "< outer||||>");
    EXPECT_STREQ(expression.evaluate(0), "< outer||||>");
    expression.parse(Text("$(PARENT_NAME)$(FIELD_NAME)$(a)"));
    EXPECT_STREQ(expression.evaluate(0), "showouter");
}

TEST_F(ExpressionReentrancy, QueryEvaluatesAndAnswersWithTheResult) {
    class Inner : public DataVariableQuery {
    public:
        explicit Inner(DataExpression& expression) : m_expression(expression) {}
        const char* queryVariable(const char* /*name*/) override { return m_expression.evaluate(3); }

    private:
        DataExpression& m_expression;
    } inner(other);
    stage.expression.registerVariableQuery(&inner);
    EXPECT_EQ(stage.textOf("1$(x)2$(INDEX)$(x)", 7), "1[other two  3]27[other two  3]");
    Inner self(stage.expression);
    stage.expression.registerVariableQuery(&self);
    EXPECT_EQ(stage.textOf("<$(x)>"), "<<>>");
}

TEST_F(ExpressionReentrancy, QueryParsesAnewOrDestroysTheExpression) {
    const std::string name(200, 'n');
    query.answer = "answer";
    make("before$(" + name + ")behind$(more)");
    query.react = [&] { owned->parse(Text("anew " + longText)); };
    EXPECT_STREQ(owned->evaluate(0), "before");
    EXPECT_STREQ(owned->evaluate(0), ("anew " + longText).c_str());
    make("before$(" + name + ")behind$(more)");
    query.react = [&] { owned.reset(); };
    EXPECT_STREQ(owned->evaluate(0), "before");
    EXPECT_EQ(query.asked, (std::vector<std::string>{name, name}));
}

TEST_F(ExpressionReentrancy, QueryRemovesItself) {
    query.answer = "answer";
    make("$(x)$(y)");
    query.react = [&] { owned->registerVariableQuery(nullptr); };
    EXPECT_STREQ(owned->evaluate(0), "answer");
}

TEST_F(ExpressionReentrancy, QueryCreatesAndDestroysFields) {
    make("$(b)$(a)$(b)");
    query.answer = "?";
    query.react = [&] {
        if (DataField* field = stage.a()) {
            stage.root.removeField(Text("a"), 0);
            delete field;
            ExpressionStage::add(stage.root, "b", "new");
        }
    };
    EXPECT_STREQ(owned->evaluate(0), "??new");
}

TEST_F(ExpressionReentrancy, HostCommandsEvaluateAndExecute) {
    const auto inside = [&] {
        other.parse(Text("x" + longText + "==0 INNER;0 INNER LONGER REQUEST " + longText));
        other.evaluate(0);
        other.evaluate_Kor_Cmds(Text("p==0 MORE;" + longText), Host::command);
        other.executeExtended(&stage.root, Host::command, 0);
    };
    int depth = 0;
    host.react = [&] {
        if (++depth <= 3)
            inside();
        --depth;
    };
    stage.parse("a==0 GET;0 REDRAW;near/host==0 LAST;");
    stage.expression.executeExtended(&stage.root, Host::command, 0);
    EXPECT_TRUE(host.requestsStay);
    EXPECT_EQ(a(), "5");
    EXPECT_EQ(*stage.host->getData(0), "5");
}

TEST_F(ExpressionReentrancy, HostCommandOverwritesTheTextItIsIn) {
    const std::string expected = "x=5;y=5;" + longText;
    stage.parse("x==0 A;y==0 B;" + longText);
    other.parse(Text("short"));
    host.react = [&] { other.evaluate(0); };
    EXPECT_EQ(stage.expression.evaluate_Kor_Cmds(stage.expression.evaluate(0), Host::command), expected);
    other.parse(Text(longText + longText + longText));
    EXPECT_EQ(stage.expression.evaluate_Kor_Cmds(stage.expression.evaluate(0), Host::command), expected);
}

TEST_F(ExpressionReentrancy, HostCommandDestroysTheExpression) {
    host.react = [&] { owned.reset(); };
    make("a==0 GET;near/host = ran").executeExtended(&stage.root, Host::command, 0);
    EXPECT_EQ(a() + *stage.host->getData(0), "5ran");
    make("0 REDRAW;near/host = too").executeExtended(&stage.root, Host::command, 0);
    EXPECT_EQ(*stage.host->getData(0), "too");
    make("p==0 GET;q");
    EXPECT_STREQ(owned->evaluate_Kor_Cmds(owned->evaluate(0), Host::command), "p=5;q");
}

TEST_F(ExpressionReentrancy, CommandDestroysTheExpression) {
    handler.react = [&] { owned.reset(); };
    make("a = 1;near/host = ran").execute(0);
    EXPECT_EQ(*stage.host->getData(0), "ran");
    make("a = 2;near/host = too;0 X").executeExtended(&stage.root, Host::command, 0);
    EXPECT_EQ(*stage.host->getData(0), "too");
    EXPECT_EQ(host.requests.size(), 1u);
}

TEST_F(ExpressionReentrancy, CommandsEndWhenTheRootIsDestroyed) {
    auto root = Tree<Orbel>(new Orbel(Text("dying")));
    DataExpression expression;
    expression.setHostField(root.get(), nullptr);
    host.react = [&] { root.reset(); };
    expression.parse(Text("0 FIRST;0 SECOND;a = 1;C a = b;L a = b"));
    expression.executeExtended(root.get(), Host::command, 0);
    EXPECT_EQ(host.requests, (std::vector<std::string>{"-1 FIRST"}));
    root = Tree<Orbel>(new Orbel(Text("dying")));
    expression.parse(Text("x==0 FIRST;0 SECOND"));
    expression.executeExtended(root.get(), Host::command, 0);
    EXPECT_EQ(host.requests, (std::vector<std::string>{"-1 FIRST", "0 FIRST"}));
    expression.execute(0);
}

TEST_F(ExpressionReentrancy, RefreshDestroysTheRoot) {
    auto root = Tree<Orbel>(new Orbel(Text("dying")));
    DataField* own = ExpressionStage::add(*root, "own", "x");
    Reacting destroys;
    own->registerHandler(&destroys);
    destroys.react = [&] { root.reset(); };
    DataExpression expression;
    expression.setHostField(root.get(), nullptr);
    expression.parse(Text("x$(REFRESH) $(own)y"));
    expression.execute(0);
    EXPECT_STREQ(expression.evaluate(0), "x y");
    expression.execute(0);
    expression.parse(Text("$(own)$(PARENT)"));
    EXPECT_STREQ(expression.evaluate(0), "");
}

TEST_F(ExpressionReentrancy, CommandsParseTheExpressionAnew) {
    handler.react = [&] { stage.parse("near/v = never"); };
    stage.parse("a = 1;near/host = ran");
    stage.expression.executeExtended(&stage.root, Host::command, 0);
    EXPECT_EQ(*stage.host->getData(0), "ran");
    EXPECT_EQ(*stage.v()->getData(0), "zero");
}

namespace {

/// A node whose lookups run a function first, as those of a client's own class may.
class Busy : public DataStructure {
public:
    using DataStructure::DataStructure;

    DataField* getField(char* path, int index, int flag) override {
        DataField* found = DataStructure::getField(path, index, flag);
        // The path is this node's to cut up.
        if (path)
            *path = '\0';
        if (const auto act = std::exchange(once, nullptr))
            act();
        return found;
    }

    std::function<void()> once;
};

} // namespace

TEST_F(ExpressionReentrancy, LookupsMayDoAnythingAndCutTheirPath) {
    auto* busy = new Busy(Text("busy"));
    stage.root.addField(busy, 0);
    DataValue* leaf = ExpressionStage::add(*busy, "leaf", "green");
    const auto prepare = [&](const char* text) {
        owned = std::make_unique<DataExpression>();
        owned->setHostField(&stage.root, leaf);
        owned->parse(Text(text));
    };
    prepare("$(a) $(leaf)");
    EXPECT_STREQ(owned->evaluate(0), "outer green");

    busy->once = [&] { owned->parse(Text("$(leaf) inside")); };
    owned->parse(Text("$(leaf) $(a) outside"));
    EXPECT_STREQ(owned->evaluate(0), "green inside");

    prepare("x$(missing)y");
    busy->once = [&] { owned->parse(Text("anew")); };
    EXPECT_STREQ(owned->evaluate(0), "x");
    EXPECT_STREQ(owned->evaluate(0), "anew");

    busy->once = [&] { owned.reset(); };
    prepare("");
    DataExpression* dying = owned.get();
    busy->once = [&] { owned.reset(); };
    dying->parse(Text("$(leaf)$(a)"));
    EXPECT_EQ(owned, nullptr);

    prepare("x$(late)y");
    busy->once = [&] { owned.reset(); };
    ExpressionStage::add(*busy, "late", "z");
    EXPECT_STREQ(owned->evaluate(0), "x");

    prepare("x$(REFRESH) $(leaf)y");
    busy->once = [&] { owned.reset(); };
    EXPECT_STREQ(owned->evaluate(0), "x");
    EXPECT_EQ(leaf->getRef(), 1);

    prepare("x$(missing)y");
    busy->once = [&] {
        busy->removeField(Text("leaf"), 0);
        delete leaf;
        busy->getField(Text("late"), 0, 0);
        stage.root.removeField(Text("busy"), 0);
    };
    EXPECT_STREQ(owned->evaluate(0), "xy");
    owned.reset();
    deleteSubtree(*busy);
    delete busy;
}

TEST_F(ExpressionReentrancy, ALookupThatEvaluatesTheExpressionHoldsItsFieldOnce) {
    auto* busy = new Busy(Text("busy"));
    stage.root.addField(busy, 0);
    DataValue* leaf = ExpressionStage::add(*busy, "leaf", "green");
    owned = std::make_unique<DataExpression>();
    owned->setHostField(&stage.root, leaf);
    owned->parse(Text("<$(late)>"));
    DataValue* late = ExpressionStage::add(*busy, "late", "found");
    EXPECT_EQ(late->getRefCalls(), 1);
    std::string inner;
    busy->once = [&] { inner = owned->evaluate(0); };
    EXPECT_STREQ(owned->evaluate(0), "<found>");
    EXPECT_EQ(inner, "<found>");
    EXPECT_EQ(late->getRefCalls(), 2);
    owned.reset();
    EXPECT_EQ(late->getRefCalls(), 1);
    EXPECT_EQ(late->getRef(), 1);
}
