#include "Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

bool prepareTerminal(int columns, int rows) {
    if (isatty(STDOUT_FILENO) == 0)
        return false;
    const char* kind = std::getenv("TERM");
    if (!kind || std::string_view(kind) == "dumb")
        return false;
    // Terminals that do not tell their size, as serial lines, answer with zeros.
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0)
        return true;
    return size.ws_col >= columns && size.ws_row >= rows;
}
