#ifndef ORBEL_FOUNDATION_WIDESTANDARDOUTPUTBUFFER_H
#define ORBEL_FOUNDATION_WIDESTANDARDOUTPUTBUFFER_H

#include <orbel/foundation/Export.h>

#include <streambuf>

/// StandardOutputBuffer for wide characters.
class ORBEL_API WideStandardOutputBuffer : public std::wstreambuf {
public:
    ~WideStandardOutputBuffer() override;

protected:
    /// The character written, or WEOF when the write fails.
    int_type overflow(int_type character) override;
};

/// The buffer to build wide streams on: `std::wostream os(&woutbuf)`.
extern ORBEL_API WideStandardOutputBuffer woutbuf;

#endif
