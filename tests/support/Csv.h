#ifndef ORBEL_TESTS_SUPPORT_CSV_H
#define ORBEL_TESTS_SUPPORT_CSV_H

#include <fstream>
#include <string>
#include <vector>

using CsvRow = std::vector<std::string>;

/// The fields of one line: separated by commas, in double quotes where they hold some, with quotes doubled in them.
inline CsvRow readCsvLine(const std::string& line) {
    CsvRow row(1);
    bool quoted = false;
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (line[at] == '"' && quoted && line.substr(at + 1, 1) == "\"")
            row.back() += line[++at];
        else if (line[at] == '"')
            quoted = !quoted;
        else if (line[at] == ',' && !quoted)
            row.emplace_back();
        else
            row.back() += line[at];
    }
    return row;
}

/// The rows of a file without its header.
inline std::vector<CsvRow> readCsv(const std::string& path) {
    std::ifstream file(path);
    std::vector<CsvRow> rows;
    std::string line;
    std::getline(file, line);
    while (std::getline(file, line))
        rows.push_back(readCsvLine(line));
    return rows;
}

#endif
