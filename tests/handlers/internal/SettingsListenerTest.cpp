#include <orbel/handlers/Settings.h>

#include <support/TemporaryFolder.h>

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

class Report : public SettingsListener {
public:
    void onLine(std::string_view line, SettingUse use, std::string_view key) override {
        text += line;
        heard.emplace_back(use, key);
    }

    std::string text;
    std::vector<std::pair<SettingUse, std::string>> heard;
};

} // namespace

TEST(SettingsListener, HearsEachLine) {
    const std::string bytes = "# note\n\nMultiOrbel = 1\n RefreshAlways=0\nrefreshalwaysnot = 0\nColour=red\nlast";
    const TemporaryFolder folder;
    Settings settings;
    Report report;
    ASSERT_TRUE(readSettingsFile(folder.write("Orbel.ini", bytes).c_str(), settings, &report));
    EXPECT_EQ(report.text, bytes);
    EXPECT_EQ(report.heard, (std::vector<std::pair<SettingUse, std::string>>{{SettingUse::comment, ""},
                                                                             {SettingUse::withoutEquals, ""},
                                                                             {SettingUse::setting, "MultiOrbel"},
                                                                             {SettingUse::unknownKey, ""},
                                                                             {SettingUse::setting, "RefreshAlways"},
                                                                             {SettingUse::unknownKey, ""},
                                                                             {SettingUse::withoutEquals, ""}}));
    EXPECT_EQ(settings.multiOrbel, 1);
    EXPECT_FALSE(settings.refreshAlways);
}

TEST(SettingsListener, HearsPiecesOfLongLines) {
    const TemporaryFolder folder;
    Settings settings;
    Report report;
    const std::string line = "#" + std::string(510, 'x') + "RefreshAlways=0\n";
    ASSERT_TRUE(readSettingsFile(folder.write("Orbel.ini", line).c_str(), settings, &report));
    EXPECT_EQ(report.heard, (std::vector<std::pair<SettingUse, std::string>>{{SettingUse::comment, ""},
                                                                             {SettingUse::setting, "RefreshAlways"}}));
    EXPECT_FALSE(settings.refreshAlways);
}

TEST(SettingsListener, HearsNothingWithoutAFile) {
    const TemporaryFolder folder;
    Settings settings;
    Report report;
    EXPECT_FALSE(readSettingsFile(folder.path("Orbel.ini").c_str(), settings, &report));
    EXPECT_TRUE(report.heard.empty());
}

TEST(SettingNames, AreKeysOfTheFile) {
    const std::vector<std::string_view> names = settingNames();
    EXPECT_EQ(names, (std::vector<std::string_view>{"MultiOrbel", "Nof_Extra_Types", "ConfigurationFolder",
                                                    "RefreshAlways", "CheckMaterialIfExists", "CheckImageIfExists"}));
}
