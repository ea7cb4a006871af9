#include "StandardInput.h"

#include <windows.h>

std::size_t readStandardInput(char* bytes, std::size_t capacity) {
    DWORD count = 0;
    // A pipe whose other end is closed fails.
    const bool isRead =
        ReadFile(GetStdHandle(STD_INPUT_HANDLE), bytes, static_cast<DWORD>(capacity), &count, nullptr) != 0;
    return isRead ? count : 0;
}
