#include "Target.h"

#include <orbel/foundation/DataPrintf.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <streambuf>

namespace {

class Nowhere : public std::streambuf {
    int_type overflow(int_type character) override { return traits_type::not_eof(character); }
    std::streamsize xsputn(const char*, std::streamsize size) override { return size; }
};

int formatOnly(const char* format, va_list args) {
    return std::vsnprintf(nullptr, 0, format, args);
}

class Silence {
public:
    Silence() : m_before(std::cout.rdbuf(&m_nowhere)) { DataSetVPrintfFunction(formatOnly); }
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
    ~Silence() {
        DataSetVPrintfFunction(nullptr);
        std::cout.rdbuf(m_before);
    }

private:
    Nowhere m_nowhere;
    std::streambuf* m_before;
};

} // namespace

Target::Target(std::string_view targetName, Run runInput) : name(targetName), run(runInput) {
    targets().push_back(this);
}

std::vector<const Target*>& targets() {
    static std::vector<const Target*> all;
    return all;
}

void runSilently(const Target& target, std::string_view input) {
    const Silence silence;
    target.run(input);
}

void check(bool condition, const char* message) {
    if (condition)
        return;
    std::fprintf(stderr, "check failed: %s\n", message);
    std::abort();
}
