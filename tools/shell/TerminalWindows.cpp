#include "Terminal.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>

#include <io.h>
#include <windows.h>

namespace terminal {

namespace {

/// The console edits lines and remembers them by itself.
class ConsoleEditor : public LineEditor {
public:
    std::optional<std::string> read(const std::string& prompt) override {
        std::cout << prompt << std::flush;
        std::string line;
        if (!std::getline(std::cin, line))
            return std::nullopt;
        return line;
    }
};

} // namespace

bool isInteractive() {
    return _isatty(_fileno(stdin)) != 0 && _isatty(_fileno(stdout)) != 0;
}

bool hasColours(std::FILE* stream) {
    if (_isatty(_fileno(stream)) == 0 || std::getenv("NO_COLOR"))
        return false;
    // Consoles take colours only when they are asked to.
    HANDLE console = reinterpret_cast<HANDLE>(_get_osfhandle(_fileno(stream)));
    DWORD mode = 0;
    return GetConsoleMode(console, &mode) != 0 &&
           SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

std::unique_ptr<LineEditor> makeLineEditor(Complete /*complete*/) {
    return std::make_unique<ConsoleEditor>();
}

} // namespace terminal
