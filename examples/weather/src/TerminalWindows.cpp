#include "Terminal.h"

#include <windows.h>

bool prepareTerminal(int columns, int rows) {
    HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (GetConsoleMode(output, &mode) == 0 || GetConsoleScreenBufferInfo(output, &info) == 0)
        return false;
    const int width = info.srWindow.Right - info.srWindow.Left + 1;
    const int height = info.srWindow.Bottom - info.srWindow.Top + 1;
    return width >= columns && height >= rows && SetConsoleOutputCP(CP_UTF8) != 0 &&
           SetConsoleMode(output, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}
