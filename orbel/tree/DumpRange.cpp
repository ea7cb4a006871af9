#include "DumpRange.h"

#include <ostream>
#include <string>

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
    if (m_size < 2)
        return;
    os << '[' << std::to_string(m_first);
    if (m_first != m_last)
        os << '-' << std::to_string(m_last);
    os << ']';
}
