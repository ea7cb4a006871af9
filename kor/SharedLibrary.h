#ifndef KOR_SHAREDLIBRARY_H
#define KOR_SHAREDLIBRARY_H

#include <string>

/// A loaded shared library.
class SharedLibrary {
public:
    using Function = void (*)();

    static const char* const suffix;

    /// Throws std::runtime_error with the system's reason.
    explicit SharedLibrary(const std::string& path);
    SharedLibrary(const SharedLibrary&) = delete;
    SharedLibrary& operator=(const SharedLibrary&) = delete;
    ~SharedLibrary();

    /// Null when it exports no such function.
    Function find(const char* name) const;

private:
    void* m_handle;
};

#endif
