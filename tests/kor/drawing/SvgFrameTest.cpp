#include <kor/SvgFrame.h>

#include <support/WorkingFolder.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace {

std::string contentOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::string startOf(const std::string& title) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"200\" height=\"100\" viewBox=\"0 0 200 100\" "
           "font-family=\"Inter, 'Segoe UI', 'Helvetica Neue', Arial, 'DejaVu Sans', sans-serif\">\n"
           "<title>" +
           title + "</title>\n";
}

const std::string background = "<rect x=\"0\" y=\"0\" width=\"200\" height=\"100\" fill=\"#001122\"/>\n";

Frame frameWith(std::vector<Shape> shapes) {
    return {"Show", 200, 100, "#001122", std::move(shapes)};
}

class SvgFrames : public testing::Test {
protected:
    std::string draw(std::vector<Shape> shapes) { return svg.draw(frameWith(std::move(shapes))); }

    WorkingFolder folder;
    SvgFrame svg{"frame.svg"};
};

} // namespace

TEST_F(SvgFrames, EmptyFrameIsItsBackground) {
    EXPECT_EQ(draw({}), startOf("Show") + background + "</svg>\n");
}

TEST_F(SvgFrames, DrawsRectangles) {
    EXPECT_EQ(draw({RectangleShape{{10, 20, 30.5, 40}, "#ff0000", 0, false},
                    RectangleShape{{1, 2, 3, 4}, "#00ff00", 5, true}}),
              startOf("Show") + background +
                  "<rect x=\"10\" y=\"20\" width=\"30.5\" height=\"40\" fill=\"#ff0000\"/>\n"
                  "<rect x=\"1\" y=\"2\" width=\"3\" height=\"4\" fill=\"#00ff00\" rx=\"5\"/>\n</svg>\n");
}

TEST_F(SvgFrames, DrawsTextsOnTheirBaseline) {
    EXPECT_EQ(draw({TextShape{10, 20, 10, TextShape::Align::Left, false, "#ffffff", "left"},
                    TextShape{10, 40, 20, TextShape::Align::Middle, true, "#ffffff", "middle"},
                    TextShape{10, 60, 10, TextShape::Align::Right, false, "#ffffff", "right"}}),
              startOf("Show") + background +
                  "<text x=\"10\" y=\"28\" font-size=\"10\" fill=\"#ffffff\">left</text>\n"
                  "<text x=\"10\" y=\"56\" font-size=\"20\" fill=\"#ffffff\" text-anchor=\"middle\" "
                  "font-weight=\"600\">middle</text>\n"
                  "<text x=\"10\" y=\"68\" font-size=\"10\" fill=\"#ffffff\" text-anchor=\"end\">right</text>\n"
                  "</svg>\n");
}

TEST_F(SvgFrames, TextsAndColoursCannotLeaveTheirElement) {
    Frame frame = frameWith({TextShape{0, 0, 10, TextShape::Align::Left, false, "\"/><g>", "<&\">"}});
    frame.title = "</title>";
    EXPECT_EQ(svg.draw(frame), startOf("&lt;/title&gt;") + background +
                                   "<text x=\"0\" y=\"8\" font-size=\"10\" fill=\"&quot;/&gt;&lt;g&gt;\">"
                                   "&lt;&amp;&quot;&gt;</text>\n</svg>\n");
}

TEST_F(SvgFrames, InlinesEachPictureOnce) {
    folder.makeFolder("pictures");
    folder.write("pictures/sun.svg", "<svg viewBox=\"0 0 64 64\"><circle r=\"9\"/></svg>");
    EXPECT_EQ(
        draw({PictureShape{{1, 2, 3, 4}, "sun.svg", "#ffffff"}, PictureShape{{5, 6, 7, 8}, "sun.svg", "#ffffff"}}),
        startOf("Show") + "<symbol id=\"picture-sun.svg\" viewBox=\"0 0 64 64\"><circle r=\"9\"/></symbol>\n" +
            background +
            "<use href=\"#picture-sun.svg\" x=\"1\" y=\"2\" width=\"3\" height=\"4\"/>\n"
            "<use href=\"#picture-sun.svg\" x=\"5\" y=\"6\" width=\"7\" height=\"8\"/>\n</svg>\n");
}

TEST_F(SvgFrames, MissingPictureLeavesABoxWithItsName) {
    EXPECT_EQ(draw({PictureShape{{10, 20, 40, 60}, "sun.svg", "#eeeeee"}}),
              startOf("Show") + background +
                  "<rect x=\"10\" y=\"20\" width=\"40\" height=\"60\" fill=\"none\" stroke=\"#eeeeee\"/>\n"
                  "<text x=\"30\" y=\"53.6\" font-size=\"12\" fill=\"#eeeeee\" text-anchor=\"middle\">sun.svg</text>\n"
                  "</svg>\n");
}

TEST_F(SvgFrames, WhatIsNoPictureLeavesABox) {
    folder.makeFolder("pictures");
    folder.write("pictures/photo.png", "\x89PNG");
    folder.write("secret.svg", "<svg viewBox=\"0 0 64 64\">secret</svg>");
    for (const char* name : {"photo.png", "../secret.svg", ".", "..", " ", "<b>"})
        EXPECT_NE(draw({PictureShape{{10, 20, 40, 60}, name, "#eeeeee"}}).find("fill=\"none\""), std::string::npos)
            << name;
}

TEST_F(SvgFrames, PictureMayComeLater) {
    const std::vector<Shape> shapes = {PictureShape{{1, 2, 3, 4}, "sun.svg", "#ffffff"}};
    EXPECT_EQ(draw(shapes).find("<use"), std::string::npos);
    folder.makeFolder("pictures");
    folder.write("pictures/sun.svg", "<svg viewBox=\"0 0 64 64\"></svg>");
    EXPECT_NE(draw(shapes).find("<use"), std::string::npos);
}

TEST_F(SvgFrames, ReplacesTheFileAndLeavesNothingBesideIt) {
    folder.write("frame.svg", "something older and longer than a frame");
    ASSERT_TRUE(svg.write(frameWith({})));
    EXPECT_EQ(contentOf("frame.svg"), svg.draw(frameWith({})));
    EXPECT_FALSE(std::filesystem::exists("frame.svg.part"));
}

TEST_F(SvgFrames, WritesChangedFramesOnly) {
    ASSERT_TRUE(svg.write(frameWith({})));
    folder.write("frame.svg", "untouched");
    ASSERT_TRUE(svg.write(frameWith({})));
    EXPECT_EQ(contentOf("frame.svg"), "untouched");
    const Frame changed = frameWith({RectangleShape{{1, 2, 3, 4}, "#00ff00", 0, false}});
    ASSERT_TRUE(svg.write(changed));
    EXPECT_EQ(contentOf("frame.svg"), svg.draw(changed));
}

TEST_F(SvgFrames, TellsWhenItCannotWrite) {
    SvgFrame nowhere("missing/frame.svg");
    EXPECT_FALSE(nowhere.write(frameWith({})));
    folder.makeFolder("missing");
    EXPECT_TRUE(nowhere.write(frameWith({})));
    folder.makeFolder("taken.svg");
    folder.write("taken.svg/full", "");
    EXPECT_FALSE(SvgFrame("taken.svg").write(frameWith({})));
    EXPECT_FALSE(std::filesystem::exists("taken.svg.part"));
}
