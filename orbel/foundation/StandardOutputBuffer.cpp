#include <orbel/foundation/StandardOutputBuffer.h>

#include <cstdio>

StandardOutputBuffer outbuf;

StandardOutputBuffer::~StandardOutputBuffer() = default;

StandardOutputBuffer::int_type StandardOutputBuffer::overflow(int_type character) {
    return std::fputc(character, stdout) == EOF ? traits_type::eof() : character;
}
