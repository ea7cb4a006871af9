#include "Symbols.h"

#include <windows.h>

namespace symbols {

Function find(const char* host, const char* name) {
    HMODULE module = GetModuleHandleA(host);
    if (!module)
        module = GetModuleHandleA(nullptr);
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

} // namespace symbols
