#include <orbel/orbel.h>

#include <support/Expressions.h>
#include <support/RecordingHandler.h>
#include <support/SceneTree.h>

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

namespace {

std::string repeat(const std::string& text, int times) {
    std::string all;
    for (int done = 0; done < times; ++done)
        all += text;
    return all;
}

using Names = std::vector<std::string>;

} // namespace

static_assert(!std::is_copy_constructible_v<DataExpression> && !std::is_copy_assignable_v<DataExpression>);
static_assert(!std::is_copy_constructible_v<DataExpSegment> && !std::is_copy_assignable_v<DataExpSegment>);

TEST(DataExpression, IsEmptyUntilParsed) {
    DataExpression expression;
    EXPECT_STREQ(expression.evaluate(0), "");
    expression.execute(0);
    expression.executeExtended(nullptr, nullptr, 0);
}

TEST(DataExpression, TextWithoutReferencesIsKeptButForLeadingBlanks) {
    ExpressionStage stage;
    EXPECT_EQ(stage.textOf(""), "");
    EXPECT_EQ(stage.textOf(" \t\r\n "), "");
    EXPECT_EQ(stage.textOf(" \t\r\nplain  text \n"), "plain  text \n");
    EXPECT_EQ(stage.textOf("$ ( $a ) $) $"), "$ ( $a ) $) $");
    stage.parse("before");
    stage.expression.parse(nullptr);
    EXPECT_EQ(stage.evaluate(), "");
}

TEST(DataExpression, BlanksBetweenPiecesStay) {
    ExpressionStage stage;
    EXPECT_EQ(stage.textOf("  $(a)  $(a)  "), "outer  outer  ");
}

TEST(DataExpression, ParsingDoesNotChangeTheText) {
    ExpressionStage stage;
    std::string text = " A$( a )B$(v[1])$(REFRESH) $(a)$(";
    const std::string before = text;
    stage.expression.parse(text.data());
    EXPECT_EQ(text, before);
    EXPECT_EQ(stage.evaluate(), "AouterBone outer$(");
}

TEST(DataExpression, UnknownNameGivesNoText) {
    ExpressionStage stage;
    EXPECT_EQ(stage.textOf("A$(x)B"), "AB");
    EXPECT_EQ(stage.textOf("A$()B$(  )C"), "ABC");
    EXPECT_EQ(stage.textOf("A$(near/)B$(near/missing)C$(*/v)D"), "ABCD");
}

TEST(DataExpression, UnclosedReferenceIsLiteral) {
    ExpressionStage stage;
    EXPECT_EQ(stage.textOf("$(x"), "$(x");
    EXPECT_EQ(stage.textOf("$(a) and $(a and $(INDEX "), "outer and $(a and $(INDEX ");
    EXPECT_EQ(stage.textOf("$("), "$(");
}

TEST(DataExpression, ReferenceRunsToTheFirstClosingBracket) {
    ExpressionStage stage;
    EXPECT_EQ(stage.textOf("$(x$(a))"), ")");
    EXPECT_EQ(stage.textOf("$(a))"), "outer)");
}

TEST(DataExpression, BlanksInsideTheBracketsEndTheName) {
    ExpressionStage stage;
    EXPECT_EQ(stage.textOf("$( a )"), "outer");
    EXPECT_EQ(stage.textOf("$(\t\r\n a\nrest of it)"), "outer");
    EXPECT_EQ(stage.textOf("$(a\trest)$(a\rrest)$(a rest)"), "outerouterouter");
}

TEST(DataExpression, NameIsFoundInTheNearestEnclosingNode) {
    ExpressionStage stage;
    EXPECT_EQ(stage.textOf("$(a)"), "outer");
    ExpressionStage::add(*stage.near, "a", "inner");
    EXPECT_EQ(stage.evaluate(), "outer");
    EXPECT_EQ(stage.textOf("$(a)"), "inner");
    EXPECT_EQ(stage.textOf("$(../a) $(far/b) $(near/host) $(b)"), "outer beyond hosted ");
}

