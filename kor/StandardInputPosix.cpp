#include "StandardInput.h"

#include <cerrno>

#include <unistd.h>

std::size_t readStandardInput(char* bytes, std::size_t capacity) {
    for (;;) {
        const ssize_t count = read(STDIN_FILENO, bytes, capacity);
        if (count >= 0)
            return static_cast<std::size_t>(count);
        if (errno != EINTR)
            return 0;
    }
}
