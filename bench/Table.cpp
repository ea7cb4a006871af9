#include "Table.h"

#include <algorithm>
#include <cstdio>
#include <utility>

Table::Table(std::vector<std::string> header, std::size_t left) : m_left(left) {
    m_rows.push_back(std::move(header));
}

void Table::add(std::vector<std::string> row) {
    m_rows.push_back(std::move(row));
}

void Table::print(std::ostream& out) const {
    for (const auto& row : m_rows) {
        std::string line;
        for (std::size_t column = 0; column < row.size(); ++column) {
            const std::string space(widthOf(column) - row[column].size(), ' ');
            line += column == 0 ? "" : "  ";
            line += column < m_left ? row[column] + space : space + row[column];
        }
        line.erase(line.find_last_not_of(' ') + 1);
        out << line << '\n';
    }
}

void Table::printMarkdown(std::ostream& out) const {
    for (std::size_t row = 0; row < m_rows.size(); ++row) {
        out << '|';
        for (const std::string& cell : m_rows[row])
            out << ' ' << cell << " |";
        out << '\n';
        if (row > 0)
            continue;
        out << '|';
        for (std::size_t column = 0; column < m_rows.front().size(); ++column)
            out << (column < m_left ? "---|" : "---:|");
        out << '\n';
    }
}

std::size_t Table::widthOf(std::size_t column) const {
    std::size_t width = 0;
    for (const auto& row : m_rows)
        width = std::max(width, row[column].size());
    return width;
}

std::string fixed(double number, int digits) {
    char text[64];
    std::snprintf(text, sizeof text, "%.*f", digits, number);
    // What is only a little below zero prints as if it were signed.
    const bool signedZero = text[0] == '-' && std::string(text).find_first_of("123456789") == std::string::npos;
    return signedZero ? text + 1 : text;
}
