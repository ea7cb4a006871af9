#include "Writer.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <ostream>

namespace text {

namespace {

constexpr std::string_view lineStart = "\n\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t\t";

void writeRest(std::ostream& os, int tabs) {
    constexpr std::string_view most = lineStart.substr(1);
    for (; tabs > 0; tabs -= static_cast<int>(most.size()))
        write(os, most.substr(0, static_cast<std::size_t>(tabs)));
}

} // namespace

void write(std::ostream& os, std::string_view text) {
    if (os.width() != 0)
        os << text;
    else
        os.write(text.data(), static_cast<std::streamsize>(text.size()));
}

void appendNumber(std::string& out, int number) {
    // With room for every int.
    char digits[12];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    out.append(digits, static_cast<std::size_t>(end - digits));
}

void writeTabs(std::ostream& os, int count) {
    os.fill('\t');
    os.width(0);
    writeRest(os, count);
}

void writeLineEnd(std::ostream& os, int tabs) {
    os.fill('\t');
    os.width(0);
    const int now = std::clamp(tabs, 0, static_cast<int>(lineStart.size()) - 1);
    write(os, lineStart.substr(0, static_cast<std::size_t>(now) + 1));
    writeRest(os, tabs - now);
}

void appendLineEnd(std::string& out, int tabs) {
    out += '\n';
    out.append(static_cast<std::size_t>(std::max(tabs, 0)), '\t');
}

} // namespace text
