#include <orbel/orbel.h>

#include <support/RecordingHandler.h>
#include <support/Text.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace {

/// The root holds two structures, "a" and "b". A, B and C observe a/x, which has three values and follows `source`;
/// S observes the source, Y observes a/y, Z observes b/x.
class Stage {
public:
    Stage() {
        root.addField(m_parent, 0);
        root.addField(m_other, 0);
        m_parent->addField(m_field, 0);
        m_parent->addField(m_neighbour, 0);
        m_other->addField(m_cousin, 0);
        m_field->setSize(3);
        source.setSize(3);
        source.setData("s");
        source.addTargetLink(m_field);
        for (const char* name : {"A", "B", "C"})
            handlers.push_back(std::make_unique<RecordingHandler>(diary, name));
        m_field->registerHandler(handlers[0].get());
        m_field->registerHandler(handlers[1].get());
        source.registerHandler(&m_sourceHandler);
        m_neighbour->registerHandler(&m_neighbourHandler);
        m_cousin->registerHandler(&m_cousinHandler);
        diary.take();
    }
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    ~Stage() {
        root.removeChildren();
        delete m_parent;
        delete m_other;
        delete m_field;
        delete m_neighbour;
        delete m_cousin;
    }

    DataValue& x() { return *m_field; }
    DataStructure& parent() { return *m_parent; }

    /// Completes A, B, C without a notice.
    void joinC() { m_field->registerHandler(handlers[2].get()); }

    void deleteField() {
        m_parent->removeField(m_field->getName(), 0);
        delete std::exchange(m_field, nullptr);
    }

    void deleteParent() {
        root.removeField(m_parent->getName(), 0);
        delete std::exchange(m_parent, nullptr);
    }

    Diary diary;
    Orbel root{Text("show")};
    DataValue source{Text("source")};
    std::vector<std::unique_ptr<RecordingHandler>> handlers;
    RecordingHandler further{diary, "D"};

private:
    DataStructure* m_parent = new DataStructure(Text("a"));
    DataStructure* m_other = new DataStructure(Text("b"));
    DataValue* m_field = new DataValue(Text("x"));
    DataValue* m_neighbour = new DataValue(Text("y"));
    DataValue* m_cousin = new DataValue(Text("x"));
    RecordingHandler m_sourceHandler{diary, "S"};
    RecordingHandler m_neighbourHandler{diary, "Y"};
    RecordingHandler m_cousinHandler{diary, "Z"};
};

/// A way to make a/x notify: in so many passes over its handlers, after which `then` hear.
struct Way {
    const char* name;
    std::function<void(Stage&)> go;
    int passes = 1;
    std::string then = "";
    std::string thenWithoutParent = then;
    bool joining = false;
};

void setThree(Stage& stage) {
    std::string texts[] = {"1", "2", "3"};
    std::vector<char*> values = {texts[0].data(), texts[1].data(), texts[2].data()};
    stage.x().setData(&values, 0, 2);
}

const Way ways[] = {
    {"SingleSet", [](Stage& stage) { stage.x().setData("1"); }},
    {"IndexedSet", [](Stage& stage) { stage.x().setData("1", 2); }},
    {"RangedSet", setThree},
    {"TypeChange", [](Stage& stage) { stage.x().fireOnTypeChange(Text("City")); }},
    {"Joining", [](Stage& stage) { stage.joinC(); }, 1, "", "", true},
    {"LinkPropagation", [](Stage& stage) { stage.source.setData("1"); }, 1, "S", "S"},
    {"Clear", [](Stage& stage) { stage.x().clearData(); }, 3},
    {"StructureClear", [](Stage& stage) { stage.parent().clearData(); }, 3, "Y", ""},
    {"Copy", [](Stage& stage) { stage.x().copyData(&stage.source, 0, 0, -1); }},
    {"Parse", [](Stage& stage) { stage.x().parse(Text("0,1-2"), Text("1,2,3")); }, 2},
    {"SetByPath", [](Stage& stage) { stage.root.setFieldData(Text("a/x"), Text("1")); }},
    {"Broadcast", [](Stage& stage) { stage.root.executeCommand(Text("*/x = 1"), 0); }, 1, "Z", "Z"},
};

