#include <kor/Scene.h>
#include <kor/Shapes.h>

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace {

using Align = TextShape::Align;

/// A scene and the shapes of its frame.
class Shapes : public testing::Test {
protected:
    Container& add(double x, double y, int parent = -1) {
        Container& added = scene.addContainer("c", parent);
        added.x = x;
        added.y = y;
        return added;
    }

    Geometry& rectangle(Container& container, double width, double height) {
        Geometry& geometry = scene.addGeometry(container, "POLYGON");
        geometry.width = width;
        geometry.height = height;
        geometry.colour = "#ff0000";
        return geometry;
    }

    Geometry& text(Container& container, const std::string& text) {
        Geometry& geometry = scene.addGeometry(container, "TEXT");
        geometry.text = text;
        return geometry;
    }

    Geometry& image(Container& container, const std::string& name) {
        Geometry& geometry = scene.addGeometry(container, "IMAGE");
        geometry.picture = name;
        geometry.width = 48;
        geometry.height = 24;
        return geometry;
    }

    std::vector<Shape> shapes() { return frameOf(scene).shapes; }

    Scene scene;
};

const double nan = std::numeric_limits<double>::quiet_NaN();
const double infinity = std::numeric_limits<double>::infinity();

} // namespace

TEST_F(Shapes, FrameHasSizeBackgroundAndTitleOfScene) {
    scene.name = "Board";
    scene.width = 1200;
    scene.height = 800;
    scene.background = "#0b1d2e";
    EXPECT_EQ(frameOf(scene), (Frame{"Board", 1200, 800, "#0b1d2e", {}}));
}

TEST_F(Shapes, ContainerWithoutGeometryShowsNothing) {
    add(1, 2);
    EXPECT_TRUE(shapes().empty());
}

TEST_F(Shapes, RectangleBeginsAtItsPosition) {
    Geometry& geometry = rectangle(add(10, 20), 30, 40);
    geometry.radius = 5;
    EXPECT_EQ(shapes(), (std::vector<Shape>{RectangleShape{{10, 20, 30, 40}, "#ff0000", 5, false}}));
}

TEST_F(Shapes, RectangleThatGrowsUpStandsOnItsPosition) {
    rectangle(add(10, 100), 30, 40).growsUp = true;
    EXPECT_EQ(shapes(), (std::vector<Shape>{RectangleShape{{10, 60, 30, 40}, "#ff0000", 0, true}}));
}

TEST_F(Shapes, AlignMovesRectanglesAndPictures) {
    rectangle(add(100, 0), 30, 40).align = "middle";
    rectangle(add(100, 0), 30, 40).align = "right";
    image(add(100, 0), "sun.svg").align = "right";
    const auto all = shapes();
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(std::get<RectangleShape>(all[0]).box, (Box{85, 0, 30, 40}));
    EXPECT_EQ(std::get<RectangleShape>(all[1]).box, (Box{70, 0, 30, 40}));
    EXPECT_EQ(std::get<PictureShape>(all[2]).box, (Box{52, 0, 48, 24}));
}

TEST_F(Shapes, PositionsAndScalesMultiplyDown) {
    Container& outer = add(100, 50);
    outer.scaleX = 2;
    outer.scaleY = 3;
    const int outerId = outer.id;
    Container& inner = add(10, 10, outerId);
    inner.scaleX = 0.5;
    Geometry& geometry = rectangle(inner, 40, 20);
    geometry.radius = 4;
    text(add(1, 1, inner.id), "deep").fontSize = 10;
    EXPECT_EQ(shapes(), (std::vector<Shape>{RectangleShape{{120, 80, 40, 60}, "#ff0000", 4, false},
                                            TextShape{121, 83, 30, Align::Left, false, "#ffffff", "deep"}}));
}

TEST_F(Shapes, NegativeScaleMirrors) {
    Container& mirrored = add(100, 100);
    mirrored.scaleX = -1;
    mirrored.scaleY = -2;
    rectangle(mirrored, 30, 40);
    EXPECT_EQ(std::get<RectangleShape>(shapes().at(0)).box, (Box{70, 20, 30, 80}));
}

TEST_F(Shapes, InvisibleContainerHidesEverythingBelow) {
    Container& hidden = add(0, 0);
    hidden.isVisible = false;
    rectangle(hidden, 10, 10);
    text(add(0, 0, hidden.id), "below");
    text(add(0, 0), "beside");
    const auto all = shapes();
    ASSERT_EQ(all.size(), 1U);
    EXPECT_EQ(std::get<TextShape>(all[0]).text, "beside");
}

TEST_F(Shapes, ContainersCoverThoseAboveAndBeforeThem) {
    Container& first = add(0, 0);
    text(first, "1");
    const int firstId = first.id;
    Container& below = add(0, 0, firstId);
    text(below, "1.1");
    text(add(0, 0, below.id), "1.1.1");
    text(add(0, 0, firstId), "1.2");
    text(add(0, 0), "2");
    std::string order;
    for (const Shape& shape : shapes())
        order += std::get<TextShape>(shape).text + ' ';
    EXPECT_EQ(order, "1 1.1 1.1.1 1.2 2 ");
}

