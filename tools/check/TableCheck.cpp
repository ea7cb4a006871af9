#include "TableCheck.h"

#include <orbel/foundation/text/Scanner.h>
#include <orbel/tables/TableText.h>

#include <algorithm>
#include <set>

using tables::LineUse;

namespace {

constexpr std::string_view tableMarker = "__TABLE__";
constexpr std::string_view delimiterMarker = "__DELIMITER__";
constexpr std::string_view tableMarkers[] = {tableMarker, delimiterMarker, "__VERSION__", "__PLUGIN__"};
constexpr std::string_view lineEnds = "\r\n";

/// The order counts for the first only, which a marker without a comma replaces.
bool isSame(std::string_view delimiters, std::string_view others) {
    const std::set<char> rest(delimiters.begin() + 1, delimiters.end());
    return delimiters.front() == others.front() && rest == std::set<char>(others.begin() + 1, others.end());
}

} // namespace

TableCheck::TableCheck(Findings& findings) : MarkerCheck(findings, tableMarker, tableMarkers) {}

void TableCheck::read(const std::string& path) {
    beginTables(path);
    m_table.clear();
    m_delimiters = ",";
    m_tables.readFile(path, *this);
}

void TableCheck::remember(LineUse use, std::string_view what) {
    if (use == LineUse::sectionNew || use == LineUse::sectionAgain)
        m_table = what;
    else if (use == LineUse::row)
        m_places[m_table].emplace(what, place());
}

std::string_view TableCheck::kindOf(LineUse use) const {
    return use == LineUse::row ? "a row" : "ignored";
}

void TableCheck::onOtherLine(LineUse use, Effect effect, std::string_view what) {
    switch (use) {
    case LineUse::delimiters:
    case LineUse::delimitersUnchanged:
        checkDelimiters(effect, what);
        m_delimiters = what;
        break;
    case LineUse::row:
        checkRow(what);
        break;
    case LineUse::rowAgain:
        report(ruleOf("tables.duplicate-key"), effect,
               "the key " + inQuotes(what) + " is in the table " + inQuotes(m_table) + " already, in " +
                   nameOf(m_places[m_table].find(what)->second) + ", which counts");
        break;
    case LineUse::rowOutside:
    case LineUse::rowTooShort:
        if (!isBlank())
            reportIgnored(use, effect);
        break;
    default:
        break;
    }
}

void TableCheck::reportIgnored(LineUse use, Effect effect) {
    if (looksLikeComment())
        report(ruleOf("tables.comment-by-chance"), effect,
               use == LineUse::rowOutside
                   ? "there are no such comments; the line is ignored because it stands before the "
                     "first table"
                   : "there are no such comments; the line is ignored because it has no value");
    else if (use == LineUse::rowOutside)
        report(ruleOf("tables.row-before-table"), effect, "this row stands before the first table and is ignored");
    else
        report(ruleOf("tables.row-without-value"), effect,
               inQuotes(stripped(line())) + " has no value and is ignored; " + inQuotes(m_delimiters) +
                   (m_delimiters.size() == 1 ? " separates" : " separate"));
}

void TableCheck::checkDelimiters(Effect effect, std::string_view delimiters) {
    if (delimiters != m_delimiters && isSame(delimiters, m_delimiters)) {
        report(ruleOf("tables.delimiter-unchanged"), Effect::none, "the delimiters are these already");
        return;
    }
    if (line().find(',') == std::string_view::npos) {
        checkNoComma(effect, delimiters);
        return;
    }
    checkMarkerLine(delimiterMarker);
    std::string_view rest = line();
    text::cutToken(rest, ",");
    const auto token = text::cutToken(rest, ",");
    if (token && (effect == Effect::other || delimiters != m_delimiters))
        checkDelimiterToken(effect, *token);
    if (delimiters == m_delimiters)
        report(ruleOf("tables.delimiter-unchanged"), effect, "the delimiters are these already");
}

void TableCheck::checkNoComma(Effect effect, std::string_view delimiters) {
    const std::string_view text = stripped(line().substr(delimiterMarker.size()));
    const std::string_view others = delimiters.substr(1);
    if (!text.empty())
        report(ruleOf("tables.delimiter-without-comma"), effect,
               inQuotes(text) + " does not become a delimiter: there is no comma before it");
    else if (others.find_first_not_of(lineEnds) != std::string_view::npos)
        report(ruleOf("tables.delimiter-without-comma"), effect,
               "only the first delimiter becomes a comma; " + inQuotes(others) + " still separate");
    else if (delimiters == m_delimiters)
        report(ruleOf("tables.delimiter-unchanged"), effect, "the comma is the delimiter already");
}

void TableCheck::checkDelimiterToken(Effect effect, std::string_view token) {
    const std::string_view visible = token.substr(0, token.find_last_not_of(lineEnds) + 1);
    if (visible.size() > tables::maxDelimiters)
        report(ruleOf("tables.delimiter-cut"), Effect::none, visible.substr(tables::maxDelimiters),
               inQuotes(visible.substr(tables::maxDelimiters)) + " is cut off");
    if (visible.empty())
        report(ruleOf("tables.delimiter-empty"), effect, "only the line end separates from here on");
    else if (visible.find(' ') != std::string_view::npos)
        report(ruleOf("tables.delimiter-blank"), Effect::other, visible,
               "the blank in " + inQuotes(visible) + " separates too");
}

void TableCheck::checkRow(std::string_view key) {
    if (looksLikeComment()) {
        report(ruleOf("tables.comment-is-row"), Effect::other,
               "there are no such comments; this is a row with the key " + inQuotes(key));
        return;
    }
    const text::CharacterSet delimiters = std::string_view(m_delimiters);
    std::string_view rest = line();
    const std::string_view keyToken = text::cutToken(rest, delimiters).value_or("");
    const std::string_view value = text::cutToken(rest, delimiters).value_or("");
    const auto countVisible = [&](std::size_t from, std::size_t to) {
        const std::string_view between = line().substr(from, to - from);
        return std::count_if(between.begin(), between.end(),
                             [](char character) { return !text::blanks.contains(character); });
    };
    const auto keyAt = static_cast<std::size_t>(keyToken.data() - line().data());
    const auto valueAt = static_cast<std::size_t>(value.data() - line().data());
    if (countVisible(0, keyAt) > 0 || countVisible(keyAt + keyToken.size(), valueAt) > 1)
        report(ruleOf("tables.empty-field"), Effect::other,
               "several delimiters in a row count as one: the value of " + inQuotes(key) + " is " +
                   inQuotes(tables::normalizeValue(value)));
    if (value.starts_with(' ') || value.starts_with('\t'))
        report(ruleOf("tables.blank-before-value"), Effect::other, value,
               "the blank belongs to the value of " + inQuotes(key) + ", " + inQuotes(tables::normalizeValue(value)));
    if (keyToken.starts_with('"') || value.starts_with('"'))
        report(ruleOf("tables.quotes"), Effect::other,
               "the quotes belong to the text: the value of " + inQuotes(key) + " is " +
                   inQuotes(tables::normalizeValue(value)));
    const auto third = text::cutToken(rest, delimiters);
    if (third && !stripped(*third).empty()) {
        const auto thirdAt = static_cast<std::size_t>(third->data() - line().data());
        const std::string_view ignored = stripped(line().substr(thirdAt));
        report(ruleOf("tables.more-fields"), Effect::none, ignored, inQuotes(ignored) + " behind the value is ignored");
    }
}
