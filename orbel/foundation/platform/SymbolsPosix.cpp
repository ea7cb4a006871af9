#include "Symbols.h"

#include <dlfcn.h>

namespace symbols {

Function find(const char* /*host*/, const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_DEFAULT, name));
}

} // namespace symbols
