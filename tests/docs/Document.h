#ifndef ORBEL_TESTS_DOCS_DOCUMENT_H
#define ORBEL_TESTS_DOCS_DOCUMENT_H

#include <cstddef>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

/// A document in Markdown, as far as it has examples.
class Document {
public:
    using Row = std::vector<std::string>;
    /// What is named, and what is said of it.
    using Claims = std::vector<std::pair<std::string, std::string>>;

    explicit Document(std::string text) : m_text(std::move(text)) {}

    static Document ofFile(const std::string& path) {
        std::ifstream file(path);
        return Document(std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()));
    }

    /// The text of one heading.
    Document section(const std::string& heading) const { return Document(between("\n## " + heading + "\n", "\n## ")); }

    /// The block behind the line "`NAME`:", or behind a paragraph that ends in these words.
    std::string block(const std::string& introduction) const {
        const Document behind(between(introduction + "\n\n```", "\n```"));
        return behind.between("\n", "") + '\n';
    }

    std::size_t countBlocks() const {
        std::size_t fences = 0;
        for (std::size_t at = m_text.find("\n```"); at != std::string::npos; at = m_text.find("\n```", at + 1))
            ++fences;
        return fences / 2;
    }

    /// The rows of the table with this header.
    std::vector<Row> table(const std::string& header) const {
        std::vector<Row> rows;
        std::istringstream lines(between('\n' + header + '\n', ""));
        std::string line;
        std::getline(lines, line);
        while (std::getline(lines, line) && line.substr(0, 1) == "|")
            rows.push_back(cellsOf(line));
        return rows;
    }

    /// The texts in backquotes.
    static Row codesOf(const std::string& cell) {
        Row codes;
        for (std::size_t start = cell.find('`'); start != std::string::npos;) {
            const std::size_t end = cell.find('`', start + 1);
            codes.push_back(cell.substr(start + 1, end - start - 1));
            start = cell.find('`', end + 1);
        }
        return codes;
    }

    /// The text in backquotes, or the words when there are none.
    static std::string valueOf(const std::string& cell) {
        const Row codes = codesOf(cell);
        return codes.empty() ? cell : codes.front();
    }

    /// What stands behind ": " in a cell: "`a` gives `1`, `b` is missing".
    static Claims claimsOf(const std::string& cell) {
        Claims claims;
        for (std::size_t start = cell.find(": `"); start != std::string::npos;) {
            const std::size_t end = cell.find('`', start + 3);
            std::size_t next = cell.find(", `", end);
            const std::string words = cell.substr(end + 1, next == std::string::npos ? next : next - end - 1);
            claims.emplace_back(cell.substr(start + 3, end - start - 3), valueOf(words));
            start = next;
        }
        return claims;
    }

private:
    std::string between(const std::string& start, const std::string& end) const {
        const std::size_t found = m_text.find(start);
        if (found == std::string::npos)
            return {};
        const std::size_t from = found + start.size();
        const std::size_t to = end.empty() ? std::string::npos : m_text.find(end, from);
        return m_text.substr(from, to == std::string::npos ? to : to - from);
    }

    /// "| a | b |": the blanks that set off a cell are not part of it.
    static Row cellsOf(const std::string& line) {
        Row cells;
        for (std::size_t start = 1; start + 1 < line.size();) {
            const std::size_t end = line.find(" |", start);
            cells.push_back(line.substr(start + 1, end - start - 1));
            start = end + 2;
        }
        return cells;
    }

    std::string m_text;
};

#endif
