#include <orbel/orbel.h>

#include <support/Expressions.h>
#include <support/SceneTree.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

/// A root with a structure "part" that holds the value "leaf"; an expression that has found the leaf.
class ExpressionLifetime : public testing::Test {
protected:
    ExpressionLifetime() {
        root.addField(part, 0);
        expression.setHostField(&root, nullptr);
        expression.parse(Text("<$(part/leaf)>"));
        EXPECT_STREQ(expression.evaluate(0), "<green>");
    }

    Orbel root{Text("show")};
    const SubtreeCleanup belowRoot{root};
    DataStructure* part = new DataStructure(Text("part"));
    DataValue* leaf = ExpressionStage::add(*part, "leaf", "green");
    DataExpression expression;
};

} // namespace

TEST_F(ExpressionLifetime, FieldIsRemovedAndDeleted) {
    part->removeField(Text("leaf"), 0);
    EXPECT_STREQ(expression.evaluate(0), "<green>");
    delete leaf;
    EXPECT_STREQ(expression.evaluate(0), "<>");
    ExpressionStage::add(*part, "leaf", "second");
    EXPECT_STREQ(expression.evaluate(0), "<second>");
}

TEST_F(ExpressionLifetime, RemovedFieldStaysBound) {
    part->removeField(Text("leaf"), 0);
    ExpressionStage::add(*part, "leaf", "second");
    EXPECT_STREQ(expression.evaluate(0), "<green>");
    leaf->setData("still");
    EXPECT_STREQ(expression.evaluate(0), "<still>");
    expression.parse(Text("<$(part/leaf)>"));
    EXPECT_STREQ(expression.evaluate(0), "<second>");
    EXPECT_EQ(leaf->getRef(), 0);
    delete leaf;
}

TEST_F(ExpressionLifetime, DeleteChildrenSparesTheFieldThatIsHeld) {
    part->deleteChildren();
    EXPECT_EQ(leaf->getRef(), 1);
    EXPECT_STREQ(expression.evaluate(0), "<green>");
    expression.parse(Text(""));
    EXPECT_EQ(leaf->getRef(), 0);
    delete leaf;
}

TEST_F(ExpressionLifetime, DeleteChildrenTakesTheFieldThatIsNotHeldAnyMore) {
    expression.parse(Text("<$(part/leaf"));
    part->deleteChildren();
    expression.parse(Text("<$(part/leaf)>"));
    EXPECT_STREQ(expression.evaluate(0), "<>");
}

TEST_F(ExpressionLifetime, ShorterTextLetsGoOfAllFields) {
    expression.parse(Text("$(part)$(part/leaf)"));
    EXPECT_EQ(part->getRef() + leaf->getRef(), 4);
    expression.parse(Text("text"));
    EXPECT_EQ(part->getRef() + leaf->getRef(), 2);
    root.deleteChildren();
    EXPECT_STREQ(expression.evaluate(0), "text");
}

TEST_F(ExpressionLifetime, TreeIsDeletedAboveTheField) {
    root.deleteChildren();
    EXPECT_STREQ(expression.evaluate(0), "<green>");
    EXPECT_EQ(leaf->getParent(), nullptr);
    delete leaf;
    EXPECT_STREQ(expression.evaluate(0), "<>");
}

TEST_F(ExpressionLifetime, ParentIsDeleted) {
    root.removeField(Text("part"), 0);
    delete part;
    EXPECT_STREQ(expression.evaluate(0), "<green>");
    delete leaf;
    EXPECT_STREQ(expression.evaluate(0), "<>");
}

TEST_F(ExpressionLifetime, LastHandlerLeaves) {
    DataHandler handler;
    root.registerHandler(Text("made"), &handler, 0);
    root.getField(Text("made"), 0, 0)->setData("observed");
    expression.parse(Text("<$(made)>"));
    EXPECT_STREQ(expression.evaluate(0), "<observed>");
    DataField* made = handler.getField();
    root.unregisterHandler(&handler);
    EXPECT_STREQ(expression.evaluate(0), "<observed>");
    EXPECT_EQ(made->getRef(), 1);
    delete made;
    EXPECT_STREQ(expression.evaluate(0), "<>");
}