TEST(DataExpression, NamesClimbThroughArraysAndTables) {
    SceneTree tree;
    tree.title->setData("T");
    ExpressionStage::add(tree.root, "top", "above");
    tree.xOfPoint(1)->setData("x1");
    DataExpression expression;
    expression.setHostField(&tree.root, tree.xOfPoint(1));
    expression.parse(Text("$(x) $(scene/title) $(top)"));
    EXPECT_STREQ(expression.evaluate(0), "x1 T above");
    expression.setHostField(&tree.root, tree.xOf(tree.city("Oslo")));
    expression.parse(Text("$(PARENT_NAME) $(top)"));
    EXPECT_STREQ(expression.evaluate(0), "Item-#0 above");
}

TEST(DataExpression, RootIsTheContextWithoutAHostField) {
    ExpressionStage stage;
    DataExpression expression;
    expression.setHostField(&stage.root, nullptr);
    expression.parse(Text("$(a)|$(near/v[2])|$(PARENT_NAME)|$(PARENT_FULL_NAME)|$(PARENT)|$(FIELD_NAME)|"
                          "$(FIELD_FULL_NAME)|$(FIELD_DATA)|"));
    EXPECT_STREQ(expression.evaluate(0), "outer|two|show||||||");
}

TEST(DataExpression, RootIsTheContextOfAHostFieldWithoutParent) {
    ExpressionStage stage;
    DataValue loose{Text("loose")};
    DataExpression expression;
    expression.setHostField(&stage.root, &loose);
    expression.parse(Text("$(a) $(PARENT_NAME) $(FIELD_NAME) $(FIELD_FULL_NAME) $(FIELD_DATA)"));
    EXPECT_STREQ(expression.evaluate(0), "outer show loose  ");
}

TEST(DataExpression, NothingIsFoundWithoutAContext) {
    RecordingQuery query;
    query.answer = "?";
    DataExpression expression;
    expression.parse(Text("1$(a)2$(PARENT)3$(PARENT_NAME)4$(PARENT_FULL_NAME)5$(FIELD_NAME)6$(FIELD_FULL_NAME)7"
                          "$(FIELD_DATA)8$(REFRESH) $(a)"));
    EXPECT_STREQ(expression.evaluate(0), "12345678 ");
    expression.registerVariableQuery(&query);
    EXPECT_STREQ(expression.evaluate(0), "1?2?345678? ?");
    EXPECT_EQ(query.asked, (Names{"a", "", "a", "a"}));
}

TEST(DataExpression, FieldCreatedLaterIsFoundByTheNextEvaluation) {
    ExpressionStage stage;
    stage.parse("<$(late)>");
    EXPECT_EQ(stage.evaluate(), "<>");
    ExpressionStage::add(stage.root, "late", "now");
    EXPECT_EQ(stage.evaluate(), "<now>");
    ExpressionStage::add(*stage.near, "late", "nearer");
    EXPECT_EQ(stage.evaluate(), "<now>");
    stage.parse("<$(late)>");
    EXPECT_EQ(stage.evaluate(), "<nearer>");
}

TEST(DataExpression, KindInANameCreatesTheField) {
    ExpressionStage stage;
    EXPECT_EQ(stage.textOf("<$(string:made)>"), "< >");
    DataField* made = stage.near->getField(Text("made"), 0, 0);
    ASSERT_NE(made, nullptr);
    made->setData("filled");
    EXPECT_EQ(stage.evaluate(), "<filled>");
}

