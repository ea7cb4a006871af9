#include "ConfigurationReader.h"

#include "../CommandLine.h"
#include "../WholeFile.h"
#include "../types/Schema.h"

#include <orbel/foundation/platform/Files.h>
#include <orbel/foundation/text/Scanner.h>
#include <orbel/handlers/Settings.h>
#include <orbel/tables/AllPluginPreSets.h>
#include <orbel/tables/CaseTable.h>
#include <orbel/tables/ConversionTables.h>
#include <orbel/tables/TableText.h>
#include <orbel/tree/DataObject.h>
#include <orbel/types/DataObjectTypesTable.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <map>
#include <system_error>
#include <vector>

namespace {

namespace fs = std::filesystem;

class DeafListener : public tables::TableListener {
public:
    void onLine(std::string_view /*line*/, tables::LineUse /*use*/, std::string_view /*what*/) override {}
};

/// The columns of each plug-in, which the presets themselves know by name only.
class HeaderListener : public tables::TableListener {
public:
    void onLine(std::string_view line, tables::LineUse use, std::string_view what) override {
        using tables::LineUse;
        if (use == LineUse::sectionNew || use == LineUse::sectionAgain || use == LineUse::sectionCurrent)
            m_plugin = what;
        if (use == LineUse::header)
            for (const std::string_view field : tables::splitFields(line, ','))
                m_columns[m_plugin].emplace_back(tables::normalizeValue(field));
    }

    const std::vector<std::string>& columnsOf(const std::string& plugin) { return m_columns[plugin]; }

private:
    std::string m_plugin;
    std::map<std::string, std::vector<std::string>> m_columns;
};

class FolderReader {
public:
    explicit FolderReader(fs::path folder) : m_folder(std::move(folder)) {}

    Facts read() {
        readSettings();
        readTables();
        readPresets();
        readLetters();
        readTypes();
        return std::move(m_facts);
    }

private:
    void readSettings() {
        DataObject::set_NofExtraTypes(0);
        Settings settings;
        settings.multiOrbel = 0;
        readSettingsFile((m_folder / "Orbel.ini").string().c_str(), settings, nullptr);
        m_configured = settings.configurationFolder;
        const std::pair<const char*, int> numbers[] = {
            {"MultiOrbel", settings.multiOrbel},
            {"Nof_Extra_Types", DataObject::get_NofExtraTypes()},
            {"RefreshAlways", settings.refreshAlways ? 1 : 0},
            {"CheckMaterialIfExists", settings.checkMaterialIfExists ? 1 : 0},
            {"CheckImageIfExists", settings.checkImageIfExists ? 1 : 0},
        };
        for (const auto& [key, number] : numbers)
            m_facts[std::string("settings/") + key] = std::to_string(number);
        m_facts["settings/ConfigurationFolder"] = m_configured;
    }

    /// The configured folders, which are relative to where the settings are.
    std::vector<std::string> folders() const {
        std::vector<std::string> all;
        for (std::string_view list = m_configured; !list.empty();)
            if (const std::string_view name = text::cutFolder(list); !name.empty())
                all.push_back((m_folder / name).string());
        return all;
    }

    void readTables() {
        ConversionTables tables;
        DeafListener listener;
        for (const std::string& folder : folders())
            tables.readFolder(folder, listener);
        for (const auto& [name, table] : tables.all())
            for (const auto& [key, value] : table)
                m_facts[("tables/" + name + '/').append(key)] = value;
    }

    void readPresets() {
        AllPluginPreSets presets;
        HeaderListener header;
        presets.readFile((m_folder / m_configured / "QX_PreSets.csv").string(), header);
        for (const auto& [name, plugin] : presets.all())
            for (int row = 0; row < plugin->getNumRows(); ++row)
                addPreset("presets/" + name + '/', *plugin, *plugin->getRow(row), header.columnsOf(name));
    }

    void addPreset(const std::string& start, PluginPreSets& plugin, const std::vector<std::string>& row,
                   const std::vector<std::string>& columns) {
        const std::string& name = row[static_cast<std::size_t>(plugin.getNameColumn())];
        // Only the first of a name is ever found.
        if (!m_facts.try_emplace(start + name + "/Name", name).second)
            return;
        for (std::size_t at = 0; at < row.size(); ++at) {
            const std::string column = at < columns.size() ? columns[at] : "field " + std::to_string(at + 1);
            m_facts.try_emplace(start + name + '/' + column, row[at]);
        }
    }

    void readLetters() {
        const CaseTable letters((m_folder / "CapitalUnicodeData.txt").string().c_str());
        addLetters("letters/upper/", letters.toUpper());
        addLetters("letters/lower/", letters.toLower());
    }

    void addLetters(const std::string& start, const CaseTable::Pairs& pairs) {
        for (const auto& [from, to] : pairs)
            m_facts[start + codeOf(from)] = codeOf(to);
    }

    static std::string codeOf(unsigned character) {
        std::array<char, 16> code{};
        std::snprintf(code.data(), code.size(), "%04X", character);
        return code.data();
    }

    void readTypes() {
        std::vector<std::string> present;
        for (const std::string& folder : folders())
            if (isFolder(folder))
                present.push_back(folder);
        DataObjectTypesTable table;
        const Schema schema = readSchema(present, table, [](const std::string&) {});
        for (const Schema::Type& type : schema.types) {
            m_facts["types/" + type.name] = "";
            for (const Schema::Field& field : type.fields)
                // The first of a name is what an object gets.
                m_facts.try_emplace("types/" + type.name + '/' + field.name, declarationOf(field));
        }
    }

    static std::string declarationOf(const Schema::Field& field) {
        std::string text = field.type;
        if (field.count > 1)
            text += '[' + std::to_string(field.count) + ']';
        return field.defaultText.empty() ? text : text + " = " + field.defaultText;
    }

    fs::path m_folder;
    std::string m_configured;
    Facts m_facts;
};

} // namespace

Facts readConfiguration(const std::string& folder) {
    std::error_code unreadable;
    const fs::directory_iterator entries(folder, unreadable);
    if (unreadable)
        throw Trouble("cannot read " + folder);
    return FolderReader(folder).read();
}
