#ifndef ORBEL_FOUNDATION_TEXT_SCANNER_H
#define ORBEL_FOUNDATION_TEXT_SCANNER_H

#include "CharacterSet.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

/// The scanners that all small languages of the library share. Each takes the rest of the text by reference,
/// consumes what it recognised and returns it; none allocates.
namespace text {

/// Blanks are space, tab, line feed and carriage return.
inline constexpr CharacterSet blanks(" \t\n\r");

inline void skipBlanks(std::string_view& rest) {
    rest.remove_prefix(blanks.findOutside(rest));
}

/// Drops leading blanks and trailing spaces and tabs. Contract: line ends at the end stay.
inline std::string_view trim(std::string_view text) {
    skipBlanks(text);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t'))
        text.remove_suffix(1);
    return text;
}

/// All white space, for what is trimmed or split by it alone.
inline constexpr CharacterSet whiteSpace(" \t\n\v\f\r");

/// Cuts the next name off a list of folders separated by ";", without white space at both ends.
std::string_view cutFolder(std::string_view& rest);

/// Cuts at the first `separator`: returns the text before it, `rest` becomes the text behind it. Without a separator
/// the whole text is returned and `rest` becomes empty.
inline std::string_view cutAt(std::string_view& rest, char separator) {
    const std::size_t at = rest.find(separator);
    const std::string_view before = rest.substr(0, at);
    rest = at == std::string_view::npos ? std::string_view() : rest.substr(at + 1);
    return before;
}

/// Consumes the next token; any number of separators in a row counts as one. Nothing when no token is left.
std::optional<std::string_view> cutToken(std::string_view& rest, const CharacterSet& separators);

/// The decimal number after leading blanks, at most the largest int; -1 when the text does not go on with a digit.
int readNumber(std::string_view text);

/// The decimal number after leading white space and an optional sign, kept within the range of int; 0 when the text
/// does not go on with a digit.
int readSignedNumber(std::string_view text);

/// The hexadecimal number after leading blanks; 0 when there is none and when it is 0x10000 or more.
unsigned readHexadecimal(std::string_view text);

struct IndexRange {
    int start = -1;
    int end = -1;
};

/// Consumes one "n" or "n-m" up to the next ",". A bound that does not begin with a digit is -1.
IndexRange readIndexRange(std::string_view& rest);

/// Consumes the text before the first `separator` outside braces and outside doubled quotes, and the separator.
/// A surplus "}" keeps everything behind it together.
std::string_view cutListItem(std::string_view& rest, char separator);

/// Where the braces and doubled quotes of a text are. Looks for each kind only as far as the next one.
class NestingMarks {
public:
    explicit NestingMarks(std::string_view text);

    /// The first one at or behind `from`, the size of the text when there is none. Only goes on, never back.
    std::size_t next(std::size_t from) {
        if (m_first < from)
            goOn(from);
        return m_first;
    }

private:
    void goOn(std::size_t from);

    std::string_view m_text;
    std::array<std::size_t, 3> m_next{};
    std::size_t m_first = 0;
};

/// Goes through a list, item by item, as cutListItem does, but faster: time does not depend on how much text there is
/// between separators, braces and quotes.
class ListScanner {
public:
    explicit ListScanner(std::string_view list) : m_list(list), m_marks(list) {}

    bool atEnd() const { return m_at == m_list.size(); }
    /// What is left; an empty text at the end.
    std::string_view rest() const { return m_list.substr(m_at); }
    void skipBlanks() { m_at = blanks.findOutside(m_list, m_at); }
    std::string_view cut(char separator);

private:
    std::string_view take(std::size_t end);

    std::string_view m_list;
    NestingMarks m_marks;
    std::size_t m_at = 0;
};

/// The text between the first "{" and its "}", or up to the end when that is missing; nothing without a "{".
std::optional<std::string_view> braceGroup(std::string_view text);

/// The text behind the first "{", whether it is closed or not; nothing without a "{".
std::optional<std::string_view> behindBrace(std::string_view text);

/// Where the first doubled quote from `from` on begins that no third quote follows; npos when there is none.
std::size_t findClosingQuote(std::string_view text, std::size_t from);

/// What readValueToken does when the text begins with a quote.
std::string_view readQuotedToken(std::string_view& rest);

/// Consumes one comma-separated value and the comma; nothing when no text is left. A value that begins with a
/// doubled quote ends at the next doubled quote that no third quote follows, and may contain commas.
inline std::optional<std::string_view> readValueToken(std::string_view& rest) {
    skipBlanks(rest);
    if (rest.empty())
        return std::nullopt;
    return rest.front() == '"' ? readQuotedToken(rest) : cutAt(rest, ',');
}

/// Compares without regard to the case of ASCII letters.
bool equalsIgnoringCase(std::string_view left, std::string_view right);

} // namespace text

#endif