TEST(DataExpression, NamesBeyondTheLongestPathAreUnknown) {
    ExpressionStage stage;
    RecordingQuery query;
    query.answer = "long";
    stage.expression.registerVariableQuery(&query);
    for (const std::size_t length : {511u, 512u, 1'000'000u}) {
        query.asked.clear();
        const std::string name(length, 'n');
        EXPECT_EQ(stage.textOf("$(" + name + ")"), "long");
        EXPECT_EQ(query.asked, (Names{name}));
    }
    // Any name that begins with two dots stands for the parent.
    const std::string longest = repeat("near/../", 63) + "a";
    const std::string dots(511 - longest.size(), '.');
    EXPECT_EQ(stage.textOf("$(near/.." + dots + longest.substr(7) + ")"), "outer");
    EXPECT_EQ(stage.textOf("$(near/..." + dots + longest.substr(7) + ")"), "long");
}

TEST(DataExpression, ValuesAreReadAtEachEvaluation) {
    ExpressionStage stage;
    stage.parse("$(a)");
    EXPECT_EQ(stage.evaluate(), "outer");
    stage.a()->setData("changed");
    EXPECT_EQ(stage.evaluate(), "changed");
    stage.a()->setData("");
    EXPECT_EQ(stage.evaluate(), "");
}

TEST(DataExpression, IndexSelectsAmongSeveralValues) {
    ExpressionStage stage;
    stage.parse("$(v)");
    EXPECT_EQ(stage.evaluate(0), "zero");
    EXPECT_EQ(stage.evaluate(1), "one");
    EXPECT_EQ(stage.evaluate(2), "two");
    EXPECT_EQ(stage.evaluate(3), "");
    EXPECT_EQ(stage.evaluate(-1), "");
    EXPECT_EQ(stage.evaluate(std::numeric_limits<int>::min()), "");
}

TEST(DataExpression, WrittenIndexWinsOverTheIndexOfTheEvaluation) {
    ExpressionStage stage;
    const std::pair<const char*, const char*> rows[] = {
        {"$(v[0])", "zero"},   {"$(v[1])", "one"},        {"$(v[2])", "two"},    {"$(v[3])", ""},
        {"$(v[0-2])", "zero"}, {"$(v[1-0])", "one"},      {"$(v[1,0])", "one"},  {"$(v[1-2,0])", "one"},
        {"$(v[01])", "one"},   {"$(v[1x])", "one"},       {"$(v[1-x])", "one"},  {"$(v[1-])", "one"},
        {"$(v[1)", "one"},     {"$(v[1]/more)", "one"},   {"$(v[1][0])", "one"}, {"$( v[1] )", "one"},
        {"$(v[1]0)", "one"},   {"$(v[99999999999])", ""},
    };
    for (const auto& [text, value] : rows)
        EXPECT_EQ(stage.textOf(text, 2), value) << text;
}

TEST(DataExpression, IndexThatIsNoNumberFallsBackToTheIndexOfTheEvaluation) {
    ExpressionStage stage;
    for (const char* text : {"$(v[x])", "$(v[-1])", "$(v[])", "$(v[)", "$(v[+1])", "$(v[,1])", "$(v[ 1])", "$(v[x-1])"})
        EXPECT_EQ(stage.textOf(text, 2), "two") << text;
}

TEST(DataExpression, SingleValueIsGivenForEveryIndex) {
    ExpressionStage stage;
    EXPECT_EQ(stage.textOf("$(a) $(a[5]) $(a[0-2]) $(a[x])", 7), "outer outer outer outer");
    EXPECT_EQ(stage.textOf("$(a)", -3), "outer");
}

TEST(DataExpression, FieldsWithoutTextsGiveNothing) {
    SceneTree tree;
    auto* plain = new DataField(Text("plain"));
    tree.root.addField(plain, 0);
    auto* empty = new DataArray(Text("empty"));
    tree.root.addField(empty, 0);
    RecordingQuery query;
    DataExpression expression;
    expression.setHostField(&tree.root, nullptr);
    expression.registerVariableQuery(&query);
    expression.parse(Text("<$(plain)$(empty)$(empty[0])$(scene)$(points)$(points[1])$(cities)>"));
    EXPECT_STREQ(expression.evaluate(0), "<>");
    EXPECT_EQ(query.asked, (Names{"plain", "empty", "empty", "scene", "points", "points", "cities"}));
}

