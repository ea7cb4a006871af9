#ifndef ORBEL_TESTS_TOOLS_CHECK_RANDOMTEXT_H
#define ORBEL_TESTS_TOOLS_CHECK_RANDOMTEXT_H

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Files with mistakes: lines of right and of broken files, mixed and mutilated. A seed gives the same everywhere.
class RandomText {
public:
    RandomText(unsigned seed, std::vector<std::string> lines, std::string characters)
        : m_random(seed), m_lines(std::move(lines)), m_characters(std::move(characters)) {}

    /// All lines end in a line end but perhaps the last one.
    std::string next(std::size_t mostLines) {
        std::string text;
        const std::size_t lines = 1 + upTo(mostLines);
        for (std::size_t line = 0; line < lines; ++line)
            text += nextLine() + '\n';
        for (std::size_t change = upTo(4); change > 0; --change)
            mutilate(text);
        if (!text.empty() && oneIn(10))
            text.pop_back();
        return text;
    }

    /// Below the limit.
    std::size_t upTo(std::size_t limit) { return m_random() % limit; }
    bool oneIn(std::size_t times) { return upTo(times) == 0; }

private:
    std::string nextLine() {
        std::string line = m_lines[upTo(m_lines.size())];
        if (oneIn(6))
            mutilate(line);
        if (oneIn(300))
            line.insert(upTo(line.size() + 1), std::string(1'100, 'x'));
        return line;
    }

    void mutilate(std::string& text) {
        const std::size_t at = upTo(text.size() + 1);
        const char character = oneIn(60) ? '\0' : m_characters[upTo(m_characters.size())];
        switch (upTo(4)) {
        case 0:
            text.insert(at, 1, character);
            break;
        case 1:
            if (at < text.size())
                text[at] = character;
            break;
        case 2:
            text.erase(at, 1 + upTo(3));
            break;
        default: {
            const std::string piece = text.substr(at, upTo(12));
            text.insert(upTo(text.size() + 1), piece);
            break;
        }
        }
    }

    std::mt19937 m_random;
    std::vector<std::string> m_lines;
    std::string m_characters;
};

inline std::string bytesOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline std::vector<std::string> linesOf(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines;
}

/// The lines of all broken files of a kind, as far as they are not too long.
inline std::vector<std::string> brokenLines(const std::string& kind) {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry :
         std::filesystem::directory_iterator(std::filesystem::path(ORBEL_TEST_DATA) / "broken" / kind))
        if (entry.path().filename() != "expected.txt")
            paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    std::vector<std::string> lines;
    for (const auto& path : paths)
        for (std::string& line : linesOf(bytesOf(path)))
            if (line.size() < 200)
                lines.push_back(std::move(line));
    return lines;
}

#endif
