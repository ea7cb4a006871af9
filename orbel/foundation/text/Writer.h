#ifndef ORBEL_FOUNDATION_TEXT_WRITER_H
#define ORBEL_FOUNDATION_TEXT_WRITER_H

#include <iosfwd>
#include <string>
#include <string_view>

/// What all renderings write with.
namespace text {

/// Writes as `os << text` does, in less time when there is nothing to pad.
void write(std::ostream& os, std::string_view text);
void appendNumber(std::string& out, int number);

/// Writes so many tabs, none for a negative count. Contract: the fill character of the stream is a tab afterwards and
/// its width 0.
void writeTabs(std::ostream& os, int count);

/// The same behind a line end.
void writeLineEnd(std::ostream& os, int tabs);
void appendLineEnd(std::string& out, int tabs);

} // namespace text

#endif