TEST(DataExpression, PathBehindAnIndexIsNotFollowed) {
    SceneTree tree;
    tree.xOfPoint(1)->setData("x1");
    RecordingQuery query;
    DataExpression expression;
    expression.setHostField(&tree.root, nullptr);
    expression.registerVariableQuery(&query);
    expression.parse(Text("$(points[1]/x)"));
    EXPECT_STREQ(expression.evaluate(0), "");
    EXPECT_EQ(query.asked, (Names{"points"}));
}

TEST(DataExpression, IndexMacroPrintsTheIndex) {
    ExpressionStage stage;
    stage.parse("$(INDEX)");
    EXPECT_EQ(stage.evaluate(7), "7");
    EXPECT_EQ(stage.evaluate(0), "0");
    EXPECT_EQ(stage.evaluate(-12), "-12");
    EXPECT_EQ(stage.evaluate(std::numeric_limits<int>::min()), "-2147483648");
    EXPECT_EQ(stage.evaluate(std::numeric_limits<int>::max()), "2147483647");
    EXPECT_EQ(stage.textOf("$( INDEX )$(INDEX of it)x$(INDEX)", 3), "33x3");
}

TEST(DataExpression, OtherSpellingsOfIndexAreNames) {
    ExpressionStage stage;
    EXPECT_EQ(stage.textOf("$(index)$(INDEX[1])$(INDEXES)", 3), "");
    ExpressionStage::add(stage.root, "INDEX", "field");
    EXPECT_EQ(stage.textOf("$(INDEX) $(INDEX[0])", 3), "3 field");
}

TEST(DataExpression, MacrosNameTheHostFieldAndItsParent) {
    ExpressionStage stage;
    auto* deep = new DataStructure(Text("deep"));
    stage.near->addField(deep, 0);
    DataValue* leaf = ExpressionStage::add(*deep, "leaf", "green");
    stage.expression.setHostField(&stage.root, leaf);
    EXPECT_EQ(stage.textOf("$(PARENT)"), "near/deep");
    EXPECT_EQ(stage.textOf("$(PARENT_NAME)"), "deep");
    EXPECT_EQ(stage.textOf("$(PARENT_FULL_NAME)"), "near/deep");
    EXPECT_EQ(stage.textOf("$(FIELD_NAME)"), "leaf");
    EXPECT_EQ(stage.textOf("$(FIELD_FULL_NAME)"), "near/deep/leaf");
    EXPECT_EQ(stage.textOf("$(FIELD_DATA)"), "green");
    EXPECT_EQ(stage.textOf("a $(PARENT)/$(FIELD_NAME)=$(FIELD_DATA);"), "a near/deep/leaf=green;");
}

TEST(DataExpression, MacrosAreComparedExactly) {
    ExpressionStage stage;
    RecordingQuery query;
    stage.expression.registerVariableQuery(&query);
    EXPECT_EQ(stage.textOf("$( PARENT)$(parent)$(PARENT )$(FIELD_NAMES)$(FIELD_NAME[0])$(Refresh) $(a)"), " outer");
    EXPECT_EQ(query.asked, (Names{"PARENT", "parent", "PARENT", "FIELD_NAMES", "FIELD_NAME", "Refresh"}));
}

TEST(DataExpression, NamesStayAsParsedWhileTheParentPathFollows) {
    ExpressionStage stage;
    DataField* b = stage.far->getField(Text("b"), 0, 0);
    stage.parse("$(PARENT)|$(PARENT_NAME)|$(PARENT_FULL_NAME)|$(FIELD_NAME)|$(FIELD_FULL_NAME)|$(FIELD_DATA)");
    EXPECT_EQ(stage.evaluate(), "near|near|near|host|near/host|hosted");
    stage.expression.setHostField(&stage.root, b);
    EXPECT_EQ(stage.evaluate(), "far|near|near|host|near/host|hosted");
    stage.near->setName(Text("renamed"));
    stage.far->setName(Text("moved"));
    EXPECT_EQ(stage.evaluate(), "moved|near|near|host|near/host|hosted");
    stage.far->setName(Text("far"));
    stage.near->setName(Text("near"));
}

