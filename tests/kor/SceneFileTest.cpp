#include <kor/SceneFile.h>
#include <support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <string>

namespace {

/// Texts have ' in the place of ".
std::string quoted(std::string text) {
    for (char& c : text)
        c = c == '\'' ? '"' : c;
    return text;
}

/// What is wrong with a file "f" of this text.
std::string errorOf(const std::string& text, int most = mostContainers) {
    Scene scene;
    try {
        readScene(quoted(text), "f", scene, most);
    } catch (const SceneFileError& error) {
        return error.what();
    }
    return "nothing";
}

std::string errorOfContainer(const std::string& members, int most = mostContainers) {
    return errorOf("{'containers': [{" + members + "}]}", most);
}

TEST(KorSceneFile, HasEveryKeyOfTheScene) {
    Scene scene;
    readScene(quoted("{'scene': 'Show/Board', 'size': [320, 200.5], 'background': '#112233', 'containers': []}"), "f",
              scene);
    EXPECT_EQ(scene.name, "Show/Board");
    EXPECT_EQ(scene.width, 320);
    EXPECT_EQ(scene.height, 200.5);
    EXPECT_EQ(scene.background, "#112233");
    EXPECT_TRUE(scene.tops().empty());
}

TEST(KorSceneFile, HasEveryKeyOfContainersAndGeometries) {
    Scene scene;
    readScene(quoted("{'containers': [{'name': 'a', 'position': [1, -2], 'scale': [3, 0.5], 'visible': false,"
                     "'geometry': {'type': 'TEXT', 'text': 't', 'picture': 'p', 'colour': '#010203', 'align': 'middle',"
                     "'bold': true, 'width': 4, 'height': 5, 'size': 6, 'radius': 7, 'growsUp': true},"
                     "'children': [{'name': 'b'}, {}]}]}"),
              "f", scene);
    const Container& a = *scene.container(scene.find("a"));
    EXPECT_EQ(a.x, 1);
    EXPECT_EQ(a.y, -2);
    EXPECT_EQ(a.scaleX, 3);
    EXPECT_EQ(a.scaleY, 0.5);
    EXPECT_FALSE(a.isVisible);
    EXPECT_EQ(a.children.size(), 2U);
    EXPECT_EQ(scene.find("a/b"), a.children[0]);
    const Geometry& geometry = *a.geometry;
    EXPECT_EQ(geometry.type, "TEXT");
    EXPECT_EQ(geometry.text, "t");
    EXPECT_EQ(geometry.picture, "p");
    EXPECT_EQ(geometry.colour, "#010203");
    EXPECT_EQ(geometry.align, "middle");
    EXPECT_TRUE(geometry.isBold);
    EXPECT_EQ(geometry.width, 4);
    EXPECT_EQ(geometry.height, 5);
    EXPECT_EQ(geometry.fontSize, 6);
    EXPECT_EQ(geometry.radius, 7);
    EXPECT_TRUE(geometry.growsUp);
    EXPECT_EQ(geometry.plugin, -1);
    const Container& plain = *scene.container(a.children[1]);
    EXPECT_EQ(plain.name, "");
    EXPECT_TRUE(plain.isVisible);
    EXPECT_EQ(plain.scaleX, 1);
    EXPECT_EQ(plain.geometry, nullptr);
}

TEST(KorSceneFile, HasSettingsOfPlugInsAsTexts) {
    Scene scene;
    readScene(quoted("{'containers': [{'name': 'a', 'plugins': [{'kind': 'DataBar', 'FieldName': 'x', 'InMax': 1.5,"
                     "'OutMax': 20, 'Clamp': true, 'Other': false}, {'kind': 'DataText'}]}]}"),
              "f", scene);
    const int a = scene.find("a");
    const PlugIn& bar = *scene.plugIn(scene.plugInOn(a, "DataBar"));
    EXPECT_EQ(bar.settings,
              (KorSettings{{"Clamp", "1"}, {"FieldName", "x"}, {"InMax", "1.5"}, {"Other", "0"}, {"OutMax", "20"}}));
    EXPECT_TRUE(scene.plugIn(scene.plugInOn(a, "DataText"))->settings.empty());
}

TEST(KorSceneFile, MakesPlugInsOfGeometriesOfOtherTypes) {
    Scene scene;
    readScene(quoted("{'containers': [{'geometry': {'type': 'Shape', 'settings': {'FieldName': 'x'}}},"
                     "{'geometry': {'type': 'REFERENCE'}}]}"),
              "f", scene);
    const PlugIn& plugIn = *scene.plugIn(scene.container(scene.tops()[0])->geometry->plugin);
    EXPECT_EQ(plugIn.kind, "Shape");
    EXPECT_EQ(plugIn.settings, (KorSettings{{"FieldName", "x"}}));
    EXPECT_TRUE(scene.container(scene.tops()[0])->plugins.empty());
    EXPECT_EQ(scene.container(scene.tops()[1])->geometry->plugin, -1);
}

TEST(KorSceneFile, RepeatsContainersWithWhatIsBelow) {
    Scene scene;
    readScene(quoted("{'containers': [{'name': 'row', 'repeat': 3, 'position': [1, 2], 'step': [10, 20],"
                     "'plugins': [{'kind': 'X'}], 'children': [{'name': 'cell', 'repeat': 2}]}]}"),
              "f", scene);
    ASSERT_EQ(scene.tops().size(), 3U);
    const Container& last = *scene.container(scene.tops()[2]);
    EXPECT_EQ(last.name, "row2");
    EXPECT_EQ(last.x, 21);
    EXPECT_EQ(last.y, 42);
    EXPECT_EQ(scene.container(scene.find("row0"))->x, 1);
    EXPECT_EQ(scene.find("row2/cell1"), last.children[1]);
    EXPECT_EQ(scene.allPlugIns().size(), 3U);
}

TEST(KorSceneFile, TellsWrongTypesByTheirPlace) {
    EXPECT_EQ(errorOf("[]"), "f: /: must be an object");
    EXPECT_EQ(errorOf("{}"), "f: /: needs containers");
    EXPECT_EQ(errorOf("{'containers': {}}"), "f: /containers: must be a list");
    EXPECT_EQ(errorOf("{'scene': 1, 'containers': []}"), "f: /scene: must be a text");
    EXPECT_EQ(errorOf("{'size': [1], 'containers': []}"), "f: /size: must be a list of two numbers");
    EXPECT_EQ(errorOf("{'size': ['1', 2], 'containers': []}"), "f: /size/0: must be a number");
    EXPECT_EQ(errorOf("{'size': [100, 0], 'containers': []}"), "f: /size: must be at least 1 by 1");
    EXPECT_EQ(errorOf("{'background': [], 'containers': []}"), "f: /background: must be a text");
    EXPECT_EQ(errorOf("{'containers': [{}, 1]}"), "f: /containers/1: must be an object");
    EXPECT_EQ(errorOfContainer("'name': 1"), "f: /containers/0/name: must be a text");
    EXPECT_EQ(errorOfContainer("'position': 1"), "f: /containers/0/position: must be a list of two numbers");
    EXPECT_EQ(errorOfContainer("'position': [1, null]"), "f: /containers/0/position/1: must be a number");
    EXPECT_EQ(errorOfContainer("'scale': [1, 2, 3]"), "f: /containers/0/scale: must be a list of two numbers");
    EXPECT_EQ(errorOfContainer("'step': {}"), "f: /containers/0/step: must be a list of two numbers");
    EXPECT_EQ(errorOfContainer("'visible': 1"), "f: /containers/0/visible: must be true or false");
    EXPECT_EQ(errorOfContainer("'children': 'x'"), "f: /containers/0/children: must be a list");
    EXPECT_EQ(errorOfContainer("'children': [{'children': [[]]}]"),
              "f: /containers/0/children/0/children/0: must be an object");
    EXPECT_EQ(errorOfContainer("'plugins': {}"), "f: /containers/0/plugins: must be a list");
    EXPECT_EQ(errorOfContainer("'plugins': ['X']"), "f: /containers/0/plugins/0: must be an object");
    EXPECT_EQ(errorOfContainer("'plugins': [{}]"), "f: /containers/0/plugins/0: needs a kind");
    EXPECT_EQ(errorOfContainer("'plugins': [{'kind': ''}]"), "f: /containers/0/plugins/0: needs a kind");
    EXPECT_EQ(errorOfContainer("'plugins': [{'kind': 1}]"), "f: /containers/0/plugins/0/kind: must be a text");
    EXPECT_EQ(errorOfContainer("'plugins': [{'kind': 'X', 'A/b~c': null}]"),
              "f: /containers/0/plugins/0/A~1b~0c: must be a text, a number, true or false");
    EXPECT_EQ(errorOfContainer("'geometry': []"), "f: /containers/0/geometry: must be an object");
    EXPECT_EQ(errorOfContainer("'geometry': {}"), "f: /containers/0/geometry: needs a type");
    EXPECT_EQ(errorOfContainer("'geometry': {'type': 'X', 'settings': []}"),
              "f: /containers/0/geometry/settings: must be an object");
}

TEST(KorSceneFile, TellsWrongTypesOfGeometries) {
    const auto errorOfGeometry = [](const std::string& member) {
        return errorOfContainer("'geometry': {'type': 'TEXT', " + member + '}');
    };
    for (const std::string key : {"text", "picture", "colour", "align"})
        EXPECT_EQ(errorOfGeometry('\'' + key + "': 1"), "f: /containers/0/geometry/" + key + ": must be a text");
    for (const std::string key : {"width", "height", "size", "radius"})
        EXPECT_EQ(errorOfGeometry('\'' + key + "': '1'"), "f: /containers/0/geometry/" + key + ": must be a number");
    for (const std::string key : {"bold", "growsUp"})
        EXPECT_EQ(errorOfGeometry('\'' + key + "': 1"), "f: /containers/0/geometry/" + key + ": must be true or false");
    EXPECT_EQ(errorOfGeometry("'align': 'centre'"), "f: /containers/0/geometry/align: must be left, middle or right");
}

TEST(KorSceneFile, TellsUnknownKeys) {
    EXPECT_EQ(errorOf("{'container': []}"), "f: /container: is unknown; known are scene, size, background, containers");
    EXPECT_EQ(errorOfContainer("'x': 1"), "f: /containers/0/x: is unknown; known are name, position, scale, visible, "
                                          "geometry, plugins, children, repeat, step");
    EXPECT_EQ(errorOfContainer("'geometry': {'type': 'TEXT', 'color': ''}"),
              "f: /containers/0/geometry/color: is unknown; known are type, text, picture, colour, align, bold, width, "
              "height, size, radius, growsUp, settings");
}

TEST(KorSceneFile, TellsTheLineOfBadJson) {
    EXPECT_EQ(errorOf("{\n'containers': [\n}"),
              "f: line 3: is no JSON: unexpected '}'; expected '[', '{', or a literal");
    EXPECT_EQ(errorOf(""), "f: line 1: is no JSON: unexpected end of input; expected '[', '{', or a literal");
    EXPECT_EQ(errorOf("{'a': 1}\n\nx").substr(0, 24), "f: line 3: is no JSON: i");
    EXPECT_EQ(errorOf("{'size': [1e999, 1]}"), "f: is no JSON: number overflow parsing '1e999'");
    EXPECT_EQ(errorOf("{'scene': '\xff'}").find('\n'), std::string::npos);
}

TEST(KorSceneFile, LimitsRepeat) {
    for (const std::string number : {"0", "-1", "1.5", "100001", "1e300", "-1e300"})
        EXPECT_EQ(errorOfContainer("'repeat': " + number),
                  "f: /containers/0/repeat: must be a whole number from 1 to 100000");
    EXPECT_EQ(errorOfContainer("'repeat': '3'"), "f: /containers/0/repeat: must be a number");
    EXPECT_EQ(errorOfContainer("'repeat': 100000"), "nothing");
}

TEST(KorSceneFile, LimitsTheNumberOfContainers) {
    EXPECT_EQ(mostContainers, 1'000'000);
    const auto errorWithAtMost = [](int most) {
        return errorOfContainer("'repeat': 3, 'children': [{'name': 'first'}, {'repeat': 10}]", most);
    };
    EXPECT_EQ(errorWithAtMost(36), "nothing");
    EXPECT_EQ(errorWithAtMost(35), "f: /containers/0/children/1: is container 36, 35 is the most");
    EXPECT_EQ(errorWithAtMost(12), "f: /containers/0: is container 13, 12 is the most");
    EXPECT_EQ(errorWithAtMost(1), "f: /containers/0/children/0: is container 2, 1 is the most");
}

#ifdef KOR_AT_FULL_SPEED
TEST(KorSceneFile, LimitsTheNumberOfContainersToAMillion) {
    EXPECT_EQ(errorOfContainer("'repeat': 100000, 'children': [{'repeat': 100000}]"),
              "f: /containers/0/children/0: is container 1000001, 1000000 is the most");
}
#endif

TEST(KorSceneFile, LimitsDepth) {
    const auto nested = [](int levels) {
        std::string text;
        for (int level = 1; level < levels; ++level)
            text = "'children': [{" + text + "}]";
        return errorOfContainer(text);
    };
    EXPECT_EQ(nested(1000), "nothing");
    const std::string tooDeep = nested(1001);
    EXPECT_EQ(tooDeep.substr(tooDeep.size() - 42), "/0/children: is more than 1000 levels deep");
    EXPECT_NE(errorOf(std::string(200'000, '[')), "nothing");
}

TEST(KorSceneFile, LimitsPlugIns) {
    EXPECT_EQ(errorOfContainer("'plugins': [{'kind': 'X'}, {'kind': 'Y'}, {'kind': 'X'}]"),
              "f: /containers/0/plugins/2: is the second X on this container");
    std::string plugIns = "{'kind': 'K'}";
    for (char kind = 'a'; kind < 'a' + 19; ++kind)
        plugIns += std::string(", {'kind': '") + kind + "'}";
    EXPECT_EQ(errorOfContainer("'plugins': [" + plugIns + ']'), "nothing");
    EXPECT_EQ(errorOfContainer("'plugins': [" + plugIns + ", {'kind': 'Z'}]"),
              "f: /containers/0/plugins/20: is one more than the 20 that a container may have");
}

TEST(KorSceneFile, TellsFilesThatCannotBeRead) {
    const TemporaryFolder folder;
    const auto errorOfFile = [](const std::string& path) -> std::string {
        Scene scene;
        try {
            readSceneFile(path, scene);
        } catch (const SceneFileError& error) {
            return error.what();
        }
        return "nothing";
    };
    EXPECT_EQ(errorOfFile(folder.path("none")), folder.path("none") + ": cannot be read");
    EXPECT_EQ(errorOfFile(folder.path()), folder.path() + ": is a folder");
    const std::string empty = folder.write("empty", "");
    EXPECT_EQ(errorOfFile(empty),
              empty + ": line 1: is no JSON: unexpected end of input; expected '[', '{', or a literal");
    EXPECT_EQ(errorOfFile(folder.write("right", quoted("{'containers': []}"))), "nothing");
}

} // namespace
