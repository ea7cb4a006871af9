#include <support/DeclaredTypes.h>
#include <support/ReentrancyStage.h>

#include <gtest/gtest.h>

/// What handlers do to their object while it tells of its type, and what everyone hears of it: one test is one cell of
/// the table in docs/plugins.md. E came earlier than A, who acts, and L later. Nothing is stored to an object, so
/// joining it is not told.

namespace {

class TypedStage : public ReentrancyStage {
protected:
    TypedStage() {
        put(new DataObject(Text("x")));
        for (const char name : {'E', 'A', 'L'})
            join(name);
    }

    DataObject& object() { return static_cast<DataObject&>(x()); }

    DeclaredTypes types{"Point = {string p=0;}; Label = {string t=Hi;};"};
};

/// By the type itself, which is told once.
class WhileATypeIsSet : public TypedStage {
protected:
    void happen() override { object().setObjectType(types["Point"]); }
};

/// The types are read again while x is a Point, and x becomes one of the new kind: by name, which is told twice.
class WhileATypeIsMadeAnew : public TypedStage {
protected:
    WhileATypeIsMadeAnew() { object().setObjectType(types["Point"]); }

    void happen() override {
        DataObject::readConfigFiles();
        types.declare("Point = {string q=5;}; Label = {string t=Hi;};");
        object().setObjectType(Text("Point"));
    }
};

} // namespace

TEST_F(WhileATypeIsSet, RemovesItself) {
    when([&] { remove('A'); });
    EXPECT_EQ(told(), "E Point x{p=0}, A Point x{p=0}");
    EXPECT_EQ(tree(), "a{x<E,L>{p=0}}");
}

TEST_F(WhileATypeIsSet, RemovesAnEarlier) {
    when([&] { remove('E'); });
    EXPECT_EQ(told(), "E Point x{p=0}, A Point x{p=0}");
    EXPECT_EQ(tree(), "a{x<A,L>{p=0}}");
}

TEST_F(WhileATypeIsSet, RemovesALater) {
    when([&] { remove('L'); });
    EXPECT_EQ(told(), "E Point x{p=0}, A Point x{p=0}");
    EXPECT_EQ(tree(), "a{x<E,A>{p=0}}");
}

TEST_F(WhileATypeIsSet, AddsOne) {
    when([&] { join('F'); });
    EXPECT_EQ(told(), "E Point x{p=0}, A Point x{p=0}, L Point x{p=0}, F Point x{p=0}");
    EXPECT_EQ(tree(), "a{x<E,A,L,F>{p=0}}");
}

TEST_F(WhileATypeIsSet, DeletesTheField) {
    when([&] { deleteField(); });
    EXPECT_EQ(told(), "E Point x{p=0}, A Point x{p=0}");
    EXPECT_EQ(tree(), "a{}");
    EXPECT_EQ(witness('L').getField(), nullptr);
}

TEST_F(WhileATypeIsSet, DeletesTheParent) {
    when([&] { deleteParent(); });
    EXPECT_EQ(told(), "E Point x{p=0}, A Point x{p=0}, L Point x{p=0}");
    EXPECT_EQ(tree(), "+x<E,A,L>{p=0}");
    EXPECT_EQ(x().getParent(), nullptr);
}

/// The rest of the first pass still names the first type.
TEST_F(WhileATypeIsSet, SetsTheTypeAgain) {
    when([&] { object().setObjectType(types["Label"]); });
    EXPECT_EQ(told(), "E Point x{p=0}, A Point x{p=0}, "
                      "E Label x{t=Hi}, A Label x{t=Hi}, L Label x{t=Hi}, "
                      "L Point x{t=Hi}");
    EXPECT_EQ(tree(), "a{x<E,A,L>{t=Hi}}");
    EXPECT_STREQ(object().getObjectTypeName(), "Label");
}

TEST_F(WhileATypeIsSet, ClearsTheLinks) {
    DataStructure source(Text("source"));
    source.addTargetLink(&x());
    when([&] { x().ClearLinks(); });
    EXPECT_EQ(told(), "E Point x{p=0}, A Point x{p=0}, L Point x{p=0}");
    source.executeCommand(Text("p = 1"), 0);
    EXPECT_EQ(tree(), "a{x<E,A,L>{p=0}}");
}

TEST_F(WhileATypeIsSet, DestroysItself) {
    when([&] { destroy('A'); });
    EXPECT_EQ(told(), "E Point x{p=0}, A Point x{p=0}");
    EXPECT_EQ(tree(), "a{x<E,L>{p=0}}");
}

