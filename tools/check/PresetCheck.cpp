#include "PresetCheck.h"

#include <orbel/tables/TableText.h>

#include "Suggestion.h"

#include <algorithm>
#include <cstddef>
#include <set>

using tables::LineUse;

namespace {

constexpr std::string_view pluginMarker = "__PLUGIN__";
constexpr std::string_view presetMarkers[] = {pluginMarker, "__VERSION__", "__TABLE__", "__DELIMITER__"};
constexpr std::string_view nameColumn = "Name";

} // namespace

PresetCheck::PresetCheck(Findings& findings) : MarkerCheck(findings, pluginMarker, presetMarkers) {}

void PresetCheck::read(const std::string& path) {
    beginTables(path);
    m_isInSection = false;
    m_presets.readFile(path, *this);
}

std::string_view PresetCheck::kindOf(LineUse use) const {
    switch (use) {
    case LineUse::header:
    case LineUse::headerWithoutName:
        return "the header of the columns";
    case LineUse::row:
        return "a preset";
    default:
        return "ignored";
    }
}

std::vector<std::string_view> PresetCheck::fields() const {
    std::vector<std::string_view> fields = tables::splitFields(line(), ',');
    std::transform(fields.begin(), fields.end(), fields.begin(), tables::normalizeValue);
    return fields;
}

void PresetCheck::remember(LineUse use, std::string_view what) {
    m_before = nullptr;
    if (use == LineUse::sectionNew || use == LineUse::sectionAgain) {
        m_pluginBefore = m_isInSection ? &current() : nullptr;
        m_isInSection = true;
        m_plugin = what;
    } else if (use == LineUse::header || use == LineUse::headerWithoutName) {
        const auto columns = fields();
        current().header.assign(columns.begin(), columns.end());
        current().headerPlace = place();
        current().isHeadless = use == LineUse::headerWithoutName;
    } else if (use == LineUse::row) {
        const auto [before, isNew] = current().presets.try_emplace(std::string(what), place());
        m_before = isNew ? nullptr : &before->second;
    }
}

/// Between two sections whose presets are all dropped it makes no difference where a preset stands.
void PresetCheck::onSectionAgain() {
    if (current().isHeadless)
        report(ruleOf("presets.row-dropped"),
               m_pluginBefore && m_pluginBefore->isHeadless ? Effect::none : Effect::other,
               "the presets behind this line are dropped, because the header of " + inQuotes(m_plugin) + " in " +
                   nameOf(current().headerPlace) + " has no column \"Name\"");
}

void PresetCheck::onOtherLine(LineUse use, Effect effect, std::string_view what) {
    switch (use) {
    case LineUse::header:
    case LineUse::headerWithoutName:
        checkHeader(use == LineUse::header);
        break;
    case LineUse::row:
        checkPreset(what);
        break;
    case LineUse::tooShort:
        if (!isBlank())
            report(ruleOf("presets.line-too-short"), effect,
                   inQuotes(stripped(line())) + " is too short for a line and is ignored");
        break;
    case LineUse::rowOutside:
        if (!isBlank())
            report(ruleOf("presets.row-before-plugin"), effect,
                   "this line stands before the first plug-in and is ignored");
        break;
    case LineUse::rowTooShort:
        if (!isBlank())
            report(ruleOf("presets.row-without-name"), effect,
                   "this preset ends before its name and is dropped; the header is in " +
                       nameOf(current().headerPlace));
        break;
    case LineUse::rowWithoutHeader:
        if (!isBlank())
            report(ruleOf("presets.row-dropped"), effect,
                   "this preset is dropped, because the header in " + nameOf(current().headerPlace) +
                       " has no column \"Name\"");
        break;
    default:
        break;
    }
}

void PresetCheck::checkHeader(bool hasName) {
    reportDroppedFields(',');
    const std::vector<std::string_view> columns = fields();
    std::set<std::string_view> seen;
    for (const std::string_view column : columns) {
        if (!seen.insert(column).second && !column.empty())
            report(ruleOf("presets.duplicate-column"), Effect::other, column,
                   inQuotes(column) + " is a column already; the first of that name counts");
        else if (column != stripped(column) && !stripped(column).empty())
            report(ruleOf("presets.blank-around-column"), Effect::other, column,
                   "the column is called " + inQuotes(column) + ", not " + inQuotes(stripped(column)));
    }
    if (hasName)
        return;
    const std::string_view closest = closestName(nameColumn, columns);
    report(ruleOf("presets.header-without-name"), Effect::other,
           "this header of " + inQuotes(m_plugin) + " has no column \"Name\", so its presets are dropped" +
               (closest.empty() ? std::string() : "; " + inQuotes(closest) + " is another name"));
}

void PresetCheck::checkPreset(std::string_view name) {
    reportDroppedFields(',');
    const std::vector<std::string_view> values = fields();
    const std::vector<std::string>& header = current().header;
    const std::string_view text = stripped(line());
    if (text.empty()) {
        report(ruleOf("presets.blank-row"), Effect::other, "this line of blanks is a preset");
        return;
    }
    if (looksLikeComment())
        report(ruleOf("presets.comment-is-row"), Effect::other,
               "there are no such comments; this is the preset " + inQuotes(name));
    if (name == nameColumn || std::equal(values.begin(), values.end(), header.begin(), header.end()))
        report(ruleOf("presets.header-is-row"), Effect::other,
               "the header of " + inQuotes(m_plugin) + " stands in " + nameOf(current().headerPlace) +
                   "; this is the preset " + inQuotes(name));
    else if (m_before)
        report(ruleOf("presets.duplicate-name"), Effect::other,
               "the preset " + inQuotes(name) + " of " + inQuotes(m_plugin) + " stands in " + nameOf(*m_before) +
                   " already, which counts");
    else if (name != stripped(name))
        report(ruleOf("presets.blank-around-name"), Effect::other,
               "the preset is called " + inQuotes(name) + ", not " + inQuotes(stripped(name)));
    const auto isQuoted = [](std::string_view value) { return value.starts_with('"'); };
    if (const auto found = std::find_if(values.begin(), values.end(), isQuoted); found != values.end())
        report(ruleOf("presets.quotes"), Effect::other, *found, "the quotes belong to the text: " + inQuotes(*found));
    checkFieldCount();
}

void PresetCheck::checkFieldCount() {
    const std::size_t count = fields().size();
    const std::size_t columns = current().header.size();
    const std::string message = "this preset has " + std::to_string(count) + (count == 1 ? " field" : " fields") +
                                ", and the header in " + nameOf(current().headerPlace) + " has " +
                                std::to_string(columns) + (columns == 1 ? " column" : " columns");
    if (count < columns)
        report(ruleOf("presets.row-shorter"), Effect::other, message);
    else if (count > columns)
        report(ruleOf("presets.row-longer"), Effect::other, message);
}