/// What B does when it hears for the first time; who then hears in that pass, and in each later one.
struct Disturbance {
    const char* name;
    std::function<void(Stage&)> act;
    std::string firstPass;
    std::string laterPass;
    int handlersLeft;
};

void nothingAtAll(Stage& /*stage*/) {}

void unregister(Stage& stage, std::size_t handler) {
    stage.x().unregisterHandler(stage.handlers[handler].get());
}

void destroy(Stage& stage, std::size_t handler) {
    stage.handlers[handler].reset();
}

constexpr int fieldGone = -1;

const Disturbance disturbances[] = {
    {"Nothing", nothingAtAll, "ABC", "ABC", 3},
    {"UnregisterSelf", [](Stage& stage) { unregister(stage, 1); }, "AB", "AC", 2},
    {"UnregisterEarlier", [](Stage& stage) { unregister(stage, 0); }, "AB", "BC", 2},
    {"UnregisterLater", [](Stage& stage) { unregister(stage, 2); }, "AB", "AB", 2},
    {"DestroySelf", [](Stage& stage) { destroy(stage, 1); }, "AB", "AC", 2},
    {"DestroyEarlier", [](Stage& stage) { destroy(stage, 0); }, "AB", "BC", 2},
    {"DestroyLater", [](Stage& stage) { destroy(stage, 2); }, "AB", "AB", 2},
    {"UnregisterAll", [](Stage& stage) { stage.x().unregisterAllHandlers(); }, "AB", "", 0},
    {"DeleteField", [](Stage& stage) { stage.deleteField(); }, "AB", "", fieldGone},
    {"DeleteParent", [](Stage& stage) { stage.deleteParent(); }, "ABC", "ABC", 3},
    {"ClearLinks", [](Stage& stage) { stage.x().ClearLinks(); }, "ABC", "ABC", 3},
    // AB, then the pass inside the pass, then the rest: B's own set and the notice of D's joining are heard by all,
    // inside the pass they interrupt.
    {"SetAgain", [](Stage& stage) { stage.x().setData("again"); }, "ABABCC", "ABC", 3},
    {"RegisterOneMore", [](Stage& stage) { stage.x().registerHandler(&stage.further); }, "ABABCDCD", "ABCD", 4},
};

void PrintTo(const Way& way, std::ostream* os) {
    *os << way.name;
}

void PrintTo(const Disturbance& disturbance, std::ostream* os) {
    *os << disturbance.name;
}

class ReentrancyMatrix : public testing::TestWithParam<std::tuple<Way, Disturbance>> {};

TEST_P(ReentrancyMatrix, ThoseLeftHear) {
    const auto& [way, disturbance] = GetParam();
    Stage stage;
    if (!way.joining)
        stage.joinC();
    stage.x().setDataInitialized(1);
    stage.handlers[1]->onceThen([&, act = disturbance.act] { act(stage); });

    way.go(stage);

    const bool parentGone = stage.root.getField(Text("a"), 0, 1) == nullptr;
    std::string expected = disturbance.firstPass;
    for (int pass = 1; pass < way.passes; ++pass)
        expected += disturbance.laterPass;
    expected += parentGone ? way.thenWithoutParent : way.then;
    EXPECT_EQ(stage.diary.takeNames(), expected);
    if (disturbance.handlersLeft != fieldGone) {
        EXPECT_EQ(stage.x().getNumHandlers(), disturbance.handlersLeft);
    }
}

INSTANTIATE_TEST_SUITE_P(, ReentrancyMatrix, testing::Combine(testing::ValuesIn(ways), testing::ValuesIn(disturbances)),
                         [](const auto& test) {
                             return std::string(std::get<0>(test.param).name) + "_" + std::get<1>(test.param).name;
                         });

