#include "Scanner.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <limits>

namespace text {

namespace {

constexpr std::string_view doubledQuote = "\"\"";
constexpr std::string_view nestingMarks = "{}\"";

bool isDigit(char character) {
    return character >= '0' && character <= '9';
}

/// Follows braces and doubled quotes through a text.
class Nesting {
public:
    /// How many characters from `at` on belong together; counts them.
    std::size_t take(std::string_view text, std::size_t at) {
        switch (text[at]) {
        case '"':
            if (text.substr(at, doubledQuote.size()) != doubledQuote)
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

std::string_view cutFolder(std::string_view& rest) {
    return whiteSpace.skip(whiteSpace.dropEnd(cutAt(rest, ';')));
}

std::optional<std::string_view> cutToken(std::string_view& rest, const CharacterSet& separators) {
    rest.remove_prefix(separators.findOutside(rest));
    if (rest.empty()) {
        rest = {};
        return std::nullopt;
    }
    const std::string_view token = rest.substr(0, separators.findIn(rest));
    rest.remove_prefix(std::min(token.size() + 1, rest.size()));
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
    text = whiteSpace.skip(text);
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

NestingMarks::NestingMarks(std::string_view text) : m_text(text) {
    for (std::size_t kind = 0; kind < m_next.size(); ++kind)
        m_next[kind] = std::min(m_text.find(nestingMarks[kind]), m_text.size());
    m_first = *std::min_element(m_next.begin(), m_next.end());
}

void NestingMarks::goOn(std::size_t from) {
    for (std::size_t kind = 0; kind < m_next.size(); ++kind)
        if (m_next[kind] < from)
            m_next[kind] = std::min(m_text.find(nestingMarks[kind], from), m_text.size());
    m_first = *std::min_element(m_next.begin(), m_next.end());
}

std::string_view ListScanner::cut(char separator) {
    Nesting nesting;
    for (std::size_t at = m_at; at < m_list.size();) {
        const std::size_t mark = m_marks.next(at);
        if (nesting.isOutside()) {
            const std::size_t end = m_list.substr(at, mark - at).find(separator);
            if (end != std::string_view::npos)
                return take(at + end);
        }
        at = mark == m_list.size() ? mark : mark + nesting.take(m_list, mark);
    }
    return take(m_list.size());
}

/// The text up to `end`; goes on behind the separator there.
std::string_view ListScanner::take(std::size_t end) {
    const std::string_view item = m_list.substr(m_at, end - m_at);
    m_at = std::min(end + 1, m_list.size());
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
    NestingMarks marks(text);
    for (std::size_t at = 0; at < text.size(); at = marks.next(at)) {
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

std::string_view readQuotedToken(std::string_view& rest) {
    if (!rest.starts_with(doubledQuote))
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
