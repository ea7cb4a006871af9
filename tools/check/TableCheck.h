#ifndef ORBEL_TOOLS_CHECK_TABLECHECK_H
#define ORBEL_TOOLS_CHECK_TABLECHECK_H

#include <orbel/tables/ConversionTables.h>
#include <tools/check/MarkerCheck.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>

/// Reads files of conversion tables as the library does, one after the other.
class TableCheck : private MarkerCheck {
public:
    explicit TableCheck(Findings& findings);

    /// Throws Trouble when the file cannot be read.
    void read(const std::string& path);

private:
    void remember(tables::LineUse use, std::string_view what) override;
    void onOtherLine(tables::LineUse use, Effect effect, std::string_view what) override;
    std::string_view kindOf(tables::LineUse use) const override;

    void checkDelimiters(Effect effect, std::string_view delimiters);
    void checkNoComma(Effect effect, std::string_view delimiters);
    void checkDelimiterToken(Effect effect, std::string_view token);
    void checkRow(std::string_view key);
    void reportIgnored(tables::LineUse use, Effect effect);

    using Table = std::map<std::string, LinePlace, std::less<>>;

    ConversionTables m_tables;
    std::map<std::string, Table, std::less<>> m_places;
    std::string m_table;
    std::string m_delimiters;
};

#endif