TEST(DataExpression, UnresolvedNamesAreLookedUpFromTheNewParent) {
    ExpressionStage stage;
    stage.parse("$(b)");
    EXPECT_EQ(stage.evaluate(), "");
    stage.expression.setHostField(&stage.root, stage.far->getField(Text("b"), 0, 0));
    EXPECT_EQ(stage.evaluate(), "beyond");
    stage.expression.setHostField(&stage.root, stage.host);
    EXPECT_EQ(stage.evaluate(), "beyond");
}

TEST(DataExpression, NullHostFieldLeavesTheContext) {
    ExpressionStage stage;
    Orbel other{Text("other")};
    const SubtreeCleanup belowOther{other};
    ExpressionStage::add(other, "a", "elsewhere");
    stage.parse("$(PARENT) $(a)");
    stage.expression.setHostField(&other, nullptr);
    EXPECT_EQ(stage.evaluate(), "near outer");
    EXPECT_EQ(stage.textOf("$(PARENT) $(a) $(FIELD_NAME)"), "near outer ");
    stage.parse("a = moved");
    stage.expression.execute(0);
    EXPECT_STREQ(other.getField(Text("a"), 0, 0)->getData(0)->c_str(), "moved");
}

TEST(DataExpression, HostFieldWithoutParentTakesTheContextAway) {
    ExpressionStage stage;
    stage.parse("<$(PARENT)$(b)>");
    DataValue loose{Text("loose")};
    stage.expression.setHostField(&stage.root, &loose);
    EXPECT_EQ(stage.evaluate(), "<>");
    EXPECT_EQ(stage.textOf("<$(PARENT_NAME)>"), "<show>");
}

TEST(DataExpression, FieldDataReadsTheHostFieldLikeAReference) {
    ExpressionStage stage;
    stage.expression.setHostField(&stage.root, stage.v());
    EXPECT_EQ(stage.textOf("$(FIELD_DATA)", 1), "one");
    stage.v()->setData("uno", 1);
    EXPECT_EQ(stage.evaluate(1), "uno");
}

TEST(DataExpression, FieldDataReadsTheNameOfTheHostFieldAsAReference) {
    ExpressionStage stage;
    for (const auto& [name, text] : std::vector<std::pair<const char*, const char*>>{
             {"v[2]", "two"}, {"INDEX", "1"}, {"a b", "outer"}, {"a)b", "outer"}, {" a", "outer"}, {")", ""}}) {
        stage.expression.setHostField(&stage.root, ExpressionStage::add(*stage.near, name, "own"));
        EXPECT_EQ(stage.textOf("$(FIELD_DATA)", 1), text) << name;
    }
}

TEST(DataExpression, RefreshFiresTheHandlersOfTheField) {
    ExpressionStage stage;
    Diary diary;
    RecordingHandler handler(diary, "A");
    stage.a()->registerHandler(&handler);
    diary.take();
    stage.parse("$(REFRESH) $(a)");
    EXPECT_EQ(diary.take(), "");
    EXPECT_EQ(stage.evaluate(), " outer");
    EXPECT_EQ(diary.take(), "A changed");
    EXPECT_EQ(stage.evaluate(), " outer");
    EXPECT_EQ(diary.take(), "A changed");
}

