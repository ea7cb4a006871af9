#include <kor/Options.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

Options read(std::vector<const char*> words) {
    words.insert(words.begin(), "Kor");
    return readOptions(static_cast<int>(words.size()), words.data());
}

std::string errorOf(const std::vector<const char*>& words) {
    try {
        read(words);
    } catch (const UsageError& error) {
        return error.what();
    }
    return "none";
}

} // namespace

TEST(KorOptions, SceneAloneHasDefaults) {
    const Options options = read({"scene.json"});
    EXPECT_EQ(options.scenePath, "scene.json");
    EXPECT_EQ(options.pluginFolder, "");
    EXPECT_EQ(options.commandsPath, "");
    EXPECT_FALSE(options.port);
    EXPECT_FALSE(options.frames);
    EXPECT_EQ(options.framesPerSecond, 25);
    EXPECT_EQ(options.svgPath, "");
    EXPECT_FALSE(options.quiet || options.dump || options.help || options.version);
}

TEST(KorOptions, ReadsAll) {
    const Options options = read({"--plugins", "mods", "--commands", "-", "--listen", "4000", "--frames", "12", "--fps",
                                  "0.5", "scene.json", "--svg", "out.svg", "--quiet", "--dump"});
    EXPECT_EQ(options.scenePath, "scene.json");
    EXPECT_EQ(options.pluginFolder, "mods");
    EXPECT_EQ(options.commandsPath, "-");
    EXPECT_EQ(options.port, 4000);
    EXPECT_EQ(options.frames, 12);
    EXPECT_EQ(options.framesPerSecond, 0.5);
    EXPECT_EQ(options.svgPath, "out.svg");
    EXPECT_TRUE(options.quiet && options.dump);
}

TEST(KorOptions, HelpAndVersionNeedNoScene) {
    EXPECT_TRUE(read({"--help"}).help);
    EXPECT_TRUE(read({"-h"}).help);
    EXPECT_TRUE(read({"--version"}).version);
}

TEST(KorOptions, SceneIsNeeded) {
    EXPECT_EQ(errorOf({}), "which scene?");
    EXPECT_EQ(errorOf({"--quiet"}), "which scene?");
    EXPECT_EQ(errorOf({"a.json", "b.json"}), "more than one scene");
}

TEST(KorOptions, UnknownOptionsAreNamed) {
    EXPECT_EQ(errorOf({"--colour", "a.json"}), "unknown option --colour");
    EXPECT_EQ(errorOf({"-q", "a.json"}), "unknown option -q");
}

TEST(KorOptions, TextsMustNotMiss) {
    EXPECT_EQ(errorOf({"a.json", "--svg"}), "--svg needs a text");
    EXPECT_EQ(errorOf({"a.json", "--plugins", ""}), "--plugins needs a text");
    EXPECT_EQ(errorOf({"a.json", "--commands"}), "--commands needs a text");
}

TEST(KorOptions, PortsAreInRange) {
    for (const char* port : {"-1", "65536", "", "x", "80x", "99999999999999999999"})
        EXPECT_EQ(errorOf({"--listen", port, "a.json"}), "--listen needs a port from 0 to 65535") << port;
    EXPECT_EQ(read({"--listen", "0", "a.json"}).port, 0);
    EXPECT_EQ(read({"--listen", "65535", "a.json"}).port, 65535);
}

TEST(KorOptions, FramesAreCountedFromOne) {
    for (const char* frames : {"0", "-1", "", "1.5", "x", "99999999999999999999"})
        EXPECT_EQ(errorOf({"--frames", frames, "a.json"}), "--frames needs a whole number from 1") << frames;
    EXPECT_EQ(read({"--frames", "1", "a.json"}).frames, 1);
}

TEST(KorOptions, PaceIsInRange) {
    for (const char* pace : {"-1", "0.001", "1001", "", "x", "nan", "inf", "25fps"})
        EXPECT_EQ(errorOf({"--fps", pace, "a.json"}), "--fps needs 0 or a number from 0.01 to 1000") << pace;
    EXPECT_EQ(read({"--fps", "0", "a.json"}).framesPerSecond, 0);
    EXPECT_EQ(read({"--fps", "1000", "a.json"}).framesPerSecond, 1000);
    EXPECT_EQ(read({"--fps", "0.01", "a.json"}).framesPerSecond, 0.01);
}

TEST(KorOptions, UsageNamesEveryOption) {
    const std::string usage = usageText;
    for (const char* option : {"--plugins DIR", "--commands FILE", "--listen PORT", "--frames N", "--fps N",
                               "--svg FILE", "--quiet", "--dump", "--help", "--version", "SCENE.json"})
        EXPECT_NE(usage.find(option), std::string::npos) << option;
}
