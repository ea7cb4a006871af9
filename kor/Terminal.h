#ifndef KOR_TERMINAL_H
#define KOR_TERMINAL_H

#include <optional>

struct TerminalSize {
    int columns;
    int rows;

    bool operator==(const TerminalSize&) const = default;
};

/// Whether standard output is a terminal that understands escape codes and UTF-8. Where that has to be switched on
/// first, this does it.
bool prepareTerminal();

/// How large the terminal is now; nothing when it does not tell, as serial lines.
std::optional<TerminalSize> terminalSize();

#endif
