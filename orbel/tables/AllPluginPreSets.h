#ifndef ORBEL_TABLES_ALLPLUGINPRESETS_H
#define ORBEL_TABLES_ALLPLUGINPRESETS_H

#include <orbel/foundation/Lock.h>
#include <orbel/tables/PluginPreSets.h>

#include <memory>
#include <string_view>

/// The presets of all kinds of plug-ins, from the file "QX_PreSets.csv".
class AllPluginPreSets {
public:
    /// `folder` is one folder; the environment variable QX_OBJECTS_DIR goes before it. Without the file there are no
    /// presets.
    explicit AllPluginPreSets(std::string_view folder);

    /// The presets of the plug-in of exactly this name; null when it has none.
    PluginPreSets* find(std::string_view pluginName) const;

private:
    void readFile(const std::string& path);
    PluginPreSets& presetsFor(std::string_view pluginName);

    std::map<std::string, std::unique_ptr<PluginPreSets>, std::less<>> m_plugins;
    QX::Lock m_lock;
};

#endif