TEST_F(WhileATypeIsMadeAnew, RemovesItself) {
    when([&] { remove('A'); });
    EXPECT_EQ(told(), "E Point x{q=5}, A Point x{q=5}, "
                      "E Point x{q=5}, L Point x{q=5}");
    EXPECT_EQ(tree(), "a{x<E,L>{q=5}}");
}

TEST_F(WhileATypeIsMadeAnew, RemovesAnEarlier) {
    when([&] { remove('E'); });
    EXPECT_EQ(told(), "E Point x{q=5}, A Point x{q=5}, "
                      "A Point x{q=5}, L Point x{q=5}");
    EXPECT_EQ(tree(), "a{x<A,L>{q=5}}");
}

TEST_F(WhileATypeIsMadeAnew, RemovesALater) {
    when([&] { remove('L'); });
    EXPECT_EQ(told(), "E Point x{q=5}, A Point x{q=5}, "
                      "E Point x{q=5}, A Point x{q=5}");
    EXPECT_EQ(tree(), "a{x<E,A>{q=5}}");
}

TEST_F(WhileATypeIsMadeAnew, AddsOne) {
    when([&] { join('F'); });
    EXPECT_EQ(told(), "E Point x{q=5}, A Point x{q=5}, L Point x{q=5}, F Point x{q=5}, "
                      "E Point x{q=5}, A Point x{q=5}, L Point x{q=5}, F Point x{q=5}");
    EXPECT_EQ(tree(), "a{x<E,A,L,F>{q=5}}");
}

TEST_F(WhileATypeIsMadeAnew, DeletesTheField) {
    when([&] { deleteField(); });
    EXPECT_EQ(told(), "E Point x{q=5}, A Point x{q=5}");
    EXPECT_EQ(tree(), "a{}");
    EXPECT_EQ(witness('L').getField(), nullptr);
}

TEST_F(WhileATypeIsMadeAnew, DeletesTheParent) {
    when([&] { deleteParent(); });
    EXPECT_EQ(told(), "E Point x{q=5}, A Point x{q=5}, L Point x{q=5}, "
                      "E Point x{q=5}, A Point x{q=5}, L Point x{q=5}");
    EXPECT_EQ(tree(), "+x<E,A,L>{q=5}");
    EXPECT_EQ(x().getParent(), nullptr);
}

/// The rest of the outer notices, and the whole second one, still name the first type.
TEST_F(WhileATypeIsMadeAnew, SetsTheTypeAgain) {
    when([&] { object().setObjectType(Text("Label")); });
    EXPECT_EQ(told(), "E Point x{q=5}, A Point x{q=5}, "
                      "E Label x{t=Hi}, A Label x{t=Hi}, L Label x{t=Hi}, "
                      "E Label x{t=Hi}, A Label x{t=Hi}, L Label x{t=Hi}, "
                      "L Point x{t=Hi}, "
                      "E Point x{t=Hi}, A Point x{t=Hi}, L Point x{t=Hi}");
    EXPECT_EQ(tree(), "a{x<E,A,L>{t=Hi}}");
    EXPECT_STREQ(object().getObjectTypeName(), "Label");
}

TEST_F(WhileATypeIsMadeAnew, ClearsTheLinks) {
    DataStructure source(Text("source"));
    source.addTargetLink(&x());
    when([&] { x().ClearLinks(); });
    EXPECT_EQ(told(), "E Point x{q=5}, A Point x{q=5}, L Point x{q=5}, "
                      "E Point x{q=5}, A Point x{q=5}, L Point x{q=5}");
    source.executeCommand(Text("q = 1"), 0);
    EXPECT_EQ(tree(), "a{x<E,A,L>{q=5}}");
}

TEST_F(WhileATypeIsMadeAnew, DestroysItself) {
    when([&] { destroy('A'); });
    EXPECT_EQ(told(), "E Point x{q=5}, A Point x{q=5}, "
                      "E Point x{q=5}, L Point x{q=5}");
    EXPECT_EQ(tree(), "a{x<E,L>{q=5}}");
}

/// Whoever observes a field of the object stays with the old one, which leaves the tree.
TEST_F(WhileATypeIsMadeAnew, HandlersOfItsFieldsHearNothing) {
    DataField* old = object().getFieldByIndex(0);
    old->registerHandler(&witness('C'));
    EXPECT_EQ(told(), "E Point x{q=5}, A Point x{q=5}, L Point x{q=5}, "
                      "E Point x{q=5}, A Point x{q=5}, L Point x{q=5}");
    EXPECT_EQ(tree(), "a{x<E,A,L>{q=5}}");
    EXPECT_EQ(witness('C').getField(), old);
    EXPECT_EQ(old->getParent(), nullptr);
    delete old;
}
