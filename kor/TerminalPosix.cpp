#include "Terminal.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <string_view>

bool prepareTerminal() {
    if (isatty(STDOUT_FILENO) == 0)
        return false;
    const char* kind = std::getenv("TERM");
    return kind && std::string_view(kind) != "dumb";
}

std::optional<TerminalSize> terminalSize() {
    winsize size{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0 || size.ws_row == 0)
        return std::nullopt;
    return TerminalSize{size.ws_col, size.ws_row};
}
