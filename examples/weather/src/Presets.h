#ifndef WEATHER_PRESETS_H
#define WEATHER_PRESETS_H

#include <string>
#include <vector>

class PluginPreSets;

/// One named preset of a kind of plug-in. What the presets file lacks throws an InputError that says so.
class Preset {
public:
    Preset(const std::string& plugin, const std::string& name);

    const std::string& text(const char* variable) const;
    double number(const char* variable) const;

private:
    [[noreturn]] void fail(const std::string& what) const;

    std::string m_title;
    PluginPreSets* m_presets;
    const std::vector<std::string>* m_row = nullptr;
};

#endif
