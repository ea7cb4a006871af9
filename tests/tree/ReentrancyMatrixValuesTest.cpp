#include <support/ReentrancyStage.h>
#include <support/TextList.h>

#include <gtest/gtest.h>

/// What handlers do to their field while it tells of a value, and what everyone hears of it: one test is one cell of
/// the table in docs/plugins.md. E came earlier than A, who acts, and L later.

namespace {

class WhileAValueIsSet : public ReentrancyStage {
protected:
    WhileAValueIsSet() {
        put(new DataValue(Text("x")));
        for (const char name : {'E', 'A', 'L'})
            join(name);
    }

    void happen() override { x().setData("1"); }
};

class WhileARangeIsSet : public ReentrancyStage {
protected:
    WhileARangeIsSet() {
        put(new DataValue(Text("x")));
        x().setSize(3);
        for (const char name : {'E', 'A', 'L'})
            join(name);
    }

    void happen() override { x().setData(TextList({"1", "2", "3"}), 0, 2); }
};

/// L is the one who joins.
class WhileAHandlerJoins : public ReentrancyStage {
protected:
    WhileAHandlerJoins() {
        put(new DataValue(Text("x")));
        x().setData("1");
        join('E');
        join('A');
    }

    void happen() override { join('L'); }
};

} // namespace

