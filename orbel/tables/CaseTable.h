#ifndef ORBEL_TABLES_CASETABLE_H
#define ORBEL_TABLES_CASETABLE_H

#include "TableListener.h"

#include <map>
#include <string_view>

/// Pairs of upper- and lower-case characters below 0x10000, read from lines of the Unicode Character Database's main
/// file (UnicodeData.txt): code point first, simple lower-case mapping in the last field but one.
class CaseTable {
public:
    /// From lower to upper case, or the other way.
    using Pairs = std::map<unsigned, unsigned>;

    /// The listener may be null.
    explicit CaseTable(const char* path, tables::TableListener* listener = nullptr);

    const Pairs& toUpper() const { return m_upper; }
    const Pairs& toLower() const { return m_lower; }

    /// Replace the character by its partner; false when it has none.
    bool toUpper(wchar_t& character) const { return convert(m_upper, character); }
    bool toLower(wchar_t& character) const { return convert(m_lower, character); }

private:
    static bool convert(const Pairs& pairs, wchar_t& character);
    tables::LineUse readLine(std::string_view line);

    Pairs m_upper;
    Pairs m_lower;
};

#endif
