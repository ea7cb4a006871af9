#ifndef KOR_STANDARDINPUT_H
#define KOR_STANDARDINPUT_H

#include <cstddef>

/// Waits for bytes of the standard input and returns how many there are, 0 at its end. Unlike streams it holds no lock
/// meanwhile, for which the end of the program would wait.
std::size_t readStandardInput(char* bytes, std::size_t capacity);

#endif
