#ifndef ORBEL_TESTS_SUPPORT_CONSOLE_H
#define ORBEL_TESTS_SUPPORT_CONSOLE_H

#include <orbel/foundation/DataPrintf.h>

#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <iostream>
#include <sstream>
#include <streambuf>
#include <string>
#include <utility>

/// Collects what is printed while it exists: messages go to the host's print function, output to std::cout. Only one
/// can exist at a time.
class Console {
public:
    Console() : m_before(std::cout.rdbuf(m_output.rdbuf())) {
        collected().clear();
        DataSetVPrintfFunction(collect);
    }
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;
    ~Console() {
        DataSetVPrintfFunction(nullptr);
        std::cout.rdbuf(m_before);
    }

    /// All messages since the last call.
    std::string takeMessages() { return std::exchange(collected(), std::string()); }

    /// All output since the last call.
    std::string takeOutput() {
        std::string output = m_output.str();
        m_output.str("");
        return output;
    }

private:
    static std::string& collected() {
        static std::string messages;
        return messages;
    }

    static int collect(const char* format, va_list args) {
        va_list again;
        va_copy(again, args);
        const int length = std::vsnprintf(nullptr, 0, format, args);
        std::string message(static_cast<std::size_t>(length) + 1, '\0');
        std::vsnprintf(message.data(), message.size(), format, again);
        va_end(again);
        message.pop_back();
        collected() += message;
        return length;
    }

    std::ostringstream m_output;
    std::streambuf* m_before;
};

#endif
