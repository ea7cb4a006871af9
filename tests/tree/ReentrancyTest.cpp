#include <orbel/orbel.h>

#include <support/RecordingHandler.h>
#include <support/Text.h>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
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
    {"Joining",
     [](Stage& stage) {
         stage.x().setDataInitialized(1);
         stage.joinC();
     },
     1, "", "", true},
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

void nothing(Stage& /*stage*/) {}

void unregister(Stage& stage, std::size_t handler) {
    stage.x().unregisterHandler(stage.handlers[handler].get());
}

void destroy(Stage& stage, std::size_t handler) {
    stage.handlers[handler].reset();
}

constexpr int fieldGone = -1;

const Disturbance disturbances[] = {
    {"Nothing", nothing, "ABC", "ABC", 3},
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
    // B's own set and the notice of D's joining are heard by all, inside the pass they interrupt.
    {"SetAgain", [](Stage& stage) { stage.x().setData("again"); },
     "AB"
     "ABC"
     "C",
     "ABC", 3},
    {"RegisterOneMore", [](Stage& stage) { stage.x().registerHandler(&stage.further); },
     "AB"
     "ABCD"
     "CD",
     "ABCD", 4},
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

} // namespace
