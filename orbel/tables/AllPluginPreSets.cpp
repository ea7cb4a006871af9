#include "AllPluginPreSets.h"

#include <orbel/foundation/AutoLock.h>

#include "TableFile.h"
#include "TableText.h"

#include <cstdlib>
#include <iostream>

namespace {

constexpr std::size_t shortestLine = 3;

std::vector<std::string> fieldsOf(std::string_view line) {
    std::vector<std::string> texts;
    texts.reserve(tables::countFields(line, ','));
    tables::forEachField(line, ',', [&](std::string_view field) { texts.emplace_back(tables::normalizeValue(field)); });
    return texts;
}

} // namespace

AllPluginPreSets::AllPluginPreSets(std::string_view folder) {
    const QX::AutoLock hold(m_lock);
    const char* variable = std::getenv("QX_OBJECTS_DIR");
    // Contract: always a slash, and the folder as it is written.
    readFile((variable ? std::string(variable) : std::string(folder)) + "/QX_PreSets.csv");
}

PluginPreSets* AllPluginPreSets::find(std::string_view pluginName) const {
    const auto plugin = m_plugins.find(pluginName);
    return plugin == m_plugins.end() ? nullptr : plugin->second.get();
}

void AllPluginPreSets::readFile(const std::string& path) {
    tables::TableFile file(path, shortestLine);
    if (!file.isOpen())
        return;
    std::cout << "\nReading Orbel PreSets file " << path << std::endl;
    PluginPreSets* current = nullptr;
    while (const auto line = file.next()) {
        if (const auto plugin = tables::readName(*line, "__PLUGIN__")) {
            if (!plugin->empty())
                current = &presetsFor(*plugin);
        } else if (current) {
            current->readLine(fieldsOf(*line));
        }
    }
}

PluginPreSets& AllPluginPreSets::presetsFor(std::string_view pluginName) {
    auto [plugin, isNew] = m_plugins.try_emplace(std::string(pluginName));
    if (isNew) {
        plugin->second = std::make_unique<PluginPreSets>();
        std::cout << "    Adding plugin : " << pluginName << std::endl;
    }
    return *plugin->second;
}
