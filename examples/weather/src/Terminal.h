#ifndef WEATHER_TERMINAL_H
#define WEATHER_TERMINAL_H

/// Whether standard output is a terminal of at least this size that understands escape codes and UTF-8. Where that
/// has to be switched on first, this does it.
bool prepareTerminal(int columns, int rows);

#endif