TEST(DataExpression, RefreshOfSeveralValuesTellsTheRange) {
    ExpressionStage stage;
    Diary diary;
    RecordingHandler handler(diary, "V");
    stage.v()->registerHandler(&handler);
    diary.take();
    EXPECT_EQ(stage.textOf("$(REFRESH) $(v[1])"), " one");
    EXPECT_EQ(diary.take(), "V changed 0-2");
    stage.a()->setSize(2);
    stage.a()->registerHandler(&handler);
    diary.take();
    EXPECT_EQ(stage.textOf("$(REFRESH) $(a)"), " outer");
    EXPECT_EQ(diary.take(), "V changed 0-1");
}

TEST(DataExpression, RefreshOfAnEmptyArrayAndOfANode) {
    SceneTree tree;
    auto* empty = new DataArray(Text("empty"));
    tree.root.addField(empty, 0);
    Diary diary;
    RecordingHandler e(diary, "E");
    RecordingHandler s(diary, "S");
    RecordingHandler p(diary, "P");
    empty->registerHandler(&e);
    tree.scene->registerHandler(&s);
    tree.points->registerHandler(&p);
    for (DataField* field : std::vector<DataField*>{empty, tree.scene, tree.points})
        field->setDataInitialized(1);
    diary.take();
    DataExpression expression;
    expression.setHostField(&tree.root, nullptr);
    expression.parse(Text("$(REFRESH) $(empty)$(REFRESH) $(scene)$(REFRESH) $(points)"));
    EXPECT_STREQ(expression.evaluate(0), "   ");
    EXPECT_EQ(diary.take(), "E changed, S changed, P changed 0-2");
}

TEST(DataExpression, RefreshTellsNothingBeforeTheFirstStore) {
    ExpressionStage stage;
    Diary diary;
    RecordingHandler handler(diary, "N");
    auto* fresh = new DataValue(Text("fresh"));
    stage.root.addField(fresh, 0);
    fresh->registerHandler(&handler);
    EXPECT_EQ(stage.textOf("<$(REFRESH) $(fresh)>"), "<  >");
    EXPECT_EQ(diary.take(), "");
}

