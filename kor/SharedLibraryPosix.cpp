#include "SharedLibrary.h"

#include <stdexcept>

#include <dlfcn.h>

const char* const SharedLibrary::suffix = ".so";

SharedLibrary::SharedLibrary(const std::string& path) : m_handle(dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)) {
    if (!m_handle)
        throw std::runtime_error(dlerror());
}

SharedLibrary::~SharedLibrary() {
    dlclose(m_handle);
}

SharedLibrary::Function SharedLibrary::find(const char* name) const {
    return reinterpret_cast<Function>(dlsym(m_handle, name));
}
