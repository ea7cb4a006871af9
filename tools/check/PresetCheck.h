#ifndef ORBEL_TOOLS_CHECK_PRESETCHECK_H
#define ORBEL_TOOLS_CHECK_PRESETCHECK_H

#include <orbel/tables/AllPluginPreSets.h>
#include <tools/check/MarkerCheck.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Reads files of presets as the library does.
class PresetCheck : private MarkerCheck {
public:
    explicit PresetCheck(Findings& findings);

    /// Throws Trouble when the file cannot be read.
    void read(const std::string& path);

private:
    struct Plugin {
        std::vector<std::string> header;
        LinePlace headerPlace;
        /// Its header has no column "Name".
        bool isHeadless = false;
        std::map<std::string, LinePlace, std::less<>> presets;
    };

    void onSectionAgain() override;
    void remember(tables::LineUse use, std::string_view what) override;
    void onOtherLine(tables::LineUse use, Effect effect, std::string_view what) override;
    std::string_view kindOf(tables::LineUse use) const override;

    Plugin& current() { return m_plugins[m_plugin]; }
    std::vector<std::string_view> fields() const;
    void checkHeader(bool hasName);
    void checkPreset(std::string_view name);
    void checkFieldCount();

    AllPluginPreSets m_presets;
    std::map<std::string, Plugin, std::less<>> m_plugins;
    bool m_isInSection = false;
    std::string m_plugin;
    /// The section before the current one; null when there is none in the file.
    const Plugin* m_pluginBefore = nullptr;
    /// The preset of this name that the current line repeats.
    const LinePlace* m_before = nullptr;
};

#endif