TEST_F(Shapes, TextHasItsLook) {
    Geometry& geometry = text(add(5, 6), "Grüße");
    geometry.align = "middle";
    geometry.isBold = true;
    geometry.fontSize = 20;
    geometry.colour = "#112233";
    EXPECT_EQ(shapes(), (std::vector<Shape>{TextShape{5, 6, 20, Align::Middle, true, "#112233", "Grüße"}}));
    EXPECT_DOUBLE_EQ(std::get<TextShape>(shapes()[0]).baseline(), 22);
}

TEST_F(Shapes, LinesOfTextAreApart) {
    Geometry& geometry = text(add(5, 6), "one\r\n\ntwo\n");
    geometry.fontSize = 10;
    geometry.align = "right";
    EXPECT_EQ(shapes(), (std::vector<Shape>{TextShape{5, 6, 10, Align::Right, false, "#ffffff", "one"},
                                            TextShape{5, 30, 10, Align::Right, false, "#ffffff", "two"}}));
}

TEST_F(Shapes, TextsHoldPrintableCharactersOnly) {
    text(add(0, 0), "a\tb\x1b[2Jc\x7f\xc2\x9b");
    text(add(0, 0), "\xff ok \xc3");
    text(add(0, 0), "\xef\xbf\xbf\xef\xbf\xbe\xf0\x9f\x98\x80");
    const auto all = shapes();
    ASSERT_EQ(all.size(), 3U);
    EXPECT_EQ(std::get<TextShape>(all[0]).text, "a b [2Jc  ");
    EXPECT_EQ(std::get<TextShape>(all[1]).text, "? ok ?");
    EXPECT_EQ(std::get<TextShape>(all[2]).text, "  \xf0\x9f\x98\x80");
}

TEST_F(Shapes, PictureHasItsBoxAndName) {
    image(add(7, 8), "sun.svg").colour = "#abcdef";
    EXPECT_EQ(shapes(), (std::vector<Shape>{PictureShape{{7, 8, 48, 24}, "sun.svg", "#abcdef"}}));
}

TEST_F(Shapes, WhatHasNoSizeIsLeftOut) {
    rectangle(add(0, 0), 0, 10);
    rectangle(add(0, 0), 10, 0);
    rectangle(add(0, 0), 10, -5).growsUp = true;
    image(add(0, 0), "sun.svg").width = 0;
    text(add(0, 0), "x").fontSize = 0;
    Container& flat = add(0, 0);
    flat.scaleX = 0;
    text(flat, "x");
    rectangle(add(0, 0, flat.id), 10, 10);
    EXPECT_TRUE(shapes().empty());
}

TEST_F(Shapes, WhatHasNothingToShowIsLeftOut) {
    text(add(0, 0), "");
    image(add(0, 0), "");
    rectangle(add(0, 0), 10, 10).colour = "none";
    rectangle(add(0, 0), 10, 10).colour = "";
    text(add(0, 0), "x").colour = "none";
    EXPECT_TRUE(shapes().empty());
}

TEST_F(Shapes, WhatHasNoNumberForAPlaceIsLeftOut) {
    rectangle(add(nan, 0), 10, 10);
    rectangle(add(0, infinity), 10, 10);
    rectangle(add(0, 0), infinity, 10);
    rectangle(add(0, 0), nan, 10);
    text(add(nan, 0), "x");
    text(add(0, 0), "x").fontSize = infinity;
    image(add(0, -infinity), "sun.svg");
    Geometry& odd = rectangle(add(0, 0), 10, 10);
    odd.radius = nan;
    EXPECT_EQ(shapes(), (std::vector<Shape>{RectangleShape{{0, 0, 10, 10}, "#ff0000", 0, false}}));
}

TEST_F(Shapes, GeometryOfATypeOfItsOwnShowsItsTextElseItsPicture) {
    Geometry& texted = scene.addGeometry(add(0, 0), "Clock");
    texted.text = "12:00";
    texted.picture = "clock.svg";
    Geometry& pictured = scene.addGeometry(add(0, 0), "Clock");
    pictured.picture = "clock.svg";
    pictured.width = pictured.height = 10;
    scene.addGeometry(add(0, 0), "REFERENCE");
    const auto all = shapes();
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(std::get<TextShape>(all[0]).text, "12:00");
    EXPECT_EQ(std::get<PictureShape>(all[1]).name, "clock.svg");
}

TEST_F(Shapes, ScenesMayBeDeep) {
    int id = -1;
    for (int depth = 0; depth < 100'000; ++depth)
        id = add(1, 2, id).id;
    text(*scene.container(id), "bottom");
    const auto all = shapes();
    ASSERT_EQ(all.size(), 1U);
    EXPECT_EQ(std::get<TextShape>(all[0]).x, 100'000);
    EXPECT_EQ(std::get<TextShape>(all[0]).top, 200'000);
}
