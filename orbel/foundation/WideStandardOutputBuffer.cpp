#include <orbel/foundation/WideStandardOutputBuffer.h>

#include <cstdio>
#include <cwchar>

WideStandardOutputBuffer woutbuf;

WideStandardOutputBuffer::~WideStandardOutputBuffer() = default;

WideStandardOutputBuffer::int_type WideStandardOutputBuffer::overflow(int_type character) {
    return std::fputwc(static_cast<wchar_t>(character), stdout) == WEOF ? WEOF : character;
}
