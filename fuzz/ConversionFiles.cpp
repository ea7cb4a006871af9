#include "FileInput.h"
#include "Input.h"
#include "Target.h"

#include <orbel/tables/ConversionTables.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace {

std::string stripped(std::string_view text) {
    const std::size_t start = text.find_first_not_of(" \t");
    if (start == std::string_view::npos)
        return {};
    return std::string(text.substr(start, text.find_last_not_of(" \t\r\n") + 1 - start));
}

/// Whether plainRows understands the file: no marker but "__TABLE__", no line in pieces, and only plain characters.
bool isPlain(std::string_view input) {
    bool plain = input.find("__V") == std::string_view::npos && input.find("__D") == std::string_view::npos;
    for (const char character : input)
        plain = plain && (character == '\n' || (character >= ' ' && character <= '~'));
    forEachLine(input, [&](std::string_view line) {
        plain = plain && line.size() < 1'000 && (line.substr(0, 1) != "_" || line.find("__TABLE__,") == 0) &&
                line.find(",,") == std::string_view::npos;
    });
    return plain;
}

/// The first value of each table and key, read the plainest way. A value is empty when only a line end follows the
/// comma.
std::map<std::pair<std::string, std::string>, std::string> plainRows(std::string_view input) {
    std::map<std::pair<std::string, std::string>, std::string> rows;
    std::string table;
    forEachLine(input, [&](std::string_view line) {
        const std::size_t comma = line.find(',');
        if (comma == 0 || comma == std::string_view::npos)
            return;
        const std::string_view rest = line.substr(comma + 1);
        const std::string_view value = rest.substr(0, rest.find(','));
        if (line.substr(0, comma) == "__TABLE__")
            table = stripped(value).empty() ? table : stripped(value);
        else if (!table.empty() && (!value.empty() || line.data() + line.size() != input.data() + input.size()))
            rows.try_emplace({table, stripped(line.substr(0, comma))}, value);
    });
    return rows;
}

void checkTable(const ConversionTables& tables, std::string_view table, std::string_view input) {
    forEachLine(input, [&](std::string_view line) {
        const std::string_view key = line.substr(0, line.find_first_of(",;"));
        const std::string_view text = tables.lookup(table, key);
        check(tables.lookup(table, key).data() == text.data(), "a key is looked up the same way again");
        check(tables.lookup(table, ' ' + std::string(key) + " \r\n").data() == text.data(),
              "blanks around a key do not count");
        check(text.empty() || (text.back() != '\n' && text.back() != '\r'), "a value has no line end");
    });
}

const Target target("conversion-tables", [](std::string_view input) {
    static const FileInput file("QX_ConvTables.csv");
    file.write(input);
    const ConversionTables tables(file.folder());
    check(tables.lookup("there is no such table \x01", "a").empty(), "an unknown table has no values");
    constexpr std::string_view marker = "__TABLE__,";
    int checked = 0;
    forEachLine(input, [&](std::string_view line) {
        if (line.substr(0, marker.size()) == marker && ++checked <= 4)
            checkTable(tables, line.substr(marker.size()), input);
    });
    if (isPlain(input))
        for (const auto& [place, value] : plainRows(input))
            check(tables.lookup(place.first, place.second) == value, "a row is found under its key");
});

} // namespace
