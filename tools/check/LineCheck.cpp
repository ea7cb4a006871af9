#include "LineCheck.h"

#include <orbel/tables/TableText.h>

#include "../WholeFile.h"

LineCheck::LineCheck(Findings& findings, std::size_t maxLineLength)
    : m_findings(findings), m_maxLineLength(maxLineLength) {}

void LineCheck::beginFile(const std::string& path) {
    m_path = path;
    m_text = readWholeText(path);
    m_lines = LineIndex(m_text);
    m_from = 0;
    m_to = 0;
    m_findings.beginFile(path);
}

void LineCheck::nextLine() {
    m_from = m_to;
    const std::string_view rest = std::string_view(m_text).substr(m_from, m_maxLineLength);
    const std::size_t lineEnd = rest.find('\n');
    const std::string_view taken = rest.substr(0, lineEnd == std::string_view::npos ? rest.size() : lineEnd + 1);
    m_to = m_from + taken.size();
    m_line = taken.substr(0, taken.find('\0'));
}

bool LineCheck::checkLine(Effect effect) {
    const std::size_t nul = m_from + m_line.size();
    const bool startsLine = m_from == 0 || m_text[m_from - 1] == '\n';
    const bool isCut = m_to < m_text.size() && m_text[m_to - 1] != '\n';
    if (startsLine && isCut)
        reportSpan(ruleOf("files.line-too-long"), Effect::other, m_from, endWithoutLineEnd(),
                   "this line has more than " + std::to_string(m_maxLineLength) +
                       " characters with its line end, and is read in pieces of that length");
    if (nul < m_to)
        reportSpan(ruleOf("files.nul"), nul == m_from ? effect : Effect::none, nul, endWithoutLineEnd(),
                   "a NUL character hides the rest of the line");
    if (m_from > 0 || !m_line.starts_with(byteOrderMark))
        return false;
    report(ruleOf("files.byte-order-mark"), effect,
           "a byte-order mark belongs to this line, which means something else");
    return true;
}

bool LineCheck::isBlank() const {
    return stripped(m_line).empty();
}

LinePlace LineCheck::place() const {
    return {m_path, m_lines.positionAt(m_from), m_lines.positionAt(endWithoutLineEnd())};
}

std::string LineCheck::nameOf(const LinePlace& place) const {
    const std::string line = std::to_string(place.from.line);
    return place.file == m_path ? "line " + line : place.file + ":" + line;
}

void LineCheck::report(const Rule& rule, Effect effect, const std::string& message) {
    reportSpan(rule, effect, m_from, endWithoutLineEnd(), message);
}

void LineCheck::report(const Rule& rule, Effect effect, std::string_view part, const std::string& message) {
    const std::size_t from = static_cast<std::size_t>(part.data() - m_text.data());
    reportSpan(rule, effect, from, from + part.size(), message);
}

void LineCheck::report(const Rule& rule, Effect effect, const LinePlace& place, const std::string& message) {
    m_findings.add({&rule, effect, place.file, place.from, place.to, message});
}

void LineCheck::reportDroppedFields(char separator) {
    std::string_view rest = m_line;
    for (std::size_t field = 0; field < tables::maxFields; ++field) {
        const std::size_t at = rest.find(separator);
        if (at == std::string_view::npos)
            return;
        rest.remove_prefix(at + 1);
    }
    if (!stripped(rest).empty())
        report(ruleOf("files.too-many-fields"), Effect::none, stripped(rest),
               "this line has more than 64 fields; the rest is dropped");
}

void LineCheck::reportRest(const Rule& rule, Effect effect, const std::string& message) {
    if (!stripped(std::string_view(m_text).substr(m_to)).empty())
        reportSpan(rule, effect, m_to, m_text.size(), message);
}

void LineCheck::reportSpan(const Rule& rule, Effect effect, std::size_t from, std::size_t to,
                           const std::string& message) {
    m_findings.add({&rule, effect, m_path, m_lines.positionAt(from), m_lines.positionAt(to), message});
}

std::size_t LineCheck::endWithoutLineEnd() const {
    std::size_t to = m_to;
    while (to > m_from && (m_text[to - 1] == '\n' || m_text[to - 1] == '\r'))
        --to;
    return to;
}