TEST(DataExpression, RefreshTakesTheSecondWord) {
    ExpressionStage stage;
    ExpressionStage::add(stage.root, "b", "B");
    ExpressionStage::add(stage.root, "a.b", "dotted");
    Diary diary;
    RecordingHandler a(diary, "A");
    RecordingHandler b(diary, "B");
    RecordingHandler dotted(diary, "D");
    stage.a()->registerHandler(&a);
    stage.root.getField(Text("b"), 0, 0)->registerHandler(&b);
    stage.root.getField(Text("a.b"), 0, 0)->registerHandler(&dotted);
    diary.take();
    const struct {
        const char* text;
        const char* value;
        const char* heard;
    } rows[] = {
        {"$(REFRESH) $(a.b)", " dotted", "D"},
        {"$(REFRESH)", "", ""},
        {"$(REFRESH) ", " ", ""},
        {"$(REFRESH) \t\n", " \t\n", ""},
        {"$(REFRESH)$(a)", "outer", ""},
        {"$(REFRESH)$(a) $(b)", "outer B", "B"},
        {"$(REFRESH)x $(b)", "x B", "B"},
        {"$(REFRESH)\t\n\v\f\r $(b)", "\t\n\v\f\r B", "B"},
        {"$(REFRESH) $(a)$(b)", " outerB", "A"},
        {"$(REFRESH) $(a[7])", " outer", "A"},
        {"$(REFRESH) $( a )", " outer", ""},
        {"$(REFRESH) $(a", " $(a", "A"},
        {"$(REFRESH) ??a", " ??a", "A"},
        {"$(REFRESH) word", " word", ""},
        {"$(REFRESH) x", " x", ""},
        {"$(REFRESH) $(missing)", " ", ""},
        {"$(REFRESH) $(REFRESH) $(a)", "  outer", "A"},
        {"$(a) $(REFRESH) $(a) $(REFRESH) $(b)", "outer  outer  B", "AB"},
        {"$(REFRESH)$(REFRESH) $(a)", " outer", "AA"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(stage.textOf(row.text), row.value) << row.text;
        EXPECT_EQ(diary.takeNames(), row.heard) << row.text;
    }
}

TEST(DataExpression, RefreshOfTheIndexIsTheIndex) {
    ExpressionStage stage;
    EXPECT_EQ(stage.textOf("<$(REFRESH) $(INDEX)>", 4), "<4 4>");
}

TEST(DataExpression, RefreshLooksItsFieldUpEachTime) {
    ExpressionStage stage;
    Diary diary;
    RecordingHandler outer(diary, "O");
    RecordingHandler inner(diary, "I");
    stage.a()->registerHandler(&outer);
    stage.parse("$(REFRESH) $(a)");
    DataValue* nearer = ExpressionStage::add(*stage.near, "a", "inner");
    nearer->registerHandler(&inner);
    diary.take();
    EXPECT_EQ(stage.evaluate(), " outer");
    EXPECT_EQ(diary.takeNames(), "I");
}

TEST(DataExpression, QueryIsAskedForWhatTheTreeDoesNotHold) {
    ExpressionStage stage;
    RecordingQuery query;
    query.answer = "!";
    stage.expression.registerVariableQuery(&query);
    EXPECT_EQ(stage.textOf("$(a)$(x[3])$( y )$(v)$(INDEX)$(REFRESH) $(a)", 9), "outer!!!9! outer");
    EXPECT_EQ(query.asked, (Names{"x", "y", "v", "a"}));
    query.answer = nullptr;
    query.asked.clear();
    EXPECT_EQ(stage.evaluate(), "outerzero0 outer");
    EXPECT_EQ(query.asked, (Names{"x", "y", "a"}));
    stage.expression.registerVariableQuery(nullptr);
    EXPECT_EQ(stage.evaluate(), "outerzero0 outer");
    EXPECT_EQ(query.asked.size(), 3u);
}

TEST(DataExpression, QueryIsAskedForTheBareName) {
    ExpressionStage stage;
    RecordingQuery query;
    query.answer = "!";
    stage.expression.registerVariableQuery(&query);
    EXPECT_EQ(stage.textOf("$()$([2])$( x y)$(p/q[1-2])$(REFRESH) $(z[0])"), "!!!!! !");
    EXPECT_EQ(query.asked, (Names{"", "", "x", "p/q", "z", "z"}));
}

TEST(DataExpression, QueryIsNotAskedWhereThereIsAnEmptyText) {
    ExpressionStage stage;
    RecordingQuery query;
    query.answer = "!";
    stage.expression.registerVariableQuery(&query);
    stage.a()->setData("");
    EXPECT_EQ(stage.textOf("<$(a)>"), "<>");
    EXPECT_EQ(stage.textOf(""), "");
    EXPECT_TRUE(query.asked.empty());
}

TEST(DataExpression, QueryMayAnswerWithTheName) {
    class Echo : public DataVariableQuery {
    public:
        const char* queryVariable(const char* name) override { return name; }
    } echo;
    DataExpression expression;
    expression.registerVariableQuery(&echo);
    expression.parse(Text("<$(a name)$(an/unusually/long/name/of/a/variable)>"));
    EXPECT_STREQ(expression.evaluate(0), "<aan/unusually/long/name/of/a/variable>");
}

TEST(DataExpression, HoldsOneReferenceForEachMention) {
    ExpressionStage stage;
    DataField* a = stage.a();
    EXPECT_EQ(a->getRef(), 1);
    {
        DataExpression expression;
        expression.setHostField(&stage.root, nullptr);
        expression.parse(Text("$(a)$(a[2])"));
        EXPECT_EQ(a->getRef(), 3);
        expression.evaluate(0);
        EXPECT_EQ(a->getRef(), 3);
        expression.parse(Text("$(REFRESH) $(a)"));
        EXPECT_EQ(a->getRef(), 3);
        expression.parse(Text("$(a)"));
        EXPECT_EQ(a->getRef(), 2);
        expression.parse(Text("none"));
        EXPECT_EQ(a->getRef(), 1);
        EXPECT_EQ(a->getRefCalls(), 1);
        expression.parse(Text("$(later)"));
        DataValue* later = ExpressionStage::add(stage.root, "later", "");
        EXPECT_EQ(later->getRef(), 1);
        expression.evaluate(0);
        EXPECT_EQ(later->getRef(), 2);
        expression.parse(Text("$(a)"));
        EXPECT_EQ(later->getRef(), 1);
        EXPECT_EQ(a->getRef(), 2);
    }
    EXPECT_EQ(a->getRef(), 1);
    EXPECT_EQ(a->getRefCalls(), 1);
}

TEST(DataExpression, KeepsTheFirstHundredSegments) {
    ExpressionStage stage;
    EXPECT_EQ(stage.textOf(repeat("$(a)", 99)), repeat("outer", 99));
    EXPECT_EQ(stage.textOf(repeat("$(a)", 100)), repeat("outer", 100));
    EXPECT_EQ(stage.textOf(repeat("$(a)", 101)), repeat("outer", 100));
    EXPECT_EQ(stage.textOf(repeat("$(a)", 99) + "end"), repeat("outer", 99) + "end");
    EXPECT_EQ(stage.textOf(repeat("$(a)", 100) + "end"), repeat("outer", 100));
    EXPECT_EQ(stage.textOf(repeat("x$(a)", 51)), repeat("xouter", 50));
    EXPECT_EQ(stage.textOf(repeat("$(a)", 100) + "$(string:made)"), repeat("outer", 100));
    EXPECT_EQ(stage.root.getField(Text("made"), 0, 0), nullptr);
    EXPECT_EQ(stage.textOf("short"), "short");
}

TEST(DataExpression, MacrosWithoutSegmentDoNotCount) {
    DataExpression expression;
    expression.parse(Text(repeat("$(FIELD_NAME)$(PARENT_NAME)$(REFRESH)", 200) + "end"));
    EXPECT_STREQ(expression.evaluate(0), "end");
}

TEST(DataExpression, LongTextsTakeLinearTime) {
    ExpressionStage stage;
    const std::string megabyte(1'000'000, 'x');
    EXPECT_EQ(stage.textOf(megabyte), megabyte);
    EXPECT_EQ(stage.textOf("$(" + megabyte), "$(" + megabyte);
    EXPECT_EQ(stage.textOf(repeat("$(", 100'000)), repeat("$(", 100'000));
    EXPECT_EQ(stage.textOf(repeat("$(", 100'000) + ")"), "");
    EXPECT_EQ(stage.textOf(repeat("$()", 100'000)), "");
    const std::string refreshes = repeat("$(REFRESH)", 100'000);
    EXPECT_EQ(stage.textOf(refreshes), "");
    EXPECT_EQ(stage.textOf(refreshes + std::string(1'000'000, ' ')), std::string(1'000'000, ' '));
    EXPECT_EQ(stage.textOf(refreshes + std::string(1'000'000, ' ') + "x"), "");
    DataExpression expression;
    expression.parse(Text(repeat("$(FIELD_NAME)", 100'000)));
    EXPECT_STREQ(expression.evaluate(0), "");
}

TEST(DataExpression, ResultsOfTwoExpressionsShareOneBuffer) {
    ExpressionStage stage;
    stage.parse("a text longer than the next");
    const char* first = stage.expression.evaluate(0);
    DataExpression other;
    other.parse(Text("next"));
    EXPECT_EQ(other.evaluate(0), first);
    EXPECT_STREQ(first, "next");
}

TEST(DataExpression, OwnResultCanBeParsed) {
    ExpressionStage stage;
    stage.a()->setData("$(v[1])");
    stage.parse("<$(a)>");
    stage.expression.parse(stage.expression.evaluate(0));
    EXPECT_EQ(stage.evaluate(), "<one>");
}
