#include <kor/Modules.h>
#include <support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace {

std::string errorOf(Modules& modules, const std::string& kind) {
    try {
        modules.find(kind);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "nothing";
}

TEST(KorModules, AreLoadedOnce) {
    Modules modules(KOR_TEST_MODULES);
    const auto create = modules.find("Trial");
    EXPECT_NE(create, nullptr);
    EXPECT_EQ(modules.find("Trial"), create);
    EXPECT_NE(modules.find("Second"), create);
}

TEST(KorModules, StayWithinTheirFolder) {
    Modules modules(KOR_TEST_MODULES);
    for (const char* name : {"../loaded/Trial", "/tmp/Trial", "loaded\\Trial", "C:Trial"})
        EXPECT_EQ(errorOf(modules, name), "no kind of plug-in has such a name") << name;
}

TEST(KorModules, TellWhatIsMissing) {
    Modules modules(KOR_TEST_MODULES);
    const std::string missing = errorOf(modules, "Missing");
    EXPECT_EQ(missing.find("there is no module "), 0U) << missing;
    EXPECT_NE(missing.find("Missing."), std::string::npos) << missing;
    EXPECT_NE(errorOf(modules, "Neither").find(" exports no korCreatePlugin"), std::string::npos);
}

TEST(KorModules, TellFilesThatAreNoLibraries) {
    const TemporaryFolder folder;
    folder.write("Broken.so", "text");
    folder.write("Broken.dll", "text");
    Modules modules(folder.path());
    const std::string error = errorOf(modules, "Broken");
    EXPECT_NE(error.find("Broken."), std::string::npos) << error;
    EXPECT_EQ(error.find('\n'), std::string::npos) << error;
}

} // namespace
