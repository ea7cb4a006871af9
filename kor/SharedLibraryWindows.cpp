#include "SharedLibrary.h"

#include <stdexcept>
#include <system_error>

#include <windows.h>

const char* const SharedLibrary::suffix = ".dll";

SharedLibrary::SharedLibrary(const std::string& path) : m_handle(LoadLibraryA(path.c_str())) {
    if (!m_handle)
        throw std::runtime_error(path + ": " + std::system_category().message(static_cast<int>(GetLastError())));
}

SharedLibrary::~SharedLibrary() {
    FreeLibrary(static_cast<HMODULE>(m_handle));
}

SharedLibrary::Function SharedLibrary::find(const char* name) const {
    const auto found = GetProcAddress(static_cast<HMODULE>(m_handle), name);
    return reinterpret_cast<Function>(reinterpret_cast<void*>(found));
}
