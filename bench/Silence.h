#ifndef BENCH_SILENCE_H
#define BENCH_SILENCE_H

#include <iostream>
#include <streambuf>

/// Keeps what the library prints out of the report while it exists.
class Silence {
public:
    Silence() : m_before(std::cout.rdbuf(&m_nowhere)) {}
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;
    ~Silence() { std::cout.rdbuf(m_before); }

private:
    class Nowhere : public std::streambuf {
        int overflow(int character) override { return traits_type::not_eof(character); }
        std::streamsize xsputn(const char* /*text*/, std::streamsize length) override { return length; }
    };

    Nowhere m_nowhere;
    std::streambuf* m_before;
};

#endif
