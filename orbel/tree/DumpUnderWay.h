#ifndef ORBEL_TREE_DUMPUNDERWAY_H
#define ORBEL_TREE_DUMPUNDERWAY_H

#include <iosfwd>

/// A dump, or a part of one; lives on the stack.
///
/// Contract: the stream is flushed behind each value, array and table; stream buffers of hosts rely on it. A file or a
/// string stream of the standard library is flushed once, behind all: nobody reads them half way, and to flush a file
/// takes longer than to write a line.
class DumpUnderWay {
public:
    explicit DumpUnderWay(std::ostream& os);
    DumpUnderWay(const DumpUnderWay&) = delete;
    DumpUnderWay& operator=(const DumpUnderWay&) = delete;
    ~DumpUnderWay();

    /// Behind the last text of a part, of one that flushes or of one that leaves it to its parts.
    void endFlushed();
    void end();

private:
    std::ostream& m_os;
    /// What it is again when the dump fails.
    int m_indentation;
    bool m_isComplete = false;
    std::ostream* m_outerStream;
    bool m_outerFlushesOnce;
};

#endif
