#ifndef ORBEL_TABLES_ALLPLUGINPRESETS_H
#define ORBEL_TABLES_ALLPLUGINPRESETS_H

#include <orbel/foundation/Lock.h>
#include <orbel/tables/PluginPreSets.h>

#include "TableListener.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>

/// The presets of all kinds of plug-ins, from the file "QX_PreSets.csv".
class AllPluginPreSets {
public:
    using Plugins = std::map<std::string, std::unique_ptr<PluginPreSets>, std::less<>>;

    AllPluginPreSets() = default;
    /// `folder` is one folder; the environment variable QX_OBJECTS_DIR goes before it. Without the file there are no
    /// presets.
    explicit AllPluginPreSets(std::string_view folder);

    /// Adds the presets of a file; of none when it cannot be opened.
    void readFile(const std::string& path, tables::TableListener& listener);

    const Plugins& all() const { return m_plugins; }

    /// The presets of the plug-in of exactly this name; null when it has none.
    PluginPreSets* find(std::string_view pluginName) const;

private:
    tables::LineUse openSection(std::string_view pluginName, PluginPreSets*& current);
    static tables::LineUse readFields(std::string_view line, PluginPreSets& presets, std::string_view& name);

    Plugins m_plugins;
    QX::Lock m_lock;
};

#endif
