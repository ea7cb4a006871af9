#ifndef ORBEL_TREE_DUMPRANGE_H
#define ORBEL_TREE_DUMPRANGE_H

#include <algorithm>
#include <iosfwd>
#include <string>

/// Which of the values of a field, or elements of an array, a dump prints. A negative `first` stands for all, a
/// negative `last` for `first` alone.
class DumpRange {
public:
    DumpRange(int size, int first, int last);

    /// Writes "[2]" or "[0-2]" as it was asked for; nothing when there are fewer than two to choose from.
    void writeIndex(std::ostream& os) const;
    void appendIndex(std::string& out) const;

    /// What exists of the range; only when there is anything at all.
    int from() const { return std::min(m_first, m_size - 1); }
    int to() const { return std::min(m_last, m_size - 1); }

private:
    int m_size;
    int m_first = 0;
    int m_last = 0;
};

#endif
