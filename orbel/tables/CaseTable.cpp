#include "CaseTable.h"

#include "../foundation/text/LineReader.h"
#include "../foundation/text/Scanner.h"
#include "TableText.h"

using tables::LineUse;

CaseTable::CaseTable(const char* path, tables::TableListener* listener) {
    text::LineReader lines(files::openText(path), tables::maxLineLength);
    if (listener && lines.isOpen())
        listener->onFile(path);
    while (const auto line = lines.next()) {
        const LineUse use = readLine(*line);
        if (listener)
            listener->onLine(*line, use, {});
    }
}

LineUse CaseTable::readLine(std::string_view line) {
    if (line.empty() || line.front() == '#')
        return LineUse::skipped;
    const auto fields = tables::splitFields(line, ';');
    if (fields.size() < 2)
        return LineUse::pairTooShort;
    const unsigned upper = text::readHexadecimal(fields.front());
    const unsigned lower = text::readHexadecimal(fields[fields.size() - 2]);
    if (upper == 0 || lower == 0)
        return LineUse::pairWithoutCode;
    const bool isUpperNew = m_upper.try_emplace(lower, upper).second;
    const bool isLowerNew = m_lower.try_emplace(upper, lower).second;
    if (isUpperNew && isLowerNew)
        return LineUse::pair;
    return isUpperNew || isLowerNew ? LineUse::pairHalf : LineUse::pairAgain;
}

bool CaseTable::convert(const Pairs& pairs, wchar_t& character) {
    const auto found = pairs.find(static_cast<unsigned>(character));
    if (found == pairs.end())
        return false;
    character = static_cast<wchar_t>(found->second);
    return true;
}
