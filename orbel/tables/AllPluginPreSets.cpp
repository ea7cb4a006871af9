#include "AllPluginPreSets.h"

#include <orbel/foundation/AutoLock.h>

#include "PrintingTableListener.h"
#include "TableFile.h"
#include "TableText.h"

#include <cstdlib>
#include <utility>
#include <vector>

namespace {

using tables::LineUse;

constexpr std::size_t shortestLine = 3;

} // namespace

AllPluginPreSets::AllPluginPreSets(std::string_view folder) {
    tables::PrintingTableListener listener("PreSets", "plugin");
    const char* variable = std::getenv("QX_OBJECTS_DIR");
    // Contract: always a slash, and the folder as it is written.
    readFile((variable ? std::string(variable) : std::string(folder)) + "/QX_PreSets.csv", listener);
}

PluginPreSets* AllPluginPreSets::find(std::string_view pluginName) const {
    const auto plugin = m_plugins.find(pluginName);
    return plugin == m_plugins.end() ? nullptr : plugin->second.get();
}

void AllPluginPreSets::readFile(const std::string& path, tables::TableListener& listener) {
    const QX::AutoLock hold(m_lock);
    tables::TableFile file(path, shortestLine, listener);
    PluginPreSets* current = nullptr;
    while (const auto line = file.next()) {
        std::string_view name;
        LineUse use = LineUse::rowOutside;
        // Most lines are no marker.
        const bool mayBeMarker = line->starts_with('_');
        if (const auto plugin = mayBeMarker ? tables::readName(*line, "__PLUGIN__") : std::nullopt) {
            name = *plugin;
            use = openSection(name, current);
        } else if (current) {
            use = readFields(*line, *current, name);
        }
        listener.onLine(*line, use, name);
    }
}

LineUse AllPluginPreSets::openSection(std::string_view pluginName, PluginPreSets*& current) {
    if (pluginName.empty())
        return LineUse::sectionWithoutName;
    auto [plugin, isNew] = m_plugins.try_emplace(std::string(pluginName));
    if (isNew)
        plugin->second = std::make_unique<PluginPreSets>();
    const bool isCurrent = current == plugin->second.get();
    current = plugin->second.get();
    if (isNew)
        return LineUse::sectionNew;
    return isCurrent ? LineUse::sectionCurrent : LineUse::sectionAgain;
}

/// `name` becomes that of a preset.
LineUse AllPluginPreSets::readFields(std::string_view line, PluginPreSets& presets, std::string_view& name) {
    const bool isHeader = presets.m_nameColumn == PluginPreSets::noHeader;
    const std::size_t rows = presets.m_rows.size();
    std::vector<std::string> fields;
    fields.reserve(presets.m_columns.size());
    tables::forEachField(line, ',',
                         [&](std::string_view field) { fields.emplace_back(tables::normalizeValue(field)); });
    presets.readLine(std::move(fields));
    if (presets.m_nameColumn < 0)
        return isHeader ? LineUse::headerWithoutName : LineUse::rowWithoutHeader;
    if (isHeader)
        return LineUse::header;
    if (presets.m_rows.size() == rows)
        return LineUse::rowTooShort;
    name = presets.m_rows.back()[static_cast<std::size_t>(presets.m_nameColumn)];
    return LineUse::row;
}
