#ifndef ORBEL_FOUNDATION_TEXT_SCANNER_H
#define ORBEL_FOUNDATION_TEXT_SCANNER_H

#include <cstddef>
#include <optional>
#include <string_view>

/// The scanners that all small languages of the library share. Each takes the rest of the text by reference,
/// consumes what it recognised and returns it; none allocates.
namespace text {

/// Blanks are space, tab, line feed and carriage return.
constexpr std::string_view blanks = " \t\n\r";

void skipBlanks(std::string_view& rest);

/// Drops leading blanks and trailing spaces and tabs. Contract: line ends at the end stay.
std::string_view trim(std::string_view text);

/// All white space, for what is trimmed or split by it alone.
constexpr std::string_view whiteSpace = " \t\n\v\f\r";

/// Cuts the next name off a list of folders separated by ";", without white space at both ends.
std::string_view cutFolder(std::string_view& rest);

/// Cuts at the first `separator`: returns the text before it, `rest` becomes the text behind it. Without a separator
/// the whole text is returned and `rest` becomes empty.
std::string_view cutAt(std::string_view& rest, char separator);

/// Consumes the next token; any number of separators in a row counts as one. Nothing when no token is left.
std::optional<std::string_view> cutToken(std::string_view& rest, std::string_view separators);

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

/// The text between the first "{" and its "}", or up to the end when that is missing; nothing without a "{".
std::optional<std::string_view> braceGroup(std::string_view text);

/// The text behind the first "{", whether it is closed or not; nothing without a "{".
std::optional<std::string_view> behindBrace(std::string_view text);

/// Where the first doubled quote from `from` on begins that no third quote follows; npos when there is none.
std::size_t findClosingQuote(std::string_view text, std::size_t from);

/// Consumes one comma-separated value and the comma; nothing when no text is left. A value that begins with a
/// doubled quote ends at the next doubled quote that no third quote follows, and may contain commas.
std::optional<std::string_view> readValueToken(std::string_view& rest);

/// Compares without regard to the case of ASCII letters.
bool equalsIgnoringCase(std::string_view left, std::string_view right);

} // namespace text

#endif