TEST(ReentrancyTest, HandlerMaySetItsFieldUntilItIsContent) {
    Diary diary;
    DataValue counter(Text("counter"));
    RecordingHandler handler(diary, "A");
    counter.registerHandler(&handler);
    std::function<void()> countUp = [&] {
        if (*counter.getData(0) == "1111")
            return;
        handler.onceThen(countUp);
        counter.setData((*counter.getData(0) + "1").c_str());
    };
    handler.onceThen(countUp);
    counter.setData("1");
    EXPECT_EQ(*counter.getData(0), "1111");
    EXPECT_EQ(diary.take(), "A changed, A changed, A changed, A changed");
}

TEST(ReentrancyTest, LaterHandlersSeeTheTextOfTheInnerSet) {
    Diary diary;
    DataValue field(Text("x"));
    RecordingHandler first(diary, "A");
    RecordingHandler second(diary, "B");
    field.registerHandler(&first);
    field.registerHandler(&second);
    first.onceThen([&] { field.setData("inner"); });
    std::string seen;
    field.setData("outer");
    second.onceThen([&] { seen = *field.getData(0); });
    field.fireHandlers(true);
    EXPECT_EQ(seen, "inner");
    EXPECT_EQ(diary.takeNames(), "AABBAB");
}

TEST(ReentrancyTest, CloneNotifiesNoOneOnceItsOriginIsDeleted) {
    Diary diary;
    auto origin = std::make_unique<DataValue>(Text("x"));
    RecordingHandler first(diary, "A");
    RecordingHandler second(diary, "B");
    origin->registerHandler(&first);
    origin->registerHandler(&second);
    std::unique_ptr<DataField> clone(origin->clone());
    first.onceThen([&] { origin.reset(); });
    clone->setData("1");
    EXPECT_EQ(diary.takeNames(), "A");
    EXPECT_EQ(*clone->getData(0), "1");
    EXPECT_EQ(second.getField(), nullptr);
}

TEST(ReentrancyTest, CloneMayDeleteItselfInItsPass) {
    Diary diary;
    DataValue origin(Text("x"));
    RecordingHandler first(diary, "A");
    origin.registerHandler(&first);
    std::unique_ptr<DataField> clone(origin.clone());
    first.onceThen([&] { clone.reset(); });
    clone->setData("1");
    EXPECT_EQ(diary.takeNames(), "A");
    EXPECT_EQ(origin.getNumHandlers(), 0);
    EXPECT_EQ(*origin.getData(0), "1");
}

TEST(ReentrancyTest, SourceDeletedByItsTargetsHandlerStoresNothingMore) {
    Diary diary;
    auto source = std::make_unique<DataValue>(Text("source"));
    DataValue first(Text("first"));
    DataValue second(Text("second"));
    source->addTargetLink(&first);
    source->addTargetLink(&second);
    RecordingHandler onSource(diary, "S");
    RecordingHandler onFirst(diary, "A");
    RecordingHandler onSecond(diary, "B");
    source->registerHandler(&onSource);
    first.registerHandler(&onFirst);
    second.registerHandler(&onSecond);
    onFirst.onceThen([&] { source.reset(); });
    source->setData("1");
    EXPECT_EQ(diary.takeNames(), "A");
    EXPECT_EQ(first.getLinkSource(), nullptr);
    EXPECT_EQ(second.getLinkSource(), nullptr);
}

TEST(ReentrancyTest, FieldMayBeDeletedInTheNoticeOfJoiningByPath) {
    Diary diary;
    Orbel root(Text("show"));
    auto* field = new DataValue(Text("x"));
    root.addField(field, 0);
    field->setData("1");
    RecordingHandler handler(diary, "A");
    handler.onceThen([&] {
        root.removeField(Text("x"), 0);
        delete field;
    });
    EXPECT_TRUE(root.registerHandler(Text("x"), &handler, 0));
    EXPECT_EQ(diary.take(), "A same");
    EXPECT_EQ(handler.getField(), nullptr);
    EXPECT_EQ(root.getNumFields(), 0);
}

TEST(ReentrancyTest, LastHandlerMayDisposeOfItsFieldThroughTheTree) {
    Diary diary;
    Orbel root(Text("show"));
    RecordingHandler handler(diary, "A");
    root.registerHandler(Text("a/x"), &handler, 0);
    handler.onceThen([&] { root.unregisterHandler(&handler); });
    handler.getField()->setData("1");
    EXPECT_EQ(diary.take(), "A changed");
    EXPECT_EQ(root.getNumFields(), 0);
}

} // namespace

