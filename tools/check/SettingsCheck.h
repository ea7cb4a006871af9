#ifndef ORBEL_TOOLS_CHECK_SETTINGSCHECK_H
#define ORBEL_TOOLS_CHECK_SETTINGSCHECK_H

#include <orbel/handlers/Settings.h>
#include <tools/check/LineCheck.h>

#include <map>
#include <string>
#include <string_view>

/// Reads a settings file as the library does.
class SettingsCheck : private SettingsListener, private LineCheck {
public:
    explicit SettingsCheck(Findings& findings);

    /// Throws Trouble when the file cannot be read.
    void read(const std::string& path);

    /// As the library takes it: one folder, or a list of them.
    const std::string& configurationFolder() const { return m_folder; }
    /// Looks at the configured folders, relative to `base`.
    void checkFolders(const std::string& base);

private:
    void onLine(std::string_view line, SettingUse use, std::string_view key) override;

    void checkWithoutEquals();
    void checkUnknownKey();
    void checkSetting(std::string_view key);
    void checkNumber(std::string_view key, std::string_view value);
    void checkFolder(std::string_view value);

    std::string m_folder = ".";
    std::map<std::string_view, LinePlace> m_set;
};

#endif
