#include "MarkerCheck.h"

#include <orbel/foundation/text/Scanner.h>
#include <orbel/tables/TableText.h>

#include "Suggestion.h"

#include <algorithm>
#include <vector>

using tables::LineUse;

namespace {

constexpr std::string_view versionMarker = "__VERSION__";

/// Letters and underscores behind blanks and quotes.
std::string_view firstName(std::string_view line) {
    line.remove_prefix(std::min(line.find_first_not_of(" \t\""), line.size()));
    const auto isOfName = [](char letter) {
        return letter == '_' || (letter >= 'A' && letter <= 'Z') || (letter >= 'a' && letter <= 'z');
    };
    const auto end = std::find_if_not(line.begin(), line.end(), isOfName);
    return line.substr(0, static_cast<std::size_t>(end - line.begin()));
}

} // namespace

MarkerCheck::MarkerCheck(Findings& findings, std::string_view section, std::span<const std::string_view> markers)
    : LineCheck(findings, tables::maxLineLength), m_section(section), m_markers(markers) {}

void MarkerCheck::beginTables(const std::string& path) {
    beginFile(path);
    m_isFirst = true;
}

void MarkerCheck::onLine(std::string_view /*line*/, LineUse use, std::string_view what) {
    nextLine();
    const Effect effect = effectOf(use);
    remember(use, what);
    if (checkLine(effect))
        return;
    switch (use) {
    case LineUse::version:
        checkMarkerLine(versionMarker);
        break;
    case LineUse::abandoned:
        report(ruleOf("markers.without-version"), Effect::other,
               "this line has no version, so the file is not read on");
        reportRest(ruleOf("markers.not-read"), Effect::none,
                   "the rest of the file is not read, because line " + std::to_string(place().from.line) +
                       " has no version");
        break;
    case LineUse::sectionCurrent:
        report(ruleOf("markers.section-again"), effect, inQuotes(what) + " is what the lines belong to already");
        break;
    case LineUse::sectionNew:
        checkMarkerLine(m_section);
        break;
    case LineUse::sectionAgain:
        checkMarkerLine(m_section);
        onSectionAgain();
        break;
    case LineUse::sectionWithoutName:
        report(ruleOf("markers.without-name"), effect, inQuotes(m_section) + " has no name here, and is ignored");
        break;
    case LineUse::skipped:
        break;
    default:
        if (isBlank() || !checkMarker(use, effect))
            onOtherLine(use, effect, what);
        break;
    }
}

/// A line that is not the first with a meaning, and changes nothing, has no effect.
Effect MarkerCheck::effectOf(LineUse use) {
    if (use == LineUse::skipped || use == LineUse::tooShort)
        return Effect::none;
    const bool isFirst = m_isFirst;
    m_isFirst = false;
    switch (use) {
    case LineUse::sectionCurrent:
    case LineUse::sectionWithoutName:
    case LineUse::delimitersUnchanged:
    case LineUse::rowAgain:
    case LineUse::rowOutside:
    case LineUse::rowTooShort:
    case LineUse::rowWithoutHeader:
        return isFirst ? Effect::other : Effect::none;
    default:
        return Effect::other;
    }
}

/// The marker that the line begins with nearly; empty when it does not.
std::string_view MarkerCheck::meantMarker() const {
    const std::string_view name = firstName(line());
    if (!name.starts_with('_'))
        return {};
    for (const std::string_view marker : m_markers)
        if (name == marker)
            return marker;
    std::vector<std::string_view> markers(m_markers.begin(), m_markers.end());
    markers.push_back(tables::defaultKey);
    return closestName(name, markers);
}

std::string MarkerCheck::whyNoMarker(std::string_view marker) const {
    const std::string_view name = firstName(line());
    if (name != marker)
        return "it is " + inQuotes(name) + ", not " + inQuotes(marker);
    if (!line().starts_with(marker))
        return "it does not stand at the beginning of the line";
    if (line().find(',') == std::string_view::npos)
        return "it has no comma behind it";
    return "what stands behind it is too short";
}

bool MarkerCheck::checkMarker(LineUse use, Effect effect) {
    if (use == LineUse::delimiters || use == LineUse::delimitersUnchanged)
        return false;
    const std::string_view marker = meantMarker();
    const bool isDefault = marker.empty() || firstName(line()) == tables::defaultKey;
    if (isDefault)
        return false;
    const std::string kind = "; the line is " + std::string(kindOf(use));
    if (marker == versionMarker && line().starts_with(marker) && line().find(',') != std::string_view::npos &&
        line().size() >= marker.size() + tables::shortestToken)
        report(ruleOf("markers.version-not-first"), effect, "a version counts on the first line only" + kind);
    else
        report(ruleOf("markers.no-marker"), effect,
               inQuotes(stripped(line())) + " is no marker: " + whyNoMarker(marker) + kind);
    return true;
}

void MarkerCheck::checkMarkerLine(std::string_view marker) {
    const std::size_t comma = line().find(',');
    if (comma == std::string_view::npos)
        return;
    const std::string_view behindMarker = stripped(line().substr(marker.size(), comma - marker.size()));
    if (!behindMarker.empty())
        report(ruleOf("markers.text-behind-marker"), Effect::other, behindMarker,
               inQuotes(behindMarker) + " behind the marker is ignored");
    std::string_view rest = line();
    text::cutToken(rest, ",");
    text::cutToken(rest, ",");
    rest = stripped(rest);
    if (rest.find_first_not_of(", \t\r\n") != std::string_view::npos)
        report(ruleOf("markers.text-behind-name"), Effect::none, rest, inQuotes(rest) + " is ignored");
}

bool MarkerCheck::looksLikeComment() const {
    const std::string_view text = stripped(line());
    return text.starts_with('#') || text.starts_with("//");
}
