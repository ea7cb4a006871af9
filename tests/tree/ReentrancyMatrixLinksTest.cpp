#include <support/ReentrancyStage.h>

#include <gtest/gtest.h>

/// What handlers do to their field while it is set together with others, and what everyone hears of it: one test is
/// one cell of the table in docs/plugins.md. E came earlier than A, who acts, and L later; N observes the field that
/// is set next.

namespace {

/// a/x, and then b/x, which N observes.
class TwoFieldsStage : public ReentrancyStage {
protected:
    TwoFieldsStage() {
        put(new DataValue(Text("x")));
        for (const char name : {'E', 'A', 'L'})
            join(name);
        next->registerHandler(&witness('N'));
        auto* b = new DataStructure(Text("b"));
        b->addField(next, 0);
        root.addField(b, 0);
    }

    DataValue* next = new DataValue(Text("x"));
};

/// Both follow s, which S observes.
class WhileALinkIsFollowed : public TwoFieldsStage {
protected:
    WhileALinkIsFollowed() {
        root.addField(source, 0);
        source->registerHandler(&witness('S'));
        source->addTargetLink(&x());
        source->addTargetLink(next);
    }

    void happen() override { source->setData("1"); }

    DataValue* source = new DataValue(Text("s"));
};

class WhileAWildcardIsSet : public TwoFieldsStage {
protected:
    void happen() override { root.executeCommand(Text("*/x = 1"), 0); }
};

} // namespace

TEST_F(WhileALinkIsFollowed, RemovesItself) {
    when([&] { remove('A'); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, N changed x=1, S changed s=1");
    EXPECT_EQ(tree(), "a{x<E,L>=1},b{x<N>=1},s<S>=1");
}

TEST_F(WhileALinkIsFollowed, RemovesAnEarlier) {
    when([&] { remove('E'); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, N changed x=1, S changed s=1");
    EXPECT_EQ(tree(), "a{x<A,L>=1},b{x<N>=1},s<S>=1");
}

TEST_F(WhileALinkIsFollowed, RemovesALater) {
    when([&] { remove('L'); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, N changed x=1, S changed s=1");
    EXPECT_EQ(tree(), "a{x<E,A>=1},b{x<N>=1},s<S>=1");
}

TEST_F(WhileALinkIsFollowed, AddsOne) {
    when([&] { join('F'); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, "
                      "E same x=1, A same x=1, L same x=1, F same x=1, "
                      "L changed x=1, F changed x=1, N changed x=1, S changed s=1");
    EXPECT_EQ(tree(), "a{x<E,A,L,F>=1},b{x<N>=1},s<S>=1");
}

/// The walk over the followers goes by position too: b/x is passed over this once.
TEST_F(WhileALinkIsFollowed, DeletesTheField) {
    when([&] { deleteField(); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, S changed s=1");
    EXPECT_EQ(tree(), "a{},b{x<N>?},s<S>=1");
    EXPECT_EQ(witness('L').getField(), nullptr);
    source->setData("2");
    EXPECT_EQ(tree(), "a{},b{x<N>=2},s<S>=2");
}

TEST_F(WhileALinkIsFollowed, DeletesTheParent) {
    when([&] { deleteParent(); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, L changed x=1, N changed x=1, S changed s=1");
    EXPECT_EQ(tree(), "b{x<N>=1},s<S>=1+x<E,A,L>=1");
    EXPECT_EQ(x().getLinkSource(), source);
}

TEST_F(WhileALinkIsFollowed, SetsTheFieldAgain) {
    when([&] { x().setData("2"); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, "
                      "E changed x=2, A changed x=2, L changed x=2, "
                      "L changed x=2, N changed x=1, S changed s=1");
    EXPECT_EQ(tree(), "a{x<E,A,L>=2},b{x<N>=1},s<S>=1");
}

/// As when the field is deleted: who stops following makes room for the next, which is passed over this once.
TEST_F(WhileALinkIsFollowed, ClearsTheLinks) {
    when([&] { x().ClearLinks(); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, L changed x=1, S changed s=1");
    EXPECT_EQ(tree(), "a{x<E,A,L>=1},b{x<N>?},s<S>=1");
    source->setData("2");
    EXPECT_EQ(tree(), "a{x<E,A,L>=1},b{x<N>=2},s<S>=2");
}

TEST_F(WhileALinkIsFollowed, DestroysItself) {
    when([&] { destroy('A'); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, N changed x=1, S changed s=1");
    EXPECT_EQ(tree(), "a{x<E,L>=1},b{x<N>=1},s<S>=1");
}

/// With the links of the whole tree gone, nobody is left to be set after a/x but s itself.
TEST_F(WhileALinkIsFollowed, ClearsAllLinksOfTheTree) {
    when([&] { root.parseLinkCommand(Text("")); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, L changed x=1, S changed s=1");
    EXPECT_EQ(tree(), "a{x<E,A,L>=1},b{x<N>?},s<S>=1");
}

TEST_F(WhileAWildcardIsSet, RemovesItself) {
    when([&] { remove('A'); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, N changed x=1");
    EXPECT_EQ(tree(), "a{x<E,L>=1},b{x<N>=1}");
}

TEST_F(WhileAWildcardIsSet, RemovesAnEarlier) {
    when([&] { remove('E'); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, N changed x=1");
    EXPECT_EQ(tree(), "a{x<A,L>=1},b{x<N>=1}");
}

TEST_F(WhileAWildcardIsSet, RemovesALater) {
    when([&] { remove('L'); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, N changed x=1");
    EXPECT_EQ(tree(), "a{x<E,A>=1},b{x<N>=1}");
}

TEST_F(WhileAWildcardIsSet, AddsOne) {
    when([&] { join('F'); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, "
                      "E same x=1, A same x=1, L same x=1, F same x=1, "
                      "L changed x=1, F changed x=1, N changed x=1");
    EXPECT_EQ(tree(), "a{x<E,A,L,F>=1},b{x<N>=1}");
}

TEST_F(WhileAWildcardIsSet, DeletesTheField) {
    when([&] { deleteField(); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, N changed x=1");
    EXPECT_EQ(tree(), "a{},b{x<N>=1}");
    EXPECT_EQ(witness('L').getField(), nullptr);
}

TEST_F(WhileAWildcardIsSet, DeletesTheParent) {
    when([&] { deleteParent(); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, L changed x=1, N changed x=1");
    EXPECT_EQ(tree(), "b{x<N>=1}+x<E,A,L>=1");
    EXPECT_EQ(x().getParent(), nullptr);
}

TEST_F(WhileAWildcardIsSet, SetsTheFieldAgain) {
    when([&] { x().setData("2"); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, "
                      "E changed x=2, A changed x=2, L changed x=2, "
                      "L changed x=2, N changed x=1");
    EXPECT_EQ(tree(), "a{x<E,A,L>=2},b{x<N>=1}");
}

TEST_F(WhileAWildcardIsSet, ClearsTheLinks) {
    DataValue source(Text("source"));
    source.addTargetLink(&x());
    when([&] { x().ClearLinks(); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, L changed x=1, N changed x=1");
    source.setData("2");
    EXPECT_EQ(tree(), "a{x<E,A,L>=1},b{x<N>=1}");
}

TEST_F(WhileAWildcardIsSet, DestroysItself) {
    when([&] { destroy('A'); });
    EXPECT_EQ(told(), "E changed x=1, A changed x=1, N changed x=1");
    EXPECT_EQ(tree(), "a{x<E,L>=1},b{x<N>=1}");
}
