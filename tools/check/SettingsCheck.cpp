#include "SettingsCheck.h"

#include <orbel/foundation/text/Scanner.h>

#include "../WholeFile.h"
#include "Suggestion.h"

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <system_error>

namespace {

constexpr std::string_view folderKey = "ConfigurationFolder";
constexpr std::string_view presetsFile = "QX_PreSets.csv";

bool startsWithKey(std::string_view text) {
    const auto names = settingNames();
    return std::any_of(names.begin(), names.end(), [&](std::string_view name) {
        return text::equalsIgnoringCase(text.substr(0, name.size()), name);
    });
}

} // namespace

SettingsCheck::SettingsCheck(Findings& findings) : LineCheck(findings, maxSettingsLineLength) {}

void SettingsCheck::read(const std::string& path) {
    beginFile(path);
    Settings settings;
    readSettingsFile(path.c_str(), settings, this);
    m_folder = settings.configurationFolder;
}

void SettingsCheck::onLine(std::string_view /*line*/, SettingUse use, std::string_view key) {
    nextLine();
    const Effect effect = use == SettingUse::setting ? Effect::other : Effect::none;
    if (checkLine(effect) || isBlank())
        return;
    switch (use) {
    case SettingUse::comment:
        break;
    case SettingUse::withoutEquals:
        checkWithoutEquals();
        break;
    case SettingUse::unknownKey:
        checkUnknownKey();
        break;
    case SettingUse::setting:
        checkSetting(key);
        break;
    }
}

void SettingsCheck::checkWithoutEquals() {
    const std::string_view text = stripped(line());
    // A comment behind blanks does what it seems to do.
    if (text.starts_with('#'))
        return;
    if (text.starts_with('['))
        report(ruleOf("settings.heading"), Effect::none, inQuotes(text) + " means nothing");
    else if (text.starts_with(';'))
        report(ruleOf("settings.semicolon-comment"), Effect::none, "comments begin with \"#\"");
    else
        report(ruleOf("settings.without-equals"), Effect::none, inQuotes(text) + " has no \"=\" and is ignored");
}

void SettingsCheck::checkUnknownKey() {
    std::string_view rest = line();
    const std::string_view text = stripped(line());
    const std::string_view key = stripped(text::cutAt(rest, '='));
    if (text.starts_with('#'))
        return;
    if (text.starts_with(';'))
        report(ruleOf("settings.semicolon-comment"), Effect::none, "comments begin with \"#\"");
    else if (startsWithKey(key))
        report(ruleOf("settings.blank-before-key"), Effect::none,
               "the setting " + inQuotes(key) + " stands behind a blank and is ignored");
    else
        report(ruleOf("settings.unknown-key"), Effect::none,
               "the setting " + inQuotes(key) + " is unknown and ignored" + suggestion(key, settingNames()));
}

void SettingsCheck::checkSetting(std::string_view key) {
    const auto before = m_set.find(key);
    if (before != m_set.end())
        report(ruleOf("settings.overridden"), Effect::other, before->second,
               inQuotes(key) + " is set again in line " + std::to_string(place().from.line) + ", which counts");
    m_set.insert_or_assign(key, place());
    std::string_view value = line();
    const std::string_view word = stripped(text::cutAt(value, '='));
    if (word.size() > key.size())
        report(ruleOf("settings.longer-word"), Effect::other, word, inQuotes(word) + " counts as " + inQuotes(key));
    if (key == folderKey)
        checkFolder(value);
    else
        checkNumber(key, value);
}

void SettingsCheck::checkNumber(std::string_view key, std::string_view value) {
    const std::string_view text = stripped(value);
    std::string_view digits = text::whiteSpace.skip(value);
    const bool isNegative = digits.starts_with('-');
    if (isNegative || digits.starts_with('+'))
        digits.remove_prefix(1);
    const std::size_t size = std::min(digits.find_first_not_of("0123456789"), digits.size());
    const std::string_view behind = stripped(digits.substr(size));
    if (size == 0) {
        report(ruleOf("settings.number-reads-as-zero"), Effect::other,
               text.empty() ? line().substr(0, key.size()) : text,
               inQuotes(text) + " is no number: " + inQuotes(key) + " is 0");
        return;
    }
    if (!behind.empty())
        report(ruleOf("settings.text-behind-number"), Effect::none, behind, inQuotes(behind) + " is ignored");
    const int number = text::readSignedNumber(value);
    long long exact = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + size, exact);
    if (error != std::errc() || (isNegative ? -exact : exact) != number)
        report(ruleOf("settings.number-out-of-range"), Effect::other, text,
               inQuotes(text) + " is out of range: " + inQuotes(key) + " is " + std::to_string(number));
    else if (key == "MultiOrbel" && number != 0 && number != 1)
        report(ruleOf("settings.multi-orbel-value"), Effect::other, text,
               inQuotes(key) + " is " + std::to_string(number) + ", which counts as 0: one tree for all scenes");
}

void SettingsCheck::checkFolder(std::string_view value) {
    value.remove_prefix(std::min(value.find_first_not_of(" \t"), value.size()));
    const std::string_view folder = value.substr(0, value.find_last_not_of("\n\r ") + 1);
    if (folder.empty())
        report(ruleOf("settings.empty-folder"), Effect::other, "no folder is named, so there are no types and tables");
    if (folder.starts_with('"'))
        report(ruleOf("settings.quotes-in-folder"), Effect::other, folder, "the folder is called " + inQuotes(folder));
    if (folder.find(" #") != std::string_view::npos || folder.find("\t#") != std::string_view::npos)
        report(ruleOf("settings.comment-in-folder"), Effect::other, folder, "the folder is called " + inQuotes(folder));
    if (folder.ends_with('\t'))
        report(ruleOf("settings.tab-behind-folder"), Effect::other, folder, "the folder is called " + inQuotes(folder));
}

void SettingsCheck::checkFolders(const std::string& base) {
    const auto set = m_set.find(folderKey);
    if (set == m_set.end() || m_folder.empty())
        return;
    bool hasPresets = false;
    std::string_view rest = m_folder;
    while (!rest.empty()) {
        const std::string folder(text::cutFolder(rest));
        const std::filesystem::path path = std::filesystem::path(base) / folder;
        if (!folder.empty() && !isFolder(path.string()))
            report(ruleOf("settings.folder-missing"), Effect::other, set->second,
                   "there is no folder " + inQuotes(folder));
        hasPresets = hasPresets || (!folder.empty() && isFile((path / presetsFile).string()));
    }
    if (hasPresets && !isFile((std::filesystem::path(base) / m_folder / presetsFile).string()))
        report(ruleOf("settings.presets-not-found"), Effect::other, set->second,
               "presets are looked for in one folder called " + inQuotes(m_folder) + ", and not found");
}
