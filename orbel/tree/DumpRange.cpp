#include "DumpRange.h"

#include "../foundation/text/Writer.h"

DumpRange::DumpRange(int size, int first, int last) : m_size(size) {
    if (size < 2)
        return;
    m_first = std::max(first, 0);
    if (first < 0)
        m_last = size - 1;
    else
        m_last = last < 0 ? first : last;
}

void DumpRange::writeIndex(std::ostream& os) const {
    std::string index;
    appendIndex(index);
    text::write(os, index);
}

void DumpRange::appendIndex(std::string& out) const {
    if (m_size < 2)
        return;
    out += '[';
    text::appendNumber(out, m_first);
    if (m_first != m_last) {
        out += '-';
        text::appendNumber(out, m_last);
    }
    out += ']';
}