TEST_F(ExpressionLifetime, HostFieldIsDeleted) {
    expression.setHostField(&root, leaf);
    expression.parse(Text("<$(FIELD_DATA)$(PARENT)>"));
    EXPECT_STREQ(expression.evaluate(0), "<greenpart>");
    part->removeField(Text("leaf"), 0);
    delete leaf;
    EXPECT_STREQ(expression.evaluate(0), "<part>");
    expression.parse(Text("<$(FIELD_DATA)$(FIELD_NAME)$(FIELD_FULL_NAME)$(PARENT_NAME)>"));
    EXPECT_STREQ(expression.evaluate(0), "<part>");
}

TEST_F(ExpressionLifetime, ContextIsDeleted) {
    expression.setHostField(&root, leaf);
    expression.parse(Text("<$(PARENT)$(other)>"));
    root.removeField(Text("part"), 0);
    part->removeChildren();
    delete part;
    EXPECT_STREQ(expression.evaluate(0), "<>");
    expression.parse(Text("<$(PARENT)$(PARENT_NAME)$(FIELD_NAME)>"));
    EXPECT_STREQ(expression.evaluate(0), "<showleaf>");
    expression.setHostField(&root, leaf);
    EXPECT_STREQ(expression.evaluate(0), "<showleaf>");
    delete leaf;
}

TEST_F(ExpressionLifetime, RootIsDeleted) {
    {
        Orbel shortLived{Text("short")};
        const SubtreeCleanup belowShortLived{shortLived};
        ExpressionStage::add(shortLived, "a", "value");
        expression.setHostField(&shortLived, nullptr);
        DataExpression fresh;
        fresh.setHostField(&shortLived, nullptr);
        fresh.parse(Text("$(a)"));
        EXPECT_STREQ(fresh.evaluate(0), "value");
        expression.parse(Text("part/leaf = $(part/leaf)$(a)"));
    }
    expression.execute(0);
    EXPECT_STREQ(expression.evaluate(0), "part/leaf = green");
}

TEST(ExpressionLifetimeInTables, ArrayElementsAreRemoved) {
    SceneTree tree;
    DataField* x = tree.xOfPoint(1);
    x->setData("x1");
    DataExpression expression;
    expression.setHostField(&tree.root, x);
    expression.parse(Text("<$(x)$(PARENT)$(FIELD_DATA)>"));
    EXPECT_STREQ(expression.evaluate(0), "<x1points[1]x1>");
    std::vector<DataField*> unheld = {tree.xOfPoint(0), tree.xOfPoint(2)};
    DataObject* element = tree.points->getObject(1);
    tree.points->removeChildren();
    EXPECT_STREQ(expression.evaluate(0), "<x1x1>");
    EXPECT_EQ(x->getParent(), nullptr);
    EXPECT_NE(element, nullptr);
    EXPECT_EQ(x->getRef(), 2);
    delete x;
    EXPECT_STREQ(expression.evaluate(0), "<>");
    expression.parse(Text("<$(PARENT_NAME)$(FIELD_NAME)>"));
    EXPECT_STREQ(expression.evaluate(0), "<show>");
}

TEST(ExpressionLifetimeInTables, ArrayElementThatIsNamedIsSpared) {
    SceneTree tree;
    tree.xOf(tree.city("Oslo"))->setData("north");
    DataObject* oslo = tree.city("Oslo");
    DataExpression expression;
    expression.setHostField(&tree.root, nullptr);
    expression.parse(Text("$(cities)<"));
    EXPECT_EQ(tree.cities->getRef(), 2);
    auto inner = std::make_unique<DataExpression>();
    inner->setHostField(&tree.root, tree.xOf(oslo));
    inner->parse(Text("$(x)"));
    EXPECT_STREQ(inner->evaluate(0), "north");
    DataField* x = tree.xOf(oslo);
    tree.cities->removeChildren();
    EXPECT_STREQ(inner->evaluate(0), "north");
    inner.reset();
    EXPECT_EQ(x->getRef(), 0);
    delete x;
    EXPECT_STREQ(expression.evaluate(0), "<");
}

TEST(ExpressionLifetimeOfSegments, ExpressionMayOutliveEverythingItFound) {
    DataExpression expression;
    {
        ExpressionStage stage;
        expression.setHostField(&stage.root, stage.host);
        expression.parse(Text("$(a)$(v)$(FIELD_DATA)$(REFRESH) $(b)$(PARENT)"));
        EXPECT_STREQ(expression.evaluate(1), "outeronehosted near");
    }
    EXPECT_STREQ(expression.evaluate(1), " ");
    expression.parse(Text("$(a)$(PARENT_NAME)gone"));
    EXPECT_STREQ(expression.evaluate(1), "gone");
}
