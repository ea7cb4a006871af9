#ifndef ORBEL_TOOLS_CHECK_TEXTS_H
#define ORBEL_TOOLS_CHECK_TEXTS_H

#include <string>
#include <string_view>

/// What some editors put at the start of a file in UTF-8.
inline constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// Without blanks and line ends at both ends.
std::string_view stripped(std::string_view text);

/// A piece of a file in double quotes: not too long, and with control characters made visible.
std::string inQuotes(std::string_view text);

#endif