TEST_F(WhileAValueIsSet, RemovesItself) {
    when([&] { remove('A'); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1");
    EXPECT_EQ(tree(), "a{x<E,L>=1}");
}

TEST_F(WhileAValueIsSet, RemovesAnEarlier) {
    when([&] { remove('E'); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1");
    EXPECT_EQ(tree(), "a{x<A,L>=1}");
}

TEST_F(WhileAValueIsSet, RemovesALater) {
    when([&] { remove('L'); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1");
    EXPECT_EQ(tree(), "a{x<E,A>=1}");
}

TEST_F(WhileAValueIsSet, AddsOne) {
    when([&] { join('F'); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, "
                      "E same x=1, A same x=1, L same x=1, F same x=1, "
                      "L changed x=1, F changed x=1");
    EXPECT_EQ(tree(), "a{x<E,A,L,F>=1}");
}

TEST_F(WhileAValueIsSet, DeletesTheField) {
    when([&] { deleteField(); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1");
    EXPECT_EQ(tree(), "a{}");
    EXPECT_EQ(witness('L').getField(), nullptr);
}

TEST_F(WhileAValueIsSet, DeletesTheParent) {
    when([&] { deleteParent(); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, L changed x=1");
    EXPECT_EQ(tree(), "+x<E,A,L>=1");
    EXPECT_EQ(x().getParent(), nullptr);
}

TEST_F(WhileAValueIsSet, SetsTheFieldAgain) {
    when([&] { x().setData("2"); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, "
                      "E changed x=2, A changed x=2, L changed x=2, "
                      "L changed x=2");
    EXPECT_EQ(tree(), "a{x<E,A,L>=2}");
}

TEST_F(WhileAValueIsSet, ClearsTheLinks) {
    DataValue source(Text("source"));
    DataValue target(Text("target"));
    source.addTargetLink(&x());
    x().addTargetLink(&target);
    when([&] { x().ClearLinks(); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, L changed x=1");
    source.setData("2");
    EXPECT_EQ(tree(), "a{x<E,A,L>=1}");
    EXPECT_EQ(*target.getData(0), "1");
    EXPECT_EQ(target.getLinkSource(), nullptr);
}

TEST_F(WhileAValueIsSet, DestroysItself) {
    when([&] { destroy('A'); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1");
    EXPECT_EQ(tree(), "a{x<E,L>=1}");
}

TEST_F(WhileARangeIsSet, RemovesItself) {
    when([&] { remove('A'); });
    EXPECT_EQ(told(), "E changed 0-2 x=1|2|3, A changed 0-2 x=1|2|3");
    EXPECT_EQ(tree(), "a{x<E,L>=1|2|3}");
}

TEST_F(WhileARangeIsSet, RemovesAnEarlier) {
    when([&] { remove('E'); });
    EXPECT_EQ(told(), "E changed 0-2 x=1|2|3, A changed 0-2 x=1|2|3");
    EXPECT_EQ(tree(), "a{x<A,L>=1|2|3}");
}

TEST_F(WhileARangeIsSet, RemovesALater) {
    when([&] { remove('L'); });
    EXPECT_EQ(told(), "E changed 0-2 x=1|2|3, A changed 0-2 x=1|2|3");
    EXPECT_EQ(tree(), "a{x<E,A>=1|2|3}");
}

TEST_F(WhileARangeIsSet, AddsOne) {
    when([&] { join('F'); });
    EXPECT_EQ(told(), "E changed 0-2 x=1|2|3, A changed 0-2 x=1|2|3, "
                      "E same 0-2 x=1|2|3, A same 0-2 x=1|2|3, L same 0-2 x=1|2|3, F same 0-2 x=1|2|3, "
                      "L changed 0-2 x=1|2|3, F changed 0-2 x=1|2|3");
    EXPECT_EQ(tree(), "a{x<E,A,L,F>=1|2|3}");
}

TEST_F(WhileARangeIsSet, DeletesTheField) {
    when([&] { deleteField(); });
    EXPECT_EQ(told(), "E changed 0-2 x=1|2|3, A changed 0-2 x=1|2|3");
    EXPECT_EQ(tree(), "a{}");
    EXPECT_EQ(witness('L').getField(), nullptr);
}

TEST_F(WhileARangeIsSet, DeletesTheParent) {
    when([&] { deleteParent(); });
    EXPECT_EQ(told(), "E changed 0-2 x=1|2|3, A changed 0-2 x=1|2|3, L changed 0-2 x=1|2|3");
    EXPECT_EQ(tree(), "+x<E,A,L>=1|2|3");
    EXPECT_EQ(x().getParent(), nullptr);
}

TEST_F(WhileARangeIsSet, SetsTheFieldAgain) {
    when([&] { x().setData("5", 1); });
    EXPECT_EQ(told(), "E changed 0-2 x=1|2|3, A changed 0-2 x=1|2|3, "
                      "E changed 1-1 x=1|5|3, A changed 1-1 x=1|5|3, L changed 1-1 x=1|5|3, "
                      "L changed 0-2 x=1|5|3");
    EXPECT_EQ(tree(), "a{x<E,A,L>=1|5|3}");
}

TEST_F(WhileARangeIsSet, ClearsTheLinks) {
    DataValue source(Text("source"));
    DataValue target(Text("target"));
    target.setSize(3);
    source.addTargetLink(&x());
    x().addTargetLink(&target);
    when([&] { x().ClearLinks(); });
    EXPECT_EQ(told(), "E changed 0-2 x=1|2|3, A changed 0-2 x=1|2|3, L changed 0-2 x=1|2|3");
    source.setData("9");
    EXPECT_EQ(tree(), "a{x<E,A,L>=1|2|3}");
    EXPECT_EQ(allTexts(target), "1|2|3");
    EXPECT_EQ(target.getLinkSource(), nullptr);
}

TEST_F(WhileARangeIsSet, DestroysItself) {
    when([&] { destroy('A'); });
    EXPECT_EQ(told(), "E changed 0-2 x=1|2|3, A changed 0-2 x=1|2|3");
    EXPECT_EQ(tree(), "a{x<E,L>=1|2|3}");
}

TEST_F(WhileAHandlerJoins, RemovesItself) {
    when([&] { remove('A'); });
    EXPECT_EQ(told(), "E same x=1, A same x=1");
    EXPECT_EQ(tree(), "a{x<E,L>=1}");
}

TEST_F(WhileAHandlerJoins, RemovesAnEarlier) {
    when([&] { remove('E'); });
    EXPECT_EQ(told(), "E same x=1, A same x=1");
    EXPECT_EQ(tree(), "a{x<A,L>=1}");
}

TEST_F(WhileAHandlerJoins, RemovesTheOneWhoJoins) {
    when([&] { remove('L'); });
    EXPECT_EQ(told(), "E same x=1, A same x=1");
    EXPECT_EQ(tree(), "a{x<E,A>=1}");
    EXPECT_EQ(witness('L').getField(), nullptr);
}

TEST_F(WhileAHandlerJoins, AddsOne) {
    when([&] { join('F'); });
    EXPECT_EQ(told(), "E same x=1, A same x=1, "
                      "E same x=1, A same x=1, L same x=1, F same x=1, "
                      "L same x=1, F same x=1");
    EXPECT_EQ(tree(), "a{x<E,A,L,F>=1}");
}

TEST_F(WhileAHandlerJoins, DeletesTheField) {
    when([&] { deleteField(); });
    EXPECT_EQ(told(), "E same x=1, A same x=1");
    EXPECT_EQ(tree(), "a{}");
    EXPECT_EQ(witness('L').getField(), nullptr);
}

TEST_F(WhileAHandlerJoins, DeletesTheParent) {
    when([&] { deleteParent(); });
    EXPECT_EQ(told(), "E same x=1, A same x=1, L same x=1");
    EXPECT_EQ(tree(), "+x<E,A,L>=1");
    EXPECT_EQ(x().getParent(), nullptr);
}

TEST_F(WhileAHandlerJoins, SetsTheField) {
    when([&] { x().setData("2"); });
    EXPECT_EQ(told(), "E same x=1, A same x=1, "
                      "E changed x=2, A changed x=2, L changed x=2, "
                      "L same x=2");
    EXPECT_EQ(tree(), "a{x<E,A,L>=2}");
}

TEST_F(WhileAHandlerJoins, ClearsTheLinks) {
    DataValue source(Text("source"));
    source.addTargetLink(&x());
    when([&] { x().ClearLinks(); });
    EXPECT_EQ(told(), "E same x=1, A same x=1, L same x=1");
    source.setData("2");
    EXPECT_EQ(tree(), "a{x<E,A,L>=1}");
}

TEST_F(WhileAHandlerJoins, DestroysItself) {
    when([&] { destroy('A'); });
    EXPECT_EQ(told(), "E same x=1, A same x=1");
    EXPECT_EQ(tree(), "a{x<E,L>=1}");
}
