#include "CaseTable.h"

#include "../foundation/text/LineReader.h"
#include "../foundation/text/Scanner.h"
#include "TableText.h"

CaseTable::CaseTable(const char* path) {
    text::LineReader lines(files::openText(path), tables::maxLineLength);
    while (const auto line = lines.next())
        readLine(*line);
}

void CaseTable::readLine(std::string_view line) {
    if (line.empty() || line.front() == '#')
        return;
    const auto fields = tables::splitFields(line, ';');
    if (fields.size() < 2)
        return;
    const unsigned upper = text::readHexadecimal(fields.front());
    const unsigned lower = text::readHexadecimal(fields[fields.size() - 2]);
    if (upper == 0 || lower == 0)
        return;
    m_upper.try_emplace(lower, upper);
    m_lower.try_emplace(upper, lower);
}

bool CaseTable::convert(const Pairs& pairs, wchar_t& character) {
    const auto found = pairs.find(static_cast<unsigned>(character));
    if (found == pairs.end())
        return false;
    character = static_cast<wchar_t>(found->second);
    return true;
}
