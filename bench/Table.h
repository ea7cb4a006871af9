#ifndef BENCH_TABLE_H
#define BENCH_TABLE_H

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

/// Rows of texts, written in columns as wide as their longest text. The first `left` columns begin at the left.
class Table {
public:
    Table(std::vector<std::string> header, std::size_t left);

    void add(std::vector<std::string> row);
    bool empty() const { return m_rows.size() == 1; }

    void print(std::ostream& out) const;
    void printMarkdown(std::ostream& out) const;

private:
    std::size_t widthOf(std::size_t column) const;

    std::size_t m_left;
    /// The header is the first.
    std::vector<std::vector<std::string>> m_rows;
};

/// A number with so many digits behind the point.
std::string fixed(double number, int digits);

#endif