// A handler that took itself off, and the new one behind the marker that came in its place, were both missed.
TEST(ReentrancyTest, HandlerBehindAMarkerThatCameMeanwhileIsReached) {
    for (const bool byPosition : {false, true}) {
        Diary diary;
        Orbel root(Text("show"));
        DataValue x(Text("x"));
        RecordingHandler first(diary, "A");
        RecordingHandler second(diary, "B");
        root.addField(&x, 0);
        x.setSize(byPosition ? 2 : 1);
        x.registerHandler(&first);
        first.onceThen([&] {
            x.unregisterHandler(&first);
            root.getField(Text("string:x"), 0, 0);
            x.registerHandler(&second);
        });
        if (byPosition)
            x.setData("1", 1);
        else
            x.setData("1");
        EXPECT_EQ(diary.take(),
                  byPosition ? "A changed 1-1, B same 0-1, B changed 1-1" : "A changed, B same, B changed");
    }
}

TEST(ReentrancyTest, MarkerMayBeAskedForInItsPass) {
    Diary diary;
    Orbel root(Text("show"));
    DataField* x = root.getField(Text("string:x"), 0, 0);
    RecordingHandler first(diary, "A");
    RecordingHandler second(diary, "B");
    x->registerHandler(&first);
    DataHandler* marker = nullptr;
    first.onceThen([&] {
        marker = x->getHandlerByName(Text("DUMMY"));
        x->registerHandler(&second);
    });
    x->setData("1");
    EXPECT_EQ(diary.take(), "A changed, A same, B same, B changed");
    ASSERT_NE(marker, nullptr);
    EXPECT_EQ(marker->getField(), x);
    EXPECT_EQ(x->getHandlerByID(0), marker);
    EXPECT_EQ(x->getHandlerByID(1), &first);
    first.onceThen([&] { x->unregisterHandler(marker); });
    x->setData("2");
    EXPECT_EQ(diary.take(), "A changed");
    EXPECT_EQ(x->getNumHandlers(), 2);
    root.removeChildren();
    delete x;
}

TEST(ReentrancyTest, HandlerMayLeaveAndJoinAgainInItsPass) {
    Diary diary;
    DataValue x(Text("x"));
    RecordingHandler first(diary, "A");
    x.registerHandler(&first);
    first.onceThen([&] {
        x.unregisterHandler(&first);
        x.registerHandler(&first);
    });
    x.setData("1");
    EXPECT_EQ(diary.take(), "A changed, A same");
    EXPECT_EQ(x.getNumHandlers(), 1);
    EXPECT_EQ(first.getField(), &x);
}

TEST(Followers, MayBringAHandlerThatHearsOfTheSetUnderWay) {
    Diary diary;
    RecordingHandler onTarget(diary, "T");
    RecordingHandler first(diary, "A");
    RecordingHandler second(diary, "B");
    DataValue source(Text("source"));
    DataValue target(Text("target"));
    source.addTargetLink(&target);
    target.registerHandler(&onTarget);
    diary.take();
    onTarget.onceThen([&] {
        source.registerHandler(&first);
        source.registerHandler(&second);
        diary.take();
    });
    source.setData("one");
    EXPECT_EQ(diary.take(), "A changed, B changed");
    EXPECT_EQ(*source.getData(0), "one");
    EXPECT_EQ(*target.getData(0), "one");
}

TEST(Followers, MayMakeTheirSourceACopyOfAFieldThatNobodyFollows) {
    Diary diary;
    RecordingHandler onTarget(diary, "T");
    DataValue source(Text("source"));
    DataValue target(Text("target"));
    DataValue plain(Text("plain"));
    source.addTargetLink(&target);
    target.registerHandler(&onTarget);
    diary.take();
    onTarget.onceThen([&] { source = plain; });
    source.setData("one");
    EXPECT_EQ(diary.take(), "T changed");
    EXPECT_EQ(*source.getData(0), "one");
    EXPECT_EQ(*target.getData(0), "one");
    EXPECT_STREQ(source.getName(), "plain");
}
