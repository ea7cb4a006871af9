#ifndef ORBEL_TESTS_SUPPORT_ENVIRONMENT_H
#define ORBEL_TESTS_SUPPORT_ENVIRONMENT_H

#include <support/Platform.h>

#include <cstdlib>
#include <string>
#include <utility>

inline void clearVariable(const std::string& name) {
#ifdef _WIN32
    _putenv_s(name.c_str(), "");
#else
    unsetenv(name.c_str());
#endif
}

/// An environment variable that is set while this exists. Windows has no variables with an empty text.
class Variable {
public:
    Variable(std::string name, const std::string& text) : m_name(std::move(name)) {
#ifdef _WIN32
        _putenv_s(m_name.c_str(), text.c_str());
#else
        setenv(m_name.c_str(), text.c_str(), 1);
#endif
    }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;
    ~Variable() {
        clearVariable(m_name);
    }

private:
    std::string m_name;
};

/// Whatever the machine that runs the tests has set.
inline void clearTypeVariables() {
    for (const char* name : {"QX_OBJECTS_FILE", "QX_OBJECTS_DIR", "QX_OBJECTS_PATH", "QX_DUMP_CONFIG"})
        clearVariable(name);
}

#endif
