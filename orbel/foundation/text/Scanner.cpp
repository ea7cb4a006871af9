#include "Scanner.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>

namespace text {

namespace {

constexpr std::string_view doubledQuote = "\"\"";

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Follows braces and doubled quotes through a text.
class Nesting {
public:
    /// How many characters from `at` on belong together; counts them. Looks at plain characters only once, for lists
    /// of commands are long.
    std::size_t take(std::string_view text, std::size_t at) {
        switch (text[at]) {
        case '"':
            if (at + 1 == text.size() || text[at + 1] != '"')
                return 1;
            m_quoted = !m_quoted;
            return 2;
        case '{':
            m_depth += m_quoted ? 0 : 1;
            return 1;
        case '}':
            m_depth -= m_quoted ? 0 : 1;
            return 1;
        default:
            return 1;
        }
    }

    int depth() const { return m_depth; }
    bool isOutside() const { return m_depth == 0 && !m_quoted; }

private:
    int m_depth = 0;
    bool m_quoted = false;
};

} // namespace

void skipBlanks(std::string_view& rest) {
    const std::size_t start = rest.find_first_not_of(blanks);
    rest.remove_prefix(start == std::string_view::npos ? rest.size() : start);
}

std::string_view trim(std::string_view text) {
    skipBlanks(text);
    return text.substr(0, text.find_last_not_of(" \t") + 1);
}

std::string_view cutAt(std::string_view& rest, char separator) {
    const std::size_t at = rest.find(separator);
    const std::string_view before = rest.substr(0, at);
    rest = at == std::string_view::npos ? std::string_view() : rest.substr(at + 1);
    return before;
}

std::string_view cutFolder(std::string_view& rest) {
    std::string_view folder = cutAt(rest, ';');
    folder = folder.substr(0, folder.find_last_not_of(whiteSpace) + 1);
    return folder.substr(std::min(folder.find_first_not_of(whiteSpace), folder.size()));
}

std::optional<std::string_view> cutToken(std::string_view& rest, std::string_view separators) {
    const std::size_t start = rest.find_first_not_of(separators);
    if (start == std::string_view::npos) {
        rest = {};
        return std::nullopt;
    }
    rest.remove_prefix(start);
    const std::size_t end = rest.find_first_of(separators);
    const std::string_view token = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return token;
}

int readNumber(std::string_view text) {
    skipBlanks(text);
    if (text.empty() || !isDigit(text.front()))
        return -1;
    long long number = 0;
    for (; !text.empty() && isDigit(text.front()); text.remove_prefix(1)) {
        number = number * 10 + (text.front() - '0');
        if (number > std::numeric_limits<int>::max())
            return std::numeric_limits<int>::max();
    }
    return static_cast<int>(number);
}

int readSignedNumber(std::string_view text) {
    const std::size_t start = text.find_first_not_of(whiteSpace);
    text.remove_prefix(start == std::string_view::npos ? text.size() : start);
    const bool isNegative = text.substr(0, 1) == "-";
    if (isNegative || text.substr(0, 1) == "+")
        text.remove_prefix(1);
    long long number = 0;
    for (; !text.empty() && isDigit(text.front()) && number <= std::numeric_limits<int>::max(); text.remove_prefix(1))
        number = number * 10 + (text.front() - '0');
    number = isNegative ? -number : number;
    return static_cast<int>(
        std::clamp<long long>(number, std::numeric_limits<int>::min(), std::numeric_limits<int>::max()));
}

unsigned readHexadecimal(std::string_view text) {
    constexpr unsigned tooLarge = 0x10000;
    skipBlanks(text);
    unsigned number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, 16);
    return error == std::errc() && number < tooLarge ? number : 0;
}

IndexRange readIndexRange(std::string_view& rest) {
    std::string_view bounds = cutAt(rest, ',');
    const int start = readNumber(cutAt(bounds, '-'));
    return {start, readNumber(bounds)};
}

std::string_view cutListItem(std::string_view& rest, char separator) {
    Nesting nesting;
    for (std::size_t at = 0; at < rest.size();) {
        if (nesting.isOutside() && rest[at] == separator) {
            const std::string_view item = rest.substr(0, at);
            rest.remove_prefix(at + 1);
            return item;
        }
        at += nesting.take(rest, at);
    }
    const std::string_view item = rest;
    rest = {};
    return item;
}

std::optional<std::string_view> behindBrace(std::string_view text) {
    const std::size_t open = text.find('{');
    if (open == std::string_view::npos)
        return std::nullopt;
    return text.substr(open + 1);
}

std::optional<std::string_view> braceGroup(std::string_view text) {
    const std::size_t open = text.find('{');
    if (open == std::string_view::npos)
        return std::nullopt;
    text.remove_prefix(open);
    Nesting nesting;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t taken = nesting.take(text, at);
        if (nesting.isOutside() && text[at] == '}')
            return text.substr(1, at - 1);
        at += taken;
    }
    return text.substr(1);
}

std::size_t findClosingQuote(std::string_view text, std::size_t from) {
    std::size_t close = text.find(doubledQuote, from);
    while (close != std::string_view::npos && text.substr(close + doubledQuote.size(), 1) == "\"")
        close = text.find(doubledQuote, close + 1);
    return close;
}

std::optional<std::string_view> readValueToken(std::string_view& rest) {
    skipBlanks(rest);
    if (rest.empty())
        return std::nullopt;
    if (rest.substr(0, 2) != doubledQuote)
        return cutAt(rest, ',');
    rest.remove_prefix(2);
    const std::size_t close = findClosingQuote(rest, 0);
    const std::string_view token = rest.substr(0, close);
    rest.remove_prefix(close == std::string_view::npos ? rest.size() : close + 2);
    cutAt(rest, ',');
    return token;
}

bool equalsIgnoringCase(std::string_view left, std::string_view right) {
    const auto lower = [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
    };
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [&](char one, char other) { return lower(one) == lower(other); });
}

} // namespace text
