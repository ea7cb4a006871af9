#include "ColouredOutput.h"

#include <unistd.h>

#include <cstdlib>
#include <string_view>

bool prepareColours() {
    const char* kind = std::getenv("TERM");
    return isatty(STDOUT_FILENO) != 0 && kind && std::string_view(kind) != "dumb";
}
