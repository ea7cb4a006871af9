#include "Settings.h"

#include <orbel/tree/DataObject.h>

#include "../foundation/text/FixedText.h"
#include "../foundation/text/LineReader.h"
#include "../foundation/text/Scanner.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace {

bool readFlag(std::string_view value) {
    return text::readSignedNumber(value) != 0;
}

void setFolder(Settings& settings, std::string_view value) {
    value.remove_prefix(std::min(value.find_first_not_of(" \t"), value.size()));
    std::string folder(value.substr(0, value.find_last_not_of("\n\r ") + 1));
    text::copyCut(settings.configurationFolder, folder.c_str());
    DataObject::set_ConfigFolder(folder.data());
}

struct Key {
    std::string_view name;
    void (*store)(Settings&, std::string_view value);
};

constexpr Key keys[] = {
    {"MultiOrbel", [](Settings& to, std::string_view value) { to.multiOrbel = text::readSignedNumber(value); }},
    {"Nof_Extra_Types",
     [](Settings&, std::string_view value) { DataObject::set_NofExtraTypes(text::readSignedNumber(value)); }},
    {"ConfigurationFolder", setFolder},
    {"RefreshAlways", [](Settings& to, std::string_view value) { to.refreshAlways = readFlag(value); }},
    {"CheckMaterialIfExists", [](Settings& to, std::string_view value) { to.checkMaterialIfExists = readFlag(value); }},
    {"CheckImageIfExists", [](Settings& to, std::string_view value) { to.checkImageIfExists = readFlag(value); }},
};

struct LineMeaning {
    SettingUse use;
    std::string_view key;
};

LineMeaning readLine(Settings& settings, std::string_view line) {
    const std::size_t equals = line.find('=');
    if (line.substr(0, 1) == "#")
        return {SettingUse::comment, {}};
    if (equals == std::string_view::npos)
        return {SettingUse::withoutEquals, {}};
    for (const Key& key : keys)
        // Contract: a longer word that begins with the name is the key too; settings files in use rely on it.
        if (text::equalsIgnoringCase(line.substr(0, key.name.size()), key.name)) {
            key.store(settings, line.substr(equals + 1));
            return {SettingUse::setting, key.name};
        }
    return {SettingUse::unknownKey, {}};
}

} // namespace

std::vector<std::string_view> settingNames() {
    std::vector<std::string_view> names;
    std::transform(std::begin(keys), std::end(keys), std::back_inserter(names),
                   [](const Key& key) { return key.name; });
    return names;
}

bool readSettingsFile(const char* path, Settings& settings, SettingsListener* listener) {
    text::LineReader lines(files::openText(path), maxSettingsLineLength);
    while (const auto line = lines.next()) {
        const LineMeaning meaning = readLine(settings, *line);
        if (listener)
            listener->onLine(*line, meaning.use, meaning.key);
    }
    return lines.isOpen();
}

void readSettings(Settings& settings) {
    if (settings.areRead)
        return;
    Settings read = settings;
    read.areRead = true;
    read.multiOrbel = 0;
    setFolder(read, ".");
    readSettingsFile("./Orbel.ini", read, nullptr);
    settings = read;
}
