#include "RegisteredPath.h"

#include "../foundation/text/Scanner.h"

namespace {

constexpr std::size_t maxLength = 99;
constexpr std::string_view doubledQuote = "\"\"";

/// Where the range begins: a bracket inside doubled quotes at the front of the text belongs to the path.
std::size_t findBracket(std::string_view text) {
    const bool isQuoted = text.substr(0, doubledQuote.size()) == doubledQuote;
    return text.find('[', isQuoted ? text::findClosingQuote(text, doubledQuote.size()) : 0);
}

} // namespace

RegisteredPath::RegisteredPath(std::string_view text) {
    text = text.substr(0, maxLength);
    text::skipBlanks(text);
    const std::size_t bracket = findBracket(text);
    path = text::trim(text.substr(0, bracket));
    if (bracket == std::string_view::npos)
        return;
    std::string_view brackets = text.substr(bracket + 1);
    std::string_view ranges = text::cutAt(brackets, ']');
    const text::IndexRange range = text::readIndexRange(ranges);
    if (range.start == -1)
        return;
    // Contract: the second number is how many values there are, not the last index; plug-ins in use rely on it.
    const bool isCount = range.end == -1 || range.end == range.start;
    offset = isCount ? 0 : range.start;
    size = isCount ? range.start : range.end;
}
