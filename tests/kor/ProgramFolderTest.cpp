#include <kor/ProgramFolder.h>
#include <support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace {

struct KorPluginFolder : testing::Test {
    KorPluginFolder() { std::filesystem::create_directory(program); }

    static std::string preferred(const std::filesystem::path& path) {
        return std::filesystem::path(path).lexically_normal().make_preferred().string();
    }

    TemporaryFolder prefix;
    std::filesystem::path program = prefix.path("bin");
    std::filesystem::path beside = program / "plugins";
    std::filesystem::path installed = program / KOR_INSTALLED_PLUGINS;
};

TEST_F(KorPluginFolder, IsWhereAnInstallationPutsIt) {
    std::filesystem::create_directories(installed.lexically_normal());
    EXPECT_EQ(preferred(pluginFolderOf(program.string())), preferred(installed));
}

TEST_F(KorPluginFolder, IsBesideTheProgramFirst) {
    std::filesystem::create_directories(installed.lexically_normal());
    std::filesystem::create_directories(beside);
    EXPECT_EQ(preferred(pluginFolderOf(program.string())), preferred(beside));
}

TEST_F(KorPluginFolder, IsExpectedBesideTheProgramWhenThereIsNone) {
    EXPECT_EQ(preferred(pluginFolderOf(program.string())), preferred(beside));
}

} // namespace
