#ifndef ORBEL_FOUNDATION_STANDARDOUTPUTBUFFER_H
#define ORBEL_FOUNDATION_STANDARDOUTPUTBUFFER_H

#include <orbel/foundation/Export.h>

#include <streambuf>

/// A stream buffer without a put area: every character goes to the C standard output at once.
class ORBEL_API StandardOutputBuffer : public std::streambuf {
public:
    ~StandardOutputBuffer() override;

protected:
    /// The character written, or EOF when the write fails.
    int_type overflow(int_type character) override;
};

/// The buffer to build narrow streams on: `std::ostream os(&outbuf)`.
extern ORBEL_API StandardOutputBuffer outbuf;

#endif
